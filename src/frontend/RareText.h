#pragma once

#include <memory>
#include <string>

// A text that few objects of a kind have: costs a pointer where there is none. Sources make nodes by the million.
class CRareText
{
public:
    CRareText& operator=(const std::string& text)
    {
        m_pText = text.empty() ? nullptr : std::make_unique<std::string>(text);
        return *this;
    }

    void Clear() { m_pText = nullptr; }
    bool IsEmpty() const { return !m_pText; }
    const std::string& Get() const { return m_pText ? *m_pText : g_Empty; }

private:
    inline static const std::string g_Empty;

    std::unique_ptr<std::string> m_pText;   // null: empty
};
