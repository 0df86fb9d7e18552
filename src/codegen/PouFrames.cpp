// What surrounds the statements of a POU: header, local memory, parameters, initial values, result and end.
// Much of the text ends in a line end of its own and still gets another one: the empty lines and lone tabs that come
// of it are wanted, readers of the file compare it byte by byte.

#include "codegen/CodeGeneration.h"

#include "codegen/TextPieces.h"
#include "files/Fatal.h"
#include "files/Format.h"
#include "frontend/ErrorHandler.h"
#include "frontend/Node.h"
#include "model/Pou.h"
#include "model/Type.h"
#include "model/TypeStruct.h"
#include "model/Variable.h"
#include "semantics/Norvane.h"
#include "semantics/UnwrittenLocals.h"
#include "target/MemoryHandler.h"
#include "target/MemoryMath.h"

#include <algorithm>
#include <limits>

void CCodeGeneration::EndGeneration(const SourceLocation& where, const std::string& text)
{
    const std::string position = FormatText("(%d,%d) : error: ", where.nFirstLine, where.nFirstColumn);
    EndProgram(1, (where.szFile ? where.szFile : "") + position + text);
}

static const char* GetPouKindName(const CPou* pPou)
{
    if (pPou->IsFunction()) return "FUNCTION";
    return pPou->IsFunctionBlock() ? "FUNCTION_BLOCK" : "PROGRAM";
}

//
//
// ; ----------------------------------------------------------------------
// ; FUNCTION: name__1,	 file a.st,	 line 3
// ; ----------------------------------------------------------------------
// FUNCTION_name__1:
//
//
void CCodeGeneration::WritePouHeader(const CPou* pPou)
{
    static constexpr std::string_view rule =
        "; ----------------------------------------------------------------------";
    const FunctionLabel label = LabelOf(pPou);
    const std::string name = ShowControlCharacters(MakeText(label));   // the target may name a program
    const std::string file = ShowControlCharacters(pPou->m_Location.szFile ? pPou->m_Location.szFile : "");

    m_Text.Append("\n\n");
    m_Text.Append(rule, '\n');
    m_Text.Append("; ", GetPouKindName(pPou), ": ", name, ",\t file ", file);
    m_Text.Append(",\t line ", pPou->m_Location.nFirstLine, '\n');
    m_Text.Append(rule, '\n');
    if (!pPou->IsProgram()) m_Blocks.Begin(*pPou, label.form, GetPosition());
    // A function block is called like a function, so its label begins like one.
    m_Text.Append(pPou->IsProgram() ? "PROGRAM_" : "FUNCTION_", name, ":\n");
    m_Text.Append("\n\n");
}

//	DBI POU_END
//
void CCodeGeneration::WritePouEnd()
{
    m_Text.Append("\tDBI POU_END\n");
    m_Blocks.End(GetPosition());
    m_Text.Append('\n');
    FlushText();
}

void CCodeGeneration::WriteTargetText(std::string_view text)
{
    m_Blocks.NoteForeignText(text);
    m_Text.Append('\t', text, '\n');
}

std::int32_t CCodeGeneration::GetLocalBytes() const
{
    const CVariable* pLast = nullptr;   // the one that ends highest: greatest offset, of equal ones the later
    for (const CVariable* pVariable : m_MemoryHandler->m_LocalVariables)
        if (!pLast || pVariable->m_Offset >= pLast->m_Offset) pLast = pVariable;
    // An array larger than any memory ends at the largest offset, so the sum may need more than 32 bits.
    const std::int64_t end = pLast ? std::int64_t{pLast->m_Offset} + std::max(pLast->m_Size, 1) : 0;
    return static_cast<std::int32_t>(std::min<std::int64_t>(end, std::numeric_limits<std::int32_t>::max()));
}

//	LOCALDATA 6
//		;Variable (0): x ((INT),VAR_INPUT)
void CCodeGeneration::GenerateLocalList(std::int32_t localBytes, TextBuffer& text)
{
    text.Append("\tLOCALDATA ", std::max(localBytes, 1), '\n');
    for (const CVariable* pVariable : m_MemoryHandler->m_LocalVariables) {
        text.Append("\t\t;Variable (", pVariable->m_Offset, "): ", pVariable->m_Name);
        text.Append(" (", SuffixOf(pVariable->m_Type), ',', GetVarBlockName(pVariable), ")\n");
        FlushLarge(text);
    }
}

