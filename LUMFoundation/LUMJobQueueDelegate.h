#pragma once

#include "LUMFoundation/LUMExport.h"
#include "LUMPlatform/NSMethod.h"

#include <span>

class LUMJob;
class LUMJobQueue;

/// What hears of the jobs of a LUMJobQueue.
///
/// Each message comes on the thread on which the job reported, before the job's call returns. The queue
/// refers to its delegate weakly and keeps it alive during a message.
///
///     class Overseer : public NSObject, public LUMJobQueueDelegate {
///     public:
///         void jobQueueDidStartJob(LUMJobQueue&, LUMJob&) override { }
///         void jobQueueDidPauseJob(LUMJobQueue&, LUMJob&) override { }
///         void jobQueueDidResumeJob(LUMJobQueue&, LUMJob&) override { }
///         void jobQueueDidCancelJob(LUMJobQueue&, LUMJob&) override { ++mEnded; }
///         void jobQueueDidCompleteJob(LUMJobQueue&, LUMJob&) override { ++mEnded; }
///
///     private:
///         std::atomic<int> mEnded = 0; // reports come on the threads of the jobs
///     };
class LUM_EXPORT LUMJobQueueDelegate : public NSProtocol {
public:
    /// A job reported its start.
    /// Selector: jobQueue:didStartJob:
    virtual void jobQueueDidStartJob(LUMJobQueue& queue, LUMJob& job) = 0;
    /// Never sent: a pause is told as a resume.
    /// Selector: jobQueue:didPauseJob:
    virtual void jobQueueDidPauseJob(LUMJobQueue& queue, LUMJob& job) = 0;
    /// Sent for a pause as well as for a resume, with the queue's lock held; the job's state tells them
    /// apart.
    /// Selector: jobQueue:didResumeJob:
    virtual void jobQueueDidResumeJob(LUMJobQueue& queue, LUMJob& job) = 0;
    /// Sent with the queue's lock held: do not wait in it for another thread that uses the queue. A failed
    /// job is one that has an error.
    /// Selector: jobQueue:didCancelJob:
    virtual void jobQueueDidCancelJob(LUMJobQueue& queue, LUMJob& job) = 0;
    /// Sent with no lock held.
    /// Selector: jobQueue:didCompleteJob:
    virtual void jobQueueDidCompleteJob(LUMJobQueue& queue, LUMJob& job) = 0;

    /// The table of these methods, for NSClass::define or NSClass::extend of a class that is to answer them
    /// in dynamic calls as well.
    static std::span<const NSMethod> methods();

protected:
    ~LUMJobQueueDelegate() override = default;
};
