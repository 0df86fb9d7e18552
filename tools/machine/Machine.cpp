#include "machine/Machine.h"

#include "machine/Translator.h"

#include <algorithm>
#include <cstring>

constexpr std::size_t g_CellBytes = 8;
constexpr std::size_t g_LargestFindings = 1000;
constexpr std::size_t g_MostFrames = 65536;
constexpr std::uint32_t g_FrameAlignment = 8;

CMachine::CMachine(const CImage& image, const MachineOptions& options)
    : m_Image(image), m_Options(options), m_Code(CTranslator(image, m_Options).Translate())
{
    m_Memory.assign(image.m_FramesBegin + image.m_FramesSize, 0);
    m_CellLimit = image.m_DebugInfo.m_ParameterStack.size / std::max(1, options.cellBytes);
    // Steps of plain code write a cell before or behind the one that they were checked for at most.
    constexpr std::int64_t slack = 8;
    m_Cells.assign(static_cast<std::size_t>(m_CellLimit + 2 * slack), 0);
    m_CellTypes.assign(m_Cells.size(), nullptr);
    m_Periods.assign(image.m_Programs.size(), 0);
    m_LineCounts.assign(image.m_Listing.m_Marks.size(), 0);
    if (options.frames == FrameContents::Noise) FillFrame(m_Memory.data() + image.m_FramesBegin, image.m_FramesSize);
}

bool CMachine::SetTask(std::string_view program, std::int64_t microseconds)
{
    for (std::size_t i = 0; i < m_Periods.size(); ++i) {
        if (m_Image.m_Programs[i].name != program) continue;
        m_Periods[i] = microseconds;
        return true;
    }
    return false;
}

// ---- Scans

RunStatus CMachine::Start()
{
    if (m_IsStarted || m_IsTrapped) return m_IsTrapped ? RunStatus::Trapped : RunStatus::Finished;
    m_IsStarted = true;
    m_Queue.clear();
    m_NextProgram = 0;
    m_Budget = m_Options.maxInstructions;
    for (std::size_t i = 0; i < m_Image.m_Programs.size(); ++i)
        if (m_Image.m_Programs[i].isStartUp && m_Options.startUp == StartUp::Once) m_Queue.push_back(static_cast<int>(i));
    return RunPrograms();
}

RunStatus CMachine::RunScan()
{
    if (m_IsTrapped) return RunStatus::Trapped;
    m_Queue.clear();
    m_NextProgram = 0;
    m_Budget = m_Options.maxInstructions;
    const std::int64_t now = m_Scan * m_ScanMicroseconds;
    const std::int64_t before = now - m_ScanMicroseconds;
    const auto isDue = [&](std::size_t i) {
        if (m_Periods[i] <= 0 || m_Scan == 0) return true;
        return now / m_Periods[i] != before / m_Periods[i];
    };
    // Start-up programs first, where each scan has them.
    for (const bool startUp : {true, false})
        for (std::size_t i = 0; i < m_Image.m_Programs.size(); ++i) {
            const bool isFirst = m_Image.m_Programs[i].isStartUp;
            const bool isLeftOut = isFirst && m_Options.startUp == StartUp::Once;
            if (isFirst == startUp && !isLeftOut && isDue(i)) m_Queue.push_back(static_cast<int>(i));
        }
    ++m_Scan;
    return RunPrograms();
}

RunStatus CMachine::Resume()
{
    if (m_IsTrapped) return RunStatus::Trapped;
    return RunPrograms();
}

RunStatus CMachine::RunPrograms()
{
    for (;;) {
        if (m_Frames.empty()) {
            if (m_NextProgram == m_Queue.size()) return RunStatus::Finished;
            if (!BeginProgram(m_Queue[m_NextProgram++])) continue;
        }
        const RunStatus status = Execute();
        if (status != RunStatus::Finished) return status;
        m_Frames.clear();
    }
}

