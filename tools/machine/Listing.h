#pragma once

#include "machine/DebugInfo.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

// The text of a program for the stack machine (.asm), read into instructions. Every form that the compiler writes
// is known; anything else is refused with its line.

enum class Mnemonic : std::uint8_t   // ORDER MNEMONIC
{
    Push,          // a constant, or one character
    PushMemory,    // the value of an operand
    PushAddress,   // PUSH&: its address
    PushThrough,   // PUSH*: the value that it points at
    PushIndirect,  // PUSHI: pops the address
    Drop,          // POP without an operand
    PopMemory,
    PopThrough,    // POP*
    PopAddress,    // POP&, for an aggregate behind an in-out member: written, and nothing that a machine could do
    PopIndirect,   // POPI: pops the address, then the value
    Dup,
    Memcpy,
    Add,
    Sub,
    Mul,
    Div,
    Mod,
    And,
    Or,
    Xor,
    Min,
    Max,
    Pow,
    Powr,
    MulDiv,
    Shl,
    Shr,
    Rol,
    Ror,
    Neg,
    Abs,
    Sqrt,
    Not,
    CmpEq,
    CmpNe,
    CmpLt,
    CmpLe,
    CmpGt,
    CmpGe,
    Convert,       // TO_...: `type` is converted from, `toType` to
    Jmp,
    Jc,
    Jnc,
    Jsr,
    Rts,
    Case,
    CaseRange,
    Sys,
    Address,
    AddressBit,
    LocalData,
    LocalSet,
    Nop            // in the texts that a target puts around its programs
};

enum class MemoryArea : std::uint8_t
{
    Local,
    Global,
    Retain,
    Absolute
};

struct Instruction
{
    Mnemonic mnemonic = Mnemonic::Nop;
    MemoryArea area = MemoryArea::Local;
    const DebugType* pType = nullptr;     // of the suffix; null where there is none
    const DebugType* pToType = nullptr;   // of a conversion
    std::int32_t offset = 0;              // of the operand, bytes in its area
    int bit = -1;                         // of the operand; -1: none given
    std::int64_t number = 0;              // constant as a cell holds it, bytes, id, value of a CASE, low bound of a range
    std::int64_t high = 0;                // high bound
    std::int64_t stride = 0;              // of ADDRESS (bytes) and ADDRESSBIT (bits); low and high as above
    int target = -1;                      // of a jump or call: index of an instruction; -1: no such label
    int line = 0;                         // in the text, from 1
    int mark = -1;                        // position in m_Marks of the line mark in force; -1: none
    int pou = -1;                         // position in m_Pous
    std::string_view text;                // as written, without the white space around it
};

// DBI FILE f LINE l
struct LineMark
{
    int file = 0;          // position in the debug file's list of sources
    int line = 0;
    int instruction = 0;   // the first behind the mark
};

struct ListingVariable     // of a function, from its header comments
{
    std::string name;
    std::string typeName;  // of the suffix: the pointer type for structures and arrays
    std::string block;     // "VAR", "VAR_INPUT", "VAR_OUTPUT", "VAR_IN_OUT"
    std::int32_t offset = 0;
};

struct ListingHeader       // the comment in front of a POU
{
    std::string kind;      // "FUNCTION", "FUNCTION_BLOCK", "PROGRAM"
    std::string name;      // with the "__1" of the second function of a name
    std::string fileName;
    int line = 0;
    int pou = -1;          // position in m_Pous; -1: nothing reaches it, and its code is a comment
};

struct ListingPou
{
    enum Kind { Program, Function, Initialization };

    Kind kind = Function;             // a function block counts as a function
    std::string name;                 // behind "PROGRAM_" or "FUNCTION_"
    int first = 0;                    // its instructions, from the first
    int end = 0;                      // to the one before this
    std::int32_t localBytes = 0;      // as the return stack counts them
    std::int32_t memoryBytes = 0;     // as LOCALDATA or LOCALSET asks for
    int id = -1;                      // LOCALSET's, of a program
    std::vector<ListingVariable> variables;
};

class CListing
{
public:
    // False, with "file(line): reason" in `error`, if the text can't be read. The debug file gives the types and must
    // live as long as the listing.
    bool Load(const std::string& fileName, const CDebugInfo& debugInfo, std::string& error);
    bool Read(std::string text, const std::string& shownName, const CDebugInfo& debugInfo, std::string& error);

    const ListingPou* FindPou(std::string_view label) const;   // "FUNCTION_f", "PROGRAM_main"; null if there is none
    int FindPouIndex(std::string_view label) const;            // -1 if there is none
    std::string_view GetComment(const Instruction& instruction) const;   // behind its ";", without white space around

    std::vector<Instruction> m_Instructions;
    std::vector<LineMark> m_Marks;
    std::vector<ListingPou> m_Pous;
    std::vector<ListingHeader> m_Headers;          // of the POUs that come from sources, in their order
    std::vector<int> m_LabelTargets;               // instructions that labels stand in front of, rising, each once
    std::unordered_map<std::string, bool> m_LocatedGlobals;   // names of variables with an address of their own

private:
    friend class CListingReader;

    std::string m_Text;                            // what Instruction::text points into
    std::unordered_map<std::string, int> m_PouByLabel;
};

// The mnemonic as the text has it, "PUSH&".
std::string_view GetMnemonicText(Mnemonic mnemonic);
