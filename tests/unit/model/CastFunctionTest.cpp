#include "model/CastFunction.h"

#include "files/XmlDocument.h"
#include "model/Type.h"
#include "target/DataType.h"

#include <gtest/gtest.h>

#include <memory>

namespace
{

// The casts of a target that allows INT alone: permission plays no part in them.
class CastFunctionSetTest : public testing::Test
{
protected:
    CastFunctionSetTest() : m_DataTypes(m_Target, m_Names), m_Casts(m_Names)
    {
        m_Target.LoadFromString("<T><COMPILER><TARGET><IEC AllowedDataTypes=\"INT\" PointerType=\"UDINT\"/>"
                                "<COMPILER><DATAFORMAT><DATATYPE name=\"INT\" size=\"16\" align=\"2\"/></DATAFORMAT>"
                                "</COMPILER></TARGET></COMPILER></T>");
        m_DataTypes.LoadFromTarget();
        m_Casts.Build(m_DataTypes);
    }

    CXmlDocument m_Target;
    CNamePool m_Names;
    CDataType m_DataTypes;
    CCastFunctionSet m_Casts;
};

}   // namespace

TEST(CastFunctionTest, NamedAfterItsTypes)
{
    CType from("INT");
    CType to("REAL");
    const CCastFunction function(&from, &to);
    EXPECT_EQ(function.m_Name, "INT_TO_REAL");
    EXPECT_EQ(function.m_From, &from);
    EXPECT_EQ(function.m_To, &to);
}

TEST(CastFunctionTest, AddReplacesAnEntryOfTheName)
{
    CType from("INT");
    CType to("REAL");
    CNamePool names;
    CCastFunctionSet casts(names);
    casts.Add(std::make_unique<CCastFunction>(&from, &to));
    std::unique_ptr<CCastFunction> pSecond = std::make_unique<CCastFunction>(&from, &to);
    const CCastFunction* pGiven = pSecond.get();
    casts.Add(std::move(pSecond));
    EXPECT_EQ(casts.GetCount(), 1u);
    EXPECT_EQ(casts.Find("INT_TO_REAL"), pGiven);
}

TEST_F(CastFunctionSetTest, EveryPairOfElementaryTypes)
{
    for (CType* pFrom : m_DataTypes.GetTypes())
        for (CType* pTo : m_DataTypes.GetTypes()) {
            if (!pFrom->IsElementary() || !pTo->IsElementary()) continue;
            const CCastFunction* pCast = m_Casts.Find(pFrom->m_Name + "_TO_" + pTo->m_Name);
            ASSERT_NE(pCast, nullptr) << pFrom->m_Name << " " << pTo->m_Name;
            EXPECT_EQ(pCast->m_From, pFrom);
            EXPECT_EQ(pCast->m_To, pTo);
        }
    EXPECT_EQ(m_Casts.GetCount(), 361u);
    EXPECT_NE(m_Casts.Find("BOOL_TO_BYTE"), nullptr);
    EXPECT_NE(m_Casts.Find("BYTE_TO_BOOL"), nullptr);
    EXPECT_NE(m_Casts.Find("REAL_TO_REAL"), nullptr);
    EXPECT_NE(m_Casts.Find("DATE_AND_TIME_TO_TIME_OF_DAY"), nullptr);
    const CCastFunction* pFunction = m_Casts.Find("INT_TO_REAL");
    ASSERT_NE(pFunction, nullptr);
    EXPECT_EQ(pFunction->m_From, m_DataTypes.FindType("INT"));
    EXPECT_EQ(pFunction->m_To, m_DataTypes.FindType("REAL"));
}

TEST_F(CastFunctionSetTest, EachIsMadeOnce)
{
    EXPECT_EQ(m_Casts.GetCount(), 0u);
    const CCastFunction* pFunction = m_Casts.Find("INT_TO_REAL");
    EXPECT_NE(pFunction, nullptr);
    EXPECT_EQ(m_Casts.Find("INT_TO_REAL"), pFunction);
    EXPECT_EQ(m_Casts.GetCount(), 1u);
}

TEST_F(CastFunctionSetTest, NoCastsOfStringsAndErrors)
{
    EXPECT_EQ(m_Casts.Find("STRING_TO_INT"), nullptr);
    EXPECT_EQ(m_Casts.Find("INT_TO_STRING"), nullptr);
    EXPECT_EQ(m_Casts.Find("ERROR_TO_INT"), nullptr);
}

TEST_F(CastFunctionSetTest, NamesAreExact)
{
    EXPECT_EQ(m_Casts.Find("int_to_real"), nullptr);
    EXPECT_EQ(m_Casts.Find("INT_TO_"), nullptr);
    EXPECT_EQ(m_Casts.Find("_TO_INT"), nullptr);
    EXPECT_EQ(m_Casts.Find("_TO_"), nullptr);
    EXPECT_EQ(m_Casts.Find("INT_TO_INT_TO_INT"), nullptr);
    EXPECT_EQ(m_Casts.Find("INT_to_INT"), nullptr);
    EXPECT_EQ(m_Casts.Find(""), nullptr);
}
