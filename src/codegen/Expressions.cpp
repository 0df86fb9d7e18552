// Expressions. The machine is a pure stack machine, so an expression is its operands in order and one
// instruction behind them.

#include "codegen/CodeGeneration.h"

#include "codegen/RealText.h"
#include "codegen/TextPieces.h"
#include "files/Fatal.h"
#include "files/Format.h"
#include "frontend/Node.h"
#include "model/CastFunction.h"
#include "model/Pou.h"
#include "model/Type.h"
#include "model/Variable.h"
#include "semantics/Norvane.h"
#include "semantics/NumberRange.h"
#include "semantics/Wrapping.h"

#include <array>
#include <cstddef>
#include <memory_resource>
#include <vector>

#pragma GCC diagnostic push
#pragma GCC diagnostic error "-Wswitch"

// Appends the node's text. Whatever a branch has written, one more line end follows it, so a branch whose
// last line is closed already leaves an empty line. That is wanted, as are the two exceptions: a dead FOR and
// an EXIT out of a loop end without it. A kind that generates nothing gives the line end alone, and is listed here
// for it: the switch names every kind, and a new one that it doesn't name is an error of the build.
void CCodeGeneration::GenerateNode(CNode* pNode, TextBuffer& text)
{
    if (!pNode) InternalFault("a tree has no node where code is generated");
    switch (static_cast<Token>(pNode->nKind)) {   // without a default
#define OPERATOR(kind, mark, mnemonic) case kind:
#include "frontend/Operators.def"
#undef OPERATOR
        GenerateOperatorChain(pNode, text);   // ends each of its nodes itself
        return;

    case IMM_INTEGER: GenerateInteger(pNode, text); break;
    case IMM_REAL: GenerateReal(pNode, text); break;
    case TRUE: text.Append("\tPUSH(BOOL)\t1"); break;
    case FALSE: text.Append("\tPUSH(BOOL)\t0"); break;
    case STR_DIR: GenerateStringLiteral(pNode, text); break;
    case IDENTIFIER:
    case DOT:
    case ARRAY_ELEMENT: GenerateVariableAccess(pNode, AccessMode::Read, text); break;
    case CAST_FUNCTION_CALL: GenerateCast(pNode, text); break;
    case FUNCTION_CALL: GenerateFunctionCall(pNode, text); break;

    case UNARY_MINUS: GenerateUnary(pNode, "\tNEG", text); break;
    case NOT: GenerateUnary(pNode, "\tNOT", text); break;
    case ABS: GenerateUnary(pNode, "\tABS", text); break;
    case SQRT: GenerateUnary(pNode, "\tSQRT", text); break;
    case SHL: GenerateShift(pNode, "\tSHL", text); break;
    case SHR: GenerateShift(pNode, "\tSHR", text); break;
    case ROL: GenerateShift(pNode, "\tROL", text); break;
    case ROR: GenerateShift(pNode, "\tROR", text); break;
    case MULDIV: GenerateMulDiv(pNode, text); break;
    case MIN: GenerateMinMax(pNode, "\tMIN", text); break;
    case MAX: GenerateMinMax(pNode, "\tMAX", text); break;
    case LIMIT: GenerateLimit(pNode, text); break;

    case DIRECT_VARIABLE: ReportNoVariable(pNode); break;   // the tree holds no address to read

    case ASSIGN: GenerateAssignment(pNode, text); break;
    case IF: GenerateIf(pNode, text); break;
    case WHILE: GenerateWhile(pNode, text); break;
    case REPEAT: GenerateRepeat(pNode, text); break;
    case FOR:
        if (!GenerateFor(pNode, text)) return;
        break;
    case CASE: GenerateCase(pNode, text); break;
    case EXIT:
        if (!GenerateExit(pNode, text)) return;
        break;
    case RETURN: text.Append("\tJMP ", m_Label.DrawReturn()); break;
    case FUNCTION_BLOCK: GenerateFbCall(pNode, text); break;
    case SYSTEM: GenerateSystem(pNode, text); break;

    // Without code of their own. The lists and parts are written by the node that holds them, if at all.
    case NOP:
    case ERROR_:   // only a program's call as a statement gets here, and it does nothing
    case DATE_AND_TIME_DIR:
    case DATE_DIR:
    case TIME_DIR:
    case TIME_OF_DAY_DIR:
    case SIMPLIFIED:
    case NEW_ID:
    case EXP_LIST:
    case SUBRANGE_DOTS:
    case STMT_LIST:
    case ELSEIF_LIST:
    case ELSIF:
    case CASE_BODY_LIST:
    case ISV_LIST:
    case PARAMETER_LIST:
    case ASSIGN_FB:
    case ARROW:
    case FILE_GLOBAL:
    case PROGRAM:
    case FUNCTION:
    case RETURN_TYPE:
    case VAR_BLOCK:
    case VAR_BLOCK_BODY:
    case VAR:
    case VAR_INPUT:
    case VAR_OUTPUT:
    case VAR_IN_OUT:
    case VAR_GLOBAL:
    case VAR_EXTERNAL:
    case OPT_LIST:
    case RETAIN:
    case CONSTANT:
    case LIST_ID:
    case INIT_DECL_LIST:
    case TYPE_USER:
    case STRUCT:
    case STRUCT_TYPE_USER:
    case STRUCT_INIT_LIST:
    case ARRAY:
    case ARRAY_ARG:
    case ARRAY_INIT_LIST:
    case DUP:
    case ENUM:
    case SUB_RANGE: break;

#define TOKEN(name, number, text)
#define WORD(name, number, text) case name:
#include "frontend/Tokens.def"
#undef TOKEN
        InternalFault("a node has a word of the grammar as its kind");
    }
    text.Append('\n');
}

