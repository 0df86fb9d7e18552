#include "driver/CompileDriver.h"

#include "driver/CompileStamp.h"
#include "driver/OutputPair.h"
#include "driver/Version.h"
#include "files/FileSystem.h"
#include "files/Format.h"
#include "files/Platform.h"
#include "files/Print.h"
#include "files/XmlReview.h"
#include "files/TemporaryFiles.h"
#include "frontend/MessageTable.h"
#include "frontend/Parser.h"
#include "frontend/Scanner.h"
#include "semantics/Norvane.h"
#include "target/TargetCheck.h"
#include "target/TargetReview.h"

#include <algorithm>
#include <cstdlib>
#include <set>

static constexpr int g_NoTargetMessage = 111;
static constexpr int g_TargetNotFoundMessage = 112;
// The output's name as long as no -o sets one, and so no name at all: `-o output.asm` is no -o.
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
    if (m_TargetFile.Open(g_TargetFile, TextFile::ForReading, m_Norvane.m_Target.m_Encoding) != 0) {
        Print(GetMessage(g_TargetNotFoundMessage));
        return 1;
    }
    if (!HasCountingSource()) {
        PrintHelp();
        return 0;
    }
    m_LastSource = FindLastSource();
    m_OutputName = DeriveOutputName();
    if (IsOutputRefused()) m_Norvane.m_DumpTree = false;
    if (!LoadTarget() || !ReadEnvironment() || FilesMeet() || !OpenOutput()) return 1;

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
    if (m_Summary.empty()) m_Summary = FormatSummary();
    Print(m_Summary);
    return m_ExitStatus;
}

// Kept (scripts): the very last argument isn't looked at, so a source that stands there alone is none.
bool CCompileDriver::HasCountingSource() const
{
    const std::vector<std::optional<std::string>>& sources = m_CommandLine.m_Sources;
    return std::any_of(sources.begin(), sources.end() - 1, [](const auto& name) { return name.has_value(); });
}

// What the description says and can't mean is read all the same.
void CCompileDriver::NoteTargetFindings(const XmlReview& review)
{
    for (const TargetFinding& finding : ReviewTarget(m_Norvane.m_Target, review, TargetReviewScope::Notes))
        m_Norvane.m_Notes.AddInFile(Note::TargetDescription, g_TargetFile, std::max(finding.line, 0),
                                    std::max(finding.column, 0), finding.text);
}

