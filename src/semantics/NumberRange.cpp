#include "semantics/NumberRange.h"

#include "frontend/Node.h"
#include "frontend/Notes.h"
#include "model/InitValue.h"
#include "model/Type.h"
#include "semantics/Wrapping.h"

#include <cmath>
#include <limits>

namespace
{

// From the lowest to the highest number of a type, both of them among its numbers.
struct NumberRange
{
    std::int64_t low = std::numeric_limits<std::int64_t>::min();
    std::int64_t high = std::numeric_limits<std::int64_t>::max();

    bool Holds(std::int64_t value) const { return low <= value && value <= high; }
};

}   // namespace

static NumberRange GetRange(const CType* pType, bool isCompared)
{
    constexpr std::int32_t bitsOfNumbers = 64;
    const bool isBits = pType->IsBool() || pType->IsBitString();
    if (!isBits && !pType->IsInteger()) return {};
    const std::int32_t sizeBits = pType->GetBaseType()->m_SizeBits;
    NumberRange range;
    if (sizeBits < 1) return range;
    // A literal never lies above 63 bits, so of 64 only the sign counts.
    const bool isWide = sizeBits >= bitsOfNumbers;
    const std::int64_t half = isWide ? 0 : std::int64_t{1} << (sizeBits - 1);
    if (pType->IsSigned()) return isWide ? range : NumberRange{-half, half - 1};
    if (!isWide) range.high = 2 * half - 1;
    if (!isBits || isCompared) range.low = 0;
    else if (!isWide) range.low = -half;
    return range;
}

bool HoldsNumber(const CType* pType, std::int64_t value)
{
    return GetRange(pType, /*isCompared=*/false).Holds(value);
}

bool HoldsComparedNumber(const CType* pType, std::int64_t value)
{
    return GetRange(pType, /*isCompared=*/true).Holds(value);
}

static bool HoldsReal(const CType* pType, double value)
{
    constexpr std::int32_t bitsOfFloat = 32;
    if (pType->IsInteger() || pType->IsBitString()) return false;
    if (!pType->IsReal() || pType->GetBaseType()->m_SizeBits > bitsOfFloat) return true;
    return std::isinf(value) || !std::isinf(static_cast<float>(value));
}

void NoteLiteralRange(CNotes& notes, const CType* pType, const CNode* pLiteral)
{
    if (!pType || pType->IsError() || !pLiteral->IsNumericLiteral()) return;
    const bool isHeld = pLiteral->nKind == IMM_REAL ? HoldsReal(pType, pLiteral->GetReal())
                                                    : HoldsNumber(pType, pLiteral->nValue);
    if (!isHeld) notes.Add(Note::NumberBeyondType, pLiteral->location, pType->m_Name);
}

void NoteComparedRange(CNotes& notes, const CType* pType, const CNode* pLiteral)
{
    if (!pType || pType->IsBool() || pLiteral->nKind != IMM_INTEGER) return;
    if (!HoldsComparedNumber(pType, pLiteral->nValue))
        notes.Add(Note::NumberBeyondType, pLiteral->location, pType->m_Name);
}

// A value without sign is written as the signed number of its 32 bits, so either reading of them will do.
void NoteValueRange(CNotes& notes, const CType* pType, const CInitValue* pValue, const CNode* pExpression)
{
    if (!pType || !pValue || !(pValue->IsInteger() || (pValue->IsReal() && pType->IsReal()))) return;
    bool isHeld = false;
    if (pValue->IsReal()) {
        isHeld = HoldsReal(pType, pValue->GetDouble());
    } else if (pValue->IsUnsigned()) {
        const std::int64_t value = pValue->GetUnsigned();
        isHeld = HoldsNumber(pType, value) || HoldsNumber(pType, LowBits(value));
    } else {
        isHeld = HoldsNumber(pType, pValue->GetInt64());
    }
    if (!isHeld) notes.Add(Note::NumberBeyondType, pExpression->location, pType->m_Name);
}

void NoteComparedValueRange(CNotes& notes, const CNode* pExpression)
{
    const CInitValue* pValue = pExpression->GetInit();
    const CType* pType = pExpression->pType;
    if (!pType || !pValue || !pValue->IsInteger()) return;
    const std::int64_t value = pValue->IsUnsigned() ? std::int64_t{pValue->GetUnsigned()} : pValue->GetInt64();
    if (!HoldsComparedNumber(pType, value)) notes.Add(Note::NumberBeyondType, pExpression->location, pType->m_Name);
}

void NoteRealOverflow(CNotes& notes, double a, double b, double result, const SourceLocation& where)
{
    const bool overflows = std::isfinite(a) && std::isfinite(b) && std::isinf(result);
    if (overflows) notes.Add(Note::NumberBeyondWidth, where);
}

void NoteBeyond32Bits(CNotes& notes, std::int64_t value, const CNode* pNode)
{
    if (value != LowBits(value)) notes.Add(Note::NumberBeyondWidth, pNode->location);
}
