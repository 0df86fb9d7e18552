#include "norvane/CompileCommands.h"

#include "norvane/BuildSettings.h"
#include "norvane/DependencyFile.h"
#include "norvane/ProgramBuild.h"
#include "norvane/ProjectBuild.h"
#include "norvane/Session.h"

#include <CLI/CLI.hpp>
#include <fmt/format.h>

#include <cstdio>
#include <memory>

namespace
{

struct CompileArguments
{
    std::vector<std::string> sources;
    std::string target;
    std::vector<std::string> compilerOptions;
    std::string outputName;
    std::string programName;
    std::string dependencyName;
    std::string projectName;
    int jobs = 0;
    BuildSettings settings;
    std::vector<std::string> responseFiles;
};

}   // namespace

static int Refuse(const std::string& reason)
{
    fmt::print(stderr, "norvane: {}\n", reason);
    return g_ExitUnable;
}

static bool MakeRequest(const CompileArguments& arguments, const std::string& name, CompileRequest& request,
                        std::string& error)
{
    request.sources = arguments.sources;
    request.target = arguments.target;
    request.name = arguments.programName.empty() ? name : arguments.programName;
    if (request.target.empty()) error = "-i names the target description; there is none";
    else if (request.sources.empty()) error = "there are no sources";
    return error.empty() && SplitCompilerOptions(arguments.compilerOptions, request.options, error);
}

// Compiles and shows what was found; false if the user must be told why that can't be.
static bool CompileAndShow(const CompileArguments& arguments, const std::string& name, bool hasSummary,
                           CCompilation& compilation, std::string& error)
{
    CompileRequest request;
    if (!MakeRequest(arguments, name, request, error)) return false;
    if (!compilation.Run(request)) {
        error = compilation.m_Failure;
        return false;
    }
    ApplyNotePolicy(compilation.m_Findings, arguments.settings.notes);
    PrintFindings(compilation.m_Findings, arguments.settings, hasSummary);
    return true;
}

static int Check(const CompileArguments& arguments)
{
    CCompilation compilation;
    std::string error;
    if (!CompileAndShow(arguments, "check", true, compilation, error)) return Refuse(error);
    return arguments.settings.IsAccepted(compilation.m_Findings) ? g_ExitFine : g_ExitFailed;
}

static bool WriteDependencies(const CompileArguments& arguments, const OutputNames& names, std::string& error)
{
    if (arguments.dependencyName.empty()) return true;
    std::vector<std::string> read = arguments.sources;
    read.push_back(arguments.target);
    read.insert(read.end(), arguments.responseFiles.begin(), arguments.responseFiles.end());
    return WriteTextFile(arguments.dependencyName, FormatDependencies({names.text, names.debug}, read), error);
}

// Everything about its programs stands in the project.
static int BuildAll(const CompileArguments& arguments)
{
    const bool hasProgram = !arguments.sources.empty() || !arguments.target.empty() || !arguments.outputName.empty() ||
                            !arguments.programName.empty() || !arguments.compilerOptions.empty();
    if (hasProgram) return Refuse("--project goes without sources, -i, -o, --name and --compiler-option");
    return BuildProject({arguments.projectName, arguments.dependencyName, arguments.responseFiles, arguments.jobs,
                         arguments.settings});
}

static int Build(const CompileArguments& arguments)
{
    if (!arguments.projectName.empty()) return BuildAll(arguments);
    const OutputNames names(arguments.outputName);
    if (names.program.empty()) return Refuse("-o names the outputs; there is no name");
    CCompilation compilation;
    std::string error;
    if (!CompileAndShow(arguments, names.program, false, compilation, error)) return Refuse(error);
    if (!arguments.settings.IsAccepted(compilation.m_Findings)) return g_ExitFailed;
    if (!PlaceOutputs(compilation, names, error) || !WriteDependencies(arguments, names, error)) return Refuse(error);
    return g_ExitFine;
}

static void AddCommonArguments(CLI::App& command, CompileArguments& arguments)
{
    command.add_option("SOURCE", arguments.sources, "sources, in the order in which they are compiled");
    command.add_option("-i,--target", arguments.target, "target description");
    command.add_option("--compiler-option", arguments.compilerOptions, "such as -o1 or \"-rs 512\"")
        ->allow_extra_args(false);
    command.add_option("--name", arguments.programName, "of the program in the outputs");
    AddBuildSettings(command, arguments.settings);
}

void AddCheckCommand(CLI::App& app, std::function<int()>& run)
{
    auto pArguments = std::make_shared<CompileArguments>();
    CLI::App* pCommand = app.add_subcommand("check", "compile and explain what is wrong");
    AddCommonArguments(*pCommand, *pArguments);
    pCommand->callback([pArguments, &run] { run = [pArguments] { return Check(*pArguments); }; });
}

void AddBuildCommand(CLI::App& app, std::function<int()>& run, const std::vector<std::string>& responseFiles)
{
    auto pArguments = std::make_shared<CompileArguments>();
    pArguments->responseFiles = responseFiles;
    CLI::App* pCommand = app.add_subcommand("build", "compile, and write the outputs if nothing is wrong");
    AddCommonArguments(*pCommand, *pArguments);
    pCommand->add_option("-o,--output", pArguments->outputName, "name of the outputs: NAME.asm and NAME.dbi");
    pCommand->add_option("--depfile", pArguments->dependencyName, "write what the outputs are made of, for make and ninja");
    pCommand->add_option("--project", pArguments->projectName, "build all programs of this file (norvane.json)");
    pCommand->add_option("-j,--jobs", pArguments->jobs, "programs of a project at a time (all cores)")
        ->check(CLI::Range(1, 1024));
    pCommand->callback([pArguments, &run] { run = [pArguments] { return Build(*pArguments); }; });
}
