#pragma once

#include "LUMFoundation/LUMExport.h"
#include "LUMPlatform/NSObject.h"
#include "LUMPlatform/NSStringConstant.h"

class OVKQueue;

/// Posted for each file of either type at each scan, on the default notification centre: its object is the
/// LUMIncomingFolderWatcher, its user information "file", the path, and "completed", a truth value.
extern LUM_EXPORT const NSStringConstant LUMIncomingFileNotification;

/// Watches a drop folder into which others write files. A file has one extension while it is being written
/// and is renamed to have another when it is done.
///
/// Whenever something is added to the folder, removed from it or renamed in it, the watcher lists it anew and
/// posts LUMIncomingFileNotification for every file with one of the two extensions. It does not remember what
/// it has seen: a file that stays is posted at every scan. A client that wants each file once keeps a list,
/// or moves completed files away.
///
///     center->addObserver(importer, NSSelector("incomingFile:"), LUMIncomingFileNotification, nullptr);
///     auto watcher = LUMIncomingFolderWatcher::initWithFolder("/home/me/Drop", "complete", "partial");
///
/// Threads: make and end it on the main thread; all notifications are posted there.
class LUM_EXPORT LUMIncomingFolderWatcher : public NSObject {
public:
    static const NSClass& classObject();

    /// A watcher of the folder, which is made, with those above it, if it is missing; null if that fails. The
    /// extensions come without a full stop. The first scan runs at the next turn of the main thread's loop. A
    /// folder that cannot be watched gets that scan and no other. A null folder makes nothing, and every scan
    /// of it finds nothing; a null extension matches no file.
    ///
    /// Deliberate: the folder is made by the path as stringByStandardizingPath gives it, but watched and
    /// scanned by the path as it is given here; a "~" or an "x/.." without an x leads nowhere then. The
    /// selector has a small f.
    ///
    /// Selector: initWithFolder:completedfileType:incompleteFileType:
    static NSRef<LUMIncomingFolderWatcher> initWithFolder(const NSRef<NSString>& folderPath,
        const NSRef<NSString>& completedFileType, const NSRef<NSString>& incompleteFileType);

    /// The folder as it was given.
    /// Selector: path
    NSRef<NSString> path() const;

    /// Makes the folder and those above it as far as they are missing. False if one cannot be made, or
    /// something that is no folder is in its place. Deliberate: the first component of the path is taken to
    /// be there, so a relative path of one component is never looked at.
    /// Selector: createFolderIfNeeded
    bool createFolderIfNeeded() const;

    /// The message of the watcher of the folder; has the main thread scan soon.
    /// Selector: watcher:receivedNotification:forPath:
    void watcherReceivedNotification(
        const NSId& watcher, const NSRef<NSString>& name, const NSRef<NSString>& path);

    /// Posts a notification for each file that is in the folder now, in the order of its listing, on the
    /// calling thread.
    /// Selector: scanFolder
    void scanFolder();

protected:
    LUMIncomingFolderWatcher(const NSRef<NSString>& folderPath, const NSRef<NSString>& completedFileType,
        const NSRef<NSString>& incompleteFileType);
    ~LUMIncomingFolderWatcher() override;

private:
    NSRef<OVKQueue> _kqueue;
    const NSRef<NSString> _completedFileType;
    const NSRef<NSString> _incompleteFileType;
    const NSRef<NSString> _folderPath;
};
