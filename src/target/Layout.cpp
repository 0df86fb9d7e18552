// Sizes, alignments and the inside of arrays and structures. A place is a byte and a bit in it; BOOLs that
// follow each other share bytes, all else begins at a byte of its type's alignment.

#include "target/MemoryHandler.h"

#include "frontend/Node.h"
#include "model/ArrayIndex.h"
#include "model/InitValue.h"
#include "model/Member.h"
#include "model/Type.h"
#include "model/TypeArray.h"
#include "model/TypeStruct.h"
#include "model/Variable.h"
#include "target/DataType.h"
#include "target/MemoryMath.h"
#include "target/PathBounds.h"

#include <algorithm>
#include <limits>
#include <numeric>

// A structure keeps its size in bits, which ends at this many bytes. A larger one counts as larger than
// any memory.
static constexpr std::int64_t g_MaxStructBytes = std::numeric_limits<std::int32_t>::max() / 8;

CType* CMemoryHandler::BaseOf(CType* pType) const
{
    return pType ? pType->GetBaseType() : m_DataTypes.m_ErrorType;
}

CType* CMemoryHandler::InnermostOf(CType* pType) const
{
    CType* pInnermost = BaseOf(pType);
    while (const CTypeArray* pArray = pInnermost->AsArray()) pInnermost = BaseOf(pArray->m_Element);
    return pInnermost;
}

std::int32_t CMemoryHandler::AlignOf(const CType* pType)
{
    return pType->GetPlacingAlign();
}

// A type of unknown size (the error type, or a type that no target can allow) takes a byte: what it is
// declared for has drawn its diagnostic already.
std::int64_t CMemoryHandler::BitsOf(const CType* pType)
{
    return pType->m_SizeBits < 0 ? 8 : pType->m_SizeBits;
}

static bool IsWholeBytes(std::int64_t bits)
{
    return bits % 8 == 0;
}

static void CloseBits(MemoryCursor& cursor)
{
    if (cursor.nBit == 0) return;
    cursor.nBit = 0;
    cursor.nByte = AddBytes(cursor.nByte, 1);
}

static bool IsLaidOut(const CTypeStruct* pStruct)
{
    return pStruct->m_SizeBits >= 0 && pStruct->m_Align >= 0;
}

// Kept (addresses): a BOOL that opens a byte returns the padding in front of it, and since places are taken as cursor
// minus result, its offset is then the unaligned one. Images of earlier compiles are laid out so.
std::int64_t CMemoryHandler::AllocateBits(const CType* pType, MemoryCursor& cursor, bool& carry)
{
    const std::int64_t bits = BitsOf(pType);
    if (IsWholeBytes(bits)) {
        CloseBits(cursor);
        cursor.nByte = AlignUp(cursor.nByte, AlignOf(pType));
        cursor.nByte = AddBytes(cursor.nByte, bits / 8);
        return bits / 8;
    }
    if (cursor.nBit != 0) {
        const std::int64_t sum = cursor.nBit + bits;
        cursor.nBit = static_cast<std::int32_t>(sum % 8);
        cursor.nByte = AddBytes(cursor.nByte, bits / 8);
        if (sum >= 8) carry = true;
        return 0;
    }
    const std::int64_t before = cursor.nByte;
    cursor.nByte = AlignUp(before, AlignOf(pType));
    cursor.nBit = static_cast<std::int32_t>(bits % 8);
    return cursor.nByte - before;
}

// Whole bytes for each, as parameters have them; an aggregate is handed over by its address. Kept (addresses): a BOOL
// doesn't close the byte that earlier BOOLs have opened.
std::int64_t CMemoryHandler::AllocateAligned(CType* pType, MemoryCursor& cursor)
{
    const CType* pPlaced = pType;
    if (pType->IsAggregate()) {
        CompleteLayout(pType);
        pPlaced = m_DataTypes.m_PointerType;
    }
    const std::int64_t bits = BitsOf(pPlaced);
    if (IsWholeBytes(bits)) CloseBits(cursor);
    cursor.nByte = AlignUp(cursor.nByte, AlignOf(pPlaced));
    const std::int64_t bytes = bits / 8 + (IsWholeBytes(bits) ? 0 : 1);
    cursor.nByte = AddBytes(cursor.nByte, bytes);
    cursor.nBit = 0;
    return bytes;
}

