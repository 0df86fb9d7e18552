#include "files/XmlDocument.h"

#include "files/FileSizeLimit.h"
#include "files/TemporaryDirectory.h"
#include "files/TextFile.h"
#include "files/XmlParser.h"

#include <gtest/gtest.h>

using namespace std::string_literals;

static std::string ValueOf(const CXmlNode& node, const char* name)
{
    std::string text;
    node.GetAttribute(text, name, "(none)");
    return text;
}

static std::string Formatted(CXmlDocument& document)
{
    std::string text = "replaced";
    document.GetFormattedXml(text);
    return text;
}

static std::string Compact(CXmlDocument& document)
{
    std::string text = "replaced";
    document.GetXml(text);
    return text;
}

// ---- Parsing: elements and attributes.

TEST(XmlParsing, AttributesMayStandApart)
{
    CXmlDocument document;
    ASSERT_EQ(document.LoadFromString("<a b = \"1\"\r\n\tc='2\"'d=\"\"/>"), 0);
    EXPECT_EQ(document.m_Root.m_Name, "a");
    EXPECT_EQ(ValueOf(document.m_Root, "b"), "1");
    EXPECT_EQ(ValueOf(document.m_Root, "c"), "2\"");
    EXPECT_EQ(ValueOf(document.m_Root, "d"), "");
    EXPECT_EQ(document.m_Root.m_Attributes.size(), 3u);
}

TEST(XmlParsing, JunkBeforeTheQuoteIsTolerated)
{
    CXmlDocument document;
    ASSERT_EQ(document.LoadFromString("<a b=x\"1\"/>"), 0);
    EXPECT_EQ(ValueOf(document.m_Root, "b"), "1");
}

TEST(XmlParsing, RepeatedAttributesAreAllKept)
{
    CXmlDocument document;
    ASSERT_EQ(document.LoadFromString("<a b='1' b='2'/>"), 0);
    EXPECT_EQ(document.m_Root.m_Attributes.size(), 2u);
    EXPECT_EQ(ValueOf(document.m_Root, "b"), "1");
}

TEST(XmlParsing, ElementsNest)
{
    CXmlDocument document;
    ASSERT_EQ(document.LoadFromString("junk < a ><b>1</b><b/><c><d x='&lt;'/></c></a>junk<e>"), 0);
    EXPECT_EQ(document.m_Root.m_Name, "a");
    EXPECT_EQ(document.m_Root.CountChildren("b"), 2);
    EXPECT_EQ(document.m_Root.FindChild("b")->m_Text, "1");
    EXPECT_EQ(document.m_Root.FindChild("b")->m_Parent, &document.m_Root);
    EXPECT_EQ(ValueOf(*document.m_Root.FindChild("c\\d"), "x"), "<");
    EXPECT_EQ(document.m_Root.m_Text, "");
}

TEST(XmlParsing, ASlashEndsTheElementAtTheNextBracket)
{
    CXmlDocument document;
    ASSERT_EQ(document.LoadFromString("<a><b x='1' / junk><c/></a>"), 0);
    EXPECT_EQ(document.m_Root.CountChildren(), 2);
}

TEST(XmlParsing, AClosingNameMayBeTheBeginning)
{
    CXmlDocument document;
    EXPECT_EQ(document.LoadFromString("<abc></ab>"), 0);
    EXPECT_EQ(document.LoadFromString("<abc></>"), 0);
    EXPECT_EQ(document.LoadFromString("<abc></ abc junk>"), 0);
    EXPECT_LT(document.LoadFromString("<abc></abcd>"), 0);
    EXPECT_LT(document.LoadFromString("<abc></b>"), 0);
    EXPECT_LT(document.LoadFromString("<abc></abc\n>"), 0);   // the line feed is part of the name
}

TEST(XmlParsing, AnElementThatTheEndLeavesOpenIsNoFault)
{
    CXmlDocument document;
    EXPECT_EQ(document.LoadFromString("<a><b>lost text"), 0);
    ASSERT_NE(document.m_Root.FindChild("b"), nullptr);
    EXPECT_EQ(document.m_Root.FindChild("b")->m_Text, "");
}

