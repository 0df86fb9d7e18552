#pragma once

#include "norvane/CompilerProcess.h"

#include <string>
#include <vector>

class CImage;

// One run of the compiler in a private folder, which is deleted with this object.
class CCompilerRun
{
public:
    virtual ~CCompilerRun() = default;

    // False, with what the compiler printed, if it reported an error or couldn't be started. The compiler is the one
    // beside this program, else the one on the PATH.
    bool Compile(const std::vector<std::string>& sources, const std::string& target,
                 const std::vector<std::string>& options, std::string& error);
    // What the compiler noted of code that does something else than its source says, with the names that the user knows.
    const std::vector<std::string>& GetNotes() const { return m_Notes; }
    std::string GetListingName() const { return m_Folder.GetName() + "/program.asm"; }
    // The compiler was given absolute names; the image gets back those that the user knows.
    void RestoreSourceNames(CImage& image) const;

protected:
    // Exit status, or -1 if the program couldn't be run. Both outputs go to the file. The first word is the compiler.
    virtual int Run(const std::vector<std::string>& command, const std::string& folder, const std::string& outputName);

private:
    void CollectNotes(const std::string& printed, const std::string& target);

    CPrivateFolder m_Folder;
    std::vector<std::string> m_Given;
    std::vector<std::string> m_Absolute;
    std::vector<std::string> m_Notes;
};
