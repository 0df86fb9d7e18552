#include "report/BuildDiff.h"

#include "report/VariableDiff.h"
#include "report/Wording.h"

#include <fmt/format.h>

#include <algorithm>
#include <iterator>
#include <unordered_map>

static constexpr std::string_view g_SectionTitles[] = {   // ORDER SECTION
    "Retained values", "Located variables", "Global variables", "Variables of programs", "Types",
    "Programs",        "POUs",              "Stacks",           "Memory in use",         "Checksums"};
static constexpr std::string_view g_SectionKeys[] = {     // ORDER SECTION
    "retained", "located", "globals", "locals", "types", "programs", "pous", "stacks", "memory", "checksums"};
static constexpr std::string_view g_EffectKeys[] = {      // ORDER EFFECT
    "vanishes", "moves", "changes type", "changes", "appears"};
static_assert(std::size(g_SectionTitles) == static_cast<std::size_t>(DiffSection::Count));
static_assert(std::size(g_SectionKeys) == static_cast<std::size_t>(DiffSection::Count));

std::string_view GetSectionTitle(DiffSection section)
{
    return g_SectionTitles[static_cast<std::size_t>(section)];
}

std::string_view GetSectionKey(DiffSection section)
{
    return g_SectionKeys[static_cast<std::size_t>(section)];
}

std::string_view GetEffectKey(DiffEffect effect)
{
    return g_EffectKeys[static_cast<std::size_t>(effect)];
}

using PousByName = std::unordered_map<std::string, const PouFacts*>;

static PousByName IndexPrograms(const BuildFacts& facts)
{
    PousByName programs;
    for (const ProgramFacts& program : facts.programs) {
        const PouFacts& pou = facts.pous[static_cast<std::size_t>(program.pou)];
        programs.emplace(pou.name, &pou);
    }
    return programs;
}

namespace
{

// Programs, POUs, stacks and sums.
class CPouDiff
{
public:
    CPouDiff(const BuildFacts& before, const BuildFacts& after, std::vector<Change>& changes)
        : m_Before(before), m_After(after), m_Changes(changes)
    {
    }
    void Compare();

    bool m_HasOtherCode = false;

private:
    static PousByName Index(const BuildFacts& facts);
    void ComparePou(const PouFacts& before, const PouFacts& after);
    void AddPou(const PouFacts& pou, DiffEffect effect);
    void GuessRenames();
    void AddNumber(DiffSection section, const std::string& name, std::int64_t before, std::int64_t after,
                   const std::string& unit);
    void CompareStacks();
    void CompareAreas();
    void CompareSigns();

    const BuildFacts& m_Before;
    const BuildFacts& m_After;
    std::vector<Change>& m_Changes;
    std::vector<std::pair<std::size_t, const PouFacts*>> m_Vanished;   // with their changes
    std::vector<std::pair<std::size_t, const PouFacts*>> m_New;
};

}   // namespace

// A POU keeps its name in the first build's sense: a function that becomes a program is another POU.
PousByName CPouDiff::Index(const BuildFacts& facts)
{
    PousByName pous;
    for (const PouFacts& pou : facts.pous) pous.emplace(pou.kind + " " + pou.name, &pou);
    return pous;
}

void CPouDiff::Compare()
{
    const PousByName before = Index(m_Before);
    const PousByName after = Index(m_After);
    for (const PouFacts& pou : m_Before.pous) {
        const auto found = after.find(pou.kind + " " + pou.name);
        if (found == after.end()) AddPou(pou, DiffEffect::Vanishes);
        else ComparePou(pou, *found->second);
    }
    for (const PouFacts& pou : m_After.pous)
        if (!before.contains(pou.kind + " " + pou.name)) AddPou(pou, DiffEffect::Appears);
    GuessRenames();
    CompareStacks();
    CompareAreas();
    CompareSigns();
}

static std::string DescribePou(const PouFacts& pou)
{
    if (!pou.isUsed) return pou.kind + ", not reached";
    return fmt::format("{}, {}, {} local", pou.kind, GetCountText(pou.instructions, "instruction", "instructions"),
                       GetCountText(pou.localBytes, "byte", "bytes"));
}

