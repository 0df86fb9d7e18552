#include "norvane/SourceOutline.h"

#include "norvane/WordDistance.h"

#include <algorithm>
#include <utility>

// Goes through the tokens of one source once.
class CSourceOutline::Reader
{
public:
    Reader(CSourceOutline& outline, const std::string& file, const CSourceText& source)
        : m_Outline(outline), m_File(file), m_Tokens(source.GetTokens()), m_LastLine(source.CountLines())
    {
    }
    void Read();

private:
    bool IsAtEnd() const { return m_Index >= m_Tokens.size(); }
    std::string_view At(std::size_t ahead = 0) const
    {
        return m_Index + ahead < m_Tokens.size() ? m_Tokens[m_Index + ahead].text : std::string_view();
    }
    bool IsUnitEnd() const
    {
        return At() == "END_PROGRAM" || At() == "END_FUNCTION" || At() == "END_FUNCTION_BLOCK";
    }
    bool IsUnitStart() const { return At() == "PROGRAM" || At() == "FUNCTION" || At() == "FUNCTION_BLOCK"; }
    void BeginUnit(std::string_view kind, std::string_view name);
    void EndUnit();
    void ReadBlock();
    void ReadDeclaration(std::string_view block, std::vector<OutlineVariable>& variables);
    void ReadType(std::vector<OutlineVariable>& names, std::size_t first);
    void ReadBounds(std::vector<std::string>& bounds);
    void ReadTypes();
    void ReadStructure(std::string_view name);

    CSourceOutline& m_Outline;
    const std::string& m_File;
    const std::vector<SourceToken>& m_Tokens;
    int m_LastLine;
    std::size_t m_Index = 0;
    bool m_IsInUnit = false;
};

void CSourceOutline::Reader::BeginUnit(std::string_view kind, std::string_view name)
{
    m_Outline.m_Units.push_back({kind, name, &m_File, m_Tokens[m_Index].line, m_LastLine, {}});
}

void CSourceOutline::Reader::EndUnit()
{
    if (m_IsInUnit) m_Outline.m_Units.back().endLine = IsAtEnd() ? m_LastLine : m_Tokens[m_Index].line;
    m_IsInUnit = false;
}

// "[0..9, 1..3] OF"
void CSourceOutline::Reader::ReadBounds(std::vector<std::string>& bounds)
{
    std::string range;
    for (; !IsAtEnd() && At() != "OF" && At() != ";"; ++m_Index) {
        if (At() == "," || At() == "]" || At() == ")") bounds.push_back(std::exchange(range, {}));
        else if (At() != "[" && At() != "(" && At() != "ARRAY") range += At();
    }
}

void CSourceOutline::Reader::ReadType(std::vector<OutlineVariable>& names, std::size_t first)
{
    std::vector<std::string> bounds;
    if (At() == "ARRAY") ReadBounds(bounds);
    if (At() == "OF") ++m_Index;
    for (std::size_t i = first; i < names.size(); ++i) {
        names[i].type = At();
        names[i].bounds = bounds;
    }
}

static bool EndsDeclaration(std::string_view word)
{
    return word == ";" || word == "END_VAR" || word == "END_STRUCT" || word == "END_TYPE";
}

//	a, b AT %IW0 : ARRAY [0..9] OF INT := 5;
void CSourceOutline::Reader::ReadDeclaration(std::string_view block, std::vector<OutlineVariable>& variables)
{
    const std::size_t first = variables.size();
    for (; !IsAtEnd() && At() != ":" && At() != ":=" && !EndsDeclaration(At()) && !IsUnitEnd(); ++m_Index) {
        const SourceToken& token = m_Tokens[m_Index];
        const bool isName = token.kind == SourceToken::Kind::Word && token.text != "AT" && token.text != "RETAIN" &&
                            token.text != "CONSTANT";
        if (isName) variables.push_back({token.text, block, {}, {}, &m_File, token.line});
    }
    if (At() == ":") {
        ++m_Index;
        ReadType(variables, first);
    }
    while (!IsAtEnd() && !EndsDeclaration(At()) && !IsUnitEnd()) ++m_Index;
    if (At() == ";") ++m_Index;
}

