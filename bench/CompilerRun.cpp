#include "CompilerRun.h"

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>

#include <fcntl.h>
#include <sys/resource.h>
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

CompilerRun::CompilerRun(const std::string& source)
{
    std::string pattern = (fs::temp_directory_path() / "norvane-bench-XXXXXX").string();
    if (!mkdtemp(pattern.data())) {
        std::perror("scratch folder");
        std::exit(2);
    }
    m_Folder = pattern;
    std::ofstream(m_Folder + "/target.xml") << g_Target;
    std::ofstream(m_Folder + "/main.st") << source;
}

CompilerRun::~CompilerRun()
{
    fs::remove_all(m_Folder);
}

double CompilerRun::MeasureSeconds() const
{
    const pid_t child = fork();
    if (child == 0) {
        if (chdir(m_Folder.c_str()) != 0) _exit(126);
        const int output = open("printed", O_WRONLY | O_CREAT | O_TRUNC, 0600);
        dup2(output, STDOUT_FILENO);
        execl(COMPILER_PATH, "compiler", "main.st", "-i", "target.xml", static_cast<char*>(nullptr));
        _exit(127);
    }
    int status = 0;
    rusage usage{};
    if (child < 0 || wait4(child, &status, 0, &usage) != child || !WIFEXITED(status) || WEXITSTATUS(status) != 0 ||
        !fs::exists(m_Folder + "/main.asm")) {
        std::fprintf(stderr, "the compile failed:\n");
        std::ifstream printed(m_Folder + "/printed");
        for (std::string line; std::getline(printed, line);) std::fprintf(stderr, "%.200s\n", line.c_str());
        std::exit(2);
    }
    const auto seconds = [](const timeval& time) {
        return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_usec) * 1e-6;
    };
    return seconds(usage.ru_utime) + seconds(usage.ru_stime);
}
