#pragma once

#include "norvane/dap/DebugRun.h"

#include <nlohmann/json_fwd.hpp>

#include <string>
#include <vector>

// Reads the arguments of a launch. They are the switches of "norvane run" in the spelling of JSON ("scanTime" for
// --scan-time; lists, or objects for NAME=VALUE), and "program", "cwd", "stopOnEntry" and "realTime". Relative names
// of files count from "cwd", which becomes the folder of this process.
//
// False, with the reason, if one of them can't be used. Names that mean nothing here go to `unknown`.
bool ReadLaunchArguments(const nlohmann::json& arguments, DebugSettings& settings, std::vector<std::string>& unknown,
                         std::string& error);
