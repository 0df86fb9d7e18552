#pragma once

#include <string>

// Files that only the run needs. They are removed when the run says so, and at the latest when the program
// ends, also where a fatal fault ends it.
void KeepTrackOfTemporaryFile(const std::string& name);
void ForgetTemporaryFile(const std::string& name);
void RemoveTemporaryFiles();
