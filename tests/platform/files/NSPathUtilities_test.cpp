#include "LUMPlatform/NSPathUtilities.h"

#include "LUMPlatform/NSSend.h"
#include "tests/platform/files/tree_fixture.h"

#include <cstdlib>
#include <optional>

namespace fs = std::filesystem;

namespace {

/// Sets a variable of the environment for the length of a scope.
class Variable {
public:
    Variable(const char* name, const std::string& value) : mName(name)
    {
        if (const char* before = getenv(name))
            mBefore = before;
        setenv(name, value.c_str(), 1);
    }
    ~Variable()
    {
        if (mBefore)
            setenv(mName, mBefore->c_str(), 1);
        else
            unsetenv(mName);
    }
    Variable(const Variable&) = delete;
    Variable& operator=(const Variable&) = delete;

private:
    const char* mName;
    std::optional<std::string> mBefore;
};

class NSPathUtilitiesTest : public TreeTest {
protected:
    static std::string resolved(const std::string& path)
    {
        return NSPathUtilities::stringByResolvingSymlinksInPath(path)->utf8();
    }
};

TEST_F(NSPathUtilitiesTest, HasTheFolderForTemporaryFilesFromTheEnvironment)
{
    const Variable told("TMPDIR", folder.string());
    EXPECT_EQ(NSTemporaryDirectory()->utf8(), folder.string() + "/");
    const Variable slash("TMPDIR", folder.string() + "/");
    EXPECT_EQ(NSTemporaryDirectory()->utf8(), folder.string() + "/");
}

TEST_F(NSPathUtilitiesTest, HasAFolderForTemporaryFilesWhenTheEnvironmentTellsNone)
{
    for (const std::string& told :
        { path("none"), std::string("relative"), std::string(), std::string("/\xFF") }) {
        const Variable variable("TMPDIR", told);
        EXPECT_EQ(NSTemporaryDirectory()->utf8(), "/tmp/");
    }
}

TEST_F(NSPathUtilitiesTest, ResolvesLinksAlongThePath)
{
    makeFolder("d");
    put("d/file");
    fs::create_directory_symlink("d", folder / "link");
    fs::create_symlink("file", folder / "d/other");
    EXPECT_EQ(resolved(path("link/other")), path("d/file"));
    EXPECT_EQ(resolved(path("link/none/x")), path("d/none/x"));
    EXPECT_EQ(resolved(path("d//../link/")), path("d"));
}

TEST_F(NSPathUtilitiesTest, LeavesLinksThatGoRoundInCircles)
{
    fs::create_symlink("b", folder / "a");
    fs::create_symlink("a", folder / "b");
    EXPECT_EQ(resolved(path("a")), path("a"));
}

TEST_F(NSPathUtilitiesTest, TakesNullAndEmpty)
{
    EXPECT_FALSE(NSPathUtilities::stringByResolvingSymlinksInPath(nullptr));
    EXPECT_EQ(resolved(""), "");
}

TEST_F(NSPathUtilitiesTest, IsAnsweredByStrings)
{
    const NSRef<NSString> text = folder.string();
    EXPECT_EQ(NSSend<NSRef<NSString>>(text, NSSelector("stringByResolvingSymlinksInPath"))->utf8(), folder);
}

}
