#include "machine/Names.h"

#include "machine/StackAnalysis.h"

#include <algorithm>
#include <charconv>

static std::string ToLower(std::string_view text)
{
    std::string lower(text);
    for (char& c : lower)
        if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
    return lower;
}

static bool TakeNumber(std::string_view& text, std::int64_t& value)
{
    while (text.starts_with(' ')) text.remove_prefix(1);
    const std::from_chars_result end = std::from_chars(text.data(), text.data() + text.size(), value);
    if (end.ec != std::errc()) return false;
    text.remove_prefix(static_cast<std::size_t>(end.ptr - text.data()));
    while (text.starts_with(' ')) text.remove_prefix(1);
    return true;
}

// "INT[0..9,1..2][5..6]" and "[8,4][2]".
std::shared_ptr<const ArrayShape> ParseArray(std::string_view type, std::string_view displacement)
{
    auto pShape = std::make_shared<ArrayShape>();
    const std::size_t open = std::min(type.find('['), type.size());
    pShape->element = type.substr(0, open);
    type.remove_prefix(open);
    while (type.starts_with('[')) {
        std::vector<ArrayShape::Dimension>& level = pShape->levels.emplace_back();
        if (displacement.starts_with('[') || displacement.starts_with(']'))
            displacement.remove_prefix(displacement.starts_with("][") ? 2 : 1);
        do {
            type.remove_prefix(1);   // "[" or ","
            ArrayShape::Dimension dimension;
            if (!TakeNumber(type, dimension.low) || !type.starts_with("..")) return nullptr;
            type.remove_prefix(2);
            if (!TakeNumber(type, dimension.high)) return nullptr;
            if (!TakeNumber(displacement, dimension.stride)) return nullptr;
            if (displacement.starts_with(',')) displacement.remove_prefix(1);
            level.push_back(dimension);
        } while (type.starts_with(','));
        if (!type.starts_with(']')) return nullptr;
        type.remove_prefix(1);
    }
    return pShape->levels.empty() ? nullptr : pShape;
}

CNames::CNames(const CImage& image) : m_Image(image)
{
    for (std::size_t i = 0; i < image.m_DebugInfo.m_Globals.size(); ++i)
        m_Globals.emplace(ToLower(image.m_DebugInfo.m_Globals[i].name), i);
    for (std::size_t i = 0; i < image.m_Programs.size(); ++i) m_Programs.emplace(ToLower(image.m_Programs[i].name), i);
    FindPointerType();
    m_Locals.resize(image.m_Listing.m_Pous.size());
    for (std::size_t i = 0; i < m_Locals.size(); ++i) {
        const ListingPou& pou = image.m_Listing.m_Pous[i];
        const DebugType* pType = image.m_DebugInfo.FindType(pou.name);
        const bool isBlock = pou.kind == ListingPou::Function && pType && pType->isFunctionBlock;
        if (!isBlock) CollectLocals(pou, m_Locals[i]);
    }
}

// ---- What the comments of a POU's code tell

static std::string_view FirstName(std::string_view text)
{
    return text.substr(0, text.find_first_of(".["));
}

// The prologue of each function block takes a pointer; else any unsigned number of 32 bits may be one.
bool CNames::IsPointerType(const DebugType& type) const
{
    return m_pPointerType ? m_pPointerType->baseName == type.baseName : type.kind == ValueKind::U32;
}

void CNames::FindPointerType()
{
    const CListing& listing = m_Image.m_Listing;
    for (const ListingPou& pou : listing.m_Pous) {
        if (pou.kind != ListingPou::Function) continue;
        constexpr int prologue = 4;   // instructions at most in front of the one that stores it
        for (int i = pou.first; i < std::min(pou.end, pou.first + prologue); ++i) {
            const Instruction& instruction = listing.m_Instructions[static_cast<std::size_t>(i)];
            if (listing.GetComment(instruction) != "FB_INSTANCE") continue;
            m_pPointerType = instruction.pType;
            return;
        }
    }
}

