// Access paths: a root variable and its steps, ".member" and "[subscripts]", resolved from left to right.
// A path node is flat, whatever the path's length: child 0 is the root, then comes one child for each step.

#include "semantics/Norvane.h"

#include "model/ArrayIndex.h"
#include "model/Member.h"
#include "model/Type.h"
#include "model/TypeArray.h"
#include "model/TypeStruct.h"
#include "model/Variable.h"
#include "semantics/NumberRange.h"
#include "semantics/Wrapping.h"

namespace
{

// The end of the path walked so far.
struct PathCursor
{
    CType* pType = nullptr;
    const CArrayOfArrayIndex* pIndex = nullptr;   // of the array that the last name stands for; null if it is none
    int level = 0;                                // levels of that index which subscripts have used up
};

}   // namespace

static bool IsSignedNode(const CNode* pNode)
{
    return pNode->pType && pNode->pType->IsSigned();
}

// A CONSTANT parameter is constant for its function only: its value comes from the caller.
static bool HasConstantValue(const CVariable* pVariable)
{
    return pVariable && pVariable->m_IsConstant && !pVariable->IsParameter();
}

static bool IsConstantUse(const CNode* pNode)
{
    return pNode->IsIdentifier() && HasConstantValue(pNode->pVariable);
}

static bool HasConstantOperands(const CNode* pNode)
{
    for (const CNode* pChild : pNode->m_Children) {
        if (pChild->nKind != IMM_INTEGER && !IsConstantUse(pChild)) return false;
    }
    return true;
}

// The operators whose value can be asked for; of a call it turns out that there is none.
static bool IsIntegerOperator(int kind)
{
    switch (kind) {
    case '+': case '-': case '*': case '/':
    case UNARY_MINUS: case POWER: case MOD: case SQRT: case ABS:
    case MULDIV: case MIN: case MAX: case LIMIT: case FUNCTION_CALL:
        return true;
    default:
        return false;
    }
}

static std::int64_t IntegerOf(const CInitValue& value)
{
    return value.IsUnsigned() ? std::int64_t{value.GetUnsigned()} : value.GetInt64();
}

// A constant's own initial value is its value; that of a variable only says how it starts.
static int EvalIntegerVariable(CNorvane& norvane, const CNode* pNode, std::int32_t& value)
{
    if (!IsSignedNode(pNode)) {
        norvane.m_Errors.ErrNeedsInteger(pNode->location);
        return -1;
    }
    const CVariable* pVariable = pNode->pVariable;
    if (!HasConstantValue(pVariable) || !pVariable->m_InitValue) return -1;
    const std::int64_t number = IntegerOf(*pVariable->m_InitValue);
    NoteBeyond32Bits(norvane.m_Notes, number, pNode);
    value = LowBits(number);
    return 1;
}

int CNorvane::EvalIntegerExpression(CNode* pNode, std::int32_t& value)
{
    if (IsPoison(pNode)) return -1;
    switch (pNode->nKind) {
    case IMM_INTEGER:
        // Kept (code): also over a type that the literal has already, and the code generator prints it.
        if (CType* pType = m_DataTypes.m_DintType) pNode->pType = pType;
        NoteBeyond32Bits(m_Notes, pNode->nValue, pNode);
        value = LowBits(pNode->nValue);
        return 1;
    case IDENTIFIER:
        return EvalIntegerVariable(*this, pNode, value);
    case DOT: case ARRAY_ELEMENT: case SIMPLIFIED: case CAST_FUNCTION_CALL:
        if (!IsSignedNode(pNode)) m_Errors.ErrNeedsInteger(pNode->location);
        return -1;
    default:
        break;
    }
    if (!IsSignedNode(pNode) || !IsIntegerOperator(pNode->nKind)) {
        m_Errors.ErrNeedsInteger(pNode->location);
        return -1;
    }
    if (!HasConstantOperands(pNode)) return -1;
    FoldConstants(pNode);
    if (IsPoison(pNode)) return -1;   // the fold has said why
    if (!pNode->GetInit() || !pNode->GetInit()->IsInteger()) {
        m_Errors.ErrNeedsInteger(pNode->location);
        return -1;
    }
    pNode->nValue = IntegerOf(*pNode->GetInit());
    pNode->nKind = IMM_INTEGER;
    pNode->SetInit(nullptr);
    NoteBeyond32Bits(m_Notes, pNode->nValue, pNode);
    value = LowBits(pNode->nValue);
    return 1;
}

// "x[1]" needs a variable declared as an array: one that only has an array type has no bounds.
static void ResolveArrayRoot(CNorvane& norvane, CNode* pNode)
{
    CVariable* pVariable = pNode->Child(0)->pVariable;
    if (!pVariable || !pVariable->IsArray()) {
        norvane.m_Errors.ErrNotArray(pNode, pNode->location);
        return;   // Kept (messages): the node stays without a type instead of taking the error type.
    }
    pNode->pVariable = pVariable;
    norvane.ResolveMemberPath(pNode, pVariable->GetIndex(), pVariable->m_Type);
}

