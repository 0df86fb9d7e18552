// The output file and the texts that instructions are made of.

#include "codegen/CodeGeneration.h"

#include "codegen/TextPieces.h"
#include "files/Fatal.h"
#include "files/Format.h"
#include "files/OutputTextFile.h"
#include "files/XmlDocument.h"
#include "frontend/Node.h"
#include "model/Type.h"
#include "model/Variable.h"
#include "semantics/Norvane.h"

CCodeGeneration::CCodeGeneration(CNorvane& norvane)
    : m_Norvane(norvane), m_ErrorHandler(&norvane.m_Errors), m_MemoryHandler(&norvane.m_Memory)
{
}

CCodeGeneration::~CCodeGeneration() = default;

std::int64_t CCodeGeneration::GetPosition() const
{
    return m_WrittenBytes + static_cast<std::int64_t>(m_Text.GetSize());
}

void CCodeGeneration::FlushText()
{
    if (!m_Output) InternalFault("text is written while no output is open");
    m_Output->Write(m_Text.View());
    m_WrittenBytes += static_cast<std::int64_t>(m_Text.GetSize());
    m_Text.Clear();
}

void CCodeGeneration::FlushLarge(const TextBuffer& text)
{
    constexpr std::size_t large = 65536;   // bytes
    if (&text == &m_Text && m_Text.GetSize() >= large) FlushText();
}

void CCodeGeneration::WriteText(std::string_view text)
{
    m_Text.Append(text);
    FlushText();
}

void CCodeGeneration::WriteLine(std::string_view text)
{
    m_Text.Append(text, '\n');
    FlushText();
}

void CCodeGeneration::WriteTabLine(std::string_view text)
{
    m_Text.Append('\t', text, '\n');
    FlushText();
}

//
// DBI FILENAME main.st
// DBI FILETIME 1700000000
// DBI FILEVERSION 0
// DBI COMPILERBUILDNUMBER 1
void CCodeGeneration::WriteHeader(std::string_view name, std::string_view fileTime, std::string_view fileVersion,
                                  std::string_view buildNumber)
{
    // Only the backslash counts, on every platform, and not at the very start.
    const std::size_t separator = name.rfind('\\');
    if (separator != std::string_view::npos && separator > 0) name.remove_prefix(separator + 1);

    m_Text.Append('\n');
    m_Text.Append("DBI FILENAME ", ShowControlCharacters(name), '\n');
    m_Text.Append("DBI FILETIME ", fileTime, '\n');
    m_Text.Append("DBI FILEVERSION ", fileVersion, '\n');
    m_Text.Append("DBI COMPILERBUILDNUMBER ", buildNumber, '\n');
    FlushText();
}

// A value of a structure or an array is always handled by its address. Aliases are looked through for that
// question only: what is printed is the name as declared.
TypeSuffix CCodeGeneration::SuffixOf(const CType* pType) const
{
    if (!pType) return {"ERROR"};   // as a declaration without a type counts
    if (pType->IsAggregate()) return PointerSuffix();
    return {pType->m_Name};
}

TypeSuffix CCodeGeneration::PointerSuffix() const
{
    const CType* pType = m_PointerType ? m_PointerType : m_Norvane.m_DataTypes.m_PointerType;
    return {pType ? std::string_view(pType->m_Name) : "ERROR"};
}

std::string CCodeGeneration::GetTypeSuffix(const CType* pType) const
{
    return MakeText(SuffixOf(pType));
}

std::string CCodeGeneration::GetPointerSuffix() const
{
    return MakeText(PointerSuffix());
}

// A literal that no rule has reached is of the common type of its kind. A comparison of literals of two kinds
// stays untyped too, and is a BOOL like any other; so is what the operators that let it pass make of it.
const CType* CCodeGeneration::GetNodeType(const CNode* pNode) const
{
    if (pNode->pType) return pNode->pType;
    if (IsComparison(pNode->nKind)) return m_Norvane.m_DataTypes.m_BoolType;
    switch (pNode->nKind) {
    case IMM_INTEGER: return m_Norvane.m_DataTypes.m_IntType;
    case IMM_REAL: return m_Norvane.m_DataTypes.m_RealType;
    case TRUE:
    case FALSE:
    case UNARY_MINUS:
    case NOT:
    case ABS:
    case SQRT:
    case POWER:
    case MIN:
    case MAX:
    case EXP_LIST: return m_Norvane.m_DataTypes.m_BoolType;
    default: return nullptr;
    }
}

TypeSuffix CCodeGeneration::SuffixOf(const CNode* pNode) const
{
    return SuffixOf(GetNodeType(pNode));
}

std::string_view CCodeGeneration::GetAreaPrefix(const CVariable* pVariable) const
{
    if (!pVariable->m_DirectAddress.empty()) return {};   // the offset alone names the place, also of a retain variable
    if (pVariable->m_IsRetain) return "retain+";
    return pVariable->m_IsLocal ? "local+" : "global+";
}

std::string_view CCodeGeneration::GetVarBlockName(const CVariable* pVariable) const
{
    if (!pVariable->m_IsLocal) return "VAR_GLOBAL";
    if (pVariable->m_IsInOut) return "VAR_IN_OUT";
    if (pVariable->m_IsOutput) return "VAR_OUTPUT";
    if (pVariable->m_IsInput) return "VAR_INPUT";
    return "VAR";
}

// (BOOL) [local+4].3 ; ready
VariableOperand CCodeGeneration::OperandOf(const CVariable* pVariable) const
{
    MemoryPlace place{GetAreaPrefix(pVariable), pVariable->m_Offset};
    if (pVariable->m_Type && pVariable->m_Type->IsBool()) place.bit = pVariable->m_BitOffset;
    return {SuffixOf(pVariable->m_Type), place, pVariable->m_Name};
}

std::string CCodeGeneration::GetVariableOperand(const CVariable* pVariable) const
{
    return MakeText(OperandOf(pVariable));
}

std::string CCodeGeneration::GetPackedOffset(std::int64_t offsetBytes, int bit)
{
    return MakeText(PackedOffset{offsetBytes, bit});
}

std::string CCodeGeneration::GetCommentedOffset(std::int64_t offsetBytes, int bit)
{
    return MakeText(CommentedOffset(offsetBytes, bit));
}
