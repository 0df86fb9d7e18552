#include "files/TemporaryDirectory.h"
#include "semantics/ExpressionFixture.h"

#include <filesystem>
#include <fstream>
#include <sstream>

namespace {

class MakeNode : public ExpressionFixture
{
protected:
    MakeNode()
    {
        folder = directory.Path();
    }

    static std::string ReadFile(const std::filesystem::path& name)
    {
        std::ifstream file(name, std::ios::binary);
        std::ostringstream text;
        text << file.rdbuf();
        return text.str();
    }

    TemporaryDirectory directory;
    std::filesystem::path folder;
};

TEST_F(MakeNode, StatementsAreCheckedByTheirKind)
{
    CNode* pList = norvane.MakeNode(STMT_LIST, At(20), {Leaf(NOP, 20)});
    Run([&] { return Op(IF, Int(3), pList); });
    EXPECT_EQ(printed, "t.st(1,10) : error: the statement needs a boolean expression\n");

    Declare("b", "BOOL");
    Run([&] { return Op(ASSIGN, Var("b"), Int(7, 20)); });
    EXPECT_EQ(printed, "t.st(1,20) : error: cannot assign the value to an BOOL\n");
}

TEST_F(MakeNode, FoldingComesBeforeTyping)
{
    Declare("u", "UINT");
    // 2 - 5 is the literal -3 before the sum is looked at, and that doesn't go into an unsigned type.
    CNode* pNode = Run([&] { return Op('+', Var("u"), Op('-', "2", "5")); });
    EXPECT_EQ(printed, "t.st(1,50) : error, mismatch, operator +\n");
    EXPECT_EQ(pNode->Child(1)->nValue, -3);
}

TEST_F(MakeNode, SymbolWithoutValueGivesNoChild)
{
    const CNode* pNode = norvane.MakeNode(VAR_BLOCK_BODY, At(1), {nullptr});
    EXPECT_EQ(pNode->GetChildCount(), 0);
}

TEST_F(MakeNode, ParserMessagesStandWhereTheyAreTold)
{
    Run([&] {
        norvane.SyntaxErrorAt("forgotten \";\" ?", 3, 4);
        return nullptr;
    });
    EXPECT_EQ(printed, "t.st(3,4) : error: forgotten \";\" ?\n");
}

TEST_F(MakeNode, TreeIsWrittenBesideTheSourceOnDemand)
{
    const std::string source = folder / "a.st";
    g_CurrentFileName = source.c_str();
    CNode* pRoot = norvane.MakeNode(FILE_GLOBAL, At(1), {Int(5)});
    norvane.FinishSourceFile(pRoot);
    EXPECT_FALSE(std::filesystem::exists(source + ".xml"));

    norvane.m_DumpTree = true;
    norvane.FinishSourceFile(pRoot);
    EXPECT_EQ(ReadFile(source + ".xml"), "<FILE_GLOBAL>\n<IMM_INTEGER value=\"5\">\n</IMM_INTEGER>\n</FILE_GLOBAL>\n");
}

TEST_F(MakeNode, TreeThatCannotBeWrittenIsReported)
{
    const std::string source = folder / "missing" / "a.st";
    g_CurrentFileName = source.c_str();
    norvane.m_DumpTree = true;
    testing::internal::CaptureStderr();
    norvane.FinishSourceFile(norvane.MakeNode(FILE_GLOBAL, At(1), {Int(5)}));
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "cannot write the tree file " + source + ".xml\n");
}

}