// With the compatible layout a scalar output or in-out has the room of its value, and an input structure or array that
// of a pointer. What is popped into the one and copied into the other is the other way round.
void CCodeGeneration::NoteCompatibleParameters(std::int32_t localBytes)
{
    if (!m_MemoryHandler->m_CompatibleLayout) return;
    constexpr int bitsInByte = 8;
    const std::int64_t pointerBytes = m_PointerType->m_SizeBits / bitsInByte;
    std::int64_t roomEnd = localBytes;   // where the next variable begins
    const std::vector<CVariable*>& locals = m_MemoryHandler->m_LocalVariables;
    for (std::size_t i = locals.size(); i > 0; --i) {
        const CVariable* pVariable = locals[i - 1];
        if (pVariable->m_IsRetain || !pVariable->m_DirectAddress.empty() || pVariable->m_Size == -1) continue;
        const bool isAggregate = IsAggregate(pVariable->m_Type);
        const bool lacksRoom = pVariable->m_Offset + pointerBytes > roomEnd ||
                               pVariable->m_Offset % std::max(m_PointerType->m_Align, 1) != 0;
        const bool overlaps = pVariable->IsHeldByPointer() && !isAggregate && lacksRoom;
        const bool isCut = pVariable->m_IsInput && isAggregate && m_MemoryHandler->GetVariableSize(pVariable) != pointerBytes;
        if (overlaps || isCut)
            m_Norvane.m_Notes.Add(Note::CompatibleParameter, pVariable->m_Location, pVariable->m_Name);
        roomEnd = pVariable->m_Offset;
    }
}

// The arguments lie on the stack, the last one on top, so the parameters take them from the last to the first.
void CCodeGeneration::GenerateInputParameters(const CPou* pPou, TextBuffer& text)
{
    text.Append("\t;Read input parameters\n");
    if (!pPou->IsFunction()) return;

    const std::vector<CVariable*>& locals = m_MemoryHandler->m_LocalVariables;
    for (std::size_t i = locals.size(); i > 0; --i) {
        const CVariable* pVariable = locals[i - 1];
        if (pVariable->IsHeldByPointer()) {
            text.Append("\tPOP", PointerSuffix(), '\t', MemoryPlace{GetAreaPrefix(pVariable), pVariable->m_Offset}, "\t;",
                        pVariable->m_Name, '\n');
        } else if (pVariable->m_IsInput && pVariable->m_Type->IsAggregate()) {
            text.Append("\tPUSH&", OperandOf(pVariable), '\n');
            text.Append("\tMEMCPY ", pVariable->m_Size, '\n');
        } else if (pVariable->m_IsInput) {
            text.Append("\tPOP", OperandOf(pVariable), '\n');
        }
    }
}

// The retained variables of a POU are left to the function for initial values, which finds only the globals.
void CCodeGeneration::NoteRetainedValue(const CVariable* pVariable)
{
    TextBuffer lostText;
    GenerateVariableInit(pVariable, lostText);
    if (!lostText.IsEmpty()) m_Norvane.m_Notes.Add(Note::RetainedValue, pVariable->m_Location, pVariable->m_Name);
}

void CCodeGeneration::GenerateLocalInitialization(TextBuffer& text)
{
    text.Append("\t;Local variable initialization\n");
    for (const CVariable* pVariable : m_MemoryHandler->m_LocalVariables) {
        if (pVariable->IsParameter()) continue;
        // A constant that its uses replace has no place; a store to offset -1 would spoil its neighbour.
        if (pVariable->m_Size == -1) continue;
        if (pVariable->m_IsRetain) {
            NoteRetainedValue(pVariable);
            continue;
        }
        m_Area = GetAreaPrefix(pVariable);
        GenerateVariableInit(pVariable, text);
        FlushLarge(text);
    }
}

