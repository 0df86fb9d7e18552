// What the parser itself says, where it goes on behind an error, and how a parse ends. The expected lists were
// read off the grammar: the tokens that may follow in the state that the default reductions lead to. A state in
// which recovery could go on makes no default reduction.

#include "frontend/Parser.h"

#include "SourceFixture.h"
#include "frontend/Scanner.h"
#include "model/Variable.h"

namespace
{

constexpr int g_Accepted = 0;
constexpr int g_GivenUp = 1;
constexpr int g_StackFull = 2;

constexpr std::string_view g_Forgotten = "forgotten \";\" ?";

std::string Line(int line, int column, std::string_view text)
{
    return "t.st(" + std::to_string(line) + "," + std::to_string(column) + ") : error: " + std::string(text) + "\n";
}

std::string Syntax(int line, int column, std::string_view text)
{
    return Line(line, column, "syntax error, unexpected " + std::string(text));
}

std::string Repeat(std::string_view text, int count)
{
    std::string result;
    for (int i = 0; i < count; ++i) result += text;
    return result;
}

}   // namespace

class ParserMessagesTest : public SourceFixture
{
protected:
    // What a compiler prints that has seen nothing before.
    std::string ParseFresh(std::string_view source)
    {
        Restart();
        return Parse(source);
    }

    // Parses the statements on line 2 of a program that declares x, b and a; END_PROGRAM is on line 3.
    std::string ParseStatements(std::string_view statements)
    {
        return ParseFresh("PROGRAM main VAR x : INT; b : BOOL; a : ARRAY [1..3] OF INT; END_VAR\n" +
                     std::string(statements) + "\nEND_PROGRAM\n");
    }
};

// ---- The whole file.

TEST_F(ParserMessagesTest, EmptyFile)
{
    EXPECT_EQ(ParseFresh(""), Syntax(1, 1, "$end"));
    EXPECT_EQ(result, g_Accepted);
}

TEST_F(ParserMessagesTest, ProgramWithoutStatement)
{
    EXPECT_EQ(ParseFresh("PROGRAM main END_PROGRAM"), Syntax(1, 14, "END_PROGRAM"));
    EXPECT_EQ(result, g_Accepted);
}

TEST_F(ParserMessagesTest, LoneSemicolonIsAStatement)
{
    EXPECT_EQ(ParseFresh("PROGRAM main ; END_PROGRAM"), "");
    EXPECT_EQ(result, g_Accepted);
}

TEST_F(ParserMessagesTest, SomethingInFrontOfTheFirstPou)
{
    EXPECT_EQ(ParseFresh("x y\nPROGRAM main ; END_PROGRAM"), Syntax(1, 1, "IDENTIFIER"));
    EXPECT_EQ(result, g_Accepted);
}

TEST_F(ParserMessagesTest, SomethingBehindTheLastPou)
{
    EXPECT_EQ(ParseFresh("PROGRAM main ; END_PROGRAM x"), Syntax(1, 28, "IDENTIFIER"));
    EXPECT_EQ(result, g_Accepted);
}

TEST_F(ParserMessagesTest, SomethingBehindAGlobalBlock)
{
    EXPECT_EQ(ParseFresh("VAR_GLOBAL x : INT; END_VAR 5"), Syntax(1, 29, "IMM_INTEGER"));
}

TEST_F(ParserMessagesTest, EndInsideAProgram)
{
    EXPECT_EQ(ParseFresh("PROGRAM main ;"), Syntax(1, 15, "$end"));
    EXPECT_EQ(result, g_GivenUp);
}

TEST_F(ParserMessagesTest, NameExpected)
{
    EXPECT_EQ(ParseFresh("PROGRAM 5"), Syntax(1, 9, "IMM_INTEGER, expecting IDENTIFIER"));
}

