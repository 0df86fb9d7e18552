#pragma once

#include <cstdint>

// What the code format leaves open, and our choices. docs/machine.md lists them for users.

enum class FrameContents { Zero, Keep, Noise };            // of a function's memory at its call
enum class SystemCalls { Trap, Ignore, Print };
enum class Remainder { Truncated, Floored };               // sign of MOD: of the dividend, or of the divisor
enum class RealDivision { Trap, Ieee };                    // by zero
enum class Rounding { Truncate, Nearest };                 // of a real that becomes an integer
enum class WideShift { Zero, Modulo };                     // of a count that is negative or beyond the width
enum class RightShift { Arithmetic, Logical };             // of signed types
enum class Underflow { Trap, Zero };                       // what an empty stack yields
enum class StartUp { Once, Every };                        // start-up programs: before the first scan, or in each

struct MachineOptions
{
    FrameContents frames = FrameContents::Zero;
    SystemCalls systemCalls = SystemCalls::Trap;
    Remainder remainder = Remainder::Truncated;
    RealDivision realDivision = RealDivision::Trap;
    Rounding rounding = Rounding::Truncate;
    WideShift wideShift = WideShift::Zero;
    RightShift rightShift = RightShift::Arithmetic;
    Underflow underflow = Underflow::Trap;
    StartUp startUp = StartUp::Once;
    std::int64_t maxInstructions = 10'000'000;             // of one scan
    int cellBytes = 4;                                     // that a cell takes of the parameter stack
    bool strict = false;                                   // report cells popped with another type than pushed
    bool plain = false;                                    // one step for each instruction, for debuggers
    bool countLines = false;                               // count how often each line mark is passed
};
