#include "files/Base64.h"

#include <gtest/gtest.h>

using namespace std::string_literals;

static std::string Encoded(const std::string& data)
{
    std::string text = "replaced";
    Base64Encode(data, text);
    return text;
}

static std::string Decoded(const std::string& text)
{
    std::string data = "replaced";
    Base64Decode(text, data);
    return data;
}

static std::string EncodedStandard(const std::string& data)
{
    std::string text = "replaced";
    Base64EncodeStandard(data, text);
    return text;
}

static std::string DecodedStandard(const std::string& text)
{
    std::string data = "replaced";
    Base64DecodeStandard(text, data);
    return data;
}

// "ABC" is 41 42 43: 41&3F = 1 (B); 1 | 42<<2 = 109, cut to 9 (J); 4 | 43<<4 = 434, cut to 34 (0); 43>>2 = 10 (Q),
// all hexadecimal but the letters.
TEST(Base64, LowBitsGoFirst)
{
    EXPECT_EQ(Encoded("ABC"), "BJ0Q");
    EXPECT_EQ(Encoded("ABCABC"), "BJ0QBJ0Q");
    EXPECT_EQ(Encoded("\xFF\xFF\xFF"), "////");
    EXPECT_EQ(Encoded("\0\0\0"s), "AAAA");
    EXPECT_EQ(Encoded(""), "");
}

TEST(Base64, LastGroupsArePadded)
{
    EXPECT_EQ(Encoded("A"), "BB==");      // 1, 1
    EXPECT_EQ(Encoded("AB"), "BJE=");     // 1, 9, 4
    EXPECT_EQ(Encoded("\xFB"), "7D==");   // 3B, 3
    EXPECT_EQ(Encoded("ABCA"), "BJ0QBB==");
}

TEST(Base64, DecodesWhatItWrote)
{
    EXPECT_EQ(Decoded("BJ0Q"), "ABC");
    EXPECT_EQ(Decoded("BB=="), "A");
    EXPECT_EQ(Decoded("BJE="), "AB");
    EXPECT_EQ(Decoded("7D=="), "\xFB");
    EXPECT_EQ(Decoded(""), "");
    std::string all;
    for (int i = 0; i < 256; ++i) all.push_back(static_cast<char>(i));
    for (std::size_t length = 250; length <= all.size(); ++length)
        EXPECT_EQ(Decoded(Encoded(all.substr(0, length))), all.substr(0, length));
}

TEST(Base64, ForeignCharactersAreSkipped)
{
    EXPECT_EQ(Decoded(" B\r\nJ-0_Q\t\xE9"), "ABC");
    EXPECT_EQ(Decoded("B.B.=.="), "A");
}

TEST(Base64, PaddingEndsTheData)
{
    EXPECT_EQ(Decoded("BB==BJ0Q"), "A");
    EXPECT_EQ(Decoded("BJE=BJ0Q"), "AB");
    EXPECT_EQ(Decoded("===="), "");
}

TEST(Base64, AnIncompleteGroupGivesNothing)
{
    EXPECT_EQ(Decoded("BJ0QBJ0"), "ABC");
    EXPECT_EQ(Decoded("BJ"), "");
}

TEST(Base64, AHundredBytesGive136Characters)
{
    EXPECT_EQ(Encoded(std::string(100, 'x')).size(), 136u);
}

TEST(Base64Standard, TheVectorsOfTheStandard)
{
    const std::pair<const char*, const char*> vectors[] = {
        {"", ""}, {"f", "Zg=="}, {"fo", "Zm8="}, {"foo", "Zm9v"}, {"foob", "Zm9vYg=="}, {"fooba", "Zm9vYmE="}, {"foobar", "Zm9vYmFy"},
    };
    for (const auto& [data, text] : vectors) {
        EXPECT_EQ(EncodedStandard(data), text);
        EXPECT_EQ(DecodedStandard(text), data);
    }
}

TEST(Base64Standard, EveryByteSurvives)
{
    std::string all;
    for (int i = 0; i < 256; ++i) all.push_back(static_cast<char>(i));
    EXPECT_EQ(DecodedStandard(EncodedStandard(all)), all);
    EXPECT_EQ(EncodedStandard("\xFB\xFF\xFE"), "+//+");
}
