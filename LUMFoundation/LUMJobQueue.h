#pragma once

#include "LUMFoundation/LUMJob.h"
#include "LUMFoundation/LUMJobQueueDelegate.h"

#include <memory>

class NSArray;

namespace lum {
class StartCall;
}

/// Starts jobs in the order they were added, so many at once, and tells its delegate how they end.
///
/// The queue owns its jobs while it holds them and is the delegate of each. It starts no thread: a message to
/// its delegate comes on the thread on which the job reported.
///
///     auto queue = NSMake<LUMJobQueue>();
///     queue->setMaxConcurrentJobs(LUMJobQueue::numCores());
///     queue->setDelegate(overseer); // see LUMJobQueueDelegate
///     queue->addJob(job);
///     queue->startNextJobIfNeeded(); // adding starts nothing by itself
///
/// A job is pending from when it is added until it reports its start, then active until it reports its end. A
/// paused job stays active. Jobs are told apart by identity, and one added twice is pending twice; its start
/// takes out both. Each call on one job costs the same however many the queue holds.
///
/// Threads: any, for every member. lock() and unlock() serve callers that need several calls to be one; they
/// may be nested. Jobs that are started from several threads at once are started once each, and no more than
/// the maximum. While a report or a call runs, the queue stays alive even if its owner drops it.
class LUM_EXPORT LUMJobQueue : public NSObject, public NSLocking, public LUMJobDelegate {
public:
    static const NSClass& classObject();

    /// The processors that the calling thread may run on, for setMaxConcurrentJobs(); else those online; else
    /// 1. The queue itself does not ask.
    /// Selector: numCores
    static NSUInteger numCores();

    void lock() override; ///< Recursive. Selector: lock
    /// Raises NSInternalInconsistencyException when the caller does not hold it.
    /// Selector: unlock
    void unlock() override;

    /// The most jobs to be active at once; 1 in a new queue. 0 starts no more. A change takes effect at the
    /// next startNextJobIfNeeded(), or when the next job ends.
    /// Selector: setMaxConcurrentJobs:
    virtual void setMaxConcurrentJobs(NSUInteger maximum);
    virtual NSUInteger maxConcurrentJobs() const; ///< Selector: maxConcurrentJobs

    /// A job that was resumed n times counts n more, until it ends. Takes the lock.
    /// Selector: numberOfActiveJobs
    virtual NSUInteger numberOfActiveJobs() const;
    virtual NSUInteger numberOfPendingJobs() const; ///< Takes the lock. Selector: numberOfPendingJobs
    /// Pending and active; paused ones are among the active. Takes the lock.
    /// Selector: numberOfJobs
    virtual NSUInteger numberOfJobs() const;

    /// The priority that each job is given when it starts; 1 in a new queue. It orders nothing.
    /// Selector: setPriority:
    virtual void setPriority(double priority);
    virtual double priority() const; ///< Selector: priority

    /// Sets who hears of the jobs, without owning it. Raises LUMJobQueueDelegateException, and keeps the old
    /// one, for an object that does not declare LUMJobQueueDelegate, null included.
    /// Selector: setDelegate:
    virtual void setDelegate(const NSId& delegate);
    /// Null before one is set and once it has ended.
    /// Selector: delegate
    virtual NSRef<LUMJobQueueDelegate> delegate() const;

    /// Appends the job to the pending ones and becomes its delegate. Starts nothing. Takes the lock. Raises
    /// NSInvalidArgumentException for null.
    /// Selector: addJob:
    virtual void addJob(const NSRef<LUMJob>& job);

    /// Starts pending jobs, the first added first, while fewer than the maximum are active. Each gets the
    /// queue's priority. A job whose start() answers false is dropped and the delegate not told; one whose
    /// start() answers true without having reported is started again and again. One whose start() raises
    /// stays pending, and the exception passes here. A call that finds the next job being started by another
    /// thread leaves its work to that thread's call and returns; an exception there does not end that work.
    /// Selector: startNextJobIfNeeded
    virtual void startNextJobIfNeeded();

    /// Takes a pending job out, tells the delegate that it was cancelled, and starts others, without a word
    /// to the job; sends an active one cancel(), upon which it reports in its own time. Nothing for any
    /// other, or null. Holds the lock throughout. A job is pending until it reports its start: one that
    /// another thread is just starting is told as cancelled, and starts nevertheless.
    /// Selector: cancelJob:
    virtual void cancelJob(const NSRef<LUMJob>& job);
    /// Sends cancel() to every active job, with no lock. Pending jobs stay, and start as the active ones
    /// report. To empty the queue set the maximum to 0 first.
    /// Selector: cancelAllJobs
    virtual void cancelAllJobs();

    /// The active jobs now, one entry for each time a job counts. Takes the lock.
    /// Selector: activeJobs
    virtual NSRef<NSArray> activeJobs() const;

    /// Moves the job from pending to active and tells the delegate. Takes no lock.
    /// Selector: jobDidStart:
    void jobDidStart(LUMJob& job) override;
    /// Lists the job as paused and tells the delegate of a resume, under the lock.
    /// Selector: jobDidPause:
    void jobDidPause(LUMJob& job) override;
    /// Counts the job once more and tells the delegate, under the lock.
    /// Selector: jobDidResume:
    void jobDidResume(LUMJob& job) override;
    /// Takes the job out under the lock; without it, tells the delegate and starts others.
    /// Selector: jobDidComplete:
    void jobDidComplete(LUMJob& job) override;
    /// Takes the job out, tells the delegate and starts others, all under the lock. A job that ends while it
    /// is paused stays owned by the queue until the queue ends; so in jobDidComplete().
    /// Selector: jobDidCancel:
    void jobDidCancel(LUMJob& job) override;
    void jobStateDidChange(LUMJob& job) override; ///< Nothing. Selector: jobStateDidChange:

protected:
    LUMJobQueue();
    ~LUMJobQueue() override;

private:
    class Fields;

    void startJobs(lum::StartCall& call);
    void startLeftJobs(lum::StartCall& call);
    NSRef<LUMJob> nextJobToStart(lum::StartCall& call);

    const std::unique_ptr<Fields> mFields;
};
