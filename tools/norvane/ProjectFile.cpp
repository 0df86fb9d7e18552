#include "norvane/ProjectFile.h"

#include "norvane/Compilation.h"

#include <fmt/format.h>
#include <nlohmann/json.hpp>

#include <algorithm>
#include <filesystem>
#include <set>

namespace fs = std::filesystem;
using Json = nlohmann::ordered_json;

static bool HasWildcard(std::string_view text)
{
    return text.find_first_of("*?") != std::string_view::npos;
}

// A star may stand for nothing, too. Each is tried with as little as fits, the last one with more and more.
static bool FitsName(std::string_view pattern, std::string_view name)
{
    std::size_t p = 0, n = 0, star = std::string_view::npos, behindStar = 0;
    while (n < name.size()) {
        if (p < pattern.size() && (pattern[p] == '?' || pattern[p] == name[n]) && pattern[p] != '*') {
            ++p;
            ++n;
        } else if (p < pattern.size() && pattern[p] == '*') {
            star = p++;
            behindStar = n;
        } else if (star != std::string_view::npos) {
            p = star + 1;
            n = ++behindStar;
        } else {
            return false;
        }
    }
    while (p < pattern.size() && pattern[p] == '*') ++p;
    return p == pattern.size();
}

static std::string Join(const std::string& folder, const std::string& name)
{
    return folder.empty() ? name : (fs::path(folder) / name).string();
}

static std::vector<std::string> ListFolder(const std::string& folder)
{
    std::vector<std::string> names;
    std::error_code failure;
    const std::string place = folder.empty() ? "." : folder;
    for (fs::directory_iterator i(place, failure), end; !failure && i != end; i.increment(failure))
        names.push_back(i->path().filename().string());
    return names;
}

static std::vector<std::string> ListFoldersBelow(const std::string& folder)
{
    std::vector<std::string> folders{folder};
    std::error_code failure;
    const std::string place = folder.empty() ? "." : folder;
    for (fs::recursive_directory_iterator i(place, failure), end; !failure && i != end; i.increment(failure))
        if (i->is_directory(failure) && !i->is_symlink(failure))
            folders.push_back(folder.empty() ? fs::path(i->path()).lexically_relative(".").string() : i->path().string());
    return folders;
}

// What the places stand for one part of the pattern further.
static std::vector<std::string> Step(const std::vector<std::string>& places, const std::string& part)
{
    std::vector<std::string> next;
    for (const std::string& place : places) {
        if (part == "**") {
            const std::vector<std::string> below = ListFoldersBelow(place);
            next.insert(next.end(), below.begin(), below.end());
        } else if (!HasWildcard(part)) {
            next.push_back(Join(place, part));
        } else {
            for (const std::string& name : ListFolder(place))
                if (FitsName(part, name) && (name.front() != '.' || part.front() == '.')) next.push_back(Join(place, name));
        }
    }
    return next;
}

std::vector<std::string> ExpandGlob(const std::string& pattern)
{
    if (!HasWildcard(pattern)) return {pattern};
    std::vector<std::string> places{pattern.starts_with('/') ? "/" : ""};
    for (const fs::path& part : fs::path(pattern).relative_path()) places = Step(places, part.string());
    std::error_code failure;
    std::erase_if(places, [&](const std::string& place) { return !fs::is_regular_file(place, failure); });
    std::sort(places.begin(), places.end());
    places.erase(std::unique(places.begin(), places.end()), places.end());
    return places;
}

namespace
{

struct Target
{
    std::string name;   // empty: the only one
    std::string file;
};

// Takes the document apart; the first thing that is wrong ends it.
class Reader
{
public:
    explicit Reader(std::vector<ProjectProgram>& programs) : m_Programs(programs) {}
    bool Read(const Json& project);

    std::string m_Failure;

private:
    bool Fail(const std::string& reason) { return m_Failure = reason, false; }
    bool CheckMembers(const Json& object, std::initializer_list<std::string_view> known, const std::string& where);
    bool ReadText(const Json& object, const char* name, std::string& text, const std::string& where);
    bool ReadList(const Json& object, const char* name, std::vector<std::string>& list, const std::string& where);
    bool ReadTargets(const Json& object, std::vector<Target>& targets, const std::string& where);
    bool ReadProgram(const Json& object, std::size_t number);
    bool ReadSources(const Json& object, ProjectProgram& program, const std::string& where);
    bool AddFor(const Target& target, ProjectProgram program);

    std::vector<ProjectProgram>& m_Programs;
    std::vector<Target> m_Targets;
    std::vector<std::string> m_Options;
    std::string m_Output = "out";
    std::set<std::string> m_TakenOutputs;
};

}   // namespace

bool Reader::CheckMembers(const Json& object, std::initializer_list<std::string_view> known, const std::string& where)
{
    if (!object.is_object()) return Fail(where + " is no object");
    for (const auto& [name, value] : object.items())
        if (std::find(known.begin(), known.end(), name) == known.end())
            return Fail(fmt::format("{} has no member \"{}\"", where, name));
    return true;
}

