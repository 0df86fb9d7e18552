#pragma once

#include "report/BuildFacts.h"

#include <string>

// A report as plain text, for a terminal or a log.
class CTextReport
{
public:
    explicit CTextReport(const BuildFacts& facts) : m_Facts(facts) {}
    std::string Render();

private:
    void AddHead();
    void AddFindings();
    void AddAreas();
    void AddMap(const AreaFacts& area);
    void AddStacks();
    void AddPous();
    void AddUnused();
    void AddMessages();

    const BuildFacts& m_Facts;
    std::string m_Text;
};
