#pragma once

#include <cstdint>
#include <limits>

/// The native signed and unsigned words of the object framework.
using NSInteger = std::int64_t;
using NSUInteger = std::uint64_t;

/// Stands for "no such index": the largest signed word.
inline constexpr NSUInteger NSNotFound = static_cast<NSUInteger>(std::numeric_limits<NSInteger>::max());

/// The answer of a comparison: where the receiver stands to the argument.
enum NSComparisonResult : NSInteger {
    NSOrderedAscending = -1,
    NSOrderedSame = 0,
    NSOrderedDescending = 1,
};

/// A run of `length` places from `location`. In text the unit is the UTF-16 code unit.
struct NSRange {
    NSUInteger location = 0;
    NSUInteger length = 0;

    /// The place behind the last one.
    constexpr NSUInteger end() const { return location + length; }
    friend constexpr bool operator==(const NSRange&, const NSRange&) = default;
};
