#include "tests/watching/kernel_queue_fixture.h"

#include <fcntl.h>
#include <sys/mount.h>
#include <sys/syscall.h>

namespace lum {

INSTANTIATE_TEST_SUITE_P(FileSystems, KernelQueueTest, bothFileSystems(), fileSystemName);

TEST_P(KernelQueueTest, ReportsAWriteInPlace)
{
    const Token token = add("file");
    std::fstream(path("file")) << "abc";
    EXPECT_EQ(report(token), "WRITE");
}

TEST_P(KernelQueueTest, ReportsAnAppendAsGrowth)
{
    const Token token = add("file");
    appendToFile(path("file"), "abc");
    EXPECT_EQ(report(token), "WRITE EXTEND");
    appendToFile(path("file"), "abc");
    EXPECT_EQ(report(token), "WRITE EXTEND");
}

TEST_P(KernelQueueTest, ReportsATruncationAsAWrite)
{
    const Token token = add("file");
    fs::resize_file(path("file"), 3);
    EXPECT_EQ(report(token), "WRITE");
    fs::resize_file(path("file"), 300);
    EXPECT_EQ(report(token), "WRITE EXTEND");
}

TEST_P(KernelQueueTest, ReportsAttributes)
{
    const Token token = add("file");
    chmod(path("file").c_str(), 0600);
    EXPECT_EQ(report(token), "ATTRIB");
    const timespec times[] = { { 1000, 0 }, { 1000, 0 } };
    utimensat(AT_FDCWD, path("file").c_str(), times, 0);
    EXPECT_EQ(report(token), "ATTRIB");
}

TEST_P(KernelQueueTest, ReportsLinksThatComeAndGo)
{
    const Token token = add("file");
    fs::create_hard_link(path("file"), path("link"));
    EXPECT_EQ(report(token), "LINK");
    fs::remove(path("link"));
    EXPECT_EQ(report(token), "LINK");
    fs::create_hard_link(path("file"), path("link"));
    fs::remove(path("file"));
    EXPECT_EQ(report(token), "DELETE");
}

TEST_P(KernelQueueTest, ReportsARenameAndLaterWrites)
{
    const Token token = add("file");
    fs::rename(path("file"), path("other"));
    EXPECT_EQ(report(token), "RENAME");
    appendToFile(path("other"), "abc");
    EXPECT_EQ(report(token), "WRITE");
    fs::remove(path("other"));
    EXPECT_EQ(report(token), "DELETE");
}

TEST_P(KernelQueueTest, ReportsOneRenameForTwoAtOnce)
{
    const Token token = add("file");
    fs::rename(path("file"), path("b"));
    fs::rename(path("b"), path("c"));
    EXPECT_EQ(report(token), "RENAME");
}

TEST_P(KernelQueueTest, FollowsAFileWhoseFolderIsRenamed)
{
    const Token token = addBelowAFolderThatMoves();
    EXPECT_EQ(report(token), "");
    appendToFile(path("moved/file"), "abc");
    EXPECT_EQ(report(token), "WRITE");
}

TEST_P(KernelQueueTest, TakesNoChangeOfAttributesInAMovedFolderForADeletion)
{
    const Token token = addBelowAFolderThatMoves();
    ASSERT_EQ(chmod(path("moved/file").c_str(), 0600), 0);
    EXPECT_EQ(report(token), "ATTRIB");
    fs::remove(path("moved/file"));
    EXPECT_EQ(report(token), "DELETE");
}

TEST_P(KernelQueueTest, TakesTheFileInTheFolderThatStandsInAMovedOnesPlaceForAnother)
{
    const Token token = addBelowAFolderThatMoves();
    fs::create_directory(path("above"));
    writeFile(path("above/file"), "");
    ASSERT_EQ(chmod(path("moved/file").c_str(), 0600), 0);
    EXPECT_EQ(report(token), "ATTRIB");
}

TEST_P(KernelQueueTest, TrustsThePathAgainWhenTheFolderIsMovedBack)
{
    const Token token = addBelowAFolderThatMoves();
    ASSERT_EQ(chmod(path("moved/file").c_str(), 0600), 0);
    EXPECT_EQ(report(token), "ATTRIB");
    fs::rename(path("moved"), path("above"));
    const int held = open(path("above/file").c_str(), O_WRONLY | O_CLOEXEC);
    fs::remove(path("above/file"));
    EXPECT_EQ(report(token), "DELETE");
    close(held);
}

// Deliberate: nothing leads to the object any more, and the kernel tells of its end alone.
TEST_P(KernelQueueTest, ReportsTheDeletionOfARenamedFileThatIsHeldOpenOnlyAtItsEnd)
{
    const Token token = add("file");
    fs::rename(path("file"), path("other"));
    EXPECT_EQ(report(token), "RENAME");
    const int held = open(path("other").c_str(), O_WRONLY | O_CLOEXEC);
    fs::remove(path("other"));
    EXPECT_EQ(report(token), "ATTRIB");
    close(held);
    EXPECT_EQ(report(token), "DELETE");
}

TEST_P(KernelQueueTest, ReportsADeletionOnce)
{
    const Token token = add("file");
    fs::remove(path("file"));
    EXPECT_EQ(report(token), "DELETE");
    writeFile(path("file"), "new");
    EXPECT_EQ(report(token), "");
    EXPECT_EQ(queue->remove(token), 0);
}

TEST_P(KernelQueueTest, ReportsADeletionWhileTheFileIsHeldOpen)
{
    const Token token = add("file");
    const int held = open(path("file").c_str(), O_WRONLY | O_CLOEXEC);
    fs::remove(path("file"));
    EXPECT_EQ(report(token), "DELETE");
    EXPECT_EQ(write(held, "abc", 3), 3);
    EXPECT_EQ(report(token), "WRITE");
    close(held);
    EXPECT_EQ(report(token), "");
}

TEST_P(KernelQueueTest, ReportsAnAtomicSaveAsADeletion)
{
    const Token token = add("file");
    writeFile(path("new"), "abc");
    fs::rename(path("new"), path("file"));
    EXPECT_EQ(report(token), "DELETE");
    appendToFile(path("file"), "abc");
    EXPECT_EQ(report(token), "");
}

TEST_P(KernelQueueTest, ReportsASaveWithABackupAsARename)
{
    const Token token = add("file");
    fs::rename(path("file"), path("file~"));
    writeFile(path("file"), "abc");
    EXPECT_EQ(report(token), "RENAME");
}

TEST_P(KernelQueueTest, ReportsOneFileUnderEachOfItsEntries)
{
    fs::create_hard_link(path("file"), path("hard"));
    fs::create_symlink(path("file"), path("soft"));
    const std::map<Token, std::string> names {
        { add("file", kVnodeWrite), "file:" },
        { add("file", kVnodeAttrib), "again:" },
        { add("hard", kVnodeWrite | kVnodeExtend), "hard:" },
        { add("soft", kVnodeWrite | kVnodeAttrib), "soft:" },
    };
    appendToFile(path("file"), "abc");
    chmod(path("file").c_str(), 0600);
    EXPECT_EQ(report(names), "file:WRITE again:ATTRIB hard:WRITE EXTEND soft:WRITE ATTRIB");
}

TEST_P(KernelQueueTest, GoesOnReportingWhenOneOfTwoEntriesIsRemoved)
{
    const Token first = add("file");
    const Token second = add("file");
    queue->remove(first);
    appendToFile(path("file"), "abc");
    EXPECT_EQ(report({ { first, "first:" }, { second, "second:" } }), "second:WRITE EXTEND");
}

TEST_P(KernelQueueTest, FollowsALinkToItsTarget)
{
    fs::create_symlink("file", path("soft"));
    const Token token = add("soft");
    fs::remove(path("soft"));
    fs::create_symlink("end", path("soft"));
    EXPECT_EQ(report(token), "");
    chmod(path("file").c_str(), 0600);
    EXPECT_EQ(report(token), "ATTRIB");
    fs::remove(path("file"));
    EXPECT_EQ(report(token), "DELETE");
}

TEST_P(KernelQueueTest, FollowsLinksOfFoldersOnTheWay)
{
    fs::create_directory(path("real"));
    writeFile(path("real/file"), "");
    fs::create_directory_symlink("real", path("way"));
    const Token token = add("way/file");
    fs::remove(path("way"));
    fs::create_directory(path("way"));
    chmod(path("real/file").c_str(), 0600);
    EXPECT_EQ(report(token), "ATTRIB");
}

TEST_P(KernelQueueTest, NeedsNoneOfTheFoldersThatAPathOnlyPassesThrough)
{
    fs::create_directory(path("passed"));
    const Token token = add("passed/../file");
    fs::remove(path("passed"));
    chmod(path("file").c_str(), 0600);
    EXPECT_EQ(report(token), "ATTRIB");
}

TEST_P(KernelQueueTest, AddsARelativePath)
{
    const fs::path before = fs::current_path();
    fs::current_path(folder->path());
    EXPECT_TRUE(queue->add(77, "file", kEveryChange));
    fs::current_path(before);
    fs::remove(path("file"));
    EXPECT_EQ(report(77), "DELETE");
}

TEST_P(KernelQueueTest, AddsNeitherWhatIsMissingNorADanglingLink)
{
    fs::create_symlink("nowhere", path("soft"));
    EXPECT_FALSE(queue->add(77, path("nowhere"), kEveryChange));
    EXPECT_FALSE(queue->add(77, path("soft"), kEveryChange));
    EXPECT_FALSE(queue->add(77, "", kEveryChange));
}

TEST_P(KernelQueueTest, AddsAPipeWithoutWaitingForAReader)
{
    ASSERT_EQ(mkfifo(path("pipe").c_str(), 0600), 0);
    const Token token = add("pipe");
    chmod(path("pipe").c_str(), 0640);
    EXPECT_EQ(report(token), "ATTRIB");
}

TEST_P(KernelQueueTest, AddsNothingThatAPlainUserMayNotRead)
{
    chmod(path("file").c_str(), 0);
    // The plain system call changes the user of this thread alone.
    const bool isRoot = geteuid() == 0;
    if (isRoot) {
        ASSERT_EQ(syscall(SYS_setresuid, -1, 65534, -1), 0);
    }
    const bool isAdded = queue->add(77, path("file"), kEveryChange);
    if (isRoot) {
        ASSERT_EQ(syscall(SYS_setresuid, -1, 0, -1), 0);
    }
    EXPECT_FALSE(isAdded);
}

TEST_P(KernelQueueTest, ReportsARevocationWhenAVolumeIsUnmounted)
{
    fs::create_directory(path("volume"));
    if (mount("none", path("volume").c_str(), "tmpfs", 0, "size=64k") != 0)
        GTEST_SKIP() << "may not mount";
    writeFile(path("volume/file"), "");
    const Token file = add("volume/file");
    const Token volume = add("volume");
    ASSERT_EQ(umount(path("volume").c_str()), 0) << "watches must not hold a volume";
    EXPECT_EQ(report({ { file, "file:" }, { volume, "volume:" } }), "file:REVOKE volume:REVOKE");
}

TEST_P(KernelQueueTest, LosesNothingWhenTheKernelsQueueOverflows)
{
    std::size_t limit = 0;
    std::ifstream("/proc/sys/fs/inotify/max_queued_events") >> limit;
    if (limit == 0 || limit > 1'000'000)
        GTEST_SKIP() << "a queue of " << limit << " events";
    for (const char* name : { "moved", "deleted", "linked", "noise1", "noise2" })
        writeFile(path(name), "");
    const std::map<Token, std::string> names {
        { add("file"), "file:" },
        { add("moved", kVnodeDelete | kVnodeRename), "moved:" },
        { add("deleted"), "deleted:" },
        { add("linked", kVnodeLink), "linked:" },
    };
    const Token noise1 = add("noise1");
    const Token noise2 = add("noise2");
    std::ofstream one(path("noise1")), two(path("noise2"));
    for (std::size_t i = 0; i <= limit / 2; ++i) {
        one << '.' << std::flush;
        two << '.' << std::flush;
    }
    appendToFile(path("file"), "more");
    fs::rename(path("moved"), path("away"));
    fs::remove(path("deleted"));
    fs::create_hard_link(path("linked"), path("link"));
    std::string reported;
    const auto deadline = std::chrono::steady_clock::now() + 20s;
    while (reported.empty() && std::chrono::steady_clock::now() < deadline) {
        for (const KernelQueue::Event& event : queue->wait(1s)) {
            // The file was just written, so its times cannot exclude a change of attributes.
            if (names.count(event.token))
                reported += names.at(event.token) + changeNames(event.changes & ~kVnodeAttrib) + " ";
        }
    }
    EXPECT_EQ(reported, "file:WRITE EXTEND moved:RENAME DELETE deleted:DELETE linked:LINK ");
    queue->remove(noise1);
    queue->remove(noise2);
    appendToFile(path("file"), "more");
    EXPECT_EQ(report(names), "file:WRITE EXTEND");
}

}