// What lies at an address that a call behind takes; null if there is no such call.
const DebugType* CNames::FindCalledBlock(int instruction) const
{
    const CListing& listing = m_Image.m_Listing;
    const std::size_t next = static_cast<std::size_t>(instruction) + 1;
    if (next >= listing.m_Instructions.size() || listing.m_Instructions[next].mnemonic != Mnemonic::Jsr) return nullptr;
    const int target = listing.m_Instructions[next].target;
    if (target < 0) return nullptr;
    const int callee = listing.m_Instructions[static_cast<std::size_t>(target)].pou;
    const DebugType* pBlock = m_Image.m_DebugInfo.FindType(listing.m_Pous[static_cast<std::size_t>(callee)].name);
    return pBlock && pBlock->isFunctionBlock ? pBlock : nullptr;
}

void CNames::CollectLocals(const ListingPou& pou, PouNames& names)
{
    const CListing& listing = m_Image.m_Listing;
    for (int i = pou.first; i < pou.end; ++i) {
        const Instruction& instruction = listing.m_Instructions[static_cast<std::size_t>(i)];
        if (instruction.area != MemoryArea::Local) continue;
        const bool isValue =
            instruction.mnemonic == Mnemonic::PushMemory || instruction.mnemonic == Mnemonic::PopMemory;
        const bool isAddress = instruction.mnemonic == Mnemonic::PushAddress;
        if (!isValue && !isAddress) continue;
        std::string_view text = listing.GetComment(instruction);
        const bool isElement = text.starts_with('&');
        if (isElement) text.remove_prefix(1);
        if (text.empty()) continue;
        names.firsts.insert(ToLower(FirstName(text)));
        if (isElement && isValue) {   // the pointer to a structure or array that a function was given
            names.pointers.insert(ToLower(text));
            continue;
        }

        LocalName name;
        name.text = text;
        name.offset = instruction.offset;
        name.bit = std::max(0, instruction.bit);
        name.pType = instruction.pType;
        if (isElement) CollectLocalArray(i, text, names);
        if (isAddress && !isElement) {
            name.pType = FindCalledBlock(i);
            if (!name.pType) {
                // A scalar whose address is handed over shows its own type, a structure or array that of pointers.
                if (IsPointerType(*instruction.pType)) {
                    names.wholes.insert(ToLower(text));
                    continue;
                }
                name.pType = instruction.pType;
            }
        }
        if (names.byName.emplace(ToLower(text), names.names.size()).second) names.names.push_back(std::move(name));
    }
}

//	PUSH&(INT)[local+12]	;&x[0]
//	...                         the index
//	ADDRESS(INT) 2 1 5
std::vector<const Instruction*> FollowIndexes(const CListing& listing, int instruction)
{
    // Follow the stack to the accesses of this address: it lies at height 1, each index above it.
    const std::vector<Instruction>& all = listing.m_Instructions;
    std::vector<const Instruction*> indexes;
    const std::size_t base = static_cast<std::size_t>(instruction);
    int height = 1;
    for (std::size_t i = base + 1; i < all.size() && all[i].pou == all[base].pou; ++i) {
        const bool isIndex = all[i].mnemonic == Mnemonic::Address || all[i].mnemonic == Mnemonic::AddressBit;
        if (isIndex && height == 2) indexes.push_back(&all[i]);
        else if (EndsStretch(all[i].mnemonic)) return {};   // an index that is computed with calls or jumps
        const StackEffect effect = GetStackEffect(all[i]);
        if (height - effect.pops < 1) break;
        height += effect.pushes - effect.pops;
    }
    return indexes;
}