TEST_F(ParserMessagesTest, NameThatIsATypeIsNoIdentifier)
{
    EXPECT_EQ(ParseFresh("TYPE t : INT; END_TYPE\nPROGRAM T ; END_PROGRAM"),
              Syntax(2, 9, "TYPE IDENTIFIER, expecting IDENTIFIER"));
}

TEST_F(ParserMessagesTest, FunctionBlockNeedsVariables)
{
    EXPECT_EQ(ParseFresh("FUNCTION_BLOCK fb ; END_FUNCTION_BLOCK"), Syntax(1, 19, "';'"));
}

TEST_F(ParserMessagesTest, FunctionOfStringRecovers)
{
    EXPECT_EQ(ParseFresh("FUNCTION f : STRING ; END_FUNCTION"),
              Syntax(1, 14, "STRUCTURE, expecting TYPE IDENTIFIER or TYPE_TIME"));
    EXPECT_EQ(result, g_Accepted);
}

// ---- Statements.

TEST_F(ParserMessagesTest, SemicolonForgottenBehindAssignment)
{
    EXPECT_EQ(ParseStatements("x := 1"), Syntax(3, 1, "END_PROGRAM, expecting ';'"));
    EXPECT_EQ(result, g_Accepted);
}

TEST_F(ParserMessagesTest, SemicolonForgottenBehindIf)
{
    EXPECT_EQ(ParseStatements("IF b THEN x := 1; END_IF"), Syntax(3, 1, "END_PROGRAM, expecting ';'"));
}

TEST_F(ParserMessagesTest, SemicolonForgottenBehindCallAndExit)
{
    EXPECT_EQ(ParseStatements("f(1)"), Syntax(3, 1, "END_PROGRAM, expecting ';'"));
    EXPECT_EQ(ParseStatements("EXIT x;"), Syntax(2, 6, "IDENTIFIER, expecting ';'"));
}

TEST_F(ParserMessagesTest, ManyExpectedTokensAreNotListed)
{
    EXPECT_EQ(ParseStatements("x := ;"), Syntax(2, 6, "';'"));
}

TEST_F(ParserMessagesTest, ValueMissing)
{
    EXPECT_EQ(ParseStatements("x := 1 + ;"), Syntax(2, 10, "';'"));
}

TEST_F(ParserMessagesTest, AssignmentExpected)
{
    EXPECT_EQ(ParseStatements("x 1;"), Syntax(2, 3, "IMM_INTEGER, expecting :="));
}

TEST_F(ParserMessagesTest, EqualSignInPlaceOfAssignment)
{
    EXPECT_EQ(ParseStatements("x = 1;"), Syntax(2, 3, "=, expecting :="));
}

TEST_F(ParserMessagesTest, UnknownSigns)
{
    EXPECT_EQ(ParseStatements("x # 1;"), Syntax(2, 3, "$undefined, expecting :="));
    EXPECT_EQ(ParseStatements("x := $ 1;"), Syntax(2, 6, "$undefined"));
    EXPECT_EQ(ParseStatements("x := { 1;"), Syntax(2, 6, "$undefined"));
    EXPECT_EQ(ParseStatements("x := } 1;"), Syntax(2, 6, "$undefined"));
}

TEST_F(ParserMessagesTest, UnknownCharacterIsDropped)
{
    EXPECT_EQ(ParseStatements("x := ? 1;"), Line(2, 6, "Unknown character"));
}

TEST_F(ParserMessagesTest, ThenForgotten)
{
    EXPECT_EQ(ParseStatements("IF b x := 1; END_IF;"), Syntax(2, 6, "IDENTIFIER") + Syntax(2, 14, "END_IF"));
}

TEST_F(ParserMessagesTest, MemberNameExpected)
{
    EXPECT_EQ(ParseStatements("x := x. ;"), Syntax(2, 9, "';', expecting IDENTIFIER"));
    EXPECT_EQ(ParseStatements("x.1 := 2;"), Syntax(2, 2, "IMM_REAL, expecting :="));
}

