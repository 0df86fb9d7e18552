#include "machine/Trap.h"

#include <iterator>

std::string_view GetTrapName(TrapKind kind)
{
    constexpr std::string_view names[] = {   // ORDER TRAP
        "OutsideArea",     "IndexBounds", "DivisionByZero",      "StackUnderflow", "ParameterStackFull",
        "ReturnStackFull", "NoLabel",     "TooManyInstructions", "SystemCall",     "NoSuchOperation",
    };
    static_assert(std::size(names) == static_cast<std::size_t>(TrapKind::NoSuchOperation) + 1);
    return names[static_cast<std::size_t>(kind)];
}

static std::string ToText(const CodePosition& position)
{
    if (position.file.empty()) return position.pou;
    return position.file + "(" + std::to_string(position.line) + "): " + position.pou;
}

//	tank.st(12): PROGRAM main: trap: index 7 is outside 1..5
//	  at ADDRESS(INT) 2 1 5, line 80 of the listing
//	  called from tank.st(30): PROGRAM main
//	  stack: 7 INT, 1040 UDINT
std::string ToText(const Trap& trap)
{
    std::string text = ToText(trap.position) + ": trap: " + trap.reason;
    text += "\n  at " + trap.instructionText + ", line " + std::to_string(trap.asmLine) + " of the listing";
    for (const CodePosition& caller : trap.callers) text += "\n  called from " + ToText(caller);
    text += "\n  stack: ";
    if (trap.stackTop.empty()) text += "empty";
    for (std::size_t i = 0; i < trap.stackTop.size(); ++i) text += (i > 0 ? ", " : "") + trap.stackTop[i];
    return text;
}
