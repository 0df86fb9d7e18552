#pragma once

#include "model/Name.h"

#include <memory>
#include <string>
#include <string_view>
#include <vector>

class CInitValue;
class CType;
class CXmlDocument;
class CXmlNode;

// The table of all type names: the elementary types as the target sets them, and the types that the
// sources declare.
class CDataType
{
public:
    CDataType(CXmlDocument& target, CNamePool& names);
    virtual ~CDataType();

    // Fills the table from the loaded target description; no node of its paths may be missing.
    void LoadFromTarget();
    // By the exact spelling: elementary types. In any case: declared types. Null if absent.
    CType* FindType(const CName& name) const { return name.m_Type.Get(m_Identity); }
    CType* FindType(std::string_view name) const;
    CType* FindUserType(const CName& name) const { return FindType(name.GetKey()); }
    CType* FindUserType(std::string_view name) const;
    // Enters a type under its lower-cased name and owns it. A name that is taken leaves the table as it
    // is; the type lives on all the same, for whoever has met it. Returns the type given.
    CType* AddType(std::unique_ptr<CType> pType);
    // An alias of the given type with a default value (null: a copy of the given type's default).
    CType* AddAlias(std::string_view name, CType* pType, const CInitValue* pInit);
    std::size_t GetCount() const { return m_Order.size(); }

    // Every entry in order of declaration, elementary types first.
    const std::vector<CType*>& GetTypes() const { return m_Order; }

    // Known by heart, since every expression may ask for them; null until the table is filled.
    CType* m_BoolType = nullptr;
    CType* m_IntType = nullptr;
    CType* m_DintType = nullptr;
    CType* m_RealType = nullptr;
    CType* m_ErrorType = nullptr;     // "ERROR": the type of an expression that failed
    CType* m_StringType = nullptr;    // "STRING"
    CType* m_PointerType = nullptr;   // the elementary type that a pointer has on the target

private:
    void AddElementaryTypes(const CXmlNode& iec);
    CType* ReadFormats(CXmlNode& target);
    void AddStringAndError();
    CType* Enter(const CName& key, std::unique_ptr<CType> pType);

    CXmlDocument& m_Target;
    CNamePool& m_Names;
    const TableIdentity m_Identity;
    std::vector<CType*> m_Order;
    std::vector<std::unique_ptr<CType>> m_Owned;         // refused ones too
};
