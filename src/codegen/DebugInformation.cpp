// The debug file: an XML document that tells a debugger where everything lies, and by checksums whether a
// stored image belongs to this compilation. The order of elements and attributes is that of the code.

#include "codegen/CodeGeneration.h"

#include "files/Format.h"
#include "files/XmlDocument.h"
#include "model/Pou.h"
#include "model/PouTable.h"
#include "model/TypeArray.h"
#include "model/TypeStruct.h"
#include "model/Variable.h"
#include "semantics/Norvane.h"
#include "semantics/Wrapping.h"
#include "target/DataType.h"
#include "target/MemoryHandler.h"

#include <algorithm>
#include <array>

// ---- Checksums

static constexpr std::array<std::uint16_t, 256> MakeSignTable()
{
    constexpr std::uint16_t polynomial = 0xA001;   // reflected: the lowest bit goes first
    std::array<std::uint16_t, 256> table{};
    for (std::size_t byte = 0; byte < table.size(); ++byte) {
        unsigned value = static_cast<unsigned>(byte);
        for (int bit = 0; bit < 8; ++bit) value = value & 1 ? value >> 1 ^ polynomial : value >> 1;
        table[byte] = static_cast<std::uint16_t>(value);
    }
    return table;
}

// A cyclic redundancy check of 16 bits that starts with all bits set and isn't inverted at its end.
std::uint16_t CCodeGeneration::ComputeSign(std::string_view text)
{
    static constexpr std::array<std::uint16_t, 256> table = MakeSignTable();
    unsigned sign = 0xFFFF;
    for (const char c : text) sign = sign >> 8 ^ table[(sign ^ static_cast<unsigned char>(c)) & 0xFF];
    return static_cast<std::uint16_t>(sign);
}

// ---- Texts of types

// The number of elements of each dimension, with a 0 behind each bracket group: "[0..9,1..2][5..6]" gives
// 10, 2, 0, 2, 0.
static std::vector<std::int64_t> ScanDimensions(std::string_view typeText)
{
    std::vector<std::int64_t> sizes;
    std::size_t position = typeText.find('[');
    while (position != std::string_view::npos) {
        // Cut behind the group, so that no search runs on into the next ones.
        const std::string_view upToEnd = typeText.substr(0, typeText.find(']', position));
        while (position < upToEnd.size()) {
            const std::size_t start = position + 1;
            position = std::min(upToEnd.find(',', start), upToEnd.size());
            const std::string_view range = upToEnd.substr(start, position - start);
            const std::size_t dots = range.find("..");
            if (dots == std::string_view::npos) continue;
            const std::int64_t low = ToInt(range.substr(0, dots));
            const std::int64_t high = ToInt(range.substr(dots + 2));
            sizes.push_back(high - low + 1);
        }
        sizes.push_back(0);
        position = typeText.find('[', upToEnd.size());
    }
    return sizes;
}

// The stride of each dimension, outermost first, in the bracket groups of the type: from the innermost, whose
// stride is given, each is multiplied by the size of the dimension inside it. The outermost size is in none.
std::string CCodeGeneration::MakeDisplacement(std::string_view typeText, std::int64_t size)
{
    const std::vector<std::int64_t> sizes = ScanDimensions(typeText);
    // Innermost first, as they come; turned round at the end, since a type may have very many levels.
    std::vector<std::string> strides = {FormatText("%lld]", static_cast<long long>(size))};
    for (std::size_t i = sizes.size() < 2 ? 0 : sizes.size() - 2; i >= 1; --i) {
        if (sizes[i] == 0) continue;
        const bool isFirstOfGroup = sizes[i - 1] == 0;
        size = WrapMul(size, sizes[i]);
        strides.push_back(FormatText("%lld%s", static_cast<long long>(size), isFirstOfGroup ? "][" : ","));
    }
    std::string text = "[";
    for (std::size_t i = strides.size(); i > 0; --i) text += strides[i - 1];
    return text;
}

// "INT[0..9,1..2][5..6]"; without an index, and for all that is no array, the name alone.
static std::string GetTypeText(const CType* pType, const CArrayOfArrayIndex* pIndex)
{
    if (!pType->IsArray()) return pType->m_Name;
    std::string text = pType->m_Name.substr(0, pType->m_Name.find('['));
    const int levels = pIndex ? pIndex->GetLevelCount() : 0;
    for (int level = 0; level < levels; ++level) {
        const char* separator = "[";
        for (const CIndex& index : pIndex->GetLevel(level)->m_Dimensions) {
            AppendFormat(text, "%s%d..%d", separator, index.m_Low, index.m_High);
            separator = ",";
        }
        text += "]";
    }
    return text;
}

static bool IsBoolArray(const CType* pType)
{
    const CTypeArray* pArray = pType->AsArray();
    return pArray && pArray->m_Element && pArray->m_Element->IsBool();
}

static bool IsInnermostBool(const CType* pType)
{
    while (pType && pType->IsArray()) pType = pType->AsArray()->m_Element;
    return pType && pType->IsBool();
}

