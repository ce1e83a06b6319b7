#pragma once

#include "LUMFoundation/LUMExport.h"
#include "LUMPlatform/NSObject.h"

#include <cstdint>

class NSArray;
class NSMutableArray;
class NSNumber;

/// Deprecated operations on arrays; each tells what to use instead. What
/// LUMArray says of null arrays, of classes with methods of their own, and of threads holds here too.
///
///     const std::uint32_t sizes[] = { 12, 34 };
///     auto numbers = LUMArray_Deprecated::arrayWithUInt32Values(sizes, 2); // an array of 12 and 34
namespace LUMArray_Deprecated {

/// An array of `count` numbers; empty when `values` is null.
/// Selector (of the class): arrayWithUInt32Values:count:
[[deprecated("fill an NSMutableArray")]] LUM_EXPORT NSRef<NSMutableArray> arrayWithUInt32Values(
    const std::uint32_t* values, NSUInteger count);
/// The same for 32-bit floats.
/// Selector (of the class): arrayWithFloat32Values:count:
[[deprecated("fill an NSMutableArray")]] LUM_EXPORT NSRef<NSMutableArray> arrayWithFloat32Values(
    const float* values, NSUInteger count);

/// The element whose doubleValue is nearest to that of `number` (null counts as 0), the first of several;
/// null for an empty array. Deliberate: an element 4294967295 or more away is never chosen, so the answer may
/// be null for other arrays too. Raises NSInvalidArgumentException when an element has no doubleValue.
/// Selector: closestNumberToNumber:
[[deprecated("look for the least difference")]] LUM_EXPORT NSId closestNumberToNumber(
    const NSRef<NSArray>& array, const NSRef<NSNumber>& number);

/// Takes out everything equal to an element of `objects`; nothing for null.
/// Selector: removeObjects:
[[deprecated("use NSMutableArray::removeObjectsInArray")]] LUM_EXPORT void removeObjects(
    const NSRef<NSMutableArray>& array, const NSRef<NSArray>& objects);

}
