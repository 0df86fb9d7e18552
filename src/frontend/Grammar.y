// The grammar, and with it the course of a compile: there is no pass over a finished tree. Each action builds
// its node through the compiler, which checks and folds it at once; declarations enter the tables as they are
// reduced; and a POU's code is generated as soon as its last keyword has been read.
//
// Three things here are visible to the user and must stay as they are: which symbols an error message lists as
// expected, at which token it is found, and where recovery goes on. They follow from the rules, their order,
// and the empty symbols that bison makes of the actions in the middle of rules (those of `program` and
// `func_decl` look superfluous twice over: merged, they would change the lists).

%require "3.8"
%language "c"
%skeleton "yacc.c"

%define lr.type lalr
%define parse.error custom
%define api.token.prefix {TK_}
%define api.value.type {union YYSTYPE}
%define api.location.type {SymbolLocation}
%locations

// All conflicts are settled by the default, shift before reduce and the earlier rule before the later one, and
// the language counts on it. There are 11 of the first sort and none of the second: behind a name a "(", "." or
// "[" belongs to it, before the name becomes an expression. A change of the count is an error.
%expect 11

%code requires {
#include "frontend/Scanner.h"
}

%code top {
// The stack has 200 entries, the first state among them, and never grows: nesting is limited by it.
// So it never lies on the heap, and what the skeleton would free is nothing.
#define YYINITDEPTH 200
#define YYMAXDEPTH 200
#define YYFREE(p) static_cast<void>(p)

#include "frontend/Parser.h"

#include "frontend/Node.h"
#include "frontend/StringLiteral.h"
#include "frontend/Tokens.h"
#include "semantics/Norvane.h"
#include "semantics/Wrapping.h"

#include <cstdint>
#include <initializer_list>
#include <string>
#include <string_view>
}

%code {
// A symbol stands from the start of its first part to the end of its last one; an empty one at the end of the
// symbol below it.
#define YYLLOC_DEFAULT(Current, Rhs, N) ((Current) = LocationOf(Rhs, N))

static SymbolLocation LocationOf(const SymbolLocation* pParts, int count)
{
    const SymbolLocation& last = pParts[count];
    if (count == 0) return {last.nLastLine, last.nLastColumn, last.nLastLine, last.nLastColumn};
    const SymbolLocation& first = pParts[1];
    return {first.nFirstLine, first.nFirstColumn, last.nLastLine, last.nLastColumn};
}

static CNorvane* g_Context = nullptr;

static CNode* Node(int kind, const SourceLocation& location, std::initializer_list<CNode*> children = {})
{
    return g_Context->MakeNode(kind, location, children);
}

static CNode* Append(CNode* pList, CNode* pItem)
{
    return g_Context->AppendToList(pList, pItem);
}

static CNode* Name(const CName* pName, const SourceLocation& location)
{
    return g_Context->MakeIdentifier(*pName, location);
}

static CNode* Integer(std::int64_t value, const SourceLocation& location)
{
    return g_Context->MakeInteger(value, location);
}

static CNode* FinishPart(CNode* pFile, CNode* pPart, const SourceLocation& location)
{
    return g_Context->FinishFilePart(pFile, pPart, location);
}

static CNode* FinishPou(CNode* pPou)
{
    g_Context->EndPouKind();
    return pPou;
}

static CNode* FinishVarBlock(CNode* pBlock)
{
    g_Context->EndVarBlock();
    return pBlock;
}

static CNode* DeclareWithValue(CNode* pList, CType* pType, CNode* pValue)
{
    g_Context->DeclareWithInit(pList, pType, pValue);
    return pList;
}

static CNode* DeclareWithStruct(CNode* pList, CType* pType, CNode* pValues)
{
    g_Context->DeclareWithInit(pList, pType, pValues);
    return Append(pList, pValues);
}

static CNode* DeclareString(CNode* pList, CNode* pLength, CStringLiteral* pText)
{
    g_Context->DeclareString(pList, pLength, pText);
    return pList;
}

static CNode* DeclareStringFromVariable(CNode* pList, CNode* pLength, CNode* pVariable)
{
    g_Context->DeclareStringFromVariable(pList, pLength, pVariable);
    return pList;
}

static CNode* DeclareArray(CNode* pList, CNode* pRanges, CType* pElement, CNode* pValues)
{
    g_Context->DeclareArray(pList, pRanges, pElement, pValues);
    return pList;
}

static CNode* DeclarePlain(CNode* pList, CType* pType)
{
    g_Context->AddVariables(pList, pType, nullptr);
    return pList;
}

// A declaration at an address that has no name declares nothing; an empty list stands for it.
static CNode* NamelessDeclaration(const SourceLocation& location)
{
    return Node(LIST_ID, location);
}

static void ReportForgottenSemicolon()
{
    yyerror("forgotten \";\" ?");
}

static void ReportExternalConstant()
{
    yyerror("The attribute CONSTANT cannot be used with external variables");
}

// Wanted (messages) at each appended statement, and only there.
static bool TooManyErrors()
{
    return g_Context->m_Errors.FatalTooManyErrors();
}

// Behind a broken declaration everything up to the next ";" or END_VAR goes, that token being the next one of
// the parser. The end of the input ends the search as well.
static void SkipBrokenDeclaration(int& lookahead)
{
    if (lookahead == TK_YYEMPTY) lookahead = yylex();
    while (lookahead != ';' && lookahead != END_VAR && lookahead > TK_YYEOF) {
        if (lookahead == STR_DIR) delete yylval.pString;
        lookahead = yylex();
    }
}
}

