#include "norvane/Compilation.h"

#include "files/FileSystem.h"
#include "norvane/Followers.h"
#include "norvane/Hints.h"
#include "norvane/PrintedOutput.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <sstream>

// The compiler ends so when its scanner gives up: at a token that is too long.
constexpr int g_ScannerFaultStatus = 2;

bool SplitCompilerOptions(const std::vector<std::string>& texts, std::vector<std::string>& words, std::string& error)
{
    constexpr const char* plain[] = {"-b", "-o1", "-bs0", "-fbo0", "-cso0"};
    constexpr const char* valued[] = {"-rs", "-ps", "-v"};
    bool isValue = false;
    for (const std::string& text : texts) {
        std::istringstream stream(text);
        for (std::string word; stream >> word;) {
            const bool isValued = std::find(std::begin(valued), std::end(valued), word) != std::end(valued);
            const bool isPlain = std::find(std::begin(plain), std::end(plain), word) != std::end(plain);
            if (!isValue && !isValued && !isPlain) {
                error = word + " is no compiler option for a build; there are -b -o1 -bs0 -fbo0 -cso0 -rs -ps -v";
                return false;
            }
            isValue = !isValue && isValued;
            words.push_back(word);
        }
    }
    if (isValue) error = words.back() + " needs a number";
    return !isValue;
}

bool CCompilation::CheckRequest(const CompileRequest& request)
{
    for (const std::string& source : request.sources) {
        if (!IsReadableFile(source)) m_Failure = source + ": cannot be read";
        else if (source.find(".~") != std::string::npos) m_Failure = source + ": the compiler passes over names with .~";
        else if (source.find('\n') != std::string::npos) m_Failure = "a name of a source has a line end in it";
        if (!m_Failure.empty()) return false;
    }
    if (!IsReadableFile(request.target)) m_Failure = request.target + ": cannot be read";
    // That word stands for the name of the output, which is another one in each run.
    else if (request.name == "default") m_Failure = "a program cannot have the name default; --name gives another one";
    return m_Failure.empty();
}

static std::string ReadOrNothing(const std::string& name)
{
    std::string text;
    return ReadWholeFile(name, text) ? text : std::string();
}

bool CCompilation::Run(const CompileRequest& request)
{
    if (!CheckRequest(request)) return false;
    if (!m_Folder.Make()) {
        m_Failure = "no folder for the compiler's files can be made";
        return false;
    }
    const std::string output = GetOutputName(".asm");
    std::vector<std::string> command{FindCompiler()};
    command.insert(command.end(), request.sources.begin(), request.sources.end());
    command.insert(command.end(), request.options.begin(), request.options.end());
    command.insert(command.end(), {"-i", request.target, "-n", request.name, "-o", output});
    const std::string printedName = m_Folder.GetName() + "/printed";
    const std::string noted = m_Folder.GetName() + "/noted";
    const int status = RunProcess(command, "", printedName, noted);
    CPrintedOutput printed(request.sources, request.target, output);
    printed.ReadMessages(ReadOrNothing(printedName));
    printed.ReadNotes(ReadOrNothing(noted));
    if (status < 0) m_Failure = "the compiler could not be run: " + command.front();
    else TakeMessages(printed, status);
    if (!m_Failure.empty()) return false;
    if (m_Findings.m_Diagnostics.empty()) return true;
    LoadSources(request.sources, printed.m_HasLibrary);
    for (Diagnostic& diagnostic : m_Findings.m_Diagnostics) Locate(diagnostic);
    Explain(request);
    return true;
}

// The names that PROGRAM nodes give; anything finer is for the check of the target.
static std::vector<std::string> ListPrograms(const std::string& target)
{
    std::vector<std::string> names;
    std::string text;
    if (!ReadWholeFile(target, text)) return names;
    const std::string node = "<PROGRAM";
    const std::string attribute = " name=\"";
    for (std::size_t at = text.find(node); at != std::string::npos; at = text.find(node, at + 1)) {
        const std::size_t begin = text.find(attribute, at);
        if (begin == std::string::npos || begin > text.find('>', at)) continue;
        const std::size_t first = begin + attribute.size();
        names.push_back(text.substr(first, text.find('"', first) - first));
    }
    return names;
}

void CCompilation::Explain(const CompileRequest& request)
{
    CSourceOutline outline;
    for (const std::string& source : request.sources)
        if (const CSourceText* pSource = m_Findings.FindSource(source)) outline.Add(source, *pSource);
    AddHints(m_Findings, outline, ListPrograms(request.target));
    LinkFollowers(m_Findings);
}

