#include "norvane/dap/Stepper.h"

CStepper::CStepper(const CMachine& machine, const CLineTable& lines)
    : m_Machine(machine), m_Listing(machine.GetImage().m_Listing), m_Lines(lines)
{
    m_IsEntry.assign(m_Listing.m_Instructions.size(), false);
    m_IsBreakpoint.assign(m_Listing.m_Instructions.size(), false);
    for (const ListingPou& pou : m_Listing.m_Pous)
        if (pou.kind == ListingPou::Program && pou.first < pou.end) m_IsEntry[static_cast<std::size_t>(pou.first)] = true;
}

void CStepper::Begin(Goal goal)
{
    m_Goal = goal;
    m_StartDepth = m_Machine.GetFrames().size();
    m_HasLeft = m_StartDepth == 0;
    m_Patience = sliceLength;
}

void CStepper::SetBreakpoints(const std::vector<int>& instructions)
{
    m_IsBreakpoint.assign(m_IsBreakpoint.size(), false);
    for (const int instruction : instructions) m_IsBreakpoint[static_cast<std::size_t>(instruction)] = true;
}

// Notes the marks that are passed. True if a line begins here.
bool CStepper::FollowFrames(int instruction)
{
    m_Marks.resize(m_Machine.GetFrames().size(), -1);
    // One program behind the other: the frame is another one at the same height.
    if (m_Marks.size() == 1 && m_IsEntry[static_cast<std::size_t>(instruction)]) {
        m_Marks.back() = -1;
        m_HasLeft = true;
    }
    if (m_Marks.size() < m_StartDepth) m_HasLeft = true;
    if (!m_Lines.BeginsStatement(instruction)) return false;
    const int last = m_Marks.back();
    m_Marks.back() = m_Listing.m_Instructions[static_cast<std::size_t>(instruction)].mark;
    if (last < 0) return true;
    const LineMark& before = m_Listing.m_Marks[static_cast<std::size_t>(last)];
    const LineMark& now = m_Listing.m_Marks[static_cast<std::size_t>(m_Marks.back())];
    return before.file != now.file || before.line != now.line || before.instruction >= now.instruction;
}

bool CStepper::MeetsGoal(int instruction, bool beginsLine)
{
    const bool beginsStatement = m_Lines.BeginsStatement(instruction);
    const std::size_t depth = m_Marks.size();
    // Back in a caller the rest of its statement is worth a stop: it may call once more.
    const bool isReturn = depth < m_StartDepth && m_Listing.m_Instructions[static_cast<std::size_t>(instruction)].mark >= 0;
    switch (m_Goal) {
    case Goal::None: return false;
    case Goal::Statement: return beginsStatement || --m_Patience <= 0;
    case Goal::Into: return isReturn || beginsLine || (beginsStatement && m_HasLeft);
    case Goal::Over: return isReturn || (beginsLine && (depth == m_StartDepth || m_HasLeft));
    case Goal::Out: return isReturn || (beginsStatement && m_HasLeft);
    }
    return false;
}

bool CStepper::BeforeInstruction(int instruction)
{
    const bool beginsLine = FollowFrames(instruction);
    const bool isBreakpoint = beginsLine && m_IsBreakpoint[static_cast<std::size_t>(instruction)];
    const bool isReached = m_Goal != Goal::None && MeetsGoal(instruction, beginsLine);
    if (isBreakpoint || isReached) {
        m_Goal = Goal::None;
        return Stop(isBreakpoint ? Reason::Breakpoint : Reason::Goal);
    }
    if (--m_Slice > 0) return false;
    m_Slice = sliceLength;
    return Stop(Reason::Slice);
}
