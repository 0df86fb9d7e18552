#include "frontend/NodeArena.h"

#include "frontend/Node.h"
#include "model/InitValue.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace
{

constexpr SourceLocation g_Where{1, 1, 1, 2, "a.st"};

// Counts how many of its kind are alive.
class CCountedValue : public CInitValue
{
public:
    explicit CCountedValue(int& count) : m_Count(count) { ++m_Count; }
    ~CCountedValue() override { --m_Count; }

private:
    int& m_Count;
};

}   // namespace

TEST(NodeArenaTest, ListsKeepTheirOrderWhileTheyGrow)
{
    CNodeArena arena;
    CNode* pList = arena.MakeNode(STMT_LIST, g_Where);
    std::vector<CNode*> expected;
    for (int i = 0; i < 100000; ++i) {
        CNode* pItem = arena.MakeNode(NOP, g_Where);
        pItem->nValue = i;
        pList->AddChild(pItem);
        expected.push_back(pItem);
    }
    ASSERT_EQ(pList->GetChildCount(), 100000);
    for (int i = 0; i < 100000; ++i) {
        ASSERT_EQ(pList->Child(i), expected[static_cast<std::size_t>(i)]);
        ASSERT_EQ(pList->Child(i)->nValue, i) << "no other object took its place";
    }
    int count = 0;
    for (const CNode* pItem : pList->m_Children) ASSERT_EQ(pItem->nValue, count++);
    EXPECT_EQ(count, 100000);
}

TEST(NodeArenaTest, ListsCanShrink)
{
    CNodeArena arena;
    CNode* pList = arena.MakeNode(STMT_LIST, g_Where);
    CNode* pItem = arena.MakeNode(NOP, g_Where);
    for (int i = 0; i < 5; ++i) pList->AddChild(pItem);
    pList->m_Children.truncate(2);
    EXPECT_EQ(pList->GetChildCount(), 2);
    pList->m_Children.clear();
    EXPECT_EQ(pList->GetChildCount(), 0);
    pList->AddChild(pItem);
    EXPECT_EQ(pList->Child(0), pItem);
}

TEST(NodeArenaTest, ObjectsAreAlignedForAnyType)
{
    CNodeArena arena;
    for (const std::size_t bytes : {1u, 7u, 24u, 100000u, 3u}) {
        const auto address = reinterpret_cast<std::uintptr_t>(arena.Allocate(bytes));
        EXPECT_EQ(address % alignof(std::max_align_t), 0u) << bytes;
    }
}

TEST(NodeArenaTest, TextsAreCopies)
{
    CNodeArena arena;
    std::string text = std::string("a\0b", 3);
    const std::string_view kept = arena.KeepText(text);
    text = "xyz";
    EXPECT_EQ(kept, std::string_view("a\0b", 3));
    EXPECT_TRUE(arena.KeepText("").empty());
}

TEST(NodeArenaTest, ValuesLiveUntilTheReset)
{
    int alive = 0;
    {
        CNodeArena arena;
        const CInitValue* pValue = arena.KeepValue(std::make_unique<CCountedValue>(alive));
        EXPECT_NE(pValue, nullptr);
        EXPECT_EQ(arena.KeepValue(nullptr), nullptr);
        arena.KeepValue(std::make_unique<CCountedValue>(alive));
        EXPECT_EQ(alive, 2);
        arena.Reset();
        EXPECT_EQ(alive, 0);
        arena.KeepValue(std::make_unique<CCountedValue>(alive));
        EXPECT_EQ(alive, 1);
    }
    EXPECT_EQ(alive, 0) << "the end of the arena is the last reset";
}

// Part after part of a source in the memory of the first.
TEST(NodeArenaTest, BlocksAreUsedAgain)
{
    CNodeArena arena;
    const auto fill = [&arena] {
        for (int i = 0; i < 5000; ++i) arena.MakeNode(NOP, g_Where);
    };
    EXPECT_EQ(arena.GetBlockCount(), 0u);
    fill();
    const std::size_t blocks = arena.GetBlockCount();
    EXPECT_GT(blocks, 1u);
    for (int part = 0; part < 20; ++part) {
        arena.Reset();
        fill();
    }
    EXPECT_EQ(arena.GetBlockCount(), blocks);
}

TEST(NodeArenaTest, LargeObjectsHaveBlocksOfTheirOwnThatGoWithTheReset)
{
    CNodeArena arena;
    arena.MakeNode(NOP, g_Where);
    EXPECT_EQ(arena.GetBlockCount(), 1u);
    char* const pLarge = static_cast<char*>(arena.Allocate(1000000));
    pLarge[0] = 'a';
    pLarge[999999] = 'z';
    EXPECT_EQ(arena.GetBlockCount(), 2u);
    CNode* pNode = arena.MakeNode(NOT, g_Where);
    EXPECT_EQ(arena.GetBlockCount(), 2u) << "the block that was being filled goes on";
    EXPECT_EQ(pNode->nKind, NOT);
    arena.Reset();
    EXPECT_EQ(arena.GetBlockCount(), 1u);
}

TEST(NodeArenaTest, ArenasStandSideBySide)
{
    CNodeArena first;
    CNodeArena second;
    CNode* pNode = first.MakeNode(NOT, g_Where);
    pNode->AddChild(first.MakeNode(NOP, g_Where));
    second.MakeNode(STMT_LIST, g_Where);
    second.Reset();
    second.MakeNode(IF, g_Where);
    EXPECT_EQ(pNode->nKind, NOT);
    EXPECT_EQ(pNode->Child(0)->nKind, NOP);
}
