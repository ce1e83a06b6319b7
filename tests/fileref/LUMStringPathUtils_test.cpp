#include "LUMFoundation/LUMStringPathUtils.h"

#include "LUMPlatform/NSSend.h"
#include "tests/platform/files/tree_fixture.h"

namespace fs = std::filesystem;

namespace {

class LUMStringPathUtilsTest : public TreeTest {
protected:
    static std::string resolved(const std::string& at)
    {
        return LUMStringPathUtils::resolveAliases(at)->utf8();
    }
};

TEST_F(LUMStringPathUtilsTest, ReplacesEveryLinkAlongThePath)
{
    makeFolder("d");
    put("d/file");
    fs::create_directory_symlink("d", folder / "first");
    fs::create_directory_symlink("first", folder / "second");
    fs::create_symlink("file", folder / "d/other");
    EXPECT_EQ(resolved(path("second/other")), path("d/file"));
    EXPECT_EQ(resolved(path("second//other/")), path("d/file"));
}

TEST_F(LUMStringPathUtilsTest, KeepsWhatDoesNotExist)
{
    makeFolder("d");
    fs::create_directory_symlink("d", folder / "link");
    fs::create_symlink("nowhere", folder / "dangling");
    fs::create_symlink("round", folder / "round");
    EXPECT_EQ(resolved(path("link/none/more")), path("d/none/more"));
    EXPECT_EQ(resolved(path("dangling/x")), path("dangling/x"));
    EXPECT_EQ(resolved(path("round")), path("round"));
}

TEST_F(LUMStringPathUtilsTest, KeepsDots)
{
    makeFolder("d");
    EXPECT_EQ(resolved(path("d/../d/.")), path("d/../d/."));
}

TEST_F(LUMStringPathUtilsTest, StartsAtTheRoot)
{
    EXPECT_EQ(resolved(""), "/");
    EXPECT_EQ(resolved("/"), "/");
    EXPECT_EQ(resolved("///"), "/");
    EXPECT_EQ(resolved("no such/name"), "/no such/name");
    EXPECT_EQ(resolved("~/x"), "/~/x");
    EXPECT_EQ(resolved(folder.string().substr(1)), folder);
    EXPECT_FALSE(LUMStringPathUtils::resolveAliases(nullptr));
}

TEST_F(LUMStringPathUtilsTest, EndsOnPathsLongerThanAny)
{
    std::string text;
    for (int i = 0; i < 100'000; ++i)
        text += "/ab";
    EXPECT_EQ(resolved(text), text);
}

TEST_F(LUMStringPathUtilsTest, IsAnsweredByStrings)
{
    const NSRef<NSString> text = "x";
    EXPECT_EQ(NSSend<NSRef<NSString>>(text, NSSelector("resolveAliases"))->utf8(), "/x");
}

}
