#pragma once

#include "platform/strings/comparison_stream.h"

#include <cstddef>
#include <string_view>

namespace platform {

struct ComparisonRules {
    Equivalence equivalence;
    bool numeric = false; ///< runs of ASCII digits that meet compare by value
};

/// Where and how two texts that were walked in step part.
struct Parting {
    enum class Kind { FirstIsLess, FirstIsGreater, FirstEnds, SecondEnds, BothEnd };
    Kind kind;
    std::size_t firstEnd; ///< how far the first text agrees, when it did not part before the second ended
};

/// Walks both texts in step, from `firstStart` and from the beginning of `second`, to where they part.
Parting walkInStep(
    std::u16string_view first, std::size_t firstStart, std::u16string_view second, ComparisonRules rules);

/// -1, 0 or 1. A total preorder: texts that compare equal are interchangeable in every comparison.
///
/// Characters are ordered by code point after decomposition and folding; a prefix is smaller. The value
/// of a run of digits is taken modulo 2 to the power 64, leading zeros decide nothing, and there are no
/// signs, decimal points or groups.
int compareUtf16(std::u16string_view a, std::u16string_view b, ComparisonRules rules);

}