#pragma GCC diagnostic pop

bool CCodeGeneration::IsFalseLiteral(const CNode* pNode)
{
    return pNode->nKind == FALSE || (pNode->nKind == IMM_INTEGER && pNode->nValue == 0);
}

bool CCodeGeneration::IsTrueLiteral(const CNode* pNode)
{
    return pNode->nKind == TRUE || (pNode->nKind == IMM_INTEGER && pNode->nValue == 1);
}

// ---- Leaves

void CCodeGeneration::GenerateInteger(const CNode* pNode, TextBuffer& text)
{
    const CType* pType = GetNodeType(pNode);
    text.Append("\tPUSH", TypeSuffix{pType ? pType->m_Name : std::string_view("INT")}, '\t', pNode->nValue);
}

// Where the value of a literal is written down: that of a constant at its declaration, not at each of its uses.
static const SourceLocation& GetValueLocation(const CNode* pNode)
{
    const CVariable* pVariable = pNode->pVariable;
    return pVariable && pVariable->m_Location.szFile ? pVariable->m_Location : pNode->location;
}

void CCodeGeneration::GenerateReal(const CNode* pNode, TextBuffer& text)
{
    const CType* pType = GetNodeType(pNode);
    if (pType && pType->IsReal() && !SurvivesSixDecimals(pNode->GetReal(), pType->GetBaseType()->m_SizeBits))
        m_Norvane.m_Notes.Add(Note::RealPrinted, GetValueLocation(pNode));
    text.Append("\tPUSH(" + (pType ? pType->m_Name : "REAL") + ")\t");
    text.Append(FormatReal(pNode->GetReal()));
}

// One line to a byte, first byte first; neither a length nor an end mark. Kept (code): no blank behind PUSH, unlike
// in an assignment.
void CCodeGeneration::GenerateStringLiteral(const CNode* pNode, TextBuffer& text)
{
    for (const char byte : pNode->GetString()) {
        text.Append("\tPUSH", static_cast<signed char>(byte), " ;", byte, '\n');
    }
}

