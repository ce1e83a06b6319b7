#pragma once

#include "LUMFoundation/LUMExport.h"
#include "LUMPlatform/NSNotificationCenter.h"

/// A notification centre on which a registration replaces those it repeats. Threads: any.
///
///     auto center = NSMake<LUMNotificationCenter>();
///     center->addObserver(view, NSSelector("first:"), "TrackDidEnd", track);
///     center->addObserver(view, NSSelector("second:"), "TrackDidEnd", track); // first: is told no more
class LUM_EXPORT LUMNotificationCenter : public NSNotificationCenter {
public:
    static const NSClass& classObject();

    /// Removes the observer's registrations for that name and object, then registers as the base class does.
    /// Deliberate: null means any in that removal. Registering for a name and any object takes away those of
    /// the name for one object, and registering for anything takes away all of the observer's. Raises
    /// NSInvalidArgumentException, and removes nothing, for a null observer or selector. No other thread sees
    /// it half done, except on a derived class, whose own removeObserver:name:object: is asked first.
    /// Selector: addObserver:selector:name:object:
    void addObserver(
        const NSId& observer, NSSelector selector, const NSRef<NSString>& name, const NSId& object) override;

protected:
    LUMNotificationCenter() = default;
    ~LUMNotificationCenter() override = default;
};
