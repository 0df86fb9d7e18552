#pragma once

#include <string>
#include <string_view>
#include <vector>

// What the compiler's lines are called: finds the identifier of a message by what it prints.
namespace MessageCatalogue
{

struct Match
{
    std::string_view id;                  // empty: no message of the list prints this
    std::vector<std::string> arguments;   // what stands in the places of the form
};

// The text as it is printed behind the place, "error: variable x not declared", blanks at its end included; a
// message of two lines as a whole.
Match Identify(std::string_view printed);

// Whether a message that begins with this line goes on in the next one.
bool GoesOn(std::string_view firstLine);

struct Entry
{
    std::string_view id;
    std::vector<std::string_view> forms;   // how the list gives them
};

// All messages, in the order of the list.
const std::vector<Entry>& GetEntries();

}   // namespace MessageCatalogue
