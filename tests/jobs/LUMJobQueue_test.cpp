#include "LUMFoundation/LUMJobQueue.h"

#include "LUMPlatform/NSArray.h"
#include "LUMPlatform/NSError.h"
#include "LUMPlatform/NSException.h"
#include "LUMPlatform/NSSend.h"
#include "LUMPlatform/NSString.h"
#include "tests/jobs/job_queue_fixture.h"

namespace {

TEST_F(LUMJobQueueTest, IsEmptyAtFirst)
{
    auto fresh = NSMake<LUMJobQueue>();
    EXPECT_EQ(fresh->maxConcurrentJobs(), 1u);
    EXPECT_EQ(fresh->priority(), 1.0);
    EXPECT_EQ(fresh->numberOfJobs(), 0u);
    EXPECT_EQ(fresh->numberOfActiveJobs(), 0u);
    EXPECT_EQ(fresh->numberOfPendingJobs(), 0u);
    EXPECT_EQ(fresh->activeJobs()->count(), 0u);
    EXPECT_FALSE(fresh->delegate());
    fresh->startNextJobIfNeeded();
    fresh->cancelAllJobs();
}

TEST_F(LUMJobQueueTest, HasAtLeastOneCore)
{
    EXPECT_GE(LUMJobQueue::numCores(), 1u);
}

TEST_F(LUMJobQueueTest, BecomesTheDelegateOfAnAddedJob)
{
    queue->addJob(a);
    EXPECT_EQ(a->delegate(), queue);
    EXPECT_EQ(counts(), "0+1=1");
}

TEST_F(LUMJobQueueTest, StartsTheNextJobOnlyWhenOneEnds)
{
    queue->addJob(a);
    queue->addJob(b);
    EXPECT_EQ(recorder->take(), ""); // adding starts nothing
    queue->startNextJobIfNeeded();
    EXPECT_EQ(recorder->take(), "start(a) ");
    queue->startNextJobIfNeeded();
    EXPECT_EQ(recorder->take(), "");
    a->jobDidComplete();
    EXPECT_EQ(recorder->take(), "complete(a) start(b) ");
    b->jobDidCancel();
    EXPECT_EQ(recorder->take(), "cancel(b) ");
    EXPECT_EQ(counts(), "0+0=0");
}

TEST_F(LUMJobQueueTest, StartsAsManyAsTheMaximumInTheOrderAdded)
{
    queue->setMaxConcurrentJobs(2);
    b->setPriority(100); // orders nothing
    c->setPriority(1000);
    for (const auto& each : { a, b, c })
        queue->addJob(each);
    queue->startNextJobIfNeeded();
    EXPECT_EQ(recorder->take(), "start(a) start(b) ");
    EXPECT_EQ(counts(), "2+1=3");
    b->jobDidComplete();
    EXPECT_EQ(recorder->take(), "complete(b) start(c) ");
}

TEST_F(LUMJobQueueTest, GivesEachJobItsPriorityWhenItStarts)
{
    queue->setMaxConcurrentJobs(2);
    queue->addJob(a);
    EXPECT_EQ(a->priority(), 0.5);
    queue->startNextJobIfNeeded();
    EXPECT_EQ(a->priority(), 1.0);
    queue->setPriority(3);
    queue->addJob(b);
    queue->startNextJobIfNeeded();
    EXPECT_EQ(a->priority(), 1.0);
    EXPECT_EQ(b->priority(), 3.0);
}

TEST_F(LUMJobQueueTest, BecomesTheDelegateAgainRightBeforeTheStart)
{
    queue->addJob(a);
    a->setDelegate(recorder);
    queue->startNextJobIfNeeded();
    EXPECT_EQ(a->delegate(), queue);
    EXPECT_EQ(recorder->take(), "start(a) ");
}

TEST_F(LUMJobQueueTest, DropsAJobThatRefusesToStartAndTriesTheNext)
{
    a->onStart = [] { return false; };
    queue->addJob(a);
    queue->addJob(a);
    queue->addJob(b);
    queue->startNextJobIfNeeded();
    EXPECT_EQ(recorder->take(), "start(b) ");
    EXPECT_EQ(counts(), "1+0=1");
}

TEST_F(LUMJobQueueTest, DeliberatelyStartsAJobAgainThatAnswersTrueWithoutAReport)
{
    int starts = 0;
    a->onStart = [&] { return ++starts < 5 ? true : a->reportStart(); };
    queue->addJob(a);
    queue->startNextJobIfNeeded();
    EXPECT_EQ(starts, 5);
    EXPECT_EQ(recorder->take(), "start(a) ");
}

TEST_F(LUMJobQueueTest, StartsNothingWithAMaximumOfZeroUntilItIsRaised)
{
    queue->setMaxConcurrentJobs(0);
    queue->addJob(a);
    queue->addJob(b);
    queue->startNextJobIfNeeded();
    EXPECT_EQ(recorder->take(), "");
    queue->setMaxConcurrentJobs(1);
    EXPECT_EQ(recorder->take(), "");
    queue->startNextJobIfNeeded();
    EXPECT_EQ(recorder->take(), "start(a) ");
    queue->setMaxConcurrentJobs(2);
    EXPECT_EQ(recorder->take(), "");
    queue->cancelJob(b); // an end has the queue look again
    queue->addJob(c);
    a->jobDidComplete();
    EXPECT_EQ(recorder->take(), "cancel(b) complete(a) start(c) ");
}

TEST_F(LUMJobQueueTest, ReadsTheMaximumOnceForEachCall)
{
    a->onStart = [this] {
        queue->setMaxConcurrentJobs(3);
        return a->reportStart();
    };
    for (const auto& each : { a, b, c })
        queue->addJob(each);
    queue->startNextJobIfNeeded();
    EXPECT_EQ(recorder->take(), "start(a) ");
    queue->startNextJobIfNeeded();
    EXPECT_EQ(recorder->take(), "start(b) start(c) ");
}

TEST_F(LUMJobQueueTest, DeliberatelyTellsAPauseAsAResume)
{
    queue->addJob(a);
    queue->startNextJobIfNeeded();
    recorder->take();
    a->pause();
    EXPECT_EQ(recorder->take(), "resume(a) ");
    a->resume();
    EXPECT_EQ(recorder->take(), "resume(a) ");
}

TEST_F(LUMJobQueueTest, DeliberatelyCountsAResumedJobOnceMore)
{
    queue->setMaxConcurrentJobs(2);
    for (const auto& each : { a, b, c })
        queue->addJob(each);
    queue->startNextJobIfNeeded();
    recorder->take();
    a->pause();
    EXPECT_EQ(counts(), "2+1=3");
    a->resume();
    EXPECT_EQ(counts(), "3+1=4");
    auto active = queue->activeJobs();
    ASSERT_EQ(active->count(), 3u);
    EXPECT_EQ(active->objectAtIndex(0), a);
    EXPECT_EQ(active->objectAtIndex(1), b);
    EXPECT_EQ(active->objectAtIndex(2), a);
    a->jobDidComplete(); // both entries go
    EXPECT_EQ(counts(), "2+0=2");
    EXPECT_EQ(recorder->take(), "resume(a) resume(a) complete(a) start(c) ");
}

TEST_F(LUMJobQueueTest, DeliberatelyOwnsAJobThatEndedWhilePaused)
{
    bool gone = false;
    struct Ending : NamedJob {
        bool* gone;
        explicit Ending(bool* gone_) : NamedJob("e"), gone(gone_) { }
        ~Ending() override { *gone = true; }
    };
    NSRef<LUMJob> ending = NSMake<Ending>(&gone);
    queue->addJob(ending);
    queue->startNextJobIfNeeded();
    ending->pause();
    ending->jobDidCancel();
    EXPECT_EQ(counts(), "0+0=0");
    ending = nullptr;
    EXPECT_FALSE(gone);
    queue = nullptr;
    EXPECT_TRUE(gone);
}

TEST_F(LUMJobQueueTest, LetsGoOfAJobThatEnds)
{
    bool gone = false;
    struct Ending : NamedJob {
        bool* gone;
        explicit Ending(bool* gone_) : NamedJob("e"), gone(gone_) { }
        ~Ending() override { *gone = true; }
    };
    NSRef<Ending> ending = NSMake<Ending>(&gone);
    queue->addJob(ending);
    queue->startNextJobIfNeeded();
    recorder->onEvent = [&](const std::string& event, LUMJob&) {
        if (event == "complete") {
            ending = nullptr; // the queue keeps the job until all is told
            EXPECT_FALSE(gone);
        }
    };
    ending->jobDidComplete();
    EXPECT_TRUE(gone);
}

TEST_F(LUMJobQueueTest, QueuesAJobTwiceAndStartsItOnce)
{
    queue->setMaxConcurrentJobs(5);
    queue->addJob(a);
    queue->addJob(a);
    EXPECT_EQ(counts(), "0+2=2");
    queue->startNextJobIfNeeded();
    EXPECT_EQ(recorder->take(), "start(a) "); // its report takes every occurrence out
    EXPECT_EQ(counts(), "1+0=1");
}

TEST_F(LUMJobQueueTest, SharesAJobWithAnotherQueue)
{
    auto other = NSMake<LUMJobQueue>();
    other->addJob(a);
    queue->addJob(b);
    queue->addJob(a); // reports to the last it was added to
    other->cancelJob(a);
    EXPECT_EQ(other->numberOfJobs(), 0u);
    EXPECT_EQ(counts(), "0+2=2");
    other->addJob(b);
    queue->cancelJob(b);
    EXPECT_EQ(other->numberOfJobs(), 1u);
    EXPECT_EQ(recorder->take(), "cancel(b) start(a) ");
}

TEST_F(LUMJobQueueTest, RaisesForANullJobAndHoldsNoLockAfterwards)
{
    EXPECT_THROW(queue->addJob(nullptr), NSException);
    queue->addJob(a);
    EXPECT_EQ(counts(), "0+1=1");
}

TEST_F(LUMJobQueueTest, TellsAFailureAsACancellation)
{
    queue->addJob(a);
    queue->startNextJobIfNeeded();
    auto error = NSError::errorWithDomain("test", 5);
    a->jobDidError(error);
    EXPECT_EQ(recorder->take(), "start(a) cancel(a) ");
    EXPECT_EQ(a->error(), error);
}

TEST_F(LUMJobQueueTest, TakesReportsOfJobsThatItDoesNotHold)
{
    queue->jobDidResume(*a);
    EXPECT_EQ(counts(), "1+0=1");
    queue->jobDidCancel(*b);
    queue->jobDidComplete(*c);
    queue->jobStateDidChange(*c);
    EXPECT_EQ(recorder->take(), "resume(a) cancel(b) complete(c) ");
}

TEST_F(LUMJobQueueTest, GivesASnapshotOfTheActiveJobs)
{
    queue->addJob(a);
    queue->startNextJobIfNeeded();
    auto active = queue->activeJobs();
    a->jobDidComplete();
    EXPECT_EQ(active->count(), 1u);
    EXPECT_EQ(queue->activeJobs()->count(), 0u);
}

TEST_F(LUMJobQueueTest, WorksWithoutADelegate)
{
    recorder = nullptr; // not owned by the queue
    EXPECT_FALSE(queue->delegate());
    queue->addJob(a);
    queue->addJob(b);
    queue->startNextJobIfNeeded();
    a->pause();
    a->jobDidComplete();
    b->jobDidCancel();
    EXPECT_EQ(counts(), "0+0=0");
}

TEST_F(LUMJobQueueTest, RaisesForADelegateThatDoesNotDeclareTheProtocol)
{
    for (const NSId& wrong : { NSId(NSMake<NSObject>()), NSId(a) }) {
        try {
            queue->setDelegate(wrong);
            ADD_FAILURE() << "nothing raised";
        } catch (const NSException& exception) {
            EXPECT_EQ(std::string(exception.what()),
                "LUMJobQueueDelegateException: Delegate doesn't conform to LUMJobQueueDelegate protocol.");
            EXPECT_FALSE(exception.userInfo());
        }
        EXPECT_EQ(queue->delegate(), recorder);
    }
}

TEST_F(LUMJobQueueTest, DeliberatelyRaisesForANullDelegate)
{
    EXPECT_THROW(queue->setDelegate(nullptr), NSException);
    EXPECT_EQ(queue->delegate(), recorder);
}

TEST_F(LUMJobQueueTest, AnswersDynamicCalls)
{
    NSSend(queue, NSSelector("setMaxConcurrentJobs:"), 2);
    NSSend(queue, NSSelector("addJob:"), a);
    NSSend(queue, NSSelector("addJob:"), b);
    NSSend(queue, NSSelector("startNextJobIfNeeded"));
    EXPECT_EQ(NSSend<int>(queue, NSSelector("numberOfActiveJobs")), 2);
    NSSend(queue, NSSelector("jobDidComplete:"), a);
    EXPECT_EQ(NSSend<NSRef<NSArray>>(queue, NSSelector("activeJobs"))->count(), 1u);
    EXPECT_EQ(recorder->take(), "start(a) start(b) complete(a) ");
}

TEST_F(LUMJobQueueTest, GivesItsProtocolToClassesThatAnswerDynamically)
{
    class Answering : public Recorder {
    public:
        static const NSClass& classObject()
        {
            static const NSClass& type =
                NSClass::define("AnsweringQueues", &NSObject::classObject(), LUMJobQueueDelegate::methods());
            return type;
        }
    };
    auto answering = NSMake<Answering>();
    std::string selectors;
    for (const NSMethod& method : LUMJobQueueDelegate::methods()) {
        selectors += std::string(method.selector) + " ";
        NSSend(answering, NSSelector(method.selector), queue, a);
    }
    EXPECT_EQ(selectors,
        "jobQueue:didStartJob: jobQueue:didPauseJob: jobQueue:didResumeJob: jobQueue:didCancelJob: "
        "jobQueue:didCompleteJob: ");
    EXPECT_EQ(answering->take(), "start(a) pause(a) resume(a) cancel(a) complete(a) ");
}

}
