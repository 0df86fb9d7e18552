// The dispatch loop.

#include "machine/Machine.h"
#include "machine/Rare.h"
#include "machine/StackAnalysis.h"

#include <bit>
#include <cmath>
#include <cstring>
#include <limits>
#include <type_traits>

static_assert(std::endian::native == std::endian::little, "values are read from the low end of a cell");

// Jumping from the end of one operation straight to the next is worth a fifth of the time. It is no standard C++, but
// both compilers that we build with know it.
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wpedantic"

namespace
{

template <class T> T Load(const std::uint8_t* p)
{
    T value;
    std::memcpy(&value, p, sizeof value);
    return value;
}

template <class T> void Store(std::uint8_t* p, T value)
{
    std::memcpy(p, &value, sizeof value);
}

// A cell is written whole: integers extended, a REAL in the low half over zeros.
template <class T> void StoreCell(std::uint8_t* p, T value)
{
    if constexpr (std::is_same_v<T, float>) Store<std::uint64_t>(p, std::bit_cast<std::uint32_t>(value));
    else if constexpr (std::is_same_v<T, double>) Store<double>(p, value);
    else Store<std::int64_t>(p, static_cast<std::int64_t>(value));
}

// Integers wrap in their width: C++ computes small ones as int and leaves overflow undefined, so all goes through
// unsigned numbers of 64 bits.
template <class T> struct Arithmetic
{
    static T Add(T a, T b)
    {
        if constexpr (std::is_floating_point_v<T>) return a + b;
        else return static_cast<T>(static_cast<std::uint64_t>(a) + static_cast<std::uint64_t>(b));
    }
    static T Sub(T a, T b)
    {
        if constexpr (std::is_floating_point_v<T>) return a - b;
        else return static_cast<T>(static_cast<std::uint64_t>(a) - static_cast<std::uint64_t>(b));
    }
    static T Mul(T a, T b)
    {
        if constexpr (std::is_floating_point_v<T>) return a * b;
        else return static_cast<T>(static_cast<std::uint64_t>(a) * static_cast<std::uint64_t>(b));
    }
    static T Div(T a, T b)   // b is not 0; the lowest value by -1 wraps
    {
        if constexpr (std::is_signed_v<T> && std::is_integral_v<T>) {
            if (b == -1) return Sub(0, a);
        }
        return static_cast<T>(a / b);
    }
    static T Mod(T a, T b)
    {
        if constexpr (std::is_signed_v<T>) {
            if (b == -1) return 0;
        }
        return static_cast<T>(a % b);
    }
    static T And(T a, T b) { return static_cast<T>(a & b); }
    static T Or(T a, T b) { return static_cast<T>(a | b); }
    static T Xor(T a, T b) { return static_cast<T>(a ^ b); }
    static T Min(T a, T b) { return b < a ? b : a; }
    static T Max(T a, T b) { return a < b ? b : a; }
};

}   // namespace

static std::int64_t LoadIndex(const std::uint8_t* p, ValueKind kind)
{
    switch (kind) {
    case ValueKind::S8: return Load<std::int8_t>(p);
    case ValueKind::S16: return Load<std::int16_t>(p);
    case ValueKind::S32: return Load<std::int32_t>(p);
    case ValueKind::U8: return Load<std::uint8_t>(p);
    case ValueKind::U16: return Load<std::uint16_t>(p);
    case ValueKind::U32: return Load<std::uint32_t>(p);
    case ValueKind::Bool: return Load<std::uint8_t>(p) & 1;
    default: return Load<std::int64_t>(p);
    }
}

