#pragma once

#include "LUMPlatform/NSFastEnumeration.h"

#include <vector>

/// An immutable set of indexes, each below NSNotFound, kept as ranges: a million neighbours take no more room
/// than one. A range that reaches further raises NSRangeException.
/// Threads: immutable sets may be shared; a mutable one belongs to one thread at a time.
///
///     auto chosen = NSIndexSet::of({ 0, 2, 7 });
///     for (NSUInteger index : chosen) // counts up
///         std::cout << index << '\n';
class NS_EXPORT NSIndexSet : public NSObject {
public:
    static const NSClass& classObject();

    static NSRef<NSIndexSet> of(std::initializer_list<NSUInteger> indexes);
    static NSRef<NSIndexSet> indexSet(); ///< Selector: indexSet
    static NSRef<NSIndexSet> indexSetWithIndex(NSUInteger index); ///< Selector: indexSetWithIndex:
    /// Selector: indexSetWithIndexesInRange:
    static NSRef<NSIndexSet> indexSetWithIndexesInRange(NSRange range);

    NSUInteger count() const; ///< Of indexes, not ranges. Selector: count
    NSUInteger firstIndex() const; ///< NSNotFound when empty. Selector: firstIndex
    NSUInteger lastIndex() const; ///< NSNotFound when empty. Selector: lastIndex
    /// The next index above `index`, which need not be in the set; NSNotFound when there is none.
    /// Selector: indexGreaterThanIndex:
    NSUInteger indexGreaterThanIndex(NSUInteger index) const;
    bool containsIndex(NSUInteger index) const; ///< Selector: containsIndex:

    using Iterator = NSFastEnumerator<NSIndexSet, NSUInteger>;
    Iterator begin() const { return { *this, nextPosition(0) }; }
    Iterator end() const { return { *this, NSNotFound }; }
    // What NSFastEnumerator asks, with positions that it was given.
    NSUInteger elementAtPosition(NSUInteger position) const { return position; }
    NSUInteger nextPosition(NSUInteger position) const;
    NSUInteger mutations() const { return mMutations; }

    bool isEqualToIndexSet(const NSRef<NSIndexSet>& other) const; ///< Selector: isEqualToIndexSet:
    bool isEqual(const NSId& other) const override;
    NSUInteger hash() const override;
    NSRef<NSString> description() const override; ///< "(0-2 7)"
    NSId copy() const override; ///< Itself.
    NSId mutableCopy() const override;

protected:
    NSIndexSet() = default;
    explicit NSIndexSet(std::vector<NSRange> ranges) : mRanges(std::move(ranges)) { }
    ~NSIndexSet() override;

    void add(NSRange range);

    std::vector<NSRange> mRanges; // ascending, none empty, and no two touch
    NSUInteger mMutations = 0;
};

/// A set of indexes that can grow. Threads: one at a time.
///
///     auto chosen = NSMutableIndexSet::indexSet();
///     chosen->addIndex(7);
///     chosen->addIndexesInRange({ 0, 3 }); // 0, 1, 2, 7
class NS_EXPORT NSMutableIndexSet : public NSIndexSet {
public:
    static const NSClass& classObject();

    static NSRef<NSMutableIndexSet> indexSet(); ///< Selector: indexSet

    void addIndex(NSUInteger index); ///< Selector: addIndex:
    void addIndexesInRange(NSRange range); ///< Selector: addIndexesInRange:

    NSId copy() const override; ///< An immutable set of the same indexes.

protected:
    NSMutableIndexSet() = default;
    explicit NSMutableIndexSet(std::vector<NSRange> ranges) : NSIndexSet(std::move(ranges)) { }
    ~NSMutableIndexSet() override;
};
