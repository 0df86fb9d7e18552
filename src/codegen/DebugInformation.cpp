// The debug file: an XML document that tells a debugger where everything lies, and by checksums whether a
// stored image belongs to this compilation. The order of elements and attributes is that of the code. The file is
// written from its start to its end; what stands in front of its reasons (the signs, the marks of the POUs that are
// used) is computed beforehand.

#include "codegen/CodeGeneration.h"

#include "files/Format.h"
#include "files/TextFile.h"
#include "files/XmlStream.h"
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

static constexpr std::uint16_t g_EmptySign = 0xFFFF;

// A cyclic redundancy check of 16 bits that starts with all bits set and isn't inverted at its end: so the sign of a
// text goes on to that of a longer one.
static std::uint16_t ContinueSign(std::uint16_t begun, std::string_view text)
{
    static constexpr std::array<std::uint16_t, 256> table = MakeSignTable();
    unsigned sign = begun;
    for (const char c : text) sign = sign >> 8 ^ table[(sign ^ static_cast<unsigned char>(c)) & 0xFF];
    return static_cast<std::uint16_t>(sign);
}

std::uint16_t CCodeGeneration::ComputeSign(std::string_view text)
{
    return ContinueSign(g_EmptySign, text);
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
static void WriteBit(XmlStream& stream, const CType* pType, std::int32_t bit)
{
    if (pType->IsBool()) stream.WriteAttribute("bit", bit);
    else if (IsBoolArray(pType)) stream.WriteAttribute("bit", std::max(bit, 0));
}

namespace
{

struct DebugSigns
{
    std::uint16_t global;
    std::uint16_t retain;
};

// The elements of the file, written as they come.
class CDebugDocument
{
public:
    CDebugDocument(const CCodeGeneration& code, const CNorvane& norvane, XmlStream& stream)
        : m_Code(code), m_Norvane(norvane), m_Stream(stream)
    {
    }
    void Write();

private:
    std::int64_t GetInnermostStride(const CType* pType, const CArrayOfArrayIndex* pIndex) const;
    const CType* GetDebugType(const CType* pType) const;
    std::int32_t GetSegment(const CVariable* pVariable) const;
    std::string GetVariableTypeText(const CVariable* pVariable) const;
    DebugSigns ComputeSigns() const;
    void WriteSigns(const DebugSigns& signs);
    void WriteInfo(const DebugSigns& signs);
    void WriteVariable(const CVariable* pVariable);
    void WriteMember(const CTypeStruct* pStruct, const CMember* pMember);
    void WriteType(const CType* pType);

    const CCodeGeneration& m_Code;
    const CNorvane& m_Norvane;
    XmlStream& m_Stream;
};

}   // namespace

std::int64_t CDebugDocument::GetInnermostStride(const CType* pType, const CArrayOfArrayIndex* pIndex) const
{
    const int levels = pIndex ? pIndex->GetLevelCount() : 0;
    return m_Code.GetElementStride(pType, pIndex, levels - 1, -1);
}

// What was declared without a type counts as of the error type.
const CType* CDebugDocument::GetDebugType(const CType* pType) const
{
    return pType ? pType->GetBaseType() : m_Norvane.m_DataTypes.m_ErrorType;
}

// ---- Signs

// Without parentheses: they enclose the entries of the text that is signed.
std::string CDebugDocument::GetVariableTypeText(const CVariable* pVariable) const
{
    std::string text = GetTypeText(GetDebugType(pVariable->m_Type), pVariable->GetIndex());
    std::erase_if(text, [](char c) { return c == '(' || c == ')'; });
    return text;
}

// "(a,INT[0..9],12,-1)" for each global variable. The bit is signed as it stands, -1 for what has none.
DebugSigns CDebugDocument::ComputeSigns() const
{
    DebugSigns signs{g_EmptySign, g_EmptySign};
    for (const CVariable* pVariable : m_Norvane.m_Memory.m_GlobalVariables) {
        const std::string text = "(" + pVariable->m_Name + "," + GetVariableTypeText(pVariable) +
                                 FormatText(",%d,%d)", pVariable->m_Offset, pVariable->m_BitOffset);
        signs.global = ContinueSign(signs.global, text);
        if (pVariable->m_IsRetain) signs.retain = ContinueSign(signs.retain, text);
    }
    return signs;
}

// globalsign="65535" retainsign="65535" dbisign="65535"
void CDebugDocument::WriteSigns(const DebugSigns& signs)
{
    m_Stream.WriteAttribute("globalsign", signs.global);
    m_Stream.WriteAttribute("retainsign", signs.retain);
    m_Stream.WriteAttribute("dbisign", signs.global);   // Wanted (files): the same as the first
}

// ---- The elements

// <INFO>
//     <SOURCEFILE>main.st</SOURCEFILE>
//     <PROGRAM name="default" version="0" filetime="1700000000"/>
//     <SIGN .../>
// </INFO>
void CDebugDocument::WriteInfo(const DebugSigns& signs)
{
    m_Stream.BeginElement("INFO");
    for (const std::string& name : m_Norvane.m_SourceFiles) {
        m_Stream.BeginElement("SOURCEFILE");
        m_Stream.WriteText(ShowControlCharacters(name));
        m_Stream.EndElement();
    }
    m_Stream.BeginElement("PROGRAM");
    m_Stream.WriteAttribute("name", ShowControlCharacters(m_Norvane.m_ProgramName));
    m_Stream.WriteAttribute("version", m_Norvane.m_ProgramVersion);
    m_Stream.WriteAttribute("filetime", m_Norvane.m_CompileStamp);
    m_Stream.EndElement();
    m_Stream.BeginElement("SIGN");
    WriteSigns(signs);
    m_Stream.EndElement();
    m_Stream.EndElement();
}

// <POU name="main" type="PROGRAM" id="1" localsize="6" used="False"/>
static void WritePouElement(XmlStream& stream, CPou* pPou)
{
    const CProgram* pProgram = pPou->AsProgram();
    stream.BeginElement("POU");
    stream.WriteAttribute("name", ShowControlCharacters(pPou->m_Name));
    stream.WriteAttribute("type", pProgram ? "PROGRAM" : pPou->IsFunctionBlock() ? "FUNCTION_BLOCK" : "FUNCTION");
    if (pProgram) stream.WriteAttribute("id", pProgram->m_Id);
    stream.WriteAttribute("localsize", pPou->m_LocalSize);
    stream.WriteAttribute("used", pPou->m_Used);
    stream.EndElement();
}

// <VARIABLE name="a" datatype="INT[0..9]" displacement="[2]" type="VAR_GLOBAL" segment="2" offset="12"
//           constant="False"/>
void CDebugDocument::WriteVariable(const CVariable* pVariable)
{
    const CType* pType = GetDebugType(pVariable->m_Type);
    const std::string typeText = GetVariableTypeText(pVariable);
    m_Stream.BeginElement("VARIABLE");
    m_Stream.WriteAttribute("name", pVariable->m_Name);
    m_Stream.WriteAttribute("datatype", typeText);
    if (pVariable->IsArray() && pType->IsArray()) {
        std::int64_t size = GetInnermostStride(pType, pVariable->GetIndex());
        if (size == 0 && IsInnermostBool(pType)) size = 1;
        m_Stream.WriteAttribute("displacement", CCodeGeneration::MakeDisplacement(typeText, size));
    }
    m_Stream.WriteAttribute("type", pVariable->m_IsRetain ? "VAR_GLOBAL_RETAIN" : "VAR_GLOBAL");
    m_Stream.WriteAttribute("segment", GetSegment(pVariable));
    m_Stream.WriteAttribute("offset", pVariable->m_Offset);
    WriteBit(m_Stream, pType, pVariable->m_BitOffset);
    m_Stream.WriteAttribute("constant", pVariable->m_IsConstant);
    m_Stream.EndElement();
}

// A retain variable lies in the retain area even if it has an address.
std::int32_t CDebugDocument::GetSegment(const CVariable* pVariable) const
{
    if (pVariable->m_IsRetain) return m_Norvane.m_Memory.m_RetainCode;
    if (!pVariable->m_DirectAddress.empty()) return m_Norvane.m_Memory.m_AbsoluteCode;
    return m_Norvane.m_Memory.m_GlobalCode;
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
void CDebugDocument::WriteMember(const CTypeStruct* pStruct, const CMember* pMember)
{
    const CType* pType = GetDebugType(pMember->m_Type);
    const CArrayOfArrayIndex* pIndex = pMember->m_Index.get();
    const std::string typeText = GetTypeText(pType, pIndex);
    m_Stream.BeginElement("MEMBER");
    m_Stream.WriteAttribute("name", pMember->m_Name);
    m_Stream.WriteAttribute("datatype", typeText);
    m_Stream.WriteAttribute("offset", pMember->m_Offset);
    if (pType->IsArray())
        m_Stream.WriteAttribute("displacement",
                                CCodeGeneration::MakeDisplacement(typeText, GetInnermostStride(pType, pIndex)));
    WriteBit(m_Stream, pType, pStruct->GetBoolBit(pMember));
    const char* memberClass = pStruct->IsStructFB() ? GetMemberClass(pMember) : nullptr;
    if (memberClass) m_Stream.WriteAttribute("class", memberClass);
    m_Stream.EndElement();
}

// <TYPE name="point" type="STRUCT"><MEMBER .../></TYPE>
// <TYPE name="INT" datatype="INT" align="2" size="16"/>
// An alias takes the kind of what it renames, and an array is of the second kind.
void CDebugDocument::WriteType(const CType* pType)
{
    m_Stream.BeginElement("TYPE");
    m_Stream.WriteAttribute("name", pType->m_Name);
    if (const CTypeStruct* pStruct = pType->AsStruct()) {
        m_Stream.WriteAttribute("type", pStruct->IsStructFB() ? "FUNCTION_BLOCK" : "STRUCT");
        for (const std::unique_ptr<CMember>& pMember : pStruct->m_Members) WriteMember(pStruct, pMember.get());
        m_Stream.EndElement();
        return;
    }
    m_Stream.WriteAttribute("datatype", pType->GetBaseType()->m_Name);
    m_Stream.WriteAttribute("align", pType->m_Align);
    m_Stream.WriteAttribute("size", pType->m_SizeBits);
    m_Stream.EndElement();
}

void CDebugDocument::Write()
{
    const DebugSigns signs = ComputeSigns();
    m_Stream.BeginElement("DBI");
    WriteInfo(signs);

    m_Stream.BeginElement("POU_LIST");
    for (CPou* pPou : m_Norvane.m_Pous.GetPous()) WritePouElement(m_Stream, pPou);
    m_Stream.EndElement();

    m_Code.WriteCallTree(m_Stream);
    if (m_Stream.HasFailed()) return;

    m_Stream.BeginElement("GLOBAL");
    for (const CVariable* pVariable : m_Norvane.m_Memory.m_GlobalVariables) WriteVariable(pVariable);
    m_Stream.EndElement();

    m_Stream.BeginElement("AREAS");
    m_Stream.WriteAttribute("globalused", m_Norvane.m_Memory.m_GlobalBytes);
    m_Stream.WriteAttribute("retainused", m_Norvane.m_Memory.m_RetainBytes);
    WriteSigns(signs);
    m_Stream.EndElement();

    m_Stream.BeginElement("DATATYPE");
    for (const CType* pType : m_Norvane.m_DataTypes.GetTypes())
        if (pType->m_Allowed && pType->m_Name != "ERROR") WriteType(pType);
    m_Stream.EndElement();
    m_Stream.EndElement();
}

// ---- The file

std::string CCodeGeneration::GetDebugName(const std::string& outputName)
{
    constexpr std::string_view extension = ".asm";
    const std::size_t position = outputName.find(extension);
    const bool isCut = position != std::string::npos && position > 0 &&
                       outputName.find(extension, position + 1) == std::string::npos;
    return (isCut ? outputName.substr(0, position) : outputName) + ".dbi";
}

bool CCodeGeneration::WriteDebugFile(const std::string& fileName) const
{
    constexpr int flags = TextFile::Utf8 | TextFile::NoBom | TextFile::NoLineEndTranslation;
    constexpr int bufferSize = 65536;
    TextFile file;
    if (file.Open(fileName, TextFile::ForWriting, flags, bufferSize) != 0) return false;
    std::string text;
    XmlStream stream(XmlStream::Form::Formatted, text, &file);
    CDebugDocument(*this, m_Norvane, stream).Write();
    const bool isWritten = stream.Finish();
    const bool isClosed = file.Close() == 0;
    return isWritten && isClosed;
}

bool CCodeGeneration::WriteDebugInformation(const std::string& outputName, const std::optional<std::string>& fileName)
{
    AnalyseStacks();
    return WriteDebugFile(fileName.value_or(GetDebugName(outputName)));
}
