#pragma once

#include <string>
#include <string_view>
#include <vector>

// A word, number or sign of a source. Comments and white space are none.
struct SourceToken
{
    enum class Kind { Word, Number, Address, Text, Sign, Stray };

    Kind kind = Kind::Stray;       // Stray: what the language has no use for
    std::string_view text;
    int line = 0;                  // from 1
    int column = 0;                // of the byte, from 1
};

// A source as its reader sees it, beside the compiler's way to count: a comment of several lines doesn't set the
// compiler's column back, and the first line of every file behind the first one begins at column 0.
class CSourceText
{
public:
    CSourceText() = default;
    CSourceText(const CSourceText&) = delete;
    CSourceText& operator=(const CSourceText&) = delete;

    // False if the file can't be read. What the files before this one leave open tells the flag.
    bool Load(const std::string& name, bool isFirst, bool beginsInComment);
    void SetText(std::string_view text, bool isFirst, bool beginsInComment);

    int CountLines() const { return static_cast<int>(m_Lines.size()); }
    // Without its line end; empty if there is no such line.
    std::string_view GetLine(int line) const;
    // The byte, from 1, that the compiler means; never outside of the line and the place behind it.
    int GetColumn(int line, int printedColumn) const;

    const std::vector<SourceToken>& GetTokens() const { return m_Tokens; }
    // The first token that ends behind the place; the number of tokens if there is none.
    std::size_t FindToken(int line, int column) const;
    // The token's index if one begins at the place, else the number of tokens.
    std::size_t FindTokenAt(int line, int column) const;

    // Where the comment begins in which the file ends; 0: it ends in none, or in one that began before it.
    int GetOpenCommentLine() const { return m_OpenCommentLine; }
    int GetOpenCommentColumn() const { return m_OpenCommentColumn; }
    bool EndsInComment() const { return m_EndsInComment; }

private:
    class Reader;

    std::string m_Text;
    std::vector<std::string_view> m_Lines;
    std::vector<int> m_ColumnOffsets;   // for each line: what the compiler counts more than there are bytes
    std::vector<SourceToken> m_Tokens;
    int m_OpenCommentLine = 0;
    int m_OpenCommentColumn = 0;
    bool m_EndsInComment = false;
};
