#include "driver/Version.h"

#include "frontend/MessageTable.h"

#include <gtest/gtest.h>

#include <string>

// The banner is a message like any other, so its number is written there once more.
TEST(Version, TheBannerShowsItsFirstNumber)
{
    constexpr int banner = 107;
    const std::string line = "version: " + std::to_string(g_MajorVersion) + "\n";
    EXPECT_NE(GetMessage(banner).find(line), std::string_view::npos) << GetMessage(banner);
}

// Readers of the outputs know this build by that number.
TEST(Version, EndsWithTheNumberOfTheBuild)
{
    EXPECT_EQ(g_BuildNumber, 1);
    EXPECT_TRUE(g_Version.ends_with("." + std::to_string(g_BuildNumber))) << g_Version;
    EXPECT_TRUE(g_Version.starts_with(std::to_string(g_MajorVersion) + ".")) << g_Version;
}
