#include "model/TypeStruct.h"

#include "model/TypeArray.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>

namespace
{

class TypeStructTest : public testing::Test
{
protected:
    CMember* Add(CTypeStruct& structure, const char* name, CType* pType)
    {
        structure.AddMember(std::make_unique<CMember>(name, pType));
        return structure.m_Members.back().get();
    }

    CType m_Bool{"BOOL"};
    CType m_Int{"INT"};
    CTypeStruct m_Struct{"tank"};
};

}   // namespace

TEST_F(TypeStructTest, MembersAreFoundInAnyCase)
{
    CMember* pFirst = Add(m_Struct, "Level", &m_Int);
    CMember* pSecond = Add(m_Struct, "full", &m_Bool);
    int index = -1;
    EXPECT_EQ(m_Struct.FindMember("LEVEL", &index), pFirst);
    EXPECT_EQ(index, 0);
    EXPECT_EQ(m_Struct.FindMember("Full", &index), pSecond);
    EXPECT_EQ(index, 1);
    EXPECT_EQ(m_Struct.FindMember("full"), pSecond);
    EXPECT_EQ(m_Struct.FindMember("none", &index), nullptr);
    EXPECT_EQ(index, 1);
    EXPECT_EQ(m_Struct.m_Members[0]->m_Name, "Level");
}

TEST_F(TypeStructTest, FirstMemberOfANameWins)
{
    CMember* pFirst = Add(m_Struct, "a", &m_Int);
    Add(m_Struct, "A", &m_Bool);
    Add(m_Struct, "a", &m_Bool);
    int index = -1;
    EXPECT_EQ(m_Struct.FindMember("a", &index), pFirst);
    EXPECT_EQ(index, 0);
    EXPECT_EQ(m_Struct.m_Members.size(), 3u);
}

TEST_F(TypeStructTest, BitsOfBoolMembers)
{
    const CMember* pA = Add(m_Struct, "a", &m_Bool);
    const CMember* pB = Add(m_Struct, "b", &m_Bool);
    const CMember* pC = Add(m_Struct, "c", &m_Int);
    const CMember* pD = Add(m_Struct, "d", &m_Bool);
    EXPECT_EQ(m_Struct.GetBoolBit(pA), 0);
    EXPECT_EQ(m_Struct.GetBoolBit(pB), 1);
    EXPECT_EQ(m_Struct.GetBoolBit(pC), 0);
    EXPECT_EQ(m_Struct.GetBoolBit(pD), 0);
}

TEST_F(TypeStructTest, NinthBoolStartsAByte)
{
    for (int i = 0; i < 10; ++i) Add(m_Struct, ("b" + std::to_string(i)).c_str(), &m_Bool);
    EXPECT_EQ(m_Struct.GetBoolBit(m_Struct.m_Members[7].get()), 7);
    EXPECT_EQ(m_Struct.GetBoolBit(m_Struct.m_Members[8].get()), 0);
    EXPECT_EQ(m_Struct.GetBoolBit(m_Struct.m_Members[9].get()), 1);
}

TEST_F(TypeStructTest, AliasesOfBoolCountAndArraysDoNot)
{
    CType alias("flag", &m_Bool);
    CTypeArray array("BOOL[]", &m_Bool);
    const CMember* pA = Add(m_Struct, "a", &alias);
    const CMember* pB = Add(m_Struct, "b", &alias);
    const CMember* pC = Add(m_Struct, "c", &array);
    const CMember* pD = Add(m_Struct, "d", &m_Bool);
    EXPECT_EQ(m_Struct.GetBoolBit(pA), 0);
    EXPECT_EQ(m_Struct.GetBoolBit(pB), 1);
    EXPECT_EQ(m_Struct.GetBoolBit(pC), 0);
    EXPECT_EQ(m_Struct.GetBoolBit(pD), 0);
}

TEST_F(TypeStructTest, MembersWithoutATypeHaveNoBit)
{
    const CMember* pA = Add(m_Struct, "a", nullptr);
    const CMember* pB = Add(m_Struct, "b", &m_Bool);
    EXPECT_EQ(m_Struct.GetBoolBit(pA), 0);
    EXPECT_EQ(m_Struct.GetBoolBit(pB), 0);
}

