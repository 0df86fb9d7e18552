#pragma once

#include <string>
#include <string_view>

// The byte order marks; single-byte text has none.
inline constexpr std::string_view g_BomUtf16LowFirst = "\xFF\xFE";
inline constexpr std::string_view g_BomUtf16HighFirst = "\xFE\xFF";
inline constexpr std::string_view g_BomUtf8 = "\xEF\xBB\xBF";

// Turns text of the code page in memory into the bytes of an open file. Bytes gather in a buffer that is
// written out when it is full, and by Flush; nothing reaches the file before. All results are 0 or
// g_FileError; what could not be written stays in the buffer.
class TextFileWriter
{
public:
    // A buffer size below 1 means that everything is written at once.
    TextFileWriter(int descriptor, int bufferSize);
    virtual ~TextFileWriter() = default;
    TextFileWriter(const TextFileWriter&) = delete;
    TextFileWriter& operator=(const TextFileWriter&) = delete;

    virtual int WriteChar(int ch) = 0;
    virtual int WriteString(std::string_view text) = 0;
    virtual int WriteBom() = 0;
    int Flush();

protected:
    int Put(std::string_view bytes);

private:
    int PutDirectly(std::string_view bytes);

    int m_Descriptor;                    // of the TextFile
    std::size_t m_BufferSize;
    std::string m_Pending;
};

class ANSI_TextFileWriter : public TextFileWriter
{
public:
    using TextFileWriter::TextFileWriter;
    int WriteChar(int ch) override;      // a byte
    int WriteString(std::string_view text) override;
    int WriteBom() override;             // there is none
};

class UTF16LE_TextFileWriter : public TextFileWriter
{
public:
    using TextFileWriter::TextFileWriter;
    int WriteChar(int ch) override;      // a 16-bit unit
    int WriteString(std::string_view text) override;
    int WriteBom() override;
};

class UTF16BE_TextFileWriter : public TextFileWriter
{
public:
    using TextFileWriter::TextFileWriter;
    int WriteChar(int ch) override;      // a 16-bit unit
    int WriteString(std::string_view text) override;
    int WriteBom() override;
};

class UTF8_TextFileWriter : public TextFileWriter
{
public:
    using TextFileWriter::TextFileWriter;
    int WriteChar(int ch) override;      // a code point. Kept (files): U+FFFF already takes four bytes
    // Kept (files): each byte is the code point of its number, whatever the code page says, so 0x80 isn't the euro.
    int WriteString(std::string_view text) override;
    int WriteBom() override;
};
