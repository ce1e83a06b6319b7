#include "LUMPlatform/NSRunLoop.h"

#include "LUMPlatform/NSException.h"
#include "LUMPlatform/NSSend.h"
#include "LUMPlatform/NSThread.h"
#include "tests/fixture.h"

#include <poll.h>
#include <thread>

namespace {

using namespace std::chrono_literals;

auto inAMinute()
{
    return std::chrono::steady_clock::now() + 60s;
}

struct NSRunLoopTest : ObjectTest { };

TEST_F(NSRunLoopTest, IsOneObject)
{
    EXPECT_EQ(NSRunLoop::main(), NSRunLoop::main());
}

TEST_F(NSRunLoopTest, RunsUntilStopped)
{
    std::thread stopper([] { NSThread::performOnMainThread([] { NSRunLoop::main()->stop(); }); });
    NSRunLoop::main()->run();
    stopper.join();
}

TEST_F(NSRunLoopTest, TellsWhetherItWasStoppedBeforeTheDeadline)
{
    NSRunLoop::main()->stop();
    EXPECT_TRUE(NSRunLoop::main()->runUntil(inAMinute()));
    EXPECT_FALSE(NSRunLoop::main()->runUntil(std::chrono::steady_clock::now() + 1ms));
}

TEST_F(NSRunLoopTest, RunsAndStopsByMessages)
{
    NSSend(NSRunLoop::main(), NSSelector("stop"));
    NSSend(NSRunLoop::main(), NSSelector("run"));
}

TEST_F(NSRunLoopTest, RaisesOnAnotherThread)
{
    std::thread([] {
        EXPECT_THROW(NSRunLoop::main()->run(), NSException);
        EXPECT_THROW(NSRunLoop::main()->runUntil(inAMinute()), NSException);
    }).join();
}

TEST_F(NSRunLoopTest, ServesAHostByItsDescriptor)
{
    NSRunLoop::drainMainQueue();
    pollfd watched { NSRunLoop::mainQueueFD(), POLLIN, 0 };
    EXPECT_EQ(poll(&watched, 1, 0), 0);
    bool ran = false;
    NSThread::performOnMainThread([&] { ran = true; });
    EXPECT_EQ(poll(&watched, 1, 60000), 1);
    NSRunLoop::drainMainQueue();
    EXPECT_TRUE(ran);
    EXPECT_EQ(poll(&watched, 1, 0), 0);
}

}
