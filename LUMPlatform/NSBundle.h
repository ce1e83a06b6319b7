#pragma once

#include "LUMPlatform/NSObject.h"

/// A folder that holds a program or a package with what belongs to it. Immutable; threads: any.
///
///     auto tools = NSBundle::mainBundle()->bundlePath()->stringByAppendingPathComponent("Contents/Helpers");
class NS_EXPORT NSBundle : public NSObject {
public:
    static const NSClass& classObject();

    /// The bundle of the running program: X when its file is X/Contents/FOLDER/PROGRAM, else the folder that
    /// its file is in. Always the same object.
    /// Selector: mainBundle
    static NSRef<NSBundle> mainBundle();
    /// Null when no folder is there now. A relative path starts at the current folder.
    /// Selector: bundleWithPath:
    static NSRef<NSBundle> bundleWithPath(const NSRef<NSString>& path);

    NSRef<NSString> bundlePath() const; ///< Absolute. Selector: bundlePath

    bool isEqual(const NSId& other) const override; ///< The same path.
    NSUInteger hash() const override;
    NSRef<NSString> description() const override; ///< "NSBundle </path>"

protected:
    explicit NSBundle(const NSRef<NSString>& path);
    ~NSBundle() override;

private:
    const NSRef<NSString> mPath;
};
