#include "TargetFixture.h"

#include "frontend/Node.h"


class LayoutTest : public TargetFixture
{
protected:
    void SetUp() override
    {
        TargetFixture::SetUp();
        LoadByteAligned();
    }

    void SetAlign(std::string_view name, std::int32_t align) { Type(name)->m_Align = align; }

    static std::vector<std::int32_t> GetOffsets(const CTypeStruct* pStruct)
    {
        std::vector<std::int32_t> offsets;
        for (const auto& pMember : pStruct->m_Members) offsets.push_back(pMember->m_Offset);
        return offsets;
    }

    std::int32_t MeasureArray(CType* pElement, std::initializer_list<Bounds> dimensions)
    {
        const auto pIndex = MakeIndex({dimensions});
        return m_Memory.ComputeLayout(MakeArrayType(pElement), pIndex.get(), 0);
    }

    CNode* MakePath(int kind, CVariable* pVariable, CType* pType, std::initializer_list<std::string_view> steps)
    {
        CNode* pPath = MakePathNode(kind, "");
        pPath->pVariable = pVariable;
        pPath->pType = pType;
        if (kind == IDENTIFIER) return pPath;
        pPath->AddChild(MakePathNode(IDENTIFIER, ""));
        for (const std::string_view step : steps)
            pPath->AddChild(step == "[]" ? MakePathNode(EXP_LIST, "") : MakePathNode(NEW_ID, step));
        return pPath;
    }

    CNode* MakePathNode(int kind, std::string_view name)
    {
        CNode* pNode = m_Nodes.MakeNode(kind, SourceLocation{});
        pNode->pName = &m_Names.Intern(name);
        return pNode;
    }

    using Offsets = std::vector<std::int32_t>;
    CNamePool m_Names;
    CNodeArena m_Nodes;
};

TEST_F(LayoutTest, StructureOfTwoBoolsHasOneByte)
{
    CTypeStruct* pStruct = MakeStruct({Type("BOOL"), Type("BOOL")});
    EXPECT_EQ(1, m_Memory.ComputeLayout(pStruct, nullptr, 0));
    EXPECT_EQ(8, pStruct->m_SizeBits);
    EXPECT_EQ((Offsets{0, 0}), GetOffsets(pStruct));
}

TEST_F(LayoutTest, DintBehindThreeBoolsGoesToItsAlignment)
{
    SetAlign("DINT", 4);
    CTypeStruct* pStruct = MakeStruct({Type("BOOL"), Type("BOOL"), Type("BOOL"), Type("DINT")});
    EXPECT_EQ(8, m_Memory.ComputeLayout(pStruct, nullptr, 0));
    EXPECT_EQ((Offsets{0, 0, 0, 4}), GetOffsets(pStruct));
    EXPECT_EQ(4, pStruct->m_Align);
}

TEST_F(LayoutTest, EighthBoolStaysInTheByteThatItFills)
{
    CType* pBool = Type("BOOL");
    CTypeStruct* pStruct = MakeStruct({pBool, pBool, pBool, pBool, pBool, pBool, pBool, pBool, pBool});
    EXPECT_EQ(2, m_Memory.ComputeLayout(pStruct, nullptr, 0));
    EXPECT_EQ((Offsets{0, 0, 0, 0, 0, 0, 0, 0, 1}), GetOffsets(pStruct));
}

TEST_F(LayoutTest, OtherMembersEndARunOfBools)
{
    CTypeStruct* pStruct = MakeStruct({Type("BOOL"), Type("INT"), Type("BOOL"), Type("BOOL")});
    EXPECT_EQ(4, m_Memory.ComputeLayout(pStruct, nullptr, 0));
    EXPECT_EQ((Offsets{0, 1, 3, 3}), GetOffsets(pStruct));
}