// In the order of their numbers: that is the order in which an error message lists what it expects.
%token YYEOF 0 "$end"
%token '(' ')' '*' '+' ',' '-' '.' '/' ':' ';' '[' ']'
// ORDER TOKENS, tied to the list of Tokens.def at the end of this file.
%token <nValue> IMM_INTEGER 258
%token <dValue> IMM_REAL 259
%token <pName> IDENTIFIER 260
%token <pName> DIRECT_VARIABLE 261 "DIRECT VARIABLE"
%token DATE_AND_TIME_DIR 262
%token DATE_DIR 263
%token TIME_DIR 264
%token <pString> STR_DIR 265
%token ARRAY_USER_TYPE 266 "ARRAY USER TYPE"
%token <pType> TYPE_IDENTIFIER 267 "TYPE IDENTIFIER"
%token <pCast> CAST_FUNCTION_CALL 268
%token <pType> TYPE_TIME 269
%token IF 270
%token ELSE 271
%token END_IF 272
%token ELSIF 273
%token THEN 274
%token WHILE 275
%token END_WHILE 276
%token DO 277
%token FOR 278
%token TO 279
%token BY 280
%token END_FOR 281
%token ASSIGN 282 ":="
%token CASE 283
%token END_CASE 284
%token OF 285
%token REPEAT 286
%token END_REPEAT 287
%token UNTIL 288
%token VAR 289
%token END_VAR 290
%token VAR_INPUT 291
%token VAR_OUTPUT 292
%token VAR_IN_OUT 293
%token VAR_GLOBAL 294
%token VAR_EXTERNAL 295
%token RETAIN 296
%token CONSTANT 297
%token AT 298
%token PROGRAM 299
%token END_PROGRAM 300
%token EXIT 301
%token FUNCTION 302
%token END_FUNCTION 303
%token TYPE 304
%token END_TYPE 305
%token ARRAY 306
%token STRUCT 307
%token END_STRUCT 308
%token STRUCTURE 309
%token RETURN 310
%token MOD 311
%token POWER 312
%token TIME_OF_DAY_DIR 313
%token END_FUNCTION_BLOCK 314
%token FUNCTION_BLOCK 315
%token SUBRANGE_DOTS 316 ".."
%token TRUE 317
%token FALSE 318
%token EQUAL 319 "="
%token NOT_EQUAL 320 "<>"
%token GREATER_EQUAL 321 ">="
%token LESS_EQUAL 322 "<="
%token UNARY_MINUS 323 "-"
%token GREATER 324 ">"
%token LESS 325 "<"
%token NOT 326
%token SYSTEM 327
%token MULDIV 328
%token ARROW 329 "=>"
%token SHL 330
%token SHR 331
%token ROL 332
%token ROR 333
%token ABS 334
%token MIN 335
%token MAX 336
%token LIMIT 337
%token SQRT 338
%token NOP 339
%token STMT_LIST 340
%token LIST_ID 341
%token ELSEIF_LIST 342
%token CASE_BODY_LIST 343
%token ISV_LIST 344
%token VAR_BLOCK_BODY 345
%token OPT_LIST 346
%token VAR_BLOCK 347
%token FILE_GLOBAL 348
%token RETURN_TYPE 349
%token PARAMETER_LIST 350
%token ERROR_ 351
%token TYPE_USER 352
%token STRUCT_TYPE_USER 353
%token INIT_DECL_LIST 354
%token STRUCT_INIT_LIST 355
%token SIMPLIFIED 356
%token ARRAY_ARG 357
%token DOT 358
%token ARRAY_ELEMENT 359
%token NEW_ID 360
%token FUNCTION_CALL 361
%token ARRAY_INIT_LIST 362
%token DUP 363
%token EXP_LIST 364
%token ASSIGN_FB 365
%token SUB_RANGE 366
%token ENUM 367
%token OR 368
%token XOR 369
%token AND 370

%left OR
%left XOR
%left AND
%left "=" "<>"
%left ">=" "<=" ">" "<"
%left '+' '-'
%left '*' '/' MOD
%precedence UNARY_MINUS NOT
%left POWER

%type <nValue> signed_integer
%type <pType> base_type array_of
%type <pNode> starting_prod file program function func_decl function_return_type function_block stmt_list stmt
%type <pNode> list_id variable var struct_element array_element assignment parameter_list fb_parameter_list
%type <pNode> array_list array_init_list struct_list struct_init_list base nested_array init decl direct
%type <pNode> type_user_decl type_user_body init_decl_list single_type_user enumerated_data_type
%type <pNode> sub_range_data_type struct_type array_index array_arg var_block_body var_block opt_list
%type <pNode> opt_list_no_const internal_var_block input_var_block output_var_block in_out_var_block
%type <pNode> global_var_block external_var_block while repeat for if elseif_op case case_body isv exp exp_list
%type <pNode> time_exp

%destructor { delete $$; } <pString>

%start starting_prod

%%

// Code is generated of each part of a file as soon as it is complete, and then its nodes are gone: the value of a file
// is the list of its parts where the tree is to be dumped, else null.
starting_prod:
    file                            { g_Context->FinishSourceFile($1); $$ = nullptr; }
    ;

// ---- A source file.

