#include "model/FormTree.h"

#include "model/Pou.h"
#include "model/Type.h"

#include <functional>

static const CType* BaseOf(const CType* pType)
{
    return pType ? pType->GetBaseType() : nullptr;
}

std::size_t CFormTree::BranchHash::operator()(const Branch& branch) const
{
    constexpr std::size_t spread = 0x9e3779b97f4a7c15u;
    return std::hash<const CType*>()(branch.pType) ^ (static_cast<std::size_t>(branch.from) * spread);
}

CFormTree::Place CFormTree::NewPlace(CFunction& form)
{
    m_First.push_back(&form);
    return static_cast<Place>(m_First.size()) - 1;
}

bool CFormTree::Add(CFunction& form)
{
    const auto root = m_Roots.try_emplace(form.m_Parameters.size(), g_NoPlace).first;
    if (root->second == g_NoPlace) root->second = NewPlace(form);
    Place place = root->second;
    for (const std::unique_ptr<CVariable>& pParameter : form.m_Parameters) {
        const auto branch = m_Branches.try_emplace({place, BaseOf(pParameter->m_Type)}, g_NoPlace).first;
        if (branch->second == g_NoPlace) branch->second = NewPlace(form);
        place = branch->second;
    }
    return m_First[static_cast<std::size_t>(place)] == &form;
}

CFormTree::Place CFormTree::Begin(std::size_t parameterCount) const
{
    const auto root = m_Roots.find(parameterCount);
    return root == m_Roots.end() ? g_NoPlace : root->second;
}

CFormTree::Place CFormTree::Step(Place place, const CType* pType) const
{
    const auto branch = m_Branches.find({place, BaseOf(pType)});
    return branch == m_Branches.end() ? g_NoPlace : branch->second;
}
