#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

class CPou;

// Where a function's or function block's text lies: from the line of its label to the line of its end, both included.
struct BlockExtent
{
    std::int64_t begin;     // bytes from the start of the text
    std::int64_t end;       // behind the last line end
    const CPou* pPou;       // not owned; the table keeps it to the end of the process
    int form;               // the number in its label; 0: none
};

// The extents of all blocks that have been written, in their order. They are noted while the text is written, so that
// the merge can copy it in large pieces and need not look for labels line by line. They belong to the generator and
// are of use until the run ends.
//
// A reader of the text would take any line that looks like a label for one, and some texts come from the user and may
// hold lines of their own. Where one of those looks like a label or a block's end, the extents don't tell what the
// lines tell, and the lines count.
class CBlockExtents
{
public:
    void Begin(const CPou& pou, int form, std::int64_t position);
    void End(std::int64_t position);     // of the block begun last; nothing if none is open, as for a program

    // Asked for each text that isn't ours and stands behind something in its first line.
    void NoteForeignText(std::string_view text);
    bool DoLinesAgree() const { return m_DoLinesAgree; }

    const std::vector<BlockExtent>& GetBlocks() const { return m_Blocks; }

private:
    std::vector<BlockExtent> m_Blocks;
    bool m_IsOpen = false;               // the last one has no end yet
    bool m_DoLinesAgree = true;
};
