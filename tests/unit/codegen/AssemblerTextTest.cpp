#include "CompileText.h"
#include "files/TemporaryDirectory.h"

#include "frontend/Node.h"
#include "model/TypeArray.h"
#include "model/TypeString.h"
#include "model/TypeStruct.h"
#include "model/Variable.h"

class AssemblerTextTest : public testing::Test
{
protected:
    AssemblerTextTest()
    {
        LoadTarget(norvane);
    }

    std::string Suffix(const CType* pType) const { return norvane.m_Code.GetTypeSuffix(pType); }

    // What the action writes to the output.
    template <typename Action>
    std::string Written(Action action)
    {
        const TemporaryDirectory directory;   // tests run side by side
        const std::string path = directory.Name("written.asm");
        OutputTextFile output;
        EXPECT_TRUE(output.Open(path));
        norvane.m_Code.m_Output = &output;
        action();
        norvane.m_Code.m_Output = nullptr;
        EXPECT_TRUE(output.Close());
        return directory.Read("written.asm");
    }

    static void Place(CVariable& variable, CType* pType, int offsetBytes, int bit)
    {
        variable.m_Name = "count";
        variable.m_Type = pType;
        variable.m_Offset = offsetBytes;
        variable.m_BitOffset = bit;
    }

    CNorvane norvane;
};

TEST_F(AssemblerTextTest, SuffixIsTheName)
{
    EXPECT_EQ(Suffix(norvane.m_DataTypes.FindType("INT")), "(INT)");
    EXPECT_EQ(Suffix(norvane.m_DataTypes.FindType("BOOL")), "(BOOL)");
}

TEST_F(AssemblerTextTest, SuffixOfAnAliasIsItsOwnName)
{
    CType alias("MYINT", norvane.m_DataTypes.FindType("INT"));
    EXPECT_EQ(Suffix(&alias), "(MYINT)");
}

TEST_F(AssemblerTextTest, AggregatesAndTheirAliasesHaveThePointersSuffix)
{
    CTypeStruct structure("point");
    CTypeStructFB block("counter");
    CTypeArray array("list", norvane.m_DataTypes.FindType("INT"));
    CType alias("place", &structure);
    EXPECT_EQ(Suffix(&structure), "(DWORD)");
    EXPECT_EQ(Suffix(&block), "(DWORD)");
    EXPECT_EQ(Suffix(&array), "(DWORD)");
    EXPECT_EQ(Suffix(&alias), "(DWORD)");
}

TEST_F(AssemblerTextTest, AStringKeepsItsName)
{
    EXPECT_EQ(Suffix(norvane.m_DataTypes.m_StringType), "(STRING)");
}

TEST_F(AssemblerTextTest, NoTypeCountsAsTheErrorType)
{
    EXPECT_EQ(Suffix(nullptr), "(ERROR)");
}

TEST_F(AssemblerTextTest, PointerSuffixIsThatOfTheTarget)
{
    EXPECT_EQ(norvane.m_Code.GetPointerSuffix(), "(DWORD)");
    norvane.m_Code.m_PointerType = norvane.m_DataTypes.FindType("UDINT");
    EXPECT_EQ(norvane.m_Code.GetPointerSuffix(), "(UDINT)");
}

TEST_F(AssemblerTextTest, AreaPrefix)
{
    CVariable variable;
    EXPECT_EQ(norvane.m_Code.GetAreaPrefix(&variable), "local+");
    variable.m_IsLocal = false;
    EXPECT_EQ(norvane.m_Code.GetAreaPrefix(&variable), "global+");
    variable.m_IsRetain = true;
    EXPECT_EQ(norvane.m_Code.GetAreaPrefix(&variable), "retain+");
    variable.m_IsLocal = true;
    EXPECT_EQ(norvane.m_Code.GetAreaPrefix(&variable), "retain+");
    variable.m_DirectAddress = "MW2";
    EXPECT_EQ(norvane.m_Code.GetAreaPrefix(&variable), "");
}

