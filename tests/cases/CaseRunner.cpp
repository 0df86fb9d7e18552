// Runs one whole compile and compares what it leaves.
//
// A case is a folder. Its files are copied to a scratch folder, where `cmd` (a shell script; without it
// "compiler main.st -i target.xml") runs with the compiler under test on the path. Then:
//   stdout       is what was printed, byte for byte; or stdout.part, lines that stand in it one behind the other
//   stderr       likewise; without it nothing may have been printed there; or stderr.part
//   status       is the exit status; without it 0
//   expected/F   is the file F that the run leaves, byte for byte
//   contains/F   are lines that stand in F one behind the other; F.1, F.2 and so on name further stretches
//   absent       names files, one a line, that must not be there
//   shows/F      holds single lines, each of which must stand in F somewhere;   lacks/F   lines that must not
// A case without target.xml of its own takes the one beside this program. Source files are dated 2024-01-01
// 00:00:00 UTC, which gives the file time -989724672.

#include <cstdlib>
#include <ctime>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>
#include <string>
#include <string_view>
#include <vector>

#include <fcntl.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

namespace fs = std::filesystem;

static std::string ReadFile(const fs::path& path)
{
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

static std::vector<std::string_view> SplitLines(std::string_view text)
{
    std::vector<std::string_view> lines;
    while (!text.empty()) {
        const std::size_t end = text.find('\n');
        lines.push_back(text.substr(0, end == std::string_view::npos ? end : end + 1));
        text.remove_prefix(lines.back().size());
    }
    return lines;
}

// Control characters made visible, so that a tab and a blank look different.
static std::string Show(std::string_view line)
{
    std::string shown;
    for (const char c : line) {
        if (c == '\t') shown += "\\t";
        else if (c == '\n') shown += "\\n";
        else if (c == '\r') shown += "\\r";
        else shown += c;
    }
    return shown;
}

class CaseRun
{
public:
    CaseRun(fs::path folder, fs::path scratch) : m_Folder(std::move(folder)), m_Scratch(std::move(scratch)) {}

    int Run(const fs::path& compiler);

private:
    void Prepare(const fs::path& compiler);
    void Execute();
    void CheckPrinted(const std::string& name);
    void CheckFiles();
    void CheckWhole(const std::string& name, std::string_view expected, std::string_view actual);
    void CheckStretch(const std::string& name, std::string_view expected, std::string_view actual);
    void CheckLines(const std::string& name, std::string_view lines, std::string_view actual, bool mustStand);
    void Fail(const std::string& text);
    fs::path FindResult(std::string name) const;

    fs::path m_Folder;
    fs::path m_Scratch;
    int m_Failures = 0;
    int m_Checks = 0;
};

void CaseRun::Fail(const std::string& text)
{
    ++m_Failures;
    std::cout << m_Folder.filename().string() << ": " << text << "\n";
}

void CaseRun::Prepare(const fs::path& compiler)
{
    fs::remove_all(m_Scratch);
    fs::create_directories(m_Scratch);
    const fs::path defaultTarget = fs::path(CASES_FOLDER) / "target.xml";
    fs::copy_file(defaultTarget, m_Scratch / "target.xml");
    for (const fs::directory_entry& entry : fs::directory_iterator(m_Folder)) {
        const std::string name = entry.path().filename().string();
        if (entry.is_regular_file())
            fs::copy_file(entry.path(), m_Scratch / name, fs::copy_options::overwrite_existing);
    }
    // The expectations of what is printed must not be in the way of the run's own files.
    for (const char* name : {"stdout", "stderr", "status", "stdout.part", "stderr.part", "absent"})
        fs::remove(m_Scratch / name);

    constexpr std::time_t newYear2024 = 1704067200;
    for (const fs::directory_entry& entry : fs::directory_iterator(m_Scratch)) {
        const timespec times[2] = {{newYear2024, 0}, {newYear2024, 0}};
        utimensat(AT_FDCWD, entry.path().c_str(), times, 0);
    }
    setenv("TZ", "UTC", 1);
    setenv("PATH", (compiler.parent_path().string() + ":" + std::getenv("PATH")).c_str(), 1);
}

void CaseRun::Execute()
{
    const fs::path script = m_Folder / "cmd";
    const std::string command = fs::exists(script) ? ". ./cmd" : "compiler main.st -i target.xml";
    const std::string line = "cd '" + m_Scratch.string() + "' && { " + command + "\n} > .stdout 2> .stderr";
    const int result = std::system(line.c_str());
    const int status = WIFEXITED(result) ? WEXITSTATUS(result) : -1;
    ++m_Checks;
    const fs::path expectation = m_Folder / "status";
    const int expected = fs::exists(expectation) ? std::atoi(ReadFile(expectation).c_str()) : 0;
    if (status != expected) Fail("exit status " + std::to_string(status) + ", expected " + std::to_string(expected));
}

void CaseRun::CheckWhole(const std::string& name, std::string_view expected, std::string_view actual)
{
    ++m_Checks;
    if (expected == actual) return;
    const std::vector<std::string_view> want = SplitLines(expected);
    const std::vector<std::string_view> have = SplitLines(actual);
    std::size_t i = 0;
    while (i < want.size() && i < have.size() && want[i] == have[i]) ++i;
    Fail(name + " differs in line " + std::to_string(i + 1) +
         "\n  expected: " + (i < want.size() ? Show(want[i]) : "(end of file)") +
         "\n  actual:   " + (i < have.size() ? Show(have[i]) : "(end of file)"));
}

void CaseRun::CheckStretch(const std::string& name, std::string_view expected, std::string_view actual)
{
    ++m_Checks;
    if (expected.empty()) return Fail(name + ": an empty stretch shows nothing");
    const std::string padded = "\n" + std::string(actual);
    if (padded.find("\n" + std::string(expected)) != std::string::npos) return;

    // Show where it comes nearest: the place with the most equal lines from the first one on.
    const std::vector<std::string_view> want = SplitLines(expected);
    const std::vector<std::string_view> have = SplitLines(actual);
    std::size_t best = 0;
    std::size_t bestStart = 0;
    for (std::size_t start = 0; start < have.size(); ++start) {
        std::size_t i = 0;
        while (i < want.size() && start + i < have.size() && want[i] == have[start + i]) ++i;
        if (i <= best) continue;
        best = i;
        bestStart = start;
    }
    const std::size_t line = bestStart + best;
    Fail(name + " does not hold the stretch; its first " + std::to_string(best) + " line(s) stand at line " +
         std::to_string(bestStart + 1) + "\n  expected: " + (best < want.size() ? Show(want[best]) : "(end)") +
         "\n  actual:   " + (line < have.size() ? Show(have[line]) : "(end of file)"));
}

void CaseRun::CheckLines(const std::string& name, std::string_view lines, std::string_view actual, bool mustStand)
{
    const std::vector<std::string_view> have = SplitLines(actual);
    for (const std::string_view line : SplitLines(lines)) {
        ++m_Checks;
        bool stands = false;
        for (const std::string_view candidate : have) stands = stands || candidate == line;
        if (stands != mustStand) Fail(name + (mustStand ? " lacks the line: " : " has the line: ") + Show(line));
    }
}

void CaseRun::CheckPrinted(const std::string& name)
{
    const std::string actual = ReadFile(m_Scratch / ("." + name));
    if (fs::exists(m_Folder / (name + ".part"))) {
        CheckStretch(name, ReadFile(m_Folder / (name + ".part")), actual);
        return;
    }
    if (fs::exists(m_Folder / name) || name == "stderr") CheckWhole(name, ReadFile(m_Folder / name), actual);
}

// "a.asm.2" is the second stretch of a.asm, unless the run left a file of just that name.
fs::path CaseRun::FindResult(std::string name) const
{
    if (fs::exists(m_Scratch / name)) return m_Scratch / name;
    const std::size_t dot = name.rfind('.');
    if (dot != std::string::npos && name.find_first_not_of("0123456789", dot + 1) == std::string::npos) name.erase(dot);
    return m_Scratch / name;
}

void CaseRun::CheckFiles()
{
    for (const char* kind : {"expected", "contains", "shows", "lacks"}) {
        if (!fs::exists(m_Folder / kind)) continue;
        for (const fs::directory_entry& entry : fs::directory_iterator(m_Folder / kind)) {
            const std::string name = entry.path().filename().string();
            const std::string expected = ReadFile(entry.path());
            const fs::path result = FindResult(name);
            if (!fs::is_regular_file(result)) {
                Fail(name + " is missing");
                continue;
            }
            const std::string actual = ReadFile(result);
            if (kind == std::string_view("expected")) CheckWhole(name, expected, actual);
            else if (kind == std::string_view("contains")) CheckStretch(name, expected, actual);
            else CheckLines(name, expected, actual, kind == std::string_view("shows"));
        }
    }
    const std::string absent = ReadFile(m_Folder / "absent");
    for (std::string_view line : SplitLines(absent)) {
        if (line.ends_with('\n')) line.remove_suffix(1);
        ++m_Checks;
        if (fs::exists(m_Scratch / line)) Fail(std::string(line) + " is there and must not be");
    }
}

int CaseRun::Run(const fs::path& compiler)
{
    Prepare(compiler);
    Execute();
    CheckPrinted("stdout");
    CheckPrinted("stderr");
    CheckFiles();
    // The exit status and an empty standard error alone show little.
    if (m_Checks < 3) Fail("the case checks neither output nor files");
    if (m_Failures == 0) fs::remove_all(m_Scratch);
    else std::cout << "what the run left is in " << m_Scratch.string() << "\n";
    return m_Failures == 0 ? 0 : 1;
}

int main(int argc, char** argv)
{
    if (argc != 4) {
        std::cerr << "usage: case_runner COMPILER CASE_FOLDER SCRATCH_FOLDER\n";
        return 2;
    }
    return CaseRun(fs::absolute(argv[2]), fs::absolute(argv[3])).Run(fs::absolute(argv[1]));
}
