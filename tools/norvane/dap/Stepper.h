#pragma once

#include "machine/Machine.h"
#include "norvane/dap/LineTable.h"

#include <cstdint>
#include <vector>

// Decides in front of each instruction whether the machine stops. A line begins where a mark of it is passed, unless
// the code only goes on from one statement of the line to the next.
class CStepper : public IMachineObserver
{
public:
    enum class Goal
    {
        None,        // only breakpoints
        Statement,   // the next one, wherever it is
        Into,        // the next line, in whatever POU
        Over,        // the next line of this POU, or its caller
        Out          // the caller
    };
    enum class Reason { Slice, Breakpoint, Goal };

    CStepper(const CMachine& machine, const CLineTable& lines);

    void Begin(Goal goal);                                    // from where the machine stands
    void SetBreakpoints(const std::vector<int>& instructions);
    bool BeforeInstruction(int instruction) override;

    Reason GetReason() const { return m_Reason; }             // of the last stop
    bool HasGoal() const { return m_Goal != Goal::None; }
    // Line marks that the frames in progress have passed last, the program's first; -1: none yet.
    const std::vector<int>& GetMarks() const { return m_Marks; }

private:
    bool FollowFrames(int instruction);
    bool MeetsGoal(int instruction, bool beginsLine);
    bool Stop(Reason reason)
    {
        m_Reason = reason;
        return true;
    }

    // After so many instructions the machine is left for a look at the input; a pause waits for a statement so long.
    static constexpr int sliceLength = 20'000;

    const CMachine& m_Machine;
    const CListing& m_Listing;
    const CLineTable& m_Lines;
    std::vector<bool> m_IsEntry;          // the first instruction of a program
    std::vector<bool> m_IsBreakpoint;
    std::vector<int> m_Marks;
    Goal m_Goal = Goal::None;
    std::size_t m_StartDepth = 0;         // frames when the goal was set
    bool m_HasLeft = false;               // the POU of the start has ended
    int m_Patience = 0;
    int m_Slice = sliceLength;
    Reason m_Reason = Reason::Slice;
};
