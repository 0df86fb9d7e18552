#include "target/TargetReview.h"

#include "files/XmlDocument.h"
#include "files/XmlReview.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <map>
#include <set>

namespace fs = std::filesystem;

// A target that is as it should be; the tests change one place each. Lines are counted from <DEVICE> = 2.
static constexpr std::string_view g_Whole = R"(<?xml version="1.0" encoding="utf-8"?>
<DEVICE>
  <COMPILER>
    <TARGET>
      <IEC AllowedDataTypes="INT,DINT,BOOL" PointerType="UDINT"/>
      <COMPILER>
        <DATAFORMAT>
          <DATATYPE name="BOOL" size="1" align="1"/>
          <DATATYPE name="INT" size="16" align="2"/>
          <DATATYPE name="UDINT" size="32" align="4"/>
        </DATAFORMAT>
      </COMPILER>
      <VM>
        <AREA name="INPUT" segment="1000" size="100" code="1"/>
        <AREA name="OUTPUT" segment="2000" size="100" code="2"/>
        <AREA name="GLOBAL" size="4096" code="4"/>
        <AREA name="ABSOLUTE" code="7"/>
        <PROGRAM name="main" id="1" required="true"/>
        <PROGRAM name="init" id="2" auto="yes" initglobal="1" pou_begin="NOP{cr}NOP" end="NOP"/>
        <RETURNSTACK size="1024" maxsize="2048" calloverload="8" align="4" nestedprogram="1"/>
        <PARAMETERSTACK size="256" maxsize="512"/>
      </VM>
      <LIBRARY>QUJDREVG</LIBRARY>
    </TARGET>
  </COMPILER>
</DEVICE>
)";

static std::string Change(std::string_view from, std::string_view to)
{
    std::string text(g_Whole);
    const std::size_t place = text.find(from);
    EXPECT_NE(std::string::npos, place) << from;
    if (place != std::string::npos) text.replace(place, from.size(), to);
    return text;
}

static std::vector<TargetFinding> Review(std::string_view text, TargetReviewScope scope)
{
    CXmlDocument target;
    XmlReview review;
    target.LoadFromString(text, &review);
    return ReviewTarget(target, review, scope);
}

// The findings as "kind line:column", one a line.
static std::string List(const std::vector<TargetFinding>& findings)
{
    std::string list;
    for (const TargetFinding& finding : findings) {
        if (!list.empty()) list += "\n";
        list += std::string(GetName(finding.kind));
        list += " " + std::to_string(finding.line) + ":" + std::to_string(finding.column);
    }
    return list;
}


// Every "@" of the text, which is taken out, is the place of one of the kinds, in their order.
static void ExpectFindings(std::string text, const std::vector<std::string>& kinds, TargetReviewScope scope)
{
    std::string expected;
    std::size_t index = 0;
    for (std::size_t i = text.find('@'); i != std::string::npos; i = text.find('@', i)) {
        text.erase(i, 1);
        const auto line = std::count(text.begin(), text.begin() + static_cast<std::ptrdiff_t>(i), '\n') + 1;
        const std::size_t lineStart = i == 0 ? std::string::npos : text.rfind('\n', i - 1);
        if (index > 0) expected += "\n";
        ASSERT_LT(index, kinds.size()) << "a place without a kind";
        expected += kinds[index++] + " " + std::to_string(line) + ":" + std::to_string(i - lineStart);
    }
    EXPECT_EQ(index, kinds.size()) << "a kind without a place";
    EXPECT_EQ(expected, List(Review(text, scope))) << text;
}

// These findings and no others, all of them notes.
static void ExpectNotes(std::string_view from, std::string_view to, const std::vector<std::string>& kinds)
{
    SCOPED_TRACE(to);
    ExpectFindings(Change(from, to), kinds, TargetReviewScope::Notes);
}

// These findings and no others in the check by itself, and no notes.
static void ExpectAll(std::string_view from, std::string_view to, const std::vector<std::string>& kinds)
{
    SCOPED_TRACE(to);
    std::string text = Change(from, to);
    ExpectFindings(text, kinds, TargetReviewScope::All);
    text.erase(std::remove(text.begin(), text.end(), '@'), text.end());
    EXPECT_EQ("", List(Review(text, TargetReviewScope::Notes)));
}