bool CMachine::BeginProgram(int program)
{
    const ImageProgram& entry = m_Image.m_Programs[static_cast<std::size_t>(program)];
    const ListingPou& pou = m_Image.m_Listing.m_Pous[static_cast<std::size_t>(entry.pou)];
    const Region& region = m_Image.m_Regions[static_cast<std::size_t>(entry.region)];
    if (pou.first == pou.end) return false;
    const std::int64_t align = m_Image.m_DebugInfo.m_ReturnStackAlign;
    MachineFrame frame;
    frame.pou = entry.pou;
    frame.begin = region.begin;
    frame.end = region.End();
    frame.depthBytes = (pou.localBytes + align - 1) / align * align + m_Image.m_DebugInfo.m_CallOverload;
    m_Frames.push_back(frame);
    constexpr std::size_t slack = 8;
    m_Bases[LocalBase] = m_Memory.data() + region.begin;
    m_Bases[MemoryBase] = m_Memory.data();
    m_Bases[CellBase] = reinterpret_cast<std::uint8_t*>(m_Cells.data() + slack);
    m_Bases[ConstantBase] = reinterpret_cast<std::uint8_t*>(m_Code.constants.data());
    m_pNext = m_Code.ops.data() + m_Code.opOfInstruction[static_cast<std::size_t>(pou.first)];
    m_Budget -= m_Code.chargeOfInstruction[static_cast<std::size_t>(pou.first)];
    return true;
}

std::int64_t CMachine::GetInstructions() const
{
    return m_Options.maxInstructions - m_Budget;
}

// ---- Frames

void CMachine::FillFrame(std::uint8_t* pBegin, std::uint32_t bytes)
{
    if (m_Options.frames == FrameContents::Zero) std::memset(pBegin, 0, bytes);
    if (m_Options.frames != FrameContents::Noise) return;
    for (std::uint32_t i = 0; i < bytes; ++i) {
        m_Noise ^= m_Noise << 13;
        m_Noise ^= m_Noise >> 7;
        m_Noise ^= m_Noise << 17;
        pBegin[i] = static_cast<std::uint8_t>(m_Noise >> 32);
    }
}

// False if the return stack is full.
bool CMachine::EnterFrame(const Op& call)
{
    const ListingPou& pou = m_Image.m_Listing.m_Pous[static_cast<std::size_t>(call.b)];
    const MachineFrame& caller = m_Frames.back();
    MachineFrame frame;
    frame.pou = call.b;
    frame.pCall = &call;
    // Frames of functions lie above those of their callers; a program's memory lies elsewhere.
    const std::uint32_t free = m_Frames.size() == 1 ? m_Image.m_FramesBegin : caller.end;
    frame.begin = (free + g_FrameAlignment - 1) / g_FrameAlignment * g_FrameAlignment;
    frame.end = frame.begin + static_cast<std::uint32_t>(pou.memoryBytes);
    frame.depthBytes = caller.depthBytes;
    if (pou.kind != ListingPou::Initialization) {   // the compiler doesn't count those two
        const std::int64_t align = m_Image.m_DebugInfo.m_ReturnStackAlign;
        frame.depthBytes += (pou.localBytes + align - 1) / align * align + m_Image.m_DebugInfo.m_CallOverload;
    }
    const std::int64_t stackBytes = m_Image.m_DebugInfo.m_ReturnStack.size;
    if (stackBytes > 0 && frame.depthBytes > stackBytes) return false;
    if (frame.end > m_Image.m_FramesBegin + m_Image.m_FramesSize || m_Frames.size() >= g_MostFrames) return false;
    FillFrame(m_Memory.data() + frame.begin, frame.end - frame.begin);
    m_Frames.push_back(frame);
    return true;
}

// ---- Memory

bool CMachine::IsAccessible(std::uint32_t address, std::uint32_t bytes) const
{
    if (address >= m_Image.m_FramesBegin) {
        // The innermost frames are asked for most.
        for (std::size_t i = m_Frames.size(); i-- > 1;)
            if (address >= m_Frames[i].begin) return std::uint64_t{address} + bytes <= m_Frames[i].end;
        return false;
    }
    const Region* pRegion = m_Image.FindRegion(address);
    return pRegion && std::uint64_t{address} + bytes <= pRegion->End();
}

