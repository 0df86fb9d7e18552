#include "driver/CompileStamp.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <ctime>

static constexpr std::int32_t g_TopBit = INT32_MIN;

static std::tm MakeTime(int year, int month, int day, int hour, int minute, int second)
{
    std::tm time{};
    time.tm_year = year - 1900;
    time.tm_mon = month - 1;
    time.tm_mday = day;
    time.tm_hour = hour;
    time.tm_min = minute;
    time.tm_sec = second;
    return time;
}

TEST(CompileStamp, PacksMonthDayAndSecond)
{
    // 12 * 2024 + 1 + 51 is 24340, which is 276 in nine bits.
    const std::tm newYear = MakeTime(2024, 1, 1, 0, 0, 0);
    EXPECT_EQ(PackCompileStamp(&newYear), g_TopBit + 276 * 4194304 + 1 * 131072);
    const std::tm summer = MakeTime(2031, 8, 15, 23, 59, 58);
    EXPECT_EQ(PackCompileStamp(&summer), g_TopBit + 367 * 4194304 + 15 * 131072 + 86398);
}

TEST(CompileStamp, TheMonthCounterWrapsAtNineBits)
{
    // 12 * 2043 + 8 + 51 is 24575, the last one before 48 * 512.
    const std::tm last = MakeTime(2043, 8, 31, 12, 0, 0);
    EXPECT_EQ(PackCompileStamp(&last), g_TopBit + 511 * 4194304 + 31 * 131072 + 43200);
    const std::tm first = MakeTime(2043, 9, 1, 0, 0, 1);
    EXPECT_EQ(PackCompileStamp(&first), g_TopBit + 131072 + 1);
}

// A leap second is second 86400 of its day, which still fits below the day.
TEST(CompileStamp, TakesALeapSecond)
{
    const std::tm leap = MakeTime(2016, 12, 31, 23, 59, 60);
    const std::int32_t month = (12 * 2016 + 12 + 51) % 512;
    EXPECT_EQ(PackCompileStamp(&leap), g_TopBit + month * 4194304 + 31 * 131072 + 86400);
}

// Month term 51, day 0, and -1 for hour, minute and second: -3661, whose high bits are all set and cover the rest.
TEST(CompileStamp, HasAValueWithoutALocalTime)
{
    EXPECT_EQ(PackCompileStamp(nullptr), -3661);
}

TEST(CompileStamp, IsTheTopBitForWhatCannotBeRead)
{
    EXPECT_EQ(ComputeCompileStamp("no such file"), g_TopBit);
    EXPECT_EQ(ComputeCompileStamp("."), g_TopBit);
    EXPECT_EQ(ComputeCompileStamp(""), g_TopBit);
}

// 1704067200 is 2024-01-01 00:00:00 in UTC, whatever the time zone here.
TEST(CompileStamp, OfAMomentIsInUtc)
{
    EXPECT_EQ(ComputeCompileStamp(std::int64_t{1704067200}), g_TopBit + 276 * 4194304 + 1 * 131072);
    EXPECT_EQ(ComputeCompileStamp(std::int64_t{1704067200 + 86399}), g_TopBit + 276 * 4194304 + 1 * 131072 + 86399);
}

TEST(CompileStamp, TakesANumberAndNothingElseForAMoment)
{
    std::int64_t seconds = 0;
    EXPECT_TRUE(ReadSourceDate("1704067200", seconds));
    EXPECT_EQ(seconds, 1704067200);
    EXPECT_TRUE(ReadSourceDate("253402300799", seconds));
    EXPECT_TRUE(ReadSourceDate("-1", seconds));
    for (const char* text : {"", " 1", "1 ", "+1", "1.0", "0x10", "now", "253402300800", "-62167219201",
                             "99999999999999999999"})
        EXPECT_FALSE(ReadSourceDate(text, seconds)) << text;
}
