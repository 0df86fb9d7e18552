#pragma once

#include "machine/Image.h"

#include <vector>

// Follows the evaluation stack through a listing without running it. Code whose stack stands equally high whenever
// it comes to an instruction, that never takes what isn't there and never outgrows the parameter stack needs no check
// while it runs.

struct StackEffect
{
    int pops = 0;
    int pushes = 0;
};

// Of everything but JSR and RTS. CASE and CASER as if they didn't jump.
StackEffect GetStackEffect(const Instruction& instruction);

// JMP, JC, JNC, JSR, RTS, CASE, CASER: what ends a straight stretch of code.
bool EndsStretch(Mnemonic mnemonic);

class CStackAnalysis
{
public:
    CStackAnalysis(const CImage& image, int cellBytes);
    // Of a listing alone, against no limit; m_IsSafe then tells of stretches only.
    explicit CStackAnalysis(const CListing& listing);

    // Cells above the start of a POU, those of what it calls included; and below it, -1 and less, of its caller.
    int GetHighest(int pou) const { return m_Summaries[static_cast<std::size_t>(pou)].highest; }
    int GetLowest(int pou) const { return m_Summaries[static_cast<std::size_t>(pou)].lowest; }

    bool m_IsSafe = true;
    std::vector<std::int32_t> m_Depths;   // cells in front of each instruction, from the start of its POU; or unknown

    static constexpr std::int32_t unknown = INT32_MIN;

private:
    struct Summary
    {
        int lowest = 0;       // below the start: what it takes of the caller
        int highest = 0;
        int net = 0;          // at its end
        bool isDone = false;
        bool isOpen = false;  // being followed, for calls in a circle
    };

    void AnalysePou(int pou);
    void FollowPou(int pou);
    void Reach(int instruction, std::int32_t depth, std::vector<int>& open);

    const CListing& m_Listing;
    std::vector<Summary> m_Summaries;
};