RunStatus CMachine::Execute()
{
    static const void* const labels[] = {
#define NORVANE_BOTH(name, kind, type) &&L_##name##_##kind##_Cell, &&L_##name##_##kind##_Memory,
#define NORVANE_ONE(name, kind, type) &&L_##name##_##kind,
#define NORVANE_TWO_INDEXES(name, kind, type) &&L_##name##_##kind##_By16, &&L_##name##_##kind##_By32,
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
                        NORVANE_NUMBER_KINDS(NORVANE_ONE, Load)
                            NORVANE_NUMBER_KINDS(NORVANE_ONE, LoadIndirect)
                                NORVANE_NUMBER_KINDS(NORVANE_TWO_INDEXES, LoadIndexed)
                                    NORVANE_SIZES(NORVANE_ONE, Store)
                                        NORVANE_SIZES(NORVANE_ONE, StoreIndirect)
                                            NORVANE_SIZES(NORVANE_TWO_INDEXES, StoreIndexed)
#define NORVANE_SINGLE(name) &&L_##name,
                                                NORVANE_OTHER_OPERATIONS(NORVANE_SINGLE)
#undef NORVANE_SINGLE
#undef NORVANE_ONE
#undef NORVANE_BOTH
#undef NORVANE_TWO_INDEXES
    };
    static_assert(std::size(labels) == static_cast<std::size_t>(Operation::Count));

    std::uint8_t* bases[BaseCount] = {m_Bases[0], m_Bases[1], m_Bases[2], m_Bases[3]};
    const Op* const pFirst = m_Code.ops.data();
    const IndexRecord* const pIndexes = m_Code.indexes.data();
    const Op* pOp = m_IsStopped ? m_pNext + 1 : m_pNext;   // not to the same probe again
    m_IsStopped = false;
    std::int64_t budget = m_Budget;
    TrapKind trap = TrapKind::NoSuchOperation;
    RunStatus status = RunStatus::Finished;

#define DISPATCH() goto* labels[static_cast<std::size_t>(pOp->code)]
#define NEXT()                                                                                                         \
    do {                                                                                                               \
        ++pOp;                                                                                                         \
        DISPATCH();                                                                                                    \
    } while (false)
#define TRAP(which)                                                                                                    \
    do {                                                                                                               \
        trap = TrapKind::which;                                                                                        \
        goto trapped;                                                                                                  \
    } while (false)
// A jump pays for the stretch that it leads to.
#define JUMP_IF(condition)                                                                                             \
    do {                                                                                                               \
        if (condition) {                                                                                               \
            budget -= pOp->e;                                                                                          \
            if (budget < 0) goto exhausted;                                                                            \
            pOp = pFirst + pOp->d;                                                                                     \
            DISPATCH();                                                                                                \
        }                                                                                                              \
        budget -= pOp->f;                                                                                              \
        if (budget < 0) goto exhausted;                                                                                \
        NEXT();                                                                                                        \
    } while (false)
#define A (bases[pOp->baseA] + pOp->a)
#define B (bases[pOp->baseB] + pOp->b)
#define D (bases[pOp->baseD] + pOp->d)
#define CELL (bases[CellBase] + pOp->d)

    if (budget < 0) goto exhausted;
    DISPATCH();

    // ---- Arithmetic

#define NORVANE_CALCULATE(name, kind, type, guard)                                                                     \
    L_##name##_##kind##_Cell:                                                                                          \
    {                                                                                                                  \
        const type a = Load<type>(A);                                                                                  \
        const type b = Load<type>(B);                                                                                  \
        guard;                                                                                                         \
        StoreCell<type>(CELL, Arithmetic<type>::name(a, b));                                                           \
        NEXT();                                                                                                        \
    }                                                                                                                  \
    L_##name##_##kind##_Memory:                                                                                        \
    {                                                                                                                  \
        const type a = Load<type>(A);                                                                                  \
        const type b = Load<type>(B);                                                                                  \
        guard;                                                                                                         \
        Store<type>(D, Arithmetic<type>::name(a, b));                                                                  \
        NEXT();                                                                                                        \
    }
#define NORVANE_PLAIN(name, kind, type) NORVANE_CALCULATE(name, kind, type, static_cast<void>(0))
#define NORVANE_DIVIDING(name, kind, type) NORVANE_CALCULATE(name, kind, type, if (b == 0) TRAP(DivisionByZero))
    NORVANE_NUMBER_KINDS(NORVANE_PLAIN, Add)
    NORVANE_NUMBER_KINDS(NORVANE_PLAIN, Sub)
    NORVANE_NUMBER_KINDS(NORVANE_PLAIN, Mul)
    NORVANE_NUMBER_KINDS(NORVANE_DIVIDING, Div)
    NORVANE_NUMBER_KINDS(NORVANE_PLAIN, Min)
    NORVANE_NUMBER_KINDS(NORVANE_PLAIN, Max)
    NORVANE_INTEGER_KINDS(NORVANE_DIVIDING, Mod)
    NORVANE_INTEGER_KINDS(NORVANE_PLAIN, And)
    NORVANE_INTEGER_KINDS(NORVANE_PLAIN, Or)
    NORVANE_INTEGER_KINDS(NORVANE_PLAIN, Xor)

    // ---- Comparisons and jumps

#define NORVANE_COMPARE(name, kind, type, relation)                                                                    \
    L_##name##_##kind:                                                                                                 \
    {                                                                                                                  \
        const bool holds = Load<type>(A) relation Load<type>(B);                                                       \
        Store<std::int64_t>(CELL, holds);                                                                              \
        NEXT();                                                                                                        \
    }
#define NORVANE_JUMP(name, kind, type, condition)                                                                      \
    L_##name##_##kind:                                                                                                 \
    {                                                                                                                  \
        const type a = Load<type>(A);                                                                                  \
        const type b = Load<type>(B);                                                                                  \
        JUMP_IF(condition);                                                                                            \
    }
#define NORVANE_EQ(name, kind, type) NORVANE_COMPARE(name, kind, type, ==)
#define NORVANE_NE(name, kind, type) NORVANE_COMPARE(name, kind, type, !=)
#define NORVANE_LT(name, kind, type) NORVANE_COMPARE(name, kind, type, <)
#define NORVANE_LE(name, kind, type) NORVANE_COMPARE(name, kind, type, <=)
    NORVANE_NUMBER_KINDS(NORVANE_EQ, Eq)
    NORVANE_NUMBER_KINDS(NORVANE_NE, Ne)
    NORVANE_NUMBER_KINDS(NORVANE_LT, Lt)
    NORVANE_NUMBER_KINDS(NORVANE_LE, Le)
#define NORVANE_JUMP_EQ(name, kind, type) NORVANE_JUMP(name, kind, type, a == b)
#define NORVANE_JUMP_NE(name, kind, type) NORVANE_JUMP(name, kind, type, a != b)
#define NORVANE_JUMP_LT(name, kind, type) NORVANE_JUMP(name, kind, type, a < b)
#define NORVANE_JUMP_LE(name, kind, type) NORVANE_JUMP(name, kind, type, a <= b)
#define NORVANE_JUMP_NOT_LT(name, kind, type) NORVANE_JUMP(name, kind, type, !(a < b))
#define NORVANE_JUMP_NOT_LE(name, kind, type) NORVANE_JUMP(name, kind, type, !(a <= b))
    NORVANE_NUMBER_KINDS(NORVANE_JUMP_EQ, JumpEq)
    NORVANE_NUMBER_KINDS(NORVANE_JUMP_NE, JumpNe)
    NORVANE_NUMBER_KINDS(NORVANE_JUMP_LT, JumpLt)
    NORVANE_NUMBER_KINDS(NORVANE_JUMP_LE, JumpLe)
    NORVANE_NUMBER_KINDS(NORVANE_JUMP_NOT_LT, JumpNotLt)
    NORVANE_NUMBER_KINDS(NORVANE_JUMP_NOT_LE, JumpNotLe)

L_Jump:
    budget -= pOp->e;
    if (budget < 0) goto exhausted;
    pOp = pFirst + pOp->d;
    DISPATCH();
L_JumpTrue:
    JUMP_IF(*A & 1);
L_JumpFalse:
    JUMP_IF(!(*A & 1));
L_JumpBit:
    JUMP_IF((*A >> pOp->x) & 1);
L_JumpNotBit:
    JUMP_IF(!((*A >> pOp->x) & 1));
L_CaseEqual:
{
    const std::int64_t value = LoadIndex(A, static_cast<ValueKind>(pOp->kind));
    const std::int64_t wanted = Load<std::int64_t>(bases[ConstantBase] + pOp->b);
    if (value == wanted) bases[CellBase] += pOp->x * static_cast<std::ptrdiff_t>(sizeof(std::int64_t));
    JUMP_IF(value == wanted);
}
L_CaseInRange:
{
    const std::int64_t value = LoadIndex(A, static_cast<ValueKind>(pOp->kind));
    const std::int64_t low = Load<std::int64_t>(bases[ConstantBase] + pOp->b);
    const std::int64_t high = Load<std::int64_t>(bases[ConstantBase] + pOp->b + sizeof(std::int64_t));
    const bool isInside = value >= low && value <= high;
    if (isInside) bases[CellBase] += pOp->x * static_cast<std::ptrdiff_t>(sizeof(std::int64_t));
    JUMP_IF(isInside);
}

    // ---- Memory

#define NORVANE_LOAD(name, kind, type)                                                                                 \
    L_##name##_##kind:                                                                                                 \
    {                                                                                                                  \
        StoreCell<type>(CELL, Load<type>(A));                                                                          \
        NEXT();                                                                                                        \
    }
    NORVANE_NUMBER_KINDS(NORVANE_LOAD, Load)
#define NORVANE_STORE(name, size, type)                                                                                \
    L_##name##_##size:                                                                                                 \
    {                                                                                                                  \
        Store<type>(D, Load<type>(A));                                                                                 \
        NEXT();                                                                                                        \
    }
    NORVANE_SIZES(NORVANE_STORE, Store)
#define NORVANE_LOAD_INDIRECT(name, kind, type)                                                                        \
    L_##name##_##kind:                                                                                                 \
    {                                                                                                                  \
        const std::uint32_t address = Load<std::uint32_t>(A);                                                          \
        if (!IsAccessible(address, sizeof(type))) TRAP(OutsideArea);                                                   \
        StoreCell<type>(CELL, Load<type>(bases[MemoryBase] + address));                                                \
        NEXT();                                                                                                        \
    }
    NORVANE_NUMBER_KINDS(NORVANE_LOAD_INDIRECT, LoadIndirect)
#define NORVANE_STORE_INDIRECT(name, size, type)                                                                       \
    L_##name##_##size:                                                                                                 \
    {                                                                                                                  \
        const std::uint32_t address = Load<std::uint32_t>(B);                                                          \
        if (!IsAccessible(address, sizeof(type))) TRAP(OutsideArea);                                                   \
        Store<type>(bases[MemoryBase] + address, Load<type>(A));                                                       \
        NEXT();                                                                                                        \
    }
    NORVANE_SIZES(NORVANE_STORE_INDIRECT, StoreIndirect)
#define NORVANE_FIND_ELEMENT(indexType)                                                                                \
    const IndexRecord& record = pIndexes[pOp->e];                                                                      \
    const std::int64_t index = Load<indexType>(B);                                                                     \
    if (index < record.low || index > record.high) TRAP(IndexBounds);                                                  \
    std::uint8_t* const pElement = bases[record.base] + record.offset + (index - record.low) * record.stride
#define NORVANE_LOAD_INDEXED(name, kind, type)                                                                         \
    L_##name##_##kind##_By16:                                                                                          \
    {                                                                                                                  \
        NORVANE_FIND_ELEMENT(std::int16_t);                                                                            \
        StoreCell<type>(CELL, Load<type>(pElement));                                                                   \
        NEXT();                                                                                                        \
    }                                                                                                                  \
    L_##name##_##kind##_By32:                                                                                          \
    {                                                                                                                  \
        NORVANE_FIND_ELEMENT(std::int32_t);                                                                            \
        StoreCell<type>(CELL, Load<type>(pElement));                                                                   \
        NEXT();                                                                                                        \
    }
    NORVANE_NUMBER_KINDS(NORVANE_LOAD_INDEXED, LoadIndexed)
#define NORVANE_STORE_INDEXED(name, size, type)                                                                        \
    L_##name##_##size##_By16:                                                                                          \
    {                                                                                                                  \
        NORVANE_FIND_ELEMENT(std::int16_t);                                                                            \
        Store<type>(pElement, Load<type>(A));                                                                          \
        NEXT();                                                                                                        \
    }                                                                                                                  \
    L_##name##_##size##_By32:                                                                                          \
    {                                                                                                                  \
        NORVANE_FIND_ELEMENT(std::int32_t);                                                                            \
        Store<type>(pElement, Load<type>(A));                                                                          \
        NEXT();                                                                                                        \
    }
    NORVANE_SIZES(NORVANE_STORE_INDEXED, StoreIndexed)

L_Move:
    Store<std::int64_t>(CELL, Load<std::int64_t>(A));
    NEXT();
L_LoadAddress:
    Store<std::int64_t>(CELL, (A - bases[MemoryBase]) | (static_cast<std::int64_t>(pOp->x) << g_AddressBits));
    NEXT();
L_LoadBit:
    Store<std::int64_t>(CELL, (*A >> pOp->x) & 1);
    NEXT();
L_StoreBit:
{
    const std::uint32_t bit = *A & 1u;
    std::uint8_t* const pByte = D;
    *pByte = static_cast<std::uint8_t>((*pByte & ~(1u << pOp->x)) | bit << pOp->x);
    NEXT();
}
L_LoadBitIndirect:
{
    const std::uint32_t address = Load<std::uint32_t>(A);
    const std::uint32_t bit = address >> g_AddressBits;
    if (bit > 7 || !IsAccessible(address & g_AddressMask, 1)) TRAP(OutsideArea);
    Store<std::int64_t>(CELL, (bases[MemoryBase][address & g_AddressMask] >> bit) & 1);
    NEXT();
}
L_StoreBitIndirect:
{
    const std::uint32_t address = Load<std::uint32_t>(B);
    const std::uint32_t bit = address >> g_AddressBits;
    if (bit > 7 || !IsAccessible(address & g_AddressMask, 1)) TRAP(OutsideArea);
    const std::uint32_t value = *A & 1u;
    std::uint8_t* const pByte = bases[MemoryBase] + (address & g_AddressMask);
    *pByte = static_cast<std::uint8_t>((*pByte & ~(1u << bit)) | value << bit);
    NEXT();
}
L_LoadBitIndexed:
{
    const IndexRecord& record = pIndexes[pOp->e];
    const std::int64_t index =
        static_cast<ValueKind>(pOp->kind) == ValueKind::S16 ? Load<std::int16_t>(B) : Load<std::int32_t>(B);
    if (index < record.low || index > record.high) TRAP(IndexBounds);
    const std::int64_t bits = record.bitOffset + (index - record.low) * record.stride;
    const std::uint8_t* const pByte =
        bases[record.base] + record.offset + (bits >> 3) * m_Image.m_DebugInfo.m_BoolAlign;
    Store<std::int64_t>(CELL, (*pByte >> (bits & 7)) & 1);
    NEXT();
}
L_StoreBitIndexed:
{
    const IndexRecord& record = pIndexes[pOp->e];
    const std::int64_t index =
        static_cast<ValueKind>(pOp->kind) == ValueKind::S16 ? Load<std::int16_t>(B) : Load<std::int32_t>(B);
    if (index < record.low || index > record.high) TRAP(IndexBounds);
    const std::int64_t bits = record.bitOffset + (index - record.low) * record.stride;
    std::uint8_t* const pByte = bases[record.base] + record.offset + (bits >> 3) * m_Image.m_DebugInfo.m_BoolAlign;
    const std::uint32_t value = *A & 1u;
    *pByte = static_cast<std::uint8_t>((*pByte & ~(1u << (bits & 7))) | value << (bits & 7));
    NEXT();
}
L_Index:
{
    const IndexRecord& record = pIndexes[pOp->e];
    const std::int64_t index = LoadIndex(B, static_cast<ValueKind>(pOp->kind));
    if (index < record.low || index > record.high) TRAP(IndexBounds);
    const std::uint64_t distance =
        (static_cast<std::uint64_t>(index) - static_cast<std::uint64_t>(record.low)) *
        static_cast<std::uint64_t>(record.stride);
    Store<std::uint64_t>(CELL, Load<std::uint32_t>(A) + static_cast<std::uint32_t>(distance));
    NEXT();
}
L_IndexBit:
{
    const IndexRecord& record = pIndexes[pOp->e];
    const std::int64_t index = LoadIndex(B, static_cast<ValueKind>(pOp->kind));
    if (index < record.low || index > record.high) TRAP(IndexBounds);
    const std::uint32_t address = Load<std::uint32_t>(A);
    const std::uint64_t bits = (address >> g_AddressBits) +
                               (static_cast<std::uint64_t>(index) - static_cast<std::uint64_t>(record.low)) *
                                   static_cast<std::uint64_t>(record.stride);
    const std::uint32_t bytes =
        static_cast<std::uint32_t>((bits >> 3) * static_cast<std::uint64_t>(m_Image.m_DebugInfo.m_BoolAlign));
    const std::uint32_t moved = (((address & g_AddressMask) + bytes) & g_AddressMask) |
                                static_cast<std::uint32_t>(bits & 7) << g_AddressBits;
    Store<std::uint64_t>(CELL, moved);
    NEXT();
}
L_Copy:
{
    const std::uint32_t source = Load<std::uint32_t>(A);
    const std::uint32_t destination = Load<std::uint32_t>(B);
    const std::uint32_t bytes = static_cast<std::uint32_t>(pOp->e);
    if (bytes > 0 && (!IsAccessible(source, bytes) || !IsAccessible(destination, bytes))) TRAP(OutsideArea);
    std::memmove(bases[MemoryBase] + destination, bases[MemoryBase] + source, bytes);
    NEXT();
}

    // ---- The rest

L_Rare:
{
    RareOperation rare;
    rare.mnemonic = static_cast<Mnemonic>(pOp->x);
    if (rare.mnemonic == Mnemonic::Jc || rare.mnemonic == Mnemonic::Jnc) {   // to a label that doesn't exist
        if ((*A & 1) == (rare.mnemonic == Mnemonic::Jc)) TRAP(NoLabel);
        NEXT();
    }
    rare.kind = static_cast<ValueKind>(pOp->kind);
    rare.toKind = static_cast<ValueKind>(pOp->f);
    rare.operands[0] = Load<std::int64_t>(A);
    // Operands that there aren't are read from the first constant or cell, and nobody looks at them.
    rare.operands[1] = Load<std::int64_t>(B);
    rare.operands[2] = Load<std::int64_t>(bases[pOp->baseD] + pOp->e);
    std::int64_t result = 0;
    if (const std::optional<TrapKind> drawn = RunRare(rare, m_Options, result)) {
        trap = *drawn;
        goto trapped;
    }
    Store<std::int64_t>(CELL, result);
    NEXT();
}
L_Call:
{
    const bool isWarm = m_IsWarmStart &&
                        m_Image.m_Listing.m_Pous[static_cast<std::size_t>(pOp->b)].name == "__RetainInitialization__";
    if (isWarm) {
        budget -= pOp->f;
        if (budget < 0) goto exhausted;
        NEXT();
    }
    if (!EnterFrame(*pOp)) TRAP(ReturnStackFull);
    budget -= pOp->e;
    if (budget < 0) {
        m_Frames.pop_back();
        goto exhausted;
    }
    bases[LocalBase] = bases[MemoryBase] + m_Frames.back().begin;
    bases[CellBase] += pOp->a;
    pOp = pFirst + pOp->d;
    DISPATCH();
}
L_Return:
{
    const Op* const pCall = m_Frames.back().pCall;
    if (!pCall) goto done;
    m_Frames.pop_back();
    bases[LocalBase] = bases[MemoryBase] + m_Frames.back().begin;
    bases[CellBase] -= pCall->a;
    budget -= pCall->f;
    pOp = pCall;
    if (budget < 0) goto exhausted;
    NEXT();
}
L_System:
    if (m_Options.systemCalls == SystemCalls::Trap) TRAP(SystemCall);
    if (m_Options.systemCalls == SystemCalls::Print && m_SystemPrinter) m_SystemPrinter(pOp->e);
    NEXT();
L_Mark:
    ++m_LineCounts[static_cast<std::size_t>(pOp->e)];
    NEXT();
L_Probe:
    if (m_pObserver) {
        std::copy(bases, bases + BaseCount, m_Bases.begin());
        m_pNext = pOp;
        m_Budget = budget;
        if (m_pObserver->BeforeInstruction(pOp->e)) {
            m_IsStopped = true;
            status = RunStatus::Stopped;
            goto leave;
        }
    }
    NEXT();
L_Stack:
    if (!CheckStack(*pOp, bases[CellBase])) {
        trap = m_Trap.kind;
        goto trapped;
    }
    NEXT();
L_Fault:
    trap = static_cast<TrapKind>(pOp->x);
    goto trapped;

exhausted:
    trap = TrapKind::TooManyInstructions;
trapped:
    std::copy(bases, bases + BaseCount, m_Bases.begin());
    m_Budget = budget;
    MakeTrap(trap, *pOp);
    status = RunStatus::Trapped;
    goto leave;
done:
    std::copy(bases, bases + BaseCount, m_Bases.begin());
leave:
    m_Budget = budget;
    return status;
}

