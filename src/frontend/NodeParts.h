#pragma once

#include "frontend/Node.h"
#include "frontend/Tokens.h"

// The children of the statements that have optional ones, by name; null where one is absent. Checks and generator take
// these statements apart here and nowhere else. The nodes stay their tree's.

// FOR: assignment, end, [step], statements
struct ForParts
{
    CNode* pAssignment;
    CNode* pVariable;   // the assignment's two sides
    CNode* pFrom;
    CNode* pTo;
    CNode* pStep;       // null: a step of 1
    const CNode* pBody;
};

inline ForParts GetForParts(const CNode* pFor)
{
    constexpr int countWithStep = 4;
    const bool hasStep = pFor->GetChildCount() == countWithStep;
    CNode* pAssignment = pFor->Child(0);
    return {pAssignment,    pAssignment->Child(0),          pAssignment->Child(1),
            pFor->Child(1), hasStep ? pFor->Child(2) : nullptr, pFor->Child(hasStep ? 3 : 2)};
}

// IF: condition, statements, [list of ELSIF items], [statements of ELSE]
struct IfParts
{
    CNode* pCondition;
    const CNode* pThen;
    const CNode* pElsifItems;   // each has a condition and statements
    const CNode* pElse;
};

inline IfParts GetIfParts(const CNode* pIf)
{
    IfParts parts{pIf->Child(0), pIf->Child(1), nullptr, nullptr};
    int next = 2;
    const int count = pIf->GetChildCount();
    if (next < count && pIf->Child(next)->nKind == ELSEIF_LIST) parts.pElsifItems = pIf->Child(next++);
    if (next < count) parts.pElse = pIf->Child(next);
    return parts;
}

// CASE: selector, list of labels and statements in turn, [statements of ELSE]
struct CaseParts
{
    CNode* pSelector;
    const CNode* pPairs;
    const CNode* pElse;
};

inline CaseParts GetCaseParts(const CNode* pCase)
{
    return {pCase->Child(0), pCase->Child(1), pCase->GetChildCount() > 2 ? pCase->Child(2) : nullptr};
}
