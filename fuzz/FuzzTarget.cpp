// Any bytes as a target description, under a source that asks for all that a description tells.

#include "FuzzCompile.h"

#include "semantics/Norvane.h"

#include <cstddef>
#include <cstdint>

static const char* const g_Source = R"(TYPE s : STRUCT a : BOOL; b : INT; c : ARRAY [1..3] OF REAL; END_STRUCT; END_TYPE
VAR_GLOBAL x AT %MX1.2 : BOOL; y AT %QW2 : INT; z : s; END_VAR
VAR_GLOBAL RETAIN r : LREAL := 2.5; END_VAR
FUNCTION f : INT VAR_INPUT a : INT; END_VAR VAR_IN_OUT b : s; END_VAR f := a + b.b; END_FUNCTION
FUNCTION_BLOCK fb VAR_INPUT a : INT; END_VAR VAR_OUTPUT q : BOOL; END_VAR q := a > 3; END_FUNCTION_BLOCK
PROGRAM main VAR i : INT; b : fb; END_VAR
b(a := i); x := b.q; i := f(i, z); z.c[i] := 1.5;
END_PROGRAM
)";

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* pBytes, std::size_t size)
{
    const std::string_view target(reinterpret_cast<const char*>(pBytes), size);
    const std::unique_ptr<CNorvane> pNorvane = LoadFuzzTarget(target);
    if (pNorvane) CompileFuzzSource(*pNorvane, g_Source);
    return 0;
}
