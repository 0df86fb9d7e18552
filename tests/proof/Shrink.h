#pragma once

#include "Proof.h"
#include "Trial.h"

// Takes statements out of a program as long as it still differs, and leaves what remains in the proof. Returns the last
// difference; empty if there was none to begin with.
std::string ShrinkProof(Proof& proof, const CScratch& scratch, const OptionSet& optionSet);
