#include "files/XmlNode.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <limits>

static std::string NameOf(const CXmlNode* pNode)
{
    return pNode ? pNode->m_Name : "(none)";
}

static std::string TextOf(const CXmlNode* pNode)
{
    return pNode ? pNode->m_Text : "(none)";
}

static std::string ValueOf(const CXmlNode& node, const char* name)
{
    std::string text;
    node.GetAttribute(text, name, "(none)");
    return text;
}

// ---- Finding.

TEST(XmlNode, APathLeadsToTheFirstMatch)
{
    CXmlNode root;
    CXmlNode* pA = root.AddChild("a");
    pA->AddChild("b", "first");
    pA->AddChild("b", "second");
    root.AddChild("a", "second a");
    EXPECT_EQ(TextOf(root.FindChild("a\\b")), "first");
    EXPECT_EQ(root.FindChild("a"), pA);
    EXPECT_EQ(static_cast<const CXmlNode&>(root).FindChild("a"), pA);
}

TEST(XmlNode, AMissingPartGivesNull)
{
    CXmlNode root;
    root.AddChild("a")->AddChild("b");
    EXPECT_EQ(root.FindChild("x"), nullptr);
    EXPECT_EQ(root.FindChild("x\\b"), nullptr);
    EXPECT_EQ(root.FindChild("a\\x"), nullptr);
    EXPECT_EQ(root.FindChild("a\\b\\c"), nullptr);
    EXPECT_EQ(root.FindChild(""), nullptr);
    EXPECT_EQ(root.FindChild("a\\"), nullptr);
    EXPECT_EQ(root.FindChild("A"), nullptr);   // names respect case
}

TEST(XmlNode, IteratesOverOneName)
{
    CXmlNode root;
    CXmlNode* pList = root.AddChild("list");
    pList->AddChild("item", "1");
    pList->AddChild("other", "2");
    pList->AddChild("item", "3");
    EXPECT_EQ(TextOf(root.FindFirstChild("  list\\item")), "1");
    EXPECT_EQ(TextOf(root.FindNextChild()), "3");
    EXPECT_EQ(root.FindNextChild(), nullptr);
    EXPECT_EQ(root.FindNextChild(), nullptr);
    EXPECT_EQ(root.FindFirstChild("list\\none"), nullptr);
    EXPECT_EQ(root.FindFirstChild("none\\item"), nullptr);
    EXPECT_EQ(root.FindNextChild(), nullptr);
}

TEST(XmlNode, AnEmptyPathIteratesOverAllChildren)
{
    CXmlNode root;
    root.AddChild("a");
    root.AddCData("b");
    EXPECT_EQ(NameOf(root.FindFirstChild("")), "a");
    EXPECT_EQ(NameOf(root.FindNextChild()), "![CDATA[");
    EXPECT_EQ(root.FindNextChild(), nullptr);
    EXPECT_EQ(NameOf(root.FindFirstChild("   ")), "a");
    CXmlNode empty;
    EXPECT_EQ(empty.FindFirstChild(""), nullptr);
    EXPECT_EQ(empty.FindNextChild(), nullptr);
}

TEST(XmlNode, AnIterationSurvivesTheRemovalOfItsOwner)
{
    CXmlNode root;
    CXmlNode* pList = root.AddChild("list");
    pList->AddChild("item");
    ASSERT_NE(root.FindFirstChild("list\\item"), nullptr);
    pList->Remove();
    EXPECT_EQ(root.FindNextChild(), nullptr);

    root.AddChild("list")->AddChild("inner")->AddChild("item");
    ASSERT_NE(root.FindFirstChild("list\\inner\\item"), nullptr);
    root.FindChild("list")->Clear();
    EXPECT_EQ(root.FindNextChild(), nullptr);
}

TEST(XmlNode, AnIterationMayRemoveWhatItMeets)
{
    CXmlNode root;
    for (int i = 0; i < 5; ++i) root.AddChildInt("item", i);
    int removed = 0;
    for (CXmlNode* pNode = root.FindFirstChild("item"); pNode; pNode = root.FindNextChild(), ++removed) pNode->Remove();
    EXPECT_EQ(removed, 5);
    EXPECT_EQ(root.CountChildren(), 0);
}