// Beginnings and ends of lines on standard error that are about the sources, though they have no place.
static bool IsAboutSources(const std::string& complaint)
{
    return (complaint.starts_with("function block ") && complaint.ends_with(" has no variables")) ||
           complaint.starts_with("the call of ") || complaint.find("its paths multiply in POU ") != std::string::npos ||
           complaint.find(": the target description has no node ") != std::string::npos;
}

// "tank.st(12,5)" and "input buffer overflow, ..." behind it.
static Diagnostic MakeScannerFault(const std::vector<std::string>& complaints)
{
    Diagnostic diagnostic;
    diagnostic.text = complaints.back();
    const std::string& place = complaints.front();
    const std::size_t open = place.rfind('(');
    if (complaints.size() < 2 || open == std::string::npos) return diagnostic;
    diagnostic.file = place.substr(0, open);
    std::sscanf(place.c_str() + open, "(%d,%d)", &diagnostic.line, &diagnostic.printedColumn);
    return diagnostic;
}

// The summary's number decides, whatever the lines look like.
void CCompilation::TakeMessages(CPrintedOutput& printed, int status)
{
    m_Findings.m_Diagnostics = std::move(printed.m_Diagnostics);
    std::vector<std::string>& complaints = printed.m_Complaints;
    if (status == g_ScannerFaultStatus && !complaints.empty()) {
        m_Findings.m_Diagnostics.push_back(MakeScannerFault(complaints));
        return;
    }
    for (const std::string& complaint : complaints) {
        Diagnostic diagnostic;
        diagnostic.text = complaint;
        if (IsAboutSources(complaint)) m_Findings.m_Diagnostics.push_back(diagnostic);
        else m_Failure += (m_Failure.empty() ? "" : "\n") + complaint;
    }
    if (m_Findings.Count(Severity::Error) < printed.m_CountedErrors) {
        Diagnostic diagnostic;
        diagnostic.text = "the compiler counts " + std::to_string(printed.m_CountedErrors) + " errors in all";
        m_Findings.m_Diagnostics.push_back(diagnostic);
    }
    if (status != 0 && m_Findings.Count(Severity::Error) == 0 && m_Failure.empty())
        m_Failure = "the compiler ended with status " + std::to_string(status);
}

// A firmware library comes first, and its text isn't at hand.
void CCompilation::LoadSources(const std::vector<std::string>& sources, bool hasLibrary)
{
    bool isFirst = !hasLibrary;
    bool isOpen = false;
    for (const std::string& name : sources) {
        auto pSource = std::make_unique<CSourceText>();
        const bool isRead = pSource->Load(name, isFirst, isOpen);
        isFirst = false;
        isOpen = pSource->EndsInComment();
        if (isRead) m_Findings.AddSource(name, std::move(pSource));
    }
}

// Messages that stand behind the word that they are about.
static bool StandsBehind(const std::string& id)
{
    constexpr std::string_view typeNotSupported = "E004";
    constexpr std::string_view twoUnderscores = "E005";
    return id == typeNotSupported || id == twoUnderscores;
}

void CCompilation::Locate(Diagnostic& diagnostic) const
{
    const CSourceText* pSource = m_Findings.FindSource(diagnostic.file);
    if (!pSource || diagnostic.line < 1) return;
    constexpr std::string_view stringNotClosed = "E073";
    if (diagnostic.id == stringNotClosed) {   // the message stands in the line behind; where it began tells more
        diagnostic.line = std::atoi(diagnostic.arguments[0].c_str());
        diagnostic.printedColumn = std::atoi(diagnostic.arguments[1].c_str());
    }
    if (diagnostic.line > pSource->CountLines()) {   // the end of the file
        diagnostic.line = std::max(pSource->CountLines(), 1);
        diagnostic.column = static_cast<int>(pSource->GetLine(diagnostic.line).size()) + 1;
        diagnostic.endColumn = diagnostic.column;
        return;
    }
    diagnostic.column = pSource->GetColumn(diagnostic.line, diagnostic.printedColumn);
    if (StandsBehind(diagnostic.id)) diagnostic.column = std::max(diagnostic.column - 1, 1);
    diagnostic.endColumn = diagnostic.column;
    const std::size_t index = pSource->FindToken(diagnostic.line, diagnostic.column);
    if (index == pSource->GetTokens().size()) return;
    const SourceToken& token = pSource->GetTokens()[index];
    if (token.line != diagnostic.line || token.column > diagnostic.column) return;
    if (StandsBehind(diagnostic.id)) diagnostic.column = token.column;
    diagnostic.endColumn = token.column + static_cast<int>(token.text.size());
}

std::string CCompilation::GetOutputName(const std::string& ending) const
{
    return m_Folder.GetName() + "/program" + ending;
}
