#include "model/ArrayIndex.h"

#include "frontend/ErrorHandler.h"
#include "frontend/SourceLocation.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <limits>
#include <memory>
#include <utility>

namespace
{

constexpr std::int32_t g_Lowest = std::numeric_limits<std::int32_t>::min();
constexpr std::int32_t g_Highest = std::numeric_limits<std::int32_t>::max();

std::unique_ptr<CArrayIndex> MakeIndex(std::initializer_list<CIndex> dimensions)
{
    std::unique_ptr<CArrayIndex> pIndex = std::make_unique<CArrayIndex>();
    pIndex->m_Dimensions = dimensions;
    return pIndex;
}

}   // namespace

TEST(IndexTest, SetSortsTheBounds)
{
    CIndex index;
    index.Set(5, 2);
    EXPECT_EQ(index.m_Low, 2);
    EXPECT_EQ(index.m_High, 5);
    index.Set(-3, 4);
    EXPECT_EQ(index.m_Low, -3);
    EXPECT_EQ(index.m_High, 4);
}

TEST(IndexTest, Size)
{
    EXPECT_EQ(CIndex(2, 5).GetSize(), 4);
    EXPECT_EQ(CIndex(7, 7).GetSize(), 1);
    EXPECT_EQ(CIndex(-1, 1).GetSize(), 3);
    EXPECT_EQ(CIndex(g_Lowest, g_Highest).GetSize(), 4294967296);
}

TEST(IndexTest, CheckReportsValuesOutside)
{
    const CIndex index(2, 5);
    const SourceLocation where{4, 8, 4, 9, "a.st"};
    CErrorHandler errors;
    testing::internal::CaptureStdout();
    index.Check(2, where, errors);
    index.Check(5, where, errors);
    EXPECT_EQ(errors.GetErrorCount(), 0);
    index.Check(1, where, errors);
    index.Check(6, where, errors);
    EXPECT_EQ(errors.GetErrorCount(), 2);
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "a.st(4,8) : error: index exceeds array dimension \n"
                                                      "a.st(4,8) : error: index exceeds array dimension \n");
}

TEST(ArrayIndexTest, SizesAndProduct)
{
    const std::unique_ptr<CArrayIndex> pIndex = MakeIndex({{0, 1}, {1, 3}, {0, 3}});
    EXPECT_EQ(pIndex->GetDimensionCount(), 3);
    EXPECT_EQ(pIndex->GetSize(0), 2);
    EXPECT_EQ(pIndex->GetSize(1), 3);
    EXPECT_EQ(pIndex->GetSize(2), 4);
    EXPECT_EQ(pIndex->GetProduct(), 24);
    EXPECT_EQ(CArrayIndex().GetProduct(), 1);
}

// One dimension counts once; each further one multiplies what there is by itself and by its size.
TEST(ArrayIndexTest, TotalSizeMultipliesTwice)
{
    EXPECT_EQ(MakeIndex({{0, 4}})->GetTotalSize(), 5);
    EXPECT_EQ(MakeIndex({{0, 1}, {0, 2}})->GetTotalSize(), 2 * 2 * 3);
    EXPECT_EQ(MakeIndex({{0, 1}, {0, 2}, {0, 1}})->GetTotalSize(), 12 * 12 * 2);
}

TEST(ArrayIndexTest, HugeProductsStayPositive)
{
    const std::unique_ptr<CArrayIndex> pIndex =
        MakeIndex({{g_Lowest, g_Highest}, {g_Lowest, g_Highest}, {g_Lowest, g_Highest}});
    EXPECT_GT(pIndex->GetProduct(), 4294967296);
    EXPECT_GT(pIndex->GetTotalSize(), 4294967296);
}

TEST(ArrayIndexDeathTest, NoSuchDimension)
{
    const CArrayIndex empty;
    EXPECT_EXIT(empty.GetTotalSize(), testing::ExitedWithCode(3), "internal fault: ");
    EXPECT_EXIT(empty.GetSize(0), testing::ExitedWithCode(3), "internal fault: ");
    EXPECT_EXIT(MakeIndex({{0, 1}})->GetSize(-1), testing::ExitedWithCode(3), "internal fault: ");
}

TEST(ArrayIndexTest, CloneIsSeparate)
{
    const std::unique_ptr<CArrayIndex> pIndex = MakeIndex({{0, 4}});
    const std::unique_ptr<CArrayIndex> pClone = pIndex->Clone();
    pIndex->m_Dimensions[0].Set(0, 9);
    ASSERT_EQ(pClone->GetDimensionCount(), 1);
    EXPECT_EQ(pClone->GetSize(0), 5);
}

TEST(ArrayOfArrayIndexTest, LevelsAndCounts)
{
    CArrayOfArrayIndex index;
    EXPECT_EQ(index.GetElementCount(), 1);
    EXPECT_EQ(index.GetLevelCount(), 0);
    EXPECT_EQ(index.GetFirst(), nullptr);
    index.Add(MakeIndex({{0, 1}, {0, 2}}));
    index.Add(MakeIndex({{1, 4}}));
    EXPECT_EQ(index.GetLevelCount(), 2);
    EXPECT_EQ(index.GetFirst(), index.GetLevel(0));
    EXPECT_EQ(index.GetDimensionCount(0), 2);
    EXPECT_EQ(index.GetDimensionCount(1), 1);
    EXPECT_EQ(index.GetSize(0, 1), 3);
    EXPECT_EQ(index.GetSize(1, 0), 4);
    EXPECT_EQ(index.GetElementCount(), 24);
}

TEST(ArrayOfArrayIndexTest, NoSuchLevel)
{
    const CArrayOfArrayIndex index;
    EXPECT_EQ(index.GetLevel(0), nullptr);
    EXPECT_EQ(index.GetLevel(-1), nullptr);
    EXPECT_EQ(index.GetDimensionCount(3), 0);
    EXPECT_EXIT(index.GetSize(0, 0), testing::ExitedWithCode(3), "internal fault: ");
}

TEST(ArrayOfArrayIndexTest, CopyReplacesAndIsSeparate)
{
    CArrayOfArrayIndex index;
    index.Add(MakeIndex({{0, 4}}));
    CArrayOfArrayIndex copy;
    copy.Add(MakeIndex({{0, 99}}));
    copy.Add(MakeIndex({{0, 99}}));
    copy.CopyFrom(index);
    const std::unique_ptr<CArrayOfArrayIndex> pClone = index.Clone();
    index.GetFirst()->m_Dimensions[0].Set(0, 9);
    EXPECT_EQ(copy.GetLevelCount(), 1);
    EXPECT_EQ(copy.GetElementCount(), 5);
    EXPECT_EQ(pClone->GetElementCount(), 5);
    copy.CopyFrom(copy);
    EXPECT_EQ(copy.GetElementCount(), 5);
}
