// The places of variables: which rule holds for which variable, and the three phases in which a POU's new
// variables are placed.

#include "target/MemoryHandler.h"

#include "frontend/ErrorHandler.h"
#include "model/Type.h"
#include "model/Variable.h"
#include "target/DataType.h"
#include "target/MemoryMath.h"

#include <algorithm>

// Bytes in use, an open byte among them.
static std::int64_t GetUsedBytes(const MemoryCursor& cursor)
{
    return cursor.nByte + (cursor.nBit > 0 ? 1 : 0);
}

void CMemoryHandler::AllocatePouVariables()
{
    AllocateRetainVariables();
    AllocateLocalVariables();
    AllocateGlobalVariables();
}

// Kept (addresses): when BOOLs are packed, the retain globals are left to the global area. The area is looked at in
// every call, so that an overflow is reported again, with what has come to it, at each POU that follows.
void CMemoryHandler::AllocateRetainVariables()
{
    MemoryCursor cursor{m_RetainBytes, m_RetainBits};
    if (IsPacking()) {
        PackVariables(m_LocalVariables, 0, cursor, /*retainOnly=*/true);
    } else {
        for (CVariable* pVariable : m_LocalVariables)
            if (pVariable->m_IsRetain && pVariable->m_Size == -1) AllocateVariable(pVariable, cursor);
        for (std::size_t i = m_FirstNewRetain; i < m_GlobalVariables.size(); ++i) {
            CVariable* pVariable = m_GlobalVariables[i];
            if (pVariable->m_IsRetain && pVariable->m_Size == -1) AllocateVariable(pVariable, cursor);
        }
    }
    m_FirstNewRetain = m_GlobalVariables.size();
    m_RetainBytes = ToStoredBytes(cursor.nByte);
    m_RetainBits = cursor.nBit;
    const std::int64_t used = GetUsedBytes(cursor);
    if (used > m_RetainSize) m_Errors.ErrRetainOutOfMemory(used - m_RetainSize);
}

// On a cursor of its own; what the locals need is checked with the stack, when all calls are known.
void CMemoryHandler::AllocateLocalVariables()
{
    MemoryCursor cursor;
    if (IsPacking()) {
        PackVariables(m_LocalVariables, 0, cursor, /*retainOnly=*/false);
        return;
    }
    for (CVariable* pVariable : m_LocalVariables)
        if (!pVariable->m_IsRetain && pVariable->m_Size == -1) AllocateVariable(pVariable, cursor);
}

// Nothing of an earlier call is still to be placed: what has no place by then never gets one.
void CMemoryHandler::AllocateGlobalVariables()
{
    MemoryCursor cursor{m_GlobalBytes, m_GlobalBits};
    if (IsPacking()) {
        PackVariables(m_GlobalVariables, m_FirstNewGlobal, cursor, /*retainOnly=*/false);
    } else {
        for (std::size_t i = m_FirstNewGlobal; i < m_GlobalVariables.size(); ++i) {
            CVariable* pVariable = m_GlobalVariables[i];
            if (!pVariable->m_IsRetain && pVariable->m_Size == -1) AllocateVariable(pVariable, cursor);
        }
    }
    m_FirstNewGlobal = m_GlobalVariables.size();
    m_GlobalBytes = ToStoredBytes(cursor.nByte);
    m_GlobalBits = cursor.nBit;
    const std::int64_t used = GetUsedBytes(cursor);
    if (used > m_GlobalSize) m_Errors.ErrGlobalOutOfMemory(used - m_GlobalSize);
}

static void SetPlace(CVariable* pVariable, const MemoryCursor& cursor, std::int64_t bytes)
{
    pVariable->m_Size = ToStoredBytes(bytes);
    pVariable->m_Offset = ToStoredBytes(cursor.nByte - bytes);
}

