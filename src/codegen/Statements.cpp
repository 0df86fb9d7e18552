// Statements. Control structures become compare-and-jump code; what is known at compile time decides the form.

#include "codegen/CodeGeneration.h"

#include "codegen/TextPieces.h"
#include "files/Fatal.h"
#include "files/Format.h"
#include "frontend/ErrorHandler.h"
#include "frontend/Node.h"
#include "frontend/NodeParts.h"
#include "model/Pou.h"
#include "model/Type.h"
#include "model/Variable.h"
#include "semantics/Norvane.h"
#include "target/MemoryHandler.h"

#include <algorithm>

// A use of a constant that its value has replaced: a literal that still knows its variable.
static bool IsReplacedConstant(const CNode* pNode)
{
    return pNode->IsLiteral() && pNode->pVariable && pNode->pVariable->m_IsConstant;
}

// What the grammar lets stand alone on the right of ":=" although the tree holds neither type nor value for it.
static bool HasNoValue(const CNode* pNode)
{
    return pNode->IsTimeLiteral() || pNode->nKind == DIRECT_VARIABLE;
}

// ---- Lists

// Position of the node's source among the compiled ones; the first of a name that was compiled twice.
int CCodeGeneration::GetFileNumber(const SourceLocation& location)
{
    const char* szFile = location.szFile;
    if (!szFile && m_CurrentPou) szFile = m_CurrentPou->m_Location.szFile;
    if (!szFile) return 0;
    if (m_LastFileName == szFile) return m_LastFileNumber;   // as good as always

    const std::vector<std::string>& files = m_Norvane.m_SourceFiles;
    for (; m_FilesNumbered < files.size(); ++m_FilesNumbered)
        m_FileNumbers.emplace(files[m_FilesNumbered], static_cast<int>(m_FilesNumbered));
    const auto found = m_FileNumbers.find(szFile);
    m_LastFileName = szFile;
    m_LastFileNumber = found == m_FileNumbers.end() ? 0 : found->second;
    return m_LastFileNumber;
}

// DBI FILE 0 LINE 4
// ...
void CCodeGeneration::GenerateStatementList(const CNode* pList, TextBuffer& text)
{
    for (CNode* pStatement : pList->m_Children) {
        if (!pStatement) InternalFault("a statement list has no node for a statement");
        const int file = GetFileNumber(pStatement->location);
        text.Append("DBI FILE ", file, " LINE ", pStatement->location.nFirstLine, '\n');
        GenerateNode(pStatement, text);
        FlushLarge(text);
    }
}

bool CCodeGeneration::GenerateAccessLine(const CNode* pNode, AccessMode mode, TextBuffer& text)
{
    const bool isThrough = GenerateVariableAccess(pNode, mode, text);
    text.Append('\n');
    return isThrough;
}

// ---- Assignment

void CCodeGeneration::GenerateAssignment(const CNode* pNode, TextBuffer& text)
{
    const CNode* pTarget = pNode->Child(0);
    CNode* pValue = pNode->Child(1);
    const CVariable* pVariable = pTarget->pVariable;
    if (IsReplacedConstant(pTarget)) {   // the checks have met no variable here, only a literal
        m_ErrorHandler->ErrAssignToConstant(pNode->location);
        return;
    }
    if (!pTarget->IsVariableAccess() || !pVariable) {
        ReportNoVariable(pTarget);
        return;
    }
    if (HasNoValue(pValue) && !IsAggregate(pTarget->pType)) {
        // Accepted without a test, and here is where it shows: nothing is pushed, and the store takes whatever the
        // stack holds. Kept (code) as it is; the user should hear of it here.
        text.Append('\n');
        GenerateVariableAccess(pTarget, AccessMode::Write, text);
        return;
    }
    if (pValue->nKind == STR_DIR) {
        GenerateStringAssignment(pTarget, pValue, text);
        return;
    }
    if (IsAggregate(pTarget->pType) && !pTarget->bThroughInOut) {
        GenerateCopy(pTarget, pValue, text);
        return;
    }
    if (pTarget->bThroughInOut) {   // a pointer is stored
        const bool isPointer = IsAggregate(pTarget->pType) || pValue->bThroughInOut;
        GenerateAccessLine(pValue, isPointer ? AccessMode::Read : AccessMode::Address, text);
    } else if (pValue->bThroughInOut) {
        GenerateAccessLine(pValue, AccessMode::ReadThrough, text);
    } else if (pVariable->m_IsConstant) {
        m_ErrorHandler->ErrAssignToConstant(pNode->location);
        return;
    } else {
        GenerateNode(pValue, text);
    }
    GenerateVariableAccess(pTarget, AccessMode::Write, text);
}

