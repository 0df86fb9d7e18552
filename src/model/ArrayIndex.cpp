#include "model/ArrayIndex.h"

#include "files/Fatal.h"
#include "frontend/ErrorHandler.h"

#include <algorithm>

// Products stop here: far above any memory, and far enough from 64 bits to be multiplied by an element's size.
constexpr std::int64_t g_LargestProduct = std::int64_t{1} << 40;

static std::int64_t MultiplySaturating(std::int64_t a, std::int64_t b)
{
    if (a <= 0 || b <= 0) return 0;
    if (a > g_LargestProduct / b) return g_LargestProduct;
    return a * b;
}

void CIndex::Set(std::int32_t a, std::int32_t b)
{
    m_Low = std::min(a, b);
    m_High = std::max(a, b);
}

std::int64_t CIndex::GetSize() const
{
    return std::int64_t{m_High} - m_Low + 1;
}

void CIndex::Check(std::int32_t value, const SourceLocation& position, CErrorHandler& errors) const
{
    if (value < m_Low || value > m_High) errors.ErrIndexExceeds(position);
}

std::int64_t CArrayIndex::GetSize(int dimension) const
{
    if (dimension < 0 || dimension >= GetDimensionCount()) InternalFault("an array has no dimension of that number");
    return m_Dimensions[static_cast<std::size_t>(dimension)].GetSize();
}

std::int64_t CArrayIndex::GetProduct() const
{
    std::int64_t product = 1;
    for (const CIndex& index : m_Dimensions) product = MultiplySaturating(product, index.GetSize());
    return product;
}

std::int64_t CArrayIndex::GetTotalSize() const
{
    std::int64_t total = GetSize(0);
    for (int i = 1; i < GetDimensionCount(); ++i) {
        const std::int64_t squared = MultiplySaturating(total, total);
        total = MultiplySaturating(squared, GetSize(i));
    }
    return total;
}

std::unique_ptr<CArrayIndex> CArrayIndex::Clone() const
{
    return std::make_unique<CArrayIndex>(*this);
}

void CArrayOfArrayIndex::Add(std::unique_ptr<CArrayIndex> pIndex)
{
    if (!pIndex) InternalFault("an array level needs its index");
    m_Levels.push_back(std::move(pIndex));
}

void CArrayOfArrayIndex::CopyFrom(const CArrayOfArrayIndex& other)
{
    std::vector<std::unique_ptr<CArrayIndex>> levels;
    levels.reserve(other.m_Levels.size());
    for (const std::unique_ptr<CArrayIndex>& pLevel : other.m_Levels) levels.push_back(pLevel->Clone());
    m_Levels = std::move(levels);
}

std::unique_ptr<CArrayOfArrayIndex> CArrayOfArrayIndex::Clone() const
{
    std::unique_ptr<CArrayOfArrayIndex> pClone = std::make_unique<CArrayOfArrayIndex>();
    pClone->CopyFrom(*this);
    return pClone;
}

CArrayIndex* CArrayOfArrayIndex::GetLevel(int level) const
{
    if (level < 0 || level >= GetLevelCount()) return nullptr;
    return m_Levels[static_cast<std::size_t>(level)].get();
}

int CArrayOfArrayIndex::GetDimensionCount(int level) const
{
    const CArrayIndex* pLevel = GetLevel(level);
    return pLevel ? pLevel->GetDimensionCount() : 0;
}

std::int64_t CArrayOfArrayIndex::GetSize(int level, int dimension) const
{
    const CArrayIndex* pLevel = GetLevel(level);
    if (!pLevel) InternalFault("an array has no level of that number");
    return pLevel->GetSize(dimension);
}

std::int64_t CArrayOfArrayIndex::GetElementCount() const
{
    std::int64_t count = 1;
    for (const std::unique_ptr<CArrayIndex>& pLevel : m_Levels) count = MultiplySaturating(count, pLevel->GetProduct());
    return count;
}
