// Every operation on every kind of value, with its boundaries, run both ways. The expected values are those of the
// rules: integers wrap in their width, quotients go towards zero, a remainder has the sign of the dividend.

#include "unit/machine/MachineTest.h"

static std::string Suffix(const std::string& type)
{
    return "(" + type + ")";
}

// The value that the lines leave on the stack, stored as `type`.
static std::string Evaluate(const std::string& lines, const std::string& type, const MachineOptions& options = {})
{
    std::string first;
    for (const MachineOptions& way : BothWays(options)) {
        const std::string bit = type == "BOOL" ? ".0" : "";
        CTestMachine machine(MakeProgram(lines + "\tPOP" + Suffix(type) + "\t[global+0]" + bit + "\t;x\n"), way);
        if (!machine.m_pMachine) return machine.m_Error;
        std::string result;
        if (machine.Run() == RunStatus::Trapped) {
            result = "trap: " + machine.m_pMachine->GetTrap().reason;
        } else {
            const DebugType* pType = machine.m_pImage->m_DebugInfo.FindType(type);
            result = ToText(machine.GetGlobal(0, pType->kind));
        }
        if (first.empty()) first = result;
        EXPECT_EQ(first, result) << "the two ways of running differ:\n" << lines;
    }
    return first;
}

static std::string Push(const std::string& type, const std::string& value)
{
    return "\tPUSH" + Suffix(type) + "\t" + value + "\n";
}

static std::string Binary(const std::string& operation, const std::string& type, const std::string& a,
                          const std::string& b, const MachineOptions& options = {})
{
    return Evaluate(Push(type, a) + Push(type, b) + "\t" + operation + Suffix(type) + "\n", type, options);
}

static std::string Unary(const std::string& operation, const std::string& type, const std::string& a)
{
    return Evaluate(Push(type, a) + "\t" + operation + Suffix(type) + "\n", type);
}

static std::string Compare(const std::string& relation, const std::string& type, const std::string& a,
                           const std::string& b)
{
    return Evaluate(Push(type, a) + Push(type, b) + "\tCMP " + relation + Suffix(type) + "\n", "BOOL");
}

struct Width
{
    const char* type;
    const char* low;
    const char* high;
};

static const Width g_Integers[] = {
    {"SINT", "-128", "127"},
    {"INT", "-32768", "32767"},
    {"DINT", "-2147483648", "2147483647"},
    {"LINT", "-9223372036854775808", "9223372036854775807"},
    {"USINT", "0", "255"},
    {"UINT", "0", "65535"},
    {"UDINT", "0", "4294967295"},
    {"BYTE", "0", "255"},
    {"WORD", "0", "65535"},
    {"DWORD", "0", "4294967295"},
};

TEST(MachineArithmetic, IntegersWrapInTheirWidth)
{
    for (const Width& width : g_Integers) {
        SCOPED_TRACE(width.type);
        EXPECT_EQ(Binary("ADD", width.type, "2", "3"), "5");
        EXPECT_EQ(Binary("ADD", width.type, width.high, "1"), width.low);
        EXPECT_EQ(Binary("SUB", width.type, "7", "3"), "4");
        EXPECT_EQ(Binary("SUB", width.type, width.low, "1"), width.high);
        EXPECT_EQ(Binary("MUL", width.type, "6", "7"), "42");
        EXPECT_EQ(Binary("DIV", width.type, "17", "5"), "3");
        EXPECT_EQ(Binary("MOD", width.type, "17", "5"), "2");
        EXPECT_EQ(Binary("MIN", width.type, "17", "5"), "5");
        EXPECT_EQ(Binary("MAX", width.type, "17", "5"), "17");
        EXPECT_EQ(Binary("AND", width.type, "12", "10"), "8");
        EXPECT_EQ(Binary("OR", width.type, "12", "10"), "14");
        EXPECT_EQ(Binary("XOR", width.type, "12", "10"), "6");
        EXPECT_EQ(Binary("DIV", width.type, "1", "0"), "trap: division by zero");
        EXPECT_EQ(Binary("MOD", width.type, "1", "0"), "trap: division by zero");
        EXPECT_EQ(Unary("NEG", width.type, "0"), "0");
        EXPECT_EQ(Unary("SQRT", width.type, "99"), "9");
        EXPECT_EQ(Unary("ABS", width.type, "9"), "9");
    }
    // 16-bit products are computed as int by a careless machine: 65535 * 65535 overflows that.
    EXPECT_EQ(Binary("MUL", "UINT", "65535", "65535"), "1");
    EXPECT_EQ(Binary("MUL", "INT", "300", "300"), "24464");
    EXPECT_EQ(Binary("MUL", "UDINT", "4294967295", "4294967295"), "1");
    EXPECT_EQ(Binary("MUL", "SINT", "-128", "-1"), "-128");
}

