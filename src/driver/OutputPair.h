#pragma once

#include "files/FileReplacement.h"

#include <string>

// The assembler text and the debug file of a run. They belong together: a downloading tool matches one with the
// other, so both are replaced or none is. Each is written aside (how is nobody's business here) and checked; then
// they take their places one directly behind the other while signals are held back, and if the second can't, the
// first is put back. Runs that write the same pair wait for each other meanwhile. What follows the rules of FileReplacement for modes, links and devices does so for both.
class OutputPair
{
public:
    OutputPair(std::string textName, std::string debugName);

    // Makes the private files; a failure of one says nothing about the other. Where to write to afterwards is in the
    // two work names, which are empty for what failed.
    void Prepare();
    bool IsTextReady() const { return m_IsTextReady; }
    bool IsDebugReady() const { return m_IsDebugReady; }
    const std::string& GetTextWorkName() const { return m_Text.GetWorkName(); }
    const std::string& GetDebugWorkName() const { return m_Debug.GetWorkName(); }

    // Once both are written and closed. No memory is asked for behind the first step that shows.
    enum class Outcome { Replaced, DebugFailed, TextFailed };
    Outcome Replace();

private:
    std::string m_TextName;
    std::string m_DebugName;
    FileReplacement m_Text;
    FileReplacement m_Debug;
    bool m_IsTextReady = false;
    bool m_IsDebugReady = false;
};