TEST(XmlNode, CountsChildren)
{
    CXmlNode root;
    root.AddChild("a");
    root.AddChild("b");
    root.AddChild("a");
    EXPECT_EQ(root.CountChildren("a"), 2);
    EXPECT_EQ(root.CountChildren("c"), 0);
    EXPECT_EQ(root.CountChildren(), 3);
    EXPECT_EQ(root.CountChildren(""), 3);
}

TEST(XmlNode, ReadsCDataAndText)
{
    CXmlNode root;
    root.AddChildCData("code", "x < y");
    root.AddChild("plain", "some text");
    root.AddCData("own");
    std::string text = "kept";
    EXPECT_EQ(root.GetCData("plain", text), 0);
    EXPECT_EQ(root.GetCData("none", text), 0);
    EXPECT_EQ(text, "kept");
    EXPECT_EQ(root.GetCData("code", text), 1);
    EXPECT_EQ(text, "x < y");
    EXPECT_EQ(root.GetCData("", text), 1);
    EXPECT_EQ(text, "own");
    root.GetChildText(text, "plain", "default");
    EXPECT_EQ(text, "some text");
    root.GetChildText(text, "none", "default");
    EXPECT_EQ(text, "default");
    root.GetChildText(text, "code", "default");
    EXPECT_EQ(text, "");
}

// ---- Attributes.

TEST(XmlNode, IteratesOverAttributes)
{
    CXmlNode node;
    EXPECT_EQ(node.FirstAttribute(), nullptr);
    node.SetAttribute("a", "1");
    node.SetAttribute("b", "2");
    EXPECT_EQ(node.FirstAttribute()->m_Name, "a");
    EXPECT_EQ(node.NextAttribute()->m_Name, "b");
    EXPECT_EQ(node.NextAttribute(), nullptr);
    EXPECT_EQ(node.NextAttribute(), nullptr);
}

TEST(XmlNode, SettingReplacesTheFirstOfTheName)
{
    CXmlNode node;
    node.SetAttribute("a", "1");
    node.SetAttribute("b", "2");
    node.SetAttribute("a", "3");
    EXPECT_EQ(node.m_Attributes.size(), 2u);
    EXPECT_EQ(ValueOf(node, "a"), "3");
    node.RemoveAttribute("a");
    EXPECT_EQ(ValueOf(node, "a"), "(none)");
    node.RemoveAttribute("a");
    EXPECT_EQ(node.m_Attributes.size(), 1u);
    EXPECT_EQ(node.GetAttributeNode("a"), nullptr);
    EXPECT_EQ(node.GetAttributeNode("b")->m_Value, "2");
    EXPECT_EQ(static_cast<const CXmlNode&>(node).GetAttributeNode("B"), nullptr);
}

TEST(XmlNode, EachTypeHasItsText)
{
    CXmlNode node;
    node.SetAttribute("short", static_cast<short>(-32768));
    node.SetAttribute("int", -5);
    node.SetAttribute("long", 2147483647L);
    node.SetAttribute("long long", std::numeric_limits<long long>::min());
    node.SetAttribute("float", 0.5f);
    node.SetAttribute("double", 1.0 / 3);
    node.SetAttribute("yes", true);
    node.SetAttribute("no", false);
    node.SetAttribute("string", std::string("s"));
    EXPECT_EQ(ValueOf(node, "short"), "-32768");
    EXPECT_EQ(ValueOf(node, "int"), "-5");
    EXPECT_EQ(ValueOf(node, "long"), "2147483647");
    EXPECT_EQ(ValueOf(node, "long long"), "-9223372036854775808");
    EXPECT_EQ(ValueOf(node, "float"), "0.500000");
    EXPECT_EQ(ValueOf(node, "double"), "0.333333");
    EXPECT_EQ(ValueOf(node, "yes"), "True");
    EXPECT_EQ(ValueOf(node, "no"), "False");
    EXPECT_EQ(ValueOf(node, "string"), "s");
}

static int IntOf(const char* text)
{
    return CXmlAttribute("a", text).GetInt();
}

static std::int64_t Int64Of(const char* text)
{
    return CXmlAttribute("a", text).GetInt64();
}