TEST(XmlParsing, AZeroByteEndsTheText)
{
    CXmlDocument document;
    EXPECT_EQ(document.LoadFromString("<a><b/>\0</x>"s), 0);
    EXPECT_EQ(document.m_Root.CountChildren(), 1);
    EXPECT_LT(document.LoadFromString("\0<a/>"s), 0);
}

// ---- Parsing: text.

static std::string TextOfElement(const std::string& content)
{
    CXmlDocument document;
    EXPECT_EQ(document.LoadFromString("<a>" + content + "</a>"), 0);
    return document.m_Root.m_Text;
}

TEST(XmlParsing, OuterWhiteSpaceAndLineEndsGo)
{
    EXPECT_EQ(TextOfElement("  x\n  y  "), "x  y");
    EXPECT_EQ(TextOfElement("\r\n\t QUJD\r\n REVG\r\n"), "QUJD REVG");
    EXPECT_EQ(TextOfElement(" \r\n\t"), "");
}

TEST(XmlParsing, OnlyPlainAsciiStays)
{
    EXPECT_EQ(TextOfElement("a\xE9" "b\x7F" "c\x01" "d\te~"), "abcde~");
}

TEST(XmlParsing, EntitiesAreDecodedBehindTheCleaning)
{
    EXPECT_EQ(TextOfElement(" &lt;&eacute;&nbsp; "), "<\xE9 ");
    EXPECT_EQ(TextOfElement("&l\nt;"), "<");
    EXPECT_EQ(TextOfElement("&unknown;"), "&unknown;");
    EXPECT_EQ(TextOfElement("&#xe8;"), "&#xe8;");
}

TEST(XmlParsing, TextAroundChildrenIsJoined)
{
    EXPECT_EQ(TextOfElement(" one <b/> two <!-- x --> three "), "onetwothree");
}

// ---- Parsing: marks.

TEST(XmlParsing, MarksInsideAnElementStandInOrder)
{
    CXmlDocument document;
    ASSERT_EQ(document.LoadFromString("<a><!-- x > y --><?go on?><![CDATA[ <b> ]] > ]]><!ELEMENT z></a>"), 0);
    const auto& children = document.m_Root.m_Children;
    ASSERT_EQ(children.size(), 4u);
    EXPECT_EQ(children[0]->m_Name, "!--");
    EXPECT_EQ(children[0]->m_Text, " x > y ");
    EXPECT_EQ(children[1]->m_Name, "?");
    EXPECT_EQ(children[1]->m_Text, "go on");
    EXPECT_EQ(children[2]->m_Name, "![CDATA[");
    EXPECT_EQ(children[2]->m_Text, " <b> ]] > ");
    EXPECT_EQ(children[3]->m_Name, "!!!");
    EXPECT_EQ(children[3]->m_Text, "!ELEMENT z");
}

TEST(XmlParsing, CommentsBeforeTheRootStandInReverse)
{
    CXmlDocument document;
    ASSERT_EQ(document.LoadFromString("<?xml version='1.0'?><!--1--><!DOCTYPE a><!--2--><![CDATA[c]]><!--3--><a/>"), 0);
    const auto& nodes = document.m_Prolog.m_Children;
    ASSERT_EQ(nodes.size(), 6u);
    EXPECT_EQ(nodes[0]->m_Text, "3");
    EXPECT_EQ(nodes[1]->m_Text, "2");
    EXPECT_EQ(nodes[2]->m_Text, "1");
    EXPECT_EQ(nodes[3]->m_Text, "xml version='1.0'");
    EXPECT_EQ(nodes[4]->m_Text, "!DOCTYPE a");
    EXPECT_EQ(nodes[5]->m_Text, "c");
    EXPECT_EQ(nodes[5]->m_Name, "![CDATA[");
}