// Only what is a bit has one; a whole array of bits that wasn't given any begins at bit 0.
static void SetBit(CXmlNode* pElement, const CType* pType, std::int32_t bit)
{
    if (pType->IsBool()) pElement->SetAttribute("bit", bit);
    else if (IsBoolArray(pType)) pElement->SetAttribute("bit", std::max(bit, 0));
}

std::int64_t CCodeGeneration::GetInnermostStride(const CType* pType, const CArrayOfArrayIndex* pIndex) const
{
    const int levels = pIndex ? pIndex->GetLevelCount() : 0;
    return GetElementStride(pType, pIndex, levels - 1, -1);
}

// What was declared without a type counts as of the error type.
const CType* CCodeGeneration::GetDebugType(const CType* pType) const
{
    return pType ? pType->GetBaseType() : m_Norvane.m_DataTypes.m_ErrorType;
}

// ---- The elements

// <INFO>
//     <SOURCEFILE>main.st</SOURCEFILE>
//     <PROGRAM name="default" version="0" filetime="1700000000"/>
//     <SIGN .../>
// </INFO>
// The signs aren't known yet: the result is the element that takes them.
CXmlNode* CCodeGeneration::WriteDebugInfo(CXmlNode& root) const
{
    CXmlNode* pInfo = root.AddChild("INFO");
    for (const std::string& name : m_Norvane.m_SourceFiles) pInfo->AddChild("SOURCEFILE", ShowControlCharacters(name));
    CXmlNode* pProgram = pInfo->AddChild("PROGRAM");
    pProgram->SetAttribute("name", ShowControlCharacters(m_Norvane.m_ProgramName));
    pProgram->SetAttribute("version", m_Norvane.m_ProgramVersion);
    pProgram->SetAttribute("filetime", m_Norvane.m_CompileStamp);
    return pInfo->AddChild("SIGN");
}

// <POU name="main" type="PROGRAM" id="1" localsize="6" used="False"/>
static void AddPouElement(CXmlNode* pList, CPou* pPou)
{
    const CProgram* pProgram = pPou->AsProgram();
    CXmlNode* pElement = pList->AddChild("POU");
    pElement->SetAttribute("name", ShowControlCharacters(pPou->m_Name));
    pElement->SetAttribute("type", pProgram ? "PROGRAM" : pPou->IsFunctionBlock() ? "FUNCTION_BLOCK" : "FUNCTION");
    if (pProgram) pElement->SetAttribute("id", pProgram->m_Id);
    pElement->SetAttribute("localsize", pPou->m_LocalSize);
    pElement->SetAttribute("used", pPou->m_Used);
}

// <VARIABLE name="a" datatype="INT[0..9]" displacement="[2]" type="VAR_GLOBAL" segment="2" offset="12"
//           constant="False"/>
void CCodeGeneration::AddVariableElement(CXmlNode* pList, const CVariable* pVariable, DebugSigns& signs) const
{
    const CType* pType = GetDebugType(pVariable->m_Type);
    const CArrayOfArrayIndex* pIndex = pVariable->GetIndex();
    std::string typeText = GetTypeText(pType, pIndex);
    std::erase_if(typeText, [](char c) { return c == '(' || c == ')'; });

    CXmlNode* pElement = pList->AddChild("VARIABLE");
    pElement->SetAttribute("name", pVariable->m_Name);
    pElement->SetAttribute("datatype", typeText);
    if (pVariable->IsArray() && pType->IsArray()) {
        std::int64_t size = GetInnermostStride(pType, pIndex);
        if (size == 0 && IsInnermostBool(pType)) size = 1;
        pElement->SetAttribute("displacement", MakeDisplacement(typeText, size));
    }
    pElement->SetAttribute("type", pVariable->m_IsRetain ? "VAR_GLOBAL_RETAIN" : "VAR_GLOBAL");
    pElement->SetAttribute("segment", GetSegment(pVariable));
    pElement->SetAttribute("offset", pVariable->m_Offset);
    SetBit(pElement, pType, pVariable->m_BitOffset);
    pElement->SetAttribute("constant", pVariable->m_IsConstant);

    // The bit is signed as it stands, -1 for what has none.
    const std::string sign = "(" + pVariable->m_Name + "," + typeText +
                             FormatText(",%d,%d)", pVariable->m_Offset, pVariable->m_BitOffset);
    signs.global += sign;
    if (pVariable->m_IsRetain) signs.retain += sign;
}

// A retain variable lies in the retain area even if it has an address.
std::int32_t CCodeGeneration::GetSegment(const CVariable* pVariable) const
{
    if (pVariable->m_IsRetain) return m_MemoryHandler->m_RetainCode;
    if (!pVariable->m_DirectAddress.empty()) return m_MemoryHandler->m_AbsoluteCode;
    return m_MemoryHandler->m_GlobalCode;
}

