#include "codegen/RealText.h"

#include <gtest/gtest.h>

#include <limits>

TEST(RealTextTest, SixDecimalsAreEnough)
{
    for (const double value : {0.0, -0.0, 0.5, 0.1, -1.25, 0.000001, 123456.654321, 1.0e+300}) {
        EXPECT_TRUE(SurvivesSixDecimals(value, 32)) << value;
        EXPECT_TRUE(SurvivesSixDecimals(value, 64)) << value;
    }
}

TEST(RealTextTest, SmallNumbersLoseTheirDigits)
{
    for (const double value : {0.0000001, -0.0000005, 0.0000015, 0.1234567}) {
        EXPECT_FALSE(SurvivesSixDecimals(value, 32)) << value;
        EXPECT_FALSE(SurvivesSixDecimals(value, 64)) << value;
    }
}

// Around 12 the next number of 32 bits is farther away than a millionth's half.
TEST(RealTextTest, WhatTheTypeCannotKeepIsNoLoss)
{
    EXPECT_TRUE(SurvivesSixDecimals(12.3456789, 32));
    EXPECT_FALSE(SurvivesSixDecimals(12.3456789, 64));
    EXPECT_FALSE(SurvivesSixDecimals(1.23456789, 32));
}

TEST(RealTextTest, NumbersWithoutDecimals)
{
    EXPECT_TRUE(SurvivesSixDecimals(std::numeric_limits<double>::infinity(), 64));
    EXPECT_TRUE(SurvivesSixDecimals(std::numeric_limits<double>::quiet_NaN(), 32));
    EXPECT_TRUE(SurvivesSixDecimals(1.0e+300, 32));   // beyond the type, which is another matter
}
