#include "report/Limits.h"

#include <charconv>
#include <iterator>

namespace
{

enum class Subject { Area, Deepest, Nested, Parameters };

struct SubjectName
{
    std::string_view name;
    Subject subject;
    AreaKind area;
};

constexpr SubjectName g_Subjects[] = {
    {"global", Subject::Area, AreaKind::Global},       {"retain", Subject::Area, AreaKind::Retain},
    {"input", Subject::Area, AreaKind::Input},         {"output", Subject::Area, AreaKind::Output},
    {"memory", Subject::Area, AreaKind::Memory},       {"stack", Subject::Deepest, AreaKind::Global},
    {"nested", Subject::Nested, AreaKind::Global},     {"parameters", Subject::Parameters, AreaKind::Global},
};

}   // namespace

static const SubjectName* FindSubject(std::string_view name)
{
    for (const SubjectName& subject : g_Subjects)
        if (subject.name == name) return &subject;
    return nullptr;
}

std::optional<Limit> ParseLimit(const std::string& text, std::string& error)
{
    error = text + ": is no limit, such as \"retain>90%\" or \"stack>=900\"";
    const std::size_t position = text.find('>');
    if (position == std::string::npos) return {};
    Limit limit;
    limit.text = text;
    limit.what = text.substr(0, position);
    while (limit.what.ends_with(' ')) limit.what.pop_back();
    if (!FindSubject(limit.what)) {
        error = text + ": \"" + limit.what + "\" is none of";
        for (const SubjectName& subject : g_Subjects) error += (&subject == g_Subjects ? " " : ", ") + std::string(subject.name);
        return {};
    }
    std::string_view rest = std::string_view(text).substr(position + 1);
    if (rest.starts_with('=')) {
        limit.isReached = true;
        rest.remove_prefix(1);
    }
    while (rest.starts_with(' ')) rest.remove_prefix(1);
    const std::from_chars_result end = std::from_chars(rest.data(), rest.data() + rest.size(), limit.number);
    if (end.ec != std::errc() || !(limit.number >= 0)) return {};
    rest.remove_prefix(static_cast<std::size_t>(end.ptr - rest.data()));
    limit.isShare = rest == "%";
    if (!limit.isShare && !rest.empty()) return {};
    return limit;
}

LimitedUse GetLimitedUse(const BuildFacts& facts, const std::string& what)
{
    const SubjectName* pSubject = FindSubject(what);
    if (!pSubject) return {};
    switch (pSubject->subject) {
    case Subject::Deepest: return {facts.stacks.deepest, facts.stacks.returnSize};
    case Subject::Nested: return {facts.stacks.nested, facts.stacks.returnSize};
    case Subject::Parameters:
        return {std::int64_t{facts.stacks.highestCells} * facts.stacks.cellBytes, facts.stacks.parameterSize};
    case Subject::Area: break;
    }
    const AreaFacts* pArea = facts.FindArea(pSubject->area);
    return pArea ? LimitedUse{pArea->UsedBytes(), pArea->size} : LimitedUse{};
}

std::optional<bool> IsCrossed(const BuildFacts& facts, const Limit& limit, std::string& error)
{
    const LimitedUse use = GetLimitedUse(facts, limit.what);
    if (limit.isShare && use.size < 0) {
        error = limit.text + ": the size of this area stands in the target description (-i)";
        return {};
    }
    // A share of nothing is crossed by anything.
    const double bound = limit.isShare ? limit.number / 100 * static_cast<double>(use.size) : limit.number;
    const double used = static_cast<double>(use.used);
    return limit.isReached ? used >= bound : used > bound;
}
