#include "TargetFixture.h"

class MemoryAreasTest : public TargetFixture
{
protected:
    void LoadWith(std::string_view areas) { Load(MakeTarget("PointerType=\"UDINT\"", GetByteAlignedFormats(), areas)); }

    void SetPointer(std::int32_t sizeBits, std::int32_t align)
    {
        m_Types.m_PointerType->m_SizeBits = sizeBits;
        m_Types.m_PointerType->m_Align = align;
    }
};

TEST_F(MemoryAreasTest, CodesAreUnknownUntilRead)
{
    EXPECT_EQ(-1, m_Memory.m_InputCode);
    EXPECT_EQ(-1, m_Memory.m_AbsoluteCode);
    EXPECT_EQ(0, m_Memory.m_GlobalSize);
    LoadWith("");
    EXPECT_EQ(-1, m_Memory.m_GlobalCode);
    EXPECT_EQ(-1, m_Memory.m_LocalCode);
    EXPECT_EQ(0, m_Memory.m_RetainSize);
}

TEST_F(MemoryAreasTest, AllAreas)
{
    LoadWith("<AREA name=\"INPUT\" segment=\"10\" size=\"20\" code=\"1\"/>"
             "<AREA name=\"OUTPUT\" segment=\"30\" size=\"40\" code=\"2\"/>"
             "<AREA name=\"MEMORY\" segment=\"50\" size=\"60\" code=\"3\"/>"
             "<AREA name=\"GLOBAL\" size=\"70\" code=\"4\"/><AREA name=\"RETAIN\" size=\"0x100\" code=\"5\"/>"
             "<AREA name=\"LOCAL\" code=\"6\"/><AREA name=\"ABSOLUTE\" code=\"7\"/>");
    EXPECT_EQ(10, m_Memory.m_InputSegment);
    EXPECT_EQ(20, m_Memory.m_InputSize);
    EXPECT_EQ(1, m_Memory.m_InputCode);
    EXPECT_EQ(30, m_Memory.m_OutputSegment);
    EXPECT_EQ(40, m_Memory.m_OutputSize);
    EXPECT_EQ(2, m_Memory.m_OutputCode);
    EXPECT_EQ(50, m_Memory.m_MemorySegment);
    EXPECT_EQ(60, m_Memory.m_MemorySize);
    EXPECT_EQ(3, m_Memory.m_MemoryCode);
    EXPECT_EQ(70, m_Memory.m_GlobalSize);
    EXPECT_EQ(4, m_Memory.m_GlobalCode);
    EXPECT_EQ(256, m_Memory.m_RetainSize);
    EXPECT_EQ(5, m_Memory.m_RetainCode);
    EXPECT_EQ(6, m_Memory.m_LocalCode);
    EXPECT_EQ(7, m_Memory.m_AbsoluteCode);
}

// OUTPUT takes the size before as segment, and that as size; MEMORY its own segment as size; GLOBAL the size
// before, which the areas without a size don't change.
TEST_F(MemoryAreasTest, DefaultsRunAlongTheNodes)
{
    LoadWith("<AREA name=\"INPUT\" segment=\"10\" size=\"20\"/><AREA name=\"OUTPUT\"/>"
             "<AREA name=\"MEMORY\" segment=\"7\"/><AREA name=\"LOCAL\" size=\"99\" segment=\"98\"/>"
             "<AREA name=\"GLOBAL\"/><AREA name=\"RETAIN\" size=\"5\"/>");
    EXPECT_EQ(20, m_Memory.m_OutputSegment);
    EXPECT_EQ(20, m_Memory.m_OutputSize);
    EXPECT_EQ(7, m_Memory.m_MemorySize);
    EXPECT_EQ(7, m_Memory.m_GlobalSize);
    EXPECT_EQ(5, m_Memory.m_RetainSize);
}

TEST_F(MemoryAreasTest, FirstDefaultIsZero)
{
    LoadWith("<AREA name=\"INPUT\"/>");
    EXPECT_EQ(0, m_Memory.m_InputSegment);
    EXPECT_EQ(0, m_Memory.m_InputSize);
}

TEST_F(MemoryAreasTest, NamesAreComparedWithCase)
{
    LoadWith("<AREA name=\"Global\" size=\"20\" code=\"1\"/><AREA name=\"RETAIN\"/>");
    EXPECT_EQ(0, m_Memory.m_GlobalSize);
    EXPECT_EQ(-1, m_Memory.m_GlobalCode);
    EXPECT_EQ(0, m_Memory.m_RetainSize);
}

TEST_F(MemoryAreasTest, VariablesGoToTheListOfTheirKind)
{
    LoadByteAligned();
    CVariable* pLocal = Declare(Type("INT"));
    CVariable* pGlobal = DeclareGlobal(Type("INT"));
    EXPECT_EQ(std::vector<CVariable*>{pLocal}, m_Memory.m_LocalVariables);
    EXPECT_EQ(std::vector<CVariable*>{pGlobal}, m_Memory.m_GlobalVariables);
    m_Memory.ClearLocalVariables();
    EXPECT_TRUE(m_Memory.m_LocalVariables.empty());
    EXPECT_EQ(1u, m_Memory.m_GlobalVariables.size());
}

TEST_F(MemoryAreasTest, PointerSlotIsAlignmentAddedUntilItHoldsThePointer)
{
    LoadByteAligned();
    struct Case
    {
        std::int32_t sizeBits;
        std::int32_t align;
        std::int32_t slot;
    };
    constexpr Case cases[] = {{32, 1, 4}, {32, 4, 4}, {32, 8, 8}, {32, 3, 6}, {64, 8, 8}, {64, 4, 8},
                              {16, 4, 4}, {32, 0, 4}, {32, -1, 4}, {0, 2, 2}};
    for (const Case& item : cases) {
        SetPointer(item.sizeBits, item.align);
        EXPECT_EQ(item.slot, m_Memory.GetPointerSlotSize()) << item.sizeBits << " bits, align " << item.align;
    }
}

TEST_F(MemoryAreasTest, OnlyScalarConstantsAreSubstituted)
{
    LoadByteAligned();
    CVariable* pScalar = Declare(Type("INT"));
    EXPECT_FALSE(m_Memory.IsSubstituted(pScalar));
    pScalar->m_IsConstant = true;
    EXPECT_TRUE(m_Memory.IsSubstituted(pScalar));
    CVariable* pArray = DeclareArray(Type("INT"), {{0, 3}});
    pArray->m_IsConstant = true;
    EXPECT_FALSE(m_Memory.IsSubstituted(pArray));
    CVariable* pStruct = Declare(MakeStruct({Type("INT")}));
    pStruct->m_IsConstant = true;
    EXPECT_FALSE(m_Memory.IsSubstituted(pStruct));
    m_Substitution = false;
    EXPECT_FALSE(m_Memory.IsSubstituted(pScalar));
}
