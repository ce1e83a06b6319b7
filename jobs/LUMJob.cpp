#include "LUMFoundation/LUMJob.h"

#include "LUMPlatform/NSClass.h"
#include "LUMPlatform/NSError.h"
#include "LUMPlatform/NSException.h"
#include "LUMPlatform/NSString.h"
#include "jobs/delegate_slot.h"
#include "jobs/job_index.h"

#include <atomic>

/// What threads share of a job. The lock in here is not the job's own, which a subclass may hold while it
/// reports, and is held only to copy a reference.
class LUMJob::Fields {
public:
    const NSRef<NSLock> lock = NSMake<NSLock>();
    std::atomic<double> priority { 0.5 };
    std::atomic<std::int32_t> currentState { LUMJobStateIdle };
    lum::DelegateSlot<LUMJobDelegate> delegate;
    lum::JobPlace place;

    NSRef<NSError> error() const
    {
        platform::MutexLock held(mErrorLock);
        return mError;
    }
    void setError(NSRef<NSError> error)
    {
        platform::MutexLock held(mErrorLock);
        std::swap(mError, error);
    }

private:
    mutable platform::Mutex mErrorLock;
    NSRef<NSError> mError NS_GUARDED_BY(mErrorLock);
};

LUMJob::LUMJob() : mFields(std::make_unique<Fields>()) { }

LUMJob::~LUMJob() = default;

const NSClass& LUMJob::classObject()
{
    static constexpr NSMethod kMethods[] = {
        NSMethodOf<"setError:", &LUMJob::setError>(),
        NSMethodOf<"error", &LUMJob::error>(),
        NSMethodOf<"lock", &LUMJob::lock>(),
        NSMethodOf<"unlock", &LUMJob::unlock>(),
        NSMethodOf<"setPriority:", &LUMJob::setPriority>(),
        NSMethodOf<"priority", &LUMJob::priority>(),
        NSMethodOf<"setCurrentState:", &LUMJob::setCurrentState>(),
        NSMethodOf<"currentState", &LUMJob::currentState>(),
        NSMethodOf<"setDelegate:", &LUMJob::setDelegate>(),
        NSMethodOf<"delegate", &LUMJob::delegate>(),
        NSMethodOf<"stateChanged", &LUMJob::stateChanged>(),
        NSMethodOf<"start", &LUMJob::start>(),
        NSMethodOf<"cancel", &LUMJob::cancel>(),
        NSMethodOf<"pause", &LUMJob::pause>(),
        NSMethodOf<"resume", &LUMJob::resume>(),
        NSMethodOf<"jobDidCancel", &LUMJob::jobDidCancel>(),
        NSMethodOf<"jobDidComplete", &LUMJob::jobDidComplete>(),
        NSMethodOf<"progress", &LUMJob::progress>(),
        NSMethodOf<"jobDidError:", &LUMJob::jobDidError>(),
    };
    static const NSClass& type = NSClass::define("LUMJob", &NSObject::classObject(), kMethods);
    return type;
}

lum::JobPlace& LUMJob::placeInIndex() const
{
    return mFields->place;
}

void LUMJob::setError(const NSRef<NSError>& error)
{
    mFields->setError(error);
}

NSRef<NSError> LUMJob::error() const
{
    return mFields->error();
}

void LUMJob::lock()
{
    mFields->lock->lock();
}

void LUMJob::unlock()
{
    mFields->lock->unlock();
}

void LUMJob::setPriority(double priority)
{
    mFields->priority.store(priority, std::memory_order_relaxed);
}

double LUMJob::priority() const
{
    return mFields->priority.load(std::memory_order_relaxed);
}

void LUMJob::setCurrentState(std::int32_t state)
{
    mFields->currentState.store(state, std::memory_order_release);
}

std::int32_t LUMJob::currentState() const
{
    return mFields->currentState.load(std::memory_order_acquire);
}

void LUMJob::setDelegate(const NSId& delegate)
{
    // Deliberate: null does not conform either, so a delegate is replaced and never cleared.
    auto conforming = NSCast<LUMJobDelegate>(delegate);
    if (!conforming)
        throw NSException("LUMJobDelegateException", "Delegate doesn't conform to LUMJobDelegate protocol.");
    mFields->delegate.set(conforming);
}

NSRef<LUMJobDelegate> LUMJob::delegate() const
{
    return mFields->delegate.get();
}

void LUMJob::stateChanged()
{
    if (auto delegate = this->delegate())
        delegate->jobStateDidChange(*this);
}

bool LUMJob::start()
{
    // Deliberate: no look at the state it is in, here and in what follows.
    setCurrentState(LUMJobStateRunning);
    if (auto delegate = this->delegate())
        delegate->jobDidStart(*this);
    return true;
}

void LUMJob::cancel() { }

void LUMJob::pause()
{
    setCurrentState(LUMJobStatePaused);
    if (auto delegate = this->delegate())
        delegate->jobDidPause(*this);
}

void LUMJob::resume()
{
    setCurrentState(LUMJobStateRunning);
    if (auto delegate = this->delegate())
        delegate->jobDidResume(*this);
}

void LUMJob::jobDidCancel()
{
    setCurrentState(LUMJobStateCancelled);
    if (auto delegate = this->delegate())
        delegate->jobDidCancel(*this);
}

void LUMJob::jobDidComplete()
{
    setCurrentState(LUMJobStateCompleted);
    if (auto delegate = this->delegate())
        delegate->jobDidComplete(*this);
}

double LUMJob::progress() const
{
    return 0.0;
}

void LUMJob::jobDidError(const NSRef<NSError>& error)
{
    setError(error);
    // Deliberate: a failure is a cancellation with an error.
    jobDidCancel();
}
