#include "files/XmlStream.h"

#include "files/TemporaryDirectory.h"
#include "files/TextFile.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <limits>

TEST(XmlStream, AnElementTakesAttributesThenTextThenChildren)
{
    std::string out;
    XmlStream stream(XmlStream::Form::Formatted, out, nullptr);
    stream.BeginElement("a");
    stream.WriteAttribute("x", "1 < 2 \"q\" 'p' & \xE9");
    stream.WriteText("te\"xt > 1");
    stream.BeginElement("b");
    stream.EndElement();
    stream.BeginElement("c");
    stream.WriteText("leaf");
    stream.EndElement();
    stream.BeginElement("d");
    stream.BeginElement("e");
    stream.WriteAttribute("y", "");
    stream.EndElement();
    stream.WriteMark("<!-- note -->");
    stream.EndElement();
    stream.EndElement();
    EXPECT_TRUE(stream.Finish());
    EXPECT_EQ(out, "<a x=\"1 &lt; 2 &quot;q&quot; 'p' &amp; &#233;\">te\"xt &gt; 1\r\n"
                   "\t<b/>\r\n"
                   "\t<c>leaf</c>\r\n"
                   "\t<d>\r\n"
                   "\t\t<e y=\"\"/>\r\n"
                   "\t\t<!-- note -->\r\n"
                   "\t</d>\r\n"
                   "</a>");
}

TEST(XmlStream, TheCompactFormHasNeitherLineEndsNorTabs)
{
    std::string out;
    XmlStream stream(XmlStream::Form::Compact, out, nullptr);
    stream.WritePrologMark("<?xml?>");   // but for those in front of the root
    stream.BeginElement("a");
    stream.BeginElement("b");
    stream.BeginElement("c");
    stream.EndElement();
    stream.EndElement();
    stream.EndElement();
    EXPECT_EQ(out, "<?xml?>\r\n<a><b><c/></b></a>");
}

TEST(XmlStream, AnEmptyTextIsNone)
{
    std::string out;
    XmlStream stream(XmlStream::Form::Formatted, out, nullptr);
    stream.BeginElement("a");
    stream.WriteText("");
    stream.EndElement();
    EXPECT_EQ(out, "<a/>");
}

TEST(XmlStream, NumbersAndBooleans)
{
    std::string out;
    XmlStream stream(XmlStream::Form::Formatted, out, nullptr);
    stream.BeginElement("a");
    stream.WriteAttribute("least", std::numeric_limits<std::int64_t>::min());
    stream.WriteAttribute("most", std::numeric_limits<std::int64_t>::max());
    stream.WriteAttribute("small", -1);
    stream.WriteAttribute("word", std::uint16_t{65535});
    stream.WriteAttribute("yes", true);
    stream.WriteAttribute("no", false);
    stream.EndElement();
    EXPECT_EQ(out, "<a least=\"-9223372036854775808\" most=\"9223372036854775807\" small=\"-1\" word=\"65535\" yes=\"True\" no=\"False\"/>");
}

// 3,000 levels with as many tabs in front of the innermost, more than a piece in all.
TEST(XmlStream, WithAFileTheTextLeavesInPieces)
{
    constexpr std::size_t depth = 3000;
    const TemporaryDirectory directory;
    TextFile file;
    constexpr int flags = TextFile::Utf8 | TextFile::NoBom | TextFile::NoLineEndTranslation;
    ASSERT_EQ(file.Open(directory.Name("deep.xml"), TextFile::ForWriting, flags), 0);

    std::string out, expected;
    std::size_t longest = 0;
    XmlStream stream(XmlStream::Form::Formatted, out, &file);
    for (std::size_t i = 0; i < depth; ++i) {
        stream.BeginElement("n");
        expected += std::string(i, '\t') + (i + 1 < depth ? "<n>\r\n" : "<n/>\r\n");
        longest = std::max(longest, out.size());
    }
    for (std::size_t i = 0; i < depth; ++i) {
        stream.EndElement();
        if (i > 0) expected += std::string(depth - 1 - i, '\t') + "</n>" + (i + 1 < depth ? "\r\n" : "");
        longest = std::max(longest, out.size());
    }
    EXPECT_TRUE(stream.Finish());
    EXPECT_EQ(out, "");
    EXPECT_LT(longest, 65536u + depth + 10);   // a piece and the line that fills it
    EXPECT_EQ(file.Close(), 0);
    EXPECT_EQ(directory.Read("deep.xml"), expected);
}

TEST(XmlStream, AFileThatCannotTakeAllIsTold)
{
    TextFile file;
    ASSERT_EQ(file.Open("/dev/full", TextFile::ForWriting, TextFile::Utf8 | TextFile::NoBom), 0);
    std::string out;
    XmlStream stream(XmlStream::Form::Formatted, out, &file);
    stream.BeginElement("a");
    stream.WriteText(std::string(100000, 'x'));
    stream.BeginElement("b");
    EXPECT_TRUE(stream.HasFailed());
    stream.EndElement();
    stream.EndElement();
    EXPECT_FALSE(stream.Finish());
    EXPECT_EQ(out, "");
}
