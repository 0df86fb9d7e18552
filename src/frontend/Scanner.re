// The scanner. re2c turns this file into Scanner.cpp: the longest match wins, and among equally long ones
// the rule that stands higher, so the order of the rules is part of the language.
#include "frontend/Scanner.h"

#include "files/Fatal.h"
#include "files/Format.h"
#include "files/Print.h"
#include "frontend/MyString.h"
#include "frontend/Parser.h"
#include "frontend/SourceWindow.h"
#include "frontend/StringLiteral.h"
#include "semantics/Norvane.h"

#include <algorithm>
#include <charconv>
#include <limits>
#include <string_view>
#include <utility>

int yylineno = 1;
int nColumn = 1;
int yyleng = 0;
const char* g_CurrentFileName = nullptr;
CStringLiteral* pCurrentString = nullptr;

namespace
{

/*!types:re2c*/

// A token may be looked at up to this byte. Whoever needs one more, be it only to learn that the token has
// ended, gets the fatal text below; sources rely on nothing longer, and tools look for the text.
constexpr std::ptrdiff_t g_LongestToken = 16383;
constexpr std::string_view g_TokenTooLong =
    "input buffer overflow, can't enlarge buffer because scanner uses REJECT";
constexpr std::string_view g_NoRuleMatches = "fatal flex scanner internal error--no action found";
constexpr int g_ScannerFaultStatus = 2;

constexpr int g_NoToken = -1;

// So many blanks in front of a token are passed over without a match of their own; hardly ever are there more.
constexpr std::ptrdiff_t g_FewBlanks = 32;

CNorvane* g_Context = nullptr;
CSourceWindow g_Source;
YYCONDTYPE g_Condition = yycINITIAL;

}   // namespace

void SetScannerContext(CNorvane& norvane)
{
    g_Context = &norvane;
}

bool OpenScannerInput(const std::string& name, std::string* pCopy)
{
    return g_Source.Open(name, pCopy);
}

void SetScannerInput(std::string text)
{
    g_Source.SetText(std::move(text));
}

void FreeScannerBuffer()
{
    g_Source.Close();
}

static void DropString()
{
    delete pCurrentString;
    pCurrentString = nullptr;
}

bool IsInsideComment()
{
    return g_Condition == yycIN_COMMENT;
}

void ResetStartCondition()
{
    if (g_Condition == yycIN_STRING) DropString();
    g_Condition = yycINITIAL;
}

// Says where the token begins that ends the program, on a line of its own: tools read the one behind it.
[[noreturn, gnu::noinline]] static void EndScan(std::string_view text)
{
    const std::string file = g_CurrentFileName ? g_CurrentFileName : "";
    const std::string position = FormatText("(%d,%d)\n", yylineno, nColumn);
    EndProgram(g_ScannerFaultStatus, file + position + std::string(text));
}

// The step in front of every action, also of those that deliver nothing.
static std::string_view AcceptMatch(const char* start, const char* end)
{
    const std::string_view text(start, static_cast<std::size_t>(end - start));
    g_Source.Advance(text.size());
    yyleng = static_cast<int>(text.size());
    yylloc.nFirstLine = yylineno;
    yylloc.nLastLine = yylineno;
    yylloc.nFirstColumn = nColumn;
    nColumn += yyleng;
    yylloc.nLastColumn = nColumn;
    return text;
}

// What may hold line ends counts them before anything else. Only a line end outside comments sets the column
// back: behind a comment of several lines it has counted the whole comment, which is wanted.
static void CountLines(std::string_view text)
{
    yylineno += static_cast<int>(std::count(text.begin(), text.end(), '\n'));
    yylloc.nFirstLine = yylineno;
    yylloc.nLastLine = yylineno;
}

// The end counts as one character, each time that it is met; the start condition stays, so the next file
// begins inside the comment or string that this one left open.
static int EndOfInput()
{
    yyleng = 1;
    ++nColumn;
    return 0;
}

// The value of a real beyond the range of double: infinity or zero. The place of the first digit that
// counts, moved by the exponent, tells on which side it left the range.
static double OutOfRangeReal(std::string_view text)
{
    const std::size_t mark = text.find_first_of("eE");
    const std::string_view digits = text.substr(0, mark);
    const std::int64_t exponent = mark == std::string_view::npos ? 0 : ToInt(text.substr(mark + 1));
    const std::int64_t first = static_cast<std::int64_t>(digits.find_first_of("123456789"));
    const std::int64_t point = static_cast<std::int64_t>(digits.find('.'));
    return point - first + exponent > 0 ? std::numeric_limits<double>::infinity() : 0.0;
}

