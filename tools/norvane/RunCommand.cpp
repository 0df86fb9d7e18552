#include "norvane/RunCommand.h"

#include "norvane/LiveView.h"
#include "norvane/ProgramRun.h"
#include "norvane/TraceFile.h"

#include <CLI/CLI.hpp>
#include <fmt/format.h>

#include <algorithm>
#include <chrono>
#include <cstdio>

namespace
{

struct RunArguments
{
    RunSettings settings;
    bool isLive = false;                 // goes on until it is ended, if no number of scans is given
    std::vector<std::string> watched;
    std::string traceName;
};

class CRun
{
public:
    explicit CRun(const RunArguments& arguments)
        : m_Arguments(arguments), m_Names(SplitNames(arguments.watched)), m_Program(arguments.settings)
    {
    }
    int Run();

private:
    bool Prepare();
    bool FindWatched();
    bool ReadWatched(std::vector<MachineValue>& values);
    void PrintRow(std::int64_t scan, const std::vector<MachineValue>& values);
    int RunScans();
    bool OpenLive();
    bool GoesOnLive(std::int64_t scan, const std::vector<MachineValue>& values);
    int Report(RunStatus status);
    bool Fail(const std::string& text)
    {
        fmt::print(stderr, "norvane: {}\n", text);
        return false;
    }
    int Unable(const std::string& text)
    {
        Fail(text);
        return g_ExitUnable;
    }

    const RunArguments& m_Arguments;
    std::vector<std::string> m_Names;    // of the watched values
    CProgramRun m_Program;
    std::unique_ptr<CTraceFile> m_pTrace;
    std::unique_ptr<CLiveView> m_pLive;  // null: rows are printed
    bool m_IsPaused = false;
    std::vector<NamedObject> m_Watched;
    std::vector<MachineValue> m_LastRow;
};

}   // namespace

bool CRun::ReadWatched(std::vector<MachineValue>& values)
{
    std::string error;
    values.resize(m_Watched.size());
    for (std::size_t i = 0; i < m_Watched.size(); ++i)
        if (!m_Program.m_pNames->Read(*m_Program.m_pMachine, m_Watched[i], values[i], error)) return Fail(error);
    return true;
}

bool CRun::Prepare()
{
    std::string error;
    if (!m_Program.Prepare(PrintNote, error)) return Fail(error);
    m_Program.m_pMachine->SetSystemPrinter([](std::int32_t number) { fmt::print("SYS {}\n", number); });
    return FindWatched();
}

bool CRun::FindWatched()
{
    std::string error;
    std::vector<ValueKind> kinds;
    for (const std::string& name : m_Names) {
        const std::optional<NamedObject> object = m_Program.m_pNames->Find(name, error);
        if (!object) return Fail(error);
        if (!object->IsScalar()) return Fail(name + ": is no single value");
        m_Watched.push_back(*object);
        kinds.push_back(object->pType->kind);
    }
    if (m_Arguments.traceName.empty()) return true;
    if (m_Watched.empty()) return Fail("--trace needs the names of --watch");
    m_pTrace = CTraceFile::Create(m_Arguments.traceName, m_Names, kinds, error);
    return m_pTrace ? true : Fail(error);
}

// Only rows that tell something new.
void CRun::PrintRow(std::int64_t scan, const std::vector<MachineValue>& values)
{
    if (values.empty() || (scan > 1 && values == m_LastRow && scan != m_Arguments.settings.scans)) return;
    m_LastRow = values;
    std::string row = fmt::format("scan {}:", scan);
    for (std::size_t i = 0; i < values.size(); ++i)
        row += fmt::format(" {}={}", m_Names[i], ToText(values[i]));
    fmt::print("{}\n", row);
}

bool CRun::OpenLive()
{
    if (!m_Arguments.isLive) return true;
    if (m_Watched.empty()) return Fail("--live needs the names of --watch");
    auto pLive = std::make_unique<CLiveView>(m_Names);
    if (!pLive->Open()) return Fail("--live needs a terminal");
    m_pLive = std::move(pLive);
    return true;
}