std::int64_t CMemoryHandler::Layout(CType* pType, MemoryCursor& cursor, const CArrayOfArrayIndex* pIndex, int level)
{
    CType* pBase = BaseOf(pType);
    if (CTypeArray* pArray = pBase->AsArray()) return LayOutArray(pArray, cursor, pIndex, level);
    if (CTypeStruct* pStruct = pBase->AsStruct()) return LayOutStruct(pStruct, cursor);

    bool carry = false;
    const std::int64_t bytes = AllocateBits(pBase, cursor, carry);
    if (carry) cursor.nByte = AddBytes(cursor.nByte, 1);
    return bytes;
}

// Number of elements of one level; 1 where the index doesn't go so deep.
static std::int64_t CountElements(const CArrayOfArrayIndex* pIndex, int level)
{
    const CArrayIndex* pLevel = pIndex ? pIndex->GetLevel(level) : nullptr;
    return pLevel ? pLevel->GetProduct() : 1;
}

// Bytes of `count` elements that are parts of a byte: eight bits to a unit of the element's alignment, the
// last unit being one byte long.
static std::int64_t GetPackedBytes(std::int64_t count, std::int64_t bits, std::int64_t align)
{
    const std::int64_t units = (MultiplyBytes(count, bits) + 7) / 8;
    return AddBytes(MultiplyBytes(units - 1, align), 1);
}

// Two elements are placed on trial: where the first begins is where the array begins, and the distance
// between their ends is that between elements. With arrays of arrays this runs from the inside out. Each inner
// array lies where its first innermost element lies, so only that one is placed, once for each level: trying
// whole inner arrays would double the work with every level.
std::int64_t CMemoryHandler::LayOutArray(CTypeArray* pArray, MemoryCursor& cursor, const CArrayOfArrayIndex* pIndex,
                                         int level)
{
    CloseBits(cursor);
    std::vector<CTypeArray*> arrays{pArray};
    CType* pElement = BaseOf(pArray->m_Element);
    while (CTypeArray* pInner = pElement->AsArray()) {
        arrays.push_back(pInner);
        pElement = BaseOf(pInner->m_Element);
    }

    MemoryCursor trial{cursor.nByte, 0};
    const std::int64_t elementBytes = Layout(pElement, trial, nullptr, 0);
    const std::int64_t firstEnd = trial.nByte;
    const std::int64_t firstByte = firstEnd - elementBytes;
    Layout(pElement, trial, nullptr, 0);
    std::int64_t stride = trial.nByte - firstEnd;
    arrays.back()->m_Stride = ToStoredBytes(stride);
    for (CTypeArray* pLevel : arrays)
        if (pLevel->m_Align < 0) pLevel->m_Align = pElement->m_Align;

    int innermost = level + static_cast<int>(arrays.size()) - 1;
    std::int64_t count = CountElements(pIndex, innermost);
    const bool isPacked = pElement->m_SizeBits >= 0 && !IsWholeBytes(pElement->m_SizeBits);
    std::int64_t bytes = isPacked ? GetPackedBytes(count, pElement->m_SizeBits, AlignOf(pElement))
                                  : AddBytes(MultiplyBytes(count - 1, stride), elementBytes);

    for (int outer = innermost - 1; outer >= level; --outer) {
        const std::int64_t end = AddBytes(firstByte, bytes);
        trial = MemoryCursor{end, 0};
        const std::int64_t nextBytes = Layout(pElement, trial, nullptr, 0);
        stride = AddBytes(trial.nByte - nextBytes - end, bytes);
        count = CountElements(pIndex, outer);
        bytes = AddBytes(MultiplyBytes(count - 1, stride), bytes);
    }
    cursor.nByte = AddBytes(firstByte, bytes);
    return bytes;
}

