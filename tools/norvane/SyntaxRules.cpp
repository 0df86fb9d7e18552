// Slips that the grammar trips over.

#include "norvane/Hints.h"
#include "norvane/WordDistance.h"

#include <fmt/format.h>

#include <algorithm>

using Context = HintContext;

static bool IsOneOf(std::string_view word, std::initializer_list<std::string_view> words)
{
    return std::find(words.begin(), words.end(), word) != words.end();
}

static bool IsKind(const Context& context, int offset, SourceToken::Kind kind)
{
    const SourceToken* pToken = context.TokenAt(offset);
    return pToken && pToken->kind == kind;
}

// How far back the nearest of the words stands; 1: none in front.
static int FindBack(const Context& context, std::initializer_list<std::string_view> words)
{
    for (int offset = 0; context.TokenAt(offset - 1); --offset)
        if (IsOneOf(context.At(offset - 1), words)) return offset - 1;
    return 1;
}

// The word that begins the declarations in which the place stands; null outside of any.
static const SourceToken* FindOpenBlock(const Context& context)
{
    const int offset = FindBack(context, {"VAR", "VAR_INPUT", "VAR_OUTPUT", "VAR_IN_OUT", "VAR_GLOBAL", "VAR_EXTERNAL",
                                          "END_VAR", "END_PROGRAM", "END_FUNCTION", "END_FUNCTION_BLOCK"});
    return offset < 0 && context.At(offset).starts_with("VAR") ? context.TokenAt(offset) : nullptr;
}

static bool Expects(const Context& context, std::string_view token)
{
    return context.Argument(1).find(token) != std::string_view::npos;
}

// ---- Comments and the ends of units.

static std::string HintOpenComment(const Context& context)
{
    if (context.Argument(0) != "$end" || context.pSource->GetOpenCommentLine() == 0) return {};
    return fmt::format("the comment that begins in line {}, column {} is never closed by *)",
                       context.pSource->GetOpenCommentLine(), context.pSource->GetOpenCommentColumn());
}

static std::string HintOpenUnit(const Context& context)
{
    const OutlineUnit* pUnit = context.pUnit;
    if (context.Argument(0) != "$end" || !pUnit) return {};
    return fmt::format("{} {}, which begins in line {}, lacks its END_{}", pUnit->kind, pUnit->name, pUnit->line,
                       pUnit->kind);
}

static std::string HintSlashComment(const Context& context)
{
    if (context.At() != "/" || context.At(1) != "/" || !context.Touches(0)) return {};
    return "a comment stands between (* and *); there is none with //";
}

static std::string HintBlockComment(const Context& context)
{
    if (context.At() != "/" || context.At(1) != "*" || !context.Touches(0)) return {};
    return "a comment stands between (* and *)";
}

// ---- Signs of other languages.

static std::string HintDoubled(const Context& context)
{
    if (context.At() == "=" && context.At(-1) == "=" && context.Touches(-1)) return "a comparison is written with one =";
    if (context.At() == "&" && context.At(-1) == "&" && context.Touches(-1))
        return "two conditions are joined by AND, or by one &";
    return {};
}

static std::string HintIncrement(const Context& context)
{
    const std::string_view sign = context.At();
    if (!IsOneOf(sign, {"+", "-", "*", "/"}) || !IsKind(context, -1, SourceToken::Kind::Word)) return {};
    if (context.At(1) == sign) return fmt::format("write {0} := {0} {1} 1", context.At(-1), sign);
    if (context.At(1) == "=") return fmt::format("write {0} := {0} {1} {2}", context.At(-1), sign, context.At(2));
    return {};
}

static std::string HintAssignment(const Context& context)
{
    if (context.At() != "=" || !Expects(context, ":=")) return {};
    return "an assignment is written :=; = compares";
}

static std::string HintComparison(const Context& context)
{
    if (context.At() != ":=") return {};
    const int offset = FindBack(context, {";", "IF", "ELSIF", "WHILE", "UNTIL", "THEN", "DO", "ELSE"});
    if (offset > 0 || !IsOneOf(context.At(offset), {"IF", "ELSIF", "WHILE", "UNTIL"})) return {};
    return "a comparison is written =; := assigns";
}

// ---- Literals.

static std::string HintTypedLiteral(const Context& context)
{
    const bool isSign = context.At(1) == "#" && context.Touches(0);
    if (context.Argument(0) != "TYPE IDENTIFIER" || !isSign) return {};
    return fmt::format("a literal has no type in front of it and takes the one that is needed: {}", context.At(2));
}