file:
    program                         { g_Context->m_Code.GenerateProgram($1); $$ = FinishPart(nullptr, $1, @1); }
    | function                      { g_Context->m_Code.GenerateFunction($1); $$ = FinishPart(nullptr, $1, @1); }
    | global_var_block              { $$ = FinishPart(nullptr, $1, @1); }
    | function_block                { g_Context->m_Code.GenerateFunctionBlock($1); $$ = FinishPart(nullptr, $1, @1); }
    | type_user_decl                { $$ = FinishPart(nullptr, $1, @1); }
    | file program                  { g_Context->m_Code.GenerateProgram($2); $$ = FinishPart($1, $2, @1); }
    | file function                 { g_Context->m_Code.GenerateFunction($2); $$ = FinishPart($1, $2, @1); }
    | file global_var_block         { $$ = FinishPart($1, $2, @1); }
    | file function_block           { g_Context->m_Code.GenerateFunctionBlock($2); $$ = FinishPart($1, $2, @1); }
    | file type_user_decl           { $$ = FinishPart($1, $2, @1); }
    | error                         { $$ = FinishPart(nullptr, Node(ERROR_, @1), @1); }
    | file error                    { $$ = FinishPart($1, Node(ERROR_, @1), @1); }
    ;

program:
    PROGRAM IDENTIFIER { g_Context->BeginPou(PROGRAM); } stmt_list END_PROGRAM
                                    { $$ = FinishPou(Node(PROGRAM, @1, {Name($2, @2), $4})); }
    | PROGRAM IDENTIFIER { g_Context->BeginPou(PROGRAM); } var_block stmt_list END_PROGRAM
                                    { $$ = FinishPou(Node(PROGRAM, @1, {Name($2, @2), $4, $5})); }
    ;

function:
    FUNCTION { g_Context->BeginPou(FUNCTION); } func_decl END_FUNCTION
                                    { $$ = $3; }
    ;

func_decl:
    IDENTIFIER ':' function_return_type { g_Context->AddReturnVariable(*$1, $3); } stmt_list
                                    { $$ = FinishPou(Node(FUNCTION, @1, {Name($1, @1), $3, $5})); }
    | IDENTIFIER ':' function_return_type { g_Context->AddReturnVariable(*$1, $3); } var_block stmt_list
                                    { $$ = FinishPou(Node(FUNCTION, @1, {Name($1, @1), $3, $5, $6})); }
    | IDENTIFIER stmt_list          { $$ = FinishPou(Node(FUNCTION, @1, {Name($1, @1), $2})); }
    | IDENTIFIER var_block stmt_list
                                    { $$ = FinishPou(Node(FUNCTION, @1, {Name($1, @1), $2, $3})); }
    ;

function_return_type:
    TYPE_IDENTIFIER                 { $$ = g_Context->MakeReturnType(Node(RETURN_TYPE, @1), $1); }
    | TYPE_TIME                     { $$ = g_Context->MakeReturnType(Node(RETURN_TYPE, @1), $1); }
    ;

function_block:
    FUNCTION_BLOCK IDENTIFIER { g_Context->BeginPou(FUNCTION_BLOCK); } var_block stmt_list END_FUNCTION_BLOCK
                                    { $$ = FinishPou(Node(FUNCTION_BLOCK, @1, {Name($2, @2), $4, $5})); }
    ;

// ---- Statements.

stmt_list:
    stmt                            { $$ = Node(STMT_LIST, @1, {$1}); }
    | stmt_list stmt                {
                                        // A file full of errors ends here, not at its last line.
                                        if (TooManyErrors()) YYABORT;
                                        $$ = Append($1, $2);
                                    }
    ;

stmt:
    ';'                             { $$ = Node(NOP, @1); }
    | while ';'                     { $$ = $1; }
    | if ';'                        { $$ = $1; }
    | for ';'                       { $$ = $1; }
    | case ';'                      { $$ = $1; }
    | repeat ';'                    { $$ = $1; }
    | assignment ';'                { $$ = $1; }
    | EXIT ';'                      { $$ = Node(EXIT, @1); }
    | RETURN ';'                    { $$ = Node(RETURN, @1); }
    | IDENTIFIER '(' parameter_list ')' ';'
                                    { $$ = g_Context->MakeFunctionCall(*$1, @1, /*bInExpression=*/false, $3); }
    | IDENTIFIER '(' ')' ';'        { $$ = g_Context->MakeFunctionCall(*$1, @1, /*bInExpression=*/false, nullptr); }
    | IDENTIFIER '(' fb_parameter_list ')' ';'
                                    { $$ = g_Context->MakeFbCall(*$1, @1, $3); }
    | SYSTEM '(' IMM_INTEGER ')' ';'
                                    { $$ = Node(SYSTEM, @1, {Integer($3, @3)}); }
    | error                         { $$ = Node(ERROR_, @1); }
    ;

signed_integer:
    IMM_INTEGER                     { $$ = $1; }
    | '+' IMM_INTEGER               { $$ = $2; }
    | '-' IMM_INTEGER               { $$ = WrapNeg($2); }
    ;

list_id:
    IDENTIFIER                      {
                                        CNode* pName = g_Context->MakeDeclaredIdentifier(*$1, @1);
                                        $$ = Node(LIST_ID, @1, {pName});
                                    }
    | list_id ',' IDENTIFIER        { $$ = Append($1, g_Context->MakeDeclaredIdentifier(*$3, @3)); }
    ;

variable:
    var                             { g_Context->ResolveVariablePath($1); $$ = $1; }
    ;