static void ExpectNothing(std::string_view from, std::string_view to)
{
    ExpectAll(from, to, {});
}

static std::string FirstText(std::string_view from, std::string_view to)
{
    const std::vector<TargetFinding> findings = Review(Change(from, to), TargetReviewScope::All);
    return findings.empty() ? std::string() : findings.front().text;
}

TEST(TargetReviewTest, WholeTargetDrawsNothing)
{
    EXPECT_EQ("", List(Review(g_Whole, TargetReviewScope::All)));
}

TEST(TargetReviewTest, EverySpellingOfXmlIsFree)
{
    ExpectNothing("<DEVICE>", "<!-- a target -->\n<?style x?>\n<!DOCTYPE DEVICE SYSTEM \"d.dtd\">\n<DEVICE\n>");
    ExpectNothing("<DEVICE>", "<!DOCTYPE D [<!ELEMENT D ANY> <!-- it's ]> --> <!ENTITY a \"]>\">]>\n<DEVICE>");
    ExpectNothing("<DEVICE>", "<DEVICE xmlns:xsi=\"http://www.w3.org/2001/XMLSchema-instance\""
                              " xsi:noNamespaceSchemaLocation=\"target.xsd\">");
    ExpectNothing("<DATATYPE name=\"INT\" size=\"16\" align=\"2\"/>",
                  "<DATATYPE align = '2'\n size\n=\n'16'\tname='INT' ></DATATYPE >");
    ExpectNothing("</VM>", "<!-- </VM> --><?x <VM>?><![CDATA[<AREA name=\"GLOBAL\"/>]]><x:y z=\"1\"/></VM>");
    ExpectNothing("</DEVICE>\n", "</DEVICE>\n<!-- the <end> -->\n<?x?>\n");
    ExpectNothing("utf-8", "ISO-8859-1");   // of which it has only what is ASCII too
    ExpectAll("<?xml version=\"1.0\" encoding=\"utf-8\"?>", "@<?xml version=\"1.0\" encoding=\"UTF-16\"?>",
              {"wrong-encoding"});
    ExpectNothing("end=\"NOP\"", "end=\"&lt;&amp;&gt;&quot;&apos;&#60;&#x3E; it's > {cr}\"");
    ExpectNothing("QUJDREVG", "\r\n  QUJD<!-- wrapped -->\r\n  RA==\r\n");
    std::string text(g_Whole);
    for (std::size_t i = text.find('\n'); i != std::string::npos; i = text.find('\n', i + 2)) text.insert(i, "\r");
    EXPECT_EQ("", List(Review(text, TargetReviewScope::All)));
}

TEST(TargetReviewTest, ReadingStops)
{
    ExpectNotes("<RETURNSTACK", "@</WRONG><RETURNSTACK", {"reading-stops"});
    ExpectNotes("<RETURNSTACK", "<A @b c=\"1\"/><RETURNSTACK", {"reading-stops"});
    ExpectNotes("<RETURNSTACK size=\"1024\"", "<A b=\"1/><RETURNSTACK size=\"@1024\"", {"reading-stops"});
    ExpectNotes("</LIBRARY>", "</LIBRARY><A @b=\"1/>", {"reading-stops"});
    ExpectNotes("<LIBRARY>", "@<!-- <LIBRARY>", {"reading-stops"});
    ExpectNotes("</LIBRARY>", "@</LIBRARY\n>", {"reading-stops"});
    EXPECT_EQ("nothing is read from here on: a line end or tab behind a closing name",
              FirstText("</LIBRARY>", "</LIBRARY\n>"));
    EXPECT_EQ("nothing is read from here on: a closing name that isn't that of the open element",
              FirstText("<RETURNSTACK", "</WRONG><RETURNSTACK"));
}

TEST(TargetReviewTest, ClosingNames)
{
    ExpectNotes("</VM>", "</@V>", {"malformed"});
    ExpectNotes("</VM>", "</@>", {"malformed"});
    ExpectNotes("</VM>", "</@VM <AREA name=\"RETAIN\"/>", {"malformed"});
    ExpectNothing("</VM>", "</VM >");
    ExpectAll("</VM>", "</ @VM>", {"untidy"});
    // Of the three elements that nothing closes the innermost is named.
    std::string open(g_Whole.substr(0, g_Whole.find("</TARGET>")));
    open.insert(open.find("TARGET"), "@");
    ExpectFindings(open, {"malformed"}, TargetReviewScope::Notes);
}