//	PUSH 65 ;A
//	POP(SINT)	[local+12]
//
// Only the literal's bytes are stored: no end mark and no length. Kept (code): at the place of the root variable, a
// path in the target doesn't count.
void CCodeGeneration::GenerateStringAssignment(const CNode* pTarget, const CNode* pLiteral, TextBuffer& text)
{
    const CVariable* pVariable = pTarget->pVariable;
    const std::string_view area = GetAreaPrefix(pVariable);
    const std::int64_t step = pTarget->pType ? pTarget->pType->GetPlacingAlign() : 1;
    std::int64_t offsetBytes = pVariable->m_Offset;
    bool isFirst = true;
    for (const char byte : pLiteral->GetString()) {
        if (!isFirst) text.Append('\n');   // the last line is left open
        isFirst = false;
        text.Append("\tPUSH ", static_cast<signed char>(byte), " ;", byte, '\n');
        text.Append("\tPOP(SINT)\t", MemoryPlace{area, static_cast<std::int32_t>(offsetBytes)});
        offsetBytes += step;
    }
}

//	PUSH&(UDINT)	[global+0]	;b
//	PUSH&(UDINT)	[local+12]	;a
//	MEMCPY	20
//
void CCodeGeneration::GenerateCopy(const CNode* pTarget, const CNode* pValue, TextBuffer& text)
{
    if (pValue->nKind == DIRECT_VARIABLE) {
        ReportNoVariable(pValue);
        return;
    }
    if (!pValue->IsVariableAccess() || !pValue->pVariable) {   // it may have no type of its own to name
        m_ErrorHandler->ErrCannotAssign(pTarget->pType, pValue->location);
        return;
    }
    GenerateAccessLine(pValue, AccessMode::Address, text);
    GenerateAccessLine(pTarget, AccessMode::Address, text);
    std::int64_t sizeBytes = 0;
    if (pTarget->pType->IsStruct()) {
        sizeBytes = GetStructSize(pTarget->pType);
    } else {
        const std::int32_t targetBytes = m_MemoryHandler->ComputeAccessSize(pTarget);
        sizeBytes = std::min(targetBytes, m_MemoryHandler->ComputeAccessSize(pValue));
    }
    text.Append("\tMEMCPY\t", static_cast<std::int32_t>(sizeBytes), '\n');
}

// ---- IF

//	;if
//	...                     the condition
//	JNC LABEL0001
//	;then
//	...
//	JMP LABEL0002           with an ELSE or ELSIF
//	LABEL0001:
//	...                     the ELSIF items
//	;else
//	...
//	LABEL0002:
//
// A literal condition removes its test. With a literal FALSE no end label is made: in front of ELSIF items the
// jumps to it come out without a label, which stays so.
void CCodeGeneration::GenerateIf(const CNode* pNode, TextBuffer& text)
{
    const IfParts parts = GetIfParts(pNode);
    text.Append("\t;if\n");
    const Label falseLabel = m_Label.Draw();
    if (IsTrueLiteral(parts.pCondition)) {   // the label drawn above leaves a gap in the numbers
        text.Append("\t;then\n");
        GenerateStatementList(parts.pThen, text);
        return;
    }

    Label endLabel;
    if (!IsFalseLiteral(parts.pCondition)) {
        GenerateNode(parts.pCondition, text);
        text.Append("\tJNC ", falseLabel, '\n');
        text.Append("\t;then\n");
        GenerateStatementList(parts.pThen, text);
        if (parts.pElsifItems || parts.pElse) {
            endLabel = m_Label.Draw();
            text.Append("\tJMP ", endLabel, '\n');
        }
    }
    text.Append('\t', falseLabel, ":\n");

    Label elseLabel;
    if (parts.pElsifItems) {
        if (endLabel.IsNone()) m_Norvane.m_Notes.Add(Note::JumpWithoutLabel, pNode->location);
        elseLabel = GenerateElsifItems(parts.pElsifItems, parts.pElse != nullptr, endLabel, text);
    }
    if (parts.pElse) GenerateElse(parts.pElse, elseLabel, endLabel, text);
}

