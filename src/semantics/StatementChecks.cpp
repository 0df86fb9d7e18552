// Checks of lists, assignments, conditions and FOR statements while their nodes are made.

#include "semantics/Norvane.h"

#include "frontend/NodeParts.h"
#include "model/Type.h"
#include "model/Variable.h"
#include "semantics/NumberRange.h"

static bool IsArrayNode(const CNode* pNode)
{
    return pNode->pType && pNode->pType->IsArray();
}

static bool LeavesList(const CNode* pStatement)
{
    return pStatement->nKind == RETURN || pStatement->nKind == EXIT;
}

CNode* CNorvane::AppendToList(CNode* pList, CNode* pItem)
{
    if (!pItem) return pList;   // a declaration without a name makes no node
    const int count = pList->GetChildCount();
    const bool isUnreachable = count > 0 && LeavesList(pList->Child(count - 1));
    pList->AddChild(pItem);
    pList->location.nLastLine = pItem->location.nLastLine;
    pList->location.nLastColumn = pItem->location.nLastColumn;
    if (!isUnreachable || pList->bUnreachableWarned) return pList;
    pList->bUnreachableWarned = true;   // one warning to a list, behind the first statement that leaves it
    m_Errors.WarnUnreachable(pItem->location);
    return pList;
}

// Arrays of one element type and dimension count are assignable whatever their bounds; the sizes are told
// apart here. Behind an in-out parameter a difference would write over what the caller has there.
static void CheckArraySizes(CNorvane& norvane, const CNode* pNode)
{
    const CNode* pLeft = pNode->Child(0);
    const CNode* pRight = pNode->Child(1);
    if (!IsArrayNode(pLeft) || !pRight->IsIdentifier() || !IsArrayNode(pRight)) return;
    const std::int32_t leftBytes = norvane.m_Memory.ComputeAccessSize(pLeft);
    const std::int32_t rightBytes = norvane.m_Memory.ComputeAccessSize(pRight);
    if (leftBytes == rightBytes) return;
    if (pLeft->pVariable && pLeft->pVariable->m_IsInOut)
        norvane.m_Errors.ErrArrayDimension(leftBytes, rightBytes, pNode->location);
    else
        norvane.m_Errors.WarnArrayDimension(leftBytes, rightBytes, pNode->location);
}

static void CheckTarget(CNorvane& norvane, const CNode* pNode)
{
    const CNode* pLeft = pNode->Child(0);
    const CNode* pRight = pNode->Child(1);
    if (!pLeft->IsVariableAccess()) return;
    if (pLeft->pVariable && pLeft->pVariable->m_IsConstant) norvane.m_Errors.ErrAssignToConstant(pRight->location);
    if (pLeft->bThroughInOut && !pRight->IsVariableAccess()) norvane.m_Errors.ErrInOutLValue(pLeft->location);
    CheckArraySizes(norvane, pNode);
}

void CNorvane::CheckAssignment(CNode* pNode)
{
    if (pNode->nKind != ASSIGN) return;
    CNode* pLeft = pNode->Child(0);
    CNode* pRight = pNode->Child(1);
    if (IsPoison(pLeft) || IsPoison(pRight)) return;
    CheckTarget(*this, pNode);
    if (!pLeft->pType) return;   // an address or a path that failed: there is nothing to compare with
    if (pRight->IsLiteral() && CheckImmediate(pLeft->pType, pRight, /*bReport=*/true)) {
        pRight->pType = pLeft->pType;   // also over the same type under another name
        return;
    }
    if (!pRight->pType && !(pLeft->pType->IsBool() && pRight->ComparesTruths()))
        m_Notes.Add(Note::ValueWithoutType, pRight->location);   // accepted without a test
    if (!pRight->pType || IsSameType(pLeft->pType, pRight->pType)) return;
    m_Errors.ErrOperatorMismatch(ASSIGN, pLeft->pType, pRight->pType, pNode->location);
    pNode->pType = m_DataTypes.m_ErrorType;
}

void CNorvane::CheckCondition(CNode* pNode)
{
    CNode* pCondition = pNode->Child(pNode->nKind == REPEAT ? 1 : 0);
    const bool isBool = pCondition->pType && pCondition->pType->IsBool();
    // Kept (messages): a condition that has failed already is reported here once more.
    if (!isBool && !pCondition->IsBooleanLiteral() && !pCondition->IsBooleanInteger())
        m_Errors.ErrNeedsBoolean(pCondition->location);
    if (!pCondition->pType) TypeLiteral(pCondition, m_DataTypes.m_BoolType);
}

// What has a type of its own: the forms that the bounds and the step of a FOR are compared in.
static bool IsTypedOperand(const CNode* pNode)
{
    return pNode->IsVariableAccess() || pNode->nKind == SIMPLIFIED;
}

// Reports two operands whose types differ; what has failed before stays silent.
static bool HasMismatch(CNorvane& norvane, const CNode* pFirst, const CNode* pSecond)
{
    if (!IsTypedOperand(pFirst) || !IsTypedOperand(pSecond)) return false;
    if (!pFirst->pType || !pSecond->pType) return false;
    if (norvane.IsPoison(pFirst) || norvane.IsPoison(pSecond)) return false;
    if (IsSameType(pFirst->pType, pSecond->pType)) return false;
    norvane.m_Errors.ErrTypeMismatch(pFirst->pType, pSecond->pType, pSecond->location);
    return true;
}

void CNorvane::CheckFor(CNode* pNode)
{
    const ForParts parts = GetForParts(pNode);

    // The values don't matter yet: this refuses what is no integer and turns constant expressions into literals.
    std::int32_t value = 0;
    if (parts.pStep) EvalIntegerExpression(parts.pStep, value);
    EvalIntegerExpression(parts.pFrom, value);
    EvalIntegerExpression(parts.pTo, value);

    // Whatever type they have, the variable is compared with the one and added the other.
    NoteLiteralRange(m_Notes, parts.pVariable->pType, parts.pTo);
    if (parts.pStep) NoteLiteralRange(m_Notes, parts.pVariable->pType, parts.pStep);

    if (!parts.pTo->pType) parts.pTo->pType = parts.pVariable->pType;
    if (HasMismatch(*this, parts.pFrom, parts.pTo)) return;
    if (parts.pStep && HasMismatch(*this, parts.pFrom, parts.pStep)) return;
    if (parts.pStep && HasMismatch(*this, parts.pTo, parts.pStep)) return;
    if (parts.pVariable->IsIdentifier() && parts.pVariable->pVariable && parts.pVariable->pVariable->m_IsConstant)
        m_Errors.ErrAssignToConstant(parts.pVariable->location);
}
