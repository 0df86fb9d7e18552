// Maps of three programs, worked out by hand from how the compiler places variables: in the order of their declaration,
// each at a multiple of its alignment; BOOLs side by side share a byte, and whatever follows them begins a new one.

#include "unit/report/ReportTest.h"

TEST(ReportMaps, BitsAndPadding)
{
    const CTestBuild build(R"(
VAR_GLOBAL
    a : BOOL;
    b : BOOL;
    c : INT;                        (* behind the bits byte 1, raised to 2 *)
    d : ARRAY [0..9] OF BOOL;       (* ten bits take two bytes *)
    e : BOOL;
    f : DINT;                       (* byte 7, raised to 8 *)
    g : USINT;
END_VAR
PROGRAM main
a := b;
c := 1;
END_PROGRAM
)");
    ASSERT_TRUE(build.m_IsLoaded) << build.m_Printed << build.m_Error;
    EXPECT_EQ(build.Place("a"), "0.0+1");
    EXPECT_EQ(build.Place("b"), "0.1+1");
    EXPECT_EQ(build.Place("c"), "2.0+16");
    EXPECT_EQ(build.Place("d"), "4.0+16");
    EXPECT_EQ(build.Place("e"), "6.0+1");
    EXPECT_EQ(build.Place("f"), "8.0+32");
    EXPECT_EQ(build.Place("g"), "12.0+8");

    const AreaFacts& area = build.Area(AreaKind::Global);
    EXPECT_EQ(area.size, 4096);
    EXPECT_EQ(area.counted, 13);
    EXPECT_EQ(area.UsedBytes(), 13);
    EXPECT_EQ(area.takenBytes, 11);     // all but the bytes 1 and 7
    EXPECT_EQ(area.spareBits, 6 + 7);   // beside a and b, and beside e
    EXPECT_EQ(area.overlaps, 0);
    EXPECT_EQ(area.gaps, (std::vector<BitRange>{{8, 16}, {56, 64}}));
    EXPECT_EQ(build.Find("a")->uses, 1);
    EXPECT_EQ(build.Find("g")->uses, 0);
}

