#pragma once

#include <string>

// Files that only the run needs, each under a name that no other run and no user has. They are removed when the
// run says so, and at the latest when the program ends: at its end, at a fatal fault, without memory, by a signal.

// Makes an empty file with a private name beside the place that `name` says; empty if that can't be done. It has
// these permission bits.
std::string MakeTemporaryFile(const std::string& name, unsigned mode);
// A file of just this name, which must not be there yet; a link of that name, wherever it leads, counts as there.
bool MakeTemporaryFileNamed(const std::string& name);
// A second name for an existing file, private like the others; empty if that can't be done.
std::string MakeTemporaryLink(const std::string& name);
// From now on the file is left alone, since it has become something else.
void ForgetTemporaryFile(const std::string& name);
// The first takes the place of the second, whose permission bits it gets; its own name is gone then. False where that
// can't be, as on another file system, or where one of them is no file of ours: both are still there.
bool MoveTemporaryFile(const std::string& name, const std::string& otherName);
// The file isn't removed but gets this name where it would have been, over an earlier file.
void KeepTemporaryFileAs(const std::string& name, const std::string& keptName);
// False if it is still there.
bool RemoveTemporaryFile(const std::string& name);
// All that are left. Allocates nothing and may run in a signal handler.
void RemoveTemporaryFiles();
// Where temporary files go that belong to no place of their own, with a separator behind it.
std::string GetTemporaryDirectory();
