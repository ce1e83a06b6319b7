#include "jobs/job_schedule.h"

#include <algorithm>

namespace lum {

void JobSchedule::added(const NSRef<LUMJob>& job)
{
    platform::MutexLock lock(mLock);
    mPending.append(job);
    mPendingCount.store(mPending.size(), std::memory_order_relaxed);
}

void JobSchedule::started(const NSRef<LUMJob>& job)
{
    platform::MutexLock lock(mLock);
    mActive.reserveOne(); // first, since it alone can fail
    noLongerPending(*job);
    mActive.append(job);
    countAgain();
}

void JobSchedule::paused(const NSRef<LUMJob>& job)
{
    platform::MutexLock lock(mLock);
    mPaused.append(job);
}

void JobSchedule::resumed(const NSRef<LUMJob>& job)
{
    platform::MutexLock lock(mLock);
    mActive.append(job);
    mPaused.removeEvery(*job);
    countAgain();
}

void JobSchedule::ended(const LUMJob& job)
{
    platform::MutexLock lock(mLock);
    noLongerPending(job);
    mActive.removeEvery(job);
    countAgain();
}

bool JobSchedule::isPending(const LUMJob& job) const
{
    platform::MutexLock lock(mLock);
    return mPending.contains(job);
}

bool JobSchedule::isActive(const LUMJob& job) const
{
    platform::MutexLock lock(mLock);
    return mActive.contains(job);
}

NSUInteger JobSchedule::count() const
{
    platform::MutexLock lock(mLock);
    return mPending.size() + mActive.size();
}

std::vector<NSRef<LUMJob>> JobSchedule::activeJobs() const
{
    platform::MutexLock lock(mLock);
    std::vector<NSRef<LUMJob>> jobs;
    jobs.reserve(mActive.size());
    mActive.forEach([&jobs](const NSRef<LUMJob>& job) { jobs.push_back(job); });
    return jobs;
}

void JobSchedule::noLongerPending(const LUMJob& job)
{
    mPending.removeEvery(job);
    std::erase_if(mStarting, [&job](StartCall* call) {
        if (call->mJob != &job)
            return false;
        call->mJob = nullptr;
        return true;
    });
}

void JobSchedule::countAgain()
{
    mPendingCount.store(mPending.size(), std::memory_order_relaxed);
    mActiveCount.store(mActive.size(), std::memory_order_relaxed);
    mChanges.fetch_add(1, std::memory_order_release);
}

namespace {

/// The innermost call on this thread; its address also tells threads apart.
thread_local StartCall* tInnermost = nullptr;

}

StartCall::StartCall(JobSchedule& schedule, NSUInteger maximum)
    : mSchedule(schedule), mOuter(tInnermost), mMaximum(maximum), mThread(&tInnermost)
{
    StartCall* around = mOuter;
    while (around && &around->mSchedule != &schedule)
        around = around->mOuter;
    if (around)
        mDepth = around->mDepth + 1;
    if (isLeftToOuterCall()) {
        platform::MutexLock lock(mSchedule.mLock);
        around->mLeftInside = std::max(around->mLeftInside, maximum);
    }
    tInnermost = this;
}

StartCall::~StartCall()
{
    tInnermost = mOuter;
}

std::optional<NSRef<LUMJob>> StartCall::begin(NSUInteger active)
{
    platform::MutexLock lock(mSchedule.mLock);
    if (mSchedule.mChanges.load(std::memory_order_relaxed) != mSeen)
        return std::nullopt;
    std::vector<const LUMJob*> elsewhere; // being started on other threads
    for (const StartCall* call : mSchedule.mStarting) {
        if (call->mThread != mThread)
            elsewhere.push_back(call->mJob);
    }
    NSRef<LUMJob> job;
    if (active + elsewhere.size() < mMaximum)
        job = mSchedule.mPending.firstExcept(elsewhere);
    if (!job) {
        for (StartCall* call : mSchedule.mStarting) {
            if (call->mThread != mThread)
                call->mLeftElsewhere = std::max(call->mLeftElsewhere, mMaximum);
        }
        return job;
    }
    mSchedule.mStarting.push_back(this);
    mJob = job.get();
    mSchedule.mChanges.fetch_add(1, std::memory_order_release);
    return job;
}

void StartCall::ended(const LUMJob& job, bool hasStarted)
{
    platform::MutexLock lock(mSchedule.mLock);
    withdraw();
    if (!hasStarted)
        mSchedule.noLongerPending(job);
    mSchedule.countAgain();
    mMaximum = std::max({ mMaximum, mLeftElsewhere, std::exchange(mLeftInside, 0) });
}

bool StartCall::takeLeftWork()
{
    platform::MutexLock lock(mSchedule.mLock);
    withdraw();
    mMaximum = std::max(std::exchange(mLeftElsewhere, 0), std::exchange(mLeftInside, 0));
    return mMaximum > 0;
}

void StartCall::withdraw()
{
    std::erase(mSchedule.mStarting, this);
    mJob = nullptr;
}

}