// ---- Operators with two operands

// Empty for a node that isn't an operator with two operands.
static std::string_view GetOperatorMnemonic(int kind)
{
    switch (kind) {
#define OPERATOR(kind, mark, mnemonic)                                                                                 \
    case kind:                                                                                                         \
        return "\t" mnemonic;
#include "frontend/Operators.def"
#undef OPERATOR
    default: return {};
    }
}

bool CCodeGeneration::UsesShortcut(const CNode* pNode) const
{
    if (pNode->nKind != AND && pNode->nKind != OR) return false;
    const CType* pLeft = GetNodeType(pNode->Child(0));
    return m_Norvane.m_BooleanShortcut && pLeft && pLeft->IsBool();
}

// The left operand decides alone; the right one generates nothing, and no function in it counts as called.
bool CCodeGeneration::IsDecidedByLeft(const CNode* pNode) const
{
    if (!UsesShortcut(pNode)) return false;
    return pNode->nKind == AND ? IsFalseLiteral(pNode->Child(0)) : IsTrueLiteral(pNode->Child(0));
}

// Left of a REAL constant even an address takes part in arithmetic, with the constant's type. The tree holds nothing
// to push for it.
static bool IsAddressComputedWith(const CNode* pOperator, const CNode* pLeft)
{
    if (pLeft->nKind != DIRECT_VARIABLE) return false;
    return pOperator->nKind == '+' || pOperator->nKind == '-' || pOperator->nKind == '*' || pOperator->nKind == '/';
}

// a + b + c + ... nests to the left as deep as the source is long, so the left side is a loop: down to the
// innermost left operand, writing what stands in front of each node's operands, and up again with the right
// operands and the instructions. A label of a node is drawn before those of its operands.
void CCodeGeneration::GenerateOperatorChain(CNode* pNode, TextBuffer& text)
{
    struct Level
    {
        CNode* pNode;
        Label label;   // where the shortcut jumps to; none if the node has none
    };
    // Nearly every chain is this short, and takes no memory from the heap.
    constexpr std::size_t few = 8;
    alignas(Level) std::array<std::byte, few * sizeof(Level)> start;
    std::pmr::monotonic_buffer_resource memory(start.data(), start.size());
    std::pmr::vector<Level> levels(&memory);
    levels.reserve(few);

    CNode* pLeft = pNode;
    bool isDecided = false;
    while (!GetOperatorMnemonic(pLeft->nKind).empty()) {
        if (pLeft->nKind == AND) text.Append("\t;and\n");
        if (pLeft->nKind == OR) text.Append("\t;or\n");
        isDecided = IsDecidedByLeft(pLeft);
        if (isDecided) break;
        Label label;
        if (UsesShortcut(pLeft)) label = m_Label.Draw();
        levels.push_back({pLeft, label});
        pLeft = pLeft->Child(0);
    }

    if (isDecided) text.Append(pLeft->nKind == AND ? "\tPUSH(BOOL)\t0\n" : "\tPUSH(BOOL)\t1\n");
    else if (!levels.empty() && IsAddressComputedWith(levels.back().pNode, pLeft)) text.Append('\n');
    else GenerateNode(pLeft, text);

    while (!levels.empty()) {
        const Level& level = levels.back();
        if (level.label.IsNone()) GenerateOperation(level.pNode, text);
        else GenerateShortcut(level.pNode, level.label, text);
        text.Append('\n');
        levels.pop_back();
    }
}

//	;and                    this line and the left operand are written already
//	...
//	DUP(BOOL)
//	JNC LABEL0001
//	POP(BOOL)
//	...
//	LABEL0001:
void CCodeGeneration::GenerateShortcut(const CNode* pNode, Label label, TextBuffer& text)
{
    text.Append("\tDUP(BOOL)\n");
    text.Append((pNode->nKind == AND ? "\tJNC " : "\tJC "), label, '\n');
    text.Append("\tPOP(BOOL)\n");
    GenerateNode(pNode->Child(1), text);
    text.Append('\t', label, ":\n");
}

