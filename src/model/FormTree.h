#pragma once

#include <cstddef>
#include <cstdint>
#include <unordered_map>
#include <vector>

class CFunction;
class CType;

// The forms of an overloaded function by the types of their parameters: a tree with one step for each parameter, whose
// roots are told apart by the number of parameters. So a call finds its form in as many steps as it has parameters,
// however many forms there are. Types are compared as IsSameType does. The functions aren't owned.
class CFormTree
{
public:
    // A place in the tree. Each one that there is has at least one form below it.
    using Place = std::int32_t;
    static constexpr Place g_NoPlace = -1;

    // False if a form with the same types is there already.
    bool Add(CFunction& form);
    // Where the forms of that many parameters begin, and where those go on whose next parameter is of the type:
    // g_NoPlace where there is none.
    Place Begin(std::size_t parameterCount) const;
    Place Step(Place place, const CType* pType) const;
    // The form declared first of all those below the place.
    CFunction& GetFirst(Place place) const { return *m_First[static_cast<std::size_t>(place)]; }

private:
    struct Branch
    {
        Place from;
        const CType* pType;      // the base type
        bool operator==(const Branch&) const = default;
    };
    struct BranchHash
    {
        std::size_t operator()(const Branch& branch) const;
    };

    Place NewPlace(CFunction& form);

    std::unordered_map<std::size_t, Place> m_Roots;                  // by the number of parameters
    std::unordered_map<Branch, Place, BranchHash> m_Branches;
    std::vector<CFunction*> m_First;                                 // by place
};
