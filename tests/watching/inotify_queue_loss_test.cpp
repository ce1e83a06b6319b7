#include "tests/watching/inotify_queue_fixture.h"

namespace lum {

class InotifyQueueLossTest : public InotifyQueueTest { };

TEST_F(InotifyQueueLossTest, ReportsAllDifferencesAfterLostEvents)
{
    system.make("/written");
    system.make("/quiet");
    system.make("/deleted");
    system.make("/moved");
    system.make("/chmod");
    for (const char* path : { "/written", "/quiet", "/deleted", "/moved", "/chmod" })
        add(path);
    system.files["/written"].modified = 5;
    system.files["/written"].size = 5;
    system.files.erase("/deleted");
    system.watches.erase(3);
    system.files.erase("/moved");
    system.files["/chmod"].mode = 0100600;
    system.send(-1, inotify::kOverflow);
    EXPECT_EQ(wait(), "1:WRITE EXTEND 3:DELETE 4:RENAME WRITE DELETE ATTRIB 5:ATTRIB");
    system.send(-1, inotify::kOverflow);
    EXPECT_EQ(wait(), "4:WRITE ATTRIB");
}

TEST_F(InotifyQueueLossTest, ReportsWhatWasToldBeforeTheLossFirstAndOnce)
{
    system.make("/a");
    system.make("/b");
    add("/a");
    add("/b");
    system.files["/b"].modified = 5;
    system.send(2, inotify::kModify);
    system.send(-1, inotify::kOverflow);
    EXPECT_EQ(wait(), "2:WRITE");
}

TEST_F(InotifyQueueLossTest, LimitsTheReportAfterALossToTheMask)
{
    system.make("/a");
    add("/a", kVnodeAttrib);
    system.files["/a"].modified = 5;
    system.send(-1, inotify::kOverflow);
    EXPECT_EQ(wait(), "");
}

TEST_F(InotifyQueueLossTest, SkipsPathsWithoutAWatchAfterALoss)
{
    system.make("/a");
    system.failures["addWatch"] = ENOSPC;
    add("/a");
    system.files.erase("/a");
    system.send(-1, inotify::kOverflow);
    EXPECT_EQ(wait(), "");
}

TEST_F(InotifyQueueLossTest, ReportsDifferencesAfterALossWhenLiveWatchesAreNotTold)
{
    system.tellsLiveWatches = false;
    system.make("/a");
    system.make("/b");
    add("/a");
    add("/b");
    system.files.erase("/a");
    system.files["/b"].links = 2;
    system.send(-1, inotify::kOverflow);
    EXPECT_EQ(wait(), "1:DELETE 2:LINK");
}

TEST_F(InotifyQueueLossTest, ReportsARevocationOfAllPathsOfAVolumeWhoseNewsAreLost)
{
    system.make("/mnt/a");
    system.make("/mnt/b");
    system.make("/c");
    system.files["/c"].device = 2;
    add("/mnt/a");
    add("/mnt/b");
    add("/c");
    system.files.clear();
    system.watches.clear();
    system.send(1, inotify::kUnmount);
    system.send(1, inotify::kIgnored);
    system.send(-1, inotify::kOverflow);
    EXPECT_EQ(wait(), "1:REVOKE 2:REVOKE 3:DELETE");
    system.send(-1, inotify::kOverflow);
    EXPECT_EQ(wait(), "");
}

TEST_F(InotifyQueueLossTest, ForgetsAnUnmountedVolumeOnceTheQueueIsDrained)
{
    system.make("/mnt/a");
    add("/mnt/a");
    system.send(1, inotify::kUnmount);
    system.send(1, inotify::kIgnored);
    EXPECT_EQ(wait(), "1:REVOKE");
    system.make("/mnt/b");
    add("/mnt/b");
    system.files.clear();
    system.watches.clear();
    system.send(-1, inotify::kOverflow);
    EXPECT_EQ(wait(), "2:DELETE");
}

TEST_F(InotifyQueueLossTest, RemembersAnUnmountedVolumeUntilTheQueueIsDrained)
{
    system.make("/mnt/a");
    system.make("/mnt/b");
    add("/mnt/a");
    add("/mnt/b");
    system.files.clear();
    system.watches.clear();
    system.send(1, inotify::kUnmount);
    system.send(1, inotify::kIgnored);
    for (int i = 0; i < 4094; ++i) // these and the two before fill one read
        system.send(99, inotify::kUnmount);
    system.send(-1, inotify::kOverflow);
    EXPECT_EQ(wait(), "1:REVOKE");
    EXPECT_EQ(wait(), "2:REVOKE");
}

}
