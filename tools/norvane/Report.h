#pragma once

#include <string>
#include <string_view>
#include <vector>

class CFindings;
struct Diagnostic;

enum class ReportFormat { Text, Gcc, Json, Sarif };

struct ReportStyle
{
    ReportFormat format = ReportFormat::Text;
    bool isColoured = false;
    bool showsAll = false;      // also what follows from something else
    bool hasSummary = false;    // a line with the numbers behind the text
};

// What there is to say, in one of the formats for people and problem matchers.
std::string FormatReport(const CFindings& findings, const ReportStyle& style);

// The two that programs read: an object a line, the last one with the numbers; and one document with a run for each
// set of findings.
std::string FormatJson(const CFindings& findings, const std::string& program);
std::string FormatSarif(const std::vector<const CFindings*>& runs, bool showsAll);

// "2 errors, 1 warning"
std::string FormatCounts(int errors, int warnings, int notes);