TEST(XmlParsing, AnInternalSubsetEndsEarly)
{
    CXmlDocument document;
    ASSERT_EQ(document.LoadFromString("<!DOCTYPE a [<!ENTITY b 'c'>]><a/>"), 0);
    EXPECT_EQ(document.m_Prolog.m_Children.at(0)->m_Text, "!DOCTYPE a [<!ENTITY b 'c'");
    EXPECT_EQ(document.m_Root.m_Name, "a");
}

// ---- Parsing: each fault.

TEST(XmlParsing, EachFaultHasItsNumber)
{
    const std::pair<const char*, int> cases[] = {
        {"<", 1}, {"<a>< \r\n", 1}, {"<abc", 2}, {"<a ", 3}, {"<a b='1' ", 3}, {"<a /", 4}, {"<a></a", 11}, {"<a></a x", 4},
        {"<a b", 5}, {"<a b ", 6}, {"<a b>", 7}, {"<a b c='1'>", 7}, {"<a b=", 8}, {"<a b=1>", 8}, {"<a b='1>", 9}, {"<a b='1\">", 9},
        {"<a></", 10}, {"<a></ ", 10}, {"<a></b>", 12}, {"<![CDATA[x]>", 13}, {"<!--x->", 15}, {"<!-->", 15}, {"<?x>", 17}, {"<!x", 18},
        {"<a><b></c></b></a>", 12}, {"<a/>", 0}, {"no markup", 0}, {"<!-- only -->", 0},
    };
    for (const auto& [text, result] : cases) {
        CXmlDocument document;
        EXPECT_EQ(XmlParser(document, text).Parse(), result) << text;
        EXPECT_EQ(document.LoadFromString(text) < 0, result != 0) << text;
    }
}

TEST(XmlParsing, WhatWasReadBeforeAFaultStays)
{
    CXmlDocument document;
    EXPECT_EQ(document.LoadFromString("<a><b x='1'/><c y></a>"), static_cast<int>(0x80004005));
    EXPECT_EQ(document.m_Root.m_Name, "a");
    EXPECT_EQ(document.m_Root.CountChildren(), 2);
    EXPECT_EQ(ValueOf(*document.m_Root.FindChild("c"), "y"), "");
}

TEST(XmlParsing, LoadingReplacesTheOldContent)
{
    CXmlDocument document;
    ASSERT_EQ(document.LoadFromString("<!--x--><a b='1'>text<c/></a>"), 0);
    ASSERT_EQ(document.LoadFromString("<d/>"), 0);
    EXPECT_EQ(Formatted(document), "<d/>");
}

TEST(XmlParsing, CostsGrowWithTheTextAlone)
{
    // Each of these would take minutes if a byte were looked at again and again.
    constexpr int count = 200000;
    std::string comments, ampersands = "<a>", siblings = "<a>", attributes = "<a>";
    for (int i = 0; i < count; ++i) {
        comments += "<!---->";
        ampersands += "&<b>&</b>";
        siblings += "<b/>";
        attributes += "<b c='&&&'/>";
    }
    CXmlDocument document;
    EXPECT_EQ(document.LoadFromString(comments + "<a/>"), 0);
    EXPECT_EQ(document.m_Prolog.CountChildren(), count);
    EXPECT_EQ(document.LoadFromString(ampersands + "</a>"), 0);
    EXPECT_EQ(document.m_Root.m_Text.size(), static_cast<std::size_t>(count));
    EXPECT_EQ(document.LoadFromString(siblings + "</a>"), 0);
    EXPECT_EQ(document.m_Root.CountChildren(), count);
    EXPECT_EQ(document.LoadFromString(attributes + "</a>"), 0);
    EXPECT_EQ(document.LoadFromString("<a>" + std::string(1000000, '&') + "</a>"), 0);
    EXPECT_EQ(document.m_Root.m_Text.size(), 1000000u);
}

// ---- Writing.

