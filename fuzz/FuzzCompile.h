#pragma once

#include <memory>
#include <string>
#include <string_view>

class CNorvane;

// One compile within the process, as the driver makes it but from memory and without outputs that stay.

// What the target description says, loaded as a run loads it; null where a run would end for a missing node.
std::unique_ptr<CNorvane> LoadFuzzTarget(std::string_view target);

// Parses and generates a source, then all that follows the last source. A fault that ends a run by rule ends this alone.
void CompileFuzzSource(CNorvane& norvane, std::string source);

// The description of tests/cases/target.xml in short, with room for anything.
extern const std::string_view g_FuzzTarget;
