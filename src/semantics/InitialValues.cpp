// Builds the values that variables, members and types start with, from lists that the checks have accepted.
// A list may hold refused parts all the same, where a later part of it was accepted: they give no value.

#include "semantics/Norvane.h"

#include "model/ArrayIndex.h"
#include "model/Member.h"
#include "model/Type.h"
#include "model/TypeArray.h"
#include "model/TypeStruct.h"
#include "semantics/KnownValue.h"
#include "semantics/NumberRange.h"

#include <algorithm>
#include <limits>

// Repeat counts are kept in 32 bits; what the source says may be anything.
static std::int32_t NarrowCount(std::int64_t count)
{
    constexpr std::int64_t lowest = std::numeric_limits<std::int32_t>::min();
    constexpr std::int64_t highest = std::numeric_limits<std::int32_t>::max();
    return static_cast<std::int32_t>(std::clamp(count, lowest, highest));
}

static bool GetBoolOf(const CNode* pLiteral)
{
    if (pLiteral->nKind == IMM_INTEGER) return (pLiteral->nValue & 1) != 0;   // -1 is true, -2 is false
    return pLiteral->nKind == TRUE;
}

std::unique_ptr<CInitValue> CNorvane::BuildInitScalar(CType* pType, CNode* pNode)
{
    if (!CheckImmediate(pType, pNode, /*bReport=*/true)) return nullptr;
    if (pType->IsSigned()) return std::make_unique<CInitValue>(pNode->nValue);
    if (pType->IsReal()) {
        const bool isInteger = pNode->nKind == IMM_INTEGER;
        return std::make_unique<CInitValue>(isInteger ? static_cast<double>(pNode->nValue) : pNode->GetReal());
    }
    if (pType->IsBool()) return std::make_unique<CInitValue>(GetBoolOf(pNode));
    // Kept (code): the low 32 bits, also where the type has 64.
    return std::make_unique<CInitValue>(static_cast<std::uint32_t>(static_cast<std::uint64_t>(pNode->nValue)));
}

std::unique_ptr<CInitValue> CNorvane::ValueOf(CNode* pNode, CType* pType)
{
    switch (pNode->nKind) {
    case IDENTIFIER: return pNode->pVariable ? CloneOrNull(GetKnownValue(*pNode->pVariable)) : nullptr;
    case SIMPLIFIED: return CloneOrNull(pNode->GetInit());
    case DOT:
    case ARRAY_ELEMENT: return GetElementInitValue(pNode);
    default: return pNode->IsLiteral() ? BuildInitScalar(pType, pNode) : nullptr;
    }
}

// The value of one element or member of the given type, null if it has none that is known. False for kinds
// of nodes that have no value to store at all.
bool CNorvane::BuildInitElement(CType* pType, CNode* pNode, std::unique_ptr<CInitValue>& pInit)
{
    switch (pNode->nKind) {
    case ARRAY_INIT_LIST: pInit = BuildInitArray(pType, pNode); return true;
    case STRUCT_INIT_LIST: pInit = BuildInitStruct(pType, pNode); return true;
    default: break;
    }
    if (!pNode->IsLiteral() && !pNode->IsVariableAccess() && pNode->nKind != SIMPLIFIED) return false;
    if (pNode->nKind == SIMPLIFIED) NoteValueRange(m_Notes, pType, pNode->GetInit(), pNode);
    pInit = ValueOf(pNode, pType);
    return true;
}

// Whether a value was found, and is one that the element can start with: a number sets no structure or array. One of
// those may have no value, then it starts with zeros.
static bool SuitsElement(const CType* pElement, const CInitValue* pInit, const CNode* pNode)
{
    if (!IsAggregate(pElement)) return pInit != nullptr;
    return pInit ? pInit->IsArray() || pInit->IsStruct() : IsAggregate(pNode->pType);
}

// A DUP stands directly before the element that it repeats.
std::unique_ptr<CInitValue> CNorvane::BuildInitArray(CType* pType, const CNode* pList)
{
    const CTypeArray* pArrayType = pType ? pType->AsArray() : nullptr;
    if (!pArrayType) return nullptr;
    auto pArray = std::make_unique<CInitArray>();
    std::int64_t repeat = 1;
    for (CNode* pChild : pList->m_Children) {
        if (pChild->nKind == DUP) {
            if (!GetRepeatCount(pChild->Child(0), repeat)) repeat = 1;
            continue;
        }
        std::unique_ptr<CInitValue> pInit;
        const bool isBuilt = BuildInitElement(pArrayType->m_Element, pChild, pInit);
        if (!isBuilt || !SuitsElement(pArrayType->m_Element, pInit.get(), pChild))
            m_Notes.Add(Note::ValueDropped, pList->location, "an element");
        if (!isBuilt) continue;
        pArray->Add(std::move(pInit), NarrowCount(repeat));
        repeat = 1;
    }
    return pArray;
}

// Whether it shows that a value isn't known: a structure or array without any falls back on the member's own.
static bool IsMissed(const CMember& member)
{
    return !IsAggregate(member.m_Type) || !IsBlank(member.m_InitValue.get());
}

// Pairs of a member's name and its value. A node without children gives an empty structure. A value that isn't known
// makes an entry all the same, one without a value: it counts as a second one of its name, and takes its place.
std::unique_ptr<CInitValue> CNorvane::BuildInitStruct(CType* pType, const CNode* pList)
{
    const CTypeStruct* pStructType = pType ? pType->AsStruct() : nullptr;
    if (!pStructType) return nullptr;
    auto pStruct = std::make_unique<CInitStruct>();
    for (int i = 0; i + 1 < pList->GetChildCount(); i += 2) {
        const CNode* pName = pList->Child(i);
        const CMember* pMember = pStructType->FindMember(pName->GetName());
        std::unique_ptr<CInitValue> pInit;
        if (!pMember) continue;
        const bool isBuilt = BuildInitElement(pMember->m_Type, pList->Child(i + 1), pInit);
        if (!isBuilt || (!pInit && IsMissed(*pMember))) m_Notes.Add(Note::ValueDropped, pName->location, pName->GetName());
        if (!isBuilt) continue;
        pStruct->Add(pMember->m_Name, std::move(pInit), pName->location, m_Errors);
    }
    return pStruct;
}

// How often an array's default is repeated. Kept (code): for more than one dimension that is more than the array has
// elements, see GetTotalSize.
static std::int32_t GetDefaultCount(const CArrayOfArrayIndex* pIndex, int level)
{
    const CArrayIndex* pLevel = pIndex ? pIndex->GetLevel(level) : nullptr;
    if (!pLevel || pLevel->GetDimensionCount() == 0) return 1;
    return NarrowCount(pLevel->GetTotalSize());
}

// The value of an array of elements that start with what their type starts with.
std::unique_ptr<CInitValue> CNorvane::BuildDefaultArrayInit(const CArrayOfArrayIndex* pIndex, CType* pType, int level)
{
    if (!pType) return nullptr;
    const CTypeArray* pArrayType = pType->AsArray();
    if (!pArrayType) return CloneOrNull(pType->m_InitValue.get());
    const bool isNamed = pType->IsArrayUser();
    std::unique_ptr<CInitValue> pElement = isNamed ? CloneOrNull(pType->m_InitValue.get())
                                                   : BuildDefaultArrayInit(pIndex, pArrayType->m_Element, level + 1);
    auto pArray = std::make_unique<CInitArray>();
    pArray->Add(std::move(pElement), GetDefaultCount(pIndex, level));
    return pArray;
}
