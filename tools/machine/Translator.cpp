#include "machine/Translator.h"

#include <algorithm>
#include <limits>

constexpr int g_CellBytes = 8;

CTranslator::CTranslator(const CImage& image, const MachineOptions& options)
    : m_Image(image), m_Options(options), m_Analysis(image, options.cellBytes)
{
    m_Code.isPlain = options.plain || options.strict || !m_Analysis.m_IsSafe;
}

// ---- Choosing operations: the enumeration runs by kind within each name.

static int KindIndex(ValueKind kind)
{
    return static_cast<int>(kind) - static_cast<int>(ValueKind::S8);
}

static Operation Shift(Operation first, int distance)
{
    return static_cast<Operation>(static_cast<int>(first) + distance);
}

static int SizeIndex(ValueKind kind)
{
    switch (GetSizeBytes(kind)) {
    case 1: return 0;
    case 2: return 1;
    case 4: return 2;
    default: return 3;
    }
}

// A BOOL in a cell is 0 or 1, which an eight-bit number is too.
static ValueKind AsNumber(ValueKind kind)
{
    return kind == ValueKind::Bool ? ValueKind::U8 : kind;
}

// ---- The frame of the translation

TranslatedCode CTranslator::Translate()
{
    const std::vector<Instruction>& instructions = m_Image.m_Listing.m_Instructions;
    m_Code.opOfInstruction.assign(instructions.size(), -1);
    m_Code.snapshotOfInstruction.assign(instructions.size(), -1);
    m_Code.chargeOfInstruction.assign(instructions.size() + 1, 0);
    for (std::size_t i = instructions.size(); i-- > 0;) {
        const bool isLast = EndsStretch(instructions[i].mnemonic);
        m_Code.chargeOfInstruction[i] = 1 + (isLast ? 0 : m_Code.chargeOfInstruction[i + 1]);
    }
    m_Code.ops.reserve(instructions.size());
    for (const ListingPou& pou : m_Image.m_Listing.m_Pous) TranslatePou(pou);
    PatchJumps();
    return std::move(m_Code);
}

void CTranslator::TranslatePou(const ListingPou& pou)
{
    const std::vector<int>& labels = m_Image.m_Listing.m_LabelTargets;
    auto label = std::lower_bound(labels.begin(), labels.end(), pou.first);
    bool isReached = false;
    std::size_t mark = 0;
    const std::vector<LineMark>& marks = m_Image.m_Listing.m_Marks;
    mark = static_cast<std::size_t>(
        std::lower_bound(marks.begin(), marks.end(), pou.first,
                         [](const LineMark& m, int instruction) { return m.instruction < instruction; }) -
        marks.begin());
    m_IsSkipped = false;
    for (int i = pou.first; i < pou.end; ++i) {
        m_Instruction = i;
        while (label != labels.end() && *label < i) ++label;
        const bool isLabel = i == pou.first || (label != labels.end() && *label == i);
        const std::int32_t depth = m_Analysis.m_Depths[static_cast<std::size_t>(i)];
        const bool isKnown = depth != CStackAnalysis::unknown;
        if (isLabel || !isReached) {
            if (isReached && !m_Code.isPlain) FlushAll();
            ResetStack(m_Code.isPlain || !isKnown ? 0 : depth);
        }
        isReached = isKnown || m_Code.isPlain;
        if (!isReached) continue;

        // The steps that a mark and an observer need stand in front of the instruction, and jumps go to them.
        const bool isTaken = m_IsSkipped;
        m_IsSkipped = false;
        if (!isTaken) m_Code.opOfInstruction[static_cast<std::size_t>(i)] = static_cast<std::int32_t>(m_Code.ops.size());
        while (mark < marks.size() && marks[mark].instruction < i) ++mark;
        for (; mark < marks.size() && marks[mark].instruction == i; ++mark)
            if (m_Options.countLines) Emit(Operation::Mark).e = static_cast<std::int32_t>(mark);
        if (isTaken) continue;
        const Instruction& instruction = m_Image.m_Listing.m_Instructions[static_cast<std::size_t>(i)];
        if (m_Code.isPlain) BeginInstruction(i);
        else TakeSnapshot(instruction);
        TranslateInstruction(instruction);
        if (m_Code.isPlain) FlushAll();
        if (instruction.mnemonic == Mnemonic::Jmp || instruction.mnemonic == Mnemonic::Rts) isReached = false;
    }
}

