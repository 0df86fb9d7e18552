#include "codegen/TextPieces.h"

#include <gtest/gtest.h>

TEST(TextPiecesTest, SuffixAndPlace)
{
    EXPECT_EQ(MakeText(TypeSuffix{"INT"}), "(INT)");
    EXPECT_EQ(MakeText(MemoryPlace{"local+", 4}), "[local+4]");
    EXPECT_EQ(MakeText(MemoryPlace{"", -1, 7}), "[-1].7");
    EXPECT_EQ(MakeText(MemoryPlace{"global+", 0, -1}), "[global+0].-1") << "whatever the bit is, it is shown";
    EXPECT_EQ(MakeText(VariableOperand{{"BOOL"}, {"retain+", 12, 3}, "on"}), "(BOOL) [retain+12].3 ; on");
}

TEST(TextPiecesTest, OffsetsThatTravelWithABit)
{
    EXPECT_EQ(MakeText(CommentedOffset(5, 3)), "50331653\t;0x03000005");
    EXPECT_EQ(MakeText(CommentedOffset(0xABCDE, 0)), "703710\t;0x000ABCDE");
    EXPECT_EQ(MakeText(CommentedOffset(0, 255)), "-16777216\t;0xFF000000");
    EXPECT_EQ(MakeText(PackedOffset{5, 0}), "5");
    EXPECT_EQ(MakeText(PackedOffset{5, -1}), "5");
    EXPECT_EQ(MakeText(PackedOffset{-5, 0}), "-5");
    EXPECT_EQ(MakeText(PackedOffset{5, 3}), "50331653\t;0x03000005");
}

TEST(TextPiecesTest, FunctionLabelsAndCapitals)
{
    EXPECT_EQ(MakeText(FunctionLabel{"f", 0}), "f");
    EXPECT_EQ(MakeText(FunctionLabel{"f", -1}), "f");
    EXPECT_EQ(MakeText(FunctionLabel{"f_", 12}), "f___12");
    EXPECT_EQ(MakeText(CapitalName{"aZ_1\xE9"}), "AZ_1\xE9");
}
