// The tokens of short texts, as one line: the token's text, and behind a colon its value if it has one.

#include "frontend/Scanner.h"

#include "SourceFixture.h"
#include "files/Format.h"
#include "frontend/StringLiteral.h"
#include "frontend/Tokens.h"
#include "model/CastFunction.h"
#include "model/Type.h"

#include <cmath>
#include <cstdint>
#include <limits>
#include <memory>
#include <vector>

namespace
{

struct ScannedToken
{
    int nToken;
    SourceLocation location;
};

struct Word
{
    std::string_view text;
    int token;
};

constexpr Word g_Keywords[] = {
    {"TRUE", TRUE}, {"FALSE", FALSE}, {"ELSE", ELSE}, {"IF", IF}, {"THEN", THEN}, {"END_IF", END_IF},
    {"ELSIF", ELSIF}, {"WHILE", WHILE}, {"END_WHILE", END_WHILE}, {"CASE", CASE}, {"OF", OF},
    {"END_CASE", END_CASE}, {"DO", DO}, {"FOR", FOR}, {"TO", TO}, {"END_FOR", END_FOR}, {"BY", BY},
    {"PROGRAM", PROGRAM}, {"END_PROGRAM", END_PROGRAM}, {"EXIT", EXIT}, {"FUNCTION", FUNCTION},
    {"END_FUNCTION", END_FUNCTION}, {"VAR", VAR}, {"END_VAR", END_VAR}, {"VAR_INPUT", VAR_INPUT},
    {"VAR_OUTPUT", VAR_OUTPUT}, {"VAR_IN_OUT", VAR_IN_OUT}, {"VAR_GLOBAL", VAR_GLOBAL},
    {"VAR_EXTERNAL", VAR_EXTERNAL}, {"RETAIN", RETAIN}, {"CONSTANT", CONSTANT}, {"AT", AT}, {"AND", AND},
    {"OR", OR}, {"XOR", XOR}, {"NOT", NOT}, {"REPEAT", REPEAT}, {"END_REPEAT", END_REPEAT}, {"UNTIL", UNTIL},
    {"STRING", STRUCTURE}, {"ARRAY", ARRAY}, {"TYPE", TYPE}, {"END_TYPE", END_TYPE}, {"STRUCT", STRUCT},
    {"END_STRUCT", END_STRUCT}, {"RETURN", RETURN}, {"MOD", MOD}, {"FUNCTION_BLOCK", FUNCTION_BLOCK},
    {"END_FUNCTION_BLOCK", END_FUNCTION_BLOCK}, {"SYSTEM", SYSTEM}, {"MULDIV", MULDIV}, {"ROL", ROL},
    {"ROR", ROR}, {"SHL", SHL}, {"SHR", SHR}, {"ABS", ABS}, {"MIN", MIN}, {"MAX", MAX}, {"LIMIT", LIMIT},
    {"SQRT", SQRT},
};
static_assert(std::size(g_Keywords) == 60);

std::string TypeName(const CType* pType)
{
    return pType ? pType->m_Name : "null";
}

// The token in yylval as text; frees its value.
std::string Describe(int token)
{
    const std::string name = token < 258 ? std::string(1, static_cast<char>(token)) : std::string(GetTokenText(token));
    switch (token) {
    case IMM_INTEGER: return name + ":" + std::to_string(yylval.nValue);
    case IMM_REAL: return name + ":" + FormatText("%.15g", yylval.dValue);
    case IDENTIFIER:
    case DIRECT_VARIABLE: return name + ":" + std::string(yylval.pName->GetText());
    case TYPE_IDENTIFIER:
    case TYPE_TIME: return name + ":" + TypeName(yylval.pType);
    case CAST_FUNCTION_CALL: return name + ":" + yylval.pCast->m_Name;
    case STR_DIR: {
        const std::unique_ptr<CStringLiteral> owned(yylval.pString);
        return name + ":" + owned->GetText();
    }
    default: return name;
    }
}

}   // namespace

class ScannerTest : public SourceFixture
{
protected:
    // All tokens of the text, a blank between them; `printed` is what was printed meanwhile.
    std::string Scan(std::string_view source)
    {
        SetScannerInput(std::string(source));
        tokens.clear();
        std::string line;
        testing::internal::CaptureStdout();
        for (int token = yylex(); token != 0; token = yylex()) {
            tokens.push_back({token, yylloc});
            if (!line.empty()) line += ' ';
            line += Describe(token);
        }
        printed = testing::internal::GetCapturedStdout();
        return line;
    }

