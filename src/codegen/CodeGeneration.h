#pragma once

#include "codegen/BlockExtents.h"
#include "codegen/Label.h"
#include "files/TextBuffer.h"

#include <cstdint>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

class CArrayOfArrayIndex;
class CErrorHandler;
class CInitValue;
class CMember;
class CMemoryHandler;
class CNode;
class CNorvane;
class CPou;
class CProgram;
class CType;
class CTypeStruct;
class CTypeStructFB;
class CVariable;
class OutputTextFile;
class XmlStream;
struct FunctionLabel;
struct SourceLocation;
struct TypeSuffix;
struct VariableOperand;

// What an access does with a variable.
enum class AccessMode   // ORDER ACCESS
{
    Read,          // pushes the value; of an aggregate, its address
    Write,         // pops the value on top of the stack into it
    Address,       // pushes the address
    ReadThrough    // pushes the value that the variable, a pointer, points at
};

// How a member of the function block being generated is reached through its slot.
enum class FbAccessForm   // ORDER ACCESS: Read and Write through the slot are 3 + the access mode
{
    Push = 0,      // the slot itself: the member's address
    Pop = 1,
    Plain = 2,     // no mnemonic: for a text that brings its own
    PushThrough = 3,
    PopThrough = 4
};

// Turns checked trees into assembler text. A POU's text is written to the output as soon as the parser has
// reduced it, and nothing is patched later: places are final when they are printed. All generators append
// to the one text under construction.
class CCodeGeneration
{
public:
    explicit CCodeGeneration(CNorvane& norvane);
    virtual ~CCodeGeneration();

    // The output file and the texts that instructions are made of (AssemblerText.cpp).
    void WriteText(std::string_view text);            // an internal fault while no output is open
    void WriteLine(std::string_view text);            // and a line end
    void WriteTabLine(std::string_view text);         // behind a tab, and a line end
    void WriteHeader(std::string_view name, std::string_view fileTime, std::string_view fileVersion,
                     std::string_view buildNumber);
    std::string GetTypeSuffix(const CType* pType) const;          // "(INT)"; the pointer type's for aggregates
    std::string GetPointerSuffix() const;                         // of the target's pointer type
    std::string_view GetAreaPrefix(const CVariable* pVariable) const;   // "local+", "global+", "retain+" or nothing
    std::string_view GetVarBlockName(const CVariable* pVariable) const; // "VAR_INPUT"
    std::string GetVariableOperand(const CVariable* pVariable) const;   // "(INT) [local+4] ; count"
    // The decimal offset; with a bit above 0 the bit travels in the top eight bits, and the hexadecimal
    // form follows as a comment.
    static std::string GetPackedOffset(std::int64_t offsetBytes, int bit);
    // The same with the commented form in any case: that of BOOL members in a function block's frame.
    static std::string GetCommentedOffset(std::int64_t offsetBytes, int bit);

    // Trees (Expressions.cpp, Statements.cpp, FbCalls.cpp).
    void GenerateNode(CNode* pNode, TextBuffer& text);
    void GenerateStatementList(const CNode* pList, TextBuffer& text);
    static bool IsFalseLiteral(const CNode* pNode);   // FALSE or 0
    static bool IsTrueLiteral(const CNode* pNode);    // TRUE or 1

    // Variables (VariableAccess.cpp). The text ends without a line end. True if the place is computed on the stack and
    // what lies there is pushed or popped, an address never.
    bool GenerateVariableAccess(const CNode* pNode, AccessMode mode, TextBuffer& text);
    void GenerateFbMemberAccess(const CNode* pNode, FbAccessForm form, TextBuffer& text);   // of the current block
    // Distance between elements: bytes, or bits if the elements are BOOL. Dimension -1: of a whole element.
    std::int64_t GetElementStride(const CType* pArrayType, const CArrayOfArrayIndex* pIndex, int level,
                                  int dimension) const;
    std::int64_t GetCopySize(const CMember* pMember, const CNode* pValue);      // bytes
    static int CountIndexLevels(const CNode* pNode);                            // of a path; 0 for a plain name
    // Constant position of a subscript list in its array, from 0; -1 if a subscript isn't constant.
    std::int64_t EvalLinearIndex(const CNode* pList, const CArrayOfArrayIndex* pIndex, int level);

