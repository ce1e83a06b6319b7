// Every loop a main thread may run serves the one main queue.
#include "LUMPlatform/NSThread.h"
#include "platform/runloop/main_queue.h"

#include <chrono>
#include <future>
#include <glib.h>
#include <gtest/gtest.h>
#include <poll.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

namespace {

using namespace std::chrono_literals;
using platform::MainQueue;

constexpr int kPatienceMs = 60000;

bool isReadable(int descriptor, int timeoutMs)
{
    pollfd waiting { descriptor, POLLIN, 0 };
    return poll(&waiting, 1, timeoutMs) == 1;
}

/// Another thread that makes one call on the main thread and tells what came of it.
std::future<bool> askWhetherMain()
{
    return std::async(std::launch::async,
        [] { return NSThread::performOnMainThreadAndWait([] { return NSThread::isMainThread(); }); });
}

class GLibLoopTest : public testing::Test {
protected:
    void SetUp() override
    {
        MainQueue::shared().drain();
        loop = g_main_loop_new(nullptr, FALSE);
        giveUp = g_timeout_source_new(kPatienceMs);
        g_source_set_callback(
            giveUp,
            [](gpointer self) -> gboolean {
                ADD_FAILURE() << "gave up";
                g_main_loop_quit(static_cast<GLibLoopTest*>(self)->loop);
                return G_SOURCE_CONTINUE;
            },
            this, nullptr);
        g_source_attach(giveUp, nullptr);
    }

    void TearDown() override
    {
        g_source_destroy(giveUp);
        g_source_unref(giveUp);
        g_main_loop_unref(loop);
    }