// The address of a direct variable isn't put into the node.
var:
    IDENTIFIER                      { $$ = g_Context->MakeVariable(*$1, @1); }
    | array_element                 { $$ = $1; }
    | DIRECT_VARIABLE               { $$ = Node(DIRECT_VARIABLE, @1); }
    | struct_element                { $$ = $1; }
    ;

struct_element:
    var '.' IDENTIFIER              { $$ = Append($1, Name($3, @3)); }
    | IDENTIFIER '.' IDENTIFIER     {
                                        CNode* pRoot = g_Context->MakeVariable(*$1, @1);
                                        $$ = Node(DOT, @2, {pRoot, Name($3, @3)});
                                    }
    ;

array_element:
    IDENTIFIER '[' exp_list ']'     {
                                        CNode* pRoot = g_Context->MakeVariable(*$1, @1);
                                        $$ = Node(ARRAY_ELEMENT, @1, {pRoot, $3});
                                    }
    | var '[' exp_list ']'          { $$ = Append($1, $3); }
    ;

assignment:
    variable ":=" exp               { $$ = Node(ASSIGN, @2, {$1, $3}); }
    | variable ":=" struct_init_list
                                    { $$ = Node(ASSIGN, @2, {$1, $3}); yyerror("cannot initialize struct here"); }
    | variable ":=" array_init_list { $$ = Node(ASSIGN, @2, {$1, $3}); yyerror("cannot initialize array here"); }
    | variable ":=" time_exp        { $$ = Node(ASSIGN, @2, {$1, $3}); }
    ;

parameter_list:
    exp                             { $$ = Node(PARAMETER_LIST, @1, {$1}); }
    | parameter_list ',' exp        { $$ = Append($1, $3); }
    ;

fb_parameter_list:
    IDENTIFIER ":=" exp             {
                                        CNode* pInput = Node(ASSIGN_FB, @2, {Name($1, @1), $3});
                                        $$ = Node(PARAMETER_LIST, @2, {pInput});
                                    }
    | IDENTIFIER "=>" variable      {
                                        CNode* pOutput = Node(ARROW, @2, {Name($1, @1), $3});
                                        $$ = Node(PARAMETER_LIST, @2, {pOutput});
                                    }
    | fb_parameter_list ',' IDENTIFIER ":=" exp
                                    { $$ = Append($1, Node(ASSIGN_FB, @4, {Name($3, @3), $5})); }
    | fb_parameter_list ',' IDENTIFIER "=>" variable
                                    { $$ = Append($1, Node(ARROW, @4, {Name($3, @3), $5})); }
    ;

// ---- Initial values. A repetition "n(x)" is a DUP with the count, directly followed by the element.

array_list:
    base                            { $$ = Node(ARRAY_INIT_LIST, @1, {$1}); }
    | array_list ',' base           { $$ = Append($1, $3); }
    | exp '(' base ')'              {
                                        CNode* pCount = Node(DUP, @1, {$1});
                                        $$ = Node(ARRAY_INIT_LIST, @1, {pCount, $3});
                                    }
    | array_list ',' exp '(' base ')'
                                    {
                                        CNode* pList = Append($1, Node(DUP, @3, {$3}));
                                        $$ = Append(pList, $5);
                                    }
    ;

array_init_list:
    '[' array_list ']'              { $$ = $2; }
    ;

struct_list:
    IDENTIFIER ":=" base            { $$ = Node(STRUCT_INIT_LIST, @1, {Name($1, @1), $3}); }
    | struct_list ',' IDENTIFIER ":=" base
                                    {
                                        CNode* pList = Append($1, Name($3, @3));
                                        $$ = Append(pList, $5);
                                    }
    ;

struct_init_list:
    '(' struct_list ')'             { $$ = $2; }
    ;

base:
    exp                             { $$ = $1; }
    | array_init_list               { $$ = $1; }
    | struct_init_list              { $$ = $1; }
    ;

// ---- Declarations. The value of each is its list of names.

// Arrays of arrays are recognised and refused.
array_of:
    base_type                       { $$ = $1; }
    | nested_array base_type        {
                                        yyerror("SORRY, WILL BE SUPPORTED SOON");
                                        $$ = g_Context->m_DataTypes.m_ErrorType;
                                    }
    ;

nested_array:
    ARRAY '[' array_arg ']' OF      { $$ = Node(ARRAY, @1, {$3}); }
    | nested_array ARRAY '[' array_arg ']' OF
                                    { $$ = Append($1, $4); }
    ;

base_type:
    TYPE_IDENTIFIER                 { $$ = $1; }
    | TYPE_TIME                     { $$ = $1; }
    ;

init:
    list_id ':' TYPE_IDENTIFIER ":=" exp
                                    { $$ = DeclareWithValue($1, $3, $5); }
    | list_id ':' STRUCTURE '[' exp ']' ":=" STR_DIR
                                    { $$ = DeclareString($1, $5, $8); }
    | list_id ':' TYPE_IDENTIFIER ":=" struct_init_list
                                    { $$ = DeclareWithStruct($1, $3, $5); }
    | list_id ':' ARRAY '[' array_arg ']' OF array_of ":=" array_init_list
                                    { $$ = DeclareArray($1, $5, $8, $10); }
    | list_id ':' TYPE_IDENTIFIER ":=" array_init_list
                                    { $$ = DeclareWithValue($1, $3, $5); }
    | list_id ':' STRUCTURE '[' exp ']' ":=" variable
                                    { $$ = DeclareStringFromVariable($1, $5, $8); }
    | list_id ':' TYPE_TIME ":=" time_exp
                                    { $$ = DeclareWithValue($1, $3, $5); }
    ;

