#pragma once

#include <string>

// The few questions and orders that the system has for the file system. None of them ever throws, and a
// directory is never taken for a file.

// The bytes of a file of any kind; false for a missing or unreadable one and for a directory, `bytes` being
// left as it was. The file is opened once and read to its end.
bool ReadWholeFile(const std::string& name, std::string& bytes);

bool FileExists(const std::string& name);         // anything of that name, a directory or a dead link too
bool IsDirectory(const std::string& name);
bool IsSpecialFile(const std::string& name);      // a device or a pipe: written as it is, never replaced
bool IsSameFile(const std::string& a, const std::string& b);   // both exist, however each name spells the way
// The same file, or what would be the same file once it is made.
bool IsSamePlace(const std::string& a, const std::string& b);
bool IsReadableFile(const std::string& name);     // it isn't touched
bool IsWritableFile(const std::string& name);     // exists and could be written to; it isn't touched
// The name of what a link leads to in the end, be it there or not; another name as it is.
std::string FollowLinks(const std::string& name);
// The folder part of a path: "." without one.
std::string GetFolder(const std::string& name);
// These two answer whether they succeeded.
bool RemoveFile(const std::string& name);
// Renames, over a file of the new name if there is one.
bool ReplaceFile(const std::string& from, const std::string& to);
