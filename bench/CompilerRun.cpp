#include "CompilerRun.h"

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>

#include <fcntl.h>
#include <linux/perf_event.h>
#include <sys/resource.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

namespace fs = std::filesystem;

// Areas and stacks as large as they can be: what is measured here is not what a small machine can hold.
static constexpr const char* g_Target = R"(<DEVICE><COMPILER><TARGET>
<IEC AllowedDataTypes="BOOL,INT,DINT,REAL" PointerType="DINT"/>
<COMPILER><DATAFORMAT>
<DATATYPE name="BOOL" size="1" align="1"/><DATATYPE name="INT" size="16" align="2"/>
<DATATYPE name="DINT" size="32" align="4"/><DATATYPE name="REAL" size="32" align="4"/>
</DATAFORMAT></COMPILER>
<VM><AREA name="GLOBAL" size="2000000000" code="1"/><AREA name="RETAIN" size="1000" code="2"/>
<PROGRAM name="main" id="1"/><RETURNSTACK size="2000000000" maxsize="2000000000"/></VM>
</TARGET></COMPILER></DEVICE>
)";

CompilerRun::CompilerRun(const std::vector<std::string>& sources)
    : m_Command{"compiler"}
{
    std::string pattern = (fs::temp_directory_path() / "norvane-bench-XXXXXX").string();
    if (!mkdtemp(pattern.data())) {
        std::perror("scratch folder");
        std::exit(2);
    }
    m_Folder = pattern;
    std::ofstream(m_Folder + "/target.xml") << g_Target;
    for (const std::string& source : sources) {
        const std::string name = std::to_string(m_Command.size()) + ".st";
        std::ofstream(m_Folder + "/" + name) << source;
        m_Command.push_back(name);
    }
    m_Command.insert(m_Command.end(), {"-i", "target.xml", "-o", "main.asm"});
}

CompilerRun::~CompilerRun()
{
    fs::remove_all(m_Folder);
}

// A counter of the instructions of the process from its exec on; -1 where the system has none for us.
static int OpenInstructionCounter(pid_t process)
{
    perf_event_attr wanted{};
    wanted.size = sizeof wanted;
    wanted.type = PERF_TYPE_HARDWARE;
    wanted.config = PERF_COUNT_HW_INSTRUCTIONS;
    wanted.disabled = 1;
    wanted.enable_on_exec = 1;
    wanted.exclude_kernel = 1;
    wanted.exclude_hv = 1;
    return static_cast<int>(syscall(SYS_perf_event_open, &wanted, process, -1, -1, PERF_FLAG_FD_CLOEXEC));
}

static double ReadCounter(int counter)
{
    std::uint64_t count = 0;
    const bool isRead = counter >= 0 && read(counter, &count, sizeof count) == sizeof count;
    if (counter >= 0) close(counter);
    return isRead ? static_cast<double>(count) : 0;
}

static double ToSeconds(const timeval& time)
{
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_usec) * 1e-6;
}

// In the child: becomes the compiler.
void CompilerRun::Execute() const
{
    if (chdir(m_Folder.c_str()) != 0) _exit(126);
    const int output = open("printed", O_WRONLY | O_CREAT | O_TRUNC, 0600);
    dup2(output, STDOUT_FILENO);
    std::vector<char*> arguments;
    for (const std::string& argument : m_Command) arguments.push_back(const_cast<char*>(argument.c_str()));
    arguments.push_back(nullptr);
    execv(COMPILER_PATH, arguments.data());
    _exit(127);
}

// The child waits until its counter stands.
CompileCost CompilerRun::Measure() const
{
    int gate[2];
    if (pipe(gate) != 0) std::exit(2);
    const pid_t child = fork();
    if (child == 0) {
        char go = 0;
        close(gate[1]);
        if (read(gate[0], &go, 1) != 0) _exit(126);   // nothing comes: the end of the pipe is the sign
        Execute();
    }
    close(gate[0]);
    const int counter = child > 0 ? OpenInstructionCounter(child) : -1;
    close(gate[1]);
    int status = 0;
    rusage usage{};
    if (child < 0 || wait4(child, &status, 0, &usage) != child || !WIFEXITED(status) || WEXITSTATUS(status) != 0 ||
        !fs::exists(m_Folder + "/main.asm")) {
        std::fprintf(stderr, "the compile failed:\n");
        std::ifstream printed(m_Folder + "/printed");
        for (std::string line; std::getline(printed, line);) std::fprintf(stderr, "%.200s\n", line.c_str());
        std::exit(2);
    }
    return {ReadCounter(counter), ToSeconds(usage.ru_utime) + ToSeconds(usage.ru_stime)};
}
