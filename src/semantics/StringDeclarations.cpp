// String declarations: "s : STRING [n] := 'text'", "s : STRING [n] := variable". The length belongs to each
// variable, as that of its initial value.

#include "semantics/Norvane.h"

#include "frontend/StringLiteral.h"
#include "model/Type.h"
#include "model/Variable.h"
#include "semantics/KnownValue.h"
#include "semantics/Wrapping.h"

#include <algorithm>
#include <limits>

static constexpr std::int32_t g_NoLength = -1;

// A length of 64 bits as one of 32; what is longer than any memory stays so.
static std::int32_t NarrowLength(std::int64_t value)
{
    return static_cast<std::int32_t>(std::min<std::int64_t>(value, std::numeric_limits<std::int32_t>::max()));
}

// The length that the node stands for; below 0 it has been reported.
static std::int64_t ReadLength(const CNode* pLength, CErrorHandler& errors)
{
    if (pLength->nKind == ERROR_) return g_NoLength;
    if (pLength->nKind == IMM_REAL) {
        errors.ErrStringDimension(pLength->location);
        return TruncateToInt64(pLength->GetReal());   // Kept (messages): reported, and used all the same.
    }
    const bool isVariable = pLength->IsIdentifier() && pLength->pVariable;
    const CInitValue* pValue = isVariable ? GetKnownValue(*pLength->pVariable) : nullptr;
    if (pLength->nKind != IMM_INTEGER && !pValue) {
        errors.ErrStringSizeUnchecked(pLength->location);
        return g_NoLength;
    }
    std::int64_t value = pLength->nValue;
    if (pValue && !GetIntegerValue(pValue, value)) value = g_NoLength;
    if (value < 0) errors.ErrStringDimension(pLength->location);
    return value;
}

// Without a length the names are declared at once as plain strings, so that their uses don't fail as well.
std::int32_t CNorvane::EvalStringLength(CNode* pList, CNode* pLength)
{
    const std::int64_t length = ReadLength(pLength, m_Errors);
    if (length >= 0) return NarrowLength(length);
    AddVariables(pList, m_DataTypes.m_StringType, nullptr);
    return g_NoLength;
}

std::int32_t CNorvane::BeginString(CNode* pList, CNode* pLength)
{
    const std::int32_t length = EvalStringLength(pList, pLength);
    const CType* pType = m_DataTypes.m_StringType;
    if (!pType->m_Allowed) m_Errors.ErrTypeNotSupported(pType->m_Name);
    return length;
}

// A text that is too long is kept whole.
void CNorvane::AddString(CNode* pList, std::int32_t length, const std::string& text, const SourceLocation& lengthWhere)
{
    const std::int32_t have = NarrowLength(static_cast<std::int64_t>(text.size()));
    if (have > length) m_Errors.WarnStringTooLong(have, length, lengthWhere);
    const CInitString value(length, text);
    AddVariables(pList, m_DataTypes.m_StringType, &value);
}

void CNorvane::DeclareString(CNode* pList, CNode* pLength, CStringLiteral* pText)
{
    const std::unique_ptr<CStringLiteral> owned(pText);
    const std::int32_t length = BeginString(pList, pLength);
    if (length == g_NoLength) return;
    AddString(pList, length, owned ? owned->GetText() : std::string(), pLength->location);
}

// The text of a plain string variable, null if the node is anything else.
static const CInitValue* FindVariableText(const CNode* pVariable)
{
    if (!pVariable->IsIdentifier() || !pVariable->pVariable) return nullptr;
    const CType* pType = pVariable->pVariable->m_Type;
    if (!pType || !pType->IsString()) return nullptr;
    const CInitValue* pValue = GetKnownValue(*pVariable->pVariable);
    return pValue && pValue->IsString() ? pValue : nullptr;
}

void CNorvane::DeclareStringFromVariable(CNode* pList, CNode* pLength, CNode* pVariable)
{
    const std::int32_t length = BeginString(pList, pLength);
    if (length == g_NoLength) return;
    const CInitValue* pValue = FindVariableText(pVariable);
    if (!pValue) {
        m_Errors.ErrStringAssignment(pList->location);
        return;
    }
    AddString(pList, length, pValue->GetText(), pLength->location);
}
