#pragma once

#include "LUMPlatform/NSStringConstant.h"

class NSArray;
class NSImage;
class NSNotificationCenter;

/// What a program shares with the desktop around it. Threads: any.
///
///     auto center = NSWorkspace::sharedWorkspace()->notificationCenter();
///     center->addObserver(list, NSSelector("volumeChanged:"), "VolumeDidChange", nullptr);
class NS_EXPORT NSWorkspace : public NSObject {
public:
    static const NSClass& classObject();

    /// Always the same object.
    /// Selector: sharedWorkspace
    static NSRef<NSWorkspace> sharedWorkspace();

    /// A notification centre of its own, apart from the default one; always the same.
    /// Selector: notificationCenter
    NSRef<NSNotificationCenter> notificationCenter() const;

    /// A hint that something changed at `path`. Nothing on this system asks for such hints, so it does
    /// nothing.
    /// Selector: noteFileSystemChanged:
    void noteFileSystemChanged(const NSRef<NSString>& path);

    /// Does one thing to several files: NSWorkspaceRecycleOperation, which moves the names `files` of the
    /// folder `source` to the trash of the desktop; nothing uses `destination`.
    ///
    /// A symbolic link goes to the trash itself. What the desktop refuses, on volumes in memory for instance,
    /// goes to the trash at the top of the volume, or as a copy to the user's own. True when all of them
    /// went; the others are tried when one fails. A name with a slash, ".", "..", or what is no string fails,
    /// as does any other operation and null. `tag`, which may be null, gets 0 or, on failure, -1.
    /// Selector: performFileOperation:source:destination:files:tag:
    bool performFileOperation(const NSRef<NSString>& operation, const NSRef<NSString>& source,
        const NSRef<NSString>& destination, const NSRef<NSArray>& files, NSInteger* tag = nullptr);

    /// The icon of what is at `path`, by its name if that tells a type and by its first bytes otherwise, from
    /// the user's icon theme: 32 pixels on its longer side, or as much smaller as the theme has it. Links are
    /// followed; one that leads nowhere has the icon of links. When nothing is there, it is the icon of what
    /// the name promises. Null only for null.
    ///
    /// Where no theme has a picture for it, or the library was built without LUM_DESKTOP, it is a simple one
    /// for a file, a folder, an application or an unknown file. The theme is chosen and read when the first
    /// icon is asked for: one that is chosen or installed later is not seen. That first icon takes some
    /// milliseconds, one that was asked for before some microseconds.
    /// Selector: iconForFile:
    NSRef<NSImage> iconForFile(const NSRef<NSString>& path);
    /// The icon of files with this extension, without its dot; of folders for "'fldr'", of applications for
    /// "'APPL'". As iconForFile in everything else.
    /// Selector: iconForFileType:
    NSRef<NSImage> iconForFileType(const NSRef<NSString>& type);

protected:
    NSWorkspace();
    ~NSWorkspace() override;

private:
    const NSRef<NSNotificationCenter> mNotificationCenter;
};

/// Moves files to the trash.
extern NS_EXPORT const NSStringConstant NSWorkspaceRecycleOperation;
