#include "model/PouTable.h"

#include "files/XmlDocument.h"
#include "frontend/Error.h"
#include "frontend/ErrorHandler.h"
#include "model/Type.h"

#include <gtest/gtest.h>

#include <initializer_list>
#include <iostream>

class PouTableTest : public testing::Test
{
protected:
    void SetUp() override
    {
        testing::internal::CaptureStdout();
        LoadPrograms("<PROGRAM name=\"main\"/>");
    }

    void TearDown() override
    {
        const std::string printed = testing::internal::GetCapturedStdout();
        if (HasFailure()) std::cout << printed;   // what the test says of its failure is in it
    }

    void LoadPrograms(const std::string& nodes)
    {
        m_Target.Clear();
        ASSERT_EQ(0, m_Target.LoadFromString("<t><COMPILER><TARGET><VM>" + nodes + "</VM></TARGET></COMPILER></t>"));
        m_Table.LoadProgramNames();
    }

    template <typename Pou>
    static std::unique_ptr<Pou> Make(const std::string& name, std::initializer_list<CType*> parameters = {},
                                     int line = 1)
    {
        auto pPou = std::make_unique<Pou>(name, SourceLocation{line, 2, line, 9, "a.st"});
        for (CType* pType : parameters) {
            auto pVariable = std::make_unique<CVariable>();
            pVariable->m_Type = pType;
            pPou->m_Parameters.push_back(std::move(pVariable));
        }
        pPou->m_ParameterCount = static_cast<std::int32_t>(parameters.size());
        return pPou;
    }

    int AddFunction(const std::string& name, std::initializer_list<CType*> parameters, int line = 1)
    {
        return m_Table.AddPou(Make<CFunction>(name, parameters, line));
    }

    std::string LastError() const
    {
        const auto& errors = m_Errors.m_ErrorList;
        return errors.empty() ? std::string() : errors.back()->strText;
    }

    CXmlDocument m_Target;
    CErrorHandler m_Errors;
    CNamePool m_Names;
    CPouTable m_Table{m_Errors, m_Target, m_Names};
    CType m_Int{"INT"};
    CType m_Real{"REAL"};
    CType m_Bool{"BOOL"};
};

TEST_F(PouTableTest, ClassTestsOfPous)
{
    CFunction function("f", SourceLocation{});
    CFunctionOverLoad set("f", SourceLocation{});
    CFunctionBlock block("b", SourceLocation{});
    CProgram program("p", SourceLocation{});
    EXPECT_TRUE(function.IsFunction() && !function.IsOverload() && !function.IsProgram());
    EXPECT_TRUE(set.IsFunction() && set.IsOverload());
    EXPECT_TRUE(block.IsFunctionBlock() && !block.IsFunction());
    EXPECT_TRUE(program.IsProgram() && !program.IsFunctionBlock());
    EXPECT_EQ(-1, program.m_Id);
    EXPECT_EQ(0, program.m_LocalSize);
}

TEST_F(PouTableTest, EachCalleeIsKeptOnceInOrderOfFirstCall)
{
    CFunction a("a", SourceLocation{});
    CFunction b("b", SourceLocation{});
    CProgram caller("p", SourceLocation{});
    caller.AddCallee(&b);
    caller.AddCallee(&a);
    caller.AddCallee(&b);
    EXPECT_EQ((std::vector<CPou*>{&b, &a}), caller.m_Callees);
}

TEST_F(PouTableTest, NamesAreFoundInAnyCase)
{
    EXPECT_EQ(1, AddFunction("MyFunction", {}));
    ASSERT_NE(nullptr, m_Table.FindPou("MYFUNCTION"));
    EXPECT_EQ("MyFunction", m_Table.FindPou("myfunction")->m_Name);
    EXPECT_EQ(nullptr, m_Table.FindPouExact("MyFunction"));
    EXPECT_NE(nullptr, m_Table.FindPouExact("myfunction"));
    EXPECT_EQ(nullptr, m_Table.FindPou("other"));
    EXPECT_EQ(nullptr, m_Table.FindOverload("myfunction"));
}