TEST(MachineArithmetic, SignedDivision)
{
    for (const char* type : {"SINT", "INT", "DINT", "LINT"}) {
        SCOPED_TRACE(type);
        EXPECT_EQ(Binary("DIV", type, "-17", "5"), "-3");
        EXPECT_EQ(Binary("DIV", type, "17", "-5"), "-3");
        EXPECT_EQ(Binary("MOD", type, "-17", "5"), "-2");
        EXPECT_EQ(Binary("MOD", type, "17", "-5"), "2");
        EXPECT_EQ(Unary("NEG", type, "5"), "-5");
        EXPECT_EQ(Unary("ABS", type, "-5"), "5");
        EXPECT_EQ(Unary("NOT", type, "0"), "-1");
    }
    for (const Width& width : g_Integers) {
        if (width.low[0] != '-') continue;
        SCOPED_TRACE(width.type);
        EXPECT_EQ(Binary("DIV", width.type, width.low, "-1"), width.low);
        EXPECT_EQ(Binary("MOD", width.type, width.low, "-1"), "0");
        EXPECT_EQ(Unary("ABS", width.type, width.low), width.low);
        EXPECT_EQ(Unary("NEG", width.type, width.low), width.low);
    }
    EXPECT_EQ(Unary("NEG", "UINT", "1"), "65535");
    EXPECT_EQ(Unary("NOT", "BYTE", "15"), "240");
    EXPECT_EQ(Unary("NOT", "DWORD", "0"), "4294967295");
}

TEST(MachineArithmetic, RemainderCanHaveTheSignOfTheDivisor)
{
    MachineOptions floored;
    floored.remainder = Remainder::Floored;
    EXPECT_EQ(Binary("MOD", "INT", "-17", "5", floored), "3");
    EXPECT_EQ(Binary("MOD", "INT", "17", "-5", floored), "-3");
    EXPECT_EQ(Binary("MOD", "INT", "-32768", "-1", floored), "0");
    EXPECT_EQ(Binary("MOD", "INT", "4", "0", floored), "trap: division by zero");
}

TEST(MachineArithmetic, Reals)
{
    EXPECT_EQ(Binary("ADD", "REAL", "0.1", "0.2"), "0.3");   // as a float: 0.3, not 0.30000001192
    EXPECT_EQ(Binary("ADD", "LREAL", "0.1", "0.2"), "0.30000000000000004");
    for (const char* type : {"REAL", "LREAL"}) {
        SCOPED_TRACE(type);
        EXPECT_EQ(Binary("SUB", type, "1.5", "0.25"), "1.25");
        EXPECT_EQ(Binary("MUL", type, "1.5", "-2.0"), "-3.0");
        EXPECT_EQ(Binary("DIV", type, "1.0", "4.0"), "0.25");
        EXPECT_EQ(Binary("DIV", type, "1.0", "0.0"), "trap: division by zero");
        EXPECT_EQ(Binary("MIN", type, "1.0", "-4.0"), "-4.0");
        EXPECT_EQ(Binary("MAX", type, "1.0", "-4.0"), "1.0");
        EXPECT_EQ(Unary("NEG", type, "1.5"), "-1.5");
        EXPECT_EQ(Unary("ABS", type, "-1.5"), "1.5");
        EXPECT_EQ(Unary("SQRT", type, "2.25"), "1.5");
        EXPECT_EQ(Binary("MOD", type, "2.0", "1.0"), std::string("trap: there is no such operation for ") + type);
    }
    MachineOptions ieee;
    ieee.realDivision = RealDivision::Ieee;
    EXPECT_EQ(Binary("DIV", "REAL", "-1.0", "0.0", ieee), "-inf");
    EXPECT_EQ(Binary("DIV", "LREAL", "1.0", "0.0", ieee), "inf");
}

