#include "codegen/BlockExtents.h"

#include "CompileText.h"

static std::string_view Cut(const std::string& text, const BlockExtent& block)
{
    return std::string_view(text).substr(static_cast<std::size_t>(block.begin),
                                         static_cast<std::size_t>(block.end - block.begin));
}

TEST(BlockExtentsTest, KeepsBlocksInTheirOrder)
{
    const CFunction first("f", SourceLocation{});
    const CFunction second("f", SourceLocation{});
    CBlockExtents blocks;
    EXPECT_TRUE(blocks.GetBlocks().empty());
    blocks.Begin(first, 0, 10);
    blocks.End(20);
    blocks.Begin(second, 1, std::int64_t{1} << 40);
    blocks.End((std::int64_t{1} << 40) + 5);
    ASSERT_EQ(blocks.GetBlocks().size(), 2U);
    EXPECT_EQ(blocks.GetBlocks()[0].begin, 10);
    EXPECT_EQ(blocks.GetBlocks()[0].end, 20);
    EXPECT_EQ(blocks.GetBlocks()[0].pPou, &first);
    EXPECT_EQ(blocks.GetBlocks()[0].form, 0);
    EXPECT_EQ(blocks.GetBlocks()[1].begin, std::int64_t{1} << 40);
    EXPECT_EQ(blocks.GetBlocks()[1].end, (std::int64_t{1} << 40) + 5);
    EXPECT_EQ(blocks.GetBlocks()[1].form, 1);
}

TEST(BlockExtentsTest, AnEndWithoutABlockIsThatOfAProgram)
{
    const CFunction function("f", SourceLocation{});
    CBlockExtents blocks;
    blocks.End(5);
    EXPECT_TRUE(blocks.GetBlocks().empty());
    blocks.Begin(function, 0, 10);
    blocks.End(20);
    blocks.End(30);
    ASSERT_EQ(blocks.GetBlocks().size(), 1U);
    EXPECT_EQ(blocks.GetBlocks()[0].end, 20);
}

TEST(BlockExtentsTest, LinesCountWhereATextLooksLikeALabelOrAnEnd)
{
    const auto doLinesAgree = [](std::string_view text) {
        CBlockExtents blocks;
        blocks.NoteForeignText(text);
        return blocks.DoLinesAgree();
    };
    EXPECT_TRUE(doLinesAgree(""));
    EXPECT_TRUE(doLinesAgree("FUNCTION_f:")) << "something stands in front of it";
    EXPECT_TRUE(doLinesAgree("NOP\n\tNOP"));
    EXPECT_TRUE(doLinesAgree("NOP\n\tFUNCTION_f:")) << "a label begins its line";
    EXPECT_TRUE(doLinesAgree("NOP\nPROGRAM_main:"));
    EXPECT_TRUE(doLinesAgree("NOP\nDBI POU_END"));
    EXPECT_FALSE(doLinesAgree("NOP\nFUNCTION_f:"));
    EXPECT_FALSE(doLinesAgree("\nFUNCTION_"));
    EXPECT_FALSE(doLinesAgree("NOP\n\tDBI POU_END"));

    CBlockExtents blocks;
    blocks.NoteForeignText("a\nFUNCTION_f:");
    blocks.NoteForeignText("b");
    EXPECT_FALSE(blocks.DoLinesAgree()) << "one is enough";
}

TEST(BlockExtentsTest, OfACompileReachFromLabelsToEnds)
{
    const CompiledText compiled = CompileText("FUNCTION f : INT VAR_INPUT a : INT; END_VAR f := a; END_FUNCTION\n"
                                              "FUNCTION f : INT VAR_INPUT a : DINT; END_VAR f := 1; END_FUNCTION\n"
                                              "FUNCTION_BLOCK b VAR x : INT; END_VAR x := 1; END_FUNCTION_BLOCK\n"
                                              "PROGRAM main VAR x : INT; END_VAR x := f(x); END_PROGRAM\n");
    ASSERT_EQ(compiled.output, "");
    const std::vector<BlockExtent>& blocks = compiled.pNorvane->m_Code.m_Blocks.GetBlocks();
    ASSERT_EQ(blocks.size(), 3U) << "a program is none";
    const std::string_view labels[] = {"FUNCTION_f:\n", "FUNCTION_f__1:\n", "FUNCTION_b:\n"};
    for (std::size_t i = 0; i < blocks.size(); ++i) {
        const std::string_view text = Cut(compiled.assembler, blocks[i]);
        EXPECT_TRUE(text.starts_with(labels[i])) << text;
        EXPECT_TRUE(text.ends_with("\n\tDBI POU_END\n")) << text;
        EXPECT_EQ(text.find("\nFUNCTION_"), std::string_view::npos) << text;
    }
    EXPECT_EQ(blocks[1].form, 1);
    EXPECT_TRUE(blocks[2].pPou->IsFunctionBlock());
}

// Text is written out in between when there is much of it; positions count from the start of the file all the same.
TEST(BlockExtentsTest, OfLongBlocksCountAllBytes)
{
    std::string source;
    for (const char* szName : {"f", "g"}) {
        source += "FUNCTION " + std::string(szName) + " : INT\n";
        for (int i = 0; i < 4000; ++i) source += szName + std::string(" := 12345;\n");
        source += "END_FUNCTION\n";
    }
    const CompiledText compiled = CompileText(source);
    ASSERT_EQ(compiled.output, "");
    ASSERT_GT(compiled.assembler.size(), 200000U);
    const std::vector<BlockExtent>& blocks = compiled.pNorvane->m_Code.m_Blocks.GetBlocks();
    ASSERT_EQ(blocks.size(), 2U);
    EXPECT_TRUE(Cut(compiled.assembler, blocks[1]).starts_with("FUNCTION_g:\n"));
    EXPECT_TRUE(Cut(compiled.assembler, blocks[1]).ends_with("\n\tDBI POU_END\n"));
}