static std::string HintHexadecimal(const Context& context)
{
    const std::string_view word = context.At();
    if (context.At(-1) != "0" || !context.Touches(-1) || !IsOneOf(word.substr(0, 1), {"x", "X"})) return {};
    return "a hexadecimal number is written 16#" + ToUpper(word.substr(1));
}

static std::string HintSmallDigits(const Context& context)
{
    for (int offset : {0, -1}) {
        const std::string_view number = context.At(offset);
        if (!number.starts_with("16#") || ToUpper(number) == number) continue;
        return "hexadecimal digits are capital letters: " + ToUpper(number);
    }
    return {};
}

static std::string HintExponent(const Context& context)
{
    const std::string_view word = context.At();
    const bool isExponent = word.size() > 1 && IsOneOf(word.substr(0, 1), {"e", "E"}) &&
                            word.find_first_not_of("0123456789", 1) == std::string_view::npos;
    if (!isExponent || !IsKind(context, -1, SourceToken::Kind::Number) || !context.Touches(-1)) return {};
    const std::string_view number = context.At(-1);
    const bool hasPoint = number.find('.') != std::string_view::npos;
    return fmt::format("an exponent has a sign: {}{}e+{}", number, hasPoint ? "" : ".0", word.substr(1));
}

// ---- Declarations.

static std::string HintMissingEndVar(const Context& context)
{
    const SourceToken* pBlock = FindOpenBlock(context);
    if (!pBlock) return {};
    // A word and what only a statement goes on with, before any colon.
    const int offset = context.pDiagnostic->id == "E006" ? 1 : 0;
    const bool isStatement = IsOneOf(context.At(offset), {":=", "(", ".", "["}) ||
                             IsOneOf(context.At(), {"IF", "FOR", "WHILE", "REPEAT", "CASE", "END_PROGRAM", "END_FUNCTION",
                                                    "END_FUNCTION_BLOCK", "RETURN", "VAR", "VAR_INPUT", "VAR_OUTPUT"});
    if (!isStatement || FindBack(context, {":", ";", "VAR"}) > 0) return {};
    const int begin = FindBack(context, {":", ";", pBlock->text});
    if (context.At(begin) == ":") return {};
    return fmt::format("END_VAR is missing in front of this: the {} of line {} is still open", pBlock->text,
                       pBlock->line);
}

static std::string HintMissingColon(const Context& context)
{
    const std::string_view kind = context.Argument(0);
    if (!Expects(context, "':'") || !IsKind(context, -1, SourceToken::Kind::Word)) return {};
    if (kind != "TYPE IDENTIFIER" && kind != "IDENTIFIER" && !IsOneOf(context.At(), {"ARRAY", "STRUCT", "STRING"}))
        return {};
    return fmt::format("between a name and its type stands a colon: {} : {}", context.At(-1), context.At());
}

// What goes by that name as a type, in whatever case it is declared; empty if nothing does.
static std::string_view FindTypeName(const Context& context, std::string_view word)
{
    const std::string upper = ToUpper(word);
    for (const OutlineUnit& unit : context.pOutline->m_Units)
        if (unit.kind == "FUNCTION_BLOCK" && ToUpper(unit.name) == upper) return unit.name;
    for (const std::string_view name : context.pOutline->m_TypeNames)
        if (ToUpper(name) == upper) return name;
    return {};
}

static std::string HintNameIsType(const Context& context)
{
    if (context.Argument(0) != "TYPE IDENTIFIER" || !Expects(context, "IDENTIFIER") || context.At(1) == "(") return {};
    const std::string_view type = FindTypeName(context, context.At());
    if (type.empty()) return {};
    return fmt::format("{0} is taken: {1} is a type, and the case of letters makes no difference there; give the "
                       "variable another name, such as {0}_1", context.At(), type);
}

static std::string HintNameIsWord(const Context& context)
{
    if (!FindOpenBlock(context) || !Expects(context, "IDENTIFIER") || Expects(context, "TYPE IDENTIFIER")) return {};
    const std::vector<std::string_view>& words = GetLanguageWords();
    if (std::find(words.begin(), words.end(), context.At()) == words.end()) return {};
    if (IsOneOf(context.At(), {"IF", "FOR", "WHILE", "REPEAT", "CASE"})) return {};
    return fmt::format("{} is a word of the language and can't be a name", context.At());
}