TEST_F(LayoutTest, CommonAlignmentIsTheLeastCommonMultipleAndTheEndIsNotPadded)
{
    SetAlign("INT", 6);
    SetAlign("WORD", 4);
    CTypeStruct* pStruct = MakeStruct({Type("INT"), Type("WORD")});
    EXPECT_EQ(6, m_Memory.ComputeLayout(pStruct, nullptr, 0));
    EXPECT_EQ((Offsets{0, 4}), GetOffsets(pStruct));
    EXPECT_EQ(12, pStruct->m_Align);
    Declare(Type("BYTE"));
    CVariable* pVariable = Declare(pStruct);
    CVariable* pNext = Declare(Type("BYTE"));
    m_Memory.AllocatePouVariables();
    EXPECT_EQ(12, pVariable->m_Offset);
    EXPECT_EQ(18, pNext->m_Offset);
}

TEST_F(LayoutTest, EmptyStructure)
{
    CTypeStruct* pStruct = MakeStruct({});
    EXPECT_EQ(0, m_Memory.ComputeLayout(pStruct, nullptr, 0));
    EXPECT_EQ(1, pStruct->m_Align);
}

// An in-out member counts with the four bytes of a pointer; its place goes by the pointer's alignment of 2.
TEST_F(LayoutTest, InOutMembersOfAFunctionBlockArePointers)
{
    SetAlign("UDINT", 2);
    CTypeStruct* pInner = MakeStruct({Type("BYTE"), Type("BYTE")});
    CTypeStructFB block("fb");
    for (const bool isInOut : {true, false, true}) {
        auto pMember = std::make_unique<CMemberFB>("m" + std::to_string(block.m_Members.size()),
                                                   isInOut ? static_cast<CType*>(pInner) : Type("BOOL"));
        pMember->m_IsInOut = isInOut;
        pMember->m_IsInput = !isInOut;
        block.AddMember(std::move(pMember));
    }
    EXPECT_EQ(10, m_Memory.ComputeLayout(&block, nullptr, 0));
    EXPECT_EQ((Offsets{0, 4, 6}), GetOffsets(&block));
    EXPECT_EQ(4, block.m_Align);
    EXPECT_EQ((Offsets{0, 1}), GetOffsets(pInner));   // reached through the pointer
}

TEST_F(LayoutTest, AliasesAreLaidOutAsTheirBase)
{
    CTypeStruct* pStruct = MakeStruct({Type("BYTE"), Type("INT")});
    CType alias("alias", pStruct);
    CTypeStruct* pOuter = MakeStruct({Type("BYTE"), &alias, Type("BYTE")});
    EXPECT_EQ(5, m_Memory.ComputeLayout(pOuter, nullptr, 0));
    EXPECT_EQ((Offsets{0, 1, 4}), GetOffsets(pOuter));
}

TEST_F(LayoutTest, BoolArraysArePackedInUnitsOfTheAlignment)
{
    EXPECT_EQ(2, MeasureArray(Type("BOOL"), {{0, 15}}));
    EXPECT_EQ(1, MeasureArray(Type("BOOL"), {{0, 7}}));
    EXPECT_EQ(2, MeasureArray(Type("BOOL"), {{0, 8}}));
    SetAlign("BOOL", 4);
    EXPECT_EQ(5, MeasureArray(Type("BOOL"), {{0, 15}}));
    EXPECT_EQ(9, MeasureArray(Type("BOOL"), {{0, 16}}));
    EXPECT_EQ(1, MeasureArray(Type("BOOL"), {{0, 0}}));
}

TEST_F(LayoutTest, LastElementOfAnArrayIsNotPadded)
{
    SetAlign("INT", 4);
    EXPECT_EQ(10, MeasureArray(Type("INT"), {{1, 3}}));
    EXPECT_EQ(22, MeasureArray(Type("INT"), {{0, 1}, {5, 7}}));
}

TEST_F(LayoutTest, ArrayWithoutIndexCountsAsElevenElements)
{
    CTypeArray* pArray = MakeArrayType(Type("INT"));
    EXPECT_EQ(22, m_Memory.ComputeLayout(pArray, nullptr, 0));
    EXPECT_EQ(2, pArray->m_Stride);
    EXPECT_EQ(-1, pArray->m_SizeBits);
}

