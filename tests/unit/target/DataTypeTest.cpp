#include "target/DataType.h"

#include "TargetFixture.h"
#include "model/InitValue.h"
#include "model/Type.h"

#include <set>

class DataTypeTest : public TargetFixture
{
protected:
    void LoadTypes(std::string_view iec, std::string_view formats = {}) { Load(MakeTarget(iec, formats)); }

    std::set<std::string> GetAllowed() const
    {
        std::set<std::string> names;
        for (const CType* pType : m_Types.GetTypes())
            if (pType->m_Allowed && pType != m_Types.m_ErrorType) names.insert(pType->m_Name);
        return names;
    }

    using Names = std::set<std::string>;
};

TEST_F(DataTypeTest, DefaultsOfAllElementaryTypesInOrder)
{
    struct Expected
    {
        std::string_view name;
        std::int32_t sizeBits;
        std::int32_t align;
        CInitValue::Kind kind;
    };
    constexpr Expected table[] = {
        {"SINT", 8, 4, CInitValue::Signed},           {"INT", 16, 4, CInitValue::Signed},
        {"DINT", 32, 4, CInitValue::Signed},          {"LINT", 8, 4, CInitValue::Signed},
        {"USINT", 8, 4, CInitValue::Unsigned},        {"UINT", 16, 4, CInitValue::Unsigned},
        {"UDINT", 32, 4, CInitValue::Unsigned},       {"ULINT", 8, 4, CInitValue::Signed},
        {"BOOL", 1, 4, CInitValue::Bool},             {"BYTE", 8, 4, CInitValue::Unsigned},
        {"WORD", 16, 4, CInitValue::Unsigned},        {"DWORD", 32, 4, CInitValue::Unsigned},
        {"LWORD", 8, 4, CInitValue::Signed},          {"REAL", 32, 4, CInitValue::Real},
        {"LREAL", 64, 4, CInitValue::Real},           {"TIME", -1, -1, CInitValue::Signed},
        {"DATE_AND_TIME", -1, -1, CInitValue::Signed}, {"TIME_OF_DAY", -1, -1, CInitValue::Signed},
        {"DATE", -1, -1, CInitValue::Signed},
    };
    LoadTypes("");
    ASSERT_EQ(std::size(table) + 2, m_Types.GetCount());   // and STRING, ERROR
    for (std::size_t i = 0; i < std::size(table); ++i) {
        const CType& type = *m_Types.GetTypes()[i];
        EXPECT_EQ(table[i].name, type.m_Name);
        EXPECT_EQ(table[i].sizeBits, type.m_SizeBits) << type.m_Name;
        EXPECT_EQ(table[i].align, type.m_Align) << type.m_Name;
        EXPECT_TRUE(type.m_IsElementary) << type.m_Name;
        ASSERT_TRUE(type.m_InitValue) << type.m_Name;
        EXPECT_EQ(table[i].kind, type.m_InitValue->m_Kind) << type.m_Name;
        EXPECT_EQ(0, type.m_InitValue->GetInt64()) << type.m_Name;
    }
}

TEST_F(DataTypeTest, AllowsWhatIsNamed)
{
    LoadTypes("AllowedDataTypes=\"BOOL,BYTE\"");
    EXPECT_EQ((Names{"BOOL", "BYTE"}), GetAllowed());
}

TEST_F(DataTypeTest, AllowsBoolAndIntOnly)
{
    LoadTypes("AllowedDataTypes=\"BOOL,INT\"");
    EXPECT_EQ((Names{"BOOL", "INT"}), GetAllowed());
}

TEST_F(DataTypeTest, NameInsideAnotherIsAllowedToo)
{
    LoadTypes("AllowedDataTypes=\"USINT\"");
    EXPECT_EQ((Names{"USINT", "SINT", "INT"}), GetAllowed());
}

TEST_F(DataTypeTest, EveryNestingOfNames)
{
    LoadTypes("AllowedDataTypes=\"UDINT LWORD LREAL\"");
    EXPECT_EQ((Names{"UDINT", "DINT", "INT", "WORD", "LREAL", "REAL"}), GetAllowed());
}

TEST_F(DataTypeTest, NothingIsAllowedWithoutTheAttribute)
{
    LoadTypes("");
    EXPECT_EQ(Names{}, GetAllowed());
}

TEST_F(DataTypeTest, NothingIsAllowedByAnEmptyAttribute)
{
    LoadTypes("AllowedDataTypes=\"\"");
    EXPECT_EQ(Names{}, GetAllowed());
}

