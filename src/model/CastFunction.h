#pragma once

#include "model/Name.h"

#include <memory>
#include <string>
#include <string_view>
#include <vector>

class CDataType;
class CType;

// A conversion such as INT_TO_REAL.
class CCastFunction
{
public:
    CCastFunction(CType* pFrom, CType* pTo);
    virtual ~CCastFunction() = default;

    CType* m_To;           // not owned
    CType* m_From;         // the argument's type, not owned
    std::string m_Name;
};

// The conversions between any two elementary types, a type to itself among them. There are hundreds, of which a program uses
// few, so each is made when its name is first asked for.
class CCastFunctionSet
{
public:
    explicit CCastFunctionSet(CNamePool& names);
    virtual ~CCastFunctionSet() = default;

    void Build(const CDataType& dataTypes);                 // the table's types must outlive the set
    void Add(std::unique_ptr<CCastFunction> pFunction);     // replaces an entry of that name
    // By the exact name; null if absent.
    CCastFunction* Find(const CName& name)
    {
        if (!name.HasTo()) return nullptr;
        return name.m_Cast.IsOf(m_Identity) ? name.m_Cast.Get(m_Identity) : Make(name);
    }
    CCastFunction* Find(std::string_view name) { return Find(m_Names.Intern(name)); }
    std::size_t GetCount() const { return m_Count; }        // made or added so far, of different names

private:
    CCastFunction* Make(const CName& name);
    CType* FindElementary(std::string_view name) const;

    CNamePool& m_Names;
    const TableIdentity m_Identity;
    std::size_t m_Count = 0;
    std::vector<CType*> m_Elementary;                       // not owned
    std::vector<std::unique_ptr<CCastFunction>> m_Owned;    // replaced ones too
};
