#include "platform/files/trash.h"

#include "tests/platform/files/faulty_tree_system.h"
#include "tests/platform/files/tree_fixture.h"

#include <cerrno>

namespace fs = std::filesystem;
using platform::trashItem;
using platform::TreeSystem;

namespace {

/// A desktop that refuses, a user's own trash in "home", and volumes by folder name.
class RefusingDesktop : public platform::TrashSystem {
public:
    explicit RefusingDesktop(fs::path root) : mRoot(std::move(root)) { }

    bool trashByDesktop(const std::string&) override { return isWilling; }
    std::string homeTrash() override { return hasHome ? (mRoot / "home").string() : std::string(); }
    std::string topFolderOf(const std::string& folder) override
    {
        const std::string top = mRoot / "volume";
        return folder.starts_with(top) && !isOneVolume ? top : mRoot.string();
    }
    uid_t user() override { return geteuid(); }
    std::string localTime() override { return "2024-02-29T23:59:59"; }

    bool isWilling = false;
    bool hasHome = true;
    bool isOneVolume = false;

private:
    const fs::path mRoot;
};

class TrashTest : public TreeTest {
protected:
    TrashTest()
    {
        makeFolder("home");
        makeFolder("volume/sub");
        put("volume/sub/a b.txt", "text");
    }

    int trash(const std::string& name) { return trashItem(desktop, system, path(name)); }

