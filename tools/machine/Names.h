#pragma once

#include "machine/Image.h"
#include "machine/Machine.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

// Variables by name:
//     tank.level, a[3].b, m[1,2]     globals with their members and elements, as the source numbers them
//     %IX0.3, %QW2                   memory with an address of its own; needs a target
//     main.x                         a program's own variable, as far as the comments of its code name it. Elements of
//                                    its arrays count from 0 and along all dimensions, as those comments do
// Capitals don't count.

// An array type taken apart: "INT[0..9,1..2][5..6]" with its strides.
struct ArrayShape
{
    struct Dimension
    {
        std::int64_t low = 0;
        std::int64_t high = 0;
        std::int64_t stride = 0;   // bytes; of BOOL elements bits
    };
    std::string element;
    std::vector<std::vector<Dimension>> levels;   // one for each pair of brackets
};

// Nothing if the text is no array type.
std::shared_ptr<const ArrayShape> ParseArray(std::string_view type, std::string_view displacement);

// The ADDRESS and ADDRESSBIT instructions that go on from the address of an array pushed by an instruction, its first
// subscript first. None if a subscript is computed with calls or jumps.
std::vector<const Instruction*> FollowIndexes(const CListing& listing, int instruction);

struct NamedObject
{
    std::string name;                            // as asked for
    const DebugType* pType = nullptr;            // of a scalar or structure; null of an array
    std::shared_ptr<const ArrayShape> pArray;    // of an array
    std::size_t level = 0;                       // brackets of the array that are behind us
    std::uint32_t address = 0;                   // of the object, or of the pointer to it; no bit number
    std::int64_t offset = 0;                     // behind what the pointer points at
    std::int64_t bits = 0;                       // of a BOOL: from the start of that byte, in packed units
    bool isThroughPointer = false;               // an in-out member: what it points at

    bool IsScalar() const { return pType && !pType->isStruct; }
};

// What comments tell of a POU's own variable: a name, or where `count` isn't 0 the elements "before[0]behind" and on.
struct LocalPart
{
    std::string before;
    std::string behind;
    std::int64_t count = 0;
};

class CNames
{
public:
    explicit CNames(const CImage& image);

    // Nothing, with a reason in `error`, if there is no such name.
    std::optional<NamedObject> Find(std::string_view name, std::string& error) const;
    // What lies in an object: `steps` is ".level" or "[3].b". Nothing, with a reason in `error`, if there is no such.
    std::optional<NamedObject> FindBelow(const NamedObject& object, std::string_view steps, std::string& error) const;
    // Members or elements from the position `first` on, at most `most`; none of a scalar.
    std::vector<NamedObject> GetChildren(const NamedObject& object, std::size_t first, std::size_t most) const;
    std::size_t CountChildren(const NamedObject& object) const;
    // Names that a program's code tells of its own variables, in the order of the code.
    std::vector<std::string> GetLocalNames(std::string_view program) const;
    // The same of a POU of the listing, with the arrays whose elements the code names together. Nothing of a function
    // block, whose variables are members of its instance.
    std::vector<LocalPart> GetLocalParts(int pou) const;
    // A variable of a POU whose memory begins there, by its name alone.
    std::optional<NamedObject> FindLocal(int pou, std::uint32_t begin, std::string_view name, std::string& error) const;
    // The comments of the POU's code tell of a variable of that name, were it only that there is one.
    bool IsLocal(int pou, std::string_view name) const;
    // A structure or array of that POU's that the code names as a whole, and no value of its own.
    bool IsWhole(int pou, std::string_view name) const;
    // The instance of a function block in progress; nothing for other POUs. Good from its first line mark on.
    std::optional<NamedObject> GetInstance(const CMachine& machine, const MachineFrame& frame) const;
    // Parameters and variables of a function in progress, from its header comments, with the frame that they lie in.
    // Of structures and arrays the pointer type is all that is known.
    std::vector<NamedObject> GetFrameVariables(const MachineFrame& frame) const;
    // A global as a whole; nothing for a constant that has no place.
    std::optional<NamedObject> GetGlobal(const DebugVariable& variable) const;

    // The value of a scalar; false, with a reason, if it isn't one or its pointer leads nowhere.
    bool Read(const CMachine& machine, const NamedObject& object, MachineValue& value, std::string& error) const;
    bool Write(CMachine& machine, const NamedObject& object, const MachineValue& value, std::string& error) const;
    // Address with bit number as the machine uses it; through a pointer as it stands now.
    bool GetAddress(const CMachine& machine, const NamedObject& object, std::uint32_t& address,
                    std::string& error) const;

private:
    struct LocalName
    {
        std::string text;                        // as the comment has it
        std::int32_t offset = 0;
        int bit = 0;
        const DebugType* pType = nullptr;
    };
    struct LocalArray                            // a[0] stands for all of its elements
    {
        std::string before;                      // "a"
        std::string behind;                      // ".b"
        std::int32_t offset = 0;
        int bit = 0;
        const DebugType* pType = nullptr;
        std::int64_t count = 0;
        std::int64_t stride = 0;                 // of the last dimension; bits of BOOL elements
    };
    struct PouNames
    {
        std::vector<LocalName> names;
        std::unordered_map<std::string, std::size_t> byName;     // lower case
        std::unordered_map<std::string, LocalArray> arrays;      // by "a[]" and what is behind, lower case
        std::set<std::string, std::less<>> firsts;               // up to the first "." or "[", lower case
        std::set<std::string, std::less<>> wholes;               // structures and arrays of unknown types, lower case
        std::set<std::string, std::less<>> pointers;             // parameters that point at such, lower case
    };

    bool IsPointerType(const DebugType& type) const;
    void FindPointerType();
    const DebugType* FindCalledBlock(int instruction) const;
    void CollectLocals(const ListingPou& pou, PouNames& names);
    void CollectLocalArray(int instruction, std::string_view text, PouNames& names);
    std::optional<NamedObject> FindDirect(std::string_view name, std::string& error) const;
    NamedObject MakeLocal(const LocalName& local, std::uint32_t begin, std::string_view name) const;
    std::optional<NamedObject> FindLocalElement(const PouNames& names, std::uint32_t begin, std::string_view name,
                                                std::string& error) const;
    bool Walk(NamedObject& object, std::string_view steps, std::string& error) const;
    bool EnterMember(NamedObject& object, std::string_view name, std::string& error) const;
    bool EnterMember(NamedObject& object, const DebugVariable& member, std::string& error) const;
    bool EnterElement(NamedObject& object, std::string_view subscripts, std::string& error) const;
    bool SetType(NamedObject& object, const DebugVariable& variable) const;

    const CImage& m_Image;
    const DebugType* m_pPointerType = nullptr;                   // null: the code shows none
    std::unordered_map<std::string, std::size_t> m_Globals;      // lower case
    std::unordered_map<std::string, std::size_t> m_Programs;     // lower case
    std::vector<PouNames> m_Locals;                              // for each POU of the listing; none of blocks
};
