#include "files/Platform.h"

#include <cstdio>
#include <cstdlib>
#include <cwchar>
#include <string>

#include <fcntl.h>
#include <io.h>
#include <share.h>
#include <sys/stat.h>
#include <windows.h>

// Names are UTF-8 everywhere in this program and UTF-16 for the system.

// A name for one call of the system. It takes no memory, so that cleaning up works when there is none left.
class WideName
{
public:
    explicit WideName(const char* name)
    {
        // What doesn't fit is the name of no file; the empty name isn't either.
        if (MultiByteToWideChar(CP_UTF8, 0, name, -1, m_Text, g_Longest) == 0) m_Text[0] = L'\0';
    }
    operator const wchar_t*() const { return m_Text; }

private:
    static constexpr int g_Longest = 32'768;   // the system's own limit, in UTF-16 units
    wchar_t m_Text[g_Longest];
};

static std::string FromWide(const wchar_t* name)
{
    const int length = WideCharToMultiByte(CP_UTF8, 0, name, -1, nullptr, 0, nullptr, nullptr);
    std::string bytes(length > 0 ? static_cast<std::size_t>(length) : 1, '\0');
    if (length > 0) WideCharToMultiByte(CP_UTF8, 0, name, -1, bytes.data(), length, nullptr, nullptr);
    bytes.pop_back();
    return bytes;
}

// ---- Open files

static int Open(const char* name, int flags)
{
    // As elsewhere: whoever else has the file open is not in the way.
    return _wsopen(WideName(name), flags | _O_BINARY | _O_NOINHERIT, _SH_DENYNO, _S_IREAD | _S_IWRITE);
}

int OpenForReading(const char* name)
{
    return Open(name, _O_RDONLY);
}

int OpenForWriting(const char* name, bool isAppending)
{
    return Open(name, _O_WRONLY | _O_CREAT | (isAppending ? _O_APPEND : _O_TRUNC));
}

int CreateExclusively(const char* name, unsigned mode)
{
    const int descriptor = Open(name, _O_WRONLY | _O_CREAT | _O_EXCL);
    if (descriptor < 0 || SetFileMode(name, mode)) return descriptor;
    _close(descriptor);
    UnlinkFile(name);
    return -1;
}

// The system counts the bytes of one call in an int.
static unsigned LimitCount(std::size_t size)
{
    constexpr std::size_t most = 1 << 30;
    return static_cast<unsigned>(size < most ? size : most);
}

std::ptrdiff_t ReadBytes(int descriptor, char* bytes, std::size_t size)
{
    return _read(descriptor, bytes, LimitCount(size));
}

bool WriteBytes(int descriptor, const char* bytes, std::size_t size)
{
    while (size > 0) {
        const int written = _write(descriptor, bytes, LimitCount(size));
        if (written <= 0) return false;
        bytes += written;
        size -= static_cast<std::size_t>(written);
    }
    return true;
}

bool IsEmptyFile(int descriptor)
{
    return _filelengthi64(descriptor) == 0;
}

bool CloseDescriptor(int descriptor)
{
    return _close(descriptor) == 0;
}

// ---- Names

bool IsAccessible(const char* name, bool forWriting)
{
    constexpr int readable = 4;
    constexpr int writable = 2;
    return _waccess(WideName(name), forWriting ? writable : readable) == 0;
}

bool UnlinkFile(const char* name)
{
    return DeleteFileW(WideName(name)) || GetLastError() == ERROR_FILE_NOT_FOUND;
}

bool RenameFile(const char* from, const char* to)
{
    return MoveFileExW(WideName(from), WideName(to), MOVEFILE_REPLACE_EXISTING);
}

bool LinkFile(const char* name, const char* secondName)
{
    return CreateHardLinkW(WideName(secondName), WideName(name), nullptr);
}

bool IsRegularFileItself(const char* name)
{
    const DWORD attributes = GetFileAttributesW(WideName(name));
    constexpr DWORD others = FILE_ATTRIBUTE_DIRECTORY | FILE_ATTRIBUTE_REPARSE_POINT | FILE_ATTRIBUTE_DEVICE;
    return attributes != INVALID_FILE_ATTRIBUTES && (attributes & others) == 0;
}

std::optional<FileIdentity> GetFileIdentity(const char* name)
{
    constexpr DWORD sharedByAll = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
    const HANDLE file = CreateFileW(WideName(name), 0, sharedByAll, nullptr, OPEN_EXISTING,
                                    FILE_FLAG_BACKUP_SEMANTICS, nullptr);
    if (file == INVALID_HANDLE_VALUE) return {};
    BY_HANDLE_FILE_INFORMATION information = {};
    const bool isKnown = GetFileType(file) == FILE_TYPE_DISK && GetFileInformationByHandle(file, &information);
    CloseHandle(file);
    if (!isKnown) return {};
    return FileIdentity{information.dwVolumeSerialNumber,
                        std::uint64_t{information.nFileIndexHigh} << 32 | information.nFileIndexLow};
}

