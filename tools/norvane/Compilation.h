#pragma once

#include "norvane/CompilerProcess.h"
#include "norvane/Findings.h"

#include <string>
#include <vector>

class CPrintedOutput;

struct CompileRequest
{
    std::vector<std::string> sources;           // in their order
    std::string target;
    std::vector<std::string> options;           // of the compiler, one word each
    std::string name;                           // of the program, in the outputs
};

// One run of the compiler where this program runs, with its outputs in a private folder: names stand in messages and
// outputs as the user gave them, and nothing else is touched.
class CCompilation
{
public:
    // False, with the reason in m_Failure, if the compiler couldn't do its work. Errors in the sources are no such
    // reason.
    bool Run(const CompileRequest& request);

    // Of an output in the private folder, by its ending: ".asm", ".dbi".
    std::string GetOutputName(const std::string& ending) const;

    CFindings m_Findings;                       // in the order of the compiler, which hints and causes have joined
    std::string m_Failure;

private:
    bool CheckRequest(const CompileRequest& request);
    void LoadSources(const std::vector<std::string>& sources, bool hasLibrary);
    void TakeMessages(CPrintedOutput& printed, int status);
    void Locate(Diagnostic& diagnostic) const;
    void Explain(const CompileRequest& request);

    CPrivateFolder m_Folder;
};

// The switches of the compiler that say how code is made, out of texts such as "-o1" and "-rs 512". False, with the
// reason, at one that isn't for the user of a build: files and names have switches of their own here.
bool SplitCompilerOptions(const std::vector<std::string>& texts, std::vector<std::string>& words, std::string& error);
