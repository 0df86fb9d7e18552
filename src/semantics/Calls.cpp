// Calls of functions and of function block instances.

#include "semantics/Norvane.h"

#include "model/ArrayIndex.h"
#include "model/Member.h"
#include "model/Pou.h"
#include "model/Type.h"
#include "model/TypeStruct.h"
#include "model/Variable.h"
#include "target/PathBounds.h"

#include <unordered_set>

// The kind of a call that could not be built. It is no valid kind; no such tree is ever generated, since an
// error has been counted.
static constexpr int g_NoCall = 0;

static bool IsConstantVariable(const CNode* pNode)
{
    return pNode->pVariable && pNode->pVariable->m_IsConstant;
}

static bool IsInstance(const CVariable* pVariable)
{
    return pVariable && pVariable->m_Type && pVariable->m_Type->IsStructFB();
}

// "name()" where an instance has the name. It must not be that of a function too.
static CNode* MakeInstanceCall(CNorvane& norvane, const CName& name, const SourceLocation& location)
{
    const CPou* pPou = norvane.m_Pous.FindPouExact(name);
    if (!pPou || !pPou->IsFunction()) return norvane.MakeFbCall(name, location, nullptr);
    norvane.m_Errors.ErrOverloadType(location);
    return norvane.m_Nodes.MakeNode(g_NoCall, location);
}

// The call of an instance leaves nothing on the stack, so an expression can't go on with it.
static void RefuseInstanceValue(CNorvane& norvane, CNode* pCall)
{
    if (pCall->nKind == FUNCTION_BLOCK) norvane.m_Errors.ErrNoReturnValue(pCall->location);
    norvane.Poison(pCall);
}

CNode* CNorvane::MakeFunctionCall(const CName& name, const SourceLocation& location, bool bInExpression,
                                  CNode* pParameters)
{
    if (!pParameters && IsInstance(FindVariable(name))) {
        CNode* pCall = MakeInstanceCall(*this, name, location);
        if (bInExpression) RefuseInstanceValue(*this, pCall);
        return pCall;
    }
    CNode* pNode = m_Nodes.MakeNode(ERROR_, location);
    pNode->pName = &name;
    if (pParameters) pNode->AddChild(pParameters);
    CPou* pPou = m_Pous.FindFunction(name, location, pParameters);
    CFunction* pFunction = pPou ? pPou->AsFunction() : nullptr;
    if (!pFunction) {
        // A program's call as a statement does nothing, and silently; a value it can't give.
        if (pPou && bInExpression) m_Errors.ErrFunctionNotDeclared(name.GetText(), location);
        return pNode;
    }

    pNode->nKind = FUNCTION_CALL;
    pNode->pType = pFunction->m_ReturnType;
    pNode->SetPou(pFunction);
    if (!bInExpression) {
        pNode->nValue = 1;   // a statement: its result is dropped
    } else if (!pFunction->m_ReturnType) {
        m_Errors.ErrNoReturnValue(location);
        pNode->pType = m_DataTypes.m_ErrorType;
    }
    if (m_VarBlockFlags & InDeclaration) m_Errors.ErrCallInDeclaration(location);
    CheckFunctionCall(pNode);
    return pNode;
}

// A literal takes the formal's type or has it already, and nothing can be handed back into it.
static void CheckLiteralActual(CNorvane& norvane, CNode* pActual, const CFunction& function, int index)
{
    const CVariable& formal = *function.m_Parameters[static_cast<std::size_t>(index)];
    // Unreported: what doesn't suit is a mismatch of this parameter; only a foreign type of its own is told apart.
    if (!norvane.CheckImmediate(formal.m_Type, pActual, /*bReport=*/false))
        norvane.m_Errors.ErrParameterMismatch(*pActual, function, index, pActual->location);
    if (formal.IsHeldByPointer()) norvane.m_Errors.ErrOutputImmediate(pActual->location);
}

