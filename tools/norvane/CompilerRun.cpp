#include "norvane/CompilerRun.h"

#include "machine/Image.h"

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <sstream>

#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

namespace fs = std::filesystem;

static std::string FindCompiler()
{
    std::error_code failure;
    const fs::path self = fs::read_symlink("/proc/self/exe", failure);
    const fs::path beside = self.parent_path() / "compiler";
    if (!failure && access(beside.c_str(), X_OK) == 0) return beside.string();
    return "compiler";
}

CCompilerRun::~CCompilerRun()
{
    std::error_code failure;
    if (!m_Folder.empty()) fs::remove_all(m_Folder, failure);
}

int CCompilerRun::Run(const std::vector<std::string>& command, const std::string& folder, const std::string& outputName)
{
    std::vector<char*> arguments;
    for (const std::string& argument : command) arguments.push_back(const_cast<char*>(argument.c_str()));
    arguments.push_back(nullptr);
    const pid_t child = fork();
    if (child < 0) return -1;
    if (child == 0) {
        const int output = open(outputName.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0600);
        constexpr int cannotRun = 127;
        if (output < 0 || chdir(folder.c_str()) != 0) _exit(cannotRun);
        dup2(output, STDOUT_FILENO);
        dup2(output, STDERR_FILENO);
        execvp(arguments.front(), arguments.data());
        _exit(cannotRun);
    }
    int status = 0;
    while (waitpid(child, &status, 0) < 0)
        if (errno != EINTR) return -1;
    constexpr int cannotRun = 127;
    if (!WIFEXITED(status) || WEXITSTATUS(status) == cannotRun) return -1;
    return WEXITSTATUS(status);
}

// " - 2 error(s), 0 warning(s)": errors behind the parse leave the exit status alone.
static bool CountsNoErrors(const std::string& output)
{
    const std::size_t position = output.rfind(" error(s), ");
    if (position == std::string::npos) return false;
    const std::size_t begin = output.rfind(" - ", position);
    return begin != std::string::npos && output.substr(begin + 3, position - begin - 3) == "0";
}

bool CCompilerRun::Compile(const std::vector<std::string>& sources, const std::string& target,
                           const std::vector<std::string>& options, std::string& error)
{
    std::error_code failure;
    std::string pattern = (fs::temp_directory_path(failure) / "norvane.XXXXXX").string();
    if (failure || !mkdtemp(pattern.data())) {
        error = "no folder for the compiler's files can be made";
        return false;
    }
    m_Folder = pattern;

    std::vector<std::string> command{FindCompiler()};
    for (const std::string& source : sources) {
        m_Given.push_back(source);
        m_Absolute.push_back(fs::absolute(source).lexically_normal().string());
        command.push_back(m_Absolute.back());
    }
    command.insert(command.end(), options.begin(), options.end());
    command.insert(command.end(), {"-i", fs::absolute(target).string(), "-o", "program.asm"});
    const std::string outputName = m_Folder + "/printed";
    const int status = Run(command, m_Folder, outputName);
    std::ifstream file(outputName, std::ios::binary);
    const std::string printed{std::istreambuf_iterator<char>(file), {}};
    if (status < 0) error = "the compiler could not be run: " + command.front();
    else if (status != 0 || !CountsNoErrors(printed)) error = "the sources do not compile:\n" + printed;
    else CollectNotes(printed, target);
    return error.empty();
}

//	tank.st(12,5) : note N5: a literal FALSE in front of ELSIF: ...
void CCompilerRun::CollectNotes(const std::string& printed, const std::string& target)
{
    std::istringstream stream(printed);
    for (std::string line; std::getline(stream, line);) {
        if (line.find(" : note N") == std::string::npos) continue;
        const std::string absoluteTarget = std::filesystem::absolute(target).string();
        if (line.starts_with(absoluteTarget)) line.replace(0, absoluteTarget.size(), target);
        for (std::size_t i = 0; i < m_Absolute.size(); ++i) {
            if (!line.starts_with(m_Absolute[i] + "(")) continue;
            line.replace(0, m_Absolute[i].size(), m_Given[i]);
            break;
        }
        m_Notes.push_back(line);
    }
}

void CCompilerRun::RestoreSourceNames(CImage& image) const
{
    for (std::string& name : image.m_DebugInfo.m_Sources)
        for (std::size_t i = 0; i < m_Absolute.size(); ++i)
            if (name == m_Absolute[i]) {
                name = m_Given[i];
                break;
            }
}