    RefusingDesktop desktop { folder };
    TreeSystem& system = TreeSystem::real();
    const std::string own = ".Trash-" + std::to_string(geteuid());
};

TEST_F(TrashTest, LeavesItToTheDesktop)
{
    desktop.isWilling = true;
    EXPECT_EQ(trash("volume/sub/a b.txt"), 0);
    EXPECT_EQ(get("volume/sub/a b.txt"), "text"); // this desktop only says so
}

TEST_F(TrashTest, GoesToTheTopOfItsVolume)
{
    EXPECT_EQ(trash("volume/sub/a b.txt"), 0);
    EXPECT_EQ(get("volume/" + own + "/files/a b.txt"), "text");
    EXPECT_EQ(get("volume/" + own + "/info/a b.txt.trashinfo"),
        "[Trash Info]\nPath=sub/a%20b.txt\nDeletionDate=2024-02-29T23:59:59\n");
    EXPECT_FALSE(fs::exists(path("volume/sub/a b.txt")));
    EXPECT_EQ(modeOf(path("volume/" + own)), 0700u);
}

TEST_F(TrashTest, GoesToTheTrashOfAllUsersWhenItIsARealOne)
{
    makeFolder("volume/.Trash");
    chmod(path("volume/.Trash").c_str(), 01777);
    EXPECT_EQ(trash("volume/sub/a b.txt"), 0);
    EXPECT_EQ(get("volume/.Trash/" + std::to_string(geteuid()) + "/files/a b.txt"), "text");
}

TEST_F(TrashTest, DoesNotTrustATrashOfAllUsersThatIsNotSticky)
{
    makeFolder("volume/.Trash");
    chmod(path("volume/.Trash").c_str(), 0777);
    EXPECT_EQ(trash("volume/sub/a b.txt"), 0);
    EXPECT_EQ(get("volume/" + own + "/files/a b.txt"), "text");
}

TEST_F(TrashTest, DoesNotFollowALinkThatStandsForTheTrash)
{
    makeFolder("elsewhere");
    fs::create_directory_symlink(folder / "elsewhere", folder / "volume" / own);
    fs::create_directory_symlink(folder / "elsewhere", folder / "volume/.Trash");
    EXPECT_EQ(trash("volume/sub/a b.txt"), 0);
    EXPECT_TRUE(fs::is_empty(folder / "elsewhere"));
    EXPECT_EQ(get("home/files/a b.txt"), "text");
}

TEST_F(TrashTest, GoesToTheUsersOwnTrashOnItsVolume)
{
    desktop.isOneVolume = true;
    EXPECT_EQ(trash("volume/sub/a b.txt"), 0);
    EXPECT_EQ(get("home/files/a b.txt"), "text");
    EXPECT_EQ(get("home/info/a b.txt.trashinfo").substr(13, 5), "Path=");
    EXPECT_NE(
        get("home/info/a b.txt.trashinfo").find(path("volume/sub/a%20b.txt") + "\n"), std::string::npos);
}

TEST_F(TrashTest, IsCopiedToTheUsersOwnTrashWhenTheVolumeHasNoPlace)
{
    put("volume/" + own, "in the way");
    EXPECT_EQ(trash("volume/sub/a b.txt"), 0);
    EXPECT_EQ(get("home/files/a b.txt"), "text");
    EXPECT_EQ(get("volume/" + own), "in the way");
}

TEST_F(TrashTest, CountsWhatHasTheSameName)
{
    for (const char* text : { "1", "2", "3" }) {
        put("volume/a.tar.gz", text);
        EXPECT_EQ(trash("volume/a.tar.gz"), 0);
    }
    EXPECT_EQ(get("volume/" + own + "/files/a.tar.gz"), "1");
    EXPECT_EQ(get("volume/" + own + "/files/a.2.tar.gz"), "2");
    EXPECT_EQ(get("volume/" + own + "/files/a.3.tar.gz"), "3");
    EXPECT_TRUE(fs::exists(path("volume/" + own + "/info/a.3.tar.gz.trashinfo")));
}

TEST_F(TrashTest, NeverReplacesAFileWithoutANote)
{
    makeFolder("volume/" + own + "/files");
    chmod(path("volume/" + own).c_str(), 0700);
    put("volume/" + own + "/files/a b.txt", "older");
    EXPECT_EQ(trash("volume/sub/a b.txt"), 0);
    EXPECT_EQ(get("volume/" + own + "/files/a b.txt"), "older");
    EXPECT_EQ(get("volume/" + own + "/files/a b.2.txt"), "text");
    EXPECT_FALSE(fs::exists(path("volume/" + own + "/info/a b.txt.trashinfo")));
}

TEST_F(TrashTest, MovesALinkAndNotWhatItLeadsTo)
{
    fs::create_symlink("a b.txt", folder / "volume/sub/link");
    EXPECT_EQ(trash("volume/sub/link/"), 0);
    EXPECT_TRUE(fs::is_symlink(path("volume/" + own + "/files/link")));
    EXPECT_EQ(get("volume/sub/a b.txt"), "text");
}

TEST_F(TrashTest, ShortensNamesThatLeaveNoRoomForTheirNote)
{
    const std::string name = std::string(200, 'x') + "\u00e4\u00e4" + std::string(40, 'y') + ".txt";
    put("volume/" + name, "1");
    EXPECT_EQ(trash("volume/" + name), 0);
    put("volume/" + name, "2");
    EXPECT_EQ(trash("volume/" + name), 0);
    EXPECT_FALSE(fs::exists(path("volume/" + name)));
    EXPECT_EQ(
        std::distance(fs::directory_iterator(path("volume/" + own + "/info")), fs::directory_iterator()), 2);
}

TEST_F(TrashTest, RefusesWhatIsNoItem)
{
    EXPECT_EQ(trash("volume/none"), -ENOENT);
    EXPECT_EQ(trash("none/none"), -ENOENT);
    EXPECT_EQ(trash("volume/."), -EINVAL);
    EXPECT_EQ(trash("volume/.."), -EINVAL);
    EXPECT_EQ(trashItem(desktop, system, "/"), -EINVAL);
    EXPECT_EQ(trashItem(desktop, system, ""), -ENOENT);
}

TEST_F(TrashTest, DoesNotPutATrashIntoItself)
{
    desktop.isOneVolume = true;
    EXPECT_NE(trash("home"), 0);
    EXPECT_TRUE(fs::is_directory(folder / "home"));
}

TEST_F(TrashTest, LeavesTheItemWhereThereIsNoTrash)
{
    desktop.hasHome = false;
    put("volume/" + own, "in the way");
    EXPECT_EQ(trash("volume/sub/a b.txt"), -EACCES);
    EXPECT_EQ(get("volume/sub/a b.txt"), "text");
}

class TrashFaultTest : public TrashTest, public testing::WithParamInterface<int> { };

TEST_P(TrashFaultTest, LosesNothingWhicheverCallFails)
{
    for (int at = 0;; ++at) {
        put("volume/sub/a b.txt", "text");
        FaultyTreeSystem faulty(at, GetParam());
        const int result = trashItem(desktop, faulty, path("volume/sub/a b.txt"));
        ASSERT_EQ(faulty.openFiles(), 0) << "call " << at;
        const bool isThere = fs::exists(path("volume/sub/a b.txt"));
        const bool isOnTop = get("volume/" + own + "/files/a b.txt") == "text";
        const bool isInHome = get("home/files/a b.txt") == "text";
        ASSERT_TRUE(isThere || isOnTop || isInHome) << "call " << at;
        ASSERT_EQ(result != 0, isThere) << "call " << at;
        ASSERT_EQ(isOnTop, fs::exists(path("volume/" + own + "/info/a b.txt.trashinfo")));
        ASSERT_EQ(isInHome, fs::exists(path("home/info/a b.txt.trashinfo")));
        if (!faulty.failed())
            break;
        fs::remove_all(path("volume/" + own));
        fs::remove_all(path("home"));
        makeFolder("home");
    }
}

INSTANTIATE_TEST_SUITE_P(Errors, TrashFaultTest, testing::Values(ENOSPC, EIO, EROFS, EACCES, EXDEV, EMFILE));

}
