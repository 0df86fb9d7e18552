#pragma once

#include <string>
#include <string_view>

// Tokens and tree node kinds are one numbering: a one-character token is its character code, and the
// named ones are numbered from 258 in the order of Tokens.def.
enum Token : int
{
#define TOKEN(name, number, text) name = number,
#include "frontend/Tokens.def"
#undef TOKEN
    PLUS = '+',   // the one-character tokens that nodes have as their kind
    MINUS = '-',
    TIMES = '*',
    DIVIDED_BY = '/',
};

// The token's text as messages and dumps show it, without quotes; empty for an unknown number.
std::string_view GetTokenText(int token);

// One of = <> >= <= > <.
bool IsComparison(int kind);

// One of AND OR XOR.
bool IsBitOperator(int kind);

// An operator that is written between two operands: one of Operators.def.
bool IsInfixOperator(int kind);

// An operator as messages show it: the character itself below 255, the token's text from there on.
std::string GetOperatorText(int kind);
