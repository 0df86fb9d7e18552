#include "CompileText.h"

#include "files/FileSystem.h"
#include "files/TemporaryDirectory.h"
#include "model/Pou.h"
#include "model/TypeArray.h"
#include "model/TypeStruct.h"
#include "model/Variable.h"

#include <gtest/gtest.h>

#include <filesystem>

// ---- Checksums: CRC-16/MODBUS, whose published check value is 4B37.

TEST(ComputeSign, KnownValues)
{
    EXPECT_EQ(CCodeGeneration::ComputeSign("123456789"), 0x4B37);
    EXPECT_EQ(CCodeGeneration::ComputeSign(std::string_view("\0", 1)), 0x40BF);
    EXPECT_EQ(CCodeGeneration::ComputeSign(""), 65535);
}

TEST(ComputeSign, BytesAreUnsigned)
{
    // FF meets the start value FFFF: the index is 0, so the high byte is all that stays.
    EXPECT_EQ(CCodeGeneration::ComputeSign("\xFF"), 0x00FF);
}

// ---- Displacement texts.

TEST(MakeDisplacement, TheOutermostSizeNeverMultipliesIn)
{
    EXPECT_EQ(CCodeGeneration::MakeDisplacement("INT[0..9,1..2][5..6]", 2), "[8,4][2]");
    EXPECT_EQ(CCodeGeneration::MakeDisplacement("INT[0..9]", 2), "[2]");
    EXPECT_EQ(CCodeGeneration::MakeDisplacement("DINT[1..2,1..3,1..4]", 4), "[48,16,4]");
    EXPECT_EQ(CCodeGeneration::MakeDisplacement("BOOL[0..1][0..2]", 1), "[3][1]");
    EXPECT_EQ(CCodeGeneration::MakeDisplacement("INT[0..1][0..2,0..4]", 2), "[30][10,2]");
}

TEST(MakeDisplacement, BoundsMayBeNegative)
{
    EXPECT_EQ(CCodeGeneration::MakeDisplacement("INT[0..9,-5..5]", 2), "[22,2]");
    EXPECT_EQ(CCodeGeneration::MakeDisplacement("INT[0..9,-5..-4]", 2), "[4,2]");
}

TEST(MakeDisplacement, WithoutBracketsTheSizeStandsAlone)
{
    EXPECT_EQ(CCodeGeneration::MakeDisplacement("INT", 2), "[2]");
    EXPECT_EQ(CCodeGeneration::MakeDisplacement("", 0), "[0]");
}

TEST(MakeDisplacement, ManyLevelsCostNoMoreThanTheirText)
{
    constexpr int levels = 100000;
    std::string type = "INT", expected = "[";
    for (int i = 0; i < levels; ++i) {
        type += "[0..0]";
        expected += i == 0 ? "2" : "][2";
    }
    EXPECT_EQ(CCodeGeneration::MakeDisplacement(type, 2), expected + "]");
}

// ---- The file.

namespace
{

constexpr std::string_view g_SmallTarget = R"(<T><COMPILER><TARGET>
<IEC AllowedDataTypes="BOOL,INT" PointerType="INT"/>
<COMPILER><DATAFORMAT><DATATYPE name="BOOL" size="1" align="1"/><DATATYPE name="INT" size="16" align="2"/></DATAFORMAT></COMPILER>
<VM><AREA name="GLOBAL" size="100" code="4"/><AREA name="RETAIN" size="100" code="5"/><AREA name="ABSOLUTE" code="7"/>
<PROGRAM name="main" id="9"/></VM></TARGET></COMPILER></T>)";

// Entries by hand, with places that no allocator gave them: what is tested is what the file says of them.
class DebugInformation : public testing::Test
{
protected:
    DebugInformation()
    {
        LoadTarget(m_Norvane, g_SmallTarget);
        m_pInt = m_Norvane.m_DataTypes.FindType("INT");
        m_pBool = m_Norvane.m_DataTypes.FindType("BOOL");
    }