bool CMachine::Read(std::uint32_t address, ValueKind kind, MachineValue& value) const
{
    const std::uint32_t byte = address & g_AddressMask;
    const std::uint32_t bit = address >> g_AddressBits;
    if (!IsAccessible(byte, static_cast<std::uint32_t>(GetSizeBytes(kind))) || bit > 7) return false;
    std::int64_t cell = 0;
    std::memcpy(&cell, m_Memory.data() + byte, static_cast<std::size_t>(GetSizeBytes(kind)));
    if (kind == ValueKind::Bool) cell >>= bit;
    value = FromCell(cell, kind);
    return true;
}

bool CMachine::Write(std::uint32_t address, const MachineValue& value)
{
    const std::uint32_t byte = address & g_AddressMask;
    const std::uint32_t bit = address >> g_AddressBits;
    const std::uint32_t bytes = static_cast<std::uint32_t>(GetSizeBytes(value.kind));
    if (!IsAccessible(byte, bytes) || bit > 7) return false;
    if (value.kind == ValueKind::Bool) {
        const std::uint8_t mask = static_cast<std::uint8_t>(1u << bit);
        if (value.integer & 1) m_Memory[byte] |= mask;
        else m_Memory[byte] &= static_cast<std::uint8_t>(~mask);
        return true;
    }
    const std::int64_t cell = ToCell(value);
    std::memcpy(m_Memory.data() + byte, &cell, bytes);
    return true;
}

std::vector<std::uint8_t> CMachine::GetRegionBytes(int region) const
{
    const Region& place = m_Image.m_Regions[static_cast<std::size_t>(region)];
    return {m_Memory.begin() + place.begin, m_Memory.begin() + place.End()};
}

void CMachine::SetRegionBytes(int region, const std::vector<std::uint8_t>& bytes)
{
    const Region& place = m_Image.m_Regions[static_cast<std::size_t>(region)];
    const std::size_t count = std::min<std::size_t>(bytes.size(), place.size);
    std::copy_n(bytes.begin(), count, m_Memory.begin() + place.begin);
}

// ---- Where it stands

CodePosition CMachine::DescribeInstruction(int instruction) const
{
    CodePosition position;
    if (instruction < 0 || instruction >= static_cast<int>(m_Image.m_Listing.m_Instructions.size())) return position;
    const Instruction& listed = m_Image.m_Listing.m_Instructions[static_cast<std::size_t>(instruction)];
    const ListingPou& pou = m_Image.m_Listing.m_Pous[static_cast<std::size_t>(listed.pou)];
    position.instruction = instruction;
    position.pou = (pou.kind == ListingPou::Program ? "PROGRAM " : "FUNCTION ") + pou.name;
    const DebugPou* pDebugPou = m_Image.m_DebugInfo.FindPou(pou.name);
    if (pDebugPou && pou.kind == ListingPou::Function) position.pou = pDebugPou->kind + " " + pou.name;
    if (listed.mark < 0) return position;
    const LineMark& mark = m_Image.m_Listing.m_Marks[static_cast<std::size_t>(listed.mark)];
    position.file = m_Image.GetSourceName(mark.file);
    position.line = mark.line;
    return position;
}

CodePosition CMachine::GetPosition() const
{
    if (m_Frames.empty()) return {};
    const std::size_t op = static_cast<std::size_t>(m_pNext - m_Code.ops.data());
    return DescribeInstruction(m_Code.instructionOfOp[op]);
}

std::vector<CodePosition> CMachine::GetCallers() const
{
    std::vector<CodePosition> callers;
    for (std::size_t i = m_Frames.size(); i-- > 1;) {
        const std::size_t op = static_cast<std::size_t>(m_Frames[i].pCall - m_Code.ops.data());
        callers.push_back(DescribeInstruction(m_Code.instructionOfOp[op]));
    }
    return callers;
}

