#include "files/Platform.h"

#include "files/OutOfMemory.h"

#include <cerrno>
#include <csignal>
#include <cstdio>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

// ---- Open files

static bool IsDirectory(int descriptor)
{
    struct stat status;
    return fstat(descriptor, &status) == 0 && S_ISDIR(status.st_mode);
}

static int OpenAgainIfInterrupted(const char* name, int flags, mode_t mode = 0666)
{
    for (;;) {
        const int descriptor = open(name, flags | O_CLOEXEC, mode);
        if (descriptor >= 0 || errno != EINTR) return descriptor;
    }
}

int OpenForReading(const char* name)
{
    const int descriptor = OpenAgainIfInterrupted(name, O_RDONLY);
    // Opening a directory succeeds, and only its first read fails.
    if (descriptor < 0 || !IsDirectory(descriptor)) return descriptor;
    close(descriptor);
    return -1;
}

int OpenForWriting(const char* name, bool isAppending)
{
    return OpenAgainIfInterrupted(name, O_WRONLY | O_CREAT | (isAppending ? O_APPEND : O_TRUNC));
}

int CreateExclusively(const char* name, unsigned mode)
{
    const int descriptor = OpenAgainIfInterrupted(name, O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW, 0600);
    if (descriptor < 0 || fchmod(descriptor, static_cast<mode_t>(mode)) == 0) return descriptor;
    close(descriptor);
    unlink(name);
    return -1;
}

std::ptrdiff_t ReadBytes(int descriptor, char* bytes, std::size_t size)
{
    for (;;) {
        const ssize_t result = read(descriptor, bytes, size);
        if (result >= 0 || errno != EINTR) return result;
    }
}

bool WriteBytes(int descriptor, const char* bytes, std::size_t size)
{
    while (size > 0) {
        const ssize_t written = write(descriptor, bytes, size);
        if (written < 0 && errno == EINTR) continue;
        if (written <= 0) return false;
        bytes += written;
        size -= static_cast<std::size_t>(written);
    }
    return true;
}

bool IsEmptyFile(int descriptor)
{
    struct stat status;
    return fstat(descriptor, &status) == 0 && status.st_size == 0;
}

bool CloseDescriptor(int descriptor)
{
    // An interrupted close has closed the descriptor all the same.
    return close(descriptor) == 0 || errno == EINTR;
}

// ---- Names

bool IsAccessible(const char* name, bool forWriting)
{
    return faccessat(AT_FDCWD, name, forWriting ? W_OK : R_OK, AT_EACCESS) == 0;
}

bool UnlinkFile(const char* name)
{
    return unlink(name) == 0 || errno == ENOENT;
}

bool RenameFile(const char* from, const char* to)
{
    return rename(from, to) == 0;
}

bool LinkFile(const char* name, const char* secondName)
{
    return link(name, secondName) == 0;
}

bool IsRegularFileItself(const char* name)
{
    struct stat status;
    return lstat(name, &status) == 0 && S_ISREG(status.st_mode);
}

std::optional<FileIdentity> GetFileIdentity(const char* name)
{
    struct stat status;
    if (stat(name, &status) != 0 || S_ISCHR(status.st_mode)) return {};
    return FileIdentity{status.st_dev, status.st_ino};
}

bool SetFileMode(const char* name, unsigned mode)
{
    return chmod(name, static_cast<mode_t>(mode)) == 0;
}

unsigned GetFileMode(const char* name)
{
    struct stat status;
    if (stat(name, &status) == 0) return status.st_mode & 07777;
    // There is no question for the mask: it can only be set, and the answer is what it was.
    const mode_t mask = umask(077);
    umask(mask);
    return 0666 & ~mask;
}

std::size_t FindFileName(std::string_view path)
{
    return path.rfind('/') + 1;
}

std::string GetDefaultTemporaryDirectory()
{
    return "/tmp/";
}

// ---- Time

std::optional<std::int64_t> GetChangeTime(const char* name)
{
    struct stat status;
    if (!IsAccessible(name, /*forWriting=*/false) || stat(name, &status) != 0 || S_ISDIR(status.st_mode)) return {};
    return status.st_mtime;
}

bool ToLocalTime(std::int64_t seconds, std::tm& time)
{
    // Without memory the library takes UTC for the time zone, and tells nobody but this variable.
    errno = 0;
    tzset();
    if (errno == ENOMEM) EndOutOfMemory();
    const std::time_t moment = static_cast<std::time_t>(seconds);
    return localtime_r(&moment, &time) != nullptr;
}

bool ToUtc(std::int64_t seconds, std::tm& time)
{
    const std::time_t moment = static_cast<std::time_t>(seconds);
    return gmtime_r(&moment, &time) != nullptr;
}

// ---- The process

namespace
{

constexpr int g_EndSignals[] = {SIGINT, SIGTERM, SIGHUP};
void (*g_CleanUp)() = nullptr;

}   // namespace

std::vector<std::string> GetArguments(int argc, char** argv)
{
    return {argv + (argc > 0 ? 1 : 0), argv + argc};
}

int GetProcessNumber()
{
    return static_cast<int>(getpid());
}

void ReserveStandardDescriptors()
{
    // The lowest free number is taken, so the first one above these three shows that all are in use.
    for (;;) {
        const int descriptor = open("/dev/null", O_RDWR);
        if (descriptor < 0) return;
        if (descriptor <= STDERR_FILENO) continue;
        close(descriptor);
        return;
    }
}

extern "C" {

static void CleanUpAndEnd(int signalNumber)
{
    g_CleanUp();
    // Held back while this handler runs, and final behind it: whoever waits for the process sees the usual end.
    std::signal(signalNumber, SIG_DFL);
    raise(signalNumber);
}

}

void CatchEndSignals(void (*cleanUp)())
{
    g_CleanUp = cleanUp;
    for (const int signalNumber : g_EndSignals) {
        struct sigaction action;
        if (sigaction(signalNumber, nullptr, &action) != 0 || action.sa_handler == SIG_IGN) continue;
        action = {};
        action.sa_handler = CleanUpAndEnd;
        sigfillset(&action.sa_mask);
        sigaction(signalNumber, &action, nullptr);
    }
}

void IgnoreWriteSignals()
{
    std::signal(SIGXFSZ, SIG_IGN);
    std::signal(SIGPIPE, SIG_IGN);
}

static void ChangeEndSignals(int how)
{
    sigset_t signals;
    sigemptyset(&signals);
    for (const int signalNumber : g_EndSignals) sigaddset(&signals, signalNumber);
    sigprocmask(how, &signals, nullptr);
}

// Nested ones would let go too early: they count.
static int g_HoldCount = 0;

HoldSignals::HoldSignals()
{
    if (g_HoldCount++ == 0) ChangeEndSignals(SIG_BLOCK);
}

HoldSignals::~HoldSignals()
{
    if (--g_HoldCount == 0) ChangeEndSignals(SIG_UNBLOCK);
}

FolderLock::FolderLock(const char* folder) : m_Lock(OpenAgainIfInterrupted(folder, O_RDONLY | O_DIRECTORY))
{
    const int descriptor = static_cast<int>(m_Lock);
    constexpr int attempts = 1000;
    constexpr timespec pause = {0, 5'000'000};
    for (int i = 0; descriptor >= 0 && i < attempts; ++i) {
        if (flock(descriptor, LOCK_EX | LOCK_NB) == 0 || errno != EWOULDBLOCK) return;
        nanosleep(&pause, nullptr);
    }
}

// The lock goes with the descriptor.
FolderLock::~FolderLock()
{
    if (m_Lock >= 0) close(static_cast<int>(m_Lock));
}
