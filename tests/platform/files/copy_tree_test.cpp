#include "platform/files/copy_tree.h"

#include "platform/files/file_items.h"
#include "tests/platform/files/faulty_tree_system.h"
#include "tests/platform/files/tree_fixture.h"

#include <cerrno>
#include <sys/resource.h>
#include <sys/xattr.h>

namespace fs = std::filesystem;
using platform::copyItem;
using platform::TreeSystem;

namespace {

class CopyTreeTest : public TreeTest {
protected:
    int copy(const std::string& from, const std::string& to)
    {
        return copyItem(system, path(from), path(to));
    }

    TreeSystem& system = TreeSystem::real();
};

TEST_F(CopyTreeTest, CopiesAFile)
{
    put("a", "text");
    EXPECT_EQ(copy("a", "b"), 0);
    EXPECT_EQ(get("b"), "text");
    EXPECT_EQ(names(), "a b");
}

TEST_F(CopyTreeTest, CopiesAFolderWithAllThatIsInIt)
{
    putSome("t");
    EXPECT_EQ(copy("t", "u/"), 0);
    EXPECT_EQ(tree("u"), tree("t"));
    EXPECT_EQ(tree("u"), "a = text of a\nsub/\nsub/b = \nsub/empty/\nsub/link -> ../../outside\n");
}

TEST_F(CopyTreeTest, CopiesALinkAsALink)
{
    makeFolder("t");
    fs::create_directory_symlink("t", folder / "link");
    EXPECT_EQ(copy("link", "copy"), 0);
    EXPECT_EQ(fs::read_symlink(folder / "copy"), "t");
}

TEST_F(CopyTreeTest, MakesPipesAnew)
{
    mkfifo(path("pipe").c_str(), 0600);
    EXPECT_EQ(copy("pipe", "copy"), 0);
    EXPECT_TRUE(fs::is_fifo(folder / "copy"));
}

TEST_F(CopyTreeTest, KeepsPermissionsAndTimes)
{
    putSome("t");
    chmod(path("t/a").c_str(), 04751);
    chmod(path("t/sub").c_str(), 0500);
    const timespec times[] = { { 1'000'000'000, 5 }, { 1'100'000'000, 123'456'789 } };
    for (const char* name : { "t/a", "t/sub", "t", "t/sub/link" })
        utimensat(AT_FDCWD, path(name).c_str(), times, AT_SYMLINK_NOFOLLOW);
    EXPECT_EQ(copy("t", "u"), 0);
    EXPECT_EQ(modeOf(path("u/a")), 04751u);
    EXPECT_EQ(modeOf(path("u/sub")), 0500u);
    for (const char* name : { "u/a", "u/sub", "u", "u/sub/link" }) {
        struct stat status = {};
        lstat(path(name).c_str(), &status);
        EXPECT_EQ(status.st_mtim.tv_sec, 1'100'000'000) << name;
        EXPECT_EQ(status.st_mtim.tv_nsec, 123'456'789) << name;
    }
    chmod(path("t/sub").c_str(), 0700);
    chmod(path("u/sub").c_str(), 0700);
}

TEST_F(CopyTreeTest, KeepsExtendedAttributes)
{
    makeFolder("t");
    put("t/a");
    const std::string large(1500, 'x');
    if (setxattr(path("t/a").c_str(), "user.note", large.data(), large.size(), 0) != 0)
        GTEST_SKIP() << "no extended attributes here";
    setxattr(path("t").c_str(), "user.empty", "", 0, 0);
    EXPECT_EQ(copy("t", "u"), 0);
    char value[2000];
    EXPECT_EQ(getxattr(path("u/a").c_str(), "user.note", value, sizeof value), 1500);
    EXPECT_EQ(getxattr(path("u").c_str(), "user.empty", value, sizeof value), 0);
}

TEST_F(CopyTreeTest, KeepsExtendedAttributesOfAFileThatNobodyMayWriteTo)
{
    put("a");
    if (setxattr(path("a").c_str(), "user.note", "n", 1, 0) != 0)
        GTEST_SKIP() << "no extended attributes here";
    chmod(path("a").c_str(), 0400);
    EXPECT_EQ(copy("a", "b"), 0);
    char value[8];
    EXPECT_EQ(getxattr(path("b").c_str(), "user.note", value, sizeof value), 1);
    EXPECT_EQ(modeOf(path("b")), 0400u);
}

TEST_F(CopyTreeTest, DropsPermissionsInTheNameOfAnOwnerItCannotKeep)
{
    if (geteuid() != 0)
        GTEST_SKIP() << "only root can make a file of another owner";
    put("a");
    ASSERT_EQ(chown(path("a").c_str(), 1234, 1234), 0);
    chmod(path("a").c_str(), 06755);
    FaultyTreeSystem plain;
    plain.refuseOwners(EPERM);
    EXPECT_EQ(copyItem(plain, path("a"), path("b")), 0);
    EXPECT_EQ(modeOf(path("b")), 0755u);
    EXPECT_EQ(copy("a", "c"), 0);
    EXPECT_EQ(modeOf(path("c")), 06755u);
}

TEST_F(CopyTreeTest, CopiesAFileThatTheSystemMakesUpOnReading)
{
    EXPECT_EQ(copyItem(system, "/proc/self/status", path("a")), 0);
    EXPECT_NE(get("a").find("Pid:"), std::string::npos);
}

TEST_F(CopyTreeTest, CopiesByBlocksWhereTheSystemCannot)
{
    const std::string text(140'000, 'x');
    put("a", text);
    FaultyTreeSystem plain;
    plain.refuseRanges(EXDEV);
    EXPECT_EQ(copyItem(plain, path("a"), path("b")), 0);
    EXPECT_TRUE(get("b") == text);
}

/// A file of 8 MiB with a little text in the middle and nothing else.
class CopyHolesTest : public CopyTreeTest {
protected:
    CopyHolesTest()
    {
        put("a", "");
        fs::resize_file(folder / "a", kSize);
        std::fstream(folder / "a", std::ios::in | std::ios::out).seekp(kSize / 2) << "text";
    }
    std::uint64_t allocated(const std::string& name) const
    {
        struct stat status = {};
        stat(path(name).c_str(), &status);
        return static_cast<std::uint64_t>(status.st_blocks) * 512;
    }

    static constexpr std::uint64_t kSize = 8 << 20;
};

TEST_F(CopyHolesTest, KeepsHoles)
{
    if (allocated("a") >= kSize)
        GTEST_SKIP() << "no holes here";
    EXPECT_EQ(copy("a", "b"), 0);
    EXPECT_TRUE(get("b") == get("a"));
    EXPECT_LT(allocated("b"), kSize / 2);
}

TEST_F(CopyHolesTest, FillsThemWhereTheSystemCannotTell)
{
    FaultyTreeSystem plain;
    plain.refuseHoles(EINVAL);
    fs::resize_file(folder / "a", 64 << 10); // it copies four bytes at a time
    EXPECT_EQ(copyItem(plain, path("a"), path("b")), 0);
    EXPECT_TRUE(get("b") == get("a"));
}

TEST_F(CopyHolesTest, CopiesAFileOfNothingButAHole)
{
    fs::resize_file(folder / "a", 0);
    fs::resize_file(folder / "a", kSize);
    EXPECT_EQ(copy("a", "b"), 0);
    EXPECT_EQ(fs::file_size(folder / "b"), kSize);
}

TEST_F(CopyTreeTest, EndsThoughSomebodyAppendsAllTheTime)
{
    /// Appends to the file whenever some of it is copied.
    class Appender : public FaultyTreeSystem {
    public:
        explicit Appender(std::string path) : mPath(std::move(path)) { }
        ssize_t copyRange(int from, int to, std::size_t size) override
        {
            std::ofstream(mPath, std::ios::app) << "more";
            return FaultyTreeSystem::copyRange(from, to, size);
        }

    private:
        const std::string mPath;
    };
    put("a", "text");
    Appender appender(path("a"));
    EXPECT_EQ(copyItem(appender, path("a"), path("b")), 0);
    EXPECT_EQ(get("b"), "text");
}

TEST_F(CopyTreeTest, NeverReplaces)
{
    put("a", "new");
    put("b", "old");
    fs::create_symlink("nowhere", folder / "dangling");
    EXPECT_EQ(copy("a", "b"), -EEXIST);
    EXPECT_EQ(copy("a", "a"), -EEXIST);
    EXPECT_EQ(copy("a", "dangling"), -EEXIST);
    EXPECT_EQ(get("b"), "old");
    EXPECT_EQ(names(), "a b dangling");
}

TEST_F(CopyTreeTest, CopiesNothingIntoItself)
{
    putSome("t");
    const std::string before = tree("t");
    EXPECT_EQ(copy("t", "t/copy"), -EINVAL);
    EXPECT_EQ(copy("t", "t/sub/empty/copy"), -EINVAL);
    EXPECT_EQ(tree("t"), before);
}

TEST_F(CopyTreeTest, CopiesWhatIsDeeperThanAnyPathByAFewDescriptors)
{
    constexpr int kDepth = 200;
    putDeep("t", kDepth);
    FaultyTreeSystem counting;
    EXPECT_EQ(copyItem(counting, path("t"), path("u")), 0);
    EXPECT_EQ(depthOf("u"), kDepth);
    EXPECT_LE(counting.mostOpenFiles(), 80);
    EXPECT_EQ(counting.openFiles(), 0);
    (void)platform::removeItem(system, path("t"));
    (void)platform::removeItem(system, path("u"));
}

TEST_F(CopyTreeTest, NeedsAFewDescriptorsAlone)
{
    putDeep("t", 60);
    put("t/" + kDeepName + "/" + kDeepName + "/file");
    rlimit before = {};
    getrlimit(RLIMIT_NOFILE, &before);
    const int next = dup(0); // the lowest that is free
    close(next);
    const rlimit few = { static_cast<rlim_t>(next) + 8, before.rlim_max };
    setrlimit(RLIMIT_NOFILE, &few);
    const int copied = copy("t", "u");
    const int removed = platform::removeItem(system, path("t"));
    setrlimit(RLIMIT_NOFILE, &before);
    EXPECT_EQ(copied, 0);
    EXPECT_EQ(removed, 0);
    EXPECT_EQ(depthOf("u"), 60);
    EXPECT_EQ(get("u/" + kDeepName + "/" + kDeepName + "/file"), "content");
    (void)platform::removeItem(system, path("u"));
}

TEST_F(CopyTreeTest, TellsWhatIsMissing)
{
    put("a");
    EXPECT_EQ(copy("none", "b"), -ENOENT);
    EXPECT_EQ(copy("a", "none/b"), -ENOENT);
    EXPECT_EQ(copy("a", "a/b"), -ENOTDIR);
    EXPECT_EQ(copyItem(system, "", path("b")), -ENOENT);
    EXPECT_EQ(copyItem(system, path("a"), ""), -ENOENT);
    EXPECT_EQ(copyItem(system, path("a"), path("..")), -EINVAL);
    EXPECT_EQ(copyItem(system, "/", path("b")), -EINVAL);
    EXPECT_EQ(names(), "a");
}

TEST_F(CopyTreeTest, CopiesToANameOfTheLongestLength)
{
    put("a");
    EXPECT_EQ(copy("a", std::string(255, 'n')), 0);
    EXPECT_EQ(copy("a", std::string(256, 'n')), -ENAMETOOLONG);
}

TEST_F(CopyTreeTest, CleansUpBelowFoldersThatNobodyMayWriteTo)
{
    makeFolder("t/closed");
    put("t/closed/a");
    put("t/z");
    chmod(path("t/closed").c_str(), 0500);
    for (int at = 0;; ++at) {
        FaultyTreeSystem faulty(at, EIO);
        const int result = copyItem(faulty, path("t"), path("u"));
        if (result == 0)
            break;
        ASSERT_EQ(names(), "t") << "call " << at;
    }
    for (const char* name : { "t/closed", "u/closed" })
        chmod(path(name).c_str(), 0700);
}

class CopyTreeFaultTest : public CopyTreeTest, public testing::WithParamInterface<int> { };

TEST_P(CopyTreeFaultTest, CopiesAllOrNothingWhicheverCallFails)
{
    putSome("t");
    const std::string before = tree("t");
    for (int at = 0;; ++at) {
        FaultyTreeSystem faulty(at, GetParam());
        const int result = copyItem(faulty, path("t"), path("u"));
        ASSERT_EQ(faulty.openFiles(), 0) << "call " << at;
        ASSERT_EQ(tree("t"), before);
        if (result != 0) {
            ASSERT_EQ(names(), "t") << "call " << at;
        } else {
            ASSERT_EQ(names(), "t u") << "call " << at;
            ASSERT_EQ(tree("u"), before) << "call " << at;
        }
        if (!faulty.failed())
            break;
        fs::remove_all(folder / "u");
    }
}

INSTANTIATE_TEST_SUITE_P(
    Errors, CopyTreeFaultTest, testing::Values(ENOSPC, EIO, EROFS, EACCES, EXDEV, EMFILE, EDQUOT, EPERM));

}
