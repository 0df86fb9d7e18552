#include "files/TextFileWriter.h"

#include "files/CodePage.h"
#include "files/Platform.h"
#include "files/TextFileReader.h"

#include <algorithm>
#include <cstdint>

TextFileWriter::TextFileWriter(int descriptor, int bufferSize)
    : m_Descriptor(descriptor), m_BufferSize(static_cast<std::size_t>(std::max(bufferSize, 0)))
{
}

int TextFileWriter::PutDirectly(std::string_view bytes)
{
    return WriteBytes(m_Descriptor, bytes.data(), bytes.size()) ? 0 : g_FileError;
}

int TextFileWriter::Flush()
{
    if (m_Pending.empty()) return 0;
    const int result = PutDirectly(m_Pending);
    if (result == 0) m_Pending.clear();
    return result;
}

int TextFileWriter::Put(std::string_view bytes)
{
    if (m_BufferSize == 0) return PutDirectly(bytes);
    while (!bytes.empty()) {
        // Full at the start only if an earlier attempt to write it out failed.
        if (m_Pending.size() >= m_BufferSize && Flush() != 0) return g_FileError;
        const std::size_t length = std::min(bytes.size(), m_BufferSize - m_Pending.size());
        m_Pending.append(bytes.substr(0, length));
        bytes.remove_prefix(length);
        if (m_Pending.size() == m_BufferSize && Flush() != 0) return g_FileError;
    }
    return 0;
}

int ANSI_TextFileWriter::WriteChar(int ch)
{
    const char byte = static_cast<char>(ch);
    return Put(std::string_view(&byte, 1));
}

int ANSI_TextFileWriter::WriteString(std::string_view text)
{
    return Put(text);
}

int ANSI_TextFileWriter::WriteBom()
{
    return 0;
}

static void AppendLowFirst(std::string& bytes, int unit)
{
    bytes.push_back(static_cast<char>(unit & 0xFF));
    bytes.push_back(static_cast<char>(unit >> 8 & 0xFF));
}

static void AppendHighFirst(std::string& bytes, int unit)
{
    bytes.push_back(static_cast<char>(unit >> 8 & 0xFF));
    bytes.push_back(static_cast<char>(unit & 0xFF));
}

int UTF16LE_TextFileWriter::WriteChar(int ch)
{
    std::string bytes;
    AppendLowFirst(bytes, ch);
    return Put(bytes);
}

int UTF16LE_TextFileWriter::WriteString(std::string_view text)
{
    std::string bytes;
    bytes.reserve(text.size() * 2);
    for (const char16_t unit : ToUtf16(text)) AppendLowFirst(bytes, unit);
    return Put(bytes);
}

int UTF16LE_TextFileWriter::WriteBom()
{
    return Put(g_BomUtf16LowFirst);
}

int UTF16BE_TextFileWriter::WriteChar(int ch)
{
    std::string bytes;
    AppendHighFirst(bytes, ch);
    return Put(bytes);
}

int UTF16BE_TextFileWriter::WriteString(std::string_view text)
{
    std::string bytes;
    bytes.reserve(text.size() * 2);
    for (const char16_t unit : ToUtf16(text)) AppendHighFirst(bytes, unit);
    return Put(bytes);
}

int UTF16BE_TextFileWriter::WriteBom()
{
    return Put(g_BomUtf16HighFirst);
}

int UTF8_TextFileWriter::WriteChar(int ch)
{
    const std::uint32_t value = static_cast<std::uint32_t>(ch);
    // The bits above the lowest six, marked as a continuation byte.
    const auto continuation = [value](int shift) { return static_cast<char>(0x80 | (value >> shift & 0x3F)); };
    std::string bytes;
    if (value < 0x80) {
        bytes = {static_cast<char>(value)};
    } else if (value < 0x800) {
        bytes = {static_cast<char>(0xC0 | value >> 6), continuation(0)};
    } else if (value < 0xFFFF) {
        bytes = {static_cast<char>(0xE0 | value >> 12), continuation(6), continuation(0)};
    } else {
        bytes = {static_cast<char>(0xF0 | (value >> 18 & 0x07)), continuation(12), continuation(6), continuation(0)};
    }
    return Put(bytes);
}

static bool IsAscii(char c)
{
    return static_cast<unsigned char>(c) < 0x80;
}

int UTF8_TextFileWriter::WriteString(std::string_view text)
{
    while (!text.empty()) {
        // Plain text goes out in whole stretches: documents hold hardly anything else.
        const auto plainEnd = std::find_if_not(text.begin(), text.end(), IsAscii);
        const std::size_t plain = static_cast<std::size_t>(plainEnd - text.begin());
        if (Put(text.substr(0, plain)) != 0) return g_FileError;
        text.remove_prefix(plain);
        if (text.empty()) break;
        if (WriteChar(static_cast<unsigned char>(text.front())) != 0) return g_FileError;
        text.remove_prefix(1);
    }
    return 0;
}

int UTF8_TextFileWriter::WriteBom()
{
    return Put(g_BomUtf8);
}
