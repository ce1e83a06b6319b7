#include "watching/watch_loop.h"

#include "LUMPlatform/NSArray.h"
#include "LUMPlatform/NSException.h"
#include "LUMPlatform/NSLog.h"

#include <algorithm>

namespace lum {

using platform::MutexLock;

namespace {

// A stop wakes the thread, so this only bounds what a lost wake would cost.
constexpr std::chrono::seconds kLongestWait(5);

}

WatchLoop::WatchLoop(std::unique_ptr<KernelQueue> queue) : mQueue(std::move(queue)) { }

void WatchLoop::add(const NSRef<NSString>& path, std::uint32_t changes)
{
    if (!path)
        return;
    const NSRef<NSString> kept = NSCast<NSString>(path->copy());
    const std::string name = kept->utf8();
    if (name.find('\0') != std::string::npos) // the system would take the beginning for the whole
        return;
    Token token = 0;
    {
        const MutexLock lock(mLock);
        token = ++mLastToken;
        mPaths.emplace(token, kept);
    }
    // No lock is held here: a volume that does not answer must not stop other paths from being removed.
    const bool isOpen = mQueue->add(token, name, changes);
    // Deliberate: what cannot be opened is not watched, without a word, and what is added twice stands twice.
    // An object is known by the path it was added by, wherever it is moved.
    const MutexLock lock(mLock);
    if (isOpen)
        mWatched.push_back({ token, kept });
    else
        mPaths.erase(token);
}

void WatchLoop::remove(const NSRef<NSString>& path)
{
    Token token = 0;
    {
        const MutexLock lock(mLock);
        const auto first = std::find_if(mWatched.begin(), mWatched.end(),
            [&](const Watched& watched) { return watched.path->isEqualToString(path); });
        if (first == mWatched.end())
            return;
        token = first->token;
        mWatched.erase(first);
        mPaths.erase(token);
    }
    if (const int error = mQueue->remove(token))
        NSLog("removePathFromQueue: Couldn't close file descriptor (%d)", error);
}

void WatchLoop::removeAll()
{
    // Deliberate: here alone a failure is not logged.
    for (const Watched& watched : takeAll())
        mQueue->remove(watched.token);
}

NSRef<NSArray> WatchLoop::paths() const
{
    std::vector<NSId> paths;
    const MutexLock lock(mLock);
    paths.reserve(mWatched.size());
    for (const Watched& watched : mWatched)
        paths.emplace_back(watched.path);
    return NSArray::arrayWithObjects(paths);
}

std::vector<WatchLoop::Watched> WatchLoop::takeAll()
{
    const MutexLock lock(mLock);
    for (const Watched& watched : mWatched)
        mPaths.erase(watched.token);
    return std::exchange(mWatched, {});
}

NSRef<NSString> WatchLoop::pathOf(Token token) const
{
    const MutexLock lock(mLock);
    const auto place = mPaths.find(token);
    return place == mPaths.end() ? nullptr : place->second;
}

void WatchLoop::run(const Report& report)
{
    struct Claim {
        std::atomic<bool>& isClaimed;
        ~Claim() { isClaimed = false; }
    } const claim { mIsClaimed };
    while (mKeepsRunning) {
        try {
            pass(report);
        } catch (const NSException& exception) {
            // Deliberate: the rest of the event is dropped.
            NSLog("Error in OVKQueue watcherThread: %@", exception.description());
        }
    }
    giveBack();
}

void WatchLoop::pass(const Report& report)
{
    if (mNextPending == mPending.size()) {
        mPending.clear();
        mNextPending = 0;
        mPending = mQueue->wait(kLongestWait);
        return;
    }
    const KernelQueue::Event event = mPending[mNextPending++];
    if (const NSRef<NSString> path = pathOf(event.token))
        report(path, event.changes);
}

void WatchLoop::stop()
{
    mKeepsRunning = false;
    mQueue->wake();
}

void WatchLoop::giveBack()
{
    // Deliberate: the thread logs in the words of a watcher that gives itself back.
    for (const Watched& watched : takeAll()) {
        if (const int error = mQueue->remove(watched.token))
            NSLog("dealloc: Couldn't close file descriptor (%d)", error);
    }
    if (const int error = mQueue->close())
        NSLog("release: Couldn't close main kqueue (%d)", error);
}

}
