#pragma once

#include "machine/Listing.h"
#include "machine/TargetInfo.h"
#include "report/BuildFacts.h"
#include "report/TypeSizes.h"

#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

// Collects the variables of a build and their areas: the globals that the debug file lists, and what the code names
// beside them, which are the variables of programs (local, retained, or with an address of their own). Of those the
// code tells the bytes that it reaches; what it never names nobody knows.
class CVariableCollector
{
public:
    CVariableCollector(const CDebugInfo& debugInfo, const CListing& listing, const std::optional<CTargetInfo>& target,
                       BuildFacts& facts);

    void Collect();

private:
    struct Access                      // an operand with a name
    {
        std::string_view root;         // in front of the first "." or "["
        BitRange place;
        std::string typeText;          // of the root, where the instruction tells it
    };

    void AddAreas();
    void AddGlobals();
    int FindLocatedArea(const std::string& address, std::int64_t byte);
    void ReadCode();
    void ReadInstruction(int instruction);
    std::optional<Access> ReadAccess(int instruction) const;
    BitRange FindExtent(int instruction, bool isElement) const;
    bool CountGlobal(const Instruction& instruction, const Access& access);
    void AddOwn(const Instruction& instruction, const Access& access);
    int GetArea(const Instruction& instruction);
    void FindOverlaps();
    void FindStretchedMemory();
    void BeginWhereSomethingLies();

    const CDebugInfo& m_DebugInfo;
    const CListing& m_Listing;
    const std::optional<CTargetInfo>& m_Target;
    BuildFacts& m_Facts;
    CTypeSizes m_Sizes;
    std::unordered_map<std::string, int> m_Globals;        // lower case
    std::unordered_map<std::string, int> m_Own;            // by POU, area and name
    std::unordered_map<std::string, const ListingVariable*> m_Listed;   // globals that the initialisation lists
    std::vector<int> m_LocalAreas;                         // for each POU of the listing
    std::unordered_map<std::string, bool> m_Reported;
};
