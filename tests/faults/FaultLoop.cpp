// Runs the compiler again and again and lets one call of one kind fail, the first one, then the second, until a run
// has no such call any more. Whatever fails: the outputs are both the old ones or both the new ones, as the exit
// status says; no temporary file is left; and a run that failed says so.

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

namespace fs = std::filesystem;

using Files = std::map<std::string, std::string>;   // name to bytes

struct CommandLine
{
    std::vector<std::string> arguments;
    std::vector<std::string> outputs;     // replaced together
    std::vector<std::string> others;      // what may be there besides, each whole: the old one, the new one or none
};

// A plain compile; one with a firmware library, functions and trees, whose library shows no process number; and one
// that stores a library.
static const CommandLine g_CommandLines[] = {
    {{"main.st", "-i", "target.xml"}, {"main.asm", "main.dbi"}, {}},
    {{"types.st", "main.st", "-x", "-k", "-o", "main.asm", "-i", "device.xml"},
     {"main.asm", "main.dbi"},
     {"types.st.xml", "main.st.xml", "FirmwareLibrary.~st0", "FirmwareLibrary.~st0.xml"}},
    {{"types.st", "-l", "stored.xml", "-o", "main.asm", "-i", "target.xml"}, {"main.asm", "main.dbi"}, {"stored.xml"}},
};

struct Run
{
    int status = -1;                      // the exit status; -1: ended by a signal
    bool hasFailed = false;               // a call was made to fail
    std::string printed;
    std::string complaints;               // of standard error
    Files files;
};

