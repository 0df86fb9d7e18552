#include "report/VariableDiff.h"

#include "files/Format.h"
#include "report/Hash.h"
#include "report/Wording.h"

#include <fmt/format.h>

#include <algorithm>
#include <charconv>
#include <set>

static std::string GetElement(const std::string& typeText)
{
    return typeText.substr(0, typeText.find('['));
}

static DiffSection GetSection(const VariableFacts& variable)
{
    if (variable.isRetain) return DiffSection::Retained;
    if (variable.isLocated) return DiffSection::Located;
    return variable.owner.empty() ? DiffSection::Globals : DiffSection::Locals;
}

static std::string Describe(const BuildFacts& facts, const VariableFacts& variable)
{
    return GetPlaceText(facts, variable) + (variable.typeText.empty() ? "" : " : " + variable.typeText);
}

CVariableDiff::CVariableDiff(const BuildFacts& before, const BuildFacts& after, std::vector<Change>& changes)
    : m_Before(MakeSide(before)), m_After(MakeSide(after)), m_Changes(changes)
{
    const AreaFacts* pRetain = before.FindArea(AreaKind::Retain);
    std::int64_t reach = 0;
    if (!pRetain) return;
    for (const int entry : pRetain->entries) {
        const VariableFacts& variable = before.variables[static_cast<std::size_t>(entry)];
        reach = std::max(reach, variable.place.end);
        m_Retained.push_back({variable.place.begin, reach, &variable});
    }
}

// Types stand behind those of their members.
CVariableDiff::Side CVariableDiff::MakeSide(const BuildFacts& facts)
{
    Side side;
    side.pFacts = &facts;
    for (const VariableFacts& variable : facts.variables) side.variables.emplace(ToLowerCase(GetFullName(variable)), &variable);
    for (const TypeFacts& type : facts.types) {
        side.types.emplace(type.name, &type);
        CHash hash;
        hash.Add(type.kind);
        hash.Add(type.bits);
        for (const TypeFacts::Member& member : type.members) {
            hash.Add(member.name);
            hash.Add(member.place.begin);
            hash.Add(static_cast<std::int64_t>(GetLayout(side, member.typeText)));
        }
        side.layouts.emplace(type.name, hash.Get());
    }
    return side;
}

std::uint64_t CVariableDiff::GetLayout(const Side& side, const std::string& typeText)
{
    CHash hash;
    hash.Add(typeText);
    const auto found = side.layouts.find(GetElement(typeText));
    if (found != side.layouts.end()) hash.Add(static_cast<std::int64_t>(found->second));
    return hash.Get();
}

void CVariableDiff::Compare()
{
    for (const VariableFacts& variable : m_Before.pFacts->variables) {
        const auto found = m_After.variables.find(ToLowerCase(GetFullName(variable)));
        if (found == m_After.variables.end()) AddVanished(variable);
        else ComparePair(variable, *found->second);
    }
    for (const VariableFacts& variable : m_After.pFacts->variables)
        if (!m_Before.variables.contains(ToLowerCase(GetFullName(variable)))) AddNew(variable);
    GuessRenames();
    CompareTypes();
}

// The retained variables of the first build that lay where one of the second will lie.
std::string CVariableDiff::GetFormer(const VariableFacts& variable, BitRange place) const
{
    if (!variable.isRetain || variable.isLocated) return {};
    std::string names;
    int count = 0;
    constexpr int most = 3;
    const auto behind = std::lower_bound(m_Retained.begin(), m_Retained.end(), place.end,
                                         [](const Former& former, std::int64_t end) { return former.begin < end; });
    for (auto former = behind; former != m_Retained.begin() && (former - 1)->reach > place.begin && count < most;) {
        --former;
        if (former->pVariable->place.end <= place.begin) continue;
        ++count;
        names = GetFullName(*former->pVariable) + (names.empty() ? "" : ", ") + names;
    }
    return names.empty() ? ", where nothing lay that the build names" : ", where " + names + " lay";
}

void CVariableDiff::AddVanished(const VariableFacts& variable)
{
    const DiffSection section = GetSection(variable);
    m_Vanished.push_back({m_Changes.size(), &variable, section});
    const std::string place = Describe(*m_Before.pFacts, variable);
    m_Changes.push_back({section, DiffEffect::Vanishes, GetFullName(variable), "vanishes from " + place, place, {}, {}, {}});
}

