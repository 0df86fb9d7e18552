#include "files/CodePage.h"

#include <gtest/gtest.h>

TEST(CodePage, AsciiAndTheUpperHalfKeepTheirNumbers)
{
    EXPECT_EQ(ToUtf16("A\xA0\xE9\xFF"), u"A\u00A0\u00E9\u00FF");
    EXPECT_EQ(FromUtf16(u"A\u00A0\u00E9\u00FF"), "A\xA0\xE9\xFF");
}

TEST(CodePage, TheSpecialRowHasItsOwnCharacters)
{
    EXPECT_EQ(ToUtf16("\x80\x8A\x93\x99\x9F"), u"\u20AC\u0160\u201C\u2122\u0178");
    EXPECT_EQ(FromUtf16(u"\u20AC\u0160\u201C\u2122\u0178"), "\x80\x8A\x93\x99\x9F");
}

TEST(CodePage, EveryByteSurvivesTheWayThereAndBack)
{
    std::string all;
    for (int i = 0; i < 256; ++i) all.push_back(static_cast<char>(i));
    EXPECT_EQ(FromUtf16(ToUtf16(all)), all);
}

TEST(CodePage, AnUnknownCharacterBecomesAQuestionMark)
{
    EXPECT_EQ(FromUtf16(u"a\u0416b"), "a?b");
    EXPECT_EQ(FromUtf16(u"\xFFFD"), "?");
}

TEST(CodePage, TheControlCharactersOfTheSpecialRowAreUnknownToo)
{
    EXPECT_EQ(FromUtf16(u"\x0080"), "?");     // the byte 80 is the euro
    EXPECT_EQ(FromUtf16(u"\x0081"), "\x81");  // the byte 81 has no other character
}

TEST(CodePage, TheDefaultCharacterCanBeChosen)
{
    EXPECT_EQ(FromUtf16(u"a\u0416b", "#"), "a#b");
}
