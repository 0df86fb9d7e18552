// Array declarations: "a : ARRAY [0..3, 1..2] OF t := [...]", in blocks and as named types.

#include "semantics/Norvane.h"

#include "files/Format.h"
#include "model/ArrayIndex.h"
#include "model/Type.h"
#include "model/TypeArray.h"

// The ranges of an ARRAY_ARG node. The first bound that isn't known ends the declaration, and only that one
// is reported.
std::unique_ptr<CArrayIndex> CNorvane::BuildArrayIndex(const CNode* pRanges)
{
    auto pIndex = std::make_unique<CArrayIndex>();
    for (const CNode* pRange : pRanges->m_Children) {
        std::int32_t first = 0;
        std::int32_t last = 0;
        if (EvalConstIndex(pRange->Child(0), first) != 1) return nullptr;
        if (EvalConstIndex(pRange->Child(1), last) != 1) return nullptr;
        pIndex->m_Dimensions.emplace_back(first, last);
    }
    return pIndex;
}

// "INT[]", "INT[2dim]": arrays of one element type and number of dimensions share a type, whatever their
// bounds. They are told apart by the element's object and not by that name, because a user's type may be
// called "int".
CTypeArray* CNorvane::GetArrayType(CType* pElement, const CArrayIndex* pIndex)
{
    const int dimensions = pIndex ? pIndex->GetDimensionCount() : 0;
    CTypeArray*& pArray = m_ArrayTypes[{pElement, dimensions}];
    if (pArray) return pArray;

    std::string name = pElement->m_Name + "[";
    if (dimensions > 1) AppendFormat(name, "%ddim", dimensions);
    name += "]";
    auto pNew = std::make_unique<CTypeArray>(std::move(name), pElement);
    pArray = pNew.get();
    m_DataTypes.AddType(std::move(pNew));
    return pArray;
}

// What an array of m_PendingIndex starts with. Null if the list is refused, after a diagnostic or silently,
// and where there is nothing to start with.
std::unique_ptr<CInitValue> CNorvane::MakeArrayValue(CType* pElement, CTypeArray* pArray, CNode* pInitList)
{
    if (pInitList) {
        if (!CheckArrayInit(pArray, pInitList, m_PendingIndex.get(), 0)) return nullptr;
        return BuildInitArray(pArray, pInitList);
    }
    if (pElement->IsArrayUser()) return BuildDefaultArrayInit(m_PendingIndex.get(), pElement, 0);
    const bool isNamedType = (m_VarBlockFlags & InType) != 0;
    return isNamedType ? BuildDefaultArrayInit(m_PendingIndex.get(), pArray, 0) : nullptr;
}

// "TYPE t : ARRAY ...". Kept (sources): the first name takes the bounds away, so a declaration should have one name.
void CNorvane::AddArrayTypes(const CNode* pList, CType* pElement, CTypeArray* pArray, const CInitValue* pInit)
{
    for (const CNode* pName : pList->m_Children) {
        if (!m_PendingIndex) m_Notes.Add(Note::OnlyFirstIsArray, pName->location, pName->GetName());
        auto pType = std::make_unique<CTypeArrayUser>(std::string(pName->GetName()), pElement, pArray, std::move(m_PendingIndex));
        if (pInit) pType->m_InitValue = pInit->Clone();
        m_DataTypes.AddType(std::move(pType));
    }
}

// Elements without a value of their own don't start with the default of a type that the user named, unless it is
// what the array's value has been made of.
bool CNorvane::LosesDefault(const CType& element, const CArrayOfArrayIndex& index, const CInitValue* pInit)
{
    const bool isNamed = element.m_IsAlias || element.IsArrayUser();
    if (!isNamed || IsBlank(element.m_InitValue.get())) return false;
    if (!pInit || !pInit->IsArray()) return true;
    std::int64_t given = 0;
    for (const std::int32_t repeat : static_cast<const CInitArray*>(pInit)->m_Repeats) given += repeat;
    return given < index.GetFirst()->GetProduct();
}

void CNorvane::DeclareArray(CNode* pList, CNode* pRanges, CType* pElement, CNode* pInitList)
{
    if (!pElement) pElement = m_DataTypes.m_ErrorType;
    if (pElement->IsAny()) {
        m_Errors.ErrAnyNotAllowed(pList->location);
        m_Errors.ErrInitAny(pList->location);
        return;
    }
    std::unique_ptr<CArrayIndex> pIndex = BuildArrayIndex(pRanges);
    if (!pIndex) return;
    const CTypeArrayUser* pUser = pElement->AsArrayUser();
    CTypeArray* pArray = GetArrayType(pUser ? pUser->m_ElementType : pElement, pIndex.get());

    // An array of a named array type has that type's levels behind its own.
    m_PendingIndex = std::make_unique<CArrayOfArrayIndex>();
    m_PendingIndex->Add(std::move(pIndex));
    for (int level = 0; pUser && pUser->m_Index && level < pUser->m_Index->GetLevelCount(); ++level)
        m_PendingIndex->Add(pUser->m_Index->GetLevel(level)->Clone());

    const std::unique_ptr<CInitValue> pInit = MakeArrayValue(pElement, pArray, pInitList);
    if ((pInitList && !pInit) || LosesDefault(*pElement, *m_PendingIndex, pInit.get())) NoteDroppedValue(pList);
    if (m_VarBlockFlags & InType) {
        AddArrayTypes(pList, pElement, pArray, pInit.get());
        return;
    }
    m_ArrayPending = true;
    AddVariables(pList, pArray, pInit.get());   // declared with or without a value
}
