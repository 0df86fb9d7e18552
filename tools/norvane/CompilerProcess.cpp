#include "norvane/CompilerProcess.h"

#include <cerrno>
#include <cstdlib>
#include <filesystem>
#include <sstream>

#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

namespace fs = std::filesystem;

CPrivateFolder::~CPrivateFolder()
{
    std::error_code failure;
    if (!m_Name.empty()) fs::remove_all(m_Name, failure);
}

bool CPrivateFolder::Make()
{
    std::error_code failure;
    std::string pattern = (fs::temp_directory_path(failure) / "norvane.XXXXXX").string();
    if (failure || !mkdtemp(pattern.data())) return false;
    m_Name = pattern;
    return true;
}

static bool IsOnPath(const std::string& program)
{
    const char* szPath = std::getenv("PATH");
    std::istringstream folders(szPath ? szPath : "");
    for (std::string folder; std::getline(folders, folder, ':');)
        if (access((folder + "/" + program).c_str(), X_OK) == 0) return true;
    return false;
}

std::string FindCompiler()
{
    std::error_code failure;
    const fs::path self = fs::read_symlink("/proc/self/exe", failure);
    for (const char* name : {"compiler", "norvane-compiler"}) {
        const fs::path beside = self.parent_path() / name;
        if (!failure && access(beside.c_str(), X_OK) == 0) return beside.string();
    }
    return IsOnPath("compiler") ? "compiler" : "norvane-compiler";
}

// Nothing here may allocate: other threads can hold what the new process would wait for.
[[noreturn]] static void BecomeCommand(char* const* arguments, const char* folder, const char* outputName,
                                       const char* errorName)
{
    constexpr int cannotRun = 127;
    const int flags = O_WRONLY | O_CREAT | O_TRUNC | O_APPEND | O_CLOEXEC;
    const int output = open(outputName, flags, 0600);
    const int errors = open(errorName, flags, 0600);
    if (output < 0 || errors < 0 || (*folder != '\0' && chdir(folder) != 0)) _exit(cannotRun);
    dup2(output, STDOUT_FILENO);
    dup2(errors, STDERR_FILENO);
    execvp(arguments[0], arguments);
    _exit(cannotRun);
}

int RunProcess(const std::vector<std::string>& command, const std::string& folder, const std::string& outputName,
               const std::string& errorName)
{
    std::vector<char*> arguments;
    for (const std::string& argument : command) arguments.push_back(const_cast<char*>(argument.c_str()));
    arguments.push_back(nullptr);
    const pid_t child = fork();
    if (child < 0) return -1;
    if (child == 0) BecomeCommand(arguments.data(), folder.c_str(), outputName.c_str(), errorName.c_str());
    int status = 0;
    while (waitpid(child, &status, 0) < 0)
        if (errno != EINTR) return -1;
    constexpr int cannotRun = 127;
    if (!WIFEXITED(status) || WEXITSTATUS(status) == cannotRun) return -1;
    return WEXITSTATUS(status);
}
