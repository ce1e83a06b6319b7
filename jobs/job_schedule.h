#pragma once

#include "jobs/job_list.h"
#include "platform/objects/mutex.h"

#include <atomic>
#include <optional>

namespace lum {

class StartCall;

/// The jobs of a queue by where they stand: pending, active (paused ones included), and paused.
///
/// Each member is one indivisible change or look, on any thread. The lock in here is a leaf: it is held for a
/// few instructions, never while anything is called, and so cannot be noticed by a caller. It is what lets a
/// job report its start without the queue's own lock. Callers own a reference to the job they name.
class JobSchedule {
public:
    void added(const NSRef<LUMJob>& job);
    void started(const NSRef<LUMJob>& job); ///< Appended to the active, no longer pending.
    void paused(const NSRef<LUMJob>& job);
    void resumed(const NSRef<LUMJob>& job); ///< Appended to the active once more, no longer paused.
    void ended(const LUMJob& job); ///< Neither pending nor active; a paused one stays among the paused.

    bool isPending(const LUMJob& job) const;
    bool isActive(const LUMJob& job) const;
    /// Places, so a job counts as often as its list holds it.
    NSUInteger pendingCount() const noexcept { return mPendingCount.load(std::memory_order_relaxed); }
    NSUInteger activeCount() const noexcept { return mActiveCount.load(std::memory_order_relaxed); }
    /// Both together: a job that is just reporting its start counts once.
    NSUInteger count() const;
    std::vector<NSRef<LUMJob>> activeJobs() const;

private:
    friend class StartCall;

    void noLongerPending(const LUMJob& job) NS_REQUIRES(mLock);
    void countAgain() NS_REQUIRES(mLock);

    mutable platform::Mutex mLock;
    JobList mPending NS_GUARDED_BY(mLock);
    JobList mActive NS_GUARDED_BY(mLock);
    JobList mPaused NS_GUARDED_BY(mLock);
    std::vector<StartCall*> mStarting NS_GUARDED_BY(mLock); // those between begin() and what ends it
    std::atomic<NSUInteger> mPendingCount { 0 }; // written under mLock
    std::atomic<NSUInteger> mActiveCount { 0 };
    std::atomic<std::uint64_t> mChanges { 0 }; // of the active jobs and of those being started
};

/// One running call of LUMJobQueue::startNextJobIfNeeded, which lives on its stack.
///
/// Several threads may run such calls at once, because jobs end on any thread. A job that one of them is
/// about to start is still pending until it reports, so the others pass it over and count it as active: no
/// job is started twice, and no more than the maximum. On one thread nothing of this shows: a call made by
/// the job that is being started sees the lists as they are.
///
/// A job that ends inside its own start calls startNextJobIfNeeded from there, and so would the next. Past a
/// fixed depth such a call leaves the rest to the call around it, so that a million of them need no more
/// stack than a few.
class StartCall {
public:
    static constexpr unsigned kMaxDepth = 32;

    StartCall(JobSchedule& schedule, NSUInteger maximum);
    ~StartCall(); ///< After an exception takeLeftWork() comes first.
    StartCall(const StartCall&) = delete;
    StartCall& operator=(const StartCall&) = delete;

    /// True when a call around this one, on the same thread, does the work.
    bool isLeftToOuterCall() const { return mDepth > kMaxDepth; }
    /// The most jobs to be active at once, as read when the call began. Only a call that left its work to
    /// this one, and knew of a higher maximum, raises it.
    NSUInteger maximum() const { return mMaximum; }

    /// To be called before the active jobs are counted for begin().
    void look() noexcept { mSeen = mSchedule.mChanges.load(std::memory_order_acquire); }
    /// Picks the job to start now, with `active` jobs active by the caller's count: the first pending one.
    /// Null when there is none, or when another call has it in hand; nothing at all when the count is out of
    /// date, and has to be taken again.
    std::optional<NSRef<LUMJob>> begin(NSUInteger active);
    /// The start of the picked job has returned. One that refused is no longer pending.
    void ended(const LUMJob& job, bool hasStarted);
    /// To be called when anything has raised, which ends this call's own work: whether others left theirs to
    /// it, which it then does by looking and beginning again, up to their maximum.
    bool takeLeftWork();

private:
    friend class JobSchedule;

    void withdraw() NS_REQUIRES(mSchedule.mLock);

    JobSchedule& mSchedule;
    StartCall* mOuter; // the call, for any queue, around this one
    unsigned mDepth = 0; // of calls for this queue on this thread
    NSUInteger mMaximum;
    // The maximum of calls that left their work to this one, guarded by the lock. What a call from inside the
    // job's start left is this call's own work once the start has returned; another thread's never is.
    NSUInteger mLeftInside = 0;
    NSUInteger mLeftElsewhere = 0;
    const LUMJob* mJob = nullptr; // being started and still pending; guarded by the lock
    const void* mThread;
    std::uint64_t mSeen = 0;
};

}