TEST_F(ParserMessagesTest, BracketNotClosed)
{
    EXPECT_EQ(ParseStatements("a[1 := 2;"), Syntax(2, 5, ":=, expecting ',' or ']'"));
}

TEST_F(ParserMessagesTest, ParameterLists)
{
    EXPECT_EQ(ParseStatements("f(1 2);"), Syntax(2, 5, "IMM_INTEGER, expecting ')' or ','"));
    EXPECT_EQ(ParseStatements("f(q := 1 2);"), Syntax(2, 10, "IMM_INTEGER, expecting ')' or ','"));
    EXPECT_EQ(ParseStatements("f(q := 1, 2);"), Syntax(2, 11, "IMM_INTEGER, expecting IDENTIFIER"));
    EXPECT_EQ(ParseStatements("f(q := 1, y 2);"), Syntax(2, 13, "IMM_INTEGER, expecting := or =>"));
}

TEST_F(ParserMessagesTest, BuiltInFunctions)
{
    EXPECT_EQ(ParseStatements("x := MIN(1;"), Syntax(2, 11, "';', expecting ')' or ','"));
    EXPECT_EQ(ParseStatements("x := ABS 1;"), Syntax(2, 10, "IMM_INTEGER, expecting '('"));
    EXPECT_EQ(ParseStatements("x := SHL(1 2);"), Syntax(2, 12, "IMM_INTEGER"));
    EXPECT_EQ(ParseStatements("x := INT_TO_DINT 5;"), Syntax(2, 18, "IMM_INTEGER, expecting '('"));
    EXPECT_EQ(ParseStatements("SYSTEM(x);"), Syntax(2, 8, "IDENTIFIER, expecting IMM_INTEGER"));
    EXPECT_EQ(ParseStatements("SYSTEM 1;"), Syntax(2, 8, "IMM_INTEGER, expecting '('"));
}

TEST_F(ParserMessagesTest, Loops)
{
    EXPECT_EQ(ParseStatements("FOR x := 1 DO ; END_FOR;"), Syntax(2, 12, "DO, expecting TO"));
    EXPECT_EQ(ParseStatements("FOR 1 TO 2 DO"), Syntax(2, 5, "IMM_INTEGER, expecting IDENTIFIER or DIRECT VARIABLE"));
}

TEST_F(ParserMessagesTest, CaseLabels)
{
    EXPECT_EQ(ParseStatements("CASE x OF 1, : ; END_CASE;"),
              Syntax(2, 14, "':', expecting '+' or '-' or IMM_INTEGER"));
    EXPECT_EQ(ParseStatements("CASE x OF 1 ; END_CASE;"), Syntax(2, 13, "';', expecting ',' or ':'"));
}

TEST_F(ParserMessagesTest, TimesAreNoExpressions)
{
    // "T#1s * 2" has been reduced, and behind the "+" a time must follow: "3" could still begin one.
    EXPECT_EQ(ParseStatements("x := T#1s * 2 + 3;"),
              "t.st(2,11) : error, mismatch, operator *\n" + Syntax(2, 18, "';'"));
    EXPECT_EQ(ParseStatements("x := 1 + 2 * T#1s;"), Syntax(2, 14, "TIME_DIR"));
    // Accepted by the grammar: the multiplication, which binds first, has no type to work on.
    EXPECT_EQ(ParseStatements("x := T#1s + T#2s * 3;"), "t.st(2,18) : error, mismatch, operator *\n");
}

// ---- Parentheses.

TEST_F(ParserMessagesTest, BrokenParenthesesRecoverAtTheClosingOne)
{
    EXPECT_EQ(ParseStatements("x := (1 2); x := 3;"), Syntax(2, 9, "IMM_INTEGER"));
    EXPECT_EQ(result, g_Accepted);
}