TEST(MachineArithmetic, Comparisons)
{
    for (const char* type : {"SINT", "INT", "DINT", "LINT", "USINT", "UINT", "UDINT", "WORD", "REAL", "LREAL"}) {
        SCOPED_TRACE(type);
        const char* order[] = {"1", "2"};
        struct Expectation
        {
            const char* relation;
            bool below, equal, above;
        };
        for (const Expectation& expected : {Expectation{"LT", true, false, false}, {"LE", true, true, false},
                                            {"EQ", false, true, false}, {"NE", true, false, true},
                                            {"GE", false, true, true}, {"GT", false, false, true}}) {
            SCOPED_TRACE(expected.relation);
            EXPECT_EQ(Compare(expected.relation, type, order[0], order[1]), expected.below ? "TRUE" : "FALSE");
            EXPECT_EQ(Compare(expected.relation, type, order[1], order[1]), expected.equal ? "TRUE" : "FALSE");
            EXPECT_EQ(Compare(expected.relation, type, order[1], order[0]), expected.above ? "TRUE" : "FALSE");
        }
    }
    EXPECT_EQ(Compare("LT", "INT", "-1", "0"), "TRUE");
    EXPECT_EQ(Compare("LT", "UINT", "65535", "0"), "FALSE");
    EXPECT_EQ(Compare("EQ", "BOOL", "1", "1"), "TRUE");
    EXPECT_EQ(Compare("NE", "BOOL", "1", "0"), "TRUE");
}

// The jump that a comparison is fused with asks the same question; "JNC" its contrary.
TEST(MachineArithmetic, ComparisonsBeforeJumps)
{
    for (const char* type : {"SINT", "INT", "DINT", "USINT", "UINT", "UDINT", "REAL", "LREAL"})
        for (const char* relation : {"LT", "LE", "EQ", "NE", "GE", "GT"})
            for (const auto& [a, b] : {std::pair{"1", "2"}, std::pair{"2", "2"}, std::pair{"2", "1"}}) {
                SCOPED_TRACE(std::string(type) + " " + a + " " + relation + " " + b);
                const std::string holds = Compare(relation, type, a, b);
                const std::string compare = Push(type, a) + Push(type, b) + "\tCMP " + relation + Suffix(type) + "\n";
                const std::string jumped = "\tPUSH(INT)\t0\n\tJMP LABEL0002\n\tLABEL0001:\n\tPUSH(INT)\t1\n"
                                           "\tLABEL0002:\n";
                EXPECT_EQ(Evaluate(compare + "\tJC LABEL0001\n" + jumped, "INT"), holds == "TRUE" ? "1" : "0");
                EXPECT_EQ(Evaluate(compare + "\tJNC LABEL0001\n" + jumped, "INT"), holds == "TRUE" ? "0" : "1");
            }
}

TEST(MachineArithmetic, NothingComparesWithNotANumber)
{
    MachineOptions ieee;
    ieee.realDivision = RealDivision::Ieee;
    const std::string nan = Push("REAL", "0.0") + Push("REAL", "0.0") + "\tDIV(REAL)\n";
    for (const char* relation : {"LT", "LE", "EQ", "GE", "GT"}) {
        SCOPED_TRACE(relation);
        const std::string compare = nan + Push("REAL", "1.0") + "\tCMP " + relation + "(REAL)\n";
        EXPECT_EQ(Evaluate(compare, "BOOL", ieee), "FALSE");
        const std::string jump = compare + "\tJNC LABEL0001\n\tPUSH(INT)\t5\n\tJMP LABEL0002\n\tLABEL0001:\n"
                                           "\tPUSH(INT)\t6\n\tLABEL0002:\n";
        EXPECT_EQ(Evaluate(jump, "INT", ieee), "6");
    }
    EXPECT_EQ(Evaluate(nan + Push("REAL", "1.0") + "\tCMP NE(REAL)\n", "BOOL", ieee), "TRUE");
}