// Kept (addresses): the bit of any placed scalar is the bit cursor from before it, whatever its type; aggregates and
// strings have none. A full byte is left only after the offset has been taken.
void CMemoryHandler::AllocateVariable(CVariable* pVariable, MemoryCursor& cursor)
{
    if (!pVariable->m_DirectAddress.empty() || IsSubstituted(pVariable)) return;
    CType* pType = BaseOf(pVariable->m_Type);
    const bool isParameter = pVariable->IsParameter();
    if (pType->IsAggregate() && !isParameter) {
        const std::int64_t bytes = Layout(pType, cursor, pVariable->GetIndex(), 0);
        SetPlace(pVariable, cursor, bytes);
        return;
    }
    if (pType->IsString() && !isParameter) {
        const std::int64_t bytes = GetStringBytes(pVariable);
        cursor = MemoryCursor{GetUsedBytes(cursor), 0};
        cursor.nByte = AddBytes(AlignUp(cursor.nByte, AlignOf(pType)), bytes);
        SetPlace(pVariable, cursor, bytes);
        return;
    }

    const std::int32_t bit = cursor.nBit;
    bool carry = false;
    std::int64_t bytes = 0;
    if (m_CompatibleLayout)
        bytes = AllocateAligned(pType, cursor);
    else if (!isParameter)
        bytes = AllocateBits(pType, cursor, carry);
    else if (pVariable->m_IsInput && pType->IsAggregate())
        bytes = Layout(pType, cursor, pVariable->GetIndex(), 0);
    else if (!pVariable->m_IsInput && !pType->IsAggregate())
        bytes = AllocateAligned(m_DataTypes.m_PointerType, cursor);
    else
        bytes = AllocateAligned(pType, cursor);
    SetPlace(pVariable, cursor, bytes);
    if (!pType->IsAggregate()) pVariable->m_BitOffset = bit;
    if (carry) cursor.nByte = AddBytes(cursor.nByte, 1);
}

static bool IsStillToPack(const CVariable* pVariable, bool retainOnly)
{
    return pVariable->m_Size == -1 && (pVariable->m_IsRetain || !retainOnly);
}

// Places all but the plain BOOLs, and those behind them, eight to a byte.
//
// Kept (addresses): what the first walk passes over takes part in the second, constants that are substituted too. The
// closing move goes by the last variable of the whole list, of whatever type and placed by whomever, and is
// made in every call, also when nothing is new. It never goes back into bytes that are in use.
void CMemoryHandler::PackVariables(const std::vector<CVariable*>& list, std::size_t first, MemoryCursor& cursor,
                                   bool retainOnly)
{
    for (std::size_t i = first; i < list.size(); ++i) {
        CVariable* pVariable = list[i];
        const bool isPlainBool = BaseOf(pVariable->m_Type)->IsBool() && !pVariable->IsParameter();
        if (IsStillToPack(pVariable, retainOnly) && !isPlainBool) AllocateVariable(pVariable, cursor);
    }

    std::int64_t usedBytes = cursor.nByte;
    cursor.nByte = AlignUp(cursor.nByte, AlignOf(m_DataTypes.m_BoolType));
    cursor.nBit = 0;
    for (std::size_t i = first; i < list.size(); ++i) {
        CVariable* pVariable = list[i];
        if (!IsStillToPack(pVariable, retainOnly)) continue;
        PlaceBits(pVariable, cursor);
        usedBytes = std::int64_t{pVariable->m_Offset} + 1;
    }

    if (list.empty()) return;
    CType* pLast = BaseOf(list.back()->m_Type);
    CompleteLayout(pLast);
    const std::int64_t closing = pLast->m_SizeBits / 8 - std::int64_t{AlignOf(pLast)} + 1;
    cursor.nByte = std::min(std::max(cursor.nByte + closing, usedBytes), g_FarBytes);
}

// The cursor's byte is the one behind the unit that is being filled; a unit has the type's alignment.
void CMemoryHandler::PlaceBits(CVariable* pVariable, MemoryCursor& cursor) const
{
    const CType* pType = BaseOf(pVariable->m_Type);
    const std::int64_t bits = BitsOf(pType);
    const std::int64_t align = AlignOf(pType);
    const std::int32_t bit = cursor.nBit;
    if (bit == 0) cursor.nByte = AddBytes(cursor.nByte, align);
    if (bits > 1 && bit + bits != 8) cursor.nByte = AddBytes(cursor.nByte, align);
    cursor.nBit = static_cast<std::int32_t>((bit + bits) % 8);
    pVariable->m_Size = static_cast<std::int32_t>(bits / 8 + 1);
    pVariable->m_Offset = ToStoredBytes(cursor.nByte - align);
    pVariable->m_BitOffset = bit;
}
