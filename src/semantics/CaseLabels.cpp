// Checks of a CASE statement. A label that meets earlier ones draws one message for each of them, and all the
// messages of one label read the same; so what has to be found is only how many earlier labels it meets. Sums
// over the sorted bounds answer that without comparing labels in pairs.

#include "semantics/Norvane.h"

#include "frontend/NodeParts.h"
#include "model/Type.h"
#include "semantics/Wrapping.h"

#include <algorithm>
#include <cstdint>
#include <memory>
#include <utility>
#include <vector>

namespace
{

// A label as it is compared: by the low 32 bits of its values. A range whose bounds exceed 32 bits can
// thereby end below its start; such a range holds no value at all.
struct CaseLabel
{
    std::int32_t low = 0;
    std::int32_t high = 0;
    const CNode* pNode = nullptr;

    bool IsRange() const { return pNode->nKind == SUBRANGE_DOTS; }
    bool IsInverted() const { return low > high; }
};

}   // namespace

// How many of the sorted numbers are at most `value`.
static std::size_t RankOf(const std::vector<std::int32_t>& sorted, std::int32_t value)
{
    return static_cast<std::size_t>(std::upper_bound(sorted.begin(), sorted.end(), value) - sorted.begin());
}

static void SortUnique(std::vector<std::int32_t>& numbers)
{
    std::sort(numbers.begin(), numbers.end());
    numbers.erase(std::unique(numbers.begin(), numbers.end()), numbers.end());
}

namespace
{

// Counts numbers as they come. All that can come are known beforehand, which makes a count of those up to a
// limit cost a logarithm: the sums form a binary indexed tree.
class CNumberCounter
{
public:
    explicit CNumberCounter(std::vector<std::int32_t> numbers) : m_Numbers(std::move(numbers))
    {
        SortUnique(m_Numbers);
        m_Sums.resize(m_Numbers.size() + 1);
    }

    void Add(std::int32_t value)
    {
        ++m_Total;
        for (std::size_t i = RankOf(m_Numbers, value); i < m_Sums.size(); i += i & (~i + 1)) ++m_Sums[i];
    }

    std::int64_t CountUpTo(std::int32_t value) const
    {
        std::int64_t count = 0;
        for (std::size_t i = RankOf(m_Numbers, value); i > 0; i -= i & (~i + 1)) count += m_Sums[i];
        return count;
    }

    std::int64_t CountBelow(std::int32_t value) const
    {
        return value == INT32_MIN ? 0 : CountUpTo(value - 1);
    }

    std::int64_t CountFrom(std::int32_t value) const { return m_Total - CountBelow(value); }

    // 0 if the bounds are inverted.
    std::int64_t CountInside(std::int32_t low, std::int32_t high) const
    {
        return low > high ? 0 : CountUpTo(high) - CountBelow(low);
    }

private:
    std::vector<std::int32_t> m_Numbers;    // sorted; the tree's entry i + 1 belongs to number i
    std::vector<std::int64_t> m_Sums;
    std::int64_t m_Total = 0;
};

// Counts the ranges that begin at or below one number and end at or above another one: for each stretch of a
// tree over the starts it keeps a counter of the ends.
class CRangeCounter
{
public:
    explicit CRangeCounter(const std::vector<CaseLabel>& ranges)
    {
        for (const CaseLabel& range : ranges) m_Starts.push_back(range.low);
        SortUnique(m_Starts);
        std::vector<std::vector<std::int32_t>> ends(m_Starts.size() + 1);
        for (const CaseLabel& range : ranges) {
            for (std::size_t i = RankOf(m_Starts, range.low); i < ends.size(); i += i & (~i + 1))
                ends[i].push_back(range.high);
        }
        for (std::vector<std::int32_t>& numbers : ends) m_Ends.emplace_back(std::move(numbers));
    }

    void Add(const CaseLabel& range)
    {
        for (std::size_t i = RankOf(m_Starts, range.low); i < m_Ends.size(); i += i & (~i + 1))
            m_Ends[i].Add(range.high);
    }

    std::int64_t Count(std::int32_t startUpTo, std::int32_t endFrom) const
    {
        std::int64_t count = 0;
        for (std::size_t i = RankOf(m_Starts, startUpTo); i > 0; i -= i & (~i + 1))
            count += m_Ends[i].CountFrom(endFrom);
        return count;
    }

private:
    std::vector<std::int32_t> m_Starts;
    std::vector<CNumberCounter> m_Ends;
};

// The labels met so far in one CASE.
class CCaseLabelSet
{
public:
    explicit CCaseLabelSet(const std::vector<CaseLabel>& labels);

    void Add(const CaseLabel& label);
    std::int64_t CountHits(const CaseLabel& label) const;

private:
    std::int64_t CountHitRanges(const CaseLabel& range) const;

    std::unique_ptr<CNumberCounter> m_Values;
    std::unique_ptr<CNumberCounter> m_Starts, m_Ends;                     // of the ranges that hold something
    std::unique_ptr<CNumberCounter> m_InvertedStarts, m_InvertedEnds;
    std::unique_ptr<CRangeCounter> m_Ranges, m_InvertedRanges;
};

}   // namespace

static std::unique_ptr<CNumberCounter> CounterOf(const std::vector<CaseLabel>& labels, std::int32_t CaseLabel::*bound)
{
    std::vector<std::int32_t> numbers;
    for (const CaseLabel& label : labels) numbers.push_back(label.*bound);
    return std::make_unique<CNumberCounter>(std::move(numbers));
}

