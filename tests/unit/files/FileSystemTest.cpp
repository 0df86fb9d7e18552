#include "files/FileSystem.h"

#include "files/TemporaryDirectory.h"

#include <gtest/gtest.h>

TEST(FileSystem, ReadsAllBytes)
{
    const TemporaryDirectory directory;
    const std::string content = std::string("a\0\r\n\xFF", 5) + std::string(200000, 'x');
    directory.Make("a", content);
    std::string bytes = "earlier";
    EXPECT_TRUE(ReadWholeFile(directory.Name("a"), bytes));
    EXPECT_EQ(bytes, content);
    directory.Make("a", "");
    EXPECT_TRUE(ReadWholeFile(directory.Name("a"), bytes));
    EXPECT_EQ(bytes, "");
}

TEST(FileSystem, ReadsNeitherAMissingFileNorADirectory)
{
    const TemporaryDirectory directory;
    std::string bytes = "earlier";
    EXPECT_FALSE(ReadWholeFile(directory.Name("none"), bytes));
    EXPECT_FALSE(ReadWholeFile(directory.Path(), bytes));
    EXPECT_FALSE(ReadWholeFile("", bytes));
    EXPECT_EQ(bytes, "earlier");
}

TEST(FileSystem, TellsWhatIsThere)
{
    const TemporaryDirectory directory;
    const std::string file = directory.Make("a", "x");
    EXPECT_TRUE(FileExists(file));
    EXPECT_TRUE(IsReadableFile(file));
    EXPECT_TRUE(IsWritableFile(file));
    EXPECT_FALSE(IsDirectory(file));
    EXPECT_TRUE(FileExists(directory.Path()));
    EXPECT_TRUE(IsDirectory(directory.Path()));
    EXPECT_FALSE(IsReadableFile(directory.Path()));
    EXPECT_FALSE(IsWritableFile(directory.Path()));
    EXPECT_FALSE(FileExists(directory.Name("none")));
    EXPECT_FALSE(IsReadableFile(directory.Name("none")));
    EXPECT_FALSE(IsWritableFile(directory.Name("none")));
    EXPECT_EQ(directory.Read("a"), "x");
    EXPECT_EQ(directory.CountEntries(), 1);
}

TEST(FileSystem, RemovesFilesOnly)
{
    const TemporaryDirectory directory;
    directory.Make("a", "x");
    EXPECT_TRUE(RemoveFile(directory.Name("a")));
    EXPECT_FALSE(RemoveFile(directory.Name("a")));
    EXPECT_FALSE(RemoveFile(directory.Path()));
    EXPECT_TRUE(IsDirectory(directory.Path()));
}

TEST(FileSystem, ReplacesAFile)
{
    const TemporaryDirectory directory;
    directory.Make("new", "new text");
    directory.Make("old", "old text");
    EXPECT_TRUE(ReplaceFile(directory.Name("new"), directory.Name("old")));
    EXPECT_EQ(directory.Read("old"), "new text");
    EXPECT_EQ(directory.CountEntries(), 1);
    EXPECT_FALSE(ReplaceFile(directory.Name("none"), directory.Name("old")));
    EXPECT_EQ(directory.Read("old"), "new text");
}

TEST(FileSystem, TellsWhetherTwoNamesMeanOneFile)
{
    const TemporaryDirectory directory;
    const std::string a = directory.Make("a", "x");
    directory.Make("b", "x");
    std::filesystem::create_symlink("a", directory.Name("link"));
    EXPECT_TRUE(IsSameFile(a, a));
    EXPECT_TRUE(IsSameFile(a, directory.Path() + "/./a"));
    EXPECT_TRUE(IsSameFile(a, directory.Name("link")));
    EXPECT_FALSE(IsSameFile(a, directory.Name("b")));
    EXPECT_FALSE(IsSameFile(a, directory.Name("none")));
    EXPECT_FALSE(IsSameFile(directory.Name("none"), directory.Name("none")));
}

TEST(FileSystem, TwoNamesMayMeanOnePlaceBeforeThereIsAFile)
{
    const TemporaryDirectory directory;
    std::filesystem::create_symlink("none", directory.Name("link"));
    EXPECT_TRUE(IsSamePlace(directory.Name("none"), directory.Path() + "/./none"));
    EXPECT_TRUE(IsSamePlace(directory.Name("none"), directory.Name("link")));
    EXPECT_FALSE(IsSamePlace(directory.Name("none"), directory.Name("other")));
    directory.Make("a", "x");
    EXPECT_TRUE(IsSamePlace(directory.Name("a"), directory.Path() + "/./a"));
    EXPECT_FALSE(IsSamePlace(directory.Name("a"), directory.Name("none")));
}

TEST(FileSystem, LinksAreFollowedToTheEndOfTheWay)
{
    const TemporaryDirectory directory;
    std::filesystem::create_symlink("second", directory.Name("first"));
    std::filesystem::create_symlink("none", directory.Name("second"));
    std::filesystem::create_symlink("round", directory.Name("round"));
    EXPECT_EQ(FollowLinks(directory.Name("first")), directory.Name("none"));
    EXPECT_EQ(FollowLinks(directory.Name("none")), directory.Name("none"));
    EXPECT_EQ(FollowLinks("a"), "a");
    EXPECT_EQ(FollowLinks(directory.Name("round")), directory.Name("round"));
    EXPECT_EQ(GetFolder("a"), ".");
    EXPECT_EQ(GetFolder("b/a"), "b");
}
