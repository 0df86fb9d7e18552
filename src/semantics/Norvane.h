#pragma once

#include "codegen/CodeGeneration.h"
#include "files/XmlDocument.h"
#include "frontend/ErrorHandler.h"
#include "frontend/Node.h"
#include "frontend/NodeArena.h"
#include "frontend/Notes.h"
#include "model/CastFunction.h"
#include "model/Name.h"
#include "model/PouTable.h"
#include "model/SymbolTable.h"
#include "target/DataType.h"
#include "target/MemoryHandler.h"

#include <cstdint>
#include <initializer_list>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

class CStringLiteral;
class CTypeAny;
class CTypeArray;
class CTypeStruct;
union YYSTYPE;

// Bits of m_VarBlockFlags: the kind of the open block, and its attributes.
enum VarBlockFlag : int
{
    InVar = 1,
    InVarInput = 2,
    InVarOutput = 4,
    InVarInOut = 8,
    InVarGlobal = 16,
    InVarExternal = 32,
    WithConstant = 64,
    WithRetain = 128,
    InType = 256,
    InStruct = 512,

    InAnyVarBlock = 63,        // a VAR block of any kind
    InDeclaration = 319        // a VAR block or a TYPE body; deliberately not a STRUCT body
};

// The compiler: settings, tables and the semantic methods that the grammar's actions call. The methods are
// spread over the files of this folder by subject, and over driver/ for the merge and the library.
class CNorvane
{
public:
    CNorvane();
    virtual ~CNorvane();
    CNorvane(const CNorvane&) = delete;
    CNorvane& operator=(const CNorvane&) = delete;

    // ---- Settings, set once by the option loop.
    std::string m_ProgramName = "default";
    std::int32_t m_ProgramVersion = 0;
    std::int32_t m_CompileStamp = static_cast<std::int32_t>(0x80000000u);
    std::vector<std::string> m_SourceFiles;          // files opened for parsing, in order
    std::string m_LibraryFile;                       // of -l; empty: no library is stored
    std::string m_LibraryTemporary;                  // file of the extracted library; empty: none, or not made
    std::int32_t m_ParameterStackSize = -1;          // bytes; -1: not given
    std::int32_t m_ReturnStackSize = -1;             // bytes; -1: not given
    bool m_ConstantSubstitution = true;              // -cso0 clears it
    bool m_FbOptimisation = true;                    // -fbo0 clears it
    bool m_BooleanShortcut = true;                   // -bs0 clears it
    bool m_DumpTree = false;                         // -x
    bool m_IsReproducible = false;                   // no process number in what is written
    bool m_DumpFailed = false;                       // a tree could not be written: the run fails in the end

    // ---- The tables. The order matters: who is given another one at construction stands behind it.
    CNamePool m_Names;
    CNodeArena m_Nodes;                              // of the part of a source that is being read
    CXmlDocument m_Target;
    CErrorHandler m_Errors;
    CNotes m_Notes;                                  // about code that does something else than it says
    CDataType m_DataTypes;
    CMemoryHandler m_Memory;
    CSymbolTable m_GlobalSymbols;                    // of the whole run
    CSymbolTable m_LocalSymbols;                     // of the current POU; searched first
    CPouTable m_Pous;
    CCastFunctionSet m_CastFunctions;
    CCodeGeneration m_Code;

    // ---- State of the declarations.
    int m_VarBlockFlags = 0;                         // VarBlockFlag bits; 0 outside any block
    int m_PouKind = 0;                               // PROGRAM, FUNCTION or FUNCTION_BLOCK; 0 outside
    std::vector<std::unique_ptr<CVariable>> m_Parameters;        // interface list of the POU being parsed
    std::unique_ptr<CTypeStruct> m_StructInProgress;             // under the name "tmp"
    std::unique_ptr<CArrayOfArrayIndex> m_PendingIndex;          // of the array declaration in progress
    bool m_ArrayPending = false;                     // the next AddVariables makes array variables

