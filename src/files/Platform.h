#pragma once

#include <compare>
#include <cstddef>
#include <cstdint>
#include <ctime>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

// All that the system asks of the operating system about open files, names and signals; one source file for each
// platform. Names are bytes as the platform takes them, UTF-8 where it takes no bytes. What says "false" or -1 has changed nothing, unless told
// otherwise. None of these allocates memory where its names are C strings.

// ---- Open files, by descriptor

// -1 for a missing or unreadable file and for a directory.
int OpenForReading(const char* name);
// Creates or truncates the file, or opens or creates it where text is to be added at its end.
int OpenForWriting(const char* name, bool isAppending);
// -1 if anything of that name is there, a link that leads nowhere too. `mode` is exact: no mask is taken off.
int CreateExclusively(const char* name, unsigned mode);
// Bytes read, 0 at the end, -1 for a failure.
std::ptrdiff_t ReadBytes(int descriptor, char* bytes, std::size_t size);
// All or false: part of the bytes may have been written then.
bool WriteBytes(int descriptor, const char* bytes, std::size_t size);
bool IsEmptyFile(int descriptor);
bool CloseDescriptor(int descriptor);                        // false: what was written may not be whole

// ---- Names

bool IsAccessible(const char* name, bool forWriting);        // asks for the right only, opens nothing
bool UnlinkFile(const char* name);                           // also answers true where nothing is left of that name
bool RenameFile(const char* from, const char* to);           // over an earlier file, in one step
bool LinkFile(const char* name, const char* secondName);     // never over an earlier file
bool IsRegularFileItself(const char* name);                  // and no link to one
// The same for two names of one file, however they are spelt. None for what is missing, and for a device such as a
// terminal, which is no file that could be lost.
struct FileIdentity
{
    std::uint64_t device = 0;
    std::uint64_t number = 0;
    auto operator<=>(const FileIdentity&) const = default;
};
std::optional<FileIdentity> GetFileIdentity(const char* name);
bool SetFileMode(const char* name, unsigned mode);
unsigned GetFileMode(const char* name);                      // permission bits; those of a new file if there is none

// Where the name of the file begins in a path; the path's length if it ends with a separator.
std::size_t FindFileName(std::string_view path);
// Where temporary files go if nobody says otherwise, with a separator behind it.
std::string GetDefaultTemporaryDirectory();

// ---- Time

// Of the last change, in seconds since the start of 1970; none for what can't be read.
std::optional<std::int64_t> GetChangeTime(const char* name);
// False where it can't be computed.
bool ToLocalTime(std::int64_t seconds, std::tm& time);
bool ToUtc(std::int64_t seconds, std::tm& time);

// ---- The process

// Behind the program's own name. Each is a name, or whatever else was said, in the bytes that this program uses.
std::vector<std::string> GetArguments(int argc, char** argv);
int GetProcessNumber();
// Opens the null device wherever standard input, output or error is closed, so that no file that is opened later
// takes its number and gets what is printed.
void ReserveStandardDescriptors();
// What ends the process from outside (interrupt, termination, loss of the terminal) calls `cleanUp` first and then
// ends it as it would have. What the caller of the program ignores stays ignored. `cleanUp` runs inside a signal
// handler.
void CatchEndSignals(void (*cleanUp)());
// A write beyond the limit for a file's size, or to a pipe that nobody reads, fails like one to a full disk.
void IgnoreWriteSignals();

// Holds back those signals as long as it lives: for steps that must not be parted.
class HoldSignals
{
public:
    HoldSignals();
    ~HoldSignals();
    HoldSignals(const HoldSignals&) = delete;
    HoldSignals& operator=(const HoldSignals&) = delete;
};

// Keeps other runs of this program that ask for the same folder waiting as long as it lives, over all of the machine's
// processes. It leaves nothing in the folder. A lock that can't be had within five seconds, or not at all on that file
// system, is gone without: it keeps honest runs apart, and must not make one hang.
class FolderLock
{
public:
    explicit FolderLock(const char* folder);
    ~FolderLock();
    FolderLock(const FolderLock&) = delete;
    FolderLock& operator=(const FolderLock&) = delete;

private:
    std::intptr_t m_Lock = -1;                               // what the platform knows it by; -1: gone without
};