#pragma GCC diagnostic pop

// ---- What a trap reports

std::int64_t CMachine::ReadOperand(std::uint8_t base, std::int32_t offset, ValueKind kind) const
{
    std::int64_t cell = 0;
    std::memcpy(&cell, m_Bases[base] + offset, static_cast<std::size_t>(GetSizeBytes(kind)));
    const MachineValue value = FromCell(cell, kind);
    return IsReal(kind) ? 0 : value.integer;
}

std::vector<std::string> CMachine::ReadSnapshot(int instruction) const
{
    std::vector<std::string> top;
    const std::int32_t index = m_Code.snapshotOfInstruction[static_cast<std::size_t>(instruction)];
    if (index < 0) return top;
    const StackSnapshot& snapshot = m_Code.snapshots[static_cast<std::size_t>(index)];
    for (int i = 0; i < snapshot.count; ++i) {
        const StackEntry& entry = snapshot.top[i];
        std::int64_t cell = entry.constant;
        if (entry.place == StackPlace::Address)
            cell = (m_Bases[entry.base] + entry.offset - m_Bases[MemoryBase]) |
                   (static_cast<std::int64_t>(entry.bit) << g_AddressBits);
        if (entry.place == StackPlace::Cell || entry.place == StackPlace::Memory)
            std::memcpy(&cell, m_Bases[entry.base] + entry.offset, static_cast<std::size_t>(GetSizeBytes(entry.kind)));
        top.push_back(ToText(FromCell(cell, entry.kind)));
    }
    return top;
}

