#pragma once

#include "frontend/RareText.h"
#include "frontend/SourceLocation.h"
#include "frontend/Tokens.h"
#include "model/InitValue.h"

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

class CArrayIndex;
class CCastFunction;
class CMember;
class CPou;
class CType;
class CVariable;
class OutputTextFile;

// A node of the syntax tree. Its kind is a token number; what its children mean follows from the kind.
// The parser builds it, the checks annotate and fold it in place, the code generator walks it. A chain
// of operators nests to the left as deep as the source is long, so whoever walks trees goes down that
// side without recursion.
class CNode
{
public:
    CNode(int kind, const SourceLocation& where) : nKind(kind), location(where) {}
    virtual ~CNode() = default;
    CNode(const CNode&) = delete;
    CNode& operator=(const CNode&) = delete;

    void AddChild(CNode* pNode) { m_Children.push_back(pNode); }
    int GetChildCount() const { return static_cast<int>(m_Children.size()); }
    // The i-th child; an internal fault where there is none.
    CNode* Child(int i) const;
    CVariable* GetVariable() const { return pVariable; }   // null if the node names none
    bool IsLiteral() const { return nKind == IMM_INTEGER || nKind == IMM_REAL || nKind == TRUE || nKind == FALSE; }
    bool IsNumericLiteral() const { return nKind == IMM_INTEGER || nKind == IMM_REAL; }
    bool IsBooleanLiteral() const { return nKind == TRUE || nKind == FALSE; }
    // An integer literal that may stand for a boolean: 0 or 1, or what NOT folds these two into.
    bool IsBooleanInteger() const { return nKind == IMM_INTEGER && nValue >= -2 && nValue <= 1; }
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
    CRareText szDirect;                      // address text of a declared variable without "%"; empty: none
    CRareText szString;                      // text of a string literal
    std::unique_ptr<CInitValue> pInit;       // value of a SIMPLIFIED node, or what else is attached; may be null
    std::int64_t nValue = 0;                 // of an IMM_INTEGER; 1 marks a FUNCTION_CALL as a statement
    double dValue = 0;                       // of an IMM_REAL
    std::string szName;                      // of NEW_ID, IDENTIFIER, RETURN_TYPE, LIST_ID and calls; empty: none
    CType* pType = nullptr;                  // type of the expression, not owned; null: untyped
    // What the node resolved to, not owned; at most one of them is set, by the kind of the node.
    CVariable* pVariable = nullptr;          // uses, paths, declared names, function block calls, RETURN_TYPE
    CPou* pPou = nullptr;                    // FUNCTION_CALL and POU nodes
    CCastFunction* pCast = nullptr;          // CAST_FUNCTION_CALL
    CMember* pMember = nullptr;              // the name in a parameter of a function block call
    SourceLocation location;
    std::vector<CNode*> m_Children;          // in order; not deleted with the node
};

// Deletes the node and all below it, children first and in order, without deep recursion. Null is allowed.
void DeleteTree(CNode* pNode);