// Plain code moves the top of the stack first; positions count from where it stands then.
void CTranslator::BeginInstruction(int index)
{
    const Instruction& instruction = m_Image.m_Listing.m_Instructions[static_cast<std::size_t>(index)];
    if (m_Options.plain) Emit(Operation::Probe).e = index;
    const StackEffect effect = GetStackEffect(instruction);
    const int net = effect.pushes - effect.pops;
    ResetStack(-net);
    if (effect.pops == 0 && effect.pushes == 0 && !m_Options.strict) return;
    Op& op = Emit(Operation::Stack);
    op.a = effect.pops;
    op.d = net;
    op.e = index;
}

static bool CanTrap(const Instruction& instruction)
{
    switch (instruction.mnemonic) {
    case Mnemonic::Push:
    case Mnemonic::PushMemory:
    case Mnemonic::PushAddress:
    case Mnemonic::PopMemory:
    case Mnemonic::Drop:
    case Mnemonic::Dup:
    case Mnemonic::Add:
    case Mnemonic::Sub:
    case Mnemonic::Mul:
    case Mnemonic::Convert:
    case Mnemonic::Not:
    case Mnemonic::Nop: return false;
    default: return true;
    }
}

// The value that a fused jump decides by never reaches the stack, so it is left out.
void CTranslator::TakeSnapshot(const Instruction& instruction)
{
    if (!CanTrap(instruction)) return;
    StackSnapshot snapshot;
    const bool isConditional = instruction.mnemonic == Mnemonic::Jc || instruction.mnemonic == Mnemonic::Jnc;
    for (int i = isConditional ? 1 : 0; i < m_Depth && snapshot.count < StackSnapshot::most; ++i) {
        StackEntry& entry = snapshot.top[snapshot.count++];
        entry.offset = CellAt(m_Depth - 1 - i).offset;
        const std::size_t position = static_cast<std::size_t>(i);
        if (position < m_Entries.size()) entry = m_Entries[m_Entries.size() - 1 - position];
    }
    m_Code.snapshotOfInstruction[static_cast<std::size_t>(m_Instruction)] =
        static_cast<std::int32_t>(m_Code.snapshots.size());
    m_Code.snapshots.push_back(snapshot);
}

Op& CTranslator::Emit(Operation code)
{
    Op op;
    op.code = code;
    m_Code.ops.push_back(op);
    m_Code.instructionOfOp.push_back(m_Instruction);
    return m_Code.ops.back();
}

void CTranslator::EmitFault(TrapKind kind)
{
    Emit(Operation::Fault).x = static_cast<std::int16_t>(kind);
}

// While translating a jump names the instruction that it goes to.
void CTranslator::PatchJumps()
{
    for (Op& op : m_Code.ops) {
        const bool jumps = (op.code >= Operation::JumpEq_S8 && op.code <= Operation::JumpNotLe_F64) ||
                           (op.code >= Operation::Jump && op.code <= Operation::Call);
        if (!jumps) continue;
        const std::int32_t target = m_Code.opOfInstruction[static_cast<std::size_t>(op.d)];
        op.e = m_Code.chargeOfInstruction[static_cast<std::size_t>(op.d)];
        op.d = target;
    }
}

// ---- The stack while translating

void CTranslator::ResetStack(std::int32_t depth)
{
    m_Entries.clear();
    m_FlushedCount = 0;
    m_Depth = depth;
    m_LastResult = -1;
}

CTranslator::Operand CTranslator::CellAt(int position) const
{
    return {CellBase, position * g_CellBytes};
}

CTranslator::Entry CTranslator::Pop()
{
    Entry entry;
    entry.offset = CellAt(Position()).offset;
    if (!m_Entries.empty()) {
        entry = m_Entries.back();
        m_Entries.pop_back();
        m_FlushedCount = std::min(m_FlushedCount, m_Entries.size());
    }
    --m_Depth;
    return entry;
}

void CTranslator::Push(const Entry& entry)
{
    m_Entries.push_back(entry);
    ++m_Depth;
    m_LastResult = -1;
}

void CTranslator::PushCell(ValueKind kind)
{
    Entry entry;
    entry.kind = kind;
    entry.offset = CellAt(m_Depth).offset;
    const bool allInPlace = m_FlushedCount == m_Entries.size();
    m_Entries.push_back(entry);
    if (allInPlace) ++m_FlushedCount;
    ++m_Depth;
    m_LastResult = static_cast<int>(m_Code.ops.size()) - 1;
}

bool CTranslator::IsResultOnTop() const
{
    return m_LastResult >= 0 && m_LastResult == static_cast<int>(m_Code.ops.size()) - 1;
}