std::int64_t CMemoryHandler::LayOutStruct(CTypeStruct* pStruct, MemoryCursor& cursor)
{
    CloseBits(cursor);
    if (IsLaidOut(pStruct)) {
        std::int64_t bytes = pStruct->m_SizeBits / 8;
        if (bytes >= g_MaxStructBytes) bytes = g_FarBytes;
        cursor.nByte = AlignUp(cursor.nByte, AlignOf(pStruct));
        cursor.nByte = AddBytes(cursor.nByte, bytes);
        return bytes;
    }

    LayOutInnerStructs(pStruct);
    const std::int64_t align = GetCommonAlignment(pStruct);
    cursor.nByte = AlignUp(cursor.nByte, align);
    const std::int64_t start = cursor.nByte;
    for (const std::unique_ptr<CMember>& pMember : pStruct->m_Members) PlaceMember(pMember.get(), start, cursor);
    CloseBits(cursor);   // and no padding behind: the next variable may begin in it

    const std::int64_t bytes = cursor.nByte - start;
    pStruct->SetSizeBytes(static_cast<std::int32_t>(std::min(bytes, g_MaxStructBytes)));
    pStruct->SetAlign(ToStoredBytes(align));
    return bytes;
}

// Structures can be declared one in the other as deep as the source is long, so their layouts are made from
// the innermost out with a stack of our own.
void CMemoryHandler::LayOutInnerStructs(CTypeStruct* pStruct)
{
    struct Frame
    {
        CTypeStruct* pStruct;
        std::size_t nextMember;
    };
    std::vector<Frame> frames{{pStruct, 0}};
    while (!frames.empty()) {
        Frame& frame = frames.back();
        if (frame.nextMember < frame.pStruct->m_Members.size()) {
            const CMember& member = *frame.pStruct->m_Members[frame.nextMember];
            ++frame.nextMember;
            CTypeStruct* pInner = InnermostOf(member.m_Type)->AsStruct();
            if (pInner && !IsLaidOut(pInner)) frames.push_back({pInner, 0});
            continue;
        }
        CTypeStruct* pDone = frame.pStruct;
        frames.pop_back();
        if (!frames.empty()) ComputeLayout(pDone, nullptr, 0);
    }
}

// Kept (addresses): an in-out member counts with the size of a pointer, not with its alignment.
std::int64_t CMemoryHandler::GetCommonAlignment(const CTypeStruct* pStruct)
{
    std::int64_t common = 1;
    for (const std::unique_ptr<CMember>& pMember : pStruct->m_Members) {
        CType* pType = BaseOf(pMember->m_Type);
        CompleteLayout(pType);
        std::int64_t align = AlignOf(pType);
        if (pMember->IsInOut()) align = std::max<std::int64_t>(BitsOf(m_DataTypes.m_PointerType) / 8, 1);
        common = ToStoredBytes(std::lcm(common, align));
    }
    return common;
}

// A BOOL whose placement moves the byte (padding in front of it, or the eighth bit) counts as one byte, so
// that its offset is the byte in front of the cursor.
void CMemoryHandler::PlaceMember(CMember* pMember, std::int64_t start, MemoryCursor& cursor)
{
    std::int64_t bytes = 0;
    if (pMember->IsInOut()) {
        const CType* pPointer = m_DataTypes.m_PointerType;
        CloseBits(cursor);
        bytes = BitsOf(pPointer) / 8;
        cursor.nByte = AddBytes(AlignUp(cursor.nByte, AlignOf(pPointer)), bytes);
    } else {
        const std::int64_t before = cursor.nByte;
        CType* pType = BaseOf(pMember->m_Type);
        bytes = Layout(pType, cursor, pMember->m_Index.get(), 0);
        if (pType->IsBool() && cursor.nByte != before) bytes = 1;
    }
    pMember->m_Offset = ToStoredBytes(std::max<std::int64_t>(cursor.nByte - start - bytes, 0));
}

