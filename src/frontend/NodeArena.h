#pragma once

#include <cstddef>
#include <memory>
#include <string_view>
#include <vector>

class CInitValue;
class CNode;
struct SourceLocation;

// Where the syntax trees of a compile live: nodes, their lists of children and their texts, one behind the other in
// blocks. Nothing in them is given back by itself. Reset ends the life of all of it at once, behind each part of a source
// file that is complete, and keeps the blocks for the next part; so no table may point at a node.
class CNodeArena
{
public:
    CNodeArena();
    ~CNodeArena();
    CNodeArena(const CNodeArena&) = delete;
    CNodeArena& operator=(const CNodeArena&) = delete;

    CNode* MakeNode(int kind, const SourceLocation& where);
    std::string_view KeepText(std::string_view text);                      // a copy in the arena
    const CInitValue* KeepValue(std::unique_ptr<CInitValue> pValue);       // takes it over; null stays null
    // Memory for objects that need no destructor, aligned for any of them.
    void* Allocate(std::size_t bytes)
    {
        const std::size_t needed = (bytes + g_Alignment - 1) & ~(g_Alignment - 1);
        if (needed > m_FreeBytes) return AllocateInNextBlock(needed);
        std::byte* const pStart = m_pFree;
        m_pFree += needed;
        m_FreeBytes -= needed;
        return pStart;
    }

    void Reset();
    std::size_t GetBlockCount() const { return m_Blocks.size() + m_LargeBlocks.size(); }

private:
    static constexpr std::size_t g_Alignment = alignof(std::max_align_t);
    using Block = std::unique_ptr<std::byte[]>;

    void* AllocateInNextBlock(std::size_t bytes);

    std::byte* m_pFree = nullptr;            // in the block that is being filled; null before the first one
    std::size_t m_FreeBytes = 0;             // from there on
    std::size_t m_FilledBlocks = 0;          // how many of the blocks are in use, the one being filled included
    std::vector<Block> m_Blocks;             // all of one size
    std::vector<Block> m_LargeBlocks;        // each of one object that is larger, such as a long list; freed by Reset
    std::vector<std::unique_ptr<CInitValue>> m_Values;   // what needs a destructor
};
