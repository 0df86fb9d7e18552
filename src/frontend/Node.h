#pragma once

#include "frontend/NodeArena.h"
#include "frontend/SourceLocation.h"
#include "frontend/Tokens.h"
#include "model/Name.h"

#include <cstddef>
#include <cstdint>
#include <string_view>

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
    CNodeArena& GetArena() const { return *m_pArena; }
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

// What few nodes have, apart from the node so that the others stay small.
struct NodeExtras
{
    CPou* pPou = nullptr;
    CCastFunction* pCast = nullptr;
    CMember* pMember = nullptr;
    const CInitValue* pInit = nullptr;
    const CName* pDirect = nullptr;
    std::string_view szString;
    double dValue = 0;
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
    CNode* Child(int i) const
    {
        if (i < 0 || i >= GetChildCount()) FailWithoutChild();
        return m_Children[static_cast<std::size_t>(i)];
    }
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
    // What else the node resolved to; not owned, null: nothing.
    CPou* GetPou() const { return GetExtras().pPou; }                    // FUNCTION_CALL and POU nodes
    CCastFunction* GetCast() const { return GetExtras().pCast; }         // CAST_FUNCTION_CALL
    CMember* GetMember() const { return GetExtras().pMember; }           // the name in a parameter of a function block call
    // Value of a SIMPLIFIED node, or what else is attached; the arena's or null.
    const CInitValue* GetInit() const { return GetExtras().pInit; }
    const CName* GetDirect() const { return GetExtras().pDirect; }       // address of a declared variable without "%"
    std::string_view GetString() const { return GetExtras().szString; }  // of a string literal, in the arena
    double GetReal() const { return GetExtras().dValue; }                // of an IMM_REAL; 0 for any other node
    void SetPou(CPou* pPou) { MakeExtras().pPou = pPou; }
    void SetCast(CCastFunction* pCast) { MakeExtras().pCast = pCast; }
    void SetMember(CMember* pMember) { MakeExtras().pMember = pMember; }
    void SetInit(const CInitValue* pInit)
    {
        if (m_pExtras || pInit) MakeExtras().pInit = pInit;
    }
    void SetDirect(const CName* pDirect) { MakeExtras().pDirect = pDirect; }
    void SetString(std::string_view text) { MakeExtras().szString = text; }
    void SetReal(double value) { MakeExtras().dValue = value; }
    // Writes one element per node, depth first, without recursion.
    void WriteXml(OutputTextFile& file) const;

    int nKind;
    bool bThroughInOut = false;              // the path goes through an in-out member of a function block
    bool bFractionLost = false;              // an IMM_INTEGER that folding made of a number with a fraction
    bool bUnreachableWarned = false;         // of a list: the one warning about statements behind RETURN or EXIT is out
    const CName* pName = nullptr;            // of NEW_ID, IDENTIFIER, RETURN_TYPE, LIST_ID and calls; null: none
    std::int64_t nValue = 0;                 // of an IMM_INTEGER; 1 marks a FUNCTION_CALL as a statement
    CType* pType = nullptr;                  // type of the expression, not owned; null: untyped
    // What uses, paths, declared names, function block calls and RETURN_TYPE resolved to; not owned.
    CVariable* pVariable = nullptr;
    SourceLocation location;
    CNodeList m_Children;

private:
    const NodeExtras& GetExtras() const { return m_pExtras ? *m_pExtras : g_NoExtras; }
    NodeExtras& MakeExtras();

    [[noreturn]] static void FailWithoutChild();

    static constexpr NodeExtras g_NoExtras{};
    NodeExtras* m_pExtras = nullptr;         // in the arena; null: none of them is set
};
