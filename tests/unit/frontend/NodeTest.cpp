#include "frontend/Node.h"

#include "files/OutputTextFile.h"
#include "model/InitValue.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <cstdio>
#include <fstream>
#include <iterator>
#include <memory>
#include <string>

namespace
{

constexpr SourceLocation g_Where{1, 1, 1, 2, "a.st"};

// A file of this test alone: tests run side by side.
std::string GetOwnFileName()
{
    const testing::TestInfo* pTest = testing::UnitTest::GetInstance()->current_test_info();
    return testing::TempDir() + "node_" + std::to_string(getpid()) + "_" + pTest->name() + ".xml";
}

std::string DumpOf(const CNode& node)
{
    const std::string name = GetOwnFileName();
    OutputTextFile file;
    EXPECT_TRUE(file.Open(name));
    node.WriteXml(file);
    EXPECT_TRUE(file.Close());
    std::ifstream input(name, std::ios::binary);
    std::string text{std::istreambuf_iterator<char>(input), std::istreambuf_iterator<char>()};
    input.close();
    std::remove(name.c_str());
    return text;
}

}   // namespace

class NodeTest : public testing::Test
{
protected:
    CNode& Make(int kind) { return *m_Nodes.MakeNode(kind, g_Where); }
    std::string DumpOfKind(int kind) { return DumpOf(Make(kind)); }

    CNamePool m_Names;
    CNodeArena m_Nodes;
};

using NodeXmlTest = NodeTest;
using NodeDeathTest = NodeTest;

TEST_F(NodeTest, NewNodeIsEmpty)
{
    const CNode& node = Make(IDENTIFIER);
    EXPECT_EQ(node.nKind, IDENTIFIER);
    EXPECT_EQ(node.GetChildCount(), 0);
    EXPECT_EQ(node.nValue, 0);
    EXPECT_EQ(node.pType, nullptr);
    EXPECT_EQ(node.GetVariable(), nullptr);
    EXPECT_FALSE(node.GetInit());
    EXPECT_FALSE(node.bThroughInOut);
    EXPECT_STREQ(node.location.szFile, "a.st");
}

TEST_F(NodeTest, ChildrenKeepTheirOrder)
{
    CNode& node = Make('+');
    CNode& left = Make(IDENTIFIER);
    CNode& right = Make(IMM_INTEGER);
    node.AddChild(&left);
    node.AddChild(&right);
    EXPECT_EQ(node.GetChildCount(), 2);
    EXPECT_EQ(node.Child(0), &left);
    EXPECT_EQ(node.Child(1), &right);
}

TEST_F(NodeDeathTest, ChildThatIsNotThere)
{
    CNode& node = Make('+');
    EXPECT_EXIT(node.Child(0), testing::ExitedWithCode(3), "internal fault: ");
    EXPECT_EXIT(node.Child(-1), testing::ExitedWithCode(3), "internal fault: ");
}

TEST_F(NodeTest, Kinds)
{
    for (const int kind : {IMM_INTEGER, IMM_REAL, TRUE, FALSE}) EXPECT_TRUE(Make(kind).IsLiteral()) << kind;
    EXPECT_FALSE(Make(STR_DIR).IsLiteral());
    EXPECT_FALSE(Make(SIMPLIFIED).IsLiteral());
    EXPECT_TRUE(Make(IDENTIFIER).IsIdentifier());
    EXPECT_FALSE(Make(NEW_ID).IsIdentifier());
}

TEST_F(NodeXmlTest, PlainElement)
{
    EXPECT_EQ(DumpOfKind(STMT_LIST), "<STMT_LIST>\n</STMT_LIST>\n");
    EXPECT_EQ(DumpOfKind(ERROR_), "<ERROR_>\n</ERROR_>\n");
}

