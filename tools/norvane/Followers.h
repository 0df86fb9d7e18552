#pragma once

class CFindings;

// Finds the messages that only follow from an earlier one, and tells each what it follows from. One fault of a source
// mostly draws several: at the rest of its statement, at the uses of what could not be declared, and at the end of what
// could not begin.
void LinkFollowers(CFindings& findings);
