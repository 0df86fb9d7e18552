#include "norvane/ProjectBuild.h"

#include "files/FileSystem.h"
#include "norvane/DependencyFile.h"
#include "norvane/ProgramBuild.h"
#include "norvane/Session.h"

#include <fmt/format.h>

#include <algorithm>
#include <condition_variable>
#include <cstdio>
#include <filesystem>
#include <memory>
#include <mutex>
#include <thread>

#include <unistd.h>

namespace
{

// What became of one program.
struct Outcome
{
    bool isDone = false;
    int status = g_ExitUnable;
    std::string text;                      // all that is to be printed of it
    std::string failure;                   // why it couldn't be built
    CFindings findings;                    // kept for the format that needs all of them at once
};

// The programs in work: threads take one after the other, and whoever waits for the output gets it in order.
class CProjectRun
{
public:
    CProjectRun(const std::vector<ProjectProgram>& programs, const BuildSettings& settings)
        : m_Programs(programs), m_Settings(settings), m_Outcomes(programs.size())
    {
    }
    int Run(std::size_t threadCount);

private:
    void Work();
    void BuildOne(const ProjectProgram& program, Outcome& outcome);
    void Print(const Outcome& outcome, std::size_t index);
    void ShowProgress(std::size_t done) const;
    int Finish() const;
    std::string Format(const CFindings& findings, const ProjectProgram& program) const;

    const std::vector<ProjectProgram>& m_Programs;
    const BuildSettings& m_Settings;
    std::vector<Outcome> m_Outcomes;
    std::size_t m_Next = 0;
    std::size_t m_DoneCount = 0;
    std::mutex m_Mutex;                    // guards all of the above
    std::mutex m_PlaceMutex;               // outputs take their places one after the other
    std::condition_variable m_IsOneDone;
    bool m_HasTerminal = isatty(STDERR_FILENO) == 1;
};

}   // namespace

std::string CProjectRun::Format(const CFindings& findings, const ProjectProgram& program) const
{
    if (m_Settings.format == ReportFormat::Json) return FormatJson(findings, program.label);
    if (m_Settings.format == ReportFormat::Sarif) return {};
    return FormatReport(findings, m_Settings.GetStyle());
}

void CProjectRun::BuildOne(const ProjectProgram& program, Outcome& outcome)
{
    const OutputNames names(program.output);
    CCompilation compilation;
    if (!compilation.Run({program.sources, program.target, program.options, program.name})) {
        outcome.failure = compilation.m_Failure;
        return;
    }
    ApplyNotePolicy(compilation.m_Findings, m_Settings.notes);
    outcome.text = Format(compilation.m_Findings, program);
    outcome.status = m_Settings.IsAccepted(compilation.m_Findings) ? g_ExitFine : g_ExitFailed;
    if (outcome.status == g_ExitFine) {
        const std::lock_guard lock(m_PlaceMutex);
        if (!PlaceOutputs(compilation, names, outcome.failure)) outcome.status = g_ExitUnable;
    }
    if (m_Settings.format == ReportFormat::Sarif) outcome.findings = std::move(compilation.m_Findings);
}

void CProjectRun::Work()
{
    std::unique_lock lock(m_Mutex);
    while (m_Next < m_Programs.size()) {
        const std::size_t index = m_Next++;
        lock.unlock();
        BuildOne(m_Programs[index], m_Outcomes[index]);
        lock.lock();
        m_Outcomes[index].isDone = true;
        ++m_DoneCount;
        m_IsOneDone.notify_one();
    }
}

// On a line of its own, which the next output writes over.
void CProjectRun::ShowProgress(std::size_t done) const
{
    if (!m_HasTerminal) return;
    if (done < m_Programs.size()) fmt::print(stderr, "\r[{}/{}] ", done, m_Programs.size());
    else fmt::print(stderr, "\r\x1b[K");
    std::fflush(stderr);
}

