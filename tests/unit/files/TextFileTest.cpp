#include "files/TextFile.h"

#include "files/FileSizeLimit.h"
#include "files/TemporaryDirectory.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>

using namespace std::string_literals;

namespace
{

constexpr int g_PlainEnds = TextFile::NoLineEndTranslation;

class TextFileTest : public testing::Test
{
protected:
    std::string ReadAll(const std::string& bytes, int flags)
    {
        m_Directory.Make("in.txt", bytes);
        TextFile file;
        EXPECT_EQ(file.Open(m_Directory.Name("in.txt"), TextFile::ForReading, flags), 0);
        std::string text;
        m_Result = file.ReadAll(text);
        m_Encoding = file.m_Encoding;
        return text;
    }

    std::string Write(std::string_view text, int flags, int mode = TextFile::ForWriting)
    {
        TextFile file;
        EXPECT_EQ(file.Open(m_Directory.Name("out.txt"), mode, flags), 0);
        EXPECT_EQ(file.WriteString(text), 0);
        EXPECT_EQ(file.Close(), 0);
        return m_Directory.Read("out.txt");
    }

    TemporaryDirectory m_Directory;
    int m_Result = 0;
    int m_Encoding = -1;
};

}   // namespace

// ---- Choosing the reader.

TEST_F(TextFileTest, DetectsTheEncodingByTheMarkAlone)
{
    EXPECT_EQ(ReadAll("\xFF\xFE"s + "a\0\xAC\x20"s, TextFile::Detect), "a\x80");
    EXPECT_EQ(m_Encoding, TextFile::Utf16LowFirst);
    EXPECT_EQ(ReadAll("\xFE\xFF"s + "\0a\x20\xAC"s, TextFile::Detect), "a\x80");
    EXPECT_EQ(m_Encoding, TextFile::Utf16HighFirst);
    EXPECT_EQ(ReadAll("\xEF\xBB\xBF" "a\xE2\x82\xAC", TextFile::Detect), "a\x80");
    EXPECT_EQ(m_Encoding, TextFile::Utf8);
    EXPECT_EQ(ReadAll("a\xC3\xA9", TextFile::Detect), "a\xC3\xA9");
    EXPECT_EQ(m_Encoding, TextFile::Ansi);
}

TEST_F(TextFileTest, ALoneFirstByteOfAMarkIsAnsi)
{
    EXPECT_EQ(ReadAll("\xFF", TextFile::Detect), "\xFF");
    EXPECT_EQ(m_Encoding, TextFile::Ansi);
    EXPECT_EQ(ReadAll("\xEF\xBB", TextFile::Detect), "\xEF\xBB");
    EXPECT_EQ(ReadAll("\xFE" "a", TextFile::Detect), "\xFE" "a");
}

TEST_F(TextFileTest, AnEmptyFileGivesNothingInAnyEncoding)
{
    for (int encoding = TextFile::Detect; encoding <= TextFile::Utf8; ++encoding) {
        EXPECT_EQ(ReadAll("", encoding), "");
        EXPECT_EQ(m_Result, g_EndOfFile);
    }
    TextFile file;
    ASSERT_EQ(file.Open(m_Directory.Name("in.txt"), TextFile::ForReading, TextFile::Detect), 0);
    std::string line = "kept";
    EXPECT_EQ(file.ReadLine(line), g_EndOfFile);
    EXPECT_EQ(line, "kept");
    EXPECT_EQ(file.ReadChar(), g_EndOfFile);
}

TEST_F(TextFileTest, AUtf8FileReadsTheSameWithAndWithoutItsMark)
{
    EXPECT_EQ(ReadAll("x\xC3\xA9", TextFile::Utf8), "x\xE9");
    EXPECT_EQ(ReadAll("\xEF\xBB\xBFx\xC3\xA9", TextFile::Utf8), "x\xE9");
}

TEST_F(TextFileTest, AMarkIsReadAsTextWhenItIsNotLookedFor)
{
    EXPECT_EQ(ReadAll("\xEF\xBB\xBFx", TextFile::Utf8 | TextFile::IgnoreBom), "?x");   // U+FEFF isn't in the code page
}

TEST_F(TextFileTest, AMissingMarkLeavesTheEncoding)
{
    EXPECT_EQ(ReadAll("a\0b\0"s, TextFile::Utf16LowFirst), "ab");
    EXPECT_EQ(ReadAll("\0a\0b"s, TextFile::Utf16HighFirst), "ab");
}

