#pragma once

#include "platform/objects/mutex.h"
#include "watching/inotify_watches.h"

namespace lum {

/// A kernel queue over one inotify instance.
class InotifyQueue final : public KernelQueue {
public:
    /// Null when the system gives no queue or no waker. `system` must outlive the queue.
    static std::unique_ptr<InotifyQueue> open(InotifySystem& system);
    ~InotifyQueue() override;

    int descriptor() const override;
    bool add(Token token, const std::string& path, std::uint32_t changes) override;
    int remove(Token token) override;
    std::vector<Event> wait(std::chrono::milliseconds limit) override;
    void wake() override;
    int close() override;

private:
    using Entry = InotifyWatches::Entry;
    struct Look;
    struct Batch;

    /// A path that may lose its name at any moment until then.
    struct Doubt {
        Token token;
        std::chrono::steady_clock::time_point until;
    };

    InotifyQueue(InotifySystem& system, int queue, int waker);

    std::vector<InotifyEvent> readEvents(std::chrono::milliseconds limit);
    void collect(const std::vector<Doubt>& doubts, const std::vector<InotifyEvent>& events, Batch& batch)
        NS_EXCLUDES(mLock);
    void lookAtPaths(Batch& batch);
    void lookAt(Look& look);
    std::vector<Event> settle(Batch& batch) NS_EXCLUDES(mLock);
    std::uint32_t settle(const Look& look, Batch& batch, Entry& entry) NS_REQUIRES(mLock);
    WatchFate fateOf(const Look& look, const Batch& batch) const;
    bool isKnownUnmounted(std::uint64_t device) const;

    InotifySystem& mSystem;
    const int mQueue;
    const int mWaker;

    mutable platform::Mutex mLock;
    bool mIsOpen NS_GUARDED_BY(mLock) = true;
    InotifyWatches mWatches NS_GUARDED_BY(mLock);

    // Touched by the watcher thread only.
    const std::unique_ptr<std::byte[]> mBuffer;
    bool mIsDrained = true; ///< The last read left nothing behind.
    std::vector<Doubt> mDoubts; ///< Paths to look at once more.
    std::vector<std::uint64_t> mUnmountedDevices; ///< Of the events since the queue was last drained.
};

}
