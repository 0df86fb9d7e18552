// Control flow, calls, memory and scans; whatever fused code could get wrong is run beside plain code.

#include "unit/machine/MachineTest.h"

// Runs the lines both ways and gives the INT at [global+0].
static std::int64_t RunBoth(const std::string& listing, const MachineOptions& options = {}, int scans = 1)
{
    std::int64_t first = 0;
    bool isFirst = true;
    for (const MachineOptions& way : BothWays(options)) {
        CTestMachine machine(listing, way);
        EXPECT_TRUE(machine.m_pMachine) << machine.m_Error;
        EXPECT_EQ(machine.m_pMachine->IsPlain(), way.plain);
        EXPECT_EQ(machine.Run(scans), RunStatus::Finished) << ToText(machine.m_pMachine->GetTrap());
        const std::int64_t value = machine.GetGlobal(0, ValueKind::S16).integer;
        if (!isFirst) { EXPECT_EQ(value, first); }
        first = value;
        isFirst = false;
    }
    return first;
}

static const std::string g_Store = "\tPOP(INT)\t[global+0]\t;x\n";

TEST(MachineExecution, AValueThatWaitsIsTakenBeforeItsVariableChanges)
{
    // x := 5; the old x is pushed, x changes, and the old value must still be there.
    const std::string set5 = "\tPUSH(INT)\t5\n\tPOP(INT)\t[global+2]\t;x\n";
    EXPECT_EQ(RunBoth(MakeProgram(set5 + "\tPUSH(INT)\t[global+2]\t;x\n\tPUSH(INT)\t9\n\tPOP(INT)\t[global+2]\t;x\n" + g_Store)), 5);
    EXPECT_EQ(RunBoth(MakeProgram(set5 + "\tPUSH(INT)\t[global+2]\t;x\n\tPUSH(INT)\t9\n\tPUSH&(INT)\t[global+2]\t;x\n"
                                         "\tPOPI(INT)\n" + g_Store)), 5);
    EXPECT_EQ(RunBoth(MakeProgram(set5 + "\tPUSH(INT)\t[global+2]\t;x\n\tPUSH&(UDINT)\t[global+8]\t;z\n"
                                         "\tPUSH&(UDINT)\t[global+2]\t;x\n\tMEMCPY\t2\n" + g_Store)), 5);
    EXPECT_EQ(RunBoth(MakeProgram(set5 + "\tPUSH(INT)\t[global+2]\t;x\n\tPUSH(INT)\t1\n\tPUSH(INT)\t2\n\tADD(INT)\n"
                                         "\tPOP(INT)\t[global+2]\t;x\n" + g_Store)), 5);
}

TEST(MachineExecution, ANarrowReadOfAWiderCell)
{
    EXPECT_EQ(RunBoth(MakeProgram("\tPUSH(DINT)\t65537\n" + g_Store)), 1);
    // And a wide read of a narrow one: a cell is extended when it is pushed.
    EXPECT_EQ(RunBoth(MakeProgram("\tPUSH(INT)\t-1\n\tPOP(INT)\t[global+2]\t;y\n\tPUSH(INT)\t[global+2]\t;y\n"
                                  "\tPUSH(DINT)\t1\n\tADD(DINT)\n\tTO_INT (DINT)\n" + g_Store)), 0);
}

TEST(MachineExecution, DupLeavesTwoOfTheSame)
{
    EXPECT_EQ(RunBoth(MakeProgram("\tPUSH(INT)\t3\n\tPUSH(INT)\t4\n\tMUL(INT)\n\tDUP(INT)\n\tADD(INT)\n" + g_Store)), 24);
    EXPECT_EQ(RunBoth(MakeProgram("\tPUSH(INT)\t3\n\tDUP(INT)\n\tDUP(INT)\n\tMUL(INT)\n\tMUL(INT)\n" + g_Store)), 27);
}