decl:
    list_id ':' TYPE_IDENTIFIER     { $$ = DeclarePlain($1, $3); }
    | list_id ':' STRUCTURE '[' exp ']'
                                    { $$ = DeclareString($1, $5, nullptr); }
    | list_id ':' ARRAY '[' array_arg ']' OF array_of
                                    { $$ = DeclareArray($1, $5, $8, nullptr); }
    | list_id ':' TYPE_TIME         { $$ = DeclarePlain($1, $3); }
    | list_id ':' error             { SkipBrokenDeclaration(yychar); $$ = $1; }
    | list_id error                 { SkipBrokenDeclaration(yychar); $$ = $1; }
    ;

// Kept (sources): a time variable with an address declares nothing, with a value or without one.
direct:
    list_id AT DIRECT_VARIABLE ':' TYPE_IDENTIFIER ":=" exp
                                    { g_Context->SetDirectAddress($1, *$3); $$ = DeclareWithValue($1, $5, $7); }
    | list_id AT DIRECT_VARIABLE ':' STRUCTURE '[' exp ']' ":=" STR_DIR
                                    { g_Context->SetDirectAddress($1, *$3); $$ = DeclareString($1, $7, $10); }
    | list_id AT DIRECT_VARIABLE ':' TYPE_IDENTIFIER ":=" struct_init_list
                                    { g_Context->SetDirectAddress($1, *$3); $$ = DeclareWithStruct($1, $5, $7); }
    | list_id AT DIRECT_VARIABLE ':' ARRAY '[' array_arg ']' OF array_of ":=" array_init_list
                                    { g_Context->SetDirectAddress($1, *$3); $$ = DeclareArray($1, $7, $10, $12); }
    | list_id AT DIRECT_VARIABLE ':' STRUCTURE '[' exp ']' ":=" variable
                                    {
                                        g_Context->SetDirectAddress($1, *$3);
                                        $$ = DeclareStringFromVariable($1, $7, $10);
                                    }
    | list_id AT DIRECT_VARIABLE ':' TYPE_TIME ":=" time_exp
                                    { g_Context->SetDirectAddress($1, *$3); $$ = $1; }
    | list_id AT DIRECT_VARIABLE ':' TYPE_IDENTIFIER
                                    { g_Context->SetDirectAddress($1, *$3); $$ = DeclarePlain($1, $5); }
    | list_id AT DIRECT_VARIABLE ':' STRUCTURE '[' exp ']'
                                    { g_Context->SetDirectAddress($1, *$3); $$ = DeclareString($1, $7, nullptr); }
    | list_id AT DIRECT_VARIABLE ':' ARRAY '[' array_arg ']' OF array_of
                                    { g_Context->SetDirectAddress($1, *$3); $$ = DeclareArray($1, $7, $10, nullptr); }
    | list_id AT DIRECT_VARIABLE ':' TYPE_TIME
                                    { g_Context->SetDirectAddress($1, *$3); $$ = $1; }
    | AT DIRECT_VARIABLE ':' TYPE_IDENTIFIER
                                    { $$ = NamelessDeclaration(@1); }
    | AT DIRECT_VARIABLE ':' STRUCTURE '[' exp ']'
                                    { $$ = NamelessDeclaration(@1); }
    | AT DIRECT_VARIABLE ':' ARRAY '[' array_arg ']' OF array_of
                                    { $$ = NamelessDeclaration(@1); }
    | AT DIRECT_VARIABLE ':' TYPE_TIME
                                    { $$ = NamelessDeclaration(@1); }
    ;

// ---- User types.

type_user_decl:
    TYPE { g_Context->BeginVarBlock(TYPE_USER, nullptr); } type_user_body END_TYPE
                                    { $$ = FinishVarBlock($3); }
    ;

type_user_body:
    single_type_user                { $$ = Node(TYPE_USER, @1, {$1}); }
    | struct_type                   { $$ = Node(TYPE_USER, @1, {$1}); }
    | enumerated_data_type          { $$ = Node(TYPE_USER, @1, {$1}); }
    | sub_range_data_type           { $$ = Node(TYPE_USER, @1, {$1}); }
    | type_user_body single_type_user
                                    { $$ = Append($1, $2); }
    | type_user_body struct_type    { $$ = Append($1, $2); }
    | type_user_body enumerated_data_type
                                    { $$ = Append($1, $2); }
    | type_user_body sub_range_data_type
                                    { $$ = Append($1, $2); }
    ;

init_decl_list:
    decl ';'                        { $$ = Node(INIT_DECL_LIST, @1, {$1}); }
    | init ';'                      { $$ = Node(INIT_DECL_LIST, @1, {$1}); }
    | init_decl_list decl ';'       { $$ = Append($1, $2); }
    | init_decl_list init ';'       { $$ = Append($1, $2); }
    | error                         { CNode* pError = Node(ERROR_, @1); $$ = Node(INIT_DECL_LIST, @1, {pError}); }
    | init_decl_list error          { $$ = Append($1, Node(ERROR_, @1)); }
    ;

single_type_user:
    init ';'                        { $$ = $1; }
    | decl ';'                      { $$ = $1; }
    | error                         { $$ = Node(ERROR_, @1); }
    ;