TEST_F(ParserMessagesTest, OpenParenthesisSwallowsTheRest)
{
    EXPECT_EQ(ParseStatements("x := (1; y z # 'text' %IX0.0"), Syntax(2, 8, "';'"));
    EXPECT_EQ(result, g_GivenUp);
}

TEST_F(ParserMessagesTest, NestingUpToTheStackLimit)
{
    // Below the first parenthesis lie 7 entries: the first state, PROGRAM, the name, the empty symbol behind
    // it, the variable block, x and ":=". With "(" 190 times, the value and a ")" there are 199.
    EXPECT_EQ(ParseStatements("x := " + Repeat("(", 190) + "1" + Repeat(")", 190) + ";"), "");
    EXPECT_EQ(result, g_Accepted);
}

TEST_F(ParserMessagesTest, NestingBehindTheStackLimit)
{
    EXPECT_EQ(ParseStatements("x := " + Repeat("(", 191) + "1" + Repeat(")", 191) + ";"),
              Line(2, 198, "memory exhausted"));   // at the first ")"
    EXPECT_EQ(result, g_StackFull);
    EXPECT_EQ(pNorvane->m_Errors.GetErrorCount(), 1);
}

TEST_F(ParserMessagesTest, LongListsAndChainsNeedNoStack)
{
    EXPECT_EQ(ParseStatements(Repeat("x := 1 + 2 + x;\n", 1000)), "");
    EXPECT_EQ(result, g_Accepted);
}

// ---- Suppression and the error limit.

TEST_F(ParserMessagesTest, NoSecondMessageBeforeThreeTokens)
{
    EXPECT_EQ(ParseStatements("x 1; x 2; x 3;"), Syntax(2, 3, "IMM_INTEGER, expecting :="));
    EXPECT_EQ(ParseStatements("x 1; x := 1; x 2;"),
              Syntax(2, 3, "IMM_INTEGER, expecting :=") + Syntax(2, 16, "IMM_INTEGER, expecting :="));
}

TEST_F(ParserMessagesTest, FiftyErrorsAreNotTooMany)
{
    const std::string printed = ParseStatements(Repeat("x 1; x := 1;\n", 50));
    EXPECT_EQ(pNorvane->m_Errors.GetErrorCount(), 50);
    EXPECT_EQ(printed.find("fatal"), std::string::npos);
    EXPECT_EQ(result, g_Accepted);
}

TEST_F(ParserMessagesTest, FiftyOneErrorsEndTheParse)
{
    std::string expected;
    for (int line = 2; line < 53; ++line) expected += Syntax(line, 3, "IMM_INTEGER, expecting :=");
    expected += "t.st error: fatal error, too much errors, process aborted\n";
    EXPECT_EQ(ParseStatements(Repeat("x 1; x := 1;\n", 60)), expected);
    EXPECT_EQ(result, g_GivenUp);
}

// ---- Variable blocks.

TEST_F(ParserMessagesTest, ForgottenSemicolonDeclaresAllTheSame)
{
    EXPECT_EQ(ParseFresh("VAR_GLOBAL x : INT END_VAR"), Line(1, 20, g_Forgotten));
    EXPECT_NE(pNorvane->FindVariable("x"), nullptr);
    EXPECT_EQ(result, g_Accepted);
    EXPECT_EQ(ParseFresh("VAR_GLOBAL y : INT := 1 END_VAR"), Line(1, 25, g_Forgotten));
    EXPECT_NE(pNorvane->FindVariable("y"), nullptr);
}

TEST_F(ParserMessagesTest, ForgottenSemicolonBetweenDeclarations)
{
    EXPECT_EQ(ParseFresh("VAR_GLOBAL x : INT y : INT := 1 z : INT; END_VAR"),
              Line(1, 20, g_Forgotten) + Line(1, 33, g_Forgotten));
    EXPECT_NE(pNorvane->FindVariable("x"), nullptr);
    EXPECT_NE(pNorvane->FindVariable("y"), nullptr);
    EXPECT_NE(pNorvane->FindVariable("z"), nullptr);
}