    // The stretch of a token: "line.column-line.column".
    std::string At(std::size_t index) const
    {
        const SourceLocation& where = tokens.at(index).location;
        return FormatText("%d.%d-%d.%d", where.nFirstLine, where.nFirstColumn, where.nLastLine, where.nLastColumn);
    }

    double ScanReal(std::string_view source)
    {
        SetScannerInput(std::string(source));
        EXPECT_EQ(yylex(), IMM_REAL);
        return yylval.dValue;
    }

    std::vector<ScannedToken> tokens;
    std::string printed;
};

// ---- Numbers.

TEST_F(ScannerTest, PlainIntegers)
{
    EXPECT_EQ(Scan("0 7 007 123"), "IMM_INTEGER:0 IMM_INTEGER:7 IMM_INTEGER:7 IMM_INTEGER:123");
}

TEST_F(ScannerTest, IntegersStayWithin64Bits)
{
    EXPECT_EQ(Scan("9223372036854775807"), "IMM_INTEGER:9223372036854775807");
    EXPECT_EQ(Scan("9223372036854775808"), "IMM_INTEGER:9223372036854775807");
    EXPECT_EQ(Scan("99_999_999_999_999_999_999"), "IMM_INTEGER:9223372036854775807");
    EXPECT_EQ(Scan("16#FFFFFFFFFFFFFFFF"), "IMM_INTEGER:9223372036854775807");
    EXPECT_EQ(Scan("16#7FFFFFFFFFFFFFFF"), "IMM_INTEGER:9223372036854775807");
}

TEST_F(ScannerTest, IntegersWithUnderscores)
{
    EXPECT_EQ(Scan("1_000_000"), "IMM_INTEGER:1000000");
    EXPECT_EQ(Scan("1_"), "IMM_INTEGER:1 IDENTIFIER:_");
    EXPECT_EQ(Scan("\n1__000"), "IMM_INTEGER:1 IDENTIFIER:__000");
    EXPECT_EQ(printed, "t.st(2,7) : error: two underscore in identifier's name\n");
}

TEST_F(ScannerTest, BasedIntegers)
{
    EXPECT_EQ(Scan("2#1010 2#1_0_1"), "IMM_INTEGER:10 IMM_INTEGER:5");
    EXPECT_EQ(Scan("8#17 8#1_7"), "IMM_INTEGER:15 IMM_INTEGER:15");
    EXPECT_EQ(Scan("16#FF 16#F_F"), "IMM_INTEGER:255 IMM_INTEGER:255");
    EXPECT_EQ(Scan("2#12"), "IMM_INTEGER:1 IMM_INTEGER:2");
    EXPECT_EQ(Scan("8#8"), "IMM_INTEGER:8 # IMM_INTEGER:8");
    EXPECT_EQ(Scan("2#1__0"), "IMM_INTEGER:1 IDENTIFIER:__0");
}

TEST_F(ScannerTest, HexadecimalDigitsAreUpperCase)
{
    EXPECT_EQ(Scan("16#ff"), "IMM_INTEGER:16 # IDENTIFIER:ff");
    EXPECT_EQ(Scan("16#Ff"), "IMM_INTEGER:15 IDENTIFIER:f");
}

TEST_F(ScannerTest, Reals)
{
    EXPECT_EQ(Scan("1.5 .5 0.25"), "IMM_REAL:1.5 IMM_REAL:0.5 IMM_REAL:0.25");
    EXPECT_EQ(Scan("1.5e+3 1.5E-1"), "IMM_REAL:1500 IMM_REAL:0.15");
}

TEST_F(ScannerTest, ExponentNeedsItsSign)
{
    EXPECT_EQ(Scan("1.5e3"), "IMM_REAL:1.5 IDENTIFIER:e3");
    EXPECT_EQ(Scan("1E5"), "IMM_INTEGER:1 IDENTIFIER:E5");
    EXPECT_EQ(Scan("1.5e+"), "IMM_REAL:1.5 IDENTIFIER:e +");
}

