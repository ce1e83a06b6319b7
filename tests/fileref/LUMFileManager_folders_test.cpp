#include "LUMFoundation/LUMFileManager.h"
#include "LUMFoundation/LUMFileRef.h"
#include "LUMPlatform/NSError.h"
#include "LUMPlatform/NSSend.h"
#include "tests/home_folder.h"
#include "tests/platform/files/tree_fixture.h"

namespace fs = std::filesystem;

namespace {

class LUMFileManagerFoldersTest : public TreeTest {
protected:
    /// The name of what is answered, or "null", and the code of the error if there is one.
    std::string create(const NSRef<NSString>& at, bool createIntermediates) const
    {
        NSRef<NSError> error;
        const auto made = LUMFileManager::createDirectoryAtPath(manager, at, createIntermediates, &error);
        return (made ? made->name()->utf8() : "null") + (error ? " " + std::to_string(error->code()) : "");
    }
    std::string createHere(const std::string& name, bool createIntermediates) const
    {
        return create(path(name), createIntermediates);
    }

    NSRef<NSFileManager> manager = NSFileManager::defaultManager();
};

TEST_F(LUMFileManagerFoldersTest, AnswersAFolderThatIsThere)
{
    makeFolder("d");
    fs::create_directory_symlink("d", folder / "link");
    EXPECT_EQ(createHere("d", false), "d");
    EXPECT_EQ(createHere("d/", true), "d");
    EXPECT_EQ(createHere("link", false), "d");
    EXPECT_EQ(create("/", true), "/");
}

TEST_F(LUMFileManagerFoldersTest, DeliberatelyMakesNoFolderWithoutIntermediates)
{
    EXPECT_EQ(createHere("d", false), "null -120");
    EXPECT_EQ(createHere("none/d", false), "null -120");
    EXPECT_EQ(names(), "");
}

TEST_F(LUMFileManagerFoldersTest, DeliberatelyAnswersWhatIsNoFolderBesideTheError)
{
    put("file");
    EXPECT_EQ(createHere("file", false), "file " + std::to_string(0x21446972));
    EXPECT_EQ(createHere("file", true), "file " + std::to_string(0x21446972));
}

TEST_F(LUMFileManagerFoldersTest, AnswersNothingBelowWhatIsNoFolder)
{
    put("file");
    EXPECT_EQ(createHere("file/a/b", true), "null " + std::to_string(0x21446972));
    EXPECT_EQ(names(), "file");
}

TEST_F(LUMFileManagerFoldersTest, MakesAFolderWithThoseAboveIt)
{
    EXPECT_EQ(createHere("a//b/c/", true), "c");
    EXPECT_TRUE(fs::is_directory(folder / "a/b/c"));
    EXPECT_EQ(createHere("a/b/d", true), "d");
}

TEST_F(LUMFileManagerFoldersTest, GoesThroughLinksToFolders)
{
    makeFolder("d");
    fs::create_directory_symlink("d", folder / "link");
    EXPECT_EQ(createHere("link/x/y", true), "y");
    EXPECT_TRUE(fs::is_directory(folder / "d/x/y"));
}

TEST_F(LUMFileManagerFoldersTest, TellsThatALinkThatDanglesIsInTheWay)
{
    fs::create_symlink("nowhere", folder / "link");
    EXPECT_EQ(createHere("link", true), "null -48");
    EXPECT_EQ(createHere("link/x", true), "null -48");
    EXPECT_EQ(names(), "link");
}

TEST_F(LUMFileManagerFoldersTest, TellsThatAPathIsNone)
{
    EXPECT_EQ(create(nullptr, true), "null -50");
    EXPECT_EQ(create("", true), "null -120");
    EXPECT_EQ(create("", false), "null -120");
    EXPECT_EQ(create(std::string(10241, 'a'), true), "null -37");
    EXPECT_EQ(create(std::string("/") + std::string(300, 'a'), true), "null -37");
}

TEST_F(LUMFileManagerFoldersTest, EndsOnPathsDeeperThanAnyFolder)
{
    std::string deep = folder;
    for (int i = 0; i < 49; ++i)
        deep += "/" + std::string(200, 'd');
    EXPECT_EQ(create(deep, true).substr(0, 5), "null ");
}

TEST_F(LUMFileManagerFoldersTest, StartsARelativePathWhereTheProcessIs)
{
    const auto before = fs::current_path();
    fs::current_path(folder);
    EXPECT_EQ(create("x", true), "x");
    EXPECT_EQ(create("y/z", true), "z");
    fs::current_path(before);
    EXPECT_TRUE(fs::is_directory(folder / "x"));
    EXPECT_TRUE(fs::is_directory(folder / "y/z"));
}

TEST_F(LUMFileManagerFoldersTest, TakesATildeForTheHomeFolder)
{
    const HomeFolder home(folder);
    EXPECT_EQ(create("~", false), folder.filename());
    EXPECT_EQ(create("~/a/b", true), "b");
    EXPECT_TRUE(fs::is_directory(folder / "a/b"));
}

TEST_F(LUMFileManagerFoldersTest, LeavesTheErrorAloneWhenAllIsWell)
{
    auto error = NSError::errorWithDomain("before", 1);
    EXPECT_TRUE(LUMFileManager::createDirectoryAtPath(manager, path("d"), true, &error));
    EXPECT_EQ(error->code(), 1);
    EXPECT_TRUE(LUMFileManager::createDirectoryAtPath(manager, path("d"), true));
    EXPECT_FALSE(LUMFileManager::createDirectoryAtPath(nullptr, path("e"), true));
}

TEST_F(LUMFileManagerFoldersTest, IsAnsweredByFileManagers)
{
    NSRef<NSError> error;
    const auto made = NSSend<NSRef<LUMFileRef>>(manager,
        NSSelector("createDirectoryAtPath:withIntermediateDirectories:error:"), NSRef<NSString>(path("d")),
        true, &error);
    EXPECT_EQ(made->name()->utf8(), "d");
}

}
