#pragma once

#include "norvane/Compilation.h"

#include <string>

// Where the two outputs of a program go: "out/pump" and "out/pump.asm" alike give out/pump.asm and out/pump.dbi.
struct OutputNames
{
    explicit OutputNames(const std::string& name);

    std::string text;
    std::string debug;
    std::string program;   // the last part, "pump": what the outputs are told to be named
};

// Puts the outputs of a compile in place, both or none. False, with the reason. One call at a time in a process.
bool PlaceOutputs(const CCompilation& compilation, const OutputNames& names, std::string& error);

// Writes a small file as a whole or not at all. False, with the reason.
bool WriteTextFile(const std::string& name, const std::string& text, std::string& error);