CTranslator::Operand CTranslator::AddConstant(std::int64_t constant)
{
    const auto [found, isNew] =
        m_Constants.emplace(constant, static_cast<std::int32_t>(m_Code.constants.size()) * g_CellBytes);
    if (isNew) m_Code.constants.push_back(constant);
    return {ConstantBase, found->second};
}

// Brings a value to the cell of its position.
CTranslator::Operand CTranslator::Materialise(const Entry& entry, int position)
{
    const Operand cell = CellAt(position);
    if (entry.place == Place::Cell && entry.offset == cell.offset) return cell;
    Operand source{entry.base, entry.offset};
    Operation code = Operation::Move;
    if (entry.place == Place::Constant) source = AddConstant(entry.constant);
    else if (entry.place == Place::Memory) code = Shift(Operation::Load_S8, KindIndex(entry.kind));
    else if (entry.place == Place::Address) code = Operation::LoadAddress;
    Op& op = Emit(code);
    op.baseA = source.base;
    op.a = source.offset;
    op.x = entry.bit;
    op.d = cell.offset;
    return cell;
}

// A value where it is, if an instruction of that kind can read it there.
CTranslator::Operand CTranslator::AsOperand(const Entry& entry, int position, ValueKind kind)
{
    if (entry.place == Place::Cell) return {CellBase, entry.offset};
    if (entry.place == Place::Constant) return AddConstant(entry.constant);
    const bool isRead = entry.place == Place::Memory &&
                        (entry.kind == kind || (!IsReal(entry.kind) && !IsReal(kind) &&
                                                GetSizeBytes(kind) <= GetSizeBytes(entry.kind)));
    if (isRead) return {entry.base, entry.offset};
    return Materialise(entry, position);
}

void CTranslator::FlushAll()
{
    const int first = m_Depth - static_cast<int>(m_Entries.size());
    for (std::size_t i = m_FlushedCount; i < m_Entries.size(); ++i) {
        const int position = first + static_cast<int>(i);
        const Operand cell = Materialise(m_Entries[i], position);
        m_Entries[i] = Entry();
        m_Entries[i].offset = cell.offset;
    }
    m_FlushedCount = m_Entries.size();
}

// A store could change what waits in memory.
void CTranslator::FlushMemory()
{
    FlushAll();
}

// ---- Memory

// Base and distance of an operand; false if it doesn't lie wholly in its area.
bool CTranslator::FindMemory(const Instruction& instruction, OperandBase& base, std::int32_t& offset, int bytes) const
{
    const bool isLocal = instruction.area == MemoryArea::Local;
    const ListingPou& pou = m_Image.m_Listing.m_Pous[static_cast<std::size_t>(instruction.pou)];
    std::int64_t begin = 0;
    std::int64_t size = 0;
    base = MemoryBase;
    if (isLocal && pou.kind != ListingPou::Program) {
        base = LocalBase;
        size = pou.memoryBytes;
    } else if (instruction.area == MemoryArea::Absolute) {
        const Region* pRegion =
            instruction.offset < 0 ? nullptr : m_Image.FindRegion(static_cast<std::uint32_t>(instruction.offset));
        if (!pRegion) return false;
        size = pRegion->End();
    } else {
        const Region& region = m_Image.GetRegion(instruction.area, instruction.pou);
        begin = region.begin;
        size = region.size;
    }
    offset = static_cast<std::int32_t>(begin + instruction.offset);
    return instruction.offset >= 0 && std::int64_t{instruction.offset} + bytes <= size;
}

void CTranslator::TranslatePushMemory(const Instruction& instruction)
{
    const ValueKind kind = instruction.pType->kind;
    Entry entry;
    entry.place = Place::Memory;
    entry.kind = kind;
    if (!FindMemory(instruction, entry.base, entry.offset, GetSizeBytes(kind))) {
        EmitFault(TrapKind::OutsideArea);
        PushCell(kind);
        return;
    }
    if (kind != ValueKind::Bool) {
        Push(entry);
        return;
    }
    const Operand cell = CellAt(m_Depth);
    Op& op = Emit(Operation::LoadBit);
    op.baseA = entry.base;
    op.a = entry.offset;
    op.d = cell.offset;
    op.x = static_cast<std::int16_t>(std::clamp(instruction.bit, 0, 7));
    PushCell(kind);
}

