#include "LUMFoundation/LUMJobQueue.h"

#include "LUMPlatform/NSArray.h"
#include "LUMPlatform/NSClass.h"
#include "LUMPlatform/NSException.h"
#include "LUMPlatform/NSString.h"
#include "jobs/delegate_slot.h"
#include "jobs/job_schedule.h"
#include "jobs/processor_count.h"

#include <mutex>

class LUMJobQueue::Fields {
public:
    const NSRef<NSRecursiveLock> lock = NSMake<NSRecursiveLock>();
    lum::JobSchedule schedule;
    std::atomic<NSUInteger> maxConcurrentJobs { 1 };
    std::atomic<double> priority { 1.0 };
    lum::DelegateSlot<LUMJobQueueDelegate> delegate;
};

namespace {

/// Holds the queue's lock for a scope, by the queue's own lock and unlock, which a subclass may override.
using Locked = std::lock_guard<LUMJobQueue>;

}

LUMJobQueue::LUMJobQueue() : mFields(std::make_unique<Fields>()) { }

LUMJobQueue::~LUMJobQueue() = default;

const NSClass& LUMJobQueue::classObject()
{
    static constexpr NSMethod kMethods[] = {
        NSMethodOf<"lock", &LUMJobQueue::lock>(),
        NSMethodOf<"unlock", &LUMJobQueue::unlock>(),
        NSMethodOf<"setMaxConcurrentJobs:", &LUMJobQueue::setMaxConcurrentJobs>(),
        NSMethodOf<"maxConcurrentJobs", &LUMJobQueue::maxConcurrentJobs>(),
        NSMethodOf<"numberOfActiveJobs", &LUMJobQueue::numberOfActiveJobs>(),
        NSMethodOf<"numberOfPendingJobs", &LUMJobQueue::numberOfPendingJobs>(),
        NSMethodOf<"numberOfJobs", &LUMJobQueue::numberOfJobs>(),
        NSMethodOf<"setPriority:", &LUMJobQueue::setPriority>(),
        NSMethodOf<"priority", &LUMJobQueue::priority>(),
        NSMethodOf<"setDelegate:", &LUMJobQueue::setDelegate>(),
        NSMethodOf<"delegate", &LUMJobQueue::delegate>(),
        NSMethodOf<"addJob:", &LUMJobQueue::addJob>(),
        NSMethodOf<"startNextJobIfNeeded", &LUMJobQueue::startNextJobIfNeeded>(),
        NSMethodOf<"cancelJob:", &LUMJobQueue::cancelJob>(),
        NSMethodOf<"cancelAllJobs", &LUMJobQueue::cancelAllJobs>(),
        NSMethodOf<"activeJobs", &LUMJobQueue::activeJobs>(),
        NSMethodOf<"jobDidStart:", &LUMJobQueue::jobDidStart>(),
        NSMethodOf<"jobDidPause:", &LUMJobQueue::jobDidPause>(),
        NSMethodOf<"jobDidResume:", &LUMJobQueue::jobDidResume>(),
        NSMethodOf<"jobDidComplete:", &LUMJobQueue::jobDidComplete>(),
        NSMethodOf<"jobDidCancel:", &LUMJobQueue::jobDidCancel>(),
        NSMethodOf<"jobStateDidChange:", &LUMJobQueue::jobStateDidChange>(),
    };
    static const NSClass& type = NSClass::define("LUMJobQueue", &NSObject::classObject(), kMethods);
    return type;
}

NSUInteger LUMJobQueue::numCores()
{
    return lum::availableProcessors();
}

void LUMJobQueue::lock()
{
    mFields->lock->lock();
}

void LUMJobQueue::unlock()
{
    mFields->lock->unlock();
}

void LUMJobQueue::setMaxConcurrentJobs(NSUInteger maximum)
{
    mFields->maxConcurrentJobs.store(maximum, std::memory_order_relaxed);
}

NSUInteger LUMJobQueue::maxConcurrentJobs() const
{
    return mFields->maxConcurrentJobs.load(std::memory_order_relaxed);
}

NSUInteger LUMJobQueue::numberOfActiveJobs() const
{
    Locked locked(const_cast<LUMJobQueue&>(*this));
    return mFields->schedule.activeCount();
}

NSUInteger LUMJobQueue::numberOfPendingJobs() const
{
    Locked locked(const_cast<LUMJobQueue&>(*this));
    return mFields->schedule.pendingCount();
}

NSUInteger LUMJobQueue::numberOfJobs() const
{
    Locked locked(const_cast<LUMJobQueue&>(*this));
    return mFields->schedule.count();
}

void LUMJobQueue::setPriority(double priority)
{
    mFields->priority.store(priority, std::memory_order_relaxed);
}

double LUMJobQueue::priority() const
{
    return mFields->priority.load(std::memory_order_relaxed);
}

void LUMJobQueue::setDelegate(const NSId& delegate)
{
    // Deliberate: null does not conform either, so a delegate is replaced and never cleared.
    auto conforming = NSCast<LUMJobQueueDelegate>(delegate);
    if (!conforming)
        throw NSException(
            "LUMJobQueueDelegateException", "Delegate doesn't conform to LUMJobQueueDelegate protocol.");
    mFields->delegate.set(conforming);
}

