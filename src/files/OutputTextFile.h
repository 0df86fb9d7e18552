#pragma once

#include <string>
#include <string_view>

// A text file that is written from start to end through a buffer of its own: the temporary assembler
// text, the final one, the tree dump. Lines end in "\n". A failed write is remembered, not reported,
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
    bool IsOpen() const { return m_Descriptor >= 0; }
    void Write(std::string_view text);
    // False if anything since Open could not be written. A second call does nothing and answers true.
    bool Close();

private:
    void WriteOut();

    int m_Descriptor = -1;             // -1: closed
    std::string m_Pending;             // written out when it is large enough
    bool m_Failed = false;
};
