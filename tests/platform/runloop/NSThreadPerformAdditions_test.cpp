#include "LUMPlatform/NSThreadPerformAdditions.h"

#include "LUMPlatform/NSSend.h"
#include "tests/fixture.h"
#include "tests/main_loop.h"
#include "tests/platform/runloop/performing_listener.h"

namespace {

using NSThreadPerformAdditions::performSelectorOnMainThread;

class NSThreadPerformAdditionsTest : public ObjectTest {
protected:
    NSRef<Listener> listener = NSMake<Listener>();
};

TEST_F(NSThreadPerformAdditionsTest, RunsOnTheMainThreadAndWaits)
{
    std::string heard;
    serveMainLoopWhile([&] {
        performSelectorOnMainThread(listener, kHear, NSRef<NSString>("hello"), true);
        heard = listener->take();
    });
    EXPECT_EQ(heard, "hello@main ");
}

TEST_F(NSThreadPerformAdditionsTest, LeavesOutAnArgumentTheSelectorDoesNotTake)
{
    performSelectorOnMainThread(listener, kRing, NSRef<NSString>("ignored"), true);
    EXPECT_EQ(listener->take(), "ring@main ");
}

TEST_F(NSThreadPerformAdditionsTest, QueuesWithoutWaiting)
{
    performSelectorOnMainThread(listener, kHear, NSRef<NSString>("later"), false);
    EXPECT_EQ(listener->take(), "");
    platform::MainQueue::shared().drain();
    EXPECT_EQ(listener->take(), "later@main ");
}

TEST_F(NSThreadPerformAdditionsTest, KeepsTheReceiverUntilAQueuedCallHasRun)
{
    std::string story;
    listener->atEnd = [&] { story += "ended "; };
    performSelectorOnMainThread(listener, kRing, nullptr, false);
    listener = nullptr;
    EXPECT_EQ(story, "");
    platform::MainQueue::shared().drain();
    EXPECT_EQ(story, "ended ");
}

TEST_F(NSThreadPerformAdditionsTest, ThrowsAtAWaitingSender)
{
    serveMainLoopWhile([&] {
        EXPECT_THROW(performSelectorOnMainThread(listener, NSSelector("fail"), nullptr, true), NSException);
        EXPECT_THROW(
            performSelectorOnMainThread(listener, NSSelector("unknown"), nullptr, true), NSException);
    });
}

TEST_F(NSThreadPerformAdditionsTest, DoesNothingForANullReceiver)
{
    performSelectorOnMainThread(nullptr, kRing, nullptr, true);
    performSelectorOnMainThread(nullptr, kRing, nullptr, false);
}

TEST_F(NSThreadPerformAdditionsTest, IsAnsweredByEveryObject)
{
    NSSend(listener, NSSelector("performSelectorOnMainThread:withObject:waitUntilDone:"), kHear,
        NSRef<NSString>("sent"), true);
    EXPECT_EQ(listener->take(), "sent@main ");
}

}