static std::string ReadFile(const fs::path& path)
{
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

static Files ReadFiles(const fs::path& folder)
{
    Files files;
    for (const fs::directory_entry& entry : fs::directory_iterator(folder))
        files[entry.path().filename().string()] = ReadFile(entry.path());
    return files;
}

class FaultLoop
{
public:
    FaultLoop(std::string compiler, std::string shim, fs::path inputs, fs::path scratch, std::string kind)
        : m_Compiler(std::move(compiler)), m_Shim(std::move(shim)), m_Inputs(std::move(inputs)),
          m_Scratch(std::move(scratch)), m_Kind(std::move(kind))
    {
    }

    int Run();

private:
    ::Run Start(const CommandLine& line, long number);
    void RunCommandLine(const CommandLine& line);
    void Check(const CommandLine& line, const ::Run& run);
    void Require(bool holds, const std::string& text);

    std::string m_Compiler;
    std::string m_Shim;
    fs::path m_Inputs;
    fs::path m_Scratch;
    std::string m_Kind;
    Files m_Old;                          // before a run
    Files m_New;                          // behind a run in which nothing failed
    std::string m_Where;
    long m_Faults = 0;
    int m_Failures = 0;
};

void FaultLoop::Require(bool holds, const std::string& text)
{
    if (holds) return;
    ++m_Failures;
    std::cout << m_Where << ": " << text << "\n";
}

[[noreturn]] static void Become(const std::string& compiler, const CommandLine& line, const fs::path& folder)
{
    std::vector<char*> arguments = {const_cast<char*>(compiler.c_str())};
    for (const std::string& argument : line.arguments) arguments.push_back(const_cast<char*>(argument.c_str()));
    arguments.push_back(nullptr);
    const int out = open((folder / "out").c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0600);
    const int err = open((folder / "err").c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0600);
    dup2(out, STDOUT_FILENO);
    dup2(err, STDERR_FILENO);
    close(out);
    close(err);
    if (chdir((folder / "work").c_str()) == 0) execv(compiler.c_str(), arguments.data());
    _exit(127);
}

::Run FaultLoop::Start(const CommandLine& line, long number)
{
    const fs::path work = m_Scratch / "work";
    const fs::path mark = m_Scratch / "mark";
    fs::remove_all(m_Scratch);
    fs::create_directories(m_Scratch);
    fs::copy(m_Inputs, work);
    for (const std::string& output : line.outputs) std::ofstream(work / output) << "earlier\n";
    m_Old = ReadFiles(work);

    const pid_t child = fork();
    if (child == 0) {
        setenv("SOURCE_DATE_EPOCH", "1704067200", 1);
        setenv("FAULT_KIND", m_Kind.c_str(), 1);
        setenv("FAULT_NUMBER", std::to_string(number).c_str(), 1);
        setenv("FAULT_MARK", mark.c_str(), 1);
        setenv("LD_PRELOAD", m_Shim.c_str(), 1);
        Become(m_Compiler, line, m_Scratch);
    }
    int result = 0;
    waitpid(child, &result, 0);
    ::Run run;
    run.status = WIFEXITED(result) ? WEXITSTATUS(result) : -1;
    run.hasFailed = fs::exists(mark);
    run.printed = ReadFile(m_Scratch / "out");
    run.complaints = ReadFile(m_Scratch / "err");
    run.files = ReadFiles(work);
    return run;
}

void FaultLoop::Check(const CommandLine& line, const ::Run& run)
{
    const bool isOld = [&] {
        for (const std::string& name : line.outputs)
            if (!run.files.contains(name) || run.files.at(name) != m_Old.at(name)) return false;
        return true;
    }();
    const bool isNew = [&] {
        for (const std::string& name : line.outputs)
            if (!run.files.contains(name) || run.files.at(name) != m_New.at(name)) return false;
        return true;
    }();
    Require(isOld || isNew, "one output is old and one new, or one is neither");
    Require(run.status == 0 || run.status == 1 || run.status == 2, "exit status " + std::to_string(run.status));
    Require(run.status != 0 || isNew, "exit status 0 with the old outputs");

    const bool isMemory = m_Kind == "memory";
    if (isMemory && run.status != 0) {
        Require(isOld, "the outputs were touched");
        const bool isOneLine = run.complaints.find('\n') == run.complaints.size() - 1;
        Require(!run.complaints.empty() && isOneLine, "no single line but: " + run.complaints);
        const bool isScanner = run.complaints == "out of dynamic memory in yy_create_buffer()\n";
        Require(run.status == (isScanner ? 2 : 1), "exit status " + std::to_string(run.status));
    }
    // What standard output could not take is not told on standard error.
    const bool isStandardOutput = isNew && run.complaints.empty();
    const bool isMissingSource = run.printed.find(" not found\n") != std::string::npos ||
                                 run.printed.find("XML file not found") != std::string::npos;
    const bool isReportedError = run.printed.find("error: ") != std::string::npos;
    Require(run.status == 0 || !run.complaints.empty() || isStandardOutput || isMissingSource || isReportedError,
            "a failure without a word");

    for (const auto& [name, bytes] : run.files) {
        const bool isOutput = std::find(line.outputs.begin(), line.outputs.end(), name) != line.outputs.end();
        const bool isOther = std::find(line.others.begin(), line.others.end(), name) != line.others.end();
        if (isOutput) continue;
        const bool wasThere = m_Old.contains(name) && m_Old.at(name) == bytes;
        const bool isWhole = isOther && m_New.contains(name) && m_New.at(name) == bytes;
        Require(wasThere || isWhole, "left behind or spoilt: " + name);
    }
    for (const auto& [name, bytes] : m_Old) Require(run.files.contains(name), "lost: " + name);
}

void FaultLoop::RunCommandLine(const CommandLine& line)
{
    m_Where = line.arguments.front();
    const ::Run whole = Start(line, 0);
    m_New = whole.files;
    Require(whole.status == 0 && !whole.hasFailed && whole.complaints.empty(), "fails of itself: " + whole.complaints);
    if (m_Failures > 0) return;
    for (long number = 1;; ++number) {
        m_Where = line.arguments.front() + " " + m_Kind + " " + std::to_string(number);
        const ::Run run = Start(line, number);
        Check(line, run);
        if (!run.hasFailed) {
            Require(run.status == 0, "exit status without a fault");
            return;
        }
        ++m_Faults;
        constexpr int enough = 20;
        if (m_Failures > enough) return;
    }
}

int FaultLoop::Run()
{
    for (const CommandLine& line : g_CommandLines) RunCommandLine(line);
    m_Where = m_Kind;
    Require(m_Faults > 0, "nothing was made to fail");
    std::cout << m_Faults << " calls failed one by one, " << m_Failures << " complaints\n";
    if (m_Failures == 0) fs::remove_all(m_Scratch);
    return m_Failures == 0 ? 0 : 1;
}

int main(int argc, char** argv)
{
    if (argc != 6) {
        std::cerr << "usage: fault_loop COMPILER SHIM INPUT_FOLDER SCRATCH_FOLDER KIND\n";
        return 2;
    }
    return FaultLoop(argv[1], argv[2], argv[3], argv[4], argv[5]).Run();
}
