#pragma once

#include "model/Pou.h"

#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

class CErrorHandler;
class CName;
class CNode;
class CXmlDocument;
class CXmlNode;

// All POUs by name, the overload sets of functions, and the target's list of programs.
class CPouTable
{
public:
    CPouTable(CErrorHandler& errors, CXmlDocument& target);
    virtual ~CPouTable() = default;

    void LoadProgramNames();                         // of the loaded target description
    bool IsProgramAllowed(const CPou& pou) const;    // the target names it, compared exactly
    // 1 if the POU was taken, -1 if it was refused (a POU that is refused is gone; of the refusals only
    // duplicates and unknown programs are reported).
    int AddPou(std::unique_ptr<CPou> pPou);
    CFunctionOverLoad* FindOverload(std::string_view name) const;   // in any case; null if there is none
    CPou* FindPou(std::string_view name) const;                     // in any case; null if there is none
    CPou* FindPouExact(std::string_view name) const;                // the same for a name that is lower-cased already
    CPou* FindPouExact(const CName& name) const;
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
    int AddNew(std::string key, std::unique_ptr<CPou> pPou);
    int RefuseDuplicate(const CPou& declaredBefore, const CPou& pou);
    int AddToOverload(CFunctionOverLoad& set, std::unique_ptr<CFunction> pFunction);
    void MakeOverload(std::size_t position, std::unique_ptr<CFunction> pFunction);

    CErrorHandler& m_Errors;
    CXmlDocument& m_Target;
    std::unordered_map<std::string, const CXmlNode*> m_ProgramNodes;   // the target's node of each program, not owned
    std::unordered_map<std::string, std::size_t> m_Pous;     // lower-cased name to position
    std::vector<std::unique_ptr<CPou>> m_Owned;              // by position
    std::vector<CPou*> m_Order;
};