void CNames::CollectLocalArray(int instruction, std::string_view text, PouNames& names)
{
    const std::size_t open = text.find("[0]");
    if (open == std::string_view::npos || text.find('[', open + 1) != std::string_view::npos) return;
    const Instruction& base = m_Image.m_Listing.m_Instructions[static_cast<std::size_t>(instruction)];
    LocalArray array;
    array.before = text.substr(0, open);
    array.behind = text.substr(open + 3);
    array.offset = base.offset;
    array.bit = std::max(0, base.bit);
    array.pType = base.pType;
    const std::string key = ToLower(array.before) + "[]" + ToLower(array.behind);
    if (names.arrays.contains(key)) return;

    array.count = 1;
    const std::vector<const Instruction*> indexes = FollowIndexes(m_Image.m_Listing, instruction);
    for (const Instruction* pIndex : indexes) {
        array.count *= pIndex->high - pIndex->number + 1;
        array.stride = pIndex->stride;
    }
    if (!indexes.empty()) names.arrays.emplace(key, std::move(array));
}

std::vector<std::string> CNames::GetLocalNames(std::string_view program) const
{
    std::vector<std::string> texts;
    const auto found = m_Programs.find(ToLower(program));
    if (found == m_Programs.end()) return texts;
    const std::size_t pou = static_cast<std::size_t>(m_Image.m_Programs[found->second].pou);
    for (const LocalName& name : m_Locals[pou].names) texts.push_back(name.text);
    return texts;
}

std::vector<LocalPart> CNames::GetLocalParts(int pou) const
{
    std::vector<LocalPart> parts;
    const PouNames& names = m_Locals[static_cast<std::size_t>(pou)];
    for (const LocalName& name : names.names) {
        parts.push_back({name.text, {}, 0});
        const std::size_t open = name.text.find("[0]");
        if (open == std::string::npos) continue;
        const auto array = names.arrays.find(ToLower(name.text.substr(0, open)) + "[]" + ToLower(name.text.substr(open + 3)));
        if (array != names.arrays.end()) parts.push_back({array->second.before, array->second.behind, array->second.count});
    }
    return parts;
}

bool CNames::IsWhole(int pou, std::string_view name) const
{
    const PouNames& names = m_Locals[static_cast<std::size_t>(pou)];
    const std::string lower = ToLower(name);
    return names.pointers.contains(lower) || (names.wholes.contains(lower) && !names.byName.contains(lower));
}

bool CNames::IsLocal(int pou, std::string_view name) const
{
    return m_Locals[static_cast<std::size_t>(pou)].firsts.contains(ToLower(FirstName(name)));
}

std::vector<NamedObject> CNames::GetFrameVariables(const MachineFrame& frame) const
{
    std::vector<NamedObject> objects;
    const ListingPou& pou = m_Image.m_Listing.m_Pous[static_cast<std::size_t>(frame.pou)];
    if (pou.kind != ListingPou::Function) return objects;
    for (const ListingVariable& variable : pou.variables) {
        NamedObject object;
        object.name = variable.name;
        object.pType = m_Image.m_DebugInfo.FindType(variable.typeName);
        object.address = frame.begin + static_cast<std::uint32_t>(variable.offset);
        if (!object.pType || variable.offset < 0) continue;
        object.isThroughPointer = variable.block == "VAR_OUTPUT" || variable.block == "VAR_IN_OUT";
        // A BOOL's bit stands with the instructions that use it.
        if (object.pType->kind == ValueKind::Bool && !object.isThroughPointer) {
            for (int i = pou.first; i < pou.end; ++i) {
                const Instruction& instruction = m_Image.m_Listing.m_Instructions[static_cast<std::size_t>(i)];
                if (instruction.area != MemoryArea::Local || instruction.offset != variable.offset) continue;
                if (ToLower(m_Image.m_Listing.GetComment(instruction)) != ToLower(variable.name)) continue;
                object.bits = std::max(0, instruction.bit);
                break;
            }
        }
        objects.push_back(std::move(object));
    }
    return objects;
}

// ---- Finding

