#pragma once

#include <cstdint>
#include <string>
#include <vector>

// What a build is, as far as its listing (.asm), its debug file (.dbi) and the target description tell: what lies
// where, which POU takes how much, what calls what. Plain data; CBuildReader fills it, renderers and the comparison
// read it. Positions in other lists are int, -1 for none. Places within an area are counted in bits, so that a BOOL
// has one of its own.

constexpr std::int64_t g_BitsOfByte = 8;

enum class AreaKind : std::uint8_t   // ORDER AREA
{
    Global,
    Retain,
    Input,
    Output,
    Memory,
    Located,   // addresses of which neither the listing nor a target says to which area they belong
    Local      // of a program
};

struct BitRange
{
    std::int64_t begin = 0;
    std::int64_t end = 0;

    std::int64_t Bits() const { return end - begin; }
    bool operator==(const BitRange&) const = default;
};

struct VariableFacts
{
    std::string name;
    std::string owner;            // the POU that it is a variable of; empty of a global
    std::string typeText;         // as the debug file has it; empty: the code doesn't tell
    std::string address;          // "%MW4" where an address was declared and the listing tells it
    int area = -1;                // -1: it has no place, since its value replaces it
    BitRange place;               // whole bytes of all but a BOOL; of what the code alone names, as far as it does
    bool isRetain = false;
    bool isConstant = false;
    bool isLocated = false;       // by AT
    bool isFromCode = false;      // known by the code alone: a program's own variable
    std::int64_t uses = 0;        // instructions that name it
    std::int64_t overlaps = 0;    // other variables that share a bit with it
    std::vector<int> overlapping; // some of them
};

struct AreaFacts
{
    AreaKind kind = AreaKind::Global;
    std::string name;             // "global", "retain", "input", "local memory of main"
    std::string program;          // of local memory
    std::int64_t begin = 0;       // first address; 0 of all but input, output and memory
    std::int64_t size = -1;       // bytes; -1: only the target description tells
    std::int64_t counted = -1;    // bytes in use as the debug file counts them; -1: it doesn't
    std::int64_t endByte = 0;     // behind the last byte that something lies in
    std::int64_t takenBytes = 0;  // bytes that something lies in, each once
    std::int64_t spareBits = 0;   // of these bytes, bits that nothing lies in
    std::int64_t overlaps = 0;    // pairs of variables that share bits
    std::vector<int> entries;     // variables, by place
    std::vector<BitRange> gaps;   // whole bytes in front of endByte that nothing lies in

    bool HasAddresses() const { return kind >= AreaKind::Input && kind <= AreaKind::Located; }
    // Up to the last one of an area that is filled from its start; of one with addresses those that are taken.
    std::int64_t UsedBytes() const
    {
        if (HasAddresses()) return takenBytes;
        return endByte > counted ? endByte : counted;
    }
};

struct PouFacts
{
    std::string name;             // with the "__1" of the second function of a name
    std::string kind;             // "FUNCTION", "FUNCTION_BLOCK", "PROGRAM", "INITIALIZATION"
    std::string fileName;         // empty: made by the compiler
    int line = 0;
    int id = -1;                  // of a program
    bool isUsed = true;           // its code is in the listing
    std::int64_t instructions = 0;
    std::int64_t localBytes = 0;
    std::int64_t frameBytes = 0;  // of return stack that a call takes: local memory raised, and the call itself
    std::int64_t depthBytes = 0;  // of return stack with all that it calls
    int deepestCallee = -1;       // on the way to that depth
    std::vector<int> callees;     // each once, in the order of first call
    std::int64_t callers = 0;     // POUs that call it
    int highestCells = 0;         // of parameter stack, with all that it calls
    int lowestCells = 0;          // below 0: it takes what it was not given
    std::uint64_t codeHash = 0;   // of its instructions; labels count by where they lead
    std::uint64_t nameHash = 0;   // the same with variables by their names in place of their addresses
};

struct ProgramFacts
{
    int pou = -1;
    std::vector<int> path;        // of POUs to the deepest return stack, itself first
    std::vector<int> cellPath;    // to the highest parameter stack
    std::string cellPlace;        // "main.st(12)": the line there; empty: none told
};

struct TypeFacts
{
    std::string name;
    std::string kind;             // "STRUCT", "FUNCTION_BLOCK"; of others the type behind the name
    std::int64_t bits = 0;
    struct Member
    {
        std::string name;
        std::string typeText;
        std::string role;         // "Input", "Output", "InOut" or empty
        BitRange place;
    };
    std::vector<Member> members;
};

struct MessageFacts
{
    enum Kind { Error, Warning, Note };

    Kind kind = Note;
    std::string text;             // the whole line
};

struct StackFacts
{
    std::int64_t returnSize = 0;      // bytes
    std::int64_t returnMaxSize = 0;
    std::int64_t deepest = 0;         // of one program
    std::int64_t nested = 0;          // the sum over all programs
    bool isNested = true;             // programs can interrupt each other, so that the sum counts
    std::int64_t parameterSize = 0;
    std::int64_t parameterMaxSize = 0;
    int cellBytes = 4;                // of parameter stack that a value takes
    int highestCells = 0;             // of one program
    bool isBalanced = true;           // the walk came to each instruction with the same height
};

struct BuildFacts
{
    std::string listingName;
    std::string programName;
    std::string version;
    std::string fileTime;
    bool hasTarget = false;
    std::vector<std::string> sources;
    int globalSign = 0;
    int retainSign = 0;
    int debugSign = 0;
    StackFacts stacks;
    std::vector<AreaFacts> areas;
    std::vector<VariableFacts> variables;   // globals as the debug file lists them, then what the code alone names
    std::vector<PouFacts> pous;             // as the listing has them
    std::vector<ProgramFacts> programs;     // in the target's order, without one in the listing's
    std::vector<TypeFacts> types;
    std::vector<MessageFacts> messages;     // of the compiler, as far as given
    std::vector<std::string> findings;      // what a reader should look at
    std::uint64_t contentHash = 0;          // of both files without their stamps

    const AreaFacts* FindArea(AreaKind kind) const
    {
        for (const AreaFacts& area : areas)
            if (area.kind == kind) return &area;
        return nullptr;
    }
};