void CTranslator::TranslatePopMemory(const Instruction& instruction)
{
    const ValueKind kind = instruction.pType->kind;
    OperandBase base = MemoryBase;
    std::int32_t offset = 0;
    if (!FindMemory(instruction, base, offset, GetSizeBytes(kind))) {
        EmitFault(TrapKind::OutsideArea);
        Pop();
        return;
    }
    const int position = Position();
    const bool isResult = IsResultOnTop();
    const Entry value = Pop();
    if (kind == ValueKind::Bool) {
        const Operand source = AsOperand(value, position, ValueKind::U8);
        FlushMemory();
        Op& op = Emit(Operation::StoreBit);
        op.baseA = source.base;
        op.a = source.offset;
        op.baseD = base;
        op.d = offset;
        op.x = static_cast<std::int16_t>(std::clamp(instruction.bit, 0, 7));
        return;
    }
    // The last step computed the value: let it write it there.
    const bool nothingWaits = m_FlushedCount == m_Entries.size();
    if (isResult && nothingWaits) {
        Op& last = m_Code.ops[static_cast<std::size_t>(m_LastResult)];
        const bool isPair = last.code >= Operation::Add_S8_Cell && last.code <= Operation::Xor_U64_Memory;
        if (isPair && last.kind == static_cast<std::uint8_t>(kind)) {
            last.code = Shift(last.code, 1);
            last.baseD = base;
            last.d = offset;
            m_LastResult = -1;
            return;
        }
    }
    const Operand source = AsOperand(value, position, kind);
    FlushMemory();
    Op& op = Emit(Shift(Operation::Store_1, SizeIndex(kind)));
    op.baseA = source.base;
    op.a = source.offset;
    op.baseD = base;
    op.d = offset;
}

void CTranslator::TranslateLoadIndirect(Operand address, ValueKind kind)
{
    const Operand cell = CellAt(m_Depth);
    Op& op = Emit(kind == ValueKind::Bool ? Operation::LoadBitIndirect
                                          : Shift(Operation::LoadIndirect_S8, KindIndex(kind)));
    op.baseA = address.base;
    op.a = address.offset;
    op.d = cell.offset;
    PushCell(kind);
}

void CTranslator::TranslateStoreIndirect(Operand address, ValueKind kind, Entry value, int valuePosition)
{
    const Operand source = AsOperand(value, valuePosition, kind == ValueKind::Bool ? ValueKind::U8 : kind);
    FlushMemory();
    Op& op = Emit(kind == ValueKind::Bool ? Operation::StoreBitIndirect
                                          : Shift(Operation::StoreIndirect_1, SizeIndex(kind)));
    op.baseA = source.base;
    op.a = source.offset;
    op.baseB = address.base;
    op.b = address.offset;
}

// ---- Instruction by instruction

