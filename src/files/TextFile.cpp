#include "files/TextFile.h"

#include "files/Platform.h"

#include <cstddef>

TextFile::~TextFile()
{
    Close();
}

int TextFile::Open(const std::string& name, int mode, int flags, int bufferSize)
{
    Close();
    const int encoding = flags & EncodingMask;
    if (mode < ForReading || mode > ForAppending || encoding > Utf8) return g_FileError;
    m_Descriptor = mode == ForReading ? ::OpenForReading(name.c_str())
                                      : ::OpenForWriting(name.c_str(), mode == ForAppending);
    if (m_Descriptor < 0) return g_FileError;

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

static int DetectEncoding(std::string_view begin)
{
    if (begin.empty()) return TextFile::Detect;   // there is nothing to choose a reader for
    for (const int encoding : {TextFile::Utf16LowFirst, TextFile::Utf16HighFirst, TextFile::Utf8})
        if (begin.starts_with(GetBom(encoding))) return encoding;
    return TextFile::Ansi;
}

// No mark is no error: the encoding stands.
void TextFile::DropBom(std::string& begin) const
{
    const std::string_view mark = GetBom(m_Encoding);
    if (begin.starts_with(mark)) begin.erase(0, mark.size());
}

// Looks at no more than a mark has, and hands on what is none: a pipe can't be read twice.
int TextFile::OpenForReading()
{
    std::string begin(g_BomUtf8.size(), '\0');
    std::size_t length = 0;
    std::ptrdiff_t read = 0;
    do {
        length += static_cast<std::size_t>(read);
        read = ReadBytes(m_Descriptor, begin.data() + length, begin.size() - length);
    } while (read > 0);
    if (read < 0) return g_FileError;
    begin.resize(length);

    const bool isDetected = m_Encoding == Detect;
    if (isDetected) m_Encoding = DetectEncoding(begin);
    if (isDetected || !(m_Flags & IgnoreBom)) DropBom(begin);
    m_Reader = MakeReader();
    m_Reader->PutBack(begin);
    return 0;
}

int TextFile::OpenForWriting()
{
    m_BomPending = !(m_Flags & NoBom);
    if (m_Mode == ForAppending && !IsEmptyFile(m_Descriptor)) m_BomPending = false;
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
    case Ansi: return std::make_unique<ANSI_TextFileReader>(m_Descriptor, size, m_DefaultChar);
    case Utf16LowFirst: return std::make_unique<UTF16LE_TextFileReader>(m_Descriptor, size, m_DefaultChar);
    case Utf16HighFirst: return std::make_unique<UTF16BE_TextFileReader>(m_Descriptor, size, m_DefaultChar);
    case Utf8: return std::make_unique<UTF8_TextFileReader>(m_Descriptor, size, m_DefaultChar);
    default: return std::make_unique<TextFileReader>(m_Descriptor, size, m_DefaultChar);
    }
}

std::unique_ptr<TextFileWriter> TextFile::MakeWriter() const
{
    const int size = GetBufferSize();
    switch (m_Encoding) {
    case Utf16LowFirst: return std::make_unique<UTF16LE_TextFileWriter>(m_Descriptor, size);
    case Utf16HighFirst: return std::make_unique<UTF16BE_TextFileWriter>(m_Descriptor, size);
    case Utf8: return std::make_unique<UTF8_TextFileWriter>(m_Descriptor, size);
    default: return std::make_unique<ANSI_TextFileWriter>(m_Descriptor, size);
    }
}

int TextFile::Close()
{
    if (m_Mode == Closed) return 0;
    int result = m_Writer ? m_Writer->Flush() : 0;
    m_Reader.reset();
    m_Writer.reset();
    if (!CloseDescriptor(m_Descriptor)) result = g_FileError;
    m_Descriptor = -1;
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
