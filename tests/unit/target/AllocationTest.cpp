#include "TargetFixture.h"

#include "model/InitValue.h"

// Byte-aligned target if a test says nothing else: offsets are then sums of the sizes in front.
class AllocationTest : public TargetFixture
{
protected:
    void SetUp() override
    {
        TargetFixture::SetUp();
        LoadByteAligned();
    }

    std::vector<CVariable*> DeclareMany(std::size_t count, CType* pType, bool isLocal = true)
    {
        std::vector<CVariable*> variables;
        for (std::size_t i = 0; i < count; ++i) variables.push_back(Declare(pType, isLocal));
        return variables;
    }

    static void ExpectPlace(const CVariable* pVariable, std::int32_t offset, std::int32_t size, std::int32_t bit)
    {
        EXPECT_EQ(offset, pVariable->m_Offset);
        EXPECT_EQ(size, pVariable->m_Size);
        EXPECT_EQ(bit, pVariable->m_BitOffset);
    }
};

TEST_F(AllocationTest, NineBoolsTakeTwoBytes)
{
    const std::vector<CVariable*> bools = DeclareMany(9, Type("BOOL"));
    CVariable* pNext = Declare(Type("BYTE"));
    m_Memory.AllocatePouVariables();
    for (std::int32_t i = 0; i < 8; ++i) ExpectPlace(bools[static_cast<std::size_t>(i)], 0, 0, i);
    ExpectPlace(bools[8], 1, 0, 0);
    EXPECT_EQ(2, pNext->m_Offset);
}

TEST_F(AllocationTest, EightBoolsCloseTheirByte)
{
    DeclareMany(8, Type("BOOL"));
    CVariable* pNext = Declare(Type("BYTE"));
    m_Memory.AllocatePouVariables();
    ExpectPlace(pNext, 1, 1, 0);
}

TEST_F(AllocationTest, NineBoolsTakeNineBytesInTheCompatibleLayout)
{
    m_Memory.m_CompatibleLayout = true;
    const std::vector<CVariable*> bools = DeclareMany(9, Type("BOOL"));
    CVariable* pNext = Declare(Type("BYTE"));
    m_Memory.AllocatePouVariables();
    for (std::int32_t i = 0; i < 9; ++i) ExpectPlace(bools[static_cast<std::size_t>(i)], i, 1, 0);
    EXPECT_EQ(9, pNext->m_Offset);
}

// The second DINT carries the bit cursor that it found, and leaves none.
TEST_F(AllocationTest, BoolBetweenTwoDints)
{
    CVariable* pFirst = Declare(Type("DINT"));
    CVariable* pBool = Declare(Type("BOOL"));
    CVariable* pSecond = Declare(Type("DINT"));
    CVariable* pLast = Declare(Type("BOOL"));
    m_Memory.AllocatePouVariables();
    ExpectPlace(pFirst, 0, 4, 0);
    ExpectPlace(pBool, 4, 0, 0);
    ExpectPlace(pSecond, 5, 4, 1);
    ExpectPlace(pLast, 9, 0, 0);
}

TEST_F(AllocationTest, ConstantHasAPlaceOnlyWithoutSubstitution)
{
    CVariable* pConstant = Declare(Type("INT"));
    pConstant->m_IsConstant = true;
    m_Memory.AllocatePouVariables();
    ExpectPlace(pConstant, -1, -1, -1);
    m_Substitution = false;
    m_Memory.AllocatePouVariables();
    ExpectPlace(pConstant, 0, 2, 0);
}

TEST_F(AllocationTest, ConstantAggregatesHaveAPlace)
{
    CVariable* pArray = DeclareArray(Type("INT"), {{1, 3}});
    pArray->m_IsConstant = true;
    CVariable* pStruct = Declare(MakeStruct({Type("DINT"), Type("BYTE")}));
    pStruct->m_IsConstant = true;
    m_Memory.AllocatePouVariables();
    ExpectPlace(pArray, 0, 6, -1);
    ExpectPlace(pStruct, 6, 5, -1);
}

TEST_F(AllocationTest, LocatedVariablesArePassedOver)
{
    CVariable* pLocated = Declare(Type("DINT"));
    pLocated->m_DirectAddress = "MD0";
    CVariable* pNext = Declare(Type("BYTE"));
    m_Memory.AllocatePouVariables();
    ExpectPlace(pLocated, -1, -1, -1);
    EXPECT_EQ(0, pNext->m_Offset);
}