enumerated_data_type:
    list_id ':' '(' list_id ')' ';' { $$ = Node(ENUM, @1, {$1, $4}); }
    | list_id ':' '(' list_id ')' ":=" IDENTIFIER ';'
                                    { $$ = Node(ENUM, @1, {$1, $4, Name($7, @7)}); }
    ;

// The base type isn't used.
sub_range_data_type:
    list_id ':' TYPE_IDENTIFIER '(' exp ".." exp ')' ';'
                                    { $$ = Node(SUB_RANGE, @1, {$1, $5, $7}); }
    | list_id ':' TYPE_IDENTIFIER '(' exp ".." exp ')' ":=" exp ';'
                                    { $$ = Node(SUB_RANGE, @1, {$1, $5, $7, $10}); }
    ;

// The node is made as part of the TYPE body again, which is what registers the structure.
struct_type:
    list_id ':' STRUCT { g_Context->BeginVarBlock(STRUCT_TYPE_USER, nullptr); } init_decl_list END_STRUCT ';'
                                    {
                                        g_Context->BeginVarBlock(TYPE_USER, nullptr);
                                        $$ = Node(STRUCT, @3, {$1, $5});
                                    }
    ;

array_index:
    exp ".." exp                    { $$ = Node(SUBRANGE_DOTS, @2, {$1, $3}); }
    ;

array_arg:
    array_index                     { $$ = Node(ARRAY_ARG, @1, {$1}); }
    | array_arg ',' array_index     { $$ = Append($1, $3); }
    ;

// ---- Variable blocks. A declaration without its semicolon is reported and stands.

var_block_body:
    var_block_body init ';'         { $$ = Append($1, $2); }
    | var_block_body decl ';'       { $$ = Append($1, $2); }
    | var_block_body direct ';'     { $$ = Append($1, $2); }
    | init ';'                      { $$ = Node(VAR_BLOCK_BODY, @1, {$1}); }
    | decl ';'                      { $$ = Node(VAR_BLOCK_BODY, @1, {$1}); }
    | direct ';'                    { $$ = Node(VAR_BLOCK_BODY, @1, {$1}); }
    | var_block_body error          { $$ = Append($1, Node(ERROR_, @1)); }
    | error                         { CNode* pError = Node(ERROR_, @1); $$ = Node(VAR_BLOCK_BODY, @1, {pError}); }
    | var_block_body init           { $$ = Append($1, $2); ReportForgottenSemicolon(); }
    | var_block_body decl           { $$ = Append($1, $2); ReportForgottenSemicolon(); }
    // Kept (messages): here only the message, the list of names gets no node of its own.
    | var_block_body direct         { ReportForgottenSemicolon(); $$ = $1; }
    | init                          { $$ = Node(VAR_BLOCK_BODY, @1, {$1}); ReportForgottenSemicolon(); }
    | decl                          { $$ = Node(VAR_BLOCK_BODY, @1, {$1}); ReportForgottenSemicolon(); }
    | direct                        { ReportForgottenSemicolon(); $$ = $1; }
    ;

var_block:
    internal_var_block              { $$ = Node(VAR_BLOCK, @1, {$1}); }
    | input_var_block               { $$ = Node(VAR_BLOCK, @1, {$1}); }
    | output_var_block              { $$ = Node(VAR_BLOCK, @1, {$1}); }
    | in_out_var_block              { $$ = Node(VAR_BLOCK, @1, {$1}); }
    | external_var_block            { $$ = Node(VAR_BLOCK, @1, {$1}); }
    | var_block internal_var_block  { $$ = Append($1, $2); }
    | var_block input_var_block     { $$ = Append($1, $2); }
    | var_block output_var_block    { $$ = Append($1, $2); }
    | var_block in_out_var_block    { $$ = Append($1, $2); }
    | var_block external_var_block  { $$ = Append($1, $2); }
    ;

opt_list:
    RETAIN                          { CNode* pFirst = Node(RETAIN, @1); $$ = Node(OPT_LIST, @1, {pFirst}); }
    | CONSTANT                      { CNode* pFirst = Node(CONSTANT, @1); $$ = Node(OPT_LIST, @1, {pFirst}); }
    | CONSTANT RETAIN               {
                                        CNode* pFirst = Node(CONSTANT, @1);
                                        CNode* pSecond = Node(RETAIN, @1);
                                        $$ = Node(OPT_LIST, @1, {pFirst, pSecond});
                                    }
    | RETAIN CONSTANT               {
                                        CNode* pFirst = Node(RETAIN, @1);
                                        CNode* pSecond = Node(CONSTANT, @1);
                                        $$ = Node(OPT_LIST, @1, {pFirst, pSecond});
                                    }
    | %empty                        { $$ = Node(OPT_LIST, @0); }
    ;

// An external variable takes its attributes from the global one; recovery starts at once.
opt_list_no_const:
    RETAIN                          { CNode* pFirst = Node(RETAIN, @1); $$ = Node(OPT_LIST, @1, {pFirst}); }
    | CONSTANT                      { $$ = nullptr; ReportExternalConstant(); YYERROR; }
    | CONSTANT RETAIN               { $$ = nullptr; ReportExternalConstant(); YYERROR; }
    | RETAIN CONSTANT               { $$ = nullptr; ReportExternalConstant(); YYERROR; }
    | %empty                        { $$ = Node(OPT_LIST, @0); }
    ;

internal_var_block:
    VAR opt_list { g_Context->BeginVarBlock(VAR, $2); } var_block_body END_VAR
                                    { $$ = FinishVarBlock(Node(VAR, @1, {$2, $4})); }
    ;