// Gives the label at which an ELSE begins. Without one the last item ends the statement and defines its label.
Label CCodeGeneration::GenerateElsifItems(const CNode* pItems, bool hasElse, Label endLabel, TextBuffer& text)
{
    Label nextLabel;
    const int count = pItems->GetChildCount();
    for (int i = 0; i < count; ++i) {
        const CNode* pItem = pItems->Child(i);
        const bool endsStatement = i == count - 1 && !hasElse;
        if (i != 0) text.Append('\t', nextLabel, ":\n");
        if (!endsStatement) nextLabel = m_Label.Draw();
        GenerateNode(pItem->Child(0), text);
        text.Append("\tJNC ", endsStatement ? endLabel : nextLabel, '\n');
        GenerateStatementList(pItem->Child(1), text);
        if (endsStatement) text.Append('\t', endLabel, ':');
        else text.Append("\tJMP ", endLabel, '\n');
    }
    return nextLabel;
}

void CCodeGeneration::GenerateElse(const CNode* pList, Label elseLabel, Label endLabel, TextBuffer& text)
{
    const bool isBehindElsif = !elseLabel.IsNone();
    text.Append("\t;else\n");
    if (isBehindElsif) text.Append('\t', elseLabel, ":\n");
    GenerateStatementList(pList, text);
    if (isBehindElsif || !endLabel.IsNone()) text.Append('\t', endLabel, ':');
}

// ---- What an EXIT leaves

// The label drawn last is that of the loop's or CASE's end.
void CCodeGeneration::EnterExitTarget(bool isCase)
{
    m_Label.PushExitLabel();
    const bool isInLoop = !m_ExitTargets.empty() && (m_ExitTargets.back().isInLoop || !m_ExitTargets.back().isCase);
    m_ExitTargets.push_back({m_Label.m_Counter, isCase, isInLoop});
}

void CCodeGeneration::LeaveExitTarget()
{
    m_ExitTargets.pop_back();
    m_Label.PopExitLabel();
}

// ---- WHILE and REPEAT

//	;while
//	LABEL0001:
//	...                     the condition
//	JNC LABEL0002
//	...
//	JMP LABEL0001
//	LABEL0002:
//
void CCodeGeneration::GenerateWhile(const CNode* pNode, TextBuffer& text)
{
    CNode* pCondition = pNode->Child(0);
    if (IsFalseLiteral(pCondition)) return;   // no label is drawn for it; a literal TRUE keeps its test

    text.Append("\t;while\n");
    const Label loopLabel = m_Label.Draw();
    const Label exitLabel = m_Label.Draw();
    EnterExitTarget(/*isCase=*/false);
    text.Append('\t', loopLabel, ":\n");
    GenerateNode(pCondition, text);
    text.Append("\tJNC ", exitLabel, '\n');
    GenerateStatementList(pNode->Child(1), text);
    text.Append("\tJMP ", loopLabel, '\n');
    text.Append('\t', exitLabel, ":\n");
    LeaveExitTarget();
}

//	;repeat
//	LABEL0001:
//	...
//	...                     the condition
//	JNC LABEL0001
//	LABEL0002:
//
void CCodeGeneration::GenerateRepeat(const CNode* pNode, TextBuffer& text)
{
    text.Append("\t;repeat\n");
    const Label loopLabel = m_Label.Draw();
    text.Append('\t', loopLabel, ":\n");
    const Label exitLabel = m_Label.Draw();
    EnterExitTarget(/*isCase=*/false);
    GenerateStatementList(pNode->Child(0), text);
    GenerateNode(pNode->Child(1), text);
    text.Append("\tJNC ", loopLabel, '\n');
    text.Append('\t', exitLabel, ":\n");
    LeaveExitTarget();
}

