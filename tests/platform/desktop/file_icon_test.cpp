#include "platform/desktop/file_icon.h"

#include "tests/temporary_folder.h"

#include <algorithm>
#include <gtest/gtest.h>

namespace fs = std::filesystem;
using platform::BuiltInIcon;
using namespace std::string_view_literals;

namespace {

/// A database of content types of the tests' own, in place of the machine's. The desktop's library reads
/// these variables once, so it is there before all tests.
class OwnContentTypes {
public:
    OwnContentTypes()
    {
        fs::create_directory(mFolder / "mime");
        writeFile(mFolder / "mime/globs2",
            "50:audio/x-wav:*.wav\n"
            "50:application/x-desktop:*.desktop\n");
        writeFile(mFolder / "mime/magic",
            "MIME-Magic\0\n"
            "[50:application/pdf]\n>0=\0\4%PDF\n"
            "[50:application/x-executable]\n>0=\0\4\177ELF\n"sv);
        setenv("XDG_DATA_HOME", mFolder.path().c_str(), 1);
        setenv("XDG_DATA_DIRS", (mFolder / "none").c_str(), 1);
    }

private:
    TemporaryFolder mFolder;
};
const OwnContentTypes ownContentTypes;

class FileIconTest : public testing::Test {
protected:
    static bool names(const platform::FileIcon& icon, const std::string& name)
    {
        return std::ranges::find(icon.names, name) != icon.names.end();
    }

    TemporaryFolder mFolder;
};

TEST_F(FileIconTest, AFolderIsShownAsOne)
{
    const auto icon = platform::iconOfFile(mFolder.path());
    EXPECT_TRUE(names(icon, "folder"));
    EXPECT_EQ(icon.builtIn, BuiltInIcon::Folder);
}

TEST_F(FileIconTest, AFileIsShownByItsType)
{
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
    writeFile(mFolder / "page", "%PDF-1.4\n");
    EXPECT_EQ(platform::iconOfFile(mFolder / "page").names.front(), "application-pdf");
}

TEST_F(FileIconTest, AProgramIsShownAsAnApplication)
{
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
