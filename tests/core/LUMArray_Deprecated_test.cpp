#include "LUMFoundation/LUMArray_Deprecated.h"

#include "LUMPlatform/NSArray.h"
#include "LUMPlatform/NSNumber.h"
#include "LUMPlatform/NSString.h"
#include "tests/fixture.h"
#include "tests/object_matchers.h"
#include "tests/raised_by.h"

#include <cmath>

#pragma GCC diagnostic ignored "-Wdeprecated-declarations"

namespace {

struct LUMArrayDeprecatedTest : ObjectTest {
    NSId closest(double target, const NSRef<NSArray>& array)
    {
        return LUMArray_Deprecated::closestNumberToNumber(array, target);
    }
};

TEST_F(LUMArrayDeprecatedTest, MakesNumbersOfUnsignedValues)
{
    const std::uint32_t values[] = { 7, 0, 4294967295U };
    auto array = LUMArray_Deprecated::arrayWithUInt32Values(values, 3);
    EXPECT_THAT(array, Equals(NSArray::of(7, 0, 4294967295LL)));
    EXPECT_STREQ(array->objectAtIndex<NSNumber>(0)->objCType(), "q"); // made as unsigned long
    array->addObject(1); // it can be changed
}

TEST_F(LUMArrayDeprecatedTest, MakesNumbersOfFloats)
{
    const float values[] = { 0.5F, -2.0F };
    auto array = LUMArray_Deprecated::arrayWithFloat32Values(values, 2);
    EXPECT_THAT(array, Equals(NSArray::of(0.5, -2)));
    EXPECT_STREQ(array->objectAtIndex<NSNumber>(0)->objCType(), "f");
}

TEST_F(LUMArrayDeprecatedTest, MakesAnEmptyArrayOfNothing)
{
    const std::uint32_t values[] = { 7 };
    const float floats[] = { 7 };
    EXPECT_THAT(LUMArray_Deprecated::arrayWithUInt32Values(values, 0), Equals(NSArray::array()));
    EXPECT_THAT(LUMArray_Deprecated::arrayWithFloat32Values(floats, 0), Equals(NSArray::array()));
    EXPECT_THAT(LUMArray_Deprecated::arrayWithUInt32Values(nullptr, 3), Equals(NSArray::array()));
    EXPECT_THAT(LUMArray_Deprecated::arrayWithFloat32Values(nullptr, 3), Equals(NSArray::array()));
}

TEST_F(LUMArrayDeprecatedTest, ClosestNumberIsTheNearestElement)
{
    EXPECT_THAT(closest(9, NSArray::of(1, 12, 8.5)), Equals(8.5));
}

TEST_F(LUMArrayDeprecatedTest, ClosestNumberIsTheFirstOfTwoEquallyNear)
{
    EXPECT_THAT(closest(5, NSArray::of(1, 4, 6)), Equals(4));
    EXPECT_THAT(closest(5, NSArray::of(6, 4, 1)), Equals(6));
}

TEST_F(LUMArrayDeprecatedTest, ClosestNumberOfAnEmptyArrayIsNull)
{
    EXPECT_EQ(closest(5, NSArray::array()), nullptr);
}

TEST_F(LUMArrayDeprecatedTest, DeliberatelyClosestNumberNeverFindsAFarOne)
{
    EXPECT_EQ(closest(5, NSArray::of(1.0e10)), nullptr);
    EXPECT_EQ(closest(0, NSArray::of(4294967295.0)), nullptr);
    EXPECT_THAT(closest(0, NSArray::of(4294967294.0)), Equals(4294967294.0));
}

TEST_F(LUMArrayDeprecatedTest, ClosestNumberPassesOverWhatIsNoNumber)
{
    EXPECT_THAT(closest(5, NSArray::of(NAN, INFINITY, 9)), Equals(9));
    EXPECT_EQ(closest(NAN, NSArray::of(1, 2)), nullptr);
}

TEST_F(LUMArrayDeprecatedTest, ClosestNumberToNullIsTheOneNearestToZero)
{
    EXPECT_THAT(LUMArray_Deprecated::closestNumberToNumber(NSArray::of(3, -2), nullptr), Equals(-2));
}

TEST_F(LUMArrayDeprecatedTest, ClosestNumberRaisesForAnElementWithoutAValue)
{
    EXPECT_EQ(nameRaisedBy([&] { return closest(1, NSArray::of(NSArray::array())); }),
        "NSInvalidArgumentException");
}

TEST_F(LUMArrayDeprecatedTest, RemoveObjectsTakesOutAllEqualElements)
{
    auto list = NSMutableArray::of("a", "b", "a", "c");
    LUMArray_Deprecated::removeObjects(list, NSArray::of("a", "c", "x"));
    EXPECT_THAT(list, Equals(NSArray::of("b")));
}

TEST_F(LUMArrayDeprecatedTest, RemoveObjectsOfTheArrayItselfEmptiesIt)
{
    auto list = NSMutableArray::of("a", "b");
    LUMArray_Deprecated::removeObjects(list, list);
    EXPECT_EQ(list->count(), 0u);
}

TEST_F(LUMArrayDeprecatedTest, RemoveObjectsOfNullChangesNothing)
{
    auto list = NSMutableArray::of("a");
    LUMArray_Deprecated::removeObjects(list, nullptr);
    EXPECT_THAT(list, Equals(NSArray::of("a")));
}

TEST_F(LUMArrayDeprecatedTest, NullAnswersNullAndIsNotChanged)
{
    EXPECT_EQ(LUMArray_Deprecated::closestNumberToNumber(nullptr, 1), nullptr);
    LUMArray_Deprecated::removeObjects(nullptr, NSArray::of("a"));
}

/// Equal to every other of its kind, whose hashes differ.
struct Alike : NSObject {
    bool isEqual(const NSId& other) const override { return NSCast<Alike>(other) != nullptr; }
};

TEST_F(LUMArrayDeprecatedTest, RemovesObjectsByEqualityAlone)
{
    auto array = NSMutableArray::arrayWithArray(NSArray::of(NSMake<Alike>(), 1, NSMake<Alike>()));
    LUMArray_Deprecated::removeObjects(array, NSArray::of(NSMake<Alike>()));
    EXPECT_THAT(array, Equals(NSArray::of(1)));
    LUMArray_Deprecated::removeObjects(array, array);
    EXPECT_EQ(array->count(), 0u);
}

}
