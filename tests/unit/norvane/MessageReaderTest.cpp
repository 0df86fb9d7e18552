#include "norvane/dap/MessageReader.h"

#include <gtest/gtest.h>

using Result = CMessageReader::Result;

TEST(MessageReader, TakesMessagesOneByOne)
{
    CMessageReader reader;
    std::string message;
    reader.Append(FrameMessage("{}") + FrameMessage("") + FrameMessage("[1]\r\n\r\n"));
    ASSERT_EQ(reader.Take(message), Result::Message);
    EXPECT_EQ(message, "{}");
    ASSERT_EQ(reader.Take(message), Result::Message);
    EXPECT_EQ(message, "");
    ASSERT_EQ(reader.Take(message), Result::Message);
    EXPECT_EQ(message, "[1]\r\n\r\n");
    EXPECT_EQ(reader.Take(message), Result::Incomplete);
    EXPECT_FALSE(reader.IsInside());
}

TEST(MessageReader, WaitsForEachByte)
{
    CMessageReader reader;
    std::string message;
    const std::string framed = FrameMessage("{\"seq\":1}");
    for (const char byte : framed.substr(0, framed.size() - 1)) {
        reader.Append({&byte, 1});
        ASSERT_EQ(reader.Take(message), Result::Incomplete);
        EXPECT_TRUE(reader.IsInside());
    }
    reader.Append("}");
    ASSERT_EQ(reader.Take(message), Result::Message);
    EXPECT_EQ(message, "{\"seq\":1}");
}

TEST(MessageReader, ReadsHeadsOfOtherSpelling)
{
    CMessageReader reader;
    std::string message;
    reader.Append("content-LENGTH:  2  \nContent-Type: a/b; c=\"d\"\n\n{}");
    ASSERT_EQ(reader.Take(message), Result::Message);
    EXPECT_EQ(message, "{}");
}

TEST(MessageReader, RefusesHeadsThatTellNoLength)
{
    const std::string tooLarge = "a message of more than 16777216 bytes";
    const std::pair<std::string, std::string> heads[] = {
        {"Content-Length: \r\n", "Content-Length is no number"},
        {"Content-Length: -1\r\n", "Content-Length is no number"},
        {"Content-Length: +1\r\n", "Content-Length is no number"},
        {"Content-Length: 1 2\r\n", "Content-Length is no number"},
        {"Content-Length: 0x10\r\n", "Content-Length is no number"},
        {"Content-Length: 16777217\r\n", tooLarge},
        {"Content-Length: 18446744073709551616\r\n", tooLarge},
        {"\r\n", "a message without Content-Length"},
        {"Content-Type: x\r\n\r\n", "a message without Content-Length"},
        {"{}\r\n", "a line of a message's head has no colon"},
        {std::string(CMessageReader::largestHead + 1, 'x'), "a message's head does not end"},
    };
    for (const auto& [head, reason] : heads) {
        CMessageReader reader;
        std::string message;
        reader.Append(head);
        EXPECT_EQ(reader.Take(message), Result::Broken) << head;
        EXPECT_EQ(reader.GetError(), reason);
        reader.Append("\r\n\r\n" + FrameMessage("{}"));
        EXPECT_EQ(reader.Take(message), Result::Broken) << "nothing mends it";
    }
}

TEST(MessageReader, TakesTheLargestMessage)
{
    CMessageReader reader;
    std::string message;
    reader.Append("Content-Length: 16777216\r\n\r\n");
    EXPECT_EQ(reader.Take(message), Result::Incomplete);
    reader.Append(std::string(CMessageReader::largestMessage, ' '));
    ASSERT_EQ(reader.Take(message), Result::Message);
    EXPECT_EQ(message.size(), CMessageReader::largestMessage);
}
