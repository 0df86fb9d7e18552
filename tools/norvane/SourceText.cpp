#include "norvane/SourceText.h"

#include "files/FileSystem.h"

#include <algorithm>

static bool IsDigit(char c)
{
    return c >= '0' && c <= '9';
}

static bool IsWordStart(char c)
{
    return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || c == '_';
}

static bool IsWordPart(char c)
{
    return IsWordStart(c) || IsDigit(c);
}

// Cuts the text into tokens, and keeps the compiler's count of columns beside its own.
class CSourceText::Reader
{
public:
    explicit Reader(CSourceText& source) : m_Source(source), m_Text(source.m_Text) {}

    void Read(bool isFirst, bool beginsInComment);

private:
    char At(std::size_t position) const { return position < m_Text.size() ? m_Text[position] : '\0'; }
    void EndLine(bool isInside);
    void PassComment();
    void PassText();
    void PassWhile(bool (*belongs)(char));
    void PassNumber();
    SourceToken::Kind PassToken();
    void Add(SourceToken::Kind kind, std::size_t begin);

    CSourceText& m_Source;
    std::string_view m_Text;
    std::size_t m_Position = 0;
    std::size_t m_LineStart = 0;
    int m_Offset = 0;
};

// Behind a line end inside of a comment the compiler goes on counting.
void CSourceText::Reader::EndLine(bool isInside)
{
    const std::size_t length = m_Position - m_LineStart;
    m_Source.m_Lines.push_back(m_Text.substr(m_LineStart, length));
    m_Source.m_ColumnOffsets.push_back(m_Offset);
    m_Offset = isInside ? m_Offset + static_cast<int>(length) + 1 : 0;
    if (m_Position < m_Text.size()) ++m_Position;
    m_LineStart = m_Position;
}

void CSourceText::Reader::PassComment()
{
    while (m_Position < m_Text.size()) {
        if (m_Text[m_Position] == '\n') {
            EndLine(true);
        } else if (m_Text[m_Position] == '*' && At(m_Position + 1) == ')') {
            m_Position += 2;
            m_Source.m_EndsInComment = false;
            m_Source.m_OpenCommentLine = 0;
            m_Source.m_OpenCommentColumn = 0;
            return;
        } else {
            ++m_Position;
        }
    }
}

// Up to the line end if nothing closes it.
void CSourceText::Reader::PassText()
{
    for (++m_Position; m_Position < m_Text.size() && m_Text[m_Position] != '\n'; ++m_Position) {
        if (m_Text[m_Position] == '\'') {
            ++m_Position;
            return;
        }
        if (m_Text[m_Position] == '$' && At(m_Position + 1) != '\n') ++m_Position;
    }
    m_Position = std::min(m_Position, m_Text.size());
}

void CSourceText::Reader::PassWhile(bool (*belongs)(char))
{
    while (m_Position < m_Text.size() && belongs(m_Text[m_Position])) ++m_Position;
}

// "12", "1_000", "16#FF", "1.5e+3"; the two dots of a range belong to none.
void CSourceText::Reader::PassNumber()
{
    PassWhile([](char c) { return IsDigit(c) || c == '_'; });
    if (At(m_Position) == '#') {
        ++m_Position;
        PassWhile(IsWordPart);
        return;
    }
    if (At(m_Position) != '.' || !IsDigit(At(m_Position + 1))) return;
    ++m_Position;
    PassWhile([](char c) { return IsDigit(c) || c == '_'; });
    const bool hasSign = At(m_Position + 1) == '+' || At(m_Position + 1) == '-';
    if ((At(m_Position) == 'e' || At(m_Position) == 'E') && hasSign && IsDigit(At(m_Position + 2))) {
        m_Position += 2;
        PassWhile(IsDigit);
    }
}

