#include "tests/temporary_folder.h"
#include "tests/watching/change_names.h"
#include "watching/kernel_queue.h"

#include <atomic>
#include <gtest/gtest.h>
#include <thread>

namespace lum {

using namespace std::chrono_literals;
using Clock = std::chrono::steady_clock;

TEST(KernelQueueThreadsTest, EndsAWaitAtOnceWhenWoken)
{
    const auto queue = KernelQueue::open();
    std::thread waker([&] { queue->wake(); });
    const auto start = Clock::now();
    EXPECT_TRUE(queue->wait(60s).empty());
    EXPECT_LT(Clock::now() - start, 30s);
    waker.join();
}

TEST(KernelQueueThreadsTest, EndsTheNextWaitWhenNoneIsGoingOn)
{
    const auto queue = KernelQueue::open();
    queue->wake();
    const auto start = Clock::now();
    EXPECT_TRUE(queue->wait(60s).empty());
    EXPECT_LT(Clock::now() - start, 30s);
}

TEST(KernelQueueThreadsTest, EndsAWaitAtItsLimit)
{
    const auto queue = KernelQueue::open();
    const auto start = Clock::now();
    EXPECT_TRUE(queue->wait(20ms).empty());
    EXPECT_GE(Clock::now() - start, 20ms);
}

TEST(KernelQueueThreadsTest, ReportsAPathThatIsAddedDuringAWait)
{
    const TemporaryFolder folder;
    writeFile(folder / "file", "");
    const auto queue = KernelQueue::open();
    std::thread other([&] {
        EXPECT_TRUE(queue->add(1, folder / "file", kEveryChange));
        appendToFile(folder / "file", "abc");
    });
    std::vector<KernelQueue::Event> events;
    for (const auto deadline = Clock::now() + 20s; events.empty() && Clock::now() < deadline;)
        events = queue->wait(1s);
    other.join();
    ASSERT_EQ(events.size(), 1U);
    EXPECT_EQ(changeNames(events[0].changes), "WRITE EXTEND");
}

TEST(KernelQueueThreadsTest, StaysWholeWhileThreadsAddWriteAndRemove)
{
    const TemporaryFolder folder;
    const auto queue = KernelQueue::open();
    std::atomic<int> running = 3;
    std::atomic<KernelQueue::Token> lastToken = 0;
    std::vector<std::thread> threads;
    for (int number = 0; number < 3; ++number) {
        threads.emplace_back([&, number] {
            const std::string own = folder / ("own" + std::to_string(number));
            for (int i = 0; i < 200; ++i) {
                writeFile(own, "");
                writeFile(folder / "shared", "");
                const KernelQueue::Token first = ++lastToken;
                const KernelQueue::Token second = ++lastToken;
                EXPECT_TRUE(queue->add(first, own, kEveryChange));
                EXPECT_TRUE(queue->add(second, folder / "shared", kVnodeWrite));
                appendToFile(own, "abc");
                std::filesystem::remove(own);
                EXPECT_EQ(queue->remove(second), 0);
                EXPECT_EQ(queue->remove(first), 0);
            }
            --running;
            queue->wake();
        });
    }
    while (running > 0)
        queue->wait(1s);
    for (std::thread& thread : threads)
        thread.join();
    EXPECT_TRUE(queue->wait(0ms).empty());
}

TEST(KernelQueueThreadsTest, MayBeWokenWhileItIsClosed)
{
    for (int i = 0; i < 50; ++i) {
        const auto queue = KernelQueue::open();
        std::thread waker([&] { queue->wake(); });
        EXPECT_EQ(queue->close(), 0);
        waker.join();
    }
}

TEST(KernelQueueThreadsTest, WatchesTenThousandFilesAtOnce)
{
    const TemporaryFolder folder;
    const auto queue = KernelQueue::open();
    for (KernelQueue::Token i = 0; i < 10'000; ++i) {
        const std::string path = folder / std::to_string(i);
        writeFile(path, "");
        ASSERT_TRUE(queue->add(i, path, kVnodeWrite));
    }
    appendToFile(folder / "1234", "abc");
    appendToFile(folder / "9999", "abc");
    const auto events = queue->wait(20s);
    ASSERT_EQ(events.size(), 2U);
    EXPECT_EQ(events[0].token, 1234U);
    EXPECT_EQ(events[1].token, 9999U);
}

}
