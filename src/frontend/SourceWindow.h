#pragma once

#include <cstddef>
#include <memory>
#include <string>

// The text of the source being scanned, of which no more is in memory than a window that moves along with it. In it a
// CR LF pair has become one LF; a CR elsewhere stays. Behind the last byte of the window stands a zero byte.
//
// Whoever scans owns nothing of the text: what lies ahead is valid up to the next Begin, Open, SetText or Close.
class CSourceWindow
{
public:
    CSourceWindow() { Close(); }
    ~CSourceWindow() { Close(); }
    CSourceWindow(const CSourceWindow&) = delete;
    CSourceWindow& operator=(const CSourceWindow&) = delete;

    // Begins with a file; false if there is none or it is a directory. The bytes as they are in the file, up to the
    // first zero byte, are appended to pCopy as they are read, if it isn't null.
    bool Open(const std::string& name, std::string* pCopy);
    // Begins with a text that is in memory already, in which no CR stands in front of an LF.
    void SetText(std::string text);
    void Close();                                // the text is empty from here on

    // What lies ahead begins here: at least `enough` bytes, or all that is left of the source.
    const char* Begin(std::ptrdiff_t enough)
    {
        if (m_End - m_Begin < enough && !IsAtEnd()) Fill(enough);
        return m_Begin;
    }
    const char* End() const { return m_End; }
    void Advance(std::size_t bytes) { m_Begin += bytes; }

private:
    void Fill(std::ptrdiff_t enough);
    std::size_t Read(char* pBytes, std::size_t room);

    bool IsAtEnd() const { return m_Descriptor < 0; }
    void CloseFile();

    int m_Descriptor = -1;                       // -1 behind the end of the file
    bool m_IsReturnPending = false;              // the last byte read was a CR, which the next one decides on
    std::string* m_pCopy = nullptr;              // not owned
    std::string m_Text;                          // of SetText
    std::unique_ptr<char[]> m_Window;            // null before the first file; unwritten behind what has been read
    std::size_t m_WindowSize = 0;                // in bytes
    const char* m_Begin;                         // in m_Window or m_Text
    const char* m_End;
};
