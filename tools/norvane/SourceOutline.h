#pragma once

#include "norvane/SourceText.h"

#include <string>
#include <string_view>
#include <vector>

struct OutlineVariable
{
    std::string_view name;
    std::string_view block;              // "VAR", "VAR_INPUT", ...; empty: a member of a structure
    std::string_view type;               // its first word; of an array that of the elements
    std::vector<std::string> bounds;     // "0..9" for each dimension; empty: no array
    const std::string* pFile = nullptr;
    int line = 0;
};

// A program, function, function block or structure.
struct OutlineUnit
{
    std::string_view kind;               // the word that begins it; "STRUCT"; empty: what stands outside of all
    std::string_view name;
    const std::string* pFile = nullptr;
    int line = 0;
    int endLine = 0;                     // of its last word; the last line of the file if that is missing
    std::vector<OutlineVariable> variables;
};

// What the sources declare, found by a look at their words alone: also where the compiler has refused it, and
// incomplete where they are broken. Good for telling the user what could be meant, and for nothing else.
class CSourceOutline
{
public:
    // The name and the text must live as long as the outline.
    void Add(const std::string& name, const CSourceText& source);

    // What surrounds the line; null: nothing.
    const OutlineUnit* FindUnitAt(const std::string& file, int line) const;
    const OutlineUnit* FindUnit(std::string_view name) const;
    // In the unit, else among the globals; null if there is none.
    const OutlineVariable* FindVariable(const OutlineUnit* pUnit, std::string_view name) const;
    // The instance's own function block.
    const OutlineUnit* FindBlockOf(const OutlineVariable& variable) const { return FindUnit(variable.type); }

    std::vector<OutlineUnit> m_Units;                 // in the order of the sources
    std::vector<OutlineVariable> m_Globals;
    std::vector<std::string_view> m_TypeNames;        // of TYPE, in their order
    std::vector<std::string_view> m_EnumeratedNames;  // values of enumerations

private:
    class Reader;
};
