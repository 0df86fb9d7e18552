#include "files/TextFileReader.h"

#include "files/CodePage.h"
#include "files/Platform.h"

#include <algorithm>
#include <cstdint>

TextFileReader::TextFileReader(int descriptor, int bufferSize, const std::string& defaultChar)
    : m_DefaultChar(defaultChar), m_Descriptor(descriptor), m_BufferSize(static_cast<std::size_t>(std::max(bufferSize, 1)))
{
}

void TextFileReader::PutBack(std::string_view bytes)
{
    m_Buffer = bytes;
    m_Position = 0;
    m_Valid = bytes.size();
}

int TextFileReader::ReadChar(int)
{
    return g_EndOfFile;
}

int TextFileReader::ReadLine(std::string&)
{
    return g_EndOfFile;
}

int TextFileReader::ReadAll(std::string&)
{
    return g_EndOfFile;
}

int TextFileReader::FillBuffer()
{
    if (m_EndReached) return g_EndOfFile;
    m_Buffer.resize(m_BufferSize);
    const std::ptrdiff_t read = ReadBytes(m_Descriptor, m_Buffer.data(), m_BufferSize);
    if (read < 0) return g_FileError;
    m_EndReached = read == 0;
    if (m_EndReached) return g_EndOfFile;
    m_Position = 0;
    m_Valid = static_cast<std::size_t>(read);
    return 0;
}

int TextFileReader::NextByte()
{
    if (m_Position == m_Valid) {
        const int result = FillBuffer();
        if (result != 0) return result;
    }
    return static_cast<unsigned char>(m_Buffer[m_Position++]);
}

static int JoinUnit(int first, int second, bool isHighFirst)
{
    return isHighFirst ? first << 8 | second : second << 8 | first;
}

int TextFileReader::NextUnit(ByteOrder order)
{
    const int first = NextByte();
    if (first < 0) return first;
    const int second = NextByte();
    if (second < 0) return second;   // an odd byte at the very end is no unit
    return JoinUnit(first, second, order == ByteOrder::HighFirst);
}

int TextFileReader::ReadByte(int skip)
{
    int result = NextByte();
    while (result >= 0 && result == skip) result = NextByte();
    return result;
}

int TextFileReader::ReadUnit(int skip, ByteOrder order)
{
    int result = NextUnit(order);
    while (result >= 0 && result == skip) result = NextUnit(order);
    return result;
}

int TextFileReader::ReadRawLine(std::string& bytes)
{
    int next = NextByte();
    if (next < 0) return next;
    for (; next >= 0 && next != '\n'; next = NextByte()) bytes.push_back(static_cast<char>(next));
    if (next == g_FileError) return g_FileError;
    // Only a line feed makes a carriage return part of a line end.
    if (next == '\n' && !bytes.empty() && bytes.back() == '\r') bytes.pop_back();
    return 0;
}

int TextFileReader::ReadRawRest(std::string& bytes)
{
    bytes.assign(m_Buffer, m_Position, m_Valid - m_Position);
    m_Position = m_Valid;
    for (;;) {
        const int result = FillBuffer();
        if (result == g_FileError) return g_FileError;
        if (result == g_EndOfFile) break;
        bytes.append(m_Buffer, 0, m_Valid);
        m_Position = m_Valid;
    }
    return bytes.empty() ? g_EndOfFile : 0;
}

int TextFileReader::ReadUnitLine(std::string& text, ByteOrder order)
{
    int next = NextUnit(order);
    if (next < 0) return next;
    std::u16string units;
    for (; next >= 0 && next != '\n'; next = NextUnit(order)) units.push_back(static_cast<char16_t>(next));
    if (next == g_FileError) return g_FileError;
    if (next == '\n' && !units.empty() && units.back() == u'\r') units.pop_back();
    text = FromUtf16(units, m_DefaultChar);
    return 0;
}

int TextFileReader::ReadUnitRest(std::string& text, ByteOrder order)
{
    std::string bytes;
    const int result = ReadRawRest(bytes);
    if (result != 0) return result;
    std::u16string units;
    units.reserve(bytes.size() / 2);
    for (std::size_t i = 0; i + 1 < bytes.size(); i += 2) {
        const int first = static_cast<unsigned char>(bytes[i]);
        const int second = static_cast<unsigned char>(bytes[i + 1]);
        units.push_back(static_cast<char16_t>(JoinUnit(first, second, order == ByteOrder::HighFirst)));
    }
    text = FromUtf16(units, m_DefaultChar);
    return static_cast<int>(text.size());
}

