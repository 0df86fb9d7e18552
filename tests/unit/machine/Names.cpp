#include "unit/machine/MachineTest.h"

#include "files/FileSystem.h"
#include "machine/Retain.h"

#include <fstream>

#include <unistd.h>

static const std::string g_Globals =
    "<VARIABLE name=\"Count\" datatype=\"INT\" type=\"VAR_GLOBAL\" segment=\"4\" offset=\"2\" constant=\"False\"/>"
    "<VARIABLE name=\"p\" datatype=\"pair\" type=\"VAR_GLOBAL\" segment=\"4\" offset=\"10\" constant=\"False\"/>"
    "<VARIABLE name=\"m\" datatype=\"INT[1..2,0..2]\" displacement=\"[6,2]\" type=\"VAR_GLOBAL\" segment=\"4\" offset=\"20\" constant=\"False\"/>"
    "<VARIABLE name=\"bits\" datatype=\"BOOL[1..20]\" displacement=\"[1]\" type=\"VAR_GLOBAL\" segment=\"4\" offset=\"40\" bit=\"0\" constant=\"False\"/>"
    "<VARIABLE name=\"ps\" datatype=\"pair[0..1]\" displacement=\"[10]\" type=\"VAR_GLOBAL\" segment=\"4\" offset=\"44\" constant=\"False\"/>"
    "<VARIABLE name=\"k\" datatype=\"INT\" type=\"VAR_GLOBAL\" segment=\"4\" offset=\"-1\" constant=\"True\"/>"
    "<VARIABLE name=\"flag\" datatype=\"BOOL\" type=\"VAR_GLOBAL\" segment=\"4\" offset=\"4\" bit=\"6\" constant=\"False\"/>"
    "<VARIABLE name=\"kept\" datatype=\"pair\" type=\"VAR_GLOBAL_RETAIN\" segment=\"5\" offset=\"2\" constant=\"False\"/>";

static std::uint32_t Place(const CTestMachine& machine, const std::string& name)
{
    std::string error;
    const std::optional<NamedObject> object = machine.m_pNames->Find(name, error);
    EXPECT_TRUE(object) << error;
    std::uint32_t address = 0;
    if (object) { EXPECT_TRUE(machine.m_pNames->GetAddress(*machine.m_pMachine, *object, address, error)); }
    return address - machine.m_pImage->GetRegion(MemoryArea::Global, 0).begin;
}

TEST(MachineNames, GlobalsMembersAndElements)
{
    CTestMachine machine(MakeProgram(""), {}, MakeDebugText(g_Globals));
    constexpr std::uint32_t bit = 1u << g_AddressBits;
    EXPECT_EQ(Place(machine, "Count"), 2u);
    EXPECT_EQ(Place(machine, "COUNT"), 2u);
    EXPECT_EQ(Place(machine, "p.a"), 10u);
    EXPECT_EQ(Place(machine, "p.q"), 12u + 1 * bit);
    EXPECT_EQ(Place(machine, "p.z[1]"), 14u);
    EXPECT_EQ(Place(machine, "p.z[3]"), 18u);
    EXPECT_EQ(Place(machine, "m[1,0]"), 20u);
    EXPECT_EQ(Place(machine, "m[2, 1]"), 28u);
    EXPECT_EQ(Place(machine, "bits[1]"), 40u);
    EXPECT_EQ(Place(machine, "bits[20]"), 42u + 3 * bit);   // the twentieth: bit 3 of the third byte
    EXPECT_EQ(Place(machine, "ps[1].z[2]"), 60u);
    EXPECT_EQ(Place(machine, "flag"), 4u + 6 * bit);
}

