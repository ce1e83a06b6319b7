#pragma once

#include "LUMPlatform/NSObject.h"

class NSArray;
class NSKeyedUnarchiver;

/// Follows an NSKeyedUnarchiver, stands in for classes that are gone, and may replace objects. Every
/// operation has an implementation that does nothing. The unarchiver refers to its delegate weakly. Threads:
/// that of the unarchiver.
///
///     class StandIns : public NSObject, public NSKeyedUnarchiverDelegate {
///     public:
///         const NSClass* unarchiverCannotDecodeObjectOfClassName(
///             NSKeyedUnarchiver&, const NSRef<NSString>& name, const NSRef<NSArray>&) override
///         {
///             return name->isEqualToString("OldTrack") ? &Track::classObject() : nullptr;
///         }
///     };
class NS_EXPORT NSKeyedUnarchiverDelegate : public NSProtocol {
public:
    /// The class to make an object of whose own, `name`, is not registered (NSCoding); null for none, which
    /// raises NSInvalidUnarchiveOperationException. `originalClasses` are the names of that class and those
    /// above it, as the archive has them. Asked once for each class of an archive. The class that is answered
    /// must be registered.
    /// C++ form of unarchiver:cannotDecodeObjectOfClassName:originalClasses:
    virtual const NSClass* unarchiverCannotDecodeObjectOfClassName(
        NSKeyedUnarchiver& unarchiver, const NSRef<NSString>& name, const NSRef<NSArray>& originalClasses);
    /// What to use in place of `object`, which is made; null for nothing at all. Objects that the object led
    /// to, and that lead back to it, keep the first one.
    /// C++ form of unarchiver:didDecodeObject:
    virtual NSId unarchiverDidDecodeObject(NSKeyedUnarchiver& unarchiver, const NSId& object);
    virtual void unarchiverWillFinish(NSKeyedUnarchiver& unarchiver); ///< C++ form of unarchiverWillFinish:
    virtual void unarchiverDidFinish(NSKeyedUnarchiver& unarchiver); ///< C++ form of unarchiverDidFinish:

protected:
    ~NSKeyedUnarchiverDelegate() override = default;
};
