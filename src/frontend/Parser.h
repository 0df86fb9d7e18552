#pragma once

class CNorvane;

// Binds the grammar's actions to the compiler that they call.
void SetParserContext(CNorvane& norvane);

// Parses the scanner's input as one source file. 0: accepted, perhaps behind error recovery; 1: given up;
// 2: the stack of 200 entries was full. The caller looks at the error count, not at this.
int yyparse();

// Reports a message of the parser or scanner at the start of the current token.
void yyerror(const char* text);