TEST_F(PouTableTest, OtherParameterTypesMakeAnOverloadSet)
{
    EXPECT_EQ(1, AddFunction("F", {&m_Int}, 5));
    CFunction* pFirst = m_Table.FindPou("f")->AsFunction();
    EXPECT_EQ(1, AddFunction("f", {&m_Real}));
    EXPECT_EQ(1, AddFunction("f", {&m_Bool}));
    const CFunctionOverLoad* pSet = m_Table.FindOverload("F");
    ASSERT_NE(nullptr, pSet);
    ASSERT_EQ(3u, pSet->m_Functions.size());
    EXPECT_EQ(pFirst, pSet->m_Functions[0].get());
    EXPECT_EQ(0, pSet->GetIndex(pFirst));
    EXPECT_EQ(2, pSet->GetIndex(pSet->m_Functions[2].get()));
    CFunction stranger("f", SourceLocation{});
    EXPECT_EQ(-1, pSet->GetIndex(&stranger));
    EXPECT_EQ("F", pSet->m_Name);
    EXPECT_EQ(5, pSet->m_Location.nFirstLine);
    EXPECT_EQ(0, m_Errors.GetErrorCount());
}

TEST_F(PouTableTest, SetIsMadeByAnotherParameterCountToo)
{
    AddFunction("f", {&m_Int});
    EXPECT_EQ(1, AddFunction("f", {&m_Int, &m_Int}));
    EXPECT_EQ(2u, m_Table.FindOverload("f")->m_Functions.size());
    EXPECT_EQ(1, AddFunction("f", {&m_Real, &m_Int}));   // grows behind a member of its own count
    EXPECT_EQ(3u, m_Table.FindOverload("f")->m_Functions.size());
}

TEST_F(PouTableTest, CountThatNoMemberHasIsLostSilently)
{
    AddFunction("f", {&m_Int});
    AddFunction("f", {&m_Real});
    EXPECT_EQ(-1, AddFunction("f", {&m_Int, &m_Int}));
    EXPECT_EQ(-1, AddFunction("f", {}));
    EXPECT_EQ(2u, m_Table.FindOverload("f")->m_Functions.size());
    EXPECT_EQ(0, m_Errors.GetErrorCount());
}

TEST_F(PouTableTest, SameParametersAreADuplicateAndTheFirstStays)
{
    AddFunction("first", {&m_Int, &m_Real}, 7);
    EXPECT_EQ(-1, AddFunction("FIRST", {&m_Int, &m_Real}, 9));
    EXPECT_EQ("first", m_Table.FindPou("first")->m_Name);
    EXPECT_EQ(nullptr, m_Table.FindOverload("first"));
    ASSERT_EQ(1, m_Errors.GetErrorCount());
    // Kind, name and numbers of the one before; position and file of the new one.
    EXPECT_NE(std::string::npos, LastError().find("first already declareda.st (7,2)")) << LastError();
    EXPECT_EQ(9, m_Errors.m_ErrorList[0]->nFirstLine);
}

TEST_F(PouTableTest, FunctionsWithoutParametersAreADuplicate)
{
    AddFunction("f", {});
    EXPECT_EQ(-1, AddFunction("f", {}));
    EXPECT_EQ(1, m_Errors.GetErrorCount());
}

TEST_F(PouTableTest, DuplicateOfASetsMemberNamesThatMember)
{
    AddFunction("f", {&m_Int}, 3);
    AddFunction("f", {&m_Real, &m_Real}, 4);
    EXPECT_EQ(-1, AddFunction("f", {&m_Real, &m_Real}, 5));
    ASSERT_EQ(1, m_Errors.GetErrorCount());
    EXPECT_NE(std::string::npos, LastError().find("(4,2)")) << LastError();
    EXPECT_EQ(2u, m_Table.FindOverload("f")->m_Functions.size());
}

