#include "frontend/SourceWindow.h"

#include "files/TemporaryDirectory.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string_view>

namespace
{

constexpr std::ptrdiff_t g_Enough = 16384;

// All that the window gives, taken in steps of so many bytes.
std::string ReadInSteps(CSourceWindow& window, std::ptrdiff_t step)
{
    std::string text;
    for (;;) {
        const char* const begin = window.Begin(g_Enough);
        const std::ptrdiff_t ahead = window.End() - begin;
        EXPECT_EQ(*window.End(), '\0');
        if (ahead == 0) return text;
        const std::ptrdiff_t taken = std::min(step, ahead);
        text.append(begin, static_cast<std::size_t>(taken));
        window.Advance(static_cast<std::size_t>(taken));
    }
}

std::string Repeat(std::string_view piece, int count)
{
    std::string text;
    for (int i = 0; i < count; ++i) text += piece;
    return text;
}

}   // namespace

class SourceWindowTest : public testing::Test
{
protected:
    std::string ReadBack(const std::string& bytes, std::string* pCopy = nullptr)
    {
        m_Directory.Make("a.st", bytes);
        CSourceWindow window;
        EXPECT_TRUE(window.Open(m_Directory.Name("a.st"), pCopy));
        return ReadInSteps(window, 1000);
    }

    TemporaryDirectory m_Directory;
};

TEST_F(SourceWindowTest, GivesAFileOfManyWindows)
{
    const std::string text = Repeat("x := x + 1;\n", 50000);
    EXPECT_EQ(ReadBack(text), text);
}

TEST_F(SourceWindowTest, JoinsLineEndsWhereverTheWindowsMeet)
{
    // The pairs fall on odd and even places, so one or the other meets each border.
    EXPECT_EQ(ReadBack(Repeat("\r\n", 200000)), Repeat("\n", 200000));
    EXPECT_EQ(ReadBack("x" + Repeat("\r\n", 200000)), "x" + Repeat("\n", 200000));
}

TEST_F(SourceWindowTest, KeepsOtherCarriageReturns)
{
    EXPECT_EQ(ReadBack("a\rb\r\r\nc\r"), "a\rb\r\nc\r");
    EXPECT_EQ(ReadBack("\r"), "\r");
    EXPECT_EQ(ReadBack(Repeat("\r", 200001)), Repeat("\r", 200001));
}

TEST_F(SourceWindowTest, GivesZeroBytes)
{
    const std::string text("a\0b\0", 4);
    EXPECT_EQ(ReadBack(text), text);
}

TEST_F(SourceWindowTest, CopiesTheBytesUpToTheFirstZero)
{
    const std::string head = Repeat("line\r\n", 30000);
    std::string copy = "before ";
    ReadBack(head + std::string("\0tail", 5), &copy);
    EXPECT_EQ(copy, "before " + head);
}

TEST_F(SourceWindowTest, HasWhatIsAskedForOrAllThatIsLeft)
{
    m_Directory.Make("a.st", Repeat("0123456789", 10000));
    CSourceWindow window;
    ASSERT_TRUE(window.Open(m_Directory.Name("a.st"), nullptr));
    std::ptrdiff_t left = 100000;
    for (const std::ptrdiff_t step : {1, 60000, 9999, 16384, 13615}) {
        const char* const begin = window.Begin(g_Enough);
        EXPECT_GE(window.End() - begin, std::min(left, g_Enough));
        EXPECT_EQ(*begin, static_cast<char>('0' + (100000 - left) % 10));
        const std::ptrdiff_t taken = std::min(step, window.End() - begin);
        window.Advance(static_cast<std::size_t>(taken));
        left -= taken;
    }
}

TEST_F(SourceWindowTest, OpensNeitherWhatIsMissingNorDirectories)
{
    CSourceWindow window;
    EXPECT_FALSE(window.Open(m_Directory.Name("none"), nullptr));
    EXPECT_FALSE(window.Open(m_Directory.Path(), nullptr));
    EXPECT_EQ(window.Begin(g_Enough), window.End());
}

TEST_F(SourceWindowTest, TakesATextFromMemory)
{
    CSourceWindow window;
    window.SetText("abc");
    EXPECT_EQ(ReadInSteps(window, 2), "abc");
    window.Close();
    EXPECT_EQ(window.Begin(g_Enough), window.End());
}
