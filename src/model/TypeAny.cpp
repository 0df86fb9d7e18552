#include "model/TypeAny.h"

#include <utility>

CTypeAny::CTypeAny(std::string name) : CType(std::move(name))
{
    m_Class = Class::Any;
}

void CTypeAny::AddType(CType* pType)
{
    m_Types.push_back(pType);
}

int CTypeAny::GetLeafCount() const
{
    int count = 0;
    for (CType* pType : m_Types) {
        const CTypeAny* pAny = pType->AsAny();
        count += pAny ? pAny->GetLeafCount() : 1;
    }
    return count;
}

CType* CTypeAny::GetLeaf(int i) const
{
    if (i < 0) return nullptr;
    for (CType* pType : m_Types) {
        const CTypeAny* pAny = pType->AsAny();
        const int count = pAny ? pAny->GetLeafCount() : 1;
        if (i < count) return pAny ? pAny->GetLeaf(i) : pType;
        i -= count;
    }
    return nullptr;
}