static int ReturnReal(std::string_view text)
{
    double value = 0;
    const std::from_chars_result result = std::from_chars(text.data(), text.data() + text.size(), value);
    const bool isBeyond = result.ec == std::errc::result_out_of_range;
    if (isBeyond) g_Context->m_Notes.Add(Note::NumberBeyondWidth, yylloc);
    yylval.dValue = isBeyond ? OutOfRangeReal(text) : value;
    return IMM_REAL;
}

static std::int64_t ToInt64(const CMyString& digits, int base)
{
    switch (base) {
    case 2: return digits.ToInt64Base2();
    case 8: return digits.ToInt64Base8();
    case 16: return digits.ToInt64Base16();
    default: return digits.ToInt64Base10();
    }
}

// What is larger than 64 bits hold with a sign becomes the largest of them.
static int ReturnInteger(const CMyString& digits, int base)
{
    yylval.nValue = ToInt64(digits, base);
    const bool isLargest = yylval.nValue == std::numeric_limits<std::int64_t>::max();
    if (isLargest && digits.IsBeyondInt64(base)) g_Context->m_Notes.Add(Note::NumberBeyondWidth, yylloc);
    return IMM_INTEGER;
}

// The text with the underscores and the first characters, such as "16#", taken out.
static CMyString DigitsOf(std::string_view text, int prefixLength)
{
    CMyString digits(text);
    digits.RemoveAll('_');
    digits.RemoveFirst(prefixLength);
    return digits;
}

// What makes a text of its own is kept out of yylex, which would be slower with it at every token.
[[gnu::noinline]] static int ReturnDigits(std::string_view text, int prefixLength, int base)
{
    return ReturnInteger(DigitsOf(text, prefixLength), base);
}

[[gnu::noinline]] static int ReturnUnderscoredReal(std::string_view text)
{
    return ReturnReal(DigitsOf(text, 0).GetBuffer());
}

// Digits alone. Up to 18 of them always stay within 64 bits, and there are hardly ever more.
static int ReturnPlainInteger(std::string_view digits)
{
    constexpr std::size_t safeDigits = 18;
    if (digits.size() > safeDigits) return ReturnDigits(digits, 0, 10);
    std::int64_t value = 0;
    for (const char c : digits) value = 10 * value + (c - '0');
    yylval.nValue = value;
    return IMM_INTEGER;
}

static int ReturnDirectVariable(std::string_view address)
{
    yylval.pName = &g_Context->m_Names.Intern(address);
    return DIRECT_VARIABLE;
}

// A word that names a type even where the target knows no such type: it is reported and delivered.
static int ReturnTypeWord(int token, std::string_view text)
{
    const int answer = g_Context->LookupTypeName(g_Context->m_Names.Intern(text), yylval.pType);
    if (answer == NEW_ID) g_Context->m_Errors.ErrTypeNotSupported(text);
    return token;
}

// What a name is depends on the declarations met so far.
static int ReturnName(std::string_view text)
{
    const CName& name = g_Context->m_Names.Intern(text);
    const int token = g_Context->ClassifyName(name, yylval);
    if (token != NEW_ID) return token;
    yylval.pName = &name;
    return IDENTIFIER;
}

static void BeginString()
{
    g_Condition = yycIN_STRING;
    pCurrentString = new CStringLiteral(yylineno, nColumn);
}

// The line end has been counted already, so the message stands on the line behind the string.
static void ReportOpenString()
{
    g_Condition = yycINITIAL;
    g_Context->m_Errors.ErrStringNotClosed(yylineno, nColumn, pCurrentString->GetLine(),
                                           pCurrentString->GetColumn() - 1);
    nColumn = 1;
    DropString();
}

static int ReturnString()
{
    g_Condition = yycINITIAL;
    yylval.pString = pCurrentString;
    return STR_DIR;
}

// "$41"
[[gnu::noinline]] static int AppendByte(std::string_view escape)
{
    pCurrentString->AppendChar(static_cast<char>(CMyString(escape.substr(1)).ToInt64Base16()));
    return g_NoToken;
}

// Nothing is appended, and the literal goes on.
static int ReportEscape()
{
    g_Context->m_Errors.WarnEscapeSequence(yylineno, nColumn - 1);
    return g_NoToken;
}