int ANSI_TextFileReader::ReadChar(int skip)
{
    return ReadByte(skip);
}

int ANSI_TextFileReader::ReadLine(std::string& text)
{
    std::string bytes;
    const int result = ReadRawLine(bytes);
    if (result == 0) text.swap(bytes);
    return result;
}

int ANSI_TextFileReader::ReadAll(std::string& text)
{
    std::string bytes;
    const int result = ReadRawRest(bytes);
    if (result != 0) return result;
    text.swap(bytes);
    return static_cast<int>(text.size());
}

int UTF16LE_TextFileReader::ReadChar(int skip)
{
    return ReadUnit(skip, ByteOrder::LowFirst);
}

int UTF16LE_TextFileReader::ReadLine(std::string& text)
{
    return ReadUnitLine(text, ByteOrder::LowFirst);
}

int UTF16LE_TextFileReader::ReadAll(std::string& text)
{
    return ReadUnitRest(text, ByteOrder::LowFirst);
}

int UTF16BE_TextFileReader::ReadChar(int skip)
{
    return ReadUnit(skip, ByteOrder::HighFirst);
}

int UTF16BE_TextFileReader::ReadLine(std::string& text)
{
    return ReadUnitLine(text, ByteOrder::HighFirst);
}

int UTF16BE_TextFileReader::ReadAll(std::string& text)
{
    return ReadUnitRest(text, ByteOrder::HighFirst);
}

int UTF8_TextFileReader::ReadChar(int skip)
{
    return ReadByte(skip);
}

int UTF8_TextFileReader::ReadLine(std::string& text)
{
    std::string bytes;
    const int result = ReadRawLine(bytes);
    if (result == 0) text = FromUtf16(Decode(bytes), m_DefaultChar);
    return result;
}

int UTF8_TextFileReader::ReadAll(std::string& text)
{
    std::string bytes;
    const int result = ReadRawRest(bytes);
    if (result != 0) return result;
    text = FromUtf16(Decode(bytes), m_DefaultChar);
    return static_cast<int>(text.size());
}

namespace
{

constexpr char16_t g_Replacement = 0xFFFD;

// What a lead byte says of its sequence.
struct Utf8Lead
{
    unsigned char nLast;      // the last lead byte of this form
    int nFollowing;           // bytes behind the lead
    std::uint32_t nMask;      // bits of the value in the lead
};

constexpr Utf8Lead g_Utf8Leads[] = {
    {0x7F, 0, 0x7F},
    {0xDF, 1, 0x1F},
    {0xEF, 2, 0x0F},
    {0xF7, 3, 0x07},
};

}   // namespace

static const Utf8Lead* FindLead(unsigned char byte)
{
    for (const Utf8Lead& lead : g_Utf8Leads)
        if (byte <= lead.nLast) return &lead;
    return nullptr;
}

static void AppendCodePoint(std::u16string& units, std::uint32_t value)
{
    constexpr std::uint32_t firstOfPair = 0x10000;
    constexpr std::uint32_t lastCodePoint = 0x10FFFF;
    if (value < firstOfPair) {
        units.push_back(static_cast<char16_t>(value));
        return;
    }
    value = std::min(value, lastCodePoint);
    units.push_back(static_cast<char16_t>((value >> 10) + 0xD7C0));
    units.push_back(static_cast<char16_t>((value & 0x3FF) + 0xDC00));
}

std::u16string UTF8_TextFileReader::Decode(std::string_view bytes)
{
    bytes = bytes.substr(0, bytes.find('\0'));
    std::u16string units;
    units.reserve(bytes.size());
    for (std::size_t i = 0; i < bytes.size();) {
        const unsigned char first = static_cast<unsigned char>(bytes[i++]);
        const Utf8Lead* pLead = FindLead(first);
        if (!pLead) {
            units.push_back(g_Replacement);
            continue;
        }
        if (bytes.size() - i < static_cast<std::size_t>(pLead->nFollowing)) {
            // Kept (targets): a sequence that the end cuts short repeats the unit before it.
            units.push_back(units.empty() ? g_Replacement : units.back());
            break;
        }
        std::uint32_t value = first & pLead->nMask;
        for (int k = 0; k < pLead->nFollowing; ++k)
            value = value << 6 | (static_cast<unsigned char>(bytes[i++]) & 0x3Fu);
        AppendCodePoint(units, value);
    }
    return units;
}
