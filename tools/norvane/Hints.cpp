#include "norvane/Hints.h"

#include <algorithm>

const SourceToken* HintContext::TokenAt(int offset) const
{
    const std::vector<SourceToken>& tokens = pSource->GetTokens();
    const std::ptrdiff_t wanted = static_cast<std::ptrdiff_t>(index) + offset;
    if (wanted < 0 || wanted >= static_cast<std::ptrdiff_t>(tokens.size())) return nullptr;
    return &tokens[static_cast<std::size_t>(wanted)];
}

std::string_view HintContext::At(int offset) const
{
    const SourceToken* pToken = TokenAt(offset);
    return pToken ? pToken->text : std::string_view();
}

bool HintContext::Touches(int offset) const
{
    const SourceToken* pFirst = TokenAt(offset);
    const SourceToken* pSecond = TokenAt(offset + 1);
    return pFirst && pSecond && pFirst->line == pSecond->line &&
           pFirst->column + static_cast<int>(pFirst->text.size()) == pSecond->column;
}

std::string_view HintContext::Argument(std::size_t number) const
{
    return number < pDiagnostic->arguments.size() ? std::string_view(pDiagnostic->arguments[number])
                                                  : std::string_view();
}

const std::vector<std::string_view>& GetLanguageWords()
{
    static const std::vector<std::string_view> words = {
        "IF",          "THEN",         "ELSE",          "ELSIF",         "END_IF",       "WHILE",
        "DO",          "END_WHILE",    "FOR",           "TO",            "BY",           "END_FOR",
        "REPEAT",      "UNTIL",        "END_REPEAT",    "CASE",          "OF",           "END_CASE",
        "PROGRAM",     "END_PROGRAM",  "FUNCTION",      "END_FUNCTION",  "FUNCTION_BLOCK", "END_FUNCTION_BLOCK",
        "VAR",         "VAR_INPUT",    "VAR_OUTPUT",    "VAR_IN_OUT",    "VAR_GLOBAL",   "VAR_EXTERNAL",
        "END_VAR",     "TYPE",         "END_TYPE",      "STRUCT",        "END_STRUCT",   "ARRAY",
        "RETAIN",      "CONSTANT",     "AT",            "AND",           "OR",           "XOR",
        "NOT",         "MOD",          "TRUE",          "FALSE",         "EXIT",         "RETURN",
        "SYSTEM",      "MULDIV",       "ROL",           "ROR",           "SHL",          "SHR",
        "ABS",         "MIN",          "MAX",           "LIMIT",         "SQRT",         "BOOL",
        "SINT",        "INT",          "DINT",          "USINT",         "UINT",         "UDINT",
        "BYTE",        "WORD",         "DWORD",         "REAL",          "LREAL",        "STRING",
        "TIME"};
    return words;
}

static const std::vector<HintRule>& GetAllRules()
{
    static const std::vector<HintRule> rules = [] {
        std::vector<HintRule> all;
        for (const std::vector<HintRule>& some : {GetWordRules(), GetSyntaxRules(), GetMeaningRules()})
            all.insert(all.end(), some.begin(), some.end());
        return all;
    }();
    return rules;
}

static std::string FindHint(const HintContext& context)
{
    for (const HintRule& rule : GetAllRules()) {
        if (!rule.id.empty() && rule.id != context.pDiagnostic->id) continue;
        std::string hint = rule.MakeHint(context);
        if (!hint.empty()) return hint;
    }
    return {};
}

static std::size_t FindTokenOf(const Diagnostic& diagnostic, const CSourceText& source)
{
    if (diagnostic.line < 1 || diagnostic.column < 1) return source.GetTokens().size();
    const std::size_t index = source.FindToken(diagnostic.line, diagnostic.column);
    const bool isThere = index < source.GetTokens().size() && source.GetTokens()[index].line == diagnostic.line;
    return isThere ? index : source.GetTokens().size();
}

void AddHints(CFindings& findings, const CSourceOutline& outline, const std::vector<std::string>& programs)
{
    static const CSourceText nothing;
    for (Diagnostic& diagnostic : findings.m_Diagnostics) {
        const CSourceText* pSource = findings.FindSource(diagnostic.file);
        HintContext context;
        context.pDiagnostic = &diagnostic;
        context.pSource = pSource ? pSource : &nothing;
        context.pOutline = &outline;
        context.pUnit = outline.FindUnitAt(diagnostic.file, diagnostic.line);
        context.pPrograms = &programs;
        context.index = FindTokenOf(diagnostic, *context.pSource);
        diagnostic.hint = FindHint(context);
    }
}
