#pragma once

#include <string>
#include <vector>

// Numbers the labels of a run. The counter never goes back, so no two POUs share a label.
class CLabel
{
public:
    virtual ~CLabel() = default;

    std::string NewLabel();                     // the first of a run is "LABEL0001"
    std::string GetReturnLabel();               // of the POU in progress, drawn at the first call
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
