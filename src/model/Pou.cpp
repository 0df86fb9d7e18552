#include "model/Pou.h"

#include <utility>

CPou::CPou(std::string name, const SourceLocation& location) : m_Name(std::move(name)), m_Location(location) {}

void CPou::AddCallee(CPou* pPou)
{
    if (m_CalleeSet.insert(pPou).second) m_Callees.push_back(pPou);
}

int CFunctionOverLoad::GetIndex(const CFunction* pFunction) const
{
    const int number = pFunction->m_FormNumber;
    if (number < 0 || number >= static_cast<int>(m_Functions.size())) return -1;
    return m_Functions[static_cast<std::size_t>(number)].get() == pFunction ? number : -1;
}

void CFunctionOverLoad::Add(std::unique_ptr<CFunction> pFunction)
{
    const bool isNew = m_Forms.Add(*pFunction);
    pFunction->m_IsHidden = !isNew || pFunction->m_Parameters.empty();
    pFunction->m_FormNumber = static_cast<int>(m_Functions.size());
    m_Functions.push_back(std::move(pFunction));
}
