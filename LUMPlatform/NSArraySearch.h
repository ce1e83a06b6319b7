#pragma once

#include "LUMPlatform/NSObject.h"

class NSArray;

/// Orders two objects; `context` is what the caller gave with the function.
using NSComparisonFunction = NSComparisonResult (*)(const NSId& first, const NSId& second, void* context);

/// Where `value` stands, or would stand, in an array sorted in the order of `compare`: the lowest index of an
/// element that is not less than it; the count when all are less. In an array not so sorted it is some index
/// up to the count.
///
/// Only "less than 0" is asked, in this order: of the last element and the value, of the value and the first
/// element (the one call with the value in front), then of elements between and the value, about log2(count)
/// times. Raises NSInvalidArgumentException for a null function, NSRangeException when the array shrinks
/// meanwhile. A null array has no elements. Threads: as for the array.
///
///     auto byName = [](const NSId& a, const NSId& b, void*) { return nameOf(a)->compare(nameOf(b)); };
///     tracks->insertObject(track, NSArraySearch(tracks, track, byName, nullptr));
NS_EXPORT NSUInteger NSArraySearch(
    const NSRef<NSArray>& sorted, const NSId& value, NSComparisonFunction compare, void* context);
