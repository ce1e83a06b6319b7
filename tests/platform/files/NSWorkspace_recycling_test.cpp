// The trash of the desktop itself, with a home of the test's own.
#include "LUMPlatform/NSArray.h"
#include "LUMPlatform/NSNull.h"
#include "LUMPlatform/NSSend.h"
#include "LUMPlatform/NSString.h"
#include "LUMPlatform/NSWorkspace.h"
#include "tests/data_home.h"
#include "tests/platform/files/tree_fixture.h"

namespace fs = std::filesystem;

namespace {

class NSWorkspaceRecyclingTest : public TreeTest {
protected:
    NSWorkspaceRecyclingTest() { fs::remove_all(DataHome::folder / "Trash"); }

    bool recycle(const NSRef<NSArray>& files)
    {
        return workspace->performFileOperation(NSWorkspaceRecycleOperation, folder.string(), "", files, &tag);
    }
    static std::string trashed(const std::string& name)
    {
        return readFile(DataHome::folder / "Trash/files" / name);
    }

    NSRef<NSWorkspace> workspace = NSWorkspace::sharedWorkspace();
    NSInteger tag = 7;
};

TEST_F(NSWorkspaceRecyclingTest, MovesFilesToTheTrash)
{
    put("a", "one");
    put("b", "two");
    EXPECT_TRUE(recycle(NSArray::of("a", "b")));
    EXPECT_EQ(tag, 0);
    EXPECT_EQ(names(), "");
    EXPECT_EQ(trashed("a"), "one");
    EXPECT_EQ(trashed("b"), "two");
    const std::string note = readFile(DataHome::folder / "Trash/info/a.trashinfo");
    EXPECT_NE(note.find("Path=" + path("a") + "\n"), std::string::npos) << note;
}

TEST_F(NSWorkspaceRecyclingTest, MovesALinkAndNotWhatItLeadsTo)
{
    put("a", "kept");
    fs::create_symlink("a", folder / "link");
    EXPECT_TRUE(recycle(NSArray::of("link")));
    EXPECT_EQ(names(), "a");
    EXPECT_TRUE(fs::is_symlink(DataHome::folder / "Trash/files/link"));
}

TEST_F(NSWorkspaceRecyclingTest, MovesTheOthersWhenOneFails)
{
    put("a");
    EXPECT_FALSE(recycle(NSArray::of("none", "a")));
    EXPECT_EQ(tag, -1);
    EXPECT_EQ(names(), "");
}

TEST_F(NSWorkspaceRecyclingTest, TakesPlainNamesAlone)
{
    makeFolder("d");
    put("d/a");
    put("b");
    for (const NSId& name : { NSId("d/a"), NSId("."), NSId(".."), NSId(""), NSId(NSNull::null()), NSId(5) }) {
        EXPECT_FALSE(recycle(NSArray::arrayWithObjects({ name }))) << name;
    }
    EXPECT_EQ(names(), "b d");
    EXPECT_EQ(get("d/a"), "content");
}

TEST_F(NSWorkspaceRecyclingTest, DoesNothingElse)
{
    put("a");
    EXPECT_FALSE(workspace->performFileOperation("destroy", folder.string(), "", NSArray::of("a")));
    EXPECT_FALSE(workspace->performFileOperation(nullptr, folder.string(), "", NSArray::of("a")));
    EXPECT_FALSE(workspace->performFileOperation(NSWorkspaceRecycleOperation, nullptr, "", NSArray::of("a")));
    EXPECT_FALSE(workspace->performFileOperation(NSWorkspaceRecycleOperation, "", "", NSArray::of("a")));
    EXPECT_FALSE(workspace->performFileOperation(NSWorkspaceRecycleOperation, folder.string(), "", nullptr));
    EXPECT_EQ(names(), "a");
}

TEST_F(NSWorkspaceRecyclingTest, MovesWhatTheDesktopRefuses)
{
    // Files in memory, which the desktop calls internal to the system.
    if (!fs::is_directory("/dev/shm"))
        GTEST_SKIP() << "no volume in memory";
    const TemporaryFolder memory("/dev/shm");
    const fs::path& there = memory.path();
    std::ofstream(there / "in memory") << "text";
    EXPECT_TRUE(workspace->performFileOperation(
        NSWorkspaceRecycleOperation, there.string(), "", NSArray::of("in memory")));
    EXPECT_FALSE(fs::exists(there / "in memory"));
    const fs::path trash = "/dev/shm/.Trash-" + std::to_string(geteuid());
    for (const char* part : { "files/in memory", "info/in memory.trashinfo", "files", "info", "." })
        std::remove((trash / part).lexically_normal().c_str());
    std::error_code ignored;
    fs::remove(trash, ignored);
}

TEST_F(NSWorkspaceRecyclingTest, AnswersItsSelector)
{
    put("a");
    EXPECT_TRUE(NSSend<bool>(workspace, NSSelector("performFileOperation:source:destination:files:tag:"),
        NSWorkspaceRecycleOperation.string(), NSRef<NSString>(folder.string()), NSRef<NSString>(""),
        NSArray::of("a"), &tag));
    EXPECT_EQ(names(), "");
}

}
