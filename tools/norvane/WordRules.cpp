// Slips that show in the words and characters alone.

#include "norvane/Hints.h"
#include "norvane/TextWidth.h"
#include "norvane/WordDistance.h"

#include <fmt/format.h>

#include <algorithm>

using Context = HintContext;

static bool IsLanguageWord(std::string_view word)
{
    const std::vector<std::string_view>& words = GetLanguageWords();
    return std::find(words.begin(), words.end(), word) != words.end();
}

static bool IsInOtherCase(const SourceToken& token)
{
    if (token.kind != SourceToken::Kind::Word || IsLanguageWord(token.text)) return false;
    return IsLanguageWord(ToUpper(token.text));
}

static bool IsAboutWords(const Context& context)
{
    return context.pDiagnostic->id == "E007" || context.pDiagnostic->id == "E065";
}

// end_if; but `limit` may be a variable.
static std::string HintCapitals(const Context& context)
{
    const auto isSlip = [&](const SourceToken& token) {
        return IsInOtherCase(token) && !context.FindVariable(token.text);
    };
    const SourceToken* pToken = context.TokenAt(0);
    if (!IsAboutWords(context) || !pToken || !isSlip(*pToken)) return {};
    const std::vector<SourceToken>& tokens = context.pSource->GetTokens();
    const auto others = std::count_if(tokens.begin(), tokens.end(), isSlip) - 1;
    std::string hint = "the words of the language are written in capital letters: " + ToUpper(pToken->text);
    if (others > 0) hint += fmt::format("; this file has {} more in small ones", others);
    return hint;
}

// ENDIF, ELSEIF: what other languages call it.
static std::string FindForeignWord(std::string_view word)
{
    constexpr std::pair<std::string_view, std::string_view> foreign[] = {
        {"ELSEIF", "ELSIF"},       {"ELIF", "ELSIF"},          {"ELSE_IF", "ELSIF"},
        {"ENDIF", "END_IF"},       {"ENDFOR", "END_FOR"},      {"ENDWHILE", "END_WHILE"},
        {"ENDCASE", "END_CASE"},   {"ENDREPEAT", "END_REPEAT"}, {"ENDVAR", "END_VAR"},
        {"ENDPROGRAM", "END_PROGRAM"}, {"ENDFUNCTION", "END_FUNCTION"}, {"ENDTYPE", "END_TYPE"},
        {"SWITCH", "CASE"},        {"BREAK", "EXIT"},          {"FUNCTIONBLOCK", "FUNCTION_BLOCK"}};
    for (const auto& [theirs, ours] : foreign)
        if (ToUpper(word) == theirs) return std::string(ours);
    return {};
}

static bool HasNearVariable(const Context& context, std::string_view word)
{
    if (!context.pUnit) return false;
    const std::vector<OutlineVariable>& variables = context.pUnit->variables;
    return std::any_of(variables.begin(), variables.end(), [&](const OutlineVariable& variable) {
        return GetDistance(ToUpper(variable.name), ToUpper(word), 1) <= 1;
    });
}

// THNE; not where a declared name is as near.
static std::string HintMisspeltWord(const Context& context)
{
    const SourceToken* pToken = context.TokenAt(0);
    if (!IsAboutWords(context) || !pToken || pToken->kind != SourceToken::Kind::Word) return {};
    if (IsLanguageWord(pToken->text)) return {};
    std::string meant = FindForeignWord(pToken->text);
    const bool isCapitals = ToUpper(pToken->text) == pToken->text && pToken->text.size() >= 4;
    if (meant.empty() && isCapitals && !HasNearVariable(context, pToken->text)) {
        std::vector<std::string_view> words = GetLanguageWords();
        std::erase_if(words, [&](std::string_view word) { return GetDistance(pToken->text, word, 1) > 1; });
        meant = FindNearest(pToken->text, words);
    }
    return meant.empty() ? std::string() : fmt::format("{} is no word of the language; {} is", pToken->text, meant);
}

// The word of which a letter outside ASCII is a part, with what touches it on both sides.
static std::string GetWordAround(const Context& context)
{
    int first = 0;
    int last = 0;
    while (context.Touches(first - 1) && context.TokenAt(first - 1)->kind != SourceToken::Kind::Sign) --first;
    while (context.Touches(last) && context.TokenAt(last + 1)->kind != SourceToken::Kind::Sign) ++last;
    std::string word;
    for (int i = first; i <= last; ++i) word += context.At(i);
    return MakePrintable(word);
}

static std::string HintForeignLetters(const Context& context)
{
    const SourceToken* pToken = context.TokenAt(0);
    if (!pToken || static_cast<unsigned char>(pToken->text.front()) < 0x80) return {};
    if (pToken->text.starts_with("\xEF\xBB\xBF") && pToken->line == 1 && pToken->column == 1)
        return "the file begins with a byte order mark, which is no part of a source: save it as UTF-8 without one";
    return "names consist of the letters A to Z and a to z, digits and underscores; other letters may stand in "
           "comments and texts only: " + GetWordAround(context);
}

static std::string HintForeignSign(const Context& context)
{
    const std::string_view sign = context.At();
    if (sign == "!") return context.At(1) == "=" ? "unequal is written <>" : "a condition is turned round by NOT";
    if (sign == "\"") return "texts stand between single quotes, and only where a STRING is declared";
    if (sign == "%") return "the remainder of a division is written MOD; an address begins with %I, %Q or %M";
    if (sign == "|") return "two conditions are joined by OR";
    if (sign == "^") return "there are no pointers; exclusive or is written XOR, a power **";
    return "this character stands for nothing outside of comments";
}

static std::string HintStringNotClosed(const Context& context)
{
    return fmt::format("a text ends in the line in which it begins: the text from column {} on lacks its second '",
                       context.pDiagnostic->column);
}

static std::string HintTwoUnderscores(const Context& context)
{
    std::string word(context.At());
    while (word.find("__") != std::string::npos) word.erase(word.find("__"), 1);
    return "between the letters of a name stands one underscore at most: " + word;
}

std::vector<HintRule> GetWordRules()
{
    return {{"", HintCapitals},
            {"E067", HintForeignLetters},
            {"E067", HintForeignSign},
            {"", HintMisspeltWord},
            {"E073", HintStringNotClosed},
            {"E005", HintTwoUnderscores}};
}
