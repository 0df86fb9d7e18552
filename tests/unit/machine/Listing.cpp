// Every form that the compiler writes is read; anything else is refused with its line.

#include "unit/machine/MachineTest.h"

struct Form
{
    const char* text;
    Mnemonic mnemonic;
};

static const Form g_Forms[] = {
    {"\tPUSH(INT)\t-12", Mnemonic::Push},
    {"\tPUSH(REAL)\t1.500000", Mnemonic::Push},
    {"\tPUSH(BOOL)\t0", Mnemonic::Push},
    {"\tPUSH(BOOL)\t1", Mnemonic::Push},
    {"\tPUSH 97 ;a", Mnemonic::Push},
    {"\tPUSH97 ;a", Mnemonic::Push},
    {"\tPUSH-23 ;x", Mnemonic::Push},
    {"\tPUSH59 ;;", Mnemonic::Push},
    {"\tPUSH\t(INT)\t5", Mnemonic::Push},
    {"\tPUSH(INT) \t5", Mnemonic::Push},
    {"\tPUSH(SINT)\t97\t\t;a", Mnemonic::Push},
    {"\tPUSH (INT) 1234 ", Mnemonic::Push},
    {"\tPUSH(UDINT)\t50331653\t;0x03000005", Mnemonic::Push},
    {"\tPUSH(INT)\t[local+12]\t;x", Mnemonic::PushMemory},
    {"\tPUSH(BOOL)\t[1024].3\t;x", Mnemonic::PushMemory},
    {"\tPUSH (INT) [local+2] ; __ProgramInit", Mnemonic::PushMemory},
    {"\tPUSH\t(INT) [local+0] ; f", Mnemonic::PushMemory},
    {"\tPUSH(BOOL) [global+4].1\t; b.q", Mnemonic::PushMemory},
    {"\tPUSH&(UDINT)\t[retain+8]\t;s", Mnemonic::PushAddress},
    {"\tPUSH&(INT)[local+12]\t;&x[0]", Mnemonic::PushAddress},
    {"\tPUSH&(BOOL)[local+12].0\t;&x[0]", Mnemonic::PushAddress},
    {"\tPUSH&(INT) [local+4] ; p", Mnemonic::PushAddress},
    {"\tPUSH*(INT)\t[local+4]\t;p", Mnemonic::PushThrough},
    {"\tPUSH*(INT) [local+8]\t;x", Mnemonic::PushThrough},
    {"\tPUSHI(INT)", Mnemonic::PushIndirect},
    {"\tPOP(INT)\t[global+4]\t;x", Mnemonic::PopMemory},
    {"\tPOP(INT) [local+4] ; x", Mnemonic::PopMemory},
    {"\tPOP\t(INT) [global+0] ; x", Mnemonic::PopMemory},
    {"\tPOP(INT) \t[global+4].0;s.b", Mnemonic::PopMemory},
    {"\tPOP(SINT)\t[global+4]", Mnemonic::PopMemory},
    {"\tPOP(UDINT)[local+4]\t;x", Mnemonic::PopMemory},
    {"\tPOP (INT) [local+2] ; __ProgramInit", Mnemonic::PopMemory},
    {"\tPOP(INT)", Mnemonic::Drop},
    {"\tPOP(UDINT)\n", Mnemonic::Drop},
    {"\tPOP*(INT)\t[local+4]\t;p", Mnemonic::PopThrough},
    {"\tPOP*(INT) [local+8]\t;x", Mnemonic::PopThrough},
    {"\tPOP&(UDINT)\t[global+36]\t;b.io", Mnemonic::PopAddress},
    {"\tPOPI(INT)", Mnemonic::PopIndirect},
    {"\tCMP EQ(STRING)", Mnemonic::CmpEq},
    {"\tDUP(BOOL)", Mnemonic::Dup},
    {"\tMEMCPY\t12", Mnemonic::Memcpy},
    {"\tMEMCPY 12", Mnemonic::Memcpy},
    {"\tADD(INT)", Mnemonic::Add},
    {"\tADD(myint)", Mnemonic::Add},
    {"\tSUB(INT)", Mnemonic::Sub},
    {"\tMUL(INT)", Mnemonic::Mul},
    {"\tDIV(INT)", Mnemonic::Div},
    {"\tMOD(INT)", Mnemonic::Mod},
    {"\tAND(WORD)", Mnemonic::And},
    {"\tOR(WORD)", Mnemonic::Or},
    {"\tXOR(WORD)", Mnemonic::Xor},
    {"\tMIN(INT)", Mnemonic::Min},
    {"\tMAX(INT)", Mnemonic::Max},
    {"\tPOW(INT)", Mnemonic::Pow},
    {"\tPOWR(REAL)", Mnemonic::Powr},
    {"\tMULDIV(INT)", Mnemonic::MulDiv},
    {"\tSHL(WORD)", Mnemonic::Shl},
    {"\tSHR(WORD)", Mnemonic::Shr},
    {"\tROL(WORD)", Mnemonic::Rol},
    {"\tROR(WORD)", Mnemonic::Ror},
    {"\tNEG(INT)", Mnemonic::Neg},
    {"\tABS(INT)", Mnemonic::Abs},
    {"\tSQRT(REAL)", Mnemonic::Sqrt},
    {"\tNOT(BOOL)", Mnemonic::Not},
    {"\tCMP EQ(INT)", Mnemonic::CmpEq},
    {"\tCMP NE(INT)", Mnemonic::CmpNe},
    {"\tCMP LT(INT)", Mnemonic::CmpLt},
    {"\tCMP LE(INT)", Mnemonic::CmpLe},
    {"\tCMP GT(INT)", Mnemonic::CmpGt},
    {"\tCMP GE(INT)", Mnemonic::CmpGe},
    {"\tTO_REAL (INT)", Mnemonic::Convert},
    {"\tTO_DATE_AND_TIME (TIME_OF_DAY)", Mnemonic::Convert},
    {"\tTO_INT(SINT)", Mnemonic::Convert},
    {"\tJMP LABEL0001", Mnemonic::Jmp},
    {"\tJMP ", Mnemonic::Jmp},
    {"\tJC LABEL0001", Mnemonic::Jc},
    {"\tJNC LABEL0001", Mnemonic::Jnc},
    {"\tJSR FUNCTION_f__1", Mnemonic::Jsr},
    {"\tRTS", Mnemonic::Rts},
    {"\tCASE (INT) 3 LABEL0003", Mnemonic::Case},
    {"\tCASER (INT) -1  5 LABEL0003", Mnemonic::CaseRange},
    {"\tSYS 12", Mnemonic::Sys},
    {"\tADDRESS(INT) 2 1 5", Mnemonic::Address},
    {"\tADDRESSBIT(INT) 1 -3 5", Mnemonic::AddressBit},
    {"\tLOCALDATA 12", Mnemonic::LocalData},
    {"\tLOCALSET 1 ; 4 bytes size", Mnemonic::LocalSet},
    {"\tLOCALSET 1 ; 4 bytes used", Mnemonic::LocalSet},
    {"\tNOP ; begin", Mnemonic::Nop},
};