TEST_F(AllocationTest, StringTakesItsDeclaredLengthTimesTheAlignment)
{
    Type("STRING")->m_Align = 2;
    Declare(Type("BYTE"));
    CVariable* pString = Declare(Type("STRING"));
    pString->m_InitValue = std::make_unique<CInitString>(10, "abc");
    CVariable* pNext = Declare(Type("BYTE"));
    m_Memory.AllocatePouVariables();
    ExpectPlace(pString, 2, 20, -1);
    EXPECT_EQ(22, pNext->m_Offset);
}

TEST_F(AllocationTest, AggregateParameters)
{
    CVariable* pInput = DeclareArray(Type("INT"), {{0, 4}});
    pInput->m_IsInput = true;
    CVariable* pInOut = DeclareArray(Type("INT"), {{0, 4}});
    pInOut->m_IsInOut = true;
    CVariable* pOutput = Declare(MakeStruct({Type("DINT"), Type("DINT")}));
    pOutput->m_IsOutput = true;
    m_Memory.AllocatePouVariables();
    ExpectPlace(pInput, 0, 10, -1);      // by value
    ExpectPlace(pInOut, 10, 4, -1);      // its address
    ExpectPlace(pOutput, 14, 4, -1);
    EXPECT_EQ(2, pInOut->m_Type->AsArray()->m_Stride);   // laid out all the same: the body reaches into it
    EXPECT_EQ(4, pOutput->m_Type->AsStruct()->m_Members[1]->m_Offset);
}

TEST_F(AllocationTest, AggregateInputIsAPointerInTheCompatibleLayout)
{
    m_Memory.m_CompatibleLayout = true;
    CVariable* pInput = DeclareArray(Type("INT"), {{0, 4}});
    pInput->m_IsInput = true;
    CVariable* pPlain = DeclareArray(Type("INT"), {{0, 4}});
    m_Memory.AllocatePouVariables();
    ExpectPlace(pInput, 0, 4, -1);
    ExpectPlace(pPlain, 4, 10, -1);
}

TEST_F(AllocationTest, BoolInputDoesNotCloseAnOpenByte)
{
    Declare(Type("BOOL"));
    CVariable* pInput = Declare(Type("BOOL"));
    pInput->m_IsInput = true;
    CVariable* pNext = Declare(Type("BOOL"));
    m_Memory.AllocatePouVariables();
    ExpectPlace(pInput, 0, 1, 1);
    ExpectPlace(pNext, 1, 0, 0);
}

TEST_F(AllocationTest, WholeByteInputClosesAnOpenByte)
{
    Declare(Type("BOOL"));
    CVariable* pInput = Declare(Type("DINT"));
    pInput->m_IsInput = true;
    m_Memory.AllocatePouVariables();
    ExpectPlace(pInput, 1, 4, 1);
}

TEST_F(AllocationTest, PointerParameterClosesAnOpenByte)
{
    Declare(Type("BOOL"));
    CVariable* pInOut = Declare(Type("BOOL"));
    pInOut->m_IsInOut = true;
    m_Memory.AllocatePouVariables();
    ExpectPlace(pInOut, 1, 4, 1);
}

TEST_F(AllocationTest, RetainLocalsComeBeforeRetainGlobals)
{
    CVariable* pGlobal = DeclareGlobal(Type("INT"));
    pGlobal->m_IsRetain = true;
    CVariable* pLocal = Declare(Type("DINT"));
    pLocal->m_IsRetain = true;
    CVariable* pPlain = Declare(Type("BYTE"));
    m_Memory.AllocatePouVariables();
    EXPECT_EQ(0, pLocal->m_Offset);
    EXPECT_EQ(4, pGlobal->m_Offset);
    EXPECT_EQ(0, pPlain->m_Offset);
    EXPECT_EQ(6, m_Memory.m_RetainBytes);
    EXPECT_EQ(0, m_Memory.m_GlobalBytes);
}

TEST_F(AllocationTest, BitCursorsLiveOnBetweenPous)
{
    DeclareGlobal(Type("BOOL"));
    DeclareGlobal(Type("BOOL"))->m_IsRetain = true;
    m_Memory.AllocatePouVariables();
    m_Memory.ClearLocalVariables();
    CVariable* pGlobal = DeclareGlobal(Type("BOOL"));
    CVariable* pRetain = DeclareGlobal(Type("BOOL"));
    pRetain->m_IsRetain = true;
    m_Memory.AllocatePouVariables();
    ExpectPlace(pGlobal, 0, 0, 1);
    ExpectPlace(pRetain, 0, 0, 1);
    EXPECT_EQ(0, m_Memory.m_GlobalBytes);
    EXPECT_EQ(2, m_Memory.m_GlobalBits);
}

TEST_F(AllocationTest, LocalsOfEachPouBeginAtZero)
{
    Declare(Type("DINT"));
    m_Memory.AllocatePouVariables();
    m_Memory.ClearLocalVariables();
    CVariable* pNext = Declare(Type("DINT"));
    m_Memory.AllocatePouVariables();
    EXPECT_EQ(0, pNext->m_Offset);
}