static std::string HintLibraryBlock(std::string_view word)
{
    constexpr std::pair<std::string_view, std::string_view> blocks[] = {
        {"TON", "timers"},    {"TOF", "timers"},    {"TP", "timers"},   {"R_TRIG", "edges"}, {"F_TRIG", "edges"},
        {"CTU", "counters"},  {"CTD", "counters"},  {"SR", "latches"},  {"RS", "latches"},   {"RAMP", "analog"},
        {"HYSTERESIS", "analog"}};
    for (const auto& [name, file] : blocks)
        if (ToUpper(word) == name)
            return fmt::format("{} isn't built in: name share/st/{}.st in front of this source", word, file);
    return {};
}

static std::string HintUnknownType(const Context& context)
{
    if (context.Argument(0) != "IDENTIFIER" || !Expects(context, "TYPE IDENTIFIER")) return {};
    const std::string_view word = context.At();
    const std::string library = HintLibraryBlock(word);
    const std::string_view declared = FindTypeName(context, word);
    const std::vector<std::string_view>& types = context.pOutline->m_TypeNames;
    if (!context.pOutline->m_EnumeratedNames.empty() && std::find(types.begin(), types.end(), word) != types.end())
        return fmt::format("{} is an enumeration, which declares nothing here: use INT and constants", word);
    const OutlineUnit* pUnit = context.pOutline->FindUnit(declared);
    if (pUnit)
        return fmt::format("{} is declared in line {} of {}, behind its use; a declaration stands above it", word,
                           pUnit->line, *pUnit->pFile);
    if (!declared.empty()) return fmt::format("{} is declared further down; a declaration stands above its use", word);
    if (!library.empty()) return library;
    std::vector<std::string_view> names = GetLanguageWords();
    names.insert(names.end(), types.begin(), types.end());
    for (const OutlineUnit& unit : context.pOutline->m_Units) names.push_back(unit.name);
    const std::string nearest = FindNearest(word, names);
    return nearest.empty() ? fmt::format("there is no type {}", word)
                           : fmt::format("there is no type {}; {} is one", word, nearest);
}

static std::string HintStringType(const Context& context)
{
    const bool isString = context.At(-1) == "STRING" || context.At() == "STRING";
    return isString ? "no target supports the type STRING; there are numbers, bit strings and BOOL" : "";
}

static std::string HintArrayBounds(const Context& context)
{
    if (context.At(-1) != "ARRAY" || !Expects(context, "'['")) return {};
    return "the bounds of an array stand in brackets: ARRAY [0..9] OF INT";
}

static std::string HintDeclarationInBody(const Context& context)
{
    if (!context.At().starts_with("VAR") || FindOpenBlock(context)) return {};
    return "declarations stand at the beginning, in front of the first statement";
}

// ---- Statements.

static std::string HintCallOfType(const Context& context)
{
    if (context.Argument(0) != "TYPE IDENTIFIER" || context.At(1) != "(") return {};
    const std::string_view type = FindTypeName(context, context.At());
    const OutlineUnit* pBlock = type.empty() ? nullptr : context.pOutline->FindUnit(type);
    if (!pBlock) return {};
    if (context.pUnit)
        for (const OutlineVariable& variable : context.pUnit->variables)
            if (variable.type == type)
                return fmt::format("{} is the type; what is called is its instance: {}(...)", type, variable.name);
    return fmt::format("{0} is the type; declare an instance of it, such as {1}_1 : {0};, and call that", type, type);
}

static std::string HintArrayElement(const Context& context)
{
    if (context.At() != ":=" || context.At(-1) != ")") return {};
    const int open = FindBack(context, {"("});
    if (open > 0) return {};
    const OutlineVariable* pArray = context.FindVariable(context.At(open - 1));
    if (!pArray || pArray->bounds.empty()) return {};
    return fmt::format("the elements of an array stand in brackets: {}[{}]", pArray->name, context.At(open + 1));
}

static std::string HintMissingSemicolon(const Context& context)
{
    const SourceToken* pToken = context.TokenAt(0);
    const SourceToken* pBefore = context.TokenAt(-1);
    if (!Expects(context, "';'") || !pToken || !pBefore || pToken->line == pBefore->line) return {};
    return fmt::format("a ; is missing behind {} in line {}", pBefore->text, pBefore->line);
}

static std::string HintMissingWord(const Context& context)
{
    const int offset = FindBack(context, {";", "THEN", "DO", "OF", "ELSE", "IF", "ELSIF", "WHILE", "FOR", "CASE"});
    if (offset > 0) return {};
    const std::string_view opener = context.At(offset);
    const SourceToken* pToken = context.TokenAt(0);
    const SourceToken* pBefore = context.TokenAt(-1);
    if (!pToken || !pBefore || pToken->line == pBefore->line) return {};
    const int line = pBefore->line;
    if (opener == "IF" || opener == "ELSIF") return fmt::format("THEN is missing at the end of line {}", line);
    if (opener == "WHILE" || opener == "FOR") return fmt::format("DO is missing at the end of line {}", line);
    if (opener == "CASE") return fmt::format("OF is missing at the end of line {}", line);
    return {};
}

