#include "watching/watch_delivery.h"

#include "LUMPlatform/NSNotificationCenter.h"
#include "LUMPlatform/NSWorkspace.h"
#include "tests/watching/watching_fixture.h"

// The linker gives this to all that is linked into the test (see CMakeLists.txt).
void notedInstead(NSWorkspace* workspace, const NSRef<NSString>& path) asm(
    "__wrap__ZN11NSWorkspace21noteFileSystemChangedERK5NSRefI8NSStringE");

namespace {

/// What has been noted and reported, in turn. Each step is over before the next one begins, on any thread.
std::string gStory;

const char* here()
{
    return NSThread::isMainThread() ? "@main" : "@other";
}

}

void notedInstead(NSWorkspace*, const NSRef<NSString>& path)
{
    gStory += std::string("noted") + here() + "(" + path->utf8() + ") ";
}

namespace lum {

class WatchDeliveryTest : public WatchingTest {
protected:
    WatchDeliveryTest() { gStory.clear(); }
    void TearDown() override
    {
        watcher = nullptr;
        WatchingTest::TearDown();
    }

    NSRef<OVKQueue> watcher = makeFakeWatcher();
};

TEST_F(WatchDeliveryTest, NotesAChangeOnTheWatchersThreadBeforeItsReports)
{
    listener->whenTold = [](const NSId&) { gStory += std::string("told") + here() + " "; };
    watcher->setDelegate(listener);
    watcher->addPathToQueueNotifyingAbout("/a", kEveryChange);
    control->send({ { "/a", kVnodeWrite | kVnodeDelete } });
    storyWith("Deleted");
    EXPECT_EQ(gStory, "noted@other(/a) told@main told@main ");
}

TEST_F(WatchDeliveryTest, NotesAChangeThatNobodyIsToldOf)
{
    WatchDelivery(watcher).deliverChanges("/b", kVnodeRename);
    EXPECT_EQ(gStory, "noted@main(/b) ");
}

TEST_F(WatchDeliveryTest, NotesNothingForAReportOfItsOwn)
{
    WatchDelivery(watcher).deliver("OVKQueueXNotification", "/b");
    EXPECT_EQ(gStory, "");
}

}
