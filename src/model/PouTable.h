#pragma once

#include "model/Name.h"
#include "model/Pou.h"

#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

class CErrorHandler;
class CNode;
class CXmlDocument;
class CXmlNode;

// All POUs by name, the overload sets of functions, and the target's list of programs.
class CPouTable
{
public:
    CPouTable(CErrorHandler& errors, CXmlDocument& target, CNamePool& names);
    virtual ~CPouTable() = default;

    void LoadProgramNames();                         // of the loaded target description
    bool IsProgramAllowed(const CPou& pou) const;    // the target names it, compared exactly
    // 1 if the POU was taken, -1 if it was refused (a POU that is refused is gone; of the refusals only
    // duplicates and unknown programs are reported).
    int AddPou(std::unique_ptr<CPou> pPou);
    CFunctionOverLoad* FindOverload(std::string_view name) const;   // in any case; null if there is none
    CPou* FindPou(std::string_view name) const;                     // in any case; null if there is none
    CPou* FindPou(const CName& name) const { return FindPouExact(name.GetKey()); }
    CPou* FindPouExact(std::string_view name) const;                // the same for a name that is lower-cased already
    CPou* FindPouExact(const CName& name) const { return name.m_Pou.Get(m_Identity); }
    // Makes the programs that the target wants made; reports the required ones that no source has declared.
    // Gives the names that this goes wrong with because they have capitals.
    std::vector<std::string> AddAutomaticPrograms();

    // The function that a call means: by name, and for an overload set by the types of the actual
    // parameters. pParameters may be null. A program is returned as it is; null after a diagnostic, or
    // silently where the parameters have failed already.
    CPou* FindFunction(const CName& name, const SourceLocation& location, CNode* pParameters) const;

    // Every entry in order of declaration; an overload set stands where its first function stood.
    const std::vector<CPou*>& GetPous() const { return m_Order; }

    std::vector<std::string> m_ProgramNames;         // of the target, closed by "-end"

private:
    int AddNew(const CName& key, std::unique_ptr<CPou> pPou);
    int RefuseDuplicate(const CPou& declaredBefore, const CPou& pou);
    int AddToOverload(CFunctionOverLoad& set, std::unique_ptr<CFunction> pFunction);
    void MakeOverload(const CName& key, std::unique_ptr<CFunction> pFunction);
    void SetPosition(const CName& key, CPou* pPou, std::size_t position);

    CErrorHandler& m_Errors;
    CXmlDocument& m_Target;
    CNamePool& m_Names;
    const TableIdentity m_Identity;
    std::unordered_map<std::string, const CXmlNode*> m_ProgramNodes;   // the target's node of each program, not owned
    std::vector<std::unique_ptr<CPou>> m_Owned;              // by position
    std::vector<CPou*> m_Order;
};