TEST(MachineNames, WhatIsNoName)
{
    CTestMachine machine(MakeProgram("\tPUSH(INT)\t[local+4]\t;x\n\tPOP(INT)\n"), {}, MakeDebugText(g_Globals));
    const std::pair<const char*, const char*> wrong[] = {
        {"nope", "nope: there is no such global variable"},
        {"m[3,0]", "m[3,0]: the bounds are 1..2"},
        {"m[1]", "m[1]: takes 2 subscript(s) here"},
        {"m[1,2,3]", "m[1,2,3]: takes 2 subscript(s) here"},
        {"p.b", "p: has no member b"},
        {"Count.a", "Count: has no members"},
        {"Count[1]", "Count: is no array"},
        {"m[1", "m: cannot read \"[1\" behind it"},
        {"p", "p: is no single value but a structure"},
        {"m", "m: is no single value but an array"},
        {"k", "k: a constant that its value has replaced has no place in memory"},
        {"%IX0.0", "%IX0.0: an address needs the target description (-i)"},
        {"main.y", "main.y: the comments of the code of main name no such variable. A program's own variables are known by them alone"},
    };
    for (const auto& [name, reason] : wrong) EXPECT_EQ(machine.Read(name), std::string("error: ") + reason);
    EXPECT_EQ(machine.Read("main.x"), "0");
}

TEST(MachineNames, ElementsOfAProgramsOwnArrays)
{
    // x : ARRAY[1..5] OF INT at 12; the comments count from 0.
    CTestMachine machine(MakeProgram("\tPUSH(INT)\t55\n\tPUSH&(INT)[local+12]\t;&x[0]\n\tPUSH(INT)\t3\n\tADDRESS(INT) 2 1 5\n\tPOPI(INT)\n"
                                     "\tPUSH&(BOOL)[local+30].0\t;&b[0]\n\tPUSH(INT)\t3\n\tADDRESSBIT(INT) 1 0 9\n\tPUSHI(BOOL)\n\tPOP(BOOL)\n"));
    ASSERT_EQ(machine.Run(), RunStatus::Finished);
    EXPECT_EQ(machine.Read("main.x[2]"), "55");
    EXPECT_EQ(machine.Read("main.x[0]"), "0");
    EXPECT_EQ(machine.Read("main.x[4]"), "0");
    EXPECT_EQ(machine.Read("main.x[5]"), "error: main.x[5]: the array has the elements 0 to 4");
    EXPECT_EQ(machine.Read("main.b[9]"), "FALSE");
}

TEST(MachineNames, ValuesAreWrittenInTheirType)
{
    CTestMachine machine(MakeProgram(""), {}, MakeDebugText(g_Globals));
    std::string error;
    MachineValue value;
    EXPECT_TRUE(ParseValue("-32768", ValueKind::S16, value, error));
    EXPECT_FALSE(ParseValue("32768", ValueKind::S16, value, error));
    EXPECT_EQ(error, "32768 does not fit into 16 bits with sign");
    EXPECT_FALSE(ParseValue("-1", ValueKind::U8, value, error));
    EXPECT_EQ(error, "-1 does not fit into 8 bits without sign");
    EXPECT_TRUE(ParseValue("16#FF", ValueKind::U8, value, error));
    EXPECT_EQ(value.integer, 255);
    EXPECT_TRUE(ParseValue("2#101", ValueKind::S8, value, error));
    EXPECT_EQ(value.integer, 5);
    EXPECT_FALSE(ParseValue("12x", ValueKind::S32, value, error));
    EXPECT_FALSE(ParseValue("", ValueKind::S32, value, error));
    EXPECT_FALSE(ParseValue("2", ValueKind::Bool, value, error));
    EXPECT_TRUE(ParseValue("TRUE", ValueKind::Bool, value, error));
    EXPECT_TRUE(ParseValue("0.1", ValueKind::F32, value, error));
    EXPECT_EQ(ToText(value), "0.1");
    EXPECT_FALSE(ParseValue("1,5", ValueKind::F64, value, error));
    EXPECT_TRUE(ParseValue("18446744073709551615", ValueKind::U64, value, error));
    EXPECT_EQ(ToText(value), "18446744073709551615");
    const std::optional<NamedObject> flag = machine.m_pNames->Find("flag", error);
    ASSERT_TRUE(machine.m_pNames->Write(*machine.m_pMachine, *flag, {ValueKind::Bool, 1, 0}, error));
    EXPECT_EQ(machine.GetGlobal(4, ValueKind::U8).integer, 64);
}

