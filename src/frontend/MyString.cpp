#include "frontend/MyString.h"

#include "files/Print.h"

#include <algorithm>
#include <limits>

// 36 for what is no digit of any base.
static int DigitValue(char c)
{
    constexpr int noDigit = 36;
    if (c >= '0' && c <= '9') return c - '0';
    if (c >= 'A' && c <= 'Z') return c - 'A' + 10;
    if (c >= 'a' && c <= 'z') return c - 'a' + 10;
    return noDigit;
}

// Sets isBeyond where the number is larger than the largest of 64 bits, which it then becomes.
static std::int64_t ToInt64(std::string_view text, int base, bool& isBeyond)
{
    constexpr std::int64_t largest = std::numeric_limits<std::int64_t>::max();
    std::int64_t value = 0;
    isBeyond = false;
    for (const char c : text) {
        const int digit = DigitValue(c);
        if (digit >= base) return value;
        isBeyond = value > (largest - digit) / base;
        if (isBeyond) return largest;
        value = value * base + digit;
    }
    return value;
}

static std::int64_t ToInt64(std::string_view text, int base)
{
    bool isBeyond = false;
    return ToInt64(text, base, isBeyond);
}

CMyString CMyString::operator+(const CMyString& right) const
{
    return CMyString(right.m_Buffer + m_Buffer);
}

int CMyString::Find(char c, int start) const
{
    const std::size_t from = static_cast<std::size_t>(std::max(start, 0));
    const std::size_t found = m_Buffer.find(c, from);
    return found == std::string::npos ? -1 : static_cast<int>(found);
}

void CMyString::RemoveFirst(int n)
{
    if (n < 1) return;
    m_Buffer.erase(0, static_cast<std::size_t>(n));
}

bool CMyString::RemoveAll(char c)
{
    return std::erase(m_Buffer, c) > 0;
}

bool CMyString::RemoveOne(char c)
{
    const std::size_t found = m_Buffer.find(c);
    if (found == std::string::npos) return false;
    m_Buffer.erase(found, 1);
    return true;
}

std::int64_t CMyString::ToInt64Base2() const { return ToInt64(m_Buffer, 2); }
std::int64_t CMyString::ToInt64Base8() const { return ToInt64(m_Buffer, 8); }
std::int64_t CMyString::ToInt64Base10() const { return ToInt64(m_Buffer, 10); }
std::int64_t CMyString::ToInt64Base16() const { return ToInt64(m_Buffer, 16); }

bool CMyString::IsBeyondInt64(int base) const
{
    bool isBeyond = false;
    ToInt64(m_Buffer, base, isBeyond);
    return isBeyond;
}

int CMyString::ToInt() const
{
    return static_cast<int>(static_cast<std::uint32_t>(ToInt64Base10()));
}

void CMyString::Print() const
{
    ::Print(m_Buffer + "\n");
}
