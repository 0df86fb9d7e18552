#pragma once

#include "report/BuildFacts.h"

#include <vector>

// Lays the variables of an area beside one another: their order, what lies free between them, and who shares bits with
// whom. Fills the entries, gaps and sums of the area, and the overlaps of its variables.
void MapArea(AreaFacts& area, std::vector<VariableFacts>& variables);
