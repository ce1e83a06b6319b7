#include "tests/watching/watching_fixture.h"

namespace lum {

/// Real files, seen from the delegate.
class OVKQueueFilesTest : public WatchingTest {
protected:
    void SetUp() override
    {
        writeFile(folder / "file", "0123456789");
        writeFile(folder / "end", "");
        watcher = OVKQueue::init();
        ASSERT_TRUE(watcher);
        watcher->setDelegate(listener);
        watcher->addPath(folder / "end");
    }
    void TearDown() override
    {
        watcher = nullptr;
        WatchingTest::TearDown();
    }

    std::string told(const char* name, const std::string& path) const
    {
        return "told@main(File" + std::string(name) + ", " + path + ") ";
    }
    /// All that has been told up to now.
    std::string story() const
    {
        const std::string end = told("WrittenTo", folder / "end");
        appendToFile(folder / "end", ".");
        const std::string story = storyWith(end);
        return story.substr(0, story.rfind(end));
    }

    TemporaryFolder folder;
    const std::string file = folder / "file";
    NSRef<OVKQueue> watcher;
};

TEST_F(OVKQueueFilesTest, DeliberatelyReportsAWriteAndByDefaultNoGrowth)
{
    watcher->addPath(file);
    appendToFile(file, "abc");
    EXPECT_EQ(story(), told("WrittenTo", file));
}

TEST_F(OVKQueueFilesTest, ReportsGrowthWhenAskedTo)
{
    watcher->addPathToQueueNotifyingAbout(file, OVKQueueNoteWrite | OVKQueueNoteExtend);
    appendToFile(file, "abc");
    EXPECT_EQ(story(), told("WrittenTo", file) + told("SizeIncreased", file));
}

TEST_F(OVKQueueFilesTest, DeliberatelyReportsARenamedFileWithTheOldPath)
{
    watcher->addPath(file);
    std::filesystem::rename(file, folder / "new");
    EXPECT_EQ(story(), told("Renamed", file));
    appendToFile(folder / "new", "abc");
    EXPECT_EQ(story(), told("WrittenTo", file));
}

TEST_F(OVKQueueFilesTest, ReportsDeletionAndAttributes)
{
    watcher->addPath(file);
    chmod(file.c_str(), 0600);
    EXPECT_EQ(story(), told("AttributesChanged", file));
    std::filesystem::remove(file);
    EXPECT_EQ(story(), told("Deleted", file));
}

TEST_F(OVKQueueFilesTest, DeliberatelyAddsNothingThatDoesNotExistWithoutAWord)
{
    const std::string before = watcher->description()->utf8();
    watcher->addPath(folder / "missing");
    EXPECT_EQ(watcher->description()->utf8(), before);
    EXPECT_EQ(log.take(), "");
}

TEST_F(OVKQueueFilesTest, DeliberatelyReportsAPathAddedTwiceTwiceUntilOneIsRemoved)
{
    watcher->addPath(file);
    watcher->addPath(file);
    appendToFile(file, "abc");
    EXPECT_EQ(story(), told("WrittenTo", file) + told("WrittenTo", file));
    watcher->removePath(file);
    appendToFile(file, "abc");
    EXPECT_EQ(story(), told("WrittenTo", file));
    watcher->removePath(file);
    appendToFile(file, "abc");
    EXPECT_EQ(story(), "");
}

TEST_F(OVKQueueFilesTest, ReportsAPathThroughALinkAsItWasAdded)
{
    std::filesystem::create_symlink(file, folder / "link");
    watcher->addPath(folder / "link");
    appendToFile(file, "abc");
    EXPECT_EQ(story(), told("WrittenTo", folder / "link"));
}

TEST_F(OVKQueueFilesTest, LetsTwoWatchersWatchOneFile)
{
    const auto other = OVKQueue::init();
    ASSERT_TRUE(other);
    other->setDelegate(listener);
    watcher->addPath(file);
    other->addPath(file);
    appendToFile(file, "abc");
    const std::string once = told("WrittenTo", file);
    EXPECT_TRUE(serveUntil([&] { return listener->story() == once + once; })) << listener->story();
    other->removePath(file);
    listener->take();
    appendToFile(file, "abc");
    EXPECT_EQ(story(), once);
}

TEST_F(OVKQueueFilesTest, ReportsChangesOfAFolder)
{
    watcher->addPath(folder.path().string());
    writeFile(folder / "new", "");
    EXPECT_EQ(story(), told("WrittenTo", folder.path().string()));
}

TEST_F(OVKQueueFilesTest, ReportsNothingOfPathsThatWereRemoved)
{
    watcher->addPath(file);
    watcher->removeAllPathsFromQueue();
    watcher->addPath(folder / "end");
    appendToFile(file, "abc");
    EXPECT_EQ(story(), "");
}

}
