#include "pages/Completion.h"

#include <CLI/CLI.hpp>

#include <sstream>
#include <vector>

static std::vector<const CLI::App*> GetSubcommands(const CLI::App& program)
{
    return program.get_subcommands([](const CLI::App*) { return true; });
}

static std::vector<std::string> GetDashedNames(const CLI::Option& option)
{
    std::vector<std::string> names;
    for (const std::string& name : option.get_snames()) names.push_back("-" + name);
    for (const std::string& name : option.get_lnames()) names.push_back("--" + name);
    return names;
}

static std::string JoinOptions(const CLI::App& command)
{
    std::string joined;
    for (const CLI::Option* pOption : command.get_options())
        for (const std::string& name : GetDashedNames(*pOption)) joined += (joined.empty() ? "" : " ") + name;
    return joined;
}

std::string FormatBashCompletion(const CLI::App& program)
{
    std::ostringstream script;
    std::string names;
    for (const CLI::App* pCommand : GetSubcommands(program)) names += pCommand->get_name() + " ";
    script << "# Completion of norvane for bash, made from its --help.\n"
              "_norvane()\n{\n"
              "    local word=${COMP_WORDS[COMP_CWORD]} options=\n"
              "    COMPREPLY=()\n"
              "    if [ \"$COMP_CWORD\" -eq 1 ]; then\n"
              "        COMPREPLY=($(compgen -W '" << names << JoinOptions(program) << "' -- \"$word\"))\n"
              "        return\n"
              "    fi\n"
              "    case ${COMP_WORDS[1]} in\n";
    for (const CLI::App* pCommand : GetSubcommands(program))
        script << "        " << pCommand->get_name() << ") options='" << JoinOptions(*pCommand) << "' ;;\n";
    script << "    esac\n"
              "    if [[ $word == -* ]]; then\n"
              "        COMPREPLY=($(compgen -W \"$options\" -- \"$word\"))\n"
              "    else\n"
              "        COMPREPLY=($(compgen -f -- \"$word\"))\n"
              "    fi\n"
              "}\n"
              "complete -o filenames -F _norvane norvane\n";
    return script.str();
}

// Inside of single quotes, and in front of the bracket and the colon that end a description.
static std::string QuoteForZsh(const std::string& text)
{
    std::string quoted;
    for (const char c : text) {
        if (c == '\'') quoted += "'\\''";
        else if (c == '[' || c == ']' || c == ':') quoted += std::string("\\") + c;
        else quoted += c == '\n' ? ' ' : c;
    }
    return quoted;
}

static void AppendZshOptions(std::ostream& script, const CLI::App& command)
{
    for (const CLI::Option* pOption : command.get_options())
        for (const std::string& name : GetDashedNames(*pOption))
            script << " \\\n                '" << name << "[" << QuoteForZsh(pOption->get_description()) << "]"
                   << (pOption->get_items_expected_max() > 0 ? ":value:_files'" : "'");
}

std::string FormatZshCompletion(const CLI::App& program)
{
    std::ostringstream script;
    script << "#compdef norvane\n"
              "# Completion of norvane for zsh, made from its --help.\n"
              "_norvane()\n{\n"
              "    local -a commands\n"
              "    commands=(\n";
    for (const CLI::App* pCommand : GetSubcommands(program))
        script << "        '" << pCommand->get_name() << ":" << QuoteForZsh(pCommand->get_description()) << "'\n";
    script << "    )\n"
              "    if (( CURRENT == 2 )); then\n"
              "        _describe command commands\n"
              "        return\n"
              "    fi\n"
              "    case ${words[2]} in\n";
    for (const CLI::App* pCommand : GetSubcommands(program)) {
        script << "        " << pCommand->get_name() << ")\n"
               << "            shift words; (( CURRENT-- ))\n"
               << "            _arguments";
        AppendZshOptions(script, *pCommand);
        script << " \\\n                '*:file:_files' ;;\n";
    }
    script << "    esac\n"
              "}\n"
              "_norvane \"$@\"\n";
    return script.str();
}
