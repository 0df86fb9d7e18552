#include "files/TextFile.h"

#include "files/FileSystem.h"

#include <cstddef>

TextFile::~TextFile()
{
    Close();
}

int TextFile::Open(const std::string& name, int mode, int flags, int bufferSize)
{
    constexpr const char* modes[] = {nullptr, "rb", "wb", "ab"};

    Close();
    const int encoding = flags & EncodingMask;
    if (mode < ForReading || mode > ForAppending || encoding > Utf8) return g_FileError;
    // Opening a directory for reading succeeds on some systems.
    if (IsDirectory(name)) return g_FileError;
    m_Handle = std::fopen(name.c_str(), modes[mode]);
    if (!m_Handle) return g_FileError;
    std::setvbuf(m_Handle, nullptr, _IONBF, 0);

    m_FileName = name;
    m_Mode = mode;
    m_Encoding = encoding;
    m_Flags = flags;
    m_BufferSize = bufferSize;
    const int result = mode == ForReading ? OpenForReading() : OpenForWriting();
    if (result != 0) Close();
    return result;
}

static std::string_view GetBom(int encoding)
{
    switch (encoding) {
    case TextFile::Utf16LowFirst: return g_BomUtf16LowFirst;
    case TextFile::Utf16HighFirst: return g_BomUtf16HighFirst;
    case TextFile::Utf8: return g_BomUtf8;
    default: return {};
    }
}

// Leaves the position behind the mark, or at the start if the file begins with anything else.
bool TextFile::SkipBom(std::string_view mark)
{
    for (const char expected : mark) {
        if (std::fgetc(m_Handle) == static_cast<unsigned char>(expected)) continue;
        std::rewind(m_Handle);
        return false;
    }
    return true;
}

int TextFile::DetectEncoding()
{
    const int first = std::fgetc(m_Handle);
    if (first == EOF) return Detect;   // empty: there is nothing to choose a reader for
    std::rewind(m_Handle);
    for (const int encoding : {Utf16LowFirst, Utf16HighFirst, Utf8})
        if (SkipBom(GetBom(encoding))) return encoding;
    return Ansi;
}

int TextFile::OpenForReading()
{
    if (m_Encoding == Detect) m_Encoding = DetectEncoding();
    else if (!(m_Flags & IgnoreBom)) SkipBom(GetBom(m_Encoding));   // no mark is no error: the encoding stands
    if (std::ferror(m_Handle)) return g_FileError;
    m_Reader = MakeReader();
    return 0;
}

int TextFile::OpenForWriting()
{
    m_BomPending = !(m_Flags & NoBom);
    if (m_Mode == ForAppending) {
        if (std::fseek(m_Handle, 0, SEEK_END) != 0) return g_FileError;
        if (std::ftell(m_Handle) != 0) m_BomPending = false;
    }
    m_Writer = MakeWriter();
    return 0;
}

int TextFile::GetBufferSize() const
{
    constexpr int defaultSize = 4096;
    return m_BufferSize == 0 ? defaultSize : m_BufferSize;
}

std::unique_ptr<TextFileReader> TextFile::MakeReader() const
{
    const int size = GetBufferSize();
    switch (m_Encoding) {
    case Ansi: return std::make_unique<ANSI_TextFileReader>(m_Handle, size, m_DefaultChar);
    case Utf16LowFirst: return std::make_unique<UTF16LE_TextFileReader>(m_Handle, size, m_DefaultChar);
    case Utf16HighFirst: return std::make_unique<UTF16BE_TextFileReader>(m_Handle, size, m_DefaultChar);
    case Utf8: return std::make_unique<UTF8_TextFileReader>(m_Handle, size, m_DefaultChar);
    default: return std::make_unique<TextFileReader>(m_Handle, size, m_DefaultChar);
    }
}

std::unique_ptr<TextFileWriter> TextFile::MakeWriter() const
{
    const int size = GetBufferSize();
    switch (m_Encoding) {
    case Utf16LowFirst: return std::make_unique<UTF16LE_TextFileWriter>(m_Handle, size);
    case Utf16HighFirst: return std::make_unique<UTF16BE_TextFileWriter>(m_Handle, size);
    case Utf8: return std::make_unique<UTF8_TextFileWriter>(m_Handle, size);
    default: return std::make_unique<ANSI_TextFileWriter>(m_Handle, size);
    }
}

int TextFile::Close()
{
    if (m_Mode == Closed) return 0;
    int result = m_Writer ? m_Writer->Flush() : 0;
    m_Reader.reset();
    m_Writer.reset();
    if (std::fclose(m_Handle) != 0) result = g_FileError;
    m_Handle = nullptr;
    m_FileName.clear();
    m_Mode = Closed;
    m_BomPending = false;
    return result;
}

int TextFile::ReadAll(std::string& text)
{
    return m_Reader ? m_Reader->ReadAll(text) : g_FileError;
}

int TextFile::ReadLine(std::string& text)
{
    return m_Reader ? m_Reader->ReadLine(text) : g_FileError;
}

int TextFile::ReadChar(int skip)
{
    return m_Reader ? m_Reader->ReadChar(skip) : g_FileError;
}

int TextFile::WriteBom()
{
    if (!m_Writer) return g_FileError;
    const int result = m_Writer->WriteBom();
    if (result == 0) m_BomPending = false;
    return result;
}

int TextFile::WriteString(std::string_view text)
{
    if (!m_Writer) return g_FileError;
    if (m_BomPending && WriteBom() != 0) return g_FileError;
    if (m_Flags & NoLineEndTranslation) return m_Writer->WriteString(text);
    return WriteTranslated(text);
}

int TextFile::WriteTranslated(std::string_view text)
{
    for (;;) {
        const std::size_t end = text.find('\n');
        if (end == std::string_view::npos) break;
        if (m_Writer->WriteString(text.substr(0, end)) != 0) return g_FileError;
        if (m_Writer->WriteString("\r\n") != 0) return g_FileError;
        text.remove_prefix(end + 1);
    }
    return text.empty() ? 0 : m_Writer->WriteString(text);
}

int TextFile::WriteChar(int ch)
{
    if (!m_Writer) return g_FileError;
    if (m_BomPending && WriteBom() != 0) return g_FileError;
    return m_Writer->WriteChar(ch);
}

int TextFile::Flush()
{
    return m_Writer ? m_Writer->Flush() : 0;
}
