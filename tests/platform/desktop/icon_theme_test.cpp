#include "platform/desktop/icon_theme.h"

#include "tests/temporary_folder.h"

#include <gtest/gtest.h>

namespace fs = std::filesystem;

namespace {

using Names = std::vector<std::string>;

/// Two bases, of which `user` counts more than `system`.
class IconThemeTest : public testing::Test {
protected:
    /// A theme with folders named after their size, each meant for that size alone.
    void theme(const std::string& base, const std::string& name, const Names& sizes,
        const std::string& inherits = {})
    {
        std::string directories;
        std::string groups;
        for (const std::string& size : sizes) {
            directories += size + ',';
            groups += '[' + size + "]\nType=Fixed\nSize=" + size + '\n';
        }
        file(base + '/' + name + "/index.theme",
            "[Icon Theme]\nInherits=" + inherits + "\nDirectories=" + directories + '\n' + groups);
    }
    void file(const std::string& path, std::string_view text = {})
    {
        fs::create_directories(fs::path(mFolder / path).parent_path());
        writeFile(mFolder / path, text);
    }
    /// The path of the first of `icons` inside the bases.
    std::string found(const Names& icons, const Names& themes = { "Own" }, int size = 32)
    {
        const platform::IconTheme theme({ mFolder / "user", mFolder / "system" }, themes, size);
        const std::string path = theme.fileOf(icons);
        return path.empty() ? path : fs::path(path).lexically_relative(mFolder.path()).string();
    }