    CVariable& Add(std::unique_ptr<CVariable> pVariable, const std::string& name, CType* pType, int offset, int bit)
    {
        CVariable& variable = *pVariable;
        variable.m_Name = name;
        variable.m_Type = pType;
        variable.m_Offset = offset;
        variable.m_BitOffset = bit;
        variable.m_IsLocal = false;
        m_Norvane.m_GlobalSymbols.Add(std::move(pVariable));
        return variable;
    }
    CVariable& Add(const std::string& name, CType* pType, int offset, int bit)
    {
        return Add(std::make_unique<CVariable>(), name, pType, offset, bit);
    }
    void AddArray(const std::string& name, CType* pType, std::unique_ptr<CArrayOfArrayIndex> pIndex, int offset)
    {
        auto pVariable = std::make_unique<CVariableArray>();
        pVariable->m_Index = std::move(pIndex);
        Add(std::move(pVariable), name, pType, offset, -1);
    }

    using Levels = std::vector<std::vector<CIndex>>;
    static std::unique_ptr<CArrayOfArrayIndex> MakeIndex(const Levels& levels)
    {
        auto pIndex = std::make_unique<CArrayOfArrayIndex>();
        for (const std::vector<CIndex>& dimensions : levels) {
            auto pLevel = std::make_unique<CArrayIndex>();
            pLevel->m_Dimensions = dimensions;
            pIndex->Add(std::move(pLevel));
        }
        return pIndex;
    }

    CTypeArray* AddArrayType(const std::string& name, CType* pElement, int stride)
    {
        auto pType = std::make_unique<CTypeArray>(name, pElement);
        pType->m_Stride = stride;
        return static_cast<CTypeArray*>(m_Norvane.m_DataTypes.AddType(std::move(pType)));
    }

    std::string Write()
    {
        EXPECT_TRUE(m_Norvane.m_Code.WriteDebugInformation(m_Directory.Name("out.asm")));
        return m_Directory.Read("out.dbi");
    }

    // One element of the file with its children, as one line.
    static std::string Part(const std::string& text, const std::string& begin, const std::string& end)
    {
        const std::size_t first = text.find(begin);
        const std::size_t last = text.find(end, first);
        if (first == std::string::npos || last == std::string::npos) return "not found in " + text;
        std::string part;
        for (const char c : text.substr(first, last + end.size() - first))
            if (c != '\r' && c != '\n' && c != '\t') part.push_back(c);
        return part;
    }

    CNorvane m_Norvane;
    TemporaryDirectory m_Directory;
    CType* m_pInt = nullptr;
    CType* m_pBool = nullptr;
};

}   // namespace

TEST_F(DebugInformation, AnEmptyCompilation)
{
    // CRC of nothing is 65535. The elementary types that the target allows follow their order of creation.
    m_Norvane.m_CompileStamp = 1700000000;
    EXPECT_EQ(Write(), "<DBI>\r\n"
                       "\t<INFO>\r\n"
                       "\t\t<PROGRAM name=\"default\" version=\"0\" filetime=\"1700000000\"/>\r\n"
                       "\t\t<SIGN globalsign=\"65535\" retainsign=\"65535\" dbisign=\"65535\"/>\r\n"
                       "\t</INFO>\r\n"
                       "\t<POU_LIST/>\r\n"
                       "\t<CALLTREE/>\r\n"
                       "\t<RETURNSTACK maxsize=\"2048\" size=\"1024\" maxdepth=\"0\" maxnesteddepth=\"0\"/>\r\n"
                       "\t<PARAMETERSTACK maxsize=\"512\" size=\"256\"/>\r\n"
                       "\t<GLOBAL/>\r\n"
                       "\t<AREAS globalused=\"0\" retainused=\"0\" globalsign=\"65535\" retainsign=\"65535\" dbisign=\"65535\"/>\r\n"
                       "\t<DATATYPE>\r\n"
                       "\t\t<TYPE name=\"INT\" datatype=\"INT\" align=\"2\" size=\"16\"/>\r\n"
                       "\t\t<TYPE name=\"BOOL\" datatype=\"BOOL\" align=\"1\" size=\"1\"/>\r\n"
                       "\t</DATATYPE>\r\n"
                       "</DBI>");
}