input_var_block:
    VAR_INPUT opt_list { g_Context->BeginVarBlock(VAR_INPUT, $2); } var_block_body END_VAR
                                    { $$ = FinishVarBlock(Node(VAR_INPUT, @1, {$2, $4})); }
    ;

output_var_block:
    VAR_OUTPUT opt_list { g_Context->BeginVarBlock(VAR_OUTPUT, $2); } var_block_body END_VAR
                                    { $$ = FinishVarBlock(Node(VAR_OUTPUT, @1, {$2, $4})); }
    ;

in_out_var_block:
    VAR_IN_OUT opt_list { g_Context->BeginVarBlock(VAR_IN_OUT, $2); } var_block_body END_VAR
                                    { $$ = FinishVarBlock(Node(VAR_IN_OUT, @1, {$2, $4})); }
    ;

global_var_block:
    VAR_GLOBAL opt_list { g_Context->BeginVarBlock(VAR_GLOBAL, $2); } var_block_body END_VAR
                                    { $$ = FinishVarBlock(Node(VAR_GLOBAL, @1, {$2, $4})); }
    ;

external_var_block:
    VAR_EXTERNAL opt_list_no_const { g_Context->BeginVarBlock(VAR_EXTERNAL, $2); } var_block_body END_VAR
                                    { $$ = FinishVarBlock(Node(VAR_EXTERNAL, @1, {$2, $4})); }
    ;

// ---- Loops and branches.

while:
    WHILE exp DO stmt_list END_WHILE
                                    { $$ = Node(WHILE, @1, {$2, $4}); }
    ;

repeat:
    REPEAT stmt_list UNTIL exp END_REPEAT
                                    { $$ = Node(REPEAT, @1, {$2, $4}); }
    ;

for:
    FOR assignment TO exp DO stmt_list END_FOR
                                    { $$ = Node(FOR, @1, {$2, $4, $6}); }
    | FOR assignment TO exp BY exp DO stmt_list END_FOR
                                    { $$ = Node(FOR, @1, {$2, $4, $6, $8}); }
    ;

if:
    IF exp THEN stmt_list END_IF    { $$ = Node(IF, @1, {$2, $4}); }
    | IF exp THEN stmt_list ELSE stmt_list END_IF
                                    { $$ = Node(IF, @1, {$2, $4, $6}); }
    | IF exp THEN stmt_list elseif_op END_IF
                                    { $$ = Node(IF, @1, {$2, $4, $5}); }
    | IF exp THEN stmt_list elseif_op ELSE stmt_list END_IF
                                    { $$ = Node(IF, @1, {$2, $4, $5, $7}); }
    ;

elseif_op:
    ELSIF exp THEN stmt_list        { CNode* pFirst = Node(ELSIF, @1, {$2, $4}); $$ = Node(ELSEIF_LIST, @1, {pFirst}); }
    | elseif_op ELSIF exp THEN stmt_list
                                    { $$ = Append($1, Node(ELSIF, @2, {$3, $5})); }
    ;

case:
    CASE exp OF case_body ELSE stmt_list END_CASE
                                    { $$ = Node(CASE, @1, {$2, $4, $6}); }
    | CASE exp OF case_body END_CASE
                                    { $$ = Node(CASE, @1, {$2, $4}); }
    ;

// Labels and bodies alternate.
case_body:
    isv ':' stmt_list               { $$ = Node(CASE_BODY_LIST, @1, {$1, $3}); }
    | case_body isv ':' stmt_list   {
                                        CNode* pBody = Append($1, $2);
                                        $$ = Append(pBody, $4);
                                    }
    ;

// A label is a literal with its sign, no expression.
isv:
    signed_integer                  { $$ = Node(ISV_LIST, @1, {Integer($1, @1)}); }
    | isv ',' signed_integer        { $$ = Append($1, Integer($3, @3)); }
    | signed_integer ".." signed_integer
                                    {
                                        CNode* pRange = Node(SUBRANGE_DOTS, @2, {Integer($1, @1), Integer($3, @3)});
                                        $$ = Node(ISV_LIST, @1, {pRange});
                                    }
    // Kept (messages): a range behind others stands at its comma.
    | isv ',' signed_integer ".." signed_integer
                                    { $$ = Append($1, Node(SUBRANGE_DOTS, @2, {Integer($3, @3), Integer($5, @5)})); }
    ;

// ---- Expressions.