static void CheckTypedActual(CNorvane& norvane, const CNode* pActual, const CFunction& function, int index)
{
    CErrorHandler& errors = norvane.m_Errors;
    const CVariable& formal = *function.m_Parameters[static_cast<std::size_t>(index)];
    if (pActual->IsIdentifier() && IsConstantVariable(pActual) && formal.IsHeldByPointer()) {
        errors.ErrOutputConstant(pActual->location);
        return;
    }
    if (norvane.IsPoison(pActual)) return;
    if (!IsSameType(pActual->pType, formal.m_Type)) {
        errors.ErrParameterMismatch(*pActual, function, index, pActual->location);
        return;
    }
    if (pActual->pType->IsAny()) errors.ErrInitAny(pActual->location);
    if (!pActual->pType->IsArray()) return;
    const std::int32_t found = norvane.m_Memory.ComputeAccessSize(pActual);
    const std::int32_t required = norvane.m_Memory.ComputeVariableLayout(&formal);
    if (found != required) errors.ErrArrayDimension(found, required, pActual->location);
}

void CNorvane::CheckFunctionCall(CNode* pNode)
{
    const CFunction* pFunction = pNode->GetPou() ? pNode->GetPou()->AsFunction() : nullptr;
    if (!pFunction) return;
    const CNode* pList = pNode->GetChildCount() > 0 ? pNode->Child(0) : nullptr;
    const std::size_t count = pList ? pList->m_Children.size() : 0;
    if (count != pFunction->m_Parameters.size()) {
        m_Errors.ErrParameterCount(static_cast<int>(count), pNode->location);
        return;
    }
    for (std::size_t i = 0; i < count; ++i) {
        const CType* pFormalType = pFunction->m_Parameters[i]->m_Type;
        if (!pFormalType || pFormalType->IsError()) continue;   // reported at its declaration
        CNode* pActual = pList->m_Children[i];
        if (pActual->IsLiteral()) CheckLiteralActual(*this, pActual, *pFunction, static_cast<int>(i));
        else CheckTypedActual(*this, pActual, *pFunction, static_cast<int>(i));
    }
}

// How many elements the array has that the path ends in, over all its levels that no subscript has used up.
static std::int64_t CountElements(const CNode* pPath)
{
    if (!pPath->pVariable) return 1;
    const PathBounds bounds = FollowPath(pPath);
    if (!bounds.pIndex) return 1;
    std::uint64_t count = 1;   // without a sign: products beyond any memory wrap silently
    for (int level = bounds.level; level < bounds.pIndex->GetLevelCount(); ++level)
        count *= static_cast<std::uint64_t>(bounds.pIndex->GetLevel(level)->GetProduct());
    return static_cast<std::int64_t>(count);
}

namespace
{

// One parameter "name := value" or "name => variable" of a function block call.
struct FbParameter
{
    const CNode* pNode;
    const CNode* pName;
    CNode* pValue;
    const CMemberFB* pMember;

    bool IsHeldByPointer() const { return pMember->m_IsOutput || pMember->m_IsInOut; }
};

}   // namespace

static void CheckFbValueType(CNorvane& norvane, const FbParameter& parameter)
{
    CType* pMemberType = parameter.pMember->m_Type;
    CNode* pValue = parameter.pValue;
    if (!pMemberType || pMemberType->IsError()) return;
    if (pValue->IsLiteral()) {
        norvane.CheckImmediate(pMemberType, pValue, /*bReport=*/true);
        return;
    }
    if (norvane.IsPoison(pValue) || IsSameType(pMemberType, pValue->pType)) return;
    norvane.m_Errors.ErrTypeMismatch(pMemberType, pValue->pType, pValue->location);
}

// Outputs come with "=>", all others with ":=".
static void CheckFbDirection(CErrorHandler& errors, const FbParameter& parameter)
{
    const bool isAssigned = parameter.pNode->nKind == ASSIGN_FB;
    if (isAssigned && parameter.pMember->m_IsOutput) errors.ErrRequiredArrow(parameter.pNode->location);
    if (!isAssigned && !parameter.pMember->m_IsOutput) errors.ErrRequiredAssign(parameter.pNode->location);
}

// What is handed out must have a place that may be written.
static void CheckFbTarget(CNorvane& norvane, const FbParameter& parameter)
{
    if (!parameter.IsHeldByPointer()) return;
    const CNode* pValue = parameter.pValue;
    if (pValue->IsLiteral()) norvane.m_Errors.ErrOutputImmediate(pValue->location);
    if (norvane.IsPoison(pValue)) return;
    if (!pValue->IsVariableAccess()) {
        if (parameter.pMember->m_IsInOut) norvane.m_Errors.ErrInOutLValue(pValue->location);
        return;
    }
    if (IsConstantVariable(pValue)) norvane.m_Errors.ErrAssignToConstant(pValue->location);
}