TEST_F(DataTypeTest, CaseIsRespected)
{
    LoadTypes("AllowedDataTypes=\"bool\"");
    EXPECT_EQ(Names{}, GetAllowed());
}

TEST_F(DataTypeTest, LongIntegersStringsAndTimesAreNeverAllowed)
{
    LoadTypes("AllowedDataTypes=\"LINT ULINT LWORD STRING TIME DATE_AND_TIME TIME_OF_DAY DATE\"",
              "<DATATYPE name=\"LINT\" size=\"64\" align=\"8\"/>");
    EXPECT_EQ((Names{"INT", "WORD"}), GetAllowed());   // inside LINT and LWORD
    EXPECT_EQ(64, Type("LINT")->m_SizeBits);
}

TEST_F(DataTypeTest, FormatsSetSizeInBitsAndAlignmentInBytes)
{
    LoadTypes("", "<DATATYPE name=\"DINT\" size=\"24\" align=\"2\"/>");
    EXPECT_EQ(24, Type("DINT")->m_SizeBits);
    EXPECT_EQ(2, Type("DINT")->m_Align);
}

TEST_F(DataTypeTest, WhatAFormatLeavesOutIsThatOfTheNodeBefore)
{
    LoadTypes("", "<DATATYPE name=\"INT\" size=\"16\" align=\"2\"/><DATATYPE name=\"WORD\"/>"
                  "<DATATYPE name=\"DINT\" size=\"32\"/><DATATYPE name=\"REAL\" align=\"8\"/>");
    EXPECT_EQ(16, Type("WORD")->m_SizeBits);
    EXPECT_EQ(2, Type("WORD")->m_Align);
    EXPECT_EQ(2, Type("DINT")->m_Align);
    EXPECT_EQ(32, Type("REAL")->m_SizeBits);
    EXPECT_EQ(8, Type("REAL")->m_Align);
}

TEST_F(DataTypeTest, FirstFormatDefaultsToZero)
{
    LoadTypes("", "<DATATYPE name=\"INT\"/>");
    EXPECT_EQ(0, Type("INT")->m_SizeBits);
    EXPECT_EQ(0, Type("INT")->m_Align);
    EXPECT_EQ(1, Type("INT")->GetPlacingAlign());
}

TEST_F(DataTypeTest, AlignmentsBelowOneAreKeptAndPlaceLikeOne)
{
    LoadTypes("", "<DATATYPE name=\"INT\" size=\"16\" align=\"-4\"/><DATATYPE name=\"WORD\"/>"
                  "<DATATYPE name=\"UDINT\" size=\"32\" align=\"0\"/><DATATYPE name=\"DINT\" align=\"2\"/>");
    EXPECT_EQ(-4, Type("INT")->m_Align);
    EXPECT_EQ(-4, Type("WORD")->m_Align);
    EXPECT_EQ(1, Type("WORD")->GetPlacingAlign());
    EXPECT_EQ(0, m_Types.m_StringType->m_Align);
    EXPECT_EQ(1, m_Types.m_StringType->GetPlacingAlign());
    EXPECT_EQ(2, Type("DINT")->GetPlacingAlign());
}

TEST_F(DataTypeTest, HexadecimalSize)
{
    LoadTypes("", "<DATATYPE name=\"DINT\" size=\"0x10\" align=\"1\"/>");
    EXPECT_EQ(16, Type("DINT")->m_SizeBits);
}

TEST_F(DataTypeTest, UnknownFormatChangesTheTypeBefore)
{
    LoadTypes("", "<DATATYPE name=\"INT\" size=\"16\" align=\"2\"/><DATATYPE name=\"int\" size=\"24\" align=\"4\"/>");
    EXPECT_EQ(24, Type("INT")->m_SizeBits);
    EXPECT_EQ(4, Type("INT")->m_Align);
}

TEST_F(DataTypeTest, UnknownFormatBeforeAnyKnownOneOnlySetsTheDefaults)
{
    LoadTypes("", "<DATATYPE name=\"FOO\" size=\"40\" align=\"2\"/><DATATYPE name=\"INT\"/>");
    EXPECT_EQ(40, Type("INT")->m_SizeBits);
    EXPECT_EQ(2, Type("INT")->m_Align);
    EXPECT_EQ(8, Type("SINT")->m_SizeBits);
}