void CTranslator::TranslateInstruction(const Instruction& instruction)
{
    if (instruction.mnemonic == Mnemonic::PopAddress || (instruction.pType && instruction.pType->isText)) {
        EmitFault(TrapKind::NoSuchOperation);
        const StackEffect effect = GetStackEffect(instruction);
        for (int i = 0; i < effect.pops; ++i) Pop();
        for (int i = 0; i < effect.pushes; ++i) PushCell(ValueKind::S64);
        return;
    }
    switch (instruction.mnemonic) {
    case Mnemonic::Push: {
        Entry entry;
        entry.place = Place::Constant;
        entry.kind = instruction.pType->kind;
        entry.constant = instruction.number;
        Push(entry);
        break;
    }
    case Mnemonic::PushMemory: TranslatePushMemory(instruction); break;
    case Mnemonic::PushAddress: {
        Entry entry;
        entry.place = Place::Address;
        entry.kind = ValueKind::U32;
        entry.bit = static_cast<std::int16_t>(std::max(0, instruction.bit));
        if (!FindMemory(instruction, entry.base, entry.offset, 1)) {
            EmitFault(TrapKind::OutsideArea);
            PushCell(ValueKind::U32);
            break;
        }
        Push(entry);
        break;
    }
    case Mnemonic::PushThrough:
    case Mnemonic::PopThrough: {
        Operand pointer;
        constexpr int pointerBytes = 4;
        if (!FindMemory(instruction, pointer.base, pointer.offset, pointerBytes)) {
            EmitFault(TrapKind::OutsideArea);
            if (instruction.mnemonic == Mnemonic::PushThrough) PushCell(instruction.pType->kind);
            else Pop();
            break;
        }
        if (instruction.mnemonic == Mnemonic::PushThrough) {
            TranslateLoadIndirect(pointer, instruction.pType->kind);
            break;
        }
        const int position = Position();
        const Entry value = Pop();
        TranslateStoreIndirect(pointer, instruction.pType->kind, value, position);
        break;
    }
    case Mnemonic::PushIndirect: {
        const int position = Position();
        const Entry address = Pop();
        TranslateLoadIndirect(AsOperand(address, position, ValueKind::U32), instruction.pType->kind);
        break;
    }
    case Mnemonic::PopIndirect: {
        const int position = Position();
        const Operand address = AsOperand(Pop(), position, ValueKind::U32);
        const Entry value = Pop();
        TranslateStoreIndirect(address, instruction.pType->kind, value, position - 1);
        break;
    }
    case Mnemonic::PopMemory: TranslatePopMemory(instruction); break;
    case Mnemonic::Drop: Pop(); break;
    case Mnemonic::Dup: {
        const int position = Position();
        Entry entry = Pop();
        if (entry.place == Place::Cell && entry.offset == CellAt(position).offset) {
            PushCell(entry.kind);
            Push(entry);   // names the cell below
            break;
        }
        Push(entry);
        Push(entry);
        break;
    }
    case Mnemonic::Memcpy: {
        const int position = Position();
        const Operand destination = AsOperand(Pop(), position, ValueKind::U32);
        const Operand source = AsOperand(Pop(), position - 1, ValueKind::U32);
        FlushMemory();
        Op& op = Emit(Operation::Copy);
        op.baseA = source.base;
        op.a = source.offset;
        op.baseB = destination.base;
        op.b = destination.offset;
        op.e = static_cast<std::int32_t>(std::clamp<std::int64_t>(instruction.number, -1, INT32_MAX));
        break;
    }
    case Mnemonic::Add:
    case Mnemonic::Sub:
    case Mnemonic::Mul:
    case Mnemonic::Div:
    case Mnemonic::Mod:
    case Mnemonic::And:
    case Mnemonic::Or:
    case Mnemonic::Xor:
    case Mnemonic::Min:
    case Mnemonic::Max: TranslateArithmetic(instruction); break;
    case Mnemonic::Pow:
    case Mnemonic::Powr:
    case Mnemonic::Shl:
    case Mnemonic::Shr:
    case Mnemonic::Rol:
    case Mnemonic::Ror: TranslateRare(instruction, 2); break;
    case Mnemonic::MulDiv: TranslateRare(instruction, 3); break;
    case Mnemonic::Neg:
    case Mnemonic::Abs:
    case Mnemonic::Sqrt:
    case Mnemonic::Not:
    case Mnemonic::Convert: TranslateRare(instruction, 1); break;
    case Mnemonic::CmpEq:
    case Mnemonic::CmpNe:
    case Mnemonic::CmpLt:
    case Mnemonic::CmpLe:
    case Mnemonic::CmpGt:
    case Mnemonic::CmpGe: TranslateComparison(instruction); break;
    case Mnemonic::Jmp: {
        FlushAll();
        if (instruction.target < 0) EmitFault(TrapKind::NoLabel);
        else Emit(Operation::Jump).d = instruction.target;
        break;
    }
    case Mnemonic::Jc:
    case Mnemonic::Jnc: TranslateConditionalJump(instruction); break;
    case Mnemonic::Case:
    case Mnemonic::CaseRange: TranslateCase(instruction); break;
    case Mnemonic::Jsr: TranslateCall(instruction); break;
    case Mnemonic::Rts:
        FlushAll();
        Emit(Operation::Return);
        break;
    case Mnemonic::Sys:
        FlushAll();
        Emit(Operation::System).e = static_cast<std::int32_t>(instruction.number);
        break;
    case Mnemonic::Address:
    case Mnemonic::AddressBit: TranslateIndex(instruction); break;
    case Mnemonic::LocalData:
    case Mnemonic::PopAddress:
    case Mnemonic::LocalSet:   // the call and the start of the program have done it
    case Mnemonic::Nop: break;
    }
}

static Operation GetArithmetic(Mnemonic mnemonic, ValueKind kind)
{
    const int pair = KindIndex(kind) * 2;
    switch (mnemonic) {
    case Mnemonic::Add: return Shift(Operation::Add_S8_Cell, pair);
    case Mnemonic::Sub: return Shift(Operation::Sub_S8_Cell, pair);
    case Mnemonic::Mul: return Shift(Operation::Mul_S8_Cell, pair);
    case Mnemonic::Div: return Shift(Operation::Div_S8_Cell, pair);
    case Mnemonic::Min: return Shift(Operation::Min_S8_Cell, pair);
    case Mnemonic::Max: return Shift(Operation::Max_S8_Cell, pair);
    default: break;
    }
    if (IsReal(kind)) return Operation::Fault;
    switch (mnemonic) {
    case Mnemonic::Mod: return Shift(Operation::Mod_S8_Cell, pair);
    case Mnemonic::And: return Shift(Operation::And_S8_Cell, pair);
    case Mnemonic::Or: return Shift(Operation::Or_S8_Cell, pair);
    case Mnemonic::Xor: return Shift(Operation::Xor_S8_Cell, pair);
    default: return Operation::Fault;
    }
}

