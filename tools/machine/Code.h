#pragma once

#include "machine/ValueKind.h"

#include <cstdint>
#include <string>
#include <vector>

// The compact instructions that the machine runs. A listing is translated into them once.
//
// Every operand is a base and a distance in bytes from it, whether it is a local variable, one at a fixed address, a
// cell of the evaluation stack or a constant: a cell holds its value with the low byte first, as memory does, so an
// INT is read from either in the same way. Only writing differs: a cell is written whole, extended to 64 bits by the
// value's kind, memory in the value's own width. Hence the two forms of most instructions, to cell and to memory.

enum OperandBase : std::uint8_t
{
    LocalBase,      // frame of the function, or local memory of the program
    MemoryBase,     // address 0 of the machine
    CellBase,       // the cell that the POU in progress found free at its start; plain code: behind the top
    ConstantBase,
    BaseCount
};

// ---- The list of operations. It is expanded three times: to the enumeration, to the jump table and, kind by kind, to
// the code of the dispatch loop. ORDER KIND within each.

#define NORVANE_INTEGER_KINDS(M, name)                                                                                \
    M(name, S8, std::int8_t)                                                                                           \
    M(name, S16, std::int16_t)                                                                                         \
    M(name, S32, std::int32_t)                                                                                         \
    M(name, S64, std::int64_t)                                                                                         \
    M(name, U8, std::uint8_t)                                                                                          \
    M(name, U16, std::uint16_t)                                                                                        \
    M(name, U32, std::uint32_t)                                                                                        \
    M(name, U64, std::uint64_t)
#define NORVANE_REAL_KINDS(M, name) M(name, F32, float) M(name, F64, double)
#define NORVANE_NUMBER_KINDS(M, name) NORVANE_INTEGER_KINDS(M, name) NORVANE_REAL_KINDS(M, name)
#define NORVANE_SIZES(M, name)                                                                                         \
    M(name, 1, std::uint8_t)                                                                                           \
    M(name, 2, std::uint16_t)                                                                                          \
    M(name, 4, std::uint32_t)                                                                                          \
    M(name, 8, std::uint64_t)

// Two operands, a result, to cell and to memory.
#define NORVANE_NUMBER_OPERATIONS(M) M(Add) M(Sub) M(Mul) M(Div) M(Min) M(Max)
#define NORVANE_INTEGER_OPERATIONS(M) M(Mod) M(And) M(Or) M(Xor)
// Comparisons to cell, and fused with a jump. Greater is less with the operands exchanged; "not less" is a condition
// of its own since neither holds for not-a-number.
#define NORVANE_COMPARISONS(M) M(Eq) M(Ne) M(Lt) M(Le)
#define NORVANE_JUMP_COMPARISONS(M) M(JumpEq) M(JumpNe) M(JumpLt) M(JumpLe) M(JumpNotLt) M(JumpNotLe)

#define NORVANE_OTHER_OPERATIONS(M)                                                                                    \
    M(Move)            /* a cell or constant to a cell */                                                              \
    M(LoadAddress)     /* of local memory, bit in x */                                                                 \
    M(LoadBit)         /* bit x of a byte to a cell */                                                                 \
    M(StoreBit)        /* a to bit x of d */                                                                           \
    M(LoadBitIndirect)                                                                                                 \
    M(StoreBitIndirect)                                                                                                \
    M(LoadBitIndexed)  /* fused with ADDRESSBIT */                                                                     \
    M(StoreBitIndexed)                                                                                                 \
    M(Index)           /* ADDRESS: a address, b index of kind x, e its record */                                       \
    M(IndexBit)                                                                                                        \
    M(Rare)            /* everything that no loop is made of: x the mnemonic, see Rare.h */                            \
    M(Copy)            /* a source, b destination, e bytes */                                                          \
    M(Jump)                                                                                                            \
    M(JumpTrue)                                                                                                        \
    M(JumpFalse)                                                                                                       \
    M(JumpBit)         /* bit x of a is set */                                                                         \
    M(JumpNotBit)                                                                                                      \
    M(CaseEqual)       /* a selector of kind kindA, b constant */                                                      \
    M(CaseInRange)     /* b and the constant behind it */                                                              \
    M(Call)                                                                                                            \
    M(Return)                                                                                                          \
    M(System)                                                                                                          \
    M(Mark)            /* counts line mark e */                                                                        \
    M(Probe)           /* asks the observer */                                                                         \
    M(Stack)           /* plain code: checks the stack and moves its top */                                            \
    M(Fault)           /* what can't be run; x the trap */

