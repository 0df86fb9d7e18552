#pragma once

#include "machine/DebugInfo.h"
#include "machine/Names.h"
#include "report/BuildFacts.h"

#include <cstdint>
#include <string>
#include <unordered_map>

// Bytes that a variable of a type takes. The debug file tells the sizes of elementary types and the places of members;
// those of structures and arrays follow from them.
class CTypeSizes
{
public:
    CTypeSizes(const CDebugInfo& debugInfo, int pointerBytes);

    // 1 of a BOOL, which is one bit of them; -1 of a type that isn't described.
    std::int64_t GetBytes(const DebugVariable& variable) const;
    std::int64_t GetBytes(const std::string& typeName) const;   // of a type by its name, no array
    bool IsBit(const DebugVariable& variable) const;            // a BOOL that is no array
    BitRange GetPlace(const DebugVariable& variable, std::int64_t offset) const;

private:
    std::int64_t GetArrayBytes(const ArrayShape& shape) const;
    std::int64_t ComputeStructure(const DebugType& type) const;

    const CDebugInfo& m_DebugInfo;
    int m_PointerBytes;   // that an in-out member takes
    std::unordered_map<std::string, std::int64_t> m_Structures;
};
