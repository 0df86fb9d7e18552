#pragma once

#include "report/BuildFacts.h"

#include <string>

// A report as JSON for scripts. Names and numbers are those of the text; docs/report.md lists them.
std::string RenderJsonReport(const BuildFacts& facts);
