#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

// A test table as engineers keep it, a CSV file:
//
//     # program: tank.st
//     # target: target.xml
//     scan,inlet,?tank.level,?pump
//     1,1,10,TRUE
//     +5,,15.5~0.1,
//
// Lines that begin with "# " in front of the header give settings; names of files are taken from the table's folder.
// Columns set values in front of the scan, those that begin with "?" expect them behind it, empty cells leave things
// alone. A cell in quotes may hold commas, and two quotes stand for one.

struct TableRow
{
    int line = 0;                      // in the file, from 1
    std::int64_t scan = 0;
    std::vector<std::string> cells;    // as many as there are columns; that of the scan is empty
};

class CTestTable
{
public:
    // False, with "file(line): reason", if the table can't be read.
    bool Load(const std::string& fileName, std::string& error);
    bool Read(const std::string& text, const std::string& fileName, std::string& error);

    std::string m_FileName;
    std::vector<std::string> m_Programs;
    std::string m_Target;              // empty: none
    std::string m_ScanTime = "10ms";
    std::vector<std::string> m_Options;    // for the compiler
    std::vector<std::string> m_Tasks;      // "main=20ms"
    std::vector<std::string> m_Columns;    // with their "?"
    std::vector<TableRow> m_Rows;          // scans rise

private:
    bool ReadSetting(const std::string& line);
    bool ReadHeader(std::vector<std::string> cells);
    bool ReadRow(std::vector<std::string> cells, int line);
    std::string InFolder(const std::string& name) const;
    bool Fail(std::string reason)
    {
        m_Reason = std::move(reason);
        return false;
    }

    int m_ScanColumn = -1;
    std::string m_Reason;
};

// Takes a line of a CSV file apart; nothing if a quote isn't closed. Blanks around a cell don't count.
std::optional<std::vector<std::string>> SplitCells(const std::string& line);
