#pragma once

// The last of the four numbers of the compiler's version, see CMakeLists.txt, and the only one in the outputs.
inline constexpr int g_BuildNumber = 1;
