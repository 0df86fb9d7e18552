#include "report/TextReport.h"

#include "report/Wording.h"

#include <fmt/format.h>

#include <algorithm>

std::string CTextReport::Render()
{
    AddHead();
    AddFindings();
    AddAreas();
    AddStacks();
    AddPous();
    AddUnused();
    for (const AreaFacts& area : m_Facts.areas)
        if (!area.entries.empty()) AddMap(area);
    AddMessages();
    return std::move(m_Text);
}

void CTextReport::AddHead()
{
    m_Text += fmt::format("{}: program {}, version {}\n", m_Facts.listingName, m_Facts.programName, m_Facts.version);
    for (const std::string& source : m_Facts.sources) m_Text += fmt::format("  source {}\n", source);
    m_Text += fmt::format("  checksums: global {}, retain {}, debug file {}\n", m_Facts.globalSign, m_Facts.retainSign,
                          m_Facts.debugSign);
    if (!m_Facts.hasTarget) m_Text += "  without a target description (-i) the sizes of the areas are not known\n";
}

void CTextReport::AddFindings()
{
    if (m_Facts.findings.empty()) return;
    m_Text += "\nLook at this\n";
    for (const std::string& finding : m_Facts.findings) m_Text += "  " + finding + "\n";
}

static bool IsEmptyArea(const AreaFacts& area)
{
    return area.entries.empty() && area.size <= 0 && area.counted <= 0;
}

void CTextReport::AddAreas()
{
    m_Text += fmt::format("\n{:<28}{:>9}{:>9}{:>9}{:>7}\n", "Memory (bytes)", "size", "used", "free", "used");
    for (const AreaFacts& area : m_Facts.areas) {
        if (IsEmptyArea(area)) continue;
        const std::int64_t used = area.UsedBytes();
        m_Text += fmt::format("  {:<26}", area.name);
        if (area.size < 0) m_Text += fmt::format("{:>9}{:>9}\n", "?", used);
        else m_Text += fmt::format("{:>9}{:>9}{:>9}{:>7}\n", area.size, used, area.size - used,
                                   GetShareText(used, area.size));
    }
}

void CTextReport::AddMap(const AreaFacts& area)
{
    m_Text += fmt::format("\n{}: {}\n", area.name, GetCountText(static_cast<std::int64_t>(area.entries.size()),
                                                                 "variable", "variables"));
    std::size_t gap = 0;
    const auto addGaps = [&](std::int64_t before) {
        for (; gap < area.gaps.size() && area.gaps[gap].begin < before; ++gap)
            m_Text += fmt::format("  {:<14}{:<18}-\n", area.gaps[gap].begin / g_BitsOfByte,
                                  GetCountText(area.gaps[gap].Bits() / g_BitsOfByte, "byte", "bytes"));
    };
    for (const int entry : area.entries) {
        const VariableFacts& variable = m_Facts.variables[static_cast<std::size_t>(entry)];
        addGaps(variable.place.begin);
        std::string place = GetPlaceText(m_Facts, variable);
        place.erase(0, place.find('+') == std::string::npos ? 0 : place.find('+') + 1);
        m_Text += fmt::format("  {:<14}{:<18}{}", place, GetSizeText(variable), GetFullName(variable));
        if (!variable.typeText.empty()) m_Text += " : " + variable.typeText;
        if (!variable.address.empty()) m_Text += " AT " + variable.address;
        if (variable.isConstant) m_Text += ", constant";
        if (variable.isRetain && area.kind != AreaKind::Retain) m_Text += ", retained";
        if (variable.overlaps > 0) {
            const VariableFacts& other = m_Facts.variables[static_cast<std::size_t>(variable.overlapping.front())];
            m_Text += ", overlaps " + GetFullName(other);
            if (variable.overlaps > 1) m_Text += fmt::format(" and {} more", variable.overlaps - 1);
        }
        m_Text += "\n";
    }
    addGaps(INT64_MAX);
    const bool hasTail = area.size >= 0 && !area.HasAddresses() && area.size > area.endByte;
    if (hasTail)
        m_Text += fmt::format("  {:<14}{:<18}{}\n", area.endByte, GetCountText(area.size - area.endByte, "byte", "bytes"),
                              area.kind == AreaKind::Local ? "not named by the code" : "free");
}

void CTextReport::AddStacks()
{
    const StackFacts& stacks = m_Facts.stacks;
    m_Text += fmt::format("\nReturn stack: {} bytes; the deepest program needs {}, all programs together {}{}\n",
                          stacks.returnSize, stacks.deepest, stacks.nested,
                          stacks.isNested ? "" : " (they don't interrupt each other)");
    for (const ProgramFacts& program : m_Facts.programs) {
        const PouFacts& pou = m_Facts.pous[static_cast<std::size_t>(program.pou)];
        m_Text += fmt::format("  {}: {} bytes, {} left: {}\n", pou.name, pou.depthBytes,
                              stacks.returnSize - pou.depthBytes, GetPathText(m_Facts, program.path));
    }
    m_Text += fmt::format("\nParameter stack: {} bytes, room for {} of {} bytes each\n", stacks.parameterSize,
                          GetCountText(stacks.parameterSize / stacks.cellBytes, "value", "values"), stacks.cellBytes);
    for (const ProgramFacts& program : m_Facts.programs) {
        const PouFacts& pou = m_Facts.pous[static_cast<std::size_t>(program.pou)];
        const std::int64_t bytes = std::int64_t{pou.highestCells} * stacks.cellBytes;
        m_Text += fmt::format("  {}: {}, {} bytes, {} left: {}{}\n", pou.name,
                              GetCountText(pou.highestCells, "value", "values"), bytes, stacks.parameterSize - bytes,
                              GetCellPathText(m_Facts, program.cellPath),
                              program.cellPlace.empty() ? "" : ", at " + program.cellPlace);
    }
}

void CTextReport::AddPous()
{
    m_Text += fmt::format("\n{:<28}{:>14}{:>8}{:>10}  {}\n", "POU", "instructions", "local", "stack", "calls");
    for (const PouFacts& pou : m_Facts.pous) {
        if (!pou.isUsed) continue;
        std::string calls;
        for (const int callee : pou.callees)
            calls += (calls.empty() ? "" : ", ") + m_Facts.pous[static_cast<std::size_t>(callee)].name;
        m_Text += fmt::format("  {:<26}{:>14}{:>8}{:>10}  {}\n", pou.name, pou.instructions, pou.localBytes,
                              pou.depthBytes, calls);
    }
}

void CTextReport::AddUnused()
{
    const bool hasUnused = std::any_of(m_Facts.pous.begin(), m_Facts.pous.end(),
                                       [](const PouFacts& pou) { return !pou.isUsed; });
    m_Text += hasUnused ? "\nNo program reaches\n" : "";
    for (const PouFacts& pou : m_Facts.pous)
        if (!pou.isUsed) m_Text += fmt::format("  {} {}, {}\n", pou.kind, pou.name, GetSourceText(pou));
}

void CTextReport::AddMessages()
{
    m_Text += m_Facts.messages.empty() ? "" : "\nMessages of the compiler\n";
    for (const MessageFacts& message : m_Facts.messages) m_Text += "  " + message.text + "\n";
}