TEST(XmlWriting, TheFormattedFormIndentsWithTabs)
{
    CXmlDocument document;
    document.m_Root.m_Name = "a";
    document.m_Root.SetAttribute("x", "1 < 2 \"q\" 'p'");
    document.m_Root.SetAttribute("y", "");
    CXmlNode* pB = document.m_Root.AddChild("b", "te\"xt");
    pB->AddChild("c");
    pB->AddChild("d", "leaf & leaf");
    document.m_Root.AddCData("a < b & c");
    document.m_Root.AddChild("!--", " note ");
    document.m_Root.AddInstruction("go");
    document.m_Root.AddChild("!!!", "!ELEMENT z");
    EXPECT_EQ(Formatted(document), "<a x=\"1 &lt; 2 &quot;q&quot; 'p'\" y=\"\">\r\n"
                                   "\t<b>te\"xt\r\n"
                                   "\t\t<c/>\r\n"
                                   "\t\t<d>leaf &amp; leaf</d>\r\n"
                                   "\t</b>\r\n"
                                   "\t<![CDATA[a < b & c]]>\r\n"
                                   "\t<!-- note -->\r\n"
                                   "\t<?go?>\r\n"
                                   "\t<!ELEMENT z>\r\n"
                                   "</a>");
    EXPECT_EQ(Compact(document), "<a x=\"1 &lt; 2 &quot;q&quot; 'p'\" y=\"\">"
                                 "<b>te\"xt<c/><d>leaf &amp; leaf</d></b>"
                                 "<![CDATA[a < b & c]]><!-- note --><?go?><!ELEMENT z></a>");
    EXPECT_EQ(document.m_Indent, 0);
}

TEST(XmlWriting, AnEmptyRootIsNamedXml)
{
    CXmlDocument document;
    EXPECT_EQ(Formatted(document), "<xml/>");
    EXPECT_EQ(document.m_Root.m_Name, "xml");
    document.m_Root.m_Text = "text";
    EXPECT_EQ(Formatted(document), "<xml>text</xml>");
}

TEST(XmlWriting, ThePrologHasLineEndsInBothForms)
{
    CXmlDocument document;
    ASSERT_EQ(document.LoadFromString("<?xml?><!--1--><!DOCTYPE a><![CDATA[gone]]><!--2--><a><b/></a>"), 0);
    const std::string prolog = "<!--2-->\r\n<!--1-->\r\n<?xml?>\r\n<!DOCTYPE a>\r\n";
    EXPECT_EQ(Formatted(document), prolog + "<a>\r\n\t<b/>\r\n</a>");
    EXPECT_EQ(Compact(document), prolog + "<a><b/></a>");
}

TEST(XmlWriting, ANumericReferenceIsWrittenBackUnchanged)
{
    CXmlDocument document;
    ASSERT_EQ(document.LoadFromString("<a b=\"&#123;\">&#123;</a>"), 0);
    EXPECT_EQ(Formatted(document), "<a b=\"&#123;\">&#123;</a>");
}

// ---- Files.

TEST(XmlFile, SavesAndLoads)
{
    const TemporaryDirectory directory;
    CXmlDocument document;
    document.m_Root.m_Name = "a";
    document.m_Root.SetAttribute("x", "caf\xE9");
    document.m_Root.SetAttribute("y", "\xE4\x81");
    ASSERT_EQ(document.Save(directory.Name("a.xml")), 0);
    // The byte without an entity goes out as the code point of its number.
    EXPECT_EQ(directory.Read("a.xml"), "<a x=\"caf&#233;\" y=\"\xC3\xA4\xC2\x81\"/>");
    EXPECT_EQ(directory.CountEntries(), 1);

    CXmlDocument second;
    ASSERT_EQ(second.Load(directory.Name("a.xml")), 0);
    EXPECT_EQ(ValueOf(second.m_Root, "x"), "caf\xE9");
    EXPECT_EQ(ValueOf(second.m_Root, "y"), "\xE4\x81");
}

