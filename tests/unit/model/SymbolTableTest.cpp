#include "model/SymbolTable.h"

#include "files/XmlDocument.h"
#include "frontend/ErrorHandler.h"
#include "model/Variable.h"
#include "target/DataType.h"
#include "target/MemoryHandler.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>

namespace
{

class SymbolTableTest : public testing::Test
{
protected:
    SymbolTableTest()
        : m_DataTypes(m_Target, m_Names), m_Memory(m_Errors, m_DataTypes, m_ConstantSubstitution),
          m_Table(m_Memory, m_Names, Scope::Local)
    {
    }

    CVariable* Add(const std::string& name, bool isLocal = true)
    {
        std::unique_ptr<CVariable> pVariable = std::make_unique<CVariable>();
        CVariable* pAdded = pVariable.get();
        pAdded->m_Name = name;
        pAdded->m_IsLocal = isLocal;
        m_Table.Add(std::move(pVariable));
        return pAdded;
    }

    bool m_ConstantSubstitution = true;
    CErrorHandler m_Errors;
    CXmlDocument m_Target;
    CNamePool m_Names;
    CDataType m_DataTypes;
    CMemoryHandler m_Memory;
    CSymbolTable m_Table;
};

}   // namespace

TEST_F(SymbolTableTest, NamesAreFoundInAnyCase)
{
    const CVariable* pFirst = Add("abc");
    const CVariable* pSecond = Add("Speed");
    EXPECT_EQ(m_Table.Find("ABC"), pFirst);
    EXPECT_EQ(m_Table.Find("abc"), pFirst);
    EXPECT_EQ(m_Table.Find("sPEED"), pSecond);
    EXPECT_EQ(m_Table.Find("none"), nullptr);
    EXPECT_EQ(m_Table.Find(""), nullptr);
    EXPECT_EQ(pSecond->m_Name, "Speed");
}

TEST_F(SymbolTableTest, VariablesReachTheMemoryHandlerInOrder)
{
    CVariable* pFirst = Add("b");
    CVariable* pSecond = Add("a");
    CVariable* pGlobal = Add("g", /*isLocal=*/false);
    EXPECT_EQ(m_Memory.m_LocalVariables, (std::vector<CVariable*>{pFirst, pSecond}));
    EXPECT_EQ(m_Memory.m_GlobalVariables, (std::vector<CVariable*>{pGlobal}));
}

// The replaced one is still placed, so it must stay alive.
TEST_F(SymbolTableTest, SecondEntryOfANameReplacesTheFirst)
{
    CVariable* pFirst = Add("a");
    CVariable* pSecond = Add("A");
    EXPECT_EQ(m_Table.Find("a"), pSecond);
    EXPECT_EQ(m_Memory.m_LocalVariables, (std::vector<CVariable*>{pFirst, pSecond}));
    EXPECT_EQ(pFirst->m_Name, "a");
}

TEST_F(SymbolTableTest, ClearEmptiesTheTable)
{
    Add("a");
    m_Memory.ClearLocalVariables();
    m_Table.Clear();
    EXPECT_EQ(m_Table.Find("a"), nullptr);
    const CVariable* pNew = Add("a");
    EXPECT_EQ(m_Table.Find("a"), pNew);
    EXPECT_EQ(m_Memory.m_LocalVariables.size(), 1u);
}

TEST_F(SymbolTableTest, TokensAndTextsFindTheSameVariable)
{
    const CVariable* pSpeed = Add("Speed");
    EXPECT_EQ(m_Table.Find(m_Names.Intern("SPEED")), pSpeed);
    EXPECT_EQ(m_Table.Find(m_Names.Intern("speed")), pSpeed);
    EXPECT_EQ(m_Table.Find(m_Names.Intern("speeds")), nullptr);
    const std::size_t count = m_Names.GetCount();
    EXPECT_EQ(m_Table.Find("neverMet"), nullptr);
    EXPECT_EQ(m_Names.GetCount(), count) << "asking enters no name";
}

TEST_F(SymbolTableTest, TablesThatShareThePoolKeepApart)
{
    CSymbolTable globals(m_Memory, m_Names, Scope::Global);
    const CVariable* pLocal = Add("a");
    EXPECT_EQ(globals.Find("a"), nullptr);
    auto pVariable = std::make_unique<CVariable>();
    const CVariable* pGlobal = pVariable.get();
    pVariable->m_Name = "A";
    globals.Add(std::move(pVariable));
    EXPECT_EQ(m_Table.Find("a"), pLocal);
    EXPECT_EQ(globals.Find("a"), pGlobal);

    CSymbolTable sameScope(m_Memory, m_Names, Scope::Local);
    EXPECT_EQ(sameScope.Find("a"), nullptr) << "the entry belongs to another table of the scope";
}
