#pragma once

#include "platform/strings/comparison_stream.h"

#include <string_view>

/// The comparison spelled out over whole streams, with no short cut: what every quicker way has to agree
/// with.
inline int plainCompare(std::u16string_view a, std::u16string_view b, platform::Equivalence equivalence)
{
    platform::ComparisonStream left(a, 0, equivalence);
    platform::ComparisonStream right(b, 0, equivalence);
    while (left.current() == right.current() && left.current() != platform::ComparisonStream::kEnd) {
        left.advance();
        right.advance();
    }
    return (left.current() > right.current()) - (left.current() < right.current());
}