class MachineListing : public testing::Test
{
protected:
    void SetUp() override
    {
        std::string error;
        ASSERT_TRUE(m_DebugInfo.Read(MakeDebugText(), "a.dbi", error)) << error;
    }
    CDebugInfo m_DebugInfo;
};

TEST_F(MachineListing, EveryForm)
{
    bool isSeen[static_cast<int>(Mnemonic::Nop) + 1] = {};
    for (const Form& form : g_Forms) {
        SCOPED_TRACE(form.text);
        for (const char* lead : {"", "\t"}) {   // one tab or two mean the same
            CListing listing;
            std::string error;
            ASSERT_TRUE(listing.Read("FUNCTION_f:\n" + (lead + std::string(form.text)) + "\n", "a.asm", m_DebugInfo, error))
                << error;
            ASSERT_EQ(listing.m_Instructions.size(), 1u);
            EXPECT_EQ(static_cast<int>(listing.m_Instructions[0].mnemonic), static_cast<int>(form.mnemonic));
            EXPECT_EQ(listing.m_Instructions[0].line, 2);
        }
        isSeen[static_cast<int>(form.mnemonic)] = true;
    }
    for (int i = 0; i <= static_cast<int>(Mnemonic::Nop); ++i)
        EXPECT_TRUE(isSeen[i]) << GetMnemonicText(static_cast<Mnemonic>(i)) << " has no form in the table";
}

TEST_F(MachineListing, WhatIsNoFormIsRefusedWithItsLine)
{
    const std::pair<const char*, const char*> wrong[] = {
        {"\tPUSHX(INT)\t1", "unknown instruction: PUSHX(INT)\t1"},
        {"\tPUSH(INT)", "unknown instruction: PUSH(INT)"},
        {"\tPUSH(INT)\tx", "unknown instruction: PUSH(INT)\tx"},
        {"\tPUSH(INT)\t[stack+1]", "unknown instruction: PUSH(INT)\t[stack+1]"},
        {"\tPUSH(INT)\t[local+1", "unknown instruction: PUSH(INT)\t[local+1"},
        {"\tPUSH(NINT)\t1", "unknown type NINT"},
        {"\tADD", "unknown instruction: ADD"},
        {"\tADD(INT) 3", "unknown instruction: ADD(INT) 3"},
        {"\tADD(pair)", "unknown type pair"},
        {"\tTO_NINT (INT)", "unknown type NINT"},
        {"\tCMP XX(INT)", "unknown instruction: CMP XX(INT)"},
        {"\tCASE (INT) LABEL0001", "unknown instruction: CASE (INT) LABEL0001"},
        {"\tLOCALSET 1", "LOCALSET without its bytes"},
        {"\tDBI NOISE", "unknown DBI line"},
        {"FUNCTION_f:", "label FUNCTION_f stands twice"},
    };
    for (const auto& [line, reason] : wrong) {
        CListing listing;
        std::string error;
        EXPECT_FALSE(listing.Read("FUNCTION_f:\n\tRTS\n" + std::string(line) + "\n", "a.asm", m_DebugInfo, error)) << line;
        EXPECT_EQ(error, "a.asm(3): " + std::string(reason));
    }
    CListing listing;
    std::string error;
    EXPECT_FALSE(listing.Read("\n\tRTS\n", "a.asm", m_DebugInfo, error));
    EXPECT_EQ(error, "a.asm(2): an instruction in front of the first entry label: RTS");
}