TEST_F(LayoutTest, VariableOfArrayTypeWithoutIndexHasOneElement)
{
    CVariable* pVariable = Declare(MakeArrayType(Type("INT")));
    m_Memory.AllocatePouVariables();
    EXPECT_EQ(2, pVariable->m_Size);
    EXPECT_EQ(2, m_Memory.ComputeVariableLayout(pVariable));
}

TEST_F(LayoutTest, ArrayOfStructures)
{
    SetAlign("DINT", 4);
    CTypeStruct* pStruct = MakeStruct({Type("DINT"), Type("BYTE")});
    CTypeArray* pArray = MakeArrayType(pStruct);
    const auto pIndex = MakeIndex({{{0, 2}}});
    EXPECT_EQ(21, m_Memory.ComputeLayout(pArray, pIndex.get(), 0));   // at 0, 8 and 16, five bytes each
    EXPECT_EQ(8, pArray->m_Stride);
    EXPECT_EQ(4, pArray->m_Align);
    EXPECT_EQ(40, pStruct->m_SizeBits);
}

// Inner array: 2 bytes at 0, 4 and 8, so 10 bytes; the next one begins at 12.
TEST_F(LayoutTest, ArrayOfArrays)
{
    SetAlign("INT", 4);
    CTypeArray* pInner = MakeArrayType(Type("INT"));
    CTypeArray* pOuter = MakeArrayType(pInner);
    const auto pIndex = MakeIndex({{{0, 1}}, {{0, 2}}});
    EXPECT_EQ(22, m_Memory.ComputeLayout(pOuter, pIndex.get(), 0));
    EXPECT_EQ(10, m_Memory.ComputeLayout(pInner, pIndex.get(), 1));
    EXPECT_EQ(4, pInner->m_Stride);
    EXPECT_EQ(-1, pOuter->m_Stride);
    EXPECT_EQ(4, pOuter->m_Align);
    EXPECT_EQ(4, pOuter->GetInnermostStride());
}

TEST_F(LayoutTest, ArrayMembersHaveTheirOwnBounds)
{
    CTypeStruct* pStruct = MakeStruct({MakeArrayType(Type("INT")), Type("BYTE")});
    pStruct->m_Members[0]->m_Index = MakeIndex({{{1, 5}}});
    EXPECT_EQ(11, m_Memory.ComputeLayout(pStruct, nullptr, 0));
    EXPECT_EQ((Offsets{0, 10}), GetOffsets(pStruct));
}

TEST_F(LayoutTest, ArrayClosesAnOpenByte)
{
    Declare(Type("BOOL"));
    CVariable* pArray = DeclareArray(Type("BOOL"), {{0, 3}});
    CVariable* pNext = Declare(Type("BOOL"));
    m_Memory.AllocatePouVariables();
    EXPECT_EQ(1, pArray->m_Offset);
    EXPECT_EQ(1, pArray->m_Size);
    EXPECT_EQ(2, pNext->m_Offset);
    EXPECT_EQ(0, pNext->m_BitOffset);
}

TEST_F(LayoutTest, StructuresNestWithoutDepthLimit)
{
    constexpr int depth = 100000;
    CTypeStruct* pOuter = MakeStruct({Type("BYTE")});
    for (int i = 1; i < depth; ++i) pOuter = MakeStruct({Type("BYTE"), pOuter});
    EXPECT_EQ(depth, m_Memory.ComputeLayout(pOuter, nullptr, 0));
    EXPECT_EQ((Offsets{0, 1}), GetOffsets(pOuter));
}

TEST_F(LayoutTest, ArraysOfArraysCostNoMorePerLevel)
{
    CType* pType = Type("INT");
    for (int i = 0; i < 1000; ++i) pType = MakeArrayType(pType);
    const CArrayOfArrayIndex noLevels;
    EXPECT_EQ(2, m_Memory.ComputeLayout(pType, &noLevels, 0));
}