//	;Return value
//	LABEL0004:
//	PUSH	(INT) [local+0] ; f
//	RTS
void CCodeGeneration::GenerateReturnValue(const CPou* pPou, TextBuffer& text)
{
    text.Append("\t;Return value\n");
    if (m_Label.HasReturnLabel()) text.Append('\t', m_Label.DrawReturn(), ":\n");
    const CFunction* pFunction = const_cast<CPou*>(pPou)->AsFunction();
    if (pFunction && pFunction->m_ReturnVariable)
        text.Append("\tPUSH\t", OperandOf(pFunction->m_ReturnVariable), '\n');
    text.Append("\tRTS");
}

// The statement lists of the POU, each followed by one more line end.
void CCodeGeneration::WriteBody(const CNode* pNode)
{
    for (const CNode* pChild : pNode->m_Children) {
        if (pChild->nKind != STMT_LIST) continue;
        GenerateStatementList(pChild, m_Text);
        m_Text.Append('\n');
    }
}

// Places what the POU declared and makes it the current one. False, with nothing done, where no block is to
// be written: behind the first error of the run, and for a POU that the table refused.
bool CCodeGeneration::BeginFrame(const CNode* pNode)
{
    if (m_ErrorHandler->GetErrorCount() > 0 || !pNode->GetPou()) return false;
    m_MemoryHandler->AllocatePouVariables();
    m_CurrentPou = pNode->GetPou();
    return true;
}

void CCodeGeneration::EndFrame(const CNode* pNode)
{
    m_Norvane.m_Notes.EndPou(pNode->GetPou());
    m_Norvane.EndPouScope();
}

void CCodeGeneration::GenerateFunction(CNode* pNode)
{
    if (BeginFrame(pNode)) WriteFunctionFrame(pNode);
    EndFrame(pNode);
}

void CCodeGeneration::GenerateFunctionBlock(CNode* pNode)
{
    if (BeginFrame(pNode)) WriteFunctionBlockFrame(pNode);
    EndFrame(pNode);
}

void CCodeGeneration::GenerateProgram(CNode* pNode)
{
    if (m_ErrorHandler->GetErrorCount() == 0) m_Norvane.AddProgramInit();   // before places are given out
    if (BeginFrame(pNode)) WriteProgramFrame(pNode);
    EndFrame(pNode);
}

void CCodeGeneration::WriteFunctionFrame(CNode* pNode)
{
    CPou* pPou = m_CurrentPou;
    NoteReadsOfUnwritten(m_Norvane.m_Notes, pNode, m_MemoryHandler->m_LocalVariables);
    WritePouHeader(pPou);
    m_Text.Append("\tDBI POU_BEGIN\n");
    m_Text.Append('\n');

    pPou->m_LocalSize = GetLocalBytes();
    GenerateLocalList(pPou->m_LocalSize, m_Text);
    m_Text.Append('\n');
    NoteCompatibleParameters(pPou->m_LocalSize);

    GenerateInputParameters(pPou, m_Text);
    m_Text.Append('\n');

    GenerateLocalInitialization(m_Text);
    m_Text.Append('\n');

    m_Text.Append("\t;Function body\n");
    WriteBody(pNode);

    GenerateReturnValue(pPou, m_Text);
    m_Text.Append('\n');
    m_Label.ClearReturnLabel();
    m_Text.Append('\n');
    WritePouEnd();
}

// The slot that is filled for a block's first variable.
static constexpr std::int64_t g_FirstSlot = 4;

// A member that the body never names needs no slot: nothing is written for it.
bool CCodeGeneration::IsUnusedMember(const CMember* pMember) const
{
    if (!m_Norvane.m_FbOptimisation) return false;
    const CVariable* pVariable = m_Norvane.m_LocalSymbols.Find(pMember->m_Name);
    return pVariable && !pVariable->m_IsUsed;
}

