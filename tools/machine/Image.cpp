#include "machine/Image.h"

#include <algorithm>

constexpr std::int64_t g_Gap = 64;   // unused addresses between two regions

std::string GetDebugFileName(const std::string& asmName)
{
    const std::size_t position = asmName.find(".asm");
    const bool isOnce = position != std::string::npos && position > 0 &&
                        asmName.find(".asm", position + 1) == std::string::npos;
    return (isOnce ? asmName.substr(0, position) : asmName) + ".dbi";
}

std::unique_ptr<CImage> CImage::Load(const std::string& asmName, const std::string& targetName, std::string& error)
{
    auto pImage = std::make_unique<CImage>();
    if (!pImage->m_DebugInfo.Load(GetDebugFileName(asmName), error)) return nullptr;
    if (!targetName.empty() && !pImage->m_Target.emplace().Load(targetName, error)) return nullptr;
    if (!pImage->m_Listing.Load(asmName, pImage->m_DebugInfo, error)) return nullptr;
    if (!pImage->Finish(error)) return nullptr;
    return pImage;
}

std::unique_ptr<CImage> CImage::FromText(std::string asmText, std::string_view debugText, std::string_view targetText,
                                         const std::string& shownName, std::string& error)
{
    auto pImage = std::make_unique<CImage>();
    if (!pImage->m_DebugInfo.Read(debugText, shownName, error)) return nullptr;
    if (!targetText.empty() && !pImage->m_Target.emplace().Read(targetText, shownName, error)) return nullptr;
    if (!pImage->m_Listing.Read(std::move(asmText), shownName, pImage->m_DebugInfo, error)) return nullptr;
    if (!pImage->Finish(error)) return nullptr;
    return pImage;
}

bool CImage::Finish(std::string& error)
{
    CollectPrograms();
    return PlaceAbsolute(error) && PlaceAreas(error);
}

void CImage::CollectPrograms()
{
    m_ProgramOfPou.assign(m_Listing.m_Pous.size(), -1);
    const auto add = [this](const std::string& name) {
        const int pou = m_Listing.FindPouIndex("PROGRAM_" + name);
        if (pou < 0 || m_ProgramOfPou[static_cast<std::size_t>(pou)] >= 0) return;
        m_ProgramOfPou[static_cast<std::size_t>(pou)] = static_cast<int>(m_Programs.size());
        ImageProgram program;
        program.name = name;
        program.pou = pou;
        m_Programs.push_back(program);
    };
    if (m_Target)
        for (const TargetProgram& program : m_Target->m_Programs) add(program.name);
    for (const DebugPou& pou : m_DebugInfo.m_Pous)
        if (pou.kind == "PROGRAM") add(pou.name);
    for (const ListingPou& pou : m_Listing.m_Pous)
        if (pou.kind == ListingPou::Program) add(pou.name);

    for (std::size_t i = 0; i < m_Programs.size(); ++i) {
        const ListingPou& pou = m_Listing.m_Pous[static_cast<std::size_t>(m_Programs[i].pou)];
        for (int k = pou.first; k < pou.end; ++k) {
            const Instruction& instruction = m_Listing.m_Instructions[static_cast<std::size_t>(k)];
            if (instruction.mnemonic != Mnemonic::Jsr || instruction.target < 0) continue;
            const Instruction& callee = m_Listing.m_Instructions[static_cast<std::size_t>(instruction.target)];
            const ListingPou& calledPou = m_Listing.m_Pous[static_cast<std::size_t>(callee.pou)];
            if (calledPou.kind == ListingPou::Initialization) m_Programs[i].isStartUp = true;
        }
    }
}

// With a target its three areas; without one a stretch of memory from the first to the last located variable.
bool CImage::PlaceAbsolute(std::string& error)
{
    if (m_Target) {
        for (const char* name : {"INPUT", "OUTPUT", "MEMORY"}) {
            const TargetArea* pArea = m_Target->FindArea(name);
            if (!pArea || pArea->size <= 0) continue;
            if (pArea->segment < 0 || std::int64_t{pArea->segment} + pArea->size > g_AddressMask / 2) {
                error = std::string("the area ") + name + " at " + std::to_string(pArea->segment) +
                        " is out of reach of a 24-bit address";
                return false;
            }
            std::string shown = name;
            for (char& c : shown) c = static_cast<char>(c - 'A' + 'a');
            m_Regions.push_back({shown, static_cast<std::uint32_t>(pArea->segment),
                                 static_cast<std::uint32_t>(pArea->size)});
        }
    } else {
        std::int64_t begin = -1;
        std::int64_t end = 0;
        for (const Instruction& instruction : m_Listing.m_Instructions) {
            const bool hasOperand = instruction.mnemonic >= Mnemonic::PushMemory &&
                                    instruction.mnemonic <= Mnemonic::PopAddress &&
                                    instruction.mnemonic != Mnemonic::PushIndirect &&
                                    instruction.mnemonic != Mnemonic::Drop;
            if (!hasOperand || instruction.area != MemoryArea::Absolute) continue;
            begin = begin < 0 ? instruction.offset : std::min<std::int64_t>(begin, instruction.offset);
            end = std::max<std::int64_t>(end, std::int64_t{instruction.offset} + GetSizeBytes(instruction.pType->kind));
        }
        for (const DebugVariable& variable : m_DebugInfo.m_Globals) {
            if (!m_Listing.m_LocatedGlobals.contains(variable.name) || variable.offset < 0) continue;
            begin = begin < 0 ? variable.offset : std::min<std::int64_t>(begin, variable.offset);
            constexpr int wordBytes = 8;   // arrays and structures get the rest of their size below
            end = std::max<std::int64_t>(end, std::int64_t{variable.offset} + wordBytes);
        }
        if (begin >= 0) {
            constexpr std::int64_t slack = 1024;   // of a located array or structure only the start is known here
            end += slack;
            if (end > g_AddressMask / 2) {
                error = "a variable at address " + std::to_string(end - slack) + " is out of reach of a 24-bit address";
                return false;
            }
            m_Regions.push_back({"located variables", static_cast<std::uint32_t>(begin),
                                 static_cast<std::uint32_t>(end - begin)});
        }
    }
    std::sort(m_Regions.begin(), m_Regions.end(), [](const Region& a, const Region& b) { return a.begin < b.begin; });
    for (std::size_t i = 1; i < m_Regions.size(); ++i) {
        if (m_Regions[i].begin >= m_Regions[i - 1].End()) continue;
        error = "the areas " + m_Regions[i - 1].name + " and " + m_Regions[i].name + " of the target overlap";
        return false;
    }
    return true;
}

