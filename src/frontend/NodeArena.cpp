#include "frontend/NodeArena.h"

#include "frontend/Node.h"
#include "model/InitValue.h"

#include <cstring>
#include <new>
#include <type_traits>
#include <utility>

static_assert(std::is_trivially_destructible_v<CNode>, "the arena ends the life of its nodes without looking at them");

static constexpr std::size_t g_BlockBytes = 64 * 1024;

CNodeArena::CNodeArena() = default;
CNodeArena::~CNodeArena() = default;

CNode* CNodeArena::MakeNode(int kind, const SourceLocation& where)
{
    return new (Allocate(sizeof(CNode))) CNode(*this, kind, where);
}

std::string_view CNodeArena::KeepText(std::string_view text)
{
    if (text.empty()) return {};
    char* const pCopy = static_cast<char*>(Allocate(text.size()));
    std::memcpy(pCopy, text.data(), text.size());
    return {pCopy, text.size()};
}

const CInitValue* CNodeArena::KeepValue(std::unique_ptr<CInitValue> pValue)
{
    if (!pValue) return nullptr;
    m_Values.push_back(std::move(pValue));
    return m_Values.back().get();
}

static std::unique_ptr<std::byte[]> MakeBlock(std::size_t bytes)
{
    return std::make_unique_for_overwrite<std::byte[]>(bytes);
}

void* CNodeArena::AllocateInNextBlock(std::size_t bytes)
{
    if (bytes > g_BlockBytes / 4) {
        m_LargeBlocks.push_back(MakeBlock(bytes));
        return m_LargeBlocks.back().get();
    }
    if (m_FilledBlocks == m_Blocks.size()) m_Blocks.push_back(MakeBlock(g_BlockBytes));
    m_pFree = m_Blocks[m_FilledBlocks].get();
    m_FreeBytes = g_BlockBytes;
    ++m_FilledBlocks;
    return Allocate(bytes);
}

void CNodeArena::Reset()
{
    m_Values.clear();
    m_LargeBlocks.clear();
    m_pFree = nullptr;
    m_FreeBytes = 0;
    m_FilledBlocks = 0;
}