// The address that an access tried to reach.
std::string CMachine::DescribeAccess(const Op& op, const Instruction& instruction) const
{
    const auto describe = [](std::int64_t address, std::int64_t bytes) {
        const std::uint32_t number = static_cast<std::uint32_t>(address);
        std::string text = std::to_string(bytes) + (bytes == 1 ? " byte" : " bytes") + " at address " +
                           std::to_string(number & g_AddressMask);
        if (number >> g_AddressBits) text += " bit " + std::to_string(number >> g_AddressBits);
        return text + " are in no area or frame";
    };
    const std::int64_t typeBytes = instruction.pType ? GetSizeBytes(instruction.pType->kind) : 1;
    if (op.code >= Operation::LoadIndirect_S8 && op.code <= Operation::LoadIndirect_F64)
        return describe(ReadOperand(op.baseA, op.a, ValueKind::U32), typeBytes);
    if (op.code >= Operation::StoreIndirect_1 && op.code <= Operation::StoreIndirect_8)
        return describe(ReadOperand(op.baseB, op.b, ValueKind::U32), typeBytes);
    if (op.code == Operation::LoadBitIndirect) return describe(ReadOperand(op.baseA, op.a, ValueKind::U32), 1);
    if (op.code == Operation::StoreBitIndirect) return describe(ReadOperand(op.baseB, op.b, ValueKind::U32), 1);
    if (op.code == Operation::Copy) {
        const std::int64_t source = ReadOperand(op.baseA, op.a, ValueKind::U32);
        const std::int64_t destination = ReadOperand(op.baseB, op.b, ValueKind::U32);
        const std::uint32_t bytes = static_cast<std::uint32_t>(op.e);
        const bool isSource = !IsAccessible(static_cast<std::uint32_t>(source), bytes);
        return describe(isSource ? source : destination, bytes);
    }
    return "the operand lies outside of its area";
}

