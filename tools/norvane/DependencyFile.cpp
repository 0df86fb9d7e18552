#include "norvane/DependencyFile.h"

// Backslashes in front of what needs one must be doubled; anywhere else they stand for themselves.
static std::string Escape(const std::string& name)
{
    std::string escaped;
    std::size_t backslashes = 0;
    for (const char c : name) {
        if (c == ' ' || c == '\t' || c == '#') escaped.append(backslashes + 1, '\\');
        else if (c == ':') escaped += '\\';
        else if (c == '$') escaped += '$';
        backslashes = c == '\\' ? backslashes + 1 : 0;
        escaped += c;
    }
    return escaped;
}

// What is made, a colon, and what is read, with a line for each file: "a.asm a.dbi: a.st" goes on behind a backslash.
std::string FormatDependencies(const std::vector<std::string>& made, const std::vector<std::string>& read)
{
    std::string text;
    for (const std::string& name : made) text += (text.empty() ? "" : " ") + Escape(name);
    text += ":";
    bool isFirst = true;
    for (const std::string& name : read) {
        text += (isFirst ? " " : " \\\n  ") + Escape(name);
        isFirst = false;
    }
    return text + "\n";
}