void CProjectRun::Print(const Outcome& outcome, std::size_t index)
{
    if (m_HasTerminal && !(outcome.text.empty() && outcome.failure.empty())) fmt::print(stderr, "\r\x1b[K");
    std::fwrite(outcome.text.data(), 1, outcome.text.size(), stdout);
    std::fflush(stdout);
    if (!outcome.failure.empty()) fmt::print(stderr, "norvane: {}: {}\n", m_Programs[index].label, outcome.failure);
}

int CProjectRun::Finish() const
{
    int status = g_ExitFine;
    std::vector<const CFindings*> runs;
    for (const Outcome& outcome : m_Outcomes) {
        status = std::max(status, outcome.status);
        runs.push_back(&outcome.findings);
    }
    if (m_Settings.format == ReportFormat::Sarif) fmt::print("{}", FormatSarif(runs, m_Settings.showsAll));
    if (m_Settings.format != ReportFormat::Text) return status;
    const auto failed = std::count_if(m_Outcomes.begin(), m_Outcomes.end(),
                                      [](const Outcome& outcome) { return outcome.status != g_ExitFine; });
    fmt::print("{} of {} programs built\n", m_Outcomes.size() - static_cast<std::size_t>(failed), m_Outcomes.size());
    return status;
}

int CProjectRun::Run(std::size_t threadCount)
{
    std::vector<std::thread> threads;
    for (std::size_t i = 0; i < std::min(threadCount, m_Programs.size()); ++i) threads.emplace_back([this] { Work(); });
    for (std::size_t index = 0; index < m_Programs.size(); ++index) {
        std::unique_lock lock(m_Mutex);
        while (!m_Outcomes[index].isDone) {
            ShowProgress(m_DoneCount);
            m_IsOneDone.wait(lock);
        }
        const std::size_t done = m_DoneCount;
        lock.unlock();
        Print(m_Outcomes[index], index);
        ShowProgress(done);
    }
    for (std::thread& thread : threads) thread.join();
    return Finish();
}

static bool WriteProjectDependencies(const ProjectArguments& arguments, const std::string& projectName,
                                     const std::vector<ProjectProgram>& programs, std::string& error)
{
    if (arguments.dependencyName.empty()) return true;
    std::vector<std::string> made;
    std::vector<std::string> read{projectName};
    for (const ProjectProgram& program : programs) {
        const OutputNames names(program.output);
        made.insert(made.end(), {names.text, names.debug});
        read.insert(read.end(), program.sources.begin(), program.sources.end());
        read.push_back(program.target);
    }
    read.insert(read.end(), arguments.responseFiles.begin(), arguments.responseFiles.end());
    std::sort(read.begin(), read.end());
    read.erase(std::unique(read.begin(), read.end()), read.end());
    return WriteTextFile(arguments.dependencyName, FormatDependencies(made, read), error);
}

static int Refuse(const std::string& reason)
{
    fmt::print(stderr, "norvane: {}\n", reason);
    return g_ExitUnable;
}

int BuildProject(const ProjectArguments& arguments)
{
    std::string text;
    if (IsDirectory(arguments.fileName) || !ReadWholeFile(arguments.fileName, text))
        return Refuse(arguments.fileName + ": cannot be read");
    const std::filesystem::path path(arguments.fileName);
    std::error_code failure;
    ProjectArguments own = arguments;
    if (path.has_parent_path()) {
        // Where the user stands, the other files are named from there.
        if (!own.dependencyName.empty()) own.dependencyName = std::filesystem::absolute(own.dependencyName).string();
        for (std::string& name : own.responseFiles) name = std::filesystem::absolute(name).string();
        std::filesystem::current_path(path.parent_path(), failure);
        if (failure) return Refuse(path.parent_path().string() + ": cannot be entered");
    }
    CProjectFile project;
    if (!project.Parse(text)) return Refuse(arguments.fileName + ": " + project.m_Failure);
    const unsigned cores = std::max(std::thread::hardware_concurrency(), 1u);
    const std::size_t threads = own.jobs > 0 ? static_cast<std::size_t>(own.jobs) : cores;
    const int status = CProjectRun(project.m_Programs, own.settings).Run(threads);
    std::string error;
    if (status == g_ExitFine && !WriteProjectDependencies(own, path.filename().string(), project.m_Programs, error))
        return Refuse(error);
    return status;
}