// Shows the scan and waits until the next one is due. False when the user ends the run.
bool CRun::GoesOnLive(std::int64_t scan, const std::vector<MachineValue>& values)
{
    using Clock = std::chrono::steady_clock;
    const Clock::time_point due = Clock::now() + std::chrono::microseconds(m_Program.m_ScanMicroseconds);
    m_pLive->Show(scan, values, m_IsPaused);
    for (;;) {
        const auto left = std::chrono::duration_cast<std::chrono::milliseconds>(due - Clock::now()).count();
        constexpr std::int64_t longest = 60'000;
        const int wait = m_IsPaused ? -1 : static_cast<int>(std::clamp<std::int64_t>(left, 0, longest));
        switch (m_pLive->WaitForKey(wait)) {
        case CLiveView::Key::Pause:
            m_IsPaused = !m_IsPaused;
            m_pLive->Show(scan, values, m_IsPaused);
            break;
        case CLiveView::Key::Step: m_IsPaused = true; return true;
        case CLiveView::Key::Quit: return false;
        case CLiveView::Key::None:
            if (!m_IsPaused && left <= 0) return true;
            break;
        }
    }
}

int CRun::Report(RunStatus status)
{
    std::fflush(stdout);
    for (const std::string& finding : m_Program.m_pMachine->GetFindings()) fmt::print(stderr, "{}\n", finding);
    if (status == RunStatus::Trapped) {
        fmt::print(stderr, "{}\n", ToText(m_Program.m_pMachine->GetTrap()));
        return g_ExitFailed;
    }
    return m_Program.m_pMachine->GetFindings().empty() ? g_ExitFine : g_ExitFailed;
}

int CRun::RunScans()
{
    if (!OpenLive()) return g_ExitUnable;
    const std::int64_t last = m_pLive && !m_Arguments.settings.hasScans ? INT64_MAX : m_Arguments.settings.scans;
    std::string error;
    RunStatus status = m_Program.m_pMachine->Start();
    // Values of a user's own come behind the initial ones.
    if (status == RunStatus::Finished && !m_Program.ApplySettings(error)) return Unable(error);
    std::vector<MachineValue> values;
    for (std::int64_t scan = 1; status == RunStatus::Finished && scan <= last; ++scan) {
        if (!m_Program.ApplyForced(error)) return Unable(error);
        status = m_Program.m_pMachine->RunScan();
        if (status != RunStatus::Finished) break;
        if (!ReadWatched(values)) return g_ExitUnable;
        if (m_pTrace) m_pTrace->Write(scan, (scan - 1) * m_Program.m_ScanMicroseconds, values);
        if (!m_pLive) PrintRow(scan, values);
        else if (!GoesOnLive(scan, values)) break;
    }
    m_pLive.reset();
    if (m_Watched.empty() && status == RunStatus::Finished)
        fmt::print("{} scan(s) run, {} instruction(s) in the last\n", m_Program.m_pMachine->GetScan(),
                   m_Program.m_pMachine->GetInstructions());
    const int result = Report(status);
    if (m_pTrace && !m_pTrace->Close()) return Unable(m_Arguments.traceName + ": could not be written");
    if (status == RunStatus::Finished && !m_Program.SaveRetained(error)) return Unable(error);
    return result;
}

int CRun::Run()
{
    if (!Prepare()) return g_ExitUnable;
    return RunScans();
}

void AddRunCommand(CLI::App& app, std::function<int()>& run)
{
    auto pArguments = std::make_shared<RunArguments>();
    RunArguments& arguments = *pArguments;
    CLI::App* pCommand = app.add_subcommand("run", "run a program scan by scan");
    pCommand->add_flag("--live", arguments.isLive,
                       "show the watched values in place, scan by scan: space pauses, s steps, q ends");
    pCommand->add_option("--watch", arguments.watched, "names to show behind each scan, commas between them")
        ->allow_extra_args(false);
    pCommand->add_option("--trace", arguments.traceName, "write the watched values to a .csv or .vcd file");
    AddRunSettings(*pCommand, arguments.settings);
    pCommand->callback([pArguments, &run] { run = [pArguments] { return CRun(*pArguments).Run(); }; });
}