TEST(TargetReviewTest, Quotes)
{
    ExpectNotes("code=\"7\"/>", "@code=7 x=\"7\"/>", {"malformed"});
    ExpectNothing("code=\"7\"/>", "code= \"7\"/>");
    ExpectNotes("name=\"main\"", "@name=main\"main\"", {"malformed"});
    }

TEST(TargetReviewTest, JunkInTags)
{
    ExpectNotes("code=\"7\"/>", "code=\"7\"@/ size=\"1\">", {"malformed"});
    ExpectNothing("code=\"7\"/>", "code=\"7\" />");
    ExpectNotes("code=\"7\"/>", "code=\"7\" @code=\"8\"/>", {"malformed"});
    ExpectNotes("code=\"7\"/>", "code=\"7\" @\"x=\"8\"/>", {"malformed"});
    ExpectAll("name=\"main\" ", "name=\"main\"@", {"untidy"});
    ExpectAll("end=\"NOP\"", "end=\"NOP @< 1\"", {"untidy"});
    ExpectAll("<VM>", "@< VM>", {"untidy"});
}

TEST(TargetReviewTest, WhatHidesTags)
{
    ExpectNotes("<VM>", "@<!-- <A/> <!-- --><VM>", {"malformed"});
    ExpectAll("<VM>", "<!-- @-- areas -- --><VM>", {"untidy"});
    ExpectNotes("<VM>", "@<!- <A/><VM>", {"malformed"});
    ExpectAll("<VM>", "@<!ELEMENT VM><VM>", {"untidy"});
}

TEST(TargetReviewTest, WhatStandsOutsideTheDocumentElement)
{
    ExpectNotes("</DEVICE>\n", "</DEVICE>\n@</DEVICE>\n", {"malformed"});
    ExpectNotes("</DEVICE>\n", "</DEVICE>\n<!-- c -->@x\n", {"malformed"});
    ExpectAll("<DEVICE>", "@x<DEVICE>", {"untidy"});
    // The first ">" in the subset ends the DOCTYPE for the reader, so that <E> is the document.
    CXmlDocument target;
    XmlReview review;
    target.LoadFromString("<!DOCTYPE D [<!ENTITY a \"><E></E>\">]>\n<D/>", &review);
    ASSERT_EQ(2u, review.GetFaults().size());
    EXPECT_EQ(XmlFaultKind::SubsetReadAsDocument, review.GetFaults()[0].kind);
    EXPECT_EQ(XmlFaultKind::TextBehindRoot, review.GetFaults()[1].kind);
}

TEST(TargetReviewTest, UndecodedReferences)
{
    for (const std::string_view reference : {"&#10;", "&#xe8;", "&#x27;", "&unit;", "& &lt;"})
        ExpectNotes("end=\"NOP\"", "@end=\"NOP" + std::string(reference) + "\"", {"undecoded-reference"});
    ExpectNothing("end=\"NOP\"", "end=\"NOP&#232;&lt;\"");
    ExpectNothing("</VM>", "<x:y z=\"&#10;\"/></VM>");   // isn't read
    ExpectAll("end=\"NOP\"", "@end=\"A & B; C\"", {"untidy"});
    ExpectAll("end=\"NOP\"", "@end=\"A & B\"", {"untidy"});
}

TEST(TargetReviewTest, NotANumber)
{
    for (const std::string_view value : {"", "x", "16bit", "1 6", "0X10", "-0x10", " 0x10", "0x", "0x1G", "0x-1", "1e3",
                                         "4k", "1,024", "+", "- 1", "0x 1", "1.5"})
        ExpectNotes("size=\"4096\"", "@size=\"" + std::string(value) + "\"", {"not-a-number"});
    for (const std::string_view value : {"0", "010", "+4", " 4 ", "0x1000", "0xAbC", "0x1 ", "2147483647"})
        ExpectNothing("size=\"4096\"", "size=\"" + std::string(value) + "\"");
    ExpectNotes("<DATATYPE name=\"INT\" size=\"16\"", "<DATATYPE name=\"INT\" @size=\"16 bits\"", {"not-a-number"});
    ExpectNotes("code=\"7\"", "@code=\"seven\"", {"not-a-number"});
    ExpectNotes("id=\"1\"", "@id=\"one\"", {"not-a-number"});
    ExpectNotes("maxsize=\"512\"", "@maxsize=\"512 bytes\"", {"not-a-number"});
    EXPECT_EQ("the value \"0X10\" of size isn't a number and is read as 0", FirstText("size=\"4096\"", "size=\"0X10\""));
}

