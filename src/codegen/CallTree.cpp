#include "codegen/CallTree.h"

#include "codegen/CodeGeneration.h"
#include "codegen/Counting.h"
#include "files/Format.h"
#include "files/XmlStream.h"
#include "model/Pou.h"

#include <algorithm>

void BeginCallElement(XmlStream& stream, const CPou& pou, std::int64_t depth)
{
    stream.BeginElement("POU");
    stream.WriteAttribute("name", ShowControlCharacters(pou.m_Name));
    stream.WriteAttribute("local", pou.m_LocalSize);
    stream.WriteAttribute("returnstackdepth", depth);
}

// ---- The walk

CCallTreeWalk::CCallTreeWalk(const CCodeGeneration& code, const CPou& program) : m_Code(code), m_Last(Step::End)
{
    m_Open.push_back({&program, code.GetCallSize(program), 0});
}

CCallTreeWalk::Step CCallTreeWalk::Next()
{
    if (m_Last == Step::End && !m_Open.empty()) return m_Last = Step::Enter;   // the program
    if (m_Last == Step::Leave) m_Open.pop_back();
    if (m_Open.empty()) return m_Last = Step::End;

    OpenCall& caller = m_Open.back();
    if (caller.nNext == caller.pPou->m_Callees.size()) return m_Last = Step::Leave;
    const CPou* pCallee = caller.pPou->m_Callees[caller.nNext++];
    m_Open.push_back({pCallee, caller.nDepth + m_Code.GetCallSize(*pCallee), 0});   // `caller` ends here
    return m_Last = Step::Enter;
}

void CCallTreeWalk::PassOver()
{
    m_Open.back().nNext = m_Open.back().pPou->m_Callees.size();
}

// ---- The sums

// The text of an element, as far as it isn't its start tag and is the same for all.
static constexpr std::int64_t g_LineEndBytes = 2;
static constexpr std::int64_t g_EndTagBytes = std::string_view("</POU>").size();
static constexpr std::int64_t g_ProgramTabs = 2;       // in front of a program's element
static constexpr std::int64_t g_LongestDepth = 20;     // digits and sign of any 64-bit number

static std::int64_t CountDigits(std::int64_t number)
{
    return static_cast<std::int64_t>(std::to_string(number).size());
}

// As the file has it, where a byte above 0x7F takes two: of the element without children, the depth having no digits.
static std::int64_t CountTagBytes(const CPou& pou)
{
    std::string text;
    XmlStream stream(XmlStream::Form::Compact, text, nullptr);
    BeginCallElement(stream, pou, 0);
    stream.EndElement();
    const auto isWide = [](char c) { return static_cast<unsigned char>(c) >= 0x80; };
    return static_cast<std::int64_t>(text.size()) + std::count_if(text.begin(), text.end(), isWide) - 1;
}

// Depth first, so that the callees of a POU come in front of it.
void CCallTree::Add(const CPou& program)
{
    struct OpenPou
    {
        const CPou* pPou;
        std::size_t nNext;
    };
    m_Programs.push_back(&program);
    if (m_Positions.contains(&program)) return;
    std::vector<OpenPou> open = {{&program, 0}};
    while (!open.empty()) {
        OpenPou& caller = open.back();
        if (caller.nNext == caller.pPou->m_Callees.size()) {
            Sum(*caller.pPou);
            open.pop_back();
            continue;
        }
        CPou* pCallee = caller.pPou->m_Callees[caller.nNext++];
        pCallee->m_Used = true;
        if (!m_Positions.contains(pCallee)) open.push_back({pCallee, 0});
    }
}

// The lines below an element are indented by one tab more than its own.
void CCallTree::Sum(const CPou& pou)
{
    const bool hasCallees = !pou.m_Callees.empty();
    Sums sums;
    sums.pPou = &pou;
    sums.elements = 1;
    sums.lines = hasCallees ? 2 : 1;
    sums.bytes = CountTagBytes(pou) + g_LongestDepth + g_LineEndBytes;
    if (hasCallees) sums.bytes += g_EndTagBytes + g_LineEndBytes;
    for (const CPou* pCallee : pou.m_Callees) {
        const Sums& below = GetSums(*pCallee);
        sums.elements = AddCounts(sums.elements, below.elements);
        sums.lines = AddCounts(sums.lines, below.lines);
        sums.bytes = AddCounts(sums.bytes, AddCounts(below.bytes, below.lines));
        sums.deepest = std::max(sums.deepest, below.deepest);
    }
    sums.deepest += m_Code.GetCallSize(pou);
    m_Positions.emplace(&pou, m_Sums.size());
    m_Sums.push_back(sums);
}

