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
    for (CType* pFrom : dataTypes.GetTypes()) {
        if (!pFrom->IsElementary()) continue;
        for (CType* pTo : dataTypes.GetTypes())
            if (pTo->IsElementary()) Add(std::make_unique<CCastFunction>(pFrom, pTo));
    }
}

void CCastFunctionSet::Add(std::unique_ptr<CCastFunction> pFunction)
{
    CNameSlot<CCastFunction>& slot = m_Names.Intern(pFunction->m_Name).m_Cast;
    if (!slot.IsOf(m_Identity)) ++m_Count;
    slot.Set(m_Identity, pFunction.get());
    m_Owned.push_back(std::move(pFunction));
}

CCastFunction* CCastFunctionSet::Find(std::string_view name) const
{
    const CName* pName = m_Names.Find(name);
    return pName ? Find(*pName) : nullptr;
}
