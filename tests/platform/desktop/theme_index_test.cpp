#include "platform/desktop/theme_index.h"

#include "tests/temporary_folder.h"

#include <gtest/gtest.h>

namespace {

class ThemeIndexTest : public testing::Test {
protected:
    std::optional<platform::ThemeIndex> read(std::string_view text)
    {
        writeFile(mFolder / "index.theme", text);
        return platform::readThemeIndex(mFolder / "index.theme");
    }

    /// The range of sizes of the one folder that these lines describe; {0, 0} when it is left out.
    std::pair<int, int> rangeOf(const std::string& lines)
    {
        const auto index = read("[Icon Theme]\nDirectories=a\n[a]\n" + lines);
        if (!index || index->folders.empty())
            return {};
        return { index->folders[0].smallest, index->folders[0].largest };
    }

    TemporaryFolder mFolder;
};

using Range = std::pair<int, int>;

TEST_F(ThemeIndexTest, ListsParentsAndFoldersInOrder)
{
    const auto index =
        read("[Icon Theme]\nInherits=One,Two\nDirectories=32/apps,16/apps\nScaledDirectories=32@2/apps\n"
             "[16/apps]\nSize=16\n[32/apps]\nSize=32\n[32@2/apps]\nSize=32\nScale=2\n");
    ASSERT_TRUE(index);
    EXPECT_EQ(index->inherits, (std::vector<std::string> { "One", "Two" }));
    ASSERT_EQ(index->folders.size(), 3u);
    EXPECT_EQ(index->folders[0].path, "32/apps");
    EXPECT_EQ(index->folders[1].path, "16/apps");
    EXPECT_EQ(index->folders[2].path, "32@2/apps");
}

TEST_F(ThemeIndexTest, IsNothingWithoutTheGroupOfAnIconTheme)
{
    EXPECT_FALSE(read("[Desktop Entry]\nName=x\n"));
    EXPECT_FALSE(read(""));
    EXPECT_FALSE(read("no key file at all"));
}

TEST_F(ThemeIndexTest, IsNothingWithoutAFile)
{
    EXPECT_FALSE(platform::readThemeIndex(mFolder / "absent"));
    EXPECT_FALSE(platform::readThemeIndex(mFolder.path()));
}

TEST_F(ThemeIndexTest, IsNothingAboveAMegabyte)
{
    const std::string theme = "[Icon Theme]\nDirectories=\n";
    EXPECT_TRUE(read(theme + std::string(1000, '\n')));
    EXPECT_FALSE(read(theme + std::string(1 << 20, '\n')));
}

TEST_F(ThemeIndexTest, AFixedFolderIsMeantForItsSizeAlone)
{
    EXPECT_EQ(rangeOf("Size=32\nType=Fixed\n"), Range(32, 32));
}

TEST_F(ThemeIndexTest, AFolderWithoutATypeIsMeantForTwoPixelsAroundItsSize)
{
    EXPECT_EQ(rangeOf("Size=32\n"), Range(30, 34));
    EXPECT_EQ(rangeOf("Size=32\nType=Threshold\nThreshold=5\n"), Range(27, 37));
}

TEST_F(ThemeIndexTest, AScalableFolderIsMeantForItsRange)
{
    EXPECT_EQ(rangeOf("Size=128\nType=Scalable\nMinSize=8\nMaxSize=512\n"), Range(8, 512));
    EXPECT_EQ(rangeOf("Size=128\nType=Scalable\n"), Range(128, 128));
}

TEST_F(ThemeIndexTest, ScaledFoldersCountInPixels)
{
    EXPECT_EQ(rangeOf("Size=16\nScale=2\nType=Fixed\n"), Range(32, 32));
}

TEST_F(ThemeIndexTest, FoldersWithoutASizeAreLeftOut)
{
    EXPECT_EQ(rangeOf(""), Range(0, 0));
    EXPECT_EQ(rangeOf("Size=no number\n"), Range(0, 0));
    EXPECT_EQ(rangeOf("Size=-5\n"), Range(0, 0));
}

TEST_F(ThemeIndexTest, HugeSizesDoNotOverflow)
{
    EXPECT_EQ(rangeOf("Size=2147483647\nScale=2147483647\nThreshold=2147483647\n"), Range(4096, 8192 * 4096));
}

TEST_F(ThemeIndexTest, DistanceIsNothingInTheRangeAndGrowsOutsideIt)
{
    const platform::ThemeFolder folder { "a", 24, 48 };
    EXPECT_EQ(folder.distance(24), 0);
    EXPECT_EQ(folder.distance(48), 0);
    EXPECT_EQ(folder.distance(22), 2);
    EXPECT_EQ(folder.distance(64), 16);
}

}
