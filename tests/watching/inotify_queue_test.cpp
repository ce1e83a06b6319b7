#include "tests/watching/inotify_queue_fixture.h"

namespace lum {

TEST_F(InotifyQueueTest, DoesNotOpenWhenTheSystemHasNoMoreQueues)
{
    system.failures["openQueue"] = EMFILE;
    EXPECT_EQ(InotifyQueue::open(system), nullptr);
}

TEST_F(InotifyQueueTest, GivesTheQueueBackWhenThereIsNoDescriptorForTheWaker)
{
    const int before = system.openDescriptors;
    system.failures["openWaker"] = EMFILE;
    EXPECT_EQ(InotifyQueue::open(system), nullptr);
    EXPECT_EQ(system.openDescriptors, before);
}

TEST_F(InotifyQueueTest, AddsNothingWhenThePathDoesNotExist)
{
    EXPECT_FALSE(queue->add(77, "/nowhere", kEveryChange));
    EXPECT_EQ(system.take(), "");
}

TEST_F(InotifyQueueTest, AddsNothingWhenThereIsNoDescriptorLeft)
{
    system.make("/a");
    system.failures["openPath"] = EMFILE;
    EXPECT_FALSE(queue->add(77, "/a", kEveryChange));
}

TEST_F(InotifyQueueTest, AddsNothingWhenThePathMayNotBeRead)
{
    system.make("/a");
    system.failures["addWatch"] = EACCES;
    EXPECT_FALSE(queue->add(77, "/a", kEveryChange));
    EXPECT_EQ(system.openDescriptors, 2);
}

TEST_F(InotifyQueueTest, KeepsAPathSilentlyWhenTheSystemHasNoMoreWatches)
{
    system.make("/a");
    system.failures["addWatch"] = ENOSPC;
    const Token token = add("/a");
    system.send(1, inotify::kModify);
    EXPECT_EQ(wait(), "");
    EXPECT_EQ(queue->remove(token), 0);
}

TEST_F(InotifyQueueTest, HoldsNoDescriptorPerPath)
{
    system.make("/a");
    add("/a");
    EXPECT_EQ(system.openDescriptors, 2);
}

TEST_F(InotifyQueueTest, WatchesByPathWhereDescriptorsHaveNoNames)
{
    system.make("/a");
    system.failures["proc"] = ENOENT;
    add("/a");
    system.send(1, inotify::kModify);
    EXPECT_EQ(wait(), "1:WRITE");
}

TEST_F(InotifyQueueTest, AsksOnlyForWhatTheMaskNeeds)
{
    system.make("/a");
    system.make("/b");
    system.make("/c", FakeInotify::kFolder);
    add("/a", kVnodeWrite);
    add("/b", kVnodeLink);
    add("/c", kVnodeWrite);
    constexpr std::uint32_t kAlways = inotify::kDeleteSelf | inotify::kMoveSelf;
    EXPECT_EQ(system.watches[1], kAlways | inotify::kModify);
    EXPECT_EQ(system.watches[2], kAlways | inotify::kAttrib);
    EXPECT_EQ(system.watches[3],
        kAlways | inotify::kCreate | inotify::kDelete | inotify::kMovedFrom | inotify::kMovedTo);
}

TEST_F(InotifyQueueTest, ReportsOnlyWhatTheMaskAsksFor)
{
    system.make("/a");
    add("/a", kVnodeAttrib);
    system.send(1, inotify::kModify);
    EXPECT_EQ(wait(), "");
    system.send(1, inotify::kModify);
    system.send(1, inotify::kAttrib);
    EXPECT_EQ(wait(), "1:ATTRIB");
}

TEST_F(InotifyQueueTest, ReportsEveryPathOfOneReadInTheOrderOfTheFirstEvents)
{
    system.make("/a");
    system.make("/b");
    add("/a");
    add("/b");
    system.send(2, inotify::kModify);
    system.send(1, inotify::kAttrib);
    system.send(2, inotify::kAttrib);
    EXPECT_EQ(wait(), "2:WRITE ATTRIB 1:ATTRIB");
}

TEST_F(InotifyQueueTest, ReportsToEveryEntryOfOneObjectWithItsOwnMask)
{
    system.make("/a");
    add("/a", kVnodeWrite);
    add("/a", kVnodeAttrib);
    add("/a", kVnodeWrite | kVnodeExtend);
    system.files["/a"].size = 10;
    system.send(1, inotify::kModify);
    system.send(1, inotify::kAttrib);
    EXPECT_EQ(wait(), "1:WRITE 2:ATTRIB 3:WRITE EXTEND");
}

TEST_F(InotifyQueueTest, GivesUpTheWatchWithItsLastEntryOnly)
{
    system.make("/a");
    const Token first = add("/a");
    const Token second = add("/a");
    system.take();
    EXPECT_EQ(queue->remove(first), 0);
    EXPECT_EQ(system.take(), "");
    EXPECT_EQ(queue->remove(second), 0);
    EXPECT_EQ(system.take(), "remove(1) ");
}

TEST_F(InotifyQueueTest, LooksAtEachHardLinkByItsOwnName)
{
    system.make("/a");
    system.files["/a"].links = 2;
    system.files["/b"] = system.files["/a"];
    add("/a");
    add("/b");
    system.files.erase("/a");
    system.files["/b"].links = 1;
    system.send(1, inotify::kAttrib);
    EXPECT_EQ(wait(), "1:DELETE 2:LINK");
}

TEST_F(InotifyQueueTest, LooksAgainShortlyAfterALinkWasLost)
{
    system.make("/a");
    system.files["/a"].links = 2;
    add("/a");
    system.files["/a"].links = 1;
    system.send(1, inotify::kAttrib);
    EXPECT_EQ(wait(), "1:LINK");
    system.files.erase("/a");
    EXPECT_EQ(wait(), "1:DELETE");
    EXPECT_EQ(system.lastLimit, 10ms);
    EXPECT_EQ(wait(), "");
    EXPECT_EQ(system.lastLimit, 5s);
}

TEST_F(InotifyQueueTest, LooksAgainAfterALinkWasLostThoughAnotherEventCameFirst)
{
    system.make("/a");
    system.make("/b");
    system.files["/a"].links = 2;
    add("/a");
    add("/b");
    system.files["/a"].links = 1;
    system.send(1, inotify::kAttrib);
    EXPECT_EQ(wait(), "1:LINK");
    system.send(2, inotify::kModify);
    EXPECT_EQ(wait(), "2:WRITE");
    system.files.erase("/a");
    EXPECT_EQ(wait(), "1:DELETE");
}

TEST_F(InotifyQueueTest, RemovesAPathThatIsToBeLookedAtAgain)
{
    system.make("/a");
    system.files["/a"].links = 2;
    const Token token = add("/a");
    system.files["/a"].links = 1;
    system.send(1, inotify::kAttrib);
    wait();
    queue->remove(token);
    EXPECT_EQ(wait(), "");
}

TEST_F(InotifyQueueTest, DropsEventsOfAPathThatWasRemoved)
{
    system.make("/a");
    const Token token = add("/a");
    system.send(1, inotify::kModify);
    queue->remove(token);
    EXPECT_EQ(wait(), "");
}

TEST_F(InotifyQueueTest, RemovesAnUnknownTokenWithoutFailure)
{
    EXPECT_EQ(queue->remove(99), 0);
}

TEST_F(InotifyQueueTest, RemovesADeletedPathWithoutFailure)
{
    system.make("/a");
    const Token token = add("/a");
    system.files.erase("/a");
    system.watches.clear();
    system.send(1, inotify::kDeleteSelf);
    system.send(1, inotify::kIgnored);
    EXPECT_EQ(wait(), "1:DELETE");
    EXPECT_EQ(queue->remove(token), 0);
}

TEST_F(InotifyQueueTest, RemovesAPathWhoseDeletionIsStillUnreadWithoutFailure)
{
    system.make("/a");
    const Token token = add("/a");
    system.watches.clear();
    EXPECT_EQ(queue->remove(token), 0);
}

TEST_F(InotifyQueueTest, TellsWhyAWatchCouldNotBeGivenUp)
{
    system.make("/a");
    const Token token = add("/a");
    system.failures["removeWatch"] = EBADF;
    EXPECT_EQ(queue->remove(token), EBADF);
}

TEST_F(InotifyQueueTest, ReportsARevocationAndThenNothing)
{
    system.make("/a");
    add("/a");
    system.files.clear();
    system.send(1, inotify::kUnmount);
    system.send(1, inotify::kIgnored);
    EXPECT_EQ(wait(), "1:REVOKE");
    system.send(1, inotify::kModify);
    EXPECT_EQ(wait(), "");
}

TEST_F(InotifyQueueTest, ReportsNothingWhenWoken)
{
    queue->wake();
    EXPECT_EQ(system.wakes, 1);
    EXPECT_EQ(wait(), "");
    EXPECT_EQ(system.wakes, 0);
}

TEST_F(InotifyQueueTest, ReportsNothingWhenTheReadFails)
{
    system.make("/a");
    add("/a");
    system.send(1, inotify::kModify);
    system.failures["read"] = ENOMEM;
    EXPECT_TRUE(queue->wait(1ms).empty());
    system.failures.clear();
    EXPECT_EQ(wait(), "1:WRITE");
}

TEST_F(InotifyQueueTest, WaitsBetweenFailingWaits)
{
    system.failures["wait"] = EBADF;
    const auto start = std::chrono::steady_clock::now();
    EXPECT_TRUE(queue->wait(20ms).empty());
    EXPECT_GE(std::chrono::steady_clock::now() - start, 20ms);
}

TEST_F(InotifyQueueTest, LooksOnlyWhereTheEventsDoNotSayAll)
{
    system.make("/a");
    system.make("/b");
    add("/a", kVnodeWrite | kVnodeAttrib);
    add("/b", kVnodeExtend);
    system.looks = 0;
    system.send(1, inotify::kModify);
    EXPECT_EQ(wait(), "1:WRITE");
    EXPECT_EQ(system.looks, 0);
    system.send(1, inotify::kAttrib);
    system.send(2, inotify::kModify);
    EXPECT_EQ(wait(), "1:ATTRIB");
    EXPECT_EQ(system.looks, 2);
}

TEST_F(InotifyQueueTest, LooksInVainWhenTheSystemGivesNoStatus)
{
    system.make("/a");
    add("/a");
    system.failures["status"] = EIO;
    system.send(1, inotify::kModify);
    EXPECT_EQ(wait(), "1:WRITE");
}

TEST_F(InotifyQueueTest, TakesAPathThatCannotBeLookedAtForNoDeletion)
{
    system.make("/a");
    add("/a");
    system.failures["status"] = EACCES;
    system.send(1, inotify::kAttrib);
    EXPECT_EQ(wait(), "1:ATTRIB");
    system.failures.clear();
    system.files.erase("/a");
    system.send(1, inotify::kAttrib);
    EXPECT_EQ(wait(), "1:DELETE");
}

TEST_F(InotifyQueueTest, TakesAFolderThatIsGoneForNoDeletionOfWhatWasInIt)
{
    system.make("/d/", FakeInotify::kFolder);
    system.make("/d/a");
    add("/d/a");
    system.files.clear();
    system.send(2, inotify::kAttrib);
    EXPECT_EQ(wait(), "1:ATTRIB");
    system.send(2, inotify::kDeleteSelf);
    EXPECT_EQ(wait(), "1:DELETE");
}

TEST_F(InotifyQueueTest, TellsItsDescriptorUntilItIsClosed)
{
    EXPECT_EQ(queue->descriptor(), 100);
    EXPECT_EQ(queue->close(), 0);
    EXPECT_EQ(queue->descriptor(), -1);
}

TEST_F(InotifyQueueTest, TellsWhyItCouldNotBeClosed)
{
    system.failures["close"] = EIO;
    EXPECT_EQ(queue->close(), EIO);
    EXPECT_EQ(queue->close(), 0);
}

TEST_F(InotifyQueueTest, TakesNothingOnceItIsClosed)
{
    system.make("/a");
    const Token token = add("/a");
    queue->close();
    queue->wake();
    EXPECT_EQ(system.wakes, 0);
    EXPECT_FALSE(queue->add(77, "/a", kEveryChange));
    EXPECT_EQ(queue->remove(token), 0);
}

}
