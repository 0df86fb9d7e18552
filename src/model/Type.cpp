#include "model/Type.h"

#include "model/TypeAny.h"
#include "model/TypeArray.h"
#include "model/TypeStruct.h"

#include <utility>

CType::Group CType::GroupOf(std::string_view name)
{
    struct Entry
    {
        std::string_view name;
        Group group;
    };
    // The elementary types that aren't listed, the times and dates, belong to no group.
    static constexpr Entry entries[] = {
        {"BOOL", Group::Bool},
        {"SINT", Group::Signed}, {"INT", Group::Signed},
        {"DINT", Group::Signed}, {"LINT", Group::Signed},
        {"USINT", Group::Unsigned}, {"UINT", Group::Unsigned},
        {"UDINT", Group::Unsigned}, {"ULINT", Group::Unsigned},
        {"REAL", Group::Real}, {"LREAL", Group::Real},
        {"BYTE", Group::BitString}, {"WORD", Group::BitString},
        {"DWORD", Group::BitString}, {"LWORD", Group::BitString},
    };
    for (const Entry& entry : entries)
        if (entry.name == name) return entry.group;
    return Group::None;
}

CType::CType(std::string name) : m_Name(std::move(name)), m_Group(GroupOf(m_Name)) {}

CType::CType(std::string name, CType* pAliasOf) : m_Name(std::move(name))
{
    if (!pAliasOf) return;   // nothing to rename: a type of no kind
    m_IsAlias = true;
    m_AliasOf = pAliasOf;
    m_SizeBits = pAliasOf->m_SizeBits;
    m_Align = pAliasOf->m_Align;
    m_Base = pAliasOf->m_Base;
}

std::string CType::GetInitText() const
{
    return m_InitValue ? m_InitValue->GetBracketedText() : "NULL";
}

CTypeAny* CType::AsAny()
{
    return IsAny() ? static_cast<CTypeAny*>(m_Base) : nullptr;
}

CTypeArray* CType::AsArray()
{
    return IsArray() ? static_cast<CTypeArray*>(m_Base) : nullptr;
}

CTypeArrayUser* CType::AsArrayUser()
{
    return IsArrayUser() ? static_cast<CTypeArrayUser*>(m_Base) : nullptr;
}

CTypeStruct* CType::AsStruct()
{
    return IsStruct() ? static_cast<CTypeStruct*>(m_Base) : nullptr;
}

CTypeStructFB* CType::AsStructFB()
{
    return IsStructFB() ? static_cast<CTypeStructFB*>(m_Base) : nullptr;
}