class MachineRetain : public testing::Test
{
protected:
    void SetUp() override { m_File = testing::TempDir() + "norvane_retain_" + std::to_string(getpid()); }
    void TearDown() override { RemoveFile(m_File); }
    static void Set(CTestMachine& machine, const std::string& name, MachineValue value)
    {
        std::string error;
        const std::optional<NamedObject> object = machine.m_pNames->Find(name, error);
        ASSERT_TRUE(object) << error;
        ASSERT_TRUE(machine.m_pNames->Write(*machine.m_pMachine, *object, value, error)) << error;
    }
    std::string m_File;
};

TEST_F(MachineRetain, ValuesComeBack)
{
    std::string error;
    CTestMachine first(MakeProgram(""), {}, MakeDebugText(g_Globals));
    Set(first, "kept.a", {ValueKind::S16, -3, 0});
    Set(first, "kept.q", {ValueKind::Bool, 1, 0});
    Set(first, "kept.z[3]", {ValueKind::S16, 300, 0});
    ASSERT_TRUE(CRetainFile(*first.m_pImage, *first.m_pNames).Save(m_File, *first.m_pMachine, error)) << error;
    std::string text;
    ASSERT_TRUE(ReadWholeFile(m_File, text));
    EXPECT_EQ(text, "norvane retain 1\nkept.a\tINT\tretain+2\tFDFF\nkept.q\tBOOL\tretain+4.1\t01\n"
                    "kept.z[1]\tINT\tretain+6\t0000\nkept.z[2]\tINT\tretain+8\t0000\nkept.z[3]\tINT\tretain+10\t2C01\n");
    CTestMachine second(MakeProgram(""), {}, MakeDebugText(g_Globals));
    bool isFound = false;
    ASSERT_TRUE(CRetainFile(*second.m_pImage, *second.m_pNames).Load(m_File, false, *second.m_pMachine, isFound, error));
    EXPECT_TRUE(isFound);
    EXPECT_EQ(second.Read("kept.a"), "-3");
    EXPECT_EQ(second.Read("kept.q"), "TRUE");
    EXPECT_EQ(second.Read("kept.z[3]"), "300");
}

TEST_F(MachineRetain, AnotherLayoutIsRefusedOrCarriedOverByName)
{
    std::ofstream(m_File) << "norvane retain 1\nkept.a\tINT\tretain+4\t0700\nkept.q\tINT\tretain+4.1\t0100\nold\tINT\tretain+0\t0900\n"
                             "kept.z[1]\tINT\tretain+6\t0100\nkept.z[2]\tINT\tretain+8\t0200\n";
    std::string error;
    bool isFound = false;
    CTestMachine machine(MakeProgram(""), {}, MakeDebugText(g_Globals));
    const CRetainFile retain(*machine.m_pImage, *machine.m_pNames);
    EXPECT_FALSE(retain.Load(m_File, false, *machine.m_pMachine, isFound, error));
    EXPECT_EQ(error, m_File + ": the program's retained variables lie elsewhere than when it was written"
                              "\n  kept.a: moved from retain+4 to retain+2"
                              "\n  kept.q: was INT and is BOOL"
                              "\n  kept.z[3]: is new"
                              "\n  old: is gone");
    EXPECT_EQ(machine.Read("kept.a"), "0");
    EXPECT_TRUE(retain.Load(m_File, true, *machine.m_pMachine, isFound, error));
    EXPECT_EQ(machine.Read("kept.a"), "7");
    EXPECT_EQ(machine.Read("kept.q"), "FALSE");
    EXPECT_EQ(machine.Read("kept.z[2]"), "2");
    std::ofstream(m_File) << "something else\n";
    EXPECT_FALSE(retain.Load(m_File, true, *machine.m_pMachine, isFound, error));
    RemoveFile(m_File);
    EXPECT_TRUE(retain.Load(m_File, false, *machine.m_pMachine, isFound, error));
    EXPECT_FALSE(isFound);
}