TEST_F(DebugInformation, SourcesAndProgram)
{
    m_Norvane.m_SourceFiles = {"a & b.st", "c.st"};
    m_Norvane.m_ProgramName = "plant";
    m_Norvane.m_ProgramVersion = 7;
    m_Norvane.m_CompileStamp = -1;
    EXPECT_EQ(Part(Write(), "<INFO>", "<SIGN"), "<INFO><SOURCEFILE>a &amp; b.st</SOURCEFILE><SOURCEFILE>c.st</SOURCEFILE>"
                                                "<PROGRAM name=\"plant\" version=\"7\" filetime=\"-1\"/><SIGN");
}

TEST_F(DebugInformation, PousKnowWhetherTheyAreUsed)
{
    auto pFunction = std::make_unique<CFunction>("Used", SourceLocation());
    auto pBlock = std::make_unique<CFunctionBlock>("idle", SourceLocation());
    auto pMain = std::make_unique<CProgram>("main", SourceLocation());
    pFunction->m_LocalSize = 6;
    pMain->m_Id = 9;
    pMain->AddCallee(pFunction.get());
    m_Norvane.m_Pous.AddPou(std::move(pFunction));
    m_Norvane.m_Pous.AddPou(std::move(pBlock));
    m_Norvane.m_Pous.AddPou(std::move(pMain));
    const std::string text = Write();
    const std::size_t program = text.find("type=\"PROGRAM\"");
    ASSERT_NE(program, std::string::npos);
    const std::string list = Part(text, "<POU_LIST>", "</POU_LIST>");
    EXPECT_EQ(list.substr(0, list.find("<POU name=\"main\"")),
              "<POU_LIST><POU name=\"Used\" type=\"FUNCTION\" localsize=\"6\" used=\"True\"/>"
              "<POU name=\"idle\" type=\"FUNCTION_BLOCK\" localsize=\"0\" used=\"False\"/>");
    EXPECT_NE(list.find("<POU name=\"main\" type=\"PROGRAM\" id=\"9\" localsize=\"0\" used=\"False\"/>"), std::string::npos);
}