// "InOut", "Input" or "Output"; null for what a function block keeps to itself, and for a plain structure's member.
static const char* GetMemberClass(const CMember* pMember)
{
    const CMemberFB* pMemberFb = pMember->AsMemberFB();
    if (!pMemberFb) return nullptr;
    if (pMemberFb->m_IsInOut) return "InOut";
    if (pMemberFb->m_IsInput) return "Input";
    return pMemberFb->m_IsOutput ? "Output" : nullptr;
}

// <MEMBER name="b" datatype="BOOL" offset="4" bit="0" class="Input"/>
void CCodeGeneration::AddMemberElement(CXmlNode* pParent, const CTypeStruct* pStruct, const CMember* pMember) const
{
    const CType* pType = GetDebugType(pMember->m_Type);
    const CArrayOfArrayIndex* pIndex = pMember->m_Index.get();
    const std::string typeText = GetTypeText(pType, pIndex);
    CXmlNode* pElement = pParent->AddChild("MEMBER");
    pElement->SetAttribute("name", pMember->m_Name);
    pElement->SetAttribute("datatype", typeText);
    pElement->SetAttribute("offset", pMember->m_Offset);
    if (pType->IsArray())
        pElement->SetAttribute("displacement", MakeDisplacement(typeText, GetInnermostStride(pType, pIndex)));
    SetBit(pElement, pType, pStruct->GetBoolBit(pMember));
    const char* memberClass = pStruct->IsStructFB() ? GetMemberClass(pMember) : nullptr;
    if (memberClass) pElement->SetAttribute("class", memberClass);
}

// <TYPE name="point" type="STRUCT"><MEMBER .../></TYPE>
// <TYPE name="INT" datatype="INT" align="2" size="16"/>
// An alias takes the kind of what it renames, and an array is of the second kind.
void CCodeGeneration::AddTypeElement(CXmlNode* pList, const CType* pType) const
{
    CXmlNode* pElement = pList->AddChild("TYPE");
    pElement->SetAttribute("name", pType->m_Name);
    if (const CTypeStruct* pStruct = pType->AsStruct()) {
        pElement->SetAttribute("type", pStruct->IsStructFB() ? "FUNCTION_BLOCK" : "STRUCT");
        for (const std::unique_ptr<CMember>& pMember : pStruct->m_Members)
            AddMemberElement(pElement, pStruct, pMember.get());
        return;
    }
    pElement->SetAttribute("datatype", pType->GetBaseType()->m_Name);
    pElement->SetAttribute("align", pType->m_Align);
    pElement->SetAttribute("size", pType->m_SizeBits);
}

// globalsign="65535" retainsign="65535" dbisign="65535"
void CCodeGeneration::SetSigns(CXmlNode* pElement, const DebugSigns& signs)
{
    const std::uint16_t global = ComputeSign(signs.global);
    pElement->SetAttribute("globalsign", global);
    pElement->SetAttribute("retainsign", ComputeSign(signs.retain));
    pElement->SetAttribute("dbisign", global);   // wanted: the same as the first
}

// ---- The file

std::string CCodeGeneration::GetDebugName(const std::string& outputName)
{
    constexpr std::string_view extension = ".asm";
    const std::size_t position = outputName.find(extension);
    const bool isCut = position != std::string::npos && position > 0 &&
                       outputName.find(extension, position + 1) == std::string::npos;
    return outputName.substr(0, isCut ? position : std::string::npos) + ".dbi";
}

bool CCodeGeneration::WriteDebugInformation(const std::string& outputName, const std::optional<std::string>& fileName)
{
    m_DebugDocument = std::make_unique<CXmlDocument>();
    CXmlNode& root = m_DebugDocument->m_Root;
    root.m_Name = "DBI";
    CXmlNode* pSign = WriteDebugInfo(root);

    // The walk comes between the list and its entries: it finds out which POUs are used.
    CXmlNode* pPouList = root.AddChild("POU_LIST");
    WriteCallTree(root);
    for (CPou* pPou : m_Norvane.m_Pous.GetPous()) AddPouElement(pPouList, pPou);

    DebugSigns signs;
    CXmlNode* pGlobal = root.AddChild("GLOBAL");
    for (const CVariable* pVariable : m_MemoryHandler->m_GlobalVariables) AddVariableElement(pGlobal, pVariable, signs);

    CXmlNode* pAreas = root.AddChild("AREAS");
    pAreas->SetAttribute("globalused", m_MemoryHandler->m_GlobalBytes);
    pAreas->SetAttribute("retainused", m_MemoryHandler->m_RetainBytes);
    SetSigns(pAreas, signs);
    SetSigns(pSign, signs);

    CXmlNode* pTypes = root.AddChild("DATATYPE");
    for (const CType* pType : m_Norvane.m_DataTypes.GetTypes())
        if (pType->m_Allowed && pType->m_Name != "ERROR") AddTypeElement(pTypes, pType);

    const int result = fileName ? m_DebugDocument->SaveAsIs(*fileName) : m_DebugDocument->Save(GetDebugName(outputName));
    return result == 0;
}
