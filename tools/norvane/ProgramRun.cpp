#include "norvane/ProgramRun.h"

#include "machine/Retain.h"

#include <CLI/CLI.hpp>

void AddRunSettings(CLI::App& command, RunSettings& settings)
{
    command.add_option("PROGRAM", settings.program.files, "a compiled .asm, or sources in their order")->required();
    command.add_option("-i,--target", settings.program.target, "target description (needed for sources and %IX0.0)");
    command.add_option("--compiler-option", settings.program.compilerOptions, "for the sources, such as -o1")
        ->allow_extra_args(false);
    command.add_option("--scans", settings.scans, "how many scans (1)")
        ->check(CLI::NonNegativeNumber)
        ->each([&settings](const std::string&) { settings.hasScans = true; });
    command.add_option("--set", settings.settings, "NAME=VALUE before the first scan")->allow_extra_args(false);
    command.add_option("--force", settings.forced, "NAME=VALUE before each scan")->allow_extra_args(false);
    command.add_option("--retain", settings.retainName, "keep the retained variables in this file between runs");
    command.add_flag("--retain-by-name", settings.retainByName,
                     "carry over what still fits where the layout has changed");
    AddMachineArguments(command, settings.machine);
}

bool CProgramRun::ReadAssignments(const std::vector<std::string>& texts, std::vector<Assignment>& assignments,
                                  std::string& error) const
{
    for (const std::string& text : texts) {
        std::string name;
        std::string literal;
        if (!SplitAssignment(text, name, literal)) {
            error = text + ": expected NAME=VALUE";
            return false;
        }
        const std::optional<NamedObject> object = m_pNames->Find(name, error);
        if (!object) return false;
        Assignment assignment{*object, {}};
        if (!object->IsScalar()) error = "is no single value";
        if (object->IsScalar() && ParseValue(literal, object->pType->kind, assignment.value, error)) {
            assignments.push_back(assignment);
            continue;
        }
        error.insert(0, name + ": ");
        return false;
    }
    return true;
}

bool CProgramRun::Apply(const std::vector<Assignment>& assignments, std::string& error)
{
    for (const Assignment& assignment : assignments)
        if (!m_pNames->Write(*m_pMachine, assignment.object, assignment.value, error)) return false;
    return true;
}

bool CProgramRun::Prepare(const std::function<void(const std::string&)>& note, std::string& error)
{
    m_pImage = LoadProgram(m_Settings.program, note, error);
    if (!m_pImage) return false;
    m_pMachine = std::make_unique<CMachine>(*m_pImage, m_Settings.machine.options);
    m_pNames = std::make_unique<CNames>(*m_pImage);
    if (!ConfigureMachine(*m_pMachine, m_Settings.machine, error)) return false;
    m_ScanMicroseconds = *ParseTime(m_Settings.machine.scanTime);
    return ReadAssignments(m_Settings.settings, m_Assigned, error) &&
           ReadAssignments(m_Settings.forced, m_Forced, error) && LoadRetained(error);
}

bool CProgramRun::LoadRetained(std::string& error)
{
    if (m_Settings.retainName.empty()) return true;
    bool isFound = false;
    const CRetainFile retain(*m_pImage, *m_pNames);
    if (!retain.Load(m_Settings.retainName, m_Settings.retainByName, *m_pMachine, isFound, error)) return false;
    if (isFound) m_pMachine->SetWarmStart();
    return true;
}

bool CProgramRun::SaveRetained(std::string& error) const
{
    if (m_Settings.retainName.empty()) return true;
    return CRetainFile(*m_pImage, *m_pNames).Save(m_Settings.retainName, *m_pMachine, error);
}