exp:
    IMM_REAL                        { $$ = g_Context->MakeReal($1, @1); }
    | IMM_INTEGER                   { $$ = Integer($1, @1); }
    | STR_DIR                       { $$ = g_Context->MakeString($1, @1); }
    | variable                      { $$ = $1; }
    | IDENTIFIER '(' parameter_list ')'
                                    { $$ = g_Context->MakeFunctionCall(*$1, @1, /*bInExpression=*/true, $3); }
    | IDENTIFIER '(' ')'            { $$ = g_Context->MakeFunctionCall(*$1, @1, /*bInExpression=*/true, nullptr); }
    | exp '+' exp                   { $$ = Node('+', @2, {$1, $3}); }
    | exp '-' exp                   { $$ = Node('-', @2, {$1, $3}); }
    | exp '*' exp                   { $$ = Node('*', @2, {$1, $3}); }
    | exp '/' exp                   { $$ = Node('/', @2, {$1, $3}); }
    | '(' exp ')'                   { $$ = $2; }
    | '-' exp  %prec UNARY_MINUS    { $$ = Node(UNARY_MINUS, @1, {$2}); }
    | '+' exp  %prec UNARY_MINUS    { $$ = $2; }
    | exp AND exp                   { $$ = Node(AND, @2, {$1, $3}); }
    | exp OR exp                    { $$ = Node(OR, @2, {$1, $3}); }
    | exp XOR exp                   { $$ = Node(XOR, @2, {$1, $3}); }
    | NOT exp                       { $$ = Node(NOT, @1, {$2}); }
    | exp ">" exp                   { $$ = Node(GREATER, @2, {$1, $3}); }
    | exp "<" exp                   { $$ = Node(LESS, @2, {$1, $3}); }
    | exp ">=" exp                  { $$ = Node(GREATER_EQUAL, @2, {$1, $3}); }
    | exp "<=" exp                  { $$ = Node(LESS_EQUAL, @2, {$1, $3}); }
    | exp "=" exp                   { $$ = Node(EQUAL, @2, {$1, $3}); }
    | exp "<>" exp                  { $$ = Node(NOT_EQUAL, @2, {$1, $3}); }
    | exp POWER exp                 { $$ = Node(POWER, @2, {$1, $3}); }
    | exp MOD exp                   { $$ = Node(MOD, @2, {$1, $3}); }
    | MOD '(' exp ',' exp ')'       { $$ = Node(MOD, @2, {$3, $5}); }
    | '(' error ')'                 { $$ = Node(ERROR_, @2); }
    | TRUE                          { $$ = Node(TRUE, @1); }
    | FALSE                         { $$ = Node(FALSE, @1); }
    | CAST_FUNCTION_CALL '(' exp ')'
                                    { $$ = g_Context->MakeCast($1, @1, $3); }
    | MULDIV '(' exp ',' exp ',' exp ')'
                                    { $$ = Node(MULDIV, @1, {$3, $5, $7}); }
    | SHL '(' exp ',' exp ')'       { $$ = Node(SHL, @1, {$3, $5}); }
    | SHR '(' exp ',' exp ')'       { $$ = Node(SHR, @1, {$3, $5}); }
    | ROL '(' exp ',' exp ')'       { $$ = Node(ROL, @1, {$3, $5}); }
    | ROR '(' exp ',' exp ')'       { $$ = Node(ROR, @1, {$3, $5}); }
    | ABS '(' exp ')'               { $$ = Node(ABS, @1, {$3}); }
    | MIN '(' exp_list ')'          { $$ = Node(MIN, @1, {$3}); }
    | MAX '(' exp_list ')'          { $$ = Node(MAX, @1, {$3}); }
    | LIMIT '(' exp ',' exp ',' exp ')'
                                    { $$ = Node(LIMIT, @1, {$3, $5, $7}); }
    | SQRT '(' exp ')'              { $$ = Node(SQRT, @1, {$3}); }
    ;

exp_list:
    exp                             { $$ = Node(EXP_LIST, @1, {$1}); }
    | exp_list ',' exp              { $$ = Append($1, $3); }
    ;

// Times are no kind of exp. Kept (messages): a literal stands at the symbol in front of it.
time_exp:
    TIME_OF_DAY_DIR                 { $$ = Node(TIME_OF_DAY_DIR, @0); }
    | DATE_AND_TIME_DIR             { $$ = Node(DATE_AND_TIME_DIR, @0); }
    | DATE_DIR                      { $$ = Node(DATE_DIR, @0); }
    | TIME_DIR                      { $$ = Node(TIME_DIR, @0); }
    | time_exp '+' time_exp         { $$ = Node('+', @2, {$1, $3}); }
    | time_exp '-' time_exp         { $$ = Node('-', @2, {$1, $3}); }
    | time_exp '*' exp              { $$ = Node('*', @2, {$1, $3}); }
    | time_exp '/' exp              { $$ = Node('/', @2, {$1, $3}); }
    | exp '*' time_exp              { $$ = Node('*', @2, {$1, $3}); }
    | exp '/' time_exp              { $$ = Node('/', @2, {$1, $3}); }
    ;

%%

// The scanner and the tree know the tokens by Tokens.def, the tables of this parser by the list above.
#define TOKEN(name, number, text) static_assert(static_cast<int>(TK_##name) == static_cast<int>(name));
#include "frontend/Tokens.def"
#undef TOKEN

void SetParserContext(CNorvane& norvane)
{
    g_Context = &norvane;
}

// A character that the grammar doesn't know, such as "#".
static std::string_view SymbolText(yysymbol_kind_t symbol)
{
    if (symbol == YYSYMBOL_YYUNDEF) return "$undefined";
    return yysymbol_name(symbol);
}

// syntax error, unexpected IDENTIFIER, expecting ',' or ')'
// Where more than four symbols would do, none is listed.
static int yyreport_syntax_error(const yypcontext_t* pContext)
{
    constexpr int mostListed = 4;
    yysymbol_kind_t expected[mostListed];
    const int count = yypcontext_expected_tokens(pContext, expected, mostListed);

    std::string text = "syntax error, unexpected ";
    text += SymbolText(yypcontext_token(pContext));
    for (int i = 0; i < count; ++i) {
        text += i == 0 ? ", expecting " : " or ";
        text += SymbolText(expected[i]);
    }
    yyerror(text.c_str());
    return 0;
}

void yyerror(const char* text)
{
    g_Context->SyntaxErrorAt(text, yylineno, nColumn - yyleng);
}
