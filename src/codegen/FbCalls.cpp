// Calls of function block instances. The caller moves the inputs into the instance, calls the block with the
// instance's address on the stack, and moves the outputs out again.

#include "codegen/CodeGeneration.h"

#include "codegen/TextPieces.h"
#include "files/Fatal.h"
#include "files/Format.h"
#include "frontend/Node.h"
#include "model/Member.h"
#include "model/Pou.h"
#include "model/Type.h"
#include "model/TypeStruct.h"
#include "model/Variable.h"
#include "semantics/Norvane.h"
#include "semantics/Wrapping.h"
#include "target/MemoryHandler.h"

namespace
{

// How the members of the called instance are reached.
enum class InstancePlace
{
    Memory,      // at their place in the area
    Pointer,     // the instance is an output or in-out parameter
    BodyMemory,  // from inside a function block, at their place in the area
    BodyMember   // from inside a function block, of which the instance is a member
};

struct FbCall
{
    const CNode* pNode;
    const CVariable* pInstance;
    const CTypeStruct* pStruct;
    const CNode* pParameters = nullptr;   // null: none
    CNode* pLastAssigned = nullptr;       // the value that the last ":=" of the call assigns; null without one
    std::string_view area{};              // Kept (code): "local+" or "global+", RETAIN and AT are not looked at
    InstancePlace place = InstancePlace::Memory;
    int slot = 0;                         // BodyMember: position of the instance in the calling block
};

// fb.in
struct MemberComment
{
    std::string_view instance;
    std::string_view member;

    auto Parts() const { return std::make_tuple(instance, '.', member); }
};

// One parameter of a call.
struct FbParameter
{
    CNode* pValue;
    const CMember* pMember;
    int position = 0;         // of the member in the instance
    int bit = 0;
    bool isInOut = false;
    bool isAggregate = false;
    TypeSuffix suffix{};      // of the member's type
    MemoryPlace memory{};     // "[local+4].3"
    MemberComment comment{};  // "fb.in"
};

}   // namespace

// The texts of calls. What moves a parameter is asked for each one anew, so it keeps nothing but the generator.
class CCodeGeneration::CFbCallText
{
public:
    explicit CFbCallText(CCodeGeneration& code) : m_Code(code) {}

    FbCall DescribeFbCall(const CNode* pNode) const;
    FbParameter DescribeFbParameter(const FbCall& call, const CNode* pNode) const;
    void NoteInstance(const FbCall& call);
    void GenerateFbInput(const FbCall& call, const FbParameter& parameter, TextBuffer& text);
    void GenerateFbJump(const FbCall& call, TextBuffer& text);
    void GenerateFbOutput(const FbCall& call, const FbParameter& parameter, TextBuffer& text);

private:
    bool GenerateValueOrAddress(CNode* pValue, bool isAddress, TextBuffer& text);   // as GenerateVariableAccess
    void NoteNarrowMove(const FbParameter& parameter, bool isThrough);
    bool TakesAddress(const FbParameter& parameter) const;
    bool IsFoundByPosition(const FbParameter& parameter) const;
    void NoteIndirectInstance(const FbCall& call);
    void GeneratePointedMember(const FbCall& call, const FbParameter& parameter, TextBuffer& text);
    void GenerateSlotMember(const FbCall& call, const FbParameter& parameter, TextBuffer& text);
    void GenerateInputToMemory(const FbParameter& parameter, TextBuffer& text);
    void GenerateOutputFromMemory(const FbParameter& parameter, TextBuffer& text);
    void GenerateOutputFromPointer(const FbCall& call, const FbParameter& parameter, TextBuffer& text);

    CCodeGeneration& m_Code;
};

FbCall CCodeGeneration::CFbCallText::DescribeFbCall(const CNode* pNode) const
{
    const CVariable* pInstance = pNode->pVariable;
    const CTypeStructFB* pStruct = pInstance && pInstance->m_Type ? pInstance->m_Type->AsStructFB() : nullptr;
    if (!pStruct || !pStruct->m_FunctionBlock) InternalFault("a call of " + std::string(pNode->GetName()) + " has no function block");

    FbCall call{.pNode = pNode, .pInstance = pInstance, .pStruct = pStruct};
    if (pNode->GetChildCount() > 0) {
        call.pParameters = pNode->Child(0);
        for (const CNode* pParameter : call.pParameters->m_Children)
            if (pParameter->nKind == ASSIGN_FB) call.pLastAssigned = pParameter->Child(1);
    }
    call.area = pInstance->m_IsLocal ? "local+" : "global+";
    if (m_Code.m_CurrentFb)
        call.place =
            m_Code.FindCurrentFbMember(pInstance, call.slot) ? InstancePlace::BodyMember : InstancePlace::BodyMemory;
    else if (pInstance->IsHeldByPointer())
        call.place = InstancePlace::Pointer;
    return call;
}

