#include "report/Wording.h"

#include <fmt/format.h>

std::string GetFullName(const VariableFacts& variable)
{
    return variable.owner.empty() ? variable.name : variable.owner + "." + variable.name;
}

std::string GetPlaceText(const BuildFacts& facts, const VariableFacts& variable)
{
    if (variable.area < 0) return "nowhere";
    const AreaFacts& area = facts.areas[static_cast<std::size_t>(variable.area)];
    const std::int64_t byte = variable.place.begin / g_BitsOfByte;
    std::string text = std::to_string(byte);
    if (area.kind == AreaKind::Global) text = "global+" + text;
    if (area.kind == AreaKind::Retain) text = "retain+" + text;
    if (area.kind == AreaKind::Local) text = "local+" + text;
    const bool isBit = variable.place.Bits() % g_BitsOfByte != 0;
    if (isBit) text += "." + std::to_string(variable.place.begin % g_BitsOfByte);
    return text;
}

std::string GetCountText(std::int64_t count, const std::string& one, const std::string& more)
{
    return std::to_string(count) + " " + (count == 1 ? one : more);
}

std::string GetSizeText(const VariableFacts& variable)
{
    if (variable.area < 0) return "-";
    const std::int64_t bits = variable.place.Bits();
    const bool isBytes = bits % g_BitsOfByte == 0;
    const std::string text = isBytes ? GetCountText(bits / g_BitsOfByte, "byte", "bytes")
                                     : GetCountText(bits, "bit", "bits");
    // Of a scalar the code tells the type and so all there is.
    return variable.isFromCode && variable.typeText.empty() ? "at least " + text : text;
}

std::string GetShareText(std::int64_t part, std::int64_t whole)
{
    if (whole <= 0) return {};
    const double share = 100.0 * static_cast<double>(part) / static_cast<double>(whole);
    return share > 0 && share < 10 ? fmt::format("{:.1f}%", share) : fmt::format("{:.0f}%", share);
}

std::string GetPathText(const BuildFacts& facts, const std::vector<int>& path)
{
    std::string text;
    for (const int pou : path) {
        const PouFacts& step = facts.pous[static_cast<std::size_t>(pou)];
        text += fmt::format("{}{} ({})", text.empty() ? "" : " > ", step.name, step.frameBytes);
    }
    return text;
}

std::string GetCellPathText(const BuildFacts& facts, const std::vector<int>& path)
{
    std::string text;
    for (const int pou : path) text += (text.empty() ? "" : " > ") + facts.pous[static_cast<std::size_t>(pou)].name;
    return text;
}

std::string GetSourceText(const PouFacts& pou)
{
    return pou.fileName.empty() ? "the compiler" : fmt::format("{}({})", pou.fileName, pou.line);
}
