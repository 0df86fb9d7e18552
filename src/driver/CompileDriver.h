#pragma once

#include "driver/CommandLine.h"
#include "files/OutputTextFile.h"

#include <string>
#include <vector>

class CNorvane;

// One run of the compiler, from the command line to the summary.
class CCompileDriver
{
public:
    explicit CCompileDriver(CNorvane& norvane) : m_Norvane(norvane), m_CommandLine(norvane) {}

    // The arguments without the program's name; the result is the exit status.
    int Run(const std::vector<std::string>& arguments);

private:
    bool HasCountingSource() const;
    bool LoadTarget();
    std::string FindLastSource() const;
    bool OpenOutput();
    void WriteHeader();
    void CollectSources();
    void CompileSources();
    bool CompileSource(const std::string& name);
    bool IsPassedOver(const std::string& source) const;
    std::string FindNamingSource() const;
    std::string DeriveOutputName() const;
    std::vector<std::string> ListOutputs() const;
    bool OverwritesInput() const;
    void FinishOutput();
    void PrintNotes();
    void GenerateClosingBlocks();
    int PrintSummary();

    CNorvane& m_Norvane;
    CCommandLine m_CommandLine;
    OutputTextFile m_Output;
    std::string m_LastSource;          // the last one named, whether it is compiled or passed over
    std::string m_LibraryText;         // with -l: the sources' bytes, one behind the other
    int m_ExitStatus = 0;
};