    // ---- Names (Names.cpp). NEW_ID says that a name is nothing known.
    // TYPE_IDENTIFIER with an elementary type that the target allows; a refused one is handed out all the same.
    int LookupTypeName(const CName& name, CType*& pType);
    // CAST_FUNCTION_CALL or TYPE_IDENTIFIER with the conversion or the declared type in the value.
    int ClassifyName(const CName& name, YYSTYPE& value);
    CVariable* FindVariable(const CName& name) const;            // local first, then global; null if absent
    CVariable* FindVariable(std::string_view name) const;

    // ---- Making nodes (MakeNode.cpp), all in the arena. The makers of leaves run no checks.
    // Folds, types and checks the new node. Null children are left out.
    CNode* MakeNode(int kind, const SourceLocation& location, std::initializer_list<CNode*> children = {});
    CNode* MakeIdentifier(const CName& name, const SourceLocation& location);   // a NEW_ID, which isn't looked up
    CNode* MakeInteger(std::int64_t value, const SourceLocation& location);
    CNode* MakeReal(double value, const SourceLocation& location);
    CNode* MakeString(CStringLiteral* pLiteral, const SourceLocation& location);    // takes the literal over
    // A use: the variable, the literal that replaces a constant, or an ERROR_ node after a diagnostic.
    CNode* MakeVariable(const CName& name, const SourceLocation& location);
    CNode* AppendToList(CNode* pList, CNode* pItem);             // the list; a null item is left out
    // Behind each part of a file, with the list of the parts before it, null in front of the first. Ends the life of
    // the part's nodes and returns null; with -x they live on in the list that it returns.
    CNode* FinishFilePart(CNode* pFile, CNode* pPart, const SourceLocation& location);
    void FinishSourceFile(const CNode* pRoot);                   // writes the tree if -x is given; then no node is left
    void SyntaxErrorAt(std::string_view text, int line, int column);            // in the current file

    // ---- Declarations (Declarations.cpp, ArrayDeclarations.cpp, StringDeclarations.cpp, PouDeclarations.cpp).
    void BeginPou(int kind);                                     // PROGRAM, FUNCTION or FUNCTION_BLOCK
    void EndPouKind();                                           // the locals stay until EndPouScope
    void BeginVarBlock(int token, const CNode* pAttributes);     // the attributes may be null
    void EndVarBlock();
    CNode* MakeDeclaredIdentifier(const CName& name, const SourceLocation& location);   // an ERROR_ if it is taken
    void SetDirectAddress(CNode* pList, const CName& address);                  // without "%"
    void AddVariables(CNode* pList, CType* pType, const CInitValue* pInit);     // a null type counts as the error type
    void DeclareWithInit(CNode* pList, CType* pType, CNode* pValue);
    void DeclareString(CNode* pList, CNode* pLength, CStringLiteral* pText);    // takes the text, or null, over
    void DeclareStringFromVariable(CNode* pList, CNode* pLength, CNode* pVariable);
    void DeclareArray(CNode* pList, CNode* pRanges, CType* pElement, CNode* pInitList);   // pInitList may be null
    void AddReturnVariable(const CName& name, CNode* pReturnType);              // the local that holds the result
    CNode* MakeReturnType(CNode* pNode, CType* pType);           // the RETURN_TYPE node given, completed
    void AddProgramInit();                                       // the local __ProgramInit
    void EndPouScope();                                          // deletes the POU's locals

    // ---- Expressions (ExpressionTyping.cpp).
    void TypeExpression(CNode* pNode);               // from the children's types; poisoned after a diagnostic
    // Whether the literal suits the type, which it takes then if it had none. Without bReport only a literal that
    // has another type already draws a diagnostic.
    bool CheckImmediate(CType* pType, CNode* pNode, bool bReport);
    void TypeLiteral(CNode* pLiteral, CType* pType);  // gives an untyped operand its type; a note if it can't hold it
    CNode* MakeCast(CCastFunction* pFunction, const SourceLocation& location, CNode* pArgument);
    bool IsPoison(const CNode* pNode) const;         // kind ERROR_ or the error type
    void Poison(CNode* pNode);                       // gives it the error type, which keeps followers silent

