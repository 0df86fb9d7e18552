// The output file and the texts that instructions are made of.

#include "codegen/CodeGeneration.h"

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

void CCodeGeneration::WriteText(std::string_view text)
{
    if (!m_Output) InternalFault("text is written while no output is open");
    m_Output->Write(text);
}

void CCodeGeneration::WriteLine(std::string_view text)
{
    WriteText(text);
    WriteText("\n");
}

void CCodeGeneration::WriteTabLine(std::string_view text)
{
    WriteText("\t");
    WriteLine(text);
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

    WriteText("\n");
    WriteLine("DBI FILENAME " + ShowControlCharacters(name));
    WriteLine("DBI FILETIME " + std::string(fileTime));
    WriteLine("DBI FILEVERSION " + std::string(fileVersion));
    WriteLine("DBI COMPILERBUILDNUMBER " + std::string(buildNumber));
}

// A value of a structure or an array is always handled by its address. Aliases are looked through for that
// question only: what is printed is the name as declared.
std::string CCodeGeneration::GetTypeSuffix(const CType* pType) const
{
    if (!pType) return "(ERROR)";   // as a declaration without a type counts
    if (pType->IsAggregate()) return GetPointerSuffix();
    return "(" + pType->m_Name + ")";
}

std::string CCodeGeneration::GetPointerSuffix() const
{
    const CType* pType = m_PointerType ? m_PointerType : m_Norvane.m_DataTypes.m_PointerType;
    return pType ? "(" + pType->m_Name + ")" : "(ERROR)";
}

// A literal that no rule has reached is of the common type of its kind. A comparison of literals of two kinds
// stays untyped too, and is a BOOL like any other; so is what the operators that let it pass make of it.
const CType* CCodeGeneration::GetNodeType(const CNode* pNode) const
{
    if (pNode->pType) return pNode->pType;
    if (IsComparison(pNode->nKind)) return m_Norvane.m_DataTypes.FindType("BOOL");
    switch (pNode->nKind) {
    case IMM_INTEGER: return m_Norvane.m_DataTypes.FindType("INT");
    case IMM_REAL: return m_Norvane.m_DataTypes.FindType("REAL");
    case TRUE:
    case FALSE:
    case UNARY_MINUS:
    case NOT:
    case ABS:
    case SQRT:
    case POWER:
    case MIN:
    case MAX:
    case EXP_LIST: return m_Norvane.m_DataTypes.FindType("BOOL");
    default: return nullptr;
    }
}

std::string CCodeGeneration::GetNodeSuffix(const CNode* pNode) const
{
    return GetTypeSuffix(GetNodeType(pNode));
}

std::string CCodeGeneration::GetAreaPrefix(const CVariable* pVariable) const
{
    if (!pVariable->m_DirectAddress.empty()) return {};   // the offset alone names the place, also of a retain variable
    if (pVariable->m_IsRetain) return "retain+";
    return pVariable->m_IsLocal ? "local+" : "global+";
}

std::string CCodeGeneration::GetVarBlockName(const CVariable* pVariable) const
{
    if (!pVariable->m_IsLocal) return "VAR_GLOBAL";
    if (pVariable->m_IsInOut) return "VAR_IN_OUT";
    if (pVariable->m_IsOutput) return "VAR_OUTPUT";
    if (pVariable->m_IsInput) return "VAR_INPUT";
    return "VAR";
}

// (BOOL) [local+4].3 ; ready
std::string CCodeGeneration::GetVariableOperand(const CVariable* pVariable) const
{
    std::string text = GetTypeSuffix(pVariable->m_Type) + " [" + GetAreaPrefix(pVariable);
    AppendFormat(text, "%d]", pVariable->m_Offset);
    if (pVariable->m_Type && pVariable->m_Type->IsBool()) AppendFormat(text, ".%d", pVariable->m_BitOffset);
    text += " ; " + pVariable->m_Name;
    return text;
}

std::string CCodeGeneration::GetPackedOffset(std::int64_t offsetBytes, int bit)
{
    if (bit > 0) return GetCommentedOffset(offsetBytes, bit);
    return FormatText("%d", static_cast<std::int32_t>(offsetBytes));
}

// 50331653	;0x03000005
std::string CCodeGeneration::GetCommentedOffset(std::int64_t offsetBytes, int bit)
{
    constexpr int bitShift = 24;
    const std::uint32_t bitPart = static_cast<std::uint32_t>(bit) << bitShift;
    const std::uint32_t packed = static_cast<std::uint32_t>(offsetBytes) | bitPart;
    return FormatText("%d\t;0x%08X", static_cast<std::int32_t>(packed), packed);
}
