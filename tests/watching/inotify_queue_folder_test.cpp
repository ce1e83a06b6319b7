#include "tests/watching/inotify_queue_fixture.h"

namespace lum {

class InotifyQueueFolderTest : public InotifyQueueTest {
protected:
    /// Watches /top/sub, which leans on /top: 1 is the watch of that, and 2 its own.
    Token addSubfolder()
    {
        system.make("/top", FakeInotify::kFolder);
        system.make("/top/sub", FakeInotify::kFolder);
        return add("/top/sub");
    }
    void removeSubfolder()
    {
        system.files.erase("/top/sub");
        system.send(1, inotify::kDelete | inotify::kIsFolder, "sub");
    }
};

TEST_F(InotifyQueueFolderTest, LeansOnTheFolderAboveForTheRemovalOfAFolderInUse)
{
    addSubfolder();
    removeSubfolder();
    EXPECT_EQ(wait(), "1:DELETE");
}

TEST_F(InotifyQueueFolderTest, ReportsARemovedFolderOnceWhenBothTellOfIt)
{
    addSubfolder();
    removeSubfolder();
    EXPECT_EQ(wait(), "1:DELETE");
    system.send(2, inotify::kDeleteSelf);
    system.send(2, inotify::kIgnored);
    EXPECT_EQ(wait(), "");
}

TEST_F(InotifyQueueFolderTest, TakesTheRemovalOfAnotherNameForNothing)
{
    addSubfolder();
    system.send(1, inotify::kDelete | inotify::kIsFolder, "other");
    EXPECT_EQ(wait(), "");
}

TEST_F(InotifyQueueFolderTest, ReportsTheFolderAboveItselfWhenThatIsWatchedToo)
{
    addSubfolder();
    add("/top");
    removeSubfolder();
    EXPECT_EQ(wait(), "2:WRITE LINK 1:DELETE");
}

TEST_F(InotifyQueueFolderTest, KeepsTheFolderAboveWhileAnythingLeansOnIt)
{
    system.make("/top", FakeInotify::kFolder);
    system.make("/top/a", FakeInotify::kFolder);
    system.make("/top/b", FakeInotify::kFolder);
    const Token a = add("/top/a");
    const Token b = add("/top/b");
    const Token top = add("/top");
    system.take();
    queue->remove(a);
    EXPECT_EQ(system.take(), "remove(2) ");
    queue->remove(top);
    EXPECT_EQ(system.take(), "");
    queue->remove(b);
    EXPECT_EQ(system.take(), "remove(1) remove(3) ");
}

TEST_F(InotifyQueueFolderTest, GivesTheFolderAboveUpWithTheFolder)
{
    addSubfolder();
    system.take();
    system.send(2, inotify::kDeleteSelf);
    system.send(2, inotify::kIgnored);
    wait();
    EXPECT_EQ(system.take(), "remove(1) ");
}

TEST_F(InotifyQueueFolderTest, DoesWithoutTheFolderAboveWhenThatCanNotBeWatched)
{
    system.make("/top/sub", FakeInotify::kFolder);
    system.failures["addWatchByPath"] = EACCES;
    const Token token = add("/top/sub");
    system.send(1, inotify::kCreate, "a");
    EXPECT_EQ(wait(), "1:WRITE");
    EXPECT_EQ(queue->remove(token), 0);
}

TEST_F(InotifyQueueFolderTest, LeavesTheFolderAboveAloneWhenDeletionsAreNotAskedFor)
{
    system.make("/top", FakeInotify::kFolder);
    system.make("/top/sub", FakeInotify::kFolder);
    add("/top/sub", kVnodeWrite);
    EXPECT_EQ(system.take(), "add(/top/sub) ");
}

TEST_F(InotifyQueueFolderTest, LooksForTheRootNowhere)
{
    system.make("/", FakeInotify::kFolder);
    add("/");
    EXPECT_EQ(system.take(), "add(/) ");
}

TEST_F(InotifyQueueFolderTest, ForgetsTheFolderAboveWhenItEndsFirst)
{
    system.make("/top", FakeInotify::kFolder);
    system.make("/top/sub", FakeInotify::kFolder);
    const Token token = add("/top/sub");
    system.send(1, inotify::kUnmount);
    system.send(1, inotify::kIgnored);
    EXPECT_EQ(wait(), "");
    system.take();
    EXPECT_EQ(queue->remove(token), 0);
    EXPECT_EQ(system.take(), "remove(2) ");
}

}