TEST_F(ParserMessagesTest, ForgottenSemicolonBehindAddresses)
{
    EXPECT_EQ(ParseFresh("VAR_GLOBAL AT %IX0.0 : BOOL AT %IX0.1 : BOOL\nAT %IX0.2 : BOOL; END_VAR"),
              Line(1, 29, g_Forgotten) + Line(2, 1, g_Forgotten));
}

TEST_F(ParserMessagesTest, NamelessAddressesAreAccepted)
{
    EXPECT_EQ(ParseFresh("VAR_GLOBAL AT %IX0.0 : BOOL; AT %QB1 : ARRAY [0..1] OF BYTE; x : INT; END_VAR"), "");
    EXPECT_EQ(result, g_Accepted);
}

TEST_F(ParserMessagesTest, WrongTypeLetsTheMessageFollowTheDefaultReduction)
{
    // "x : INT" has been reduced without its semicolon before "5" is found to fit nowhere.
    EXPECT_EQ(ParseFresh("VAR_GLOBAL x : INT 5; END_VAR"),
              Line(1, 20, g_Forgotten) + Syntax(1, 20, "IMM_INTEGER, expecting IDENTIFIER or END_VAR or AT"));
}

TEST_F(ParserMessagesTest, StartOfABlock)
{
    EXPECT_EQ(ParseFresh("VAR_GLOBAL 5 END_VAR"), Syntax(1, 12, "IMM_INTEGER, expecting IDENTIFIER or AT"));
}

TEST_F(ParserMessagesTest, MiddleOfABlock)
{
    EXPECT_EQ(ParseFresh("VAR_GLOBAL x : INT; 5 END_VAR"),
              Syntax(1, 21, "IMM_INTEGER, expecting IDENTIFIER or END_VAR or AT"));
    EXPECT_EQ(result, g_Accepted);
}

TEST_F(ParserMessagesTest, DeclarationWithoutColon)
{
    EXPECT_EQ(ParseFresh("VAR_GLOBAL x 5 6 7; y : INT; END_VAR"),
              Syntax(1, 14, "IMM_INTEGER, expecting ',' or ':' or AT"));
    EXPECT_EQ(pNorvane->FindVariable("x"), nullptr);
    EXPECT_NE(pNorvane->FindVariable("y"), nullptr);
    EXPECT_EQ(result, g_Accepted);
}

TEST_F(ParserMessagesTest, TypeExpected)
{
    EXPECT_EQ(ParseFresh("VAR_GLOBAL x : 5; END_VAR"),
              Syntax(1, 16, "IMM_INTEGER, expecting TYPE IDENTIFIER or TYPE_TIME or ARRAY or STRUCTURE"));
}

TEST_F(ParserMessagesTest, BrokenDeclarationIsSkippedToItsSemicolon)
{
    // Names, texts and addresses on the way are dropped with what they hold.
    EXPECT_EQ(ParseFresh("VAR_GLOBAL x : name 'text' %IX0.0 (1, 2) := more; y : INT; END_VAR"),
              Syntax(1, 16, "IDENTIFIER, expecting TYPE IDENTIFIER or TYPE_TIME or ARRAY or STRUCTURE"));
    EXPECT_NE(pNorvane->FindVariable("y"), nullptr);
}

TEST_F(ParserMessagesTest, BrokenDeclarationIsSkippedToTheEndOfTheBlock)
{
    EXPECT_EQ(ParseFresh("VAR_GLOBAL x : name other END_VAR\nPROGRAM main ; END_PROGRAM"),
              Syntax(1, 16, "IDENTIFIER, expecting TYPE IDENTIFIER or TYPE_TIME or ARRAY or STRUCTURE") +
                  Line(1, 27, g_Forgotten));
    EXPECT_EQ(result, g_Accepted);
}

