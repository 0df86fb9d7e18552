#pragma once

#include "report/BuildReader.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

#include <unistd.h>

// A build in a folder of its own, made by the compiler itself for the target of the cases.
class CTestBuild
{
public:
    explicit CTestBuild(const std::string& source, const std::string& options = {}, bool withTarget = true)
    {
        static int number = 0;
        m_Folder = std::filesystem::path(testing::TempDir()) /
                   ("norvane_report_" + std::to_string(getpid()) + "_" + std::to_string(number++));
        std::filesystem::create_directories(m_Folder);
        std::ofstream(m_Folder / "main.st") << source;
        const std::string command = "cd '" + m_Folder.string() + "' && '" COMPILER "' main.st -i '" CASES_FOLDER
                                    "/target.xml' -o p.asm " + options + " > printed 2>&1";
        m_IsCompiled = std::system(command.c_str()) == 0;
        m_Printed = Read("printed");
        if (!m_IsCompiled) return;
        m_IsLoaded = CBuildReader::Load((m_Folder / "p.asm").string(),
                                        withTarget ? CASES_FOLDER "/target.xml" : std::string(), m_Facts, m_Error);
    }
    ~CTestBuild() { std::filesystem::remove_all(m_Folder); }
    CTestBuild(const CTestBuild&) = delete;

    std::string Read(const std::string& name) const
    {
        std::ifstream file(m_Folder / name, std::ios::binary);
        return {std::istreambuf_iterator<char>(file), {}};
    }
    const VariableFacts* Find(const std::string& name, const std::string& owner = {}) const
    {
        for (const VariableFacts& variable : m_Facts.variables)
            if (variable.name == name && variable.owner == owner) return &variable;
        return nullptr;
    }
    // "0.1+1": byte, bit and number of bits; "" of what isn't there.
    std::string Place(const std::string& name, const std::string& owner = {}) const
    {
        const VariableFacts* pVariable = Find(name, owner);
        if (!pVariable) return {};
        if (pVariable->area < 0) return "nowhere";
        const BitRange& place = pVariable->place;
        return std::to_string(place.begin / 8) + "." + std::to_string(place.begin % 8) + "+" +
               std::to_string(place.Bits());
    }
    const AreaFacts& Area(AreaKind kind) const
    {
        static const AreaFacts none;
        const AreaFacts* pArea = m_Facts.FindArea(kind);
        EXPECT_NE(pArea, nullptr);
        return pArea ? *pArea : none;
    }
    const PouFacts* FindPou(const std::string& name) const
    {
        for (const PouFacts& pou : m_Facts.pous)
            if (pou.name == name) return &pou;
        return nullptr;
    }

    std::filesystem::path m_Folder;
    BuildFacts m_Facts;
    std::string m_Printed;
    std::string m_Error;
    bool m_IsCompiled = false;
    bool m_IsLoaded = false;
};
