// Each trap drawn, both ways of running, with what it reports.

#include "unit/machine/MachineTest.h"

static Trap Draw(const std::string& listing, MachineOptions options, const std::string& debugText = MakeDebugText())
{
    CTestMachine machine(listing, options, debugText);
    EXPECT_TRUE(machine.m_pMachine) << machine.m_Error;
    if (!machine.m_pMachine) return {};
    EXPECT_EQ(machine.Run(), RunStatus::Trapped);
    return machine.m_pMachine->GetTrap();
}

static void ExpectTrap(const std::string& body, TrapKind kind, const std::string& reason,
                       const MachineOptions& options = {}, const std::string& debugText = MakeDebugText())
{
    for (const MachineOptions& way : BothWays(options)) {
        const Trap trap = Draw(MakeProgram(body), way, debugText);
        EXPECT_EQ(static_cast<int>(trap.kind), static_cast<int>(kind)) << body;
        EXPECT_EQ(trap.reason, reason) << body;
        EXPECT_EQ(trap.position.pou, "PROGRAM main");
        EXPECT_EQ(trap.position.file, "a.st");
        EXPECT_EQ(trap.position.line, 4);
    }
}

TEST(MachineTraps, DirectAccessOutsideItsArea)
{
    const std::string reason = "the operand lies outside of its area";
    ExpectTrap("\tPUSH(INT)\t[local+63]\t;x\n\tPOP(INT)\n", TrapKind::OutsideArea, reason);
    ExpectTrap("\tPUSH(INT)\t1\n\tPOP(INT)\t[local+-1]\t;x\n", TrapKind::OutsideArea, reason);
    ExpectTrap("\tPUSH&(INT)\t[local+64]\t;x\n\tPOP(UDINT)\n", TrapKind::OutsideArea, reason);
}

TEST(MachineTraps, TheLastByteOfAnAreaIsStillInside)
{
    for (const MachineOptions& way : BothWays()) {
        CTestMachine machine(MakeProgram("\tPUSH(INT)\t77\n\tPOP(INT)\t[local+62]\t;x\n"
                                         "\tPUSH(INT)\t[local+62]\t;x\n\tPOP(INT)\t[global+0]\t;y\n"),
                             way);
        ASSERT_EQ(machine.Run(), RunStatus::Finished);
        EXPECT_EQ(machine.GetGlobal(0, ValueKind::S16).integer, 77);
    }
}

TEST(MachineTraps, IndirectAccessOutsideItsArea)
{
    ExpectTrap("\tPUSH(UDINT)\t0\n\tPUSHI(INT)\n\tPOP(INT)\n", TrapKind::OutsideArea,
               "2 bytes at address 0 are in no area or frame");
    ExpectTrap("\tPUSH(INT)\t1\n\tPUSH(UDINT)\t16777215\n\tPOPI(DINT)\n", TrapKind::OutsideArea,
               "4 bytes at address 16777215 are in no area or frame");
    // A bit number belongs to a BOOL alone, and there are eight.
    ExpectTrap("\tPUSH(UDINT)\t16777216\n\tPUSHI(INT)\n\tPOP(INT)\n", TrapKind::OutsideArea,
               "2 bytes at address 0 bit 1 are in no area or frame");
    ExpectTrap("\tPUSH(UDINT)\t134217728\n\tPUSHI(BOOL)\n\tPOP(BOOL)\n", TrapKind::OutsideArea,
               "1 byte at address 0 bit 8 are in no area or frame");
    ExpectTrap("\tPUSH(UDINT)\t1\n\tPUSH&(UDINT)\t[local+0]\t;x\n\tMEMCPY\t4\n", TrapKind::OutsideArea,
               "4 bytes at address 1 are in no area or frame");
}

// An address that runs over the end of its area ends in the gap behind it.
TEST(MachineTraps, ACopyBeyondTheEnd)
{
    for (const MachineOptions& way : BothWays()) {
        const Trap trap = Draw(
            MakeProgram("\tPUSH&(UDINT)\t[global+0]\t;a\n\tPUSH&(UDINT)\t[local+60]\t;b\n\tMEMCPY\t5\n"), way);
        EXPECT_EQ(static_cast<int>(trap.kind), static_cast<int>(TrapKind::OutsideArea));
    }
}

TEST(MachineTraps, IndexOutsideItsBounds)
{
    for (const char* index : {"0", "6", "-32768"})
        ExpectTrap("\tPUSH&(INT)[local+12]\t;&x[0]\n\tPUSH(INT)\t" + std::string(index) +
                       "\n\tADDRESS(INT) 2 1 5\n\tPUSHI(INT)\n\tPOP(INT)\n",
                   TrapKind::IndexBounds, "index " + std::string(index) + " is outside 1..5");
    ExpectTrap("\tPUSH(INT)\t3\n\tPUSH&(INT)[local+12]\t;&x[0]\n\tPUSH(USINT)\t9\n\tADDRESS(USINT) 2 1 5\n\tPOPI(INT)\n",
               TrapKind::IndexBounds, "index 9 is outside 1..5");
    ExpectTrap("\tPUSH&(BOOL)[local+12].0\t;&x[0]\n\tPUSH(INT)\t16\n\tADDRESSBIT(INT) 1 0 15\n\tPUSHI(BOOL)\n\tPOP(BOOL)\n",
               TrapKind::IndexBounds, "index 16 is outside 0..15");
}

