#include "frontend/MyString.h"

#include <gtest/gtest.h>

#include <limits>
#include <string>

TEST(MyStringTest, HoldsItsText)
{
    const CMyString text("abc");
    EXPECT_STREQ(text.GetBuffer(), "abc");
    EXPECT_EQ(text.GetLength(), 3);
    EXPECT_EQ(CMyString("").GetLength(), 0);
}

TEST(MyStringTest, SumPutsTheRightOperandFirst)
{
    EXPECT_STREQ((CMyString("left") + CMyString("right")).GetBuffer(), "rightleft");
}

TEST(MyStringTest, FindSearchesFromStart)
{
    const CMyString text("a_b_c");
    EXPECT_EQ(text.Find('_', 0), 1);
    EXPECT_EQ(text.Find('_', 1), 1);
    EXPECT_EQ(text.Find('_', 2), 3);
    EXPECT_EQ(text.Find('_', 4), -1);
    EXPECT_EQ(text.Find('x', 0), -1);
}

TEST(MyStringTest, FindFromTheEndOnFindsNothing)
{
    const CMyString text("abc");
    EXPECT_EQ(text.Find('c', 3), -1);
    EXPECT_EQ(text.Find('c', 4), -1);
    EXPECT_EQ(CMyString("").Find('c', 0), -1);
}

TEST(MyStringTest, RemoveFirstDropsThatManyCharacters)
{
    CMyString text("16#FF");
    text.RemoveFirst(3);
    EXPECT_STREQ(text.GetBuffer(), "FF");
    text.RemoveFirst(5);
    EXPECT_STREQ(text.GetBuffer(), "");
}

TEST(MyStringTest, RemoveFirstBelowOneDoesNothing)
{
    CMyString text("abc");
    text.RemoveFirst(0);
    text.RemoveFirst(-1);
    EXPECT_STREQ(text.GetBuffer(), "abc");
}

TEST(MyStringTest, RemoveAllAnswersWhetherThereWasOne)
{
    CMyString text("_1_000_");
    EXPECT_TRUE(text.RemoveAll('_'));
    EXPECT_STREQ(text.GetBuffer(), "1000");
    EXPECT_FALSE(text.RemoveAll('_'));
    EXPECT_STREQ(text.GetBuffer(), "1000");
}

TEST(MyStringTest, RemoveOneDropsTheFirst)
{
    CMyString text("a_b_c");
    EXPECT_TRUE(text.RemoveOne('_'));
    EXPECT_STREQ(text.GetBuffer(), "ab_c");
    EXPECT_FALSE(text.RemoveOne('x'));
    EXPECT_STREQ(text.GetBuffer(), "ab_c");
}

TEST(MyStringTest, ConvertsInEachBase)
{
    EXPECT_EQ(CMyString("1011").ToInt64Base2(), 11);
    EXPECT_EQ(CMyString("777").ToInt64Base8(), 511);
    EXPECT_EQ(CMyString("1234567890123").ToInt64Base10(), 1234567890123);
    EXPECT_EQ(CMyString("FFAB").ToInt64Base16(), 65451);
    EXPECT_EQ(CMyString("").ToInt64Base10(), 0);
}

TEST(MyStringTest, ConversionStopsAtTheFirstOtherCharacter)
{
    EXPECT_EQ(CMyString("1021").ToInt64Base2(), 2);
    EXPECT_EQ(CMyString("178").ToInt64Base8(), 15);
    EXPECT_EQ(CMyString("12x3").ToInt64Base10(), 12);
    EXPECT_EQ(CMyString("AG").ToInt64Base16(), 10);
    EXPECT_EQ(CMyString("x").ToInt64Base10(), 0);
}

TEST(MyStringTest, ConversionStaysWithin64Bits)
{
    constexpr std::int64_t largest = std::numeric_limits<std::int64_t>::max();
    EXPECT_EQ(CMyString("9223372036854775806").ToInt64Base10(), largest - 1);
    EXPECT_EQ(CMyString("9223372036854775807").ToInt64Base10(), largest);
    EXPECT_EQ(CMyString("9223372036854775808").ToInt64Base10(), largest);
    EXPECT_EQ(CMyString("99999999999999999999999").ToInt64Base10(), largest);
    EXPECT_EQ(CMyString("7FFFFFFFFFFFFFFF").ToInt64Base16(), largest);
    EXPECT_EQ(CMyString("8000000000000000").ToInt64Base16(), largest);
    EXPECT_EQ(CMyString("777777777777777777777").ToInt64Base8(), largest);
    EXPECT_EQ(CMyString("1777777777777777777777").ToInt64Base8(), largest);
    EXPECT_EQ(CMyString(std::string(62, '1')).ToInt64Base2(), largest / 2);
    EXPECT_EQ(CMyString(std::string(63, '1')).ToInt64Base2(), largest);
    EXPECT_EQ(CMyString(std::string(64, '1')).ToInt64Base2(), largest);
}

TEST(MyStringTest, ToIntCutsTo32Bits)
{
    EXPECT_EQ(CMyString("123").ToInt(), 123);
    EXPECT_EQ(CMyString("4294967297").ToInt(), 1);
    EXPECT_EQ(CMyString("4294967295").ToInt(), -1);
}

TEST(MyStringTest, PrintWritesTextAndLineEnd)
{
    testing::internal::CaptureStdout();
    CMyString("50% %s").Print();
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "50% %s\n");
}

TEST(MyStringTest, BeyondTheLargestNumber)
{
    EXPECT_FALSE(CMyString("9223372036854775807").IsBeyondInt64(10));
    EXPECT_TRUE(CMyString("9223372036854775808").IsBeyondInt64(10));
    EXPECT_FALSE(CMyString("7FFFFFFFFFFFFFFF").IsBeyondInt64(16));
    EXPECT_TRUE(CMyString("8000000000000000").IsBeyondInt64(16));
    EXPECT_FALSE(CMyString("").IsBeyondInt64(2));
}
