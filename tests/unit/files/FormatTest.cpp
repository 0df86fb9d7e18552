#include "files/Format.h"

#include <gtest/gtest.h>

#include <limits>

TEST(Format, ControlCharactersAreShownByTheirNumber)
{
    using namespace std::string_literals;
    EXPECT_EQ(ShowControlCharacters("a\nb\x01\x1F\x7F"), "a\\x0Ab\\x01\\x1F\\x7F");
    EXPECT_EQ(ShowControlCharacters("\0"s), "\\x00");
}

TEST(Format, AllOtherCharactersStay)
{
    EXPECT_EQ(ShowControlCharacters(" ~\\x0A\x80\xFF\xC3\xA9"), " ~\\x0A\x80\xFF\xC3\xA9");
    EXPECT_EQ(ShowControlCharacters(""), "");
}

// What printf's "%f" gives, but for what is no number.
TEST(Format, RealsHaveSixDecimals)
{
    EXPECT_EQ(FormatReal(0.0), "0.000000");
    EXPECT_EQ(FormatReal(-0.0), "-0.000000");
    EXPECT_EQ(FormatReal(0.5e-6), "0.000000") << "what is stored lies below one half of the last place";
    EXPECT_EQ(FormatReal(0.0000015), "0.000002") << "what is stored lies above";
    EXPECT_EQ(FormatReal(0.0078125), "0.007812") << "the middle goes to the even digit";
    EXPECT_EQ(FormatReal(0.0234375), "0.023438");
    EXPECT_EQ(FormatReal(1e22), "10000000000000000000000.000000");
    EXPECT_EQ(FormatReal(-std::numeric_limits<double>::infinity()), "-inf");
    EXPECT_EQ(FormatReal(std::numeric_limits<double>::quiet_NaN()), "nan");
    EXPECT_EQ(FormatReal(-std::numeric_limits<double>::quiet_NaN()), "nan");
    const std::string longest = FormatReal(std::numeric_limits<double>::lowest());
    EXPECT_EQ(longest.size(), 317U);
    EXPECT_EQ(longest.substr(0, 18), "-17976931348623157") << longest;
    for (const double value : {1.0 / 3, 2.5e-7, 123456.7890625, 9007199254740993.0, 1e300, 4.9e-324})
        EXPECT_EQ(FormatReal(value), FormatText("%f", value));
}
