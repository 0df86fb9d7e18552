#pragma once

#include <string>
#include <vector>

enum class Severity { Error, Warning, Note };

// One message or note of the compiler, taken apart.
struct Diagnostic
{
    Severity severity = Severity::Error;
    std::string id;                       // "E007", "N13"; empty: a line that no list knows
    std::string file;                     // as the user named it; empty: about no file
    int line = 0;                         // from 1; 0: no place
    int printedColumn = 0;                // as the compiler counts; only together with a line
    int column = 0;                       // of the byte in the line, from 1; 0: not known
    int endColumn = 0;                    // behind the last byte of what the message is about
    std::string text;                     // without place, severity and the blanks at its end
    std::string continuation;             // the second line of the few that have one
    std::vector<std::string> arguments;   // what fills the places of the message, from the first
    std::string hint;                     // what is probably meant; empty: nothing to say
    int cause = -1;                       // index of the message that this one follows from; -1: from none
};

// "error", "warning", "note"
const char* GetWord(Severity severity);
