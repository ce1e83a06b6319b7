// What a queue calls, in which order and with which locks, and what may be called from there.

#include "LUMFoundation/LUMJobQueue.h"

#include "LUMPlatform/NSException.h"
#include "LUMPlatform/NSString.h"
#include "tests/fixture.h"
#include "tests/jobs/recorder.h"

#include <mutex>
#include <thread>

namespace {

/// Knows how often its lock is held, and how often it was taken.
class CountingQueue : public LUMJobQueue {
public:
    int held = 0;
    int taken = 0;
    void lock() override
    {
        LUMJobQueue::lock();
        ++held;
        ++taken;
    }
    void unlock() override
    {
        --held;
        LUMJobQueue::unlock();
    }
};

struct LUMJobQueueCallsTest : ObjectTest {
    LUMJobQueueCallsTest()
    {
        queue->setDelegate(recorder);
        queue->addJob(a);
        queue->addJob(b);
    }
    void writeDownTheLock()
    {
        recorder->onEvent = [this](
                                const std::string&, LUMJob&) { recorder->heard += "with " + held() + " "; };
    }
    std::string held() const { return std::to_string(queue->held); }

    NSRef<CountingQueue> queue = NSMake<CountingQueue>();
    NSRef<Recorder> recorder = NSMake<Recorder>();
    NSRef<NamedJob> a = NSMake<NamedJob>("a");
    NSRef<NamedJob> b = NSMake<NamedJob>("b");
};

TEST_F(LUMJobQueueCallsTest, DeliberatelyTellsACompletionWithoutTheLockAndACancellationWithIt)
{
    writeDownTheLock();
    queue->startNextJobIfNeeded();
    EXPECT_EQ(recorder->take(), "start(a) with 0 ");
    a->jobDidComplete();
    EXPECT_EQ(recorder->take(), "complete(a) with 0 start(b) with 0 ");
    queue->addJob(a);
    b->jobDidCancel();
    EXPECT_EQ(recorder->take(), "cancel(b) with 1 start(a) with 1 ");
    a->pause();
    a->resume();
    EXPECT_EQ(recorder->take(), "resume(a) with 1 resume(a) with 1 ");
}

TEST_F(LUMJobQueueCallsTest, CancelsWithTheLockAndCancelsAllWithout)
{
    std::string story;
    a->onCancel = [&] { story += "cancel with " + held() + " "; };
    queue->startNextJobIfNeeded();
    queue->cancelJob(a);
    queue->cancelAllJobs();
    EXPECT_EQ(story, "cancel with 1 cancel with 0 ");
}

TEST_F(LUMJobQueueCallsTest, StartsAJobWithoutTheLock)
{
    a->onStart = [this] {
        EXPECT_EQ(queue->held, 0);
        return a->reportStart();
    };
    queue->startNextJobIfNeeded();
}

TEST_F(LUMJobQueueCallsTest, TakesItsLockForCountsAndForNothingElseWhenItStartsJobs)
{
    queue->taken = 0;
    queue->startNextJobIfNeeded(); // two counts for the first job, one that ends the loop
    EXPECT_EQ(queue->taken, 3);
    EXPECT_EQ(queue->held, 0);
}

TEST_F(LUMJobQueueCallsTest, DeliberatelyNeedsNoLockForAStartNorForItsSettings)
{
    std::lock_guard<LUMJobQueue> held(*queue);
    std::thread other([this] {
        a->start();
        queue->setMaxConcurrentJobs(3);
        queue->setPriority(2);
        queue->setDelegate(queue->delegate());
        queue->cancelAllJobs();
        EXPECT_EQ(queue->maxConcurrentJobs(), 3u);
        EXPECT_EQ(queue->priority(), 2.0);
    });
    other.join();
    EXPECT_EQ(recorder->take(), "start(a) ");
    EXPECT_EQ(queue->numberOfActiveJobs(), 1u);
}

TEST_F(LUMJobQueueCallsTest, AsksItsOverridesForCountsAndSettings)
{
    class Weighing : public LUMJobQueue {
    public:
        NSUInteger numberOfActiveJobs() const override { return LUMJobQueue::numberOfActiveJobs() * 5; }
        NSUInteger maxConcurrentJobs() const override { return 6; }
        double priority() const override { return 9; }
    };
    auto weighing = NSMake<Weighing>();
    weighing->setDelegate(recorder);
    auto c = NSMake<NamedJob>("c");
    for (const auto& job : { a, b, c })
        weighing->addJob(job);
    weighing->startNextJobIfNeeded(); // two weigh ten
    EXPECT_EQ(recorder->take(), "start(a) start(b) ");
    EXPECT_EQ(a->priority(), 9.0);
}

TEST_F(LUMJobQueueCallsTest, CancelsFurtherJobsFromWithinACancellation)
{
    queue->setMaxConcurrentJobs(0);
    recorder->onEvent = [this](const std::string&, LUMJob&) { queue->cancelJob(b); };
    queue->cancelJob(a);
    EXPECT_EQ(recorder->take(), "cancel(a) cancel(b) ");
    EXPECT_EQ(queue->numberOfJobs(), 0u);
}

TEST_F(LUMJobQueueCallsTest, AddsAndStartsJobsFromWithinAReport)
{
    auto c = NSMake<NamedJob>("c");
    recorder->onEvent = [&](const std::string& event, LUMJob&) {
        if (event == "complete" && c) {
            queue->addJob(std::exchange(c, nullptr));
            queue->startNextJobIfNeeded();
            recorder->heard += "told ";
        }
    };
    queue->startNextJobIfNeeded();
    a->jobDidComplete();
    EXPECT_EQ(recorder->take(), "start(a) complete(a) start(b) told ");
    EXPECT_EQ(queue->numberOfPendingJobs(), 1u);
}

TEST_F(LUMJobQueueCallsTest, StartsTheNextJobWhileTheOneBeforeEndsInsideItsStart)
{
    for (const auto& job : { a, b }) {
        job->onStart = [this, &job = *job] {
            job.reportStart();
            job.jobDidComplete();
            recorder->heard += "started(" + job.name + ") ";
            return true;
        };
    }
    queue->startNextJobIfNeeded();
    EXPECT_EQ(recorder->take(), "start(a) complete(a) start(b) complete(b) started(b) started(a) ");
}

TEST_F(LUMJobQueueCallsTest, StartsTheSameJobAgainWhenItsStartAsksBeforeItReports)
{
    int depth = 0;
    a->onStart = [&] {
        if (++depth < 3)
            queue->startNextJobIfNeeded();
        return a->reportStart();
    };
    queue->startNextJobIfNeeded();
    EXPECT_EQ(depth, 3);
    EXPECT_EQ(recorder->take(), "start(a) start(a) start(a) ");
}

/// A job that ends inside its own start, by completing or by cancelling.
class Instant : public LUMJob {
public:
    explicit Instant(bool completes) : mCompletes(completes) { }
    bool start() override
    {
        LUMJob::start();
        mCompletes ? jobDidComplete() : jobDidCancel();
        return true;
    }

private:
    bool mCompletes;
};

TEST_F(LUMJobQueueCallsTest, NeedsNoMoreStackForManyJobsThatEndInsideTheirStart)
{
    constexpr int kJobs = 100'000;
    auto many = NSMake<LUMJobQueue>();
    struct Counting : Recorder {
        std::vector<LUMJob*> ended;
        void jobQueueDidStartJob(LUMJobQueue&, LUMJob&) override { }
        void jobQueueDidCompleteJob(LUMJobQueue&, LUMJob& job) override { ended.push_back(&job); }
        void jobQueueDidCancelJob(LUMJobQueue&, LUMJob& job) override { ended.push_back(&job); }
    };
    auto counting = NSMake<Counting>();
    many->setDelegate(counting);
    std::vector<LUMJob*> added;
    for (int i = 0; i < kJobs; ++i) {
        NSRef<LUMJob> job = NSMake<Instant>(i % 2 == 0);
        many->addJob(job);
        added.push_back(job.get());
    }
    many->startNextJobIfNeeded();
    EXPECT_EQ(counting->ended, added);
    EXPECT_EQ(many->numberOfJobs(), 0u);
}

TEST_F(LUMJobQueueCallsTest, GoesOnAfterAStartThatRaises)
{
    a->onStart = []() -> bool { throw NSException(NSInvalidArgumentException, "no"); };
    EXPECT_THROW(queue->startNextJobIfNeeded(), NSException);
    EXPECT_EQ(queue->numberOfPendingJobs(), 2u); // it is still the first
    a->onStart = nullptr;
    queue->startNextJobIfNeeded();
    EXPECT_EQ(recorder->take(), "start(a) ");
}

TEST_F(LUMJobQueueCallsTest, StartsAllOfManyJobsThatEndInsideTheirStartAndThenRaise)
{
    constexpr NSUInteger kJobs = 100; // more than nest
    auto many = NSMake<LUMJobQueue>();
    NSUInteger starts = 0;
    for (NSUInteger i = 0; i < kJobs; ++i) {
        auto raising = NSMake<NamedJob>("raising");
        raising->onStart = [&starts, &job = *raising]() -> bool {
            ++starts;
            job.reportStart();
            job.jobDidComplete();
            throw NSException(NSRangeException, "no");
        };
        many->addJob(raising);
    }
    EXPECT_THROW(many->startNextJobIfNeeded(), NSException);
    EXPECT_EQ(starts, kJobs);
    EXPECT_EQ(many->numberOfJobs(), 0u);
}

TEST_F(LUMJobQueueCallsTest, GivesTheLockBackWhenADelegateRaises)
{
    queue->startNextJobIfNeeded();
    recorder->onEvent = [](const std::string&, LUMJob&) { throw NSException(NSRangeException, "no"); };
    EXPECT_THROW(a->pause(), NSException);
    EXPECT_THROW(a->jobDidCancel(), NSException);
    EXPECT_EQ(queue->held, 0);
    EXPECT_EQ(queue->numberOfActiveJobs(), 0u);
}

/// What a job does while a queue lives on nothing but its report.
struct Ending {
    const char* name;
    void (*report)(NamedJob& job);
    const char* heard;
};

class LUMJobQueueDroppedTest : public LUMJobQueueCallsTest, public testing::WithParamInterface<Ending> { };

TEST_P(LUMJobQueueDroppedTest, LivesUntilTheReportHasReturned)
{
    queue->startNextJobIfNeeded();
    recorder->take();
    recorder->onEvent = [this](const std::string&, LUMJob&) { queue = nullptr; };
    GetParam().report(*a);
    EXPECT_EQ(recorder->take(), GetParam().heard);
    EXPECT_FALSE(a->delegate()); // now it is gone
}

INSTANTIATE_TEST_SUITE_P(Reports, LUMJobQueueDroppedTest,
    testing::Values(Ending { "Start", [](NamedJob& job) { job.reportStart(); }, "start(a) " },
        Ending { "Pause", [](NamedJob& job) { job.pause(); }, "resume(a) " },
        Ending { "Resume", [](NamedJob& job) { job.resume(); }, "resume(a) " },
        Ending { "Cancel", [](NamedJob& job) { job.jobDidCancel(); }, "cancel(a) start(b) " },
        Ending { "Complete", [](NamedJob& job) { job.jobDidComplete(); }, "complete(a) start(b) " }),
    [](const auto& test) { return test.param.name; });

TEST_F(LUMJobQueueCallsTest, LivesUntilACallHasReturnedThatDropsIt)
{
    recorder->onEvent = [this](const std::string&, LUMJob&) { queue = nullptr; };
    CountingQueue& direct = *queue;
    direct.cancelJob(a);
    EXPECT_EQ(recorder->take(), "cancel(a) start(b) ");
    EXPECT_FALSE(b->delegate());
}

}