// Shows that the list is not walked again from its start: an old variable that is made to look new stays.
TEST_F(AllocationTest, PlacedGlobalsAreNotLookedAtAgain)
{
    CVariable* pGlobal = DeclareGlobal(Type("INT"));
    CVariable* pRetain = DeclareGlobal(Type("INT"));
    pRetain->m_IsRetain = true;
    m_Memory.AllocatePouVariables();
    pGlobal->m_Size = -1;
    pRetain->m_Size = -1;
    m_Memory.AllocatePouVariables();
    EXPECT_EQ(-1, pGlobal->m_Size);
    EXPECT_EQ(-1, pRetain->m_Size);
    EXPECT_EQ(2, m_Memory.m_GlobalBytes);
}

TEST_F(AllocationTest, OverflowIsReportedAtEveryPouWithAGrowingExcess)
{
    m_Memory.m_GlobalSize = 3;
    DeclareGlobal(Type("DINT"));
    m_Memory.AllocatePouVariables();
    ASSERT_EQ(1, m_Errors.GetErrorCount());
    EXPECT_NE(std::string::npos, LastError().find("global ")) << LastError();
    EXPECT_NE(std::string::npos, LastError().find(",1 bytes")) << LastError();
    m_Memory.AllocatePouVariables();
    ASSERT_EQ(2, m_Errors.GetErrorCount());
    EXPECT_NE(std::string::npos, LastError().find(",1 bytes")) << LastError();
    DeclareGlobal(Type("INT"));
    m_Memory.AllocatePouVariables();
    ASSERT_EQ(3, m_Errors.GetErrorCount());
    EXPECT_NE(std::string::npos, LastError().find(",3 bytes")) << LastError();
}

TEST_F(AllocationTest, OpenByteCountsForTheOverflow)
{
    m_Memory.m_RetainSize = 4;
    DeclareGlobal(Type("DINT"))->m_IsRetain = true;
    m_Memory.AllocatePouVariables();
    EXPECT_EQ(0, m_Errors.GetErrorCount());
    DeclareGlobal(Type("BOOL"))->m_IsRetain = true;
    m_Memory.AllocatePouVariables();
    ASSERT_EQ(1, m_Errors.GetErrorCount());
    EXPECT_NE(std::string::npos, LastError().find("retain ")) << LastError();
    EXPECT_NE(std::string::npos, LastError().find(",1 bytes")) << LastError();
}

TEST_F(AllocationTest, LocalsHaveNoLimitHere)
{
    DeclareArray(Type("DINT"), {{0, 100000}});
    m_Memory.AllocatePouVariables();
    EXPECT_EQ(0, m_Errors.GetErrorCount());
}

TEST_F(AllocationTest, PackingMovesTheBoolsBehindAllElse)
{
    m_Memory.m_OptimiseMemory = true;
    std::vector<CVariable*> bools = DeclareMany(1, Type("BOOL"));
    CVariable* pDint = Declare(Type("DINT"));
    for (CVariable* pBool : DeclareMany(8, Type("BOOL"))) bools.push_back(pBool);
    CVariable* pByte = Declare(Type("BYTE"));
    m_Memory.AllocatePouVariables();
    ExpectPlace(pDint, 0, 4, 0);
    ExpectPlace(pByte, 4, 1, 0);
    for (std::int32_t i = 0; i < 8; ++i) ExpectPlace(bools[static_cast<std::size_t>(i)], 5, 1, i);
    ExpectPlace(bools[8], 6, 1, 0);
}

TEST_F(AllocationTest, PackedUnitsHaveTheAlignmentOfBool)
{
    m_Memory.m_OptimiseMemory = true;
    Type("BOOL")->m_Align = 4;
    Declare(Type("BYTE"));
    const std::vector<CVariable*> bools = DeclareMany(9, Type("BOOL"));
    m_Memory.AllocatePouVariables();
    ExpectPlace(bools[0], 4, 1, 0);
    ExpectPlace(bools[7], 4, 1, 7);
    ExpectPlace(bools[8], 8, 1, 0);
}

TEST_F(AllocationTest, BoolParametersAreNotPacked)
{
    m_Memory.m_OptimiseMemory = true;
    Declare(Type("BOOL"));
    CVariable* pInput = Declare(Type("BOOL"));
    pInput->m_IsInput = true;
    m_Memory.AllocatePouVariables();
    ExpectPlace(pInput, 0, 1, 0);
}

