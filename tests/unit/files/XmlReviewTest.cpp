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