void CPouDiff::AddPou(const PouFacts& pou, DiffEffect effect)
{
    const bool isNew = effect == DiffEffect::Appears;
    if (pou.isUsed) m_HasOtherCode = true;
    const std::string description = DescribePou(pou);
    const DiffSection section = pou.kind == "PROGRAM" ? DiffSection::Programs : DiffSection::Pous;
    (isNew ? m_New : m_Vanished).emplace_back(m_Changes.size(), &pou);
    m_Changes.push_back({section, effect, pou.name, (isNew ? "is new: " : "vanishes: ") + description,
                         isNew ? std::string() : description, isNew ? description : std::string(), {}, {}});
}

static std::string CompareNumbers(const char* name, std::int64_t before, std::int64_t after)
{
    if (before == after) return {};
    return fmt::format("{} {} to {} ({:+})", name, before, after, after - before);
}

void CPouDiff::ComparePou(const PouFacts& before, const PouFacts& after)
{
    std::vector<std::string> parts;
    if (before.isUsed && !after.isUsed) parts.push_back("is reached by no program any more");
    if (!before.isUsed && after.isUsed) parts.push_back("is reached by a program now");
    if (before.id != after.id) parts.push_back(fmt::format("id {} to {}", before.id, after.id));
    if (before.isUsed && after.isUsed) {
        parts.push_back(CompareNumbers("instructions", before.instructions, after.instructions));
        parts.push_back(CompareNumbers("local bytes", before.localBytes, after.localBytes));
        parts.push_back(CompareNumbers("stack bytes", before.depthBytes, after.depthBytes));
        parts.push_back(CompareNumbers("values on the parameter stack", before.highestCells, after.highestCells));
        const bool isOther = before.nameHash != after.nameHash;
        if (before.codeHash != after.codeHash || isOther) {
            m_HasOtherCode = true;
            if (before.instructions == after.instructions)
                parts.push_back(isOther ? "other code of the same length" : "the same code with other addresses");
        }
    }
    std::string text;
    for (const std::string& part : parts)
        if (!part.empty()) text += (text.empty() ? "" : "; ") + part;
    if (text.empty()) return;
    const DiffSection section = after.kind == "PROGRAM" ? DiffSection::Programs : DiffSection::Pous;
    m_Changes.push_back({section, DiffEffect::Changes, after.name, text, DescribePou(before), DescribePou(after), {}, {}});
}

void CPouDiff::GuessRenames()
{
    for (const auto& [oldChange, pOld] : m_Vanished) {
        for (const auto& [newChange, pNew] : m_New) {
            const bool isAlike = pOld->isUsed && pNew->isUsed && pOld->kind == pNew->kind &&
                                 pOld->codeHash == pNew->codeHash && m_Changes[newChange].guess.empty();
            if (!isAlike) continue;
            m_Changes[oldChange].guess = pNew->name;
            m_Changes[newChange].guess = pOld->name;
            m_Changes[oldChange].guessReason = m_Changes[newChange].guessReason = "the same instructions";
            break;
        }
    }
}

void CPouDiff::AddNumber(DiffSection section, const std::string& name, std::int64_t before, std::int64_t after,
                         const std::string& unit)
{
    if (before == after) return;
    const std::string gap = unit.empty() ? "" : " ";
    m_Changes.push_back({section, DiffEffect::Changes, name,
                         fmt::format("{} to {}{}{} ({:+})", before, after, gap, unit, after - before),
                         std::to_string(before), std::to_string(after), {}, {}});
}

void CPouDiff::CompareStacks()
{
    const PousByName old = IndexPrograms(m_Before);
    for (const ProgramFacts& program : m_After.programs) {
        const PouFacts& pou = m_After.pous[static_cast<std::size_t>(program.pou)];
        const auto found = old.find(pou.name);
        if (found == old.end()) continue;
        AddNumber(DiffSection::Stacks, "return stack of " + pou.name, found->second->depthBytes, pou.depthBytes, "bytes");
        AddNumber(DiffSection::Stacks, "parameter stack of " + pou.name, found->second->highestCells, pou.highestCells,
                  "values");
    }
    const StackFacts& a = m_Before.stacks;
    const StackFacts& b = m_After.stacks;
    AddNumber(DiffSection::Stacks, "return stack of all programs", a.nested, b.nested, "bytes");
    AddNumber(DiffSection::Stacks, "size of the return stack", a.returnSize, b.returnSize, "bytes");
    AddNumber(DiffSection::Stacks, "size of the parameter stack", a.parameterSize, b.parameterSize, "bytes");
}