void CTranslator::TranslateArithmetic(const Instruction& instruction)
{
    const ValueKind kind = instruction.pType->kind;
    const bool isLogic = instruction.mnemonic >= Mnemonic::And && instruction.mnemonic <= Mnemonic::Xor;
    // Arithmetic on BOOL comes of literals that no type has reached; it is done in the width of a cell.
    const ValueKind number = kind == ValueKind::Bool && !isLogic ? ValueKind::S64 : AsNumber(kind);
    const bool isSlowMod = instruction.mnemonic == Mnemonic::Mod && m_Options.remainder == Remainder::Floored;
    const bool isSlowDiv = instruction.mnemonic == Mnemonic::Div && IsReal(kind) &&
                           m_Options.realDivision == RealDivision::Ieee;
    const Operation code = GetArithmetic(instruction.mnemonic, number);
    if (code == Operation::Fault || isSlowMod || isSlowDiv) {
        TranslateRare(instruction, 2);
        return;
    }
    const int position = Position();
    const Operand right = AsOperand(Pop(), position, number);
    const Operand left = AsOperand(Pop(), position - 1, number);
    Op& op = Emit(code);
    op.baseA = left.base;
    op.a = left.offset;
    op.baseB = right.base;
    op.b = right.offset;
    op.baseD = CellBase;
    op.d = CellAt(m_Depth).offset;
    op.kind = static_cast<std::uint8_t>(kind);
    PushCell(kind);
}

void CTranslator::TranslateComparison(const Instruction& instruction)
{
    const ValueKind kind = AsNumber(instruction.pType->kind);
    const int position = Position();
    Operand right = AsOperand(Pop(), position, kind);
    Operand left = AsOperand(Pop(), position - 1, kind);
    Operation first = Operation::Eq_S8;
    switch (instruction.mnemonic) {
    case Mnemonic::CmpNe: first = Operation::Ne_S8; break;
    case Mnemonic::CmpGt: std::swap(left, right); [[fallthrough]];
    case Mnemonic::CmpLt: first = Operation::Lt_S8; break;
    case Mnemonic::CmpGe: std::swap(left, right); [[fallthrough]];
    case Mnemonic::CmpLe: first = Operation::Le_S8; break;
    default: break;
    }
    Op& op = Emit(Shift(first, KindIndex(kind)));
    op.baseA = left.base;
    op.a = left.offset;
    op.baseB = right.base;
    op.b = right.offset;
    op.d = CellAt(m_Depth).offset;
    PushCell(ValueKind::Bool);
}

// One to three operands in cells or constants, each read as a whole cell.
void CTranslator::TranslateRare(const Instruction& instruction, int operands)
{
    Operand places[3];
    for (int i = operands; i-- > 0;) {
        const int position = Position();
        const Entry entry = Pop();
        places[i] = entry.place == Place::Constant ? AddConstant(entry.constant)
                    : entry.place == Place::Cell   ? Operand{CellBase, entry.offset}
                                                   : Materialise(entry, position);
    }
    Op& op = Emit(Operation::Rare);
    op.x = static_cast<std::int16_t>(instruction.mnemonic);
    op.kind = static_cast<std::uint8_t>(instruction.pType->kind);
    op.baseA = places[0].base;
    op.a = places[0].offset;
    op.baseB = places[1].base;
    op.b = places[1].offset;
    op.baseD = places[2].base;   // the third operand; the result goes to a cell in any case
    op.e = places[2].offset;
    op.d = CellAt(m_Depth).offset;
    if (instruction.pToType) op.f = static_cast<std::int32_t>(instruction.pToType->kind);
    PushCell(instruction.pToType ? instruction.pToType->kind : instruction.pType->kind);
}

