#pragma once

#include "model/InitValue.h"
#include "model/Type.h"
#include "model/Variable.h"

#include <cstdint>

// What is known of a variable while declarations are read: its own initial value, else the default of its
// type. It need not be CONSTANT. Null if there is neither.
inline const CInitValue* GetKnownValue(const CVariable& variable)
{
    if (variable.m_InitValue) return variable.m_InitValue.get();
    return variable.m_Type ? variable.m_Type->m_InitValue.get() : nullptr;
}

// False for a value that is no integer, and for none.
inline bool GetIntegerValue(const CInitValue* pValue, std::int64_t& number)
{
    if (!pValue || !pValue->IsInteger()) return false;
    number = pValue->IsUnsigned() ? std::int64_t{pValue->GetUnsigned()} : pValue->GetInt64();
    return true;
}
