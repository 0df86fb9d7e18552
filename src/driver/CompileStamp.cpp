#include "driver/CompileStamp.h"

#include "files/Platform.h"

#include <charconv>
#include <optional>

static constexpr std::uint32_t g_StampMark = 0x80000000u;

std::int32_t PackCompileStamp(const std::tm* pTime)
{
    const std::int64_t year = pTime ? std::int64_t{pTime->tm_year} + 1900 : 0;
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
    const std::optional<std::int64_t> seconds = GetChangeTime(fileName.c_str());
    if (!seconds) return static_cast<std::int32_t>(g_StampMark);
    std::tm time;
    return PackCompileStamp(ToLocalTime(*seconds, time) ? &time : nullptr);
}

std::int32_t ComputeCompileStamp(std::int64_t seconds)
{
    std::tm time;
    return PackCompileStamp(ToUtc(seconds, time) ? &time : nullptr);
}

bool ReadSourceDate(std::string_view text, std::int64_t& seconds)
{
    constexpr std::int64_t first = -62167219200;   // 0000-01-01 00:00:00
    constexpr std::int64_t last = 253402300799;    // 9999-12-31 23:59:59
    const std::from_chars_result result = std::from_chars(text.data(), text.data() + text.size(), seconds);
    return result.ec == std::errc() && result.ptr == text.data() + text.size() && seconds >= first && seconds <= last;
}
