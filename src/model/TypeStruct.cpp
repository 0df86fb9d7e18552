#include "model/TypeStruct.h"

#include "files/Format.h"

#include <utility>

CTypeStruct::CTypeStruct(std::string name) : CType(std::move(name))
{
    m_Class = Class::Struct;
}

std::string CTypeStruct::GetInitText() const
{
    std::string text = "(";
    for (const std::unique_ptr<CMember>& pMember : m_Members) {
        text += pMember->m_Name;
        text += ":=";
        text += pMember->m_InitValue ? pMember->m_InitValue->GetBracketedText() : "NULL";
        text += ',';
    }
    if (!m_Members.empty()) text.pop_back();
    text += ')';
    return text;
}

static bool IsBoolMember(const CMember& member)
{
    return member.m_Type && member.m_Type->IsBool();
}

void CTypeStruct::AddMember(std::unique_ptr<CMember> pMember)
{
    const CMember* pBefore = m_Members.empty() ? nullptr : m_Members.back().get();
    pMember->m_BoolsInFront = pBefore && IsBoolMember(*pBefore) ? pBefore->m_BoolsInFront + 1 : 0;
    const int position = static_cast<int>(m_Members.size());
    m_ByName.try_emplace(ToLowerCase(pMember->m_Name), position);   // of members of one name the first is found
    m_Members.push_back(std::move(pMember));
}

CMember* CTypeStruct::FindMember(std::string_view name, int* pIndex) const
{
    const auto entry = m_ByName.find(ToLowerCase(name));
    if (entry == m_ByName.end()) return nullptr;
    if (pIndex) *pIndex = entry->second;
    return m_Members[static_cast<std::size_t>(entry->second)].get();
}

std::unique_ptr<CTypeStruct> CTypeStruct::Clone() const
{
    std::unique_ptr<CTypeStruct> pClone = std::make_unique<CTypeStruct>(m_Name);
    CopyFieldsTo(*pClone);
    return pClone;
}

void CTypeStruct::CopyFieldsTo(CTypeStruct& copy) const
{
    copy.m_InitValue = CloneOrNull(m_InitValue.get());
    copy.m_IsElementary = m_IsElementary;
    copy.m_AliasOf = m_AliasOf;
    copy.m_Allowed = m_Allowed;
    copy.m_SizeBits = m_SizeBits;
    copy.m_Align = m_Align;
    copy.m_IsAlias = m_IsAlias;
    for (const std::unique_ptr<CMember>& pMember : m_Members) copy.AddMember(pMember->Clone());
}

int CTypeStruct::GetBoolBit(const CMember* pMember) const
{
    constexpr int bitsInByte = 8;
    if (!IsBoolMember(*pMember)) return 0;
    if (IsStructFB() && pMember->IsInOut()) return 0;   // its slot holds a pointer
    return pMember->m_BoolsInFront % bitsInByte;
}

CTypeStructFB::CTypeStructFB(std::string name) : CTypeStruct(std::move(name))
{
    m_Class = Class::StructFB;
}

std::unique_ptr<CTypeStruct> CTypeStructFB::Clone() const
{
    std::unique_ptr<CTypeStructFB> pClone = std::make_unique<CTypeStructFB>(m_Name);
    CopyFieldsTo(*pClone);
    pClone->m_FunctionBlock = m_FunctionBlock;
    return pClone;
}