    // POU blocks (PouFrames.cpp); each writes one block and ends the POU's scope.
    void GenerateFunction(CNode* pNode);
    void GenerateFunctionBlock(CNode* pNode);
    void GenerateProgram(CNode* pNode);
    void WriteAutomaticPrograms();

    // The two generated functions, and the initial value of any variable (Initialization.cpp).
    void WriteGlobalInitialization();
    void WriteRetainInitialization();
    void NoteRetainedGlobals() const;             // when all have their places
    // Uses m_Area. A structure or array with more stores than anybody waits for ends the run before any is written: one
    // line on standard error, exit status 1.
    void GenerateVariableInit(const CVariable* pVariable, TextBuffer& text);
    // How many stores that would be for a structure or array: one for each scalar part that starts with another value
    // than zero. Costs what the initial values are long, not what they stand for.
    std::int64_t CountInitialStores(const CVariable* pVariable);

    // After the last source (StackAnalysis.cpp, DebugInformation.cpp).
    // Reads the target's stack settings, marks the POUs that are used, measures the programs and reports the stacks
    // that overflow. A call tree too large to be written ends the run: one line on standard error, exit status 1.
    void AnalyseStacks();
    // Only that end, for a run that replaces a file before the stacks are analysed.
    void RefuseLargeCallTree();
    // What one call of the POU takes from the return stack, in bytes.
    std::int64_t GetCallSize(const CPou& pou) const;
    void WriteCallTree(XmlStream& stream) const;  // all that is measured must have been
    std::string GetStatistics() const;            // ends in a line end
    // The output's name with ".dbi" in the place of ".asm" and what follows it; behind the whole name if ".asm"
    // stands at its start, is missing, or stands there twice.
    static std::string GetDebugName(const std::string& outputName);
    // Analyses the stacks, in any case, and writes the debug file that belongs to the output, or the given file instead,
    // which is not replaced but written as it is; false if it could not be written.
    bool WriteDebugInformation(const std::string& outputName, const std::optional<std::string>& fileName = {});
    // The second half of that: writes the debug file under the name, as often as it is wanted; false if that failed.
    bool WriteDebugFile(const std::string& fileName) const;
    static std::uint16_t ComputeSign(std::string_view text);      // the checksum of the debug file
    // "[40,4][2]": the stride of each dimension in a type text "INT[0..1,0..9][0..1]", the innermost being given.
    static std::string MakeDisplacement(std::string_view typeText, std::int64_t size);

    std::int64_t m_MaxNestedDepth = 0;        // bytes: sum of all the programs' deepest use
    std::int64_t m_MaxDepth = 0;              // bytes: deepest use of any one program
    std::int32_t m_ParameterStackMaxSize = 512;
    std::int32_t m_ParameterStackBytes = 256;
    bool m_NestedProgram = true;              // programs can interrupt each other
    std::int64_t m_CurrentDepth = 0;          // bytes: deepest use of the program being walked
    std::int32_t m_ReturnStackBytes = 1024;
    std::int32_t m_ReturnStackAlign = 1;      // bytes; local sizes are raised to a multiple of it
    std::int32_t m_CallOverload = 4;          // bytes that one call adds, besides its locals
    std::int32_t m_ReturnStackMaxSize = 2048;
    CPou* m_CurrentPou = nullptr;             // the POU being generated; calls are entered into its callees
    CPou* m_CurrentFb = nullptr;              // the function block whose body is being generated, else null
    CType* m_PointerType = nullptr;           // the target's pointer type
    CLabel m_Label;
    CBlockExtents m_Blocks;                   // in the temporary output
    std::string_view m_Area;                  // area prefix of the variable being initialised
    OutputTextFile* m_Output = nullptr;       // the temporary output, not owned

private:
    // What follows belongs to the file named above it; see there.

    // AssemblerText.cpp
    const CType* GetNodeType(const CNode* pNode) const;           // null only where nothing tells a type
    // The same as the texts above, as pieces (TextPieces.h).
    TypeSuffix SuffixOf(const CType* pType) const;
    TypeSuffix SuffixOf(const CNode* pNode) const;
    TypeSuffix PointerSuffix() const;
    VariableOperand OperandOf(const CVariable* pVariable) const;
    std::int64_t GetPosition() const;                             // bytes of the output up to here
    void FlushText();                                             // writes out what is under construction
    // The same where it is large. A text of its own, as that of a CASE's arms, waits for its place.
    void FlushLarge(const TextBuffer& text);

