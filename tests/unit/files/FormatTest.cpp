#include "files/Format.h"

#include <gtest/gtest.h>

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
