#include "norvane/dap/LaunchArguments.h"

#include <CLI/CLI.hpp>
#include <nlohmann/json.hpp>

#include <algorithm>
#include <filesystem>

using Json = nlohmann::json;

// What editors put beside the arguments of an adapter.
static bool IsEditorsOwn(const std::string& name)
{
    constexpr std::string_view names[] = {
        "type",           "request",      "name",         "noDebug",
        "preLaunchTask",  "postDebugTask", "presentation", "internalConsoleOptions",
        "debugServer",    "serverReadyAction", "console",  "suppressMultipleSessionView",
    };
    return name.starts_with("__") || std::find(std::begin(names), std::end(names), name) != std::end(names);
}

// "scanTime" becomes "--scan-time".
static std::string ToSwitch(const std::string& name)
{
    std::string text = "--";
    for (const char c : name) {
        const bool isCapital = c >= 'A' && c <= 'Z';
        if (isCapital) text += '-';
        text += isCapital ? static_cast<char>(c - 'A' + 'a') : c;
    }
    return text;
}

// Lists may be called by more than one: "tasks" is --task.
static CLI::Option* FindSwitch(CLI::App& app, const std::string& name)
{
    CLI::Option* pOption = app.get_option_no_throw(ToSwitch(name));
    if (!pOption && name.ends_with('s')) pOption = app.get_option_no_throw(ToSwitch(name.substr(0, name.size() - 1)));
    return pOption;
}

static bool IsScalar(const Json& value)
{
    return value.is_string() || value.is_number() || value.is_boolean();
}

static std::string ToText(const Json& value)
{
    if (value.is_boolean()) return value.get<bool>() ? "TRUE" : "FALSE";
    return value.is_string() ? value.get<std::string>() : value.dump();
}

// Adds the command line that the argument stands for; false if its value has another form than the switch takes.
static bool AddSwitch(const CLI::Option& option, const Json& value, std::vector<std::string>& line)
{
    const std::string name = option.get_name();
    const bool isFlag = option.get_items_expected_max() == 0;
    if (isFlag) {
        if (!value.is_boolean()) return false;
        if (value.get<bool>()) line.push_back(name);
        return true;
    }
    if (IsScalar(value)) {
        line.push_back(name + "=" + ToText(value));
        return true;
    }
    if (!value.is_structured()) return false;
    for (const auto& [key, element] : value.items()) {
        if (!IsScalar(element)) return false;
        line.push_back(name + "=" + (value.is_object() ? key + "=" : std::string()) + ToText(element));
    }
    return true;
}

static bool ReadProgram(const Json& value, std::vector<std::string>& files)
{
    if (value.is_string()) files.push_back(value.get<std::string>());
    if (!value.is_array()) return value.is_string();
    for (const Json& element : value) {
        if (!element.is_string()) return false;
        files.push_back(element.get<std::string>());
    }
    return true;
}

static bool ReadFlag(const Json& value, bool& flag)
{
    if (value.is_boolean()) flag = value.get<bool>();
    return value.is_boolean();
}

static bool EnterFolder(const Json& value)
{
    if (!value.is_string()) return false;
    std::error_code failure;
    std::filesystem::current_path(value.get<std::string>(), failure);
    return !failure;
}

bool ReadLaunchArguments(const Json& arguments, DebugSettings& settings, std::vector<std::string>& unknown,
                         std::string& error)
{
    CLI::App app;
    app.set_help_flag();
    AddRunSettings(app, settings.run);
    std::vector<std::string> line;
    std::vector<std::string> files;
    for (const auto& [name, value] : arguments.items()) {
        bool isFine = true;
        if (IsEditorsOwn(name)) continue;
        if (name == "program") isFine = ReadProgram(value, files);
        else if (name == "stopOnEntry") isFine = ReadFlag(value, settings.stopOnEntry);
        else if (name == "realTime") isFine = ReadFlag(value, settings.isRealTime);
        else if (name == "cwd") isFine = EnterFolder(value);
        else if (const CLI::Option* pOption = FindSwitch(app, name)) isFine = AddSwitch(*pOption, value, line);
        else unknown.push_back(name);
        if (isFine) continue;
        error = name + ": cannot be used: " + value.dump(-1, ' ', false, Json::error_handler_t::replace);
        return false;
    }
    if (files.empty()) {
        error = "program: expected the name of a listing (.asm), or of sources";
        return false;
    }
    line.push_back("--");
    line.insert(line.end(), files.begin(), files.end());
    std::reverse(line.begin(), line.end());   // as the parser takes it
    try {
        app.parse(std::move(line));
    } catch (const CLI::ParseError& failure) {
        error = failure.what();
        return false;
    }
    return true;
}