void CVariableDiff::AddNew(const VariableFacts& variable)
{
    const DiffSection section = GetSection(variable);
    m_New.push_back({m_Changes.size(), &variable, section});
    const std::string place = Describe(*m_After.pFacts, variable);
    m_Changes.push_back({section, DiffEffect::Appears, GetFullName(variable),
                         "is new at " + place + GetFormer(variable, variable.place), {}, place, {}, {}});
}

static bool IsSamePlace(const BuildFacts& factsBefore, const VariableFacts& before, const BuildFacts& factsAfter,
                        const VariableFacts& after)
{
    if (before.area < 0 || after.area < 0) return before.area == after.area;
    // Of an area with addresses only these count, since without a target its kind may not be known.
    const AreaFacts& left = factsBefore.areas[static_cast<std::size_t>(before.area)];
    const AreaFacts& right = factsAfter.areas[static_cast<std::size_t>(after.area)];
    const bool isSameArea = left.kind == right.kind || (left.HasAddresses() && right.HasAddresses());
    return isSameArea && before.place.begin == after.place.begin;
}

void CVariableDiff::ComparePair(const VariableFacts& before, const VariableFacts& after)
{
    Change change;
    change.section = before.isRetain || after.isRetain ? DiffSection::Retained
                     : before.isLocated                ? DiffSection::Located
                                                       : GetSection(after);
    change.name = GetFullName(after);
    change.before = Describe(*m_Before.pFacts, before);
    change.after = Describe(*m_After.pFacts, after);
    const bool isMoved = !IsSamePlace(*m_Before.pFacts, before, *m_After.pFacts, after);
    const bool isOtherType = before.typeText != after.typeText;
    const std::string from = GetPlaceText(*m_Before.pFacts, before);
    const std::string to = GetPlaceText(*m_After.pFacts, after);
    if (before.isRetain && !after.isRetain) {
        change.effect = DiffEffect::Vanishes;
        change.text = fmt::format("is no longer retained: from {} to {}", change.before, change.after);
    } else if (!before.isRetain && after.isRetain) {
        change.effect = DiffEffect::Appears;
        change.text = fmt::format("is retained now: from {} to {}", change.before, change.after) + GetFormer(after, after.place);
    } else if (isOtherType) {
        change.effect = DiffEffect::ChangesType;
        change.text = fmt::format("changes type from {} to {}", before.typeText.empty() ? "?" : before.typeText,
                                  after.typeText.empty() ? "?" : after.typeText);
        if (isMoved) change.text += fmt::format(" and moves from {} to {}", from, to) + GetFormer(after, after.place);
    } else if (GetLayout(m_Before, before.typeText) != GetLayout(m_After, after.typeText)) {
        // Of what is retained, or wired, each value counts.
        if (change.section == DiffSection::Retained || change.section == DiffSection::Located) {
            CompareLeaves(before, after);
            return;
        }
        change.effect = DiffEffect::ChangesType;
        change.text = "has other members in its type " + GetElement(after.typeText);
        if (isMoved) change.text += fmt::format(" and moves from {} to {}", from, to);
    } else if (isMoved) {
        change.effect = DiffEffect::Moves;
        change.text = fmt::format("moves from {} to {}", from, to) + GetFormer(after, after.place);
    } else if (before.isConstant != after.isConstant) {
        change.effect = DiffEffect::Changes;
        change.text = after.isConstant ? "becomes constant" : "is no longer constant";
    } else {
        return;
    }
    m_Changes.push_back(std::move(change));
}

// ---- Values within a variable whose type keeps its name but not its members

static bool TakeBounds(std::string_view& text, std::int64_t& low, std::int64_t& high)
{
    const auto take = [&text](std::int64_t& number) {
        const std::from_chars_result end = std::from_chars(text.data(), text.data() + text.size(), number);
        if (end.ec != std::errc()) return false;
        text.remove_prefix(static_cast<std::size_t>(end.ptr - text.data()));
        return true;
    };
    if (!take(low) || !text.starts_with("..")) return false;
    text.remove_prefix(2);
    return take(high);
}

// The bounds of an array of one dimension, "[1..4]"; false for another one.
static bool GetBounds(const std::string& typeText, std::int64_t& low, std::int64_t& high)
{
    std::string_view text = std::string_view(typeText).substr(typeText.find('[') + 1);
    return TakeBounds(text, low, high) && text == "]";
}

