#pragma once

#include "machine/Listing.h"
#include "machine/Options.h"
#include "machine/Trap.h"

#include <cstdint>
#include <optional>

// The operations that no tight loop is made of, on whole cells: conversions, powers, roots, shifts, MULDIV, negation,
// and the forms of DIV and MOD that options ask for.

struct RareOperation
{
    Mnemonic mnemonic = Mnemonic::Nop;
    ValueKind kind = ValueKind::S64;     // of the instruction's type
    ValueKind toKind = ValueKind::S64;   // of a conversion
    std::int64_t operands[3] = {0, 0, 0};
};

// The result as a cell, or the trap that the operation draws.
std::optional<TrapKind> RunRare(const RareOperation& operation, const MachineOptions& options, std::int64_t& result);

// A value of one kind as one of another. Reals go towards zero (or to the nearest integer, halves away from zero) and
// stop at the bounds of the integer type, not-a-number is 0; integers keep their low bits; BOOL is "not 0".
std::int64_t ConvertCell(std::int64_t cell, ValueKind from, ValueKind to, Rounding rounding);
