#pragma once

#include "driver/CommandLine.h"
#include "files/OutputTextFile.h"
#include "files/TextFile.h"

#include <cstdint>
#include <string>
#include <vector>

class CNorvane;
class XmlReview;

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
    void NoteTargetFindings(const XmlReview& review);
    std::string FindLastSource() const;
    bool OpenOutput();
    void WriteHeader();
    void CollectSources();
    void CompileSources();
    bool CompileLibrary(const std::string& name);
    bool CompileSource(const std::string& name, const std::string& fileName);
    bool IsPassedOver(const std::string& source) const;
    std::string FindNamingSource() const;
    std::string DeriveOutputName() const;
    std::vector<std::string> ListDumps() const;
    std::string FindOverwrittenInput() const;
    std::string FindSharedOutput() const;
    bool FilesMeet() const;
    bool ReadEnvironment();
    bool IsOutputRefused() const;
    std::string FindTemporaryPlace() const;
    void FinishOutput();
    void WriteOutputs();
    std::string CollectNotes();
    void GenerateClosingBlocks();
    std::string FormatSummary() const;

    CNorvane& m_Norvane;
    CCommandLine m_CommandLine;
    TextFile m_TargetFile;             // open from its check to its reading: a pipe can be opened only once
    OutputTextFile m_Output;           // the temporary text
    std::string m_TemporaryName;       // of its file
    std::string m_OutputName;          // of the final text; what the summary shows is g_OutputFile
    std::string m_Summary;
    std::string m_LastSource;          // the last one named, whether it is compiled or passed over
    std::int64_t m_SourceDate = 0;     // of a reproducible run: seconds since the start of 1970
    std::string m_LibraryText;         // with -l: the sources' bytes, one behind the other
    int m_ExitStatus = 0;
};
