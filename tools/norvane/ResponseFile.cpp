#include "norvane/ResponseFile.h"

#include "files/FileSystem.h"

std::vector<std::string> SplitWords(std::string_view text)
{
    std::vector<std::string> words;
    std::string word;
    bool isWord = false;
    char quote = '\0';
    for (std::size_t i = 0; i < text.size(); ++i) {
        const char c = text[i];
        const bool isBlank = c == ' ' || c == '\t' || c == '\n' || c == '\r';
        if (quote == '\0' && isBlank) {
            if (isWord) words.push_back(std::move(word));
            word.clear();
            isWord = false;
            continue;
        }
        isWord = true;
        if (c == '\\' && quote != '\'' && i + 1 < text.size()) word += text[++i];
        else if (quote == '\0' && (c == '"' || c == '\'')) quote = c;
        else if (c == quote) quote = '\0';
        else word += c;
    }
    if (isWord) words.push_back(std::move(word));
    return words;
}

bool CResponseFiles::Add(const std::string& argument, int depth)
{
    std::string text;
    if (argument.size() < 2 || argument.front() != '@' || !ReadWholeFile(argument.substr(1), text)) {
        m_Arguments.push_back(argument);
        return true;
    }
    constexpr int deepest = 20;
    if (depth == deepest) {
        m_Failure = argument + ": response files name each other";
        return false;
    }
    m_Files.push_back(argument.substr(1));
    for (const std::string& word : SplitWords(text))
        if (!Add(word, depth + 1)) return false;
    return true;
}

bool CResponseFiles::Expand(const std::vector<std::string>& arguments)
{
    for (const std::string& argument : arguments)
        if (!Add(argument, 0)) return false;
    return true;
}
