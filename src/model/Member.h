#pragma once

#include "model/ArrayIndex.h"
#include "model/InitValue.h"

#include <cstdint>
#include <memory>
#include <string>

class CType;
class CMemberFB;

// A field of a structure.
class CMember
{
public:
    CMember(std::string name, CType* pType);
    virtual ~CMember() = default;

    virtual std::unique_ptr<CMember> Clone() const;
    // This member as one of a function block; null if it is a plain structure's.
    virtual const CMemberFB* AsMemberFB() const { return nullptr; }
    bool IsInOut() const;                            // of a function block, and in-out

    std::unique_ptr<CInitValue> m_InitValue;         // may be null
    std::string m_Name;                              // as written
    std::int32_t m_Offset = -1;                      // bytes from the structure's start; -1 before layout
    std::unique_ptr<CArrayOfArrayIndex> m_Index;     // of an array member; null for some all the same
    CType* m_Type;                                   // not owned; an alias stays one
    std::int32_t m_BoolsInFront = 0;                 // BOOL members directly in front; set by CTypeStruct::AddMember

protected:
    void CopyFieldsTo(CMember& copy) const;
};

// A variable of a function block as a member of its instances; with no flag set it is private.
class CMemberFB : public CMember
{
public:
    using CMember::CMember;

    std::unique_ptr<CMember> Clone() const override;
    const CMemberFB* AsMemberFB() const override { return this; }

    bool m_IsOutput = false;
    bool m_IsInOut = false;
    bool m_IsInput = false;
};