    GMainLoop* loop = nullptr;
    GSource* giveUp = nullptr;
};

TEST_F(GLibLoopTest, ServesBlockingCalls)
{
    bool answer = false;
    std::thread sender([&] {
        for (int i = 0; i < 100; ++i)
            answer = NSThread::performOnMainThreadAndWait([] { return NSThread::isMainThread(); });
        NSThread::performOnMainThread([&] { g_main_loop_quit(loop); });
    });
    g_main_loop_run(loop);
    sender.join();
    EXPECT_TRUE(answer);
}

TEST_F(GLibLoopTest, ServesDelayedCalls)
{
    NSThread::performAfterDelay(0.001, [&] { g_main_loop_quit(loop); });
    g_main_loop_run(loop);
}

TEST_F(GLibLoopTest, ServesCallsFromALoopWithinACall)
{
    std::string story;
    NSThread::performOnMainThread([&] {
        story += "outer( ";
        GMainLoop* inner = g_main_loop_new(nullptr, FALSE);
        NSThread::performOnMainThread([&] {
            story += "inner ";
            g_main_loop_quit(inner);
        });
        g_main_loop_run(inner);
        g_main_loop_unref(inner);
        story += ") ";
        g_main_loop_quit(loop);
    });
    NSThread::performOnMainThread([&] { story += "queued "; });
    g_main_loop_run(loop);
    EXPECT_EQ(story, "outer( queued inner ) ");
}

TEST_F(GLibLoopTest, GoesBeforeSourcesOfLowerPriority)
{
    std::string story;
    g_idle_add_full(
        G_PRIORITY_DEFAULT,
        [](gpointer told) -> gboolean {
            *static_cast<std::string*>(told) += "source ";
            return G_SOURCE_REMOVE;
        },
        &story, nullptr);
    NSThread::performOnMainThread([&] { story += "call "; });
    NSThread::performAfterDelay(0.001, [&] { g_main_loop_quit(loop); });
    g_main_loop_run(loop);
    EXPECT_EQ(story, "call source ");
}

TEST_F(GLibLoopTest, LeavesItsTurnToOthersWhenACallQueuesItselfForEver)
{
    bool ended = false;
    std::function<void()> again = [&] {
        if (!ended)
            NSThread::performOnMainThread(again);
    };
    again();
    for (int i = 0; i < 10; ++i)
        g_main_context_iteration(nullptr, FALSE);
    ended = true;
    while (g_main_context_iteration(nullptr, FALSE)) { }
}

TEST_F(GLibLoopTest, RunsNothingOnAnotherThreadThatIteratesTheContext)
{
    bool ran = false;
    NSThread::performOnMainThread([&] { ran = true; });
    std::thread([] {
        while (g_main_context_iteration(nullptr, FALSE)) { }
    }).join();
    EXPECT_FALSE(ran);
    while (!ran)
        g_main_context_iteration(nullptr, TRUE);
}

TEST_F(GLibLoopTest, EndsTheProcessOnAnExceptionThatNobodyWaitsFor)
{
    EXPECT_DEATH(
        {
            NSThread::performOnMainThread([] { throw std::runtime_error("nobody waits"); });
            g_main_loop_run(loop);
        },
        "nobody waits");
}

TEST(DescriptorHostTest, IsReadableWhileACallWaits)
{
    auto& queue = MainQueue::shared();
    queue.drain();
    EXPECT_FALSE(isReadable(queue.descriptor(), 0));
    auto answer = askWhetherMain();
    EXPECT_TRUE(isReadable(queue.descriptor(), kPatienceMs));
    queue.drain();
    EXPECT_TRUE(answer.get());
    EXPECT_FALSE(isReadable(queue.descriptor(), 0));
}

TEST(DescriptorHostTest, BecomesReadableWhenADelayedCallIsDue)
{
    auto& queue = MainQueue::shared();
    bool ran = false;
    NSThread::performAfterDelay(0.01, [&] { ran = true; });
    queue.drain();
    EXPECT_FALSE(ran);
    EXPECT_TRUE(isReadable(queue.descriptor(), kPatienceMs));
    queue.drain();
    EXPECT_TRUE(ran);
    EXPECT_FALSE(isReadable(queue.descriptor(), 0));
}

TEST(DescriptorHostTest, DrainsNothingOnAnotherThread)
{
    bool ran = false;
    NSThread::performOnMainThread([&] { ran = true; });
    std::thread([] { MainQueue::shared().drain(); }).join();
    EXPECT_FALSE(ran);
    MainQueue::shared().drain();
    EXPECT_TRUE(ran);
}

int exitStatusOf(pid_t child)
{
    int status = 0;
    waitpid(child, &status, 0);
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

TEST(ForkTest, GivesTheChildAnEmptyQueueOfItsOwn)
{
    auto& queue = MainQueue::shared();
    int descriptor = queue.descriptor();
    int ran = 0;
    NSThread::performOnMainThread([&] { ++ran; });
    NSThread::performAfterDelay(0, [&] { ++ran; });
    pid_t child = fork();
    if (child == 0) {
        bool silent = !isReadable(descriptor, 0);
        queue.drain();
        NSThread::performOnMainThread([&] { ran += 10; });
        bool readable = isReadable(descriptor, 0);
        queue.drain();
        _exit(silent && readable && ran == 10 ? 0 : 1);
    }
    EXPECT_EQ(exitStatusOf(child), 0);
    EXPECT_TRUE(isReadable(descriptor, 0));
    queue.drain();
    EXPECT_EQ(ran, 2);
}

TEST(ForkTest, DoesNotWakeTheParentFromTheChild)
{
    auto& queue = MainQueue::shared();
    int descriptor = queue.descriptor();
    queue.drain();
    pid_t child = fork();
    if (child == 0) {
        NSThread::performOnMainThread([] {});
        _exit(0);
    }
    EXPECT_EQ(exitStatusOf(child), 0);
    EXPECT_FALSE(isReadable(descriptor, 0));
}

TEST(ForkTest, ServesTheThreadThatForkedAsTheChildsMainThread)
{
    int status = -1;
    std::thread([&] {
        pid_t child = fork();
        if (child == 0) {
            bool ran = false;
            NSThread::performOnMainThread([&] { ran = true; });
            MainQueue::shared().stop();
            bool stopped = MainQueue::shared().run(MainQueue::Clock::now() + 10s);
            _exit(ran && stopped ? 0 : 1);
        }
        status = exitStatusOf(child);
    }).join();
    EXPECT_EQ(status, 0);
}

}
