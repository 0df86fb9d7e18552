#pragma once

#include <string>
#include <vector>

// One program for one target, as a project asks for it.
struct ProjectProgram
{
    std::string label;                   // "pump", or "pump for small" where there are several targets
    std::string name;
    std::vector<std::string> sources;    // globs replaced by the files that they stand for
    std::string target;
    std::vector<std::string> options;    // of the compiler
    std::string output;                  // without ending
};

// norvane.json: what a project builds. Names in it, and in what is built, are as seen from its own folder.
//
//	{"target": "target.xml",              or "targets": {"small": "small.xml", "large": "large.xml"}
//	 "options": ["-o1"],
//	 "output": "out",                     the folder of all outputs; that of a target lies in it
//	 "programs": [{"name": "pump", "sources": ["lib/*.st", "pump.st"]}]}
//
// A program may have a target, targets and options of its own; its options come behind those of the project.
class CProjectFile
{
public:
    // False, with the reason in m_Failure, at a member that is unknown or of a wrong kind, too. The files are looked for
    // from the folder in which this program runs.
    bool Parse(const std::string& text);

    std::vector<ProjectProgram> m_Programs;
    std::string m_Failure;
};

// The files that the pattern stands for, sorted: "*" and "?" within a name, "**" for any folders. A name without them is
// itself, whether or not there is such a file.
std::vector<std::string> ExpandGlob(const std::string& pattern);
