#pragma once

#include <vector>

class CNode;
class CNotes;
class CVariable;

// The memory of a function's call holds what earlier calls have left there, and an initial value of zero writes
// nothing. Draws a note at each read of such a local that comes before anything can have written it. Looks at the
// statements of the body itself, in their order; what is nested counts as written if anything in it writes, and nothing
// is said behind a statement that may leave the body. The locals are those of the function node given.
void NoteReadsOfUnwritten(CNotes& notes, const CNode* pFunction, const std::vector<CVariable*>& locals);
