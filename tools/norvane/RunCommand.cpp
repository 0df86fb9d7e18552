#include "norvane/RunCommand.h"

#include "machine/Retain.h"
#include "norvane/LiveView.h"
#include "norvane/Session.h"
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
    ProgramArguments program;
    MachineArguments machine;
    std::int64_t scans = 1;
    bool hasScans = false;               // given by the user; a live run without it goes on until it is ended
    bool isLive = false;
    std::vector<std::string> settings;   // before the first scan
    std::vector<std::string> forced;     // before each scan
    std::vector<std::string> watched;
    std::string traceName;
    std::string retainName;
    bool retainByName = false;
};

struct Assignment
{
    NamedObject object;
    MachineValue value;
};

class CRun
{
public:
    explicit CRun(const RunArguments& arguments) : m_Arguments(arguments), m_Names(SplitNames(arguments.watched)) {}
    int Run();

private:
    bool Prepare();
    bool ReadAssignments(const std::vector<std::string>& texts, std::vector<Assignment>& assignments);
    bool Apply(const std::vector<Assignment>& assignments);
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

    const RunArguments& m_Arguments;
    std::vector<std::string> m_Names;    // of the watched values
    std::unique_ptr<CImage> m_pImage;
    std::unique_ptr<CMachine> m_pMachine;
    std::unique_ptr<CNames> m_pNames;
    std::unique_ptr<CTraceFile> m_pTrace;
    std::unique_ptr<CLiveView> m_pLive;  // null: rows are printed
    bool m_IsPaused = false;
    std::vector<NamedObject> m_Watched;
    std::vector<MachineValue> m_LastRow;
    std::vector<Assignment> m_Settings;
    std::vector<Assignment> m_Forced;
    std::int64_t m_ScanMicroseconds = 0;
};

}   // namespace

bool CRun::ReadAssignments(const std::vector<std::string>& texts, std::vector<Assignment>& assignments)
{
    for (const std::string& text : texts) {
        std::string name;
        std::string literal;
        std::string error;
        if (!SplitAssignment(text, name, literal)) return Fail(text + ": expected NAME=VALUE");
        const std::optional<NamedObject> object = m_pNames->Find(name, error);
        if (!object) return Fail(error);
        if (!object->IsScalar()) return Fail(name + ": is no single value");
        Assignment assignment{*object, {}};
        if (!ParseValue(literal, object->pType->kind, assignment.value, error)) return Fail(name + ": " + error);
        assignments.push_back(assignment);
    }
    return true;
}

bool CRun::Apply(const std::vector<Assignment>& assignments)
{
    std::string error;
    for (const Assignment& assignment : assignments)
        if (!m_pNames->Write(*m_pMachine, assignment.object, assignment.value, error)) return Fail(error);
    return true;
}

bool CRun::ReadWatched(std::vector<MachineValue>& values)
{
    std::string error;
    values.resize(m_Watched.size());
    for (std::size_t i = 0; i < m_Watched.size(); ++i)
        if (!m_pNames->Read(*m_pMachine, m_Watched[i], values[i], error)) return Fail(error);
    return true;
}

bool CRun::Prepare()
{
    std::string error;
    m_pImage = LoadProgram(m_Arguments.program, error);
    if (!m_pImage) return Fail(error);
    m_pMachine = std::make_unique<CMachine>(*m_pImage, m_Arguments.machine.options);
    m_pNames = std::make_unique<CNames>(*m_pImage);
    if (!ConfigureMachine(*m_pMachine, m_Arguments.machine, error)) return Fail(error);
    m_ScanMicroseconds = *ParseTime(m_Arguments.machine.scanTime);
    m_pMachine->SetSystemPrinter([](std::int32_t number) { fmt::print("SYS {}\n", number); });
    if (!ReadAssignments(m_Arguments.settings, m_Settings) || !ReadAssignments(m_Arguments.forced, m_Forced))
        return false;
    std::vector<ValueKind> kinds;
    for (const std::string& name : m_Names) {
        const std::optional<NamedObject> object = m_pNames->Find(name, error);
        if (!object) return Fail(error);
        if (!object->IsScalar()) return Fail(name + ": is no single value");
        m_Watched.push_back(*object);
        kinds.push_back(object->pType->kind);
    }
    if (!m_Arguments.traceName.empty()) {
        if (m_Watched.empty()) return Fail("--trace needs the names of --watch");
        m_pTrace = CTraceFile::Create(m_Arguments.traceName, m_Names, kinds, error);
        if (!m_pTrace) return Fail(error);
    }
    if (m_Arguments.retainName.empty()) return true;
    bool isFound = false;
    const CRetainFile retain(*m_pImage, *m_pNames);
    if (!retain.Load(m_Arguments.retainName, m_Arguments.retainByName, *m_pMachine, isFound, error)) return Fail(error);
    if (isFound) m_pMachine->SetWarmStart();
    return true;
}