static void CheckFbArray(CErrorHandler& errors, const FbParameter& parameter)
{
    const CMemberFB* pMember = parameter.pMember;
    const CNode* pValue = parameter.pValue;
    if (!pMember->m_Type || !pMember->m_Type->IsArray() || !pValue->pType || !pValue->pType->IsArray()) return;
    if (pMember->m_Type->IsError() || pValue->pType->IsError()) return;
    const std::int64_t found = CountElements(pValue);
    const std::int64_t required = pMember->m_Index ? pMember->m_Index->GetElementCount() : 1;
    if (found == required) return;
    if (pMember->m_IsInOut) errors.ErrArrayDimension(found, required, parameter.pNode->location);
    else errors.WarnArrayDimension(found, required, parameter.pNode->location);
}

static void CheckFbParameter(CNorvane& norvane, const FbParameter& parameter)
{
    const CMemberFB* pMember = parameter.pMember;
    CheckFbValueType(norvane, parameter);
    CheckFbDirection(norvane.m_Errors, parameter);
    CheckFbTarget(norvane, parameter);
    if (!pMember->m_IsInput && !parameter.IsHeldByPointer())
        norvane.m_Errors.ErrLocalInFbCall(parameter.pName->GetName(), parameter.pName->location);
    CheckFbArray(norvane.m_Errors, parameter);
}

static void CheckFbParameters(CNorvane& norvane, const CNode* pList, const CTypeStructFB& type)
{
    std::vector<bool> isAssigned(type.m_Members.size());
    for (CNode* pParameter : pList->m_Children) {
        if (pParameter->GetChildCount() < 2) continue;
        CNode* pName = pParameter->Child(0);
        int position = 0;
        CMember* pMember = type.FindMember(pName->GetName(), &position);
        const CMemberFB* pMemberFB = pMember ? pMember->AsMemberFB() : nullptr;
        if (!pMemberFB) {
            norvane.m_Errors.ErrNotMember(pName->GetName(), &type, pName->location);
            continue;
        }
        pName->SetMember(pMember);
        if (isAssigned[static_cast<std::size_t>(position)]) {
            norvane.m_Errors.ErrMemberAssigned(pName->GetName(), pName->location);
            continue;
        }
        isAssigned[static_cast<std::size_t>(position)] = true;
        CheckFbParameter(norvane, {pParameter, pName, pParameter->Child(1), pMemberFB});
    }
}

// An in-out member holds a pointer, so a call must set it. Kept (sources): here the spelling of the names must agree.
static bool NamesAllInOuts(const CNode* pList, const CTypeStructFB& type)
{
    std::unordered_set<std::string_view> names;
    if (pList) {
        for (const CNode* pParameter : pList->m_Children) {
            if (pParameter->GetChildCount() > 0) names.insert(pParameter->Child(0)->GetName());
        }
    }
    for (const std::unique_ptr<CMember>& pMember : type.m_Members) {
        if (pMember->IsInOut() && !names.contains(pMember->m_Name)) return false;
    }
    return true;
}

CNode* CNorvane::MakeFbCall(const CName& name, const SourceLocation& location, CNode* pParameters)
{
    CNode* pNode = m_Nodes.MakeNode(g_NoCall, location);
    CVariable* pVariable = FindVariable(name);
    if (!pVariable) {
        m_Errors.ErrVariableNotDeclared(name.GetText(), location);
        return pNode;
    }
    pVariable->m_IsUsed = true;
    if (pParameters) pNode->AddChild(pParameters);
    CType* pType = pVariable->m_Type;
    if (!pType || pType->IsError()) return pNode;   // reported at its declaration
    const CTypeStructFB* pInstanceType = pType->AsStructFB();
    if (!pInstanceType) {
        m_Errors.ErrNotFb(name.GetText(), location);
        return pNode;
    }
    pNode->nKind = FUNCTION_BLOCK;
    if (pParameters) CheckFbParameters(*this, pParameters, *pInstanceType);
    if (!NamesAllInOuts(pParameters, *pInstanceType)) m_Errors.ErrFbCallWithoutInOut(location);
    pNode->pName = &name;
    pNode->pVariable = pVariable;
    return pNode;
}