//	DUP(UDINT)
//	PUSH(UDINT)	8
//	ADD(UDINT)
//	PUSHI(UDINT)            only for an in-out member: its slot gets the pointer that the instance holds
//	POP(UDINT)[local+12]	;name
//
void CCodeGeneration::WriteMemberSlot(const CTypeStructFB* pStruct, int position)
{
    const CMember* pMember = pStruct->m_Members[static_cast<std::size_t>(position)].get();
    if (IsUnusedMember(pMember)) return;

    const TypeSuffix pointer = PointerSuffix();
    if (position == 0) {
        if (pStruct->m_Members.size() > 1) m_Text.Append("\tDUP", pointer, '\n');
        // The first member is taken to lie at offset 0, so nothing is added.
    } else {
        m_Text.Append("\tDUP", pointer, '\n');
        m_Text.Append("\tPUSH", pointer, '\t');
        if (pMember->m_Type->IsBool()) m_Text.Append(CommentedOffset(pMember->m_Offset, pStruct->GetBoolBit(pMember)));
        else m_Text.Append(pMember->m_Offset);
        m_Text.Append('\n');
        m_Text.Append("\tADD", pointer, '\n');
    }
    if (pMember->IsInOut()) m_Text.Append("\tPUSHI", pointer, '\n');

    // Kept (code): the first slot is named 4 whatever the size of a pointer is.
    const std::int64_t slot = position == 0 ? g_FirstSlot : GetSlotOffset(position);
    m_Text.Append("\tPOP", pointer, "[local+", slot, "]\t;", pMember->m_Name, "\n\n");
}

// An external variable has a slot too, but the body means the global by its name.
bool CCodeGeneration::IsSlotRead(const CMember* pMember) const
{
    const CVariable* pVariable = m_Norvane.m_LocalSymbols.Find(pMember->m_Name);
    return pVariable && pVariable->m_IsUsed;
}

// Whether the slots that are filled and read lie in the block's local memory.
bool CCodeGeneration::DoSlotsFit(const CTypeStructFB* pStruct, std::int32_t localBytes) const
{
    constexpr int bitsInByte = 8;
    const std::int64_t pointerBytes = m_PointerType->m_SizeBits / bitsInByte;
    if (m_PointerType->m_Align >= pointerBytes) return true;
    std::size_t used = pStruct->m_Members.size();   // up to the last member that has a slot
    while (used > 0 && IsUnusedMember(pStruct->m_Members[used - 1].get())) --used;
    const std::int64_t lastSlot = static_cast<std::int64_t>(used) * m_MemoryHandler->GetPointerSlotSize();
    return lastSlot + pointerBytes <= localBytes;
}

void CCodeGeneration::WriteFunctionBlockFrame(CNode* pNode)
{
    CPou* pPou = m_CurrentPou;
    WritePouHeader(pPou);
    m_Text.Append("\tDBI POU_BEGIN\n");
    m_Text.Append('\n');

    CTypeStructFB* pStruct = pPou->AsFunctionBlock()->m_Type;
    if (pStruct->m_Align == -1) m_MemoryHandler->ComputeLayout(pStruct, nullptr, 0);

    // The block's own memory holds pointers only: the instance, and one slot for each of its variables.
    // Kept (code): counted by the alignment of a pointer, even where a slot is larger.
    const std::int64_t slots = static_cast<std::int64_t>(pPou->m_Parameters.size()) + 1;
    pPou->m_LocalSize = ToStoredBytes(slots * m_PointerType->GetPlacingAlign());
    m_Text.Append("\tLOCALDATA ", std::max(pPou->m_LocalSize, 1), '\n');
    m_CurrentFb = pPou;
    if (pStruct->m_Members.empty())
        EndGeneration(pPou->m_Location, "function block " + pPou->m_Name + " has no variables");

    const TypeSuffix pointer = PointerSuffix();
    m_Text.Append("\t;Read input parameter\n");
    m_Text.Append("\tDUP", pointer, '\n');
    m_Text.Append("\tPOP", pointer, "[local+0]\t;FB_INSTANCE\n\n");
    const int memberCount = static_cast<int>(pStruct->m_Members.size());
    for (int k = 0; k < memberCount; ++k) WriteMemberSlot(pStruct, k);
    if (GetSlotOffset(0) != g_FirstSlot && IsSlotRead(pStruct->m_Members.front().get()))
        m_Norvane.m_Notes.Add(Note::FirstSlot, pNode->Child(0)->location, pPou->m_Name);
    if (!DoSlotsFit(pStruct, pPou->m_LocalSize))
        m_Norvane.m_Notes.AddInTarget(Note::PointerAlignment, m_PointerType->m_Name);
    if (memberCount == 1 && !IsUnusedMember(pStruct->m_Members.front().get()))
        m_Norvane.m_Notes.Add(Note::SingleMember, pNode->Child(0)->location, pPou->m_Name);
    // Kept (code): dropped in every case, also where a single member has taken the last copy already.
    m_Text.Append("\tPOP", pointer, "\n\n");

    m_Text.Append('\n');
    m_Text.Append("\t;FunctionBlock body\n");
    WriteBody(pNode);

    m_CurrentFb = nullptr;
    WriteReturnLabel();
    m_Label.ClearReturnLabel();
    m_Text.Append('\n');
    m_Text.Append("\tRTS\n");
    WritePouEnd();
}

