#include "norvane/dap/LineTable.h"

CLineTable::CLineTable(const CListing& listing) : m_Begins(listing.m_Instructions.size())
{
    for (std::size_t i = 0; i < m_Begins.size(); ++i) {
        const int number = listing.m_Instructions[i].mark;
        if (number < 0) continue;
        const LineMark& mark = listing.m_Marks[static_cast<std::size_t>(number)];
        if (mark.instruction != static_cast<int>(i)) continue;
        m_Begins[i] = true;
        m_Lines[mark.file][mark.line].push_back(mark.instruction);
    }
}

int CLineTable::FindLine(int file, int line) const
{
    const auto lines = m_Lines.find(file);
    if (lines == m_Lines.end()) return -1;
    const auto found = lines->second.lower_bound(line);
    return found == lines->second.end() ? -1 : found->first;
}

std::vector<int> CLineTable::GetInstructions(int file, int line) const
{
    const auto lines = m_Lines.find(file);
    if (lines == m_Lines.end()) return {};
    const auto found = lines->second.find(line);
    return found == lines->second.end() ? std::vector<int>() : found->second;
}

std::vector<int> CLineTable::GetLines(int file, int first, int last) const
{
    std::vector<int> numbers;
    const auto lines = m_Lines.find(file);
    if (lines == m_Lines.end()) return numbers;
    for (auto line = lines->second.lower_bound(first); line != lines->second.end() && line->first <= last; ++line)
        numbers.push_back(line->first);
    return numbers;
}