bool CNames::SetType(NamedObject& object, const DebugVariable& variable) const
{
    object.level = 0;
    object.pArray = nullptr;
    object.pType = nullptr;
    if (variable.typeText.find('[') != std::string::npos) {
        object.pArray = ParseArray(variable.typeText, variable.displacement);
        return object.pArray != nullptr;
    }
    object.pType = m_Image.m_DebugInfo.FindType(variable.typeText);
    return object.pType != nullptr;
}

std::optional<NamedObject> CNames::GetGlobal(const DebugVariable& variable) const
{
    if (variable.offset < 0) return {};
    NamedObject object;
    object.name = variable.name;
    object.address = static_cast<std::uint32_t>(variable.offset);
    if (!m_Image.m_Listing.m_LocatedGlobals.contains(variable.name)) {
        const MemoryArea area = variable.isRetain ? MemoryArea::Retain : MemoryArea::Global;
        object.address += m_Image.GetRegion(area, 0).begin;
    }
    object.bits = std::max(0, variable.bit);
    if (!SetType(object, variable)) return {};
    return object;
}

std::optional<NamedObject> CNames::Find(std::string_view name, std::string& error) const
{
    if (name.starts_with('%')) return FindDirect(name, error);
    const std::size_t length = std::min(name.find_first_of(".["), name.size());
    const std::string first = ToLower(name.substr(0, length));
    const auto global = m_Globals.find(first);
    if (global != m_Globals.end()) {
        const DebugVariable& variable = m_Image.m_DebugInfo.m_Globals[global->second];
        std::optional<NamedObject> object = GetGlobal(variable);
        if (!object) {
            error = std::string(name) + ": a constant that its value has replaced has no place in memory";
            return {};
        }
        if (!Walk(*object, name.substr(length), error)) return {};
        object->name = name;
        return object;
    }
    const auto program = m_Programs.find(first);
    if (program != m_Programs.end() && length < name.size() && name[length] == '.') {
        const ImageProgram& found = m_Image.m_Programs[program->second];
        const std::uint32_t begin = m_Image.m_Regions[static_cast<std::size_t>(found.region)].begin;
        std::optional<NamedObject> object = FindLocal(found.pou, begin, name.substr(length + 1), error);
        if (object) object->name = name;
        else error.insert(0, name.substr(0, length + 1));
        return object;
    }
    error = std::string(name) + ": there is no such global variable";
    return {};
}

std::optional<NamedObject> CNames::FindDirect(std::string_view name, std::string& error) const
{
    if (!m_Image.m_Target) {
        error = std::string(name) + ": an address needs the target description (-i)";
        return {};
    }
    std::string_view rest = name.substr(1);
    const char letter = rest.empty() ? '\0' : static_cast<char>(rest.front() & ~0x20);
    const TargetArea* pArea = letter == 'I'   ? m_Image.m_Target->FindArea("INPUT")
                              : letter == 'Q' ? m_Image.m_Target->FindArea("OUTPUT")
                              : letter == 'M' ? m_Image.m_Target->FindArea("MEMORY")
                                              : nullptr;
    error = std::string(name) + ": is no address of the target";
    if (!pArea) return {};
    rest.remove_prefix(1);
    char size = 'X';
    if (!rest.empty() && (rest.front() < '0' || rest.front() > '9')) {
        size = static_cast<char>(rest.front() & ~0x20);
        rest.remove_prefix(1);
    }
    std::int64_t byte = 0;
    std::int64_t bit = 0;
    if (rest.starts_with('-') || !TakeNumber(rest, byte)) return {};
    if (rest.starts_with('.')) {
        rest.remove_prefix(1);
        if (rest.starts_with('-') || !TakeNumber(rest, bit) || size != 'X') return {};
    } else if (size == 'X') {
        return {};
    }
    constexpr std::pair<char, const char*> types[] = {
        {'X', "BOOL"}, {'B', "BYTE"}, {'W', "WORD"}, {'D', "DWORD"}, {'L', "LWORD"}};
    NamedObject object;
    object.name = name;
    for (const auto& [sizeLetter, type] : types)
        if (sizeLetter == size) object.pType = m_Image.m_DebugInfo.FindType(type);
    byte += bit / 8;
    if (!rest.empty() || !object.pType || byte + GetSizeBytes(object.pType->kind) > pArea->size) return {};
    object.address = static_cast<std::uint32_t>(pArea->segment + byte);
    object.bits = bit % 8;
    error.clear();
    return object;
}