FbParameter CCodeGeneration::CFbCallText::DescribeFbParameter(const FbCall& call, const CNode* pNode) const
{
    const CMember* pMember = pNode->Child(0)->GetMember();
    if (!pMember || !pMember->m_Type)
        InternalFault("a parameter of the call of " + std::string(call.pNode->GetName()) + " has no member");

    FbParameter parameter{.pValue = pNode->Child(1), .pMember = pMember};
    call.pStruct->FindMember(pMember->m_Name, &parameter.position);
    parameter.bit = call.pStruct->GetBoolBit(pMember);
    parameter.isInOut = pMember->IsInOut();
    parameter.isAggregate = pMember->m_Type->IsAggregate();
    parameter.suffix = m_Code.SuffixOf(pMember->m_Type);
    const std::int64_t offsetBytes = WrapAdd(pMember->m_Offset, call.pInstance->m_Offset);
    parameter.memory = {call.area, static_cast<std::int32_t>(offsetBytes)};
    if (pMember->m_Type->IsBool()) parameter.memory.bit = parameter.bit;
    parameter.comment = {call.pInstance->m_Name, pMember->m_Name};
    return parameter;
}

// An address needs a variable; a value can be any expression, and reads a variable in the same words.
bool CCodeGeneration::CFbCallText::GenerateValueOrAddress(CNode* pValue, bool isAddress, TextBuffer& text)
{
    if (isAddress) return m_Code.GenerateAccessLine(pValue, AccessMode::Address, text);
    if (pValue->IsVariableAccess()) return m_Code.GenerateAccessLine(pValue, AccessMode::Read, text);
    m_Code.GenerateNode(pValue, text);
    return false;
}

// Where the instance is no plain variable of the caller, a structure or array is moved by instructions of a pointer's
// width. That is enough for one of that size if both ends are what lies there and not its address.
void CCodeGeneration::CFbCallText::NoteNarrowMove(const FbParameter& parameter, bool isThrough)
{
    constexpr int bitsInByte = 8;
    if (!parameter.isAggregate || parameter.isInOut) return;
    if (isThrough &&
        m_Code.GetCopySize(parameter.pMember, parameter.pValue) == m_Code.m_PointerType->m_SizeBits / bitsInByte)
        return;
    m_Code.m_Norvane.m_Notes.Add(Note::ValueForAddress, parameter.pValue->location);
}

// Where the address for an in-out is stored in the width of what it points at, that has to be an address's.
bool CCodeGeneration::CFbCallText::TakesAddress(const FbParameter& parameter) const
{
    return parameter.isAggregate || parameter.pMember->m_Type->m_SizeBits == m_Code.m_PointerType->m_SizeBits;
}

// Whether an input through a pointer reaches its member all the same, and fills it.
bool CCodeGeneration::CFbCallText::IsFoundByPosition(const FbParameter& parameter) const
{
    const std::int64_t slotNumber = std::int64_t{parameter.position} + 1;
    const std::int64_t taken = parameter.position == 0 ? 0 : slotNumber * m_Code.m_MemoryHandler->GetPointerSlotSize();
    if (taken != parameter.pMember->m_Offset || parameter.bit > 0) return false;
    return !parameter.isInOut || TakesAddress(parameter);
}

void CCodeGeneration::CFbCallText::NoteIndirectInstance(const FbCall& call)
{
    m_Code.m_Norvane.m_Notes.Add(Note::IndirectInstance, call.pNode->location, call.pInstance->m_Name);
}

//	PUSH(UDINT) [local+0] ; fb
//	PUSH(UDINT)	8
//	ADD(UDINT)
//
// Kept (code): the member is looked for where its position, not its offset says, and the first one at the start.
void CCodeGeneration::CFbCallText::GeneratePointedMember(const FbCall& call, const FbParameter& parameter,
                                                         TextBuffer& text)
{
    const TypeSuffix pointer = m_Code.PointerSuffix();
    text.Append("\tPUSH", m_Code.OperandOf(call.pInstance), '\n');
    if (parameter.position == 0) return;
    text.Append("\tPUSH", pointer, '\t', m_Code.GetSlotOffset(parameter.position), '\n');
    text.Append("\tADD", pointer, '\n');
}