TEST_F(ScannerTest, PointWithoutDigitsIsNoReal)
{
    EXPECT_EQ(Scan("1."), "IMM_INTEGER:1 .");
    EXPECT_EQ(Scan("1..2"), "IMM_INTEGER:1 .. IMM_INTEGER:2");
    EXPECT_EQ(Scan("1.0..2"), "IMM_REAL:1 .. IMM_INTEGER:2");
}

// Wanted: with underscores, every digit of the fraction has one behind it.
TEST_F(ScannerTest, RealsWithUnderscores)
{
    EXPECT_EQ(Scan("1.2_3_"), "IMM_REAL:1.23");
    EXPECT_EQ(Scan("1.2_3"), "IMM_REAL:1.2 IMM_INTEGER:3");
    EXPECT_EQ(Scan("1.2_3_e+1"), "IMM_REAL:12.3");
    EXPECT_EQ(Scan(".2_"), "IMM_REAL:0.2");
    EXPECT_EQ(Scan("1_0.5"), "IMM_INTEGER:10 IMM_REAL:0.5");
}

TEST_F(ScannerTest, RealsBeyondTheRange)
{
    EXPECT_TRUE(std::isinf(ScanReal("1.0e+309")));
    EXPECT_TRUE(std::isinf(ScanReal("1" + std::string(400, '0') + ".0")));
    EXPECT_TRUE(std::isinf(ScanReal("0.001e+99999999999999999999")));
    EXPECT_EQ(ScanReal("1.0e-400"), 0.0);
    EXPECT_EQ(ScanReal("0." + std::string(400, '0') + "1"), 0.0);
    EXPECT_EQ(ScanReal("1000.0e-99999999999999999999"), 0.0);
    EXPECT_EQ(ScanReal("0.0e+999"), 0.0);
    EXPECT_EQ(ScanReal("1.7976931348623157e+308"), std::numeric_limits<double>::max());
    EXPECT_EQ(ScanReal("4.9406564584124654e-324"), std::numeric_limits<double>::denorm_min());
}

TEST_F(ScannerTest, DigitsBeforeLetters)
{
    EXPECT_EQ(Scan("123abc"), "IMM_INTEGER:123 IDENTIFIER:abc");
}

// ---- Comments and blanks.

TEST_F(ScannerTest, CommentsDeliverNothing)
{
    EXPECT_EQ(Scan("a(* b *)c"), "IDENTIFIER:a IDENTIFIER:c");
    EXPECT_EQ(Scan("a(**)b(***)c(****)d"), "IDENTIFIER:a IDENTIFIER:b IDENTIFIER:c IDENTIFIER:d");
    EXPECT_EQ(Scan("a(*)b*)c"), "IDENTIFIER:a IDENTIFIER:c");
    EXPECT_EQ(Scan("a(* ** * / *) b"), "IDENTIFIER:a IDENTIFIER:b");
    EXPECT_EQ(printed, "");
}

TEST_F(ScannerTest, CommentsDoNotNest)
{
    EXPECT_EQ(Scan("(* (* *) *)"), "* )");
}

TEST_F(ScannerTest, ColumnCountsThroughTheLinesOfAComment)
{
    // "(*" is 2 characters, "x\ny" 3, "*)" 2: the name is at column 8 of line 2.
    EXPECT_EQ(Scan("(*x\ny*)a\nb"), "IDENTIFIER:a IDENTIFIER:b");
    EXPECT_EQ(At(0), "2.8-2.9");
    EXPECT_EQ(At(1), "3.1-3.2");
    EXPECT_EQ(Scan("(**\n*)a"), "IDENTIFIER:a");
    // Line 3 goes on behind "b" and the end of that text, at column 3: "(*" 2, "*\n" 2, "*)" 2.
    EXPECT_EQ(At(0), "4.9-4.10");
}

TEST_F(ScannerTest, OpenCommentGoesOnInTheNextFile)
{
    EXPECT_EQ(Scan("a (* b"), "IDENTIFIER:a");
    EXPECT_EQ(Scan("c *) d"), "IDENTIFIER:d");
    EXPECT_EQ(printed, "");
}

TEST_F(ScannerTest, StarsAtTheEndOfAnOpenCommentArePrinted)
{
    EXPECT_EQ(Scan("(* a **"), "");
    EXPECT_EQ(printed, "**");
    EXPECT_EQ(Scan("*"), "");
    EXPECT_EQ(printed, "*");
}

