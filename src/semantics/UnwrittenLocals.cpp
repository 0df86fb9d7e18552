#include "semantics/UnwrittenLocals.h"

#include "frontend/Node.h"
#include "frontend/NodeParts.h"
#include "frontend/Notes.h"
#include "model/Type.h"
#include "model/Variable.h"

#include <unordered_set>

namespace
{

// Walks a body in the order in which it runs. Trees nest as deep as a source is long, so the walks keep stacks of their
// own.
class CUnwrittenWalk
{
public:
    CUnwrittenWalk(CNotes& notes, const std::vector<CVariable*>& locals);

    bool IsDone() const { return m_Unwritten.empty() || m_HasJumped; }
    void WalkStatement(const CNode* pStatement);

private:
    void Write(const CNode* pNode);
    void Read(const CNode* pExpression);
    void ReadTarget(const CNode* pTarget);
    void ReadFbParameters(const CNode* pCall);
    void ReadConditions(const CNode* pIf);
    void ReadBounds(const ForParts& parts);
    void TakeNested(const CNode* pStatement);

    CNotes& m_Notes;
    std::unordered_set<const CVariable*> m_Unwritten;
    bool m_HasJumped = false;
};

}   // namespace

static bool StartsUnwritten(const CVariable& variable)
{
    if (variable.IsParameter() || variable.m_IsRetain || !variable.m_DirectAddress.empty()) return false;
    if (!variable.m_Type || IsAggregate(variable.m_Type) || variable.m_Type->IsString()) return false;
    return IsBlank(variable.m_InitValue.get());
}

CUnwrittenWalk::CUnwrittenWalk(CNotes& notes, const std::vector<CVariable*>& locals) : m_Notes(notes)
{
    for (const CVariable* pVariable : locals)
        if (StartsUnwritten(*pVariable)) m_Unwritten.insert(pVariable);
}

// A plain name as the target of something; a path belongs to an array or structure, of which nothing is known here.
void CUnwrittenWalk::Write(const CNode* pNode)
{
    if (pNode->IsIdentifier()) m_Unwritten.erase(pNode->pVariable);
}

// A name that is passed as it stands may be written by the callee, and isn't looked at further.
void CUnwrittenWalk::Read(const CNode* pExpression)
{
    std::vector<const CNode*> waiting{pExpression};
    while (!waiting.empty()) {
        const CNode* pNode = waiting.back();
        waiting.pop_back();
        if (pNode->IsIdentifier() && m_Unwritten.contains(pNode->pVariable))
            m_Notes.Add(Note::ReadBeforeWrite, pNode->location, pNode->pVariable->m_Name);
        const bool isActuals = pNode->nKind == PARAMETER_LIST;
        for (int i = pNode->GetChildCount() - 1; i >= 0; --i)   // the first one is looked at next
            if (!isActuals || !pNode->Child(i)->IsIdentifier()) waiting.push_back(pNode->Child(i));
        if (isActuals)
            for (const CNode* pActual : pNode->m_Children) Write(pActual);
    }
}

// Only the subscripts on the way to it are read.
void CUnwrittenWalk::ReadTarget(const CNode* pTarget)
{
    if (pTarget->IsIdentifier()) Write(pTarget);
    else Read(pTarget);
}

void CUnwrittenWalk::ReadFbParameters(const CNode* pCall)
{
    if (pCall->GetChildCount() == 0) return;
    for (const CNode* pParameter : pCall->Child(0)->m_Children)
        if (pParameter->GetChildCount() > 1) ReadTarget(pParameter->Child(1));
}

// Behind a literal TRUE no other condition is tested.
void CUnwrittenWalk::ReadConditions(const CNode* pIf)
{
    const IfParts parts = GetIfParts(pIf);
    const CNode* pCondition = parts.pCondition;
    Read(pCondition);
    const bool isTrue = pCondition->nKind == TRUE || (pCondition->nKind == IMM_INTEGER && pCondition->nValue == 1);
    if (isTrue || !parts.pElsifItems) return;
    for (const CNode* pItem : parts.pElsifItems->m_Children) Read(pItem->Child(0));
}

void CUnwrittenWalk::ReadBounds(const ForParts& parts)
{
    WalkStatement(parts.pAssignment);
    Read(parts.pTo);
    if (parts.pStep) Read(parts.pStep);
}

// Whatever may be written anywhere in the statement, and whether a jump is in it.
void CUnwrittenWalk::TakeNested(const CNode* pStatement)
{
    std::vector<const CNode*> waiting{pStatement};
    while (!waiting.empty()) {
        const CNode* pNode = waiting.back();
        waiting.pop_back();
        switch (pNode->nKind) {
        case EXIT:
        case RETURN: m_HasJumped = true; break;
        case ASSIGN: Write(pNode->Child(0)); break;
        case ASSIGN_FB:
        case ARROW:
            if (pNode->GetChildCount() > 1) Write(pNode->Child(1));
            break;
        case PARAMETER_LIST:
            for (const CNode* pActual : pNode->m_Children) Write(pActual);
            break;
        default: break;
        }
        waiting.insert(waiting.end(), pNode->m_Children.begin(), pNode->m_Children.end());
    }
}

void CUnwrittenWalk::WalkStatement(const CNode* pStatement)
{
    switch (pStatement->nKind) {
    case ASSIGN:
        Read(pStatement->Child(1));
        ReadTarget(pStatement->Child(0));
        return;
    case FUNCTION_CALL: Read(pStatement); return;
    case FUNCTION_BLOCK: ReadFbParameters(pStatement); return;
    case IF: ReadConditions(pStatement); break;
    case WHILE:
    case CASE: Read(pStatement->Child(0)); break;
    case REPEAT:   // its condition comes behind its statements
        TakeNested(pStatement);
        if (!m_HasJumped) Read(pStatement->Child(1));
        return;
    case FOR: ReadBounds(GetForParts(pStatement)); break;
    default: break;
    }
    TakeNested(pStatement);
}

void NoteReadsOfUnwritten(CNotes& notes, const CNode* pFunction, const std::vector<CVariable*>& locals)
{
    CUnwrittenWalk walk(notes, locals);
    for (const CNode* pPart : pFunction->m_Children) {
        if (pPart->nKind != STMT_LIST) continue;
        for (const CNode* pStatement : pPart->m_Children) {
            if (walk.IsDone()) return;
            walk.WalkStatement(pStatement);
        }
    }
}
