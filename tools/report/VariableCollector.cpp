#include "report/VariableCollector.h"

#include "files/Format.h"
#include "machine/Names.h"
#include "report/AreaMap.h"

#include <algorithm>

// An in-out member is a pointer. The debug file doesn't tell its type, but every function block that is called takes
// its instance by one.
static int FindPointerBytes(const CListing& listing)
{
    for (const ListingHeader& header : listing.m_Headers) {
        if (header.kind != "FUNCTION_BLOCK" || header.pou < 0) continue;
        const ListingPou& pou = listing.m_Pous[static_cast<std::size_t>(header.pou)];
        for (int i = pou.first; i < pou.end; ++i) {
            const Instruction& instruction = listing.m_Instructions[static_cast<std::size_t>(i)];
            if (instruction.mnemonic == Mnemonic::Dup) return GetSizeBytes(instruction.pType->kind);
        }
    }
    constexpr int usual = 4;
    return usual;
}

CVariableCollector::CVariableCollector(const CDebugInfo& debugInfo, const CListing& listing,
                                       const std::optional<CTargetInfo>& target, BuildFacts& facts)
    : m_DebugInfo(debugInfo), m_Listing(listing), m_Target(target), m_Facts(facts),
      m_Sizes(debugInfo, FindPointerBytes(listing))
{
}

void CVariableCollector::Collect()
{
    AddAreas();
    AddGlobals();
    ReadCode();
    for (AreaFacts& area : m_Facts.areas) area.entries.clear();
    for (std::size_t i = 0; i < m_Facts.variables.size(); ++i) {
        const int area = m_Facts.variables[i].area;
        if (area >= 0) m_Facts.areas[static_cast<std::size_t>(area)].entries.push_back(static_cast<int>(i));
    }
    for (AreaFacts& area : m_Facts.areas) MapArea(area, m_Facts.variables);
    FindOverlaps();
    FindStretchedMemory();
    BeginWhereSomethingLies();
}

// ---- Areas

void CVariableCollector::AddAreas()
{
    struct Fixed
    {
        AreaKind kind;
        const char* name;
        const char* targetName;
    };
    constexpr Fixed fixed[] = {{AreaKind::Global, "global", "GLOBAL"},
                               {AreaKind::Retain, "retain", "RETAIN"},
                               {AreaKind::Input, "input", "INPUT"},
                               {AreaKind::Output, "output", "OUTPUT"},
                               {AreaKind::Memory, "memory", "MEMORY"}};
    for (const Fixed& entry : fixed) {
        AreaFacts area;
        area.kind = entry.kind;
        area.name = entry.name;
        if (const TargetArea* pArea = m_Target ? m_Target->FindArea(entry.targetName) : nullptr) {
            area.begin = pArea->segment;
            area.size = std::max(0, pArea->size);
        }
        if (entry.kind == AreaKind::Global) area.counted = m_DebugInfo.m_GlobalUsed;
        if (entry.kind == AreaKind::Retain) area.counted = m_DebugInfo.m_RetainUsed;
        m_Facts.areas.push_back(std::move(area));
    }
    m_LocalAreas.assign(m_Listing.m_Pous.size(), -1);
    for (std::size_t i = 0; i < m_Listing.m_Pous.size(); ++i) {
        const ListingPou& pou = m_Listing.m_Pous[i];
        if (pou.kind != ListingPou::Program) continue;
        AreaFacts area;
        area.kind = AreaKind::Local;
        area.name = "local memory of " + pou.name;
        area.program = pou.name;
        area.size = pou.memoryBytes;
        m_LocalAreas[i] = static_cast<int>(m_Facts.areas.size());
        m_Facts.areas.push_back(std::move(area));
    }
}

