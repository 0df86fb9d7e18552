#include "model/InitValue.h"

#include "files/Format.h"
#include "frontend/ErrorHandler.h"

#include <algorithm>
#include <bit>
#include <utility>

CInitValue::CInitValue(bool value) : m_Kind(Bool), m_Bits(value ? 1 : 0) {}
CInitValue::CInitValue(std::int64_t value) : m_Kind(Signed), m_Bits(static_cast<std::uint64_t>(value)) {}
CInitValue::CInitValue(double value) : m_Kind(Real), m_Bits(std::bit_cast<std::uint64_t>(value)) {}
CInitValue::CInitValue(std::uint32_t value) : m_Kind(Unsigned), m_Bits(value) {}

std::unique_ptr<CInitValue> CInitValue::Clone() const
{
    return std::make_unique<CInitValue>(*this);
}

std::string CInitValue::GetText(bool withZero) const
{
    switch (m_Kind) {
    case Bool: return GetBool() ? "1" : (withZero ? "0" : "");
    case Signed:
        if (GetInt64() == 0 && !withZero) return {};
        return FormatText("%lld", static_cast<long long>(GetInt64()));
    case Real:
        if (GetDouble() == 0.0 && !withZero) return {};
        return FormatReal(GetDouble());
    case Unsigned:
        if (GetUnsigned() == 0 && !withZero) return {};
        // Kept (code): unsigned values above the signed half come out negative.
        return FormatText("%d", static_cast<int>(GetUnsigned()));
    default: return {};
    }
}

std::unique_ptr<CInitValue> CloneOrNull(const CInitValue* pValue)
{
    return pValue ? pValue->Clone() : nullptr;
}

// One byte, as a bool has in memory: the number 256 reads as false.
bool CInitValue::GetBool() const
{
    return (m_Bits & 0xFFu) != 0;
}

std::int64_t CInitValue::GetInt64() const
{
    return static_cast<std::int64_t>(m_Bits);
}

double CInitValue::GetDouble() const
{
    return std::bit_cast<double>(m_Bits);
}

std::uint32_t CInitValue::GetUnsigned() const
{
    return static_cast<std::uint32_t>(m_Bits);
}

bool IsBlank(const CInitValue* pValue)
{
    return !pValue || pValue->IsBlank();
}

bool IsSameInit(const CInitValue* pFirst, const CInitValue* pSecond)
{
    if (IsBlank(pFirst) && IsBlank(pSecond)) return true;
    return pFirst && pSecond && pFirst->IsSameAs(*pSecond);
}

bool CInitValue::IsSameAs(const CInitValue& other) const
{
    return m_Kind == other.m_Kind && GetText(true) == other.GetText(true);
}

bool CInitArray::IsBlank() const
{
    const auto isBlank = [](const std::unique_ptr<CInitValue>& pValue) { return ::IsBlank(pValue.get()); };
    return std::all_of(m_Elements.begin(), m_Elements.end(), isBlank);
}

bool CInitArray::IsSameAs(const CInitValue& other) const
{
    if (!other.IsArray()) return false;
    const CInitArray& array = static_cast<const CInitArray&>(other);
    const auto isSame = [](const std::unique_ptr<CInitValue>& pFirst, const std::unique_ptr<CInitValue>& pSecond) {
        return IsSameInit(pFirst.get(), pSecond.get());
    };
    return m_Repeats == array.m_Repeats && std::equal(m_Elements.begin(), m_Elements.end(), array.m_Elements.begin(),
                                                      array.m_Elements.end(), isSame);
}

bool CInitStruct::IsBlank() const
{
    const auto isBlank = [](const auto& entry) { return ::IsBlank(entry.second.get()); };
    return std::all_of(m_Members.begin(), m_Members.end(), isBlank);
}

bool CInitStruct::IsSameAs(const CInitValue& other) const
{
    if (!other.IsStruct()) return false;
    const CInitStruct& structure = static_cast<const CInitStruct&>(other);
    const auto isSame = [](const auto& first, const auto& second) {
        return first.first == second.first && IsSameInit(first.second.get(), second.second.get());
    };
    return std::equal(m_Members.begin(), m_Members.end(), structure.m_Members.begin(), structure.m_Members.end(),
                      isSame);
}

bool CInitValue::IsZero() const
{
    switch (m_Kind) {
    case Signed: return GetInt64() == 0;
    case Unsigned: return GetUnsigned() == 0;
    case Real: return GetDouble() == 0.0;
    default: return false;
    }
}

// The bits hold the declared length, which is what reading a string as a number gives.
CInitString::CInitString(std::int32_t length, std::string text) : m_Length(length), m_Text(std::move(text))
{
    m_Kind = String;
    m_Bits = static_cast<std::uint64_t>(std::int64_t{length});
}

std::unique_ptr<CInitValue> CInitString::Clone() const
{
    return std::make_unique<CInitString>(*this);
}