TEST_F(AssemblerTextTest, VarBlockNameInTheOrderOfTests)
{
    CVariable variable;
    EXPECT_EQ(norvane.m_Code.GetVarBlockName(&variable), "VAR");
    variable.m_IsInput = true;
    EXPECT_EQ(norvane.m_Code.GetVarBlockName(&variable), "VAR_INPUT");
    variable.m_IsOutput = true;
    EXPECT_EQ(norvane.m_Code.GetVarBlockName(&variable), "VAR_OUTPUT");
    variable.m_IsInOut = true;
    EXPECT_EQ(norvane.m_Code.GetVarBlockName(&variable), "VAR_IN_OUT");
    variable.m_IsLocal = false;
    EXPECT_EQ(norvane.m_Code.GetVarBlockName(&variable), "VAR_GLOBAL");
}

TEST_F(AssemblerTextTest, VariableOperand)
{
    CVariable variable;
    Place(variable, norvane.m_DataTypes.FindType("INT"), 4, 0);
    EXPECT_EQ(norvane.m_Code.GetVariableOperand(&variable), "(INT) [local+4] ; count");
    variable.m_DirectAddress = "MW2";
    variable.m_Offset = 1024;
    EXPECT_EQ(norvane.m_Code.GetVariableOperand(&variable), "(INT) [1024] ; count");
}

TEST_F(AssemblerTextTest, VariableOperandOfABoolHasItsBit)
{
    CVariable variable;
    Place(variable, norvane.m_DataTypes.FindType("BOOL"), 0, 3);
    variable.m_IsLocal = false;
    EXPECT_EQ(norvane.m_Code.GetVariableOperand(&variable), "(BOOL) [global+0].3 ; count");
    variable.m_BitOffset = 0;
    EXPECT_EQ(norvane.m_Code.GetVariableOperand(&variable), "(BOOL) [global+0].0 ; count");
}

TEST_F(AssemblerTextTest, VariableOperandOfAnAggregate)
{
    CTypeStruct structure("point");
    CVariable variable;
    Place(variable, &structure, 12, -1);
    EXPECT_EQ(norvane.m_Code.GetVariableOperand(&variable), "(DWORD) [local+12] ; count");
}

TEST_F(AssemblerTextTest, PackedOffset)
{
    EXPECT_EQ(CCodeGeneration::GetPackedOffset(5, 3), "50331653\t;0x03000005");
    EXPECT_EQ(CCodeGeneration::GetPackedOffset(0, 7), "117440512\t;0x07000000");
    EXPECT_EQ(CCodeGeneration::GetPackedOffset(5, 0), "5");
    EXPECT_EQ(CCodeGeneration::GetPackedOffset(0, 0), "0");
}

TEST_F(AssemblerTextTest, CommentedOffsetHasItsCommentForBitZeroToo)
{
    EXPECT_EQ(CCodeGeneration::GetCommentedOffset(5, 0), "5\t;0x00000005");
    EXPECT_EQ(CCodeGeneration::GetCommentedOffset(5, 3), "50331653\t;0x03000005");
}

TEST_F(AssemblerTextTest, Writers)
{
    EXPECT_EQ(Written([this] { norvane.m_Code.WriteText("a"); }), "a");
    EXPECT_EQ(Written([this] { norvane.m_Code.WriteLine("a"); }), "a\n");
    EXPECT_EQ(Written([this] { norvane.m_Code.WriteTabLine("a"); }), "\ta\n");
    EXPECT_EQ(Written([this] { norvane.m_Code.WriteTabLine(""); }), "\t\n");
}

TEST_F(AssemblerTextTest, Header)
{
    EXPECT_EQ(Written([this] { norvane.m_Code.WriteHeader("main.st", "-2147483648", "7", "1"); }),
              "\n"
              "DBI FILENAME main.st\n"
              "DBI FILETIME -2147483648\n"
              "DBI FILEVERSION 7\n"
              "DBI COMPILERBUILDNUMBER 1\n");
}

TEST_F(AssemblerTextTest, HeaderCutsTheNameBehindItsLastBackslash)
{
    const std::string rest = "\nDBI FILETIME 1\nDBI FILEVERSION 2\nDBI COMPILERBUILDNUMBER 3\n";
    const auto header = [this](std::string_view name) {
        return Written([this, name] { norvane.m_Code.WriteHeader(name, "1", "2", "3"); });
    };
    EXPECT_EQ(header("c:\\plant\\main.st"), "\nDBI FILENAME main.st" + rest);
    EXPECT_EQ(header("\\main.st"), "\nDBI FILENAME \\main.st" + rest) << "not at the very start";
    EXPECT_EQ(header("plant/main.st"), "\nDBI FILENAME plant/main.st" + rest);
}
