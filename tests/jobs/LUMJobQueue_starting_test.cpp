// Queues whose startNextJobIfNeeded() is called while another thread's call is starting a job.

#include "LUMFoundation/LUMJobQueue.h"

#include "LUMPlatform/NSException.h"
#include "LUMPlatform/NSString.h"
#include "tests/fixture.h"
#include "tests/jobs/recorder.h"

#include <thread>

namespace {

struct LUMJobQueueStartingTest : ObjectTest {
    LUMJobQueueStartingTest()
    {
        queue->setDelegate(recorder);
        for (const auto& job : { a, b, c })
            queue->addJob(job);
    }
    void startNextOnAnotherThread()
    {
        std::thread other([this] { queue->startNextJobIfNeeded(); });
        other.join();
    }

    NSRef<LUMJobQueue> queue = NSMake<LUMJobQueue>();
    NSRef<Recorder> recorder = NSMake<Recorder>();
    NSRef<NamedJob> a = NSMake<NamedJob>("a");
    NSRef<NamedJob> b = NSMake<NamedJob>("b");
    NSRef<NamedJob> c = NSMake<NamedJob>("c");
};

TEST_F(LUMJobQueueStartingTest, PassesOverAJobThatAnotherThreadIsStarting)
{
    queue->setMaxConcurrentJobs(2);
    a->onStart = [this] {
        startNextOnAnotherThread();
        return a->reportStart();
    };
    queue->startNextJobIfNeeded();
    EXPECT_EQ(recorder->take(), "start(b) start(a) ");
}

TEST_F(LUMJobQueueStartingTest, CountsAJobThatAnotherThreadIsStarting)
{
    a->onStart = [this] {
        startNextOnAnotherThread(); // the maximum is 1
        return a->reportStart();
    };
    queue->startNextJobIfNeeded();
    EXPECT_EQ(recorder->take(), "start(a) ");
}

TEST_F(LUMJobQueueStartingTest, StartsInItsPlaceWhatAnotherThreadLeftToIt)
{
    a->onStart = [this] {
        startNextOnAnotherThread();
        return false;
    };
    queue->startNextJobIfNeeded();
    EXPECT_EQ(recorder->take(), "start(b) ");
}

TEST_F(LUMJobQueueStartingTest, HeedsTheHigherMaximumOfAThreadThatLeftItsWork)
{
    a->onStart = [this] {
        queue->setMaxConcurrentJobs(2);
        startNextOnAnotherThread(); // starts b, and leaves the second place to a
        return false;
    };
    queue->startNextJobIfNeeded();
    EXPECT_EQ(recorder->take(), "start(b) start(c) ");
}

TEST_F(LUMJobQueueStartingTest, CancelsAJobThatAnotherThreadIsStarting)
{
    a->onStart = [this] {
        std::thread other([this] { queue->cancelJob(a); });
        other.join();
        return a->reportStart();
    };
    queue->startNextJobIfNeeded();
    EXPECT_EQ(recorder->take(), "cancel(a) start(b) start(a) ");
}

TEST_F(LUMJobQueueStartingTest, StartsWhatAnotherThreadLeftToAStartThatRaises)
{
    a->onStart = [this]() -> bool {
        a->onStart = nullptr;
        startNextOnAnotherThread(); // leaves its work here
        throw NSException(NSRangeException, "no");
    };
    EXPECT_THROW(queue->startNextJobIfNeeded(), NSException);
    EXPECT_EQ(recorder->take(), "start(a) ");
    EXPECT_EQ(queue->numberOfPendingJobs(), 2u);
}

TEST_F(LUMJobQueueStartingTest, RemembersWhatAnotherThreadLeftUntilALaterStartRaises)
{
    a->onStart = [this] {
        startNextOnAnotherThread();
        return false;
    };
    b->onStart = [this]() -> bool {
        b->onStart = nullptr;
        throw NSException(NSRangeException, "no");
    };
    EXPECT_THROW(queue->startNextJobIfNeeded(), NSException);
    EXPECT_EQ(recorder->take(), "start(b) ");
}

TEST_F(LUMJobQueueStartingTest, StartsNoMoreThanTheOtherThreadWantedAfterAStartThatRaises)
{
    queue->setMaxConcurrentJobs(3);
    a->onStart = [this]() -> bool {
        a->onStart = nullptr;
        queue->setMaxConcurrentJobs(1);
        startNextOnAnotherThread();
        throw NSException(NSRangeException, "no");
    };
    EXPECT_THROW(queue->startNextJobIfNeeded(), NSException);
    EXPECT_EQ(recorder->take(), "start(a) ");
}

TEST_F(LUMJobQueueStartingTest, ThrowsTheFirstExceptionWhenWhatWasLeftRaisesToo)
{
    int starts = 0;
    a->onStart = [&]() -> bool {
        if (++starts == 1)
            startNextOnAnotherThread();
        throw NSException(NSRangeException, NSString::stringWithFormat("start %d", starts));
    };
    try {
        queue->startNextJobIfNeeded();
        ADD_FAILURE() << "nothing raised";
    } catch (const NSException& exception) {
        EXPECT_EQ(exception.reason()->utf8(), "start 1");
    }
    EXPECT_EQ(starts, 2); // once for each call
    EXPECT_EQ(queue->numberOfPendingJobs(), 3u);
}

}
