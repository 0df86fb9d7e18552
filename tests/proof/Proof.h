#pragma once

#include "Tree.h"

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

// A program with what its variables must hold.

struct Observed
{
    std::string name;        // as the machine finds it: "g5[2].m3", "main.v7"
    ScalarKind kind = ScalarKind::Bool;
    int slot = 0;
    bool isOfProgram = false;   // gets its initial value in the first scan, and is found only if the code names it
};

struct Proof
{
    std::uint64_t seed = 0;
    int discarded = 0;                              // programs before it that took too long or left the numbers
    std::unique_ptr<Program> pProgram;
    std::vector<Observed> observed;
    std::vector<std::vector<Value>> shortcut;       // the memory at the start and behind each scan
    std::vector<std::vector<Value>> complete;       // with both operands of AND and OR evaluated
};

// The proof of a seed. Statements that no scan reaches are mostly left out.
Proof MakeProof(std::uint64_t seed);

// Computes the values anew, behind a change of the program. False if it is no use any more.
bool ComputeValues(Proof& proof);

// A table of the values that `norvane test` runs, for one way to evaluate AND and OR.
std::string WriteTable(const Proof& proof, bool hasShortcut, const std::string& options);
