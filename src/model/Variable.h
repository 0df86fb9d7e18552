#pragma once

#include "frontend/SourceLocation.h"
#include "model/ArrayIndex.h"
#include "model/InitValue.h"

#include <cstdint>
#include <memory>
#include <string>

class CType;

// A declared variable: the flags of its block and, once it is placed, its address.
class CVariable
{
public:
    CVariable() = default;
    virtual ~CVariable() = default;
    CVariable(const CVariable&) = delete;
    CVariable& operator=(const CVariable&) = delete;

    virtual std::string GetInitText() const;         // of its value, else of its type's, else "NULL"
    virtual std::unique_ptr<CVariable> Clone() const;
    virtual bool IsArray() const { return false; }   // by class: a CVariable may well have an array type
    virtual const CArrayOfArrayIndex* GetIndex() const { return nullptr; }
    bool IsParameter() const { return m_IsInput || m_IsOutput || m_IsInOut; }
    bool IsHeldByPointer() const { return m_IsOutput || m_IsInOut; }

    std::int32_t m_Size = -1;                        // bytes; -1: not placed; 0: a BOOL that shares a byte
    std::string m_DirectAddress;                     // the AT text without "%"; empty if there is none
    std::unique_ptr<CInitValue> m_InitValue;         // may be null
    CType* m_Type = nullptr;                         // base type, aliases resolved; not owned
    std::int32_t m_Offset = -1;                      // bytes in its area; -1 unknown
    std::int32_t m_BitOffset = -1;                   // -1 unknown
    std::string m_Name;                              // as written
    SourceLocation m_Location;                       // of the declared name; without a file if no source declares it
    bool m_IsConstant = false;
    bool m_IsRetain = false;
    bool m_IsLocal = true;                           // false in VAR_GLOBAL
    bool m_IsOutput = false;
    bool m_IsInput = false;
    bool m_IsInOut = false;
    bool m_IsUsed = false;                           // an expression or a call names it

protected:
    void CopyFieldsTo(CVariable& copy) const;
};

// A variable declared as an array, with bounds of its own.
class CVariableArray : public CVariable
{
public:
    std::string GetInitText() const override;        // with the element count filled in
    std::unique_ptr<CVariable> Clone() const override;
    bool IsArray() const override { return true; }
    const CArrayOfArrayIndex* GetIndex() const override { return m_Index.get(); }

    std::unique_ptr<CArrayOfArrayIndex> m_Index;
};
