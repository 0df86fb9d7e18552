#pragma once

#include "report/BuildFacts.h"

#include <string>
#include <string_view>

// Reads the facts of a build. The target description may be missing; sizes of areas are not known then.
class CBuildReader
{
public:
    // `buildName` is NAME.asm, NAME.dbi or NAME; both files must be there. False, with the reason in `error`, if
    // something can't be read.
    static bool Load(const std::string& buildName, const std::string& targetName, BuildFacts& facts,
                     std::string& error);
    // The same of texts in memory; without a target if its text is empty. `shownName` stands in messages.
    static bool FromText(std::string listingText, std::string_view debugText, std::string_view targetText,
                         const std::string& shownName, BuildFacts& facts, std::string& error);
};

// Adds what the compiler has printed, a line for each error, warning and note. Lines of another form are left out.
void ReadMessages(std::string_view text, BuildFacts& facts);
