#pragma once

#include "frontend/NodeArena.h"
#include "frontend/SourceLocation.h"
#include "frontend/Tokens.h"
#include "model/Name.h"

#include <cstddef>
#include <cstdint>
#include <string_view>

class CArrayIndex;
class CCastFunction;
class CInitValue;
class CMember;
class CNode;
class CPou;
class CType;
class CVariable;
class OutputTextFile;

// The children of a node, in order: an array in the node's arena that moves as it grows.
class CNodeList
{
public:
    explicit CNodeList(CNodeArena& arena) : m_pArena(&arena) {}
    CNodeList(const CNodeList&) = delete;
    CNodeList& operator=(const CNodeList&) = delete;

    void push_back(CNode* pNode)
    {
        if (m_Count == m_Capacity) reserve(m_Capacity == 0 ? 2 : 2 * std::size_t{m_Capacity});
        m_pNodes[m_Count++] = pNode;
    }
    void reserve(std::size_t capacity);
    void clear() { m_Count = 0; }
    void truncate(std::size_t count) { m_Count = static_cast<std::uint32_t>(count); }   // to no more than there are

    std::size_t size() const { return m_Count; }
    CNode*& operator[](std::size_t i) { return m_pNodes[i]; }
    CNode* operator[](std::size_t i) const { return m_pNodes[i]; }
    CNode* const* begin() const { return m_pNodes; }
    CNode* const* end() const { return m_pNodes + m_Count; }

private:
    CNode** m_pNodes = nullptr;
    std::uint32_t m_Count = 0;
    std::uint32_t m_Capacity = 0;
    CNodeArena* m_pArena;
};

// A node of the syntax tree. Its kind is a token number; what its children mean follows from the kind.
// The parser builds it, the checks annotate and fold it in place, the code generator walks it. A chain
// of operators nests to the left as deep as the source is long, so whoever walks trees goes down that
// side without recursion.
//
// A node lives in an arena, with its list of children and its text, until the part of the source that it belongs
// to is done with; nobody deletes one. Arenas make nodes, and nodes need no destructor.
class CNode
{
public:
    CNode(CNodeArena& arena, int kind, const SourceLocation& where) : nKind(kind), location(where), m_Children(arena) {}
    CNode(const CNode&) = delete;
    CNode& operator=(const CNode&) = delete;

    void AddChild(CNode* pNode) { m_Children.push_back(pNode); }
    int GetChildCount() const { return static_cast<int>(m_Children.size()); }
    // The i-th child; an internal fault where there is none.
    CNode* Child(int i) const;
    CVariable* GetVariable() const { return pVariable; }   // null if the node names none
    std::string_view GetName() const { return pName ? pName->GetText() : std::string_view(); }   // empty: none
    bool IsLiteral() const { return nKind == IMM_INTEGER || nKind == IMM_REAL || nKind == TRUE || nKind == FALSE; }
    bool IsNumericLiteral() const { return nKind == IMM_INTEGER || nKind == IMM_REAL; }
    bool IsBooleanLiteral() const { return nKind == TRUE || nKind == FALSE; }
    // An integer literal that may stand for a boolean: 0 or 1, or what NOT folds these two into.
    bool IsBooleanInteger() const { return nKind == IMM_INTEGER && nValue >= -2 && nValue <= 1; }
    // A comparison of two boolean literals. It has no type either, but what comes out of it is a BOOL.
    bool ComparesTruths() const;
    // A literal of time or date: it stands in the tree without a type and without a value.
    bool IsTimeLiteral() const
    {
        return nKind == TIME_OF_DAY_DIR || nKind == DATE_AND_TIME_DIR || nKind == DATE_DIR || nKind == TIME_DIR;
    }
    bool IsIdentifier() const { return nKind == IDENTIFIER; }
    // A use of a variable: a plain name or a path that starts at one.
    bool IsVariableAccess() const { return nKind == IDENTIFIER || nKind == DOT || nKind == ARRAY_ELEMENT; }
    // Writes one element per node, depth first, without recursion.
    void WriteXml(OutputTextFile& file) const;

    CArrayIndex* pArrayIndex = nullptr;      // not owned: index ranges that apply at this point of an array access
    int nKind;
    bool bThroughInOut = false;              // the path goes through an in-out member of a function block
    bool bFractionLost = false;              // an IMM_INTEGER that folding made of a number with a fraction
    bool bUnreachableWarned = false;         // of a list: the one warning about statements behind RETURN or EXIT is out
    const CName* pName = nullptr;            // of NEW_ID, IDENTIFIER, RETURN_TYPE, LIST_ID and calls; null: none
    const CName* pDirect = nullptr;          // address text of a declared variable without "%"; null: none
    std::string_view szString;               // text of a string literal, in the arena
    const CInitValue* pInit = nullptr;       // value of a SIMPLIFIED node, or what else is attached; the arena's or null
    std::int64_t nValue = 0;                 // of an IMM_INTEGER; 1 marks a FUNCTION_CALL as a statement
    double dValue = 0;                       // of an IMM_REAL
    CType* pType = nullptr;                  // type of the expression, not owned; null: untyped
    // What the node resolved to, not owned; at most one of them is set, by the kind of the node.
    CVariable* pVariable = nullptr;          // uses, paths, declared names, function block calls, RETURN_TYPE
    CPou* pPou = nullptr;                    // FUNCTION_CALL and POU nodes
    CCastFunction* pCast = nullptr;          // CAST_FUNCTION_CALL
    CMember* pMember = nullptr;              // the name in a parameter of a function block call
    SourceLocation location;
    CNodeList m_Children;
};
