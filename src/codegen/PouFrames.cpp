// What surrounds the statements of a POU: header, local memory, parameters, initial values, result and end.
// Much of the text ends in a line end of its own and still goes through WriteTabLine or WriteLine: the empty
// lines and lone tabs that come of it are wanted, readers of the file compare it byte by byte.

#include "codegen/CodeGeneration.h"

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
    const std::string name = ShowControlCharacters(GetFunctionLabel(pPou));   // the target may name a program
    const std::string file = ShowControlCharacters(pPou->m_Location.szFile ? pPou->m_Location.szFile : "");

    WriteLine("\n");
    WriteLine(rule);
    WriteLine(std::string("; ") + GetPouKindName(pPou) + ": " + name + ",\t file " + file +
              FormatText(",\t line %d", pPou->m_Location.nFirstLine));
    WriteLine(rule);
    // A function block is called like a function, so its label begins like one.
    WriteLine(std::string(pPou->IsProgram() ? "PROGRAM_" : "FUNCTION_") + name + ":");
    WriteText("\n\n");
}

//	LOCALDATA 6
//		;Variable (0): x ((INT),VAR_INPUT)
void CCodeGeneration::GenerateLocalList(std::string& text, std::int32_t& sizeBytes)
{
    std::string list;
    const CVariable* pLast = nullptr;   // the one that ends highest: greatest offset, of equal ones the later
    for (const CVariable* pVariable : m_MemoryHandler->m_LocalVariables) {
        AppendFormat(list, "\t\t;Variable (%d): ", pVariable->m_Offset);
        list += pVariable->m_Name + " (" + GetTypeSuffix(pVariable->m_Type) + "," + GetVarBlockName(pVariable) + ")\n";
        if (!pLast || pVariable->m_Offset >= pLast->m_Offset) pLast = pVariable;
    }
    // An array larger than any memory ends at the largest offset, so the sum may need more than 32 bits.
    const std::int64_t end = pLast ? std::int64_t{pLast->m_Offset} + std::max(pLast->m_Size, 1) : 0;
    sizeBytes = static_cast<std::int32_t>(std::min<std::int64_t>(end, std::numeric_limits<std::int32_t>::max()));
    AppendFormat(text, "\tLOCALDATA %d\n", std::max(sizeBytes, 1));
    text += list;
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
void CCodeGeneration::GenerateInputParameters(const CPou* pPou, std::string& text)
{
    text += "\t;Read input parameters\n";
    if (!pPou->IsFunction()) return;

    const std::vector<CVariable*>& locals = m_MemoryHandler->m_LocalVariables;
    for (std::size_t i = locals.size(); i > 0; --i) {
        const CVariable* pVariable = locals[i - 1];
        if (pVariable->IsHeldByPointer()) {
            text += "\tPOP" + GetPointerSuffix() + "\t[" + GetAreaPrefix(pVariable);
            AppendFormat(text, "%d]\t;", pVariable->m_Offset);
            text += pVariable->m_Name + "\n";
        } else if (pVariable->m_IsInput && pVariable->m_Type->IsAggregate()) {
            text += "\tPUSH&" + GetVariableOperand(pVariable) + "\n";
            AppendFormat(text, "\tMEMCPY %d\n", pVariable->m_Size);
        } else if (pVariable->m_IsInput) {
            text += "\tPOP" + GetVariableOperand(pVariable) + "\n";
        }
    }
}

// The retained variables of a POU are left to the function for initial values, which finds only the globals.
void CCodeGeneration::NoteRetainedValue(const CVariable* pVariable)
{
    std::string lostText;
    GenerateVariableInit(pVariable, lostText);
    if (!lostText.empty()) m_Norvane.m_Notes.Add(Note::RetainedValue, pVariable->m_Location, pVariable->m_Name);
}

void CCodeGeneration::GenerateLocalInitialization(std::string& text)
{
    text += "\t;Local variable initialization\n";
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
    }
}

