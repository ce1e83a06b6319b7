#pragma once

#include "LUMPlatform/NSObject.h"

class NSNotificationCenter;

/// What a program shares with the desktop around it. Threads: any.
///
///     auto center = NSWorkspace::sharedWorkspace()->notificationCenter();
///     center->addObserver(list, NSSelector("volumeChanged:"), "VolumeDidChange", nullptr);
class NS_EXPORT NSWorkspace : public NSObject {
public:
    static const NSClass& classObject();

    /// Always the same object. Selector: sharedWorkspace
    static NSRef<NSWorkspace> sharedWorkspace();

    /// A notification centre of its own, apart from the default one; always the same.
    /// Selector: notificationCenter
    NSRef<NSNotificationCenter> notificationCenter() const;

    /// A hint that something changed at `path`. Nothing on this system asks for such hints, so it does
    /// nothing. Selector: noteFileSystemChanged:
    void noteFileSystemChanged(const NSRef<NSString>& path);

protected:
    NSWorkspace();
    ~NSWorkspace() override;

private:
    const NSRef<NSNotificationCenter> mNotificationCenter;
};
