#include "target/DataType.h"

#include "files/Fatal.h"
#include "files/XmlDocument.h"
#include "model/InitValue.h"
#include "model/Type.h"
#include "model/TypeString.h"

#include <algorithm>
#include <cstdint>

// What an elementary type is before the target has its say. Sizes are in bits, alignments in bytes.
struct ElementaryType
{
    std::string_view name;
    std::int32_t sizeBits;
    std::int32_t align;
    CInitValue::Kind kind;      // of the default value, which is zero
    bool canBeAllowed;          // by naming it in the target
};

// Kept (targets): the 64-bit integers have 8 bits until the target says otherwise, and no target can allow them.
static constexpr ElementaryType g_ElementaryTypes[] = {
    {"SINT", 8, 4, CInitValue::Signed, true},
    {"INT", 16, 4, CInitValue::Signed, true},
    {"DINT", 32, 4, CInitValue::Signed, true},
    {"LINT", 8, 4, CInitValue::Signed, false},
    {"USINT", 8, 4, CInitValue::Unsigned, true},
    {"UINT", 16, 4, CInitValue::Unsigned, true},
    {"UDINT", 32, 4, CInitValue::Unsigned, true},
    {"ULINT", 8, 4, CInitValue::Signed, false},
    {"BOOL", 1, 4, CInitValue::Bool, true},
    {"BYTE", 8, 4, CInitValue::Unsigned, true},
    {"WORD", 16, 4, CInitValue::Unsigned, true},
    {"DWORD", 32, 4, CInitValue::Unsigned, true},
    {"LWORD", 8, 4, CInitValue::Signed, false},
    {"REAL", 32, 4, CInitValue::Real, true},
    {"LREAL", 64, 4, CInitValue::Real, true},
    {"TIME", -1, -1, CInitValue::Signed, false},
    {"DATE_AND_TIME", -1, -1, CInitValue::Signed, false},
    {"TIME_OF_DAY", -1, -1, CInitValue::Signed, false},
    {"DATE", -1, -1, CInitValue::Signed, false},
};

static std::unique_ptr<CInitValue> MakeZero(CInitValue::Kind kind)
{
    switch (kind) {
    case CInitValue::Bool: return std::make_unique<CInitValue>(false);
    case CInitValue::Unsigned: return std::make_unique<CInitValue>(std::uint32_t{0});
    case CInitValue::Real: return std::make_unique<CInitValue>(0.0);
    default: return std::make_unique<CInitValue>(std::int64_t{0});
    }
}

CDataType::CDataType(CXmlDocument& target, CNamePool& names)
    : m_Target(target), m_Names(names), m_Identity(names.NewIdentity())
{
}

CDataType::~CDataType() = default;

void CDataType::LoadFromTarget()
{
    CXmlNode* pTarget = m_Target.m_Root.FindChild("COMPILER\\TARGET");
    CXmlNode* pIec = pTarget ? pTarget->FindChild("IEC") : nullptr;
    if (!pIec) InternalFault("the target description has not been checked");

    AddElementaryTypes(*pIec);
    CType* pLast = ReadFormats(*pTarget);
    AddStringAndError();

    // Kept (targets): an unknown pointer type is the type that the formats set last. Where they set none it is the
    // unsigned type of the usual width, so that pointers have a type on any target.
    std::string pointerName;
    pIec->GetAttribute(pointerName, "PointerType");
    m_PointerType = FindType(pointerName);
    if (!m_PointerType) m_PointerType = pLast ? pLast : FindType("UDINT");
}

// Kept (targets): the list of allowed types is searched for each name as a part of it, so a target that names USINT
// allows INT and SINT too.
void CDataType::AddElementaryTypes(const CXmlNode& iec)
{
    std::string allowed;
    iec.GetAttribute(allowed, "AllowedDataTypes");
    for (const ElementaryType& entry : g_ElementaryTypes) {
        auto pType = std::make_unique<CType>(std::string(entry.name));
        pType->m_SizeBits = entry.sizeBits;
        pType->m_Align = entry.align;
        pType->m_InitValue = MakeZero(entry.kind);
        pType->m_Allowed = entry.canBeAllowed && allowed.find(entry.name) != std::string::npos;
        Enter(m_Names.Intern(entry.name), std::move(pType));
    }
    m_BoolType = FindType("BOOL");
    m_IntType = FindType("INT");
    m_DintType = FindType("DINT");
    m_RealType = FindType("REAL");
}

// Sizes and alignments as the target gives them. What a node leaves out is as in the node before it.
// Returns the type that was set last, null if there was none.
CType* CDataType::ReadFormats(CXmlNode& target)
{
    CType* pType = nullptr;
    std::int32_t sizeBits = 0;
    std::int32_t align = 0;
    CXmlNode* pNode = target.FindFirstChild("COMPILER\\DATAFORMAT\\DATATYPE");
    for (; pNode; pNode = target.FindNextChild()) {
        std::string name;
        pNode->GetAttribute(name, "name");
        sizeBits = pNode->GetAttributeInt("size", sizeBits);
        align = pNode->GetAttributeInt("align", align);

        // Kept (targets): an unknown name changes the type found last.
        if (CType* pFound = FindType(name)) pType = pFound;
        if (!pType) continue;
        pType->m_SizeBits = sizeBits;
        pType->m_Align = align;   // also one that no place can have; it is shown so
    }
    return pType;
}

// Both stand under their upper-case names: a name in a source is looked up in lower case and so can't mean
// them, which leaves `error` free for a variable.
void CDataType::AddStringAndError()
{
    auto pString = std::make_unique<CTypeString>("STRING");
    pString->m_InitValue = std::make_unique<CInitString>(0, "");
    pString->m_IsElementary = false;
    pString->m_Allowed = false;
    pString->m_Align = FindType("UDINT")->m_Align;
    m_StringType = Enter(m_Names.Intern("STRING"), std::move(pString));

    auto pError = std::make_unique<CType>("ERROR");
    pError->m_InitValue = std::make_unique<CInitValue>();
    pError->m_IsElementary = false;
    pError->m_IsError = true;
    m_ErrorType = Enter(m_Names.Intern("ERROR"), std::move(pError));
}

CType* CDataType::FindType(std::string_view name) const
{
    const CName* pName = m_Names.Find(name);
    return pName ? FindType(*pName) : nullptr;
}

CType* CDataType::FindUserType(std::string_view name) const
{
    const CName* pKey = m_Names.FindKey(name);
    return pKey ? FindType(*pKey) : nullptr;
}

CType* CDataType::AddType(std::unique_ptr<CType> pType)
{
    const CName& name = m_Names.Intern(pType->m_Name);
    return Enter(name.GetKey(), std::move(pType));
}

CType* CDataType::AddAlias(std::string_view name, CType* pType, const CInitValue* pInit)
{
    auto pAlias = std::make_unique<CType>(std::string(name), pType);
    if (!pInit) pInit = pType->m_InitValue.get();
    if (pInit) pAlias->m_InitValue = pInit->Clone();
    return AddType(std::move(pAlias));
}

CType* CDataType::Enter(const CName& key, std::unique_ptr<CType> pType)
{
    CType* pEntered = pType.get();
    m_Owned.push_back(std::move(pType));
    if (key.m_Type.IsOf(m_Identity)) return pEntered;
    key.m_Type.Set(m_Identity, pEntered);
    m_Order.push_back(pEntered);
    return pEntered;
}
