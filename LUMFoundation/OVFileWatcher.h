#pragma once

#include "LUMFoundation/LUMExport.h"
#include "LUMPlatform/NSObject.h"
#include "LUMPlatform/NSStringConstant.h"

// What is reported of a watched path, as the name of a notification or the second argument of the delegate's
// message. When one event is several of these, they are reported in this order.

/// The file or folder got another name or another place.
extern LUM_EXPORT const NSStringConstant OVFileWatcherRenameNotification;
/// A file was written to, or the list of a folder's children changed.
extern LUM_EXPORT const NSStringConstant OVFileWatcherWriteNotification;
/// Nothing is at the path any more, or something else. The path stays watched: as long as the object lives
/// on, held open or under another name, what happens to it is reported. Of an object that had already been
/// renamed, or whose folder went at the same time, the deletion is told when nobody holds it any more.
extern LUM_EXPORT const NSStringConstant OVFileWatcherDeleteNotification;
/// Mode, owner, times or extended attributes changed.
extern LUM_EXPORT const NSStringConstant OVFileWatcherAttributeChangeNotification;
/// A file grew.
extern LUM_EXPORT const NSStringConstant OVFileWatcherSizeIncreaseNotification;
/// Hard links of a file, or subfolders of a folder, came or went.
extern LUM_EXPORT const NSStringConstant OVFileWatcherLinkCountChangeNotification;
/// The volume was unmounted. The path stays watched and reports no more.
extern LUM_EXPORT const NSStringConstant OVFileWatcherAccessRevocationNotification;

/// Something that watches paths and tells a delegate what happens to them.
///
/// The delegate is any object. It gets one message, `watcher:receivedNotification:forPath:`, with the
/// watcher, one of the names above, and the path as it was added; it has to answer that:
///
///     class Browser : public NSObject {
///     public:
///         static const NSClass& classObject(); // NSMethodOf<"watcher:receivedNotification:forPath:",
///                                              //     &Browser::watcherReceivedNotification>()
///         void watcherReceivedNotification(
///             const NSId& watcher, const NSRef<NSString>& name, const NSRef<NSString>& path);
///     };
///
/// Null paths are ignored. Threads: see the class.
class LUM_EXPORT OVFileWatcher : public NSProtocol {
public:
    /// Starts watching a path.
    /// Selector: addPath:
    virtual void addPath(const NSRef<NSString>& path) = 0;
    /// Ends watching a path.
    /// Selector: removePath:
    virtual void removePath(const NSRef<NSString>& path) = 0;
    /// The delegate, which the watcher does not own; null when there is none.
    /// Selector: delegate
    virtual NSId delegate() const = 0;
    /// Selector: setDelegate:
    virtual void setDelegate(const NSId& delegate) = 0;

protected:
    ~OVFileWatcher() override = default;
};
