#include "LUMPlatform/NSDelayedPerforming.h"
#include "LUMPlatform/NSThreadPerformAdditions.h"

#include "LUMPlatform/NSException.h"
#include "LUMPlatform/NSSend.h"
#include "LUMPlatform/NSString.h"
#include "LUMPlatform/NSThread.h"
#include "tests/fixture.h"
#include "tests/main_loop.h"

namespace {

class Listener : public NSObject {
public:
    static const NSClass& classObject()
    {
        static constexpr NSMethod kMethods[] = {
            NSMethodOf<"ring", &Listener::ring>(),
            NSMethodOf<"hear:", &Listener::hear>(),
            NSMethodOf<"fail", &Listener::fail>(),
        };
        static const NSClass& type = NSClass::define("Listener", &NSObject::classObject(), kMethods);
        return type;
    }

    void ring() { say("ring"); }
    void hear(const NSRef<NSString>& what) { say(what ? what->utf8() : "null"); }
    void fail() { throw NSException(NSRangeException, "deaf"); }
    std::string take() { return std::exchange(mTold, ""); }

    std::function<void()> atEnd;

protected:
    Listener() = default;
    ~Listener() override
    {
        if (atEnd)
            atEnd();
    }

private:
    void say(const std::string& what) { mTold += what + (NSThread::isMainThread() ? "@main " : "@other "); }

    std::string mTold;
};

const NSSelector kRing("ring");
const NSSelector kHear("hear:");

using NSThreadPerformAdditions::performSelectorOnMainThread;

class PerformingTest : public ObjectTest {
protected:
    NSRef<Listener> listener = NSMake<Listener>();
};

TEST_F(PerformingTest, RunsOnTheMainThreadAndWaits)
{
    std::string heard;
    serveMainLoopWhile([&] {
        performSelectorOnMainThread(listener, kHear, NSRef<NSString>("hello"), true);
        heard = listener->take();
    });
    EXPECT_EQ(heard, "hello@main ");
}

TEST_F(PerformingTest, LeavesOutAnArgumentTheSelectorDoesNotTake)
{
    performSelectorOnMainThread(listener, kRing, NSRef<NSString>("ignored"), true);
    EXPECT_EQ(listener->take(), "ring@main ");
}

TEST_F(PerformingTest, QueuesWithoutWaiting)
{
    performSelectorOnMainThread(listener, kHear, NSRef<NSString>("later"), false);
    EXPECT_EQ(listener->take(), "");
    platform::MainQueue::shared().drain();
    EXPECT_EQ(listener->take(), "later@main ");
}

TEST_F(PerformingTest, KeepsTheReceiverUntilAQueuedCallHasRun)
{
    std::string story;
    listener->atEnd = [&] { story += "ended "; };
    performSelectorOnMainThread(listener, kRing, nullptr, false);
    listener = nullptr;
    EXPECT_EQ(story, "");
    platform::MainQueue::shared().drain();
    EXPECT_EQ(story, "ended ");
}

TEST_F(PerformingTest, ThrowsAtAWaitingSender)
{
    serveMainLoopWhile([&] {
        EXPECT_THROW(performSelectorOnMainThread(listener, NSSelector("fail"), nullptr, true), NSException);
        EXPECT_THROW(
            performSelectorOnMainThread(listener, NSSelector("unknown"), nullptr, true), NSException);
    });
}

TEST_F(PerformingTest, DoesNothingForANullReceiver)
{
    performSelectorOnMainThread(nullptr, kRing, nullptr, true);
    performSelectorOnMainThread(nullptr, kRing, nullptr, false);
    NSDelayedPerforming::performSelector(nullptr, kRing, nullptr, 0);
}

TEST_F(PerformingTest, RunsADelayOfZeroAtTheNextTurn)
{
    NSDelayedPerforming::performSelector(listener, kRing, nullptr, 0);
    EXPECT_EQ(listener->take(), "");
    platform::MainQueue::shared().drain();
    EXPECT_EQ(listener->take(), "ring@main ");
}

TEST_F(PerformingTest, RunsALongerDelayAtItsTime)
{
    NSDelayedPerforming::performSelector(listener, kHear, NSRef<NSString>("late"), 0.001);
    serveMainLoopWhile([&] {
        std::string heard;
        while (heard.empty())
            heard = NSThread::performOnMainThreadAndWait([&] { return listener->take(); });
        EXPECT_EQ(heard, "late@main ");
    });
}

TEST_F(PerformingTest, IsAnsweredByEveryObject)
{
    NSSend(listener, NSSelector("performSelectorOnMainThread:withObject:waitUntilDone:"), kHear,
        NSRef<NSString>("sent"), true);
    EXPECT_EQ(listener->take(), "sent@main ");
    NSSend(listener, NSSelector("performSelector:withObject:afterDelay:"), kHear, NSId(), 0.0);
    platform::MainQueue::shared().drain();
    EXPECT_EQ(listener->take(), "null@main ");
}

}
