#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

class CMemoryHandler;
class CName;
class CVariable;

// Variables by name, in any case. CNorvane holds two: the globals, and those of the POU in progress.
class CSymbolTable
{
public:
    explicit CSymbolTable(CMemoryHandler& memory);
    virtual ~CSymbolTable();

    // Enters the variable and hands it to the memory handler, which fixes the order of placement. An
    // entry of the same name is replaced but lives on: the memory handler still knows it.
    void Add(std::unique_ptr<CVariable> pVariable);
    CVariable* Find(const CName& name) const;        // null if absent
    CVariable* Find(std::string_view name) const;
    // Deletes all variables; the memory handler's list must have been emptied before.
    void Clear();

private:
    CMemoryHandler& m_Memory;
    std::vector<std::unique_ptr<CVariable>> m_Variables;    // owns all, in order of declaration
    std::unordered_map<std::string, CVariable*> m_ByName;   // lower-cased names; for lookup only
};
