#pragma once

#include "norvane/Session.h"
#include "norvane/TestTable.h"

#include <cstdint>
#include <map>
#include <string>
#include <utility>
#include <vector>

// How often each source line ran, by file and line.
using LineCoverage = std::map<std::string, std::map<int, std::int64_t>>;

// One table, run.
class CTableRun
{
public:
    enum class Result { Passed, Failed, Unable };

    CTableRun(const CTestTable& table, const MachineArguments& arguments) : m_Table(table), m_Arguments(arguments) {}

    // Runs all rows, also behind one that fails; a trap ends it. Line counts are added to `pCoverage` unless it is null.
    Result Run(LineCoverage* pCoverage);

    std::vector<std::string> m_Failures;   // a line or more each
    std::int64_t m_Scans = 0;
    std::int64_t m_Checks = 0;             // expectations looked at

private:
    struct Column
    {
        NamedObject object;
        bool isExpected = false;
        bool isScan = false;
    };
    struct Mismatch
    {
        std::size_t column;
        std::int64_t scan;
        std::size_t failure;               // position in m_Failures
    };

    bool Prepare(bool countLines);
    bool Unable(const std::string& reason);
    bool SetValues(CMachine& machine, const TableRow& row);
    bool CheckCell(const TableRow& row, std::size_t column);
    void FindWriters();
    void AddCoverage(LineCoverage& coverage) const;

    const CTestTable& m_Table;
    MachineArguments m_Arguments;
    std::unique_ptr<CImage> m_pImage;
    std::unique_ptr<CMachine> m_pMachine;
    std::unique_ptr<CNames> m_pNames;
    std::vector<Column> m_Columns;
    std::vector<Mismatch> m_Mismatches;
};
