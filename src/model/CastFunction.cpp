#include "model/CastFunction.h"

#include "model/Type.h"
#include "target/DataType.h"

#include <utility>

CCastFunction::CCastFunction(CType* pFrom, CType* pTo)
    : m_To(pTo), m_From(pFrom), m_Name(pFrom->m_Name + "_TO_" + pTo->m_Name)
{
}

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
    std::string name = pFunction->m_Name;
    m_Functions.insert_or_assign(std::move(name), std::move(pFunction));
}

CCastFunction* CCastFunctionSet::Find(std::string_view name) const
{
    const auto entry = m_Functions.find(std::string(name));
    return entry == m_Functions.end() ? nullptr : entry->second.get();
}