// ---- FOR

struct CCodeGeneration::ForLoop
{
    ForParts parts;
    TypeSuffix suffix;       // of the variable
    Label loopLabel;
    Label exitLabel;
    std::int32_t step = 1;   // where it is constant
};

// Writes the common head and then one of four shapes, by which of bounds and step are constants. False for a
// loop that never runs: only the assignment and the loop label are left of it. Kept (code): its exit label stays
// on the stack, where an EXIT behind it finds it, and its text ends without the line end of all others.
bool CCodeGeneration::GenerateFor(const CNode* pNode, TextBuffer& text)
{
    ForLoop loop;
    loop.parts = GetForParts(pNode);
    loop.suffix = SuffixOf(loop.parts.pVariable);

    text.Append("\t;for\n");
    loop.loopLabel = m_Label.Draw();
    loop.exitLabel = m_Label.Draw();
    EnterExitTarget(/*isCase=*/false);
    GenerateNode(loop.parts.pAssignment, text);
    text.Append('\t', loop.loopLabel, ":\n");

    std::int32_t from = 0;
    std::int32_t to = 0;
    const bool isStepKnown = !loop.parts.pStep || m_Norvane.EvalIntegerExpression(loop.parts.pStep, loop.step) == 1;
    const bool isFromKnown = m_Norvane.EvalIntegerExpression(loop.parts.pFrom, from) == 1;
    const bool isToKnown = m_Norvane.EvalIntegerExpression(loop.parts.pTo, to) == 1;
    const bool areBoundsKnown = isFromKnown && isToKnown;

    const bool isPassed = areBoundsKnown && ((from < to && loop.step < 0) || (from > to && loop.step > 0));
    if (isStepKnown && (loop.step == 0 || isPassed)) {
        m_ErrorHandler->WarnForNeverRuns(loop.parts.pBody->location);
        m_ExitTargets.pop_back();   // the label's stack keeps its entry
        return false;
    }
    if (!loop.parts.pVariable->IsVariableAccess())
        GenerateStatementList(loop.parts.pBody, text);   // the assignment has told why
    else if (!isStepKnown) GenerateForWithVariableStep(loop, text);
    else if (areBoundsKnown) GenerateForTestedBelow(loop, text);
    else GenerateForTestedAbove(loop, text);
    text.Append('\t', loop.exitLabel, ":\n");
    LeaveExitTarget();
    return true;
}

void CCodeGeneration::GenerateForCompare(const ForLoop& loop, std::string_view comparison, TextBuffer& text)
{
    GenerateNode(loop.parts.pVariable, text);
    GenerateNode(loop.parts.pTo, text);
    text.Append("\tCMP ", comparison, loop.suffix, '\n');
}

// Kept (code): the step is a plain constant of the variable's type, whatever its own is.
void CCodeGeneration::GenerateForConstantStep(const ForLoop& loop, TextBuffer& text)
{
    GenerateAccessLine(loop.parts.pVariable, AccessMode::Read, text);
    text.Append("\tPUSH", loop.suffix, '\t', loop.step, '\n');
    text.Append("\tADD", loop.suffix, '\n');
    GenerateAccessLine(loop.parts.pVariable, AccessMode::Write, text);
}

// The body runs at least once, so the test stands at the bottom.
void CCodeGeneration::GenerateForTestedBelow(const ForLoop& loop, TextBuffer& text)
{
    GenerateStatementList(loop.parts.pBody, text);
    GenerateForConstantStep(loop, text);
    GenerateForCompare(loop, loop.step > 0 ? "LE" : "GE", text);
    text.Append("\tJC ", loop.loopLabel, '\n');
}

