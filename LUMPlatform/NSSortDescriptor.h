#pragma once

#include "LUMPlatform/NSObject.h"

/// One rule to order objects by: what to compare (the value under a key path, or the objects themselves), the
/// method to compare by, and the direction. Immutable. Threads: any.
///
///     auto byName = NSSortDescriptor::initWithKey(nullptr, true, NSSelector("caseInsensitiveCompare:"));
///     auto sorted = names->sortedArrayUsingDescriptors(NSArray::of(byName));
class NS_EXPORT NSSortDescriptor : public NSObject {
public:
    static const NSClass& classObject();

    /// With a key, what is compared is what each object answers to valueForKeyPath:, which it has to answer;
    /// a null `key` compares the objects themselves. A null selector is compare:.
    /// Selector: initWithKey:ascending:selector:
    static NSRef<NSSortDescriptor> initWithKey(
        const NSRef<NSString>& key, bool ascending, NSSelector selector = {});

    NSRef<NSString> key() const; ///< Selector: key
    bool ascending() const { return mAscending; } ///< Selector: ascending
    NSSelector selector() const { return mSelector; } ///< Selector: selector

    /// Sends the selector to `first` (its value) with `second` (its value) and turns the answer round when
    /// descending. A null value comes before all others. Raises NSInvalidArgumentException when the receiver
    /// does not answer the selector, and NSUndefinedKeyException when an object has no value for the key.
    /// Selector: compareObject:toObject:
    NSComparisonResult compareObject(const NSId& first, const NSId& second) const;

    bool isEqual(const NSId& other) const override;
    NSUInteger hash() const override;
    NSId copy() const override; ///< Itself.

protected:
    NSSortDescriptor(const NSRef<NSString>& key, bool ascending, NSSelector selector);
    ~NSSortDescriptor() override;

private:
    NSRef<NSString> mKey;
    NSSelector mSelector;
    bool mAscending;
};