// Members of structures, and elements of arrays of them, as long as they are not many; everything else is one value.
std::map<std::string, CVariableDiff::Leaf> CVariableDiff::Expand(const Side& side, const VariableFacts& variable)
{
    constexpr std::size_t mostLeaves = 2000;
    constexpr std::int64_t mostElements = 100;
    std::map<std::string, Leaf> leaves;
    std::vector<std::pair<std::string, Leaf>> open{{GetFullName(variable), {variable.typeText, variable.place}}};
    while (!open.empty()) {
        auto [name, leaf] = std::move(open.back());
        open.pop_back();
        const std::string element = GetElement(leaf.typeText);
        const auto found = side.types.find(element);
        const bool isStructure = found != side.types.end() && !found->second->members.empty();
        const bool isArray = element.size() != leaf.typeText.size();
        std::int64_t low = 0;
        std::int64_t high = -1;
        const bool hasElements = isStructure && isArray && GetBounds(leaf.typeText, low, high) && high >= low &&
                                 high - low < mostElements;
        if (!isStructure || (isArray && !hasElements) || leaves.size() + open.size() > mostLeaves) {
            leaves.emplace(std::move(name), std::move(leaf));
            continue;
        }
        if (!isArray) {
            for (const TypeFacts::Member& member : found->second->members)
                open.emplace_back(name + "." + member.name,
                                  Leaf{member.typeText, {leaf.place.begin + member.place.begin,
                                                         leaf.place.begin + member.place.end}});
            continue;
        }
        const std::int64_t stride = high > low ? (leaf.place.Bits() - found->second->bits) / (high - low) : 0;
        for (std::int64_t i = low; i <= high; ++i) {
            const std::int64_t begin = leaf.place.begin + (i - low) * stride;
            open.emplace_back(fmt::format("{}[{}]", name, i), Leaf{element, {begin, begin + found->second->bits}});
        }
    }
    return leaves;
}

void CVariableDiff::CompareLeaves(const VariableFacts& before, const VariableFacts& after)
{
    const DiffSection section = GetSection(after);
    const std::map<std::string, Leaf> old = Expand(m_Before, before);
    const std::map<std::string, Leaf> now = Expand(m_After, after);
    const auto describe = [](const BuildFacts& facts, VariableFacts variable, const Leaf& leaf) {
        variable.place = leaf.place;
        variable.typeText = leaf.typeText;
        return Describe(facts, variable);
    };
    const std::size_t first = m_Changes.size();
    for (const auto& [name, leaf] : old) {
        const std::string from = describe(*m_Before.pFacts, before, leaf);
        const auto found = now.find(name);
        if (found == now.end()) {
            m_Changes.push_back({section, DiffEffect::Vanishes, name, "vanishes from " + from, from, {}, {}, {}});
            continue;
        }
        const std::string to = describe(*m_After.pFacts, after, found->second);
        const std::string former = GetFormer(after, found->second.place);
        if (leaf.typeText != found->second.typeText)
            m_Changes.push_back({section, DiffEffect::ChangesType, name,
                                 fmt::format("changes type from {} to {}", from, to), from, to, {}, {}});
        else if (leaf.place.begin != found->second.place.begin || before.area != after.area)
            m_Changes.push_back({section, DiffEffect::Moves, name, fmt::format("moves from {} to {}", from, to) + former,
                                 from, to, {}, {}});
    }
    for (const auto& [name, leaf] : now) {
        if (old.contains(name)) continue;
        const std::string to = describe(*m_After.pFacts, after, leaf);
        m_Changes.push_back({section, DiffEffect::Appears, name, "is new at " + to + GetFormer(after, leaf.place), {}, to,
                             {}, {}});
    }
    if (m_Changes.size() > first) return;
    // Too much to be told one by one.
    m_Changes.push_back({section, DiffEffect::ChangesType, GetFullName(after),
                         "has other members in its type " + GetElement(after.typeText), Describe(*m_Before.pFacts, before),
                         Describe(*m_After.pFacts, after), {}, {}});
}

// ---- Renames: a name that vanishes and one that appears, alike in all but the name