TEST_F(PouTableTest, SameSignatureBehindADifferentOneGoesUnnoticed)
{
    AddFunction("f", {&m_Int});
    AddFunction("f", {&m_Real});
    EXPECT_EQ(1, AddFunction("f", {&m_Real}));
    EXPECT_EQ(3u, m_Table.FindOverload("f")->m_Functions.size());
    EXPECT_EQ(0, m_Errors.GetErrorCount());
}

TEST_F(PouTableTest, FormsThatNoCallFindAreHidden)
{
    AddFunction("f", {&m_Int});
    AddFunction("f", {&m_Real});
    AddFunction("f", {&m_Real});
    AddFunction("g", {&m_Int});
    AddFunction("g", {});
    const std::vector<std::unique_ptr<CFunction>>& forms = m_Table.FindOverload("f")->m_Functions;
    ASSERT_EQ(3u, forms.size());
    EXPECT_FALSE(forms[0]->m_IsHidden);
    EXPECT_FALSE(forms[1]->m_IsHidden);
    EXPECT_TRUE(forms[2]->m_IsHidden);
    EXPECT_FALSE(m_Table.FindOverload("g")->m_Functions[0]->m_IsHidden);
    EXPECT_TRUE(m_Table.FindOverload("g")->m_Functions[1]->m_IsHidden);
}

TEST_F(PouTableTest, ProgramOrBlockOfATakenNameIsADuplicate)
{
    AddFunction("main", {&m_Int});
    EXPECT_EQ(-1, m_Table.AddPou(Make<CProgram>("main")));
    EXPECT_EQ(-1, m_Table.AddPou(Make<CFunctionBlock>("MAIN", {&m_Real})));
    EXPECT_EQ(2, m_Errors.GetErrorCount());
}

TEST_F(PouTableTest, FunctionOfABlocksName)
{
    m_Table.AddPou(Make<CFunctionBlock>("b", {&m_Int}));
    EXPECT_EQ(-1, AddFunction("b", {&m_Real}));     // silently
    EXPECT_EQ(0, m_Errors.GetErrorCount());
    EXPECT_EQ(-1, AddFunction("b", {&m_Int}));      // the same list: a duplicate, though it is no block
    EXPECT_EQ(1, m_Errors.GetErrorCount());
    EXPECT_TRUE(m_Table.FindPou("b")->IsFunctionBlock());
}

TEST_F(PouTableTest, SetStandsWhereItsFirstFunctionStood)
{
    AddFunction("a", {&m_Int});
    AddFunction("b", {&m_Int});
    m_Table.AddPou(Make<CProgram>("main"));
    AddFunction("A", {&m_Real});
    const std::vector<CPou*>& pous = m_Table.GetPous();
    ASSERT_EQ(3u, pous.size());
    EXPECT_TRUE(pous[0]->IsOverload());
    EXPECT_EQ(pous[0], m_Table.FindPou("a"));
    EXPECT_EQ("b", pous[1]->m_Name);
    EXPECT_TRUE(pous[2]->IsProgram());
}

TEST_F(PouTableTest, ProgramThatTheTargetDoesNotName)
{
    EXPECT_EQ(-1, m_Table.AddPou(Make<CProgram>("foo", {}, 12)));
    ASSERT_EQ(1, m_Errors.GetErrorCount());
    EXPECT_NE(std::string::npos, LastError().find("program not supported")) << LastError();
    EXPECT_EQ(12, m_Errors.m_ErrorList[0]->nFirstLine);
    EXPECT_EQ(nullptr, m_Table.FindPou("foo"));
}

TEST_F(PouTableTest, ProgramNamesAreComparedWithCase)
{
    EXPECT_EQ(-1, m_Table.AddPou(Make<CProgram>("Main")));
    EXPECT_EQ(1, m_Errors.GetErrorCount());
    EXPECT_EQ(1, m_Table.AddPou(Make<CProgram>("main")));
}

