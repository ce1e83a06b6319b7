#pragma once

#include "LUMPlatform/NSString.h"
#include "platform/objects/mutex.h"
#include "watching/kernel_queue.h"

#include <atomic>
#include <functional>
#include <unordered_map>

class NSArray;

namespace lum {

/// The paths of one watcher, and what its thread does with them.
///
/// The watcher and the thread own it together. So the watcher may end at any moment, on any thread and
/// without waiting: it only tells the loop to stop, and the thread gives everything back.
class WatchLoop {
public:
    /// Takes in one event: a path as it was added, and VnodeChange bits.
    using Report = std::function<void(const NSRef<NSString>& path, std::uint32_t changes)>;

    explicit WatchLoop(std::unique_ptr<KernelQueue> queue);

    int descriptor() const { return mQueue->descriptor(); }

    void add(const NSRef<NSString>& path, std::uint32_t changes) NS_EXCLUDES(mLock);
    void remove(const NSRef<NSString>& path) NS_EXCLUDES(mLock);
    void removeAll() NS_EXCLUDES(mLock);
    /// The paths that could be opened, in the order they were added.
    NSRef<NSArray> paths() const NS_EXCLUDES(mLock);

    /// Whether the caller may run the loop, which one thread at a time does: from now until its run() has
    /// ended.
    bool claim() { return !mIsClaimed.exchange(true); }
    /// Reports events, one after another and with no lock held, until stop(), and then gives the queue back.
    /// An NSException out of `report` is logged; any other exception ends the loop and leaves the queue as it
    /// is.
    void run(const Report& report);
    /// Has run() end at its next event. Never waits.
    void stop();

private:
    using Token = KernelQueue::Token;
    struct Watched {
        Token token;
        NSRef<NSString> path;
    };

    void pass(const Report& report);
    NSRef<NSString> pathOf(Token token) const NS_EXCLUDES(mLock);
    std::vector<Watched> takeAll() NS_EXCLUDES(mLock);
    void giveBack();

    const std::unique_ptr<KernelQueue> mQueue;
    std::atomic<bool> mKeepsRunning = true;
    std::atomic<bool> mIsClaimed = false;
    std::vector<KernelQueue::Event> mPending; // of the thread
    std::size_t mNextPending = 0; // of the thread

    mutable platform::Mutex mLock;
    Token mLastToken NS_GUARDED_BY(mLock) = 0;
    std::vector<Watched> mWatched NS_GUARDED_BY(mLock);
    /// Also of paths that are just being added: they may report before add() is done.
    std::unordered_map<Token, NSRef<NSString>> mPaths NS_GUARDED_BY(mLock);
};

}
