#include "model/Variable.h"

#include "model/TypeArray.h"

#include <gtest/gtest.h>

#include <memory>
#include <utility>

namespace
{

std::unique_ptr<CArrayOfArrayIndex> MakeIndex(std::int32_t low, std::int32_t high)
{
    std::unique_ptr<CArrayIndex> pLevel = std::make_unique<CArrayIndex>();
    pLevel->m_Dimensions.push_back(CIndex(low, high));
    std::unique_ptr<CArrayOfArrayIndex> pIndex = std::make_unique<CArrayOfArrayIndex>();
    pIndex->Add(std::move(pLevel));
    return pIndex;
}

}   // namespace

TEST(VariableTest, NewVariableIsNotPlaced)
{
    const CVariable variable;
    EXPECT_EQ(variable.m_Size, -1);
    EXPECT_EQ(variable.m_Offset, -1);
    EXPECT_EQ(variable.m_BitOffset, -1);
    EXPECT_TRUE(variable.m_IsLocal);
    EXPECT_FALSE(variable.m_IsConstant || variable.m_IsRetain || variable.m_IsUsed);
    EXPECT_FALSE(variable.IsParameter());
    EXPECT_FALSE(variable.IsHeldByPointer());
    EXPECT_FALSE(variable.IsArray());
    EXPECT_EQ(variable.GetIndex(), nullptr);
    EXPECT_TRUE(variable.m_DirectAddress.empty());
    EXPECT_FALSE(variable.m_InitValue);
    EXPECT_EQ(variable.m_Type, nullptr);
}

TEST(VariableTest, ParameterKinds)
{
    CVariable input;
    input.m_IsInput = true;
    EXPECT_TRUE(input.IsParameter());
    EXPECT_FALSE(input.IsHeldByPointer());
    CVariable output;
    output.m_IsOutput = true;
    EXPECT_TRUE(output.IsParameter());
    EXPECT_TRUE(output.IsHeldByPointer());
    CVariable inOut;
    inOut.m_IsInOut = true;
    EXPECT_TRUE(inOut.IsParameter());
    EXPECT_TRUE(inOut.IsHeldByPointer());
}

TEST(VariableTest, InitTextOfValueThenOfType)
{
    CVariable variable;
    EXPECT_EQ(variable.GetInitText(), "NULL");
    CType type("INT");
    variable.m_Type = &type;
    EXPECT_EQ(variable.GetInitText(), "NULL");
    type.m_InitValue = std::make_unique<CInitValue>(std::int64_t{0});
    EXPECT_EQ(variable.GetInitText(), "0");
    variable.m_InitValue = std::make_unique<CInitValue>(std::int64_t{7});
    EXPECT_EQ(variable.GetInitText(), "7");
}

TEST(VariableTest, CloneCopiesAllFields)
{
    CType type("INT");
    CVariable variable;
    variable.m_Size = 2;
    variable.m_DirectAddress = "MD4";
    variable.m_InitValue = std::make_unique<CInitValue>(std::int64_t{7});
    variable.m_Type = &type;
    variable.m_Offset = 4;
    variable.m_BitOffset = 3;
    variable.m_Name = "Count";
    variable.m_IsConstant = true;
    variable.m_IsRetain = true;
    variable.m_IsLocal = false;
    variable.m_IsOutput = true;
    variable.m_IsInput = true;
    variable.m_IsInOut = true;
    variable.m_IsUsed = true;
    const std::unique_ptr<CVariable> pClone = variable.Clone();
    EXPECT_EQ(pClone->m_Size, 2);
    EXPECT_EQ(pClone->m_DirectAddress, "MD4");
    ASSERT_TRUE(pClone->m_InitValue);
    EXPECT_NE(pClone->m_InitValue, variable.m_InitValue);
    EXPECT_EQ(pClone->m_InitValue->GetInt64(), 7);
    EXPECT_EQ(pClone->m_Type, &type);
    EXPECT_EQ(pClone->m_Offset, 4);
    EXPECT_EQ(pClone->m_BitOffset, 3);
    EXPECT_EQ(pClone->m_Name, "Count");
    EXPECT_TRUE(pClone->m_IsConstant);
    EXPECT_TRUE(pClone->m_IsRetain);
    EXPECT_FALSE(pClone->m_IsLocal);
    EXPECT_TRUE(pClone->m_IsOutput);
    EXPECT_TRUE(pClone->m_IsInput);
    EXPECT_TRUE(pClone->m_IsInOut);
    EXPECT_TRUE(pClone->m_IsUsed);
    EXPECT_FALSE(pClone->IsArray());
}

TEST(VariableArrayTest, CloneOwnsItsIndex)
{
    CVariableArray variable;
    variable.m_Name = "row";
    variable.m_Index = MakeIndex(0, 4);
    const std::unique_ptr<CVariable> pClone = variable.Clone();
    ASSERT_TRUE(pClone->IsArray());
    ASSERT_NE(pClone->GetIndex(), nullptr);
    EXPECT_NE(pClone->GetIndex(), variable.GetIndex());
    variable.m_Index->GetFirst()->m_Dimensions[0].Set(0, 9);
    EXPECT_EQ(pClone->GetIndex()->GetElementCount(), 5);
    EXPECT_EQ(pClone->m_Name, "row");
}

TEST(VariableArrayTest, CloneWithoutAnIndex)
{
    const CVariableArray variable;
    const std::unique_ptr<CVariable> pClone = variable.Clone();
    EXPECT_TRUE(pClone->IsArray());
    EXPECT_EQ(pClone->GetIndex(), nullptr);
}

TEST(VariableArrayTest, InitTextHoldsTheElementCount)
{
    CType element("INT");
    element.m_InitValue = std::make_unique<CInitValue>(std::int64_t{0});
    CTypeArray array("INT[]", &element);
    CVariableArray variable;
    variable.m_Type = &array;
    variable.m_Index = MakeIndex(1, 5);
    EXPECT_EQ(variable.GetInitText(), "[(5)0]");
    CTypeArray outer("INT[][]", &array);
    variable.m_Type = &outer;
    EXPECT_EQ(variable.GetInitText(), "[(5)[(5)0]]");
}

// A variable of an array type that is no array variable knows no count.
TEST(VariableTest, InitTextWithoutAnIndex)
{
    CType element("INT");
    CTypeArray array("INT[]", &element);
    CVariable variable;
    variable.m_Type = &array;
    EXPECT_EQ(variable.GetInitText(), "[(${element})NULL]");
}
