#pragma once

#include "machine/ValueKind.h"

#include <cstdint>
#include <fstream>
#include <memory>
#include <string>
#include <vector>

// Watched values, scan by scan, in a file: CSV for a spreadsheet, or a value change dump (VCD) for a wave viewer.
class CTraceFile
{
public:
    virtual ~CTraceFile() = default;

    // By the end of the name, ".csv" or ".vcd". Null, with the reason, if it is neither or can't be written.
    static std::unique_ptr<CTraceFile> Create(const std::string& fileName, const std::vector<std::string>& names,
                                              const std::vector<ValueKind>& kinds, std::string& error);

    virtual void Write(std::int64_t scan, std::int64_t microseconds, const std::vector<MachineValue>& values) = 0;
    bool Close();   // false if something could not be written

protected:
    std::ofstream m_File;
};