std::vector<std::string> CMachine::GetStackTop(int count) const
{
    std::vector<std::string> top;
    constexpr std::size_t slack = 8;
    const std::int64_t* pBottom = m_Cells.data() + slack;
    const std::int64_t* pTop = reinterpret_cast<const std::int64_t*>(m_Bases[CellBase]);
    if (m_Frames.empty() || !m_Code.isPlain) return top;
    for (int i = 0; i < count && pTop > pBottom; ++i) {
        --pTop;
        const DebugType* pType = m_CellTypes[static_cast<std::size_t>(pTop - m_Cells.data())];
        const MachineValue value = FromCell(*pTop, pType ? pType->kind : ValueKind::S64);
        top.push_back(ToText(value) + (pType ? " " + pType->name : std::string()));
    }
    return top;
}

std::uint32_t CMachine::GetStoreTarget(int instruction, std::uint32_t& bytes) const
{
    const Instruction& listed = m_Image.m_Listing.m_Instructions[static_cast<std::size_t>(instruction)];
    const std::int64_t* pTop = reinterpret_cast<const std::int64_t*>(m_Bases[CellBase]);
    bytes = listed.pType ? static_cast<std::uint32_t>(GetSizeBytes(listed.pType->kind)) : 0;
    const auto operandAddress = [&]() -> std::uint32_t {
        const std::uint32_t offset = static_cast<std::uint32_t>(listed.offset);
        if (listed.area == MemoryArea::Absolute) return offset;
        if (listed.area == MemoryArea::Local) return m_Frames.back().begin + offset;
        return m_Image.GetRegion(listed.area, listed.pou).begin + offset;
    };
    switch (listed.mnemonic) {
    case Mnemonic::PopMemory: {
        const std::uint32_t bit = static_cast<std::uint32_t>(std::clamp(listed.bit, 0, 7));
        return operandAddress() | (listed.pType->kind == ValueKind::Bool ? bit << g_AddressBits : 0);
    }
    case Mnemonic::PopThrough: {
        MachineValue pointer;
        if (!Read(operandAddress(), ValueKind::U32, pointer)) break;
        return static_cast<std::uint32_t>(pointer.integer);
    }
    case Mnemonic::PopIndirect: return static_cast<std::uint32_t>(pTop[-1]);
    case Mnemonic::Memcpy:
        bytes = static_cast<std::uint32_t>(std::max<std::int64_t>(0, listed.number));
        return static_cast<std::uint32_t>(pTop[-1]);
    default: break;
    }
    bytes = 0;
    return 0;
}

// ---- Plain code: the stack under watch

// Checks what the instruction takes and leaves, then moves the top. False if that can't be.
bool CMachine::CheckStack(const Op& op, std::uint8_t*& top)
{
    constexpr std::int64_t slack = 8;
    std::int64_t* pBottom = m_Cells.data() + slack;
    std::int64_t* pTop = reinterpret_cast<std::int64_t*>(top);
    const std::int64_t height = pTop - pBottom;
    if (height < op.a) {
        if (m_Options.underflow == Underflow::Trap) {
            m_Trap.kind = TrapKind::StackUnderflow;
            return false;
        }
        // Zeros come in below what is there.
        const std::int64_t missing = op.a - height;
        std::memmove(pBottom + missing, pBottom, static_cast<std::size_t>(height) * g_CellBytes);
        std::fill_n(pBottom, missing, 0);
        pTop += missing;
    }
    if (pTop - pBottom + op.d > m_CellLimit && op.d > 0) {
        m_Trap.kind = TrapKind::ParameterStackFull;
        return false;
    }
    const Instruction& instruction = m_Image.m_Listing.m_Instructions[static_cast<std::size_t>(op.e)];
    CheckTypes(instruction, reinterpret_cast<std::uint8_t*>(pTop));
    top = reinterpret_cast<std::uint8_t*>(pTop + op.d);
    return true;
}

namespace
{

// What an instruction takes from the top downwards, null for "any", and what it leaves.
struct TypeEffect
{
    const DebugType* taken[3] = {nullptr, nullptr, nullptr};
    int takenCount = 0;
    const DebugType* pLeft = nullptr;
    int leftCount = 0;
};

}   // namespace

