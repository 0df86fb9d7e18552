#pragma once

#include <string>
#include <vector>

// Arguments with each "@file" replaced by the words of that file, which stand between blanks and line ends; quotes of
// either sort and backslashes hold them together. A file that can't be read leaves the argument as it is.
class CResponseFiles
{
public:
    // False, with the reason in m_Failure, if files name each other in a circle.
    bool Expand(const std::vector<std::string>& arguments);

    std::vector<std::string> m_Arguments;
    std::vector<std::string> m_Files;      // that were read, in their order
    std::string m_Failure;

private:
    bool Add(const std::string& argument, int depth);
};

// The words of such a text.
std::vector<std::string> SplitWords(std::string_view text);
