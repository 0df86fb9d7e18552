#include "codegen/Label.h"

#include <gtest/gtest.h>

TEST(LabelTest, NumbersFromOneWithFourDigits)
{
    CLabel labels;
    EXPECT_EQ(labels.NewLabel(), "LABEL0001");
    EXPECT_EQ(labels.NewLabel(), "LABEL0002");
    EXPECT_EQ(labels.m_Counter, 2);
}

TEST(LabelTest, GoesOnBehindFourDigits)
{
    CLabel labels;
    labels.m_Counter = 9998;
    EXPECT_EQ(labels.NewLabel(), "LABEL9999");
    EXPECT_EQ(labels.NewLabel(), "LABEL10000");
}

TEST(LabelTest, FormatsAnyNumber)
{
    EXPECT_EQ(CLabel::FormatLabel(7), "LABEL0007");
    EXPECT_EQ(CLabel::FormatLabel(123456), "LABEL123456");
}

TEST(LabelTest, DrawsTheReturnLabelOnce)
{
    CLabel labels;
    labels.NewLabel();
    EXPECT_FALSE(labels.HasReturnLabel());
    EXPECT_EQ(labels.GetReturnLabel(), "LABEL0002");
    EXPECT_TRUE(labels.HasReturnLabel());
    EXPECT_EQ(labels.NewLabel(), "LABEL0003");
    EXPECT_EQ(labels.GetReturnLabel(), "LABEL0002");
}

TEST(LabelTest, ClearingTheReturnLabelKeepsTheCounter)
{
    CLabel labels;
    labels.GetReturnLabel();
    labels.ClearReturnLabel();
    EXPECT_FALSE(labels.HasReturnLabel());
    EXPECT_EQ(labels.m_ReturnLabel, -1);
    EXPECT_EQ(labels.GetReturnLabel(), "LABEL0002");
}

TEST(LabelTest, ExitLabelIsTheOneDrawnLast)
{
    CLabel labels;
    labels.NewLabel();
    labels.NewLabel();
    EXPECT_EQ(labels.PushExitLabel(), "LABEL0002");
    EXPECT_EQ(labels.m_Counter, 2) << "pushing draws no label";
    labels.NewLabel();
    EXPECT_EQ(labels.GetExitLabel(), "LABEL0002");
}

TEST(LabelTest, ExitLabelsNest)
{
    CLabel labels;
    labels.NewLabel();
    labels.PushExitLabel();
    labels.NewLabel();
    labels.PushExitLabel();
    EXPECT_EQ(labels.GetExitLabel(), "LABEL0002");
    labels.PopExitLabel();
    EXPECT_EQ(labels.GetExitLabel(), "LABEL0001");
    labels.PopExitLabel();
    EXPECT_EQ(labels.GetExitLabel(), "ERROR");
}

TEST(LabelTest, PoppingFromNothingIsAFault)
{
    CLabel labels;
    EXPECT_EXIT(labels.PopExitLabel(), testing::ExitedWithCode(3), "internal fault: ");
}