    TemporaryFolder mFolder;
};

TEST_F(IconThemeTest, FindsAnIconByItsName)
{
    theme("user", "Own", { "32" });
    file("user/Own/32/text-x-generic.png");
    EXPECT_EQ(found({ "text-x-generic" }), "user/Own/32/text-x-generic.png");
    EXPECT_EQ(found({ "audio-x-generic" }), "");
}

TEST_F(IconThemeTest, TakesTheFolderWhoseSizeIsNearest)
{
    theme("user", "Own", { "512", "16", "48", "24" });
    for (const std::string size : { "512", "16", "48", "24" })
        file("user/Own/" + size + "/i.png");
    EXPECT_EQ(found({ "i" }, { "Own" }, 32), "user/Own/24/i.png");
    EXPECT_EQ(found({ "i" }, { "Own" }, 48), "user/Own/48/i.png");
    EXPECT_EQ(found({ "i" }, { "Own" }, 300), "user/Own/512/i.png");
    EXPECT_EQ(found({ "i" }, { "Own" }, 1), "user/Own/16/i.png");
}

TEST_F(IconThemeTest, TakesTheFirstNamedFolderOfTwoEquallyNear)
{
    theme("user", "Own", { "48", "16" });
    file("user/Own/16/i.png");
    file("user/Own/48/i.png");
    EXPECT_EQ(found({ "i" }, { "Own" }, 32), "user/Own/48/i.png");
}

TEST_F(IconThemeTest, PrefersAPngToADrawingToAnOldBitmap)
{
    theme("user", "Own", { "32" });
    file("user/Own/32/i.xpm");
    EXPECT_EQ(found({ "i" }), "user/Own/32/i.xpm");
    file("user/Own/32/i.svg");
    EXPECT_EQ(found({ "i" }), "user/Own/32/i.svg");
    file("user/Own/32/i.png");
    EXPECT_EQ(found({ "i" }), "user/Own/32/i.png");
}

TEST_F(IconThemeTest, AsksForTheMostExactNameFirst)
{
    theme("user", "Own", { "32" });
    file("user/Own/32/audio-x-generic.png");
    file("user/Own/32/audio-x-wav.png");
    EXPECT_EQ(found({ "audio-x-wav", "audio-x-generic" }), "user/Own/32/audio-x-wav.png");
    EXPECT_EQ(found({ "audio-x-flac", "audio-x-generic" }), "user/Own/32/audio-x-generic.png");
}

TEST_F(IconThemeTest, PrefersALessExactNameOfTheThemeToAnExactOneOfItsParent)
{
    theme("user", "Own", { "32" }, "Parent");
    theme("user", "Parent", { "32" });
    file("user/Own/32/audio-x-generic.png");
    file("user/Parent/32/audio-x-wav.png");
    EXPECT_EQ(found({ "audio-x-wav", "audio-x-generic" }), "user/Own/32/audio-x-generic.png");
}

TEST_F(IconThemeTest, AThemeMayLieInSeveralBases)
{
    theme("system", "Own", { "32" });
    file("system/Own/32/a.png");
    file("system/Own/32/b.png");
    file("user/Own/32/b.png");
    EXPECT_EQ(found({ "a" }), "system/Own/32/a.png");
    EXPECT_EQ(found({ "b" }), "user/Own/32/b.png");
}

TEST_F(IconThemeTest, AsksParentsInOrderAndHicolorLast)
{
    theme("user", "Own", { "32" }, "hicolor,First,Second");
    theme("user", "First", { "32" }, "Grandparent");
    theme("user", "Second", { "32" });
    theme("user", "Grandparent", { "32" });
    theme("user", "hicolor", { "32" });
    for (const std::string name : { "hicolor", "Second", "Grandparent", "First", "Own" }) {
        file("user/" + name + "/32/i.png");
        EXPECT_EQ(found({ "i" }), "user/" + name + "/32/i.png");
    }
}

TEST_F(IconThemeTest, AsksHicolorWithoutAnyChosenTheme)
{
    theme("system", "hicolor", { "32" });
    file("system/hicolor/32/i.png");
    EXPECT_EQ(found({ "i" }, {}), "system/hicolor/32/i.png");
    EXPECT_EQ(found({ "i" }, { "hicolor" }), "system/hicolor/32/i.png");
}

TEST_F(IconThemeTest, TakesTheFirstChosenThemeThatIsThere)
{
    theme("user", "Second", { "32" });
    theme("user", "Third", { "32" });
    file("user/Third/32/third.png");
    file("user/Second/32/i.png");
    EXPECT_EQ(found({ "i" }, { "Absent", "Second", "Third" }), "user/Second/32/i.png");
    EXPECT_EQ(found({ "third" }, { "Absent", "Second", "Third" }), "");
}

TEST_F(IconThemeTest, EndsWhereThemesInheritFromEachOther)
{
    theme("user", "Own", { "32" }, "Own,Other");
    theme("user", "Other", { "32" }, "Own,Other");
    file("user/Other/32/i.png");
    EXPECT_EQ(found({ "i" }), "user/Other/32/i.png");
    EXPECT_EQ(found({ "j" }), "");
}

TEST_F(IconThemeTest, FindsAPictureInABaseItselfWhenNoThemeHasOne)
{
    file("system/program.png");
    EXPECT_EQ(found({ "program" }), "system/program.png");
}

TEST_F(IconThemeTest, NoNameLeadsOutOfTheTheme)
{
    theme("user", "Own", { "32" });
    theme("user", "Other", { "32" });
    file("user/Other/32/i.png");
    file("secret.png");
    for (const std::string name : { "../../Other/32/i", "../../../secret", "/etc/x", "", ".", ".." })
        EXPECT_EQ(found({ name }), "") << name;
    EXPECT_EQ(found({ "i" }, { "../user/Other" }), "");
}

TEST_F(IconThemeTest, FindsTheIconsOfARealTheme)
{
    if (!fs::exists("/usr/share/icons/Adwaita/index.theme"))
        GTEST_SKIP() << "the theme Adwaita is not installed";
    const Names names { "Adwaita" };
    const platform::IconTheme theme({ "/usr/share/icons" }, names, 32);
    const Names folder { "folder" };
    const Names text { "text-x-generic" };
    const Names absent { "no-such-icon" };
    EXPECT_TRUE(fs::exists(theme.fileOf(folder)));
    EXPECT_TRUE(fs::exists(theme.fileOf(text)));
    EXPECT_EQ(theme.fileOf(absent), "");
}

}
