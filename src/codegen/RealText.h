#pragma once

#include <cstdint>

// Whether a real number is still itself when it has been printed with six decimals and read back into a type of that
// size: a type of 32 bits forgives what it couldn't have kept anyway. Infinities and not-a-number have no decimals.
bool SurvivesSixDecimals(double value, std::int32_t sizeBits);