//		LABEL0004:
//
void CCodeGeneration::WriteReturnLabel()
{
    if (!m_Label.HasReturnLabel()) return;
    m_Text.Append("\t\t", m_Label.DrawReturn(), ":\n\n");
}

void CCodeGeneration::WriteInitializationCalls(const CProgram* pProgram)
{
    if (pProgram->m_InitGlobal)
        m_Text.Append("\t;Call to global variable initialization\n"
                      "\tJSR FUNCTION___GlobalInitialization__\n\n");
    if (pProgram->m_InitRetain)
        m_Text.Append("\t;Call to retain variable initialization\n"
                      "\tJSR FUNCTION___RetainInitialization__\n\n");
}

// The local memory of a program lives on between its calls, so its initial values are written once: 1234 in
// __ProgramInit marks a program that has them.
void CCodeGeneration::WriteProgramFrame(CNode* pNode)
{
    CProgram* pProgram = m_CurrentPou->AsProgram();
    WritePouHeader(pProgram);
    m_Text.Append("\tDBI POU_BEGIN\n");
    m_Text.Append('\n');
    WriteTargetText(pProgram->m_Begin);   // a line with only a tab if the target sets no text

    pProgram->m_LocalSize = GetLocalBytes();   // a program lists no variables: only the size counts
    m_Text.Append("\tLOCALSET ", pProgram->m_Id, " ; ", pProgram->m_LocalSize, " bytes size\n");
    WriteInitializationCalls(pProgram);

    const CVariable* pInit = m_MemoryHandler->m_LocalVariables.back();   // __ProgramInit, declared last
    m_Text.Append('\n');
    m_Text.Append("\t; Initialization test\n");
    m_Text.Append("\tPUSH (INT) [local+", pInit->m_Offset, "] ; ", pInit->m_Name, '\n');
    m_Text.Append("\tPUSH (INT) 1234 \n");
    m_Text.Append("\tCMP EQ(INT)\n");
    const Label label = m_Label.Draw();
    m_Text.Append("\tJC ", label, '\n');

    GenerateLocalInitialization(m_Text);
    m_Text.Append('\n');

    m_Text.Append("\tPUSH (INT) 1234 \n");
    m_Text.Append("\tPOP (INT) [local+", pInit->m_Offset, "] ; ", pInit->m_Name, '\n');
    m_Text.Append('\t', label, ":\n");

    m_Text.Append('\n');
    m_Text.Append("\t;Program body\n");
    WriteBody(pNode);
    WriteReturnLabel();
    WriteTargetText(pProgram->m_End);
    m_Text.Append("\tRTS\n");
    WritePouEnd();
    m_Label.ClearReturnLabel();
}

// The programs that the target asks for and no source declares: nothing but the calls that the target wants.
void CCodeGeneration::WriteAutomaticPrograms()
{
    for (CPou* pPou : m_Norvane.m_Pous.GetPous()) {
        const CProgram* pProgram = pPou->AsProgram();
        if (!pProgram || !pProgram->m_Automatic) continue;
        if (m_ErrorHandler->GetErrorCount() > 0) return;

        WritePouHeader(pProgram);
        m_Text.Append("\tDBI POU_BEGIN\n");
        m_Text.Append('\n');
        m_Text.Append("\tLOCALSET ", pProgram->m_Id, " ; ", pProgram->m_LocalSize, " bytes used\n");
        WriteInitializationCalls(pProgram);
        m_Text.Append('\n');
        WriteTargetText(pProgram->m_End);
        m_Text.Append("\tRTS\n");
        WritePouEnd();
    }
}
