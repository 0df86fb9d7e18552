// What stands behind the ":=" of a declaration, checked against the declared type. Checking and building are
// separate walks over the same nodes, and only what has been accepted is built (InitialValues.cpp).

#include "semantics/Norvane.h"

#include "files/Print.h"
#include "model/ArrayIndex.h"
#include "model/Member.h"
#include "model/Type.h"
#include "model/TypeArray.h"
#include "model/TypeStruct.h"
#include "model/Variable.h"
#include "semantics/KnownValue.h"
#include "semantics/NumberRange.h"

#include <limits>

// Sums stop at the ends of 64 bits: no array is that long, and a repeat count may be any number.
static std::int64_t AddSaturating(std::int64_t a, std::int64_t b)
{
    constexpr std::int64_t lowest = std::numeric_limits<std::int64_t>::min();
    constexpr std::int64_t highest = std::numeric_limits<std::int64_t>::max();
    if (b > 0 && a > highest - b) return highest;
    if (b < 0 && a < lowest - b) return lowest;
    return a + b;
}

// ---- Counting.

// The count in front of a repeated element, "[count(element)]"; false if it isn't known.
bool CNorvane::GetRepeatCount(const CNode* pNode, std::int64_t& value)
{
    const CVariable* pVariable = pNode->pVariable;
    switch (pNode->nKind) {
    case IMM_INTEGER:
        value = pNode->nValue;
        return true;
    case IDENTIFIER:
        if (!pVariable || !pVariable->m_Type || !pVariable->m_Type->IsSigned()) return false;
        return GetIntegerValue(GetKnownValue(*pVariable), value);
    case SIMPLIFIED: return GetIntegerValue(pNode->GetInit(), value);
    case DOT:
    case ARRAY_ELEMENT: return GetIntegerValue(GetElementInitValue(pNode).get(), value);
    default: return false;
    }
}

static void RefuseRepeatCount(const CNode* pNode, CErrorHandler& errors)
{
    if (pNode->nKind != DOT && pNode->nKind != ARRAY_ELEMENT) {
        errors.ErrArrayIndexType(pNode->location);
        return;
    }
    // Wanted (messages): a line of its own, and no error is counted.
    Print("error required an integer value\n");
}

// A DUP and the element behind it count the repeat value together.
std::int64_t CNorvane::CountInitElements(const CNode* pList)
{
    std::int64_t count = 0;
    for (const CNode* pChild : pList->m_Children) {
        if (pChild->nKind != DUP) {
            count = AddSaturating(count, 1);
            continue;
        }
        std::int64_t repeat = 0;
        if (!GetRepeatCount(pChild->Child(0), repeat)) {
            RefuseRepeatCount(pChild->Child(0), m_Errors);
            return -1;
        }
        count = AddSaturating(count, AddSaturating(repeat, -1));
    }
    return count;
}

// ---- Checking.

// A value of another type is reported with the declared type first, unless one of the two has failed already.
bool CNorvane::CheckInitType(const CType* pDeclared, const CNode* pValue, const SourceLocation& where)
{
    if (IsSameType(pDeclared, pValue->pType)) return true;
    const bool hasFailed = !pValue->pType || IsPoison(pValue) || pDeclared->IsError();
    if (!hasFailed) m_Errors.ErrTypeMismatch(pDeclared, pValue->pType, where);
    return false;
}

// Any value but a list. Kept (sources): array elements, strings and expressions that aren't constant are refused
// silently; the declaration is left without a value.
bool CNorvane::CheckInitElement(CType* pElement, CNode* pValue)
{
    switch (pValue->nKind) {
    case IMM_INTEGER:
    case IMM_REAL:
    case TRUE:
    case FALSE: return CheckImmediate(pElement, pValue, /*bReport=*/true);
    case IDENTIFIER:
    case SIMPLIFIED:
    case DOT: return CheckInitType(pElement, pValue, pValue->location);
    default: return false;
    }
}

// Kept (sources): a nested list's result replaces what was found before it, so a later list can cover an earlier
// failure. Too few elements are fine, too many are warned of and stay.
bool CNorvane::CheckArrayInit(CType* pType, CNode* pList, const CArrayOfArrayIndex* pIndex, int level)
{
    const CTypeArray* pArrayType = pType->AsArray();
    const std::int64_t count = CountInitElements(pList);
    if (count < 0) return false;
    const CArrayIndex* pBounds = pIndex ? pIndex->GetLevel(level) : nullptr;
    if (!pArrayType || !pBounds) {
        m_Errors.ErrNotStruct(pList, pList->location);
        return false;
    }
    const std::int64_t capacity = pBounds->GetProduct();
    if (count > capacity) m_Errors.WarnTooManyInitializers(count, capacity, pList->location);

    CType* pElement = pArrayType->m_Element;
    bool isAccepted = true;
    for (CNode* pChild : pList->m_Children) {
        if (pChild->nKind == DUP) continue;     // its count has been checked with the number of elements
        if (pChild->nKind == ARRAY_INIT_LIST && pElement->IsArray()) {
            isAccepted = CheckArrayInit(pElement, pChild, pIndex, level + 1);
        } else if (pChild->nKind == STRUCT_INIT_LIST && pElement->IsStruct()) {
            isAccepted = CheckStructInit(pElement, pChild);
        } else if (pChild->nKind == ARRAY_INIT_LIST) {
            m_Errors.ErrNotArray(pChild, pChild->location);
            isAccepted = false;
        } else if (pChild->nKind == STRUCT_INIT_LIST) {
            m_Errors.ErrNotStruct(pChild, pChild->location);
            isAccepted = false;
        } else if (!CheckInitElement(pElement, pChild)) {
            isAccepted = false;
        }
    }
    return isAccepted;
}

