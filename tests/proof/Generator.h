#pragma once

#include "Tree.h"

#include <cstdint>
#include <memory>

// A program of everything that the language defines, the same for a seed on every machine. It divides by nothing that can
// be zero, its subscripts lie within their bounds and its loops end. What the compiler notes as computed otherwise than it
// reads is avoided where that is easy.
std::unique_ptr<Program> GenerateProof(std::uint64_t seed);