NamedObject CNames::MakeLocal(const LocalName& local, std::uint32_t begin, std::string_view name) const
{
    NamedObject object;
    object.name = name;
    object.pType = local.pType;
    object.address = begin + static_cast<std::uint32_t>(local.offset);
    object.bits = local.bit;
    return object;
}

// An element that the code never names by itself. Nothing without an error if there is no such array.
std::optional<NamedObject> CNames::FindLocalElement(const PouNames& names, std::uint32_t begin, std::string_view name,
                                                    std::string& error) const
{
    const std::string lower = ToLower(name);
    const std::size_t open = lower.find('[');
    const std::size_t close = lower.find(']');
    if (open == std::string::npos || close == std::string::npos || close < open) return {};
    const auto array = names.arrays.find(lower.substr(0, open) + "[]" + lower.substr(close + 1));
    std::string_view number = std::string_view(lower).substr(open + 1, close - open - 1);
    std::int64_t element = 0;
    if (array == names.arrays.end() || !TakeNumber(number, element) || !number.empty()) return {};
    const LocalArray& found = array->second;
    if (element < 0 || element >= found.count) {
        error = std::string(name) + ": the array has the elements 0 to " + std::to_string(found.count - 1);
        return {};
    }
    const bool isBit = found.pType->kind == ValueKind::Bool && found.behind.empty();
    LocalName local{std::string(name), found.offset, found.bit, found.pType};
    if (!isBit) local.offset += static_cast<std::int32_t>(element * found.stride);
    NamedObject object = MakeLocal(local, begin, name);
    if (isBit) object.bits += element * found.stride;
    return object;
}

std::optional<NamedObject> CNames::FindLocal(int pou, std::uint32_t begin, std::string_view name,
                                             std::string& error) const
{
    const PouNames& names = m_Locals[static_cast<std::size_t>(pou)];
    if (const auto found = names.byName.find(ToLower(name)); found != names.byName.end())
        return MakeLocal(names.names[found->second], begin, name);
    error.clear();
    if (std::optional<NamedObject> element = FindLocalElement(names, begin, name, error)) return element;
    if (!error.empty()) return {};
    // A member of a function block whose instance the code calls.
    const std::size_t dot = name.find('.');
    if (dot != std::string_view::npos) {
        const auto found = names.byName.find(ToLower(name.substr(0, dot)));
        if (found != names.byName.end() && names.names[found->second].pType->isStruct)
            return FindBelow(MakeLocal(names.names[found->second], begin, name.substr(0, dot)), name.substr(dot), error);
    }
    const std::string& pouName = m_Image.m_Listing.m_Pous[static_cast<std::size_t>(pou)].name;
    error = std::string(name) + ": the comments of the code of " + pouName +
            " name no such variable. A program's own variables are known by them alone";
    return {};
}

std::optional<NamedObject> CNames::GetInstance(const CMachine& machine, const MachineFrame& frame) const
{
    const ListingPou& pou = m_Image.m_Listing.m_Pous[static_cast<std::size_t>(frame.pou)];
    MachineValue pointer;   // the prologue stores it in front of all else
    NamedObject object;
    object.pType = m_Image.m_DebugInfo.FindType(pou.name);
    if (pou.kind != ListingPou::Function || !object.pType || !object.pType->isFunctionBlock) return {};
    if (!machine.Read(frame.begin, ValueKind::U32, pointer)) return {};
    object.address = static_cast<std::uint32_t>(pointer.integer) & g_AddressMask;
    return object;
}

