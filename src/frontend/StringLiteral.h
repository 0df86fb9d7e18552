#pragma once

#include <string>
#include <string_view>

// The string literal that the scanner is putting together piece by piece.
class CStringLiteral
{
public:
    CStringLiteral(int line, int column) : nLine(line), nColumn(column) {}

    void AppendChar(char c) { m_Buffer.push_back(c); }
    void AppendText(std::string_view text) { m_Buffer.append(text); }
    // What a reader of zero-terminated text sees: the literal up to its first zero byte.
    std::string GetText() const { return std::string(m_Buffer.c_str()); }
    int GetLine() const { return nLine; }
    int GetColumn() const { return nColumn; }        // just behind the opening apostrophe
    int GetLength() const { return static_cast<int>(m_Buffer.size()); }

private:
    std::string m_Buffer;
    int nLine;
    int nColumn;
};
