#include "Faults.h"

#include "Decisions.h"
#include "Trial.h"
#include "machine/Image.h"
#include "machine/Machine.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <iostream>
#include <string>
#include <string_view>
#include <vector>

namespace
{

enum class FaultKind { Sibling, Number, Neighbour, Bit, Width, Jump };   // ORDER FAULT
constexpr std::string_view g_FaultNames[] = {"another instruction", "another number", "a neighbouring address",
                                             "another bit",         "another type",   "another jump target"};
constexpr std::size_t g_FaultKinds = std::size(g_FaultNames);

struct Sibling
{
    std::string_view from;
    std::string_view to;
};

// The first row that fits counts.
constexpr Sibling g_Siblings[] = {
    {"ADD(", "SUB("},       {"SUB(", "ADD("},       {"MUL(", "ADD("},       {"DIV(", "MUL("},       {"MOD(", "DIV("},
    {"AND(", "OR("},        {"XOR(", "OR("},        {"OR(", "AND("},        {"CMP EQ(", "CMP NE("}, {"CMP NE(", "CMP EQ("},
    {"CMP LT(", "CMP LE("}, {"CMP LE(", "CMP LT("}, {"CMP GT(", "CMP GE("}, {"CMP GE(", "CMP GT("}, {"MIN(", "MAX("},
    {"MAX(", "MIN("},       {"SHL(", "SHR("},       {"SHR(", "SHL("},       {"ROL(", "ROR("},       {"ROR(", "ROL("},
    {"NEG(", "ABS("},       {"ABS(", "NEG("},       {"JNC ", "JC "},        {"JC ", "JNC "},        {"POW(", "MUL("},
    {"NOT(", "NEG("},       {"SQRT(", "ABS("},
};

// What is stored in another width.
constexpr Sibling g_StoredTypes[] = {
    {"(SINT)", "(INT)"},   {"(USINT)", "(UINT)"}, {"(BYTE)", "(WORD)"},   {"(INT)", "(SINT)"},  {"(UINT)", "(USINT)"},
    {"(WORD)", "(BYTE)"},  {"(DINT)", "(INT)"},   {"(UDINT)", "(UINT)"},  {"(DWORD)", "(WORD)"}, {"(REAL)", "(WORD)"},
    {"(LREAL)", "(REAL)"},
};

// What is read in another width, or of eight bits with another sign. Another sign alone is no fault of wider ones where
// the value is only moved.
constexpr Sibling g_ReadTypes[] = {
    {"(SINT)", "(USINT)"}, {"(USINT)", "(SINT)"}, {"(BYTE)", "(SINT)"},   {"(INT)", "(SINT)"},  {"(UINT)", "(USINT)"},
    {"(WORD)", "(BYTE)"},  {"(DINT)", "(INT)"},   {"(UDINT)", "(UINT)"},  {"(DWORD)", "(WORD)"}, {"(REAL)", "(WORD)"},
    {"(LREAL)", "(REAL)"},
};

struct Tally
{
    int tried = 0;
    int seen = 0;
    int unreached = 0;    // not seen, in an instruction that no scan comes to
};

// Which instructions of the listing run.
class CReached : public IMachineObserver
{
public:
    explicit CReached(std::size_t count) : m_IsReached(count) {}
    bool BeforeInstruction(int instruction) override
    {
        m_IsReached[static_cast<std::size_t>(instruction)] = true;
        return false;
    }
    std::vector<bool> m_IsReached;
};

// One program and the faults that it can be given.
class CFaultTrial
{
public:
    CFaultTrial(const Proof& proof, const OptionSet& optionSet, const Compiled& compiled, CDecisions& decisions)
        : m_Proof(proof), m_OptionSet(optionSet), m_Compiled(compiled), m_Decisions(decisions)
    {
    }
    void Try(std::array<Tally, g_FaultKinds>& tallies);

private:
    std::string Change(FaultKind kind, const Instruction& instruction, const std::string& line);
    std::string ChangeNumber(const Instruction& instruction, const std::string& line);
    std::string ChangeType(const Instruction& instruction, const std::string& line);
    std::string ChangeJump(const Instruction& instruction, const std::string& line);
    bool IsReached(std::size_t instruction) const;

