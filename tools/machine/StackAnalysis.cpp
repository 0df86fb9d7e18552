#include "machine/StackAnalysis.h"

#include <algorithm>

StackEffect GetStackEffect(const Instruction& instruction)
{
    switch (instruction.mnemonic) {
    case Mnemonic::Push:
    case Mnemonic::PushMemory:
    case Mnemonic::PushAddress:
    case Mnemonic::PushThrough: return {0, 1};
    case Mnemonic::PushIndirect: return {1, 1};
    case Mnemonic::Drop:
    case Mnemonic::PopMemory:
    case Mnemonic::PopThrough:
    case Mnemonic::PopAddress: return {1, 0};
    case Mnemonic::PopIndirect:
    case Mnemonic::Memcpy: return {2, 0};
    case Mnemonic::Dup: return {1, 2};
    case Mnemonic::MulDiv: return {3, 1};
    case Mnemonic::Neg:
    case Mnemonic::Abs:
    case Mnemonic::Sqrt:
    case Mnemonic::Not:
    case Mnemonic::Convert:
    case Mnemonic::Case:
    case Mnemonic::CaseRange: return {1, 1};
    case Mnemonic::Jc:
    case Mnemonic::Jnc: return {1, 0};
    case Mnemonic::Jmp:
    case Mnemonic::Jsr:
    case Mnemonic::Rts:
    case Mnemonic::Sys:
    case Mnemonic::LocalData:
    case Mnemonic::LocalSet:
    case Mnemonic::Nop: return {0, 0};
    default: return {2, 1};
    }
}

bool EndsStretch(Mnemonic mnemonic)
{
    switch (mnemonic) {
    case Mnemonic::Jmp:
    case Mnemonic::Jc:
    case Mnemonic::Jnc:
    case Mnemonic::Jsr:
    case Mnemonic::Rts:
    case Mnemonic::Case:
    case Mnemonic::CaseRange: return true;
    default: return false;
    }
}

CStackAnalysis::CStackAnalysis(const CListing& listing) : m_Listing(listing)
{
    m_Depths.assign(listing.m_Instructions.size(), unknown);
    m_Summaries.resize(listing.m_Pous.size());
    for (std::size_t i = 0; i < m_Summaries.size(); ++i) AnalysePou(static_cast<int>(i));
}

CStackAnalysis::CStackAnalysis(const CImage& image, int cellBytes) : CStackAnalysis(image.m_Listing)
{
    const std::int64_t cells = image.m_DebugInfo.m_ParameterStack.size / std::max(1, cellBytes);
    for (const ImageProgram& program : image.m_Programs) {
        const Summary& summary = m_Summaries[static_cast<std::size_t>(program.pou)];
        if (summary.lowest < 0 || summary.highest > cells) m_IsSafe = false;
    }
}

// Callees first, on a stack of our own.
void CStackAnalysis::AnalysePou(int pou)
{
    std::vector<int> open{pou};
    while (!open.empty()) {
        const int current = open.back();
        Summary& summary = m_Summaries[static_cast<std::size_t>(current)];
        if (summary.isDone) {
            open.pop_back();
            continue;
        }
        if (!summary.isOpen) {
            summary.isOpen = true;
            const ListingPou& listed = m_Listing.m_Pous[static_cast<std::size_t>(current)];
            for (int i = listed.first; i < listed.end; ++i) {
                const Instruction& instruction = m_Listing.m_Instructions[static_cast<std::size_t>(i)];
                if (instruction.mnemonic != Mnemonic::Jsr || instruction.target < 0) continue;
                const int callee = m_Listing.m_Instructions[static_cast<std::size_t>(instruction.target)].pou;
                const Summary& called = m_Summaries[static_cast<std::size_t>(callee)];
                if (called.isDone) continue;
                if (called.isOpen) m_IsSafe = false;   // a circle
                else open.push_back(callee);
            }
            if (open.back() != current) continue;
        }
        FollowPou(current);
        summary.isDone = true;
        open.pop_back();
    }
}

void CStackAnalysis::Reach(int instruction, std::int32_t depth, std::vector<int>& open)
{
    std::int32_t& known = m_Depths[static_cast<std::size_t>(instruction)];
    if (known == unknown) {
        known = depth;
        open.push_back(instruction);
    } else if (known != depth) {
        m_IsSafe = false;
    }
}

void CStackAnalysis::FollowPou(int pou)
{
    const ListingPou& listed = m_Listing.m_Pous[static_cast<std::size_t>(pou)];
    Summary& summary = m_Summaries[static_cast<std::size_t>(pou)];
    if (listed.first == listed.end) return;
    std::vector<int> open;
    bool hasEnd = false;
    Reach(listed.first, 0, open);
    while (!open.empty()) {
        const int i = open.back();
        open.pop_back();
        const Instruction& instruction = m_Listing.m_Instructions[static_cast<std::size_t>(i)];
        std::int32_t depth = m_Depths[static_cast<std::size_t>(i)];
        const StackEffect effect = GetStackEffect(instruction);
        summary.lowest = std::min(summary.lowest, depth - effect.pops);
        const bool goesOn = instruction.mnemonic != Mnemonic::Jmp && instruction.mnemonic != Mnemonic::Rts;
        if (instruction.mnemonic == Mnemonic::Rts) {
            if (hasEnd && summary.net != depth) m_IsSafe = false;
            summary.net = depth;
            hasEnd = true;
            continue;
        }
        if (instruction.mnemonic == Mnemonic::Jsr && instruction.target >= 0) {
            const int callee = m_Listing.m_Instructions[static_cast<std::size_t>(instruction.target)].pou;
            const Summary& called = m_Summaries[static_cast<std::size_t>(callee)];
            summary.lowest = std::min(summary.lowest, depth + called.lowest);
            summary.highest = std::max(summary.highest, depth + called.highest);
            depth += called.net;
        }
        const bool isCase = instruction.mnemonic == Mnemonic::Case || instruction.mnemonic == Mnemonic::CaseRange;
        depth += effect.pushes - effect.pops;
        summary.highest = std::max(summary.highest, depth);
        const bool jumps = EndsStretch(instruction.mnemonic) && instruction.mnemonic != Mnemonic::Jsr;
        if (jumps && instruction.target >= 0) Reach(instruction.target, isCase ? depth - 1 : depth, open);
        if (goesOn && i + 1 < listed.end) Reach(i + 1, depth, open);
    }
}