TEST(TargetReviewTest, NumbersBeyondTheirBits)
{
    ExpectNotes("size=\"4096\"", "@size=\"2147483648\"", {"number-too-large"});
    ExpectNotes("size=\"4096\"", "@size=\"0x100000000\"", {"number-too-large"});
    ExpectNothing("code=\"7\"", "code=\"-2147483648\"");
    ExpectNotes("code=\"7\"", "@code=\"-2147483649\"", {"number-too-large"});
    ExpectNothing("code=\"7\"", "code=\"0x00000000FFFFFFFF\"");
    ExpectNotes("size=\"4096\"", "@size=\"99999999999999999999999999\"", {"number-too-large"});
}

TEST(TargetReviewTest, NegativeNumbers)
{
    ExpectNotes("size=\"4096\"", "@size=\"-1\"", {"negative-number"});
    ExpectNotes("size=\"4096\"", "@size=\"0xFFFFFFFF\"", {"negative-number"});
    ExpectNotes("align=\"2\"", "@align=\"-2\"", {"negative-number"});
    ExpectNotes("calloverload=\"8\"", "@calloverload=\"-8\"", {"negative-number"});
    ExpectNotes("align=\"4\" nested", "@align=\"-4\" nested", {"negative-number"});
    ExpectNotes("maxsize=\"512\"", "@maxsize=\"-1\"", {"negative-number"});
    ExpectNothing("code=\"7\"", "code=\"-1\"");
    ExpectNothing("id=\"1\"", "id=\"-1\"");
    ExpectNothing("size=\"4096\"", "size=\"0\"");
    ExpectAll("align=\"2\"", "@align=\"0\"", {"out-of-range"});
    ExpectNothing(" align=\"1\"", "");   // the first of its kind: 0, which counts as 1
    ExpectAll("segment=\"1000\"", "@segment=\"-1000\"", {"out-of-range"});
}

TEST(TargetReviewTest, Booleans)
{
    for (const std::string_view value : {"on", "y", "2", " true", "wahr", "01"})
        ExpectNotes("initglobal=\"1\"", "@initglobal=\"" + std::string(value) + "\"", {"not-a-boolean"});
    for (const std::string_view value : {"TRUE", "Yes", "1", "0", "no", "False", "OFF", "", " "})
        ExpectNothing("initglobal=\"1\"", "initglobal=\"" + std::string(value) + "\"");
    ExpectNotes("nestedprogram=\"1\"", "@nestedprogram=\"on\"", {"not-a-boolean"});
}

TEST(TargetReviewTest, DataTypes)
{
    ExpectNotes("name=\"INT\"", "@name=\"Int\"", {"unknown-data-type"});
    ExpectNotes("name=\"INT\"", "@name=\"STRING\"", {"unknown-data-type"});
    ExpectNotes("<DATATYPE name=\"INT\"", "<@DATATYPE", {"unknown-data-type"});
    ExpectNothing("name=\"INT\"", "name=\"TIME\"");
    ExpectAll("name=\"UDINT\"", "@name=\"INT\"", {"repeated-data-type"});
    ExpectNotes("size=\"16\"", "@size=\"0\"", {"type-without-size"});
    ExpectNotes("<DATATYPE name=\"BOOL\" size=\"1\"", "<@DATATYPE name=\"BOOL\"", {"type-without-size"});
    ExpectNothing("name=\"INT\" size=\"16\"", "name=\"LINT\" size=\"0\"");   // never allowed
    ExpectNothing(" size=\"32\"", "");
    ExpectAll("size=\"16\"", "@size=\"12\"", {"out-of-range"});
}