// On a cursor that begins where every usual alignment has a multiple, so that no padding enters the size.
std::int64_t CMemoryHandler::MeasureLayout(CType* pType, const CArrayOfArrayIndex* pIndex, int level)
{
    constexpr std::int64_t alignedStart = 256;
    MemoryCursor cursor{alignedStart, 0};
    return Layout(pType, cursor, pIndex, level);
}

std::int32_t CMemoryHandler::ComputeLayout(CType* pType, const CArrayOfArrayIndex* pIndex, int level)
{
    if (pIndex || !BaseOf(pType)->IsArray()) return ToStoredBytes(MeasureLayout(pType, pIndex, level));

    CArrayOfArrayIndex standIn;
    auto pBounds = std::make_unique<CArrayIndex>();
    pBounds->m_Dimensions.emplace_back(0, 10);
    standIn.Add(std::move(pBounds));
    return ToStoredBytes(MeasureLayout(pType, &standIn, level));
}

void CMemoryHandler::CompleteLayout(CType* pType)
{
    CType* pBase = BaseOf(pType);
    const CTypeStruct* pStruct = pBase->AsStruct();
    if (pStruct && IsLaidOut(pStruct)) return;
    const CTypeArray* pArray = pBase->AsArray();
    if (pArray && pArray->m_Align >= 0) return;
    if (pStruct || pArray) ComputeLayout(pBase, nullptr, 0);
}

// The length that a STRING variable was declared with, in characters.
static std::int64_t GetDeclaredLength(const CVariable* pVariable, const CType* pType)
{
    const CInitValue* pInit = pVariable->m_InitValue ? pVariable->m_InitValue.get() : pType->m_InitValue.get();
    if (!pInit || !pInit->IsString()) return 0;
    return std::max(static_cast<const CInitString*>(pInit)->m_Length, 0);
}

std::int64_t CMemoryHandler::GetStringBytes(const CVariable* pVariable) const
{
    const CType* pType = BaseOf(pVariable->m_Type);
    return MultiplyBytes(GetDeclaredLength(pVariable, pType), AlignOf(pType));
}

// A BOOL counts with its whole byte.
std::int32_t CMemoryHandler::GetVariableSize(const CVariable* pVariable)
{
    CType* pType = BaseOf(pVariable->m_Type);
    if (pType->IsString()) return ToStoredBytes(GetStringBytes(pVariable));
    if (pType->IsAggregate()) return ToStoredBytes(MeasureLayout(pType, pVariable->GetIndex(), 0));
    return static_cast<std::int32_t>((BitsOf(pType) + 7) / 8);
}

std::int32_t CMemoryHandler::GetVariableAlign(const CVariable* pVariable)
{
    CType* pType = BaseOf(pVariable->m_Type);
    CompleteLayout(pType);
    return AlignOf(pType);
}

std::int32_t CMemoryHandler::ComputeVariableLayout(const CVariable* pVariable)
{
    return GetVariableSize(pVariable);
}

std::int32_t CMemoryHandler::ComputeAccessSize(const CNode* pNode)
{
    if (!pNode->pVariable) return 0;
    CType* pType = BaseOf(pNode->pType ? pNode->pType : pNode->pVariable->m_Type);
    if (pNode->GetChildCount() == 0 && !pType->IsAggregate()) return GetVariableSize(pNode->pVariable);
    if (!pType->IsAggregate()) return static_cast<std::int32_t>((BitsOf(pType) + 7) / 8);

    const PathBounds bounds = FollowPath(pNode);
    return ToStoredBytes(MeasureLayout(pType, bounds.pIndex, bounds.level));
}