TEST(MachineExecution, ShortcutsKeepTheDecidingValue)
{
    for (const auto& [a, b] : {std::pair{0, 0}, std::pair{0, 1}, std::pair{1, 0}, std::pair{1, 1}}) {
        const std::string text = "\tPUSH(BOOL)\t" + std::to_string(a) + "\n\tDUP(BOOL)\n\tJNC LABEL0001\n\tPOP(BOOL)\n"
                                 "\tPUSH(BOOL)\t" + std::to_string(b) + "\n\tLABEL0001:\n\tTO_INT (BOOL)\n";
        EXPECT_EQ(RunBoth(MakeProgram(text + g_Store)), a & b);
    }
}

TEST(MachineExecution, Cases)
{
    const std::string body = "\tPUSH(INT)\t[global+2]\t;n\n\tCASE (INT) 3 LABEL0002\n\tCASER (INT) 5  7 LABEL0003\n\tPOP(INT)\n"
                             "\tPUSH(INT)\t30\n" + g_Store + "\tJMP LABEL0001\n\tLABEL0002:\n\tPUSH(INT)\t10\n" + g_Store +
                             "\tJMP LABEL0001\n\tLABEL0003:\n\tPUSH(INT)\t20\n" + g_Store + "\tLABEL0001:\n";
    const std::pair<int, int> expected[] = {{2, 30}, {3, 10}, {4, 30}, {5, 20}, {6, 20}, {7, 20}, {8, 30}, {-3, 30}};
    for (const auto& [selector, result] : expected)
        EXPECT_EQ(RunBoth(MakeProgram("\tPUSH(INT)\t" + std::to_string(selector) + "\n\tPOP(INT)\t[global+2]\t;n\n" + body)), result)
            << selector;
}

TEST(MachineExecution, LoopsCountAndBitsAreStored)
{
    // Adds 1 to 10; sets every odd bit of 16.
    EXPECT_EQ(RunBoth(MakeProgram("\tPUSH(INT)\t1\n\tPOP(INT)\t[local+0]\t;i\n\tLABEL0001:\n"
                                  "\tPUSH(INT)\t[global+0]\t;s\n\tPUSH(INT)\t[local+0]\t;i\n\tADD(INT)\n" + g_Store +
                                  "\tPUSH(INT)\t[local+0]\t;i\n\tPUSH(INT)\t1\n\tADD(INT)\n\tPOP(INT)\t[local+0]\t;i\n"
                                  "\tPUSH(INT)\t[local+0]\t;i\n\tPUSH(INT)\t10\n\tCMP LE(INT)\n\tJC LABEL0001\n")), 55);
    EXPECT_EQ(RunBoth(MakeProgram("\tPUSH(INT)\t1\n\tPOP(INT)\t[local+0]\t;i\n\tLABEL0001:\n\tPUSH(BOOL)\t1\n"
                                  "\tPUSH&(BOOL)[global+0].0\t;&b[0]\n\tPUSH(INT)\t[local+0]\t;i\n\tADDRESSBIT(INT) 1 0 15\n\tPOPI(BOOL)\n"
                                  "\tPUSH(INT)\t[local+0]\t;i\n\tPUSH(INT)\t2\n\tADD(INT)\n\tPOP(INT)\t[local+0]\t;i\n"
                                  "\tPUSH(INT)\t[local+0]\t;i\n\tPUSH(INT)\t15\n\tCMP LE(INT)\n\tJC LABEL0001\n")),
              static_cast<std::int16_t>(0xAAAA));
}

TEST(MachineExecution, ElementsOfSeveralDimensions)
{
    // m : ARRAY[1..2,0..2] OF INT at [global+2]; m[2,1] is the fifth element, at 2 + 4 * 2.
    const std::string address = "\tPUSH&(INT)[global+2]\t;&m[0]\n\tPUSH(INT)\t2\n\tADDRESS(INT) 6 1 2\n\tPUSH(INT)\t1\n\tADDRESS(INT) 2 0 2\n";
    EXPECT_EQ(RunBoth(MakeProgram("\tPUSH(INT)\t99\n" + address + "\tPOPI(INT)\n\tPUSH(INT)\t[global+10]\t;m\n" + g_Store)), 99);
    EXPECT_EQ(RunBoth(MakeProgram("\tPUSH(INT)\t98\n\tPOP(INT)\t[global+10]\t;m\n" + address + "\tPUSHI(INT)\n" + g_Store)), 98);
}