TEST_F(DebugInformation, EachKindOfGlobal)
{
    CTypeArray* pIntArray = AddArrayType("INT[]", m_pInt, 2);
    CTypeArray* pNested = AddArrayType("INT[][2dim]", pIntArray, -1);
    CTypeArray* pBoolArray = AddArrayType("BOOL[]", m_pBool, 0);
    CTypeArray* pBoolNested = AddArrayType("BOOL[][]", pBoolArray, 0);
    CType odd("odd(2)");

    Add("count", m_pInt, 0, 0);
    Add("go", m_pBool, 2, 3);
    AddArray("table", pNested, MakeIndex({{{0, 9}, {1, 2}}, {{5, 6}}}), 4);
    AddArray("flags", pBoolArray, MakeIndex({{{0, 7}}}), 84);
    AddArray("rows", pBoolNested, MakeIndex({{{0, 1}}, {{0, 3}}}), 85);
    Add("limit", m_pInt, -1, -1).m_IsConstant = true;
    CVariable& kept = Add("kept", m_pInt, 8, 0);
    kept.m_IsRetain = true;
    kept.m_DirectAddress = "MW8";
    Add("sensor", m_pBool, 1001, 4).m_DirectAddress = "IX1.4";
    Add("strange", &odd, 90, -1);
    Add("lost", nullptr, 91, -1);
    Add("bare", pIntArray, 92, -1);   // an array type without bounds: no levels
    m_Norvane.m_Memory.m_GlobalBytes = 94;
    m_Norvane.m_Memory.m_RetainBytes = 10;

    const std::string text = Write();
    EXPECT_EQ(Part(text, "<GLOBAL>", "</GLOBAL>"),
              "<GLOBAL>"
              "<VARIABLE name=\"count\" datatype=\"INT\" type=\"VAR_GLOBAL\" segment=\"4\" offset=\"0\" constant=\"False\"/>"
              "<VARIABLE name=\"go\" datatype=\"BOOL\" type=\"VAR_GLOBAL\" segment=\"4\" offset=\"2\" bit=\"3\" constant=\"False\"/>"
              "<VARIABLE name=\"table\" datatype=\"INT[0..9,1..2][5..6]\" displacement=\"[8,4][2]\" type=\"VAR_GLOBAL\" segment=\"4\""
              " offset=\"4\" constant=\"False\"/>"
              "<VARIABLE name=\"flags\" datatype=\"BOOL[0..7]\" displacement=\"[1]\" type=\"VAR_GLOBAL\" segment=\"4\" offset=\"84\""
              " bit=\"0\" constant=\"False\"/>"
              "<VARIABLE name=\"rows\" datatype=\"BOOL[0..1][0..3]\" displacement=\"[4][1]\" type=\"VAR_GLOBAL\" segment=\"4\""
              " offset=\"85\" constant=\"False\"/>"
              "<VARIABLE name=\"limit\" datatype=\"INT\" type=\"VAR_GLOBAL\" segment=\"4\" offset=\"-1\" constant=\"True\"/>"
              "<VARIABLE name=\"kept\" datatype=\"INT\" type=\"VAR_GLOBAL_RETAIN\" segment=\"5\" offset=\"8\" constant=\"False\"/>"
              "<VARIABLE name=\"sensor\" datatype=\"BOOL\" type=\"VAR_GLOBAL\" segment=\"7\" offset=\"1001\" bit=\"4\" constant=\"False\"/>"
              "<VARIABLE name=\"strange\" datatype=\"odd2\" type=\"VAR_GLOBAL\" segment=\"4\" offset=\"90\" constant=\"False\"/>"
              "<VARIABLE name=\"lost\" datatype=\"ERROR\" type=\"VAR_GLOBAL\" segment=\"4\" offset=\"91\" constant=\"False\"/>"
              "<VARIABLE name=\"bare\" datatype=\"INT\" type=\"VAR_GLOBAL\" segment=\"4\" offset=\"92\" constant=\"False\"/>"
              "</GLOBAL>");

    const std::uint16_t global = CCodeGeneration::ComputeSign(
        "(count,INT,0,0)(go,BOOL,2,3)(table,INT[0..9,1..2][5..6],4,-1)(flags,BOOL[0..7],84,-1)(rows,BOOL[0..1][0..3],85,-1)"
        "(limit,INT,-1,-1)(kept,INT,8,0)(sensor,BOOL,1001,4)(strange,odd2,90,-1)(lost,ERROR,91,-1)(bare,INT,92,-1)");
    const std::uint16_t retain = CCodeGeneration::ComputeSign("(kept,INT,8,0)");
    const std::string signs = "globalsign=\"" + std::to_string(global) + "\" retainsign=\"" + std::to_string(retain) +
                              "\" dbisign=\"" + std::to_string(global) + "\"/>";
    EXPECT_EQ(Part(text, "<AREAS", "/>"), "<AREAS globalused=\"94\" retainused=\"10\" " + signs);
    EXPECT_EQ(Part(text, "<SIGN", "/>"), "<SIGN " + signs);
}

