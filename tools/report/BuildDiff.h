#pragma once

#include "report/BuildFacts.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

// What differs between two builds, as a download of the second would bring it to a controller that runs the first.

enum class DiffSection : std::uint8_t   // ORDER SECTION
{
    Retained,
    Located,
    Globals,
    Locals,      // of programs, as far as the code names them
    Types,
    Programs,
    Pous,
    Stacks,
    Areas,
    Checksums,
    Count
};

enum class DiffEffect : std::uint8_t    // ORDER EFFECT
{
    Vanishes,
    Moves,
    ChangesType,
    Changes,
    Appears
};

struct Change
{
    DiffSection section = DiffSection::Retained;
    DiffEffect effect = DiffEffect::Changes;
    std::string name;
    std::string text;        // what happens to it, to be read behind the name
    std::string before;      // "retain+4 : INT"; empty of what appears
    std::string after;
    std::string guess;       // the other name, if it may have been renamed; empty: nothing points to it
    std::string guessReason; // "same type, same place"
};

enum class Sameness : std::uint8_t
{
    Same,                // byte for byte, but for the name of the listing
    SameButForStamps,
    SameCode,            // places, types and instructions are the same; lines, comments or file names differ
    Different
};

std::string_view GetSectionTitle(DiffSection section);   // "Retained values"
std::string_view GetSectionKey(DiffSection section);     // "retained"
std::string_view GetEffectKey(DiffEffect effect);        // "vanishes"

class CBuildDiff
{
public:
    CBuildDiff(const BuildFacts& before, const BuildFacts& after);

    const BuildFacts& GetBefore() const { return m_Before; }
    const BuildFacts& GetAfter() const { return m_After; }
    std::string GetSamenessText() const;   // a sentence; empty of different builds
    std::int64_t CountInstructions(const BuildFacts& facts) const;
    bool IsDeeper() const;                 // a stack of the second build needs more, or has less room
    bool HasLoss(DiffSection section) const;   // something in it vanishes, moves or changes its type

    std::vector<Change> m_Changes;         // by section
    Sameness m_Sameness = Sameness::Different;

private:
    void Compare();
    void Judge();

    const BuildFacts& m_Before;
    const BuildFacts& m_After;
    bool m_HasOtherCode = false;
};
