#pragma once

#include "model/Type.h"

#include <vector>

// A set of types for which a formal parameter may stand.
class CTypeAny : public CType
{
public:
    explicit CTypeAny(std::string name);

    void AddType(CType* pType);                // not owned
    int GetLeafCount() const;                  // an ANY among the types counts with its own leaves
    CType* GetLeaf(int i) const;               // in that order; null when out of range

    std::vector<CType*> m_Types;
};
