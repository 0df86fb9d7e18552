#include "norvane/dap/DebugRun.h"

#include <algorithm>
#include <filesystem>

namespace fs = std::filesystem;

// Names of sources stand in the debug file as the compiler was given them: from the folder of the compile, where the
// listing lies more often than not.
static std::string FindSource(const std::string& name, const std::string& program)
{
    std::error_code failure;
    const fs::path beside = fs::path(program).parent_path() / name;
    const fs::path found = !fs::exists(name, failure) && fs::exists(beside, failure) ? beside : fs::path(name);
    const fs::path whole = fs::weakly_canonical(fs::absolute(found, failure), failure);
    return failure ? name : whole.string();
}

bool CDebugRun::Prepare(const std::function<void(const std::string&)>& note, std::string& error)
{
    m_Settings.run.machine.options.plain = true;   // stops in front of each instruction
    if (!m_Program.Prepare(note, error)) return false;
    m_pLines = std::make_unique<CLineTable>(m_Program.m_pImage->m_Listing);
    m_pStepper = std::make_unique<CStepper>(*m_Program.m_pMachine, *m_pLines);
    m_Program.m_pMachine->SetObserver(m_pStepper.get());
    for (const std::string& name : m_Program.m_pImage->m_DebugInfo.m_Sources)
        m_FileNames.push_back(FindSource(name, m_Settings.run.program.files.front()));
    return true;
}

std::string CDebugRun::GetFileName(int file) const
{
    return file < 0 || file >= static_cast<int>(m_FileNames.size()) ? "?" : m_FileNames[static_cast<std::size_t>(file)];
}

int CDebugRun::FindFile(const std::string& path) const
{
    std::error_code failure;
    const bool isName = path.find('/') == std::string::npos;
    const std::string whole = isName ? path : fs::weakly_canonical(path, failure).string();
    for (std::size_t i = 0; i < m_FileNames.size(); ++i) {
        const std::string& name = m_FileNames[i];
        if (name == whole || (isName && fs::path(name).filename() == path)) return static_cast<int>(i);
    }
    return -1;
}

// ---- Running

void CDebugRun::Go(CStepper::Goal goal)
{
    m_pStepper->Begin(goal);
    m_StopsAtScanEnd = false;
}

bool CDebugRun::HasNextScan() const
{
    return !m_Settings.run.hasScans || m_Program.m_pMachine->GetScan() < m_Settings.run.scans;
}

int CDebugRun::GetWaitMilliseconds() const
{
    const auto left = std::chrono::duration_cast<std::chrono::milliseconds>(m_Due - Clock::now()).count();
    constexpr std::int64_t longest = 60'000;
    return static_cast<int>(std::clamp<std::int64_t>(left + 1, 0, longest));
}

CDebugRun::Event CDebugRun::Advance()
{
    CMachine& machine = *m_Program.m_pMachine;
    switch (m_Phase) {
    case Phase::Fresh: m_Phase = Phase::StartUp; return Conclude(machine.Start());
    case Phase::StartUp:
    case Phase::Scan: return Conclude(machine.Resume());
    case Phase::Between: return BeginScan();
    default: m_Phase = Phase::Over; return Event::End;
    }
}

CDebugRun::Event CDebugRun::BeginScan()
{
    if (!HasNextScan()) {
        m_Phase = Phase::Over;
        return Event::End;
    }
    const Clock::time_point now = Clock::now();
    // A step doesn't wait, nor does a scan that is late make the next ones hurry.
    if (m_Settings.isRealTime && !m_pStepper->HasGoal() && !m_StopsAtScanEnd && now < m_Due) return Event::Waiting;
    m_Due = now + std::chrono::microseconds(m_Program.m_ScanMicroseconds);
    if (!m_Program.ApplyForced(m_Error)) return Event::Failure;
    m_Phase = Phase::Scan;
    return Conclude(m_Program.m_pMachine->RunScan());
}

CDebugRun::Event CDebugRun::Conclude(RunStatus status)
{
    if (status == RunStatus::Trapped) {
        m_Phase = Phase::Trapped;
        return Event::Trap;
    }
    if (status == RunStatus::Stopped) {
        switch (m_pStepper->GetReason()) {
        case CStepper::Reason::Breakpoint: return Event::Breakpoint;
        case CStepper::Reason::Goal: return Event::Goal;
        case CStepper::Reason::Slice: return Event::Slice;
        }
    }
    const bool isStartUp = m_Phase == Phase::StartUp;
    m_Phase = Phase::Between;
    // Values of a user's own come behind the initial ones.
    if (isStartUp && !m_Program.ApplySettings(m_Error)) return Event::Failure;
    return m_StopsAtScanEnd && HasNextScan() ? Event::ScanEnd : Event::Slice;
}

// ---- Where it stands

// The line is that of the mark that was passed last: behind a jump the text in front may belong to another branch.
DebugFrame CDebugRun::DescribeFrame(const MachineFrame& frame, std::size_t height, int instruction) const
{
    const CListing& listing = m_Program.m_pImage->m_Listing;
    const std::vector<int>& marks = m_pStepper->GetMarks();
    DebugFrame described;
    described.frame = frame;
    described.name = m_Program.m_pMachine->DescribeInstruction(instruction).pou;
    const int passed = height < marks.size() ? marks[height] : -1;
    described.hasBegun = passed >= 0;
    const int mark = passed >= 0 ? passed : listing.m_Instructions[static_cast<std::size_t>(instruction)].mark;
    if (mark < 0) return described;
    described.file = GetFileName(listing.m_Marks[static_cast<std::size_t>(mark)].file);
    described.line = listing.m_Marks[static_cast<std::size_t>(mark)].line;
    return described;
}

DebugFrame CDebugRun::DescribeScanBegin() const
{
    const CImage& image = *m_Program.m_pImage;
    DebugFrame described;
    described.name = "in front of scan " + std::to_string(GetNextScan());
    for (const ImageProgram& program : image.m_Programs) {
        const ListingPou& pou = image.m_Listing.m_Pous[static_cast<std::size_t>(program.pou)];
        for (int i = pou.first; i < pou.end && !program.isStartUp; ++i) {
            if (!m_pLines->BeginsStatement(i)) continue;
            const int number = image.m_Listing.m_Instructions[static_cast<std::size_t>(i)].mark;
            const LineMark& mark = image.m_Listing.m_Marks[static_cast<std::size_t>(number)];
            described.file = GetFileName(mark.file);
            described.line = mark.line;
            return described;
        }
    }
    return described;
}

std::vector<DebugFrame> CDebugRun::GetStack() const
{
    const CMachine& machine = *m_Program.m_pMachine;
    const std::vector<MachineFrame>& frames = machine.GetFrames();
    std::vector<DebugFrame> stack;
    if (frames.empty()) return {DescribeScanBegin()};
    std::vector<int> instructions{machine.GetPosition().instruction};
    for (const CodePosition& caller : machine.GetCallers()) instructions.push_back(caller.instruction);
    for (std::size_t i = 0; i < instructions.size(); ++i) {
        const std::size_t height = frames.size() - 1 - i;
        stack.push_back(DescribeFrame(frames[height], height, instructions[i]));
    }
    return stack;
}
