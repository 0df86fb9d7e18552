#include "files/OutputTextFile.h"

#include "files/TemporaryDirectory.h"

#include <gtest/gtest.h>

TEST(OutputTextFile, WritesTheBytesAsTheyAre)
{
    const TemporaryDirectory directory;
    directory.Make("a.txt", "something longer that was here");
    OutputTextFile file;
    ASSERT_TRUE(file.Open(directory.Name("a.txt")));
    EXPECT_TRUE(file.IsOpen());
    file.Write("one\n%d\xE9");
    file.Write("");
    file.Write("\ttwo\r\n");
    EXPECT_TRUE(file.Close());
    EXPECT_FALSE(file.IsOpen());
    EXPECT_EQ(directory.Read("a.txt"), "one\n%d\xE9\ttwo\r\n");
}

TEST(OutputTextFile, TheDestructorCloses)
{
    const TemporaryDirectory directory;
    {
        OutputTextFile file;
        ASSERT_TRUE(file.Open(directory.Name("a.txt")));
        file.Write("abc");
    }
    EXPECT_EQ(directory.Read("a.txt"), "abc");
}

TEST(OutputTextFile, ASecondOpenClosesTheFirst)
{
    const TemporaryDirectory directory;
    OutputTextFile file;
    ASSERT_TRUE(file.Open(directory.Name("a.txt")));
    file.Write("first");
    ASSERT_TRUE(file.Open(directory.Name("b.txt")));
    file.Write("second");
    EXPECT_TRUE(file.Close());
    EXPECT_EQ(directory.Read("a.txt"), "first");
    EXPECT_EQ(directory.Read("b.txt"), "second");
}

TEST(OutputTextFile, CannotOpenADirectoryOrInAMissingOne)
{
    const TemporaryDirectory directory;
    OutputTextFile file;
    EXPECT_FALSE(file.Open(directory.Path()));
    EXPECT_FALSE(file.Open(directory.Name("none/a.txt")));
    EXPECT_FALSE(file.IsOpen());
    file.Write("into nothing");
    EXPECT_TRUE(file.Close());
}

TEST(OutputTextFile, AFullDiskIsToldAtTheClose)
{
    OutputTextFile file;
    ASSERT_TRUE(file.Open("/dev/full"));
    file.Write("a few bytes stay in the buffer until the end");
    EXPECT_FALSE(file.Close());
    EXPECT_TRUE(file.Close());   // it is closed, and that it failed has been said

    ASSERT_TRUE(file.Open("/dev/full"));
    file.Write(std::string(1000000, 'x'));
    file.Write("more");
    EXPECT_FALSE(file.Close());
}

TEST(OutputTextFile, ATextHasEverythingAfterTheClose)
{
    const std::string large(70000, 'x');   // more than is gathered in one piece
    std::string text = "before ";
    OutputTextFile file;
    file.OpenText(text);
    EXPECT_TRUE(file.IsOpen());
    file.Write("one\n");
    file.Write(large);
    file.Write("two");
    EXPECT_TRUE(file.Close());
    EXPECT_FALSE(file.IsOpen());
    EXPECT_EQ(text, "before one\n" + large + "two");
    file.Write("three");
    EXPECT_EQ(text, "before one\n" + large + "two");
}
