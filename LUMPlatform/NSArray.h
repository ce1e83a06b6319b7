#pragma once

#include "LUMPlatform/NSFastEnumeration.h"

#include <functional>
#include <vector>

class NSEnumerator;
class NSError;
class NSMutableArray;

/// Orders two objects.
using NSComparator = std::function<NSComparisonResult(const NSId&, const NSId&)>;

/// An immutable ordered list of objects. It owns its elements, and null is never one of them.
///
/// Indexes count from 0. One past the end raises NSRangeException, as does a range that does not lie inside;
/// null where an element is wanted raises NSInvalidArgumentException. Not found is NSNotFound.
/// Threads: immutable arrays may be shared; a mutable one belongs to one thread at a time.
///
///     auto list = NSArray::of(1, "two", NSNull::null());
///     for (const NSId& element : list)
///         std::cout << element << '\n';
class NS_EXPORT NSArray : public NSObject {
public:
    static const NSClass& classObject();

    /// An array of the arguments in order; C++ numbers and text become objects. Null raises.
    template<typename... Values> static NSRef<NSArray> of(const Values&... values)
    {
        return NSMake<NSArray>(listOf(values...));
    }
    static NSRef<NSArray> array(); ///< Selector: array
    static NSRef<NSArray> arrayWithObject(const NSId& object); ///< Selector: arrayWithObject:
    /// The same elements; empty for null.
    /// Selector: arrayWithArray:
    static NSRef<NSArray> arrayWithArray(const NSRef<NSArray>& array);
    static NSRef<NSArray> arrayWithObjects(std::vector<NSId> objects); ///< Selector: arrayWithObjects:count:

    /// The array at the top of a property list, as NSDictionary reads one.
    /// Selector: arrayWithContentsOfFile:
    static NSRef<NSArray> arrayWithContentsOfFile(
        const NSRef<NSString>& path, NSRef<NSError>* error = nullptr);
    /// Writes the array as a property list in XML, as NSDictionary does.
    /// Selector: writeToFile:atomically:
    [[nodiscard]] bool writeToFile(
        const NSRef<NSString>& path, bool atomically, NSRef<NSError>* error = nullptr) const;

    NSUInteger count() const { return mObjects.size(); } ///< Selector: count
    /// As a `T`, null when the element is none. Constant time.
    /// Selector: objectAtIndex:
    template<typename T = NSObject> NSRef<T> objectAtIndex(NSUInteger index) const
    {
        if (index >= mObjects.size())
            raiseRange("objectAtIndex:", index);
        return NSCast<T>(mObjects[index]);
    }
    NSId lastObject() const; ///< Null for an empty array. Selector: lastObject

    /// The lowest index of an element equal to `object`. Linear.
    /// Selector: indexOfObject:
    NSUInteger indexOfObject(const NSId& object) const;
    /// The lowest index of `object` itself. Linear.
    /// Selector: indexOfObjectIdenticalTo:
    NSUInteger indexOfObjectIdenticalTo(const NSId& object) const;
    bool containsObject(const NSId& object) const; ///< Linear. Selector: containsObject:

    NSRef<NSArray> subarrayWithRange(NSRange range) const; ///< Selector: subarrayWithRange:
    NSRef<NSArray> arrayByAddingObject(const NSId& object) const; ///< Selector: arrayByAddingObject:
    /// Selector: arrayByAddingObjectsFromArray:
    NSRef<NSArray> arrayByAddingObjectsFromArray(const NSRef<NSArray>& other) const;

    /// A new array in the order of `comparator`; equal elements keep theirs.
    /// C++ form of sortedArrayUsingComparator:
    NSRef<NSArray> sortedArrayUsingComparator(const NSComparator& comparator) const;
    /// The same, comparing by a method such as compare: that takes the other element. Raises
    /// NSInvalidArgumentException when an element does not answer it.
    /// Selector: sortedArrayUsingSelector:
    NSRef<NSArray> sortedArrayUsingSelector(NSSelector compare) const;
    /// The same by sort descriptors, the first deciding first.
    /// Selector: sortedArrayUsingDescriptors:
    NSRef<NSArray> sortedArrayUsingDescriptors(const NSRef<NSArray>& descriptors) const;

    void makeObjectsPerformSelector(NSSelector selector) const; ///< Selector: makeObjectsPerformSelector:
    /// Selector: makeObjectsPerformSelector:withObject:
    void makeObjectsPerformSelectorWithObject(NSSelector selector, const NSId& object) const;
    /// The elements' descriptions in one text; null separates by nothing.
    /// Selector: componentsJoinedByString:
    NSRef<NSString> componentsJoinedByString(const NSRef<NSString>& separator) const;

    NSRef<NSEnumerator> objectEnumerator() const; ///< Selector: objectEnumerator