// Nearly every match has looked at the byte behind it to learn that it ends there. These know their last byte: one
// star too many, or the end, in a comment, and the last unit of a time.
static bool KnowsItsEnd(std::string_view match)
{
    if (g_Condition == yycIN_COMMENT) return match.front() == '*';
    return match.ends_with("ms_") && match.find('#') != std::string_view::npos;
}

[[gnu::noinline]] static void CheckLongMatch(const char* start, const char* cursor, const char* givenUp)
{
    const std::ptrdiff_t length = std::max(cursor, givenUp) - start;
    const std::string_view match(start, static_cast<std::size_t>(length));
    if (length == g_LongestToken && givenUp < cursor && KnowsItsEnd(match)) return;
    EndScan(g_TokenTooLong);
}

// The farthest byte that was looked at is that behind the match, or one where a longer match was given up.
static void CheckLength(const char* start, const char* cursor, const char* givenUp)
{
    if (std::max(cursor, givenUp) - start >= g_LongestToken) CheckLongMatch(start, cursor, givenUp);
}

// Passes over a run of blanks if it is short and something is matched behind it, so that nobody learns where they
// stood. Where the match begins.
static const char* SkipBlanks(const char* const start)
{
    const char* cursor = start;
    while (*cursor == ' ' && cursor - start <= g_FewBlanks) ++cursor;
    const std::ptrdiff_t count = cursor - start;
    if (count > g_FewBlanks || static_cast<unsigned char>(*cursor) <= ' ') return start;
    g_Source.Advance(static_cast<std::size_t>(count));
    nColumn += static_cast<int>(count);
    return cursor;
}

