// Compiles the examples of the page about notes. A section "## N5: ..." is about one note and holds fenced examples:
//
//   ```st draws options=-o1      a source that draws the note, and no other
//   ```st quiet                  a close one that draws none
//   ```xml target                the target description for the examples below it in the section; without one the
//                                compile takes the cases' own
//
// Sources and target description are named main.st and target.xml; what stands in front of a line "--- next source" is a
// source of its own, first.st. Behind "options=" stand options divided by commas.
// Every note that the compiler knows must have a section with an example of each kind.

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>
#include <map>
#include <set>
#include <sstream>
#include <string>
#include <vector>

#include <sys/wait.h>

namespace fs = std::filesystem;

static const std::set<int> g_KnownNotes = {
#define NOTE(number, name, text) number,
#include "frontend/Notes.def"
#undef NOTE
};

struct Example
{
    int number = 0;
    int line = 0;              // of the fence in the page
    std::string kind;          // "draws" or "quiet"
    std::string options;
    std::string source;
    std::string target;        // empty: the cases' own
};

static std::string ReadFile(const fs::path& path)
{
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

static void WriteFile(const fs::path& path, const std::string& text)
{
    std::ofstream(path, std::ios::binary) << text;
}

// "## N12: ..." gives 12, any other heading 0.
static int GetNoteNumber(const std::string& heading)
{
    const std::string start = "## N";
    return heading.compare(0, start.size(), start) == 0 ? std::atoi(heading.c_str() + start.size()) : 0;
}

static std::vector<Example> ReadExamples(const fs::path& page)
{
    std::vector<Example> examples;
    std::ifstream file(page);
    std::string target;
    std::string line;
    int number = 0;
    for (int count = 1; std::getline(file, line); ++count) {
        if (line.compare(0, 3, "## ") == 0) {
            number = GetNoteNumber(line);
            target.clear();
        }
        if (line.compare(0, 3, "```") != 0) continue;
        std::istringstream info(line.substr(3));
        std::string language, kind, option;
        info >> language >> kind >> option;
        const int fence = count;
        std::string text;
        for (++count; std::getline(file, line) && line != "```"; ++count) text += line + "\n";
        if (language == "xml" && kind == "target") target = text;
        if (kind != "draws" && kind != "quiet") continue;
        const std::string mark = "options=";
        if (option.compare(0, mark.size(), mark) == 0) option.erase(0, mark.size());
        for (char& c : option)
            if (c == ',') c = ' ';
        examples.push_back({number, fence, kind, option, text, target});
    }
    return examples;
}

// What stands wrong with the example; empty if nothing does.
static std::string Check(const Example& example, const fs::path& compiler, const fs::path& scratch)
{
    fs::remove_all(scratch);
    fs::create_directories(scratch);
    const std::string divider = "--- next source\n";
    const std::size_t end = example.source.find(divider);
    const bool hasTwo = end != std::string::npos;
    if (hasTwo) WriteFile(scratch / "first.st", example.source.substr(0, end));
    WriteFile(scratch / "main.st", hasTwo ? example.source.substr(end + divider.size()) : example.source);
    WriteFile(scratch / "target.xml", example.target.empty() ? ReadFile(DEFAULT_TARGET) : example.target);
    const std::string sources = hasTwo ? "first.st main.st" : "main.st";
    const std::string command = "cd '" + scratch.string() + "' && '" + compiler.string() + "' " + sources +
                                " -i target.xml " + example.options + " >.stdout 2>.stderr";
    const int result = std::system(command.c_str());
    if (!WIFEXITED(result) || WEXITSTATUS(result) != 0 || !fs::exists(scratch / "main.asm"))
        return "doesn't compile:\n" + ReadFile(scratch / ".stdout") + ReadFile(scratch / ".stderr");

    const std::string printed = ReadFile(scratch / ".stderr");
    const std::string own = " : note N" + std::to_string(example.number) + ": ";
    std::istringstream lines(printed);
    bool isDrawn = false;
    for (std::string line; std::getline(lines, line);) {
        if (line.find(own) == std::string::npos) return "draws something else: " + line;
        isDrawn = true;
    }
    if (isDrawn != (example.kind == "draws")) return isDrawn ? "draws the note:\n" + printed : "doesn't draw the note";
    return {};
}

int main(int argc, char** argv)
{
    if (argc != 4) {
        std::cerr << "usage: notes_page COMPILER PAGE SCRATCH_FOLDER\n";
        return 2;
    }
    int failures = 0;
    std::map<int, std::set<std::string>> kinds;
    for (const Example& example : ReadExamples(argv[2])) {
        kinds[example.number].insert(example.kind);
        const std::string fault = g_KnownNotes.count(example.number) == 0
                                      ? "stands in no section of a note that the compiler knows"
                                      : Check(example, fs::absolute(argv[1]), fs::absolute(argv[3]));
        if (fault.empty()) continue;
        ++failures;
        std::cout << "N" << example.number << ", the example in line " << example.line << " " << fault << "\n";
    }
    for (const int number : g_KnownNotes) {
        if (kinds[number].size() == 2) continue;
        ++failures;
        std::cout << "N" << number << " lacks an example that draws it or one that doesn't\n";
    }
    return failures == 0 ? 0 : 1;
}