TEST_F(ScannerTest, LinesAndColumns)
{
    Scan("ab  IF\n\t:= 12\n\n;");
    ASSERT_EQ(tokens.size(), 5u);
    EXPECT_EQ(At(0), "1.1-1.3");
    EXPECT_EQ(At(1), "1.5-1.7");
    EXPECT_EQ(At(2), "2.2-2.4");
    EXPECT_EQ(At(3), "2.5-2.7");
    EXPECT_EQ(At(4), "4.1-4.2");
    EXPECT_STREQ(tokens[0].location.szFile, "t.st");
}

TEST_F(ScannerTest, FirstLineOfALaterFileBeginsAtColumnZero)
{
    Scan("a");
    yylineno = 1;
    nColumn = 0;
    Scan("b\nc");
    EXPECT_EQ(At(0), "1.0-1.1");
    EXPECT_EQ(At(1), "2.1-2.2");
}

TEST_F(ScannerTest, EndOfInputCountsAsOneCharacter)
{
    SetScannerInput("a");
    EXPECT_EQ(yylex(), IDENTIFIER);
    EXPECT_EQ(nColumn, 2);
    EXPECT_EQ(yylex(), 0);
    EXPECT_EQ(yyleng, 1);
    EXPECT_EQ(nColumn, 3);
    EXPECT_EQ(yylex(), 0);
    EXPECT_EQ(nColumn, 4);
}

TEST_F(ScannerTest, FreedBufferIsAnEmptyInput)
{
    SetScannerInput("a");
    FreeScannerBuffer();
    EXPECT_EQ(yylex(), 0);
}

// ---- Words.

TEST_F(ScannerTest, Keywords)
{
    for (const Word& word : g_Keywords) {
        Scan(word.text);
        ASSERT_EQ(tokens.size(), 1u) << word.text;
        EXPECT_EQ(tokens[0].nToken, word.token) << word.text;
    }
}

TEST_F(ScannerTest, LongerWordsAreIdentifiers)
{
    for (const Word& word : g_Keywords) {
        const std::string longer = std::string(word.text) + "X1";
        EXPECT_EQ(Scan(longer), "IDENTIFIER:" + longer);
    }
    EXPECT_EQ(Scan("VAR1 IFX END_VARX ANY_"), "IDENTIFIER:VAR1 IDENTIFIER:IFX IDENTIFIER:END_VARX IDENTIFIER:ANY_");
}

TEST_F(ScannerTest, KeywordsAreUpperCase)
{
    EXPECT_EQ(Scan("if true If"), "IDENTIFIER:if IDENTIFIER:true IDENTIFIER:If");
}

TEST_F(ScannerTest, TruthValues)
{
    SetScannerInput("TRUE FALSE");
    yylval.nValue = 77;
    EXPECT_EQ(yylex(), TRUE);
    EXPECT_EQ(yylval.nValue, 1);
    EXPECT_EQ(yylex(), FALSE);
    EXPECT_EQ(yylval.dValue, 0.0);
}

TEST_F(ScannerTest, Operators)
{
    EXPECT_EQ(Scan("& ** >= <= <> := > = < .. =>"), "AND POWER >= <= <> := > = < .. =>");
    EXPECT_EQ(tokens[0].nToken, AND);
    EXPECT_EQ(tokens[2].nToken, GREATER_EQUAL);
    EXPECT_EQ(tokens[6].nToken, GREATER);
    EXPECT_EQ(tokens[7].nToken, EQUAL);
    EXPECT_EQ(tokens[8].nToken, LESS);
    EXPECT_EQ(Scan("***"), "POWER *");
    EXPECT_EQ(Scan(">=="), ">= =");
    EXPECT_EQ(Scan("..."), ".. .");
    EXPECT_EQ(Scan("=>="), "=> =");
}

TEST_F(ScannerTest, SingleCharacters)
{
    EXPECT_EQ(Scan("# $ ) + , - / ; { } ( * . : [ ]"), "# $ ) + , - / ; { } ( * . : [ ]");
    EXPECT_EQ(tokens[3].nToken, '+');
    EXPECT_EQ(tokens[15].nToken, ']');
    EXPECT_EQ(printed, "");
}