TEST_F(AllocationTest, CompatibleLayoutBeatsPacking)
{
    m_Memory.m_OptimiseMemory = true;
    m_Memory.m_CompatibleLayout = true;
    CVariable* pBool = Declare(Type("BOOL"));
    CVariable* pDint = Declare(Type("DINT"));
    m_Memory.AllocatePouVariables();
    ExpectPlace(pBool, 0, 1, 0);
    ExpectPlace(pDint, 1, 4, 0);
}

// A DINT without alignment moves the cursor by its size again when the list is closed: 4 / 1 gives 4 - 1 + 1.
TEST_F(AllocationTest, RetainGlobalGoesToTheGlobalAreaWhenPacking)
{
    m_Memory.m_OptimiseMemory = true;
    CVariable* pRetain = DeclareGlobal(Type("DINT"));
    pRetain->m_IsRetain = true;
    m_Memory.AllocatePouVariables();
    ExpectPlace(pRetain, 0, 4, 0);
    EXPECT_EQ(0, m_Memory.m_RetainBytes);
    EXPECT_EQ(8, m_Memory.m_GlobalBytes);
}

TEST_F(AllocationTest, ClosingMoveIsMadeAtEveryCall)
{
    m_Memory.m_OptimiseMemory = true;
    DeclareGlobal(Type("DINT"));
    m_Memory.AllocatePouVariables();
    m_Memory.AllocatePouVariables();
    EXPECT_EQ(12, m_Memory.m_GlobalBytes);
    DeclareGlobal(Type("BOOL"));             // at 12, the byte behind it is where the cursor stays: 0 - 1 + 1
    m_Memory.AllocatePouVariables();
    EXPECT_EQ(13, m_Memory.m_GlobalBytes);
    EXPECT_EQ(1, m_Memory.m_GlobalBits);
}

// The local list closes the retain cursor too, whether or not it holds a retain variable.
TEST_F(AllocationTest, ClosingMoveOfTheRetainPhaseGoesByTheLastLocal)
{
    m_Memory.m_OptimiseMemory = true;
    Declare(Type("INT"));
    m_Memory.AllocatePouVariables();
    EXPECT_EQ(2, m_Memory.m_RetainBytes);
    EXPECT_EQ(0, m_Memory.m_GlobalBytes);
}

TEST_F(AllocationTest, ClosingMoveCutsTheLastUnitToAByte)
{
    m_Memory.m_OptimiseMemory = true;
    Type("BOOL")->m_Align = 4;
    DeclareMany(9, Type("BOOL"), /*isLocal=*/false);
    m_Memory.AllocatePouVariables();
    EXPECT_EQ(5, m_Memory.m_GlobalBytes);    // units at 0 and 4, cursor at 8, 8 + 0 - 4 + 1
    EXPECT_EQ(1, m_Memory.m_GlobalBits);
}

TEST_F(AllocationTest, ClosingMoveNeverReachesBackIntoVariables)
{
    m_Memory.m_OptimiseMemory = true;
    Type("INT")->m_Align = 8;
    DeclareGlobal(Type("INT"));
    m_Memory.AllocatePouVariables();
    EXPECT_EQ(2, m_Memory.m_GlobalBytes);    // and not 2 + 2 - 8 + 1
    CVariable* pNext = DeclareGlobal(Type("BYTE"));
    m_Memory.AllocatePouVariables();
    EXPECT_EQ(2, pNext->m_Offset);
}

TEST_F(AllocationTest, PackingGivesSubstitutedConstantsAPlaceThatNobodyReads)
{
    m_Memory.m_OptimiseMemory = true;
    CVariable* pConstant = Declare(Type("BOOL"));
    pConstant->m_IsConstant = true;
    CVariable* pBool = Declare(Type("BOOL"));
    m_Memory.AllocatePouVariables();
    ExpectPlace(pConstant, 0, 1, 0);
    ExpectPlace(pBool, 0, 1, 1);
}

TEST_F(AllocationTest, ImpossibleSizesOverflowAndDoNotWrap)
{
    constexpr std::int32_t low = std::numeric_limits<std::int32_t>::min();
    constexpr std::int32_t high = std::numeric_limits<std::int32_t>::max();
    for (int i = 0; i < 3; ++i) DeclareArray(Type("DINT"), {{low, high}, {low, high}, {low, high}}, false);
    CVariable* pNext = DeclareGlobal(Type("DINT"));
    m_Memory.AllocatePouVariables();
    m_Memory.AllocatePouVariables();
    EXPECT_EQ(2, m_Errors.GetErrorCount());
    EXPECT_NE(std::string::npos, LastError().find("global ")) << LastError();
    EXPECT_EQ(high, pNext->m_Offset);
    EXPECT_EQ(high, m_Memory.m_GlobalBytes);
}