std::string CMachine::DescribeTrap(TrapKind kind, const Op& op, const Instruction& instruction) const
{
    switch (kind) {
    case TrapKind::OutsideArea: return DescribeAccess(op, instruction);
    case TrapKind::IndexBounds: {
        const ValueKind indexKind = static_cast<ValueKind>(op.kind);
        const IndexRecord& record = m_Code.indexes[static_cast<std::size_t>(op.e)];
        return "index " + std::to_string(ReadOperand(op.baseB, op.b, indexKind)) + " is outside " +
               std::to_string(record.low) + ".." + std::to_string(record.high);
    }
    case TrapKind::DivisionByZero: return "division by zero";
    case TrapKind::StackUnderflow: return "the stack has no value to take";
    case TrapKind::ParameterStackFull:
        return "the parameter stack of " + std::to_string(m_Image.m_DebugInfo.m_ParameterStack.size) +
               " bytes is full";
    case TrapKind::ReturnStackFull:
        return "the return stack of " + std::to_string(m_Image.m_DebugInfo.m_ReturnStack.size) + " bytes is full";
    case TrapKind::NoLabel: return "the label does not exist";
    case TrapKind::TooManyInstructions:
        return "more than " + std::to_string(m_Options.maxInstructions) + " instructions in one scan";
    case TrapKind::SystemCall: return "system calls are not run";
    case TrapKind::NoSuchOperation:
        if (instruction.mnemonic == Mnemonic::PopAddress) return "there is no address to store to";
        return "there is no such operation for " + instruction.pType->name;
    }
    return {};
}

void CMachine::MakeTrap(TrapKind kind, const Op& op)
{
    m_IsTrapped = true;
    m_pNext = &op;
    const int number = m_Code.instructionOfOp[static_cast<std::size_t>(&op - m_Code.ops.data())];
    const Instruction& instruction = m_Image.m_Listing.m_Instructions[static_cast<std::size_t>(number)];
    m_Trap = Trap();
    m_Trap.kind = kind;
    m_Trap.reason = DescribeTrap(kind, op, instruction);
    m_Trap.position = DescribeInstruction(number);
    m_Trap.instructionText = instruction.text;
    m_Trap.asmLine = instruction.line;
    m_Trap.callers = GetCallers();
    // Plain code has moved the top already when the instruction itself fails.
    if (m_Code.isPlain && op.code != Operation::Stack && op.code != Operation::Probe) {
        const StackEffect effect = GetStackEffect(instruction);
        m_Bases[CellBase] += (effect.pops - effect.pushes) * static_cast<std::ptrdiff_t>(sizeof(std::int64_t));
    }
    m_Trap.stackTop = m_Code.isPlain ? GetStackTop(StackSnapshot::most) : ReadSnapshot(number);
}
