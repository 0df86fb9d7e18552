#include "norvane/ExplainCommand.h"

#include "norvane/MessagePages.h"
#include "norvane/Session.h"
#include "norvane/WordDistance.h"

#include <CLI/CLI.hpp>
#include <fmt/format.h>

#include <cstdio>
#include <memory>
#include <sstream>

namespace
{

struct Section
{
    std::string id;
    std::string title;
    std::vector<std::string> lines;
};

}   // namespace

// "### E007: `variable X not declared`", "## N5: IF with a literal FALSE and ELSIF"
static bool ReadHeading(const std::string& line, Section& section)
{
    const std::size_t begin = line.find_first_not_of('#');
    const std::size_t end = line.find(": ");
    if (begin == 0 || begin == std::string::npos || end == std::string::npos || begin + 2 > end) return false;
    section.id = line.substr(begin + 1, end - begin - 1);
    section.title = line.substr(end + 2);
    const bool isNumbered = section.id.find_first_not_of("0123456789", 1) == std::string::npos;
    return isNumbered && section.id.size() > 1 && std::string("EWN").find(section.id[0]) != std::string::npos;
}

static std::vector<Section> ReadSections()
{
    std::string text;
    for (const std::string_view piece : GetMessagePages()) text += piece;
    std::vector<Section> sections;
    std::istringstream stream(text);
    bool isInside = false;
    bool isCode = false;
    for (std::string line; std::getline(stream, line);) {
        if (line.starts_with("```")) isCode = !isCode;
        if (!isCode && line.starts_with('#')) {
            Section section;
            isInside = ReadHeading(line, section);
            if (isInside) sections.push_back(section);
        } else if (isInside) {
            sections.back().lines.push_back(line);
        }
    }
    return sections;
}

// "```st draws options=-o1" and the like, as a sentence.
static std::string ExplainFence(const std::string& fence)
{
    const std::size_t mark = fence.find("options=");
    const std::string with = mark == std::string::npos ? "" : " with " + fence.substr(mark + 8);
    if (fence.find(" target") != std::string::npos) return "For this target:";
    return (fence.find(" quiet") != std::string::npos ? "Doesn't draw it" : "Draws it") + with + ":";
}

static void PrintSection(const Section& section)
{
    fmt::print("{}: {}\n", section.id, section.title);
    bool isCode = false;
    for (const std::string& line : section.lines) {
        if (line.starts_with("```")) {
            isCode = !isCode;
            if (isCode) fmt::print("{}\n\n", ExplainFence(line));
        } else {
            fmt::print("{}{}\n", isCode && !line.empty() ? "    " : "", line);
        }
    }
}

static int Explain(const std::vector<std::string>& ids)
{
    const std::vector<Section> sections = ReadSections();
    if (ids.empty())
        for (const Section& section : sections) fmt::print("{}: {}\n", section.id, section.title);
    int status = g_ExitFine;
    for (const std::string& id : ids) {
        bool isFound = false;
        for (const Section& section : sections) {
            if (!IsSameName(section.id, id)) continue;
            PrintSection(section);
            isFound = true;
        }
        if (isFound) continue;
        fmt::print(stderr, "norvane: there is no message {}; explain without one lists all\n", id);
        status = g_ExitUnable;
    }
    return status;
}

void AddExplainCommand(CLI::App& app, std::function<int()>& run)
{
    auto pIds = std::make_shared<std::vector<std::string>>();
    CLI::App* pCommand = app.add_subcommand("explain", "show cause and way out of a message, with an example");
    pCommand->add_option("ID", *pIds, "identifiers such as E007 or N5; all are listed without one");
    pCommand->callback([pIds, &run] { run = [pIds] { return Explain(*pIds); }; });
}
