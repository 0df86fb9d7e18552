#include "files/XmlReview.h"

#include "files/XmlDocument.h"

#include <gtest/gtest.h>

static XmlPosition PositionOf(const XmlReview& review, std::size_t offset)
{
    return review.GetPosition(offset);
}

TEST(XmlReviewTest, KnowsWhereNodesAndAttributesStand)
{
    CXmlDocument document;
    XmlReview review;
    ASSERT_EQ(0, document.LoadFromString("<a>\n  <b c='1'\n\td = \"x&lt;y\"/></a>", &review));
    EXPECT_TRUE(review.IsFilled());
    EXPECT_TRUE(review.GetFaults().empty());
    const CXmlNode* pNode = document.m_Root.FindChild("b");
    ASSERT_NE(nullptr, pNode);
    const CXmlAttribute* pFirst = pNode->GetAttributeNode("c");
    const CXmlAttribute* pSecond = pNode->GetAttributeNode("d");
    EXPECT_EQ(1u, review.FindNode(document.m_Root));
    EXPECT_EQ(7u, review.FindNode(*pNode));
    EXPECT_EQ(9u, review.FindAttribute(*pFirst));
    EXPECT_EQ(16u, review.FindAttribute(*pSecond));
    EXPECT_EQ("1", review.GetRawValue(*pFirst));
    EXPECT_EQ("x&lt;y", review.GetRawValue(*pSecond));
    EXPECT_EQ("x<y", pSecond->m_Value);
}

TEST(XmlReviewTest, CountsLinesAndColumnsFromOne)
{
    CXmlDocument document;
    XmlReview review;
    ASSERT_EQ(0, document.LoadFromString("<a>\n\n <b/></a>", &review));
    const std::pair<std::size_t, std::pair<int, int>> places[] = {
        {0, {1, 1}}, {3, {1, 4}}, {4, {2, 1}}, {5, {3, 1}}, {6, {3, 2}}, {14, {3, 10}},   // behind the last character
    };
    for (const auto& [offset, place] : places) {
        EXPECT_EQ(place.first, PositionOf(review, offset).line) << offset;
        EXPECT_EQ(place.second, PositionOf(review, offset).column) << offset;
    }
    EXPECT_EQ(-1, PositionOf(review, 15).line);
    EXPECT_EQ(-1, PositionOf(review, std::string_view::npos).column);
}

TEST(XmlReviewTest, WhatWasNotReadHasNoPlace)
{
    const XmlReview review;
    const CXmlAttribute attribute("name", "value");
    EXPECT_FALSE(review.IsFilled());
    EXPECT_EQ(std::string_view::npos, review.FindAttribute(attribute));
    EXPECT_EQ("value", review.GetRawValue(attribute));
    EXPECT_EQ(-1, review.GetPosition(0).line);
}

TEST(XmlReviewTest, ForgetsTheTextBefore)
{
    CXmlDocument document;
    XmlReview review;
    document.LoadFromString("<a b=1\"1\">", &review);
    EXPECT_EQ(2u, review.GetFaults().size());   // the junk, and the element left open
    document.LoadFromString("<a b=\"1\"/>", &review);
    EXPECT_TRUE(review.GetFaults().empty());
    document.LoadFromString("", &review);
    EXPECT_FALSE(review.IsFilled());
}

// ---- What is said, and where

// The faults of a text, one a line: the offset and the words.
static std::string FaultsOf(std::string_view text)
{
    CXmlDocument document;
    XmlReview review;
    document.LoadFromString(text, &review);
    std::string faults;
    for (const XmlFault& fault : review.GetFaults())
        faults += std::to_string(fault.offset) + " " + XmlReview::Describe(fault) + "\n";
    return faults;
}

TEST(XmlReviewTest, TellsWhyNothingIsReadFromSomewhere)
{
    const std::pair<std::string_view, std::string_view> reasons[] = {
        {"<a> <", "4 |a \"<\" at the end of the text"},
        {"<a><b", "3 |a tag without its \">\""},
        {"<a><b ", "3 |a tag without its \">\""},
        {"<a><b /", "3 |a tag without its \">\""},
        {"<a></a b", "3 |a tag without its \">\""},
        {"<a><b c", "3 |the text ends in an attribute"},
        {"<a><b c ", "6 |the text ends in an attribute"},
        {"<a><b c d=\"1\"/>", "6 |an attribute without \"=\"; a quote in front of it may be missing"},
        {"<a><b c=1/>", "6 |an attribute without a value in quotes"},
        {"<a><b c=\"1/>", "6 |a value whose closing quote is missing"},
        {"<a></", "3 |the text ends in a closing tag"},
        {"<a></a", "3 |the text ends in a closing tag"},
        {"<a></b>", "3 |a closing name that isn't that of the open element"},
        {"<a></a\t>", "3 |a line end or tab behind a closing name"},
        {"<a><![CDATA[x]]", "3 |a CDATA section that isn't closed"},
        {"<a><!-- x", "3 |a comment that isn't closed"},
        {"<a><?x", "3 |an instruction that isn't closed"},
        {"<a><!x", "3 |a declaration that isn't closed"},
    };
    for (const auto& [text, reason] : reasons) {
        const std::size_t bar = reason.find('|');
        const std::string expected = std::string(reason.substr(0, bar)) + "nothing is read from here on: " +
                                     std::string(reason.substr(bar + 1)) + "\n";
        EXPECT_EQ(expected, FaultsOf(text)) << text;
    }
}

