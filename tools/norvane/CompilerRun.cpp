#include "norvane/CompilerRun.h"

#include "files/FileSystem.h"
#include "machine/Image.h"

#include <filesystem>
#include <sstream>

namespace fs = std::filesystem;

// " - 2 error(s), 0 warning(s)": errors behind the parse leave the exit status alone.
static bool CountsNoErrors(const std::string& output)
{
    const std::size_t position = output.rfind(" error(s), ");
    if (position == std::string::npos) return false;
    const std::size_t begin = output.rfind(" - ", position);
    return begin != std::string::npos && output.substr(begin + 3, position - begin - 3) == "0";
}

int CCompilerRun::Run(const std::vector<std::string>& command, const std::string& folder, const std::string& outputName)
{
    return RunProcess(command, folder, outputName, outputName);
}

bool CCompilerRun::Compile(const std::vector<std::string>& sources, const std::string& target,
                           const std::vector<std::string>& options, std::string& error)
{
    if (!m_Folder.Make()) {
        error = "no folder for the compiler's files can be made";
        return false;
    }
    std::vector<std::string> command{FindCompiler()};
    for (const std::string& source : sources) {
        m_Given.push_back(source);
        m_Absolute.push_back(fs::absolute(source).lexically_normal().string());
        command.push_back(m_Absolute.back());
    }
    command.insert(command.end(), options.begin(), options.end());
    command.insert(command.end(), {"-i", fs::absolute(target).string(), "-o", "program.asm"});
    const std::string outputName = m_Folder.GetName() + "/printed";
    const int status = Run(command, m_Folder.GetName(), outputName);
    std::string printed;
    ReadWholeFile(outputName, printed);
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
