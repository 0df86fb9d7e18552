#pragma once

#include "machine/Listing.h"
#include "machine/StackAnalysis.h"
#include "machine/TargetInfo.h"
#include "report/BuildFacts.h"

#include <optional>
#include <vector>

// Collects the POUs of a build: their sizes, who calls whom, and how deep the two stacks become. The return stack is
// counted as the compiler counts it; the parameter stack, of which the compiler knows only the size, by following the
// code.
class CPouCollector
{
public:
    CPouCollector(const CDebugInfo& debugInfo, const CListing& listing, const std::optional<CTargetInfo>& target,
                  BuildFacts& facts);

    void Collect();

private:
    void AddListed();
    void AddUnused();
    void AddCalls();
    void CountDepths();
    void CountDepth(PouFacts& pou);
    void HashCode(int pou);
    void AddPrograms();
    void FollowCells(ProgramFacts& program) const;
    int FindHighest(int pou) const;
    std::string GetPlace(const Instruction& instruction) const;

    const CDebugInfo& m_DebugInfo;
    const CListing& m_Listing;
    const std::optional<CTargetInfo>& m_Target;
    BuildFacts& m_Facts;               // its first POUs are those of the listing, in the same places
    CStackAnalysis m_Analysis;
};