// Of the permission bits the system knows the owner's right to write alone.
bool SetFileMode(const char* name, unsigned mode)
{
    return _wchmod(WideName(name), mode & 0200 ? _S_IREAD | _S_IWRITE : _S_IREAD) == 0;
}

unsigned GetFileMode(const char* name)
{
    struct _stat64 status;
    return _wstat64(WideName(name), &status) == 0 ? status.st_mode & 0777u : 0666;
}

std::size_t FindFileName(std::string_view name)
{
    return name.find_last_of("/\\:") + 1;
}

std::string GetDefaultTemporaryDirectory()
{
    wchar_t path[MAX_PATH + 2];
    const DWORD length = GetTempPathW(MAX_PATH + 1, path);
    return length > 0 && length <= MAX_PATH ? FromWide(path) : ".\\";
}

// ---- Time

std::optional<std::int64_t> GetChangeTime(const char* name)
{
    struct _stat64 status;
    if (!IsAccessible(name, /*forWriting=*/false) || _wstat64(WideName(name), &status) != 0) return {};
    if ((status.st_mode & _S_IFMT) == _S_IFDIR) return {};
    return status.st_mtime;
}

bool ToLocalTime(std::int64_t seconds, std::tm& time)
{
    _tzset();
    const __time64_t moment = seconds;
    return _localtime64_s(&time, &moment) == 0;
}

bool ToUtc(std::int64_t seconds, std::tm& time)
{
    const __time64_t moment = seconds;
    return _gmtime64_s(&time, &moment) == 0;
}

// ---- The process

std::vector<std::string> GetArguments(int argc, char** argv)
{
    // What `main` is handed has lost every letter that the system's code page lacks.
    int count = 0;
    LPWSTR* pWide = CommandLineToArgvW(GetCommandLineW(), &count);
    if (!pWide) return {argv + 1, argv + argc};
    std::vector<std::string> arguments;
    for (int i = 1; i < count; ++i) arguments.push_back(FromWide(pWide[i]));
    LocalFree(pWide);
    return arguments;
}

int GetProcessNumber()
{
    return static_cast<int>(GetCurrentProcessId());
}

void ReserveStandardDescriptors()
{
    for (;;) {
        const int descriptor = _open("NUL", _O_RDWR);
        if (descriptor < 0) return;
        if (descriptor <= _fileno(stderr)) continue;
        _close(descriptor);
        return;
    }
}

namespace
{

// The system ends a process from a thread of its own. Steps that must not be parted keep that thread waiting.
class Gate
{
public:
    Gate() { InitializeCriticalSection(&m_Section); }
    void Enter() { EnterCriticalSection(&m_Section); }
    void Leave() { LeaveCriticalSection(&m_Section); }

private:
    CRITICAL_SECTION m_Section;
};

Gate& GetGate()
{
    static Gate gate;
    return gate;
}

void (*g_CleanUp)() = nullptr;

BOOL WINAPI CleanUpAndGoOn(DWORD)
{
    GetGate().Enter();   // for good: behind the cleaning nothing may be made any more
    g_CleanUp();
    return FALSE;        // the next handler, the system's own, ends the process
}

}   // namespace

void CatchEndSignals(void (*cleanUp)())
{
    g_CleanUp = cleanUp;
    SetConsoleCtrlHandler(CleanUpAndGoOn, TRUE);
}

// Here such a write simply fails.
void IgnoreWriteSignals() {}

HoldSignals::HoldSignals()
{
    GetGate().Enter();
}

HoldSignals::~HoldSignals()
{
    GetGate().Leave();
}

// A mutex that is named after the folder, since a directory can't be locked.
FolderLock::FolderLock(const char* folder)
{
    const std::optional<FileIdentity> identity = GetFileIdentity(folder);
    if (!identity) return;
    wchar_t name[64];
    std::swprintf(name, std::size(name), L"Local\\norvane-%llx-%llx",
                  static_cast<unsigned long long>(identity->device), static_cast<unsigned long long>(identity->number));
    const HANDLE mutex = CreateMutexW(nullptr, FALSE, name);
    if (!mutex) return;
    constexpr DWORD patience = 5000;   // milliseconds
    const DWORD result = WaitForSingleObject(mutex, patience);
    if (result == WAIT_OBJECT_0 || result == WAIT_ABANDONED) m_Lock = reinterpret_cast<std::intptr_t>(mutex);
    else CloseHandle(mutex);
}

FolderLock::~FolderLock()
{
    if (m_Lock < 0) return;
    const HANDLE mutex = reinterpret_cast<HANDLE>(m_Lock);
    ReleaseMutex(mutex);
    CloseHandle(mutex);
}