TEST_F(NodeXmlTest, BlanksInNamesBecomeUnderscores)
{
    EXPECT_EQ(DumpOfKind(DIRECT_VARIABLE), "<DIRECT_VARIABLE>\n</DIRECT_VARIABLE>\n");
    EXPECT_EQ(DumpOfKind(TYPE_IDENTIFIER), "<TYPE_IDENTIFIER>\n</TYPE_IDENTIFIER>\n");
}

TEST_F(NodeXmlTest, OperatorsTakeTheGenericForm)
{
    EXPECT_EQ(DumpOfKind('+'), " <Node name=\"+\">\n</Node>\n");
    EXPECT_EQ(DumpOfKind('-'), " <Node name=\"-\">\n</Node>\n");
    EXPECT_EQ(DumpOfKind('*'), " <Node name=\"*\">\n</Node>\n");
    EXPECT_EQ(DumpOfKind('/'), " <Node name=\"/\">\n</Node>\n");
    EXPECT_EQ(DumpOfKind(UNARY_MINUS), " <Node name=\"-\">\n</Node>\n");
    EXPECT_EQ(DumpOfKind(SUBRANGE_DOTS), " <Node name=\"..\">\n</Node>\n");
    EXPECT_EQ(DumpOfKind(ASSIGN), " <Node name=\":=\">\n</Node>\n");
    EXPECT_EQ(DumpOfKind(ARROW), " <Node name=\"=&gt;\">\n</Node>\n");
    EXPECT_EQ(DumpOfKind(NOT_EQUAL), " <Node name=\"&lt;&gt;\">\n</Node>\n");
    EXPECT_EQ(DumpOfKind(GREATER_EQUAL), " <Node name=\"&gt;=\">\n</Node>\n");
    EXPECT_EQ(DumpOfKind(LESS_EQUAL), " <Node name=\"&lt;=\">\n</Node>\n");
    EXPECT_EQ(DumpOfKind(LESS), " <Node name=\"&lt;\">\n</Node>\n");
    EXPECT_EQ(DumpOfKind(GREATER), " <Node name=\"&gt;\">\n</Node>\n");
    EXPECT_EQ(DumpOfKind(EQUAL), " <Node name=\"=\">\n</Node>\n");
}

TEST_F(NodeXmlTest, KindZeroHasAnEmptyName)
{
    EXPECT_EQ(DumpOfKind(0), " <Node name=\"\">\n</Node>\n");
}

TEST_F(NodeXmlTest, LiteralValues)
{
    CNode& integer = Make(IMM_INTEGER);
    integer.nValue = -9223372036854775807 - 1;
    EXPECT_EQ(DumpOf(integer), "<IMM_INTEGER value=\"-9223372036854775808\">\n</IMM_INTEGER>\n");
    CNode& real = Make(IMM_REAL);
    real.SetReal(0.5);
    EXPECT_EQ(DumpOf(real), "<IMM_REAL value=\"0.500000\">\n</IMM_REAL>\n");
    CNode& string = Make(STR_DIR);
    string.SetString("a<b&\"c\"");
    EXPECT_EQ(DumpOf(string), "<STR_DIR value=\"a<b&\"c\"\">\n</STR_DIR>\n");
}

TEST_F(NodeXmlTest, NamesValuesAndAddresses)
{
    CNode& name = Make(IDENTIFIER);
    name.pName = &m_Names.Intern("x");
    EXPECT_EQ(DumpOf(name), "<IDENTIFIER name=\"x\">\n</IDENTIFIER>\n");
    name.SetDirect(&m_Names.Intern("MD4"));
    EXPECT_EQ(DumpOf(name), "<IDENTIFIER name=\"x\" direct=\"MD4\">\n</IDENTIFIER>\n");
    name.SetInit(m_Nodes.KeepValue(std::make_unique<CInitValue>(std::int64_t{0})));
    EXPECT_EQ(DumpOf(name), "<IDENTIFIER name=\"x\" value=\"0\" direct=\"MD4\">\n</IDENTIFIER>\n");
    // Without a name neither value nor address shows.
    name.pName = nullptr;
    EXPECT_EQ(DumpOf(name), "<IDENTIFIER>\n</IDENTIFIER>\n");
}

