#include "files/TextBuffer.h"

#include <algorithm>

// Twice as large each time, so that appending stays linear.
void TextBuffer::Grow(std::size_t more)
{
    constexpr std::size_t least = 256;
    const std::size_t capacity = std::max({least, m_Capacity * 2, m_Size + more});
    std::unique_ptr<char[]> bytes(new char[capacity]);   // not zeroed
    if (m_Size > 0) std::memcpy(bytes.get(), m_Bytes.get(), m_Size);
    m_Bytes = std::move(bytes);
    m_Capacity = capacity;
}
