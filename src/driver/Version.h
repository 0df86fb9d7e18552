#pragma once

// The number of this build: the last of the four numbers of the compiler's version, 2.0.0.1, and the only one
// that the outputs show.
inline constexpr int g_BuildNumber = 1;