TEST(TargetReviewTest, PointerType)
{
    ExpectNotes("PointerType=\"UDINT\"", "@PointerType=\"udint\"", {"unknown-pointer-type"});
    ExpectNotes("PointerType=\"UDINT\"", "@PointerType=\"STRING\"", {"unknown-pointer-type"});
    ExpectNotes("IEC AllowedDataTypes=\"INT,DINT,BOOL\" PointerType=\"UDINT\"", "@IEC AllowedDataTypes=\"INT,DINT,BOOL\"",
                {"unknown-pointer-type"});
    ExpectNotes("PointerType=\"UDINT\"", "@PointerType=\"TIME\"", {"pointer-without-size"});
    ExpectNotes("PointerType=\"UDINT\"", "@PointerType=\"BOOL\"", {"pointer-without-size"});
    ExpectNothing("PointerType=\"UDINT\"", "PointerType=\"DWORD\"");
    EXPECT_EQ("no elementary type is named \"udint\": pointers are of type UDINT",
              FirstText("PointerType=\"UDINT\"", "PointerType=\"udint\""));
}

TEST(TargetReviewTest, AllowedTypes)
{
    ExpectAll("AllowedDataTypes=\"INT,DINT,BOOL\"", "@@@AllowedDataTypes=\"INT bool LINTS TIME DATE\"",
              {"name-never-met", "name-never-met", "name-never-met"});
    ExpectNothing("AllowedDataTypes=\"INT,DINT,BOOL\"", "AllowedDataTypes=\"BOOLINT; REAL\"");
    ExpectNothing("AllowedDataTypes=\"INT,DINT,BOOL\"", "AllowedDataTypes=\"\"");
}

TEST(TargetReviewTest, Areas)
{
    constexpr std::string_view heads = R"(<VM>
        <AREA name="INPUT" segment="1000" size="100" code="1"/>
        <AREA name="OUTPUT" segment="2000" size="100" code="2"/>
        <AREA name="GLOBAL" size="4096" code="4"/>
        <AREA name="ABSOLUTE" code="7"/>)";
    constexpr std::string_view global = "<AREA name=\"GLOBAL\" size=\"1\"/>";
    constexpr std::string_view absolute = "<AREA name=\"ABSOLUTE\"/>";
    ExpectNothing(heads, "<VM>" + std::string(global));
    ExpectNothing(heads, "<VM>" + std::string(global) + "<AREA name=\"INPUT\" size=\"9\"/>");
    ExpectNotes(heads, "<@VM>" + std::string(global) + "<AREA name=\"MEMORY\" code=\"3\"/>", {"missing-area"});
    ExpectNotes(heads, "<@VM>" + std::string(absolute), {"missing-area"});
    ExpectNotes(heads, "<@VM>", {"missing-area"});
    ExpectNotes("<AREA name=\"OUTPUT\"", "<@AREA name=\"INPUT\"", {"repeated-area"});
    ExpectNotes(heads, "<VM><AREA name=\"GLOBAL\"/><@AREA name=\"GLOBAL\"/>", {"repeated-area"});
    ExpectNotes("name=\"OUTPUT\"", "@name=\"Output\"", {"name-in-other-case"});
    ExpectNotes("name=\"OUTPUT\"", "@name=\" OUTPUT\"", {"name-in-other-case"});
    ExpectAll("name=\"OUTPUT\"", "@name=\"Input\"", {"unknown-area"});
    ExpectAll("name=\"OUTPUT\"", "@name=\"STACK\"", {"unknown-area"});
    ExpectAll("<AREA name=\"OUTPUT\"", "<@AREA", {"unknown-area"});
}

TEST(TargetReviewTest, OverlapsAndCodes)
{
    ExpectAll("<AREA name=\"OUTPUT\" segment=\"2000\"", "<@AREA name=\"OUTPUT\" segment=\"1099\"", {"overlapping-areas"});
    ExpectNothing("segment=\"2000\"", "segment=\"1100\"");
    ExpectNothing("segment=\"2000\"", "segment=\"900\"");
    ExpectAll("<AREA name=\"OUTPUT\" segment=\"2000\"", "<@AREA name=\"OUTPUT\" segment=\"901\"", {"overlapping-areas"});
    ExpectNothing("segment=\"2000\" size=\"100\"", "segment=\"1000\" size=\"0\"");
    ExpectAll("code=\"4\"", "@code=\"0x1\"", {"repeated-code"});
    ExpectAll("id=\"2\"", "@id=\"1\"", {"repeated-code"});
    ExpectNothing("code=\"4\"", "code=\"-1\"");
}

