#include "LUMPlatform/NSFileManager.h"

#include "LUMPlatform/NSArray.h"
#include "LUMPlatform/NSError.h"
#include "LUMPlatform/NSSend.h"
#include "LUMPlatform/NSString.h"
#include "tests/fixture.h"

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>

namespace {

namespace fs = std::filesystem;

class NSFileManagerTest : public ObjectTest {
protected:
    NSFileManagerTest()
    {
        std::string name = fs::temp_directory_path() / "lum-files-XXXXXX";
        folder = mkdtemp(name.data());
    }
    ~NSFileManagerTest() override { fs::remove_all(folder); }

    std::string path(const char* name) const { return folder / name; }
    void writeFile(const std::string& name) const { std::ofstream(folder / name) << "text"; }

    /// "yes", "no", or the code of the error.
    std::string create(const std::string& at, bool createIntermediates) const
    {
        NSRef<NSError> error;
        const bool isMade = manager->createDirectoryAtPath(at, createIntermediates, nullptr, &error);
        return isMade ? "yes" : error ? std::to_string(error->code()) : "no";
    }
    std::vector<std::string> list(const std::string& at) const
    {
        std::vector<std::string> names;
        const auto listing = manager->contentsOfDirectoryAtPath(at);
        for (const NSId& name : *listing)
            names.push_back(NSCast<NSString>(name)->utf8());
        std::sort(names.begin(), names.end());
        return names;
    }

    fs::path folder;
    NSRef<NSFileManager> manager = NSFileManager::defaultManager();
};

TEST_F(NSFileManagerTest, IsOneForTheProcess)
{
    EXPECT_TRUE(NSFileManager::defaultManager() == manager);
}

TEST_F(NSFileManagerTest, TellsFilesFromFolders)
{
    writeFile("file");
    bool isDirectory = true;
    EXPECT_TRUE(manager->fileExistsAtPath(path("file"), &isDirectory));
    EXPECT_FALSE(isDirectory);
    EXPECT_TRUE(manager->fileExistsAtPath(folder.string(), &isDirectory));
    EXPECT_TRUE(isDirectory);
}

TEST_F(NSFileManagerTest, LeavesTheAnswerAloneWhenNothingIsThere)
{
    bool isDirectory = true;
    EXPECT_FALSE(manager->fileExistsAtPath(path("missing"), &isDirectory));
    EXPECT_TRUE(isDirectory);
    EXPECT_FALSE(manager->fileExistsAtPath(path("missing")));
}

TEST_F(NSFileManagerTest, FollowsLinks)
{
    fs::create_directory_symlink(folder, path("link"));
    fs::create_symlink("nowhere", path("dangling"));
    bool isDirectory = false;
    EXPECT_TRUE(manager->fileExistsAtPath(path("link"), &isDirectory));
    EXPECT_TRUE(isDirectory);
    EXPECT_FALSE(manager->fileExistsAtPath(path("dangling")));
}

TEST_F(NSFileManagerTest, FindsNothingUnderNoName)
{
    EXPECT_FALSE(manager->fileExistsAtPath(nullptr));
    EXPECT_FALSE(manager->fileExistsAtPath(""));
    EXPECT_FALSE(manager->fileExistsAtPath(std::u16string_view(u"/\0x", 3)));
}

TEST_F(NSFileManagerTest, MakesOneFolder)
{
    EXPECT_EQ(create(path("a"), false), "yes");
    EXPECT_TRUE(fs::is_directory(folder / "a"));
}

TEST_F(NSFileManagerTest, MakesNoFolderWhereSomethingIs)
{
    writeFile("file");
    EXPECT_EQ(create(path("file"), false), "-48");
    EXPECT_EQ(create(path("file"), true), "-48");
    EXPECT_EQ(create(folder.string(), false), "-48");
}

TEST_F(NSFileManagerTest, MakesFoldersAboveOnlyWhenAsked)
{
    EXPECT_EQ(create(path("a/b/c"), false), "-43");
    EXPECT_FALSE(fs::exists(folder / "a"));
    EXPECT_EQ(create(path("a/b/c"), true), "yes");
    EXPECT_EQ(create(path("a//d///e/"), true), "yes");
    EXPECT_TRUE(fs::is_directory(folder / "a/d/e"));
}

TEST_F(NSFileManagerTest, AcceptsAFolderThatIsThereWhenMakingThoseAbove)
{
    EXPECT_EQ(create(folder.string(), true), "yes");
    fs::create_directory_symlink(folder, path("link"));
    EXPECT_EQ(create(path("link"), true), "yes");
}

TEST_F(NSFileManagerTest, MakesNoFolderBelowAFile)
{
    writeFile("file");
    EXPECT_EQ(create(path("file/a"), true), "-120");
}

TEST_F(NSFileManagerTest, MakesNoFolderWithoutAName)
{
    EXPECT_EQ(create("", false), "-43");
    EXPECT_EQ(create("", true), "-43");
    EXPECT_FALSE(manager->createDirectoryAtPath(nullptr, true));
}

TEST_F(NSFileManagerTest, ListsAllNames)
{
    writeFile("b");
    writeFile(".hidden");
    fs::create_directory(folder / "a");
    writeFile("a/not this");
    EXPECT_EQ(list(folder.string()), (std::vector<std::string> { ".hidden", "a", "b" }));
}

TEST_F(NSFileManagerTest, ListsAnEmptyFolder)
{
    EXPECT_TRUE(list(folder.string()).empty());
}

TEST_F(NSFileManagerTest, LeavesOutNamesThatNoPathCanTell)
{
    writeFile("good");
    writeFile("b\xff"
              "d");
    EXPECT_EQ(list(folder.string()), std::vector<std::string> { "good" });
}

TEST_F(NSFileManagerTest, ListsNothingThatIsNoFolder)
{
    writeFile("file");
    NSRef<NSError> error;
    EXPECT_FALSE(manager->contentsOfDirectoryAtPath(path("file"), &error));
    EXPECT_EQ(error->code(), -120);
    EXPECT_FALSE(manager->contentsOfDirectoryAtPath(path("missing"), &error));
    EXPECT_EQ(error->code(), -43);
    EXPECT_FALSE(manager->contentsOfDirectoryAtPath(nullptr, &error));
    EXPECT_EQ(error->code(), -43);
    EXPECT_EQ(error->domain()->utf8(), "NSOSStatusErrorDomain");
}

TEST_F(NSFileManagerTest, AnswersItsSelectors)
{
    bool isDirectory = false;
    EXPECT_TRUE(NSSend<bool>(manager, NSSelector("fileExistsAtPath:isDirectory:"),
        NSRef<NSString>(folder.string()), &isDirectory));
    EXPECT_TRUE(isDirectory);
    EXPECT_TRUE(NSSend<bool>(manager, NSSelector("fileExistsAtPath:"), NSRef<NSString>(folder.string())));
}

}
