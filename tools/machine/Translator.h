#pragma once

#include "machine/Code.h"
#include "machine/Image.h"
#include "machine/Options.h"
#include "machine/StackAnalysis.h"
#include "machine/Trap.h"

#include <unordered_map>
#include <vector>

// Turns a listing into compact instructions. In fast code a value that is pushed stays where it is, a variable or a
// constant, until the instruction that takes it names it as its operand; what stores a result right away is told to
// write it there; a comparison and the jump behind it become one. Before a jump, a label, a call and a store whatever
// still waits goes to its cell, so that the stack is whole there.
//
// Plain code has for each instruction of the listing a check of the stack and one or two steps. It is taken for
// debuggers, and where the stack analysis can't vouch for the program.
class CTranslator
{
public:
    CTranslator(const CImage& image, const MachineOptions& options);

    TranslatedCode Translate();

private:
    using Place = StackPlace;
    using Entry = StackEntry;

    struct Operand
    {
        OperandBase base = CellBase;
        std::int32_t offset = 0;
    };

    void TranslatePou(const ListingPou& pou);
    void BeginInstruction(int index);
    void TranslateInstruction(const Instruction& instruction);
    void TranslatePushMemory(const Instruction& instruction);
    void TranslatePopMemory(const Instruction& instruction);
    void TranslateLoadIndirect(Operand address, ValueKind kind);
    void TranslateStoreIndirect(Operand address, ValueKind kind, Entry value, int valuePosition);
    void TranslateArithmetic(const Instruction& instruction);
    void TranslateComparison(const Instruction& instruction);
    void TranslateRare(const Instruction& instruction, int operands);
    void TranslateConditionalJump(const Instruction& instruction);
    void TranslateCase(const Instruction& instruction);
    void TranslateCall(const Instruction& instruction);
    void TranslateIndex(const Instruction& instruction);
    bool TranslateIndexedAccess(const Instruction& instruction);

    bool FindMemory(const Instruction& instruction, OperandBase& base, std::int32_t& offset, int bytes) const;
    void EmitFault(TrapKind kind);
    Op& Emit(Operation code);
    void PatchJumps();

    Entry Pop();
    void Push(const Entry& entry);
    void PushCell(ValueKind kind);                    // the result lies in its cell already
    void TakeSnapshot(const Instruction& instruction);
    int Position() const { return m_Depth - 1; }      // of the top
    Operand CellAt(int position) const;
    Operand Materialise(const Entry& entry, int position);
    Operand AsOperand(const Entry& entry, int position, ValueKind kind);
    Operand AddConstant(std::int64_t constant);
    void FlushAll();
    void FlushMemory();
    void ResetStack(std::int32_t depth);
    bool IsResultOnTop() const;

    const CImage& m_Image;
    const MachineOptions& m_Options;
    CStackAnalysis m_Analysis;
    TranslatedCode m_Code;
    std::vector<Entry> m_Entries;            // the topmost; below them only cells that are in place
    std::size_t m_FlushedCount = 0;          // of m_Entries: those that are in place too
    int m_Depth = 0;
    int m_Instruction = 0;                   // being translated
    int m_LastResult = -1;                   // the step that wrote the top's cell, if it was the last one
    bool m_IsSkipped = false;                // the next instruction was taken by this one
    std::unordered_map<std::int64_t, std::int32_t> m_Constants;
};