    using Iterator = NSFastEnumerator<NSArray, NSId>;
    Iterator begin() const { return { *this, 0 }; }
    Iterator end() const { return { *this, count() }; }
    // What NSFastEnumerator asks, with positions that it was given.
    const NSId& elementAtPosition(NSUInteger position) const { return mObjects[position]; }
    NSUInteger nextPosition(NSUInteger position) const { return position; }
    NSUInteger mutations() const { return mMutations; }

    bool isEqualToArray(const NSRef<NSArray>& other) const; ///< Selector: isEqualToArray:
    /// Equal elements in equal order, whatever the classes of the two arrays. Raises
    /// NSInvalidArgumentException beyond 2,000 levels, which one that contains itself has.
    bool isEqual(const NSId& other) const override;
    NSUInteger hash() const override;
    /// "(\n    a,\n    b\n)", inner collections indented; one that contains itself is cut short.
    NSRef<NSString> description() const override;
    NSId copy() const override; ///< Itself.
    NSId mutableCopy() const override;

protected:
    NSArray() = default;
    explicit NSArray(std::vector<NSId> objects);
    ~NSArray() override;

    template<typename... Values> static std::vector<NSId> listOf(const Values&... values)
    {
        std::vector<NSId> list;
        list.reserve(sizeof...(values));
        (list.push_back(required(NSId(values), "NSArray::of")), ...);
        return list;
    }
    /// Raises NSInvalidArgumentException for null.
    static const NSId& required(const NSId& object, const char* operation);
    [[noreturn]] void raiseRange(const char* operation, NSUInteger index) const;
    void checkRange(const char* operation, NSRange range) const;

    std::vector<NSId> mObjects;
    NSUInteger mMutations = 0;
};

/// An ordered list that can be changed. Changing it during a loop over it raises NSGenericException at the
/// loop's next step. Adding and removing at the end take constant time, elsewhere time linear in what is
/// behind. Threads: one at a time.
///
///     auto queue = NSMutableArray::of("intro", "verse");
///     queue->insertObject("bridge", 1);
///     queue->removeLastObject(); // intro, bridge
class NS_EXPORT NSMutableArray : public NSArray {
public:
    static const NSClass& classObject();

    template<typename... Values> static NSRef<NSMutableArray> of(const Values&... values)
    {
        return NSMake<NSMutableArray>(listOf(values...));
    }
    static NSRef<NSMutableArray> array(); ///< Selector: array
    static NSRef<NSMutableArray> arrayWithCapacity(NSUInteger capacity); ///< Selector: arrayWithCapacity:
    /// Selector: arrayWithArray:
    static NSRef<NSMutableArray> arrayWithArray(const NSRef<NSArray>& array);

    void addObject(const NSId& object); ///< Selector: addObject:
    void addObjectsFromArray(const NSRef<NSArray>& other); ///< None for null. Selector: addObjectsFromArray:
    /// At `index`, up to and including the count.
    /// Selector: insertObject:atIndex:
    void insertObject(const NSId& object, NSUInteger index);
    void removeObjectAtIndex(NSUInteger index); ///< Selector: removeObjectAtIndex:
    void removeLastObject(); ///< Raises NSRangeException when empty. Selector: removeLastObject
    void removeObjectsInRange(NSRange range); ///< Selector: removeObjectsInRange:
    /// Every element equal to `object`; linear in the count.
    /// Selector: removeObject:
    void removeObject(const NSId& object);
    /// Every occurrence of `object` itself.
    /// Selector: removeObjectIdenticalTo:
    void removeObjectIdenticalTo(const NSId& object);
    /// Every element equal to one of `others`; linear in both counts.
    /// Selector: removeObjectsInArray:
    void removeObjectsInArray(const NSRef<NSArray>& others);
    void removeAllObjects(); ///< Selector: removeAllObjects
    /// Selector: replaceObjectAtIndex:withObject:
    void replaceObjectAtIndex(NSUInteger index, const NSId& object);
    /// Selector: exchangeObjectAtIndex:withObjectAtIndex:
    void exchangeObjectAtIndex(NSUInteger first, NSUInteger second)
    {
        if (first >= count() || second >= count())
            raiseRange("exchangeObjectAtIndex:withObjectAtIndex:", first >= count() ? first : second);
        swap(mObjects[first], mObjects[second]);
        ++mMutations;
    }
    /// The elements of `other` (none for null), however many, take the places of those in `range`; it may be
    /// this array. Linear.
    /// Selector: replaceObjectsInRange:withObjectsFromArray:
    void replaceObjectsInRange(NSRange range, const NSRef<NSArray>& other);
    void setArray(const NSRef<NSArray>& other); ///< Empties it for null. Selector: setArray:

    NSId copy() const override; ///< An immutable array of the same elements.

protected:
    NSMutableArray() = default;
    explicit NSMutableArray(std::vector<NSId> objects);
    ~NSMutableArray() override;

private:
    template<typename Matches> void removeMatching(const Matches& matches);
};
