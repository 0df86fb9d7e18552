#include "model/CastFunction.h"

#include "model/Type.h"
#include "target/DataType.h"

#include <utility>

CCastFunction::CCastFunction(CType* pFrom, CType* pTo)
    : m_To(pTo), m_From(pFrom), m_Name(pFrom->m_Name + "_TO_" + pTo->m_Name)
{
}

CCastFunctionSet::CCastFunctionSet(CNamePool& names) : m_Names(names), m_Identity(names.NewIdentity()) {}

// Called before any source is read, so the elementary types of the table are those of the language. Whether
// the target allows a type isn't asked here: a refused one is reported where its name is met.
void CCastFunctionSet::Build(const CDataType& dataTypes)
{
    for (CType* pType : dataTypes.GetTypes())
        if (pType->IsElementary()) m_Elementary.push_back(pType);
}

CType* CCastFunctionSet::FindElementary(std::string_view name) const
{
    for (CType* pType : m_Elementary)
        if (pType->m_Name == name) return pType;
    return nullptr;
}

// No elementary type has "_TO_" in its name, so the first one is between the two.
CCastFunction* CCastFunctionSet::Make(const CName& name)
{
    constexpr std::string_view to = "_TO_";
    const std::string_view text = name.GetText();
    const std::size_t place = text.find(to);
    CType* const pFrom = FindElementary(text.substr(0, place));
    CType* const pTo = FindElementary(text.substr(place + to.size()));
    if (!pFrom || !pTo) return nullptr;
    Add(std::make_unique<CCastFunction>(pFrom, pTo));
    return m_Owned.back().get();
}

void CCastFunctionSet::Add(std::unique_ptr<CCastFunction> pFunction)
{
    CNameSlot<CCastFunction>& slot = m_Names.Intern(pFunction->m_Name).m_Cast;
    if (!slot.IsOf(m_Identity)) ++m_Count;
    slot.Set(m_Identity, pFunction.get());
    m_Owned.push_back(std::move(pFunction));
}