TEST_F(PouTableTest, ProgramNamesEndInTheSentinel)
{
    LoadPrograms("<PROGRAM name=\"a\"/><PROGRAM/><PROGRAM name=\"b\"/>");
    EXPECT_EQ((std::vector<std::string>{"a", "", "b", "-end"}), m_Table.m_ProgramNames);
    EXPECT_FALSE(m_Table.IsProgramAllowed(CProgram("-end", SourceLocation{})));
    EXPECT_TRUE(m_Table.IsProgramAllowed(CProgram("b", SourceLocation{})));
}

TEST_F(PouTableTest, NamesBehindASentinelInTheTargetAreNotReached)
{
    LoadPrograms("<PROGRAM name=\"a\"/><PROGRAM name=\"-end\"/><PROGRAM name=\"b\"/>");
    EXPECT_TRUE(m_Table.IsProgramAllowed(CProgram("a", SourceLocation{})));
    EXPECT_FALSE(m_Table.IsProgramAllowed(CProgram("b", SourceLocation{})));
}

TEST_F(PouTableTest, ProgramTakesTheFieldsOfItsFirstNode)
{
    LoadPrograms("<PROGRAM name=\"p\" required=\"1\" auto=\"yes\" initretain=\"true\" initglobal=\"1\" "
                 "pou_begin=\"A{cr}B{cr}\" end=\"{cr}{CR}\" id=\"0x10\"/><PROGRAM name=\"p\" id=\"2\"/>");
    ASSERT_EQ(1, m_Table.AddPou(Make<CProgram>("p")));
    const CProgram* pProgram = m_Table.FindPou("p")->AsProgram();
    ASSERT_NE(nullptr, pProgram);
    EXPECT_TRUE(pProgram->m_Required);
    EXPECT_TRUE(pProgram->m_Auto);
    EXPECT_TRUE(pProgram->m_InitRetain);
    EXPECT_TRUE(pProgram->m_InitGlobal);
    EXPECT_EQ("A\n\tB\n\t", pProgram->m_Begin);
    EXPECT_EQ("\n\t{CR}", pProgram->m_End);
    EXPECT_EQ(16, pProgram->m_Id);
    EXPECT_FALSE(pProgram->m_Automatic);
}

TEST_F(PouTableTest, ProgramNodeWithoutAttributes)
{
    ASSERT_EQ(1, m_Table.AddPou(Make<CProgram>("main")));
    const CProgram* pProgram = m_Table.FindPou("main")->AsProgram();
    EXPECT_FALSE(pProgram->m_Required || pProgram->m_Auto || pProgram->m_InitGlobal || pProgram->m_InitRetain);
    EXPECT_EQ("", pProgram->m_Begin);
    EXPECT_EQ("", pProgram->m_End);
    EXPECT_EQ(-1, pProgram->m_Id);
}

TEST_F(PouTableTest, AutomaticProgramIsMade)
{
    LoadPrograms("<PROGRAM name=\"idle\" auto=\"1\" initglobal=\"1\" end=\"X\" id=\"7\"/>");
    m_Table.AddAutomaticPrograms();
    ASSERT_NE(nullptr, m_Table.FindPou("idle"));
    const CProgram* pProgram = m_Table.FindPou("idle")->AsProgram();
    ASSERT_NE(nullptr, pProgram);
    EXPECT_TRUE(pProgram->m_Automatic);
    EXPECT_TRUE(pProgram->m_Auto);
    EXPECT_FALSE(pProgram->m_Required);
    EXPECT_TRUE(pProgram->m_InitGlobal);
    EXPECT_FALSE(pProgram->m_InitRetain);
    EXPECT_EQ("X", pProgram->m_End);
    EXPECT_EQ(7, pProgram->m_Id);
    EXPECT_EQ(0, pProgram->m_LocalSize);
    EXPECT_EQ(-1, pProgram->m_Location.nFirstLine);
    EXPECT_EQ(-1, pProgram->m_Location.nFirstColumn);
    EXPECT_EQ(-1, pProgram->m_Location.nLastLine);
    EXPECT_EQ(-1, pProgram->m_Location.nLastColumn);
    EXPECT_STREQ("automatic declaration", pProgram->m_Location.szFile);
    EXPECT_EQ(0, m_Errors.GetErrorCount());
}

