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

TEST(LabelTest, IsANumberUntilItIsWritten)
{
    CLabel labels;
    const Label first = labels.Draw();
    EXPECT_EQ(first.number, 1);
    EXPECT_EQ(MakeText("\tJMP ", first, '\n'), "\tJMP LABEL0001\n");
    EXPECT_EQ(MakeText(Label{10}, Label{999}, Label{1000}, Label{9999}, Label{2147483647}),
              "LABEL0010LABEL0999LABEL1000LABEL9999LABEL2147483647");
}

TEST(LabelTest, NoLabelIsNoText)
{
    CLabel labels;
    EXPECT_TRUE(labels.FindExit().IsNone());
    EXPECT_EQ(MakeText("\tJMP ", Label{}, '\n'), "\tJMP \n");
    labels.NewLabel();
    labels.PushExitLabel();
    EXPECT_EQ(labels.FindExit(), Label{1});
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