CCaseLabelSet::CCaseLabelSet(const std::vector<CaseLabel>& labels)
{
    std::vector<CaseLabel> values, ranges, invertedRanges;
    for (const CaseLabel& label : labels) {
        if (!label.IsRange()) values.push_back(label);
        else if (label.IsInverted()) invertedRanges.push_back(label);
        else ranges.push_back(label);
    }
    m_Values = CounterOf(values, &CaseLabel::low);
    m_Starts = CounterOf(ranges, &CaseLabel::low);
    m_Ends = CounterOf(ranges, &CaseLabel::high);
    m_InvertedStarts = CounterOf(invertedRanges, &CaseLabel::low);
    m_InvertedEnds = CounterOf(invertedRanges, &CaseLabel::high);
    if (!invertedRanges.empty()) m_Ranges = std::make_unique<CRangeCounter>(ranges);   // only those ask for it
    m_InvertedRanges = std::make_unique<CRangeCounter>(invertedRanges);
}

void CCaseLabelSet::Add(const CaseLabel& label)
{
    if (!label.IsRange()) {
        m_Values->Add(label.low);
        return;
    }
    (label.IsInverted() ? m_InvertedStarts : m_Starts)->Add(label.low);
    (label.IsInverted() ? m_InvertedEnds : m_Ends)->Add(label.high);
    if (label.IsInverted()) m_InvertedRanges->Add(label);
    else if (m_Ranges) m_Ranges->Add(label);
}

// A range meets an earlier one if a bound of either lies in the other.
std::int64_t CCaseLabelSet::CountHitRanges(const CaseLabel& range) const
{
    const std::int32_t low = range.low;
    const std::int32_t high = range.high;
    if (range.IsInverted()) {
        // Only its own bounds count, and a range around both of them counts once.
        const std::int64_t aroundLow = m_Starts->CountUpTo(low) - m_Ends->CountBelow(low);
        const std::int64_t aroundHigh = m_Starts->CountUpTo(high) - m_Ends->CountBelow(high);
        return aroundLow + aroundHigh - m_Ranges->Count(high, low);
    }
    const std::int64_t overlapping = m_Starts->CountUpTo(high) - m_Ends->CountBelow(low);
    const std::int64_t invertedBounds =
        m_InvertedStarts->CountInside(low, high) + m_InvertedEnds->CountInside(low, high);
    return overlapping + invertedBounds - m_InvertedRanges->Count(high, low);
}

std::int64_t CCaseLabelSet::CountHits(const CaseLabel& label) const
{
    if (label.IsRange()) return m_Values->CountInside(label.low, label.high) + CountHitRanges(label);
    const std::int32_t value = label.low;
    return m_Values->CountInside(value, value) + m_Starts->CountUpTo(value) - m_Ends->CountBelow(value);
}

// Every label takes the selector's type, and a range gets its lower bound first, as compared on all 64 bits.
static void PrepareLabel(CNorvane& norvane, CNode* pLabel, CType* pType)
{
    if (pType) norvane.TypeLiteral(pLabel, pType);
    if (pLabel->nKind != SUBRANGE_DOTS) return;
    for (CNode* pBound : pLabel->m_Children) {
        if (pType) norvane.TypeLiteral(pBound, pType);
    }
    if (pLabel->Child(0)->nValue > pLabel->Child(1)->nValue) std::swap(pLabel->m_Children[0], pLabel->m_Children[1]);
}

static CaseLabel MakeCaseLabel(const CNode* pLabel)
{
    if (pLabel->nKind != SUBRANGE_DOTS) return {LowBits(pLabel->nValue), LowBits(pLabel->nValue), pLabel};
    return {LowBits(pLabel->Child(0)->nValue), LowBits(pLabel->Child(1)->nValue), pLabel};
}

// The labels of all arms in source order. The children of the body alternate: labels, statements.
static std::vector<CaseLabel> CollectLabels(CNorvane& norvane, const CNode* pBody, CType* pType)
{
    std::vector<CaseLabel> labels;
    for (CNode* pList : pBody->m_Children) {
        if (pList->nKind != ISV_LIST) continue;
        for (CNode* pLabel : pList->m_Children) {
            PrepareLabel(norvane, pLabel, pType);
            labels.push_back(MakeCaseLabel(pLabel));
        }
    }
    return labels;
}

static void ReportUsed(const CaseLabel& label, CErrorHandler& errors)
{
    if (label.IsRange()) errors.ErrCaseRangeUsed(label.low, label.high, label.pNode->location);
    else errors.ErrCaseValueUsed(label.low, label.pNode->location);
}

void CNorvane::CheckCase(CNode* pNode)
{
    const CaseParts parts = GetCaseParts(pNode);
    const CNode* pSelector = parts.pSelector;
    if (IsPoison(pSelector)) return;
    // A literal has no type as a rule, and then the labels get none either.
    if (!pSelector->pType || !pSelector->pType->IsSigned()) m_Errors.ErrCaseType(pSelector->location);

    const std::vector<CaseLabel> labels = CollectLabels(*this, parts.pPairs, pSelector->pType);
    CCaseLabelSet earlier(labels);
    for (const CaseLabel& label : labels) {
        for (std::int64_t hits = earlier.CountHits(label); hits > 0; --hits) ReportUsed(label, m_Errors);
        earlier.Add(label);
    }
}