static std::string MakeFunction(const std::string& body, int bytes = 8)
{
    return "FUNCTION_f:\n\tDBI POU_BEGIN\n\tLOCALDATA " + std::to_string(bytes) +
           "\n\t\t;Variable (0): f ((INT),VAR)\n\t\t;Variable (2): a ((INT),VAR_INPUT)\n\t\t;Variable (4): p ((INT),VAR_IN_OUT)\n" + body +
           "\tRTS\n\tDBI POU_END\n";
}

TEST(MachineExecution, CallsPassValuesAndAddresses)
{
    // f(a, p): p := p + a; f := p * 2
    const std::string function = MakeFunction("\tPOP(UDINT)\t[local+4]\t;p\n\tPOP(INT) [local+2] ; a\n"
                                              "\tPUSH*(INT)\t[local+4]\t;p\n\tPUSH(INT)\t[local+2]\t;a\n\tADD(INT)\n\tPOP*(INT)\t[local+4]\t;p\n"
                                              "\tPUSH*(INT)\t[local+4]\t;p\n\tPUSH(INT)\t2\n\tMUL(INT)\n\tPOP(INT)\t[local+0]\t;f\n"
                                              "\tPUSH\t(INT) [local+0] ; f\n");
    const std::string call = "\tPUSH(INT)\t7\n\tPUSH&(INT)\t[local+6]\t;v\n\tJSR FUNCTION_f\n";
    EXPECT_EQ(RunBoth(function + MakeProgram("\tPUSH(INT)\t3\n\tPOP(INT)\t[local+6]\t;v\n" + call + g_Store)), 20);
    EXPECT_EQ(RunBoth(function + MakeProgram("\tPUSH(INT)\t3\n\tPOP(INT)\t[local+6]\t;v\n" + call + "\tPOP(INT)\n"
                                             "\tPUSH(INT)\t[local+6]\t;v\n" + g_Store)), 10);
    // A value that waits below the arguments survives the call.
    EXPECT_EQ(RunBoth(function + MakeProgram("\tPUSH(INT)\t1000\n" + call + "\tADD(INT)\n" + g_Store)), 1014);
}

TEST(MachineExecution, FramesAreZeroKeptOrNoise)
{
    // The function counts in a variable that nothing sets: f := f + 1, handed back.
    const std::string listing = MakeFunction("\tPUSH(INT)\t[local+6]\t;n\n\tPUSH(INT)\t1\n\tADD(INT)\n\tPOP(INT)\t[local+6]\t;n\n"
                                             "\tPUSH\t(INT) [local+6] ; n\n") +
                                MakeProgram("\tJSR FUNCTION_f\n" + g_Store);
    MachineOptions options;
    EXPECT_EQ(RunBoth(listing, options, 3), 1);
    options.frames = FrameContents::Keep;
    EXPECT_EQ(RunBoth(listing, options, 3), 3);
    options.frames = FrameContents::Noise;
    CTestMachine machine(listing, options);
    ASSERT_EQ(machine.Run(1), RunStatus::Finished);
    const std::int64_t once = machine.GetGlobal(0, ValueKind::S16).integer;
    ASSERT_EQ(machine.Run(1), RunStatus::Finished);
    EXPECT_NE(machine.GetGlobal(0, ValueKind::S16).integer, once);
}

// A frame that has ended is no memory any more.
TEST(MachineExecution, AnAddressOfAFrameDiesWithIt)
{
    const std::string listing = MakeFunction("\tPUSH&(INT)\t[local+2]\t;a\n") + MakeProgram("\tJSR FUNCTION_f\n\tPUSHI(INT)\n" + g_Store);
    for (const MachineOptions& way : BothWays()) {
        CTestMachine machine(listing, way);
        EXPECT_EQ(machine.Run(), RunStatus::Trapped);
    }
}

