#include "norvane/TestCommand.h"

#include "norvane/TableRun.h"

#include <CLI/CLI.hpp>
#include <fmt/format.h>

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <fstream>

namespace fs = std::filesystem;

namespace
{

struct TestArguments
{
    std::vector<std::string> paths;
    MachineArguments machine;
    std::string junitName;
    std::string coverageName;
};

struct TableOutcome
{
    std::string name;
    CTableRun::Result result = CTableRun::Result::Unable;
    std::vector<std::string> failures;
};

}   // namespace

// Tables themselves, and of folders all .csv files below them, sorted.
static bool CollectTables(const std::vector<std::string>& paths, std::vector<std::string>& tables)
{
    for (const std::string& path : paths) {
        std::error_code failure;
        if (!fs::is_directory(path, failure)) {
            tables.push_back(path);
            continue;
        }
        std::vector<std::string> found;
        for (fs::recursive_directory_iterator i(path, failure), end; !failure && i != end; i.increment(failure))
            if (i->path().extension() == ".csv" && i->is_regular_file(failure)) found.push_back(i->path().string());
        if (failure) {
            fmt::print(stderr, "norvane: {}: cannot be read\n", path);
            return false;
        }
        std::sort(found.begin(), found.end());
        tables.insert(tables.end(), found.begin(), found.end());
    }
    if (!tables.empty()) return true;
    fmt::print(stderr, "norvane: there are no tables\n");
    return false;
}

static std::string EscapeXml(const std::string& text)
{
    std::string escaped;
    for (const char c : text) {
        if (c == '&') escaped += "&amp;";
        else if (c == '<') escaped += "&lt;";
        else if (c == '>') escaped += "&gt;";
        else if (c == '"') escaped += "&quot;";
        else if (static_cast<unsigned char>(c) >= 0x80) escaped += fmt::format("&#{};", static_cast<unsigned char>(c));
        else if (c == '\n' || c == '\t' || static_cast<unsigned char>(c) >= 0x20) escaped += c;
    }
    return escaped;
}

static bool WriteFile(const std::string& name, const std::string& text)
{
    std::ofstream file(name, std::ios::binary);
    file << text;
    file.close();
    if (file) return true;
    fmt::print(stderr, "norvane: {}: cannot be written\n", name);
    return false;
}

static std::string MakeJunit(const std::vector<TableOutcome>& outcomes)
{
    std::size_t failed = 0;
    std::size_t unable = 0;
    std::string cases;
    for (const TableOutcome& outcome : outcomes) {
        cases += fmt::format("  <testcase name=\"{}\" classname=\"norvane\"", EscapeXml(outcome.name));
        if (outcome.result == CTableRun::Result::Passed) {
            cases += "/>\n";
            continue;
        }
        const bool isFailure = outcome.result == CTableRun::Result::Failed;
        ++(isFailure ? failed : unable);
        std::string text;
        for (const std::string& failure : outcome.failures) text += EscapeXml(failure) + "\n";
        const char* element = isFailure ? "failure" : "error";
        cases += fmt::format(">\n    <{0} message=\"{1}\">{2}</{0}>\n  </testcase>\n", element,
                             EscapeXml(outcome.failures.empty() ? "" : outcome.failures.front()), text);
    }
    return fmt::format("<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
                       "<testsuite name=\"norvane\" tests=\"{}\" failures=\"{}\" errors=\"{}\">\n{}</testsuite>\n",
                       outcomes.size(), failed, unable, cases);
}

// lcov's format: a record for each source.
static std::string MakeCoverage(const LineCoverage& coverage)
{
    std::string text;
    for (const auto& [file, lines] : coverage) {
        std::error_code failure;
        text += fmt::format("TN:\nSF:{}\n", fs::absolute(file, failure).lexically_normal().string());
        std::size_t hit = 0;
        for (const auto& [line, count] : lines) {
            text += fmt::format("DA:{},{}\n", line, count);
            if (count > 0) ++hit;
        }
        text += fmt::format("LF:{}\nLH:{}\nend_of_record\n", lines.size(), hit);
    }
    return text;
}

static void PrintCoverage(const LineCoverage& coverage)
{
    std::size_t allLines = 0;
    std::size_t allHit = 0;
    for (const auto& [file, lines] : coverage) {
        const std::size_t hit = static_cast<std::size_t>(
            std::count_if(lines.begin(), lines.end(), [](const auto& line) { return line.second > 0; }));
        fmt::print("{}: {} of {} lines ran", file, hit, lines.size());
        std::string missed;
        for (const auto& [line, count] : lines)
            if (count == 0) missed += (missed.empty() ? "" : ", ") + std::to_string(line);
        fmt::print("{}{}\n", missed.empty() ? "" : "; not ", missed);
        allLines += lines.size();
        allHit += hit;
    }
    fmt::print("{} of {} lines ran\n", allHit, allLines);
}

static TableOutcome RunTable(const std::string& name, const TestArguments& arguments, LineCoverage* pCoverage)
{
    TableOutcome outcome;
    outcome.name = name;
    CTestTable table;
    std::string error;
    if (!table.Load(name, error)) {
        outcome.failures.push_back(error);
        fmt::print("{}: cannot run\n  {}\n", name, error);
        return outcome;
    }
    CTableRun run(table, arguments.machine);
    outcome.result = run.Run(pCoverage);
    outcome.failures = run.m_Failures;
    if (outcome.result == CTableRun::Result::Passed)
        fmt::print("{}: passed ({} scans, {} expectations)\n", name, run.m_Scans, run.m_Checks);
    else fmt::print("{}: {}\n", name, outcome.result == CTableRun::Result::Failed ? "FAILED" : "cannot run");
    for (const std::string& failure : run.m_Failures) fmt::print("  {}\n", failure);
    return outcome;
}

static int RunTests(const TestArguments& arguments)
{
    std::vector<std::string> tables;
    if (!CollectTables(arguments.paths, tables)) return g_ExitUnable;
    LineCoverage coverage;
    LineCoverage* pCoverage = arguments.coverageName.empty() ? nullptr : &coverage;
    std::vector<TableOutcome> outcomes;
    int status = g_ExitFine;
    for (const std::string& name : tables) {
        outcomes.push_back(RunTable(name, arguments, pCoverage));
        std::fflush(stdout);
        const CTableRun::Result result = outcomes.back().result;
        if (result == CTableRun::Result::Unable) status = g_ExitUnable;
        if (result == CTableRun::Result::Failed) status = std::max(status, g_ExitFailed);
    }
    if (pCoverage) {
        PrintCoverage(coverage);
        if (!WriteFile(arguments.coverageName, MakeCoverage(coverage))) status = g_ExitUnable;
    }
    if (!arguments.junitName.empty() && !WriteFile(arguments.junitName, MakeJunit(outcomes))) status = g_ExitUnable;
    return status;
}

void AddTestCommand(CLI::App& app, std::function<int()>& run)
{
    auto pArguments = std::make_shared<TestArguments>();
    TestArguments& arguments = *pArguments;
    CLI::App* pCommand = app.add_subcommand("test", "run test tables (CSV)");
    pCommand->add_option("PATH", arguments.paths, "tables, or folders of them")->required();
    pCommand->add_option("--junit", arguments.junitName, "write the results in JUnit's format");
    pCommand->add_option("--coverage", arguments.coverageName, "write which lines ran in lcov's format");
    AddMachineArguments(*pCommand, arguments.machine);
    pCommand->callback([pArguments, &run] { run = [pArguments] { return RunTests(*pArguments); }; });
}
