#include "driver/CompileDriver.h"

#include "driver/CompileStamp.h"
#include "driver/TemporaryFiles.h"
#include "driver/Version.h"
#include "files/FileSystem.h"
#include "files/Format.h"
#include "files/Print.h"
#include "frontend/MessageTable.h"
#include "frontend/Parser.h"
#include "frontend/Scanner.h"
#include "semantics/Norvane.h"
#include "target/TargetCheck.h"

#include <algorithm>

static constexpr int g_NoTargetMessage = 111;
static constexpr int g_TargetNotFoundMessage = 112;
// The output's name as long as no -o sets one, and so no name at all. That the temporary file is called the same is
// wanted, too: `-o output.asm` is no -o.
static constexpr std::string_view g_DefaultOutput = "output.asm";
// What marks the firmware library's temporary source.
static constexpr std::string_view g_LibraryMark = ".~";

// What a file shows itself as: nothing from the library mark on, and no directories. Only the backslash
// separates directories here.
static std::string GetDisplayName(const std::string& name)
{
    std::string display = name;
    const std::size_t mark = display.find(g_LibraryMark);
    if (mark != std::string::npos && mark > 0) display.erase(mark);
    const std::size_t separator = display.rfind('\\');
    if (separator != std::string::npos) display.erase(0, separator + 1);
    return display;
}

int CCompileDriver::Run(const std::vector<std::string>& arguments)
{
    if (arguments.empty()) {
        PrintHelp();
        return 0;
    }
    ResetStartCondition();
    if (m_CommandLine.Read(arguments) != CCommandLine::Outcome::Ready) return 1;
    if (g_TargetFile.empty()) {
        Print(GetMessage(g_NoTargetMessage));
        return 1;
    }
    if (!IsReadableFile(g_TargetFile)) {
        Print(GetMessage(g_TargetNotFoundMessage));
        return 1;
    }
    if (!HasCountingSource()) {
        PrintHelp();
        return 0;
    }
    m_LastSource = FindLastSource();
    if (!LoadTarget() || OverwritesInput() || !OpenOutput()) return 1;

    WriteHeader();
    CollectSources();
    Print("Compiling...\n");
    CompileSources();
    if (m_Norvane.m_Errors.GetErrorCount() > 0 || !m_Output.IsOpen()) {
        m_ExitStatus = 1;
        m_Output.Close();
        m_Norvane.m_Code.m_Output = nullptr;
    } else {
        GenerateClosingBlocks();
        FinishOutput();
    }
    if (m_Norvane.m_DumpFailed) m_ExitStatus = 1;
    RemoveTemporaryFiles();
    FreeScannerBuffer();
    return PrintSummary();
}

// Kept: the very last argument isn't looked at, so a source that stands there alone is none.
bool CCompileDriver::HasCountingSource() const
{
    const std::vector<std::optional<std::string>>& sources = m_CommandLine.m_Sources;
    return std::any_of(sources.begin(), sources.end() - 1, [](const auto& name) { return name.has_value(); });
}

// The order matters: each of these tables is made from the ones before it.
bool CCompileDriver::LoadTarget()
{
    m_Norvane.m_Target.Load(g_TargetFile);   // what could be read of a broken document may be all that it takes
    const std::string missing = FindMissingTargetNode(m_Norvane.m_Target);
    if (!missing.empty()) {
        PrintFailure(g_TargetFile + ": the target description has no node " + missing);
        return false;
    }
    m_Norvane.m_DataTypes.LoadFromTarget();
    m_Norvane.m_Code.m_PointerType = m_Norvane.m_DataTypes.m_PointerType;
    m_Norvane.m_CastFunctions.Build(m_Norvane.m_DataTypes);
    m_Norvane.m_Pous.LoadProgramNames();
    m_Norvane.m_Memory.LoadAreas(m_Norvane.m_Target);
    return true;
}

std::string CCompileDriver::FindLastSource() const
{
    const std::vector<std::optional<std::string>>& sources = m_CommandLine.m_Sources;
    for (std::size_t slot = sources.size() - 1; slot > 0; --slot)
        if (sources[slot]) return *sources[slot];
    return {};
}

// A library's source that an earlier run left behind is compiled only where a library is stored.
bool CCompileDriver::IsPassedOver(const std::string& source) const
{
    return m_Norvane.m_LibraryFile.empty() && source.find(g_LibraryMark) != std::string::npos;
}

// The output is named after the last source that is compiled; if none is, after the last one.
std::string CCompileDriver::FindNamingSource() const
{
    const std::vector<std::optional<std::string>>& sources = m_CommandLine.m_Sources;
    for (std::size_t slot = sources.size() - 1; slot > 0; --slot)
        if (sources[slot] && !IsPassedOver(*sources[slot])) return *sources[slot];
    return m_LastSource;
}

// The naming source with its ending replaced, unless -o says another name. The search for the dot doesn't
// respect directories, which is wanted.
std::string CCompileDriver::DeriveOutputName() const
{
    if (g_OutputFile != g_DefaultOutput) return g_OutputFile;
    std::string name = FindNamingSource();
    const std::size_t dot = name.rfind('.');
    if (dot != std::string::npos && dot > 0) name.erase(dot);
    return name + ".asm";
}

// All files that the run is going to write, but for the one that -l asks for.
std::vector<std::string> CCompileDriver::ListOutputs() const
{
    const std::string output = DeriveOutputName();
    std::vector<std::string> outputs = {g_TemporaryOutput, output, CCodeGeneration::GetDebugName(output)};
    if (!m_Norvane.m_DumpTree) return outputs;
    for (const std::optional<std::string>& source : m_CommandLine.m_Sources)
        if (source) outputs.push_back(*source + ".xml");
    return outputs;
}

