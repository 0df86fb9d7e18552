#include "target/TargetCheck.h"

#include "files/XmlDocument.h"

#include <gtest/gtest.h>

#include <string_view>

static std::string FindMissing(std::string_view text)
{
    CXmlDocument target;
    target.LoadFromString(text);
    return FindMissingTargetNode(target);
}

TEST(TargetCheckTest, WholeTargetLacksNothing)
{
    EXPECT_EQ("", FindMissing("<t><COMPILER><TARGET><IEC/><COMPILER><DATAFORMAT/></COMPILER>"
                              "<VM><PROGRAM name=\"main\"/></VM></TARGET></COMPILER></t>"));
}

TEST(TargetCheckTest, NamesTheOutermostMissingNode)
{
    EXPECT_EQ("COMPILER", FindMissing("<t/>"));
    EXPECT_EQ("COMPILER\\TARGET", FindMissing("<t><COMPILER/></t>"));
    EXPECT_EQ("COMPILER\\TARGET\\IEC", FindMissing("<t><COMPILER><TARGET/></COMPILER></t>"));
    EXPECT_EQ("COMPILER\\TARGET\\COMPILER", FindMissing("<t><COMPILER><TARGET><IEC/></TARGET></COMPILER></t>"));
    EXPECT_EQ("COMPILER\\TARGET\\COMPILER\\DATAFORMAT",
              FindMissing("<t><COMPILER><TARGET><IEC/><COMPILER/></TARGET></COMPILER></t>"));
    EXPECT_EQ("COMPILER\\TARGET\\VM",
              FindMissing("<t><COMPILER><TARGET><IEC/><COMPILER><DATAFORMAT/></COMPILER></TARGET></COMPILER></t>"));
    EXPECT_EQ("COMPILER\\TARGET\\VM\\PROGRAM",
              FindMissing("<t><COMPILER><TARGET><IEC/><COMPILER><DATAFORMAT/></COMPILER><VM/></TARGET>"
                          "</COMPILER></t>"));
}

TEST(TargetCheckTest, ParseThatBreaksOffLeavesNodesMissing)
{
    EXPECT_EQ("COMPILER\\TARGET\\VM\\PROGRAM",
              FindMissing("<t><COMPILER><TARGET><IEC/><COMPILER><DATAFORMAT/></COMPILER><VM><PROG"));
}

TEST(TargetCheckTest, EmptyDocument)
{
    CXmlDocument target;
    EXPECT_EQ("COMPILER", FindMissingTargetNode(target));
}