TEST_F(PouTableTest, DeclaredProgramIsNotMadeAgain)
{
    LoadPrograms("<PROGRAM name=\"main\" auto=\"1\" required=\"1\"/>");
    m_Table.AddPou(Make<CProgram>("main"));
    m_Table.AddAutomaticPrograms();
    EXPECT_EQ(1u, m_Table.GetPous().size());
    EXPECT_FALSE(m_Table.GetPous()[0]->AsProgram()->m_Automatic);
    EXPECT_EQ(0, m_Errors.GetErrorCount());
}

TEST_F(PouTableTest, RequiredWinsOverAutomatic)
{
    LoadPrograms("<PROGRAM name=\"p%d\" auto=\"1\" required=\"1\"/><PROGRAM name=\"other\"/>");
    m_Table.AddAutomaticPrograms();
    ASSERT_EQ(1, m_Errors.GetErrorCount());
    EXPECT_NE(std::string::npos, LastError().find("Program 'p%d' required")) << LastError();
    EXPECT_TRUE(m_Table.GetPous().empty());
}

TEST_F(PouTableTest, AutomaticProgramWithCapitalsIsADuplicateOfADeclaredOne)
{
    LoadPrograms("<PROGRAM name=\"Main\" auto=\"1\"/>");
    m_Table.AddPou(Make<CProgram>("Main"));
    EXPECT_EQ(std::vector<std::string>{"Main"}, m_Table.AddAutomaticPrograms());
    EXPECT_EQ(1, m_Errors.GetErrorCount());
    EXPECT_NE(std::string::npos, LastError().find("Main already declared")) << LastError();
    EXPECT_EQ(1u, m_Table.GetPous().size());
}

TEST_F(PouTableTest, RequiredProgramWithCapitalsCountsAsMissing)
{
    LoadPrograms("<PROGRAM name=\"Main\" required=\"1\"/>");
    m_Table.AddPou(Make<CProgram>("Main"));
    EXPECT_EQ(std::vector<std::string>{"Main"}, m_Table.AddAutomaticPrograms());
    EXPECT_EQ(1, m_Errors.GetErrorCount());
    EXPECT_NE(std::string::npos, LastError().find("Program 'Main' required")) << LastError();
}

TEST_F(PouTableTest, AutomaticProgramOfAFunctionsNameIsLeftOut)
{
    LoadPrograms("<PROGRAM name=\"f\" auto=\"1\"/>");
    AddFunction("f", {&m_Int});
    m_Table.AddAutomaticPrograms();
    EXPECT_EQ(0, m_Errors.GetErrorCount());
    EXPECT_FALSE(m_Table.FindPou("f")->IsProgram());
}

TEST_F(PouTableTest, ManyPousAndCallees)
{
    constexpr int count = 100000;
    CProgram caller("p", SourceLocation{});
    for (int i = 0; i < count; ++i) {
        const std::string name = "f" + std::to_string(i);
        ASSERT_EQ(1, AddFunction(name, {&m_Int}));
        caller.AddCallee(m_Table.FindPou(name));
    }
    EXPECT_EQ(static_cast<std::size_t>(count), m_Table.GetPous().size());
    EXPECT_EQ(static_cast<std::size_t>(count), caller.m_Callees.size());
    EXPECT_EQ("f99999", m_Table.GetPous().back()->m_Name);
}