TEST(MachineTraps, DivisionByZero)
{
    ExpectTrap("\tPUSH(INT)\t1\n\tPUSH(INT)\t[local+0]\t;x\n\tDIV(INT)\n\tPOP(INT)\t[local+2]\t;y\n",
               TrapKind::DivisionByZero, "division by zero");
}

TEST(MachineTraps, StackUnderflow)
{
    ExpectTrap("\tPOP(INT)\t[local+0]\t;x\n", TrapKind::StackUnderflow, "the stack has no value to take");
    ExpectTrap("\tPUSH(INT)\t1\n\tADD(INT)\n\tPOP(INT)\n", TrapKind::StackUnderflow, "the stack has no value to take");
    MachineOptions lenient;
    lenient.underflow = Underflow::Zero;
    CTestMachine machine(MakeProgram("\tPUSH(INT)\t7\n\tSUB(INT)\n\tPOP(INT)\t[global+0]\t;x\n"), lenient);
    ASSERT_EQ(machine.Run(), RunStatus::Finished);
    EXPECT_EQ(machine.GetGlobal(0, ValueKind::S16).integer, -7);   // 0 - 7
}

TEST(MachineTraps, ParameterStackFull)
{
    // Eight bytes are two cells.
    const std::string debugText = MakeDebugText({}, 8);
    const std::string two = "\tPUSH(INT)\t1\n\tPUSH(INT)\t2\n";
    const std::string drop = "\tPOP(INT)\n";
    ExpectTrap(two + "\tPUSH(INT)\t3\n" + drop + drop + drop, TrapKind::ParameterStackFull,
               "the parameter stack of 8 bytes is full", {}, debugText);
    CTestMachine machine(MakeProgram(two + drop + drop), {}, debugText);
    EXPECT_EQ(machine.Run(), RunStatus::Finished);
    MachineOptions wide;
    wide.cellBytes = 8;
    ExpectTrap(two + drop + drop, TrapKind::ParameterStackFull, "the parameter stack of 8 bytes is full", wide,
               debugText);
}

// A loop that leaves a value behind each time grows the stack until it is full.
TEST(MachineTraps, AStackThatGrowsInALoop)
{
    ExpectTrap("\tLABEL0001:\n\tPUSH(INT)\t1\n\tJMP LABEL0001\n", TrapKind::ParameterStackFull,
               "the parameter stack of 256 bytes is full");
}

static std::string MakeCall(const std::string& body)
{
    return "FUNCTION_f:\n\tDBI POU_BEGIN\n\tLOCALDATA 16\n\t\t;Variable (0): f ((INT),VAR)\nDBI FILE 0 LINE 2\n" + body +
           "\tRTS\n\tDBI POU_END\n" + MakeProgram("\tJSR FUNCTION_f\n");
}

TEST(MachineTraps, ReturnStackFull)
{
    // 64 + 8 for the program and 16 + 8 for the function are 96.
    for (const MachineOptions& way : BothWays()) {
        const Trap trap = Draw(MakeCall(""), way, MakeDebugText({}, 256, 95));
        EXPECT_EQ(trap.reason, "the return stack of 95 bytes is full");
        CTestMachine machine(MakeCall(""), way, MakeDebugText({}, 256, 96));
        EXPECT_EQ(machine.Run(), RunStatus::Finished);
    }
}

TEST(MachineTraps, ACircleOfCallsFillsTheReturnStack)
{
    for (const MachineOptions& way : BothWays()) {
        const Trap trap = Draw(MakeCall("\tJSR FUNCTION_f\n"), way);
        EXPECT_EQ(static_cast<int>(trap.kind), static_cast<int>(TrapKind::ReturnStackFull));
        EXPECT_EQ(trap.position.pou, "FUNCTION f");
        EXPECT_EQ(trap.callers.size(), 39u);   // (1024 - 72) / 24 calls fit
    }
}

TEST(MachineTraps, NoLabel)
{
    ExpectTrap("\tJMP LABEL0009\n", TrapKind::NoLabel, "the label does not exist");
    ExpectTrap("\tJMP \n\t:\n", TrapKind::NoLabel, "the label does not exist");
    ExpectTrap("\tPUSH(BOOL)\t1\n\tJC LABEL0009\n", TrapKind::NoLabel, "the label does not exist");
    ExpectTrap("\tJSR FUNCTION_g\n", TrapKind::NoLabel, "the label does not exist");
    CTestMachine machine(MakeProgram("\tPUSH(BOOL)\t0\n\tJC LABEL0009\n"));
    EXPECT_EQ(machine.Run(), RunStatus::Finished);   // a jump that isn't taken misses nothing
}