TEST(MachineArithmetic, Booleans)
{
    for (const auto& [a, b] : {std::pair{0, 0}, std::pair{0, 1}, std::pair{1, 0}, std::pair{1, 1}}) {
        const std::string left = std::to_string(a);
        const std::string right = std::to_string(b);
        EXPECT_EQ(Binary("AND", "BOOL", left, right), (a & b) ? "TRUE" : "FALSE");
        EXPECT_EQ(Binary("OR", "BOOL", left, right), (a | b) ? "TRUE" : "FALSE");
        EXPECT_EQ(Binary("XOR", "BOOL", left, right), (a ^ b) ? "TRUE" : "FALSE");
    }
    EXPECT_EQ(Unary("NOT", "BOOL", "0"), "TRUE");
    EXPECT_EQ(Unary("NOT", "BOOL", "1"), "FALSE");
}

TEST(MachineArithmetic, Powers)
{
    const auto power = [](const std::string& type, const std::string& base, const std::string& exponent) {
        return Evaluate(Push(type, base) + Push("INT", exponent) + "\tPOW" + Suffix(type) + "\n", type);
    };
    EXPECT_EQ(power("INT", "2", "10"), "1024");
    EXPECT_EQ(power("INT", "-3", "3"), "-27");
    EXPECT_EQ(power("INT", "2", "15"), "-32768");
    EXPECT_EQ(power("INT", "2", "16"), "0");
    EXPECT_EQ(power("UDINT", "7", "0"), "1");
    EXPECT_EQ(power("INT", "2", "-1"), "0");
    EXPECT_EQ(power("INT", "1", "-5"), "1");
    EXPECT_EQ(power("INT", "-1", "-5"), "-1");
    EXPECT_EQ(power("INT", "-1", "-4"), "1");
    EXPECT_EQ(power("INT", "0", "-1"), "trap: division by zero");
    EXPECT_EQ(power("REAL", "2.0", "-2"), "0.25");
    EXPECT_EQ(power("LREAL", "1.5", "2"), "2.25");
    const auto realPower = [](const std::string& type, const std::string& base, const std::string& exponent) {
        return Evaluate(Push(type, base) + Push("REAL", exponent) + "\tPOWR" + Suffix(type) + "\n", type);
    };
    EXPECT_EQ(realPower("REAL", "4.0", "0.5"), "2.0");
    EXPECT_EQ(realPower("LREAL", "4.0", "-0.5"), "0.5");
    EXPECT_EQ(realPower("INT", "9", "0.5"), "3");
    EXPECT_EQ(realPower("DINT", "10", "0.5"), "3");
}

TEST(MachineArithmetic, ShiftsAndRotations)
{
    const auto shift = [](const std::string& operation, const std::string& type, const std::string& value,
                          const std::string& count, const MachineOptions& options = {}) {
        return Evaluate(Push(type, value) + Push("INT", count) + "\t" + operation + Suffix(type) + "\n", type, options);
    };
    EXPECT_EQ(shift("SHL", "BYTE", "129", "1"), "2");
    EXPECT_EQ(shift("SHR", "BYTE", "129", "1"), "64");
    EXPECT_EQ(shift("ROL", "BYTE", "129", "1"), "3");
    EXPECT_EQ(shift("ROR", "BYTE", "129", "1"), "192");
    EXPECT_EQ(shift("ROL", "WORD", "32769", "4"), "24");
    EXPECT_EQ(shift("ROR", "WORD", "1", "17"), "32768");
    EXPECT_EQ(shift("ROL", "DWORD", "2147483649", "0"), "2147483649");
    EXPECT_EQ(shift("ROL", "DWORD", "2147483649", "-1"), "3221225472");
    EXPECT_EQ(shift("SHL", "WORD", "1", "15"), "32768");
    EXPECT_EQ(shift("SHL", "WORD", "1", "16"), "0");
    EXPECT_EQ(shift("SHR", "WORD", "65535", "16"), "0");
    EXPECT_EQ(shift("SHL", "WORD", "1", "-1"), "0");
    EXPECT_EQ(shift("SHL", "INT", "1", "15"), "-32768");
    EXPECT_EQ(shift("SHR", "INT", "-8", "1"), "-4");
    EXPECT_EQ(shift("SHR", "INT", "-8", "20"), "-1");
    EXPECT_EQ(shift("SHL", "BOOL", "1", "1"), "FALSE");
    MachineOptions other;
    other.wideShift = WideShift::Modulo;
    other.rightShift = RightShift::Logical;
    EXPECT_EQ(shift("SHL", "WORD", "1", "17", other), "2");
    EXPECT_EQ(shift("SHR", "INT", "-8", "1", other), "32764");
}