static void ResolveStructRoot(CNorvane& norvane, CNode* pNode)
{
    CNode* pRoot = pNode->Child(0);
    CType* pErrorType = norvane.m_DataTypes.m_ErrorType;
    CVariable* pVariable = pRoot->pName ? norvane.FindVariable(*pRoot->pName) : nullptr;
    if (!pVariable) {
        pNode->pType = pErrorType;   // silently: the maker of the root has reported it
        return;
    }
    pNode->pVariable = pVariable;
    CType* pType = pVariable->m_Type;
    if (pType && pType->IsStruct()) {
        norvane.ResolveMemberPath(pNode, nullptr, pType);
        return;
    }
    pNode->pType = pErrorType;
    if (pType && !pType->IsError()) norvane.m_Errors.ErrNotStruct(pRoot, pRoot->location);
}

void CNorvane::ResolveVariablePath(CNode* pNode)
{
    if (pNode->pType && pNode->pType->IsError()) return;
    if (pNode->nKind == ARRAY_ELEMENT) ResolveArrayRoot(*this, pNode);
    else if (pNode->nKind == DOT) ResolveStructRoot(*this, pNode);
}

// Subscripts that are known are checked against the bounds of their dimension; the others can't be.
static void CheckSubscripts(CNorvane& norvane, const CNode* pList, const CArrayIndex& index)
{
    const bool isDeclaration = (norvane.m_VarBlockFlags & InAnyVarBlock) != 0;
    for (int i = 0; i < pList->GetChildCount(); ++i) {
        CNode* pSubscript = pList->Child(i);
        std::int32_t value = 0;
        const int result = isDeclaration ? norvane.EvalConstIndex(pSubscript, value)
                                         : norvane.EvalIntegerExpression(pSubscript, value);
        if (result != 1) continue;
        index.m_Dimensions[static_cast<std::size_t>(i)].Check(value, pSubscript->location, norvane.m_Errors);
    }
}

// A step "[1,2]"; false if the path ends at it.
static bool ResolveSubscripts(CNorvane& norvane, const CNode* pList, PathCursor& cursor)
{
    CTypeArray* pArray = cursor.pType->AsArray();
    if (!pArray || !cursor.pIndex) {
        norvane.m_Errors.ErrNotArray(pList, pList->location);
        return false;
    }
    const int required = cursor.pIndex->GetDimensionCount(cursor.level);
    const int found = pList->GetChildCount();
    if (found != required) {
        norvane.m_Errors.ErrWrongDimension(required, found, pList->location);
        return false;
    }
    CArrayIndex* pIndex = cursor.pIndex->GetLevel(cursor.level);
    if (pIndex) CheckSubscripts(norvane, pList, *pIndex);
    cursor.pType = pArray->m_Element;
    ++cursor.level;
    return true;
}

// What a function block keeps from the outside is reported, and the path goes on.
static void CheckMemberAccess(CNorvane& norvane, CNode* pPath, const CNode* pName, const CMemberFB& member)
{
    if (member.m_IsInOut) {
        norvane.m_Errors.ErrInOutElement(pName->location);
        pPath->bThroughInOut = true;
        return;
    }
    if (!member.m_IsInput && !member.m_IsOutput) norvane.m_Errors.ErrPrivateElement(pName->location);
}

// A step ".name"; false if the path ends at it.
static bool ResolveMember(CNorvane& norvane, CNode* pPath, const CNode* pName, PathCursor& cursor)
{
    const CTypeStruct* pStruct = cursor.pType->AsStruct();
    if (!pStruct) {
        norvane.m_Errors.ErrNotStruct(pName, pName->location);
        return false;
    }
    const CMember* pMember = pStruct->FindMember(pName->GetName());
    if (!pMember) {
        norvane.m_Errors.ErrNotMember(pName->GetName(), cursor.pType, pName->location);
        return false;
    }
    const CMemberFB* pMemberFB = cursor.pType->IsStructFB() ? pMember->AsMemberFB() : nullptr;
    if (pMemberFB) CheckMemberAccess(norvane, pPath, pName, *pMemberFB);
    cursor.pType = pMember->m_Type;
    cursor.pIndex = pMember->m_Index.get();
    cursor.level = 0;
    return true;
}

void CNorvane::ResolveMemberPath(CNode* pNode, const CArrayOfArrayIndex* pIndex, CType* pType)
{
    PathCursor cursor{pType, pIndex, 0};
    for (int i = 1; i < pNode->GetChildCount(); ++i) {
        const CNode* pStep = pNode->Child(i);
        // A variable or member whose type has failed has drawn its message where it was declared.
        const bool isKnown = cursor.pType && !cursor.pType->IsError();
        const bool isSubscript = pStep->nKind == EXP_LIST;
        const bool isResolved = isKnown && (isSubscript ? ResolveSubscripts(*this, pStep, cursor)
                                                        : ResolveMember(*this, pNode, pStep, cursor));
        if (!isResolved) {
            pNode->pType = m_DataTypes.m_ErrorType;
            return;
        }
        pNode->pType = cursor.pType ? cursor.pType : m_DataTypes.m_ErrorType;
    }
}
