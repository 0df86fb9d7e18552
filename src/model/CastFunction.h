#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>

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
    virtual ~CCastFunctionSet() = default;

    void Build(const CDataType& dataTypes);
    void Add(std::unique_ptr<CCastFunction> pFunction);     // replaces an entry of that name
    CCastFunction* Find(std::string_view name) const;       // exact, upper case; null if absent
    std::size_t GetCount() const { return m_Functions.size(); }

private:
    std::unordered_map<std::string, std::unique_ptr<CCastFunction>> m_Functions;
};