std::optional<NamedObject> CNames::FindBelow(const NamedObject& object, std::string_view steps, std::string& error) const
{
    NamedObject below = object;
    if (!Walk(below, steps, error)) return {};
    return below;
}

bool CNames::Walk(NamedObject& object, std::string_view steps, std::string& error) const
{
    while (!steps.empty()) {
        if (steps.front() == '.') {
            steps.remove_prefix(1);
            const std::size_t length = std::min(steps.find_first_of(".["), steps.size());
            if (!EnterMember(object, steps.substr(0, length), error)) return false;
            steps.remove_prefix(length);
            continue;
        }
        const std::size_t close = steps.find(']');
        if (steps.front() != '[' || close == std::string_view::npos) {
            error = object.name + ": cannot read \"" + std::string(steps) + "\" behind it";
            return false;
        }
        if (!EnterElement(object, steps.substr(1, close - 1), error)) return false;
        steps.remove_prefix(close + 1);
    }
    return true;
}

bool CNames::EnterMember(NamedObject& object, std::string_view name, std::string& error) const
{
    if (!object.pType || !object.pType->isStruct) {
        error = object.name + ": has no members";
        return false;
    }
    const std::string lower = ToLower(name);
    for (const DebugVariable& member : object.pType->members)
        if (ToLower(member.name) == lower) return EnterMember(object, member, error);
    error = object.name + ": has no member " + std::string(name);
    return false;
}

bool CNames::EnterMember(NamedObject& object, const DebugVariable& member, std::string& error) const
{
    const std::int32_t offset = std::max(0, member.offset);
    if (object.isThroughPointer) object.offset += offset;
    else object.address += static_cast<std::uint32_t>(offset);
    object.bits = std::max(0, member.bit);
    object.name += "." + member.name;
    if (member.memberClass == "InOut") {
        if (object.isThroughPointer) {
            error = object.name + ": lies behind two pointers";
            return false;
        }
        object.isThroughPointer = true;
        object.bits = 0;
    }
    if (SetType(object, member)) return true;
    error = object.name + ": has a type that the debug file does not describe";
    return false;
}

bool CNames::EnterElement(NamedObject& object, std::string_view subscripts, std::string& error) const
{
    if (!object.pArray) {
        error = object.name + ": is no array";
        return false;
    }
    const std::shared_ptr<const ArrayShape> pArray = object.pArray;
    const std::vector<ArrayShape::Dimension>& level = pArray->levels[object.level];
    const bool isBits = pArray->element == "BOOL";
    object.name += "[" + std::string(subscripts) + "]";
    for (std::size_t i = 0; i < level.size(); ++i) {
        std::int64_t index = 0;
        const bool isLast = i + 1 == level.size();
        if (!TakeNumber(subscripts, index) || (isLast ? !subscripts.empty() : !subscripts.starts_with(','))) {
            error = object.name + ": takes " + std::to_string(level.size()) + " subscript(s) here";
            return false;
        }
        if (!isLast) subscripts.remove_prefix(1);
        if (index < level[i].low || index > level[i].high) {
            error = object.name + ": the bounds are " + std::to_string(level[i].low) + ".." +
                    std::to_string(level[i].high);
            return false;
        }
        const std::int64_t distance = (index - level[i].low) * level[i].stride;
        if (isBits) object.bits += distance;
        else if (object.isThroughPointer) object.offset += distance;
        else object.address += static_cast<std::uint32_t>(distance);
    }
    if (++object.level < pArray->levels.size()) return true;
    object.pType = m_Image.m_DebugInfo.FindType(pArray->element);
    object.pArray = nullptr;
    if (object.pType) return true;
    error = object.name + ": has a type that the debug file does not describe";
    return false;
}