TEST_F(ScannerTest, UnknownCharacters)
{
    EXPECT_EQ(Scan("a ?\nb"), "IDENTIFIER:a IDENTIFIER:b");
    EXPECT_EQ(printed, "t.st(1,3) : error: Unknown character\n");
    EXPECT_EQ(Scan(std::string_view("\0c", 2)), "IDENTIFIER:c");
    EXPECT_EQ(printed, "t.st(2,3) : error: Unknown character\n");   // the end of the first text took column 2
}

TEST_F(ScannerTest, EveryOtherByteIsUnknown)
{
    constexpr std::string_view known = "\t\n #$%&'()*+,-./0123456789:;<=>[]_{}";
    for (int byte = 0; byte < 256; ++byte) {
        const char c = static_cast<char>(byte);
        const bool isLetter = (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z');
        if (isLetter || (known.find(c) != std::string_view::npos && c != '%')) continue;
        EXPECT_EQ(Scan(std::string(1, c)), "");
        EXPECT_NE(printed.find(" : error: Unknown character\n"), std::string::npos) << byte;
    }
}

TEST_F(ScannerTest, DirectVariables)
{
    EXPECT_EQ(Scan("%IX0.0 %QW2 %MD10.1.2 %I7"),
              "DIRECT VARIABLE:IX0.0 DIRECT VARIABLE:QW2 DIRECT VARIABLE:MD10.1.2 DIRECT VARIABLE:I7");
    EXPECT_EQ(Scan("%QB1."), "DIRECT VARIABLE:QB1 .");
    EXPECT_EQ(printed, "");
}

TEST_F(ScannerTest, PercentSignElsewhereIsUnknown)
{
    EXPECT_EQ(Scan("%ix0"), "IDENTIFIER:ix0");
    EXPECT_EQ(printed, "t.st(1,1) : error: Unknown character\n");
    EXPECT_EQ(Scan("\n%IX"), "IDENTIFIER:IX");
    EXPECT_EQ(printed, "t.st(2,1) : error: Unknown character\n");
}

// ---- Times and dates.

TEST_F(ScannerTest, Times)
{
    EXPECT_EQ(Scan("t#1s T#1s time#1s TIME#1s"), "TIME_DIR TIME_DIR TIME_DIR TIME_DIR");
    EXPECT_EQ(Scan("T#1d2h3s4ms T#1.5d2.5ms T#"), "TIME_DIR TIME_DIR TIME_DIR");
    EXPECT_EQ(Scan("T#1d_2h_3s_4ms_ T#1.5s_"), "TIME_DIR TIME_DIR");
    EXPECT_EQ(Scan("T#1ms"), "TIME_DIR");
}

TEST_F(ScannerTest, TimesThatEndEarly)
{
    EXPECT_EQ(Scan("T#1m"), "TIME_DIR IMM_INTEGER:1 IDENTIFIER:m");
    EXPECT_EQ(Scan("T#1d_2h"), "TIME_DIR IMM_INTEGER:2 IDENTIFIER:h");
    EXPECT_EQ(Scan("T#-1s"), "TIME_DIR - IMM_INTEGER:1 IDENTIFIER:s");
    EXPECT_EQ(Scan("T#1S"), "TIME_DIR IMM_INTEGER:1 IDENTIFIER:S");
    EXPECT_EQ(Scan("T#2h1d"), "TIME_DIR IMM_INTEGER:1 IDENTIFIER:d");
    EXPECT_EQ(Scan("Time#1s"), "IDENTIFIER:Time # IMM_INTEGER:1 IDENTIFIER:s");
}

TEST_F(ScannerTest, Dates)
{
    EXPECT_EQ(Scan("d#2020-01-02 D#2020-01-02 DATE#2020-01-02"), "DATE_DIR DATE_DIR DATE_DIR");
    EXPECT_EQ(Scan("d#2020-01-023"), "DATE_DIR IMM_INTEGER:3");
    EXPECT_EQ(Scan("d#2020-1-02"), "IDENTIFIER:d # IMM_INTEGER:2020 - IMM_INTEGER:1 - IMM_INTEGER:2");
}

TEST_F(ScannerTest, TimesOfDay)
{
    EXPECT_EQ(Scan("tod#12:00:00 TOD#12:00:00.50 TIME_OF_DAY#12:00:00"),
              "TIME_OF_DAY_DIR TIME_OF_DAY_DIR TIME_OF_DAY_DIR");
    EXPECT_EQ(Scan("TOD#12:00:00.5"), "TIME_OF_DAY_DIR IMM_REAL:0.5");
}

TEST_F(ScannerTest, DatesWithTime)
{
    EXPECT_EQ(Scan("DT#2020-01-01-12:00:00 DATE_AND_TIME#2020-01-01-12:00:00.25"),
              "DATE_AND_TIME_DIR DATE_AND_TIME_DIR");
    EXPECT_EQ(Scan("dt#2020"), "IDENTIFIER:dt # IMM_INTEGER:2020");
}

// ---- Names and types.

TEST_F(ScannerTest, TypeWords)
{
    EXPECT_EQ(Scan("INT BOOL REAL"), "TYPE IDENTIFIER:INT TYPE IDENTIFIER:BOOL TYPE IDENTIFIER:REAL");
    EXPECT_EQ(printed, "");
    EXPECT_EQ(Scan("Int bool"), "IDENTIFIER:Int IDENTIFIER:bool");
}

TEST_F(ScannerTest, TypeWordsThatTheTargetRefusesAreDelivered)
{
    EXPECT_EQ(Scan("LINT"), "TYPE IDENTIFIER:LINT");
    EXPECT_EQ(printed, "t.st(1,5) : error: type LINT not supported for this target\n");
    EXPECT_EQ(Scan("\nANY_BIT"), "TYPE IDENTIFIER:null");
    EXPECT_EQ(printed, "t.st(2,8) : error: type ANY_BIT not supported for this target\n");
}

TEST_F(ScannerTest, AllTypeWords)
{
    constexpr std::string_view words[] = {"ANY",  "WORD",  "INT",   "REAL",  "SINT", "BOOL",  "BYTE",
                                          "DINT", "DWORD", "LINT",  "LREAL", "LWORD", "UDINT", "UINT",
                                          "ULINT", "USINT", "ANY_BIT", "ANY_INT", "ANY_NUM", "ANY_DATE", "ANY_REAL"};
    for (const std::string_view word : words) {
        Scan(word);
        ASSERT_EQ(tokens.size(), 1u) << word;
        EXPECT_EQ(tokens[0].nToken, TYPE_IDENTIFIER) << word;
    }
}

TEST_F(ScannerTest, TimeWords)
{
    for (const std::string_view word : {"TIME", "TIME_OF_DAY", "DATE", "DATE_AND_TIME"})
        EXPECT_EQ(Scan(word), "TYPE_TIME:" + std::string(word));
    EXPECT_EQ(Scan("\nTOD"), "TYPE_TIME:null");
    EXPECT_EQ(printed, "t.st(2,4) : error: type TOD not supported for this target\n");
    EXPECT_EQ(Scan("DT"), "TYPE_TIME:null");
}

TEST_F(ScannerTest, CastNamesAreCaseSensitive)
{
    EXPECT_EQ(Scan("INT_TO_REAL int_to_real"), "CAST_FUNCTION_CALL:INT_TO_REAL IDENTIFIER:int_to_real");
}

TEST_F(ScannerTest, UserTypesAreFoundInAnyCase)
{
    pNorvane->m_DataTypes.AddType(std::make_unique<CType>("Motor"));
    EXPECT_EQ(Scan("motor MOTOR mOtOr motors"),
              "TYPE IDENTIFIER:Motor TYPE IDENTIFIER:Motor TYPE IDENTIFIER:Motor IDENTIFIER:motors");
}

TEST_F(ScannerTest, UserTypeNamedLikeAnElementaryOne)
{
    pNorvane->m_DataTypes.AddType(std::make_unique<CType>("int"));
    EXPECT_EQ(Scan("Int INT"), "TYPE IDENTIFIER:int TYPE IDENTIFIER:INT");
}

TEST_F(ScannerTest, TwoUnderscoresAreReportedOnceAndTheNameStays)
{
    EXPECT_EQ(Scan("a__b__c _a_b_"), "IDENTIFIER:a__b__c IDENTIFIER:_a_b_");
    EXPECT_EQ(printed, "t.st(1,8) : error: two underscore in identifier's name\n");
}

// ---- Strings.

TEST_F(ScannerTest, StringsKnowWhereTheyBegin)
{
    SetScannerInput("  'ab\tc';");
    ASSERT_EQ(yylex(), STR_DIR);
    const std::unique_ptr<CStringLiteral> literal(yylval.pString);
    EXPECT_EQ(literal->GetText(), "ab\tc");
    EXPECT_EQ(literal->GetLine(), 1);
    EXPECT_EQ(literal->GetColumn(), 4);
    EXPECT_EQ(yylloc.nFirstColumn, 8);    // the closing apostrophe alone
    EXPECT_EQ(yylloc.nLastColumn, 9);
}

TEST_F(ScannerTest, EmptyAndNeighbouringStrings)
{
    EXPECT_EQ(Scan("'''a'"), "STR_DIR: STR_DIR:a");
}

TEST_F(ScannerTest, StringEscapes)
{
    EXPECT_EQ(Scan("'$L$l$N$n'"), "STR_DIR:\n\n\n\n");
    EXPECT_EQ(Scan("'$T$t'"), "STR_DIR:\t\t");
    EXPECT_EQ(Scan("'$P$p'"), "STR_DIR:\f\f");
    EXPECT_EQ(Scan("'$R$r'"), "STR_DIR:\r\r");
    EXPECT_EQ(Scan("'$$$''"), "STR_DIR:$'");
    EXPECT_EQ(Scan("'$41$AB'"), "STR_DIR:A\xAB");
    EXPECT_EQ(printed, "");
}

TEST_F(ScannerTest, ZeroByteEndsTheTextForReaders)
{
    SetScannerInput("'a$00b'");
    ASSERT_EQ(yylex(), STR_DIR);
    const std::unique_ptr<CStringLiteral> literal(yylval.pString);
    EXPECT_EQ(literal->GetLength(), 3);
    EXPECT_EQ(literal->GetText(), "a");
}

TEST_F(ScannerTest, WrongEscapesAreSkipped)
{
    constexpr std::string_view explanation =
        " : warning, incorrect use of escape sequence\n"
        "correct escape sequence are: $n, $N, $l, $L, $t, $T, $p, $P, $$, $', $r, $R or $ followed by two "
        "hexadecimal digits\n";
    EXPECT_EQ(Scan("'x$aby'"), "STR_DIR:xby");
    EXPECT_EQ(printed, "t.st(1,4)" + std::string(explanation));   // the column of the character behind the "$"
    EXPECT_EQ(Scan("\n'$4g'"), "STR_DIR:g");
    EXPECT_EQ(printed, "t.st(2,3)" + std::string(explanation));
    EXPECT_EQ(Scan("\n'$(1'"), "STR_DIR:1");
    EXPECT_EQ(printed, "t.st(3,3)" + std::string(explanation));
    EXPECT_EQ(pNorvane->m_Errors.GetErrorCount(), 0);
    EXPECT_EQ(pNorvane->m_Errors.GetWarningCount(), 3);
}

// Wanted: these are no part of the literal, they leave on standard output.
TEST_F(ScannerTest, SomeCharactersOfAStringArePrinted)
{
    EXPECT_EQ(Scan("'a(b)c|d\"e'"), "STR_DIR:abcde");
    EXPECT_EQ(printed, "()|\"");
}

TEST_F(ScannerTest, PrintedCharactersAndMessagesKeepTheirOrder)
{
    Scan("'(' ? ')'");
    EXPECT_EQ(printed, "(t.st(1,5) : error: Unknown character\n)");
}

TEST_F(ScannerTest, StringThatIsNotClosed)
{
    EXPECT_EQ(Scan("a 'bc\nd"), "IDENTIFIER:a IDENTIFIER:d");
    // The line end has been counted: line 2, and column 7 is the one behind it.
    EXPECT_EQ(printed, "t.st(2,7) : error: string not closed or wrong use of apices; first apex at (1,3)\n");
    EXPECT_EQ(At(1), "2.1-2.2");
}

TEST_F(ScannerTest, DollarBeforeTheLineEndIsPrinted)
{
    EXPECT_EQ(Scan("'a$\nb"), "IDENTIFIER:b");
    EXPECT_EQ(printed, "$t.st(2,5) : error: string not closed or wrong use of apices; first apex at (1,1)\n");
}

TEST_F(ScannerTest, OpenStringGoesOnInTheNextFile)
{
    EXPECT_EQ(Scan("'ab"), "");
    EXPECT_EQ(printed, "");
    EXPECT_EQ(Scan("cd' e"), "STR_DIR:abcd IDENTIFIER:e");
}

// ---- The longest token.

TEST_F(ScannerTest, TokenUpToTheLimit)
{
    const std::string name(16382, 'a');
    EXPECT_EQ(Scan(name + ";"), "IDENTIFIER:" + name + " ;");   // the ";" is the 16383rd byte that is looked at
    EXPECT_EQ(Scan(name), "IDENTIFIER:" + name);
    EXPECT_EQ(Scan("(*" + std::string(16382, ' ') + "*)b"), "IDENTIFIER:b");
    EXPECT_EQ(Scan("'" + name + "'"), "STR_DIR:" + name);
}

TEST_F(ScannerTest, ManyShortPiecesHaveNoLimit)
{
    std::string comment = "(*";
    for (int i = 0; i < 10000; ++i) comment += "text * ";
    EXPECT_EQ(Scan(comment + "*)b"), "IDENTIFIER:b");
}

TEST_F(ScannerTest, FixedTokenAtTheLimitNeedsNoFurtherByte)
{
    // "*)" ends a comment's stars for good: the match is 16383 bytes long and nothing behind it is looked at.
    EXPECT_EQ(Scan("(*" + std::string(16382, '*') + ")b"), "IDENTIFIER:b");
}

using ScannerDeathTest = ScannerTest;

TEST_F(ScannerDeathTest, TokenBehindTheLimit)
{
    // The place of the token stands on a line of its own in front of the text.
    const auto message = [](const std::string& place) {
        return "^t\\.st\\(" + place + "\\)\ninput buffer overflow, can't enlarge buffer because scanner uses REJECT\n$";
    };
    const std::string name(16383, 'a');
    EXPECT_EXIT(Scan(name + ";"), testing::ExitedWithCode(2), message("1,1"));
    EXPECT_EXIT(Scan(name), testing::ExitedWithCode(2), message("1,1"));
    EXPECT_EXIT(Scan("(*" + std::string(16383, ' ') + "*)"), testing::ExitedWithCode(2), message("1,3"));
    EXPECT_EXIT(Scan("'" + name + "'"), testing::ExitedWithCode(2), message("1,2"));
    EXPECT_EXIT(Scan("(*" + std::string(16383, '*') + ")"), testing::ExitedWithCode(2), message("1,3"));
    EXPECT_EXIT(Scan("(* two\nlines *)\n\n  " + name), testing::ExitedWithCode(2), message("4,3"));
}

// ---- The lists that the rules repeat.

TEST_F(ScannerTest, EveryOperatorOfTheListIsScannedAsItsKind)
{
    struct Operator
    {
        int kind;
        std::string mark;
    };
    const std::vector<Operator> operators = {
#define OPERATOR(kind, mark, mnemonic) {kind, mark},
#include "frontend/Operators.def"
#undef OPERATOR
    };
    for (const Operator& each : operators) {
        SCOPED_TRACE(each.mark);
        Scan("a " + each.mark + " b");
        ASSERT_EQ(tokens.size(), 3u);
        EXPECT_EQ(tokens[1].nToken, each.kind);
        EXPECT_TRUE(IsInfixOperator(each.kind));
        // Messages show the mark, but for one that they have a word for.
        EXPECT_EQ(GetOperatorText(each.kind), each.kind == POWER ? "POWER" : each.mark);
    }
}

// A type that the table has and no rule names would be scanned as an identifier.
TEST_F(ScannerTest, EveryNameOfTheTypeTableIsScannedAsAType)
{
    std::size_t count = 0;
    for (const CType* pType : pNorvane->m_DataTypes.GetTypes()) {
        if (pType == pNorvane->m_DataTypes.m_ErrorType) continue;   // its name is no word of the language
        SCOPED_TRACE(pType->m_Name);
        Scan(pType->m_Name);
        ASSERT_EQ(tokens.size(), 1u);
        const int token = tokens[0].nToken;
        if (pType == pNorvane->m_DataTypes.m_StringType) EXPECT_EQ(token, STRUCTURE);
        else EXPECT_TRUE(token == TYPE_IDENTIFIER || token == TYPE_TIME) << token;
        ++count;
    }
    EXPECT_EQ(count, 20u);   // 19 elementary types and STRING
}