    // ---- Folding (LiteralFolding.cpp, ConstantFolding.cpp, ValueFolding.cpp).
    void FoldImmediates(CNode* pNode);               // an operator on literals becomes a literal
    void FoldMinMax(CNode* pNode);                   // the literals among the arguments become one
    void FoldConstants(CNode* pNode);                // in declarations: on known values, a SIMPLIFIED node
    // What an operator gives on values of variables and on literals; null if it gives none.
    std::unique_ptr<CInitValue> FoldValues(const CInitValue& left, const CInitValue& right, int op,
                                           const SourceLocation& where);
    std::unique_ptr<CInitValue> FoldValueImmediate(const CInitValue& left, const CNode& right, int op,
                                                   const SourceLocation& where);
    std::unique_ptr<CInitValue> FoldImmediateValue(const CNode& left, const CInitValue& right, int op,
                                                   const SourceLocation& where);
    std::unique_ptr<CInitValue> FoldUnaryValue(const CInitValue& value, int op);
    void CollapseNode(CNode* pNode);                 // takes the children's place in the source and drops them

    // ---- Paths, statements and calls (Paths.cpp, StatementChecks.cpp, CaseLabels.cpp, Calls.cpp).
    void ResolveVariablePath(CNode* pNode);          // sets variable and type of a path
    // The steps of a path whose root has that type and, if it is an array, that index.
    void ResolveMemberPath(CNode* pNode, const CArrayOfArrayIndex* pIndex, CType* pType);
    int EvalIntegerExpression(CNode* pNode, std::int32_t& value);    // 1 with a value, -1 without
    void CheckAssignment(CNode* pNode);              // nothing for other kinds
    void CheckCondition(CNode* pNode);               // of IF, ELSIF, WHILE and REPEAT
    void CheckCase(CNode* pNode);
    void CheckFor(CNode* pNode);
    // The parameters, which may be null, become the call's child.
    CNode* MakeFunctionCall(const CName& name, const SourceLocation& location, bool bInExpression, CNode* pParameters);
    CNode* MakeFbCall(const CName& name, const SourceLocation& location, CNode* pParameters);
    void CheckFunctionCall(CNode* pNode);            // the actual parameters against the function's

    // ---- Initial values (Initialisers.cpp, InitialValues.cpp, ElementValues.cpp).
    // False for a list that is refused, with or without a diagnostic. What is built of one is null for a type of
    // another class.
    bool CheckArrayInit(CType* pType, CNode* pList, const CArrayOfArrayIndex* pIndex, int level);
    bool CheckStructInit(CType* pType, CNode* pList);
    std::unique_ptr<CInitValue> BuildInitArray(CType* pType, const CNode* pList);
    std::unique_ptr<CInitValue> BuildInitStruct(CType* pType, const CNode* pList);
    std::unique_ptr<CInitValue> BuildInitScalar(CType* pType, CNode* pNode);    // null after a diagnostic
    std::unique_ptr<CInitValue> BuildDefaultArrayInit(const CArrayOfArrayIndex* pIndex, CType* pType, int level);
    std::int64_t CountInitElements(const CNode* pList);                         // -1 after a diagnostic
    std::unique_ptr<CInitValue> GetElementInitValue(const CNode* pNode);        // null if none is known
    std::unique_ptr<CInitValue> ValueOf(CNode* pNode, CType* pType);            // of an operand; null if none is known
    int EvalConstIndex(const CNode* pNode, std::int32_t& value);                // 1, or -1 after a diagnostic