void CImage::AddRegion(std::string name, std::int64_t size, std::int64_t& cursor)
{
    cursor = (cursor + g_Gap - 1) / g_Gap * g_Gap + g_Gap;
    m_Regions.push_back({std::move(name), static_cast<std::uint32_t>(cursor), static_cast<std::uint32_t>(size)});
    cursor += size;
}

bool CImage::PlaceAreas(std::string& error)
{
    // What the code and the debug file name; with memory packed, retained globals lie where the global cursor stands.
    std::int64_t globalBytes = m_DebugInfo.m_GlobalUsed + 1;
    std::int64_t retainBytes = m_DebugInfo.m_RetainUsed + 1;
    for (const Instruction& instruction : m_Listing.m_Instructions) {
        if (!instruction.pType || instruction.mnemonic == Mnemonic::Convert) continue;
        const std::int64_t end = std::int64_t{instruction.offset} + GetSizeBytes(instruction.pType->kind);
        if (instruction.area == MemoryArea::Global) globalBytes = std::max(globalBytes, end);
        if (instruction.area == MemoryArea::Retain) retainBytes = std::max(retainBytes, end);
    }
    if (m_Target) {
        const TargetArea* pGlobal = m_Target->FindArea("GLOBAL");
        const TargetArea* pRetain = m_Target->FindArea("RETAIN");
        globalBytes = pGlobal ? std::max(0, pGlobal->size) : 0;
        retainBytes = pRetain ? std::max(0, pRetain->size) : 0;
    }

    std::int64_t cursor = m_Regions.empty() ? 0 : m_Regions.back().End();
    AddRegion("global area", globalBytes, cursor);
    m_GlobalRegion = static_cast<int>(m_Regions.size()) - 1;
    AddRegion("retain area", retainBytes, cursor);
    m_RetainRegion = static_cast<int>(m_Regions.size()) - 1;
    for (ImageProgram& program : m_Programs) {
        const ListingPou& pou = m_Listing.m_Pous[static_cast<std::size_t>(program.pou)];
        AddRegion("local memory of " + program.name, pou.memoryBytes, cursor);
        program.region = static_cast<int>(m_Regions.size()) - 1;
    }
    cursor += g_Gap;
    constexpr std::int64_t frameAlignment = 16;
    cursor = (cursor + frameAlignment - 1) / frameAlignment * frameAlignment;
    constexpr std::int64_t roundingShare = 8;   // a frame of one byte takes a multiple of the alignment
    const std::int64_t framesSize =
        std::max<std::int64_t>(m_DebugInfo.m_ReturnStack.size, 1024) * roundingShare + 4096;
    if (cursor + framesSize + g_Gap > g_AddressMask) {
        error = "the program's memory of " + std::to_string(cursor + framesSize) + " bytes does not fit into 24 bits";
        return false;
    }
    m_FramesBegin = static_cast<std::uint32_t>(cursor);
    m_FramesSize = static_cast<std::uint32_t>(framesSize);
    return true;
}

const Region& CImage::GetRegion(MemoryArea area, int pou) const
{
    if (area == MemoryArea::Global) return m_Regions[static_cast<std::size_t>(m_GlobalRegion)];
    if (area == MemoryArea::Retain) return m_Regions[static_cast<std::size_t>(m_RetainRegion)];
    const int program = m_ProgramOfPou[static_cast<std::size_t>(pou)];
    if (area != MemoryArea::Local || program < 0) return m_NoRegion;
    return m_Regions[static_cast<std::size_t>(m_Programs[static_cast<std::size_t>(program)].region)];
}

const Region* CImage::FindRegion(std::uint32_t address) const
{
    const auto behind = std::upper_bound(m_Regions.begin(), m_Regions.end(), address,
                                         [](std::uint32_t a, const Region& region) { return a < region.begin; });
    if (behind == m_Regions.begin()) return nullptr;
    const Region& region = *(behind - 1);
    return address < region.End() ? &region : nullptr;
}

const ImageProgram* CImage::FindProgram(std::string_view name) const
{
    for (const ImageProgram& program : m_Programs)
        if (program.name == name) return &program;
    return nullptr;
}

std::string CImage::GetSourceName(int file) const
{
    if (file < 0 || file >= static_cast<int>(m_DebugInfo.m_Sources.size())) return "?";
    return m_DebugInfo.m_Sources[static_cast<std::size_t>(file)];
}
