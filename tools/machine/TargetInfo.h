#pragma once

#include <string>
#include <string_view>
#include <vector>

class CXmlNode;

// What the machine takes from a target description: areas, programs in their order, stacks.

struct TargetArea
{
    std::string name;   // "INPUT", "OUTPUT", "MEMORY", "GLOBAL", "RETAIN"
    int segment = 0;    // first address, of the first three
    int size = 0;       // bytes
};

struct TargetProgram
{
    std::string name;
    bool initGlobal = false;
    bool initRetain = false;
};

class CTargetInfo
{
public:
    bool Load(const std::string& fileName, std::string& error);
    bool Read(std::string_view text, const std::string& shownName, std::string& error);
    const TargetArea* FindArea(std::string_view name) const;   // null if there is none

    std::vector<TargetArea> m_Areas;
    std::vector<TargetProgram> m_Programs;   // in the order of the file
    bool m_HasNestedPrograms = true;         // programs can interrupt each other, so their stacks add up

private:
    bool ReadDocument(const CXmlNode& root, const std::string& shownName, std::string& error);
};
