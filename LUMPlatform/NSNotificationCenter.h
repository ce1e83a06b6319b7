#pragma once

#include "LUMPlatform/NSNotification.h"

#include <memory>

namespace platform {
class ObserverTable;
}

/// Tells observers of what happens, without those who tell and those who listen knowing each other.
///
/// An observer registers a selector, which takes one argument, the notification. Posting sends it to every
/// observer whose registration matches, one after another in the order of registration, on the thread that
/// posts, and returns when all have been told. Who registers during a posting is not told of it; whoever is
/// removed or ends before its turn is not told either. An exception of an observer passes to whoever posts,
/// and those behind it are not told.
///
/// The centre keeps neither observers nor objects alive. When one ends, its registrations end too, and a new
/// object at its address does not take them over; calling removeObserver() is not needed for that.
///
/// Names are compared by equality, objects by identity. Threads: any; no lock is held while observers are
/// told.
///
///     center->addObserver(view, NSSelector("trackDidEnd:"), "TrackDidEnd", track);
///     center->postNotificationName("TrackDidEnd", track);
class NS_EXPORT NSNotificationCenter : public NSObject {
public:
    static const NSClass& classObject();

    /// The centre of the process; lives as long as it. NSMake<NSNotificationCenter>() makes others.
    /// Selector: defaultCenter
    static NSRef<NSNotificationCenter> defaultCenter();

    /// Registers `observer` for notifications of that name about that object; null stands for any. Registered
    /// twice it is told twice. Raises NSInvalidArgumentException for a null observer or selector. Takes
    /// constant time.
    /// Selector: addObserver:selector:name:object:
    virtual void addObserver(
        const NSId& observer, NSSelector selector, const NSRef<NSString>& name, const NSId& object);

    /// Removes all registrations of `observer` that were made with that name and that object. Null leaves the
    /// name or the object out of the comparison, so with two nulls all of the observer's go; but removing for
    /// a name and an object leaves those that were made with null. Nothing happens for a null observer.
    /// Selector: removeObserver:name:object:; with nothing but the observer removeObserver:
    virtual void removeObserver(
        const NSId& observer, const NSRef<NSString>& name = nullptr, const NSId& object = nullptr);

    /// Tells all who registered for it. Raises NSInvalidArgumentException for null.
    /// Selector: postNotification:
    void postNotification(const NSRef<NSNotification>& notification);

    /// The same with a notification made for it. Raises NSInvalidArgumentException for a null name.
    /// Selector: postNotificationName:object:userInfo:; with less postNotificationName:object:
    void postNotificationName(const NSRef<NSString>& name, const NSId& object = nullptr,
        const NSRef<NSDictionary>& userInfo = nullptr);

protected:
    /// removeObserver() and addObserver() in one step, which no other thread sees half done.
    void replaceObserver(
        const NSId& observer, NSSelector selector, const NSRef<NSString>& name, const NSId& object);

    NSNotificationCenter();
    ~NSNotificationCenter() override;

private:
    void tellObservers(NSNotification& notification);

    const std::unique_ptr<platform::ObserverTable> mObservers;
};