static const char* const g_Target = "<D><COMPILER><TARGET><VM><AREA name=\"INPUT\" segment=\"1000\" size=\"10\"/>"
                                    "<AREA name=\"OUTPUT\" segment=\"2000\" size=\"10\"/><AREA name=\"MEMORY\" segment=\"3000\" size=\"10\"/>"
                                    "<AREA name=\"GLOBAL\" size=\"64\"/><AREA name=\"RETAIN\" size=\"16\"/>"
                                    "<PROGRAM name=\"second\" id=\"2\"/><PROGRAM name=\"main\" id=\"1\"/></VM></TARGET></COMPILER></D>";

// x := x * 10 + digit
static std::string Append(int digit)
{
    return "\tPUSH(INT)\t[global+0]\t;x\n\tPUSH(INT)\t10\n\tMUL(INT)\n\tPUSH(INT)\t" + std::to_string(digit) + "\n\tADD(INT)\n" + g_Store;
}

static std::string MakeTwoPrograms()
{
    return MakeProgram(Append(1)) + "PROGRAM_second:\n\tLOCALSET 2 ; 4 bytes size\n" + Append(2) + "\tRTS\n";
}

TEST(MachineExecution, ProgramsRunInTheOrderOfTheTarget)
{
    CTestMachine machine(MakeTwoPrograms(), {}, MakeDebugText(), g_Target);
    ASSERT_EQ(machine.Run(2), RunStatus::Finished);
    EXPECT_EQ(machine.GetGlobal(0, ValueKind::S16).integer, 2121);
}

