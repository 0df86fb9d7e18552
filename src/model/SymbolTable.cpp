#include "model/SymbolTable.h"

#include "files/Format.h"
#include "model/Name.h"
#include "model/Variable.h"
#include "target/MemoryHandler.h"

#include <utility>

CSymbolTable::CSymbolTable(CMemoryHandler& memory) : m_Memory(memory) {}
CSymbolTable::~CSymbolTable() = default;

void CSymbolTable::Add(std::unique_ptr<CVariable> pVariable)
{
    CVariable* pAdded = pVariable.get();
    m_Variables.push_back(std::move(pVariable));
    m_ByName[ToLowerCase(pAdded->m_Name)] = pAdded;
    m_Memory.AddVariable(pAdded);
}

CVariable* CSymbolTable::Find(const CName& name) const
{
    return Find(name.GetText());
}

CVariable* CSymbolTable::Find(std::string_view name) const
{
    const auto entry = m_ByName.find(ToLowerCase(name));
    return entry == m_ByName.end() ? nullptr : entry->second;
}

void CSymbolTable::Clear()
{
    m_ByName.clear();
    m_Variables.clear();
}