bool Reader::ReadText(const Json& object, const char* name, std::string& text, const std::string& where)
{
    if (!object.contains(name)) return true;
    if (!object[name].is_string() || object[name].get_ref<const std::string&>().empty())
        return Fail(fmt::format("\"{}\" of {} is no text", name, where));
    text = object[name].get<std::string>();
    return true;
}

bool Reader::ReadList(const Json& object, const char* name, std::vector<std::string>& list, const std::string& where)
{
    if (!object.contains(name)) return true;
    const Json& value = object[name];
    const bool isList = value.is_array() && std::all_of(value.begin(), value.end(),
                                                        [](const Json& item) { return item.is_string(); });
    if (!isList) return Fail(fmt::format("\"{}\" of {} is no list of texts", name, where));
    for (const Json& item : value) list.push_back(item.get<std::string>());
    return true;
}

bool Reader::ReadTargets(const Json& object, std::vector<Target>& targets, const std::string& where)
{
    std::string single;
    if (!ReadText(object, "target", single, where)) return false;
    const bool hasSeveral = object.contains("targets");
    if (!single.empty() && hasSeveral) return Fail(where + " has both \"target\" and \"targets\"");
    if (!single.empty()) targets = {{"", single}};
    if (!hasSeveral) return true;
    targets.clear();
    if (!object["targets"].is_object()) return Fail(fmt::format("\"targets\" of {} is no object", where));
    for (const auto& [name, file] : object["targets"].items()) {
        if (!file.is_string()) return Fail(fmt::format("target \"{}\" of {} is no text", name, where));
        targets.push_back({name, file.get<std::string>()});
    }
    return true;
}

bool Reader::ReadSources(const Json& object, ProjectProgram& program, const std::string& where)
{
    std::vector<std::string> patterns;
    if (!ReadList(object, "sources", patterns, where)) return false;
    for (const std::string& pattern : patterns) {
        const std::vector<std::string> files = ExpandGlob(pattern);
        if (files.empty()) return Fail(fmt::format("\"{}\" of {} stands for no file", pattern, where));
        // A file that a pattern before has named isn't compiled twice.
        for (const std::string& file : files)
            if (std::find(program.sources.begin(), program.sources.end(), file) == program.sources.end())
                program.sources.push_back(file);
    }
    return !program.sources.empty() || Fail(where + " has no sources");
}

bool Reader::AddFor(const Target& target, ProjectProgram program)
{
    program.target = target.file;
    program.label = program.name + (target.name.empty() ? "" : " for " + target.name);
    program.output = Join(Join(m_Output, target.name), program.name);
    if (!m_TakenOutputs.insert(program.output).second)
        return Fail(fmt::format("two programs would write {}", program.output));
    m_Programs.push_back(std::move(program));
    return true;
}

bool Reader::ReadProgram(const Json& object, std::size_t number)
{
    std::string where = fmt::format("program {}", number);
    if (!CheckMembers(object, {"name", "sources", "target", "targets", "options"}, where)) return false;
    ProjectProgram program;
    program.options = m_Options;
    std::vector<std::string> options;
    if (!ReadText(object, "name", program.name, where) || !ReadList(object, "options", options, where)) return false;
    if (program.name.empty()) return Fail(where + " has no name");
    where = fmt::format("program \"{}\"", program.name);
    std::string reason;
    if (!SplitCompilerOptions(options, program.options, reason)) return Fail(where + ": " + reason);
    std::vector<Target> targets = m_Targets;
    if (!ReadTargets(object, targets, where) || !ReadSources(object, program, where)) return false;
    if (targets.empty()) return Fail(where + " has no target");
    return std::all_of(targets.begin(), targets.end(), [&](const Target& target) { return AddFor(target, program); });
}

bool Reader::Read(const Json& project)
{
    const std::string where = "the project";
    if (!CheckMembers(project, {"target", "targets", "options", "output", "programs"}, where)) return false;
    std::vector<std::string> options;
    if (!ReadTargets(project, m_Targets, where) || !ReadList(project, "options", options, where)) return false;
    if (!ReadText(project, "output", m_Output, where)) return false;
    std::string reason;
    if (!SplitCompilerOptions(options, m_Options, reason)) return Fail(where + ": " + reason);
    if (!project.contains("programs") || !project["programs"].is_array() || project["programs"].empty())
        return Fail("the project has no programs");
    std::size_t number = 0;
    for (const Json& program : project["programs"])
        if (!ReadProgram(program, ++number)) return false;
    return true;
}

bool CProjectFile::Parse(const std::string& text)
{
    const Json project = Json::parse(text, nullptr, /*allow_exceptions=*/false, /*ignore_comments=*/true);
    if (project.is_discarded()) {
        m_Failure = "it is no JSON";
        return false;
    }
    Reader reader(m_Programs);
    const bool isRead = reader.Read(project);
    m_Failure = reader.m_Failure;
    return isRead;
}