TEST_F(DebugInformation, EachKindOfType)
{
    CTypeArray* pIntArray = AddArrayType("INT[]", m_pInt, 2);
    CTypeArray* pBoolArray = AddArrayType("BOOL[]", m_pBool, 0);
    CType* pMyInt = m_Norvane.m_DataTypes.AddAlias("myint", m_pInt, nullptr);

    auto pStruct = std::make_unique<CTypeStruct>("pair");
    const auto addMember = [&pStruct](const char* name, CType* pType, int offset) {
        auto pMember = std::make_unique<CMember>(name, pType);
        pMember->m_Offset = offset;
        CMember* pAdded = pMember.get();
        pStruct->AddMember(std::move(pMember));
        return pAdded;
    };
    addMember("A", m_pBool, 0);
    addMember("b", m_pBool, 0);
    addMember("c", pMyInt, 2);
    addMember("d", pIntArray, 4)->m_Index = MakeIndex({{{1, 3}}});
    addMember("e", pBoolArray, 10)->m_Index = MakeIndex({{{0, 7}}});
    CType* pPair = m_Norvane.m_DataTypes.AddType(std::move(pStruct));
    m_Norvane.m_DataTypes.AddAlias("couple", pPair, nullptr);

    auto pBlock = std::make_unique<CTypeStructFB>("block");
    const auto addFbMember = [&pBlock](const char* name, CType* pType) {
        auto pMember = std::make_unique<CMemberFB>(name, pType);
        CMemberFB* pAdded = pMember.get();
        pBlock->AddMember(std::move(pMember));
        return pAdded;
    };
    addFbMember("p", m_pBool)->m_IsInput = true;
    addFbMember("q", m_pInt)->m_IsOutput = true;
    addFbMember("r", m_pInt)->m_IsInOut = true;
    addFbMember("s", pPair);
    m_Norvane.m_DataTypes.AddType(std::move(pBlock));

    // An alias of a structure shows the members, too.
    const std::string members = "<MEMBER name=\"A\" datatype=\"BOOL\" offset=\"0\" bit=\"0\"/>"
                                "<MEMBER name=\"b\" datatype=\"BOOL\" offset=\"0\" bit=\"1\"/>"
                                "<MEMBER name=\"c\" datatype=\"INT\" offset=\"2\"/>"
                                "<MEMBER name=\"d\" datatype=\"INT[1..3]\" offset=\"4\" displacement=\"[2]\"/>"
                                "<MEMBER name=\"e\" datatype=\"BOOL[0..7]\" offset=\"10\" displacement=\"[1]\" bit=\"0\"/>"
                                "</TYPE>";
    EXPECT_EQ(Part(Write(), "<DATATYPE>", "</DATATYPE>"),
              "<DATATYPE>"
              "<TYPE name=\"INT\" datatype=\"INT\" align=\"2\" size=\"16\"/>"
              "<TYPE name=\"BOOL\" datatype=\"BOOL\" align=\"1\" size=\"1\"/>"
              "<TYPE name=\"INT[]\" datatype=\"INT[]\" align=\"-1\" size=\"-1\"/>"
              "<TYPE name=\"BOOL[]\" datatype=\"BOOL[]\" align=\"-1\" size=\"-1\"/>"
              "<TYPE name=\"myint\" datatype=\"INT\" align=\"2\" size=\"16\"/>"
              "<TYPE name=\"pair\" type=\"STRUCT\">" + members +
              "<TYPE name=\"couple\" type=\"STRUCT\">" + members +
              "<TYPE name=\"block\" type=\"FUNCTION_BLOCK\">"
              "<MEMBER name=\"p\" datatype=\"BOOL\" offset=\"-1\" bit=\"0\" class=\"Input\"/>"
              "<MEMBER name=\"q\" datatype=\"INT\" offset=\"-1\" class=\"Output\"/>"
              "<MEMBER name=\"r\" datatype=\"INT\" offset=\"-1\" class=\"InOut\"/>"
              "<MEMBER name=\"s\" datatype=\"pair\" offset=\"-1\"/>"
              "</TYPE></DATATYPE>");
}

TEST_F(DebugInformation, TheNameIsThatOfTheOutput)
{
    const std::filesystem::path before = std::filesystem::current_path();
    std::filesystem::current_path(m_Directory.Path());
    const std::pair<const char*, const char*> names[] = {
        {"a.asm", "a.dbi"}, {"b", "b.dbi"}, {"c.asm.txt", "c.dbi"}, {"d.asm.asm", "d.asm.asm.dbi"}, {".asm", ".asm.dbi"},
        {"e.ASM", "e.ASM.dbi"}, {"f.asm.asmx", "f.asm.asmx.dbi"},
    };
    for (const auto& [output, expected] : names) {
        EXPECT_TRUE(m_Norvane.m_Code.WriteDebugInformation(output));
        EXPECT_TRUE(FileExists(expected)) << expected;
        RemoveFile(expected);
    }
    EXPECT_EQ(m_Directory.CountEntries(), 0);
    std::filesystem::current_path(before);
}

TEST_F(DebugInformation, AFileThatCannotBeWrittenIsTold)
{
    EXPECT_FALSE(m_Norvane.m_Code.WriteDebugInformation(m_Directory.Name("none/a.asm")));
    EXPECT_EQ(m_Norvane.m_Errors.GetErrorCount(), 0);
}
