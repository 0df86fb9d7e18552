#pragma once

#include "report/BuildDiff.h"

#include <string>

// A comparison for people, for a merge request and for scripts.
std::string RenderTextDiff(const CBuildDiff& diff);
std::string RenderMarkdownDiff(const CBuildDiff& diff);
std::string RenderJsonDiff(const CBuildDiff& diff);
