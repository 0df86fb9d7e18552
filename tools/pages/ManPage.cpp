#include "pages/ManPage.h"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <cctype>
#include <sstream>

// A backslash begins a request, and so do a dot and an apostrophe at the start of a line; a dash would become a hyphen.
static std::string Escape(const std::string& text)
{
    std::string escaped;
    bool isLineStart = true;
    for (const char c : text) {
        if (isLineStart && (c == '.' || c == '\'')) escaped += "\\&";
        if (c == '\\') escaped += "\\e";
        else if (c == '-') escaped += "\\-";
        else escaped += c;
        isLineStart = c == '\n';
    }
    return escaped;
}

static std::string ToCapitals(std::string text)
{
    for (char& c : text) c = static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
    return text;
}

std::string GetPageName(const CLI::App& command)
{
    const CLI::App* pParent = command.get_parent();
    return pParent ? GetPageName(*pParent) + "-" + command.get_name() : command.get_name();
}

static std::string GetCommandLine(const CLI::App& command)
{
    std::string line = GetPageName(command);
    std::replace(line.begin(), line.end(), '-', ' ');
    return line;
}

static bool IsNamedByDash(const CLI::Option& option)
{
    return !option.get_lnames().empty() || !option.get_snames().empty();
}

static std::string GetValueName(const CLI::Option& option)
{
    return option.get_items_expected_max() > 0 ? option.get_type_name() : std::string();
}

// "-i, --target TEXT" with the names in bold.
static std::string FormatNames(const CLI::Option& option)
{
    std::string names;
    const auto add = [&names](const std::string& name) {
        names += (names.empty() ? "\\fB" : ", \\fB") + Escape(name) + "\\fR";
    };
    for (const std::string& name : option.get_snames()) add("-" + name);
    for (const std::string& name : option.get_lnames()) add("--" + name);
    if (names.empty()) add(option.get_name());
    const std::string value = GetValueName(option);
    return value.empty() ? names : names + " \\fI" + Escape(value) + "\\fR";
}

static void AppendOptions(std::ostream& page, const CLI::App& command)
{
    page << ".SH OPTIONS\n";
    for (const CLI::Option* pOption : command.get_options())
        page << ".TP\n" << FormatNames(*pOption) << "\n" << Escape(pOption->get_description()) << "\n";
}

static void AppendSynopsis(std::ostream& page, const CLI::App& command, bool hasSubcommands)
{
    page << ".SH SYNOPSIS\n\\fB" << GetCommandLine(command) << "\\fR ";
    if (hasSubcommands) page << "\\fICOMMAND\\fR ";
    page << "[\\fIOPTIONS\\fR]";
    for (const CLI::Option* pOption : command.get_options()) {
        if (IsNamedByDash(*pOption)) continue;
        const std::string name = "\\fI" + Escape(pOption->get_name()) + "\\fR";
        page << (pOption->get_required() ? " " + name : " [" + name + "]");
        if (pOption->get_items_expected_max() > 1) page << "...";
    }
    page << "\n";
}

static void AppendSubcommands(std::ostream& page, const std::vector<const CLI::App*>& subcommands)
{
    page << ".SH COMMANDS\n";
    for (const CLI::App* pCommand : subcommands)
        page << ".TP\n\\fB" << pCommand->get_name() << "\\fR\n" << Escape(pCommand->get_description()) << " (see \\fB"
             << Escape(GetPageName(*pCommand)) << "\\fR(1))\n";
}

// The examples stand as they are typed.
static void AppendFooter(std::ostream& page, const CLI::App& command)
{
    if (command.get_footer().empty()) return;
    page << ".SH EXAMPLES\n.nf\n" << Escape(command.get_footer()) << "\n.fi\n";
}

std::string FormatManPage(const CLI::App& command, const std::string& version)
{
    const std::string name = GetPageName(command);
    const std::vector<const CLI::App*> subcommands = command.get_subcommands([](const CLI::App*) { return true; });
    std::ostringstream page;
    page << ".TH " << ToCapitals(name) << " 1 \"\" \"norvane " << version << "\" \"Norvane\"\n"
         << ".SH NAME\n" << Escape(name) << " \\- " << Escape(command.get_description()) << "\n";
    AppendSynopsis(page, command, !subcommands.empty());
    AppendOptions(page, command);
    if (!subcommands.empty()) AppendSubcommands(page, subcommands);
    AppendFooter(page, command);
    page << ".SH EXIT STATUS\n.TP\n0\nAll is well.\n.TP\n1\nSomething was found: an error, an expectation that doesn't "
            "hold, a limit that is passed.\n.TP\n2\nThe command could not be carried out.\n";
    return page.str();
}
