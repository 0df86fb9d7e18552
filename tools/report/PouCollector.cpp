#include "report/PouCollector.h"

#include "report/Hash.h"

#include <algorithm>
#include <unordered_set>
#include <utility>

CPouCollector::CPouCollector(const CDebugInfo& debugInfo, const CListing& listing,
                             const std::optional<CTargetInfo>& target, BuildFacts& facts)
    : m_DebugInfo(debugInfo), m_Listing(listing), m_Target(target), m_Facts(facts), m_Analysis(listing)
{
}

void CPouCollector::Collect()
{
    AddListed();
    AddUnused();
    AddCalls();
    CountDepths();
    for (std::size_t i = 0; i < m_Listing.m_Pous.size(); ++i) HashCode(static_cast<int>(i));
    AddPrograms();
}

static const char* GetKindName(const ListingPou& pou)
{
    if (pou.kind == ListingPou::Program) return "PROGRAM";
    return pou.kind == ListingPou::Initialization ? "INITIALIZATION" : "FUNCTION";
}

void CPouCollector::AddListed()
{
    for (const ListingPou& listed : m_Listing.m_Pous) {
        PouFacts pou;
        pou.name = listed.name;
        pou.kind = GetKindName(listed);
        pou.id = listed.id;
        pou.instructions = listed.end - listed.first;
        pou.localBytes = listed.localBytes;
        m_Facts.pous.push_back(std::move(pou));
    }
}

// Headers tell the kind and the source of each, and are all that is left of what nothing reaches.
void CPouCollector::AddUnused()
{
    for (const ListingHeader& header : m_Listing.m_Headers) {
        if (header.pou < 0) {
            m_Facts.pous.emplace_back();
            m_Facts.pous.back().name = header.name;
            m_Facts.pous.back().isUsed = false;
            const DebugPou* pDebugPou = m_DebugInfo.FindPou(header.name);
            if (pDebugPou) m_Facts.pous.back().localBytes = pDebugPou->localSize;
        }
        PouFacts& pou = header.pou < 0 ? m_Facts.pous.back() : m_Facts.pous[static_cast<std::size_t>(header.pou)];
        pou.kind = header.kind;
        if (header.line < 1) continue;   // made by the compiler
        pou.fileName = header.fileName;
        pou.line = header.line;
    }
}

void CPouCollector::AddCalls()
{
    std::unordered_set<std::int64_t> known;
    for (const Instruction& instruction : m_Listing.m_Instructions) {
        if (instruction.mnemonic != Mnemonic::Jsr || instruction.target < 0) continue;
        const int callee = m_Listing.m_Instructions[static_cast<std::size_t>(instruction.target)].pou;
        constexpr std::int64_t half = 0x100000000;
        if (!known.insert(instruction.pou * half + callee).second) continue;
        m_Facts.pous[static_cast<std::size_t>(instruction.pou)].callees.push_back(callee);
        ++m_Facts.pous[static_cast<std::size_t>(callee)].callers;
    }
}

// Callees first, on a stack of our own. A call in a circle, which the compiler never writes, counts nothing.
void CPouCollector::CountDepths()
{
    enum State : char { New, Open, Done };
    std::vector<State> states(m_Facts.pous.size(), New);
    for (std::size_t first = 0; first < m_Facts.pous.size(); ++first) {
        std::vector<std::size_t> open{first};
        while (!open.empty()) {
            const std::size_t current = open.back();
            if (states[current] == New) {
                states[current] = Open;
                for (const int callee : m_Facts.pous[current].callees)
                    if (states[static_cast<std::size_t>(callee)] == New) open.push_back(static_cast<std::size_t>(callee));
                if (open.back() != current) continue;
            }
            open.pop_back();
            if (std::exchange(states[current], Done) == Open) CountDepth(m_Facts.pous[current]);
        }
    }
}

void CPouCollector::CountDepth(PouFacts& pou)
{
    // The two functions that give globals their initial values count nothing.
    if (pou.kind != "INITIALIZATION") {
        const std::int64_t align = std::max(1, m_DebugInfo.m_ReturnStackAlign);
        pou.frameBytes = (pou.localBytes + align - 1) / align * align + m_DebugInfo.m_CallOverload;
    }
    std::int64_t deepest = 0;
    for (const int callee : pou.callees) {
        const std::int64_t depth = m_Facts.pous[static_cast<std::size_t>(callee)].depthBytes;
        if (depth <= deepest) continue;
        deepest = depth;
        pou.deepestCallee = callee;
    }
    pou.depthBytes = pou.frameBytes + deepest;
    const std::size_t position = static_cast<std::size_t>(&pou - m_Facts.pous.data());
    if (position >= m_Listing.m_Pous.size()) return;
    pou.highestCells = m_Analysis.GetHighest(static_cast<int>(position));
    pou.lowestCells = m_Analysis.GetLowest(static_cast<int>(position));
}

// ---- What the code is, apart from where it stands

static bool IsJump(const Instruction& instruction)
{
    return EndsStretch(instruction.mnemonic) && instruction.mnemonic != Mnemonic::Jsr &&
           instruction.mnemonic != Mnemonic::Rts;
}

