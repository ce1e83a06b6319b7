#pragma once

#include "LUMFoundation/LUMExport.h"
#include "LUMPlatform/NSArraySearch.h"
#include "LUMPlatform/NSSelector.h"
#include "LUMPlatform/NSStringConstant.h"

#include <cstdint>

class NSIndexSet;
class NSMutableArray;

/// List operations on NSArray and NSMutableArray.
///
/// Every array answers them as dynamic calls too. A class derived from an array class that has a method of
/// the same selector is asked instead, by the functions here as well. Such a method gets at what it stands in
/// for through the class above, NSArray::classObject().instanceMethod(selector)->invoke(...); the function
/// here would come back to it.
///
/// A null array answers null, false or 0, and is not changed. Results are new arrays, owned by the caller.
/// Indexes count from 0. Threads: as for the arrays.
///
///     auto queue = NSMutableArray::of("intro", "verse", "chorus");
///     LUMArray::moveObjectAtIndex(queue, 2, 0);
///     while (NSId next = LUMArray::dequeueObjectFromFront(queue))
///         std::cout << next << '\n'; // chorus, intro, verse
namespace LUMArray {

/// The first element; null when there is none.
/// Selector: car
LUM_EXPORT NSId car(const NSRef<NSArray>& array);
/// All but the first element: empty for a single one, null when there is none.
/// Selector: cdr
LUM_EXPORT NSRef<NSArray> cdr(const NSRef<NSArray>& array);

/// An array of copies (by copy()) of the elements. One level deep: what an element holds is copied only as
/// its own copy() does. Raises NSInvalidArgumentException for an element that cannot be copied.
/// Selector: deepCopy
LUM_EXPORT NSRef<NSArray> deepCopy(const NSRef<NSArray>& array);
/// The same, as an array that can be changed.
/// Selector: mutableDeepCopy
LUM_EXPORT NSRef<NSMutableArray> mutableDeepCopy(const NSRef<NSArray>& array);
/// The elements in reverse order.
/// Selector: reverseArray
LUM_EXPORT NSRef<NSArray> reverseArray(const NSRef<NSArray>& array);

/// The elements that answer 0 when sent `selector` (a comparison such as compare:; null means compare:) with
/// `object`. None for a null object. Raises NSInvalidArgumentException when an element does not answer.
/// Selector: subarrayMatchingSelector:withObject:
LUM_EXPORT NSRef<NSMutableArray> subarrayMatchingSelector(
    const NSRef<NSArray>& array, NSSelector selector, const NSId& object);
/// The elements at `indexes`, which count up; none for null. Raises NSRangeException for one past the end.
/// Selector: subsetOfArrayAtIndexes:
LUM_EXPORT NSRef<NSMutableArray> subsetOfArrayAtIndexes(
    const NSRef<NSArray>& array, const NSRef<NSIndexSet>& indexes);
/// Whether the array begins with the elements of `prefix`, by isEqual. The empty array is a prefix of every
/// one, null of none.
/// Selector: hasPrefix:
LUM_EXPORT bool hasPrefix(const NSRef<NSArray>& array, const NSRef<NSArray>& prefix);

/// Sends `selector` to each element in turn and collects the results, NSNull for null ones.
///
/// Deliberate: elements that do not answer, and those whose method returns a number or anything else that is
/// no object, are left out without a word, so the results may be fewer than the elements and not line up with
/// them; but a method that returns nothing raises LUMArrayNonIdReturnType. Raises NSInvalidArgumentException
/// when the method takes another number of arguments.
/// Selector: makeObjectsPerformSelectorWithResults:
LUM_EXPORT NSRef<NSMutableArray> makeObjectsPerformSelectorWithResults(
    const NSRef<NSArray>& array, NSSelector selector);
/// The same with one argument for all.
/// Selector: makeObjectsPerformSelectorWithResults:withObject:
LUM_EXPORT NSRef<NSMutableArray> makeObjectsPerformSelectorWithResultsWithObject(
    const NSRef<NSArray>& array, NSSelector selector, const NSId& object);
/// The same, each element with the argument of its own index. Raises LUMArrayCountsDontMatch, before anything
/// is sent, unless there are as many arguments as elements; null counts as none.
/// Selector: makeObjectsPerformSelectorWithResults:withObjects:
LUM_EXPORT NSRef<NSMutableArray> makeObjectsPerformSelectorWithResultsWithObjects(
    const NSRef<NSArray>& array, NSSelector selector, const NSRef<NSArray>& objects);

/// Where `value` stands, or would stand, in an array sorted in the order of `function`, which gets `context`:
/// the lowest index of an element that compares as equal, or else that of the first greater element, or the
/// count when all are less. About log2(count) calls; see NSArraySearch.h for their order. Raises
/// NSInvalidArgumentException for a null function.
/// Selector: bsearch:comparatorFunction:context:
LUM_EXPORT NSUInteger bsearchComparatorFunction(
    const NSRef<NSArray>& array, const NSId& value, NSComparisonFunction function, void* context);
/// The same in the order of a method such as compare:, of whose answer the low 32 bits count. It is sent to
/// elements with the value, and once to the value. Raises NSInvalidArgumentException when the receiver does
/// not answer, or with no number.
/// Selector: bsearch:selector:
LUM_EXPORT NSUInteger bsearchSelector(const NSRef<NSArray>& array, const NSId& value, NSSelector selector);

/// Takes out the first element; null when there is none. Moves all others up, so a long queue is better taken
/// from by index.
/// Selector: dequeueObjectFromFront
LUM_EXPORT NSId dequeueObjectFromFront(const NSRef<NSMutableArray>& array);
/// Turns the order round, in place.
/// Selector: reverse
LUM_EXPORT void reverse(const NSRef<NSMutableArray>& array);
/// Inserts all of `objects` in order before the element at `index`, or at the end when there is none; it
/// never raises for an index. Null inserts nothing.
/// Selector: insertObjects:atIndex:
LUM_EXPORT void insertObjects(
    const NSRef<NSMutableArray>& array, const NSRef<NSArray>& objects, std::uint32_t index);
/// Takes out the elements at `indexes` and inserts them at `index`, counted in what is left, as insertObjects
/// does. Deliberate: everything equal to one of them is taken out, also at other indexes, and only those of
/// `indexes` come back. Raises NSRangeException, with nothing changed, for one of `indexes` past the end.
/// Selector: moveObjectsAtIndexes:toIndex:
LUM_EXPORT void moveObjectsAtIndexes(
    const NSRef<NSMutableArray>& array, const NSRef<NSIndexSet>& indexes, std::uint32_t index);
/// The same for one element.
/// Selector: moveObjectAtIndex:toIndex:
LUM_EXPORT void moveObjectAtIndex(
    const NSRef<NSMutableArray>& array, std::uint32_t from, std::uint32_t index);
/// Puts `newObject` in place of every occurrence of `oldObject` itself. Raises NSInvalidArgumentException
/// when there is one and `newObject` is null. Linear.
/// Selector: replaceObjectIdenticalTo:withObject:
LUM_EXPORT void replaceObjectIdenticalTo(
    const NSRef<NSMutableArray>& array, const NSId& oldObject, const NSId& newObject);
/// The same for every element equal to `oldObject`; nothing happens when the two are equal. Linear.
/// Selector: replaceObject:withObject:
LUM_EXPORT void replaceObject(
    const NSRef<NSMutableArray>& array, const NSId& oldObject, const NSId& newObject);

}

/// Raised when results are to be collected from a method that returns nothing. The text is the name itself.
extern LUM_EXPORT const NSStringConstant LUMArrayNonIdReturnType;
/// Raised when there is not one argument for each element. The text is the name itself.
extern LUM_EXPORT const NSStringConstant LUMArrayCountsDontMatch;