    // Expressions.cpp
    void GenerateInteger(const CNode* pNode, TextBuffer& text);
    void GenerateReal(const CNode* pNode, TextBuffer& text);
    static void GenerateStringLiteral(const CNode* pNode, TextBuffer& text);
    bool UsesShortcut(const CNode* pNode) const;
    bool IsDecidedByLeft(const CNode* pNode) const;
    void GenerateOperatorChain(CNode* pNode, TextBuffer& text);
    void GenerateShortcut(const CNode* pNode, Label label, TextBuffer& text);
    void GenerateOperation(const CNode* pNode, TextBuffer& text);
    void GeneratePower(const CNode* pNode, TextBuffer& text);
    void GenerateConversion(const CNode* pOperator, std::string_view typeName, TextBuffer& text);
    void GenerateUnary(const CNode* pNode, std::string_view mnemonic, TextBuffer& text);
    void GenerateShift(const CNode* pNode, std::string_view mnemonic, TextBuffer& text);
    void GenerateMulDiv(const CNode* pNode, TextBuffer& text);
    void GenerateMinMax(const CNode* pNode, std::string_view mnemonic, TextBuffer& text);
    void GenerateLimit(const CNode* pNode, TextBuffer& text);
    void GenerateCast(const CNode* pNode, TextBuffer& text);
    void GenerateSystem(const CNode* pNode, TextBuffer& text);
    void GenerateActualParameter(CNode* pActual, const CVariable& formal, TextBuffer& text);
    void GenerateFunctionCall(CNode* pNode, TextBuffer& text);
    FunctionLabel LabelOf(const CPou* pPou) const;

    // VariableAccess.cpp
    struct RuntimeSubscript;
    struct AccessPath;
    const CMember* FindCurrentFbMember(const CVariable* pVariable, int& position) const;
    std::int64_t GetSlotOffset(int position) const;
    void GenerateFbScalar(const CNode* pNode, AccessMode mode, TextBuffer& text);
    void EnterMember(const CNode* pStep, AccessPath& path);
    void EnterElement(const CNode* pStep, AccessPath& path);
    AccessPath WalkPath(const CNode* pNode);
    static bool StepsOverBytesToBits(const AccessPath& path);
    void ReportNoVariable(const CNode* pNode);
    bool GeneratePointerAccess(const CNode* pNode, const AccessPath& path, AccessMode mode, TextBuffer& text);
    bool GenerateDirectAccess(const CNode* pNode, const AccessPath& path, AccessMode mode, TextBuffer& text);
    void GenerateRuntimeBase(const AccessPath& path, std::string_view area, TextBuffer& text);
    static bool MissesElements(const RuntimeSubscript& subscript, int dimension);
    void GenerateRuntimeSubscripts(const AccessPath& path, TextBuffer& text);
    std::int64_t GetStructSize(const CType* pType);