void CPouDiff::CompareAreas()
{
    for (const AreaKind kind : {AreaKind::Global, AreaKind::Retain}) {
        const AreaFacts* pBefore = m_Before.FindArea(kind);
        const AreaFacts* pAfter = m_After.FindArea(kind);
        if (!pBefore || !pAfter) continue;
        AddNumber(DiffSection::Areas, pAfter->name, pBefore->UsedBytes(), pAfter->UsedBytes(), "bytes");
        if (pBefore->size >= 0 && pAfter->size >= 0)
            AddNumber(DiffSection::Areas, "size of " + pAfter->name, pBefore->size, pAfter->size, "bytes");
    }
}

void CPouDiff::CompareSigns()
{
    const auto compare = [this](const char* name, int before, int after) {
        if (before == after) return;
        m_Changes.push_back({DiffSection::Checksums, DiffEffect::Changes, name, fmt::format("{} to {}", before, after),
                             std::to_string(before), std::to_string(after), {}, {}});
    };
    compare("global", m_Before.globalSign, m_After.globalSign);
    compare("retain", m_Before.retainSign, m_After.retainSign);
    compare("debug file", m_Before.debugSign, m_After.debugSign);
}

// ---- The whole

CBuildDiff::CBuildDiff(const BuildFacts& before, const BuildFacts& after) : m_Before(before), m_After(after)
{
    if (before.contentHash != after.contentHash) Compare();
    Judge();
}

void CBuildDiff::Compare()
{
    CVariableDiff(m_Before, m_After, m_Changes).Compare();
    CPouDiff pous(m_Before, m_After, m_Changes);
    pous.Compare();
    m_HasOtherCode = pous.m_HasOtherCode;
    std::stable_sort(m_Changes.begin(), m_Changes.end(), [](const Change& a, const Change& b) {
        return a.section != b.section ? a.section < b.section : a.effect < b.effect;
    });
}

void CBuildDiff::Judge()
{
    if (m_Before.contentHash != m_After.contentHash) {
        m_Sameness = m_Changes.empty() && !m_HasOtherCode ? Sameness::SameCode : Sameness::Different;
        return;
    }
    const bool hasSameStamps = m_Before.fileTime == m_After.fileTime && m_Before.version == m_After.version &&
                               m_Before.programName == m_After.programName;
    m_Sameness = hasSameStamps ? Sameness::Same : Sameness::SameButForStamps;
}

std::string CBuildDiff::GetSamenessText() const
{
    switch (m_Sameness) {
    case Sameness::Same: return "The builds are equal.";
    case Sameness::SameButForStamps:
        return "The builds are equal but for their stamps (program name, version, file time).";
    case Sameness::SameCode:
        return "Code, places and types are equal; only lines, comments or file names differ.";
    case Sameness::Different: break;
    }
    return {};
}

std::int64_t CBuildDiff::CountInstructions(const BuildFacts& facts) const
{
    std::int64_t count = 0;
    for (const PouFacts& pou : facts.pous) count += pou.instructions;
    return count;
}

bool CBuildDiff::IsDeeper() const
{
    const StackFacts& before = m_Before.stacks;
    const StackFacts& after = m_After.stacks;
    if (after.nested > before.nested || after.returnSize < before.returnSize || after.parameterSize < before.parameterSize)
        return true;
    const PousByName old = IndexPrograms(m_Before);
    for (const auto& [name, pPou] : IndexPrograms(m_After)) {
        const auto found = old.find(name);
        const std::int64_t depth = found == old.end() ? before.deepest : found->second->depthBytes;
        const int cells = found == old.end() ? before.highestCells : found->second->highestCells;
        if (pPou->depthBytes > depth || pPou->highestCells > cells) return true;
    }
    return false;
}

bool CBuildDiff::HasLoss(DiffSection section) const
{
    return std::any_of(m_Changes.begin(), m_Changes.end(), [section](const Change& change) {
        return change.section == section && change.effect <= DiffEffect::ChangesType;
    });
}