TEST(XmlNode, IntegersAreDecimalOrBehindASmallX)
{
    EXPECT_EQ(IntOf("0x10"), 16);
    EXPECT_EQ(IntOf("0X10"), 0);
    EXPECT_EQ(IntOf("010"), 10);
    EXPECT_EQ(IntOf(" -12 bytes"), -12);
    EXPECT_EQ(IntOf("+7"), 7);
    EXPECT_EQ(IntOf(""), 0);
    EXPECT_EQ(IntOf("x"), 0);
    EXPECT_EQ(IntOf("0x"), 0);
    EXPECT_EQ(IntOf("0xfG"), 15);
    EXPECT_EQ(IntOf("0xFFFFFFFF"), -1);
    EXPECT_EQ(IntOf(" 0x10"), 0);
}

TEST(XmlNode, LongIntegers)
{
    EXPECT_EQ(Int64Of("0x100000000"), 4294967296);
    EXPECT_EQ(Int64Of("0xFFFFFFFFFFFFFFFF"), -1);
    EXPECT_EQ(Int64Of("0X10"), 0);
    EXPECT_EQ(Int64Of("-9223372036854775808"), std::numeric_limits<std::int64_t>::min());
    EXPECT_EQ(Int64Of("99999999999999999999"), std::numeric_limits<std::int64_t>::max());
    EXPECT_EQ(Int64Of("-99999999999999999999"), std::numeric_limits<std::int64_t>::min());
    EXPECT_EQ(Int64Of(" +12"), 12);
    EXPECT_EQ(Int64Of("none"), 0);
}

TEST(XmlNode, RealNumbers)
{
    EXPECT_DOUBLE_EQ(CXmlAttribute("a", "1.5e3").GetDouble(), 1500);
    EXPECT_DOUBLE_EQ(CXmlAttribute("a", " -0.25x").GetDouble(), -0.25);
    EXPECT_DOUBLE_EQ(CXmlAttribute("a", "none").GetDouble(), 0);
}

TEST(XmlNode, Booleans)
{
    for (const char* text : {"1", "true", "Yes", "TRUE", "yEs"})
        EXPECT_TRUE(CXmlAttribute("a", text).GetBool()) << text;
    for (const char* text : {"on", "0", "", "2", "no", "y", " true"})
        EXPECT_FALSE(CXmlAttribute("a", text).GetBool()) << text;
}

TEST(XmlNode, AMissingAttributeGivesTheDefault)
{
    CXmlNode node;
    EXPECT_EQ(ValueOf(node, "a"), "(none)");
    EXPECT_EQ(node.GetAttributeInt("a", 7), 7);
    EXPECT_EQ(node.GetAttributeInt64("a", 8), 8);
    EXPECT_DOUBLE_EQ(node.GetAttributeDouble("a", 0.5), 0.5);
    EXPECT_TRUE(node.GetAttributeBool("a", true));
    EXPECT_FALSE(node.GetAttributeBool("a"));
    node.SetAttribute("a", "0x20");
    EXPECT_EQ(node.GetAttributeInt("a", 7), 32);
    EXPECT_EQ(node.GetAttributeInt64("a", 8), 32);
    node.SetAttribute("a", "");
    EXPECT_EQ(node.GetAttributeInt("a", 7), 0);
    EXPECT_FALSE(node.GetAttributeBool("a", true));
    EXPECT_DOUBLE_EQ(node.GetAttributeDouble("a", 0.5), 0);
}

// ---- Building and taking apart.

TEST(XmlNode, AddsChildrenOfEachKind)
{
    CXmlNode root;
    const CXmlNode* pText = root.AddChild("a", "text");
    const CXmlNode* pInt = root.AddChildInt("b", -7);
    const CXmlNode* pSection = root.AddChildCData("c", "x");
    const CXmlNode* pInstruction = root.AddInstruction("go");
    EXPECT_EQ(pText->m_Parent, &root);
    EXPECT_EQ(TextOf(pText), "text");
    EXPECT_EQ(TextOf(pInt), "-7");
    EXPECT_EQ(NameOf(pSection), "c");
    EXPECT_EQ(NameOf(pSection->m_Children.at(0).get()), "![CDATA[");
    EXPECT_EQ(NameOf(pInstruction), "?");
    EXPECT_EQ(TextOf(pInstruction), "go");
    EXPECT_EQ(root.CountChildren(), 4);
}

TEST(XmlNode, RemovesAChild)
{
    CXmlNode root;
    CXmlNode* pA = root.AddChild("a");
    root.AddChild("b");
    pA->Remove();
    ASSERT_EQ(root.CountChildren(), 1);
    EXPECT_EQ(NameOf(root.FindFirstChild("")), "b");
}