TEST_F(TextFileTest, AnUnknownEncodingOrModeIsRefused)
{
    m_Directory.Make("in.txt", "a");
    TextFile file;
    EXPECT_EQ(file.Open(m_Directory.Name("in.txt"), TextFile::ForReading, 5), g_FileError);
    EXPECT_EQ(file.Open(m_Directory.Name("in.txt"), 0, TextFile::Ansi), g_FileError);
    EXPECT_EQ(file.Open(m_Directory.Name("in.txt"), 4, TextFile::Ansi), g_FileError);
}

// ---- Reading.

TEST_F(TextFileTest, ReadAllTellsTheNumberOfCharacters)
{
    ReadAll("ab\r\n", TextFile::Ansi);
    EXPECT_EQ(m_Result, 4);
    ReadAll("\xC3\xA9", TextFile::Utf8);
    EXPECT_EQ(m_Result, 1);
}

TEST_F(TextFileTest, AnsiKeepsTheBytesAndTheLineEnds)
{
    EXPECT_EQ(ReadAll("a\r\nb\nc\0d\x80"s, TextFile::Ansi), "a\r\nb\nc\0d\x80"s);
}

TEST_F(TextFileTest, Utf16LosesAnOddByteAtTheEnd)
{
    EXPECT_EQ(ReadAll("a\0b\0c"s, TextFile::Utf16LowFirst), "ab");
    EXPECT_EQ(ReadAll("\0a\0b\0"s, TextFile::Utf16HighFirst), "ab");
}

TEST_F(TextFileTest, ReadsMoreThanOneBuffer)
{
    std::string bytes;
    for (int i = 0; i < 3000; ++i) bytes += std::to_string(i) + "\n";
    EXPECT_EQ(ReadAll(bytes, TextFile::Ansi), bytes);
    EXPECT_EQ(ReadAll(bytes, TextFile::Utf8), bytes);
}

TEST_F(TextFileTest, LinesLoseTheirEnds)
{
    m_Directory.Make("in.txt", "a\r\n\r\nb\rc\nd\r");
    for (const int bufferSize : {0, -1, 1, 3}) {
        TextFile file;
        ASSERT_EQ(file.Open(m_Directory.Name("in.txt"), TextFile::ForReading, TextFile::Ansi, bufferSize), 0);
        std::string line;
        EXPECT_EQ(file.ReadLine(line), 0);
        EXPECT_EQ(line, "a");
        EXPECT_EQ(file.ReadLine(line), 0);
        EXPECT_EQ(line, "");
        EXPECT_EQ(file.ReadLine(line), 0);
        EXPECT_EQ(line, "b\rc");
        EXPECT_EQ(file.ReadLine(line), 0);
        EXPECT_EQ(line, "d\r");   // no line feed, so the carriage return is no part of an end
        EXPECT_EQ(file.ReadLine(line), g_EndOfFile);
    }
}

TEST_F(TextFileTest, LinesAreConverted)
{
    const std::string expected[] = {"\x80", "\xE9"};
    const std::string utf8 = m_Directory.Make("8.txt", "\xE2\x82\xAC\r\n\xC3\xA9");
    const std::string low = m_Directory.Make("low.txt", "\xFF\xFE\xAC\x20\r\0\n\0\xE9\0"s);
    const std::string high = m_Directory.Make("high.txt", "\xFE\xFF\x20\xAC\0\r\0\n\0\xE9"s);
    for (const std::string& name : {utf8, low, high}) {
        TextFile file;
        const int encoding = name == utf8 ? int{TextFile::Utf8} : int{TextFile::Detect};
        ASSERT_EQ(file.Open(name, TextFile::ForReading, encoding), 0);
        std::string line;
        for (const std::string& text : expected) {
            EXPECT_EQ(file.ReadLine(line), 0);
            EXPECT_EQ(line, text);
        }
        EXPECT_EQ(file.ReadLine(line), g_EndOfFile);
    }
}

TEST_F(TextFileTest, WhatLinesLeaveIsTheRest)
{
    m_Directory.Make("in.txt", "first\nsecond\nthird");
    TextFile file;
    ASSERT_EQ(file.Open(m_Directory.Name("in.txt"), TextFile::ForReading, TextFile::Ansi), 0);
    std::string text;
    ASSERT_EQ(file.ReadLine(text), 0);
    EXPECT_EQ(file.ReadAll(text), 12);
    EXPECT_EQ(text, "second\nthird");
}

