#pragma once

#include "report/BuildFacts.h"

#include <optional>
#include <string>

// A limit that a build must not cross, "retain>90%": what, ">" or ">=", and a number of bytes or a share.
struct Limit
{
    std::string text;      // as given
    std::string what;      // "global", "retain", "input", "output", "memory", "stack", "nested", "parameters"
    bool isReached = false;   // ">=": crossed as soon as it is reached
    bool isShare = false;
    double number = 0;
};

// Nothing, with the reason, if the text is no limit.
std::optional<Limit> ParseLimit(const std::string& text, std::string& error);

// What a limit looks at: bytes in use, and those that there are; -1 if they aren't known.
struct LimitedUse
{
    std::int64_t used = 0;
    std::int64_t size = -1;
};
LimitedUse GetLimitedUse(const BuildFacts& facts, const std::string& what);

// Whether it is crossed; nothing, with the reason, for a share of a size that isn't known.
std::optional<bool> IsCrossed(const BuildFacts& facts, const Limit& limit, std::string& error);
