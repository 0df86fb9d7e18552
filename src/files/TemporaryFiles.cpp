#include "files/TemporaryFiles.h"

#include "files/FileSystem.h"
#include "files/Format.h"
#include "files/Platform.h"

#include <atomic>
#include <cstdlib>

namespace
{

// Entries are added in front and never taken out, so that a signal handler can walk them at any moment.
struct TemporaryFile
{
    std::string name;
    std::string keptName;                    // empty: to be removed
    std::atomic<bool> isOurs = false;        // it is there, and nobody else's
    TemporaryFile* pNext = nullptr;
};

std::atomic<TemporaryFile*> g_First = nullptr;
static_assert(std::atomic<TemporaryFile*>::is_always_lock_free && std::atomic<bool>::is_always_lock_free);

constexpr int g_MostAttempts = 10000;        // at a name that nobody has

}   // namespace

static TemporaryFile* Find(const std::string& name)
{
    for (TemporaryFile* pFile = g_First; pFile; pFile = pFile->pNext)
        if (pFile->isOurs && pFile->name == name) return pFile;
    return nullptr;
}

// The entry comes before the file and is told of it under the same hold: there is no moment at which a signal could
// leave the file behind, and none at which it could remove a file of somebody else.
template <class Make> static bool MakeHeld(const std::string& name, Make make)
{
    auto* pFile = new TemporaryFile{name, {}, false, g_First};
    g_First = pFile;
    const HoldSignals hold;
    pFile->isOurs = make(name.c_str());
    return pFile->isOurs;
}

static bool CreateEmpty(const char* name, unsigned mode)
{
    const int descriptor = CreateExclusively(name, mode);
    if (descriptor < 0) return false;
    if (CloseDescriptor(descriptor)) return true;
    UnlinkFile(name);
    return false;
}

template <class Make> static std::string MakePrivately(const std::string& name, Make make)
{
    // The last part of a path may have 255 bytes; a longer name than this is cut, to leave room for the ending.
    constexpr std::size_t longest = 230;
    const std::size_t start = FindFileName(name);
    const std::string begin = name.substr(0, start + longest);
    static int number = 0;
    for (int attempt = 0; attempt < g_MostAttempts; ++attempt) {
        std::string candidate = begin + FormatText(".tmp%d.%d", GetProcessNumber(), ++number);
        if (FileExists(candidate)) continue;
        if (MakeHeld(candidate, make)) return candidate;
        if (!FileExists(candidate)) return {};       // else somebody was faster
    }
    return {};
}

std::string MakeTemporaryFile(const std::string& name, unsigned mode)
{
    return MakePrivately(name, [mode](const char* candidate) { return CreateEmpty(candidate, mode); });
}

bool MakeTemporaryFileNamed(const std::string& name)
{
    return MakeHeld(name, [](const char* given) { return CreateEmpty(given, GetFileMode("")); });
}

std::string MakeTemporaryLink(const std::string& name)
{
    return MakePrivately(name, [&name](const char* candidate) { return LinkFile(name.c_str(), candidate); });
}

void ForgetTemporaryFile(const std::string& name)
{
    if (TemporaryFile* pFile = Find(name)) pFile->isOurs = false;
}

bool MoveTemporaryFile(const std::string& name, const std::string& otherName)
{
    const HoldSignals hold;
    TemporaryFile* pFile = Find(name);
    const char* szOther = otherName.c_str();
    if (!pFile || !Find(otherName) || !SetFileMode(name.c_str(), GetFileMode(szOther))) return false;
    if (!RenameFile(name.c_str(), szOther)) return false;
    pFile->isOurs = false;
    return true;
}

void KeepTemporaryFileAs(const std::string& name, const std::string& keptName)
{
    if (keptName == name) {
        ForgetTemporaryFile(name);
        return;
    }
    std::string copy = keptName;
    const HoldSignals hold;
    if (TemporaryFile* pFile = Find(name)) pFile->keptName.swap(copy);
}

// One failure may be of the moment; a second one is believed.
static bool RemoveStubbornly(const char* name)
{
    return UnlinkFile(name) || UnlinkFile(name);
}

static bool Settle(TemporaryFile& file)
{
    const bool isKept = !file.keptName.empty() && RenameFile(file.name.c_str(), file.keptName.c_str());
    if (!isKept && !RemoveStubbornly(file.name.c_str())) return false;
    file.isOurs = false;
    return true;
}

bool RemoveTemporaryFile(const std::string& name)
{
    const HoldSignals hold;
    TemporaryFile* pFile = Find(name);
    return !pFile || Settle(*pFile);
}

void RemoveTemporaryFiles()
{
    for (TemporaryFile* pFile = g_First; pFile; pFile = pFile->pNext)
        if (pFile->isOurs) Settle(*pFile);
}

std::string GetTemporaryDirectory()
{
    const char* szDirectory = std::getenv("TMPDIR");
    return szDirectory && *szDirectory && IsDirectory(szDirectory) ? std::string(szDirectory) + "/" : GetDefaultTemporaryDirectory();
}
