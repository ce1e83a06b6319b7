#pragma once

#include "LUMFoundation/LUMExport.h"
#include "LUMPlatform/NSNotificationCenter.h"

/// A notification centre on which a registration replaces those it repeats.
///
///     auto center = NSMake<LUMNotificationCenter>();
///     center->addObserver(view, NSSelector("first:"), "TrackDidEnd", track);
///     center->addObserver(view, NSSelector("second:"), "TrackDidEnd", track); // first: is told no more
class LUM_EXPORT LUMNotificationCenter : public NSNotificationCenter {
public:
    static const NSClass& classObject();

    /// Removes the observer's registrations for that name and object, then registers as the base class does.
    /// Deliberate: null means any in that removal. Registering for a name and any object takes away those of
    /// the name for one object, and registering for anything takes away all of the observer's.
    /// Selector: addObserver:selector:name:object:
    void addObserver(
        const NSId& observer, NSSelector selector, const NSRef<NSString>& name, const NSId& object) override;

protected:
    LUMNotificationCenter() = default;
    ~LUMNotificationCenter() override = default;
};
