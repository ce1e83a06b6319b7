#include "LUMPlatform/NSThread.h"

#include "LUMPlatform/NSException.h"
#include "platform/runloop/main_queue.h"
#include "tests/main_loop.h"

#include <array>
#include <atomic>
#include <gtest/gtest.h>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

namespace {

using namespace std::chrono_literals;

TEST(NSThreadTest, ReturnsTheResultOfACallOnTheMainThread)
{
    std::string result;
    serveMainLoopWhile([&] {
        result = NSThread::performOnMainThreadAndWait(
            [] { return std::string(NSThread::isMainThread() ? "main" : "other"); });
    });
    EXPECT_EQ(result, "main");
}

TEST(NSThreadTest, ReturnsAReference)
{
    int value = 1;
    serveMainLoopWhile([&] { NSThread::performOnMainThreadAndWait([&]() -> int& { return value; }) = 2; });
    EXPECT_EQ(value, 2);
}

TEST(NSThreadTest, ReturnsWhatCanOnlyBeMoved)
{
    std::unique_ptr<int> result;
    serveMainLoopWhile(
        [&] { result = NSThread::performOnMainThreadAndWait([] { return std::make_unique<int>(7); }); });
    EXPECT_EQ(*result, 7);
}

TEST(NSThreadTest, CallsAConstantFunctionObject)
{
    const auto call = [] { return 3; };
    EXPECT_EQ(NSThread::performOnMainThreadAndWait(call), 3);
}

TEST(NSThreadTest, WaitsUntilTheCallHasRun)
{
    std::string story;
    serveMainLoopWhile([&] {
        NSThread::performOnMainThreadAndWait([&] { story += "call "; });
        story += "return ";
    });
    EXPECT_EQ(story, "call return ");
}

TEST(NSThreadTest, ThrowsTheCallsExceptionAtTheSender)
{
    std::string caught;
    serveMainLoopWhile([&] {
        try {
            NSThread::performOnMainThreadAndWait([] { throw std::runtime_error("from main"); });
        } catch (const std::runtime_error& error) {
            caught = error.what();
        }
    });
    EXPECT_EQ(caught, "from main");
}

TEST(NSThreadTest, ThrowsInlineOnTheMainThread)
{
    EXPECT_THROW(
        NSThread::performOnMainThreadAndWait([] { throw std::runtime_error("inline"); }), std::runtime_error);
}

TEST(NSThreadTest, RunsAWaitingCallInlineWithinACallOfTheMainThread)
{
    std::string story;
    serveMainLoopWhile([&] {
        NSThread::performOnMainThreadAndWait([&] {
            story += "outer( ";
            NSThread::performOnMainThread([&] { story += "posted "; });
            NSThread::performOnMainThreadAndWait([&] { story += "inner "; });
            story += ") ";
        });
        NSThread::performOnMainThreadAndWait([] {});
    });
    EXPECT_EQ(story, "outer( inner ) posted ");
}

TEST(NSThreadTest, KeepsTheOrderOfOneSender)
{
    std::vector<int> seen;
    serveMainLoopWhile([&] {
        for (int i = 0; i < 1000; ++i)
            NSThread::performOnMainThread([&seen, i] { seen.push_back(i); });
    });
    std::vector<int> expected(1000);
    for (int i = 0; i < 1000; ++i)
        expected[static_cast<std::size_t>(i)] = i;
    EXPECT_EQ(seen, expected);
}

TEST(NSThreadTest, ServesManySendersAtOnce)
{
    constexpr int kSenders = 8;
    constexpr int kCalls = 500;
    int sum = 0; // the main thread's alone
    std::atomic<int> results = 0;
    serveMainLoopWhile([&] {
        std::array<std::thread, kSenders> senders;
        for (auto& sender : senders)
            sender = std::thread([&] {
                for (int i = 0; i < kCalls; ++i) {
                    results += NSThread::performOnMainThreadAndWait([&] { return ++sum, 1; });
                    NSThread::performOnMainThread([&] { ++sum; });
                }
            });
        for (auto& sender : senders)
            sender.join();
    });
    EXPECT_EQ(results, kSenders * kCalls);
    EXPECT_EQ(sum, 2 * kSenders * kCalls);
}

TEST(NSThreadTest, ServesSendersFromARunWithinACall)
{
    std::string story;
    serveMainLoopWhile([&] {
        std::thread second;
        NSThread::performOnMainThreadAndWait([&] {
            story += "outer( ";
            second = std::thread([&] {
                NSThread::performOnMainThreadAndWait([&] { story += "second "; });
                platform::MainQueue::shared().stop();
            });
            EXPECT_TRUE(platform::MainQueue::shared().run(platform::MainQueue::Clock::now() + 60s));
            story += ") ";
        });
        second.join();
    });
    EXPECT_EQ(story, "outer( second ) ");
}

TEST(NSThreadTest, RunsADelayedCallAtItsTime)
{
    auto start = platform::MainQueue::Clock::now();
    auto ran = start;
    NSThread::performAfterDelay(0.02, [&] {
        ran = platform::MainQueue::Clock::now();
        platform::MainQueue::shared().stop();
    });
    EXPECT_TRUE(platform::MainQueue::shared().run(start + 60s));
    EXPECT_GE(ran - start, 20ms);
}

TEST(NSThreadTest, WakesAWaitingLoopForADelayedCallOfAnotherThread)
{
    serveMainLoopWhile([] {
        std::atomic<bool> ran = false;
        NSThread::performAfterDelay(0.001, [&] {
            ran = true;
            ran.notify_one();
        });
        ran.wait(false);
    });
}

TEST(NSThreadTest, RunsADetachedThread)
{
    std::atomic<int> where = 0;
    NSThread::detachNewThread([&] {
        where = NSThread::isMainThread() ? 1 : 2;
        where.notify_one();
    });
    where.wait(0);
    EXPECT_EQ(where, 2);
}

TEST(NSThreadTest, RaisesAtTheCallForAnEmptyFunction)
{
    EXPECT_THROW(NSThread::performOnMainThread(nullptr), NSException);
    EXPECT_THROW(NSThread::performAfterDelay(0, nullptr), NSException);
    EXPECT_THROW(NSThread::detachNewThread(nullptr), NSException);
}

}
