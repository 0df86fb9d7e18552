#include "model/Pou.h"

#include <utility>

CPou::CPou(std::string name, const SourceLocation& location) : m_Name(std::move(name)), m_Location(location) {}

void CPou::AddCallee(CPou* pPou)
{
    if (m_CalleeSet.insert(pPou).second) m_Callees.push_back(pPou);
}

// From the end, since the function asked for is nearly always the one declared last.
int CFunctionOverLoad::GetIndex(const CFunction* pFunction) const
{
    int i = static_cast<int>(m_Functions.size()) - 1;
    while (i >= 0 && m_Functions[static_cast<std::size_t>(i)].get() != pFunction) --i;
    return i;
}

void CFunctionOverLoad::Add(std::unique_ptr<CFunction> pFunction)
{
    std::vector<const CType*> signature;
    for (const std::unique_ptr<CVariable>& pParameter : pFunction->m_Parameters)
        signature.push_back(pParameter->m_Type);
    const bool isCallable = !signature.empty();
    const bool isNew = m_Signatures.insert(std::move(signature)).second;
    pFunction->m_IsHidden = !isCallable || !isNew;
    m_Functions.push_back(std::move(pFunction));
}
