#pragma once

#include "frontend/SourceLocation.h"
#include "model/FormTree.h"
#include "model/Variable.h"

#include <cstdint>
#include <memory>
#include <string>
#include <unordered_set>
#include <vector>

class CFunction;
class CFunctionBlock;
class CFunctionOverLoad;
class CProgram;
class CType;
class CTypeStructFB;

// A program organisation unit.
class CPou
{
public:
    CPou(std::string name, const SourceLocation& location);
    virtual ~CPou() = default;
    CPou(const CPou&) = delete;
    CPou& operator=(const CPou&) = delete;

    // This POU as its class; null if it is another. An overload set is a function too.
    virtual CFunction* AsFunction() { return nullptr; }
    virtual CFunctionBlock* AsFunctionBlock() { return nullptr; }
    virtual CProgram* AsProgram() { return nullptr; }
    virtual CFunctionOverLoad* AsOverload() { return nullptr; }
    bool IsFunction() const { return const_cast<CPou*>(this)->AsFunction() != nullptr; }
    bool IsFunctionBlock() const { return const_cast<CPou*>(this)->AsFunctionBlock() != nullptr; }
    bool IsProgram() const { return const_cast<CPou*>(this)->AsProgram() != nullptr; }
    bool IsOverload() const { return const_cast<CPou*>(this)->AsOverload() != nullptr; }

    void AddCallee(CPou* pPou);                             // keeps each callee once, in order of first call

    std::int32_t m_Position = -1;                           // in the POU table; -1: it doesn't stand there by itself
    std::int32_t m_LocalSize = 0;                           // bytes of local memory
    std::int32_t m_ParameterCount = 0;
    std::string m_Name;                                     // as written
    SourceLocation m_Location;                              // all four numbers -1 if automatic
    std::vector<std::unique_ptr<CVariable>> m_Parameters;   // in order; of a function block all its variables
    std::vector<CPou*> m_Callees;                           // not owned
    bool m_Used = false;                                    // some program reaches it

private:
    std::unordered_set<const CPou*> m_CalleeSet;            // the same as m_Callees, for AddCallee
};

class CFunction : public CPou
{
public:
    using CPou::CPou;
    CFunction* AsFunction() override { return this; }

    CType* m_ReturnType = nullptr;                          // null when the function has no result
    bool m_IsHidden = false;                                // no call can mean this form of an overload set
    int m_FormNumber = -1;                                  // position in its overload set; -1: in none
    CVariable* m_ReturnVariable = nullptr;                  // the local that holds the result, null likewise;
                                                            // once the POU's scope has ended only a mark
};

// All functions of one name; itself no function that could be called.
class CFunctionOverLoad : public CFunction
{
public:
    using CFunction::CFunction;
    CFunctionOverLoad* AsOverload() override { return this; }

    int GetIndex(const CFunction* pFunction) const;         // position in the set, -1 if it isn't in it
    // Appends a form. It is hidden if an earlier one has the same types, or if it has no parameters: a call without
    // any finds no set.
    void Add(std::unique_ptr<CFunction> pFunction);

    const CFormTree& GetForms() const { return m_Forms; }

    std::vector<std::unique_ptr<CFunction>> m_Functions;    // in order of declaration

private:
    CFormTree m_Forms;                                      // the same forms
};

class CFunctionBlock : public CPou
{
public:
    using CPou::CPou;
    CFunctionBlock* AsFunctionBlock() override { return this; }

    CTypeStructFB* m_Type = nullptr;                        // the structure of its instances, owned by the type table
};

class CProgram : public CPou
{
public:
    using CPou::CPou;
    CProgram* AsProgram() override { return this; }

    std::int32_t m_Id = -1;                                 // the target's number of the program
    std::string m_End;                                      // the target's text for the end of the code
    std::string m_Begin;                                    // and for its start
    bool m_Automatic = false;                               // made because no source declares it
    bool m_Required = false;
    bool m_Auto = false;
    bool m_InitGlobal = false;                              // calls the global initialisation
    bool m_InitRetain = false;
};
