#pragma once

#include "machine/ValueKind.h"

#include <cstdint>
#include <map>
#include <string>
#include <string_view>
#include <vector>

class CXmlNode;

// What the debug file (.dbi) of a compile tells: sources, POUs, stacks, globals and types. Sizes are in bytes
// unless the name says bits.

struct DebugPou
{
    std::string name;
    std::string kind;               // "FUNCTION", "FUNCTION_BLOCK" or "PROGRAM"
    int id = -1;                    // of a program
    int localSize = 0;
    bool isUsed = false;
};

struct DebugVariable                // a global, or a member of a structure
{
    std::string name;
    std::string typeText;           // "INT", "tank", "INT[0..9,1..2][5..6]"
    std::string displacement;       // strides of an array's dimensions, "[8,4][2]"; bits if BOOL
    std::string memberClass;        // of a member of a function block: "InOut", "Input", "Output" or empty
    std::int32_t offset = -1;
    int bit = -1;                   // -1: none
    bool isRetain = false;
    bool isConstant = false;
};

struct DebugType
{
    std::string name;
    std::string baseName;           // behind aliases; of a structure its own name
    bool isStruct = false;          // a structure or a function block
    bool isFunctionBlock = false;
    bool isText = false;            // STRING, which is closed on the machine: instructions of it can't be run
    ValueKind kind = ValueKind::S64;
    int align = 1;
    int sizeBits = 0;               // as the file tells it; 0 of a structure
    std::vector<DebugVariable> members;
};

struct DebugStack
{
    int size = 0;
    int maxSize = 0;
    int maxDepth = 0;               // of the return stack: the deepest use of a program,
    int maxNestedDepth = 0;         // and the sum over all programs
};

struct DebugSigns                   // checksums
{
    int global = 0;
    int retain = 0;
    int debugFile = 0;
};

class CDebugInfo
{
public:
    // False, with the reason in `error`, if the file can't be read or describes a type that no machine of this
    // kind can hold.
    bool Load(const std::string& fileName, std::string& error);
    bool Read(std::string_view text, const std::string& shownName, std::string& error);   // the same of a text

    // The type of a suffix or a member: exactly, else in lower case, else one of the elementary types that the
    // target doesn't allow. Null if there is none.
    const DebugType* FindType(std::string_view name) const;
    const DebugPou* FindPou(std::string_view name) const;   // in any case; null if there is none
    const std::vector<const DebugType*>& GetTypes() const { return m_TypeOrder; }   // those of the file, in its order

    std::string m_ProgramName;
    std::string m_ProgramVersion;
    std::string m_FileTime;         // as printed: a signed number
    DebugSigns m_Signs;
    std::vector<std::string> m_Sources;
    std::vector<DebugPou> m_Pous;
    std::vector<DebugVariable> m_Globals;
    DebugStack m_ReturnStack;
    DebugStack m_ParameterStack;
    // Bytes of return stack that a call takes: local memory raised to a multiple of the first, plus the second.
    int m_ReturnStackAlign = 1;
    int m_CallOverload = 0;
    int m_GlobalUsed = 0;
    int m_RetainUsed = 0;
    int m_BoolAlign = 1;            // bytes that eight packed BOOLs take

private:
    bool ReadTypes(const CXmlNode& node, const std::string& shownName, std::string& error);
    void AddMissingTypes();
    bool ReadDocument(const CXmlNode& root, const std::string& shownName, std::string& error);

    std::map<std::string, DebugType, std::less<>> m_Types;
    std::vector<const DebugType*> m_TypeOrder;
    std::map<std::string, std::size_t, std::less<>> m_PouByName;   // lower case
};