TEST(MachineArithmetic, MulDivKeepsTheProduct)
{
    const auto mulDiv = [](const std::string& type, const std::string& a, const std::string& b, const std::string& c) {
        return Evaluate(Push(type, a) + Push(type, b) + Push(type, c) + "\tMULDIV" + Suffix(type) + "\n", type);
    };
    EXPECT_EQ(mulDiv("INT", "1000", "1000", "500"), "2000");
    EXPECT_EQ(mulDiv("INT", "-7", "3", "2"), "-10");
    EXPECT_EQ(mulDiv("UDINT", "4000000000", "2", "4"), "2000000000");
    EXPECT_EQ(mulDiv("UDINT", "4000000000", "4000000000", "4000000000"), "4000000000");   // beyond 63 bits
    EXPECT_EQ(mulDiv("REAL", "1.5", "4.0", "2.0"), "3.0");
    EXPECT_EQ(mulDiv("LREAL", "1.5", "4.0", "8.0"), "0.75");
    EXPECT_EQ(mulDiv("INT", "1", "1", "0"), "trap: division by zero");
    EXPECT_EQ(mulDiv("REAL", "1.0", "1.0", "0.0"), "trap: division by zero");
}

TEST(MachineArithmetic, Conversions)
{
    const auto convert = [](const std::string& from, const std::string& value, const std::string& to,
                            const MachineOptions& options = {}) {
        return Evaluate(Push(from, value) + "\tTO_" + to + " (" + from + ")\n", to, options);
    };
    EXPECT_EQ(convert("INT", "-1", "UINT"), "65535");
    EXPECT_EQ(convert("INT", "300", "SINT"), "44");
    EXPECT_EQ(convert("UINT", "65535", "INT"), "-1");
    EXPECT_EQ(convert("UINT", "65535", "DINT"), "65535");
    EXPECT_EQ(convert("SINT", "-1", "DWORD"), "4294967295");
    EXPECT_EQ(convert("INT", "7", "REAL"), "7.0");
    EXPECT_EQ(convert("UDINT", "4294967295", "LREAL"), "4294967295.0");
    EXPECT_EQ(convert("REAL", "2.75", "INT"), "2");
    EXPECT_EQ(convert("REAL", "-2.75", "INT"), "-2");
    EXPECT_EQ(convert("REAL", "40000.0", "INT"), "32767");
    EXPECT_EQ(convert("REAL", "-40000.0", "INT"), "-32768");
    EXPECT_EQ(convert("LREAL", "-1.0", "UINT"), "0");
    EXPECT_EQ(convert("LREAL", "1e30", "UDINT"), "4294967295");
    EXPECT_EQ(convert("LREAL", "0.1", "REAL"), "0.1");
    EXPECT_EQ(convert("BOOL", "1", "INT"), "1");
    EXPECT_EQ(convert("INT", "256", "BOOL"), "TRUE");
    EXPECT_EQ(convert("INT", "0", "BOOL"), "FALSE");
    EXPECT_EQ(convert("REAL", "0.5", "BOOL"), "TRUE");
    MachineOptions nearest;
    nearest.rounding = Rounding::Nearest;
    EXPECT_EQ(convert("REAL", "2.5", "INT", nearest), "3");
    EXPECT_EQ(convert("REAL", "-2.5", "INT", nearest), "-3");
    EXPECT_EQ(convert("REAL", "2.4", "INT", nearest), "2");
    // The forms without a blank bring exponents and counts to one type.
    EXPECT_EQ(Evaluate(Push("SINT", "-3") + "\tTO_INT(SINT)\n", "INT"), "-3");
    EXPECT_EQ(Evaluate(Push("LREAL", "1.5") + "\tTO_REAL(LREAL)\n", "REAL"), "1.5");
}
