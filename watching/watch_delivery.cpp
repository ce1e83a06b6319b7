#include "watching/watch_delivery.h"

#include "LUMFoundation/OVKQueue.h"
#include "LUMFoundation/OVMainThreadProxy.h"
#include "LUMPlatform/NSClass.h"
#include "LUMPlatform/NSDictionary.h"
#include "LUMPlatform/NSNotificationCenter.h"
#include "LUMPlatform/NSSend.h"
#include "LUMPlatform/NSThread.h"
#include "LUMPlatform/NSWorkspace.h"
#include "watching/vnode_changes.h"

namespace lum {

using platform::MutexLock;

namespace {

struct ReportName {
    VnodeChange change;
    const NSStringConstant& name;
};

// In the order of the reports.
constexpr ReportName kReportNames[] = {
    { kVnodeRename, OVFileWatcherRenameNotification },
    { kVnodeWrite, OVFileWatcherWriteNotification },
    { kVnodeDelete, OVFileWatcherDeleteNotification },
    { kVnodeAttrib, OVFileWatcherAttributeChangeNotification },
    { kVnodeExtend, OVFileWatcherSizeIncreaseNotification },
    { kVnodeLink, OVFileWatcherLinkCountChangeNotification },
    { kVnodeRevoke, OVFileWatcherAccessRevocationNotification },
};

NSSelector postSelector()
{
    static const NSSelector selector("postNotification:forFile:");
    return selector;
}

}

WatchDelivery::WatchDelivery(NSWeak<NSObject> watcher) : mWatcher(std::move(watcher)) { }

NSId WatchDelivery::delegate() const
{
    const MutexLock lock(mLock);
    return mDelegate.get();
}

NSId WatchDelivery::delegateProxy() const
{
    const MutexLock lock(mLock);
    return mDelegateProxy;
}

void WatchDelivery::setDelegate(const NSId& delegate)
{
    NSId proxy = OVMainThreadProxy::copyMainThreadProxy(delegate);
    const MutexLock lock(mLock);
    mDelegate = delegate;
    std::swap(mDelegateProxy, proxy); // the old one is let go behind the lock
}

void WatchDelivery::deliverChanges(const NSRef<NSString>& path, std::uint32_t changes)
{
    NSWorkspace::sharedWorkspace()->noteFileSystemChanged(path);
    for (const ReportName& report : kReportNames) {
        if (!(changes & report.change))
            continue;
        if (const NSId watcher = watcherWithOwnDelivery())
            NSSend(watcher, postSelector(), NSRef<NSString>(report.name), path);
        else
            deliver(report.name, path);
    }
}

/// The watcher if its class has a method of its own for reports; null for others, which may end while a
/// report of theirs is under way.
NSId WatchDelivery::watcherWithOwnDelivery() const
{
    NSId watcher = mWatcher.get();
    const bool isOwn = watcher
        && watcher->isa().instanceMethod(postSelector())
            != OVKQueue::classObject().instanceMethod(postSelector());
    return isOwn ? watcher : nullptr;
}

void WatchDelivery::deliver(const NSRef<NSString>& name, const NSRef<NSString>& path)
{
    const bool hasDelegate = delegateProxy() && tellDelegate(name, path);
    if (hasDelegate && !mAlwaysNotify)
        return;
    if (const NSId watcher = mWatcher.get())
        NSWorkspace::sharedWorkspace()->notificationCenter()->postNotificationName(
            name, watcher, NSDictionary::of({ { "path", path } }));
}

/// Returns whether there still is a delegate after the message. A delegate is only touched on the main
/// thread, so it never ends on the watcher's.
bool WatchDelivery::tellDelegate(const NSRef<NSString>& name, const NSRef<NSString>& path)
{
    static const NSSelector kReceived("watcher:receivedNotification:forPath:");
    return NSThread::performOnMainThreadAndWait([&] {
        // Whoever watches may have ended while the report was waiting, and must then hear no more of it.
        const NSId watcher = mWatcher.get();
        const NSId proxy = delegateProxy();
        // Deliberate: the delegate is not asked whether it answers.
        if (watcher && proxy)
            NSSend(proxy, kReceived, watcher, name, path);
        return delegateProxy() && delegate();
    });
}

}
