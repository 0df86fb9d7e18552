#include "model/SymbolTable.h"

#include "model/Variable.h"
#include "target/MemoryHandler.h"

#include <utility>

CSymbolTable::CSymbolTable(CMemoryHandler& memory, CNamePool& names, Scope scope)
    : m_Memory(memory), m_Names(names), m_Scope(scope), m_Identity(names.NewIdentity())
{
}

CSymbolTable::~CSymbolTable() = default;

void CSymbolTable::Add(std::unique_ptr<CVariable> pVariable)
{
    CVariable* pAdded = pVariable.get();
    m_Variables.push_back(std::move(pVariable));
    SlotOf(m_Names.Intern(pAdded->m_Name)).Set(m_Identity, pAdded);
    m_Memory.AddVariable(pAdded);
}

CVariable* CSymbolTable::Find(std::string_view name) const
{
    const CName* pKey = m_Names.FindKey(name);
    return pKey ? Find(*pKey) : nullptr;
}

// Whatever the names still say belongs to the identity that is given up.
void CSymbolTable::Clear()
{
    m_Identity = m_Names.NewIdentity();
    m_Variables.clear();
}
