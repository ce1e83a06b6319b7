#include "LUMPlatform/NSDelayedPerforming.h"

#include "LUMPlatform/NSSend.h"
#include "tests/fixture.h"
#include "tests/main_loop.h"
#include "tests/platform/runloop/performing_listener.h"

namespace {

using NSDelayedPerforming::performSelector;

class NSDelayedPerformingTest : public ObjectTest {
protected:
    NSRef<Listener> listener = NSMake<Listener>();
};

TEST_F(NSDelayedPerformingTest, RunsADelayOfZeroAtTheNextTurn)
{
    performSelector(listener, kRing, nullptr, 0);
    EXPECT_EQ(listener->take(), "");
    platform::MainQueue::shared().drain();
    EXPECT_EQ(listener->take(), "ring@main ");
}

TEST_F(NSDelayedPerformingTest, RunsALongerDelayAtItsTime)
{
    performSelector(listener, kHear, NSRef<NSString>("late"), 0.001);
    serveMainLoopWhile([&] {
        std::string heard;
        while (heard.empty())
            heard = NSThread::performOnMainThreadAndWait([&] { return listener->take(); });
        EXPECT_EQ(heard, "late@main ");
    });
}

TEST_F(NSDelayedPerformingTest, DoesNothingForANullReceiver)
{
    performSelector(nullptr, kRing, nullptr, 0);
    platform::MainQueue::shared().drain();
}

TEST_F(NSDelayedPerformingTest, IsAnsweredByEveryObject)
{
    NSSend(listener, NSSelector("performSelector:withObject:afterDelay:"), kHear, NSId(), 0.0);
    platform::MainQueue::shared().drain();
    EXPECT_EQ(listener->take(), "null@main ");
}

}