TEST_F(ParserMessagesTest, BrokenDeclarationAtTheEndOfTheFile)
{
    EXPECT_EQ(ParseFresh("VAR_GLOBAL x : 5"),
              Syntax(1, 16, "IMM_INTEGER, expecting TYPE IDENTIFIER or TYPE_TIME or ARRAY or STRUCTURE") +
                  Line(1, 17, g_Forgotten));
    EXPECT_EQ(result, g_GivenUp);
}

TEST_F(ParserMessagesTest, FileEndsBehindAName)
{
    EXPECT_EQ(ParseFresh("VAR_GLOBAL x"), Syntax(1, 13, "$end, expecting ',' or ':' or AT") + Line(1, 13, g_Forgotten));
    EXPECT_EQ(result, g_GivenUp);
}

TEST_F(ParserMessagesTest, BrokenTypeAtTheEndOfTheFile)
{
    EXPECT_EQ(ParseFresh("TYPE t : 5 name"), Syntax(1, 10, "IMM_INTEGER"));
    EXPECT_EQ(result, g_GivenUp);
}

TEST_F(ParserMessagesTest, InitialValueMissing)
{
    EXPECT_EQ(ParseFresh("VAR_GLOBAL x : INT := ; y : INT; END_VAR"), Syntax(1, 23, "';'"));
    EXPECT_EQ(pNorvane->FindVariable("x"), nullptr);
    EXPECT_NE(pNorvane->FindVariable("y"), nullptr);
}

TEST_F(ParserMessagesTest, AddressExpected)
{
    EXPECT_EQ(ParseFresh("VAR_GLOBAL x AT 5 : INT; END_VAR"), Syntax(1, 17, "IMM_INTEGER, expecting DIRECT VARIABLE"));
}

TEST_F(ParserMessagesTest, Arrays)
{
    EXPECT_EQ(ParseFresh("VAR_GLOBAL x : ARRAY [1] OF INT; END_VAR"), Syntax(1, 24, "']'"));
    EXPECT_EQ(ParseFresh("VAR_GLOBAL x : ARRAY [1..2 OF INT; END_VAR"), Syntax(1, 28, "OF, expecting ',' or ']'"));
    EXPECT_EQ(ParseFresh("VAR_GLOBAL x : ARRAY [1..2] INT; END_VAR"), Syntax(1, 29, "TYPE IDENTIFIER, expecting OF"));
    EXPECT_EQ(ParseFresh("VAR_GLOBAL x : ARRAY [1..2] OF 5; END_VAR"),
              Syntax(1, 32, "IMM_INTEGER, expecting TYPE IDENTIFIER or TYPE_TIME or ARRAY"));
}

TEST_F(ParserMessagesTest, StringNeedsALength)
{
    EXPECT_EQ(ParseFresh("VAR_GLOBAL x : STRING; END_VAR"), Syntax(1, 22, "';', expecting '['"));
}

TEST_F(ParserMessagesTest, ArraysOfArraysAreRefused)
{
    EXPECT_EQ(ParseFresh("VAR_GLOBAL x : ARRAY [1..2] OF ARRAY [1..2] OF INT; END_VAR"),
              Line(1, 48, "SORRY, WILL BE SUPPORTED SOON"));
    EXPECT_NE(pNorvane->FindVariable("x"), nullptr);
}

TEST_F(ParserMessagesTest, ArraysOfArraysOfArraysAreRefusedOnce)
{
    EXPECT_EQ(ParseFresh("VAR_GLOBAL x : ARRAY [1..2] OF ARRAY [1..2] OF ARRAY [1..2] OF INT; END_VAR"),
              Line(1, 64, "SORRY, WILL BE SUPPORTED SOON"));
}

// ---- External variables.