TEST_F(MachineListing, LabelsMarksAndComments)
{
    const std::string text = "\nDBI FILENAME a.st\nDBI FILETIME 1\nDBI FILEVERSION 2\nDBI COMPILERBUILDNUMBER 3\n"
                             ";;\tNot used\n;;\tFUNCTION_g:\n;;\t\tRTS\n"
                             "FUNCTION_f:\n\tDBI POU_BEGIN\n\tLOCALDATA 4\n\t\t;Variable (0): f ((INT),VAR)\n"
                             "\t\t;Variable (2): x ((INT),VAR_INPUT)\n\tPOP(INT) [local+2] ; x\n"
                             "DBI FILE 0 LINE 7\n\tJMP LABEL0001\n\t\tLABEL0001:\n\n\tRTS\n\tDBI POU_END\n";
    CListing listing;
    std::string error;
    ASSERT_TRUE(listing.Read(text, "a.asm", m_DebugInfo, error)) << error;
    ASSERT_EQ(listing.m_Pous.size(), 1u);
    const ListingPou& pou = listing.m_Pous[0];
    EXPECT_EQ(pou.name, "f");
    EXPECT_EQ(pou.memoryBytes, 4);
    ASSERT_EQ(pou.variables.size(), 2u);
    EXPECT_EQ(pou.variables[1].name, "x");
    EXPECT_EQ(pou.variables[1].typeName, "INT");
    EXPECT_EQ(pou.variables[1].block, "VAR_INPUT");
    EXPECT_EQ(pou.variables[1].offset, 2);
    ASSERT_EQ(listing.m_Instructions.size(), 4u);
    EXPECT_EQ(listing.m_Instructions[1].mark, -1);   // in front of the first mark
    EXPECT_EQ(listing.m_Instructions[2].mark, 0);
    EXPECT_EQ(listing.m_Marks[0].line, 7);
    EXPECT_EQ(listing.m_Instructions[2].target, 3);
    EXPECT_EQ(listing.GetComment(listing.m_Instructions[1]), "x");
    EXPECT_EQ(listing.m_LabelTargets, std::vector<int>{3});
}

TEST_F(MachineListing, AJumpReachesLabelsOfItsOwnPouOnly)
{
    CListing listing;
    std::string error;
    ASSERT_TRUE(listing.Read("FUNCTION_f:\n\tJMP LABEL0001\n\tRTS\nFUNCTION_g:\n\tLABEL0001:\n\tRTS\n", "a.asm",
                             m_DebugInfo, error));
    EXPECT_EQ(listing.m_Instructions[0].target, -1);
    CListing twice;
    EXPECT_FALSE(twice.Read("FUNCTION_f:\n\tLABEL0001:\n\tLABEL0001:\n\tRTS\n", "a.asm", m_DebugInfo, error));
    EXPECT_EQ(error, "a.asm(3): label LABEL0001 stands twice");
    CListing nameless;   // several may stand in one text
    EXPECT_TRUE(nameless.Read("FUNCTION_f:\n\t:\n\t:\n\tRTS\n", "a.asm", m_DebugInfo, error));
}

TEST(MachineDebugInfo, CallCostsAreFittedToTheCallTree)
{
    CDebugInfo info;
    std::string error;
    // 6 bytes with a multiple of 4 and 8 more are 16; 4 bytes are 12.
    ASSERT_TRUE(info.Read("<DBI><CALLTREE><POU name=\"m\" local=\"6\" returnstackdepth=\"16\">"
                          "<POU name=\"f\" local=\"4\" returnstackdepth=\"28\"/></POU></CALLTREE></DBI>",
                          "a.dbi", error));
    EXPECT_EQ((6 + info.m_ReturnStackAlign - 1) / info.m_ReturnStackAlign * info.m_ReturnStackAlign + info.m_CallOverload, 16);
    EXPECT_EQ((4 + info.m_ReturnStackAlign - 1) / info.m_ReturnStackAlign * info.m_ReturnStackAlign + info.m_CallOverload, 12);
    EXPECT_EQ((8 + info.m_ReturnStackAlign - 1) / info.m_ReturnStackAlign * info.m_ReturnStackAlign + info.m_CallOverload, 16);
    EXPECT_FALSE(info.Read("<XYZ/>", "a.dbi", error));
    EXPECT_FALSE(info.Read("", "a.dbi", error));
    CDebugInfo odd;
    EXPECT_FALSE(odd.Read("<DBI><DATATYPE><TYPE name=\"INT\" datatype=\"INT\" align=\"2\" size=\"24\"/></DATATYPE></DBI>",
                          "a.dbi", error));
    EXPECT_EQ(error, "a.dbi: INT of 24 bits can't be run");
}
