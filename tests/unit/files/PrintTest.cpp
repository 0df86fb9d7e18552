#include "files/Print.h"

#include "PrintedBy.h"

#include <gtest/gtest.h>

#include <string>

TEST(Print, GoesIntoATextAndBackToStandardOutput)
{
    testing::internal::CaptureStdout();
    Print("a");
    std::string outer;
    EXPECT_EQ(PrintInto(&outer), nullptr);
    Print("b\n");
    std::string inner;
    EXPECT_EQ(PrintInto(&inner), &outer);
    Print("c");
    EXPECT_EQ(PrintInto(&outer), &inner);
    Print("d");
    EXPECT_EQ(PrintInto(nullptr), &outer);
    Print("e");
    std::string last;
    PrintInto(&last);   // what was printed before has left
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "ae");
    PrintInto(nullptr);
    EXPECT_EQ(outer, "b\nd");
    EXPECT_EQ(inner, "c");
    EXPECT_EQ(last, "");
}

TEST(Print, AnInnerCallTakesItsOwnPart)
{
    std::string inner;
    const std::string outer = PrintedBy([&] {
        Print("one ");
        inner = PrintedBy([] { Print("two"); });
        Print("three");
    });
    EXPECT_EQ(outer, "one three");
    EXPECT_EQ(inner, "two");
}
