#pragma once

#include "frontend/Tokens.h"

#include <optional>

// The truth of a comparison operator for two numbers; nothing for any other operator.
template <typename Number> std::optional<bool> CompareNumbers(int op, Number a, Number b)
{
    switch (op) {
    case EQUAL: return a == b;
    case NOT_EQUAL: return a != b;
    case GREATER_EQUAL: return a >= b;
    case LESS_EQUAL: return a <= b;
    case GREATER: return a > b;
    case LESS: return a < b;
    default: return std::nullopt;
    }
}
