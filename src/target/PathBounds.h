#pragma once

class CArrayOfArrayIndex;
class CNode;

// The bounds of what an access path ends in: its index, and the first level that no subscript has used up.
struct PathBounds
{
    const CArrayOfArrayIndex* pIndex;   // of the variable or of the last member; null if that has none; not owned
    int level;
};

// Follows the path from its variable, which must be known. Each subscript goes one level deeper, and a member
// brings its own bounds.
PathBounds FollowPath(const CNode* pNode);