void CTranslator::TranslateIndex(const Instruction& instruction)
{
    if (!m_Code.isPlain && TranslateIndexedAccess(instruction)) return;
    const ValueKind kind = AsNumber(instruction.pType->kind);
    const int position = Position();
    const Operand index = AsOperand(Pop(), position, kind);
    const Operand address = AsOperand(Pop(), position - 1, ValueKind::U32);
    IndexRecord record;
    record.stride = instruction.stride;
    record.low = instruction.number;
    record.high = instruction.high;
    Op& op = Emit(instruction.mnemonic == Mnemonic::Address ? Operation::Index : Operation::IndexBit);
    op.baseA = address.base;
    op.a = address.offset;
    op.baseB = index.base;
    op.b = index.offset;
    op.kind = static_cast<std::uint8_t>(kind);
    op.e = static_cast<std::int32_t>(m_Code.indexes.size());
    op.d = CellAt(m_Depth).offset;
    m_Code.indexes.push_back(record);
    PushCell(ValueKind::U32);
}

// An array at a known place, one subscript of 16 or 32 bits, and the access right behind: the bounds of the subscript
// keep the access in its area, so nothing is left to check but them.
bool CTranslator::TranslateIndexedAccess(const Instruction& instruction)
{
    const std::vector<Instruction>& all = m_Image.m_Listing.m_Instructions;
    const std::size_t next = static_cast<std::size_t>(m_Instruction) + 1;
    if (next >= all.size() || all[next].pou != instruction.pou || m_Entries.size() < 2) return false;
    const std::vector<int>& labels = m_Image.m_Listing.m_LabelTargets;
    if (std::binary_search(labels.begin(), labels.end(), static_cast<int>(next))) return false;
    const Instruction& access = all[next];
    const bool isLoad = access.mnemonic == Mnemonic::PushIndirect;
    if (!isLoad && access.mnemonic != Mnemonic::PopIndirect) return false;
    const Entry base = m_Entries[m_Entries.size() - 2];
    const ValueKind indexKind = instruction.pType->kind;
    const bool isNarrow = indexKind == ValueKind::S16;
    if (base.place != Place::Address || (!isNarrow && indexKind != ValueKind::S32)) return false;

    const ValueKind kind = access.pType->kind;
    const bool isBits = instruction.mnemonic == Mnemonic::AddressBit;
    if (isBits != (kind == ValueKind::Bool) || instruction.high < instruction.number || instruction.stride < 0)
        return false;
    // Where the last element ends, in the region that the first lies in.
    constexpr std::int64_t bitsInUnit = 8;
    const std::int64_t span = instruction.high - instruction.number;
    if (span > INT32_MAX || instruction.stride > INT32_MAX) return false;
    std::int64_t last = span * instruction.stride;
    if (isBits) last = (base.bit + last) / bitsInUnit * m_Image.m_DebugInfo.m_BoolAlign;
    const std::int64_t end = base.offset + last + GetSizeBytes(kind);
    std::int64_t limit = 0;
    if (base.base == LocalBase) {
        limit = m_Image.m_Listing.m_Pous[static_cast<std::size_t>(instruction.pou)].memoryBytes;
    } else {
        const Region* pRegion = m_Image.FindRegion(static_cast<std::uint32_t>(base.offset));
        limit = pRegion ? pRegion->End() : 0;
    }
    if (end > limit) return false;

    const int position = Position();
    const Operand index = AsOperand(Pop(), position, indexKind);
    Pop();
    IndexRecord record;
    record.stride = instruction.stride;
    record.low = instruction.number;
    record.high = instruction.high;
    record.bitOffset = base.bit;
    record.offset = base.offset;
    record.base = base.base;
    Operand value;
    if (!isLoad) {
        const int valuePosition = Position();
        value = AsOperand(Pop(), valuePosition, AsNumber(kind));
        FlushMemory();
    }
    const int width = isNarrow ? 0 : 1;
    Operation code = Operation::LoadBitIndexed;
    if (isLoad && !isBits) code = Shift(Operation::LoadIndexed_S8_By16, KindIndex(kind) * 2 + width);
    if (!isLoad && isBits) code = Operation::StoreBitIndexed;
    if (!isLoad && !isBits) code = Shift(Operation::StoreIndexed_1_By16, SizeIndex(kind) * 2 + width);
    Op& op = Emit(code);
    op.baseA = value.base;
    op.a = value.offset;
    op.baseB = index.base;
    op.b = index.offset;
    op.kind = static_cast<std::uint8_t>(indexKind);
    op.e = static_cast<std::int32_t>(m_Code.indexes.size());
    m_Code.indexes.push_back(record);
    if (isLoad) {
        op.d = CellAt(m_Depth).offset;
        PushCell(kind);
    }
    m_IsSkipped = true;
    return true;
}

