#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
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
    explicit CDataType(CXmlDocument& target);
    virtual ~CDataType();

    // Fills the table from the loaded target description; no node of its paths may be missing.
    void LoadFromTarget();
    CType* FindType(std::string_view name) const;        // exact: elementary types; null if absent
    CType* FindUserType(std::string_view name) const;    // in any case: declared types; null if absent
    // Enters a type under its lower-cased name and owns it. A name that is taken leaves the table as it
    // is; the type lives on all the same, for whoever has met it. Returns the type given.
    CType* AddType(std::unique_ptr<CType> pType);
    // An alias of the given type with a default value (null: a copy of the given type's default).
    CType* AddAlias(std::string_view name, CType* pType, const CInitValue* pInit);
    std::size_t GetCount() const { return m_Order.size(); }

    // Every entry in order of declaration, elementary types first.
    const std::vector<CType*>& GetTypes() const { return m_Order; }

    CType* m_ErrorType = nullptr;     // "ERROR": the type of an expression that failed
    CType* m_StringType = nullptr;    // "STRING"
    CType* m_PointerType = nullptr;   // the elementary type that a pointer has on the target

private:
    void AddElementaryTypes(const CXmlNode& iec);
    CType* ReadFormats(CXmlNode& target);
    void AddStringAndError();
    CType* Enter(std::string key, std::unique_ptr<CType> pType);

    CXmlDocument& m_Target;
    std::unordered_map<std::string, CType*> m_Types;     // elementary types under upper-case names, others lower-cased
    std::vector<CType*> m_Order;
    std::vector<std::unique_ptr<CType>> m_Owned;         // refused ones too
};
