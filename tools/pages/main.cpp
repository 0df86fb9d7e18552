// norvane_pages FOLDER: writes norvane's manual pages and completions, all made of what its --help shows.

#include "norvane/Commands.h"
#include "pages/Completion.h"
#include "pages/ManPage.h"

#include <CLI/CLI.hpp>

#include <cstdio>
#include <fstream>

static bool WriteFile(const std::string& name, const std::string& text)
{
    std::ofstream file(name, std::ios::binary | std::ios::trunc);
    file << text;
    file.close();
    if (file) return true;
    std::fprintf(stderr, "norvane_pages: %s can't be written\n", name.c_str());
    return false;
}

int main(int argc, char** argv)
{
    if (argc != 2) {
        std::fputs("usage: norvane_pages FOLDER\n", stderr);
        return 2;
    }
    const std::string folder = std::string(argv[1]) + "/";
    std::function<int()> run;
    CLI::App app;
    DescribeProgram(app, run, {});
    bool isWritten = WriteFile(folder + "norvane.bash", FormatBashCompletion(app)) &&
                     WriteFile(folder + "_norvane", FormatZshCompletion(app)) &&
                     WriteFile(folder + "norvane.1", FormatManPage(app, NORVANE_VERSION));
    for (const CLI::App* pCommand : app.get_subcommands([](const CLI::App*) { return true; }))
        isWritten = isWritten &&
                    WriteFile(folder + GetPageName(*pCommand) + ".1", FormatManPage(*pCommand, NORVANE_VERSION));
    return isWritten ? 0 : 1;
}
