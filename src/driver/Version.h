#pragma once

// The compiler's own version. Only the build number reaches the outputs.
inline constexpr int g_VersionMajor = 2;
inline constexpr int g_VersionMinor = 0;
inline constexpr int g_VersionPatch = 0;
inline constexpr int g_BuildNumber = 1;
