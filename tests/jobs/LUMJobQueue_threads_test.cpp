// Queues that several threads use at once.

#include "LUMFoundation/LUMJobQueue.h"

#include "LUMPlatform/NSArray.h"
#include "LUMPlatform/NSError.h"
#include "tests/fixture.h"

#include <atomic>
#include <condition_variable>
#include <deque>
#include <mutex>
#include <random>
#include <thread>

namespace {

/// Threads that run what they are given, in order, and end when all is done.
class Workers {
public:
    explicit Workers(int count)
    {
        for (int i = 0; i < count; ++i)
            mThreads.emplace_back([this] { work(); });
    }
    ~Workers() { finish(); }

    void run(std::function<void()> task)
    {
        {
            std::lock_guard<std::mutex> lock(mLock);
            mTasks.push_back(std::move(task));
        }
        mChanged.notify_one();
    }
    void finish()
    {
        {
            std::lock_guard<std::mutex> lock(mLock);
            mEnding = true;
        }
        mChanged.notify_all();
        for (auto& thread : mThreads)
            thread.join();
        mThreads.clear();
    }

private:
    void work()
    {
        for (std::unique_lock<std::mutex> lock(mLock);;) {
            // A running task may still bring others.
            mChanged.wait(lock, [this] { return !mTasks.empty() || (mEnding && mRunning == 0); });
            if (mTasks.empty())
                return;
            auto task = std::move(mTasks.front());
            mTasks.pop_front();
            ++mRunning;
            lock.unlock();
            task();
            task = nullptr;
            lock.lock();
            --mRunning;
            mChanged.notify_all();
        }
    }

    std::mutex mLock;
    std::condition_variable mChanged;
    std::deque<std::function<void()>> mTasks;
    int mRunning = 0;
    bool mEnding = false;
    std::vector<std::thread> mThreads;
};

/// A job whose end is reported by one of several threads.
class Errand : public LUMJob {
public:
    std::atomic<int> starts { 0 };
    std::atomic<int> ends { 0 };

    bool start() override
    {
        ++starts;
        LUMJob::start();
        mWorkers.run([self = NSShare(this)] { self->jobDidComplete(); });
        return true;
    }

protected:
    explicit Errand(Workers& workers) : mWorkers(workers) { }
    ~Errand() override = default;

private:
    Workers& mWorkers;
};

/// Counts what it hears, and the most jobs that were active at once.
class Tally : public NSObject, public LUMJobQueueDelegate {
public:
    std::atomic<int> started { 0 };
    std::atomic<int> ended { 0 };
    std::atomic<NSUInteger> most { 0 };

    void jobQueueDidStartJob(LUMJobQueue& queue, LUMJob&) override
    {
        ++started;
        const NSUInteger active = queue.numberOfActiveJobs();
        NSUInteger before = most;
        while (before < active && !most.compare_exchange_weak(before, active)) { }
    }
    void jobQueueDidPauseJob(LUMJobQueue&, LUMJob&) override { ADD_FAILURE(); }
    void jobQueueDidResumeJob(LUMJobQueue&, LUMJob&) override { }
    void jobQueueDidCancelJob(LUMJobQueue&, LUMJob& job) override { end(job); }
    void jobQueueDidCompleteJob(LUMJobQueue&, LUMJob& job) override { end(job); }

private:
    void end(LUMJob& job)
    {
        ++ended;
        if (auto* errand = dynamic_cast<Errand*>(&job))
            ++errand->ends;
    }
};

struct LUMJobQueueThreadsTest : ObjectTest {
    LUMJobQueueThreadsTest() { queue->setDelegate(tally); }

    std::vector<NSRef<Errand>> errands(int count, Workers& workers)
    {
        std::vector<NSRef<Errand>> all;
        for (int i = 0; i < count; ++i)
            all.push_back(NSMake<Errand>(workers));
        return all;
    }