// Only rows that tell something new.
void CRun::PrintRow(std::int64_t scan, const std::vector<MachineValue>& values)
{
    if (values.empty() || (scan > 1 && values == m_LastRow && scan != m_Arguments.scans)) return;
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
    const Clock::time_point due = Clock::now() + std::chrono::microseconds(m_ScanMicroseconds);
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
    for (const std::string& finding : m_pMachine->GetFindings()) fmt::print(stderr, "{}\n", finding);
    if (status == RunStatus::Trapped) {
        fmt::print(stderr, "{}\n", ToText(m_pMachine->GetTrap()));
        return g_ExitFailed;
    }
    return m_pMachine->GetFindings().empty() ? g_ExitFine : g_ExitFailed;
}

int CRun::RunScans()
{
    if (!OpenLive()) return g_ExitUnable;
    const std::int64_t last = m_pLive && !m_Arguments.hasScans ? INT64_MAX : m_Arguments.scans;
    RunStatus status = m_pMachine->Start();
    // Values of a user's own come behind the initial ones.
    if (status == RunStatus::Finished && !Apply(m_Settings)) return g_ExitUnable;
    std::vector<MachineValue> values;
    for (std::int64_t scan = 1; status == RunStatus::Finished && scan <= last; ++scan) {
        if (!Apply(m_Forced)) return g_ExitUnable;
        status = m_pMachine->RunScan();
        if (status != RunStatus::Finished) break;
        if (!ReadWatched(values)) return g_ExitUnable;
        if (m_pTrace) m_pTrace->Write(scan, (scan - 1) * m_ScanMicroseconds, values);
        if (!m_pLive) PrintRow(scan, values);
        else if (!GoesOnLive(scan, values)) break;
    }
    m_pLive.reset();
    if (m_Watched.empty() && status == RunStatus::Finished)
        fmt::print("{} scan(s) run, {} instruction(s) in the last\n", m_pMachine->GetScan(),
                   m_pMachine->GetInstructions());
    const int result = Report(status);
    std::string error;
    if (m_pTrace && !m_pTrace->Close()) {
        Fail(m_Arguments.traceName + ": could not be written");
        return g_ExitUnable;
    }
    if (status == RunStatus::Finished && !m_Arguments.retainName.empty() &&
        !CRetainFile(*m_pImage, *m_pNames).Save(m_Arguments.retainName, *m_pMachine, error)) {
        Fail(error);
        return g_ExitUnable;
    }
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
    pCommand->add_option("PROGRAM", arguments.program.files, "a compiled .asm, or sources in their order")->required();
    pCommand->add_option("-i,--target", arguments.program.target, "target description (needed for sources and %IX0.0)");
    pCommand->add_option("--compiler-option", arguments.program.compilerOptions, "for the sources, such as -o1")
        ->allow_extra_args(false);
    CLI::Option* pScans =
        pCommand->add_option("--scans", arguments.scans, "how many scans (1)")->check(CLI::NonNegativeNumber);
    pCommand->add_flag("--live", arguments.isLive,
                       "show the watched values in place, scan by scan: space pauses, s steps, q ends");
    pCommand->add_option("--set", arguments.settings, "NAME=VALUE before the first scan")->allow_extra_args(false);
    pCommand->add_option("--force", arguments.forced, "NAME=VALUE before each scan")->allow_extra_args(false);
    pCommand->add_option("--watch", arguments.watched, "names to show behind each scan, commas between them")
        ->allow_extra_args(false);
    pCommand->add_option("--trace", arguments.traceName, "write the watched values to a .csv or .vcd file");
    pCommand->add_option("--retain", arguments.retainName, "keep the retained variables in this file between runs");
    pCommand->add_flag("--retain-by-name", arguments.retainByName,
                       "carry over what still fits where the layout has changed");
    AddMachineArguments(*pCommand, arguments.machine);
    pCommand->callback([pArguments, pScans, &run] {
        pArguments->hasScans = pScans->count() > 0;
        run = [pArguments] { return CRun(*pArguments).Run(); };
    });
}
