#include "model/Name.h"

#include "model/Type.h"
#include "model/Variable.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

TEST(NameTest, ASpellingHasOneName)
{
    CNamePool pool;
    const CName& first = pool.Intern("Speed");
    std::string text = "Speed";
    const CName& second = pool.Intern(text);
    text = "other";
    EXPECT_EQ(&first, &second);
    EXPECT_EQ(first.GetText(), "Speed") << "the pool has a text of its own";
    EXPECT_NE(&first, &pool.Intern("SPEED"));
    EXPECT_NE(&first, &pool.Intern("Spee"));
}

TEST(NameTest, SpellingsThatDifferInCaseHaveOneKey)
{
    CNamePool pool;
    const CName& mixed = pool.Intern("Speed_1");
    const CName& lower = pool.Intern("speed_1");
    EXPECT_EQ(mixed.GetKey().GetText(), "speed_1");
    EXPECT_EQ(&mixed.GetKey(), &lower);
    EXPECT_EQ(&pool.Intern("SPEED_1").GetKey(), &lower);
    EXPECT_EQ(&lower.GetKey(), &lower);
    EXPECT_NE(&pool.Intern("speed_2").GetKey(), &lower);
}

TEST(NameTest, OnlyLettersOfAsciiHaveACase)
{
    CNamePool pool;
    const CName& name = pool.Intern("\xC4_[Z");
    EXPECT_EQ(name.GetKey().GetText(), "\xC4_[z");
}

TEST(NameTest, LookingUpEntersNothing)
{
    CNamePool pool;
    EXPECT_EQ(pool.Find("a"), nullptr);
    EXPECT_EQ(pool.FindKey("A"), nullptr);
    EXPECT_EQ(pool.GetCount(), 0u);
    const CName& name = pool.Intern("Ab");
    EXPECT_EQ(pool.GetCount(), 2u) << "the spelling and its key";
    EXPECT_EQ(pool.Find("Ab"), &name);
    EXPECT_EQ(pool.Find("AB"), nullptr);
    EXPECT_EQ(pool.FindKey("AB"), &name.GetKey());
}

TEST(NameTest, UnderscoresSideBySide)
{
    CNamePool pool;
    EXPECT_TRUE(pool.Intern("a__b").HasTwoUnderscores());
    EXPECT_TRUE(pool.Intern("__").HasTwoUnderscores());
    EXPECT_TRUE(pool.Intern("A_TO_B").HasTo());
    EXPECT_FALSE(pool.Intern("a_to_b").HasTo());
    EXPECT_FALSE(pool.Intern("A_TO").HasTo());
    EXPECT_FALSE(pool.Intern("_a_b_").HasTwoUnderscores());
    EXPECT_FALSE(pool.Intern("_").HasTwoUnderscores());
}

TEST(NameTest, TheEmptySpellingIsAName)
{
    CNamePool pool;
    EXPECT_EQ(pool.Intern("").GetText(), "");
    EXPECT_EQ(pool.Find(""), &pool.Intern(""));
}

// Names stay where they are while the pool grows.
TEST(NameTest, ManyNames)
{
    constexpr int count = 20000;
    CNamePool pool;
    std::vector<const CName*> names;
    for (int i = 0; i < count; ++i) names.push_back(&pool.Intern("Name" + std::to_string(i)));
    EXPECT_EQ(pool.GetCount(), 2u * count);
    for (int i = 0; i < count; ++i) {
        const std::string number = std::to_string(i);
        const CName* pName = names[static_cast<std::size_t>(i)];
        ASSERT_EQ(pool.Find("Name" + number), pName);
        ASSERT_EQ(pool.Find("name" + number), &pName->GetKey());
        ASSERT_EQ(pName->GetText(), "Name" + number);
    }
    EXPECT_EQ(pool.Find("Name" + std::to_string(count)), nullptr);
}

static CNameSlot<CVariable>& SlotOf(const CName& name, Scope scope)
{
    return name.m_Variables[static_cast<std::size_t>(scope)];
}

TEST(NameTest, ASlotAnswersOnlyToTheIdentityThatItBears)
{
    CNamePool pool;
    const TableIdentity first = pool.NewIdentity();
    const TableIdentity second = pool.NewIdentity();
    EXPECT_NE(first, second);
    const CName& name = pool.Intern("x");
    EXPECT_FALSE(SlotOf(name, Scope::Local).IsOf(first));
    EXPECT_EQ(SlotOf(name, Scope::Local).Get(first), nullptr);

    CVariable variable;
    SlotOf(name, Scope::Local).Set(first, &variable);
    EXPECT_EQ(SlotOf(name, Scope::Local).Get(first), &variable);
    EXPECT_EQ(SlotOf(name, Scope::Local).Get(second), nullptr);
    EXPECT_EQ(SlotOf(name, Scope::Global).Get(first), nullptr) << "each slot is one of its own";

    CVariable other;
    SlotOf(name, Scope::Local).Set(second, &other);
    EXPECT_EQ(SlotOf(name, Scope::Local).Get(first), nullptr);
    EXPECT_EQ(SlotOf(name, Scope::Local).Get(second), &other);
}

TEST(NameTest, PoolsKnowNothingOfEachOther)
{
    CNamePool first;
    CNamePool second;
    const CName& name = first.Intern("x");
    EXPECT_EQ(second.Find("x"), nullptr);
    const CName& other = second.Intern("x");
    EXPECT_NE(&name, &other);

    CVariable variable;
    const TableIdentity identity = first.NewIdentity();
    EXPECT_EQ(second.NewIdentity(), identity) << "the same number, in a pool of its own";
    SlotOf(name, Scope::Local).Set(identity, &variable);
    EXPECT_EQ(SlotOf(other, Scope::Local).Get(identity), nullptr);
}
