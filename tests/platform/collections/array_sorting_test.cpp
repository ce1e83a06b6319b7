#include "LUMPlatform/NSArray.h"
#include "LUMPlatform/NSNumber.h"
#include "LUMPlatform/NSSortDescriptor.h"
#include "LUMPlatform/NSString.h"
#include "tests/fixture.h"
#include "tests/object_matchers.h"
#include "tests/raised_by.h"

#include <rapidcheck/gtest.h>

#include <random>

namespace {

const NSSelector kCompare("compare:");

struct ArraySortingTest : ObjectTest {
    /// Orders by the first letter alone.
    static NSComparisonResult byFirstLetter(const NSId& a, const NSId& b)
    {
        const int order = NSCast<NSString>(a)->characterAtIndex(0) - NSCast<NSString>(b)->characterAtIndex(0);
        return order == 0 ? NSOrderedSame : order < 0 ? NSOrderedAscending : NSOrderedDescending;
    }
};

TEST_F(ArraySortingTest, SortsByASelector)
{
    auto array = NSMutableArray::of(3, 1.5, 2, -7);
    EXPECT_THAT(array->sortedArrayUsingSelector(kCompare), Equals(NSArray::of(-7, 1.5, 2, 3)));
    EXPECT_THAT(array->objectAtIndex(0), Equals(3)); // a new array
    EXPECT_THAT(NSArray::array()->sortedArrayUsingSelector(kCompare), Equals(NSArray::array()));
}

TEST_F(ArraySortingTest, KeepsTheOrderOfEqualElements)
{
    EXPECT_THAT(NSArray::of("b1", "a1", "b2", "a2", "b3")->sortedArrayUsingComparator(byFirstLetter),
        Equals(NSArray::of("a1", "a2", "b1", "b2", "b3")));
}

TEST_F(ArraySortingTest, SortsByDescriptorsTheFirstDecidingFirst)
{
    auto byLetter = NSSortDescriptor::initWithKey(nullptr, true, NSSelector("caseInsensitiveCompare:"));
    auto downwards = NSSortDescriptor::initWithKey(nullptr, false, kCompare);
    auto array = NSArray::of("b", "A", "B", "a");
    EXPECT_THAT(array->sortedArrayUsingDescriptors(NSArray::of(byLetter, downwards)),
        Equals(NSArray::of("a", "A", "b", "B")));
    EXPECT_THAT(
        array->sortedArrayUsingDescriptors(NSArray::of(downwards)), Equals(NSArray::of("b", "a", "B", "A")));
    EXPECT_THAT(
        array->sortedArrayUsingDescriptors(NSArray::of(byLetter)), Equals(NSArray::of("A", "a", "b", "B")));
    EXPECT_THAT(array->sortedArrayUsingDescriptors(nullptr), Equals(array));
}

TEST_F(ArraySortingTest, RaisesForElementsThatDoNotAnswer)
{
    EXPECT_EQ(nameRaisedBy([] {
        (void)NSArray::of(NSMake<NSObject>(), NSMake<NSObject>())->sortedArrayUsingSelector(kCompare);
    }),
        "NSInvalidArgumentException");
}

TEST_F(ArraySortingTest, StaysInsideTheListWhenTheComparisonContradictsItself)
{
    auto array = NSMutableArray::array();
    for (int i = 0; i < 1000; ++i)
        array->addObject(i);
    std::minstd_rand random;
    auto sorted = array->sortedArrayUsingComparator(
        [&](const NSId&, const NSId&) { return random() % 2 ? NSOrderedAscending : NSOrderedDescending; });
    EXPECT_THAT(sorted->sortedArrayUsingSelector(kCompare), Equals(array)); // none is lost
    auto always = [](const NSId&, const NSId&) { return NSOrderedAscending; };
    EXPECT_EQ(array->sortedArrayUsingComparator(always)->count(), 1000u);
}

TEST_F(ArraySortingTest, LosesNothingWhenTheComparisonRaisesOrChangesTheArray)
{
    auto array = NSMutableArray::of(3, 2, 1);
    EXPECT_EQ(nameRaisedBy([&] {
        (void)array->sortedArrayUsingComparator([](const NSId&, const NSId&) -> NSComparisonResult {
            throw NSException(NSRangeException, "no");
        });
    }),
        "NSRangeException");
    EXPECT_THAT(array, Equals(NSArray::of(3, 2, 1)));
    auto sorted = array->sortedArrayUsingComparator([&](const NSId& a, const NSId& b) {
        array->removeAllObjects();
        return NSCast<NSNumber>(a)->compare(NSCast<NSNumber>(b));
    });
    EXPECT_THAT(sorted, Equals(NSArray::of(1, 2, 3)));
}

RC_GTEST_PROP(ArraySortingProperty, SortsLikeAStableSortOfNumbers, (std::vector<int> values))
{
    // Compared by the tens alone, so that equal elements can be told apart.
    auto byTens = [](int a, int b) { return a / 10 < b / 10; };
    std::vector<NSId> boxed(values.begin(), values.end());
    auto sorted =
        NSArray::arrayWithObjects(boxed)->sortedArrayUsingComparator([](const NSId& a, const NSId& b) {
            const int order = NSCast<NSNumber>(a)->intValue() / 10 - NSCast<NSNumber>(b)->intValue() / 10;
            return order == 0 ? NSOrderedSame : order < 0 ? NSOrderedAscending : NSOrderedDescending;
        });
    std::stable_sort(values.begin(), values.end(), byTens);
    std::vector<int> result;
    for (const NSId& number : sorted)
        result.push_back(NSCast<NSNumber>(number)->intValue());
    RC_ASSERT(result == values);
}

TEST_F(ArraySortingTest, RaisesWithoutAComparison)
{
    auto array = NSArray::of(2, 1);
    EXPECT_EQ(nameRaisedBy([&] { (void)array->sortedArrayUsingComparator(nullptr); }),
        "NSInvalidArgumentException");
    EXPECT_EQ(nameRaisedBy([&] { (void)array->sortedArrayUsingDescriptors(NSArray::of("title")); }),
        "NSInvalidArgumentException");
}

}