TEST_F(NodeXmlTest, ArrayValueHasNoBrackets)
{
    CNode& name = Make(IDENTIFIER);
    name.pName = &m_Names.Intern("x");
    std::unique_ptr<CInitArray> pValues = std::make_unique<CInitArray>();
    pValues->Add(std::make_unique<CInitValue>(std::int64_t{1}), 1);
    pValues->Add(std::make_unique<CInitValue>(std::int64_t{0}), 3);
    name.SetInit(m_Nodes.KeepValue(std::move(pValues)));
    EXPECT_EQ(DumpOf(name), "<IDENTIFIER name=\"x\" value=\"1 3(0) \">\n</IDENTIFIER>\n");
}

TEST_F(NodeXmlTest, NamesOfOtherKinds)
{
    const auto dumpNamed = [this](int kind) {
        CNode& node = Make(kind);
        node.pName = &m_Names.Intern("n");
        node.SetInit(m_Nodes.KeepValue(std::make_unique<CInitValue>(std::int64_t{7})));
        return DumpOf(node);
    };
    EXPECT_EQ(dumpNamed(LIST_ID), "<LIST_ID name=\"n\" value=\"7\">\n</LIST_ID>\n");
    EXPECT_EQ(dumpNamed(RETURN_TYPE), "<RETURN_TYPE name=\"n\" value=\"7\">\n</RETURN_TYPE>\n");
    EXPECT_EQ(dumpNamed(FUNCTION_CALL), "<FUNCTION_CALL name=\"n\">\n</FUNCTION_CALL>\n");
    EXPECT_EQ(dumpNamed(NEW_ID), "<NEW_ID>\n</NEW_ID>\n");
    EXPECT_EQ(dumpNamed(SIMPLIFIED), "<SIMPLIFIED>\n</SIMPLIFIED>\n");
}

TEST_F(NodeXmlTest, GenericFormHasNoAttributes)
{
    CNode& node = Make(ASSIGN);
    node.pName = &m_Names.Intern("n");
    node.nValue = 4;
    EXPECT_EQ(DumpOf(node), " <Node name=\":=\">\n</Node>\n");
}

TEST_F(NodeXmlTest, ChildrenInOrder)
{
    CNode& root = Make(STMT_LIST);
    CNode& assignment = Make(ASSIGN);
    CNode& target = Make(IDENTIFIER);
    target.pName = &m_Names.Intern("x");
    CNode& value = Make(IMM_INTEGER);
    value.nValue = 1;
    CNode& last = Make(NOP);
    assignment.AddChild(&target);
    assignment.AddChild(&value);
    root.AddChild(&assignment);
    root.AddChild(&last);
    EXPECT_EQ(DumpOf(root), "<STMT_LIST>\n"
                            " <Node name=\":=\">\n"
                            "<IDENTIFIER name=\"x\">\n"
                            "</IDENTIFIER>\n"
                            "<IMM_INTEGER value=\"1\">\n"
                            "</IMM_INTEGER>\n"
                            "</Node>\n"
                            "<NOP>\n"
                            "</NOP>\n"
                            "</STMT_LIST>\n");
}

// Far deeper than any stack would bear a call for each level.
TEST_F(NodeTest, DeepTree)
{
    constexpr int depth = 200000;
    CNode* pRoot = &Make(NOT);
    CNode* pInner = pRoot;
    for (int i = 1; i < depth; ++i) {
        CNode* pChild = &Make(NOT);
        pInner->AddChild(pChild);
        pInner = pChild;
    }
    const std::string text = DumpOf(*pRoot);
    std::string expected;
    for (int i = 0; i < depth; ++i) expected += "<NOT>\n";
    for (int i = 0; i < depth; ++i) expected += "</NOT>\n";
    EXPECT_TRUE(text == expected) << "length " << text.size() << " instead of " << expected.size();
}