TEST(TargetReviewTest, Programs)
{
    ExpectNotes("name=\"init\"", "@name=\"main\"", {"repeated-program"});
    ExpectNotes("name=\"init\"", "@name=\"\"", {"unnamed-program"});
    ExpectNotes("<PROGRAM name=\"init\"", "<@PROGRAM", {"unnamed-program"});
    ExpectAll("name=\"init\" id=\"2\" auto=\"yes\"", "@name=\"Main\" id=\"2\"", {"name-never-met"});
    ExpectAll("name=\"init\"", "@name=\"Init\"", {"name-never-met"});
    ExpectNothing("name=\"init\" id=\"2\" auto=\"yes\"", "name=\"Init\" id=\"2\" auto=\"no\"");
    for (const std::string_view name : {"-end", "1st", "a b", "a__b", "a.b"})
        ExpectAll("name=\"init\"", "@name=\"" + std::string(name) + "\"", {"name-never-met"});
    ExpectNothing("name=\"init\"", "name=\"_in_it2\"");
}

TEST(TargetReviewTest, NodesAndAttributes)
{
    ExpectNotes("</VM>", "</VM><@VM><AREA name=\"GLOBAL\" size=\"x\"/></VM>", {"repeated-node"});
    ExpectNotes("<VM>", "<@IEC/><VM>", {"repeated-node"});
    ExpectNotes("</LIBRARY>", "</LIBRARY><@LIBRARY/>", {"repeated-node"});
    ExpectNotes("</VM>", "<@RETURNSTACK/></VM>", {"repeated-node"});
    ExpectNotes("</VM>", "<@Area name=\"RETAIN\"/></VM>", {"name-in-other-case"});
    ExpectNotes("<LIBRARY>QUJDREVG</LIBRARY>", "<@Library>QUJDREVG</Library>", {"name-in-other-case"});
    ExpectAll("</LIBRARY>", "</LIBRARY><@Library/>", {"unknown-node"});
    ExpectAll("</VM>", "<@MODULE size=\"x\"><AREA/></MODULE></VM>", {"unknown-node"});
    ExpectNotes("align=\"2\"", "@Align=\"2\"", {"name-in-other-case"});
    ExpectAll("align=\"2\"", "align=\"2\" @Align=\"4\"", {"unknown-attribute"});
    ExpectAll("align=\"2\"", "align=\"2\" @offset=\"-x\"", {"unknown-attribute"});
    ExpectAll("<VM>", "<@VM>AREA name=\"LOCAL\"/>", {"stray-text"});
    ExpectAll("size=\"256\"", "@size=\"513\"", {"out-of-range"});
    ExpectNothing("size=\"256\"", "size=\"512\"");
}

TEST(TargetReviewTest, MissingNodesHaveNoPlace)
{
    const std::vector<TargetFinding> findings = Review("<D><COMPILER/></D>", TargetReviewScope::All);
    ASSERT_EQ(1u, findings.size());
    EXPECT_EQ(TargetFindingKind::MissingNode, findings[0].kind);
    EXPECT_EQ("the node COMPILER\\TARGET is missing", findings[0].text);
    EXPECT_EQ(-1, findings[0].line);
    EXPECT_EQ("", List(Review("<D><COMPILER/></D>", TargetReviewScope::Notes)));
    EXPECT_EQ("missing-node -1:-1", List(Review("", TargetReviewScope::All)));
}

