#pragma once

#include "report/BuildFacts.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

// A report as one HTML file without foreign parts. What matters most stands in the page as text and can be read without
// a script: sums, stacks, findings, messages. Maps, the tables of variables and POUs and the call tree are drawn by the
// page's script from facts that it carries as JSON.
class CHtmlReport
{
public:
    explicit CHtmlReport(const BuildFacts& facts) : m_Facts(facts) {}
    std::string Render();

private:
    void AddHead();
    void AddFindings();
    void AddAreas();
    void AddArea(const AreaFacts& area);
    void AddStacks();
    void AddStackRow(const ProgramFacts& program);
    void AddDrawn();
    void AddUnused();
    void AddMessages();
    void AddOrigin();
    void AddFacts();

    const BuildFacts& m_Facts;
    std::string m_Text;
};
