#pragma once

#include "norvane/Diagnostic.h"

#include <string>
#include <string_view>
#include <vector>

// What one run of the compiler has printed, taken apart into messages. The names of the files are known, so a name
// that looks like a place confuses nobody; characters of text literals that the compiler prints where it reads them,
// in front of whatever comes next, are taken away.
class CPrintedOutput
{
public:
    CPrintedOutput(const std::vector<std::string>& sources, const std::string& target, const std::string& outputName);

    // Standard output: messages, and the number of errors that the summary tells.
    void ReadMessages(std::string_view printed);
    // Standard error: notes, and what a run that ends early has to say.
    void ReadNotes(std::string_view printed);

    std::vector<Diagnostic> m_Diagnostics;   // as printed, without hints and causes
    bool m_HasSummary = false;
    bool m_HasLibrary = false;               // the target brings a firmware library
    int m_CountedErrors = 0;                 // by the summary
    std::vector<std::string> m_Complaints;   // lines of standard error that are about no source

private:
    bool ReadSummary(std::string_view line);
    bool ReadFileName(std::string_view line);
    bool ReadMessage(std::string_view line, std::string_view nextLine, bool& usesNext);
    bool ReadNote(std::string_view line);
    bool SplitPlace(std::string_view line, Diagnostic& diagnostic, std::string_view& text) const;
    bool SplitFile(std::string_view line, Diagnostic& diagnostic, std::string_view& text) const;

    std::vector<std::string> m_Files;        // the longest name first
    std::vector<std::string> m_Shown;        // how the names stand in lines of their own
    std::string m_SummaryFront;
    std::string m_CurrentFile;               // of a message that names none
    std::vector<std::string> m_Sources;
};
