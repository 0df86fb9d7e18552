#pragma once

#include "frontend/SourceLocation.h"

#include <cstdint>
#include <string>

class CCastFunction;
class CName;
class CNode;
class CNorvane;
class CStringLiteral;
class CType;

// The value of a token or parser symbol: which member holds follows from the symbol.
union YYSTYPE
{
    std::int64_t nValue;
    double dValue;
    const CName* pName;         // IDENTIFIER; DIRECT_VARIABLE without its "%"
    CType* pType;               // not owned, may be null
    CCastFunction* pCast;       // not owned
    CStringLiteral* pString;    // owned by the parser from the token on
    CNode* pNode;
};
#define YYSTYPE YYSTYPE
#define YYSTYPE_IS_DECLARED 1

// Where a token or symbol stands. The parser copies these at every step, and all of them belong to the current file, so
// only a location that leaves the parser gets its name.
struct SymbolLocation
{
    std::int32_t nFirstLine = 0;
    std::int32_t nFirstColumn = 0;
    std::int32_t nLastLine = 0;
    std::int32_t nLastColumn = 0;       // one past the end

    operator SourceLocation() const;    // in the current file
};

// Scanner and parser are file-level and not reentrant: there is one, and one compile in a process.
extern YYSTYPE yylval;
extern SymbolLocation yylloc;
extern int yylineno;                        // line, from 1
extern int nColumn;                         // column of the next character, from 1
extern int yyleng;                          // bytes of the current token; 1 at the end of the input
extern const char* g_CurrentFileName;       // not owned; null before any file
extern CStringLiteral* pCurrentString;      // the literal under construction or last delivered

inline SymbolLocation::operator SourceLocation() const
{
    return {nFirstLine, nFirstColumn, nLastLine, nLastColumn, g_CurrentFileName};
}

// The next token's code, 0 at the end of the input.
int yylex();

// Binds the scanner to the object that classifies names and takes its messages.
void SetScannerContext(CNorvane& norvane);
// The file that the next yylex reads from its start; false if it can't be opened. Its bytes, up to the first zero byte,
// are appended to pCopy, which may be null.
bool OpenScannerInput(const std::string& name, std::string* pCopy);
// The text that the next yylex reads from its start. CR before LF must have been dropped already. Neither
// the start condition nor line and column change: an open comment goes on in the next file.
void SetScannerInput(std::string text);
// Whether the last file ended inside a comment, in which the next one begins.
bool IsInsideComment();
// Back to the first start condition: outside comments and strings.
void ResetStartCondition();
// Closes the file and drops the text; the next call of yylex sees an empty input.
void FreeScannerBuffer();