std::int64_t CCallTree::CountElements(const CPou& program) const
{
    return GetSums(program).elements;
}

std::int64_t CCallTree::GetDeepest(const CPou& pou) const
{
    return GetSums(pou).deepest;
}

// The number of digits of a depth depends on its path: no sum over the graph can tell it.
std::int64_t CCallTree::CountBytes(const CPou& program) const
{
    std::unordered_map<const CPou*, std::int64_t> tagBytes;
    std::int64_t bytes = 0;
    CCallTreeWalk walk(m_Code, program);
    for (CCallTreeWalk::Step step = walk.Next(); step != CCallTreeWalk::Step::End; step = walk.Next()) {
        const bool hasCallees = !walk.GetPou().m_Callees.empty();
        const std::int64_t tabs = g_ProgramTabs + static_cast<std::int64_t>(walk.GetLevel());
        if (step == CCallTreeWalk::Step::Enter) {
            std::int64_t& tag = tagBytes[&walk.GetPou()];
            if (tag == 0) tag = CountTagBytes(walk.GetPou());
            // "/>" of the element without children is ">" of that with children.
            bytes += tabs + tag - (hasCallees ? 1 : 0) + CountDigits(walk.GetDepth()) + g_LineEndBytes;
        } else if (hasCallees) {
            bytes += tabs + g_EndTagBytes + g_LineEndBytes;
        }
    }
    return bytes;
}

// ---- The limits

// Elements are counted first: below their limit a walk costs little, so bytes are counted exactly where the sum,
// which takes the longest number for each depth, doesn't exclude too many.
std::string CCallTree::DescribeExcess() const
{
    const auto describe = [this](const CPou& program, std::int64_t count, const char* unit, std::int64_t limit) {
        return "program " + program.m_Name +
               FormatText(": the call tree grows to %lld %s%s, more than %lld", static_cast<long long>(count),
                          count == g_FarCount ? "or more " : "", unit, static_cast<long long>(limit)) +
               DescribeGrowth(program);
    };
    std::int64_t elements = 0, mostBytes = 0;
    for (const CPou* pProgram : m_Programs) {
        const Sums& sums = GetSums(*pProgram);
        elements = AddCounts(elements, sums.elements);
        mostBytes = AddCounts(mostBytes, AddCounts(sums.bytes, MultiplyCounts(sums.lines, g_ProgramTabs)));
        if (elements > g_LargestCallTreeElements)
            return describe(*pProgram, elements, "elements", g_LargestCallTreeElements);
    }
    if (mostBytes <= g_LargestCallTreeBytes) return {};
    std::int64_t bytes = 0;
    for (const CPou* pProgram : m_Programs) {
        bytes = AddCounts(bytes, CountBytes(*pProgram));
        if (bytes > g_LargestCallTreeBytes) return describe(*pProgram, bytes, "bytes", g_LargestCallTreeBytes);
    }
    return {};
}

// The POU at which the most paths part: those that lead to it, once for each callee behind its first; of equal ones that
// which comes last in the order of callers before callees, so in a ladder its foot. Where none part, the calls are just
// too deep.
std::string CCallTree::DescribeGrowth(const CPou& program) const
{
    std::vector<std::int64_t> paths(m_Sums.size(), 0);
    std::vector<std::size_t> levels(m_Sums.size(), 0);   // calls above it on the longest path
    const Sums* pFork = nullptr;
    const Sums* pDeepest = nullptr;
    std::int64_t mostParting = 1;
    std::size_t deepestLevel = 0;
    paths[m_Positions.at(&program)] = 1;
    for (std::size_t i = m_Positions.at(&program) + 1; i-- > 0;) {   // callers come first this way
        if (paths[i] == 0) continue;
        const std::vector<CPou*>& callees = m_Sums[i].pPou->m_Callees;
        const std::size_t further = std::max<std::size_t>(callees.size(), 1) - 1;
        const std::int64_t parting = MultiplyCounts(paths[i], static_cast<std::int64_t>(further));
        if (parting >= mostParting) {
            mostParting = parting;
            pFork = &m_Sums[i];
        }
        if (!pDeepest || levels[i] > deepestLevel) {
            deepestLevel = levels[i];
            pDeepest = &m_Sums[i];
        }
        for (const CPou* pCallee : callees) {
            const std::size_t position = m_Positions.at(pCallee);
            paths[position] = AddCounts(paths[position], paths[i]);
            levels[position] = std::max(levels[position], levels[i] + 1);
        }
    }
    if (pFork) return "; its paths multiply in POU " + pFork->pPou->m_Name;
    return "; its calls are nested " + std::to_string(deepestLevel) + " deep, down to POU " + pDeepest->pPou->m_Name;
}
