#include "norvane/Followers.h"

#include "norvane/Findings.h"
#include "norvane/WordDistance.h"

#include <algorithm>
#include <set>

namespace
{

// A message and the statement or declaration in which it stands.
struct Fault
{
    const Diagnostic* pDiagnostic = nullptr;
    const CSourceText* pSource = nullptr;   // null: its text isn't at hand
    std::size_t token = 0;
    std::size_t first = 0;                  // of its statement
    std::size_t behind = 0;                 // the statement
    bool isDeclaration = false;
};

}   // namespace

static bool IsSyntax(const Diagnostic& diagnostic)
{
    constexpr std::string_view ids[] = {"E065", "E067", "E073"};
    return std::find(std::begin(ids), std::end(ids), diagnostic.id) != std::end(ids);
}

static bool IsDeclarationStart(std::string_view word)
{
    return word == "VAR" || word.starts_with("VAR_") || word == "TYPE" || word == "STRUCT";
}

static bool IsBoundary(std::string_view word)
{
    constexpr std::string_view words[] = {";",      "THEN",   "DO",      "ELSE",        "END_VAR",
                                          "REPEAT", "PROGRAM", "FUNCTION", "FUNCTION_BLOCK", "END_STRUCT"};
    return std::find(std::begin(words), std::end(words), word) != std::end(words) || IsDeclarationStart(word);
}

// Whether the place lies between VAR and END_VAR, or TYPE and END_TYPE.
static bool IsInDeclaration(const std::vector<SourceToken>& tokens, std::size_t index)
{
    for (std::size_t i = std::min(index + 1, tokens.size()); i-- > 0;) {
        const std::string_view word = tokens[i].text;
        if (word == "END_VAR" || word == "END_TYPE" || (word.starts_with("END_") && word != "END_STRUCT")) return false;
        if (IsDeclarationStart(word)) return true;
    }
    return false;
}

static Fault MakeFault(const Diagnostic& diagnostic, const CFindings& findings)
{
    Fault fault;
    fault.pDiagnostic = &diagnostic;
    fault.pSource = diagnostic.line > 0 ? findings.FindSource(diagnostic.file) : nullptr;
    if (!fault.pSource) return fault;
    const std::vector<SourceToken>& tokens = fault.pSource->GetTokens();
    fault.token = fault.pSource->FindToken(diagnostic.line, diagnostic.column);
    fault.first = fault.token;
    while (fault.first > 0 && !IsBoundary(tokens[fault.first - 1].text)) --fault.first;
    fault.behind = fault.token;
    while (fault.behind < tokens.size() && tokens[fault.behind].text != ";") ++fault.behind;
    fault.isDeclaration = IsInDeclaration(tokens, fault.token);
    return fault;
}

static bool IsSameStatement(const Fault& cause, const Fault& fault)
{
    return (fault.token >= cause.first && fault.token <= cause.behind) ||
           (fault.pDiagnostic->line == cause.pDiagnostic->line && fault.first <= cause.token &&
            cause.token <= fault.behind);
}

// The names of a declaration that was refused, used in the statement of another message.
static bool UsesRefused(const Fault& cause, const Fault& fault)
{
    if (!cause.isDeclaration || !IsSyntax(*cause.pDiagnostic)) return false;
    const std::vector<SourceToken>& refused = cause.pSource->GetTokens();
    std::set<std::string> names;
    for (std::size_t i = cause.first; i < std::min(cause.behind, refused.size()) && refused[i].text != ":"; ++i)
        if (refused[i].kind == SourceToken::Kind::Word) names.insert(ToUpper(refused[i].text));
    const std::vector<SourceToken>& tokens = fault.pSource->GetTokens();
    for (std::size_t i = fault.first; i <= fault.token && i < tokens.size(); ++i)
        if (tokens[i].kind == SourceToken::Kind::Word && names.contains(ToUpper(tokens[i].text))) return true;
    return false;
}

// What ends a statement that couldn't begin: "unexpected END_IF" behind a fault in its condition.
static bool EndsWhatFailed(const Fault& cause, const Fault& fault)
{
    if (!IsSyntax(*cause.pDiagnostic) || fault.pDiagnostic->id != "E065" || cause.isDeclaration) return false;
    const std::vector<SourceToken>& tokens = fault.pSource->GetTokens();
    if (fault.token >= tokens.size() || !tokens[fault.token].text.starts_with("END_")) return false;
    int depth = 0;
    const std::string opener(tokens[fault.token].text.substr(4));
    for (std::size_t i = fault.token; i-- > 0;) {
        if (tokens[i].text == tokens[fault.token].text) ++depth;
        if (tokens[i].text != opener || depth-- > 0) continue;
        return i <= cause.token;
    }
    return false;
}

static bool IsRepetition(const Diagnostic& cause, const Diagnostic& diagnostic)
{
    if (cause.id != diagnostic.id || cause.file != diagnostic.file) return false;
    constexpr std::string_view undeclared = "E007";
    constexpr std::string_view unknownCharacter = "E067";
    constexpr std::string_view twoUnderscores = "E005";
    if (cause.id == undeclared)
        return !cause.arguments.empty() && !diagnostic.arguments.empty() &&
               IsSameName(cause.arguments[0], diagnostic.arguments[0]);
    return (cause.id == unknownCharacter || cause.id == twoUnderscores) && cause.hint == diagnostic.hint;
}

static bool Follows(const Fault& cause, const Fault& fault)
{
    const Diagnostic& first = *cause.pDiagnostic;
    const Diagnostic& diagnostic = *fault.pDiagnostic;
    constexpr std::string_view tooManyErrors = "E001";
    if (diagnostic.id == tooManyErrors) return true;
    if (IsRepetition(first, diagnostic)) return true;
    if (!cause.pSource || !fault.pSource || first.file != diagnostic.file) return false;
    const bool isSame = IsSameStatement(cause, fault);
    constexpr std::string_view needsBoolean = "E047";
    if (isSame && (IsSyntax(first) || diagnostic.id == "E065" || diagnostic.id == needsBoolean)) return true;
    if (isSame && !first.hint.empty() && first.hint == diagnostic.hint) return true;
    return UsesRefused(cause, fault) || EndsWhatFailed(cause, fault);
}

void LinkFollowers(CFindings& findings)
{
    // One statement draws a few messages, but a bad file draws fifty: looking at each pair costs little.
    std::vector<Fault> faults;
    for (const Diagnostic& diagnostic : findings.m_Diagnostics) faults.push_back(MakeFault(diagnostic, findings));
    for (std::size_t i = 0; i < faults.size(); ++i) {
        Diagnostic& diagnostic = findings.m_Diagnostics[i];
        if (diagnostic.severity != Severity::Error) continue;
        for (std::size_t j = 0; j < i && diagnostic.cause < 0; ++j) {
            const Diagnostic& head = findings.m_Diagnostics[j];
            if (head.severity != Severity::Error || head.cause >= 0) continue;
            if (Follows(faults[j], faults[i])) diagnostic.cause = static_cast<int>(j);
        }
    }
}
