#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

class CErrorHandler;
struct SourceLocation;

// The constant that a type, a variable or a member starts with. A scalar keeps its value in 64 raw bits
// that can be read in any form, as the folds do; strings, arrays and structures are classes of their own.
class CInitValue
{
public:
    enum Kind : std::int32_t { NoValue = 0, Bool = 1, Signed = 2, Real = 4, Unsigned = 8, String = 16 };

    CInitValue() = default;                         // no value
    explicit CInitValue(bool value);
    explicit CInitValue(std::int64_t value);
    explicit CInitValue(double value);
    explicit CInitValue(std::uint32_t value);
    virtual ~CInitValue() = default;

    std::string GetText() const { return GetText(true); }
    virtual std::unique_ptr<CInitValue> Clone() const;
    // A zero gives an empty text unless `withZero`: the initialisation code writes nothing for it.
    virtual std::string GetText(bool withZero) const;
    // The text of the value as part of a type's or variable's text; arrays and structures have a
    // bracketed form here, all others give GetText(true).
    virtual std::string GetBracketedText() const { return GetText(true); }

    // The stored bits read in that form, whatever the kind says.
    bool GetBool() const;
    std::int64_t GetInt64() const;
    double GetDouble() const;
    std::uint32_t GetUnsigned() const;

    bool IsBool() const { return m_Kind == Bool; }
    bool IsSigned() const { return m_Kind == Signed; }
    bool IsReal() const { return m_Kind == Real; }
    bool IsUnsigned() const { return m_Kind == Unsigned; }
    bool IsInteger() const { return IsSigned() || IsUnsigned(); }
    virtual bool IsString() const { return false; }
    virtual bool IsArray() const { return false; }
    virtual bool IsStruct() const { return false; }
    // Whether the initialisation code writes nothing for it: zeros only, or no value at all.
    virtual bool IsBlank() const { return GetText(false).empty(); }
    // Whether it is built of the same entries in the same order as the other.
    virtual bool IsSameAs(const CInitValue& other) const;
    bool IsZero() const;                            // of kind signed, unsigned or real, with the value 0

    std::int32_t m_Kind = NoValue;

protected:
    std::uint64_t m_Bits = 0;
};

// The same of a value that may be null, which writes nothing and is like any other that does.
bool IsBlank(const CInitValue* pValue);
bool IsSameInit(const CInitValue* pFirst, const CInitValue* pSecond);

// A copy of the value; null for null.
std::unique_ptr<CInitValue> CloneOrNull(const CInitValue* pValue);

// A string's start: the declared length in characters, and a text that may be longer (it is kept whole).
class CInitString : public CInitValue
{
public:
    CInitString(std::int32_t length, std::string text);

    std::unique_ptr<CInitValue> Clone() const override;
    std::string GetText(bool withZero) const override;
    using CInitValue::GetText;
    bool IsString() const override { return true; }

    std::int32_t m_Length;
    std::string m_Text;
};

// Values with repeat counts, in order: entry k stands for m_Repeats[k] elements. An entry may be null.
class CInitArray : public CInitValue
{
public:
    std::unique_ptr<CInitValue> Clone() const override;
    std::string GetText(bool withZero) const override;   // at most the first 10 entries
    using CInitValue::GetText;
    std::string GetBracketedText() const override;       // "[1,3(2),4]"
    bool IsArray() const override { return true; }
    bool IsBlank() const override;
    bool IsSameAs(const CInitValue& other) const override;

    void Add(std::unique_ptr<CInitValue> pValue, std::int32_t repeat);
    // The value of element i, counted from 0; null if there is none. Rising positions cost O(1) each.
    const CInitValue* GetElement(std::int64_t i) const;

    std::vector<std::unique_ptr<CInitValue>> m_Elements;
    std::vector<std::int32_t> m_Repeats;

private:
    mutable std::size_t m_CursorEntry = 0;               // where the last GetElement stopped
    mutable std::int64_t m_CursorStart = 0;              // sum of the counts before that entry
    mutable std::int64_t m_CursorElement = 0;            // the element it was asked for
};

// Values of some members of a structure, by lower-cased name, in order of arrival.
class CInitStruct : public CInitValue
{
public:
    std::unique_ptr<CInitValue> Clone() const override;
    std::string GetText(bool withZero) const override;
    using CInitValue::GetText;
    std::string GetBracketedText() const override;       // "(a:=1,b:=2)"
    bool IsStruct() const override { return true; }
    bool IsBlank() const override;
    bool IsSameAs(const CInitValue& other) const override;

    // A name that has a value already draws one warning at the position, and the new value stands.
    void Add(std::string_view name, std::unique_ptr<CInitValue> pValue, const SourceLocation& position,
             CErrorHandler& errors);
    const CInitValue* Find(std::string_view name) const;       // in any case; null if absent
    const CInitValue* FindExact(std::string_view name) const;  // as given; null if absent

    std::vector<std::pair<std::string, std::unique_ptr<CInitValue>>> m_Members;

private:
    std::unordered_map<std::string, std::size_t> m_ByName;     // for lookup only, never walked
};
