#pragma once

#include "LUMPlatform/NSFastEnumeration.h"

#include <memory>

class NSArray;
class NSEnumerator;
namespace platform {
class SetTable;
}

/// An immutable set of objects, told apart by isEqual and hash; of equal objects it keeps the first. It owns
/// them; null raises NSInvalidArgumentException.
///
/// Loops and allObjects give them in the order of their arrival. Looking one up takes constant time on
/// average. Threads: immutable sets may be shared; a mutable one belongs to one thread at a time.
///
///     if (NSSet::of("aif", "wav")->containsObject(name->pathExtension()))
///         play(name);
class NS_EXPORT NSSet : public NSObject {
public:
    static const NSClass& classObject();

    /// A set of the arguments; C++ numbers and text become objects.
    template<typename... Values> static NSRef<NSSet> of(const Values&... values)
    {
        return setWithObjects({ NSId(values)... });
    }
    static NSRef<NSSet> set(); ///< Selector: set
    /// Empty for null.
    /// Selector: setWithArray:
    static NSRef<NSSet> setWithArray(const NSRef<NSArray>& array);
    /// Selector: setWithObjects:count:
    static NSRef<NSSet> setWithObjects(std::initializer_list<NSId> objects);

    NSUInteger count() const; ///< Selector: count
    bool containsObject(const NSId& object) const; ///< Selector: containsObject:
    NSRef<NSArray> allObjects() const; ///< Selector: allObjects
    NSRef<NSEnumerator> objectEnumerator() const; ///< Selector: objectEnumerator

    using Iterator = NSFastEnumerator<NSSet, NSId>;
    Iterator begin() const { return { *this, nextPosition(0) }; }
    Iterator end() const { return { *this, endPosition() }; }
    // What NSFastEnumerator asks, with positions that it was given.
    const NSId& elementAtPosition(NSUInteger position) const;
    NSUInteger nextPosition(NSUInteger position) const;
    NSUInteger mutations() const;

    bool isEqualToSet(const NSRef<NSSet>& other) const; ///< Selector: isEqualToSet:
    bool isEqual(const NSId& other) const override; ///< Equal elements, in whatever order and class.
    NSUInteger hash() const override;
    NSRef<NSString> description() const override; ///< "{(\n    a,\n    b\n)}"
    NSId copy() const override; ///< Itself.
    NSId mutableCopy() const override;

protected:
    NSSet();
    explicit NSSet(const NSSet* other);
    ~NSSet() override;

    void add(const NSId& object);

    std::unique_ptr<platform::SetTable> mTable;

private:
    NSUInteger endPosition() const;
};

/// A set of objects that can be changed. Changing it during a loop over it raises NSGenericException at the
/// loop's next step. Threads: one at a time.
///
///     auto seen = NSMutableSet::set();
///     seen->addObject(name);
class NS_EXPORT NSMutableSet : public NSSet {
public:
    static const NSClass& classObject();

    static NSRef<NSMutableSet> set(); ///< Selector: set

    void addObject(const NSId& object); ///< Nothing when an equal one is there. Selector: addObject:
    void removeObject(const NSId& object); ///< The one equal to `object`. Selector: removeObject:
    void removeAllObjects(); ///< Selector: removeAllObjects

    NSId copy() const override; ///< An immutable set of the same objects.

protected:
    NSMutableSet() = default;
    explicit NSMutableSet(const NSSet* other);
    ~NSMutableSet() override;
};