//	;Return value
//	LABEL0004:
//	PUSH	(INT) [local+0] ; f
//	RTS
void CCodeGeneration::GenerateReturnValue(const CPou* pPou, std::string& text)
{
    text += "\t;Return value\n";
    if (m_Label.HasReturnLabel()) text += "\t" + m_Label.GetReturnLabel() + ":\n";
    const CFunction* pFunction = const_cast<CPou*>(pPou)->AsFunction();
    if (pFunction && pFunction->m_ReturnVariable)
        text += "\tPUSH\t" + GetVariableOperand(pFunction->m_ReturnVariable) + "\n";
    text += "\tRTS";
}

// The statement lists of the POU, each followed by one more line end.
void CCodeGeneration::WriteBody(const CNode* pNode)
{
    for (const CNode* pChild : pNode->m_Children) {
        if (pChild->nKind != STMT_LIST) continue;
        std::string text;
        GenerateStatementList(pChild, text);
        WriteLine(text);
    }
}

// Places what the POU declared and makes it the current one. False, with nothing done, where no block is to
// be written: behind the first error of the run, and for a POU that the table refused.
bool CCodeGeneration::BeginFrame(const CNode* pNode)
{
    if (m_ErrorHandler->GetErrorCount() > 0 || !pNode->pPou) return false;
    m_MemoryHandler->AllocatePouVariables();
    m_CurrentPou = pNode->pPou;
    return true;
}

void CCodeGeneration::EndFrame(const CNode* pNode)
{
    m_Norvane.m_Notes.EndPou(pNode->pPou);
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
    WriteTabLine("DBI POU_BEGIN");
    WriteText("\n");

    std::string text;
    GenerateLocalList(text, pPou->m_LocalSize);
    WriteLine(text);
    NoteCompatibleParameters(pPou->m_LocalSize);

    text.clear();
    GenerateInputParameters(pPou, text);
    WriteLine(text);

    text.clear();
    GenerateLocalInitialization(text);
    WriteLine(text);

    WriteTabLine(";Function body");
    WriteBody(pNode);

    text.clear();
    GenerateReturnValue(pPou, text);
    WriteLine(text);
    m_Label.ClearReturnLabel();
    WriteText("\n");
    WriteTabLine("DBI POU_END");
    WriteText("\n");
}

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

    const std::string pointer = GetPointerSuffix();
    if (position == 0) {
        if (pStruct->m_Members.size() > 1) WriteTabLine("DUP" + pointer);
        // The first member is taken to lie at offset 0, so nothing is added.
    } else {
        WriteTabLine("DUP" + pointer);
        const std::string offset = pMember->m_Type->IsBool()
                                       ? GetCommentedOffset(pMember->m_Offset, pStruct->GetBoolBit(pMember))
                                       : FormatText("%d", pMember->m_Offset);
        WriteTabLine("PUSH" + pointer + "\t" + offset);
        WriteTabLine("ADD" + pointer);
    }
    if (pMember->IsInOut()) WriteTabLine("PUSHI" + pointer);

    // Kept: the first slot is named 4 whatever the size of a pointer is.
    const std::string slot = position == 0 ? "4" : GetSlotText(position);
    WriteTabLine("POP" + pointer + "[local+" + slot + "]\t;" + pMember->m_Name + "\n");
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
    WriteTabLine("DBI POU_BEGIN");
    WriteText("\n");

    CTypeStructFB* pStruct = pPou->AsFunctionBlock()->m_Type;
    if (pStruct->m_Align == -1) m_MemoryHandler->ComputeLayout(pStruct, nullptr, 0);

    // The block's own memory holds pointers only: the instance, and one slot for each of its variables.
    // Kept: counted by the alignment of a pointer, even where a slot is larger.
    const std::int64_t slots = static_cast<std::int64_t>(pPou->m_Parameters.size()) + 1;
    pPou->m_LocalSize = ToStoredBytes(slots * m_PointerType->GetPlacingAlign());
    WriteTabLine(FormatText("LOCALDATA %d", std::max(pPou->m_LocalSize, 1)));
    m_CurrentFb = pPou;
    if (pStruct->m_Members.empty())
        EndGeneration(pPou->m_Location, "function block " + pPou->m_Name + " has no variables");

    const std::string pointer = GetPointerSuffix();
    WriteTabLine(";Read input parameter");
    WriteTabLine("DUP" + pointer);
    WriteTabLine("POP" + pointer + "[local+0]\t;FB_INSTANCE\n");
    const int memberCount = static_cast<int>(pStruct->m_Members.size());
    for (int k = 0; k < memberCount; ++k) WriteMemberSlot(pStruct, k);
    if (!DoSlotsFit(pStruct, pPou->m_LocalSize))
        m_Norvane.m_Notes.AddInTarget(Note::PointerAlignment, m_PointerType->m_Name);
    if (memberCount == 1 && !IsUnusedMember(pStruct->m_Members.front().get()))
        m_Norvane.m_Notes.Add(Note::SingleMember, pNode->Child(0)->location, pPou->m_Name);
    // Kept: dropped in every case, also where a single member has taken the last copy already.
    WriteTabLine("POP" + pointer + "\n");

    WriteText("\n");
    WriteTabLine(";FunctionBlock body");
    WriteBody(pNode);

    m_CurrentFb = nullptr;
    WriteReturnLabel();
    m_Label.ClearReturnLabel();
    WriteText("\n");
    WriteTabLine("RTS");
    WriteTabLine("DBI POU_END");
    WriteText("\n");
}

