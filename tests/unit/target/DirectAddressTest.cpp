#include "TargetFixture.h"

class DirectAddressTest : public TargetFixture
{
protected:
    void SetUp() override
    {
        TargetFixture::SetUp();
        LoadByteAligned();
        m_Memory.m_InputSegment = 1000;
        m_Memory.m_InputSize = 10;
        m_Memory.m_OutputSegment = 2000;
        m_Memory.m_OutputSize = 102;
        m_Memory.m_MemorySegment = 3000;
        m_Memory.m_MemorySize = 100;
    }

    CVariable* Locate(std::string_view address, CType* pType, bool checkAlignment = true)
    {
        CVariable* pVariable = Declare(pType);
        return LocateVariable(pVariable, address, checkAlignment);
    }

    CVariable* LocateVariable(CVariable* pVariable, std::string_view address, bool checkAlignment = true)
    {
        pVariable->m_DirectAddress = address;
        m_Accepted = m_Memory.SetDirectAddress(pVariable, SourceLocation{3, 4, 3, 5, "a.st"}, checkAlignment);
        return pVariable;
    }

    void ExpectPlace(std::string_view address, CType* pType, std::int32_t offset, std::int32_t bit)
    {
        const int before = m_Errors.GetErrorCount();
        const CVariable* pVariable = Locate(address, pType);
        EXPECT_TRUE(m_Accepted) << address;
        EXPECT_EQ(offset, pVariable->m_Offset) << address;
        EXPECT_EQ(bit, pVariable->m_BitOffset) << address;
        EXPECT_EQ(address, pVariable->m_DirectAddress);
        EXPECT_EQ(before, m_Errors.GetErrorCount()) << LastError();
    }

    void ExpectRefusal(std::string_view address, CType* pType, std::string_view words)
    {
        const int before = m_Errors.GetErrorCount();
        const CVariable* pVariable = Locate(address, pType);
        EXPECT_FALSE(m_Accepted) << address;
        EXPECT_EQ(before + 1, m_Errors.GetErrorCount()) << address;
        EXPECT_NE(std::string::npos, LastError().find(words)) << address << ": " << LastError();
        EXPECT_EQ(-1, pVariable->m_Size) << address;
        EXPECT_EQ(-1, pVariable->m_Offset) << address;
    }

    static constexpr std::string_view g_OutOfMemory = "address out of memory ";
    static constexpr std::string_view g_Invalid = "invalid address";
    static constexpr std::string_view g_Dimension = "invalid dimension for the type";
    static constexpr std::string_view g_Alignment = "invalid alignment for the type";
    bool m_Accepted = false;
};

TEST_F(DirectAddressTest, BitsAboveSevenCountOnFromTheByte)
{
    ExpectPlace("IX0.9", Type("BOOL"), 1001, 1);
    ExpectPlace("IX1.16", Type("BOOL"), 1003, 0);
    ExpectPlace("QX3.7", Type("BOOL"), 2003, 7);
}

TEST_F(DirectAddressTest, NegativeBitsCountBack)
{
    ExpectPlace("IX1.-1", Type("BOOL"), 1000, 7);
    ExpectPlace("IX2.-8", Type("BOOL"), 1001, 0);
    ExpectRefusal("IX0.-1", Type("BOOL"), g_OutOfMemory);
}

TEST_F(DirectAddressTest, LeftOutSizeLetterIsX)
{
    ExpectPlace("I0.1", Type("BOOL"), 1000, 1);
    ExpectPlace("M7.3", Type("BOOL"), 3007, 3);
}

TEST_F(DirectAddressTest, BoolNeedsABit)
{
    ExpectRefusal("I5", Type("BOOL"), g_Dimension);
    ExpectRefusal("IX5", Type("BOOL"), g_Dimension);
    ExpectRefusal("IB5", Type("BOOL"), g_Dimension);
}

TEST_F(DirectAddressTest, OnlyBoolHasABit)
{
    ExpectRefusal("IB0.1", Type("BYTE"), g_Dimension);
    ExpectRefusal("IX0.1", Type("INT"), g_Dimension);
}

TEST_F(DirectAddressTest, SizeLetterMustFitTheType)
{
    ExpectPlace("MB3", Type("BYTE"), 3003, 0);
    ExpectPlace("MW3", Type("INT"), 3003, 0);
    ExpectPlace("MD3", Type("REAL"), 3003, 0);
    ExpectPlace("ML4", Type("LREAL"), 3004, 0);   // alignment 4, which no format has changed
    ExpectRefusal("MB4", Type("INT"), g_Dimension);
    ExpectRefusal("MW4", Type("DINT"), g_Dimension);
    ExpectRefusal("MD4", Type("INT"), g_Dimension);
    ExpectRefusal("ML4", Type("DINT"), g_Dimension);
    ExpectRefusal("M4", Type("INT"), g_Dimension);
}

