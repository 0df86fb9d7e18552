#include "files/TextBuffer.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <limits>

namespace
{

// (name) or nothing
struct Bracketed
{
    std::string_view name;

    auto Parts() const { return std::make_tuple('(', name, ')', 7); }
};

// As many stars as it says, though it asks for more room.
struct Stars
{
    std::size_t count;

    std::size_t GetMostBytes() const { return count + 5; }
    char* Write(char* p) const
    {
        for (std::size_t i = 0; i < count; ++i) *p++ = '*';
        return p;
    }
};

}   // namespace

TEST(TextBufferTest, BeginsEmpty)
{
    const TextBuffer text;
    EXPECT_TRUE(text.IsEmpty());
    EXPECT_EQ(text.GetSize(), 0U);
    EXPECT_EQ(text.View(), "");
}

TEST(TextBufferTest, JoinsPiecesInTheirOrder)
{
    TextBuffer text;
    const std::string name = "count";
    text.Append("\tPUSH", '(', std::string_view("INT"), ")\t[", 12, "]\t;", name, '\n');
    text.Append();
    text.Append("", std::string_view());
    text.Append('x');
    EXPECT_EQ(text.View(), "\tPUSH(INT)\t[12]\t;count\nx");
    EXPECT_EQ(text.GetSize(), text.View().size());
}

TEST(TextBufferTest, WritesNumbersOfEveryWidthInDecimal)
{
    TextBuffer text;
    text.Append(std::numeric_limits<std::int64_t>::min(), ' ', std::numeric_limits<std::int64_t>::max());
    EXPECT_EQ(text.View(), "-9223372036854775808 9223372036854775807");
    text.Clear();
    text.Append(std::numeric_limits<std::uint64_t>::max(), ' ', std::numeric_limits<std::int32_t>::min(), ' ', 0);
    EXPECT_EQ(text.View(), "18446744073709551615 -2147483648 0");
}

TEST(TextBufferTest, OnlyAPlainCharIsACharacter)
{
    TextBuffer text;
    const char byte = '\xE9';
    text.Append(static_cast<signed char>(byte), ' ', static_cast<unsigned char>(byte), ' ', byte);
    EXPECT_EQ(text.View(), "-23 233 \xE9");
}

TEST(TextBufferTest, KeepsZeroBytes)
{
    TextBuffer text;
    text.Append(std::string_view("a\0b", 3), '\0');
    EXPECT_EQ(text.View(), std::string_view("a\0b\0", 4));
}

TEST(TextBufferTest, TakesPiecesOfParts)
{
    TextBuffer text;
    text.Append("a", Bracketed{"INT"}, Stars{3}, Stars{0}, "b");
    EXPECT_EQ(text.View(), "a(INT)7***b");
}

TEST(TextBufferTest, GrowsAndKeepsWhatItHas)
{
    TextBuffer text;
    std::string expected;
    for (int i = 0; i < 10000; ++i) {
        text.Append(i, ',');
        expected += std::to_string(i) + ",";
    }
    EXPECT_EQ(text.View(), expected);
    const std::string large(1 << 20, 'x');
    text.Append(large, large);
    EXPECT_EQ(text.View(), expected + large + large);
}

TEST(TextBufferTest, ClearAndCutToGoBack)
{
    TextBuffer text;
    text.Append("abcdef");
    text.CutTo(4);
    EXPECT_EQ(text.View(), "abcd");
    text.Append("X");
    EXPECT_EQ(text.View(), "abcdX");
    text.CutTo(5);
    EXPECT_EQ(text.View(), "abcdX");
    text.Clear();
    EXPECT_TRUE(text.IsEmpty());
    text.Append("new");
    EXPECT_EQ(text.View(), "new");
}

TEST(TextBufferTest, CanBeMoved)
{
    TextBuffer text;
    text.Append("abc");
    const TextBuffer taken = std::move(text);
    EXPECT_EQ(taken.View(), "abc");
}

TEST(TextBufferTest, MakesASingleText)
{
    EXPECT_EQ(MakeText("a", 1, 'b'), "a1b");
    EXPECT_EQ(MakeText(), "");
}