TEST(XmlFile, LoadsWithAndWithoutAByteOrderMark)
{
    const TemporaryDirectory directory;
    CXmlDocument document;
    directory.Make("a.xml", "\xEF\xBB\xBF<a b='\xC3\xA9\xE2\x82\xAC'/>");
    ASSERT_EQ(document.Load(directory.Name("a.xml")), 0);
    EXPECT_EQ(ValueOf(document.m_Root, "b"), "\xE9\x80");
    document.m_Encoding = TextFile::Detect;
    directory.Make("16.xml", "\xFF\xFE<\0a\0/\0>\0"s);
    ASSERT_EQ(document.Load(directory.Name("16.xml")), 0);
    EXPECT_EQ(document.m_Root.m_Name, "a");
}

TEST(XmlFile, TheEncodingIsThatOfTheDocument)
{
    const TemporaryDirectory directory;
    CXmlDocument document;
    document.m_Root.m_Name = "a";
    document.m_Root.m_Text = "\xE4";
    document.m_Encoding = TextFile::Ansi;
    ASSERT_EQ(document.Save(directory.Name("a.xml")), 0);
    EXPECT_EQ(directory.Read("a.xml"), "<a>\xE4</a>");
    document.m_Encoding = TextFile::Utf16HighFirst;
    ASSERT_EQ(document.Save(directory.Name("a.xml")), 0);
    EXPECT_EQ(directory.Read("a.xml"), "\0<\0a\0>\0\xE4\0<\0/\0a\0>"s);
}

TEST(XmlFile, OnlyTheCompactFormTranslatesLineFeeds)
{
    const TemporaryDirectory directory;
    CXmlDocument document;
    document.m_Prolog.AddInstruction("xml");
    document.m_Root.m_Name = "a";
    document.m_Root.m_Text = "x\ny";
    document.m_Root.AddChild("b");
    ASSERT_EQ(document.Save(directory.Name("a.xml")), 0);
    EXPECT_EQ(directory.Read("a.xml"), "<?xml?>\r\n<a>x\ny\r\n\t<b/>\r\n</a>");
    ASSERT_EQ(document.SaveCompact(directory.Name("a.xml")), 0);
    EXPECT_EQ(directory.Read("a.xml"), "<?xml?>\r\r\n<a>x\r\ny<b/></a>");
}

TEST(XmlFile, AnEmptyMissingOrUnreadableFileFails)
{
    const TemporaryDirectory directory;
    CXmlDocument document;
    EXPECT_LT(document.Load(directory.Name("none.xml")), 0);
    EXPECT_LT(document.Load(directory.Path()), 0);
    EXPECT_LT(document.Load(directory.Make("empty.xml", "")), 0);
    EXPECT_LT(document.Load(directory.Make("mark.xml", "\xEF\xBB\xBF")), 0);
    EXPECT_LT(document.LoadFromString(""), 0);
}

TEST(XmlFile, AFileWithOnlyACommentLoadsWithAnEmptyRoot)
{
    const TemporaryDirectory directory;
    CXmlDocument document;
    EXPECT_EQ(document.Load(directory.Make("a.xml", "<!-- nothing -->")), 0);
    EXPECT_EQ(document.m_Root.m_Name, "");
    EXPECT_EQ(document.m_Prolog.CountChildren(), 1);
}

TEST(XmlFile, CannotSaveOverADirectoryOrIntoAMissingOne)
{
    const TemporaryDirectory directory;
    CXmlDocument document;
    EXPECT_LT(document.Save(directory.Path()), 0);
    EXPECT_LT(document.Save(directory.Name("none/a.xml")), 0);
    EXPECT_EQ(directory.CountEntries(), 0);
}

TEST(XmlFile, AFullDiskLeavesTheEarlierFile)
{
    const TemporaryDirectory directory;
    directory.Make("a.xml", "earlier");
    CXmlDocument document;
    document.m_Root.m_Name = "a";
    for (const std::size_t length : {2000, 200000}) {
        document.m_Root.m_Text = std::string(length, 'x');
        const FileSizeLimit limit(1000);
        EXPECT_LT(document.Save(directory.Name("a.xml")), 0);
        EXPECT_LT(document.SaveCompact(directory.Name("a.xml")), 0);
        EXPECT_LT(document.Save(directory.Name("b.xml")), 0);
    }
    EXPECT_EQ(directory.Read("a.xml"), "earlier");
    EXPECT_EQ(directory.CountEntries(), 1);
}

