#pragma once

#include "model/InitValue.h"

#include <algorithm>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

class CTypeAny;
class CTypeArray;
class CTypeArrayUser;
class CTypeStruct;
class CTypeStructFB;

// A data type. Types are made by the type table or by a declaration and stay valid to the end of the
// process, so plain CType pointers may be kept; two types are the same only if their objects are.
class CType
{
public:
    explicit CType(std::string name);
    // An alias: takes size and alignment from the type that it renames.
    CType(std::string name, CType* pAliasOf);
    virtual ~CType() = default;
    CType(const CType&) = delete;
    CType& operator=(const CType&) = delete;

    virtual std::string GetInitText() const;       // of the default value, "NULL" if there is none

    CType* GetBaseType() { return m_Base; }   // the type behind all aliases, this one if it is none
    const CType* GetBaseType() const { return m_Base; }

    // All tests but the last two look at the base type.
    bool IsError() const { return m_Base->m_IsError; }   // the error type, and arrays of it on any level
    bool IsBool() const { return m_Base->m_Group == Group::Bool; }
    bool IsSigned() const { return m_Base->m_Group == Group::Signed; }
    bool IsUnsigned() const { return m_Base->m_Group == Group::Unsigned; }
    bool IsInteger() const { return IsSigned() || IsUnsigned(); }
    bool IsReal() const { return m_Base->m_Group == Group::Real; }
    bool IsNumeric() const { return IsSigned() || IsReal() || IsUnsigned(); }   // signed, unsigned or real
    bool IsBitString() const { return m_Base->m_Group == Group::BitString; }   // BYTE to LWORD; not BOOL
    bool IsString() const { return m_Base->m_Class == Class::String; }
    bool IsAny() const { return m_Base->m_Class == Class::Any; }
    bool IsArray() const { return m_Base->m_Class == Class::Array || IsArrayUser(); }
    bool IsArrayUser() const { return m_Base->m_Class == Class::ArrayUser; }
    bool IsStruct() const { return m_Base->m_Class == Class::Struct || IsStructFB(); }   // function block structures too
    bool IsStructFB() const { return m_Base->m_Class == Class::StructFB; }
    bool IsAggregate() const { return IsArray() || IsStruct(); }
    bool IsNotAlias() const { return !m_IsAlias; }
    bool IsElementary() const { return m_IsElementary; }

    // The base type as its class; null if it is another one.
    CTypeAny* AsAny();
    CTypeArray* AsArray();
    CTypeArrayUser* AsArrayUser();
    CTypeStruct* AsStruct();
    CTypeStructFB* AsStructFB();
    const CTypeArray* AsArray() const { return const_cast<CType*>(this)->AsArray(); }
    const CTypeStruct* AsStruct() const { return const_cast<CType*>(this)->AsStruct(); }
    const CTypeStructFB* AsStructFB() const { return const_cast<CType*>(this)->AsStructFB(); }

    void SetSizeBytes(std::int32_t n) { m_SizeBits = n * 8; }
    void SetAlign(std::int32_t n) { m_Align = n; }
    // The alignment that places are computed with: an unknown one, and any below 1 that a target gives, counts as 1.
    std::int32_t GetPlacingAlign() const { return std::max(m_Align, 1); }

    bool m_Allowed = true;                         // the target allows the type
    std::unique_ptr<CInitValue> m_InitValue;       // default initial value, may be null
    std::string m_Name;                            // upper case for elementary types
    bool m_IsError = false;                        // the type of what has failed; arrays take it from their elements
    bool m_IsAlias = false;
    bool m_IsElementary = true;                    // true for an alias too
    CType* m_AliasOf = nullptr;                    // with m_IsAlias
    std::int32_t m_SizeBits = -1;                  // -1: unknown, also of every array: bounds belong to variables
    std::int32_t m_Align = -1;                     // bytes, as the target gives them; -1: unknown

protected:
    // What the class tests ask; each class of the family answers with its own.
    enum class Class { Plain, Any, Array, ArrayUser, String, Struct, StructFB };
    Class m_Class = Class::Plain;

private:
    // The groups that the name of an elementary type decides, settled once when the type is made.
    enum class Group { None, Bool, Signed, Unsigned, Real, BitString };
    static Group GroupOf(std::string_view name);

    CType* m_Base = this;                          // followed through all aliases at construction
    Group m_Group = Group::None;
};

// Whether both stand for one type once aliases are resolved. A type that isn't known (null) equals only another.
inline bool IsSameType(const CType* pFirst, const CType* pSecond)
{
    if (!pFirst || !pSecond) return pFirst == pSecond;
    return pFirst->GetBaseType() == pSecond->GetBaseType();
}

// Whether the type is an array or a structure; an unknown one (null) is neither.
inline bool IsAggregate(const CType* pType)
{
    return pType && pType->IsAggregate();
}
