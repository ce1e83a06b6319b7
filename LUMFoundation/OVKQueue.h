#pragma once

#include "LUMFoundation/OVFileWatcher.h"

#include <atomic>
#include <cstdint>
#include <memory>

namespace lum {
class KernelQueue;
}

/// What a path can be watched for, combined by "|".
enum OVKQueueNote : std::uint32_t {
    OVKQueueNoteDelete = 0x01, ///< OVFileWatcherDeleteNotification
    OVKQueueNoteWrite = 0x02, ///< OVFileWatcherWriteNotification
    OVKQueueNoteExtend = 0x04, ///< OVFileWatcherSizeIncreaseNotification
    OVKQueueNoteAttrib = 0x08, ///< OVFileWatcherAttributeChangeNotification
    OVKQueueNoteLink = 0x10, ///< OVFileWatcherLinkCountChangeNotification
    OVKQueueNoteRename = 0x20, ///< OVFileWatcherRenameNotification
    OVKQueueNoteRevoke = 0x40, ///< OVFileWatcherAccessRevocationNotification
};

/// Watches single files and folders through the system's event queue, on a thread of its own.
///
/// With a delegate, each report is the delegate's message `watcher:receivedNotification:forPath:` (see
/// OVFileWatcher), which runs on the main thread while the watcher's thread waits. Without one, and with
/// alwaysNotify besides, it is a notification on the notification centre of NSWorkspace, posted on the
/// watcher's thread: its object is the watcher, its user information the path under "path".
///
///     NSRef<OVKQueue> watcher = OVKQueue::init();
///     watcher->setDelegate(browser);
///     watcher->addPath("/home/me/Drop");
///
/// What is watched is the object that the path names when it is added, through symbolic links. Reports carry
/// the path as it was added, also once the object is elsewhere. Of what happens between two looks of the
/// thread, each kind of change is reported once per path. A write through a shared memory mapping is no event
/// of the system.
///
/// The delegate is not owned, and one that has ended counts as none. The watcher ends with its last
/// reference, on any thread, at once: its thread is told to stop, and a report that waits for the main thread
/// is dropped.
///
/// Threads: any.
class LUM_EXPORT OVKQueue : public NSObject, public OVFileWatcher {
public:
    static const NSClass& classObject();

    /// A watcher of the whole process, made when first asked for and never destroyed. Null when it could not
    /// be made.
    /// Selector: sharedFileWatcher
    static NSRef<OVKQueue> sharedFileWatcher();

    /// A watcher of nothing yet, with its thread running. Null when the system has no more event queues (on a
    /// stock Linux a user may have 128), descriptors or threads.
    /// Selector: init
    static NSRef<OVKQueue> init();

    /// The descriptor of the system's event queue; for identity only, do not read it.
    /// Selector: queueFD
    std::int32_t queueFD() const;

    /// The same as addPath.
    /// Selector: addPathToQueue:
    void addPathToQueue(const NSRef<NSString>& path);
    /// Watches for renaming, writing, deletion and changes of attributes.
    /// Selector: addPath:
    void addPath(const NSRef<NSString>& path) override;
    /// Watches a path for what `flags` (OVKQueueNote) say. A path that cannot be opened, and null, are not
    /// watched, without a word. A path added twice is watched and reported twice. Beyond the system's limit
    /// of watches a path is kept but never reports.
    /// Selector: addPathToQueue:notifyingAbout:
    virtual void addPathToQueueNotifyingAbout(const NSRef<NSString>& path, std::uint32_t flags);

    /// The same as removePathFromQueue.
    /// Selector: removePath:
    void removePath(const NSRef<NSString>& path) override;
    /// Ends the watching of a path, given as it was added: one addition per call, the first one. Does nothing
    /// for a path that is not watched. Reports that wait are dropped.
    /// Selector: removePathFromQueue:
    virtual void removePathFromQueue(const NSRef<NSString>& path);
    /// Ends the watching of all paths.
    /// Selector: removeAllPathsFromQueue
    virtual void removeAllPathsFromQueue();

    /// The body of the watcher's thread. It does nothing while that runs, which is from the watcher's
    /// beginning to its end.
    /// Selector: watcherThread:
    void watcherThread(const NSId& ignored);

    /// Reports a change to the delegate or the notification centre. On another thread than the main one it
    /// waits for the delegate's message to run there, and deadlocks when the main thread waits for the
    /// caller. Raises what the delegate raises. The watcher's thread reports through the method of this
    /// selector, so a derived class may have its own in its method table; the watcher is kept while it runs.
    /// Selector: postNotification:forFile:
    void postNotification(const NSRef<NSString>& name, const NSRef<NSString>& path);

    /// Selector: delegate
    NSId delegate() const override;
    /// Null for none. A report under way may still reach the old one.
    /// Selector: setDelegate:
    void setDelegate(const NSId& delegate) override;

    /// Whether notifications are posted although a delegate was told.
    /// Selector: alwaysNotify
    bool alwaysNotify() const;
    /// Off at first.
    /// Selector: setAlwaysNotify:
    void setAlwaysNotify(bool alwaysNotify);

    /// "OVKQueue { watchedPaths = (...), alwaysNotify = NO }"
    NSRef<NSString> description() const override;

protected:
    /// For classes derived from it, which are made by NSMake. Throws std::system_error where init() answers
    /// null.
    OVKQueue();
    explicit OVKQueue(std::unique_ptr<lum::KernelQueue> queue);
    ~OVKQueue() override;

private:
    struct Core; // shared with the thread
    const std::shared_ptr<Core> mCore;
};

/// The shared watcher; null until it is asked for, from then on there as long as the process. Only to be
/// read.
extern LUM_EXPORT std::atomic<OVKQueue*> gOVKQueueSharedQueueSingleton;
