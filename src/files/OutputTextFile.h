#pragma once

#include <string>
#include <string_view>

// A text file that is written from start to end through a buffer of its own: the temporary assembler
// text, the final one, the tree dump; or a text in memory in place of one. Lines end in "\n". A failed write is remembered, not reported,
// so that writers stay simple; whoever closes the file asks once.
class OutputTextFile
{
public:
    OutputTextFile() = default;
    ~OutputTextFile();
    OutputTextFile(const OutputTextFile&) = delete;
    OutputTextFile& operator=(const OutputTextFile&) = delete;

    // Creates or truncates the file; false if that can't be done.
    bool Open(const std::string& name);
    // Appends to the text instead, which must stay until Close and has everything only then.
    void OpenText(std::string& text);
    bool IsOpen() const { return m_Descriptor >= 0 || m_pText; }
    void Write(std::string_view text);
    // False if anything since Open could not be written. A second call does nothing and answers true.
    bool Close();

private:
    void Begin();
    void Put(std::string_view bytes);
    void WriteOut();

    int m_Descriptor = -1;             // -1: closed, or a text
    std::string* m_pText = nullptr;    // not owned; null: a file
    std::string m_Pending;             // written out when it is large enough
    bool m_Failed = false;
};