TEST(ReportMaps, StructuresAndRetainedVariables)
{
    const CTestBuild build(R"(
TYPE p : STRUCT
    x : INT;
    q, r : BOOL;                    (* at 2 *)
    z : DINT;                       (* at 4, so that p has 8 bytes at multiples of 4 *)
END_STRUCT; END_TYPE
VAR_GLOBAL
    s : USINT;
    t : ARRAY [1..3] OF p;          (* at 4 *)
    u : p;                          (* at 28 *)
END_VAR
VAR_GLOBAL RETAIN
    n : UDINT;
    on : BOOL;
END_VAR
PROGRAM main
VAR RETAIN
    k : INT;                        (* a program's own come in front of the globals *)
    l : BOOL;
END_VAR
VAR
    i : INT;
    v : ARRAY [0..3] OF INT;        (* at 2 *)
    m : DINT;                       (* at 10, raised to 12 *)
    unnamed : DINT;
END_VAR
v[i] := k;
l := on;
m := 5;
t[2].z := m;
u := t[1];
END_PROGRAM
)");
    ASSERT_TRUE(build.m_IsLoaded) << build.m_Printed << build.m_Error;
    EXPECT_EQ(build.Place("s"), "0.0+8");
    EXPECT_EQ(build.Place("t"), "4.0+192");
    EXPECT_EQ(build.Place("u"), "28.0+64");
    const AreaFacts& global = build.Area(AreaKind::Global);
    EXPECT_EQ(global.UsedBytes(), 36);
    EXPECT_EQ(global.takenBytes, 33);
    EXPECT_EQ(global.gaps, (std::vector<BitRange>{{8, 32}}));

    EXPECT_EQ(build.Place("k", "main"), "0.0+16");
    EXPECT_EQ(build.Place("l", "main"), "2.0+1");
    EXPECT_EQ(build.Place("n"), "4.0+32");
    EXPECT_EQ(build.Place("on"), "8.0+1");
    const AreaFacts& retain = build.Area(AreaKind::Retain);
    EXPECT_EQ(retain.size, 1024);
    EXPECT_EQ(retain.counted, 8);       // a byte of which only bits are taken isn't counted,
    EXPECT_EQ(retain.UsedBytes(), 9);   // and something lies in it all the same
    EXPECT_EQ(retain.takenBytes, 8);
    EXPECT_EQ(retain.spareBits, 7 + 7);
    EXPECT_EQ(retain.gaps, (std::vector<BitRange>{{24, 32}}));

    EXPECT_EQ(build.Place("i", "main"), "0.0+16");
    EXPECT_EQ(build.Place("v", "main"), "2.0+64");   // by the bounds of the subscript
    EXPECT_EQ(build.Place("m", "main"), "12.0+32");
    EXPECT_EQ(build.Place("unnamed", "main"), "");
    EXPECT_EQ(build.Place("__ProgramInit", "main"), "20.0+16");
    const AreaFacts& local = build.Area(AreaKind::Local);
    EXPECT_EQ(local.program, "main");
    EXPECT_EQ(local.size, 22);
    EXPECT_EQ(local.gaps, (std::vector<BitRange>{{80, 96}, {128, 160}}));
}

TEST(ReportMaps, AddressesThatOverlap)
{
    constexpr const char* source = R"(
VAR_GLOBAL
    w AT %MW4 : INT;
    lo AT %MB4 : BYTE;
    hi AT %MB5 : BYTE;
    flag AT %MX6.3 : BOOL;
    all AT %MD4 : DWORD;
    in AT %IX0.0 : BOOL;
    out AT %QW2 : INT;
END_VAR
VAR_GLOBAL CONSTANT c : INT := 5; END_VAR
PROGRAM main
VAR own AT %MW8 : INT; END_VAR
out := w + c;
own := 1;
flag := in;
END_PROGRAM
)";
    const CTestBuild build(source);
    ASSERT_TRUE(build.m_IsLoaded) << build.m_Printed << build.m_Error;
    EXPECT_EQ(build.Place("w"), "3004.0+16");
    EXPECT_EQ(build.Place("lo"), "3004.0+8");
    EXPECT_EQ(build.Place("hi"), "3005.0+8");
    EXPECT_EQ(build.Place("flag"), "3006.3+1");
    EXPECT_EQ(build.Place("all"), "3004.0+32");
    EXPECT_EQ(build.Place("in"), "1000.0+1");
    EXPECT_EQ(build.Place("out"), "2002.0+16");
    EXPECT_EQ(build.Place("c"), "nowhere");
    EXPECT_EQ(build.Place("own", "main"), "3008.0+16");
    EXPECT_EQ(build.Find("flag")->address, "%MX6.3");

    const AreaFacts& memory = build.Area(AreaKind::Memory);
    EXPECT_EQ(memory.begin, 3000);
    EXPECT_EQ(memory.size, 100);
    EXPECT_EQ(memory.UsedBytes(), 6);
    EXPECT_EQ(memory.overlaps, 6);   // all with each of the others, w with lo and hi
    EXPECT_EQ(build.Find("all")->overlaps, 4);
    EXPECT_EQ(build.Find("w")->overlaps, 3);
    EXPECT_EQ(build.Find("lo")->overlaps, 2);
    EXPECT_EQ(build.Find("hi")->overlaps, 2);
    EXPECT_EQ(build.Find("flag")->overlaps, 1);
    EXPECT_EQ(build.Find("own", "main")->overlaps, 0);
    EXPECT_EQ(build.Area(AreaKind::Input).UsedBytes(), 1);
    EXPECT_EQ(build.Area(AreaKind::Output).UsedBytes(), 2);
    // The compiler counts the address of own as a place in main's local memory, which so takes 3010 bytes; raised to
    // a multiple of 4 and with the call that is 3020.
    ASSERT_EQ(build.m_Facts.findings.size(), 2u);
    EXPECT_EQ(build.m_Facts.findings[0], "local memory of main takes 3010 bytes because of own, whose address counts as a "
                                         "place in it: declare it as a global");
    EXPECT_EQ(build.m_Facts.findings[1], "the return stack of 1024 bytes is too small: one program needs 3020");

    // Without the target the listing still tells the areas of globals, but no sizes.
    const CTestBuild alone(source, "", /*withTarget=*/false);
    ASSERT_TRUE(alone.m_IsLoaded) << alone.m_Error;
    EXPECT_EQ(alone.Place("all"), "3004.0+32");
    EXPECT_EQ(alone.Area(AreaKind::Memory).size, -1);
    EXPECT_EQ(alone.Area(AreaKind::Memory).begin, 3004);
    EXPECT_EQ(alone.Area(AreaKind::Memory).UsedBytes(), 4);
    EXPECT_EQ(alone.Area(AreaKind::Memory).overlaps, 6);
    EXPECT_EQ(alone.Area(AreaKind::Located).UsedBytes(), 2);
}

// With memory packed retained globals are counted as plain ones, and lie over the retained variables of programs.
TEST(ReportMaps, AnOverlapThatNoAddressAskedForIsAFinding)
{
    const CTestBuild build(R"(
VAR_GLOBAL RETAIN total : INT; END_VAR
PROGRAM main
VAR RETAIN kept : INT; END_VAR
total := total + 1;
kept := total;
END_PROGRAM
)", "-o1");
    ASSERT_TRUE(build.m_IsLoaded) << build.m_Printed << build.m_Error;
    EXPECT_EQ(build.Place("total"), "0.0+16");
    EXPECT_EQ(build.Place("kept", "main"), "0.0+16");
    ASSERT_EQ(build.m_Facts.findings.size(), 1u);
    EXPECT_EQ(build.m_Facts.findings[0], "total lies over main.kept, and no AT says so");
}