// The list of a member: its name explains what is wrong with it.
bool CNorvane::CheckStructMember(const CMember& member, const CNode* pName, CNode* pValue)
{
    if (pValue->nKind == STRUCT_INIT_LIST && member.m_Type->IsStruct()) return CheckStructInit(member.m_Type, pValue);
    if (pValue->nKind == ARRAY_INIT_LIST && member.m_Type->IsArray())
        return CheckArrayInit(member.m_Type, pValue, member.m_Index.get(), 0);
    m_Errors.ErrNotStruct(pName, pName->location);     // Kept (messages): also where an array is missing.
    return false;
}

// Pairs of name and value. Kept (sources): the value's kind isn't looked at. One without children passes, so that
// "s : t := 5" gives a structure without values; and here too a later list covers an earlier failure.
bool CNorvane::CheckStructInit(CType* pType, CNode* pList)
{
    const CTypeStruct* pStruct = pType->AsStruct();
    const bool hasFailed = pList->nKind != STRUCT_INIT_LIST && IsPoison(pList);   // a list is read on behind a fault
    if (!pStruct || hasFailed) return false;
    bool isAccepted = true;
    for (int i = 0; i < pList->GetChildCount(); i += 2) {
        const CNode* pName = pList->Child(i);
        const CMember* pMember = pStruct->FindMember(pName->GetName());
        if (!pMember) {
            m_Errors.ErrNotMember(pName->GetName(), pType, pName->location);
            isAccepted = false;
            continue;
        }
        CNode* pValue = i + 1 < pList->GetChildCount() ? pList->Child(i + 1) : nullptr;
        if (pValue && (pValue->nKind == STRUCT_INIT_LIST || pValue->nKind == ARRAY_INIT_LIST))
            isAccepted = CheckStructMember(*pMember, pName, pValue);
        else if (!pValue || !CheckInitElement(pMember->m_Type, pValue))
            isAccepted = false;
    }
    return isAccepted;
}

// ---- Declaring.

// The value of a declared variable that is no structure and no array, null if it has none. Kept (sources): a run-time
// expression, a string and a time give none, and no message.
std::unique_ptr<CInitValue> CNorvane::MakeVariableValue(CNode* pList, CType* pType, CNode* pValue)
{
    const bool isSame = IsSameType(pType, pValue->pType);
    switch (pValue->nKind) {
    case SIMPLIFIED:
        // The expression has lost its operands, so the message stands at the names.
        if (!CheckInitType(pType, pValue, pList->location)) return nullptr;
        NoteValueRange(m_Notes, pType, pValue->GetInit(), pValue);
        return ValueOf(pValue, pType);
    case IDENTIFIER:
        if (!CheckInitType(pType, pValue, pList->location) || !pValue->pVariable) return nullptr;
        // The variable's own value only: without one there is none, whatever its type starts with.
        return CloneOrNull(pValue->pVariable->m_InitValue.get());
    case DOT:
        if (!CheckInitType(pType, pValue, pList->location)) return nullptr;
        return pType->IsError() ? nullptr : GetElementInitValue(pValue);
    case ARRAY_ELEMENT:
        return isSame && !pType->IsError() ? GetElementInitValue(pValue) : nullptr;
    default:
        return pValue->IsLiteral() ? BuildInitScalar(pType, pValue) : nullptr;
    }
}

// At the names, which the expression may have come far from; where it was refused with a message, no note is printed.
void CNorvane::NoteDroppedValue(const CNode* pList)
{
    m_Notes.Add(Note::ValueDropped, pList->location, pList->Child(0)->GetName());
}

// A variable that starts with nothing starts with zero, and so does whoever takes its value; but what a parameter
// of a function holds comes from its caller.
static bool StartsWithZero(const CNode* pValue, int pouKind)
{
    const CVariable* pVariable = pValue->pVariable;
    if (!pValue->IsIdentifier() || !pVariable) return false;
    return pouKind != FUNCTION || !pVariable->IsParameter();
}

void CNorvane::DeclareWithInit(CNode* pList, CType* pType, CNode* pValue)
{
    if (!pType) pType = m_DataTypes.m_ErrorType;
    if (pType->IsAny()) {
        m_Errors.ErrInitAny(pList->location);
        AddVariables(pList, pType, nullptr);
        return;
    }
    if (pType->IsStructFB()) m_Errors.ErrAssignToFbInstance(pValue->location);

    std::unique_ptr<CInitValue> pInit;
    CType* pBase = pType->GetBaseType();
    if (pType->IsStruct()) {
        if (CheckStructInit(pBase, pValue)) pInit = BuildInitStruct(pBase, pValue);
        if (!pInit || pValue->nKind != STRUCT_INIT_LIST) NoteDroppedValue(pList);
    } else if (pValue->nKind == ARRAY_INIT_LIST) {
        // Kept (sources): a list that is refused leaves the names undeclared, so their uses are reported, or mean a
        // global.
        const CTypeArrayUser* pUser = pType->AsArrayUser();
        if (!pUser || !CheckArrayInit(pUser->m_ElementType, pValue, pUser->m_Index.get(), 0)) {
            for (const CNode* pName : pList->m_Children)
                m_Notes.Add(Note::NotDeclared, pName->location, pName->GetName());
            return;
        }
        pInit = BuildInitArray(pUser->m_ElementType, pValue);
        if (LosesDefault(*pUser->m_Element, *pUser->m_Index, pInit.get())) NoteDroppedValue(pList);
    } else {
        pInit = MakeVariableValue(pList, pBase, pValue);
        if (!pInit && !StartsWithZero(pValue, m_PouKind)) NoteDroppedValue(pList);
    }
    AddVariables(pList, pType, pInit.get());
}