TEST_F(ParserMessagesTest, ExternalConstant)
{
    constexpr std::string_view message = "The attribute CONSTANT cannot be used with external variables";
    // Behind CONSTANT a RETAIN might follow, so the next name is the current token.
    EXPECT_EQ(ParseFresh("PROGRAM main VAR_EXTERNAL CONSTANT x : INT; END_VAR ; END_PROGRAM"), Line(1, 36, message));
    EXPECT_EQ(result, g_Accepted);
    EXPECT_EQ(ParseFresh("PROGRAM main VAR_EXTERNAL CONSTANT RETAIN x : INT; END_VAR ; END_PROGRAM"),
              Line(1, 36, message));
    EXPECT_EQ(ParseFresh("PROGRAM main VAR_EXTERNAL RETAIN CONSTANT x : INT; END_VAR ; END_PROGRAM"),
              Line(1, 34, message));
}

// The whole block goes, and the program around it, up to where the file can go on.
TEST_F(ParserMessagesTest, RecoveryBehindAnExternalConstant)
{
    EXPECT_EQ(ParseFresh("PROGRAM main VAR_EXTERNAL CONSTANT x : INT; END_VAR ; END_PROGRAM\n"
                         "VAR_GLOBAL g : INT; END_VAR"),
              Line(1, 36, "The attribute CONSTANT cannot be used with external variables"));
    EXPECT_NE(pNorvane->FindVariable("g"), nullptr);
    EXPECT_EQ(result, g_Accepted);
}

// ---- User types.

TEST_F(ParserMessagesTest, TypeBodies)
{
    EXPECT_EQ(ParseFresh("TYPE 5 END_TYPE"), Syntax(1, 6, "IMM_INTEGER, expecting IDENTIFIER"));
    EXPECT_EQ(ParseFresh("TYPE t : INT; 5 END_TYPE"), Syntax(1, 15, "IMM_INTEGER, expecting IDENTIFIER or END_TYPE"));
    EXPECT_EQ(ParseFresh("TYPE u INT; END_TYPE"), Syntax(1, 8, "TYPE IDENTIFIER, expecting ',' or ':'"));
}

TEST_F(ParserMessagesTest, StructNeedsItsSemicolon)
{
    EXPECT_EQ(ParseFresh("TYPE a : STRUCT b : INT; END_STRUCT END_TYPE"), Syntax(1, 37, "END_TYPE, expecting ';'"));
    EXPECT_EQ(result, g_GivenUp);
}

TEST_F(ParserMessagesTest, StructMembersRecover)
{
    EXPECT_EQ(ParseFresh("TYPE a : STRUCT 5 b : INT; 6 END_STRUCT; END_TYPE"),
              Syntax(1, 17, "IMM_INTEGER, expecting IDENTIFIER") +
                  Syntax(1, 28, "IMM_INTEGER, expecting IDENTIFIER or END_STRUCT"));
    EXPECT_EQ(result, g_Accepted);
}

TEST_F(ParserMessagesTest, Enumerations)
{
    EXPECT_EQ(ParseFresh("TYPE a : (red green); END_TYPE"), Syntax(1, 15, "IDENTIFIER, expecting ')' or ','"));
    EXPECT_EQ(ParseFresh("TYPE a : (red, green) 5; END_TYPE"), Syntax(1, 23, "IMM_INTEGER, expecting ';' or :="));
}

// ---- Initialisers where none may stand; the assignment has been checked before.

TEST_F(ParserMessagesTest, StructValueInAssignment)
{
    const std::string printed = ParseStatements("x := (b := 1, c := 2);");
    const std::string expected = Line(2, 21, "cannot initialize struct here");
    ASSERT_GE(printed.size(), expected.size());
    EXPECT_EQ(printed.substr(printed.size() - expected.size()), expected);
}

TEST_F(ParserMessagesTest, ArrayValueInAssignment)
{
    const std::string printed = ParseStatements("x := [1, 2(3)];");
    const std::string expected = Line(2, 14, "cannot initialize array here");
    ASSERT_GE(printed.size(), expected.size());
    EXPECT_EQ(printed.substr(printed.size() - expected.size()), expected);
}
