#include "CompileText.h"
#include "files/TemporaryDirectory.h"

#include "files/FileSystem.h"
#include "files/TemporaryFiles.h"

#include <initializer_list>
#include <sstream>

// Compiles, says which POUs are used, and merges the text into a file of the run's own.
class MergeOutputTest : public testing::Test
{
protected:
    void Compile(const std::string& source)
    {
        CompileOptions options;
        options.initialisation = true;
        compiled = CompileText(source, options);
        ASSERT_EQ(compiled.output, "");
    }

    void Use(std::initializer_list<std::string_view> names)
    {
        for (const std::string_view name : names) compiled.pNorvane->m_Pous.FindPou(name)->m_Used = true;
    }

    // The bytes of the merged file.
    std::string Merge()
    {
        temporary = MakeTemporaryFile(directory.Name("t"), 0600);
        std::ofstream(temporary, std::ios::binary) << compiled.assembler;
        merged = MakeTemporaryFile(directory.Name("m"), 0644);
        EXPECT_TRUE(compiled.pNorvane->MergeOutput(temporary, merged));
        return directory.Read(std::filesystem::path(merged).filename().string());
    }

    // The same by its lines.
    std::string MergeByLines()
    {
        compiled.pNorvane->m_Code.m_Blocks.NoteForeignText("\nFUNCTION_");
        return Merge();
    }

    void TearDown() override { RemoveTemporaryFiles(); }

    TemporaryDirectory directory;
    CompiledText compiled;
    std::string temporary;
    std::string merged;
};

static const std::string g_Three = "FUNCTION a : INT a := 1; END_FUNCTION\n"
                                   "FUNCTION_BLOCK b VAR x : INT; END_VAR x := 1; END_FUNCTION_BLOCK\n"
                                   "FUNCTION c : INT c := 3; END_FUNCTION\n"
                                   "PROGRAM main VAR x : INT; END_VAR x := 1; END_PROGRAM\n";

TEST_F(MergeOutputTest, TheTextItselfBecomesTheOutputWhereAllIsUsed)
{
    Compile(g_Three);
    Use({"a", "b", "c"});
    EXPECT_EQ(Merge(), compiled.assembler);
    EXPECT_FALSE(FileExists(temporary)) << "it has been renamed";
    EXPECT_EQ(static_cast<unsigned>(std::filesystem::status(merged).permissions()), 0644U);
    EXPECT_EQ(directory.CountEntries(), 1);
}

TEST_F(MergeOutputTest, UnusedBlocksBecomeComments)
{
    Compile("FUNCTION a : INT a := 1; END_FUNCTION\n"
            "PROGRAM main VAR x : INT; END_VAR x := 1; END_PROGRAM\n");
    const std::size_t begin = compiled.assembler.find("FUNCTION_a:\n");
    const std::string_view end = "\tDBI POU_END\n";
    const std::size_t behind = compiled.assembler.find(end) + end.size();
    std::string expected = compiled.assembler.substr(0, begin) + ";;\tNot used\n";
    std::istringstream block(compiled.assembler.substr(begin, behind - begin));
    for (std::string line; std::getline(block, line);) expected += ";;\t" + line + "\n";
    expected += compiled.assembler.substr(behind);
    EXPECT_EQ(Merge(), expected);
    EXPECT_TRUE(FileExists(temporary)) << "it has been copied";
    EXPECT_EQ(MergeByLines(), expected);
}

TEST_F(MergeOutputTest, PiecesAndLinesGiveTheSame)
{
    for (int used = 0; used < 8; ++used) {
        Compile(g_Three);
        if (used & 1) Use({"a"});
        if (used & 2) Use({"b"});
        if (used & 4) Use({"c"});
        const std::string pieces = Merge();
        EXPECT_EQ(pieces, MergeByLines()) << used;
        EXPECT_EQ(pieces == compiled.assembler, used == 7) << used;
    }
}

// Longer than any window that a copy is made through.
TEST_F(MergeOutputTest, LongBlocksAreCommentedToTheirEnd)
{
    std::string source;
    for (const char* szName : {"f", "g", "h"}) {
        source += "FUNCTION " + std::string(szName) + " : INT\n";
        for (int i = 0; i < 5000; ++i) source += szName + std::string(" := 12345;\n");
        source += "END_FUNCTION\n";
    }
    Compile(source);
    Use({"g"});
    const std::string pieces = Merge();
    ASSERT_GT(pieces.size(), 400000U);
    EXPECT_EQ(pieces, MergeByLines());
}

TEST_F(MergeOutputTest, FormsOfAnOverloadedFunctionCountApart)
{
    Compile("FUNCTION f_ : INT VAR_INPUT a : INT; END_VAR f_ := 1; END_FUNCTION\n"
            "FUNCTION f_ : INT VAR_INPUT a : DINT; END_VAR f_ := 1; END_FUNCTION\n"
            "FUNCTION f_ : INT VAR_INPUT a : UINT; END_VAR f_ := 1; END_FUNCTION\n");
    compiled.pNorvane->m_Pous.FindOverload("f_")->m_Functions[1]->m_Used = true;
    const std::string pieces = Merge();
    EXPECT_NE(pieces.find(";;\tNot used\n;;\tFUNCTION_f_:\n"), std::string::npos);
    EXPECT_NE(pieces.find("\nFUNCTION_f___1:\n"), std::string::npos);
    EXPECT_NE(pieces.find(";;\tNot used\n;;\tFUNCTION_f___2:\n"), std::string::npos);
    EXPECT_EQ(pieces, MergeByLines());
}

TEST_F(MergeOutputTest, AFileThatIsNotOursIsWrittenAndNotReplaced)
{
    Compile(g_Three);
    Use({"a", "b", "c"});
    temporary = MakeTemporaryFile(directory.Name("t"), 0600);
    std::ofstream(temporary, std::ios::binary) << compiled.assembler;
    const std::string other = directory.Make("other", "earlier");
    const std::string name = directory.Name("link");
    std::filesystem::create_symlink("other", name);
    EXPECT_TRUE(compiled.pNorvane->MergeOutput(temporary, name));
    EXPECT_TRUE(std::filesystem::is_symlink(name));
    EXPECT_EQ(directory.Read("other"), compiled.assembler);
    EXPECT_TRUE(FileExists(temporary));
}

TEST_F(MergeOutputTest, WritesToADevice)
{
    Compile(g_Three);
    Use({"a", "b", "c"});
    temporary = MakeTemporaryFile(directory.Name("t"), 0600);
    std::ofstream(temporary, std::ios::binary) << compiled.assembler;
    EXPECT_TRUE(compiled.pNorvane->MergeOutput(temporary, "/dev/null"));
    EXPECT_TRUE(IsSpecialFile("/dev/null"));
    EXPECT_FALSE(compiled.pNorvane->MergeOutput(temporary, "/dev/full"));
}

TEST_F(MergeOutputTest, FailsWithoutItsText)
{
    Compile(g_Three);
    Use({"a", "b", "c"});
    const std::string output = MakeTemporaryFile(directory.Name("m"), 0600);
    EXPECT_FALSE(compiled.pNorvane->MergeOutput(directory.Name("none"), output));
    EXPECT_TRUE(FileExists(output));
}
