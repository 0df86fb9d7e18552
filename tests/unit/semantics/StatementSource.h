#pragma once

#include "CompileText.h"

#include <string>

// What a compile of the whole text prints.
inline std::string MessagesOfSource(const std::string& source, bool isSubstituting = true)
{
    CompileOptions options;
    options.prepare = [=](CNorvane& norvane) { norvane.m_ConstantSubstitution = isSubstituting; };
    return CompileText(source, options).output;
}

// The same for a program of one line of declarations and some of statements, behind other blocks. With
// nothing in front of it the statements begin in line 5, else one line further down for each line in front.
inline std::string MessagesOf(const std::string& blocks, const std::string& declarations, const std::string& statements)
{
    return MessagesOfSource(blocks + "PROGRAM main\nVAR\n" + declarations + "\nEND_VAR\n" + statements + "\nEND_PROGRAM\n");
}
