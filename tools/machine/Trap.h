#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

enum class TrapKind : std::uint8_t   // ORDER TRAP
{
    OutsideArea,
    IndexBounds,
    DivisionByZero,
    StackUnderflow,
    ParameterStackFull,
    ReturnStackFull,
    NoLabel,
    TooManyInstructions,
    SystemCall,
    NoSuchOperation
};

std::string_view GetTrapName(TrapKind kind);   // "IndexBounds"

// Where code stands.
struct CodePosition
{
    std::string pou;           // "FUNCTION f", "PROGRAM main"
    std::string file;          // source of the line mark in force; empty if there is none
    int line = 0;
    int instruction = -1;      // of the listing; -1: none
};

// What stopped a run.
struct Trap
{
    TrapKind kind = TrapKind::NoSuchOperation;
    std::string reason;                    // "index 7 is outside 1..5"
    CodePosition position;
    std::string instructionText;           // as the listing has it
    int asmLine = 0;                       // its line there
    std::vector<CodePosition> callers;     // from the nearest to the program
    std::vector<std::string> stackTop;     // the topmost cells first
};

// A trap as a user reads it, several lines, the last without a line end.
std::string ToText(const Trap& trap);