// A text that is pushed as none or several values where the instruction takes one.
static bool IsLongText(const CNode* pNode)
{
    return pNode->nKind == STR_DIR && pNode->GetString().size() != 1;
}

// The right operand and the instruction; the left operand is on the stack already.
void CCodeGeneration::GenerateOperation(const CNode* pNode, TextBuffer& text)
{
    GenerateNode(pNode->Child(1), text);
    if (pNode->nKind == POWER) {
        GeneratePower(pNode, text);
        return;
    }
    // The value of a structure or array is its address here as everywhere.
    if (IsComparison(pNode->nKind) && IsAggregate(GetNodeType(pNode->Child(0))))
        m_Norvane.m_Notes.Add(Note::AddressesCompared, pNode->location);
    else if (IsLongText(pNode->Child(0)) || IsLongText(pNode->Child(1)))
        m_Norvane.m_Notes.Add(Note::NoNumber, pNode->location);
    text.Append(GetOperatorMnemonic(pNode->nKind), SuffixOf(pNode->Child(0)));
    // Kept (code): without jumps AND and OR close their line themselves, so an empty line follows.
    if (pNode->nKind == AND || pNode->nKind == OR) text.Append('\n');
}

// The exponent goes to the machine as REAL or INT; the type of the instruction is the base's.
void CCodeGeneration::GeneratePower(const CNode* pNode, TextBuffer& text)
{
    const CType* pExponent = GetNodeType(pNode->Child(1));
    const bool isReal = pExponent && pExponent->IsReal();
    GenerateConversion(pNode, isReal ? "REAL" : "INT", text);
    text.Append(GetOperatorMnemonic(POWER), isReal ? "R" : "", SuffixOf(pNode->Child(0)));
}

// The exponent or the count of an operator. Kept (code): decided by the type object, so an alias of the type is
// converted too.
void CCodeGeneration::GenerateConversion(const CNode* pOperator, std::string_view typeName, TextBuffer& text)
{
    const CType* pType = GetNodeType(pOperator->Child(1));
    if (pType && (pType->IsAggregate() || pType->IsString()))
        m_Norvane.m_Notes.Add(Note::NoNumber, pOperator->location);
    if (pType && pType == m_Norvane.m_DataTypes.FindType(typeName)) return;
    text.Append("\tTO_", typeName, SuffixOf(pType), '\n');
}

// ---- Other operators

void CCodeGeneration::GenerateUnary(const CNode* pNode, std::string_view mnemonic, TextBuffer& text)
{
    GenerateNode(pNode->Child(0), text);
    text.Append(mnemonic, SuffixOf(pNode->Child(0)));
}

void CCodeGeneration::GenerateShift(const CNode* pNode, std::string_view mnemonic, TextBuffer& text)
{
    GenerateNode(pNode->Child(0), text);
    GenerateNode(pNode->Child(1), text);
    GenerateConversion(pNode, "INT", text);
    text.Append(mnemonic, SuffixOf(pNode->Child(0)));
}

void CCodeGeneration::GenerateMulDiv(const CNode* pNode, TextBuffer& text)
{
    GenerateNode(pNode->Child(0), text);
    GenerateNode(pNode->Child(1), text);
    GenerateNode(pNode->Child(2), text);
    text.Append("\tMULDIV", SuffixOf(pNode->Child(0)));
}

// n arguments give n - 1 instructions.
void CCodeGeneration::GenerateMinMax(const CNode* pNode, std::string_view mnemonic, TextBuffer& text)
{
    const CNode* pList = pNode->Child(0);
    const TypeSuffix suffix = SuffixOf(pList);
    GenerateNode(pList->Child(0), text);
    for (int i = 1; i < pList->GetChildCount(); ++i) {
        GenerateNode(pList->Child(i), text);
        text.Append(mnemonic, suffix, '\n');
    }
}