//		LABEL0004:
//
void CCodeGeneration::WriteReturnLabel()
{
    if (!m_Label.HasReturnLabel()) return;
    WriteTabLine("\t" + m_Label.GetReturnLabel() + ":\n");
}

void CCodeGeneration::WriteInitializationCalls(const CProgram* pProgram)
{
    if (pProgram->m_InitGlobal)
        WriteTabLine(";Call to global variable initialization\n\tJSR FUNCTION___GlobalInitialization__\n");
    if (pProgram->m_InitRetain)
        WriteTabLine(";Call to retain variable initialization\n\tJSR FUNCTION___RetainInitialization__\n");
}

// The local memory of a program lives on between its calls, so its initial values are written once: 1234 in
// __ProgramInit marks a program that has them.
void CCodeGeneration::WriteProgramFrame(CNode* pNode)
{
    CProgram* pProgram = m_CurrentPou->AsProgram();
    WritePouHeader(pProgram);
    WriteTabLine("DBI POU_BEGIN");
    WriteText("\n");
    WriteTabLine(pProgram->m_Begin);   // a line with only a tab if the target sets no text

    std::string list;                  // a program lists no variables: only the size counts
    GenerateLocalList(list, pProgram->m_LocalSize);
    WriteTabLine(FormatText("LOCALSET %d ; %d bytes size", pProgram->m_Id, pProgram->m_LocalSize));
    WriteInitializationCalls(pProgram);

    const CVariable* pInit = m_MemoryHandler->m_LocalVariables.back();   // __ProgramInit, declared last
    WriteText("\n");
    WriteTabLine("; Initialization test");
    WriteTabLine(FormatText("PUSH (INT) [local+%d] ; ", pInit->m_Offset) + pInit->m_Name);
    WriteTabLine("PUSH (INT) 1234 ");
    WriteTabLine("CMP EQ(INT)");
    const std::string label = m_Label.NewLabel();
    WriteTabLine("JC " + label);

    std::string text;
    GenerateLocalInitialization(text);
    WriteLine(text);

    WriteTabLine("PUSH (INT) 1234 ");
    WriteTabLine(FormatText("POP (INT) [local+%d] ; ", pInit->m_Offset) + pInit->m_Name);
    WriteTabLine(label + ":");

    WriteText("\n");
    WriteTabLine(";Program body");
    WriteBody(pNode);
    WriteReturnLabel();
    WriteTabLine(pProgram->m_End);
    WriteTabLine("RTS");
    WriteTabLine("DBI POU_END");
    WriteText("\n");
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
        WriteTabLine("DBI POU_BEGIN");
        WriteText("\n");
        WriteTabLine(FormatText("LOCALSET %d ; %d bytes used", pProgram->m_Id, pProgram->m_LocalSize));
        WriteInitializationCalls(pProgram);
        WriteText("\n");
        WriteTabLine(pProgram->m_End);
        WriteTabLine("RTS");
        WriteTabLine("DBI POU_END");
        WriteText("\n");
    }
}
