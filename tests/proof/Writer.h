#pragma once

#include "Tree.h"

#include <string>

// The source text of a program: only the parentheses that the language asks for, a line to a statement.
std::string WriteProgram(const Program& program);