TEST_F(TextFileTest, ReadCharPassesOverTheSkippedOne)
{
    m_Directory.Make("in.txt", "  a \xE9");
    TextFile file;
    ASSERT_EQ(file.Open(m_Directory.Name("in.txt"), TextFile::ForReading, TextFile::Ansi), 0);
    EXPECT_EQ(file.ReadChar(' '), 'a');
    EXPECT_EQ(file.ReadChar('x'), ' ');
    EXPECT_EQ(file.ReadChar(), 0xE9);
    EXPECT_EQ(file.ReadChar(), g_EndOfFile);

    m_Directory.Make("in16.txt", "\xFE\xFF\x20\xAC\x20\xAC\x01\x02"s);
    ASSERT_EQ(file.Open(m_Directory.Name("in16.txt"), TextFile::ForReading, TextFile::Detect), 0);
    EXPECT_EQ(file.ReadChar(0x20AC), 0x0102);
    EXPECT_EQ(file.ReadChar(0x20AC), g_EndOfFile);

    m_Directory.Make("in16le.txt", "\xFF\xFE\xAC\x20\x02\x01\xAC\x20"s);
    ASSERT_EQ(file.Open(m_Directory.Name("in16le.txt"), TextFile::ForReading, TextFile::Detect), 0);
    EXPECT_EQ(file.ReadChar(0x20AC), 0x0102);
    EXPECT_EQ(file.ReadChar(0x20AC), g_EndOfFile);

    m_Directory.Make("in8.txt", "\xEF\xBB\xBF  \xC3"s);   // bytes, not characters
    ASSERT_EQ(file.Open(m_Directory.Name("in8.txt"), TextFile::ForReading, TextFile::Detect), 0);
    EXPECT_EQ(file.ReadChar(' '), 0xC3);
    EXPECT_EQ(file.ReadChar(' '), g_EndOfFile);
}

// The first page of a process is never mapped, so that reading its memory from the beginning fails.
TEST_F(TextFileTest, AFailingReadIsToldWhenTheFileIsOpened)
{
    for (const int encoding : {TextFile::Detect, TextFile::Ansi, TextFile::Utf16LowFirst, TextFile::Utf8}) {
        TextFile file;
        EXPECT_EQ(file.Open("/proc/self/mem", TextFile::ForReading, encoding), g_FileError) << encoding;
        EXPECT_EQ(file.ReadChar(), g_FileError) << encoding;   // it isn't open
    }
}

TEST_F(TextFileTest, OnlyALineFeedMakesACarriageReturnPartOfALineEnd)
{
    const std::pair<std::string, int> files[] = {
        {"a\rb\r\n\r\n\r", TextFile::Ansi},
        {"a\0\r\0b\0\r\0\n\0\r\0\n\0\r\0"s, TextFile::Utf16LowFirst},
    };
    for (const auto& [bytes, encoding] : files) {
        m_Directory.Make("in.txt", bytes);
        TextFile file;
        ASSERT_EQ(file.Open(m_Directory.Name("in.txt"), TextFile::ForReading, encoding), 0);
        std::string text;
        ASSERT_EQ(file.ReadLine(text), 0);
        EXPECT_EQ(text, "a\rb") << encoding;
        ASSERT_EQ(file.ReadLine(text), 0);
        EXPECT_EQ(text, "") << encoding;
        ASSERT_EQ(file.ReadLine(text), 0);
        EXPECT_EQ(text, "\r") << encoding;
        EXPECT_EQ(file.ReadLine(text), g_EndOfFile) << encoding;
    }
}

TEST_F(TextFileTest, TheDefaultCharacterStandsForWhatTheCodePageLacks)
{
    m_Directory.Make("in.txt", "a\xD0\x96");   // U+0416
    TextFile file;
    file.m_DefaultChar = "_";
    ASSERT_EQ(file.Open(m_Directory.Name("in.txt"), TextFile::ForReading, TextFile::Utf8), 0);
    std::string text;
    EXPECT_EQ(file.ReadAll(text), 2);
    EXPECT_EQ(text, "a_");
}

// ---- The UTF-8 decoder.