// The order matters: each of these tables is made from the ones before it.
bool CCompileDriver::LoadTarget()
{
    m_Norvane.m_Notes.m_TargetFile = g_TargetFile;
    XmlReview review;
    m_Norvane.m_Target.Load(m_TargetFile, &review);   // what could be read of a broken document may be all that it takes
    m_TargetFile.Close();
    const std::string missing = FindMissingTargetNode(m_Norvane.m_Target);
    if (!missing.empty()) {
        PrintFailure(g_TargetFile + ": the target description has no node " + missing);
        return false;
    }
    NoteTargetFindings(review);
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

static bool IsAmong(const std::set<FileIdentity>& files, const std::string& name)
{
    const std::optional<FileIdentity> identity = GetFileIdentity(name.c_str());
    return identity && files.contains(*identity);
}

static void AddFile(std::set<FileIdentity>& files, const std::string& name)
{
    if (const std::optional<FileIdentity> identity = GetFileIdentity(name.c_str())) files.insert(*identity);
}

// The trees that -x asks for.
std::vector<std::string> CCompileDriver::ListDumps() const
{
    std::vector<std::string> dumps;
    if (!m_Norvane.m_DumpTree) return dumps;
    for (const std::optional<std::string>& source : m_CommandLine.m_Sources)
        if (source) dumps.push_back(*source + ".xml");
    return dumps;
}

// The first of the files that are read and that the run would write over; empty if there is none. The file of -l is
// both read and written, and may be the target description.
std::string CCompileDriver::FindOverwrittenInput() const
{
    std::set<FileIdentity> outputs;
    AddFile(outputs, m_OutputName);
    AddFile(outputs, CCodeGeneration::GetDebugName(m_OutputName));
    for (const std::string& dump : ListDumps()) AddFile(outputs, dump);
    std::set<FileIdentity> written = outputs;
    AddFile(written, m_Norvane.m_LibraryFile);
    std::set<FileIdentity> library;
    if (m_Norvane.m_LibraryFile.empty()) AddFile(library, m_Norvane.GetFirmwareLibraryName());

    for (const std::optional<std::string>& source : m_CommandLine.m_Sources) {
        if (!source) continue;
        // The library's own file of an earlier run is passed over, and may be written again.
        if (IsAmong(written, *source) || (!IsPassedOver(*source) && IsAmong(library, *source))) return *source;
    }
    if (IsAmong(outputs, g_TargetFile) || IsAmong(library, g_TargetFile)) return g_TargetFile;
    return IsAmong(outputs, m_Norvane.m_LibraryFile) ? m_Norvane.m_LibraryFile : std::string();
}

// The first output that would be the same file as another one; empty if there is none.
std::string CCompileDriver::FindSharedOutput() const
{
    const std::string debugName = CCodeGeneration::GetDebugName(m_OutputName);
    const auto isTaken = [this](const std::string& name) {
        return m_Norvane.m_LibraryFile.empty() && IsSamePlace(name, m_Norvane.GetFirmwareLibraryName());
    };
    if (isTaken(m_OutputName) || isTaken(debugName)) return m_OutputName;
    const bool isDevice = IsSpecialFile(m_OutputName);
    if (!isDevice && IsSamePlace(m_OutputName, debugName)) return m_OutputName;
    for (const std::string& dump : ListDumps())
        if (!IsSpecialFile(dump) && (IsSamePlace(dump, m_OutputName) || IsSamePlace(dump, debugName))) return dump;
    return {};
}

// Asked before anything is opened for writing.
bool CCompileDriver::FilesMeet() const
{
    const std::string input = FindOverwrittenInput();
    if (!input.empty()) {
        PrintFailure(input + ": the output would overwrite this input file");
        return true;
    }
    const std::string shared = FindSharedOutput();
    if (!shared.empty()) PrintFailure(shared + ": two outputs would be this file");
    return !shared.empty();
}

// For builds that are the same wherever and whenever they are made. False if the environment gives no moment.
bool CCompileDriver::ReadEnvironment()
{
    const char* szDate = std::getenv("SOURCE_DATE_EPOCH");
    if (!szDate) return true;
    m_Norvane.m_IsReproducible = ReadSourceDate(szDate, m_SourceDate);
    if (!m_Norvane.m_IsReproducible) PrintFailure("SOURCE_DATE_EPOCH is no number of seconds since 1970");
    return m_Norvane.m_IsReproducible;
}

// A directory stands where an output belongs. The sources are checked all the same, but nothing is written.
bool CCompileDriver::IsOutputRefused() const
{
    return IsDirectory(m_OutputName) || IsDirectory(CCodeGeneration::GetDebugName(m_OutputName));
}

// Beside the final text, so that it needs no room on another disk; elsewhere if that is no file in a folder.
std::string CCompileDriver::FindTemporaryPlace() const
{
    const std::string place = FollowLinks(m_OutputName);
    const bool isFile = !IsSpecialFile(m_OutputName) && !IsDirectory(m_OutputName) && IsDirectory(GetFolder(place));
    return isFile ? place : GetTemporaryDirectory() + std::string(g_DefaultOutput);
}

bool CCompileDriver::OpenOutput()
{
    constexpr unsigned forTheUserAlone = 0600;
    m_TemporaryName = MakeTemporaryFile(FindTemporaryPlace(), forTheUserAlone);
    if (m_TemporaryName.empty() || !m_Output.Open(m_TemporaryName)) {
        PrintFailure(g_TemporaryOutput + ": the temporary output file can't be written");
        return false;
    }
    m_Norvane.m_Code.m_Output = &m_Output;
    return true;
}

void CCompileDriver::WriteHeader()
{
    m_Norvane.m_CompileStamp =
        m_Norvane.m_IsReproducible ? ComputeCompileStamp(m_SourceDate) : ComputeCompileStamp(m_LastSource);
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
    if (m_CommandLine.m_KeepTemporary) KeepTemporaryFileAs(m_Norvane.m_LibraryTemporary, library);
    for (std::size_t slot = 1; slot < sources.size(); ++slot)
        if (sources[slot] && IsPassedOver(*sources[slot])) sources[slot].reset();
}

void CCompileDriver::CompileSources()
{
    SetScannerContext(m_Norvane);
    SetParserContext(m_Norvane);
    m_Norvane.m_SourceFiles.clear();
    const std::vector<std::optional<std::string>>& sources = m_CommandLine.m_Sources;
    if (sources[0] && !CompileLibrary(*sources[0])) return;
    for (std::size_t slot = 1; slot < sources.size(); ++slot)
        if (sources[slot] && !CompileSource(*sources[slot], *sources[slot])) return;
}

// The tree of what doesn't stay would not stay either.
bool CCompileDriver::CompileLibrary(const std::string& name)
{
    const bool isDumped = m_Norvane.m_DumpTree;
    m_Norvane.m_DumpTree = isDumped && m_CommandLine.m_KeepTemporary;
    const bool isThere = CompileSource(name, m_Norvane.m_LibraryTemporary);
    m_Norvane.m_DumpTree = isDumped;
    return isThere;
}

// Everything shows the name; the text comes from the file. False if the file isn't there, which ends the run behind
// the sources before it.
bool CCompileDriver::CompileSource(const std::string& name, const std::string& fileName)
{
    const bool isStored = !m_Norvane.m_LibraryFile.empty();
    const bool isOpen = OpenScannerInput(fileName, isStored ? &m_LibraryText : nullptr);

    Print(GetDisplayName(name) + "\n");
    m_Norvane.m_SourceFiles.push_back(name);
    g_CurrentFileName = name.c_str();
    if (!isOpen) {
        Print("file " + name + " not found\n");
        m_Output.Close();
        m_Norvane.m_Code.m_Output = nullptr;
        return false;
    }
    if (IsInsideComment()) {
        const SourceLocation nowhere{0, 0, 0, 0, g_CurrentFileName};
        m_Norvane.m_Notes.AddOutsidePou(Note::OpenComment, nowhere);
    }
    yyparse();          // its result doesn't matter: the error count decides
    yylineno = 1;
    nColumn = 0;        // Kept (messages): only the first file's first line begins at column 1
    return true;
}

void CCompileDriver::GenerateClosingBlocks()
{
    if (!m_Norvane.m_LibraryFile.empty()) {
        if (IsOutputRefused()) return;
        m_Norvane.m_Code.RefuseLargeCallTree();   // which would come too late for the library
        if (!m_Norvane.StoreLibrary(m_LibraryText)) {
            PrintFailure(m_Norvane.m_LibraryFile + ": the library can't be written");
            m_ExitStatus = 1;
        }
        return;
    }
    for (const std::string& name : m_Norvane.m_Pous.AddAutomaticPrograms())
        m_Norvane.m_Notes.AddInTarget(Note::ProgramInCapitals, name);
    m_Norvane.m_Code.WriteAutomaticPrograms();
    m_Norvane.m_Code.WriteGlobalInitialization();
    m_Norvane.m_Code.WriteRetainInitialization();
}

// Errors that are found from here on are printed and counted, but the outputs stand.
void CCompileDriver::FinishOutput()
{
    g_OutputFile = m_OutputName;
    m_Norvane.m_Code.m_Output = nullptr;
    if (m_Output.Close()) {
        WriteOutputs();
        return;
    }
    PrintFailure(g_TemporaryOutput + ": the temporary output file can't be written");
    m_ExitStatus = 1;
}

void CCompileDriver::WriteOutputs()
{
    const std::string textFailure = g_OutputFile + ": the output file can't be written";
    const std::string debugFailure = g_OutputFile + ": the debug file of this output can't be written";
    OutputPair outputs(g_OutputFile, CCodeGeneration::GetDebugName(g_OutputFile));
    outputs.Prepare();

    // The walk over the call tree, which comes first here, finds out what the merge comments out. It is made even if
    // there is no file to write to: the statistics show it.
    const bool isDebugWritten = m_Norvane.m_Code.WriteDebugInformation(g_OutputFile, outputs.GetDebugWorkName());
    bool isTextWritten = outputs.IsTextReady();
    if (isTextWritten && isDebugWritten)
        isTextWritten = m_Norvane.MergeOutput(m_TemporaryName, outputs.GetTextWorkName());
    if (!isDebugWritten) PrintFailure(debugFailure);
    if (!isTextWritten) PrintFailure(textFailure);
    m_ExitStatus = isDebugWritten && isTextWritten ? m_ExitStatus : 1;
    // Behind the replacement nothing may fail any more, so all that is told then is made now.
    m_Summary = FormatSummary();
    const std::string notes = CollectNotes();
    if (!isDebugWritten || !isTextWritten) return;

    const OutputPair::Outcome outcome = outputs.Replace();
    if (outcome == OutputPair::Outcome::Replaced) {
        PrintToStandardError(notes);
        return;
    }
    PrintFailure(outcome == OutputPair::Outcome::DebugFailed ? debugFailure : textFailure);
    m_ExitStatus = 1;
}

// Where the outputs stand, the user is told what in them does something else than its source says.
std::string CCompileDriver::CollectNotes()
{
    m_Norvane.m_Code.NoteRetainedGlobals();
    return m_Norvane.m_Notes.GetPrintedLines(m_Norvane.m_SourceFiles);
}

std::string CCompileDriver::FormatSummary() const
{
    const int errorCount = m_Norvane.m_Errors.GetErrorCount();
    const int warningCount = m_Norvane.m_Errors.GetWarningCount();
    const std::string summary = g_OutputFile + FormatText(" - %d error(s), %d warning(s)\n", errorCount, warningCount);
    return errorCount == 0 ? summary + "\n" + m_Norvane.m_Code.GetStatistics() + "\n" : summary;
}
