#pragma once

#include "machine/Machine.h"
#include "machine/Names.h"

#include <string>
#include <vector>

// The retained variables in a file, so that a run can go on where the last one ended. Each scalar stands there with
// its name, type, place and bytes.

class CRetainFile
{
public:
    CRetainFile(const CImage& image, const CNames& names) : m_Image(image), m_Names(names) {}

    // False, with the reason, if the file can't be written.
    bool Save(const std::string& fileName, const CMachine& machine, std::string& error) const;
    // Brings the values back. A file of another layout is refused, with what differs, a line for each variable;
    // `byName` carries over what still has its name and type. A file that doesn't exist is no error: `isFound` tells.
    bool Load(const std::string& fileName, bool byName, CMachine& machine, bool& isFound, std::string& error) const;

private:
    struct Entry
    {
        NamedObject object;
        std::string place;   // "retain+12.3", "1000"
    };
    std::vector<Entry> Collect() const;

    const CImage& m_Image;
    const CNames& m_Names;
};