// An in-out member's slot holds a pointer, yet it counts for those behind it.
TEST_F(TypeStructTest, InOutMembersOfAFunctionBlockHaveNoBit)
{
    CTypeStructFB block("Timer");
    for (const char* name : {"a", "b", "c"}) block.AddMember(std::make_unique<CMemberFB>(name, &m_Bool));
    static_cast<CMemberFB&>(*block.m_Members[1]).m_IsInOut = true;
    EXPECT_EQ(block.GetBoolBit(block.m_Members[0].get()), 0);
    EXPECT_EQ(block.GetBoolBit(block.m_Members[1].get()), 0);
    EXPECT_EQ(block.GetBoolBit(block.m_Members[2].get()), 2);
}

TEST_F(TypeStructTest, InitText)
{
    EXPECT_EQ(m_Struct.GetInitText(), "()");
    Add(m_Struct, "Level", &m_Int)->m_InitValue = std::make_unique<CInitValue>(std::int64_t{5});
    EXPECT_EQ(m_Struct.GetInitText(), "(Level:=5)");
    Add(m_Struct, "full", &m_Bool)->m_InitValue = std::make_unique<CInitValue>(false);
    EXPECT_EQ(m_Struct.GetInitText(), "(Level:=5,full:=0)");
    Add(m_Struct, "rest", &m_Int);
    EXPECT_EQ(m_Struct.GetInitText(), "(Level:=5,full:=0,rest:=NULL)");
}

TEST_F(TypeStructTest, Clone)
{
    Add(m_Struct, "a", &m_Bool)->m_InitValue = std::make_unique<CInitValue>(true);
    Add(m_Struct, "b", &m_Bool);
    m_Struct.m_InitValue = std::make_unique<CInitValue>(std::int64_t{3});
    m_Struct.m_SizeBits = 16;
    m_Struct.m_Align = 2;
    m_Struct.m_Allowed = false;
    m_Struct.m_IsElementary = false;
    const std::unique_ptr<CTypeStruct> pClone = m_Struct.Clone();
    m_Struct.m_Members[0]->m_InitValue.reset();
    EXPECT_EQ(pClone->m_Name, "tank");
    EXPECT_EQ(pClone->m_SizeBits, 16);
    EXPECT_EQ(pClone->m_Align, 2);
    EXPECT_FALSE(pClone->m_Allowed);
    EXPECT_FALSE(pClone->m_IsElementary);
    EXPECT_TRUE(pClone->IsNotAlias());
    EXPECT_EQ(pClone->GetBaseType(), pClone.get());
    ASSERT_TRUE(pClone->m_InitValue);
    EXPECT_EQ(pClone->m_InitValue->GetInt64(), 3);
    ASSERT_EQ(pClone->m_Members.size(), 2u);
    EXPECT_EQ(pClone->GetInitText(), "(a:=1,b:=NULL)");
    EXPECT_EQ(pClone->FindMember("B"), pClone->m_Members[1].get());
    EXPECT_EQ(pClone->GetBoolBit(pClone->m_Members[1].get()), 1);
    EXPECT_TRUE(pClone->IsStruct());
    EXPECT_FALSE(pClone->IsStructFB());
}

TEST_F(TypeStructTest, CloneOfAFunctionBlockIsOne)
{
    CTypeStructFB block("Timer");
    block.AddMember(std::make_unique<CMemberFB>("a", &m_Bool));
    static_cast<CMemberFB&>(*block.m_Members[0]).m_IsOutput = true;
    const std::unique_ptr<CTypeStruct> pClone = block.Clone();
    ASSERT_TRUE(pClone->IsStructFB());
    EXPECT_TRUE(pClone->AsStructFB()->GetMember(0)->m_IsOutput);
    EXPECT_EQ(pClone->AsStructFB()->m_FunctionBlock, block.m_FunctionBlock);
}