std::size_t CNames::CountChildren(const NamedObject& object) const
{
    if (object.pType) return object.pType->isStruct ? object.pType->members.size() : 0;
    if (!object.pArray) return 0;
    // No array has more elements than memory has bits; what a file claims beyond is cut.
    constexpr std::uint64_t most = std::uint64_t{8} << g_AddressBits;
    std::uint64_t count = 1;
    for (const ArrayShape::Dimension& dimension : object.pArray->levels[object.level]) {
        if (dimension.high < dimension.low) return 0;
        const std::uint64_t span = static_cast<std::uint64_t>(dimension.high) - static_cast<std::uint64_t>(dimension.low);
        count *= std::min(span, most - 1) + 1;
        count = std::min(count, most);
    }
    return count;
}

// Subscripts of the element at a position; the last dimension runs fastest.
static std::string MakeSubscripts(const std::vector<ArrayShape::Dimension>& level, std::uint64_t position)
{
    std::string subscripts;
    for (std::size_t i = level.size(); i-- > 0;) {
        const std::uint64_t count =
            static_cast<std::uint64_t>(level[i].high) - static_cast<std::uint64_t>(level[i].low) + 1;
        const std::uint64_t index = static_cast<std::uint64_t>(level[i].low) + (count == 0 ? position : position % count);
        position = count == 0 ? 0 : position / count;
        subscripts.insert(0, std::to_string(static_cast<std::int64_t>(index)) + (subscripts.empty() ? "" : ","));
    }
    return subscripts;
}

std::vector<NamedObject> CNames::GetChildren(const NamedObject& object, std::size_t first, std::size_t most) const
{
    std::vector<NamedObject> children;
    std::string error;
    const std::size_t count = CountChildren(object);
    const std::size_t end = first + std::min(most, count - std::min(first, count));
    for (std::size_t i = first; i < end; ++i) {
        NamedObject child = object;
        const bool isFound = object.pType
                                 ? EnterMember(child, object.pType->members[i], error)
                                 : EnterElement(child, MakeSubscripts(object.pArray->levels[object.level], i), error);
        if (isFound) children.push_back(std::move(child));
    }
    return children;
}

// ---- Values

bool CNames::GetAddress(const CMachine& machine, const NamedObject& object, std::uint32_t& address,
                        std::string& error) const
{
    std::uint32_t byte = object.address;
    std::int64_t bits = object.bits;
    if (object.isThroughPointer) {
        MachineValue pointer;
        if (!machine.Read(object.address, ValueKind::U32, pointer)) {
            error = object.name + ": its pointer lies outside of memory";
            return false;
        }
        byte = (static_cast<std::uint32_t>(pointer.integer) & g_AddressMask) + static_cast<std::uint32_t>(object.offset);
        bits += static_cast<std::uint32_t>(pointer.integer) >> g_AddressBits;
    }
    byte += static_cast<std::uint32_t>(bits / 8 * m_Image.m_DebugInfo.m_BoolAlign);
    const bool isBool = object.pType && object.pType->kind == ValueKind::Bool && !object.pType->isStruct;
    address = byte | (isBool ? static_cast<std::uint32_t>(bits % 8) << g_AddressBits : 0);
    return true;
}

bool CNames::Read(const CMachine& machine, const NamedObject& object, MachineValue& value, std::string& error) const
{
    if (!object.IsScalar()) {
        error = object.name + ": is no single value but " + (object.pType ? "a structure" : "an array");
        return false;
    }
    std::uint32_t address = 0;
    if (!GetAddress(machine, object, address, error)) return false;
    if (machine.Read(address, object.pType->kind, value)) return true;
    error = object.name + ": lies outside of memory";
    return false;
}

bool CNames::Write(CMachine& machine, const NamedObject& object, const MachineValue& value, std::string& error) const
{
    if (!object.IsScalar()) {
        error = object.name + ": is no single value but " + (object.pType ? "a structure" : "an array");
        return false;
    }
    std::uint32_t address = 0;
    if (!GetAddress(machine, object, address, error)) return false;
    if (machine.Write(address, value)) return true;
    error = object.name + ": lies outside of memory";
    return false;
}
