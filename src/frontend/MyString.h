#pragma once

#include <cstdint>
#include <string>
#include <string_view>

// The scanner's string helper: takes the underscores and the base out of number literals and turns what
// is left into a value.
class CMyString
{
public:
    explicit CMyString(std::string_view text) : m_Buffer(text) {}
    virtual ~CMyString() = default;

    // Kept (sources): the right operand's text comes first.
    CMyString operator+(const CMyString& right) const;
    int Find(char c, int start) const;               // -1 if there is none, or start is behind the end
    int GetLength() const { return static_cast<int>(m_Buffer.size()); }
    const char* GetBuffer() const { return m_Buffer.c_str(); }
    void RemoveFirst(int n);                         // nothing for n below 1
    bool RemoveAll(char c);                          // whether there was one
    bool RemoveOne(char c);                          // whether there was one
    // The digits at the start as a signed value; beyond 64 bits the largest one.
    std::int64_t ToInt64Base2() const;
    std::int64_t ToInt64Base8() const;
    std::int64_t ToInt64Base10() const;
    std::int64_t ToInt64Base16() const;
    bool IsBeyondInt64(int base) const;              // whether the digits of that base mean more than the largest one
    int ToInt() const;                               // decimal, cut to 32 bits
    void Print() const;                              // the text and a line end, to standard output

private:
    std::string m_Buffer;
};
