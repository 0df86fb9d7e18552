#include "report/AreaMap.h"

#include <algorithm>
#include <set>
#include <utility>

namespace
{

class CAreaMap
{
public:
    CAreaMap(AreaFacts& area, std::vector<VariableFacts>& variables) : m_Area(area), m_Variables(variables) {}
    void Map();

private:
    void Sort();
    void FindOverlaps(int variable);
    void Take(BitRange place);
    void CloseByte();

    AreaFacts& m_Area;
    std::vector<VariableFacts>& m_Variables;
    std::set<std::pair<std::int64_t, int>> m_Open;   // end and variable: those that the current place may lie in
    std::int64_t m_End = 0;                          // behind everything so far, in bits
};

}   // namespace

static std::int64_t BytesBehind(std::int64_t bits)
{
    return (bits + g_BitsOfByte - 1) / g_BitsOfByte;
}

void CAreaMap::Sort()
{
    std::sort(m_Area.entries.begin(), m_Area.entries.end(), [this](int left, int right) {
        const BitRange& a = m_Variables[static_cast<std::size_t>(left)].place;
        const BitRange& b = m_Variables[static_cast<std::size_t>(right)].place;
        if (a.begin != b.begin) return a.begin < b.begin;
        return a.end != b.end ? a.end > b.end : left < right;   // what holds others comes in front of them
    });
}

// Of many variables in one place each knows the number of the others that begin in front of it, and some of them.
void CAreaMap::FindOverlaps(int variable)
{
    constexpr std::size_t most = 8;
    VariableFacts& facts = m_Variables[static_cast<std::size_t>(variable)];
    while (!m_Open.empty() && m_Open.begin()->first <= facts.place.begin) m_Open.erase(m_Open.begin());
    const std::int64_t count = static_cast<std::int64_t>(m_Open.size());
    m_Area.overlaps += count;
    facts.overlaps += count;
    for (const auto& [end, other] : m_Open) {
        if (facts.overlapping.size() >= most) break;
        facts.overlapping.push_back(other);
        VariableFacts& otherFacts = m_Variables[static_cast<std::size_t>(other)];
        ++otherFacts.overlaps;
        if (otherFacts.overlapping.size() < most) otherFacts.overlapping.push_back(variable);
    }
    m_Open.emplace(facts.place.end, variable);
}

// Places come in rising order of their beginnings. A gap has whole bytes; bits that are left over in a byte which
// something lies in are spare.
void CAreaMap::Take(BitRange place)
{
    if (place.begin > m_End) {
        const BitRange gap{BytesBehind(m_End) * g_BitsOfByte, place.begin / g_BitsOfByte * g_BitsOfByte};
        if (gap.begin < gap.end) {
            m_Area.gaps.push_back(gap);
            m_Area.spareBits += (gap.begin - m_End) + (place.begin - gap.end);
        } else {
            m_Area.spareBits += place.begin - m_End;
        }
    }
    m_End = std::max(m_End, place.end);
}

void CAreaMap::CloseByte()
{
    m_Area.endByte = BytesBehind(m_End);
    m_Area.spareBits += m_Area.endByte * g_BitsOfByte - m_End;
    m_Area.takenBytes = m_Area.endByte - m_Area.begin;
    for (const BitRange& gap : m_Area.gaps) m_Area.takenBytes -= gap.Bits() / g_BitsOfByte;
}

void CAreaMap::Map()
{
    Sort();
    m_End = m_Area.begin * g_BitsOfByte;
    for (const int variable : m_Area.entries) {
        FindOverlaps(variable);
        Take(m_Variables[static_cast<std::size_t>(variable)].place);
    }
    CloseByte();
}

void MapArea(AreaFacts& area, std::vector<VariableFacts>& variables)
{
    CAreaMap(area, variables).Map();
}
