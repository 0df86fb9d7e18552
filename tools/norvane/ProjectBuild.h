#pragma once

#include "norvane/BuildSettings.h"
#include "norvane/ProjectFile.h"

#include <string>
#include <vector>

struct ProjectArguments
{
    std::string fileName;
    std::string dependencyName;                  // empty: none is written
    std::vector<std::string> responseFiles;
    int jobs = 0;                                // at a time; 0: one for each core
    BuildSettings settings;
};

// Builds all programs of a project, several at a time. What each has to say is printed in one piece, in the order of the
// project. Exit status 1 if one has an error, 2 if one can't be built at all.
int BuildProject(const ProjectArguments& arguments);
