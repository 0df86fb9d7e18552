#include "driver/CommandLine.h"

#include "files/Format.h"
#include "files/Print.h"
#include "frontend/MessageTable.h"
#include "semantics/Norvane.h"

#include <string_view>

std::string g_OutputFile = "output.asm";
std::string g_TargetFile;
const std::string g_TemporaryOutput = "output.asm";

namespace
{

constexpr int g_BannerMessage = 107;
constexpr int g_UsageMessage = 66;
constexpr int g_OneNameMessage = 108;
constexpr int g_InvalidOptionMessage = 109;

using Setter = void (*)(CNorvane&, CCommandLine&, const std::string& value);

struct OptionRow
{
    std::string_view text;
    bool takesValue;
    Setter set;
};

// Compared from the top, whole and in any case.
constexpr OptionRow g_Options[] = {
    {"-o", true, [](CNorvane&, CCommandLine&, const std::string& value) { g_OutputFile = value; }},
    {"-n", true, [](CNorvane& n, CCommandLine&, const std::string& value) { n.m_ProgramName = value; }},
    {"-v", true, [](CNorvane& n, CCommandLine&, const std::string& value) { n.m_ProgramVersion = ToInt(value); }},
    {"-i", true, [](CNorvane&, CCommandLine&, const std::string& value) { g_TargetFile = value; }},
    {"-l", true, [](CNorvane& n, CCommandLine&, const std::string& value) { n.m_LibraryFile = value; }},
    {"-o1", false, [](CNorvane& n, CCommandLine&, const std::string&) { n.m_Memory.m_OptimiseMemory = true; }},
    {"-bs0", false, [](CNorvane& n, CCommandLine&, const std::string&) { n.m_BooleanShortcut = false; }},
    {"-fbo0", false, [](CNorvane& n, CCommandLine&, const std::string&) { n.m_FbOptimisation = false; }},
    {"-cso0", false, [](CNorvane& n, CCommandLine&, const std::string&) { n.m_ConstantSubstitution = false; }},
    {"-b", false, [](CNorvane& n, CCommandLine&, const std::string&) { n.m_Memory.m_CompatibleLayout = true; }},
    {"-x", false, [](CNorvane& n, CCommandLine&, const std::string&) { n.m_DumpTree = true; }},
    {"-k", false, [](CNorvane&, CCommandLine& c, const std::string&) { c.m_KeepTemporary = true; }},
    {"-rs", true, [](CNorvane& n, CCommandLine&, const std::string& value) { n.m_ReturnStackSize = ToInt(value); }},
    {"-ps", true, [](CNorvane& n, CCommandLine&, const std::string& value) { n.m_ParameterStackSize = ToInt(value); }},
};

const OptionRow* FindOption(std::string_view argument)
{
    for (const OptionRow& row : g_Options)
        if (EqualIgnoringCase(argument, row.text)) return &row;
    return nullptr;
}

}   // namespace

CCommandLine::Outcome CCommandLine::Read(const std::vector<std::string>& arguments)
{
    m_Sources.assign(arguments.size() + 1, {});
    for (std::size_t i = 0; i < arguments.size(); ++i) {
        const std::string& argument = arguments[i];
        const OptionRow* pOption = FindOption(argument);
        if (!pOption && argument.starts_with('-')) {
            Print(GetMessage(g_InvalidOptionMessage));
            return Outcome::InvalidOption;
        }
        if (!pOption) {
            m_Sources[i + 1] = argument;
            continue;
        }
        if (!pOption->takesValue) {
            pOption->set(m_Norvane, *this, {});
            continue;
        }
        if (i + 1 < arguments.size()) {
            pOption->set(m_Norvane, *this, arguments[++i]);   // whatever it looks like
            continue;
        }
        // Kept (scripts): -l without its file shows itself as -i, and alone of all options it doesn't end the run.
        const bool isLibrary = pOption->text == "-l";
        Print(isLibrary ? "-i" : pOption->text);
        Print(GetMessage(g_OneNameMessage));
        if (!isLibrary) return Outcome::ValueMissing;
    }
    return Outcome::Ready;
}

void PrintHelp()
{
    Print(GetMessage(g_BannerMessage));
    Print(GetMessage(g_UsageMessage));
}