// By the letter that the listing shows, else by the target's segments; a place of its own for what neither tells.
int CVariableCollector::FindLocatedArea(const std::string& address, std::int64_t byte)
{
    const char letter = address.size() > 1 ? address[1] : '\0';
    for (std::size_t i = 0; i < m_Facts.areas.size(); ++i) {
        const AreaFacts& area = m_Facts.areas[i];
        const bool isNamed = (letter == 'I' && area.kind == AreaKind::Input) ||
                             (letter == 'Q' && area.kind == AreaKind::Output) ||
                             (letter == 'M' && area.kind == AreaKind::Memory);
        const bool isTargetArea = area.kind >= AreaKind::Input && area.kind <= AreaKind::Memory && area.size > 0;
        const bool isInside = isTargetArea && byte >= area.begin && byte < area.begin + area.size;
        if (letter == '\0' ? isInside || area.kind == AreaKind::Located : isNamed) return static_cast<int>(i);
    }
    AreaFacts area;
    area.kind = AreaKind::Located;
    area.name = "other addresses";
    m_Facts.areas.push_back(std::move(area));
    return static_cast<int>(m_Facts.areas.size()) - 1;
}

// ---- Globals

void CVariableCollector::AddGlobals()
{
    for (const ListingPou& pou : m_Listing.m_Pous)
        if (pou.kind == ListingPou::Initialization)
            for (const ListingVariable& variable : pou.variables) m_Listed.emplace(variable.name, &variable);
    for (const DebugVariable& variable : m_DebugInfo.m_Globals) {
        VariableFacts facts;
        facts.name = variable.name;
        facts.typeText = variable.typeText;
        facts.isRetain = variable.isRetain;
        facts.isConstant = variable.isConstant;
        const auto listed = m_Listed.find(variable.name);
        const std::string block = listed == m_Listed.end() ? std::string() : listed->second->block;
        const std::size_t at = block.find(" AT ");
        if (at != std::string::npos) facts.address = "%" + block.substr(at + 4);
        // A constant that its value replaces isn't listed, and has a place only if an address gave it one.
        facts.isLocated = at != std::string::npos || (listed == m_Listed.end() && variable.offset >= 0);
        if (variable.offset >= 0) {
            facts.place = m_Sizes.GetPlace(variable, variable.offset);
            facts.area = facts.isLocated ? FindLocatedArea(facts.address, variable.offset) : variable.isRetain ? 1 : 0;
            if (m_Sizes.GetBytes(variable) < 0)
                m_Facts.findings.push_back(facts.name + ": its type " + facts.typeText +
                                           " isn't described, so its size isn't known");
        }
        m_Globals.emplace(ToLowerCase(variable.name), static_cast<int>(m_Facts.variables.size()));
        m_Facts.variables.push_back(std::move(facts));
    }
}

// ---- What the code names

void CVariableCollector::ReadCode()
{
    for (std::size_t i = 0; i < m_Listing.m_Instructions.size(); ++i) ReadInstruction(static_cast<int>(i));
}

static bool HasMemoryOperand(Mnemonic mnemonic)
{
    switch (mnemonic) {
    case Mnemonic::PushMemory:
    case Mnemonic::PushAddress:
    case Mnemonic::PushThrough:
    case Mnemonic::PopMemory:
    case Mnemonic::PopThrough:
    case Mnemonic::PopAddress: return true;
    default: return false;
    }
}

void CVariableCollector::ReadInstruction(int instruction)
{
    const Instruction& read = m_Listing.m_Instructions[static_cast<std::size_t>(instruction)];
    if (!HasMemoryOperand(read.mnemonic)) return;
    // Frames of functions come and go; what they hold is no map.
    const bool isProgram = m_LocalAreas[static_cast<std::size_t>(read.pou)] >= 0;
    if (read.area == MemoryArea::Local && !isProgram) return;
    const std::optional<Access> access = ReadAccess(instruction);
    if (!access) return;
    if (read.area != MemoryArea::Local && CountGlobal(read, *access)) return;
    AddOwn(read, *access);
}

