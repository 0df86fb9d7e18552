#include "frontend/MessageTable.h"

#include "files/Fatal.h"

#include <iterator>

namespace
{

struct Piece
{
    int id;
    std::string_view text;
};

// Misspellings, doubled blanks and blanks at the end are kept: whoever reads our output compares bytes.
// The pieces that nothing uses keep their numbers taken, so that no later one moves.
constexpr Piece g_Pieces[] = {
    {1, "error: "},
    {2, "(%d,%d) : error, mismatch "},
    {3, "between %s and %s "},
    {4, "(%d,%d) : syntax error: "},
    {5, "(%d,%d) : string not closed or wrong use of apices "},
    {6, "(%d,%d) : warning, "},
    {7, "(%d,%d) : "},
    {8, "(%d,%d) : error, mismatch, operator "},
    {9, "operation %s not allowed between %s"},
    {10, "(%d,%d) : error: "},
    {11, "(%d,%d) (%d,%d) : error"},
    {12, "operation %s not allowed on %s"},
    {13, "cannot use "},
    {14, "with REAL or LREAL value"},
    {15, "fatal error, too much errors, process aborted"},
    {16, "(%d,%d) : error, mismatch, "},
    {17, "(%d,%d) : error, mismatch on immediate value"},
    {18, "the value to an "},
    {19, "cannot assign "},
    {20, "function without return value, not allowed in expression"},
    {21, "function does not take"},
    {22, "parameters"},
    {23, "parameter"},
    {24, "does not match; "},
    {25, "at (%d,%d)"},
    {26, "see definition of "},
    {27, "division by zero"},
    {28, "unreachable statement"},
    {29, "found "},
    {30, "required "},
    {31, "in castfunction argument, "},
    {32, "cannot use castfunction in any var block body "},
    {33, "attempt to assign a value to a constant variable "},
    {34, "string too long "},
    {35, "string's length exceeds declared dimension"},
    {36, "chars"},
    {37, "dimension must be a non-negative integer value "},
    {38, "cannot check string size"},
    {39, "non-integer quotient cast to int, possible precision's loss"},
    {40, "the statement needs a boolean expression"},
    {41, "is not a member of the struct "},
    {42, "is not a struct"},
    {43, "variable "},
    {44, "already declared"},
    {45, "not declared"},
    {46, "function "},
    {47, "string not closed or wrong use of apices; first apex "},
    {48, "(%d) : error: "},
    {49, "incorrect use of escape sequence\n"
         "correct escape sequence are: $n, $N, $l, $L, $t, $T, $p, $P, $$, $', $r, $R or $ followed by two hexadecimal digits"},
    {50, "index exceeds array dimension "},
    {51, "array's index requires integer value"},
    {52, "is not an array"},
    {53, "member"},
    {54, "cannot check array dimension"},
    {55, "wrong dimension"},
    {56, "element already declared"},
    {57, "too much initializers"},
    {58, "elements"},
    {59, "invalid string assignment "},
    {60, "overload function, cannot determinate function's type"},
    {61, "cannot initialize an ANY variable"},
    {62, "PROGRAM"},
    {63, "FUNCTION BLOCK"},
    {64, "POU"},
    {65, "not supported VAR_INPUT VAR_OUTPUT and VAR_IN_OUT for program; (cannot call a program)"},
    {66, "****************HELP******************************\n"
         "usage: compiler [fileListName] [-option(s)]\n"
         "\n"
         "-o [fileNameOutput] \t set a output file name;\n"
         "-o1 \t\t\t optimize memory;\n"
         "-b  \t\t\t guarantee compatibility with older version;\n"
         "-n  \t\t\t program's name;\n"
         "-v  \t\t\t program's version;\n"
         "-i  \t\t\t xml input file.\n"
         "-bs0\t\t\t Disable boolean shortcut.\n"
         "-rs size\t\t Return stack size.\n"
         "-ps size\t\t Parameter stack size.\n"
         "-k\t\t\t Keep temporary file"},
    {67, "RETURN inside a "},
    {68, "VAR_OUTPUT and VAR_IN_OUT cannot be immediate value"},
    {69, "EXIT out of a cicle"},
    {70, "expression requires integer value"},
    {71, "unreachable statement, FOR cicle already satisfy;\n"
         "only assignment executed "},
    {72, "CASE statement needs a variable of integer type "},
    {73, "direct variables cannot be used as formal parameters "},
    {74, "address out of memory "},
    {75, "invalid address"},
    {76, "invalid dimension for the type"},
    {77, "invalid alignment for the type"},
    {78, "program not supported"},
    {79, "function call in variable declaration"},
    {80, "two underscore in identifier's name"},
    {81, "case value "},
    {82, "case range "},
    {83, " already used "},
    {84, "type ANY are allowed only in function's formal parameters "},
    {85, "function actual parameter cannot be initialized"},
    {86, " not supported for this target"},
    {87, "type "},
    {88, "cannot assign a value to a function block instance "},
    {89, "is not a FUNCTION_BLOCK "},
    {90, "VAR_OUTPUT and VAR_IN_OUT cannot be CONSTANT"},
    {91, "in FB assignment of OUTPUT variable"},
    {92, "element already initialized "},
    {93, "element already assigned"},
    {94, "already assigned "},
    {95, "element "},
    {96, "already initialized"},
    {97, "cannot assign array or struct to another one "},
    {98, "cannot modify INPUT struct or array variable"},
    {99, "local variable "},
    {100, "in FUNCTION BLOCK invocation"},
    {101, "cannot access to IN_OUT element of a FUNCTION_BLOCK"},
    {102, "inout variable of function block requires a l-value"},
    {103, "different array dimension: "},
    {104, "Function Block call without InOut parameter(s)  "},
    {105, "useless assignment "},
    {106, "Program '%s' required"},
    {107, "************Compiler for IEC61131-3 ST************\n"
          "version: 2\n\n\n"},
    {108, " option needs one and only one file name\n"},
    {109, "invalid option\n"},
    {110, " successfully parsed\n"},
    {111, "XML file not specified "},
    {112, "XML file not found"},
    {113, "global "},
    {114, "retain "},
    {115, "out of memory "},
    {116, "bytes"},
    {117, "mismatch, BOOLEAN, WORD, DWORD, LWORD or BYTE expected"},
    {118, "function cannot return struct or array"},
    {119, "Return stack overflow (%d byte in POU %s)"},
    {120, "Return stack invalid size (max size is %d)"},
    {121, "Return stack overflow in nested PROGRAM (%d byte)"},
    {122, "warning: "},
    {123, "Parameter stack invalid size (max size is %d)"},
    {124, "cannot access to private element of a FUNCTION_BLOCK"},
};

constexpr bool IsNumberedFromOne()
{
    int expected = 1;
    for (const Piece& piece : g_Pieces) {
        if (piece.id != expected) return false;
        ++expected;
    }
    return true;
}
static_assert(IsNumberedFromOne(), "the number of a piece is its position");
static_assert(std::size(g_Pieces) == 124);

}   // namespace

std::string_view GetMessage(int id)
{
    if (id < 1 || id > static_cast<int>(std::size(g_Pieces))) InternalFault("no message of that number");
    return g_Pieces[id - 1].text;
}