TEST(XmlFile, ADeviceIsWrittenToAndNotReplaced)
{
    CXmlDocument document;
    EXPECT_EQ(document.Save("/dev/null"), 0);
    EXPECT_LT(document.Save("/dev/full"), 0);
    EXPECT_TRUE(std::filesystem::is_character_file("/dev/null"));
    EXPECT_TRUE(std::filesystem::is_character_file("/dev/full"));
}

TEST(XmlFile, WithoutRoomForANameBesideItTheFileIsWrittenInPlace)
{
    const TemporaryDirectory directory;
    const std::string longName(254, 'n');   // one more byte is allowed, and a second name needs more
    directory.Make(longName, "earlier");
    CXmlDocument document;
    ASSERT_EQ(document.Save(directory.Name(longName)), 0);
    EXPECT_EQ(directory.Read(longName), "<xml/>");

    document.m_Root.m_Text = std::string(2000, 'x');
    const FileSizeLimit limit(1000);
    EXPECT_LT(document.Save(directory.Name(longName)), 0);
    EXPECT_EQ(directory.Read(longName), "<xml/>");
    EXPECT_EQ(directory.CountEntries(), 1);
}

TEST(XmlFile, ALinkStaysOneAndPermissionsAreKept)
{
    const TemporaryDirectory directory;
    directory.Make("real.xml", "earlier");
    const std::filesystem::perms permissions = std::filesystem::perms::owner_read | std::filesystem::perms::owner_write;
    std::filesystem::permissions(directory.Name("real.xml"), permissions);
    std::filesystem::create_symlink(directory.Name("real.xml"), directory.Name("link.xml"));
    CXmlDocument document;
    ASSERT_EQ(document.Save(directory.Name("link.xml")), 0);
    EXPECT_TRUE(std::filesystem::is_symlink(directory.Name("link.xml")));
    EXPECT_EQ(directory.Read("real.xml"), "<xml/>");
    EXPECT_EQ(std::filesystem::status(directory.Name("real.xml")).permissions(), permissions);
    EXPECT_EQ(directory.CountEntries(), 2);
}

// ---- Depth.

TEST(XmlDepth, AHundredThousandLevelsAreReadWrittenAndDeleted)
{
    constexpr int depth = 100000;
    std::string text;
    for (int i = 0; i < depth; ++i) text += "<n>";
    text += "bottom";
    for (int i = 0; i < depth; ++i) text += "</n>";
    const TemporaryDirectory directory;
    CXmlDocument document;
    ASSERT_EQ(document.Load(directory.Make("deep.xml", text)), 0);
    EXPECT_EQ(Compact(document), text);
    ASSERT_EQ(document.SaveCompact(directory.Name("deep.xml")), 0);
    EXPECT_EQ(directory.Read("deep.xml"), text);
    document.Clear();
    EXPECT_EQ(document.m_Root.CountChildren(), 0);
}

TEST(XmlDepth, TheIndentationOfADeepDocumentLeavesInPieces)
{
    constexpr int depth = 1000;
    CXmlDocument document;
    document.m_Root.m_Name = "n";
    CXmlNode* pNode = &document.m_Root;
    std::string expected = "<n>\r\n";
    for (int i = 1; i < depth; ++i) {
        pNode = pNode->AddChild("n");
        expected += std::string(static_cast<std::size_t>(i), '\t') + (i == depth - 1 ? "<n/>\r\n" : "<n>\r\n");
    }
    for (int i = depth - 2; i >= 0; --i)
        expected += std::string(static_cast<std::size_t>(i), '\t') + "</n>" + (i > 0 ? "\r\n" : "");
    const TemporaryDirectory directory;
    ASSERT_EQ(document.Save(directory.Name("a.xml")), 0);
    EXPECT_EQ(directory.Read("a.xml"), expected);
    EXPECT_EQ(Formatted(document), expected);
}
