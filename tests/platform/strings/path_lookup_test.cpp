#include "platform/strings/path_lookup.h"

#include "tests/temporary_folder.h"

#include <cstdlib>
#include <gtest/gtest.h>
#include <pwd.h>
#include <unistd.h>

namespace {

namespace fs = std::filesystem;
using platform::expandingTilde;
using platform::standardizedPath;

class PathLookupTest : public testing::Test {
protected:
    PathLookupTest()
    {
        if (const char* home = std::getenv("HOME"))
            mHome = home;
    }
    ~PathLookupTest() override { setenv("HOME", mHome.c_str(), 1); }

    std::u16string inFolder(const char* path) const { return fs::path(mFolder / path).u16string(); }

    TemporaryFolder mFolder;
    std::string mHome;
};

TEST_F(PathLookupTest, TildeIsTheHomeOfTheEnvironment)
{
    setenv("HOME", "/home/anna", 1);
    EXPECT_EQ(expandingTilde(u"~"), u"/home/anna");
    EXPECT_EQ(expandingTilde(u"~/a/b/"), u"/home/anna/a/b");
    EXPECT_EQ(expandingTilde(u"a~"), u"a~");
}

TEST_F(PathLookupTest, HomeThatEndsInASlashAddsNone)
{
    setenv("HOME", "/", 1);
    EXPECT_EQ(expandingTilde(u"~/a"), u"/a");
    EXPECT_EQ(expandingTilde(u"~"), u"/");
}

TEST_F(PathLookupTest, WithoutAHomeInTheEnvironmentTheUserDatabaseKnows)
{
    unsetenv("HOME");
    const passwd* entry = getpwuid(getuid());
    std::string home = entry ? entry->pw_dir : "~";
    EXPECT_EQ(expandingTilde(u"~/x"), fs::path(home == "/" ? "/x" : home + "/x").u16string());
}

TEST_F(PathLookupTest, NamedUserHasAHomeOfTheirOwn)
{
    setenv("HOME", "/home/anna", 1);
    EXPECT_EQ(expandingTilde(u"~root/x"), u"/root/x");
}

TEST_F(PathLookupTest, UnknownUserIsLeftAlone)
{
    EXPECT_EQ(expandingTilde(u"~nosuchuser_zz/x"), u"~nosuchuser_zz/x");
    const char16_t odd[] = { u'~', 0xD800, u'/', u'x' };
    EXPECT_EQ(expandingTilde({ odd, 4 }), std::u16string(odd, 4));
}

TEST_F(PathLookupTest, SymbolicLinksOfAnAbsolutePathAreResolved)
{
    fs::create_directory(mFolder / "real");
    fs::create_directory_symlink("real", mFolder / "link");
    EXPECT_EQ(standardizedPath(inFolder("link/./new/../x")), inFolder("real/x"));
}

TEST_F(PathLookupTest, ParentOfALinkIsThatOfItsTarget)
{
    fs::create_directories(mFolder / "far/real");
    fs::create_directory_symlink("far/real", mFolder / "link");
    EXPECT_EQ(standardizedPath(inFolder("link/..")), inFolder("far"));
}

TEST_F(PathLookupTest, LinksInACircleAreLeftAlone)
{
    fs::create_symlink("b", mFolder / "a");
    fs::create_symlink("a", mFolder / "b");
    EXPECT_EQ(standardizedPath(inFolder("a/./x")), inFolder("a/x"));
}

TEST_F(PathLookupTest, TextThatNoFileCanBeCalledIsOnlySqueezed)
{
    const char16_t lone[] = { u'/', u'/', 0xD800, u'/' };
    EXPECT_EQ(standardizedPath({ lone, 4 }), std::u16string(lone + 1, 2));
    EXPECT_EQ(standardizedPath({ u"//a\0b/", 6 }), std::u16string(u"/a\0b", 4));
}

}