TEST_F(DirectAddressTest, AlignmentIsCheckedWhereAsked)
{
    Type("INT")->m_Align = 2;
    ExpectPlace("MW4", Type("INT"), 3004, 0);
    const CVariable* pVariable = Locate("MW3", Type("INT"), /*checkAlignment=*/false);
    EXPECT_TRUE(m_Accepted);
    EXPECT_EQ(3003, pVariable->m_Offset);
    ExpectRefusal("MW3", Type("INT"), g_Alignment);
}

TEST_F(DirectAddressTest, WholeVariableMustLieInTheArea)
{
    ExpectPlace("QD98", Type("DINT"), 2098, 0);
    ExpectRefusal("QD100", Type("DINT"), g_OutOfMemory);
    ExpectPlace("IX9.7", Type("BOOL"), 1009, 7);
    ExpectRefusal("IX10.0", Type("BOOL"), g_OutOfMemory);
    ExpectRefusal("IX9.8", Type("BOOL"), g_OutOfMemory);
}

TEST_F(DirectAddressTest, MemoryIsTestedBeforeAlignmentAndBothBeforeTheSizeLetter)
{
    Type("DINT")->m_Align = 4;
    ExpectRefusal("MW99", Type("DINT"), g_OutOfMemory);
    ExpectRefusal("MW3", Type("DINT"), g_Alignment);
    ExpectRefusal("MW4", Type("DINT"), g_Dimension);
}

TEST_F(DirectAddressTest, SecondDotIsInvalid)
{
    ExpectRefusal("IX0.1.2", Type("BOOL"), g_Invalid);
    ExpectRefusal("IW0.1.2", Type("INT"), g_Invalid);
}

TEST_F(DirectAddressTest, TargetWithoutTheAreaRefusesAll)
{
    m_Memory.m_InputSize = 0;
    ExpectRefusal("IX0.0", Type("BOOL"), g_OutOfMemory);
}

TEST_F(DirectAddressTest, OtherAreaLettersHaveNoSegmentAndNoLimit)
{
    ExpectPlace("ZW5000", Type("INT"), 5000, 0);
}

TEST_F(DirectAddressTest, OtherSizeLettersAreAccepted)
{
    ExpectPlace("MZ5", Type("INT"), 3005, 0);
}

TEST_F(DirectAddressTest, AbsurdNumbersAreOutOfMemory)
{
    ExpectRefusal("MD99999999999999999999", Type("DINT"), g_OutOfMemory);
    ExpectRefusal("MX2147483647.2147483647", Type("BOOL"), g_OutOfMemory);
    ExpectRefusal("MX0.99999999999", Type("BOOL"), g_OutOfMemory);
    ExpectRefusal("MX-1.0", Type("BOOL"), g_OutOfMemory);
}

TEST_F(DirectAddressTest, ShortTextsDoNoHarm)
{
    ExpectPlace("", Type("INT"), 0, 0);
    ExpectPlace("I", Type("INT"), 1000, 0);
    ExpectPlace("IW", Type("INT"), 1000, 0);
    ExpectPlace("I.", Type("BOOL"), 1000, 0);
}

TEST_F(DirectAddressTest, AggregatesHaveNoSizeLetterToFit)
{
    CVariable* pArray = DeclareArray(Type("INT"), {{0, 4}});
    LocateVariable(pArray, "IB0");
    EXPECT_TRUE(m_Accepted);
    EXPECT_EQ(1000, pArray->m_Offset);
    EXPECT_EQ(10, pArray->m_Size);
    CVariable* pStruct = Declare(MakeStruct({Type("BYTE"), Type("DINT")}));
    LocateVariable(pStruct, "MX7");
    EXPECT_TRUE(m_Accepted);
    EXPECT_EQ(3007, pStruct->m_Offset);
    EXPECT_EQ(5, pStruct->m_Size);
}

TEST_F(DirectAddressTest, SizeIsThatOfTheLayout)
{
    EXPECT_EQ(2, Locate("MW0", Type("INT"))->m_Size);
    EXPECT_EQ(0, Locate("MX0.0", Type("BOOL"))->m_Size);   // a BOOL by itself adds no byte
}

TEST_F(DirectAddressTest, MessageStandsAtThePosition)
{
    Locate("IX0.1.2", Type("BOOL"));
    ASSERT_EQ(1, m_Errors.GetErrorCount());
    EXPECT_EQ(3, m_Errors.m_ErrorList[0]->nFirstLine);
    EXPECT_EQ(4, m_Errors.m_ErrorList[0]->nFirstColumn);
    EXPECT_EQ("a.st", m_Errors.m_ErrorList[0]->strFile);
}
