#pragma once

#include <string>
#include <string_view>

// Results of the file layer besides 0 and numbers of characters.
inline constexpr int g_EndOfFile = -1;
inline constexpr int g_FileError = -2;

// Turns the bytes of an open file into text of the code page in memory. The base class itself is the
// reader of an empty file: it reads nothing.
class TextFileReader
{
public:
    // Descriptor and default character belong to the TextFile and outlive the reader. A buffer size below 1
    // means that nothing is read ahead.
    TextFileReader(int descriptor, int bufferSize, const std::string& defaultChar);
    virtual ~TextFileReader() = default;
    TextFileReader(const TextFileReader&) = delete;
    TextFileReader& operator=(const TextFileReader&) = delete;

    // Bytes that have been taken from the file already and come first. To be called before anything is read.
    void PutBack(std::string_view bytes);

    // The next byte or 16-bit unit that isn't `skip`, unconverted; or end of file, or file error.
    virtual int ReadChar(int skip);
    // 0 and the line without its line end, g_EndOfFile if nothing is left, or g_FileError. The text is
    // replaced only by a line.
    virtual int ReadLine(std::string& text);
    // The number of characters of all that is left, else the same.
    virtual int ReadAll(std::string& text);

protected:
    enum class ByteOrder { LowFirst, HighFirst };

    int ReadByte(int skip);                          // as ReadChar
    int ReadUnit(int skip, ByteOrder order);
    int ReadRawLine(std::string& bytes);             // without its line end
    int ReadRawRest(std::string& bytes);
    int ReadUnitLine(std::string& text, ByteOrder order);
    int ReadUnitRest(std::string& text, ByteOrder order);

    const std::string& m_DefaultChar;

private:
    int FillBuffer();
    int NextByte();
    int NextUnit(ByteOrder order);

    std::size_t m_Position = 0;                      // in the buffer
    std::size_t m_Valid = 0;                         // bytes in the buffer
    std::string m_Buffer;
    int m_Descriptor;                                // of the TextFile
    std::size_t m_BufferSize;
    bool m_EndReached = false;
};

class ANSI_TextFileReader : public TextFileReader
{
public:
    using TextFileReader::TextFileReader;
    int ReadChar(int skip) override;
    int ReadLine(std::string& text) override;
    int ReadAll(std::string& text) override;
};

class UTF16LE_TextFileReader : public TextFileReader
{
public:
    using TextFileReader::TextFileReader;
    int ReadChar(int skip) override;
    int ReadLine(std::string& text) override;
    int ReadAll(std::string& text) override;
};

class UTF16BE_TextFileReader : public TextFileReader
{
public:
    using TextFileReader::TextFileReader;
    int ReadChar(int skip) override;
    int ReadLine(std::string& text) override;
    int ReadAll(std::string& text) override;
};

class UTF8_TextFileReader : public TextFileReader
{
public:
    using TextFileReader::TextFileReader;
    int ReadChar(int skip) override;
    int ReadLine(std::string& text) override;
    int ReadAll(std::string& text) override;

    // Decodes up to the first zero byte. Nothing is validated: a stray continuation byte leads a sequence
    // of two, and whatever follows a lead is masked and taken.
    static std::u16string Decode(std::string_view bytes);
};
