#pragma once

#include "files/TextFileReader.h"
#include "files/TextFileWriter.h"

#include <memory>
#include <string>
#include <string_view>

// One open text file in one of four encodings. Whoever uses it sees single-byte text in the code page in
// memory (see CodePage.h) and nothing of the encoding. Closed, then open in one mode, then closed.
class TextFile
{
public:
    enum Mode : int { Closed = 0, ForReading = 1, ForWriting = 2, ForAppending = 3 };
    // Detection looks at the byte order mark alone, never at the content.
    enum Encoding : int { Detect = 0, Ansi = 1, Utf16LowFirst = 2, Utf16HighFirst = 3, Utf8 = 4 };
    // The flags of Open: the encoding in the low byte, and these.
    static constexpr int EncodingMask = 0xFF;
    static constexpr int NoLineEndTranslation = 0x100;   // on writing
    static constexpr int IgnoreBom = 0x200;              // on reading: don't look for a mark
    static constexpr int NoBom = 0x400;                  // on writing

    TextFile() = default;
    ~TextFile();
    TextFile(const TextFile&) = delete;
    TextFile& operator=(const TextFile&) = delete;

    // Reading needs a file that exists; writing creates or truncates it; appending opens or creates it.
    // 0, or g_FileError if that can't be done, also for a directory and an unknown encoding. A buffer size
    // of 0 means 4096 bytes, a negative one no buffer.
    int Open(const std::string& name, int mode, int flags, int bufferSize = 0);
    // Writes out what is pending; 0, or g_FileError if that failed. The file is closed in any case, and a
    // second call does nothing.
    int Close();

    // See TextFileReader. A file that isn't open for reading gives g_FileError.
    int ReadAll(std::string& text);
    int ReadLine(std::string& text);
    int ReadChar(int skip = -1);

    // 0 or g_FileError, also on a file that isn't open for writing. The byte order mark goes out with the
    // first of them.
    int WriteString(std::string_view text);
    int WriteChar(int ch);
    int WriteBom();
    int Flush();

    std::string m_FileName;                      // given at Open; empty while closed
    int m_Mode = Closed;
    int m_Encoding = Detect;                     // what was asked for, or found
    int m_Flags = 0;
    int m_BufferSize = 0;                        // bytes, see Open
    int m_CodePage = 0;                          // of the text in memory; 0, the process's own, is the only one
    std::string m_DefaultChar;                   // stands for characters that the code page lacks; empty: "?"

private:
    int OpenForReading();
    int OpenForWriting();
    void DropBom(std::string& begin) const;
    std::unique_ptr<TextFileReader> MakeReader() const;
    std::unique_ptr<TextFileWriter> MakeWriter() const;
    int GetBufferSize() const;
    int WriteTranslated(std::string_view text);

    int m_Descriptor = -1;                       // -1 while closed; reader and writer have the buffers
    std::unique_ptr<TextFileReader> m_Reader;    // set in the read mode
    std::unique_ptr<TextFileWriter> m_Writer;    // set in the write modes
    bool m_BomPending = false;                   // the byte order mark is yet to be written
};
