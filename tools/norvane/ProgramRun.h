#pragma once

#include "norvane/Session.h"

#include <functional>
#include <memory>
#include <string>
#include <vector>

// What a run scan by scan needs, whoever steers it: the command "run" or a debugger.
struct RunSettings
{
    ProgramArguments program;
    MachineArguments machine;
    std::int64_t scans = 1;
    bool hasScans = false;               // given by the user
    std::vector<std::string> settings;   // NAME=VALUE, before the first scan
    std::vector<std::string> forced;     // before each scan
    std::string retainName;              // empty: retained variables aren't kept
    bool retainByName = false;
};

// Adds the program and the switches to a command.
void AddRunSettings(CLI::App& command, RunSettings& settings);

// A program that is ready to run, with the values that are set into it and the file of its retained variables.
class CProgramRun
{
public:
    explicit CProgramRun(const RunSettings& settings) : m_Settings(settings) {}

    // False, with the reason, if something of the settings can't be had. What the compiler noted is told to `note`.
    bool Prepare(const std::function<void(const std::string&)>& note, std::string& error);
    bool ApplySettings(std::string& error) { return Apply(m_Assigned, error); }   // behind the start-up
    bool ApplyForced(std::string& error) { return Apply(m_Forced, error); }       // in front of each scan
    bool SaveRetained(std::string& error) const;                                  // true if there is nothing to keep

    std::unique_ptr<CImage> m_pImage;
    std::unique_ptr<CMachine> m_pMachine;
    std::unique_ptr<CNames> m_pNames;
    std::int64_t m_ScanMicroseconds = 0;

private:
    struct Assignment
    {
        NamedObject object;
        MachineValue value;
    };

    bool ReadAssignments(const std::vector<std::string>& texts, std::vector<Assignment>& assignments,
                         std::string& error) const;
    bool Apply(const std::vector<Assignment>& assignments, std::string& error);
    bool LoadRetained(std::string& error);

    const RunSettings& m_Settings;
    std::vector<Assignment> m_Assigned;
    std::vector<Assignment> m_Forced;
};
