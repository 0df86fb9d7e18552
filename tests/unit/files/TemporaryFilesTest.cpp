#include "files/TemporaryFiles.h"

#include "files/FileSystem.h"
#include "files/TemporaryDirectory.h"

#include <gtest/gtest.h>

static unsigned GetMode(const std::string& name)
{
    return static_cast<unsigned>(std::filesystem::status(name).permissions());
}

TEST(TemporaryFiles, AreMadeBesideTheirPlaceUnderNamesOfTheirOwn)
{
    const TemporaryDirectory directory;
    const std::string first = MakeTemporaryFile(directory.Name("a"), 0640);
    const std::string second = MakeTemporaryFile(directory.Name("a"), 0600);
    EXPECT_EQ(first.substr(0, directory.Name("a").size()), directory.Name("a"));
    EXPECT_NE(first, second);
    EXPECT_EQ(GetMode(first), 0640u);
    EXPECT_EQ(GetMode(second), 0600u);
    RemoveTemporaryFiles();
    EXPECT_EQ(directory.CountEntries(), 0);
}

TEST(TemporaryFiles, OfLongNamesCanBeMade)
{
    const TemporaryDirectory directory;
    const std::string name = MakeTemporaryFile(directory.Name(std::string(255, 'n')), 0600);
    EXPECT_TRUE(FileExists(name));
    EXPECT_TRUE(RemoveTemporaryFile(name));
    EXPECT_EQ(directory.CountEntries(), 0);
}

TEST(TemporaryFiles, AreNotMadeWhereThereIsNoFolder)
{
    const TemporaryDirectory directory;
    EXPECT_EQ(MakeTemporaryFile(directory.Name("none/a"), 0600), "");
}

TEST(TemporaryFiles, OfAGivenNameTakeNothingOver)
{
    const TemporaryDirectory directory;
    directory.Make("a", "mine");
    std::filesystem::create_symlink("none", directory.Name("link"));
    EXPECT_FALSE(MakeTemporaryFileNamed(directory.Name("a")));
    EXPECT_FALSE(MakeTemporaryFileNamed(directory.Name("link")));
    EXPECT_TRUE(MakeTemporaryFileNamed(directory.Name("b")));
    RemoveTemporaryFiles();
    EXPECT_EQ(directory.Read("a"), "mine");
    EXPECT_FALSE(FileExists(directory.Name("none")));
    EXPECT_FALSE(FileExists(directory.Name("b")));
    EXPECT_TRUE(FileExists(directory.Name("link")));
}

TEST(TemporaryFiles, StayWhenTheyAreForgottenOrKept)
{
    const TemporaryDirectory directory;
    const std::string forgotten = MakeTemporaryFile(directory.Name("a"), 0600);
    const std::string kept = MakeTemporaryFile(directory.Name("b"), 0600);
    ASSERT_TRUE(MakeTemporaryFileNamed(directory.Name("c")));
    ForgetTemporaryFile(forgotten);
    KeepTemporaryFileAs(kept, directory.Name("b"));
    KeepTemporaryFileAs(directory.Name("c"), directory.Name("c"));
    RemoveTemporaryFiles();
    EXPECT_TRUE(FileExists(forgotten));
    EXPECT_FALSE(FileExists(kept));
    EXPECT_TRUE(FileExists(directory.Name("b")));
    EXPECT_TRUE(FileExists(directory.Name("c")));
    EXPECT_EQ(directory.CountEntries(), 3);
}

TEST(TemporaryFiles, ThatCannotKeepTheirNewNameGo)
{
    const TemporaryDirectory directory;
    const std::string kept = MakeTemporaryFile(directory.Name("a"), 0600);
    KeepTemporaryFileAs(kept, directory.Name("none/a"));
    RemoveTemporaryFiles();
    EXPECT_EQ(directory.CountEntries(), 0);
}

TEST(TemporaryFiles, OneTakesThePlaceOfAnother)
{
    const TemporaryDirectory directory;
    const std::string first = MakeTemporaryFile(directory.Name("a"), 0600);
    const std::string second = MakeTemporaryFile(directory.Name("b"), 0640);
    std::ofstream(first) << "first";
    EXPECT_TRUE(MoveTemporaryFile(first, second));
    EXPECT_FALSE(FileExists(first));
    EXPECT_EQ(directory.Read(std::filesystem::path(second).filename().string()), "first");
    EXPECT_EQ(GetMode(second), 0640u);
    // A file that somebody else makes under the free name is nothing of ours any more.
    std::ofstream(first) << "foreign";
    RemoveTemporaryFiles();
    EXPECT_TRUE(FileExists(first));
    EXPECT_FALSE(FileExists(second));
}

TEST(TemporaryFiles, OnlyOnesOfOursAreMoved)
{
    const TemporaryDirectory directory;
    const std::string ours = MakeTemporaryFile(directory.Name("a"), 0600);
    const std::string other = directory.Make("other", "kept");
    EXPECT_FALSE(MoveTemporaryFile(ours, other));
    EXPECT_FALSE(MoveTemporaryFile(other, ours));
    EXPECT_FALSE(MoveTemporaryFile(ours, directory.Name("none")));
    EXPECT_EQ(directory.Read("other"), "kept");
    EXPECT_TRUE(FileExists(ours));
    RemoveTemporaryFiles();
}