void CCodeGeneration::GenerateForTestedAbove(const ForLoop& loop, TextBuffer& text)
{
    GenerateForCompare(loop, loop.step > 0 ? "GT" : "LT", text);
    text.Append("\tJC ", loop.exitLabel, '\n');
    GenerateStatementList(loop.parts.pBody, text);
    GenerateForConstantStep(loop, text);
    text.Append("\tJMP ", loop.loopLabel, '\n');
}

//	PUSH(INT)	0           behind the step: its sign is looked at in each pass
//	CMP GT(INT)
//	JC LABEL0003
void CCodeGeneration::GenerateForStepTest(const ForLoop& loop, std::string_view comparison, Label label,
                                          TextBuffer& text)
{
    const TypeSuffix suffix = SuffixOf(loop.parts.pStep);
    GenerateNode(loop.parts.pStep, text);
    text.Append("\tPUSH", suffix, "\t0\n");
    text.Append("\tCMP ", comparison, suffix, '\n');
    text.Append("\tJC ", label, '\n');
}

void CCodeGeneration::GenerateForWithVariableStep(const ForLoop& loop, TextBuffer& text)
{
    const Label risingLabel = m_Label.Draw();
    const Label fallingLabel = m_Label.Draw();
    const Label bodyLabel = m_Label.Draw();
    GenerateForStepTest(loop, "GT", risingLabel, text);
    GenerateForStepTest(loop, "LT", fallingLabel, text);
    text.Append("\tJMP ", loop.exitLabel, '\n');   // a step of 0 leaves the loop

    text.Append('\t', fallingLabel, ":\n");
    GenerateForCompare(loop, "LT", text);
    text.Append("\tJC ", loop.exitLabel, '\n');
    text.Append("\tJMP ", bodyLabel, '\n');

    text.Append('\t', risingLabel, ":\n");
    GenerateForCompare(loop, "GT", text);
    text.Append("\tJC ", loop.exitLabel, '\n');

    text.Append('\t', bodyLabel, ":\n");
    GenerateStatementList(loop.parts.pBody, text);
    GenerateAccessLine(loop.parts.pVariable, AccessMode::Read, text);
    // The increment reads the step as a variable; an expression has none to read, so it is refused.
    if (loop.parts.pStep->IsVariableAccess()) GenerateAccessLine(loop.parts.pStep, AccessMode::Read, text);
    else m_ErrorHandler->ErrNeedsInteger(loop.parts.pStep->location);
    text.Append("\tADD", loop.suffix, '\n');
    GenerateAccessLine(loop.parts.pVariable, AccessMode::Write, text);
    text.Append("\tJMP ", loop.loopLabel, '\n');
}

// ---- CASE

struct CCodeGeneration::CaseArm
{
    Label label;
    std::size_t begin = 0;   // of its code in the text of all arms
    std::size_t size = 0;    // bytes; 0: an earlier arm has the same
};

struct CCodeGeneration::CaseArms
{
    std::vector<CaseArm> arms;
    TextBuffer codes;

    std::string_view GetCode(const CaseArm& arm) const { return codes.View().substr(arm.begin, arm.size); }
};

// The arm that has the code already; null if there is none. Codes are told apart by their texts; the hash only says
// where to look.
const CCodeGeneration::CaseArm* CCodeGeneration::FindEqualArm(const CaseArms& arms, const ArmsByHash& armsByHash,
                                                              std::size_t hash, std::string_view code)
{
    const auto [first, last] = armsByHash.equal_range(hash);
    for (auto entry = first; entry != last; ++entry)
        if (arms.GetCode(arms.arms[entry->second]) == code) return &arms.arms[entry->second];
    return nullptr;
}