static TypeEffect GetTypeEffect(const Instruction& instruction, const CDebugInfo& debugInfo)
{
    const DebugType* pType = instruction.pType;
    const DebugType* pInt = debugInfo.FindType("INT");
    const DebugType* pBool = debugInfo.FindType("BOOL");
    switch (instruction.mnemonic) {
    case Mnemonic::Push:
    case Mnemonic::PushMemory:
    case Mnemonic::PushThrough: return {{}, 0, pType, 1};
    case Mnemonic::PushAddress: return {{}, 0, nullptr, 1};
    case Mnemonic::PushIndirect: return {{}, 1, pType, 1};
    case Mnemonic::Drop:
    case Mnemonic::PopMemory:
    case Mnemonic::PopThrough:
    case Mnemonic::PopAddress: return {{pType}, 1, nullptr, 0};
    case Mnemonic::PopIndirect: return {{nullptr, pType}, 2, nullptr, 0};
    case Mnemonic::Dup: return {{pType}, 1, pType, 2};
    case Mnemonic::Memcpy: return {{}, 2, nullptr, 0};
    case Mnemonic::MulDiv: return {{pType, pType, pType}, 3, pType, 1};
    case Mnemonic::Pow:
    case Mnemonic::Shl:
    case Mnemonic::Shr:
    case Mnemonic::Rol:
    case Mnemonic::Ror: return {{pInt, pType}, 2, pType, 1};
    case Mnemonic::Powr: return {{debugInfo.FindType("REAL"), pType}, 2, pType, 1};
    case Mnemonic::Neg:
    case Mnemonic::Abs:
    case Mnemonic::Sqrt:
    case Mnemonic::Not:
    case Mnemonic::Case:
    case Mnemonic::CaseRange: return {{pType}, 1, pType, 1};
    case Mnemonic::Convert: return {{pType}, 1, instruction.pToType, 1};
    case Mnemonic::Jc:
    case Mnemonic::Jnc: return {{pBool}, 1, nullptr, 0};
    case Mnemonic::Address:
    case Mnemonic::AddressBit: return {{pType, nullptr}, 2, nullptr, 1};
    case Mnemonic::CmpEq:
    case Mnemonic::CmpNe:
    case Mnemonic::CmpLt:
    case Mnemonic::CmpLe:
    case Mnemonic::CmpGt:
    case Mnemonic::CmpGe: return {{pType, pType}, 2, pBool, 1};
    default: return pType ? TypeEffect{{pType, pType}, 2, pType, 1} : TypeEffect{};
    }
}

// Notes what each cell was pushed as and, under strict rules, reports one that is taken as something else. An address
// is of no type: pointers of any type take it.
bool CMachine::CheckTypes(const Instruction& instruction, std::uint8_t* top)
{
    const TypeEffect effect = GetTypeEffect(instruction, m_Image.m_DebugInfo);
    const std::ptrdiff_t index = reinterpret_cast<std::int64_t*>(top) - m_Cells.data();
    bool fits = true;
    for (int i = 0; i < effect.takenCount; ++i) {
        const DebugType* pPushed = m_CellTypes[static_cast<std::size_t>(index - 1 - i)];
        const DebugType* pTaken = effect.taken[i];
        if (!pPushed || !pTaken || pPushed->baseName == pTaken->baseName) continue;
        fits = false;
        if (!m_Options.strict || m_Findings.size() >= g_LargestFindings) continue;
        const int number = static_cast<int>(&instruction - m_Image.m_Listing.m_Instructions.data());
        if (!m_Reported.insert({number, i, pPushed}).second) continue;
        const CodePosition position = DescribeInstruction(number);
        m_Findings.push_back(position.file + "(" + std::to_string(position.line) + "): " + position.pou + ": " +
                             std::string(instruction.text) + " takes a cell as " + pTaken->name +
                             " that was pushed as " + pPushed->name);
    }
    for (int i = 0; i < effect.leftCount; ++i)
        m_CellTypes[static_cast<std::size_t>(index - effect.takenCount + i)] = effect.pLeft;
    return fits;
}
