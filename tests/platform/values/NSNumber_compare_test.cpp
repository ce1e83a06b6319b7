#include "LUMPlatform/NSNumber.h"

#include "LUMPlatform/NSString.h"
#include "tests/fixture.h"
#include "tests/object_matchers.h"
#include "tests/raised_by.h"

#include <rapidcheck/gtest.h>

#include <limits>

namespace {

constexpr auto kInf = std::numeric_limits<double>::infinity();
constexpr auto kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr std::int64_t k2To53 = std::int64_t { 1 } << 53;
constexpr double k2To63 = 9223372036854775808.0;

struct NSNumberCompareTest : ObjectTest {
    static bool before(const NSRef<NSNumber>& a, const NSRef<NSNumber>& b)
    {
        return a->compare(b) == NSOrderedAscending && b->compare(a) == NSOrderedDescending && !a->isEqual(b)
            && !b->isEqual(a);
    }
    static bool same(const NSRef<NSNumber>& a, const NSRef<NSNumber>& b)
    {
        return a->compare(b) == NSOrderedSame && b->compare(a) == NSOrderedSame && a->isEqual(b)
            && b->isEqual(a) && a->hash() == b->hash();
    }
};

TEST_F(NSNumberCompareTest, GoesByValueWhateverTheType)
{
    EXPECT_TRUE(same(1, 1.0));
    EXPECT_TRUE(same(true, 1));
    EXPECT_TRUE(same(1.5f, 1.5));
    EXPECT_TRUE(same(static_cast<short>(-3), -3LL));
    EXPECT_TRUE(before(false, 0.5f));
    EXPECT_TRUE(before(-1, 1u));
    EXPECT_TRUE(before(-1.5, -1));
    EXPECT_TRUE(before(1, 1.5));
    EXPECT_TRUE(before(0.1f, 0.1) || before(0.1, 0.1f)); // they are different values
}

TEST_F(NSNumberCompareTest, RoundsNoIntegerToAFloat)
{
    EXPECT_TRUE(same(k2To53, static_cast<double>(k2To53)));
    EXPECT_TRUE(before(static_cast<double>(k2To53), k2To53 + 1));
    EXPECT_TRUE(before(std::numeric_limits<std::int64_t>::max(), k2To63));
    EXPECT_TRUE(same(std::numeric_limits<std::int64_t>::min(), -k2To63));
    EXPECT_TRUE(same(std::uint64_t { 1 } << 63, k2To63));
    EXPECT_TRUE(before(std::numeric_limits<std::uint64_t>::max(), k2To63 * 2));
    EXPECT_TRUE(before(-1, std::numeric_limits<std::uint64_t>::max()));
    EXPECT_TRUE(before(-k2To63 * 2.5, std::numeric_limits<std::int64_t>::min()));
}

TEST_F(NSNumberCompareTest, TakesBothZerosForOne)
{
    EXPECT_TRUE(same(0, -0.0));
    EXPECT_TRUE(same(0.0, -0.0));
}

TEST_F(NSNumberCompareTest, OrdersTheInfinitiesOutside)
{
    EXPECT_TRUE(before(-kInf, -1e300));
    EXPECT_TRUE(before(1e300, kInf));
    EXPECT_TRUE(same(kInf, kInf));
    EXPECT_TRUE(same(std::numeric_limits<float>::infinity(), kInf));
}

TEST_F(NSNumberCompareTest, PutsNotANumberFirstAndEqualToItself)
{
    EXPECT_TRUE(same(kNaN, kNaN));
    EXPECT_TRUE(same(kNaN, -kNaN));
    EXPECT_TRUE(before(kNaN, -kInf));
    EXPECT_TRUE(before(kNaN, 0));
}

TEST_F(NSNumberCompareTest, EqualsNumbersAlone)
{
    EXPECT_FALSE(NSRef<NSNumber>(5)->isEqual("5"));
    EXPECT_FALSE(NSRef<NSNumber>(5)->isEqual(nullptr));
    EXPECT_FALSE(NSRef<NSNumber>(5)->isEqualToNumber(nullptr));
    EXPECT_EQ(nameRaisedBy([] { (void)NSRef<NSNumber>(5)->compare(nullptr); }), "NSInvalidArgumentException");
}

NSRef<NSNumber> anyNumber()
{
    const std::vector<std::int64_t> integers { k2To53, k2To53 + 1, INT64_MAX, INT64_MIN };
    const std::vector<double> reals { 0.5, -0.0, kInf, kNaN, k2To63 };
    const auto integer = *rc::gen::oneOf(rc::gen::arbitrary<std::int64_t>(),
        rc::gen::inRange<std::int64_t>(-3, 4), rc::gen::elementOf(integers));
    const auto real = *rc::gen::oneOf(rc::gen::arbitrary<double>(), rc::gen::elementOf(reals));
    switch (*rc::gen::inRange(0, 4)) {
    case 0:
        return integer;
    case 1:
        return static_cast<std::uint64_t>(integer);
    case 2:
        return real;
    default:
        return static_cast<double>(integer);
    }
}

RC_GTEST_PROP(NSNumberCompareProperty, IsATotalOrderThatEqualityAndHashFollow, ())
{
    const auto a = anyNumber();
    const auto b = anyNumber();
    const auto c = anyNumber();
    RC_ASSERT(a->compare(b) == -b->compare(a));
    RC_ASSERT(a->isEqual(b) == (a->compare(b) == NSOrderedSame));
    if (a->isEqual(b))
        RC_ASSERT(a->hash() == b->hash());
    if (a->compare(b) <= 0 && b->compare(c) <= 0)
        RC_ASSERT(a->compare(c) <= 0);
}

}
