#include "LUMFoundation/LUMFileManager.h"
#include "LUMFoundation/LUMFileManager_Safe.h"
#include "LUMFoundation/LUMFileRef.h"
#include "LUMPlatform/NSError.h"
#include "tests/data_home.h"
#include "tests/platform/files/tree_fixture.h"

namespace fs = std::filesystem;

namespace {

class LUMFileManagerTrashTest : public TreeTest {
protected:
    LUMFileManagerTrashTest() { fs::remove_all(DataHome::folder / "Trash"); }

    static bool isTrashed(const std::string& name)
    {
        return fs::exists(fs::symlink_status(DataHome::folder / "Trash/files" / name));
    }

    NSRef<NSFileManager> manager = NSFileManager::defaultManager();
};

TEST_F(LUMFileManagerTrashTest, MovesAFileToTheTrash)
{
    put("a");
    const auto file = LUMFileRef::fileRefWithPath(path("a"));
    LUMFileManager::trashFileRef(manager, file);
    EXPECT_EQ(names(), "");
    EXPECT_TRUE(isTrashed("a"));
    EXPECT_TRUE(file->isInTrash());
}

TEST_F(LUMFileManagerTrashTest, MovesAFolderToTheTrashByItsPath)
{
    putSome("t");
    LUMFileManager::trashFileAtPath(manager, path("t"));
    EXPECT_EQ(names(), "");
    EXPECT_TRUE(isTrashed("t"));
}

TEST_F(LUMFileManagerTrashTest, DeliberatelyTrashesTheTargetOfALink)
{
    put("a");
    fs::create_symlink("a", folder / "link");
    LUMFileManager::trashFileAtPath(manager, path("link"));
    EXPECT_EQ(names(), "link");
    EXPECT_TRUE(isTrashed("a"));
}

TEST_F(LUMFileManagerTrashTest, TrashesNothingForNothing)
{
    put("a");
    const auto gone = LUMFileRef::fileRefWithPath(path("a"));
    fs::remove(folder / "a");
    LUMFileManager::trashFileRef(manager, gone);
    LUMFileManager::trashFileRef(manager, nullptr);
    LUMFileManager::trashFileAtPath(manager, path("none"));
    LUMFileManager::trashFileAtPath(manager, nullptr);
    LUMFileManager::trashFileRef(nullptr, gone);
    EXPECT_FALSE(isTrashed("a"));
}

TEST_F(LUMFileManagerTrashTest, SafelyTrashesALinkItself)
{
    put("a");
    fs::create_symlink("a", folder / "link");
    fs::create_symlink("nowhere", folder / "dangling");
    EXPECT_TRUE(LUMFileManager_Safe::trashItemAtPath(path("link")));
    EXPECT_TRUE(LUMFileManager_Safe::trashItemAtPath(path("dangling/")));
    EXPECT_EQ(names(), "a");
    EXPECT_TRUE(isTrashed("link"));
    EXPECT_TRUE(isTrashed("dangling"));
}

TEST_F(LUMFileManagerTrashTest, SafelyTellsWhatCannotBeTrashed)
{
    NSRef<NSError> error;
    EXPECT_FALSE(LUMFileManager_Safe::trashItemAtPath(path("none"), &error));
    EXPECT_EQ(error->code(), -43);
    EXPECT_FALSE(LUMFileManager_Safe::trashItemAtPath(nullptr, &error));
    EXPECT_EQ(error->code(), -43);
    EXPECT_FALSE(LUMFileManager_Safe::trashItemAtPath("/", &error));
    EXPECT_EQ(error->code(), -36);
    EXPECT_FALSE(LUMFileManager_Safe::trashItemAtPath(path("."), &error));
    EXPECT_EQ(error->code(), -36);
    EXPECT_FALSE(LUMFileManager_Safe::trashItemAtPath(path("none")));
}

}