TEST(MachineTraps, TooManyInstructions)
{
    MachineOptions few;
    few.maxInstructions = 100;
    ExpectTrap("\tLABEL0001:\n\tJMP LABEL0001\n", TrapKind::TooManyInstructions,
               "more than 100 instructions in one scan", few);
    // LOCALSET, four instructions and RTS are six; the next scan counts from 0.
    const std::string body = "\tPUSH(INT)\t1\n\tPOP(INT)\t[local+0]\t;x\n\tPUSH(INT)\t1\n\tPOP(INT)\t[local+2]\t;x\n";
    for (const MachineOptions& way : BothWays(few)) {
        MachineOptions exact = way;
        exact.maxInstructions = 6;
        CTestMachine enough(MakeProgram(body), exact);
        EXPECT_EQ(enough.Run(3), RunStatus::Finished);
        EXPECT_EQ(enough.m_pMachine->GetInstructions(), 6);
        exact.maxInstructions = 5;
        CTestMachine notEnough(MakeProgram(body), exact);
        EXPECT_EQ(notEnough.Run(), RunStatus::Trapped);
    }
}

TEST(MachineTraps, NoSuchOperation)
{
    ExpectTrap("\tPUSH97 ;a\n\tPUSH97 ;a\n\tCMP EQ(STRING)\n\tPOP(BOOL)\n", TrapKind::NoSuchOperation,
               "there is no such operation for STRING");
    ExpectTrap("\tPUSH(UDINT)\t0\n\tPOP&(UDINT)\t[global+8]\t;b.io\n", TrapKind::NoSuchOperation,
               "there is no address to store to");
    ExpectTrap("\tPUSH(REAL)\t1.0\n\tPUSH(REAL)\t1.0\n\tAND(REAL)\n\tPOP(REAL)\n", TrapKind::NoSuchOperation,
               "there is no such operation for REAL");
}

TEST(MachineTraps, SystemCalls)
{
    ExpectTrap("\tSYS 12\n", TrapKind::SystemCall, "system calls are not run");
    MachineOptions options;
    options.systemCalls = SystemCalls::Ignore;
    CTestMachine ignoring(MakeProgram("\tSYS 12\n"), options);
    EXPECT_EQ(ignoring.Run(), RunStatus::Finished);
    options.systemCalls = SystemCalls::Print;
    CTestMachine printing(MakeProgram("\tSYS 12\n\tSYS -1\n"), options);
    std::vector<int> numbers;
    printing.m_pMachine->SetSystemPrinter([&](std::int32_t number) { numbers.push_back(number); });
    EXPECT_EQ(printing.Run(), RunStatus::Finished);
    EXPECT_EQ(numbers, (std::vector<int>{12, -1}));
}

TEST(MachineTraps, TheReportNamesCallersInstructionAndStack)
{
    const std::string body = "\tPUSH(DINT)\t-5\n\tPUSH(INT)\t1\n\tPUSH(INT)\t[local+0]\t;f\n\tDIV(INT)\n\tPOP(INT)\n\tPOP(DINT)\n";
    const Trap trap = Draw(MakeCall(body), {});
    EXPECT_EQ(ToText(trap), "a.st(2): FUNCTION f: trap: division by zero\n"
                            "  at DIV(INT), line 9 of the listing\n"
                            "  called from a.st(4): PROGRAM main\n"
                            "  stack: 0, 1, -5");
    MachineOptions plain;
    plain.plain = true;
    EXPECT_EQ(Draw(MakeCall(body), plain).stackTop, (std::vector<std::string>{"0 INT", "1 INT", "-5 DINT"}));
}

TEST(MachineTraps, NoScanRunsBehindATrap)
{
    CTestMachine machine(MakeProgram("\tSYS 1\n"));
    EXPECT_EQ(machine.Run(), RunStatus::Trapped);
    EXPECT_EQ(machine.m_pMachine->RunScan(), RunStatus::Trapped);
    EXPECT_EQ(machine.m_pMachine->Resume(), RunStatus::Trapped);
}

TEST(MachineTraps, StrictFindings)
{
    MachineOptions strict;
    strict.strict = true;
    CTestMachine machine(MakeProgram("\tPUSH(INT)\t1\n\tPOP(WORD)\t[global+0]\t;w\n"), strict);
    EXPECT_EQ(machine.Run(), RunStatus::Finished);
    ASSERT_EQ(machine.m_pMachine->GetFindings().size(), 1u);
    EXPECT_EQ(machine.m_pMachine->GetFindings().front(),
              "a.st(4): PROGRAM main: POP(WORD)\t[global+0] takes a cell as WORD that was pushed as INT");
    // A place is reported once, however often it is passed.
    EXPECT_EQ(machine.Run(), RunStatus::Finished);
    EXPECT_EQ(machine.m_pMachine->GetFindings().size(), 1u);
    // An alias is its type, and an address of no type.
    CTestMachine clean(MakeProgram("\tPUSH(INT)\t1\n\tPOP(myint)\t[global+0]\t;w\n"
                                   "\tPUSH&(INT)\t[global+0]\t;w\n\tPUSHI(INT)\n\tPOP(INT)\t[global+2]\t;v\n"),
                       strict);
    EXPECT_EQ(clean.Run(), RunStatus::Finished);
    EXPECT_TRUE(clean.m_pMachine->GetFindings().empty());
}