//	PUSH(UDINT)	[local+8]	;&fb
//	PUSH(UDINT)	4
//	ADD(UDINT)
void CCodeGeneration::CFbCallText::GenerateSlotMember(const FbCall& call, const FbParameter& parameter,
                                                      TextBuffer& text)
{
    const TypeSuffix pointer = m_Code.PointerSuffix();
    text.Append("\tPUSH", pointer, "\t[local+", m_Code.GetSlotOffset(call.slot), "]\t;&", call.pInstance->m_Name, '\n');
    if (parameter.pMember->m_Offset == 0 && parameter.bit < 1) return;
    text.Append("\tPUSH", pointer, '\t', PackedOffset{parameter.pMember->m_Offset, parameter.bit}, '\n');
    text.Append("\tADD", pointer, '\n');
}

// ---- Inputs

//	PUSH(INT)	[local+4]	;x
//	POP(INT)	[local+12]	;fb.in
void CCodeGeneration::CFbCallText::GenerateInputToMemory(const FbParameter& parameter, TextBuffer& text)
{
    const TypeSuffix pointer = m_Code.PointerSuffix();
    if (parameter.isInOut) {   // the instance keeps the address
        const AccessMode mode = parameter.isAggregate ? AccessMode::Read : AccessMode::Address;
        if (m_Code.GenerateAccessLine(parameter.pValue, mode, text))
            m_Code.m_Norvane.m_Notes.Add(Note::ValueForAddress, parameter.pValue->location);
        text.Append("\tPOP", pointer, '\t', parameter.memory, "\t;", parameter.comment, '\n');
    } else if (parameter.isAggregate) {
        m_Code.GenerateAccessLine(parameter.pValue, AccessMode::Address, text);
        text.Append("\tPUSH&", pointer, '\t', parameter.memory, "\t;", parameter.comment, '\n');
        const std::int64_t sizeBytes = m_Code.GetCopySize(parameter.pMember, parameter.pValue);
        text.Append("\tMEMCPY\t", static_cast<std::int32_t>(sizeBytes), '\n');
    } else {
        m_Code.GenerateNode(parameter.pValue, text);
        text.Append("\tPOP", parameter.suffix, '\t', parameter.memory, "\t;", parameter.comment, '\n');
    }
}

void CCodeGeneration::CFbCallText::GenerateFbInput(const FbCall& call, const FbParameter& parameter, TextBuffer& text)
{
    if (call.place == InstancePlace::Memory) {
        GenerateInputToMemory(parameter, text);
        return;
    }
    NoteNarrowMove(parameter, GenerateValueOrAddress(parameter.pValue, parameter.isInOut, text));
    switch (call.place) {
    case InstancePlace::Memory: break;   // settled above   GCOVR_EXCL_LINE
    case InstancePlace::Pointer:
        if (!IsFoundByPosition(parameter)) NoteIndirectInstance(call);
        GeneratePointedMember(call, parameter, text);
        text.Append("\tPOPI", parameter.suffix, '\n');
        break;
    case InstancePlace::BodyMemory:
        if (parameter.isInOut && !TakesAddress(parameter))
            m_Code.m_Norvane.m_Notes.Add(Note::ValueForAddress, parameter.pValue->location);
        text.Append("\tPOP", parameter.suffix, '\t', parameter.memory, "\t;", parameter.comment, '\n');
        break;
    case InstancePlace::BodyMember:
        GenerateSlotMember(call, parameter, text);
        text.Append("\tPOPI", parameter.isInOut ? m_Code.PointerSuffix() : parameter.suffix, '\n');
        break;
    }
}

// ---- The call itself

//	PUSH&(UDINT)	[local+12]	;fb
//	JSR FUNCTION_counter
void CCodeGeneration::CFbCallText::GenerateFbJump(const FbCall& call, TextBuffer& text)
{
    const CVariable* pInstance = call.pInstance;
    if (pInstance->m_IsLocal && m_Code.m_CurrentFb) {
        text.Append("\tPUSH");
        m_Code.GenerateFbMemberAccess(call.pNode, FbAccessForm::Plain, text);
        text.Append('\n');
    } else {
        const bool isPointer = pInstance->m_IsLocal && pInstance->IsHeldByPointer();
        text.Append(isPointer ? "\tPUSH" : "\tPUSH&", m_Code.PointerSuffix(), '\t',
                    MemoryPlace{call.area, pInstance->m_Offset}, "\t;", pInstance->m_Name, '\n');
    }
    CPou* pFb = pInstance->m_Type->AsStructFB()->m_FunctionBlock;
    text.Append("\tJSR FUNCTION_", pFb->m_Name, '\n');
    if (m_Code.m_CurrentPou) m_Code.m_CurrentPou->AddCallee(pFb);
}

