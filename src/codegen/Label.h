#pragma once

#include "files/TextBuffer.h"

#include <string>
#include <vector>

// A label is its number until it is written: "LABEL0007".
struct Label
{
    int number = 0;     // from 1 on; 0: there is none, and nothing is written

    bool IsNone() const { return number == 0; }
    std::size_t GetMostBytes() const { return 5 + 3 + ::GetMostBytes(number); }
    char* Write(char* p) const;
    bool operator==(const Label&) const = default;
};

// Numbers the labels of a run. The counter never goes back, so no two POUs share a label.
class CLabel
{
public:
    virtual ~CLabel() = default;

    Label Draw() { return {++m_Counter}; }
    Label DrawReturn();                         // of the POU in progress, drawn at the first call
    Label FindExit() const;                     // none if EXIT has nowhere to go

    // The same as texts.
    std::string NewLabel();                     // the first of a run is "LABEL0001"
    std::string GetReturnLabel();
    bool HasReturnLabel() const { return m_ReturnLabel != -1; }
    void ClearReturnLabel() { m_ReturnLabel = -1; }
    // Makes the label drawn last the one that EXIT reaches; draws none itself.
    std::string PushExitLabel();
    void PopExitLabel();                        // an internal fault if there is none
    std::string GetExitLabel() const;           // "ERROR" if EXIT has nowhere to go
    static std::string FormatLabel(int number);

    int m_ReturnLabel = -1;                     // -1: no RETURN met in this POU yet
    int m_Counter = 0;                          // labels made so far
    std::vector<int> m_ExitStack;               // exit labels of the statements being generated
};
