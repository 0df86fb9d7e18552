#pragma once

#include "machine/Listing.h"

#include <map>
#include <vector>

// Where the statements of source lines begin in the code. Line marks behind which no instruction comes before the next
// mark or the end of the POU have no code.
class CLineTable
{
public:
    explicit CLineTable(const CListing& listing);

    // The first line from this one on that has code; -1 if none has. Files count as in the debug file.
    int FindLine(int file, int line) const;
    // The instructions that statements of this line begin with, rising; none if it has no code.
    std::vector<int> GetInstructions(int file, int line) const;
    std::vector<int> GetLines(int file, int first, int last) const;   // those with code, both bounds included
    bool BeginsStatement(int instruction) const { return m_Begins[static_cast<std::size_t>(instruction)]; }

private:
    std::map<int, std::map<int, std::vector<int>>> m_Lines;   // by file and line
    std::vector<bool> m_Begins;                               // of each instruction
};
