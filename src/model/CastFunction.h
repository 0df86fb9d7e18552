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

// The conversions between any two elementary types, a type to itself among them.
class CCastFunctionSet
{
public:
    explicit CCastFunctionSet(CNamePool& names);
    virtual ~CCastFunctionSet() = default;

    void Build(const CDataType& dataTypes);
    void Add(std::unique_ptr<CCastFunction> pFunction);     // replaces an entry of that name
    CCastFunction* Find(const CName& name) const { return name.m_Cast.Get(m_Identity); }   // exact; null if absent
    CCastFunction* Find(std::string_view name) const;
    std::size_t GetCount() const { return m_Count; }        // of different names

private:
    CNamePool& m_Names;
    const TableIdentity m_Identity;
    std::size_t m_Count = 0;
    std::vector<std::unique_ptr<CCastFunction>> m_Owned;    // replaced ones too
};