TEST(TargetReviewTest, Library)
{
    ExpectNotes("<LIBRARY>QUJDREVG", "<@LIBRARY>QUJD-EVG", {"library-damaged"});
    ExpectNotes("<LIBRARY>QUJDREVG", "<@LIBRARY>QUJD&#13;\nREVG", {"library-damaged"});
    ExpectNotes("<LIBRARY>QUJDREVG", "<@LIBRARY>QUJDREV", {"library-damaged"});
    ExpectNotes("<LIBRARY>QUJDREVG", "<@LIBRARY>QUI=REVG", {"library-damaged"});
    ExpectNothing("<LIBRARY>QUJDREVG", "<LIBRARY>QUJDRA==");
    ExpectNothing("<LIBRARY>QUJDREVG", "<LIBRARY> \n ");
    ExpectNothing("<LIBRARY>QUJDREVG", "<LIBRARY>QUJD RE VG");
    ExpectNotes("<LIBRARY>QUJDREVG", "<@LIBRARY>QUJD RE V", {"library-damaged"});
    ExpectNotes("<LIBRARY>QUJDREVG", "<@LIBRARY><![CDATA[QUJDREVG]]>", {"library-in-section"});
    ExpectNothing("<LIBRARY>QUJDREVG", "<LIBRARY>QUJDREVG<![CDATA[ ]]>");
}

TEST(TargetReviewTest, TextsAreOneLineOfPlainCharacters)
{
    const std::string text = FirstText("size=\"4096\"", "size=\"a\nb\xE9\x01" + std::string(100, 'x') + "\"");
    EXPECT_EQ("the value \"a b? " + std::string(35, 'x') + "...\" of size isn't a number and is read as 0", text);
}

TEST(TargetReviewTest, DeepFilesNeedNoDeepStack)
{
    std::string deep;
    constexpr int depth = 200000;
    for (int i = 0; i < depth; ++i) deep += "<VM>";
    // The closing name of TARGET meets the innermost VM.
    EXPECT_EQ("reading-stops 24:5", List(Review(Change("</VM>", deep), TargetReviewScope::Notes)));
}

// ---- Files

static std::vector<TargetFinding> ReviewBytes(const std::string& bytes, const std::string& name)
{
    const fs::path file = fs::path(testing::TempDir()) / (name + ".xml");
    std::ofstream(file, std::ios::binary) << bytes;
    std::vector<TargetFinding> findings;
    EXPECT_TRUE(ReviewTargetFile(file.string(), TargetReviewScope::All, findings));
    fs::remove(file);
    return findings;
}

static std::string ToUtf16(std::string_view text)
{
    std::string bytes = "\xFF\xFE";
    for (const char c : text) {
        bytes += c;
        bytes += '\0';
    }
    return bytes;
}

TEST(TargetReviewTest, BytesOfFiles)
{
    const std::string whole(g_Whole);
    EXPECT_EQ("", List(ReviewBytes(whole, "plain")));
    EXPECT_EQ("", List(ReviewBytes("\xEF\xBB\xBF" + whole, "marked")));
    EXPECT_EQ("", List(ReviewBytes(whole + std::string(3, '\0'), "padded")));
    EXPECT_EQ("", List(ReviewBytes(Change("end=\"NOP\"", "end=\"\xC3\xA9\""), "utf8")));
    EXPECT_EQ("wrong-encoding 19:91", List(ReviewBytes(Change("end=\"NOP\"", "end=\"\xE9 NOP\""), "ansi")));
    // The mark of UTF-16 is text in front of the first "<", which a zero byte follows.
    EXPECT_EQ("wrong-encoding 1:1\nuntidy 1:1\nreading-stops 1:3\nmissing-node -1:-1", List(ReviewBytes(ToUtf16(whole), "utf16")));
    EXPECT_EQ("wrong-encoding 1:1", List(ReviewBytes("<?xml version=\"1.0\" encoding=\"ISO-8859-1\"?>" +
                                                         Change("end=\"NOP\"", "end=\"\xC3\xA9\"").substr(38), "declared")));
    EXPECT_EQ("malformed 2:2\nwrong-encoding 27:1",
              List(ReviewBytes(Change("</DEVICE>\n", std::string("\n\0</DEVICE>", 11)), "cut")));
    std::vector<TargetFinding> findings;
    EXPECT_FALSE(ReviewTargetFile(testing::TempDir() + "/no such file.xml", TargetReviewScope::All, findings));
}

// The columns of a file count characters, not bytes, also behind a mark and beyond the code page.
TEST(TargetReviewTest, ColumnsCountCharacters)
{
    const std::string text = Change("segment=\"1000\"", "y:z=\"\xC3\xA9\xE4\xB8\xAD\" segment=\"x\"");
    EXPECT_EQ("not-a-number 14:37", List(ReviewBytes("\xEF\xBB\xBF" + text, "columns")));
}
