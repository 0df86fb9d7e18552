#pragma once

#include <cstdint>
#include <memory>
#include <vector>

class CErrorHandler;
struct SourceLocation;

// The bounds of one array dimension, both inside it.
class CIndex
{
public:
    CIndex() = default;
    CIndex(std::int32_t a, std::int32_t b) { Set(a, b); }

    void Set(std::int32_t a, std::int32_t b);          // the smaller becomes the low bound
    std::int64_t GetSize() const;                      // number of elements; 64 bits, so it can't overflow
    // Reports a value outside the bounds at the position.
    void Check(std::int32_t value, const SourceLocation& position, CErrorHandler& errors) const;

    std::int32_t m_Low = 0;
    std::int32_t m_High = 0;
};

// The dimensions of one array, outermost first.
class CArrayIndex
{
public:
    virtual ~CArrayIndex() = default;

    int GetDimensionCount() const { return static_cast<int>(m_Dimensions.size()); }
    std::int64_t GetSize(int dimension) const;
    // Product of all sizes; 1 without dimensions. Saturates far above any memory instead of wrapping.
    std::int64_t GetProduct() const;
    // Kept (code): beyond the first dimension the running product is multiplied in twice (r = r * r * size),
    // and default values of arrays are repeated by this number. An internal fault without dimensions.
    std::int64_t GetTotalSize() const;
    std::unique_ptr<CArrayIndex> Clone() const;

    std::vector<CIndex> m_Dimensions;
};

// The index ranges of an array of arrays: one CArrayIndex for each level, outermost first.
class CArrayOfArrayIndex
{
public:
    virtual ~CArrayOfArrayIndex() = default;

    void Add(std::unique_ptr<CArrayIndex> pIndex);
    void CopyFrom(const CArrayOfArrayIndex& other);   // replaces what there is
    std::unique_ptr<CArrayOfArrayIndex> Clone() const;
    int GetLevelCount() const { return static_cast<int>(m_Levels.size()); }
    // Null behind the last level: a path or a member may stand deeper than its index goes.
    CArrayIndex* GetLevel(int level) const;
    int GetDimensionCount(int level) const;            // 0 where there is no such level
    std::int64_t GetSize(int level, int dimension) const;
    CArrayIndex* GetFirst() const { return GetLevel(0); }
    std::int64_t GetElementCount() const;              // product of all sizes of all levels, 1 for none

    std::vector<std::unique_ptr<CArrayIndex>> m_Levels;
};
