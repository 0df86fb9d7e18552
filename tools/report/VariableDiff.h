#pragma once

#include "report/BuildDiff.h"

#include <map>
#include <string>
#include <unordered_map>
#include <vector>

// Compares the variables and the types of two builds.
class CVariableDiff
{
public:
    CVariableDiff(const BuildFacts& before, const BuildFacts& after, std::vector<Change>& changes);
    void Compare();

private:
    struct Side
    {
        const BuildFacts* pFacts = nullptr;
        std::unordered_map<std::string, const VariableFacts*> variables;   // by full name, lower case
        std::unordered_map<std::string, const TypeFacts*> types;           // by name
        std::unordered_map<std::string, std::uint64_t> layouts;            // of types, by name: hash of all members
    };
    struct Leaf                    // a value within a variable
    {
        std::string typeText;
        BitRange place;
    };

    static Side MakeSide(const BuildFacts& facts);
    static std::uint64_t GetLayout(const Side& side, const std::string& typeText);
    void ComparePair(const VariableFacts& before, const VariableFacts& after);
    void CompareLeaves(const VariableFacts& before, const VariableFacts& after);
    static std::map<std::string, Leaf> Expand(const Side& side, const VariableFacts& variable);
    void AddVanished(const VariableFacts& variable);
    void AddNew(const VariableFacts& variable);
    std::string GetFormer(const VariableFacts& variable, BitRange place) const;
    void GuessRenames();
    void CompareTypes();
    void CompareType(const TypeFacts& before, const TypeFacts& after);

    struct Former                  // a retained variable of the first build
    {
        std::int64_t begin;
        std::int64_t reach;        // the furthest end of it and those in front of it
        const VariableFacts* pVariable;
    };

    Side m_Before;
    Side m_After;
    std::vector<Former> m_Retained;    // by place
    std::vector<Change>& m_Changes;
    struct Lost                    // or new
    {
        std::size_t change;
        const VariableFacts* pVariable;
        DiffSection section;
    };
    std::vector<Lost> m_Vanished;
    std::vector<Lost> m_New;
};