std::optional<CVariableCollector::Access> CVariableCollector::ReadAccess(int instruction) const
{
    const Instruction& read = m_Listing.m_Instructions[static_cast<std::size_t>(instruction)];
    std::string_view text = m_Listing.GetComment(read);
    const bool isElement = text.starts_with('&');
    if (isElement) text.remove_prefix(1);
    if (text.empty()) return {};
    Access access;
    access.root = text.substr(0, text.find_first_of(".["));
    access.place = FindExtent(instruction, isElement);
    const bool isWhole = access.root.size() == text.size();
    if (isWhole && read.mnemonic != Mnemonic::PushAddress) access.typeText = read.pType->name;
    if (!isWhole || isElement || read.mnemonic != Mnemonic::PushAddress) return access;
    // An instance is pushed in front of the call of its function block.
    const std::size_t next = static_cast<std::size_t>(instruction) + 1;
    if (next >= m_Listing.m_Instructions.size()) return access;
    const Instruction& call = m_Listing.m_Instructions[next];
    if (call.mnemonic != Mnemonic::Jsr || call.target < 0) return access;
    const int callee = m_Listing.m_Instructions[static_cast<std::size_t>(call.target)].pou;
    const DebugType* pBlock = m_DebugInfo.FindType(m_Listing.m_Pous[static_cast<std::size_t>(callee)].name);
    if (!pBlock || !pBlock->isFunctionBlock) return access;
    access.typeText = pBlock->name;
    access.place.end = access.place.begin + std::max<std::int64_t>(1, m_Sizes.GetBytes(pBlock->name)) * g_BitsOfByte;
    return access;
}

// The bytes that an access reaches: of a value its own, of an element at a subscript computed at run time those of all
// elements, of a copy those that are copied. Of another address only the first byte is known.
BitRange CVariableCollector::FindExtent(int instruction, bool isElement) const
{
    const std::vector<Instruction>& all = m_Listing.m_Instructions;
    const std::size_t at = static_cast<std::size_t>(instruction);
    const Instruction& read = all[at];
    const std::int64_t begin = read.offset * g_BitsOfByte;
    if (isElement) {
        std::int64_t bits = 0;
        std::int64_t reach = 0;
        for (const Instruction* pIndex : FollowIndexes(m_Listing, instruction)) {
            const std::int64_t steps = pIndex->high - pIndex->number;
            if (pIndex->mnemonic == Mnemonic::AddressBit) bits += steps * pIndex->stride;
            else reach += steps * pIndex->stride;
        }
        reach += bits / g_BitsOfByte * m_DebugInfo.m_BoolAlign + GetSizeBytes(read.pType->kind);
        return {begin, begin + reach * g_BitsOfByte};
    }
    if (read.mnemonic == Mnemonic::PushAddress) {
        for (std::size_t next = at + 1; next < std::min(at + 3, all.size()); ++next) {
            if (all[next].mnemonic == Mnemonic::Memcpy) return {begin, begin + all[next].number * g_BitsOfByte};
            if (all[next].mnemonic != Mnemonic::PushAddress) break;
        }
        return {begin, begin + g_BitsOfByte};
    }
    if (read.pType->kind == ValueKind::Bool && read.bit >= 0) return {begin + read.bit, begin + read.bit + 1};
    return {begin, begin + GetSizeBytes(read.pType->kind) * g_BitsOfByte};
}

static bool IsAreaOf(const AreaFacts& area, MemoryArea operand)
{
    switch (operand) {
    case MemoryArea::Global: return area.kind == AreaKind::Global;
    case MemoryArea::Retain: return area.kind == AreaKind::Retain;
    case MemoryArea::Local: return area.kind == AreaKind::Local;
    case MemoryArea::Absolute: return area.HasAddresses();
    }
    return false;
}

// Whether it is a global of this name, at the place that the debug file gives it. A program's own variable may have the
// name of a global, and lies elsewhere then.
bool CVariableCollector::CountGlobal(const Instruction& instruction, const Access& access)
{
    const auto found = m_Globals.find(ToLowerCase(access.root));
    if (found == m_Globals.end()) return false;
    VariableFacts& facts = m_Facts.variables[static_cast<std::size_t>(found->second)];
    if (facts.area < 0 || !IsAreaOf(m_Facts.areas[static_cast<std::size_t>(facts.area)], instruction.area)) return false;
    const bool touches = access.place.begin < facts.place.end && access.place.end > facts.place.begin;
    const bool isGlobalArea = instruction.area == MemoryArea::Global;   // which no POU has variables of its own in
    if (!touches && !isGlobalArea) return false;
    ++facts.uses;
    const bool isInside = access.place.begin >= facts.place.begin / g_BitsOfByte * g_BitsOfByte &&
                          access.place.end <= (facts.place.end + g_BitsOfByte - 1) / g_BitsOfByte * g_BitsOfByte;
    if (!isInside && !m_Reported[facts.name]) {
        m_Reported[facts.name] = true;
        m_Facts.findings.push_back(facts.name + ": line " + std::to_string(instruction.line) +
                                   " of the listing reaches beyond its place");
    }
    return true;
}