void CPouCollector::HashCode(int pou)
{
    const ListingPou& listed = m_Listing.m_Pous[static_cast<std::size_t>(pou)];
    CHash code;
    CHash names;
    for (int i = listed.first; i < listed.end; ++i) {
        const Instruction& instruction = m_Listing.m_Instructions[static_cast<std::size_t>(i)];
        if (IsJump(instruction)) {   // labels are numbered through the whole listing
            for (CHash* pHash : {&code, &names}) {
                pHash->Add(GetMnemonicText(instruction.mnemonic));
                pHash->Add(instruction.pType ? instruction.pType->name : std::string());
                pHash->Add(instruction.number);
                pHash->Add(instruction.high);
                pHash->Add(instruction.target < 0 ? -1 : instruction.target - listed.first);
            }
            continue;
        }
        code.Add(instruction.text);
        const std::string_view comment = m_Listing.GetComment(instruction);
        const bool isNamed = !comment.empty() && instruction.text.find('[') != std::string_view::npos;
        names.Add(isNamed ? instruction.text.substr(0, instruction.text.find('[')) : instruction.text);
        if (isNamed) names.Add(comment);
    }
    m_Facts.pous[static_cast<std::size_t>(pou)].codeHash = code.Get();
    m_Facts.pous[static_cast<std::size_t>(pou)].nameHash = names.Get();
}

// ---- Programs

void CPouCollector::AddPrograms()
{
    std::vector<int> order;
    if (m_Target)
        for (const TargetProgram& program : m_Target->m_Programs)
            if (const int pou = m_Listing.FindPouIndex("PROGRAM_" + program.name); pou >= 0) order.push_back(pou);
    for (std::size_t i = 0; i < m_Listing.m_Pous.size(); ++i)
        if (m_Listing.m_Pous[i].kind == ListingPou::Program) order.push_back(static_cast<int>(i));
    std::unordered_set<int> known;
    for (const int pou : order) {
        if (!known.insert(pou).second) continue;
        ProgramFacts program;
        program.pou = pou;
        for (int next = pou; next >= 0; next = m_Facts.pous[static_cast<std::size_t>(next)].deepestCallee)
            program.path.push_back(next);
        FollowCells(program);
        m_Facts.stacks.highestCells =
            std::max(m_Facts.stacks.highestCells, m_Facts.pous[static_cast<std::size_t>(pou)].highestCells);
        m_Facts.programs.push_back(std::move(program));
    }
    m_Facts.stacks.isBalanced = m_Analysis.m_IsSafe;
}

// The instruction behind which the stack is highest, within the POU or what it calls there; -1 if it has none.
int CPouCollector::FindHighest(int pou) const
{
    const ListingPou& listed = m_Listing.m_Pous[static_cast<std::size_t>(pou)];
    int highest = -1;
    int most = 0;
    for (int i = listed.first; i < listed.end; ++i) {
        const Instruction& instruction = m_Listing.m_Instructions[static_cast<std::size_t>(i)];
        int cells = m_Analysis.m_Depths[static_cast<std::size_t>(i)];
        if (cells == CStackAnalysis::unknown) continue;
        if (instruction.mnemonic == Mnemonic::Jsr && instruction.target >= 0) {
            const int callee = m_Listing.m_Instructions[static_cast<std::size_t>(instruction.target)].pou;
            cells += m_Analysis.GetHighest(callee);
        } else {
            const StackEffect effect = GetStackEffect(instruction);
            cells += effect.pushes - effect.pops;
        }
        if (cells <= most) continue;
        most = cells;
        highest = i;
    }
    return highest;
}

std::string CPouCollector::GetPlace(const Instruction& instruction) const
{
    if (instruction.mark < 0) return {};
    const LineMark& mark = m_Listing.m_Marks[static_cast<std::size_t>(instruction.mark)];
    const bool isKnown = mark.file >= 0 && static_cast<std::size_t>(mark.file) < m_DebugInfo.m_Sources.size();
    const std::string file = isKnown ? m_DebugInfo.m_Sources[static_cast<std::size_t>(mark.file)] : "?";
    return file + "(" + std::to_string(mark.line) + ")";
}

// Calls in a circle would never end; no path is longer than there are POUs.
void CPouCollector::FollowCells(ProgramFacts& program) const
{
    int pou = program.pou;
    while (program.cellPath.size() < m_Listing.m_Pous.size()) {
        program.cellPath.push_back(pou);
        const int highest = FindHighest(pou);
        if (highest < 0) return;
        const Instruction& instruction = m_Listing.m_Instructions[static_cast<std::size_t>(highest)];
        program.cellPlace = GetPlace(instruction);
        if (instruction.mnemonic != Mnemonic::Jsr || instruction.target < 0) return;
        const int callee = m_Listing.m_Instructions[static_cast<std::size_t>(instruction.target)].pou;
        // Nothing is higher within: what is given to the callee is the highest.
        if (m_Analysis.GetHighest(callee) <= 0) return;
        pou = callee;
    }
}
