#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory_resource>
#include <string_view>
#include <vector>

class CCastFunction;
class CPou;
class CType;
class CVariable;

// Tells apart the tables that leave their entries in names. 0 belongs to none.
using TableIdentity = std::uint32_t;

// What a table holds under a name; not owned. The entry counts only for the table whose identity it bears, so a table
// forgets all that it holds by taking a new identity.
template <typename Entry>
class CNameSlot
{
public:
    bool IsOf(TableIdentity identity) const { return m_Identity == identity; }
    Entry* Get(TableIdentity identity) const { return IsOf(identity) ? m_pEntry : nullptr; }
    void Set(TableIdentity identity, Entry* pEntry)
    {
        m_Identity = identity;
        m_pEntry = pEntry;
    }

private:
    Entry* m_pEntry = nullptr;
    TableIdentity m_Identity = 0;
};

// The tables of variables: those of the whole run and those of the POU in progress.
enum class Scope { Global, Local };

// A spelling that the compile has met. There is one object for it in its pool, so equal spellings have equal
// addresses, and what a table knows of a name is found in the name itself. A table that ignores case asks the key.
class CName
{
public:
    std::string_view GetText() const { return {m_Text, m_Length}; }
    const CName& GetKey() const { return *m_pKey; }              // the spelling in lower case, which is its own key
    bool HasTwoUnderscores() const { return m_HasTwoUnderscores; }   // side by side
    bool HasTo() const { return m_HasTo; }                           // "_TO_" is in it, as in each cast's name

    // Each slot serves one table of the compile, which alone reads and writes it. In keys:
    mutable std::array<CNameSlot<CVariable>, 2> m_Variables;   // by Scope
    mutable CNameSlot<CPou> m_Pou;
    // In spellings: elementary types stand in upper case, the types of the sources under their keys.
    mutable CNameSlot<CType> m_Type;
    mutable CNameSlot<CCastFunction> m_Cast;

private:
    friend class CNamePool;
    CName(const char* text, std::uint32_t length, std::uint32_t hash);

    const char* m_Text;           // in the pool
    const CName* m_pKey = this;
    std::uint32_t m_Length;
    std::uint32_t m_Hash;
    bool m_HasTwoUnderscores;
    bool m_HasTo;
};

// The names of one compile: it owns them, and they live as long as it does. Pools know nothing of each other.
class CNamePool
{
public:
    CNamePool();
    CNamePool(const CNamePool&) = delete;
    CNamePool& operator=(const CNamePool&) = delete;

    const CName& Intern(std::string_view spelling);
    // The name of a spelling, or of one in lower case, that has been interned; null for any other.
    const CName* Find(std::string_view spelling) const;
    const CName* FindKey(std::string_view spelling) const;
    std::size_t GetCount() const { return m_Count; }

    TableIdentity NewIdentity() { return ++m_LastIdentity; }

private:
    std::size_t FindPlace(std::string_view spelling, std::uint32_t hash) const;
    const CName& Enter(std::string_view spelling, std::uint32_t hash, std::size_t place);
    void Grow();

    std::pmr::monotonic_buffer_resource m_Memory;
    std::vector<const CName*> m_Places;      // by hash, with free places (null) behind; at most half of them are taken
    std::size_t m_Count = 0;
    TableIdentity m_LastIdentity = 0;
};
