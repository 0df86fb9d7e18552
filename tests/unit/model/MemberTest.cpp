#include "model/Member.h"

#include "model/Type.h"

#include <gtest/gtest.h>

#include <memory>

TEST(MemberTest, NewMember)
{
    CType type("INT");
    const CMember member("Level", &type);
    EXPECT_EQ(member.m_Name, "Level");
    EXPECT_EQ(member.m_Type, &type);
    EXPECT_EQ(member.m_Offset, -1);
    EXPECT_FALSE(member.m_InitValue);
    EXPECT_FALSE(member.m_Index);
    EXPECT_FALSE(member.IsInOut());
    EXPECT_EQ(member.AsMemberFB(), nullptr);
}

TEST(MemberTest, CloneOwnsItsParts)
{
    CType type("INT");
    CMember member("Level", &type);
    member.m_Offset = 12;
    member.m_InitValue = std::make_unique<CInitValue>(std::int64_t{4});
    member.m_Index = std::make_unique<CArrayOfArrayIndex>();
    const std::unique_ptr<CMember> pClone = member.Clone();
    EXPECT_EQ(pClone->m_Name, "Level");
    EXPECT_EQ(pClone->m_Type, &type);
    EXPECT_EQ(pClone->m_Offset, 12);
    ASSERT_TRUE(pClone->m_InitValue);
    EXPECT_NE(pClone->m_InitValue, member.m_InitValue);
    EXPECT_EQ(pClone->m_InitValue->GetInt64(), 4);
    ASSERT_TRUE(pClone->m_Index);
    EXPECT_NE(pClone->m_Index, member.m_Index);
    EXPECT_EQ(pClone->AsMemberFB(), nullptr);
}

TEST(MemberFBTest, FlagsAreClearedAtFirstAndCloned)
{
    CMemberFB member("run", nullptr);
    EXPECT_FALSE(member.m_IsInput || member.m_IsOutput || member.m_IsInOut);
    EXPECT_EQ(member.AsMemberFB(), &member);
    member.m_IsInOut = true;
    EXPECT_TRUE(member.IsInOut());
    member.m_IsInput = true;
    const std::unique_ptr<CMember> pClone = member.Clone();
    ASSERT_NE(pClone->AsMemberFB(), nullptr);
    EXPECT_TRUE(pClone->IsInOut());
    EXPECT_TRUE(pClone->AsMemberFB()->m_IsInput);
    EXPECT_FALSE(pClone->AsMemberFB()->m_IsOutput);
}
