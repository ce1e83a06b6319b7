#pragma once

#include "platform/objects/mutex.h"
#include "platform/runloop/main_queue_wake.h"

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <optional>

namespace platform {

/// The calls that wait for the main thread, first in, first out.
///
/// There is one in a process, shared(). Whatever loop the main thread runs drains it: GLib's, through a
/// source on the default context, this queue's own run(), or any other that watches descriptor() and calls
/// drain(). Threads: any may queue calls; they run on the main thread, with no lock held.
class MainQueue {
public:
    using Clock = MainQueueWake::Clock;

    /// The queue of the process, attached to GLib's default main context when first asked for.
    /// Throws std::system_error when the system refuses the descriptors; the next call tries again.
    static MainQueue& shared();

    explicit MainQueue(std::unique_ptr<MainQueueWake> wake);
    /// Ends the calls that are left without running them. No thread may wait in callAndWait().
    ~MainQueue();
    MainQueue(const MainQueue&) = delete;
    MainQueue& operator=(const MainQueue&) = delete;

    /// Runs `function(context)` on the main thread and returns when it has run; at once, inline, on the main
    /// thread. What the function throws is thrown here. Deadlocks when the main thread waits for the caller.
    void callAndWait(void (*function)(void*), void* context);

    /// Runs `call` on the main thread after all that is queued, also when the caller is the main thread.
    void post(std::function<void()> call);

    /// Runs `call` on the main thread once `delay` has passed: calls of one moment in the order they came.
    /// A delay of 0 or less is post().
    void postAfter(std::chrono::duration<double> delay, std::function<void()> call);

    /// A descriptor that is readable while there is work, for hosts with a loop of their own.
    int descriptor();

    /// Runs the calls that are queued or due now, but none that they queue in turn, so that a call which
    /// queues itself again leaves room for the rest of the host's loop. Does nothing on another thread than
    /// the main one. An exception of a call that nobody waits for passes through; the calls behind it stay
    /// queued.
    void drain();

    /// Serves the queue, and nothing else, until stop() or the deadline; whether it was stopped.
    /// May be called from within a call. The main thread only.
    bool run(std::optional<Clock::time_point> deadline = std::nullopt);

    /// Ends the innermost run() once the calls queued before this have run; nothing when none runs by then.
    void stop();

    MainQueueWake& wake() { return *mWake; }

private:
    class Call;
    class WaitingCall;
    class PostedCall;
    struct Run;
    friend struct ForkHandlers;

    void enqueue(Call& call);
    void enqueueLocked(Call& call) NS_REQUIRES(mLock);
    std::uint64_t beginTurn();
    Call* takeNext(std::uint64_t last);
    void forgetCalls() NS_REQUIRES(mLock);

    const std::unique_ptr<MainQueueWake> mWake;
    Mutex mLock;
    Call* mFirst NS_GUARDED_BY(mLock) = nullptr;
    Call* mLast NS_GUARDED_BY(mLock) = nullptr;
    std::uint64_t mNextSequence NS_GUARDED_BY(mLock) = 1;
    bool mRaised NS_GUARDED_BY(mLock) = false; // somebody has raised the descriptor, or is about to
    std::multimap<Clock::time_point, std::unique_ptr<PostedCall>> mDelayed NS_GUARDED_BY(mLock);
    Run* mInnermostRun = nullptr; // the main thread's own
};

}
