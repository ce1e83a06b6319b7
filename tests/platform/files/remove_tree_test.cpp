#include "platform/files/remove_tree.h"

#include "platform/files/file_items.h"
#include "tests/platform/files/faulty_tree_system.h"
#include "tests/platform/files/tree_fixture.h"

#include <cerrno>

namespace fs = std::filesystem;
using platform::removeItem;
using platform::TreeSystem;

namespace {

class RemoveTreeTest : public TreeTest {
protected:
    TreeSystem& system = TreeSystem::real();
};

TEST_F(RemoveTreeTest, RemovesAFile)
{
    put("a");
    EXPECT_EQ(removeItem(system, path("a")), 0);
    EXPECT_EQ(names(), "");
}

TEST_F(RemoveTreeTest, RemovesAFolderWithAllThatIsInIt)
{
    putSome("t");
    EXPECT_EQ(removeItem(system, path("t/")), 0);
    EXPECT_EQ(names(), "");
}

TEST_F(RemoveTreeTest, NeverFollowsALink)
{
    makeFolder("kept");
    put("kept/file");
    makeFolder("t");
    fs::create_directory_symlink(folder / "kept", folder / "t/link");
    fs::create_directory_symlink(folder / "kept", folder / "link");
    EXPECT_EQ(removeItem(system, path("t")), 0);
    EXPECT_EQ(removeItem(system, path("link/")), 0);
    EXPECT_EQ(names(), "kept");
    EXPECT_EQ(get("kept/file"), "content");
}

TEST_F(RemoveTreeTest, RemovesWhatIsDeeperThanAnyPathByAFewDescriptors)
{
    constexpr int kDepth = 200;
    putDeep("t", kDepth);
    FaultyTreeSystem counting;
    EXPECT_EQ(removeItem(counting, path("t")), 0);
    EXPECT_LE(counting.mostOpenFiles(), 40);
    EXPECT_EQ(counting.openFiles(), 0);
    EXPECT_EQ(names(), "");
}

TEST_F(RemoveTreeTest, RemovesNamesThatAreNoText)
{
    makeFolder("t");
    put("t/\xFF\xFE");
    EXPECT_EQ(removeItem(system, path("t")), 0);
}

TEST_F(RemoveTreeTest, RemovesAnEmptyFolderThatNobodyMayLookInto)
{
    makeFolder("t/closed");
    chmod(path("t/closed").c_str(), 0);
    EXPECT_EQ(removeItem(system, path("t")), 0);
}

TEST_F(RemoveTreeTest, TellsThatNothingIsThere)
{
    EXPECT_EQ(removeItem(system, path("none")), -ENOENT);
    EXPECT_EQ(removeItem(system, path("none/a")), -ENOENT);
    EXPECT_EQ(removeItem(system, ""), -ENOENT);
}

TEST_F(RemoveTreeTest, RefusesTheRootAndDots)
{
    put("a");
    EXPECT_EQ(removeItem(system, "/"), -EINVAL);
    EXPECT_EQ(removeItem(system, "///"), -EINVAL);
    EXPECT_EQ(removeItem(system, path(".")), -EINVAL);
    EXPECT_EQ(removeItem(system, path("../")), -EINVAL);
    EXPECT_EQ(get("a"), "content");
}

TEST_F(RemoveTreeTest, DoesNotOpenAWayOutWhenItsFolderIsMovedMeanwhile)
{
    /// Moves the folder two levels down elsewhere once the walk has given up the way back to it.
    class Mover : public FaultyTreeSystem {
    public:
        Mover(fs::path from, fs::path to) : mFrom(std::move(from)), mTo(std::move(to)) { }
        int openFolder(int in, const std::string& name) override
        {
            const int opened = FaultyTreeSystem::openFolder(in, name);
            if (++mEntered == 60)
                fs::rename(mFrom, mTo);
            return opened;
        }

    private:
        fs::path mFrom, mTo;
        int mEntered = 0;
    };
    putDeep("t", 100);
    makeFolder("kept");
    put("kept/file");
    Mover mover(folder / "t" / kDeepName / kDeepName, folder / "kept/d");
    EXPECT_EQ(removeItem(mover, path("t")), -ESTALE);
    EXPECT_EQ(mover.openFiles(), 0);
    EXPECT_EQ(get("kept/file"), "content");
}

class RemoveTreeFaultTest : public RemoveTreeTest, public testing::WithParamInterface<int> { };

TEST_P(RemoveTreeFaultTest, TouchesNothingElseWhicheverCallFails)
{
    for (int at = 0;; ++at) {
        put("outside", "outside");
        putSome("t");
        FaultyTreeSystem faulty(at, GetParam());
        const int result = removeItem(faulty, path("t"));
        ASSERT_EQ(faulty.openFiles(), 0) << "call " << at;
        ASSERT_EQ(get("outside"), "outside");
        if (result == 0) {
            ASSERT_EQ(names(), "outside");
        }
        if (!faulty.failed())
            break;
        fs::remove_all(folder / "t");
    }
}

INSTANTIATE_TEST_SUITE_P(
    Errors, RemoveTreeFaultTest, testing::Values(ENOSPC, EIO, EROFS, EACCES, EXDEV, EMFILE));

}
