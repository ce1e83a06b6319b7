#pragma once

#include "LUMPlatform/NSString.h"
#include "LUMPlatform/NSWeak.h"
#include "platform/objects/mutex.h"

#include <atomic>

namespace lum {

/// How the reports of one watcher reach its delegate and the notification centre. Threads: any.
class WatchDelivery {
public:
    /// `watcher` is who the reports come from; once it has ended nothing is delivered.
    explicit WatchDelivery(NSWeak<NSObject> watcher);

    NSId delegate() const NS_EXCLUDES(mLock);
    void setDelegate(const NSId& delegate) NS_EXCLUDES(mLock);
    bool alwaysNotify() const { return mAlwaysNotify; }
    void setAlwaysNotify(bool alwaysNotify) { mAlwaysNotify = alwaysNotify; }

    /// One report for each of the VnodeChange bits, in the fixed order, by the watcher's
    /// `postNotification:forFile:`.
    void deliverChanges(const NSRef<NSString>& path, std::uint32_t changes);
    /// What that does: the delegate's message on the main thread, for which this waits; then, when there is
    /// no delegate or both are wanted, a notification, here. Raises what the delegate raises.
    void deliver(const NSRef<NSString>& name, const NSRef<NSString>& path);

private:
    NSId watcherWithOwnDelivery() const;
    NSId delegateProxy() const NS_EXCLUDES(mLock);
    bool tellDelegate(const NSRef<NSString>& name, const NSRef<NSString>& path);

    const NSWeak<NSObject> mWatcher;
    std::atomic<bool> mAlwaysNotify = false;
    mutable platform::Mutex mLock;
    NSWeak<NSObject> mDelegate NS_GUARDED_BY(mLock);
    NSId mDelegateProxy NS_GUARDED_BY(mLock);
};

}
