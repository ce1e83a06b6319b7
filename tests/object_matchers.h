#pragma once

#include "LUMPlatform/NSObject.h"

#include <gmock/gmock.h>

/// Matches an object equal to `expected`, which may be a C++ number or text:
///
///     EXPECT_THAT(array->objectAtIndex(0), Equals(5));
///     EXPECT_THAT(array, Equals(NSArray::of(5, "a")));
class EqualsMatcher {
public:
    using is_gtest_matcher = void;
    explicit EqualsMatcher(const NSId& expected) : mExpected(expected) { }
    bool MatchAndExplain(const NSId& actual, std::ostream*) const { return NSEqual(mExpected, actual); }
    void DescribeTo(std::ostream* stream) const { *stream << "is equal to " << mExpected; }
    void DescribeNegationTo(std::ostream* stream) const { *stream << "is not equal to " << mExpected; }

private:
    NSId mExpected;
};
inline EqualsMatcher Equals(const NSId& expected)
{
    return EqualsMatcher(expected);
}
