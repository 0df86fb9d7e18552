#include "model/Member.h"

#include <utility>

CMember::CMember(std::string name, CType* pType) : m_Name(std::move(name)), m_Type(pType) {}

std::unique_ptr<CMember> CMember::Clone() const
{
    std::unique_ptr<CMember> pClone = std::make_unique<CMember>(m_Name, m_Type);
    CopyFieldsTo(*pClone);
    return pClone;
}

bool CMember::IsInOut() const
{
    const CMemberFB* pMember = AsMemberFB();
    return pMember && pMember->m_IsInOut;
}

void CMember::CopyFieldsTo(CMember& copy) const
{
    copy.m_InitValue = CloneOrNull(m_InitValue.get());
    copy.m_Name = m_Name;
    copy.m_Offset = m_Offset;
    copy.m_Index = m_Index ? m_Index->Clone() : nullptr;
    copy.m_Type = m_Type;
    copy.m_BoolsInFront = m_BoolsInFront;
}

std::unique_ptr<CMember> CMemberFB::Clone() const
{
    std::unique_ptr<CMemberFB> pClone = std::make_unique<CMemberFB>(m_Name, m_Type);
    CopyFieldsTo(*pClone);
    pClone->m_IsOutput = m_IsOutput;
    pClone->m_IsInOut = m_IsInOut;
    pClone->m_IsInput = m_IsInput;
    return pClone;
}
