#include "norvane/ProgramBuild.h"

#include "driver/OutputPair.h"
#include "files/FileSystem.h"

#include <filesystem>
#include <fstream>

namespace fs = std::filesystem;

OutputNames::OutputNames(const std::string& name)
{
    const std::string ending = ".asm";
    const std::string base = name.ends_with(ending) ? name.substr(0, name.size() - ending.size()) : name;
    text = base + ending;
    debug = base + ".dbi";
    program = fs::path(base).filename().string();
}

static bool CopyFile(const std::string& from, const std::string& to)
{
    std::string text;
    if (to.empty() || !ReadWholeFile(from, text)) return false;
    std::ofstream file(to, std::ios::binary);
    file << text;
    file.close();
    return !file.fail();
}

bool PlaceOutputs(const CCompilation& compilation, const OutputNames& names, std::string& error)
{
    std::error_code failure;
    const fs::path folder = fs::path(names.text).parent_path();
    if (!folder.empty()) fs::create_directories(folder, failure);
    OutputPair outputs(names.text, names.debug);
    outputs.Prepare();
    const bool isText = outputs.IsTextReady() && CopyFile(compilation.GetOutputName(".asm"), outputs.GetTextWorkName());
    const bool isDebug =
        outputs.IsDebugReady() && CopyFile(compilation.GetOutputName(".dbi"), outputs.GetDebugWorkName());
    if (!isText) error = names.text + ": cannot be written";
    else if (!isDebug) error = names.debug + ": cannot be written";
    if (!error.empty()) return false;
    if (outputs.Replace() == OutputPair::Outcome::Replaced) return true;
    error = names.text + ": cannot be replaced together with " + names.debug;
    return false;
}

bool WriteTextFile(const std::string& name, const std::string& text, std::string& error)
{
    FileReplacement replacement;
    bool isWritten = replacement.Prepare(name);
    if (isWritten) {
        std::ofstream file(replacement.GetWorkName(), std::ios::binary);
        file << text;
        file.close();
        isWritten = !file.fail() && replacement.TakePlace();
    }
    if (!isWritten) error = name + ": cannot be written";
    return isWritten;
}
