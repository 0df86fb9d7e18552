#include "codegen/BlockExtents.h"

void CBlockExtents::Begin(const CPou& pou, int form, std::int64_t position)
{
    m_Blocks.push_back({position, position, &pou, form});
    m_IsOpen = true;
}

void CBlockExtents::End(std::int64_t position)
{
    if (m_IsOpen) m_Blocks.back().end = position;
    m_IsOpen = false;
}

void CBlockExtents::NoteForeignText(std::string_view text)
{
    if (text.find('\n') == std::string_view::npos) return;
    const bool hasLabel = text.find("\nFUNCTION_") != std::string_view::npos;
    const bool hasEnd = text.find("\n\tDBI POU_END") != std::string_view::npos;
    if (hasLabel || hasEnd) m_DoLinesAgree = false;
}