TEST_F(DataTypeTest, StringTakesTheAlignmentOfUdint)
{
    LoadTypes("", "<DATATYPE name=\"UDINT\" size=\"32\" align=\"2\"/>");
    const CType* pString = m_Types.m_StringType;
    ASSERT_EQ(Type("STRING"), pString);
    EXPECT_EQ(2, pString->m_Align);
    EXPECT_EQ(-1, pString->m_SizeBits);
    EXPECT_TRUE(pString->IsString());
    EXPECT_FALSE(pString->m_IsElementary);
    EXPECT_FALSE(pString->m_Allowed);
    ASSERT_TRUE(pString->m_InitValue);
    ASSERT_TRUE(pString->m_InitValue->IsString());
    EXPECT_EQ(0, static_cast<const CInitString&>(*pString->m_InitValue).m_Length);
    EXPECT_EQ("", static_cast<const CInitString&>(*pString->m_InitValue).m_Text);
}

TEST_F(DataTypeTest, ErrorTypeIsAllowedAndNotElementary)
{
    LoadTypes("");
    const CType* pError = m_Types.m_ErrorType;
    ASSERT_EQ(Type("ERROR"), pError);
    EXPECT_TRUE(pError->m_Allowed);
    EXPECT_FALSE(pError->m_IsElementary);
    EXPECT_EQ(-1, pError->m_SizeBits);
    EXPECT_EQ(-1, pError->m_Align);
    ASSERT_TRUE(pError->m_InitValue);
    EXPECT_EQ(CInitValue::NoValue, pError->m_InitValue->m_Kind);
}

TEST_F(DataTypeTest, StringAndErrorAreNoNamesOfASource)
{
    LoadTypes("");
    EXPECT_EQ(nullptr, m_Types.FindUserType("error"));
    EXPECT_EQ(nullptr, m_Types.FindUserType("STRING"));
    EXPECT_EQ(nullptr, m_Types.FindUserType("INT"));
}

TEST_F(DataTypeTest, PointerType)
{
    LoadTypes("PointerType=\"DWORD\"", "<DATATYPE name=\"INT\" size=\"16\" align=\"2\"/>");
    EXPECT_EQ(Type("DWORD"), m_Types.m_PointerType);
}

TEST_F(DataTypeTest, UnknownPointerTypeIsTheFormatFoundLast)
{
    LoadTypes("PointerType=\"POINTER\"", "<DATATYPE name=\"INT\" size=\"16\" align=\"2\"/><DATATYPE name=\"X\"/>");
    EXPECT_EQ(Type("INT"), m_Types.m_PointerType);
}

TEST_F(DataTypeTest, PointersHaveATypeOnATargetWithoutFormats)
{
    LoadTypes("");
    EXPECT_EQ(Type("UDINT"), m_Types.m_PointerType);
}

TEST_F(DataTypeTest, DeclaredTypesAreFoundInAnyCase)
{
    LoadTypes("");
    CType* pType = m_Types.AddType(std::make_unique<CType>("MyType"));
    EXPECT_EQ(pType, m_Types.FindUserType("MYTYPE"));
    EXPECT_EQ(pType, m_Types.FindUserType("mytype"));
    EXPECT_EQ(nullptr, m_Types.FindType("MyType"));
    EXPECT_EQ(pType, m_Types.GetTypes().back());
}

TEST_F(DataTypeTest, TakenNameLeavesTheTableAsItIs)
{
    LoadTypes("");
    CType* pFirst = m_Types.AddType(std::make_unique<CType>("t"));
    const std::size_t count = m_Types.GetCount();
    CType* pSecond = m_Types.AddType(std::make_unique<CType>("T"));
    EXPECT_NE(pFirst, pSecond);
    EXPECT_EQ("T", pSecond->m_Name);   // still alive
    EXPECT_EQ(pFirst, m_Types.FindUserType("t"));
    EXPECT_EQ(count, m_Types.GetCount());
}

TEST_F(DataTypeTest, AliasTakesTheDefaultOfItsTypeUnlessGivenOne)
{
    LoadTypes("");
    CType* pPlain = m_Types.AddAlias("Count", Type("INT"), nullptr);
    EXPECT_TRUE(pPlain->m_IsAlias);
    EXPECT_EQ(Type("INT"), pPlain->GetBaseType());
    EXPECT_EQ("0", pPlain->GetInitText());
    EXPECT_NE(Type("INT")->m_InitValue.get(), pPlain->m_InitValue.get());

    const CInitValue five(std::int64_t{5});
    CType* pValue = m_Types.AddAlias("Five", pPlain, &five);
    EXPECT_EQ("5", pValue->GetInitText());
    EXPECT_EQ(Type("INT"), pValue->GetBaseType());
}
