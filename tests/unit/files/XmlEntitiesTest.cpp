#include "files/XmlEntities.h"

#include <gtest/gtest.h>

namespace
{

struct EntityCase
{
    const char* decoded;
    const char* named;
    const char* decimal;
    const char* hexadecimal;   // null: there is none
    const char* inText;        // as written in the text of an element
    const char* inValue;       // as written in the value of an attribute
};

constexpr EntityCase g_Cases[] = {
    {"<", "&lt;", "&#60;", "&#x3C;", "&lt;", "&lt;"},
    {">", "&gt;", "&#62;", "&#x3E;", "&gt;", "&gt;"},
    {"\"", "&quot;", "&#34;", "&#x22;", "\"", "&quot;"},
    {"&", "&amp;", "&#38;", "&#x26;", "&amp;", "&amp;"},
    {"'", "&apos;", "&#39;", nullptr, "'", "'"},
    {" ", "&nbsp;", "&#160;", "&#xA0;", " ", " "},
    {"\x80", "&euro;", "&#8364;", "&#x20AC;", "&#8364;", "&#8364;"},
    {"\xA3", "&pound;", "&#163;", "&#xA3;", "&#163;", "&#163;"},
    {"\xA7", "&sect;", "&#167;", "&#xA7;", "&#167;", "&#167;"},
    {"\xB0", "&deg;", "&#176;", "&#xB0;", "&#176;", "&#176;"},
    {"\xB2", "&sup2;", "&#178;", "&#xB2;", "&#178;", "&#178;"},
    {"\xB5", "&micro;", "&#181;", "&#xB5;", "&#181;", "&#181;"},
    {"\xE0", "&agrave;", "&#224;", "&#xE0;", "&#224;", "&#224;"},
    {"\xE7", "&ccedil;", "&#231;", "&#xE7;", "&#231;", "&#231;"},
    {"\xE8", "&egrave;", "&#232;", "&#xE8;", "&#232;", "&#232;"},
    {"\xE9", "&eacute;", "&#233;", "&#xE9;", "&#233;", "&#233;"},
    {"\xEC", "&igrave;", "&#236;", "&#xEC;", "&#236;", "&#236;"},
    {"\xF2", "&ograve;", "&#242;", "&#xF2;", "&#242;", "&#242;"},
    {"\xF9", "&ugrave;", "&#249;", "&#xF9;", "&#249;", "&#249;"},
};

}   // namespace

static std::string Encoded(std::string_view text, XmlPlace place)
{
    std::string output = ">";
    AppendEncoded(output, text, place);
    return output.substr(1);
}

TEST(XmlEntities, EachSpellingOfTheTableIsDecoded)
{
    for (const EntityCase& entity : g_Cases) {
        EXPECT_EQ(DecodeEntities(entity.named), entity.decoded);
        EXPECT_EQ(DecodeEntities(entity.decimal), entity.decoded);
        if (!entity.hexadecimal) continue;
        EXPECT_EQ(DecodeEntities(entity.hexadecimal), entity.decoded);
    }
}

TEST(XmlEntities, EachByteOfTheTableIsEncoded)
{
    for (const EntityCase& entity : g_Cases) {
        EXPECT_EQ(Encoded(entity.decoded, XmlPlace::ElementText), entity.inText);
        EXPECT_EQ(Encoded(entity.decoded, XmlPlace::AttributeValue), entity.inValue);
    }
}

TEST(XmlEntities, OtherBytesStay)
{
    EXPECT_EQ(Encoded("a\x81\xA0\xE4\xFF\r\n\t", XmlPlace::ElementText), "a\x81\xA0\xE4\xFF\r\n\t");
}

TEST(XmlEntities, AnyOtherSpellingStays)
{
    for (const char* text : {"&unknown;", "&#xe8;", "&#x27;", "&LT;", "&#060;", "&;", "&#;", "&#x;", "&#65;", "& lt;"})
        EXPECT_EQ(DecodeEntities(text), text);
}

TEST(XmlEntities, WithoutASemicolonTheRestStays)
{
    EXPECT_EQ(DecodeEntities("a&lt;b&lt c"), "a<b&lt c");
}

TEST(XmlEntities, DecodingIsOnePass)
{
    EXPECT_EQ(DecodeEntities("&amp;lt;"), "&lt;");
}

TEST(XmlEntities, DecodingGoesOnBehindAKeptEntity)
{
    EXPECT_EQ(DecodeEntities("&x &lt;&gt;"), "&x &lt;>");   // "&x &lt;" is one entity, and unknown
}

TEST(XmlEntities, AReferenceInTheTextSurvivesTheWriting)
{
    EXPECT_EQ(Encoded("&#123;", XmlPlace::AttributeValue), "&#123;");
    EXPECT_EQ(Encoded("&lt;&", XmlPlace::ElementText), "&amp;lt;&amp;");
}