static std::u16string Decode(const std::string& bytes)
{
    return UTF8_TextFileReader::Decode(bytes);
}

TEST(Utf8Decoder, DecodesEachLength)
{
    EXPECT_EQ(Decode("A\x7F"), u"A\x7F");
    EXPECT_EQ(Decode("\xC3\xA9\xDF\xBF"), u"\x00E9\x07FF");
    EXPECT_EQ(Decode("\xE0\xA0\x80\xEF\xBF\xBF"), u"\x0800\xFFFF");
    EXPECT_EQ(Decode("\xF0\x9F\x98\x80"), u"\xD83D\xDE00");   // U+1F600
    EXPECT_EQ(Decode("\xF0\x90\x80\x80"), u"\xD800\xDC00");   // U+10000
}

TEST(Utf8Decoder, AStrayContinuationByteLeadsTwo)
{
    EXPECT_EQ(Decode("\x80" "Ab"), u"\x0001" u"b");
}

TEST(Utf8Decoder, ContinuationBytesAreOnlyMasked)
{
    EXPECT_EQ(Decode("\xC3)"), u"\x00E9");   // ")" is 29, its low six bits are those of A9
}

TEST(Utf8Decoder, ALeadBeyondTheFormsIsReplacedAlone)
{
    EXPECT_EQ(Decode("\xF8" "a\xFF"), u"\xFFFD" u"a\xFFFD");
}

TEST(Utf8Decoder, ValuesAreCapped)
{
    EXPECT_EQ(Decode("\xF7\xBF\xBF\xBF"), u"\xDBFF\xDFFF");   // 1FFFFF becomes 10FFFF
}

TEST(Utf8Decoder, ACutSequenceRepeatsTheUnitBefore)
{
    EXPECT_EQ(Decode("A\xC3"), u"AA");
    EXPECT_EQ(Decode("A\xE2\x82"), u"AA");
    EXPECT_EQ(Decode("\xC3"), u"\xFFFD");
    EXPECT_EQ(Decode("\xF0\x9F\x98"), u"\xFFFD");
}

TEST(Utf8Decoder, AZeroByteEndsTheText)
{
    EXPECT_EQ(Decode("ab\0cd"s), u"ab");
    EXPECT_EQ(Decode("a\xE2\0\x82\xAC"s), u"aa");
}

// ---- Writing.

TEST_F(TextFileTest, LineFeedsBecomeTwoCharacters)
{
    EXPECT_EQ(Write("a\nb\n", TextFile::Ansi), "a\r\nb\r\n");
    EXPECT_EQ(Write("\n\nend", TextFile::Ansi), "\r\n\r\nend");
    EXPECT_EQ(Write("a\r\n", TextFile::Ansi), "a\r\r\n");
}

TEST_F(TextFileTest, LineFeedsStayWithTheFlag)
{
    EXPECT_EQ(Write("a\nb\n", TextFile::Ansi | g_PlainEnds), "a\nb\n");
}

TEST_F(TextFileTest, EachEncodingWritesItsMarkOnce)
{
    EXPECT_EQ(Write("a\n", TextFile::Ansi), "a\r\n");
    EXPECT_EQ(Write("a\n", TextFile::Utf16LowFirst), "\xFF\xFE" "a\0\r\0\n\0"s);
    EXPECT_EQ(Write("a\n", TextFile::Utf16HighFirst), "\xFE\xFF\0a\0\r\0\n"s);
    EXPECT_EQ(Write("a\n", TextFile::Utf8), "\xEF\xBB\xBF" "a\r\n");
    EXPECT_EQ(Write("a", TextFile::Utf8 | TextFile::NoBom), "a");
}

TEST_F(TextFileTest, Utf16GoesThroughTheCodePageAndUtf8DoesNot)
{
    EXPECT_EQ(Write("\x80", TextFile::Utf16LowFirst | TextFile::NoBom), "\xAC\x20");
    EXPECT_EQ(Write("\x80", TextFile::Utf16HighFirst | TextFile::NoBom), "\x20\xAC");
    EXPECT_EQ(Write("\x80", TextFile::Utf8 | TextFile::NoBom), "\xC2\x80");
    EXPECT_EQ(Write("\xE9", TextFile::Utf8 | TextFile::NoBom), "\xC3\xA9");
    EXPECT_EQ(Write("a\xFF" "b", TextFile::Utf8 | TextFile::NoBom), "a\xC3\xBF" "b");
    EXPECT_EQ(Write("\x80\xE9", TextFile::Ansi), "\x80\xE9");
}

