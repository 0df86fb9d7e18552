#pragma once

#include <string>

class CDecisions;

// A source that compiles without an error for the target tests/cases/target.xml (areas that overflow apart): types,
// globals, functions, function blocks and the program main, with everything that generates code. Each decision is taken
// from the stream, so equal streams give equal sources.
std::string GenerateProgram(CDecisions& decisions);