// Arms whose text agrees to the last byte share one label and one code. The text begins with a line mark, so
// they stand on one source line. An arm draws its label behind those of its statements, but for the first.
CCodeGeneration::CaseArms CCodeGeneration::BuildCaseArms(const CNode* pPairs)
{
    const int count = pPairs->GetChildCount() / 2;
    CaseArms arms;
    ArmsByHash armsByHash;
    for (int i = 0; i < count; ++i) {
        CaseArm arm;
        arm.begin = arms.codes.GetSize();
        if (i == 0) arm.label = m_Label.Draw();
        GenerateStatementList(pPairs->Child(2 * i + 1), arms.codes);
        const std::string_view code = arms.codes.View().substr(arm.begin);
        const std::size_t hash = std::hash<std::string_view>()(code);
        if (const CaseArm* pEqual = FindEqualArm(arms, armsByHash, hash, code)) {
            arms.codes.CutTo(arm.begin);
            arms.arms.push_back({pEqual->label, 0, 0});
            continue;
        }
        if (i != 0) arm.label = m_Label.Draw();
        arm.size = code.size();
        armsByHash.emplace(hash, arms.arms.size());
        arms.arms.push_back(arm);
    }
    return arms;
}

//	CASE (INT) 3 LABEL0003
//	CASER (INT) 1  5 LABEL0003
//
// Kept (code): two blanks between the bounds.
static void AppendCaseTest(const CNode* pItem, const TypeSuffix& suffix, Label label, TextBuffer& text)
{
    if (pItem->nKind == SUBRANGE_DOTS)
        text.Append("\tCASER ", suffix, ' ', pItem->Child(0)->nValue, "  ", pItem->Child(1)->nValue, ' ', label, '\n');
    else
        text.Append("\tCASE ", suffix, ' ', pItem->nValue, ' ', label, '\n');
}

//	;case
//	...                     the selector, which stays on the stack during the tests
//	CASE (INT) 1 LABEL0002
//	POP(INT)                no test matched; a test that matches takes the selector itself
//	...                     ELSE
//	JMP LABEL0001
//	LABEL0002:
//	...                     the arms
//	LABEL0001:
//
// The arms are generated first, so the labels in them are lower than those of the selector.
void CCodeGeneration::GenerateCase(const CNode* pNode, TextBuffer& text)
{
    const CaseParts parts = GetCaseParts(pNode);
    text.Append("\t;case\n");
    const Label endLabel = m_Label.Draw();
    EnterExitTarget(/*isCase=*/true);   // an EXIT in a CASE leaves the CASE
    const CaseArms arms = BuildCaseArms(parts.pPairs);

    GenerateNode(parts.pSelector, text);
    const TypeSuffix suffix = SuffixOf(parts.pSelector);
    for (std::size_t i = 0; i < arms.arms.size(); ++i)
        for (const CNode* pItem : parts.pPairs->Child(static_cast<int>(2 * i))->m_Children)
            AppendCaseTest(pItem, suffix, arms.arms[i].label, text);
    text.Append("\tPOP", suffix, '\n');
    if (parts.pElse) GenerateStatementList(parts.pElse, text);

    for (const CaseArm& arm : arms.arms) {
        if (arm.size == 0) continue;
        text.Append("\tJMP ", endLabel, '\n');
        text.Append('\t', arm.label, ":\n");
        text.Append(arms.GetCode(arm));
    }
    text.Append('\t', endLabel, ":\n");
    LeaveExitTarget();
}

// ---- EXIT

// A loop that never runs leaves its label on the stack, where later EXITs find it in the place of their own.
void CCodeGeneration::NoteExit(const CNode* pNode, Label label)
{
    const bool hasTarget = !m_ExitTargets.empty();
    if (!hasTarget || label.number != m_ExitTargets.back().label)
        m_Norvane.m_Notes.Add(Note::ForeignExit, pNode->location);
    else if (m_ExitTargets.back().isCase && m_ExitTargets.back().isInLoop)
        m_Norvane.m_Notes.Add(Note::ExitOfCase, pNode->location);
}

// The line is closed here already, so an empty one follows. False behind the diagnostic: then not even the
// line end is written.
bool CCodeGeneration::GenerateExit(const CNode* pNode, TextBuffer& text)
{
    const Label label = m_Label.FindExit();
    if (label.IsNone()) {
        m_ErrorHandler->ErrExitOutOfLoop(pNode->location);
        return false;
    }
    NoteExit(pNode, label);
    text.Append("\tJMP ", label, '\n');
    return true;
}