void CSourceOutline::Reader::ReadBlock()
{
    const std::string_view block = At();
    ++m_Index;
    const bool isLocal = m_IsInUnit && block != "VAR_GLOBAL";
    std::vector<OutlineVariable>& variables = isLocal ? m_Outline.m_Units.back().variables : m_Outline.m_Globals;
    while (!IsAtEnd() && At() != "END_VAR" && !IsUnitEnd() && !IsUnitStart()) {
        const std::size_t before = m_Index;
        ReadDeclaration(block, variables);
        if (m_Index == before) ++m_Index;
    }
    if (At() == "END_VAR") ++m_Index;
}

void CSourceOutline::Reader::ReadStructure(std::string_view name)
{
    BeginUnit("STRUCT", name);
    std::vector<OutlineVariable> members;
    while (!IsAtEnd() && At() != "END_STRUCT" && At() != "END_TYPE") {
        const std::size_t before = m_Index;
        ReadDeclaration({}, members);
        if (m_Index == before) ++m_Index;
    }
    m_Outline.m_Units.back().variables = std::move(members);
    m_Outline.m_Units.back().endLine = IsAtEnd() ? m_LastLine : m_Tokens[m_Index].line;
}

//	TYPE point : STRUCT x : INT; END_STRUCT; colour : (red, green); END_TYPE
void CSourceOutline::Reader::ReadTypes()
{
    for (++m_Index; !IsAtEnd() && At() != "END_TYPE" && !IsUnitStart(); ++m_Index) {
        if (m_Tokens[m_Index].kind != SourceToken::Kind::Word || At(1) != ":") continue;
        const std::string_view name = At();
        m_Outline.m_TypeNames.push_back(name);
        m_Index += 2;
        if (At() == "STRUCT") {
            ++m_Index;
            ReadStructure(name);
        } else if (At() == "(") {
            for (; !IsAtEnd() && At() != ")" && At() != ";"; ++m_Index)
                if (m_Tokens[m_Index].kind == SourceToken::Kind::Word) m_Outline.m_EnumeratedNames.push_back(At());
        }
    }
}

void CSourceOutline::Reader::Read()
{
    while (!IsAtEnd()) {
        if (IsUnitStart()) {
            EndUnit();
            BeginUnit(At(), At(1));
            m_IsInUnit = true;
            m_Index += 2;
        } else if (IsUnitEnd()) {
            EndUnit();
            ++m_Index;
        } else if (At().starts_with("VAR") && (At() == "VAR" || At().starts_with("VAR_"))) {
            ReadBlock();
        } else if (At() == "TYPE") {
            ReadTypes();
        } else {
            ++m_Index;
        }
    }
    EndUnit();
}

void CSourceOutline::Add(const std::string& name, const CSourceText& source)
{
    Reader(*this, name, source).Read();
}

const OutlineUnit* CSourceOutline::FindUnitAt(const std::string& file, int line) const
{
    const auto found = std::find_if(m_Units.begin(), m_Units.end(), [&](const OutlineUnit& unit) {
        return unit.kind != "STRUCT" && *unit.pFile == file && unit.line <= line && line <= unit.endLine;
    });
    return found == m_Units.end() ? nullptr : &*found;
}

const OutlineUnit* CSourceOutline::FindUnit(std::string_view name) const
{
    const auto found =
        std::find_if(m_Units.begin(), m_Units.end(), [&](const OutlineUnit& unit) { return IsSameName(unit.name, name); });
    return found == m_Units.end() ? nullptr : &*found;
}

const OutlineVariable* CSourceOutline::FindVariable(const OutlineUnit* pUnit, std::string_view name) const
{
    const auto find = [&](const std::vector<OutlineVariable>& variables) -> const OutlineVariable* {
        const auto found = std::find_if(variables.begin(), variables.end(),
                                        [&](const OutlineVariable& variable) { return IsSameName(variable.name, name); });
        return found == variables.end() ? nullptr : &*found;
    };
    const OutlineVariable* pLocal = pUnit ? find(pUnit->variables) : nullptr;
    return pLocal ? pLocal : find(m_Globals);
}
