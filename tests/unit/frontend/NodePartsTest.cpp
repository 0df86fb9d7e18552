#include "frontend/NodeParts.h"

#include "frontend/NodeArena.h"

#include <gtest/gtest.h>

#include <initializer_list>

namespace
{

class NodePartsTest : public testing::Test
{
protected:
    CNode* Make(int kind, std::initializer_list<CNode*> children = {})
    {
        CNode* pNode = m_Nodes.MakeNode(kind, SourceLocation{});
        for (CNode* pChild : children) pNode->AddChild(pChild);
        return pNode;
    }

    CNodeArena m_Nodes;
    CNode* m_pCondition = Make(TRUE);
    CNode* m_pFirst = Make(STMT_LIST);
    CNode* m_pSecond = Make(STMT_LIST);
};

}   // namespace

TEST_F(NodePartsTest, AForHasAStepOrNot)
{
    CNode* pVariable = Make(IDENTIFIER);
    CNode* pFrom = Make(IMM_INTEGER);
    CNode* pTo = Make(IMM_INTEGER);
    CNode* pStep = Make(IMM_INTEGER);
    CNode* pAssignment = Make(ASSIGN, {pVariable, pFrom});
    for (CNode* pEach : {static_cast<CNode*>(nullptr), pStep}) {
        const ForParts parts = GetForParts(pEach ? Make(FOR, {pAssignment, pTo, pEach, m_pFirst})
                                                 : Make(FOR, {pAssignment, pTo, m_pFirst}));
        EXPECT_EQ(parts.pAssignment, pAssignment);
        EXPECT_EQ(parts.pVariable, pVariable);
        EXPECT_EQ(parts.pFrom, pFrom);
        EXPECT_EQ(parts.pTo, pTo);
        EXPECT_EQ(parts.pStep, pEach);
        EXPECT_EQ(parts.pBody, m_pFirst);
    }
}

TEST_F(NodePartsTest, AnIfHasElsifItemsOrElseOrBothOrNone)
{
    CNode* pItems = Make(ELSEIF_LIST);
    const IfParts plain = GetIfParts(Make(IF, {m_pCondition, m_pFirst}));
    EXPECT_EQ(plain.pCondition, m_pCondition);
    EXPECT_EQ(plain.pThen, m_pFirst);
    EXPECT_EQ(plain.pElsifItems, nullptr);
    EXPECT_EQ(plain.pElse, nullptr);

    const IfParts withElse = GetIfParts(Make(IF, {m_pCondition, m_pFirst, m_pSecond}));
    EXPECT_EQ(withElse.pElsifItems, nullptr);
    EXPECT_EQ(withElse.pElse, m_pSecond);

    const IfParts withItems = GetIfParts(Make(IF, {m_pCondition, m_pFirst, pItems}));
    EXPECT_EQ(withItems.pElsifItems, pItems);
    EXPECT_EQ(withItems.pElse, nullptr);

    const IfParts withBoth = GetIfParts(Make(IF, {m_pCondition, m_pFirst, pItems, m_pSecond}));
    EXPECT_EQ(withBoth.pElsifItems, pItems);
    EXPECT_EQ(withBoth.pElse, m_pSecond);
}

TEST_F(NodePartsTest, ACaseHasAnElseOrNot)
{
    CNode* pSelector = Make(IDENTIFIER);
    CNode* pPairs = Make(CASE_BODY_LIST);
    const CaseParts plain = GetCaseParts(Make(CASE, {pSelector, pPairs}));
    EXPECT_EQ(plain.pSelector, pSelector);
    EXPECT_EQ(plain.pPairs, pPairs);
    EXPECT_EQ(plain.pElse, nullptr);
    EXPECT_EQ(GetCaseParts(Make(CASE, {pSelector, pPairs, m_pFirst})).pElse, m_pFirst);
}