    // Statements.cpp
    struct ForLoop;
    struct CaseArm;
    int GetFileNumber(const SourceLocation& location);
    bool GenerateAccessLine(const CNode* pNode, AccessMode mode, TextBuffer& text);   // as GenerateVariableAccess
    void GenerateAssignment(const CNode* pNode, TextBuffer& text);
    void GenerateStringAssignment(const CNode* pTarget, const CNode* pLiteral, TextBuffer& text);
    void GenerateCopy(const CNode* pTarget, const CNode* pValue, TextBuffer& text);
    void GenerateIf(const CNode* pNode, TextBuffer& text);
    Label GenerateElsifItems(const CNode* pItems, bool hasElse, Label endLabel, TextBuffer& text);
    void GenerateElse(const CNode* pList, Label elseLabel, Label endLabel, TextBuffer& text);
    void GenerateWhile(const CNode* pNode, TextBuffer& text);
    void GenerateRepeat(const CNode* pNode, TextBuffer& text);
    bool GenerateFor(const CNode* pNode, TextBuffer& text);      // false: without the last line end
    void GenerateForCompare(const ForLoop& loop, std::string_view comparison, TextBuffer& text);
    void GenerateForConstantStep(const ForLoop& loop, TextBuffer& text);
    void GenerateForTestedBelow(const ForLoop& loop, TextBuffer& text);
    void GenerateForTestedAbove(const ForLoop& loop, TextBuffer& text);
    void GenerateForStepTest(const ForLoop& loop, std::string_view comparison, Label label, TextBuffer& text);
    void GenerateForWithVariableStep(const ForLoop& loop, TextBuffer& text);
    struct CaseArms;
    using ArmsByHash = std::unordered_multimap<std::size_t, std::size_t>;   // hash of the code to position
    static const CaseArm* FindEqualArm(const CaseArms& arms, const ArmsByHash& armsByHash, std::size_t hash,
                                       std::string_view code);
    CaseArms BuildCaseArms(const CNode* pPairs);
    void GenerateCase(const CNode* pNode, TextBuffer& text);
    struct ExitTarget
    {
        int label;                                                // number of the label behind it
        bool isCase;
        bool isInLoop;
    };
    void EnterExitTarget(bool isCase);
    void LeaveExitTarget();
    void NoteExit(const CNode* pNode, Label label);
    bool GenerateExit(const CNode* pNode, TextBuffer& text);     // false: without the last line end
    std::vector<ExitTarget> m_ExitTargets;                        // loops and CASEs being generated, outermost first
    std::size_t m_FilesNumbered = 0;                              // sources that are in m_FileNumbers already
    std::string m_LastFileName;                                   // answered last by GetFileNumber
    int m_LastFileNumber = 0;

    // FbCalls.cpp
    class CFbCallText;   // the texts of one call
    void GenerateFbCall(const CNode* pNode, TextBuffer& text);

    // PouFrames.cpp
    // For what the checks accept and no code can express: one line on standard error, exit status 1.
    [[noreturn]] static void EndGeneration(const SourceLocation& where, const std::string& text);
    bool BeginFrame(const CNode* pNode);
    void EndFrame(const CNode* pNode);            // the notes drawn since then are the POU's; its scope ends
    void WritePouHeader(const CPou* pPou);
    void WritePouEnd();
    void WriteTargetText(std::string_view text);  // behind a tab, and a line end
    void WriteFunctionFrame(CNode* pNode);
    void WriteFunctionBlockFrame(CNode* pNode);
    void WriteProgramFrame(CNode* pNode);
    void WriteBody(const CNode* pNode);
    void WriteMemberSlot(const CTypeStructFB* pStruct, int position);
    bool DoSlotsFit(const CTypeStructFB* pStruct, std::int32_t localBytes) const;
    void WriteReturnLabel();
    void WriteInitializationCalls(const CProgram* pProgram);
    bool IsUnusedMember(const CMember* pMember) const;
    bool IsSlotRead(const CMember* pMember) const;
    std::int32_t GetLocalBytes() const;           // up to the end of the local that ends highest
    void GenerateLocalList(std::int32_t localBytes, TextBuffer& text);
    void NoteCompatibleParameters(std::int32_t localBytes);
    void GenerateInputParameters(const CPou* pPou, TextBuffer& text);
    void NoteRetainedValue(const CVariable* pVariable);
    void GenerateLocalInitialization(TextBuffer& text);
    void GenerateReturnValue(const CPou* pPou, TextBuffer& text);

    // Initialization.cpp
    void WriteInitialization(std::string_view name, std::string_view title, bool isRetain);
    std::vector<const CVariable*> GetVariablesToInitialize(bool isRetain) const;
    void GenerateStringInit(const CVariable* pVariable, TextBuffer& text) const;
    // How many stores a value of a type's own makes, null being the defaults of the structure's members.
    std::map<std::pair<const CTypeStruct*, const CInitValue*>, std::int64_t> m_StoreCounts;
    std::set<std::pair<const CTypeStruct*, const CInitValue*>> m_LosingStructs;   // some part loses its default

    TextBuffer m_Text;                            // under construction: of the POU in progress, as far as it isn't written
    std::int64_t m_WrittenBytes = 0;              // what has been flushed
    CNorvane& m_Norvane;
    CErrorHandler* m_ErrorHandler;
    CMemoryHandler* m_MemoryHandler;
    std::unordered_map<std::string, int> m_FileNumbers;           // name to position in the compiled list
};
