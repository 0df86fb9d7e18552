#include "model/Name.h"

#include "files/Format.h"

#include <cstring>
#include <new>
#include <string>
#include <type_traits>

static_assert(std::is_trivially_destructible_v<CName>, "the pool gives its memory back without looking at the names");

static constexpr std::string_view g_To = "_TO_";
static constexpr std::size_t g_FirstPlaceCount = 1024;   // a power of two, as are all that follow

// FNV-1a over 64 bits, folded.
static std::uint32_t HashOf(std::string_view spelling)
{
    std::uint64_t hash = 0xcbf29ce484222325u;
    for (const char c : spelling) hash = (hash ^ static_cast<unsigned char>(c)) * 0x100000001b3u;
    return static_cast<std::uint32_t>(hash ^ (hash >> 32));
}

CName::CName(const char* text, std::uint32_t length, std::uint32_t hash)
    : m_Text(text), m_Length(length), m_Hash(hash),
      m_HasTwoUnderscores(GetText().find("__") != std::string_view::npos),
      m_HasTo(GetText().find(g_To) != std::string_view::npos)
{
}

CNamePool::CNamePool() : m_Places(g_FirstPlaceCount) {}

// Where the spelling stands, or the free place where it belongs.
std::size_t CNamePool::FindPlace(std::string_view spelling, std::uint32_t hash) const
{
    const std::size_t mask = m_Places.size() - 1;
    std::size_t place = hash & mask;
    for (; const CName* pName = m_Places[place]; place = (place + 1) & mask)
        if (pName->m_Hash == hash && pName->GetText() == spelling) break;
    return place;
}

const CName& CNamePool::Intern(std::string_view spelling)
{
    const std::uint32_t hash = HashOf(spelling);
    const std::size_t place = FindPlace(spelling, hash);
    if (m_Places[place]) return *m_Places[place];
    return Enter(spelling, hash, place);
}

const CName& CNamePool::Enter(std::string_view spelling, std::uint32_t hash, std::size_t place)
{
    const std::uint32_t length = static_cast<std::uint32_t>(spelling.size());
    void* const pMemory = m_Memory.allocate(sizeof(CName) + length, alignof(CName));
    char* const text = static_cast<char*>(pMemory) + sizeof(CName);
    if (length > 0) std::memcpy(text, spelling.data(), length);
    CName* const pName = new (pMemory) CName(text, length, hash);
    m_Places[place] = pName;
    ++m_Count;
    if (2 * m_Count > m_Places.size()) Grow();

    const std::string key = ToLowerCase(pName->GetText());
    if (key != pName->GetText()) pName->m_pKey = &Intern(key);
    return *pName;
}

void CNamePool::Grow()
{
    std::vector<const CName*> names(2 * m_Places.size());
    names.swap(m_Places);
    for (const CName* pName : names)
        if (pName) m_Places[FindPlace(pName->GetText(), pName->m_Hash)] = pName;
}

const CName* CNamePool::Find(std::string_view spelling) const
{
    return m_Places[FindPlace(spelling, HashOf(spelling))];
}

const CName* CNamePool::FindKey(std::string_view spelling) const
{
    return Find(ToLowerCase(spelling));
}