// LIMIT(minimum, value, maximum)
void CCodeGeneration::GenerateLimit(const CNode* pNode, TextBuffer& text)
{
    const TypeSuffix suffix = SuffixOf(pNode->Child(0));
    GenerateNode(pNode->Child(0), text);
    GenerateNode(pNode->Child(1), text);
    text.Append("\tMAX", suffix, '\n');
    GenerateNode(pNode->Child(2), text);
    text.Append("\tMIN", suffix);
}

//	TO_REAL (INT)
//
void CCodeGeneration::GenerateCast(const CNode* pNode, TextBuffer& text)
{
    const CCastFunction* pCast = pNode->GetCast();
    if (!pCast) InternalFault("a cast has no function");
    GenerateNode(pNode->Child(0), text);
    text.Append("\tTO_", CapitalName{pCast->m_To->m_Name}, " (", CapitalName{pCast->m_From->m_Name}, ")\n");
}

// ---- Calls of functions and of the system

void CCodeGeneration::GenerateSystem(const CNode* pNode, TextBuffer& text)
{
    const CNode* pNumber = pNode->Child(0);
    NoteBeyond32Bits(m_Norvane.m_Notes, pNumber->nValue, pNumber);
    text.Append("\tSYS ", LowBits(pNumber->nValue));
}

FunctionLabel CCodeGeneration::LabelOf(const CPou* pPou) const
{
    const CFunction* pFunction = const_cast<CPou*>(pPou)->AsFunction();
    const CFunctionOverLoad* pOverload = pFunction ? m_Norvane.m_Pous.FindOverload(pPou->m_Name) : nullptr;
    const int index = pOverload ? pOverload->GetIndex(pFunction) : 0;
    return {pPou->m_Name, index};
}

// A variable that the callee writes goes by its address. Structures and arrays do in any case, input or not,
// since reading one pushes its address.
void CCodeGeneration::GenerateActualParameter(CNode* pActual, const CVariable& formal, TextBuffer& text)
{
    if (!pActual->IsVariableAccess()) {
        if (formal.IsHeldByPointer()) m_Norvane.m_Notes.Add(Note::ValueForAddress, pActual->location);
        GenerateNode(pActual, text);
        return;
    }
    const bool isAggregate = IsAggregate(formal.m_Type);
    const bool byAddress = formal.IsHeldByPointer() && !isAggregate;
    const bool isThrough = GenerateAccessLine(pActual, byAddress ? AccessMode::Address : AccessMode::Read, text);
    if (isAggregate && isThrough) m_Norvane.m_Notes.Add(Note::ValueForAddress, pActual->location);
}

void CCodeGeneration::GenerateFunctionCall(CNode* pNode, TextBuffer& text)
{
    CFunction* pFunction = pNode->GetPou() ? pNode->GetPou()->AsFunction() : nullptr;
    if (!pFunction) InternalFault("a call of " + std::string(pNode->GetName()) + " has no function");

    const CNode* pActuals = pNode->GetChildCount() > 0 ? pNode->Child(0) : nullptr;
    const int count = pActuals ? pActuals->GetChildCount() : 0;
    if (count > static_cast<int>(pFunction->m_Parameters.size()))
        InternalFault("a call of " + std::string(pNode->GetName()) + " has too many parameters");
    for (int i = 0; i < count; ++i)
        GenerateActualParameter(pActuals->Child(i), *pFunction->m_Parameters[static_cast<std::size_t>(i)], text);

    if (m_CurrentPou) m_CurrentPou->AddCallee(pFunction);
    text.Append("\tJSR FUNCTION_", LabelOf(pFunction));
    const bool isStatement = pNode->nValue == 1;
    if (isStatement && pFunction->m_ReturnVariable) text.Append("\n\tPOP", SuffixOf(pFunction->m_ReturnType));
}
