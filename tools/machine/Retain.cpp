#include "machine/Retain.h"

#include "files/FileReplacement.h"
#include "files/FileSystem.h"

#include <cstdint>
#include <cstdio>
#include <fstream>
#include <unordered_map>

// The file is text, a line for each scalar: name, type, place and bytes, tabs between them.
constexpr std::string_view g_Title = "norvane retain 1";

namespace
{

struct StoredEntry
{
    std::string type;
    std::string place;
    std::string bytes;
};

}   // namespace

std::vector<CRetainFile::Entry> CRetainFile::Collect() const
{
    std::vector<Entry> entries;
    std::vector<NamedObject> open;
    const std::uint32_t begin = m_Image.GetRegion(MemoryArea::Retain, 0).begin;
    for (const DebugVariable& variable : m_Image.m_DebugInfo.m_Globals) {
        if (!variable.isRetain) continue;
        const std::optional<NamedObject> whole = m_Names.GetGlobal(variable);
        if (!whole) continue;
        const bool isLocated = m_Image.m_Listing.m_LocatedGlobals.contains(variable.name);
        open.push_back(*whole);
        while (!open.empty()) {
            const NamedObject object = std::move(open.back());
            open.pop_back();
            if (object.isThroughPointer) continue;   // set anew by every call
            if (!object.IsScalar()) {
                std::vector<NamedObject> children = m_Names.GetChildren(object, 0, SIZE_MAX);
                open.insert(open.end(), std::make_move_iterator(children.rbegin()),
                            std::make_move_iterator(children.rend()));
                continue;
            }
            std::string place = isLocated ? std::to_string(object.address)
                                          : "retain+" + std::to_string(object.address - begin);
            if (object.pType->kind == ValueKind::Bool) place += "." + std::to_string(object.bits);
            entries.push_back({object, std::move(place)});
        }
    }
    return entries;
}

static std::string ToHex(const MachineValue& value)
{
    const std::uint64_t cell = static_cast<std::uint64_t>(ToCell(value));
    std::string text;
    for (int i = 0; i < GetSizeBytes(value.kind); ++i) {
        char digits[3];
        std::snprintf(digits, sizeof digits, "%02X", static_cast<unsigned>((cell >> (8 * i)) & 0xFF));
        text += digits;
    }
    return text;
}

static bool FromHex(const std::string& text, ValueKind kind, MachineValue& value)
{
    if (text.size() != static_cast<std::size_t>(GetSizeBytes(kind)) * 2) return false;
    std::uint64_t cell = 0;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const std::size_t digit = std::string_view("0123456789ABCDEF").find(text[i]);
        if (digit == std::string_view::npos) return false;
        const std::size_t shift = i / 2 * 8 + (i % 2 == 0 ? 4 : 0);
        cell |= static_cast<std::uint64_t>(digit) << shift;
    }
    value = FromCell(static_cast<std::int64_t>(cell), kind);
    return true;
}

bool CRetainFile::Save(const std::string& fileName, const CMachine& machine, std::string& error) const
{
    std::string text(g_Title);
    text += '\n';
    for (const Entry& entry : Collect()) {
        MachineValue value;
        if (!m_Names.Read(machine, entry.object, value, error)) return false;
        text += entry.object.name + "\t" + entry.object.pType->baseName + "\t" + entry.place + "\t" + ToHex(value) + "\n";
    }
    // Written beside and put in place whole, so that a full disk leaves the earlier file.
    FileReplacement replacement;
    if (replacement.Prepare(fileName)) {
        std::ofstream file(replacement.GetWorkName(), std::ios::binary);
        file << text;
        file.close();
        if (file && replacement.TakePlace()) return true;
    }
    error = fileName + ": cannot be written";
    return false;
}

static bool ReadEntries(const std::string& text, std::unordered_map<std::string, StoredEntry>& stored,
                        std::vector<std::string>& order)
{
    std::size_t position = 0;
    bool isFirst = true;
    while (position < text.size()) {
        const std::size_t end = std::min(text.find('\n', position), text.size());
        const std::string line = text.substr(position, end - position);
        position = end + 1;
        if (isFirst) {
            if (line != g_Title) return false;
            isFirst = false;
            continue;
        }
        const std::size_t first = line.find('\t');
        const std::size_t second = first == std::string::npos ? first : line.find('\t', first + 1);
        const std::size_t third = second == std::string::npos ? second : line.find('\t', second + 1);
        if (third == std::string::npos) return false;
        const std::string name = line.substr(0, first);
        order.push_back(name);
        stored[name] = {line.substr(first + 1, second - first - 1), line.substr(second + 1, third - second - 1),
                        line.substr(third + 1)};
    }
    return !isFirst;
}

bool CRetainFile::Load(const std::string& fileName, bool byName, CMachine& machine, bool& isFound,
                       std::string& error) const
{
    isFound = FileExists(fileName);
    if (!isFound) return true;
    std::string text;
    std::unordered_map<std::string, StoredEntry> stored;
    std::vector<std::string> order;
    if (!ReadWholeFile(fileName, text) || !ReadEntries(text, stored, order)) {
        error = fileName + ": is no file of retained variables";
        return false;
    }
    const std::vector<Entry> entries = Collect();
    std::string differences;
    std::unordered_map<std::string, bool> known;
    for (const Entry& entry : entries) {
        known[entry.object.name] = true;
        const auto found = stored.find(entry.object.name);
        const std::string shown = "\n  " + entry.object.name + ": ";
        if (found == stored.end()) differences += shown + "is new";
        else if (found->second.type != entry.object.pType->baseName)
            differences += shown + "was " + found->second.type + " and is " + entry.object.pType->baseName;
        else if (found->second.place != entry.place)
            differences += shown + "moved from " + found->second.place + " to " + entry.place;
    }
    for (const std::string& name : order)
        if (!known.contains(name)) differences += "\n  " + name + ": is gone";
    if (!differences.empty() && !byName) {
        error = fileName + ": the program's retained variables lie elsewhere than when it was written" + differences;
        return false;
    }
    for (const Entry& entry : entries) {
        const auto found = stored.find(entry.object.name);
        if (found == stored.end() || found->second.type != entry.object.pType->baseName) continue;
        MachineValue value;
        if (!FromHex(found->second.bytes, entry.object.pType->kind, value)) {
            error = fileName + ": the bytes of " + entry.object.name + " are no " + found->second.type;
            return false;
        }
        if (!m_Names.Write(machine, entry.object, value, error)) return false;
    }
    return true;
}
