#include "LUMFoundation/LUMJobQueue.h"

#include "tests/jobs/job_queue_fixture.h"

namespace {

TEST_F(LUMJobQueueTest, DeliberatelyCancelsAPendingJobWithoutAWordToIt)
{
    a->onCancel = [] { ADD_FAILURE() << "cancel reached the job"; };
    queue->addJob(a);
    queue->addJob(b);
    queue->cancelJob(a);
    EXPECT_EQ(a->currentState(), LUMJobStateIdle);
    EXPECT_EQ(recorder->take(), "cancel(a) start(b) "); // and others start
}

TEST_F(LUMJobQueueTest, AsksAnActiveJobToCancelAndWaitsForItsReport)
{
    queue->addJob(a);
    queue->addJob(b);
    queue->startNextJobIfNeeded();
    recorder->take();
    int asked = 0;
    a->onCancel = [&] { ++asked; };
    queue->cancelJob(a);
    EXPECT_EQ(asked, 1);
    EXPECT_EQ(a->currentState(), LUMJobStateRunning);
    EXPECT_EQ(recorder->take(), "");
    EXPECT_EQ(counts(), "1+1=2");
    a->jobDidCancel();
    EXPECT_EQ(recorder->take(), "cancel(a) start(b) ");
}

TEST_F(LUMJobQueueTest, TakesAJobThatIsActiveAndPendingForAPendingOne)
{
    a->onCancel = [] { ADD_FAILURE() << "cancel reached the job"; };
    queue->addJob(a);
    queue->startNextJobIfNeeded();
    queue->addJob(a);
    EXPECT_EQ(counts(), "1+1=2");
    queue->cancelJob(a);
    EXPECT_EQ(counts(), "0+0=0");
    EXPECT_EQ(recorder->take(), "start(a) cancel(a) ");
}

TEST_F(LUMJobQueueTest, CancelsNothingThatItDoesNotHold)
{
    a->onCancel = [] { ADD_FAILURE() << "cancel reached the job"; };
    queue->cancelJob(a);
    queue->cancelJob(nullptr);
    EXPECT_EQ(recorder->take(), "");
}

TEST_F(LUMJobQueueTest, DeliberatelyLeavesThePendingJobsToStartWhenItCancelsAll)
{
    queue->setMaxConcurrentJobs(2);
    auto d = job("d");
    for (const auto& each : { a, b, c, d }) {
        each->onCancel = [each = each.get()] { each->jobDidCancel(); }; // ends at once
        queue->addJob(each);
    }
    queue->startNextJobIfNeeded();
    recorder->take();
    queue->cancelAllJobs();
    EXPECT_EQ(recorder->take(), "cancel(a) start(c) cancel(b) start(d) ");
}

TEST_F(LUMJobQueueTest, CancelsAJobAsOftenAsItCountsWhileItIsActive)
{
    int asked = 0;
    a->onCancel = [&] {
        if (++asked == 2)
            a->jobDidCancel();
    };
    queue->addJob(a);
    queue->startNextJobIfNeeded();
    a->resume();
    a->resume();
    EXPECT_EQ(counts(), "3+0=3");
    queue->cancelAllJobs();
    EXPECT_EQ(asked, 2); // it ended at the second
    EXPECT_EQ(counts(), "0+0=0");
}

}