TEST_F(TextFileTest, SingleCharactersTakeTheFormOfTheEncoding)
{
    TextFile file;
    ASSERT_EQ(file.Open(m_Directory.Name("8"), TextFile::ForWriting, TextFile::Utf8 | TextFile::NoBom), 0);
    for (const int ch : {0x7F, 0x80, 0x7FF, 0x800, 0xFFFE, 0xFFFF, 0x10FFFF}) EXPECT_EQ(file.WriteChar(ch), 0);
    EXPECT_EQ(file.Close(), 0);
    EXPECT_EQ(m_Directory.Read("8"), "\x7F" "\xC2\x80" "\xDF\xBF" "\xE0\xA0\x80" "\xEF\xBF\xBE" "\xF0\x8F\xBF\xBF" "\xF4\x8F\xBF\xBF");

    ASSERT_EQ(file.Open(m_Directory.Name("l"), TextFile::ForWriting, TextFile::Utf16LowFirst), 0);
    EXPECT_EQ(file.WriteChar(0x20AC), 0);
    EXPECT_EQ(file.Close(), 0);
    EXPECT_EQ(m_Directory.Read("l"), "\xFF\xFE\xAC\x20");

    ASSERT_EQ(file.Open(m_Directory.Name("h"), TextFile::ForWriting, TextFile::Utf16HighFirst), 0);
    EXPECT_EQ(file.WriteChar(0x20AC), 0);
    EXPECT_EQ(file.Close(), 0);
    EXPECT_EQ(m_Directory.Read("h"), "\xFE\xFF\x20\xAC");

    ASSERT_EQ(file.Open(m_Directory.Name("a"), TextFile::ForWriting, TextFile::Ansi), 0);
    EXPECT_EQ(file.WriteChar(0xE9), 0);
    EXPECT_EQ(file.Close(), 0);
    EXPECT_EQ(m_Directory.Read("a"), "\xE9");
}

TEST_F(TextFileTest, AppendingToContentWritesNoMark)
{
    m_Directory.Make("out.txt", "old ");
    EXPECT_EQ(Write("new", TextFile::Utf8, TextFile::ForAppending), "old new");
}

TEST_F(TextFileTest, AppendingToNothingWritesTheMark)
{
    EXPECT_EQ(Write("new", TextFile::Utf8, TextFile::ForAppending), "\xEF\xBB\xBFnew");
    m_Directory.Make("out.txt", "");
    EXPECT_EQ(Write("new", TextFile::Utf8, TextFile::ForAppending), "\xEF\xBB\xBFnew");
}

TEST_F(TextFileTest, WritingTruncates)
{
    m_Directory.Make("out.txt", "something longer");
    EXPECT_EQ(Write("new", TextFile::Ansi), "new");
}

TEST_F(TextFileTest, NothingIsInTheFileBeforeTheBufferIsFullOrFlushed)
{
    TextFile file;
    ASSERT_EQ(file.Open(m_Directory.Name("out.txt"), TextFile::ForWriting, TextFile::Ansi, 8), 0);
    EXPECT_EQ(file.WriteString("1234567"), 0);
    EXPECT_EQ(m_Directory.Read("out.txt"), "");
    EXPECT_EQ(file.WriteString("89"), 0);
    EXPECT_EQ(m_Directory.Read("out.txt"), "12345678");
    EXPECT_EQ(file.Flush(), 0);
    EXPECT_EQ(m_Directory.Read("out.txt"), "123456789");
}

TEST_F(TextFileTest, TheDefaultBufferHolds4096Bytes)
{
    TextFile file;
    ASSERT_EQ(file.Open(m_Directory.Name("out.txt"), TextFile::ForWriting, TextFile::Ansi), 0);
    EXPECT_EQ(file.WriteString(std::string(4095, 'x')), 0);
    EXPECT_EQ(m_Directory.Read("out.txt").size(), 0u);
    EXPECT_EQ(file.WriteChar('x'), 0);
    EXPECT_EQ(m_Directory.Read("out.txt").size(), 4096u);
}

