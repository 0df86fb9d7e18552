#pragma once

#include <cstdint>
#include <ctime>
#include <string>
#include <string_view>

// The stamp by which a debugger tells compiles apart: month, day and second of the day of a file's last
// change, in local time, packed into 32 bits with the top bit set; the top bit alone if the file can't be read.
std::int32_t ComputeCompileStamp(const std::string& fileName);

// The same of a moment, in UTC: seconds since the start of 1970.
std::int32_t ComputeCompileStamp(std::int64_t seconds);

// A moment given as a decimal number and nothing else; false if it is no number or of no year from 0 to 9999.
bool ReadSourceDate(std::string_view text, std::int64_t& seconds);

// The stamp of a broken-down time; null where the local time could not be computed.
std::int32_t PackCompileStamp(const std::tm* pTime);
