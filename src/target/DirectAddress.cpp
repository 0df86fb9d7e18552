// Variables at an address of the input, output or memory area: "IX0.3", "QW12", "M5.0". A letter for the
// area, a letter for the size (which may be left out), the byte, and for a BOOL the bit.

#include "target/MemoryHandler.h"

#include "files/Format.h"
#include "frontend/ErrorHandler.h"
#include "model/Type.h"
#include "model/Variable.h"
#include "target/MemoryMath.h"

#include <string_view>

static bool IsDigit(char c)
{
    return c >= '0' && c <= '9';
}

// A number from the text in 64 bits, so that what is added to it can't overflow.
static std::int64_t GetNumber(std::string_view text)
{
    return ToInt(text);
}

// Bits that lie outside the byte count on from it, in both directions.
static void CarryBit(std::int64_t& byte, std::int64_t& bit)
{
    std::int64_t bytes = bit / 8;
    if (bit % 8 < 0) --bytes;
    byte += bytes;
    bit -= bytes * 8;
}

bool CMemoryHandler::SetDirectAddress(CVariable* pVariable, const SourceLocation& position, bool checkAlignment)
{
    std::string text = pVariable->m_DirectAddress;   // a copy: the variable keeps it as the source has it
    if (text.size() > 1 && IsDigit(text[1])) text.insert(1, 1, 'X');
    const char area = text.empty() ? '\0' : text[0];
    const char sizeLetter = text.size() > 1 ? text[1] : '\0';

    const std::size_t dot = text.find('.');
    const bool hasBit = dot != std::string::npos;
    if (hasBit && text.find('.', dot + 1) != std::string::npos) {
        m_Errors.ErrInvalidAddress(position);
        return false;
    }

    CType* pType = BaseOf(pVariable->m_Type);
    const std::string_view numbers = text.size() > 2 ? std::string_view(text).substr(2) : std::string_view();
    std::int64_t byte = GetNumber(numbers);          // stops at the dot
    std::int64_t bit = 0;
    if (hasBit) {
        bit = GetNumber(std::string_view(text).substr(dot + 1));
        CarryBit(byte, bit);
        if (!pType->IsBool()) {
            m_Errors.ErrDimension(position);
            return false;
        }
    }
    if (!PlaceInArea(pVariable, area, byte, position, checkAlignment)) return false;
    if (!pType->IsAggregate() && !FitsSizeLetter(pVariable, sizeLetter, hasBit)) {
        m_Errors.ErrDimension(position);
        return false;
    }

    pVariable->m_Offset = ToStoredBytes(byte);
    pVariable->m_BitOffset = static_cast<std::int32_t>(bit);
    pVariable->m_Size = ToStoredBytes(MeasureLayout(pType, pVariable->GetIndex(), 0));
    return true;
}

// Checks the byte against its area and moves it there.
bool CMemoryHandler::PlaceInArea(CVariable* pVariable, char area, std::int64_t& byte, const SourceLocation& position,
                                 bool checkAlignment)
{
    std::int32_t segment = 0;
    std::int32_t size = 0;
    switch (area) {
    case 'I': segment = m_InputSegment; size = m_InputSize; break;
    case 'Q': segment = m_OutputSegment; size = m_OutputSize; break;
    case 'M': segment = m_MemorySegment; size = m_MemorySize; break;
    default: return true;
    }
    if (byte < 0 || byte + GetVariableSize(pVariable) > size) {
        m_Errors.ErrAddressOutOfMemory(position);
        return false;
    }
    if (checkAlignment && byte % GetVariableAlign(pVariable) != 0) {
        m_Errors.ErrAlignment(position);
        return false;
    }
    byte += segment;
    return true;
}

bool CMemoryHandler::FitsSizeLetter(const CVariable* pVariable, char letter, bool hasBit) const
{
    const CType* pType = BaseOf(pVariable->m_Type);
    switch (letter) {
    case 'X': return pType->IsBool() && hasBit;
    case 'B': return pType->m_SizeBits == 8;
    case 'W': return pType->m_SizeBits == 16;
    case 'D': return pType->m_SizeBits == 32;
    case 'L': return pType->m_SizeBits == 64;
    default: return true;
    }
}