TEST(MachineExecution, TasksRunAtTheirRate)
{
    CTestMachine machine(MakeTwoPrograms(), {}, MakeDebugText(), g_Target);
    machine.m_pMachine->SetScanTime(10'000);
    EXPECT_TRUE(machine.m_pMachine->SetTask("second", 25'000));
    EXPECT_FALSE(machine.m_pMachine->SetTask("third", 25'000));
    // At 0, 10, 20, 30 ms: second is due at 0 and when 25 ms have passed, at 30.
    ASSERT_EQ(machine.Run(4), RunStatus::Finished);
    EXPECT_EQ(machine.GetGlobal(0, ValueKind::S16).integer, static_cast<std::int16_t>(211121 % 65536));
}

static std::string MakeStartUp()
{
    return MakeProgram(Append(1)) + "PROGRAM_second:\n\tLOCALSET 2 ; 4 bytes size\n\tJSR FUNCTION___GlobalInitialization__\n"
                                    "\tJSR FUNCTION___RetainInitialization__\n\tRTS\n"
                                    "FUNCTION___GlobalInitialization__:\n\tLOCALDATA 0\n\tPUSH\t(INT)\t7\n\tPOP\t(INT) [global+0] ; x\n\tRTS\n"
                                    "FUNCTION___RetainInitialization__:\n\tLOCALDATA 0\n\tPUSH\t(INT)\t8\n\tPOP\t(INT) [retain+0] ; r\n\tRTS\n";
}

TEST(MachineExecution, StartUpProgramsRunBeforeTheFirstScan)
{
    CTestMachine machine(MakeStartUp());
    ASSERT_EQ(machine.Run(2), RunStatus::Finished);
    EXPECT_EQ(machine.GetGlobal(0, ValueKind::S16).integer, 711);
    MachineOptions every;
    every.startUp = StartUp::Every;
    CTestMachine often(MakeStartUp(), every);
    ASSERT_EQ(often.Run(2), RunStatus::Finished);
    EXPECT_EQ(often.GetGlobal(0, ValueKind::S16).integer, 71);
}

TEST(MachineExecution, AWarmStartLeavesRetainedVariablesAlone)
{
    for (const bool isWarm : {false, true}) {
        CTestMachine machine(MakeStartUp());
        const std::uint32_t place = machine.m_pImage->GetRegion(MemoryArea::Retain, 0).begin;
        ASSERT_TRUE(machine.m_pMachine->Write(place, {ValueKind::S16, 42, 0}));
        if (isWarm) machine.m_pMachine->SetWarmStart();
        ASSERT_EQ(machine.Run(1), RunStatus::Finished);
        MachineValue value;
        ASSERT_TRUE(machine.m_pMachine->Read(place, ValueKind::S16, value));
        EXPECT_EQ(value.integer, isWarm ? 42 : 8);
    }
}

TEST(MachineExecution, LocatedMemoryLiesAtItsAddress)
{
    const std::string body = "\tPUSH(BOOL)\t1\n\tPOP(BOOL)\t[2000].3\t;q\n\tPUSH(INT)\t[1008]\t;i\n" + g_Store;
    CTestMachine machine(MakeProgram(body), {}, MakeDebugText(), g_Target);
    ASSERT_TRUE(machine.m_pMachine) << machine.m_Error;
    ASSERT_TRUE(machine.m_pMachine->Write(1008, {ValueKind::S16, 345, 0}));
    ASSERT_EQ(machine.Run(), RunStatus::Finished);
    EXPECT_EQ(machine.GetGlobal(0, ValueKind::S16).integer, 345);
    EXPECT_EQ(machine.Read("%QX0.3"), "TRUE");
    EXPECT_EQ(machine.Read("%QB0"), "8");
    EXPECT_EQ(machine.Read("%IW8"), "345");
    EXPECT_EQ(machine.Read("%IW9"), "error: %IW9: is no address of the target");
    EXPECT_EQ(machine.Read("%Q0.3"), "TRUE");
    CTestMachine beyond(MakeProgram("\tPUSH(INT)\t[1009]\t;i\n" + g_Store), {}, MakeDebugText(), g_Target);
    EXPECT_EQ(beyond.Run(), RunStatus::Trapped);   // its second byte lies outside
}

namespace
{

class CStopper : public IMachineObserver
{
public:
    bool BeforeInstruction(int instruction) override
    {
        m_Seen.push_back(instruction);
        return true;
    }
    std::vector<int> m_Seen;
};

}   // namespace

TEST(MachineExecution, AnObserverStopsAtEachInstruction)
{
    MachineOptions options;
    options.plain = true;
    CTestMachine machine(MakeProgram("\tPUSH(INT)\t5\n" + g_Store), options);
    CStopper stopper;
    machine.m_pMachine->SetObserver(&stopper);
    ASSERT_EQ(machine.m_pMachine->Start(), RunStatus::Finished);
    RunStatus status = machine.m_pMachine->RunScan();
    int stops = 0;
    while (status == RunStatus::Stopped && stops < 100) {
        ++stops;
        EXPECT_EQ(machine.m_pMachine->GetPosition().instruction, stopper.m_Seen.back());
        if (stops == 3) {   // in front of the store
            EXPECT_EQ(machine.m_pMachine->GetStackTop(4), std::vector<std::string>{"5 INT"});
            std::uint32_t bytes = 0;
            const std::uint32_t target = machine.m_pMachine->GetStoreTarget(stopper.m_Seen.back(), bytes);
            EXPECT_EQ(target, machine.m_pImage->GetRegion(MemoryArea::Global, 0).begin);
            EXPECT_EQ(bytes, 2u);
        }
        status = machine.m_pMachine->Resume();
    }
    EXPECT_EQ(status, RunStatus::Finished);
    EXPECT_EQ(stopper.m_Seen, (std::vector<int>{0, 1, 2, 3}));
    EXPECT_EQ(machine.GetGlobal(0, ValueKind::S16).integer, 5);
}

TEST(MachineExecution, LineMarksAreCounted)
{
    for (MachineOptions way : BothWays()) {
        way.countLines = true;
        CTestMachine machine(MakeProgram("\tPUSH(BOOL)\t0\n\tJNC LABEL0001\nDBI FILE 0 LINE 5\n\tPUSH(INT)\t5\n" + g_Store +
                                         "\tLABEL0001:\nDBI FILE 0 LINE 6\n\tPUSH(INT)\t6\n" + g_Store),
                             way);
        ASSERT_EQ(machine.Run(2), RunStatus::Finished);
        // The first mark stands in front of what comes behind LOCALSET.
        EXPECT_EQ(machine.m_pMachine->GetLineCounts(), (std::vector<std::int64_t>{2, 0, 2}));
    }
}
