#include "driver/CompileStamp.h"

#include "files/FileSystem.h"

#include <sys/stat.h>

static constexpr std::uint32_t g_StampMark = 0x80000000u;

std::int32_t PackCompileStamp(const std::tm* pTime)
{
    const int year = pTime ? pTime->tm_year + 1900 : 0;
    const int month = pTime ? pTime->tm_mon + 1 : 0;
    const int day = pTime ? pTime->tm_mday : 0;
    const int hour = pTime ? pTime->tm_hour : -1;
    const int minute = pTime ? pTime->tm_min : -1;
    const int second = pTime ? pTime->tm_sec : -1;

    const auto monthCounter = static_cast<std::uint32_t>(12 * year + month + 51) & 0x1FFu;
    const auto seconds = static_cast<std::uint32_t>(hour * 3600 + minute * 60 + second);
    const std::uint32_t stamp = g_StampMark | monthCounter << 22 | static_cast<std::uint32_t>(day) << 17 | seconds;
    return static_cast<std::int32_t>(stamp);
}

std::int32_t ComputeCompileStamp(const std::string& fileName)
{
    struct stat status;
    if (!IsReadableFile(fileName) || stat(fileName.c_str(), &status) != 0)
        return static_cast<std::int32_t>(g_StampMark);
    std::tm time;
    return PackCompileStamp(localtime_r(&status.st_mtime, &time));
}