// ---- Outputs

//	PUSH(INT)	[local+12]	;fb.out
//	POP(INT)	[local+4]	;x
void CCodeGeneration::CFbCallText::GenerateOutputFromMemory(const FbParameter& parameter, TextBuffer& text)
{
    if (!parameter.isAggregate) {
        text.Append("\tPUSH", parameter.suffix, '\t', parameter.memory, "\t;", parameter.comment, '\n');
        m_Code.GenerateAccessLine(parameter.pValue, AccessMode::Write, text);
        return;
    }
    text.Append("\tPUSH&", m_Code.PointerSuffix(), '\t', parameter.memory, "\t;", parameter.comment, '\n');
    m_Code.GenerateAccessLine(parameter.pValue, AccessMode::Address, text);
    const std::int64_t sizeBytes = m_Code.GetCopySize(parameter.pMember, parameter.pValue);
    text.Append("\tMEMCPY\t", static_cast<std::int32_t>(sizeBytes), '\n');
}

// Kept (code): what follows the output's value isn't the store into its target but the last value assigned in this
// call. A call that assigns none has nothing to write here and can't be generated.
void CCodeGeneration::CFbCallText::GenerateOutputFromPointer(const FbCall& call, const FbParameter& parameter,
                                                             TextBuffer& text)
{
    GeneratePointedMember(call, parameter, text);
    text.Append("\tPUSHI", parameter.suffix, '\n');
    if (!call.pLastAssigned)
        m_Code.EndGeneration(call.pNode->location, "the call of " + call.pInstance->m_Name +
                                                       " through a pointer takes an output and assigns no input");
    GenerateValueOrAddress(call.pLastAssigned, parameter.isInOut, text);
}

void CCodeGeneration::CFbCallText::GenerateFbOutput(const FbCall& call, const FbParameter& parameter, TextBuffer& text)
{
    switch (call.place) {
    case InstancePlace::Memory: GenerateOutputFromMemory(parameter, text); break;
    case InstancePlace::Pointer:
        NoteIndirectInstance(call);   // nothing is stored
        GenerateOutputFromPointer(call, parameter, text);
        break;
    case InstancePlace::BodyMemory:   // Kept (code): blanks in front of the bracket and behind the ";"
        text.Append("\tPUSH", parameter.suffix, ' ', parameter.memory, "\t; ", parameter.comment, '\n');
        NoteNarrowMove(parameter, m_Code.GenerateAccessLine(parameter.pValue, AccessMode::Write, text));
        break;
    case InstancePlace::BodyMember:
        GenerateSlotMember(call, parameter, text);
        text.Append("\tPUSHI", parameter.suffix, '\n');
        NoteNarrowMove(parameter, m_Code.GenerateAccessLine(parameter.pValue, AccessMode::Write, text));
        break;
    }
}

// A plain local or global place is all that the call knows; a member of the calling block has a slot instead.
static bool LiesElsewhere(const CVariable* pInstance)
{
    return pInstance->m_IsRetain || !pInstance->m_DirectAddress.empty();
}

void CCodeGeneration::CFbCallText::NoteInstance(const FbCall& call)
{
    if (call.place != InstancePlace::BodyMember && LiesElsewhere(call.pInstance))
        m_Code.m_Norvane.m_Notes.Add(Note::InstanceElsewhere, call.pNode->location, call.pInstance->m_Name);
}

// Inputs in order, the call, outputs in order. An input that is left out keeps its value in the instance.
void CCodeGeneration::GenerateFbCall(const CNode* pNode, TextBuffer& text)
{
    CFbCallText texts(*this);
    const FbCall call = texts.DescribeFbCall(pNode);
    texts.NoteInstance(call);
    const int count = call.pParameters ? call.pParameters->GetChildCount() : 0;
    for (int i = 0; i < count; ++i) {
        const CNode* pParameter = call.pParameters->Child(i);
        if (pParameter->nKind == ASSIGN_FB)
            texts.GenerateFbInput(call, texts.DescribeFbParameter(call, pParameter), text);
    }
    texts.GenerateFbJump(call, text);
    for (int i = 0; i < count; ++i) {
        const CNode* pParameter = call.pParameters->Child(i);
        if (pParameter->nKind == ARROW) texts.GenerateFbOutput(call, texts.DescribeFbParameter(call, pParameter), text);
    }
}
