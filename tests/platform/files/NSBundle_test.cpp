#include "LUMPlatform/NSBundle.h"

#include "LUMPlatform/NSSend.h"
#include "LUMPlatform/NSString.h"
#include "platform/files/program_file.h"
#include "tests/platform/files/tree_fixture.h"

namespace {

class NSBundleTest : public TreeTest { };

TEST_F(NSBundleTest, IsAFolderThatIsThere)
{
    makeFolder("Song.app");
    put("file");
    EXPECT_EQ(NSBundle::bundleWithPath(path("Song.app/"))->bundlePath()->utf8(), path("Song.app"));
    EXPECT_FALSE(NSBundle::bundleWithPath(path("file")));
    EXPECT_FALSE(NSBundle::bundleWithPath(path("none")));
    EXPECT_FALSE(NSBundle::bundleWithPath(nullptr));
    EXPECT_FALSE(NSBundle::bundleWithPath(""));
}

TEST_F(NSBundleTest, HasAnAbsolutePath)
{
    EXPECT_EQ(NSBundle::bundleWithPath(".")->bundlePath()->characters().front(), u'/');
}

TEST_F(NSBundleTest, EqualsByPath)
{
    const auto one = NSBundle::bundleWithPath(folder.string());
    const auto other = NSBundle::bundleWithPath(folder.string());
    EXPECT_TRUE(NSEqual(one, other));
    EXPECT_EQ(one->hash(), other->hash());
    EXPECT_FALSE(NSEqual(one, NSBundle::bundleWithPath("/")));
    EXPECT_FALSE(one->isEqual(nullptr));
    EXPECT_EQ(one->description()->utf8(), "NSBundle <" + folder.string() + ">");
}

TEST_F(NSBundleTest, IsOneForTheProgram)
{
    EXPECT_TRUE(NSBundle::mainBundle() == NSBundle::mainBundle());
    EXPECT_EQ(NSBundle::mainBundle()->bundlePath()->utf8(),
        std::filesystem::read_symlink("/proc/self/exe").parent_path());
}

TEST_F(NSBundleTest, IsTheApplicationThatTheProgramBelongsTo)
{
    EXPECT_EQ(platform::bundleOfProgram("/opt/Song.app/Contents/Linux/song"), "/opt/Song.app");
    EXPECT_EQ(platform::bundleOfProgram("/usr/bin/song"), "/usr/bin");
    EXPECT_EQ(platform::bundleOfProgram("/Contents/bin/song"), "/");
    EXPECT_EQ(platform::bundleOfProgram("/song"), "/");
    EXPECT_EQ(platform::bundleOfProgram(""), "");
}

TEST_F(NSBundleTest, AnswersItsSelector)
{
    const auto bundle = NSBundle::bundleWithPath(folder.string());
    EXPECT_EQ(NSSend<NSRef<NSString>>(bundle, NSSelector("bundlePath"))->utf8(), folder);
}

}