TEST_F(LayoutTest, StructureLargerThanItsSizeFieldOverflowsTheArea)
{
    m_Memory.m_GlobalSize = std::numeric_limits<std::int32_t>::max() - 1;
    CTypeStruct* pStruct = MakeStruct({MakeArrayType(Type("DINT"))});
    pStruct->m_Members[0]->m_Index = MakeIndex({{{0, 100000000}}});
    m_Memory.ComputeLayout(pStruct, nullptr, 0);
    EXPECT_EQ(0, pStruct->m_SizeBits % 8);
    DeclareGlobal(pStruct);
    m_Memory.AllocatePouVariables();
    EXPECT_EQ(1, m_Errors.GetErrorCount());
}

TEST_F(LayoutTest, VariableSizesAndAlignments)
{
    SetAlign("DINT", 4);
    EXPECT_EQ(1, m_Memory.GetVariableSize(Declare(Type("BOOL"))));
    EXPECT_EQ(4, m_Memory.GetVariableSize(Declare(Type("DINT"))));
    EXPECT_EQ(4, m_Memory.GetVariableAlign(Declare(Type("DINT"))));
    CVariable* pStruct = Declare(MakeStruct({Type("BYTE"), Type("DINT")}));
    EXPECT_EQ(4, m_Memory.GetVariableAlign(pStruct));
    EXPECT_EQ(8, m_Memory.GetVariableSize(pStruct));
    CVariable* pArray = DeclareArray(Type("DINT"), {{0, 2}});
    EXPECT_EQ(4, m_Memory.GetVariableAlign(pArray));
    EXPECT_EQ(12, m_Memory.GetVariableSize(pArray));
}

TEST_F(LayoutTest, UnknownTypesHaveASizeWithoutHarm)
{
    CVariable* pError = Declare(m_Types.m_ErrorType);
    CVariable* pTime = Declare(Type("TIME"));
    CVariable* pNone = Declare(nullptr);
    CVariable* pNext = Declare(Type("BOOL"));
    m_Memory.AllocatePouVariables();
    EXPECT_EQ(0, pError->m_Offset);
    EXPECT_EQ(1, pTime->m_Offset);
    EXPECT_EQ(2, pNone->m_Offset);
    EXPECT_EQ(3, pNext->m_Offset);
    EXPECT_EQ(1, m_Memory.GetVariableAlign(pNone));
}

TEST_F(LayoutTest, AccessSizeGoesByTheLevelThatThePathHasReached)
{
    CTypeArray* pInner = MakeArrayType(Type("INT"));
    auto pNew = std::make_unique<CVariableArray>();
    pNew->m_Index = MakeIndex({{{0, 1}}, {{0, 2}}});
    CVariable* pVariable = Enter(std::move(pNew), MakeArrayType(pInner), true);
    EXPECT_EQ(12, m_Memory.ComputeAccessSize(MakePath(IDENTIFIER, pVariable, pVariable->m_Type, {})));
    EXPECT_EQ(6, m_Memory.ComputeAccessSize(MakePath(ARRAY_ELEMENT, pVariable, pInner, {"[]"})));
    EXPECT_EQ(2, m_Memory.ComputeAccessSize(MakePath(ARRAY_ELEMENT, pVariable, Type("INT"), {"[]", "[]"})));
}

TEST_F(LayoutTest, AccessSizeOfAMemberGoesByTheMembersBounds)
{
    CTypeArray* pField = MakeArrayType(Type("INT"));
    CTypeStruct* pStruct = MakeStruct({Type("BYTE"), pField});
    pStruct->m_Members[1]->m_Index = MakeIndex({{{0, 4}}});
    CVariable* pVariable = DeclareArray(pStruct, {{0, 9}});
    EXPECT_EQ(10, m_Memory.ComputeAccessSize(MakePath(ARRAY_ELEMENT, pVariable, pField, {"[]", "m1"})));
    EXPECT_EQ(11, m_Memory.ComputeAccessSize(MakePath(ARRAY_ELEMENT, pVariable, pStruct, {"[]"})));
    EXPECT_EQ(2, m_Memory.ComputeAccessSize(MakePath(ARRAY_ELEMENT, pVariable, Type("INT"), {"[]", "m1", "[]"})));
}
