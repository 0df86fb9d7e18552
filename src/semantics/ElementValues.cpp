// Constants behind an access path, and what may stand as an array bound or as a subscript in a declaration.

#include "semantics/Norvane.h"

#include "model/ArrayIndex.h"
#include "model/Member.h"
#include "model/Type.h"
#include "model/TypeArray.h"
#include "model/TypeStruct.h"
#include "model/Variable.h"
#include "semantics/KnownValue.h"
#include "semantics/NumberRange.h"
#include "semantics/Wrapping.h"

// Where a walk along a path stands. The two values are followed side by side: the variable's own where it
// reaches that far, and what the types and members on the way start with by default.
struct ValueCursor
{
    const CInitValue* pValue = nullptr;
    const CInitValue* pDefault = nullptr;
    const CType* pType = nullptr;
    const CArrayOfArrayIndex* pIndex = nullptr;   // of the array that the last name stands for; null if it has none
    int level = 0;                                // levels of that index which subscripts have used up
};

static const CInitValue* FindElement(const CInitValue* pArray, std::int64_t position)
{
    if (!pArray || !pArray->IsArray()) return nullptr;
    return static_cast<const CInitArray*>(pArray)->GetElement(position);
}

static const CInitValue* FindMemberValue(const CInitValue* pStruct, std::string_view name)
{
    if (!pStruct || !pStruct->IsStruct()) return nullptr;
    return static_cast<const CInitStruct*>(pStruct)->Find(name);
}

// Row by row: the last subscript varies fastest. False if a subscript isn't known or doesn't fit the array.
static bool EvalPosition(CNorvane& norvane, const CNode* pSubscripts, const CArrayIndex* pIndex, std::int64_t& position)
{
    const int count = pSubscripts->GetChildCount();
    if (!pIndex || pIndex->GetDimensionCount() != count) return false;
    position = 0;
    for (int i = 0; i < count; ++i) {
        std::int32_t value = 0;
        if (norvane.EvalConstIndex(pSubscripts->Child(i), value) != 1) return false;
        const CIndex& bounds = pIndex->m_Dimensions[static_cast<std::size_t>(i)];
        position = WrapAdd(WrapMul(position, bounds.GetSize()), std::int64_t{value} - bounds.m_Low);
    }
    return true;
}

// A step "[1,2]"; false where the path leads nowhere.
static bool StepToElement(CNorvane& norvane, const CNode* pSubscripts, ValueCursor& cursor)
{
    const CTypeArray* pArray = cursor.pType ? cursor.pType->AsArray() : nullptr;
    if (!pArray || !cursor.pIndex) return false;
    std::int64_t position = 0;
    if (!EvalPosition(norvane, pSubscripts, cursor.pIndex->GetLevel(cursor.level), position)) return false;

    if (!cursor.pDefault) cursor.pDefault = cursor.pType->m_InitValue.get();
    cursor.pValue = FindElement(cursor.pValue, position);
    cursor.pDefault = FindElement(cursor.pDefault, position);
    cursor.pType = pArray->m_Element;
    ++cursor.level;
    return true;
}

// A step ".name".
static bool StepToMember(const CNode* pName, ValueCursor& cursor)
{
    const CTypeStruct* pStruct = cursor.pType ? cursor.pType->AsStruct() : nullptr;
    const CMember* pMember = pStruct ? pStruct->FindMember(pName->GetName()) : nullptr;
    if (!pMember) return false;
    cursor.pValue = FindMemberValue(cursor.pValue, pName->GetName());
    // A default of the whole structure speaks for all its members, those it doesn't name included.
    cursor.pDefault = cursor.pDefault ? FindMemberValue(cursor.pDefault, pName->GetName()) : pMember->m_InitValue.get();
    cursor.pType = pMember->m_Type;
    cursor.pIndex = pMember->m_Index.get();
    cursor.level = 0;
    return true;
}

std::unique_ptr<CInitValue> CNorvane::GetElementInitValue(const CNode* pNode)
{
    const CVariable* pVariable = pNode->pVariable;
    if (!pVariable) return nullptr;
    ValueCursor cursor{pVariable->m_InitValue.get(), nullptr, pVariable->m_Type, pVariable->GetIndex(), 0};
    for (int i = 1; i < pNode->GetChildCount(); ++i) {
        const CNode* pStep = pNode->Child(i);
        const bool isSubscript = pStep->nKind == EXP_LIST;
        if (!(isSubscript ? StepToElement(*this, pStep, cursor) : StepToMember(pStep, cursor))) return nullptr;
    }
    const CInitValue* pFound = cursor.pValue ? cursor.pValue : cursor.pDefault;
    if (!pFound && pNode->pType) pFound = pNode->pType->m_InitValue.get();
    return CloneOrNull(pFound);
}

// Array bounds, and subscripts in declarations. A variable counts with its initial value, CONSTANT or not.
int CNorvane::EvalConstIndex(const CNode* pNode, std::int32_t& value)
{
    std::int64_t number = 0;
    bool isInteger = false;
    switch (pNode->nKind) {
    case IMM_INTEGER:
        NoteBeyond32Bits(m_Notes, pNode->nValue, pNode);
        value = LowBits(pNode->nValue);
        return 1;
    case IMM_REAL:
        break;
    case SIMPLIFIED:
        isInteger = GetIntegerValue(pNode->GetInit(), number);
        if (!pNode->GetInit() || !pNode->GetInit()->IsBool()) break;
        number = pNode->GetInit()->GetBool() ? 1 : 0;   // what a comparison of variables has come to
        isInteger = true;
        break;
    case IDENTIFIER:
        isInteger = pNode->pVariable && GetIntegerValue(GetKnownValue(*pNode->pVariable), number);
        break;
    case DOT:
    case ARRAY_ELEMENT:
        isInteger = GetIntegerValue(GetElementInitValue(pNode).get(), number);
        break;
    default:
        m_Errors.ErrArrayDimensionUnchecked(pNode->location);
        return -1;
    }
    if (!isInteger) {
        m_Errors.ErrArrayIndexType(pNode->location);
        return -1;
    }
    NoteBeyond32Bits(m_Notes, number, pNode);
    value = LowBits(number);
    return 1;
}