int CVariableCollector::GetArea(const Instruction& instruction)
{
    switch (instruction.area) {
    case MemoryArea::Global: return 0;
    case MemoryArea::Retain: return 1;
    case MemoryArea::Local: return m_LocalAreas[static_cast<std::size_t>(instruction.pou)];
    default: return FindLocatedArea({}, instruction.offset);
    }
}

void CVariableCollector::AddOwn(const Instruction& instruction, const Access& access)
{
    const ListingPou& pou = m_Listing.m_Pous[static_cast<std::size_t>(instruction.pou)];
    const std::string key = pou.name + "\n" + std::to_string(static_cast<int>(instruction.area)) + "\n" +
                            ToLowerCase(access.root);
    const auto [found, isNew] = m_Own.emplace(key, static_cast<int>(m_Facts.variables.size()));
    if (isNew) {
        VariableFacts facts;
        facts.name = access.root;
        facts.owner = pou.name;
        facts.area = GetArea(instruction);
        facts.place = access.place;
        facts.isRetain = instruction.area == MemoryArea::Retain;
        facts.isLocated = instruction.area == MemoryArea::Absolute;
        facts.isFromCode = true;
        m_Facts.variables.push_back(std::move(facts));
    }
    VariableFacts& facts = m_Facts.variables[static_cast<std::size_t>(found->second)];
    ++facts.uses;
    facts.place.begin = std::min(facts.place.begin, access.place.begin);
    facts.place.end = std::max(facts.place.end, access.place.end);
    if (facts.typeText.empty()) facts.typeText = access.typeText;
}

// ---- What shows in the whole only

// The compiler makes a program's local memory as large as the furthest of its variables asks for, those with an
// address among them.
void CVariableCollector::FindStretchedMemory()
{
    std::unordered_map<std::string, const AreaFacts*> areas;
    for (const AreaFacts& area : m_Facts.areas)
        if (area.kind == AreaKind::Local && area.size > area.endByte) areas.emplace(area.program, &area);
    for (const VariableFacts& variable : m_Facts.variables) {
        const auto found = areas.find(variable.owner);
        if (found == areas.end() || !variable.isLocated) continue;
        const AreaFacts& area = *found->second;
        if ((variable.place.end + g_BitsOfByte - 1) / g_BitsOfByte != area.size) continue;
        m_Facts.findings.push_back(area.name + " takes " + std::to_string(area.size) + " bytes because of " +
                                   variable.name + ", whose address counts as a place in it: declare it as a global");
    }
}

void CVariableCollector::FindOverlaps()
{
    for (const VariableFacts& variable : m_Facts.variables) {
        if (variable.overlaps == 0 || variable.isLocated) continue;
        for (const int other : variable.overlapping) {
            const VariableFacts& second = m_Facts.variables[static_cast<std::size_t>(other)];
            const bool isSaid = !second.isLocated && &second < &variable;
            if (!isSaid)
                m_Facts.findings.push_back(
                    (variable.owner.empty() ? "" : variable.owner + ".") + variable.name + " lies over " +
                    (second.owner.empty() ? "" : second.owner + ".") + second.name + ", and no AT says so");
        }
    }
}

// Without a target the first address of an area is not known, and the map begins where something lies.
void CVariableCollector::BeginWhereSomethingLies()
{
    for (AreaFacts& area : m_Facts.areas) {
        if (!area.HasAddresses() || area.size >= 0) continue;
        if (area.gaps.empty() || area.gaps.front().begin != area.begin * g_BitsOfByte) continue;
        area.begin = area.gaps.front().end / g_BitsOfByte;
        area.gaps.erase(area.gaps.begin());
    }
}
