#pragma once

#include "LUMPlatform/NSObject.h"

class NSKeyedArchiver;

/// Follows an NSKeyedArchiver, and may replace objects on their way into the archive. Every operation has an
/// implementation that does nothing. The archiver refers to its delegate weakly. Threads: that of the
/// archiver.
///
///     class WithoutPictures : public NSObject, public NSKeyedArchiverDelegate {
///     public:
///         NSId archiverWillEncodeObject(NSKeyedArchiver&, const NSId& object) override
///         {
///             return NSCast<Picture>(object) ? nullptr : object;
///         }
///     };
class NS_EXPORT NSKeyedArchiverDelegate : public NSProtocol {
public:
    /// What to archive in place of `object`, wherever that is met; null for nothing at all. Asked once for
    /// each object.
    /// C++ form of archiver:willEncodeObject:
    virtual NSId archiverWillEncodeObject(NSKeyedArchiver& archiver, const NSId& object);
    /// An object was written for the first time. Strings, numbers and data count each time.
    /// C++ form of archiver:didEncodeObject:
    virtual void archiverDidEncodeObject(NSKeyedArchiver& archiver, const NSId& object);
    virtual void archiverWillFinish(NSKeyedArchiver& archiver); ///< C++ form of archiverWillFinish:
    virtual void archiverDidFinish(NSKeyedArchiver& archiver); ///< C++ form of archiverDidFinish:

protected:
    ~NSKeyedArchiverDelegate() override = default;
};