TEST(XmlReviewTest, TellsWhatIsReadOtherwiseThanMeant)
{
    EXPECT_EQ("1 the element a is never closed\n", FaultsOf("<a>"));
    EXPECT_EQ("7 the closing name isn't ab, which it closes\n", FaultsOf("<ab> </a>"));
    EXPECT_EQ("5 what stands behind the closing name a isn't read\n", FaultsOf("<a></a b>"));
    EXPECT_EQ("2 what stands between \"/\" and the next \">\" isn't read\n", FaultsOf("<a/ b='1'>"));
    EXPECT_EQ("3 what stands between \"b=\" and the next quote isn't read\n", FaultsOf("<a b=1'2'/>"));
    EXPECT_EQ("1 no name can be \"1\"; a quote or bracket stands wrong\n", FaultsOf("<1/>"));
    EXPECT_EQ("3 no name can be \"'\"; a quote or bracket stands wrong\n", FaultsOf("<a '='1'/>"));
    EXPECT_EQ("9 the attribute b stands twice; the first counts\n", FaultsOf("<a b='1' b='2'/>"));
    EXPECT_EQ("3 the comment hides the beginning of another one; it isn't closed before\n",
              FaultsOf("<a><!-- <!-- --></a>"));
    EXPECT_EQ("3 \"<!\" begins neither comment nor section here, and hides a tag\n", FaultsOf("<a><!x <b/></a>"));
    EXPECT_EQ("4 what stands behind the end of the document element isn't read\n", FaultsOf("<a/>b"));
    EXPECT_EQ("14 what stands behind the end of the document element isn't read\n", FaultsOf("<a/><!-- --> \n?<b/>"));
    EXPECT_EQ("5 what stands behind the end of the document element isn't read\n", FaultsOf("<a/>\n<? b"));
}

TEST(XmlReviewTest, TellsWhatIsReadAsMeantButIsNoXml)
{
    EXPECT_EQ("0 white space behind \"<\"\n", FaultsOf("< a/>"));
    EXPECT_EQ("6 white space in front of the closing name a\n", FaultsOf("<a></ a>"));
    EXPECT_EQ("8 no white space in front of the attribute c\n", FaultsOf("<a b='1'c='2'/>"));
    EXPECT_EQ("6 \"<\" in the value of the attribute b\n", FaultsOf("<a b='<'/>"));
    EXPECT_EQ("8 \"--\" in a comment\n", FaultsOf("<a><!-- -- --></a>"));
    EXPECT_EQ("3 \"<!\" begins neither comment nor section here\n", FaultsOf("<a><!x></a>"));
    EXPECT_EQ("0 text in front of the document element\n", FaultsOf("x<a/>"));
    EXPECT_EQ("0 text in front of the document element\n", FaultsOf("<![CDATA[x]]><a/>"));
}

TEST(XmlReviewTest, NamesMayHaveAllThatXmlAllows)
{
    EXPECT_EQ("", FaultsOf("<_a-1.B:9 :x='1' \xC3\xA4z='2' Z='3'/>"));
    EXPECT_EQ("1 no name can be \"-a\"; a quote or bracket stands wrong\n", FaultsOf("<-a/>"));
    EXPECT_EQ("1 no name can be \"a{\"; a quote or bracket stands wrong\n", FaultsOf("<a{/>"));
}

// The reader ends a DOCTYPE at its first ">"; by XML it ends outside quotes, comments, instructions and brackets.
TEST(XmlReviewTest, ADoctypeEndsWhereXmlEndsIt)
{
    EXPECT_EQ("", FaultsOf("<!DOCTYPE a SYSTEM '>' \"x>y\"><a/>"));
    EXPECT_EQ("", FaultsOf("<!DOCTYPE a [<!ENTITY b '1'> <!-- ]> --> <?c ]> ?> ]><a/>"));
    EXPECT_EQ("21 what the DOCTYPE holds is read as the document\n"
              "25 what stands behind the end of the document element isn't read\n",
              FaultsOf("<!DOCTYPE a [<!b c> <d/> ]><a/>"));
    EXPECT_EQ("", FaultsOf("<!DOCTYPE a ]><a/>"));   // more brackets closed than opened
}

TEST(XmlReviewTest, ADoctypeThatNeverEndsReachesToTheEnd)
{
    EXPECT_EQ("27 what the DOCTYPE holds is read as the document\n"
              "31 what stands behind the end of the document element isn't read\n",
              FaultsOf("<!DOCTYPE a [<!ELEMENT x> <a/> '"));
}
