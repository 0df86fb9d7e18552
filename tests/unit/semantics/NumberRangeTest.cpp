#include "semantics/NumberRange.h"

#include "model/Type.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <limits>

namespace
{

constexpr std::int64_t g_Lowest = std::numeric_limits<std::int64_t>::min();
constexpr std::int64_t g_Highest = std::numeric_limits<std::int64_t>::max();

struct SizedType : CType
{
    SizedType(const char* szName, std::int32_t sizeBits) : CType(szName) { m_SizeBits = sizeBits; }
};

// Both sides of both ends.
void ExpectRange(bool (*holds)(const CType*, std::int64_t), const CType& type, std::int64_t low, std::int64_t high)
{
    EXPECT_FALSE(holds(&type, low - 1)) << type.m_Name;
    EXPECT_TRUE(holds(&type, low)) << type.m_Name;
    EXPECT_TRUE(holds(&type, high)) << type.m_Name;
    EXPECT_FALSE(holds(&type, high + 1)) << type.m_Name;
}

}   // namespace

TEST(NumberRangeTest, StoredNumbers)
{
    ExpectRange(HoldsNumber, SizedType("SINT", 8), -128, 127);
    ExpectRange(HoldsNumber, SizedType("DINT", 32), -2147483648, 2147483647);
    ExpectRange(HoldsNumber, SizedType("UINT", 16), 0, 65535);
    ExpectRange(HoldsNumber, SizedType("WORD", 16), -32768, 65535);
    ExpectRange(HoldsNumber, SizedType("BOOL", 1), -1, 1);
    ExpectRange(HoldsNumber, SizedType("INT", 12), -2048, 2047);   // the target says how wide a type is
}

TEST(NumberRangeTest, ComparedNumbersHaveNoSignAmongBits)
{
    ExpectRange(HoldsComparedNumber, SizedType("WORD", 16), 0, 65535);
    ExpectRange(HoldsComparedNumber, SizedType("INT", 16), -32768, 32767);
    ExpectRange(HoldsComparedNumber, SizedType("UDINT", 32), 0, 4294967295);
}

TEST(NumberRangeTest, SixtyFourBitsHoldWhatALiteralCanBe)
{
    const SizedType whole("LINT", 64);
    const SizedType bits("LWORD", 64);
    const SizedType counted("ULINT", 64);
    EXPECT_TRUE(HoldsNumber(&whole, g_Lowest));
    EXPECT_TRUE(HoldsNumber(&whole, g_Highest));
    EXPECT_TRUE(HoldsNumber(&bits, g_Highest));
    EXPECT_TRUE(HoldsNumber(&counted, g_Highest));
    EXPECT_FALSE(HoldsNumber(&counted, -1));
}

TEST(NumberRangeTest, OtherTypesHoldAnything)
{
    const SizedType real("REAL", 32);
    EXPECT_TRUE(HoldsNumber(&real, g_Lowest));
    const CType unknown{"DINT"};   // without a size
    EXPECT_TRUE(HoldsNumber(&unknown, g_Highest));
}