TEST_F(TextFileTest, WithoutABufferEverythingIsWrittenAtOnce)
{
    TextFile file;
    ASSERT_EQ(file.Open(m_Directory.Name("out.txt"), TextFile::ForWriting, TextFile::Ansi, -1), 0);
    EXPECT_EQ(file.WriteChar('a'), 0);
    EXPECT_EQ(m_Directory.Read("out.txt"), "a");
}

TEST_F(TextFileTest, TheMarkCanBeWrittenByItself)
{
    TextFile file;
    ASSERT_EQ(file.Open(m_Directory.Name("out.txt"), TextFile::ForWriting, TextFile::Utf8), 0);
    EXPECT_EQ(file.WriteBom(), 0);
    EXPECT_EQ(file.WriteString("a"), 0);
    EXPECT_EQ(file.Close(), 0);
    EXPECT_EQ(m_Directory.Read("out.txt"), "\xEF\xBB\xBF" "a");
}

// ---- Life and failures.

TEST_F(TextFileTest, TheDestructorWritesWhatIsPending)
{
    {
        TextFile file;
        ASSERT_EQ(file.Open(m_Directory.Name("out.txt"), TextFile::ForWriting, TextFile::Ansi), 0);
        EXPECT_EQ(file.WriteString("abc"), 0);
    }
    EXPECT_EQ(m_Directory.Read("out.txt"), "abc");
}

TEST_F(TextFileTest, ASecondCloseDoesNothing)
{
    TextFile file;
    EXPECT_EQ(file.Close(), 0);
    ASSERT_EQ(file.Open(m_Directory.Name("out.txt"), TextFile::ForWriting, TextFile::Ansi), 0);
    EXPECT_EQ(file.m_Mode, TextFile::ForWriting);
    EXPECT_EQ(file.Close(), 0);
    EXPECT_EQ(file.m_Mode, TextFile::Closed);
    EXPECT_EQ(file.m_FileName, "");
    EXPECT_EQ(file.Close(), 0);
}

TEST_F(TextFileTest, AMissingFileOrADirectoryCannotBeOpened)
{
    TextFile file;
    EXPECT_EQ(file.Open(m_Directory.Name("none"), TextFile::ForReading, TextFile::Ansi), g_FileError);
    for (const int mode : {TextFile::ForReading, TextFile::ForWriting, TextFile::ForAppending})
        EXPECT_EQ(file.Open(m_Directory.Path(), mode, TextFile::Ansi), g_FileError);
    EXPECT_EQ(file.Open(m_Directory.Name("none/file"), TextFile::ForWriting, TextFile::Ansi), g_FileError);
}

TEST_F(TextFileTest, TheWrongModeIsAFileError)
{
    TextFile file;
    std::string text = "kept";
    EXPECT_EQ(file.ReadAll(text), g_FileError);
    EXPECT_EQ(file.WriteString("a"), g_FileError);
    ASSERT_EQ(file.Open(m_Directory.Name("out.txt"), TextFile::ForWriting, TextFile::Ansi), 0);
    EXPECT_EQ(file.ReadAll(text), g_FileError);
    EXPECT_EQ(file.ReadLine(text), g_FileError);
    EXPECT_EQ(file.ReadChar(), g_FileError);
    EXPECT_EQ(text, "kept");
    ASSERT_EQ(file.Open(m_Directory.Name("out.txt"), TextFile::ForReading, TextFile::Ansi), 0);
    EXPECT_EQ(file.WriteString("a"), g_FileError);
    EXPECT_EQ(file.WriteChar('a'), g_FileError);
    EXPECT_EQ(file.WriteBom(), g_FileError);
    EXPECT_EQ(file.Flush(), 0);
}

TEST_F(TextFileTest, AFullDiskIsTold)
{
    const FileSizeLimit limit(10);
    TextFile file;
    ASSERT_EQ(file.Open(m_Directory.Name("out.txt"), TextFile::ForWriting, TextFile::Ansi, 8), 0);
    EXPECT_EQ(file.WriteString("12345678"), 0);
    EXPECT_EQ(file.WriteString("12345678"), g_FileError);

    ASSERT_EQ(file.Open(m_Directory.Name("out.txt"), TextFile::ForWriting, TextFile::Ansi), 0);
    EXPECT_EQ(file.WriteString("123456789012"), 0);   // still in the buffer
    EXPECT_EQ(file.Flush(), g_FileError);
    EXPECT_EQ(file.Close(), g_FileError);
}