std::string CInitString::GetText(bool /*withZero*/) const
{
    return m_Text;
}

std::unique_ptr<CInitValue> CInitArray::Clone() const
{
    std::unique_ptr<CInitArray> pClone = std::make_unique<CInitArray>();
    pClone->m_Elements.reserve(m_Elements.size());
    for (const std::unique_ptr<CInitValue>& pValue : m_Elements)
        pClone->m_Elements.push_back(CloneOrNull(pValue.get()));
    pClone->m_Repeats = m_Repeats;
    return pClone;
}

static std::string WithRepeat(std::int32_t repeat, const std::string& text)
{
    if (repeat == 1) return text;
    return FormatText("%d(", static_cast<int>(repeat)) + text + ")";
}

// Longer arrays are cut in their text, and only there.
static std::size_t CountShownEntries(const CInitArray& values)
{
    constexpr std::size_t shownEntries = 10;
    return std::min({values.m_Elements.size(), values.m_Repeats.size(), shownEntries});
}

// "1 3(2) 4 ": the last entry is followed by a blank like any other.
std::string CInitArray::GetText(bool withZero) const
{
    std::string text;
    const std::size_t shown = CountShownEntries(*this);
    for (std::size_t i = 0; i < shown; ++i) {
        if (!m_Elements[i]) continue;
        text += WithRepeat(m_Repeats[i], m_Elements[i]->GetText(withZero));
        text += ' ';
    }
    return text;
}

// The last comma of a list makes way for the closing bracket.
static void CloseList(std::string& text, char bracket)
{
    if (text.back() == ',') text.pop_back();
    text += bracket;
}

std::string CInitArray::GetBracketedText() const
{
    std::string text = "[";
    const std::size_t shown = CountShownEntries(*this);
    for (std::size_t i = 0; i < shown; ++i) {
        if (!m_Elements[i]) continue;
        text += WithRepeat(m_Repeats[i], m_Elements[i]->GetBracketedText());
        text += ',';
    }
    CloseList(text, ']');
    return text;
}

void CInitArray::Add(std::unique_ptr<CInitValue> pValue, std::int32_t repeat)
{
    m_Elements.push_back(std::move(pValue));
    m_Repeats.push_back(repeat);
}

// Element i belongs to the first entry whose sum of counts, its own included, lies above i. All entries in
// front of that one have sums of at most i, so for the same or a later element the walk can go on from
// there, whatever the signs of the counts are.
const CInitValue* CInitArray::GetElement(std::int64_t i) const
{
    if (i < 0) return nullptr;
    const std::size_t count = std::min(m_Elements.size(), m_Repeats.size());
    if (i < m_CursorElement || m_CursorEntry > count) {
        m_CursorEntry = 0;
        m_CursorStart = 0;
    }
    m_CursorElement = i;
    while (m_CursorEntry < count) {
        const std::int64_t end = m_CursorStart + m_Repeats[m_CursorEntry];
        if (i < end) return m_Elements[m_CursorEntry].get();
        m_CursorStart = end;
        ++m_CursorEntry;
    }
    return nullptr;
}

std::unique_ptr<CInitValue> CInitStruct::Clone() const
{
    std::unique_ptr<CInitStruct> pClone = std::make_unique<CInitStruct>();
    pClone->m_Members.reserve(m_Members.size());
    for (const auto& [name, pValue] : m_Members) pClone->m_Members.emplace_back(name, CloneOrNull(pValue.get()));
    pClone->m_ByName = m_ByName;
    return pClone;
}

// "a 1 b 2 "
std::string CInitStruct::GetText(bool withZero) const
{
    std::string text;
    for (const auto& [name, pValue] : m_Members) {
        text += name;
        text += ' ';
        if (pValue) text += pValue->GetText(withZero);
        text += ' ';
    }
    return text;
}

std::string CInitStruct::GetBracketedText() const
{
    std::string text = "(";
    for (const auto& [name, pValue] : m_Members) {
        text += name;
        text += ":=";
        if (pValue) text += pValue->GetBracketedText();
        text += ',';
    }
    CloseList(text, ')');
    return text;
}

void CInitStruct::Add(std::string_view name, std::unique_ptr<CInitValue> pValue, const SourceLocation& position,
                      CErrorHandler& errors)
{
    std::string key = ToLowerCase(name);
    const auto [entry, isNew] = m_ByName.try_emplace(key, m_Members.size());
    if (isNew) {
        m_Members.emplace_back(std::move(key), std::move(pValue));
        return;
    }
    errors.WarnElementInitialized(name, position);
    m_Members[entry->second].second = std::move(pValue);
}

const CInitValue* CInitStruct::Find(std::string_view name) const
{
    return FindExact(ToLowerCase(name));
}

const CInitValue* CInitStruct::FindExact(std::string_view name) const
{
    const auto entry = m_ByName.find(std::string(name));
    return entry == m_ByName.end() ? nullptr : m_Members[entry->second].second.get();
}
