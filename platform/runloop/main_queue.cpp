#include "platform/runloop/main_queue.h"

#include "platform/runloop/main_queue_source.h"
#include "platform/runloop/main_thread.h"
#include "platform/runloop/parking.h"

#include <cassert>
#include <exception>
#include <pthread.h>
#include <utility>

namespace platform {

class MainQueue::Call {
public:
    /// The queue knows the call no more by now: it may end itself, or its sender may end it.
    virtual void run() = 0;
    /// Ends a call that will not run.
    virtual void drop() = 0;

    Call* next = nullptr;
    std::uint64_t sequence = 0;

protected:
    ~Call() = default;
};

/// Stands on the stack of the thread that waits for it.
class MainQueue::WaitingCall final : public Call {
public:
    WaitingCall(void (*function)(void*), void* context) : mFunction(function), mContext(context) { }

    void run() override
    {
        try {
            mFunction(mContext);
        } catch (...) {
            mException = std::current_exception();
        }
        mParking.release();
    }

    void drop() override { assert(false && "a thread still waits in the queue"); }

    void wait()
    {
        mParking.wait();
        if (mException)
            std::rethrow_exception(std::move(mException));
    }

private:
    void (*const mFunction)(void*);
    void* const mContext;
    std::exception_ptr mException;
    Parking mParking;
};

class MainQueue::PostedCall final : public Call {
public:
    explicit PostedCall(std::function<void()> function) : mFunction(std::move(function)) { }

    void run() override
    {
        std::unique_ptr<PostedCall> self(this);
        mFunction();
    }

    void drop() override { delete this; }

private:
    const std::function<void()> mFunction;
};

struct MainQueue::Run {
    Run* outer;
    bool stopped = false;
};

struct ForkHandlers {
    static void prepare() NS_NO_THREAD_SAFETY_ANALYSIS { MainQueue::shared().mLock.lock(); }
    static void parent() NS_NO_THREAD_SAFETY_ANALYSIS { MainQueue::shared().mLock.unlock(); }
    static void child() NS_NO_THREAD_SAFETY_ANALYSIS
    {
        MainQueue& queue = MainQueue::shared();
        queue.forgetCalls();
        queue.mWake->renewAfterFork();
        queue.mLock.unlock();
    }
};

MainQueue& MainQueue::shared()
{
    // Never destroyed: threads may still wait in it when the process ends.
    static MainQueue& queue = []() -> MainQueue& {
        auto made = std::make_unique<MainQueue>(MainQueueWake::open());
        attachToDefaultContext(*made);
        pthread_atfork(ForkHandlers::prepare, ForkHandlers::parent, ForkHandlers::child);
        return *made.release();
    }();
    return queue;
}

MainQueue::MainQueue(std::unique_ptr<MainQueueWake> wake) : mWake(std::move(wake)) { }

MainQueue::~MainQueue()
{
    while (Call* call = std::exchange(mFirst, mFirst ? mFirst->next : nullptr))
        call->drop();
}

void MainQueue::callAndWait(void (*function)(void*), void* context)
{
    if (isMainThread()) {
        function(context);
        return;
    }
    WaitingCall call(function, context);
    enqueue(call);
    call.wait();
}

void MainQueue::post(std::function<void()> call)
{
    enqueue(*new PostedCall(std::move(call)));
}

void MainQueue::postAfter(std::chrono::duration<double> delay, std::function<void()> call)
{
    if (!(delay.count() > 0)) {
        post(std::move(call));
        return;
    }
    // A century from now stands for all that lies beyond it, which the clock could not count.
    constexpr std::chrono::hours kLongest(24 * 365 * 100);
    Clock::duration wait = delay < kLongest ? std::chrono::ceil<Clock::duration>(delay) : kLongest;
    Clock::time_point due = mWake->now() + wait;
    auto posted = std::make_unique<PostedCall>(std::move(call));
    MutexLock lock(mLock);
    auto added = mDelayed.emplace(due, std::move(posted));
    if (added == mDelayed.begin())
        mWake->setAlarm(due);
}

int MainQueue::descriptor()
{
    MutexLock lock(mLock);
    return mWake->descriptor();
}

void MainQueue::drain()
{
    if (!isMainThread())
        return;
    std::uint64_t last = beginTurn();
    while (Call* call = takeNext(last))
        call->run();
}

bool MainQueue::run(std::optional<Clock::time_point> deadline)
{
    assert(isMainThread());
    Run current { mInnermostRun };
    struct Leave {
        MainQueue& queue;
        ~Leave() { queue.mInnermostRun = queue.mInnermostRun->outer; }
    } leave { *this };
    mInnermostRun = &current;

    for (;;) {
        std::uint64_t last = beginTurn();
        while (Call* call = current.stopped ? nullptr : takeNext(last))
            call->run();
        if (current.stopped)
            return true;
        if (deadline && mWake->now() >= *deadline)
            return false;
        mWake->wait(deadline);
    }
}

void MainQueue::stop()
{
    post([this] {
        if (mInnermostRun)
            mInnermostRun->stopped = true;
    });
}

void MainQueue::enqueue(Call& call)
{
    bool mustRaise;
    {
        MutexLock lock(mLock);
        enqueueLocked(call);
        mustRaise = !std::exchange(mRaised, true);
    }
    if (mustRaise)
        mWake->raise();
}

void MainQueue::enqueueLocked(Call& call)
{
    call.sequence = mNextSequence++;
    (mFirst ? mLast->next : mFirst) = &call;
    mLast = &call;
}

/// Lines up what is due and returns the last call of this turn.
std::uint64_t MainQueue::beginTurn()
{
    MutexLock lock(mLock);
    if (!mDelayed.empty()) {
        bool some = false;
        for (Clock::time_point now = mWake->now(); !mDelayed.empty() && mDelayed.begin()->first <= now;
             some = true)
            enqueueLocked(*mDelayed.extract(mDelayed.begin()).mapped().release());
        if (some)
            mWake->setAlarm(mDelayed.empty() ? std::nullopt : std::optional(mDelayed.begin()->first));
    }
    return mNextSequence - 1;
}

/// Takes the next call out, null at the end of the turn. The descriptor stays readable until no call is left,
/// so that a loop run by one of the calls finds the rest.
MainQueue::Call* MainQueue::takeNext(std::uint64_t last)
{
    MutexLock lock(mLock);
    if (!mFirst) {
        mWake->clear();
        mRaised = false;
        return nullptr;
    }
    if (mFirst->sequence > last)
        return nullptr;
    Call* call = mFirst;
    mFirst = call->next;
    return call;
}

void MainQueue::forgetCalls()
{
    // In the child of a fork(). The calls are the parent's to run, and what they hold may be in any state
    // here, so they are left behind rather than ended.
    mFirst = mLast = nullptr;
    for (auto& delayed : mDelayed)
        static_cast<void>(delayed.second.release());
    mDelayed.clear();
    mRaised = false;
}

}