// Matches one rule; g_NoToken if it delivers no token. Behind the end stands a zero byte, which may also be a
// character of the source.
[[gnu::always_inline]] static inline int Match(const char* const start, const char* const end)
{
    if (start == end) return EndOfInput();
    const char* cursor = start;
    const char* marker = start;
    const char* givenUp = start;
    std::string_view text;

    /*!re2c
    re2c:api = custom;
    re2c:api:style = free-form;
    re2c:eof = 0;
    re2c:yyfill:enable = 0;
    re2c:define:YYCTYPE = "unsigned char";
    re2c:define:YYPEEK = "static_cast<unsigned char>(*cursor)";
    re2c:define:YYSKIP = "++cursor;";
    re2c:define:YYBACKUP = "marker = cursor;";
    re2c:define:YYRESTORE = "givenUp = std::max(givenUp, cursor); cursor = marker;";
    re2c:define:YYLESSTHAN = "cursor >= end";
    re2c:define:YYGETCONDITION = "g_Condition";
    re2c:define:YYGETCONDITION:naked = 1;

    any = [\x00-\xff];
    digit = [0-9];
    hex = [0-9A-F];
    exponent = [eE] [+-] digit+;
    number = digit+ ("." digit+)?;
    timePrefix = ("t" | "T" | "time" | "TIME") "#";
    date = digit{4} "-" digit{2} "-" digit{2};
    clock = digit{2} ":" digit{2} ":" digit{2} ("." digit{2})?;

    <!*>            { CheckLength(start, cursor, givenUp); text = AcceptMatch(start, cursor); }
    <INITIAL, IN_COMMENT, IN_STRING> $              { InternalFault("the scanner met the end twice"); }

    <INITIAL> digit+                                { return ReturnPlainInteger(text); }
    <INITIAL> digit* "." digit+ exponent?           { return ReturnReal(text); }
    <INITIAL> "(*"                                  { g_Condition = yycIN_COMMENT; return g_NoToken; }

    <IN_COMMENT> (any \ [*])+                       { CountLines(text); return g_NoToken; }
    <IN_COMMENT> "*"+ (any \ [*)])                  { CountLines(text); return g_NoToken; }
    <IN_COMMENT> "*"+ ")"                           { g_Condition = yycINITIAL; return g_NoToken; }

    <INITIAL> "'"                                   { BeginString(); return g_NoToken; }

    <IN_STRING> "$" [LlNn]                          { pCurrentString->AppendChar('\n'); return g_NoToken; }
    <IN_STRING> "$" [Tt]                            { pCurrentString->AppendChar('\t'); return g_NoToken; }
    <IN_STRING> "$" [Pp]                            { pCurrentString->AppendChar('\f'); return g_NoToken; }
    <IN_STRING> "\n"                                { CountLines(text); ReportOpenString(); return g_NoToken; }
    <IN_STRING> "$$"                                { pCurrentString->AppendChar('$'); return g_NoToken; }
    <IN_STRING> "$'"                                { pCurrentString->AppendChar('\''); return g_NoToken; }
    <IN_STRING> "$" [Rr]                            { pCurrentString->AppendChar('\r'); return g_NoToken; }
    <IN_STRING> "$" hex hex                         { return AppendByte(text); }
    <IN_STRING> "$" (any \ [\n])                    { return ReportEscape(); }
    <IN_STRING> (any \ [\n$'()|"])+                 { pCurrentString->AppendText(text); return g_NoToken; }
    <IN_STRING> "'"                                 { return ReturnString(); }

    <INITIAL> [ \t]+                                { return g_NoToken; }
    <INITIAL> "\n"                                  { CountLines(text); nColumn = 1; return g_NoToken; }

    <INITIAL> "TRUE"                                { yylval.nValue = 1; return TRUE; }
    <INITIAL> "FALSE"                               { yylval.dValue = 0; return FALSE; }
    <INITIAL> "ELSE"                                { return ELSE; }
    <INITIAL> "IF"                                  { return IF; }
    <INITIAL> "THEN"                                { return THEN; }
    <INITIAL> "END_IF"                              { return END_IF; }
    <INITIAL> "ELSIF"                               { return ELSIF; }
    <INITIAL> "WHILE"                               { return WHILE; }
    <INITIAL> "END_WHILE"                           { return END_WHILE; }
    <INITIAL> "CASE"                                { return CASE; }
    <INITIAL> "OF"                                  { return OF; }
    <INITIAL> "END_CASE"                            { return END_CASE; }
    <INITIAL> "DO"                                  { return DO; }
    <INITIAL> "FOR"                                 { return FOR; }
    <INITIAL> "TO"                                  { return TO; }
    <INITIAL> "END_FOR"                             { return END_FOR; }
    <INITIAL> "BY"                                  { return BY; }
    <INITIAL> "PROGRAM"                             { return PROGRAM; }
    <INITIAL> "END_PROGRAM"                         { return END_PROGRAM; }
    <INITIAL> "EXIT"                                { return EXIT; }
    <INITIAL> "FUNCTION"                            { return FUNCTION; }
    <INITIAL> "END_FUNCTION"                        { return END_FUNCTION; }
    <INITIAL> "VAR"                                 { return VAR; }
    <INITIAL> "END_VAR"                             { return END_VAR; }
    <INITIAL> "VAR_INPUT"                           { return VAR_INPUT; }
    <INITIAL> "VAR_OUTPUT"                          { return VAR_OUTPUT; }
    <INITIAL> "VAR_IN_OUT"                          { return VAR_IN_OUT; }
    <INITIAL> "VAR_GLOBAL"                          { return VAR_GLOBAL; }
    <INITIAL> "VAR_EXTERNAL"                        { return VAR_EXTERNAL; }
    <INITIAL> "RETAIN"                              { return RETAIN; }
    <INITIAL> "CONSTANT"                            { return CONSTANT; }
    <INITIAL> "AT"                                  { return AT; }
    <INITIAL> "AND"                                 { return AND; }
    <INITIAL> "OR"                                  { return OR; }
    <INITIAL> "XOR"                                 { return XOR; }
    <INITIAL> "NOT"                                 { return NOT; }
    <INITIAL> "REPEAT"                              { return REPEAT; }
    <INITIAL> "END_REPEAT"                          { return END_REPEAT; }
    <INITIAL> "UNTIL"                               { return UNTIL; }
    <INITIAL> "STRING"                              { return STRUCTURE; }
    <INITIAL> "ARRAY"                               { return ARRAY; }
    <INITIAL> "TYPE"                                { return TYPE; }
    <INITIAL> "END_TYPE"                            { return END_TYPE; }
    <INITIAL> "STRUCT"                              { return STRUCT; }
    <INITIAL> "END_STRUCT"                          { return END_STRUCT; }
    <INITIAL> "RETURN"                              { return RETURN; }
    <INITIAL> "MOD"                                 { return MOD; }
    <INITIAL> "FUNCTION_BLOCK"                      { return FUNCTION_BLOCK; }
    <INITIAL> "END_FUNCTION_BLOCK"                  { return END_FUNCTION_BLOCK; }
    <INITIAL> "SYSTEM"                              { return SYSTEM; }
    <INITIAL> "MULDIV"                              { return MULDIV; }
    <INITIAL> "ROL"                                 { return ROL; }
    <INITIAL> "ROR"                                 { return ROR; }
    <INITIAL> "SHL"                                 { return SHL; }
    <INITIAL> "SHR"                                 { return SHR; }
    <INITIAL> "ABS"                                 { return ABS; }
    <INITIAL> "MIN"                                 { return MIN; }
    <INITIAL> "MAX"                                 { return MAX; }
    <INITIAL> "LIMIT"                               { return LIMIT; }
    <INITIAL> "SQRT"                                { return SQRT; }
    <INITIAL> "&"                                   { return AND; }
    <INITIAL> "**"                                  { return POWER; }
    <INITIAL> ">="                                  { return GREATER_EQUAL; }
    <INITIAL> "<="                                  { return LESS_EQUAL; }
    <INITIAL> "<>"                                  { return NOT_EQUAL; }
    <INITIAL> ":="                                  { return ASSIGN; }
    <INITIAL> ">"                                   { return GREATER; }
    <INITIAL> "="                                   { return EQUAL; }
    <INITIAL> "<"                                   { return LESS; }
    <INITIAL> ".."                                  { return SUBRANGE_DOTS; }
    <INITIAL> "=>"                                  { return ARROW; }

    <INITIAL> "%" [IMQ] [BDLWX]? digit+ ("." digit+)*  { return ReturnDirectVariable(text.substr(1)); }
    // Wanted (sources) as it stands: in this form every digit of the fraction is followed by an underscore.
    <INITIAL> digit* "." (digit "_")+ exponent?     { return ReturnUnderscoredReal(text); }
    <INITIAL> digit+ ("_" digit+)*                  { return ReturnDigits(text, 0, 10); }
    <INITIAL> "2#" [01] ("_"? [01])*                { return ReturnDigits(text, 2, 2); }
    <INITIAL> "8#" [0-7] ("_"? [0-7])*              { return ReturnDigits(text, 2, 8); }
    <INITIAL> "16#" hex ("_"? hex)*                 { return ReturnDigits(text, 3, 16); }

    // Times and dates are recognised, and their text is dropped here. There is no unit for minutes.
    <INITIAL> timePrefix (number "d")? (number "h")? (number "s")? (number "ms")?         { return TIME_DIR; }
    <INITIAL> timePrefix (number "d_")? (number "h_")? (number "s_")? (number "ms_")?     { return TIME_DIR; }
    <INITIAL> ("d" | "D" | "DATE") "#" date                                               { return DATE_DIR; }
    <INITIAL> ("tod" | "TOD" | "TIME_OF_DAY") "#" clock                                   { return TIME_OF_DAY_DIR; }
    <INITIAL> ("DT" | "DATE_AND_TIME") "#" date "-" clock                                 { return DATE_AND_TIME_DIR; }

    <INITIAL> "ANY" | "WORD" | "INT" | "REAL" | "SINT" | "BOOL" | "BYTE" | "DINT" | "DWORD" | "LINT" | "LREAL"
            | "LWORD" | "UDINT" | "UINT" | "ULINT" | "USINT" | "ANY_BIT" | "ANY_INT" | "ANY_NUM" | "ANY_DATE"
            | "ANY_REAL"                            { return ReturnTypeWord(TYPE_IDENTIFIER, text); }
    <INITIAL> "TOD" | "TIME" | "TIME_OF_DAY" | "DT" | "DATE" | "DATE_AND_TIME"
                                                    { return ReturnTypeWord(TYPE_TIME, text); }
    <INITIAL> [A-Za-z_] [A-Za-z0-9_]*               { return ReturnName(text); }

    <INITIAL> [-#$)+,/;{}(*.:]                      { return text.front(); }
    <INITIAL> "["                                   { return '['; }
    <INITIAL> "]"                                   { return ']'; }
    <INITIAL> any \ [\n]                            { yyerror("Unknown character"); return g_NoToken; }

    // What no rule takes leaves on standard output: so parentheses, bars and quotes inside a string are
    // printed instead of stored. Wanted (messages) as it stands.
    <IN_COMMENT, IN_STRING> *                       { Print(text); return g_NoToken; }
    <INITIAL> *                                     { EndScan(g_NoRuleMatches); }
    */
}

int yylex()
{
    int token = g_NoToken;
    while (token == g_NoToken) {
        const char* start = g_Source.Begin(g_FewBlanks + g_LongestToken + 1);
        if (*start == ' ' && g_Condition == yycINITIAL) start = SkipBlanks(start);
        token = Match(start, g_Source.End());
    }
    return token;
}
