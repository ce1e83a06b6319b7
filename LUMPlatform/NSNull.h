#pragma once

#include "LUMPlatform/NSObject.h"

/// The one object that stands for "no value" in collections, which cannot hold null. Threads: any.
///
///     auto row = NSArray::of(name, date ? NSId(date) : NSNull::null());
class NS_EXPORT NSNull : public NSObject {
public:
    static const NSClass& classObject();
    /// Always the same object.
    /// Selector: null
    static NSRef<NSNull> null();

    NSRef<NSString> description() const override; ///< "<null>"
    NSId copy() const override;

protected:
    NSNull() = default;
    ~NSNull() override;
};