struct OpenStatement
{
    const SourceToken* pToken;
    bool isBehindElse;
    const SourceToken* pElseIf = nullptr;   // the last one in it that began behind an ELSE and has ended
};

static void CloseStatement(std::vector<OpenStatement>& open)
{
    if (open.empty()) return;
    const OpenStatement closed = open.back();
    open.pop_back();
    if (closed.isBehindElse && !open.empty()) open.back().pElseIf = closed.pToken;
}

// The statements that are still open at the place, the innermost last.
static std::vector<OpenStatement> ListOpenStatements(const Context& context)
{
    std::vector<OpenStatement> open;
    const int begin = FindBack(context, {"END_VAR", "PROGRAM", "FUNCTION", "FUNCTION_BLOCK"});
    if (begin > 0) return open;
    for (int offset = begin + 1; offset < 0; ++offset) {
        const std::string_view word = context.At(offset);
        if (IsOneOf(word, {"IF", "FOR", "WHILE", "REPEAT", "CASE"}))
            open.push_back({context.TokenAt(offset), context.At(offset - 1) == "ELSE"});
        else if (IsOneOf(word, {"END_IF", "END_FOR", "END_WHILE", "END_REPEAT", "END_CASE"})) CloseStatement(open);
    }
    return open;
}

static std::string HintOpenStatement(const Context& context)
{
    if (!context.At().starts_with("END_")) return {};
    const std::vector<OpenStatement> open = ListOpenStatements(context);
    for (const OpenStatement& statement : open) {
        const SourceToken* pElseIf = statement.isBehindElse ? statement.pToken : statement.pElseIf;
        if (!pElseIf || pElseIf->text != "IF") continue;
        return fmt::format("ELSE IF in line {} begins another IF, which needs an END_IF of its own; ELSIF needs none",
                           pElseIf->line);
    }
    if (open.empty() || context.At() == "END_" + std::string(open.back().pToken->text)) return {};
    const SourceToken& innermost = *open.back().pToken;
    return fmt::format("the {0} of line {1} lacks its END_{0}", innermost.text, innermost.line);
}

static std::string HintUnitInUnit(const Context& context)
{
    if (!IsOneOf(context.At(), {"PROGRAM", "FUNCTION", "FUNCTION_BLOCK"})) return {};
    const int offset = FindBack(context, {"PROGRAM", "FUNCTION", "FUNCTION_BLOCK", "END_PROGRAM", "END_FUNCTION",
                                          "END_FUNCTION_BLOCK"});
    if (offset > 0 || context.At(offset).starts_with("END_")) return {};
    return fmt::format("{0} {1} of line {2} lacks its END_{0}", context.At(offset), context.At(offset + 1),
                       context.TokenAt(offset)->line);
}

static std::string HintMissingSemicolonOfDeclaration(const Context& context)
{
    const SourceToken* pBefore = context.TokenAt(-1);
    return pBefore ? fmt::format("a ; is missing behind {} in line {}", pBefore->text, pBefore->line) : std::string();
}

std::vector<HintRule> GetSyntaxRules()
{
    return {{"E065", HintOpenComment},
            {"E065", HintOpenStatement},
            {"E065", HintOpenUnit},
            {"E065", HintSlashComment},
            {"E065", HintBlockComment},
            {"E065", HintDoubled},
            {"E065", HintIncrement},
            {"E065", HintTypedLiteral},
            {"E065", HintHexadecimal},
            {"E065", HintSmallDigits},
            {"E065", HintExponent},
            {"E006", HintMissingEndVar},
            {"E065", HintMissingEndVar},
            {"E065", HintStringType},
            {"E065", HintMissingColon},
            {"E065", HintNameIsType},
            {"E065", HintNameIsWord},
            {"E065", HintUnknownType},
            {"E065", HintArrayBounds},
            {"E065", HintDeclarationInBody},
            {"E065", HintCallOfType},
            {"E065", HintArrayElement},
            {"E065", HintAssignment},
            {"E065", HintComparison},
            {"E065", HintMissingSemicolon},
            {"E065", HintMissingWord},
            {"E065", HintUnitInUnit},
            {"E068", HintMissingSemicolonOfDeclaration}};
}