    // ---- The driver's part (driver/).
    // The name of the temporary source; empty if the target has none. Its file is m_LibraryTemporary.
    std::string ExtractFirmwareLibrary();
    std::string GetFirmwareLibraryName() const;
    // Writes the sources into the file of -l. False if that file can't be written; what is wrong with its
    // contents is reported as an error.
    bool StoreLibrary(std::string_view sources);
    // Makes the other file of the temporary text, with unused functions and function blocks as comments; where all are
    // used the one may become the other. False if that could not be written as a whole. When it takes its place is not
    // decided here.
    bool MergeOutput(const std::string& temporaryName, const std::string& outputName);

private:
    // Declarations.cpp
    void AddMembers(CNode* pList, CType* pType, const CInitValue* pInit);
    void AddAliases(CNode* pList, CType* pType, const CInitValue* pInit);
    void AddBlockVariables(CNode* pList, CType* pType, const CInitValue* pInit);
    void AddVariable(CNode* pName, CType*& pType, const CInitValue* pInit);
    std::unique_ptr<CVariable> MakeBlockVariable(CType*& pType, const CInitValue*& pInit);
    void NoteExternal(const CVariable& variable);
    void PlaceAtAddress(CVariable& variable, const CNode* pName);
    void WarnInitialisedParameter(const SourceLocation& where);
    void EnterVariable(std::unique_ptr<CVariable> pVariable);
    bool IsInterfaceBlock() const;      // VAR_INPUT, VAR_OUTPUT or VAR_IN_OUT is open
    bool JoinsParameters() const;       // the open block's variables enter m_Parameters
    void RegisterStruct(CNode* pNode);

    // PouDeclarations.cpp
    void AddFunction(CNode* pNode);
    void AddFunctionBlock(CNode* pNode);
    void AddProgram(CNode* pNode);
    void TakeParameters(CPou& pou);
    int CheckAnyParameters(CFunction& function, CTypeAny*& pAny);

    // ArrayDeclarations.cpp, StringDeclarations.cpp
    CTypeArray* GetArrayType(CType* pElement, const CArrayIndex* pIndex);
    std::unique_ptr<CArrayIndex> BuildArrayIndex(const CNode* pRanges);         // null after a diagnostic
    std::unique_ptr<CInitValue> MakeArrayValue(CType* pElement, CTypeArray* pArray, CNode* pInitList);
    void AddArrayTypes(const CNode* pList, CType* pElement, CTypeArray* pArray, const CInitValue* pInit);
    std::int32_t EvalStringLength(CNode* pList, CNode* pLength);                // -1 after a diagnostic
    std::int32_t BeginString(CNode* pList, CNode* pLength);
    void AddString(CNode* pList, std::int32_t length, const std::string& text, const SourceLocation& lengthWhere);

    // Initialisers.cpp, InitialValues.cpp
    std::unique_ptr<CInitValue> MakeVariableValue(CNode* pList, CType* pType, CNode* pValue);
    bool CheckInitType(const CType* pDeclared, const CNode* pValue, const SourceLocation& where);
    bool CheckInitElement(CType* pElement, CNode* pValue);
    static bool LosesDefault(const CType& element, const CArrayOfArrayIndex& index, const CInitValue* pInit);
    void NoteDroppedValue(const CNode* pList);                                  // of the declared names
    bool CheckStructMember(const CMember& member, const CNode* pName, CNode* pValue);
    bool GetRepeatCount(const CNode* pNode, std::int64_t& value);
    bool BuildInitElement(CType* pType, CNode* pNode, std::unique_ptr<CInitValue>& pInit);

    std::vector<std::unique_ptr<CVariable>> m_ExternalVariables;   // in no table: the name means the global
    std::vector<std::unique_ptr<CFunction>> m_AnyFunctions;        // of ANY parameters, so not in the POU table
    // By element type and number of dimensions; for lookup only, never walked.
    std::map<std::pair<const CType*, int>, CTypeArray*> m_ArrayTypes;
};

// The one compiler of the process; it exists before main and holds everything.
extern CNorvane g_Norvane;
