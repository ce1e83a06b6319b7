#pragma once

#include "LUMFoundation/OVKQueue.h"
#include "LUMPlatform/NSClass.h"
#include "LUMPlatform/NSDictionary.h"
#include "LUMPlatform/NSNotification.h"
#include "LUMPlatform/NSRunLoop.h"
#include "LUMPlatform/NSString.h"
#include "LUMPlatform/NSThread.h"
#include "tests/fixture.h"
#include "tests/temporary_folder.h"
#include "tests/watching/fake_kernel_queue.h"
#include "tests/watching/log_recorder.h"

#include <functional>
#include <mutex>
#include <sys/resource.h>
#include <thread>

namespace lum {

/// Writes down what a watcher tells it, as a delegate and as an observer, and on which thread.
class Listener : public NSObject {
public:
    static const NSClass& classObject()
    {
        static constexpr NSMethod kMethods[] = {
            NSMethodOf<"watcher:receivedNotification:forPath:", &Listener::watcherReceivedNotification>(),
            NSMethodOf<"posted:", &Listener::posted>(),
        };
        static const NSClass& type = NSClass::define("Listener", &NSObject::classObject(), kMethods);
        return type;
    }

    void watcherReceivedNotification(
        const NSId& watcher, const NSRef<NSString>& name, const NSRef<NSString>& path)
    {
        lastWatcher = watcher.get();
        say("told", name, path);
        if (whenTold)
            whenTold(watcher);
    }
    void posted(const NSRef<NSNotification>& notification)
    {
        {
            const std::lock_guard lock(mLock);
            lastNotification = notification;
        }
        say("posted", notification->name(), notification->userInfo()->objectForKey<NSString>("path"));
    }

    std::string story() const
    {
        const std::lock_guard lock(mLock);
        return mStory;
    }
    std::string take()
    {
        const std::lock_guard lock(mLock);
        lastNotification = nullptr;
        return std::exchange(mStory, {});
    }

    std::function<void(const NSId& watcher)> whenTold;
    std::atomic<NSObject*> lastWatcher = nullptr;
    NSRef<NSNotification> lastNotification;

protected:
    Listener() = default;
    ~Listener() override = default;

private:
    /// As in "told@main(FileWrittenTo, /a) ": the thread, what all names have of their own, the path.
    void say(const char* how, const NSRef<NSString>& name, const NSRef<NSString>& path)
    {
        const std::string text = name->utf8();
        const std::string_view own =
            std::string_view(text).substr(strlen("OVKQueue"), text.size() - strlen("OVKQueueNotification"));
        const std::lock_guard lock(mLock);
        mStory += std::string(how) + (NSThread::isMainThread() ? "@main(" : "@other(") + std::string(own)
            + ", " + path->utf8() + ") ";
    }

    mutable std::mutex mLock;
    std::string mStory;
};

/// Leaves the process no more than so many descriptors while it lives.
class DescriptorLimit {
public:
    explicit DescriptorLimit(rlim_t count)
    {
        getrlimit(RLIMIT_NOFILE, &mBefore);
        const rlimit limit { count, mBefore.rlim_max };
        setrlimit(RLIMIT_NOFILE, &limit);
    }
    ~DescriptorLimit() { setrlimit(RLIMIT_NOFILE, &mBefore); }
    DescriptorLimit(const DescriptorLimit&) = delete;
    DescriptorLimit& operator=(const DescriptorLimit&) = delete;

private:
    rlimit mBefore {};
};

/// Watchers over a fake kernel queue and over real files, with the test as the main thread.
class WatchingTest : public ObjectTest {
private:
    const long mLiveBefore = platform::liveObjectCount();

protected:
    void TearDown() override
    {
        listener = nullptr;
        drainMainQueue();
        // The threads of watchers that were let go end soon, and with them what they hold. To close a queue
        // is to wait for the queues of all programs, which has been seen to take half a minute on a busy
        // machine.
        const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(100);
        while (platform::liveObjectCount() > mLiveBefore && std::chrono::steady_clock::now() < deadline)
            NSRunLoop::main()->runUntil(std::chrono::steady_clock::now() + std::chrono::milliseconds(1));
    }

    static void drainMainQueue() { NSRunLoop::drainMainQueue(); }

    /// Serves the main queue until something has come true.
    static bool serveUntil(const std::function<bool()>& isDone)
    {
        const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(30);
        while (!isDone()) {
            if (std::chrono::steady_clock::now() > deadline)
                return false;
            NSRunLoop::main()->runUntil(std::chrono::steady_clock::now() + std::chrono::milliseconds(1));
        }
        return true;
    }
    /// Serves the main queue until the listener has heard this much, and tells all it has heard.
    std::string storyWith(const std::string& text) const
    {
        serveUntil([&] { return listener->story().find(text) != std::string::npos; });
        return listener->take();
    }

    NSRef<OVKQueue> makeFakeWatcher() { return NSMake<OVKQueue>(std::make_unique<FakeKernelQueue>(control)); }

    NSRef<Listener> listener = NSMake<Listener>();
    std::shared_ptr<FakeKernelQueue::Control> control = std::make_shared<FakeKernelQueue::Control>();
    LogRecorder log;
};

}
