#pragma once

#include <cstdint>
#include <ctime>
#include <string>

// The stamp by which a debugger tells compiles apart: month, day and second of the day of a file's last
// change, in local time, packed into 32 bits with the top bit set; the top bit alone if the file can't be read.
std::int32_t ComputeCompileStamp(const std::string& fileName);

// The stamp of a broken-down time; null where the local time could not be computed.
std::int32_t PackCompileStamp(const std::tm* pTime);