void CTranslator::TranslateConditionalJump(const Instruction& instruction)
{
    const bool onTrue = instruction.mnemonic == Mnemonic::Jc;
    const int position = Position();
    const bool isResult = IsResultOnTop();
    const Entry entry = Pop();
    const std::int32_t charge = m_Code.chargeOfInstruction[static_cast<std::size_t>(m_Instruction) + 1];
    if (instruction.target < 0) {
        // Only the jump that is taken misses its label: fall through over the fault.
        const Operand condition = AsOperand(entry, position, ValueKind::U8);
        FlushAll();
        Op& op = Emit(Operation::Rare);
        op.x = static_cast<std::int16_t>(instruction.mnemonic);
        op.baseA = condition.base;
        op.a = condition.offset;
        return;
    }
    const bool nothingWaits = m_FlushedCount == m_Entries.size();
    if (isResult && nothingWaits) {
        Op& last = m_Code.ops[static_cast<std::size_t>(m_LastResult)];
        const int code = static_cast<int>(last.code);
        const int kinds = KindIndex(ValueKind::F64) + 1;
        const int relation = code - static_cast<int>(Operation::Eq_S8);
        if (relation >= 0 && relation < 4 * kinds) {
            // Eq, Ne, Lt, Le. Their contraries: Ne, Eq, not Lt, not Le.
            constexpr int contraries[] = {1, 0, 4, 5};
            const int wanted = onTrue ? relation / kinds : contraries[relation / kinds];
            last.code = Shift(Operation::JumpEq_S8, wanted * kinds + relation % kinds);
            last.d = instruction.target;
            last.f = charge;
            m_Code.instructionOfOp.back() = m_Instruction;   // only the jump can draw a trap
            m_LastResult = -1;
            return;
        }
        if (last.code == Operation::LoadBit) {
            last.code = onTrue ? Operation::JumpBit : Operation::JumpNotBit;
            last.d = instruction.target;
            last.f = charge;
            m_Code.instructionOfOp.back() = m_Instruction;   // only the jump can draw a trap
            m_LastResult = -1;
            return;
        }
    }
    const Operand condition = AsOperand(entry, position, ValueKind::U8);
    FlushAll();
    Op& op = Emit(onTrue ? Operation::JumpTrue : Operation::JumpFalse);
    op.baseA = condition.base;
    op.a = condition.offset;
    op.d = instruction.target;
    op.f = charge;
}

void CTranslator::TranslateCase(const Instruction& instruction)
{
    const ValueKind kind = instruction.pType->kind;
    const int position = Position();
    FlushAll();
    const Entry selector = Pop();
    const Operand value = AsOperand(selector, position, kind);
    // The two bounds of a range stand side by side, so they are entered together and never shared.
    const std::int32_t first = static_cast<std::int32_t>(m_Code.constants.size()) * g_CellBytes;
    m_Code.constants.push_back(instruction.number);
    if (instruction.mnemonic == Mnemonic::CaseRange) m_Code.constants.push_back(instruction.high);
    Op& op = Emit(instruction.mnemonic == Mnemonic::Case ? Operation::CaseEqual : Operation::CaseInRange);
    op.kind = static_cast<std::uint8_t>(kind);
    op.baseA = value.base;
    op.a = value.offset;
    op.b = first;
    op.x = m_Code.isPlain ? -1 : 0;   // cells that the jump takes off
    op.f = m_Code.chargeOfInstruction[static_cast<std::size_t>(m_Instruction) + 1];
    op.d = instruction.target;
    if (instruction.target < 0) op.code = Operation::Fault, op.x = static_cast<std::int16_t>(TrapKind::NoLabel);
    Push(selector);
    m_FlushedCount = m_Entries.size();
}

void CTranslator::TranslateCall(const Instruction& instruction)
{
    FlushAll();
    if (instruction.target < 0) {
        EmitFault(TrapKind::NoLabel);
        return;
    }
    Op& op = Emit(Operation::Call);
    op.d = instruction.target;
    op.b = m_Image.m_Listing.m_Instructions[static_cast<std::size_t>(instruction.target)].pou;
    op.a = m_Code.isPlain ? 0 : m_Depth * g_CellBytes;
    op.f = m_Code.chargeOfInstruction[static_cast<std::size_t>(m_Instruction) + 1];
    // What comes back lies in cells.
    const std::size_t next = static_cast<std::size_t>(m_Instruction) + 1;
    const bool isKnown = !m_Code.isPlain && next < m_Analysis.m_Depths.size() &&
                         m_Analysis.m_Depths[next] != CStackAnalysis::unknown;
    ResetStack(isKnown ? m_Analysis.m_Depths[next] : 0);
}
