#include "report/DiffRendering.h"

#include "report/Wording.h"

#include <fmt/format.h>
#include <nlohmann/json.hpp>

#include <array>
#include <utility>
#include <vector>

using Json = nlohmann::ordered_json;

static std::vector<const Change*> GetChanges(const CBuildDiff& diff, DiffSection section)
{
    std::vector<const Change*> changes;
    for (const Change& change : diff.m_Changes)
        if (change.section == section) changes.push_back(&change);
    return changes;
}

// "1 vanishes, 2 move, 1 is new"
static std::string Summarize(DiffSection section, const std::vector<const Change*>& changes)
{
    struct Words
    {
        const char* one;
        const char* more;
    };
    constexpr std::array<Words, 5> words = {   // ORDER EFFECT
        {{"vanishes", "vanish"}, {"moves", "move"}, {"changes type", "change type"}, {"changes", "change"}, {"is new", "are new"}}};
    std::array<int, 5> counts{};
    for (const Change* pChange : changes) ++counts[static_cast<std::size_t>(pChange->effect)];
    std::string text;
    if (section == DiffSection::Types)   // of a type all that is said is that it changes
        counts[static_cast<std::size_t>(DiffEffect::Changes)] +=
            std::exchange(counts[static_cast<std::size_t>(DiffEffect::ChangesType)], 0);
    for (std::size_t i = 0; i < counts.size(); ++i)
        if (counts[i] > 0)
            text += fmt::format("{}{} {}", text.empty() ? "" : ", ", counts[i], counts[i] == 1 ? words[i].one : words[i].more);
    return text;
}

static std::string GetGuessText(const Change& change)
{
    if (change.guess.empty()) return {};
    const bool isOld = change.effect == DiffEffect::Vanishes;
    return fmt::format(" (a guess: renamed {} {}; {})", isOld ? "to" : "from", change.guess, change.guessReason);
}

static std::string GetUnchanged(const CBuildDiff& diff)
{
    std::string names;
    for (int i = 0; i < static_cast<int>(DiffSection::Count); ++i) {
        const DiffSection section = static_cast<DiffSection>(i);
        if (!GetChanges(diff, section).empty()) continue;
        std::string title(GetSectionTitle(section));
        if (section != DiffSection::Pous) title.front() = static_cast<char>(title.front() | 0x20);
        names += (names.empty() ? "" : ", ") + title;
    }
    return names;
}

static std::string GetSizeLine(const CBuildDiff& diff)
{
    const std::int64_t before = diff.CountInstructions(diff.GetBefore());
    const std::int64_t after = diff.CountInstructions(diff.GetAfter());
    if (before == after) return fmt::format("{} instructions, as before", after);
    const double share = before == 0 ? 0 : 100.0 * static_cast<double>(after - before) / static_cast<double>(before);
    return fmt::format("{} to {} instructions ({:+.1f}%)", before, after, share);
}

std::string RenderTextDiff(const CBuildDiff& diff)
{
    std::string text = fmt::format("{} -> {}\n", diff.GetBefore().listingName, diff.GetAfter().listingName);
    if (diff.m_Sameness != Sameness::Different) return text + diff.GetSamenessText() + "\n";
    for (int i = 0; i < static_cast<int>(DiffSection::Count); ++i) {
        const std::vector<const Change*> changes = GetChanges(diff, static_cast<DiffSection>(i));
        if (changes.empty()) continue;
        text += fmt::format("\n{}: {}\n", GetSectionTitle(static_cast<DiffSection>(i)),
                            Summarize(static_cast<DiffSection>(i), changes));
        for (const Change* pChange : changes)
            text += fmt::format("  {}: {}{}\n", pChange->name, pChange->text, GetGuessText(*pChange));
    }
    text += fmt::format("\nSize: {}\n", GetSizeLine(diff));
    const std::string unchanged = GetUnchanged(diff);
    return unchanged.empty() ? text : text + "Unchanged: " + unchanged + "\n";
}

// ---- Markdown

// Names stand between backticks, where a table still ends its cells at a bar.
static std::string MakeCode(const std::string& text)
{
    std::string code;
    for (const char c : text) {
        if (c == '`') code += '\'';
        else if (c == '|') code += "\\|";
        else code += c;
    }
    return "`" + code + "`";
}

static std::string EscapeMarkdown(const std::string& text)
{
    constexpr std::string_view special = "\\`*_{}[]<>()#+!|~&";
    std::string escaped;
    for (const char c : text) {
        if (special.find(c) != std::string_view::npos) escaped += '\\';
        escaped += c;
    }
    return escaped;
}

std::string RenderMarkdownDiff(const CBuildDiff& diff)
{
    std::string text = fmt::format("## {} \xE2\x86\x92 {}\n\n", EscapeMarkdown(diff.GetBefore().listingName),
                                   EscapeMarkdown(diff.GetAfter().listingName));
    if (diff.m_Sameness != Sameness::Different) return text + diff.GetSamenessText() + "\n";
    text += GetSizeLine(diff) + ".\n\n";
    if (diff.HasLoss(DiffSection::Retained)) text += "**Retained values are lost or misread by a download.**\n\n";
    for (int i = 0; i < static_cast<int>(DiffSection::Count); ++i) {
        const std::vector<const Change*> changes = GetChanges(diff, static_cast<DiffSection>(i));
        if (changes.empty()) continue;
        text += fmt::format("### {}: {}\n\n| name | what happens |\n|---|---|\n", GetSectionTitle(static_cast<DiffSection>(i)),
                            Summarize(static_cast<DiffSection>(i), changes));
        for (const Change* pChange : changes)
            text += fmt::format("| {} | {} |\n", MakeCode(pChange->name), EscapeMarkdown(pChange->text + GetGuessText(*pChange)));
        text += "\n";
    }
    const std::string unchanged = GetUnchanged(diff);
    return unchanged.empty() ? text : text + "Unchanged: " + unchanged + ".\n";
}

// ---- JSON

std::string RenderJsonDiff(const CBuildDiff& diff)
{
    constexpr const char* names[] = {"equal", "equal but for stamps", "equal code", "different"};   // as Sameness
    Json json{{"old", diff.GetBefore().listingName},
              {"new", diff.GetAfter().listingName},
              {"result", names[static_cast<std::size_t>(diff.m_Sameness)]},
              {"instructions", {{"old", diff.CountInstructions(diff.GetBefore())}, {"new", diff.CountInstructions(diff.GetAfter())}}}};
    Json changes = Json::array();
    for (const Change& change : diff.m_Changes) {
        Json entry{{"section", GetSectionKey(change.section)}, {"effect", GetEffectKey(change.effect)},
                   {"name", change.name}, {"text", change.text}};
        if (!change.before.empty()) entry["old"] = change.before;
        if (!change.after.empty()) entry["new"] = change.after;
        if (!change.guess.empty()) entry["guess"] = Json{{"renamed", change.guess}, {"because", change.guessReason}};
        changes.push_back(std::move(entry));
    }
    json["changes"] = std::move(changes);
    constexpr int indent = 1;
    return json.dump(indent, ' ', false, Json::error_handler_t::replace) + "\n";
}
