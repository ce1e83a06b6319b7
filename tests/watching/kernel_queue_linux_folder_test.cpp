#include "tests/watching/kernel_queue_fixture.h"

#include <fcntl.h>

namespace lum {

class KernelQueueFolderTest : public KernelQueueTest { };

INSTANTIATE_TEST_SUITE_P(FileSystems, KernelQueueFolderTest, bothFileSystems(), fileSystemName);

TEST_P(KernelQueueFolderTest, ReportsChangesOfAFoldersList)
{
    fs::create_directory(path("dir"));
    const Token token = add("dir");
    writeFile(path("dir/a"), "");
    EXPECT_EQ(report(token), "WRITE");
    fs::rename(path("dir/a"), path("dir/b"));
    EXPECT_EQ(report(token), "WRITE");
    fs::rename(path("dir/b"), path("b"));
    EXPECT_EQ(report(token), "WRITE");
    fs::rename(path("b"), path("dir/b"));
    EXPECT_EQ(report(token), "WRITE");
    fs::remove(path("dir/b"));
    EXPECT_EQ(report(token), "WRITE");
}

TEST_P(KernelQueueFolderTest, ReportsNothingForChangesInsideAChild)
{
    fs::create_directory(path("dir"));
    writeFile(path("dir/a"), "");
    const Token token = add("dir");
    appendToFile(path("dir/a"), "abc");
    chmod(path("dir/a").c_str(), 0600);
    EXPECT_EQ(report(token), "");
}

TEST_P(KernelQueueFolderTest, ReportsSubfoldersAsLinks)
{
    fs::create_directory(path("dir"));
    const Token token = add("dir");
    fs::create_directory(path("dir/a"));
    EXPECT_EQ(report(token), "WRITE LINK");
    fs::rename(path("dir/a"), path("dir/b"));
    EXPECT_EQ(report(token), "WRITE");
    fs::remove(path("dir/b"));
    EXPECT_EQ(report(token), "WRITE LINK");
}

TEST_P(KernelQueueFolderTest, ReportsAttributesRenameAndRemovalOfAFolder)
{
    fs::create_directory(path("dir"));
    const Token token = add("dir");
    chmod(path("dir").c_str(), 0700);
    EXPECT_EQ(report(token), "ATTRIB");
    fs::rename(path("dir"), path("other"));
    EXPECT_EQ(report(token), "RENAME");
    fs::remove(path("other"));
    EXPECT_EQ(report(token), "DELETE");
}

TEST_P(KernelQueueFolderTest, ReportsTheRemovalOfAFullFolder)
{
    fs::create_directory(path("dir"));
    writeFile(path("dir/a"), "");
    const Token token = add("dir");
    fs::remove_all(path("dir"));
    EXPECT_EQ(report(token), "WRITE DELETE");
}

TEST_P(KernelQueueFolderTest, TakesNoChangeOfAttributesInAMovedFolderForARemoval)
{
    fs::create_directories(path("above/folder"));
    const Token token = add("above/folder");
    fs::rename(path("above"), path("moved"));
    ASSERT_EQ(chmod(path("moved/folder").c_str(), 0700), 0);
    EXPECT_EQ(report(token), "ATTRIB");
    const int held = open(path("moved/folder").c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    fs::remove(path("moved/folder"));
    EXPECT_EQ(report(token), "DELETE");
    close(held);
}

TEST_P(KernelQueueFolderTest, ReportsTheRemovalOfAFolderThatIsHeldOpen)
{
    fs::create_directory(path("dir"));
    const Token token = add("dir");
    const int held = open(path("dir").c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    fs::remove(path("dir"));
    EXPECT_EQ(report(token), "DELETE");
    close(held);
    EXPECT_EQ(report(token), "");
}

}
