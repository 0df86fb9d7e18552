#pragma once

#include <cstdint>
#include <vector>

class CArrayOfArrayIndex;
class CDataType;
class CErrorHandler;
class CMember;
class CNode;
class CType;
class CTypeArray;
class CTypeStruct;
class CVariable;
class CXmlDocument;
struct SourceLocation;

// Where the next variable goes: a byte, and the next bit in it (0: no byte is open).
struct MemoryCursor
{
    std::int64_t nByte = 0;
    std::int32_t nBit = 0;
};

// The memory areas of the target, and the place of every variable in them. Variables are noted as they
// are declared and placed when the code of a POU begins, so that offsets are final when they are printed.
class CMemoryHandler
{
public:
    CMemoryHandler(CErrorHandler& errors, CDataType& dataTypes, const bool& constantSubstitution);
    virtual ~CMemoryHandler() = default;

    void LoadAreas(CXmlDocument& target);    // the AREA nodes of the loaded target description
    void AddVariable(CVariable* pVariable);  // not owned; notes it in one of the two lists
    void ClearLocalVariables();              // at the end of a POU's scope

    // Places all new variables: retain, local, global. Costs what is new since the last time.
    void AllocatePouVariables();
    // The three steps of it. The first and the last report an area that is too small.
    void AllocateRetainVariables();
    void AllocateLocalVariables();
    void AllocateGlobalVariables();

    // Resolves the variable's AT text and places it; false after a diagnostic at the position.
    bool SetDirectAddress(CVariable* pVariable, const SourceLocation& position, bool checkAlignment);
    // Lays the type out by itself and returns its size in bytes. Without an index an array counts as one
    // dimension from 0 to 10.
    std::int32_t ComputeLayout(CType* pType, const CArrayOfArrayIndex* pIndex, int level);
    // Bytes of the variable and its alignment in bytes, its layout being computed if it isn't known.
    std::int32_t GetVariableSize(const CVariable* pVariable);
    std::int32_t GetVariableAlign(const CVariable* pVariable);
    // Bytes of what an access path ends in, by the bounds that hold there: the variable's own, some levels
    // in, or those of the last member of the path. Of the whole variable for a plain name.
    std::int32_t ComputeAccessSize(const CNode* pNode);
    // Bytes of the whole variable. An array without an index has one element, as when it is placed.
    std::int32_t ComputeVariableLayout(const CVariable* pVariable);

    // A variable that is replaced by its value wherever it is used, and so has no memory: with constant
    // substitution on, a CONSTANT that is no array variable and has no structure type. A parameter never is:
    // its value comes from the caller.
    bool IsSubstituted(const CVariable* pVariable) const;
    // -o1: BOOLs are packed. The retain globals are counted with the plain ones then.
    bool IsPacking() const { return m_OptimiseMemory && !m_CompatibleLayout; }
    // Bytes of a pointer slot: the pointer type's alignment added to itself until it holds its size.
    std::int32_t GetPointerSlotSize() const;

    std::int32_t m_InputSegment = 0, m_InputSize = 0;       // area of %I: first byte and bytes
    std::int32_t m_OutputSegment = 0, m_OutputSize = 0;     // area of %Q
    std::int32_t m_MemorySegment = 0, m_MemorySize = 0;     // area of %M
    std::int32_t m_GlobalSize = 0;                          // bytes
    std::int32_t m_RetainSize = 0;                          // bytes
    // The numbers by which the virtual machine knows each area; -1 until read.
    std::int32_t m_RetainCode = -1, m_GlobalCode = -1, m_InputCode = -1, m_OutputCode = -1;
    std::int32_t m_MemoryCode = -1, m_LocalCode = -1, m_AbsoluteCode = -1;
    std::int32_t m_GlobalBytes = 0, m_GlobalBits = 0;       // cursor of the global area
    std::int32_t m_RetainBytes = 0, m_RetainBits = 0;       // cursor of the retain area
    bool m_CompatibleLayout = false;                        // -b; beats -o1
    bool m_OptimiseMemory = false;                          // -o1
    std::vector<CVariable*> m_LocalVariables;               // not owned: since the last POU ended
    std::vector<CVariable*> m_GlobalVariables;              // not owned: of the whole run

private:
    // What the rules of placement ask of a type, which may be null or an alias (Layout.cpp).
    CType* BaseOf(CType* pType) const;
    const CType* BaseOf(const CType* pType) const { return BaseOf(const_cast<CType*>(pType)); }
    CType* InnermostOf(CType* pType) const;                  // behind all array levels
    static std::int32_t AlignOf(const CType* pType);         // of a base type; an unknown one counts as 1
    static std::int64_t BitsOf(const CType* pType);          // of a base type that is no aggregate

    // The two rules for scalars, and the layout of aggregates. Each moves the cursor behind what it places
    // and returns bytes: for a BOOL by the packed rule only the padding in front of it (Layout.cpp).
    static std::int64_t AllocateBits(const CType* pType, MemoryCursor& cursor, bool& carry);
    std::int64_t AllocateAligned(CType* pType, MemoryCursor& cursor);
    std::int64_t Layout(CType* pType, MemoryCursor& cursor, const CArrayOfArrayIndex* pIndex, int level);
    std::int64_t LayOutArray(CTypeArray* pArray, MemoryCursor& cursor, const CArrayOfArrayIndex* pIndex, int level);
    std::int64_t LayOutStruct(CTypeStruct* pStruct, MemoryCursor& cursor);
    void LayOutInnerStructs(CTypeStruct* pStruct);
    std::int64_t GetCommonAlignment(const CTypeStruct* pStruct);
    void PlaceMember(CMember* pMember, std::int64_t start, MemoryCursor& cursor);
    std::int64_t MeasureLayout(CType* pType, const CArrayOfArrayIndex* pIndex, int level);
    void CompleteLayout(CType* pType);
    std::int64_t GetStringBytes(const CVariable* pVariable) const;

    // The phases (Allocation.cpp).
    void AllocateVariable(CVariable* pVariable, MemoryCursor& cursor);
    void PackVariables(const std::vector<CVariable*>& list, std::size_t first, MemoryCursor& cursor, bool retainOnly);
    void PlaceBits(CVariable* pVariable, MemoryCursor& cursor) const;

    // The address rules (DirectAddress.cpp).
    bool PlaceInArea(CVariable* pVariable, char area, std::int64_t& byte, const SourceLocation& position,
                     bool checkAlignment);
    bool FitsSizeLetter(const CVariable* pVariable, char letter, bool hasBit) const;

    CErrorHandler& m_Errors;
    CDataType& m_DataTypes;
    const bool& m_ConstantSubstitution;
    // m_GlobalVariables before these positions need not be looked at again by the two phases.
    std::size_t m_FirstNewRetain = 0;
    std::size_t m_FirstNewGlobal = 0;
};
