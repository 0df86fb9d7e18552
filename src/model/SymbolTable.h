#pragma once

#include "model/Name.h"

#include <memory>
#include <string_view>
#include <vector>

class CMemoryHandler;
class CVariable;

// Variables by name, in any case. CNorvane holds one for each scope.
class CSymbolTable
{
public:
    CSymbolTable(CMemoryHandler& memory, CNamePool& names, Scope scope);
    virtual ~CSymbolTable();

    // Enters the variable and hands it to the memory handler, which fixes the order of placement. An
    // entry of the same name is replaced but lives on: the memory handler still knows it.
    void Add(std::unique_ptr<CVariable> pVariable);
    CVariable* Find(const CName& name) const { return SlotOf(name).Get(m_Identity); }   // null if absent
    CVariable* Find(std::string_view name) const;
    // Deletes all variables; the memory handler's list must have been emptied before.
    void Clear();

private:
    CNameSlot<CVariable>& SlotOf(const CName& name) const
    {
        return name.GetKey().m_Variables[static_cast<std::size_t>(m_Scope)];
    }

    CMemoryHandler& m_Memory;
    CNamePool& m_Names;
    const Scope m_Scope;
    TableIdentity m_Identity;
    std::vector<std::unique_ptr<CVariable>> m_Variables;    // owns all, in order of declaration
};
