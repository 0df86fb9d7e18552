// Preloaded in front of a program, makes one call of one kind fail: FAULT_KIND says which kind, FAULT_NUMBER which
// call of it, counted from 1. The file FAULT_MARK is made when it did. Calls for standard error are left alone, so
// that the program can say what has happened. FAULT_SLOW=rename takes up to ten milliseconds for each rename, not
// always as many, so that runs beside each other overtake one another between two of them.

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <ctime>

#include <dlfcn.h>
#include <fcntl.h>
#include <sys/syscall.h>
#include <unistd.h>

static const char* g_szKind = nullptr;
static const char* g_szMark = nullptr;
static long g_CallsLeft = 0;
static bool g_IsRenameSlow = false;

[[gnu::constructor]] static void ReadOrder()
{
    const char* szNumber = std::getenv("FAULT_NUMBER");
    g_szKind = std::getenv("FAULT_KIND");
    g_szMark = std::getenv("FAULT_MARK");
    g_CallsLeft = szNumber ? std::atol(szNumber) : 0;
    const char* szSlow = std::getenv("FAULT_SLOW");
    g_IsRenameSlow = szSlow && std::strcmp(szSlow, "rename") == 0;
    if (!g_szMark) g_szKind = nullptr;
}

static bool Fails(const char* szKind, int error)
{
    if (!g_szKind || std::strcmp(g_szKind, szKind) != 0 || --g_CallsLeft != 0) return false;
    syscall(SYS_close, syscall(SYS_openat, AT_FDCWD, g_szMark, O_CREAT | O_WRONLY, 0600));
    errno = error;
    return true;
}

static void WaitSomeTime()
{
    timespec now = {};
    clock_gettime(CLOCK_MONOTONIC, &now);
    usleep(static_cast<useconds_t>(now.tv_nsec / 100 % 10'000));
}

static bool IsCounterFile(const char* szName)
{
    constexpr char ending[] = ".gcda";
    const std::size_t length = std::strlen(szName);
    return length >= sizeof(ending) && std::strcmp(szName + length - (sizeof(ending) - 1), ending) == 0;
}

template <class Function> static Function* Next(Function*, const char* szName)
{
    return reinterpret_cast<Function*>(dlsym(RTLD_NEXT, szName));
}

#define NEXT(name) (Next(name, #name))

extern "C" {

void* __libc_malloc(std::size_t size);
void* __libc_calloc(std::size_t count, std::size_t size);
void* __libc_realloc(void* pMemory, std::size_t size);

void* malloc(std::size_t size)
{
    return Fails("memory", ENOMEM) ? nullptr : __libc_malloc(size);
}

void* calloc(std::size_t count, std::size_t size)
{
    return Fails("memory", ENOMEM) ? nullptr : __libc_calloc(count, size);
}

void* realloc(void* pMemory, std::size_t size)
{
    return Fails("memory", ENOMEM) ? nullptr : __libc_realloc(pMemory, size);
}

int open(const char* szName, int flags, ...)
{
    // The counters of a coverage build are written last. They are no work of the program under test.
    if (IsCounterFile(szName)) g_szKind = nullptr;
    if (Fails("open", EIO)) return -1;
    __builtin_va_list arguments;
    __builtin_va_start(arguments, flags);
    const mode_t mode = flags & O_CREAT ? __builtin_va_arg(arguments, mode_t) : 0;
    __builtin_va_end(arguments);
    return static_cast<int>(syscall(SYS_openat, AT_FDCWD, szName, flags, mode));
}

FILE* fopen(const char* szName, const char* szMode)
{
    return Fails("open", EIO) ? nullptr : NEXT(fopen)(szName, szMode);
}

FILE* fopen64(const char* szName, const char* szMode)
{
    return Fails("open", EIO) ? nullptr : NEXT(fopen64)(szName, szMode);
}

ssize_t read(int descriptor, void* pBytes, std::size_t size)
{
    return Fails("read", EIO) ? -1 : syscall(SYS_read, descriptor, pBytes, size);
}

ssize_t write(int descriptor, const void* pBytes, std::size_t size)
{
    return descriptor != STDERR_FILENO && Fails("write", ENOSPC) ? -1 : syscall(SYS_write, descriptor, pBytes, size);
}

std::size_t fwrite(const void* pBytes, std::size_t size, std::size_t count, FILE* pFile)
{
    return pFile != stderr && Fails("write", ENOSPC) ? 0 : NEXT(fwrite)(pBytes, size, count, pFile);
}

int fflush(FILE* pFile)
{
    return pFile != stderr && Fails("flush", ENOSPC) ? EOF : NEXT(fflush)(pFile);
}

// What fails has closed the file all the same.
int close(int descriptor)
{
    const bool fails = Fails("close", EIO);
    const long result = syscall(SYS_close, descriptor);
    if (fails) errno = EIO;
    return fails ? -1 : static_cast<int>(result);
}

int fclose(FILE* pFile)
{
    const bool fails = Fails("close", EIO);
    const int result = NEXT(fclose)(pFile);
    return fails ? EOF : result;
}

int rename(const char* szFrom, const char* szTo)
{
    if (g_IsRenameSlow) WaitSomeTime();
    return Fails("rename", EIO) ? -1 : NEXT(rename)(szFrom, szTo);
}

int link(const char* szFrom, const char* szTo)
{
    return Fails("link", EPERM) ? -1 : NEXT(link)(szFrom, szTo);
}

int unlink(const char* szName)
{
    return Fails("unlink", EIO) ? -1 : NEXT(unlink)(szName);
}

}