    const Proof& m_Proof;
    const OptionSet& m_OptionSet;
    const Compiled& m_Compiled;
    CDecisions& m_Decisions;
};

}   // namespace

static std::string ReplaceFirst(const std::string& line, std::string_view from, std::string_view to)
{
    const std::size_t position = line.find(from);
    const std::size_t comment = line.find(';');
    if (position == std::string::npos || position > comment) return line;
    return line.substr(0, position) + std::string(to) + line.substr(position + from.size());
}

template <std::size_t N>
static std::string ReplaceByTable(const std::string& line, const Sibling (&table)[N])
{
    for (const Sibling& row : table) {
        std::string changed = ReplaceFirst(line, row.from, row.to);
        if (changed != line) return changed;
    }
    return line;
}

// Adds to the decimal number at the position.
static std::string AddAt(const std::string& line, std::size_t position, std::int64_t distance)
{
    const char* const pBegin = line.c_str() + position;
    char* pEnd = nullptr;
    const std::int64_t number = std::strtoll(pBegin, &pEnd, 10);
    if (pEnd == pBegin) return line;
    return line.substr(0, position) + std::to_string(number + distance) + pEnd;
}

// A constant, a label of a CASE, the stride or the low bound of an index, the bytes of a copy. The high bound is left
// alone: a larger one changes nothing but a check.
std::string CFaultTrial::ChangeNumber(const Instruction& instruction, const std::string& line)
{
    const std::size_t close = line.find(')');
    const std::size_t digit = line.find_first_of("-0123456789", close == std::string::npos ? 0 : close);
    if (digit == std::string::npos || digit > line.find(';')) return line;
    switch (instruction.mnemonic) {
    case Mnemonic::Push: return AddAt(line, digit, m_Decisions.Below(2) ? 1 : -1);
    case Mnemonic::Case:
    case Mnemonic::CaseRange: return AddAt(line, digit, 1);
    case Mnemonic::Address:
    case Mnemonic::AddressBit:
        if (m_Decisions.Below(2)) return AddAt(line, digit, 1);
        return AddAt(line, line.find(' ', digit) + 1, -1);
    case Mnemonic::Memcpy: return AddAt(line, digit, -1);
    default: return line;
    }
}

std::string CFaultTrial::ChangeType(const Instruction& instruction, const std::string& line)
{
    switch (instruction.mnemonic) {
    case Mnemonic::PopMemory:
    case Mnemonic::PopThrough:
    case Mnemonic::PopIndirect: return ReplaceByTable(line, g_StoredTypes);
    case Mnemonic::PushMemory:
    case Mnemonic::PushThrough:
    case Mnemonic::PushIndirect:
    case Mnemonic::Convert: return ReplaceByTable(line, g_ReadTypes);
    default: return line;   // the type of an address and of most operations changes nothing that could be seen
    }
}

// To another label of the same function.
std::string CFaultTrial::ChangeJump(const Instruction& instruction, const std::string& line)
{
    const std::size_t position = line.find("LABEL");
    if (position == std::string::npos) return line;
    std::vector<std::string> labels;
    for (const Instruction& other : m_Compiled.pImage->m_Listing.m_Instructions) {
        const std::size_t found = other.text.find("LABEL");
        if (other.pou != instruction.pou || found == std::string_view::npos) continue;
        std::string label(other.text.substr(found));
        if (line.substr(position) != label) labels.push_back(std::move(label));
    }
    if (labels.empty()) return line;
    return line.substr(0, position) + labels[static_cast<std::size_t>(m_Decisions.Below(static_cast<int>(labels.size())))];
}

std::string CFaultTrial::Change(FaultKind kind, const Instruction& instruction, const std::string& line)
{
    const std::size_t bracket = line.find('[');
    const std::size_t number = line.find_first_of("0123456789", bracket);
    const bool isMemory = bracket != std::string::npos && number != std::string::npos && bracket < line.find(';');
    switch (kind) {
    case FaultKind::Sibling: return ReplaceByTable(line, g_Siblings);
    case FaultKind::Number: return ChangeNumber(instruction, line);
    case FaultKind::Neighbour:
        if (!isMemory || !instruction.pType) return line;
        return AddAt(line, number,
                     (m_Decisions.Below(2) && instruction.offset > 0 ? -1 : 1) * GetSizeBytes(instruction.pType->kind));
    case FaultKind::Bit: {
        const std::size_t dot = line.find("].");
        if (dot == std::string::npos || dot > line.find(';')) return line;
        return AddAt(line, dot + 2, line[dot + 2] == '0' ? 1 : -1);
    }
    case FaultKind::Width: return ChangeType(instruction, line);
    case FaultKind::Jump: return ChangeJump(instruction, line);
    }
    return line;
}