SourceToken::Kind CSourceText::Reader::PassToken()
{
    const char c = m_Text[m_Position];
    if (IsWordStart(c)) return PassWhile(IsWordPart), SourceToken::Kind::Word;
    if (IsDigit(c) || (c == '.' && IsDigit(At(m_Position + 1)))) return PassNumber(), SourceToken::Kind::Number;
    if (c == '\'') return PassText(), SourceToken::Kind::Text;
    if (c == '%' && (At(m_Position + 1) == 'I' || At(m_Position + 1) == 'Q' || At(m_Position + 1) == 'M')) {
        ++m_Position;
        PassWhile([](char part) { return IsWordPart(part) || part == '.'; });
        return SourceToken::Kind::Address;
    }
    for (const std::string_view sign : {":=", "=>", "<=", ">=", "<>", "**", ".."})
        if (m_Text.substr(m_Position, sign.size()) == sign) {
            m_Position += sign.size();
            return SourceToken::Kind::Sign;
        }
    ++m_Position;
    constexpr std::string_view signs = "-#$)+,/;{}(*.:[]=<>&";
    if (signs.find(c) != std::string_view::npos) return SourceToken::Kind::Sign;
    PassWhile([](char part) { return static_cast<unsigned char>(part) >= 0x80; });
    return SourceToken::Kind::Stray;
}

void CSourceText::Reader::Add(SourceToken::Kind kind, std::size_t begin)
{
    const int line = static_cast<int>(m_Source.m_Lines.size()) + 1;
    const int column = static_cast<int>(begin - m_LineStart) + 1;
    m_Source.m_Tokens.push_back({kind, m_Text.substr(begin, m_Position - begin), line, column});
}

void CSourceText::Reader::Read(bool isFirst, bool beginsInComment)
{
    m_Offset = isFirst ? 0 : -1;
    m_Source.m_EndsInComment = beginsInComment;
    if (beginsInComment) PassComment();
    while (m_Position < m_Text.size()) {
        const std::size_t begin = m_Position;
        const char c = m_Text[begin];
        if (c == '\n') {
            EndLine(false);
        } else if (c == ' ' || c == '\t' || c == '\r') {
            ++m_Position;
        } else if (c == '(' && At(begin + 1) == '*') {
            m_Source.m_EndsInComment = true;
            m_Source.m_OpenCommentLine = static_cast<int>(m_Source.m_Lines.size()) + 1;
            m_Source.m_OpenCommentColumn = static_cast<int>(begin - m_LineStart) + 1;
            m_Position += 2;
            PassComment();
        } else {
            const SourceToken::Kind kind = PassToken();
            Add(kind, begin);
        }
    }
    if (m_Position > m_LineStart) EndLine(false);
}

bool CSourceText::Load(const std::string& name, bool isFirst, bool beginsInComment)
{
    std::string text;
    const bool isRead = ReadWholeFile(name, text);
    SetText(text, isFirst, beginsInComment);
    return isRead;
}

// The compiler doesn't see a CR in front of an LF either.
static std::string JoinLineEnds(std::string_view text)
{
    std::string joined;
    joined.reserve(text.size());
    for (std::size_t i = 0; i < text.size(); ++i)
        if (text[i] != '\r' || i + 1 == text.size() || text[i + 1] != '\n') joined += text[i];
    return joined;
}

void CSourceText::SetText(std::string_view text, bool isFirst, bool beginsInComment)
{
    m_Text = JoinLineEnds(text);
    m_Lines.clear();
    m_ColumnOffsets.clear();
    m_Tokens.clear();
    m_OpenCommentLine = 0;
    m_OpenCommentColumn = 0;
    Reader(*this).Read(isFirst, beginsInComment);
}

std::string_view CSourceText::GetLine(int line) const
{
    if (line < 1 || line > CountLines()) return {};
    return m_Lines[static_cast<std::size_t>(line) - 1];
}

int CSourceText::GetColumn(int line, int printedColumn) const
{
    if (line < 1 || line > CountLines()) return 1;
    const std::size_t index = static_cast<std::size_t>(line) - 1;
    const int behind = static_cast<int>(m_Lines[index].size()) + 1;
    return std::clamp(printedColumn - m_ColumnOffsets[index], 1, behind);
}

std::size_t CSourceText::FindToken(int line, int column) const
{
    const auto endsBefore = [](const SourceToken& token, const std::pair<int, int>& place) {
        if (token.line != place.first) return token.line < place.first;
        return token.column + static_cast<int>(token.text.size()) <= place.second;
    };
    const auto found = std::lower_bound(m_Tokens.begin(), m_Tokens.end(), std::pair(line, column), endsBefore);
    return static_cast<std::size_t>(found - m_Tokens.begin());
}

std::size_t CSourceText::FindTokenAt(int line, int column) const
{
    const std::size_t index = FindToken(line, column);
    const bool begins = index < m_Tokens.size() && m_Tokens[index].line == line && m_Tokens[index].column == column;
    return begins ? index : m_Tokens.size();
}
