#pragma once

#include <string>
#include <vector>

// A folder under the temporary one that nobody else sees, deleted with this object.
class CPrivateFolder
{
public:
    CPrivateFolder() = default;
    ~CPrivateFolder();
    CPrivateFolder(const CPrivateFolder&) = delete;
    CPrivateFolder& operator=(const CPrivateFolder&) = delete;

    // False if none can be made.
    bool Make();
    const std::string& GetName() const { return m_Name; }

private:
    std::string m_Name;   // empty: not made
};

// The compiler beside this program, under its own name or that of the package; else the one on the PATH.
std::string FindCompiler();

// Runs a command in a folder, or where this program runs if that is empty, with what it prints going into two files,
// which may be one. Its exit status, or -1 if it couldn't be run or didn't end by itself.
int RunProcess(const std::vector<std::string>& command, const std::string& folder, const std::string& outputName,
               const std::string& errorName);
