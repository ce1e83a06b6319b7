#include "platform/files/file_items.h"

#include "tests/platform/files/faulty_tree_system.h"
#include "tests/platform/files/tree_fixture.h"

#include <cerrno>
#include <functional>

namespace fs = std::filesystem;
using platform::moveItem;
using platform::TreeSystem;

namespace {

class MoveItemTest : public TreeTest {
protected:
    int move(const std::string& from, const std::string& to)
    {
        return moveItem(system, path(from), path(to));
    }

    TreeSystem& system = TreeSystem::real();
};

TEST_F(MoveItemTest, MovesFilesFoldersAndLinks)
{
    putSome("t");
    put("a");
    fs::create_symlink("a", folder / "link");
    EXPECT_EQ(move("t", "u"), 0);
    EXPECT_EQ(move("a", "u/a2"), 0);
    EXPECT_EQ(move("link/", "link2"), 0);
    EXPECT_EQ(names(), "link2 u");
    EXPECT_EQ(get("u/a2"), "content");
}

TEST_F(MoveItemTest, NeverReplaces)
{
    put("a", "new");
    put("b", "old");
    makeFolder("empty");
    makeFolder("t");
    EXPECT_EQ(move("a", "b"), -EEXIST);
    EXPECT_EQ(move("t", "empty"), -EEXIST);
    EXPECT_EQ(move("a", "a"), -EEXIST);
    EXPECT_EQ(get("b"), "old");
    EXPECT_EQ(names(), "a b empty t");
}

TEST_F(MoveItemTest, MovesNothingIntoItself)
{
    putSome("t");
    EXPECT_EQ(move("t", "t/sub/t"), -EINVAL);
    EXPECT_EQ(tree("t"), "a = text of a\nsub/\nsub/b = \nsub/empty/\nsub/link -> ../../outside\n");
}

TEST_F(MoveItemTest, TellsWhatIsMissing)
{
    put("a");
    EXPECT_EQ(move("none", "b"), -ENOENT);
    EXPECT_EQ(move("a", "none/b"), -ENOENT);
    EXPECT_EQ(moveItem(system, "/", path("b")), -EINVAL);
    EXPECT_EQ(moveItem(system, path("a"), path(".")), -EINVAL);
}

TEST_F(MoveItemTest, CopiesAndRemovesBetweenVolumes)
{
    putSome("t");
    const std::string before = tree("t");
    FaultyTreeSystem volumes;
    volumes.refuseFirstRename(EXDEV);
    EXPECT_EQ(moveItem(volumes, path("t"), path("u")), 0);
    EXPECT_EQ(names(), "u");
    EXPECT_EQ(tree("u"), before);
}

TEST_F(MoveItemTest, MovesToAVolumeInMemoryAndBack)
{
    struct stat here = {}, memory = {};
    if (stat(folder.c_str(), &here) != 0 || stat("/dev/shm", &memory) != 0 || here.st_dev == memory.st_dev)
        GTEST_SKIP() << "no other volume";
    putSome("t");
    const std::string before = tree("t");
    const TemporaryFolder there("/dev/shm");
    EXPECT_EQ(moveItem(system, path("t"), there / "t"), 0);
    EXPECT_EQ(names(), "");
    EXPECT_EQ(moveItem(system, there / "t", path("u")), 0);
    EXPECT_EQ(tree("u"), before);
    EXPECT_TRUE(fs::is_empty(there.path()));
}

TEST_F(MoveItemTest, NeverReplacesBetweenVolumes)
{
    put("a", "new");
    put("b", "old");
    FaultyTreeSystem volumes;
    volumes.refuseFirstRename(EXDEV);
    EXPECT_EQ(moveItem(volumes, path("a"), path("b")), -EEXIST);
    EXPECT_EQ(get("a"), "new");
    EXPECT_EQ(get("b"), "old");
}

class MoveByHandTest : public MoveItemTest, public testing::WithParamInterface<int> { };

TEST_P(MoveByHandTest, MovesOnVolumesThatCannotRenameWithoutReplacing)
{
    putSome("t");
    put("a");
    fs::create_symlink("a", folder / "link");
    FaultyTreeSystem old;
    old.refuseRenames(GetParam());
    EXPECT_EQ(moveItem(old, path("t"), path("t2")), 0);
    EXPECT_EQ(moveItem(old, path("a"), path("a2")), 0);
    EXPECT_EQ(moveItem(old, path("link"), path("link2")), 0);
    EXPECT_EQ(names(), "a2 link2 t2");
    EXPECT_EQ(moveItem(old, path("a2"), path("link2")), -EEXIST);
    EXPECT_EQ(moveItem(old, path("t2"), path("a2")), -EEXIST);
    EXPECT_EQ(moveItem(old, path("t2"), path("t2/sub/t")), -EINVAL);
    EXPECT_EQ(names(), "a2 link2 t2");
    EXPECT_FALSE(fs::exists(folder / "t2/sub/t"));
}

TEST_P(MoveByHandTest, MovesFilesWhereThereAreNoHardLinksEither)
{
    put("a", "a");
    put("b", "b");
    FaultyTreeSystem old;
    old.refuseRenames(GetParam());
    old.refuseLinks(EPERM);
    EXPECT_EQ(moveItem(old, path("a"), path("b")), -EEXIST);
    EXPECT_EQ(moveItem(old, path("a"), path("c")), 0);
    EXPECT_EQ(get("c"), "a");
    EXPECT_EQ(names(), "b c");
}

INSTANTIATE_TEST_SUITE_P(Refusals, MoveByHandTest, testing::Values(EINVAL, ENOSYS));

class MoveItemFaultTest : public MoveItemTest, public testing::WithParamInterface<int> {
protected:
    /// Moves with each call failing in turn; `prepare` says what else the system cannot do.
    void moveWithFaults(const std::function<void(FaultyTreeSystem&)>& prepare)
    {
        for (int at = 0;; ++at) {
            fs::remove_all(folder / "u");
            fs::remove_all(folder / "t");
            putSome("t");
            const std::string before = tree("t");
            FaultyTreeSystem faulty(at, GetParam());
            prepare(faulty);
            const int result = moveItem(faulty, path("t"), path("u"));
            ASSERT_EQ(faulty.openFiles(), 0) << "call " << at;
            const bool isMoved = fs::exists(folder / "u");
            ASSERT_EQ(tree(isMoved ? "u" : "t"), before) << "call " << at;
            if (result == 0) {
                ASSERT_EQ(names(), "u") << "call " << at;
            } else {
                ASSERT_TRUE(names() == "t" || names() == "t u") << names() << ", call " << at;
            }
            if (!faulty.failed())
                break;
        }
    }
};

TEST_P(MoveItemFaultTest, LosesNothingWhicheverCallFails)
{
    moveWithFaults([](FaultyTreeSystem&) {});
}

TEST_P(MoveItemFaultTest, LosesNothingBetweenVolumesWhicheverCallFails)
{
    moveWithFaults([](FaultyTreeSystem& faulty) { faulty.refuseFirstRename(EXDEV); });
}

TEST_P(MoveItemFaultTest, LosesNothingByHandWhicheverCallFails)
{
    moveWithFaults([](FaultyTreeSystem& faulty) { faulty.refuseRenames(ENOSYS); });
}

INSTANTIATE_TEST_SUITE_P(
    Errors, MoveItemFaultTest, testing::Values(ENOSPC, EIO, EROFS, EACCES, EXDEV, EMFILE, EDQUOT));

}