bool CFaultTrial::IsReached(std::size_t instruction) const
{
    MachineOptions options;
    options.plain = true;
    CMachine machine(*m_Compiled.pImage, options);
    CReached reached(m_Compiled.pImage->m_Listing.m_Instructions.size());
    machine.SetObserver(&reached);
    machine.Start();
    for (int i = 0; i < m_Proof.pProgram->scans; ++i) machine.RunScan();
    return reached.m_IsReached[instruction];
}

// Draws instructions and kinds until a fault of that kind fits there.
void CFaultTrial::Try(std::array<Tally, g_FaultKinds>& tallies)
{
    const CListing& listing = m_Compiled.pImage->m_Listing;
    const std::string& text = m_Compiled.listing;
    for (;;) {
        const std::size_t index = static_cast<std::size_t>(m_Decisions.Below(static_cast<int>(listing.m_Instructions.size())));
        const Instruction& instruction = listing.m_Instructions[index];
        const std::size_t kind = static_cast<std::size_t>(m_Decisions.Below(g_FaultKinds));
        std::size_t begin = 0;
        for (int i = 1; i < instruction.line; ++i) begin = text.find('\n', begin) + 1;
        const std::size_t end = text.find('\n', begin);
        const std::string line = text.substr(begin, end - begin);
        const std::string changed = Change(static_cast<FaultKind>(kind), instruction, line);
        if (changed == line) continue;

        std::string error;
        const std::string faulty = text.substr(0, begin) + changed + text.substr(end);
        const std::unique_ptr<CImage> pImage =
            CImage::FromText(faulty, m_Compiled.debugText, GetProofTarget(), "program.asm", error);
        if (!pImage) continue;   // the reader refuses it: no fault of a run
        Tally& tally = tallies[kind];
        ++tally.tried;
        const bool isSeen = !RunProof(*pImage, m_Proof, m_OptionSet.HasShortcut()).empty();
        const bool isReached = isSeen || IsReached(index);
        tally.seen += isSeen;
        tally.unreached += !isReached;
        if (!isSeen && isReached && std::getenv("PROVE_FAULTS"))
            std::cout << "seed " << m_Proof.seed << ", line " << instruction.line << ": " << line << " -> " << changed << "\n";
        return;
    }
}

int RunFaults(std::uint64_t count, std::uint64_t firstSeed, std::uint64_t atLeastPercent)
{
    const CScratch scratch;
    CDecisions decisions(firstSeed);
    std::array<Tally, g_FaultKinds> tallies{};
    Tally all;
    for (std::uint64_t seed = firstSeed; static_cast<std::uint64_t>(all.tried) < count; ++seed) {
        const Proof proof = MakeProof(seed);
        scratch.WriteSource(proof);
        const OptionSet& optionSet = GetOptionSets()[seed % GetOptionSets().size()];
        const Compiled compiled = CompileProof(scratch, optionSet, CompileWay::Copy);
        if (!compiled.pImage || !compiled.notes.empty()) continue;
        CFaultTrial(proof, optionSet, compiled, decisions).Try(tallies);
        all = {};
        for (const Tally& tally : tallies) {
            all.tried += tally.tried;
            all.seen += tally.seen;
            all.unreached += tally.unreached;
        }
    }
    for (std::size_t i = 0; i < g_FaultKinds; ++i)
        std::cout << g_FaultNames[i] << ": " << tallies[i].seen << " of " << tallies[i].tried << ", "
                  << tallies[i].unreached << " never reached\n";
    std::cout << all.seen << " of " << all.tried << " faults seen; of the others " << all.unreached
              << " stand where no scan comes to\n";
    return static_cast<std::uint64_t>(all.seen) * 100 >= atLeastPercent * count ? 0 : 1;
}
