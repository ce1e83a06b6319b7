#include "platform/desktop/file_icon.h"

#include "tests/temporary_folder.h"

#include <algorithm>
#include <gtest/gtest.h>

namespace fs = std::filesystem;
using platform::BuiltInIcon;

namespace {

class FileIconTest : public testing::Test {
protected:
    static bool names(const platform::FileIcon& icon, const std::string& name)
    {
        return std::ranges::find(icon.names, name) != icon.names.end();
    }

    TemporaryFolder mFolder;
};

/// Content types are known from the system's database alone.
bool hasContentTypes()
{
    return fs::exists("/usr/share/mime/mime.cache");
}

TEST_F(FileIconTest, AFolderIsShownAsOne)
{
    const auto icon = platform::iconOfFile(mFolder.path());
    EXPECT_TRUE(names(icon, "folder"));
    EXPECT_EQ(icon.builtIn, BuiltInIcon::Folder);
}

TEST_F(FileIconTest, AFileIsShownByItsType)
{
    if (!hasContentTypes())
        GTEST_SKIP() << "no database of content types is installed";
    writeFile(mFolder / "take.wav", "");
    const auto icon = platform::iconOfFile(mFolder / "take.wav");
    ASSERT_FALSE(icon.names.empty());
    EXPECT_EQ(icon.names.front(), "audio-x-wav");
    EXPECT_TRUE(names(icon, "audio-x-generic"));
    EXPECT_EQ(icon.builtIn, BuiltInIcon::File);
}

TEST_F(FileIconTest, ALinkIsShownAsItsTarget)
{
    fs::create_directory(mFolder / "folder");
    fs::create_symlink("folder", mFolder / "link.wav");
    EXPECT_EQ(platform::iconOfFile(mFolder / "link.wav").builtIn, BuiltInIcon::Folder);
}

TEST_F(FileIconTest, WhatIsNotThereIsShownByItsName)
{
    EXPECT_EQ(platform::iconOfFile(mFolder / "absent.wav").names, platform::iconOfExtension("wav").names);
}

TEST_F(FileIconTest, ALinkThatLeadsNowhereIsShownAsALink)
{
    fs::create_symlink("absent", mFolder / "link.wav");
    EXPECT_TRUE(names(platform::iconOfFile(mFolder / "link.wav"), "inode-symlink"));
}

TEST_F(FileIconTest, AFileWhoseNameTellsNothingIsShownByItsContent)
{
    if (!hasContentTypes())
        GTEST_SKIP() << "no database of content types is installed";
    writeFile(mFolder / "page", "%PDF-1.4\n");
    EXPECT_EQ(platform::iconOfFile(mFolder / "page").names.front(), "application-pdf");
}

TEST_F(FileIconTest, AProgramIsShownAsAnApplication)
{
    if (!hasContentTypes())
        GTEST_SKIP() << "no database of content types is installed";
    EXPECT_EQ(platform::iconOfFile("/proc/self/exe").builtIn, BuiltInIcon::Application);
    EXPECT_EQ(platform::iconOfApplications().builtIn, BuiltInIcon::Application);
    EXPECT_EQ(platform::iconOfExtension("desktop").builtIn, BuiltInIcon::Application);
}

TEST_F(FileIconTest, AnUnknownExtensionIsShownAsUnknown)
{
    EXPECT_EQ(platform::iconOfExtension("no-such-extension").builtIn, BuiltInIcon::Unknown);
}

TEST_F(FileIconTest, NoDrawingThatHasToBeTintedIsNamed)
{
    for (const std::string& name : platform::iconOfFile(mFolder.path()).names)
        EXPECT_FALSE(name.ends_with("-symbolic")) << name;
}

}