    NSRef<LUMJobQueue> queue = NSMake<LUMJobQueue>();
    NSRef<Tally> tally = NSMake<Tally>();
};

TEST_F(LUMJobQueueThreadsTest, StartsEachJobOnceAndNeverMoreThanTheMaximum)
{
    constexpr int kJobs = 5'000;
    for (NSUInteger maximum : { 1u, 3u }) {
        Workers workers(4);
        auto all = errands(kJobs, workers);
        queue->setMaxConcurrentJobs(maximum);
        tally->started = 0;
        tally->ended = 0;
        tally->most = 0;
        // Jobs are added from two threads while others end on four.
        auto addHalf = [&](std::size_t from) {
            for (std::size_t at = from; at < all.size(); at += 2) {
                queue->addJob(all[at]);
                queue->startNextJobIfNeeded();
            }
        };
        std::thread other(addHalf, 1);
        addHalf(0);
        other.join();
        workers.finish();
        EXPECT_EQ(tally->started, kJobs);
        EXPECT_EQ(tally->ended, kJobs);
        EXPECT_LE(tally->most, maximum);
        EXPECT_EQ(queue->numberOfJobs(), 0u);
        for (const auto& errand : all)
            ASSERT_EQ(errand->starts, 1);
    }
}

TEST_F(LUMJobQueueThreadsTest, LosesNoJobWhileSomeAreCancelled)
{
    constexpr int kJobs = 4'000;
    Workers workers(3);
    auto all = errands(kJobs, workers);
    queue->setMaxConcurrentJobs(2);
    std::thread canceller([&] {
        std::mt19937 random(7);
        for (int i = 0; i < kJobs; ++i)
            queue->cancelJob(all[random() % all.size()]); // pending, active, or not there
    });
    std::thread looker([&] {
        for (int i = 0; i < kJobs / 10; ++i) {
            (void)queue->numberOfJobs();
            (void)queue->activeJobs()->count();
            queue->cancelAllJobs(); // these jobs do not heed it
            queue->setPriority(i);
            queue->setDelegate(tally);
        }
    });
    for (const auto& errand : all) {
        queue->addJob(errand);
        queue->startNextJobIfNeeded();
    }
    canceller.join();
    looker.join();
    workers.finish();
    // One that was cancelled while another thread was starting it is told to end twice.
    EXPECT_EQ(queue->numberOfJobs(), 0u);
    for (const auto& errand : all)
        ASSERT_GE(errand->ends, 1);
}

TEST_F(LUMJobQueueThreadsTest, TakesReportsOfEveryKindFromEveryThread)
{
    constexpr int kRounds = 2'000;
    constexpr int kThreads = 4;
    queue->setMaxConcurrentJobs(0);
    auto shared = NSMake<LUMJob>();
    queue->addJob(shared);
    std::vector<std::thread> threads;
    for (int t = 0; t < kThreads; ++t) {
        threads.emplace_back([&, t] {
            auto own = NSMake<LUMJob>();
            for (int i = 0; i < kRounds; ++i) {
                queue->addJob(own);
                own->start();
                own->pause();
                shared->setDelegate(queue);
                shared->setPriority(t);
                shared->setError(nullptr);
                shared->resume();
                shared->jobDidError(nullptr);
                own->resume();
                own->jobDidComplete();
            }
        });
    }
    for (auto& thread : threads)
        thread.join();
    EXPECT_EQ(queue->numberOfJobs(), 0u);
    EXPECT_EQ(tally->started, kThreads * kRounds);
    EXPECT_EQ(tally->ended, 2 * kThreads * kRounds);
}

TEST_F(LUMJobQueueThreadsTest, GoesAwayWhileItsJobsReport)
{
    constexpr int kRounds = 300;
    Workers workers(4);
    for (int round = 0; round < kRounds; ++round) {
        auto fleeting = NSMake<LUMJobQueue>();
        fleeting->setDelegate(tally);
        fleeting->setMaxConcurrentJobs(4);
        for (const auto& errand : errands(8, workers))
            fleeting->addJob(errand);
        fleeting->startNextJobIfNeeded();
        fleeting = nullptr; // its last reference may be that of a report, on any of the threads
    }
    workers.finish();
    EXPECT_GE(tally->started, kRounds * 4);
}

TEST_F(LUMJobQueueThreadsTest, ItsDelegateGoesAwayWhileItsJobsReport)
{
    constexpr int kJobs = 2'000;
    Workers workers(4);
    queue->setMaxConcurrentJobs(4);
    for (const auto& errand : errands(kJobs, workers))
        queue->addJob(errand);
    queue->startNextJobIfNeeded();
    for (int i = 0; i < 200; ++i) {
        tally = NSMake<Tally>();
        queue->setDelegate(tally);
    }
    tally = nullptr;
    workers.finish();
    EXPECT_FALSE(queue->delegate());
    EXPECT_EQ(queue->numberOfJobs(), 0u);
}

}