NSRef<LUMJobQueueDelegate> LUMJobQueue::delegate() const
{
    return mFields->delegate.get();
}

void LUMJobQueue::addJob(const NSRef<LUMJob>& job)
{
    if (!job)
        throw NSException(NSInvalidArgumentException, "-[LUMJobQueue addJob:]: the job is null");
    Locked locked(*this);
    mFields->schedule.added(job);
    job->setDelegate(NSShare(this));
}

void LUMJobQueue::startNextJobIfNeeded()
{
    const NSRef<LUMJobQueue> kept = NSShare(this); // a delegate may drop the queue meanwhile
    lum::StartCall call(mFields->schedule, maxConcurrentJobs());
    if (call.isLeftToOuterCall())
        return;
    try {
        startJobs(call);
    } catch (...) {
        startLeftJobs(call);
        throw;
    }
}

void LUMJobQueue::startJobs(lum::StartCall& call)
{
    // Deliberate: a job that answers true without reporting its start stays pending, and so is started again.
    while (NSRef<LUMJob> job = nextJobToStart(call)) {
        job->setPriority(priority());
        job->setDelegate(NSShare(this));
        call.ended(*job, job->start());
    }
}

/// Does what other calls, which have returned, left to one that has raised.
void LUMJobQueue::startLeftJobs(lum::StartCall& call)
{
    while (call.takeLeftWork()) {
        try {
            startJobs(call);
        } catch (...) { // only one exception can reach the caller, and that is the first
        }
    }
}

NSRef<LUMJob> LUMJobQueue::nextJobToStart(lum::StartCall& call)
{
    for (;;) {
        call.look();
        const NSUInteger active = numberOfActiveJobs();
        if (active >= call.maximum() || numberOfPendingJobs() == 0)
            return nullptr;
        if (auto job = call.begin(active))
            return *job;
    }
}

void LUMJobQueue::cancelJob(const NSRef<LUMJob>& job)
{
    if (!job)
        return;
    const NSRef<LUMJobQueue> kept = NSShare(this);
    Locked locked(*this);
    // Deliberate: a pending job hears nothing of it and keeps its state.
    if (mFields->schedule.isPending(*job))
        jobDidCancel(*job);
    else if (mFields->schedule.isActive(*job))
        job->cancel();
}

void LUMJobQueue::cancelAllJobs()
{
    const NSRef<LUMJobQueue> kept = NSShare(this);
    // Deliberate: the pending jobs stay, and start as these end. A job may end, and others start, while one
    // is told; those that started meanwhile are not meant.
    for (const NSRef<LUMJob>& job : mFields->schedule.activeJobs()) {
        if (mFields->schedule.isActive(*job))
            job->cancel();
    }
}

NSRef<NSArray> LUMJobQueue::activeJobs() const
{
    Locked locked(const_cast<LUMJobQueue&>(*this));
    auto jobs = mFields->schedule.activeJobs();
    return NSArray::arrayWithObjects({ jobs.begin(), jobs.end() });
}

void LUMJobQueue::jobDidStart(LUMJob& job)
{
    // Deliberate: the queue's lock is not taken, so a job can report its start while another thread holds it.
    mFields->schedule.started(NSShare(&job));
    if (auto delegate = this->delegate())
        delegate->jobQueueDidStartJob(*this, job);
}

void LUMJobQueue::jobDidPause(LUMJob& job)
{
    const NSRef<LUMJobQueue> kept = NSShare(this);
    Locked locked(*this);
    mFields->schedule.paused(NSShare(&job));
    // Deliberate: delegates hear a pause as a resume and count on it.
    if (auto delegate = this->delegate())
        delegate->jobQueueDidResumeJob(*this, job);
}

void LUMJobQueue::jobDidResume(LUMJob& job)
{
    const NSRef<LUMJobQueue> kept = NSShare(this);
    Locked locked(*this);
    // Deliberate: the job never left the active jobs, so from now on it counts once more.
    mFields->schedule.resumed(NSShare(&job));
    if (auto delegate = this->delegate())
        delegate->jobQueueDidResumeJob(*this, job);
}

void LUMJobQueue::jobDidComplete(LUMJob& job)
{
    const NSRef<LUMJobQueue> kept = NSShare(this);
    const NSRef<LUMJob> keptJob = NSShare(&job);
    {
        Locked locked(*this);
        // Deliberate: a job that ends while paused stays among the paused, and is owned until the queue ends.
        mFields->schedule.ended(job);
    }
    // Deliberate: a completion is told without the lock, a cancellation with it.
    if (auto delegate = this->delegate())
        delegate->jobQueueDidCompleteJob(*this, job);
    startNextJobIfNeeded();
}

void LUMJobQueue::jobDidCancel(LUMJob& job)
{
    const NSRef<LUMJobQueue> kept = NSShare(this);
    const NSRef<LUMJob> keptJob = NSShare(&job);
    Locked locked(*this);
    mFields->schedule.ended(job);
    if (auto delegate = this->delegate())
        delegate->jobQueueDidCancelJob(*this, job);
    startNextJobIfNeeded();
}

void LUMJobQueue::jobStateDidChange(LUMJob&) { }