enum class Operation : std::uint16_t
{
#define NORVANE_BOTH(name, kind, type) name##_##kind##_Cell, name##_##kind##_Memory,
#define NORVANE_ONE(name, kind, type) name##_##kind,
#define NORVANE_TWO_INDEXES(name, kind, type) name##_##kind##_By16, name##_##kind##_By32,
#define NORVANE_EXPAND(name) NORVANE_NUMBER_KINDS(NORVANE_BOTH, name)
    NORVANE_NUMBER_OPERATIONS(NORVANE_EXPAND)
#undef NORVANE_EXPAND
#define NORVANE_EXPAND(name) NORVANE_INTEGER_KINDS(NORVANE_BOTH, name)
    NORVANE_INTEGER_OPERATIONS(NORVANE_EXPAND)
#undef NORVANE_EXPAND
#define NORVANE_EXPAND(name) NORVANE_NUMBER_KINDS(NORVANE_ONE, name)
    NORVANE_COMPARISONS(NORVANE_EXPAND)
    NORVANE_JUMP_COMPARISONS(NORVANE_EXPAND)
#undef NORVANE_EXPAND
    NORVANE_NUMBER_KINDS(NORVANE_ONE, Load)                     // memory to cell
    NORVANE_NUMBER_KINDS(NORVANE_ONE, LoadIndirect)             // a holds the address
    NORVANE_NUMBER_KINDS(NORVANE_TWO_INDEXES, LoadIndexed)      // fused with ADDRESS: b index, e its record
    NORVANE_SIZES(NORVANE_ONE, Store)                           // a to d
    NORVANE_SIZES(NORVANE_ONE, StoreIndirect)                   // a to where b points
    NORVANE_SIZES(NORVANE_TWO_INDEXES, StoreIndexed)            // a to the element b of record e
#define NORVANE_SINGLE(name) name,
    NORVANE_OTHER_OPERATIONS(NORVANE_SINGLE)
#undef NORVANE_SINGLE
#undef NORVANE_ONE
#undef NORVANE_BOTH
#undef NORVANE_TWO_INDEXES
    Count
};

struct Op
{
    Operation code = Operation::Fault;
    std::uint8_t baseA = 0;
    std::uint8_t baseB = 0;
    std::uint8_t baseD = 0;
    std::uint8_t kind = 0;        // of an operand, where the operation itself doesn't tell it
    std::int16_t x = 0;
    std::int32_t a = 0;
    std::int32_t b = 0;
    std::int32_t d = 0;           // destination, or the target of a jump
    std::int32_t e = 0;           // of a jump: instructions to count if it is taken
    std::int32_t f = 0;           // of a jump: instructions to count if not; of a call: behind the return
};

// ADDRESS and ADDRESSBIT, with the array in front where it is known.
struct IndexRecord
{
    std::int64_t stride = 0;      // bytes, or bits
    std::int64_t low = 0;
    std::int64_t high = 0;
    std::int32_t bitOffset = 0;   // of an array of BOOL: that of its first element
    std::int32_t offset = 0;      // of the array, from `base`
    OperandBase base = MemoryBase;
};

// Where a value stands that is on the stack for the listing.
enum class StackPlace : std::uint8_t { Cell, Constant, Memory, Address };

struct StackEntry
{
    StackPlace place = StackPlace::Cell;
    OperandBase base = CellBase;
    ValueKind kind = ValueKind::S64;   // of the value
    std::int16_t bit = 0;              // of Address
    std::int32_t offset = 0;
    std::int64_t constant = 0;
};

// The topmost values in front of an instruction that can draw a trap, for its report.
struct StackSnapshot
{
    static constexpr int most = 4;
    StackEntry top[most];              // the topmost first
    int count = 0;
};

struct TranslatedCode
{
    std::vector<Op> ops;
    std::vector<std::int32_t> instructionOfOp;
    std::vector<std::int32_t> opOfInstruction;     // -1: never reached
    std::vector<std::int32_t> chargeOfInstruction; // instructions from there to the next jump, that included
    std::vector<std::int64_t> constants;
    std::vector<IndexRecord> indexes;
    std::vector<StackSnapshot> snapshots;
    std::vector<std::int32_t> snapshotOfInstruction;   // -1: none; in plain code the cells themselves tell
    bool isPlain = false;                          // one step for each instruction of the listing, stack checked
};
