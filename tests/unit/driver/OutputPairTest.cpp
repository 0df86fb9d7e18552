#include "driver/OutputPair.h"

#include "files/FileSystem.h"
#include "files/TemporaryDirectory.h"

#include <gtest/gtest.h>

class OutputPairTest : public testing::Test
{
protected:
    void Write(const OutputPair& pair)
    {
        std::ofstream(pair.GetTextWorkName()) << "new text";
        std::ofstream(pair.GetDebugWorkName()) << "new debug";
    }

    TemporaryDirectory m_Directory;
    std::string m_Text = m_Directory.Name("a.asm");
    std::string m_Debug = m_Directory.Name("a.dbi");
};

TEST_F(OutputPairTest, ReplacesBoth)
{
    m_Directory.Make("a.asm", "old text");
    {
        OutputPair pair(m_Text, m_Debug);
        pair.Prepare();
        ASSERT_TRUE(pair.IsTextReady() && pair.IsDebugReady());
        Write(pair);
        EXPECT_EQ(m_Directory.Read("a.asm"), "old text");
        EXPECT_EQ(pair.Replace(), OutputPair::Outcome::Replaced);
    }
    EXPECT_EQ(m_Directory.Read("a.asm"), "new text");
    EXPECT_EQ(m_Directory.Read("a.dbi"), "new debug");
    EXPECT_EQ(m_Directory.CountEntries(), 2);
}

TEST_F(OutputPairTest, LeavesBothWhenItIsGivenUp)
{
    m_Directory.Make("a.asm", "old text");
    {
        OutputPair pair(m_Text, m_Debug);
        pair.Prepare();
        Write(pair);
    }
    EXPECT_EQ(m_Directory.Read("a.asm"), "old text");
    EXPECT_EQ(m_Directory.CountEntries(), 1);
}

// The place of the text is taken by a directory between the two steps, as good a reason as any.
TEST_F(OutputPairTest, PutsTheFirstBackWhenTheSecondFails)
{
    m_Directory.Make("a.dbi", "old debug");
    {
        OutputPair pair(m_Text, m_Debug);
        pair.Prepare();
        Write(pair);
        std::filesystem::create_directories(m_Text + "/full");
        EXPECT_EQ(pair.Replace(), OutputPair::Outcome::TextFailed);
    }
    EXPECT_EQ(m_Directory.Read("a.dbi"), "old debug");
    EXPECT_EQ(m_Directory.CountEntries(), 2);
}

TEST_F(OutputPairTest, RemovesTheFirstAgainWhereThereWasNone)
{
    {
        OutputPair pair(m_Text, m_Debug);
        pair.Prepare();
        Write(pair);
        std::filesystem::create_directories(m_Text + "/full");
        EXPECT_EQ(pair.Replace(), OutputPair::Outcome::TextFailed);
    }
    EXPECT_FALSE(FileExists(m_Debug));
    EXPECT_EQ(m_Directory.CountEntries(), 1);
}

TEST_F(OutputPairTest, RefusesADirectory)
{
    std::filesystem::create_directory(m_Text);
    OutputPair pair(m_Text, m_Debug);
    pair.Prepare();
    EXPECT_FALSE(pair.IsTextReady());
    EXPECT_TRUE(pair.IsDebugReady());
    EXPECT_EQ(pair.GetTextWorkName(), "");
}

TEST_F(OutputPairTest, WritesADeviceAsItIs)
{
    std::filesystem::create_symlink("/dev/null", m_Text);
    OutputPair pair(m_Text, m_Debug);
    pair.Prepare();
    EXPECT_EQ(pair.GetTextWorkName(), m_Text);
    EXPECT_NE(pair.GetDebugWorkName(), m_Debug);
    Write(pair);
    EXPECT_EQ(pair.Replace(), OutputPair::Outcome::Replaced);
    EXPECT_TRUE(std::filesystem::is_symlink(m_Text));
    EXPECT_EQ(m_Directory.Read("a.dbi"), "new debug");
}