// A source or the target description that the run would write over would be lost.
bool CCompileDriver::OverwritesInput() const
{
    const std::vector<std::string> outputs = ListOutputs();
    std::vector<std::optional<std::string>> inputs = m_CommandLine.m_Sources;
    inputs.emplace_back(g_TargetFile);
    for (const std::optional<std::string>& input : inputs) {
        const auto isInput = [&input](const std::string& output) { return IsSameFile(*input, output); };
        if (!input || std::none_of(outputs.begin(), outputs.end(), isInput)) continue;
        PrintFailure(*input + ": the output would overwrite this input file");
        return true;
    }
    return false;
}

bool CCompileDriver::OpenOutput()
{
    if (!m_Output.Open(g_TemporaryOutput)) {
        PrintFailure(g_TemporaryOutput + ": the temporary output file can't be written");
        return false;
    }
    KeepTrackOfTemporaryFile(g_TemporaryOutput);
    m_Norvane.m_Code.m_Output = &m_Output;
    return true;
}

void CCompileDriver::WriteHeader()
{
    m_Norvane.m_CompileStamp = ComputeCompileStamp(m_LastSource);
    if (m_Norvane.m_ProgramName == "default")   // also when -n said so
        m_Norvane.m_ProgramName = g_OutputFile == g_DefaultOutput ? m_LastSource : g_OutputFile;
    m_Norvane.m_Code.WriteHeader(m_Norvane.m_ProgramName, FormatText("%d", m_Norvane.m_CompileStamp),
                                 FormatText("%d", m_Norvane.m_ProgramVersion), FormatText("%d", g_BuildNumber));
}

// Puts the firmware library in front.
void CCompileDriver::CollectSources()
{
    if (!m_Norvane.m_LibraryFile.empty()) return;

    std::vector<std::optional<std::string>>& sources = m_CommandLine.m_Sources;
    const std::string library = m_Norvane.ExtractFirmwareLibrary();
    if (!library.empty()) sources[0] = library;
    if (!library.empty() && !m_CommandLine.m_KeepTemporary) KeepTrackOfTemporaryFile(library);
    for (std::size_t slot = 1; slot < sources.size(); ++slot)
        if (sources[slot] && IsPassedOver(*sources[slot])) sources[slot].reset();
}

void CCompileDriver::CompileSources()
{
    SetScannerContext(m_Norvane);
    SetParserContext(m_Norvane);
    m_Norvane.m_SourceFiles.clear();
    for (const std::optional<std::string>& name : m_CommandLine.m_Sources)
        if (name && !CompileSource(*name)) return;
}

// False if the file isn't there, which ends the run behind the sources before it.
bool CCompileDriver::CompileSource(const std::string& name)
{
    const bool isStored = !m_Norvane.m_LibraryFile.empty();
    const bool isOpen = OpenScannerInput(name, isStored ? &m_LibraryText : nullptr);

    Print(GetDisplayName(name) + "\n");
    m_Norvane.m_SourceFiles.push_back(name);
    g_CurrentFileName = name.c_str();
    if (!isOpen) {
        Print("file " + name + " not found\n");
        m_Output.Close();
        m_Norvane.m_Code.m_Output = nullptr;
        return false;
    }
    yyparse();          // its result doesn't matter: the error count decides
    yylineno = 1;
    nColumn = 0;        // kept: only the first file's first line begins at column 1
    return true;
}

void CCompileDriver::GenerateClosingBlocks()
{
    if (!m_Norvane.m_LibraryFile.empty()) {
        if (!m_Norvane.StoreLibrary(m_LibraryText)) {
            PrintFailure(m_Norvane.m_LibraryFile + ": the library can't be written");
            m_ExitStatus = 1;
        }
        return;
    }
    m_Norvane.m_Pous.AddAutomaticPrograms();
    m_Norvane.m_Code.WriteAutomaticPrograms();
    m_Norvane.m_Code.WriteGlobalInitialization();
    m_Norvane.m_Code.WriteRetainInitialization();
}

// Errors that are found from here on are printed and counted, but the outputs stand.
void CCompileDriver::FinishOutput()
{
    g_OutputFile = DeriveOutputName();
    m_Norvane.m_Code.m_Output = nullptr;
    if (!m_Output.Close()) {
        PrintFailure(g_TemporaryOutput + ": the temporary output file can't be written");
        m_ExitStatus = 1;
        return;
    }
    // The walk over the call tree, which comes first here, finds out what the merge comments out.
    if (!m_Norvane.m_Code.WriteDebugInformation(g_OutputFile)) {
        PrintFailure(g_OutputFile + ": the debug file of this output can't be written");
        m_ExitStatus = 1;
    }
    if (!m_Norvane.MergeOutput(g_TemporaryOutput, g_OutputFile)) {
        PrintFailure(g_OutputFile + ": the output file can't be written");
        m_ExitStatus = 1;
        return;
    }
    if (IsSameFile(g_OutputFile, g_TemporaryOutput)) ForgetTemporaryFile(g_TemporaryOutput);
    PrintNotes();
}

// Where the outputs stand, the user is told what in them does something else than its source says.
void CCompileDriver::PrintNotes()
{
    PrintToStandardError(m_Norvane.m_Notes.GetPrintedLines(m_Norvane.m_SourceFiles));
}

int CCompileDriver::PrintSummary()
{
    const int errorCount = m_Norvane.m_Errors.GetErrorCount();
    const int warningCount = m_Norvane.m_Errors.GetWarningCount();
    Print(g_OutputFile + FormatText(" - %d error(s), %d warning(s)\n", errorCount, warningCount));
    if (errorCount == 0) Print("\n" + m_Norvane.m_Code.GetStatistics() + "\n");
    return m_ExitStatus;
}