void CVariableDiff::GuessRenames()
{
    std::set<std::size_t> guessed;
    const auto isAlike = [this](const Lost& lost, const Lost& added) {
        return lost.section == added.section && lost.pVariable->owner == added.pVariable->owner &&
               lost.pVariable->isConstant == added.pVariable->isConstant &&
               GetLayout(m_Before, lost.pVariable->typeText) == GetLayout(m_After, added.pVariable->typeText);
    };
    const auto guess = [&](const Lost& lost, const Lost& added, const std::string& reason) {
        m_Changes[lost.change].guess = GetFullName(*added.pVariable);
        m_Changes[added.change].guess = GetFullName(*lost.pVariable);
        m_Changes[lost.change].guessReason = m_Changes[added.change].guessReason = reason;
        guessed.insert(lost.change);
        guessed.insert(added.change);
    };
    // By place first. Constants without one can't be told apart by it.
    std::map<std::pair<int, std::int64_t>, const Lost*> byPlace;
    for (const Lost& added : m_New)
        if (added.pVariable->area >= 0) byPlace[{static_cast<int>(added.section), added.pVariable->place.begin}] = &added;
    for (const Lost& lost : m_Vanished) {
        const auto found = byPlace.find({static_cast<int>(lost.section), lost.pVariable->place.begin});
        if (lost.pVariable->area >= 0 && found != byPlace.end() && isAlike(lost, *found->second) &&
            !guessed.contains(found->second->change))
            guess(lost, *found->second, "same type, same place");
    }
    // Then the only pair of a type.
    std::map<std::string, std::pair<std::vector<const Lost*>, std::vector<const Lost*>>> byType;
    const auto keyOf = [](const Lost& lost) {
        return fmt::format("{} {} {}", static_cast<int>(lost.section), lost.pVariable->owner, lost.pVariable->typeText);
    };
    for (const Lost& lost : m_Vanished)
        if (!guessed.contains(lost.change)) byType[keyOf(lost)].first.push_back(&lost);
    for (const Lost& added : m_New)
        if (!guessed.contains(added.change)) byType[keyOf(added)].second.push_back(&added);
    for (const auto& [key, pair] : byType)
        if (pair.first.size() == 1 && pair.second.size() == 1 && isAlike(*pair.first.front(), *pair.second.front()))
            guess(*pair.first.front(), *pair.second.front(), "the only one of its type that vanishes and appears");
}

// ---- Types

static std::string DescribeType(const TypeFacts& type)
{
    if (!type.members.empty()) return fmt::format("{} of {} bytes", type.kind, type.bits / g_BitsOfByte);
    return fmt::format("{}, {} bits", type.kind, type.bits);
}

void CVariableDiff::CompareTypes()
{
    for (const TypeFacts& type : m_Before.pFacts->types) {
        const auto found = m_After.types.find(type.name);
        if (found != m_After.types.end()) CompareType(type, *found->second);
        else
            m_Changes.push_back({DiffSection::Types, DiffEffect::Vanishes, type.name, "vanishes: " + DescribeType(type),
                                 DescribeType(type), {}, {}, {}});
    }
    for (const TypeFacts& type : m_After.pFacts->types)
        if (!m_Before.types.contains(type.name))
            m_Changes.push_back({DiffSection::Types, DiffEffect::Appears, type.name, "is new: " + DescribeType(type), {},
                                 DescribeType(type), {}, {}});
}

static std::string DescribeMember(const TypeFacts::Member& member)
{
    const bool isBit = member.place.Bits() % g_BitsOfByte != 0;
    const std::string bit = isBit ? fmt::format(".{}", member.place.begin % g_BitsOfByte) : std::string();
    return fmt::format("{} at {}{}", member.typeText, member.place.begin / g_BitsOfByte, bit);
}

void CVariableDiff::CompareType(const TypeFacts& before, const TypeFacts& after)
{
    if (m_Before.layouts[before.name] == m_After.layouts[after.name]) return;
    std::vector<std::string> parts;
    if (DescribeType(before) != DescribeType(after)) parts.push_back("now " + DescribeType(after));
    std::map<std::string, const TypeFacts::Member*> old;
    for (const TypeFacts::Member& member : before.members) old.emplace(ToLowerCase(member.name), &member);
    for (const TypeFacts::Member& member : after.members) {
        const auto found = old.find(ToLowerCase(member.name));
        if (found == old.end()) {
            parts.push_back(fmt::format("{} is new: {}", member.name, DescribeMember(member)));
            continue;
        }
        const std::string from = DescribeMember(*found->second);
        const std::string to = DescribeMember(member);
        if (from != to) parts.push_back(fmt::format("{}: {}, was {}", member.name, to, from));
        else if (GetLayout(m_Before, member.typeText) != GetLayout(m_After, member.typeText))
            parts.push_back(fmt::format("{}: its type {} changes", member.name, member.typeText));
        old.erase(found);
    }
    for (const TypeFacts::Member& member : before.members)
        if (old.contains(ToLowerCase(member.name))) parts.push_back(member.name + " vanishes");
    std::string text;
    for (const std::string& part : parts) text += (text.empty() ? "" : "; ") + part;
    m_Changes.push_back({DiffSection::Types, DiffEffect::ChangesType, after.name, "changes: " + text, DescribeType(before),
                         DescribeType(after), {}, {}});
}
