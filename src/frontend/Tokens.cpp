#include "frontend/Tokens.h"

#include <array>

namespace
{

constexpr int g_FirstToken = 258;

constexpr std::array g_TokenTexts = {   // ORDER TOKENS
#define TOKEN(name, number, text) std::string_view(text),
#include "frontend/Tokens.def"
#undef TOKEN
};

constexpr bool IsNumberedWithoutGap()
{
    int expected = g_FirstToken;
    for (const int number : {
#define TOKEN(name, number, text) number,
#include "frontend/Tokens.def"
#undef TOKEN
         })
        if (number != expected++) return false;
    return true;
}
static_assert(IsNumberedWithoutGap(), "the number of a token is its place in the list");

}   // namespace

std::string_view GetTokenText(int token)
{
    const int index = token - g_FirstToken;
    if (index < 0 || index >= static_cast<int>(g_TokenTexts.size())) return {};
    return g_TokenTexts[static_cast<std::size_t>(index)];
}

bool IsComparison(int kind)
{
    switch (kind) {
#define OPERATOR(kind, mark, mnemonic)
#define COMPARISON(kind, mark, mnemonic) case kind:
#include "frontend/Operators.def"
#undef OPERATOR
        return true;
    default: return false;
    }
}

bool IsBitOperator(int kind)
{
    switch (kind) {
#define OPERATOR(kind, mark, mnemonic)
#define BIT_OPERATOR(kind, mark, mnemonic) case kind:
#include "frontend/Operators.def"
#undef OPERATOR
        return true;
    default: return false;
    }
}

bool IsInfixOperator(int kind)
{
    switch (kind) {
#define OPERATOR(kind, mark, mnemonic) case kind:
#include "frontend/Operators.def"
#undef OPERATOR
        return true;
    default: return false;
    }
}

std::string GetOperatorText(int kind)
{
    constexpr int firstNamedKind = 255;
    if (kind < firstNamedKind) return std::string(1, static_cast<char>(kind));
    return std::string(GetTokenText(kind));
}
