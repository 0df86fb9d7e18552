#pragma once

#include <optional>
#include <string>
#include <vector>

class CNorvane;

extern std::string g_OutputFile;                     // of -o; "output.asm": to be derived from the last source
extern std::string g_TargetFile;                     // of -i; empty: not given
extern const std::string g_TemporaryOutput;          // what the assembler text under construction shows itself as

// The command line read into settings and a source list.
class CCommandLine
{
public:
    enum class Outcome { Ready, InvalidOption, ValueMissing };

    explicit CCommandLine(CNorvane& norvane) : m_Norvane(norvane) {}

    // Sets what each argument says, in order, and stops at the first one that is wrong, which is printed.
    Outcome Read(const std::vector<std::string>& arguments);

    // One slot for each argument, counted from 1, without a value for an option or its value. Slot 0 is the
    // firmware library's. The strings keep their place for the whole run: positions of messages point at them.
    std::vector<std::optional<std::string>> m_Sources;
    bool m_KeepTemporary = false;                    // -k

private:
    CNorvane& m_Norvane;
};

// Message 107 and the usage text, as a run without anything to compile prints them.
void PrintHelp();
