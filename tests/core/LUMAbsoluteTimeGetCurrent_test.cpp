#include "LUMFoundation/LUMAbsoluteTimeGetCurrent.h"

#include "core/system_clock.h"

#include <chrono>
#include <gtest/gtest.h>

namespace {

double steadySeconds()
{
    return std::chrono::duration<double>(std::chrono::steady_clock::now().time_since_epoch()).count();
}

TEST(LUMAbsoluteTimeGetCurrentTest, NeverGoesBack)
{
    double last = 0;
    for (int i = 0; i < 10'000; ++i) {
        double now = LUMAbsoluteTimeGetCurrent();
        ASSERT_GE(now, last);
        last = now;
    }
}

TEST(LUMAbsoluteTimeGetCurrentTest, CountsSecondsFromTheStartOfTheMachine)
{
    double before = steadySeconds();
    double now = LUMAbsoluteTimeGetCurrent();
    double after = steadySeconds();
    EXPECT_LE(before, now);
    EXPECT_LE(now, after);
}

TEST(LUMAbsoluteTimeGetCurrentTest, IsTheCounterDividedByAThousandMillion)
{
    EXPECT_EQ(lum::secondsOfNanoseconds(1'500'000'000), 1.5);
    EXPECT_EQ(lum::secondsOfNanoseconds(1), 1e-9);
    EXPECT_EQ(lum::secondsOfNanoseconds(0), 0.0);
}

TEST(LUMAbsoluteTimeGetCurrentTest, TakesTheCounterAsUnsigned)
{
    EXPECT_EQ(lum::secondsOfNanoseconds(std::uint64_t { 1 } << 63), 9223372036.854775808);
}

}