TEST(XmlNode, RemoveOnANodeWithoutParentClears)
{
    CXmlNode root;
    root.m_Name = "root";
    root.m_Text = "text";
    root.AddChild("a");
    root.SetAttribute("x", "1");
    root.Remove();
    EXPECT_EQ(root.m_Name, "");
    EXPECT_EQ(root.m_Text, "");
    EXPECT_EQ(root.CountChildren(), 0);
    EXPECT_TRUE(root.m_Attributes.empty());
}

TEST(XmlNode, CopiesDeeplyAndReusesWhatIsThere)
{
    CXmlNode source;
    source.m_Name = "source";
    source.m_Text = "text";
    source.SetAttribute("x", "1");
    source.AddChild("a", "1")->AddChild("b", "2")->SetAttribute("y", "3");
    source.AddCData("section");

    CXmlNode target;
    target.SetAttribute("old", "1");
    target.SetAttribute("surplus", "2");
    CXmlNode* pReused = target.AddChild("old");
    pReused->AddChild("surplus")->AddChild("deep");
    target.AddChild("second");
    target.AddChild("surplus");
    const CXmlAttribute* pReusedAttribute = target.m_Attributes[0].get();
    target.CopyFrom(&source);

    EXPECT_EQ(target.m_Name, "source");
    EXPECT_EQ(target.m_Text, "text");
    ASSERT_EQ(target.m_Attributes.size(), 1u);
    EXPECT_EQ(target.m_Attributes[0].get(), pReusedAttribute);
    EXPECT_EQ(ValueOf(target, "x"), "1");
    ASSERT_EQ(target.CountChildren(), 2);
    EXPECT_EQ(target.m_Children[0].get(), pReused);
    EXPECT_EQ(NameOf(pReused), "a");
    EXPECT_EQ(pReused->m_Parent, &target);
    EXPECT_EQ(TextOf(target.FindChild("a\\b")), "2");
    EXPECT_EQ(ValueOf(*target.FindChild("a\\b"), "y"), "3");
    EXPECT_EQ(NameOf(target.m_Children[1].get()), "![CDATA[");
    EXPECT_EQ(source.CountChildren(), 2);
}

TEST(XmlNode, CopyingNullClearsAndCopyingItselfChangesNothing)
{
    CXmlNode node;
    node.m_Name = "a";
    node.AddChild("b");
    node.CopyFrom(&node);
    EXPECT_EQ(node.CountChildren(), 1);
    node.CopyFrom(nullptr);
    EXPECT_EQ(node.m_Name, "");
    EXPECT_EQ(node.CountChildren(), 0);
}

TEST(XmlNode, ANodeCanBeCopiedIntoItsOwnTree)
{
    CXmlNode root;
    root.m_Name = "root";
    CXmlNode* pA = root.AddChild("a", "1");
    pA->CopyFrom(&root);
    EXPECT_EQ(TextOf(root.FindChild("root\\a")), "1");
    EXPECT_EQ(root.FindChild("root\\a\\root"), nullptr);

    CXmlNode outer;
    outer.AddChild("x")->AddChild("y", "2")->AddChild("z", "3");
    outer.CopyFrom(outer.FindChild("x\\y"));
    EXPECT_EQ(outer.m_Name, "y");
    EXPECT_EQ(TextOf(outer.FindChild("z")), "3");
}

TEST(XmlNode, ADeepTreeNeedsNoDeepStack)
{
    constexpr int depth = 100000;
    CXmlNode root;
    CXmlNode* pLast = &root;
    for (int i = 0; i < depth; ++i) pLast = pLast->AddChild("n");
    pLast->m_Text = "bottom";

    CXmlNode copy;
    copy.CopyFrom(&root);
    int count = 0;
    const CXmlNode* pNode = &copy;
    for (; pNode->CountChildren() == 1; ++count) pNode = pNode->m_Children[0].get();
    EXPECT_EQ(count, depth);
    EXPECT_EQ(pNode->m_Text, "bottom");

    root.Clear();
    EXPECT_EQ(root.CountChildren(), 0);
    copy.m_Children[0]->Remove();
    EXPECT_EQ(copy.CountChildren(), 0);
}
