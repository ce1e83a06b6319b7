#include "LUMFoundation/LUMArray.h"

#include "LUMPlatform/NSArray.h"
#include "LUMPlatform/NSIndexSet.h"
#include "LUMPlatform/NSMutableString.h"
#include "LUMPlatform/NSNumber.h"
#include "tests/fixture.h"
#include "tests/object_matchers.h"
#include "tests/raised_by.h"

#include <rapidcheck.h>
#include <rapidcheck/gtest.h>

namespace {

struct LUMArrayMutableTest : ObjectTest {
    NSRef<NSMutableArray> empty = NSMutableArray::array();
    NSRef<NSMutableArray> abc = NSMutableArray::of("a", "b", "c");
    NSRef<NSMutableArray> abcd = NSMutableArray::of("a", "b", "c", "d");
    NSRef<NSArray> xy = NSArray::of("x", "y");
};

TEST_F(LUMArrayMutableTest, DequeueTakesOutTheFirstElement)
{
    EXPECT_THAT(LUMArray::dequeueObjectFromFront(abc), Equals("a"));
    EXPECT_THAT(abc, Equals(NSArray::of("b", "c")));
}

TEST_F(LUMArrayMutableTest, DequeueKeepsTheElementAlive)
{
    auto list = NSMutableArray::of(NSMutableString::stringWithString("only here"));
    EXPECT_THAT(LUMArray::dequeueObjectFromFront(list), Equals("only here"));
    EXPECT_EQ(list->count(), 0u);
}

TEST_F(LUMArrayMutableTest, DequeueFromAnEmptyArrayIsNull)
{
    EXPECT_EQ(LUMArray::dequeueObjectFromFront(empty), nullptr);
}

TEST_F(LUMArrayMutableTest, ReverseTurnsAnOddNumberRound)
{
    auto list = NSMutableArray::of("a", "b", "c", "d", "e");
    LUMArray::reverse(list);
    EXPECT_THAT(list, Equals(NSArray::of("e", "d", "c", "b", "a")));
}

TEST_F(LUMArrayMutableTest, ReverseTurnsAnEvenNumberRound)
{
    LUMArray::reverse(abcd);
    EXPECT_THAT(abcd, Equals(NSArray::of("d", "c", "b", "a")));
}

TEST_F(LUMArrayMutableTest, ReverseLeavesFewerThanTwoAlone)
{
    auto one = NSMutableArray::of("a");
    LUMArray::reverse(one);
    LUMArray::reverse(empty);
    EXPECT_THAT(one, Equals(NSArray::of("a")));
    EXPECT_EQ(empty->count(), 0u);
}

TEST_F(LUMArrayMutableTest, InsertObjectsKeepsTheirOrder)
{
    LUMArray::insertObjects(abc, xy, 1);
    EXPECT_THAT(abc, Equals(NSArray::of("a", "x", "y", "b", "c")));
}

TEST_F(LUMArrayMutableTest, DeliberatelyInsertObjectsPastTheEndAppends)
{
    LUMArray::insertObjects(abc, xy, 10);
    EXPECT_THAT(abc, Equals(NSArray::of("a", "b", "c", "x", "y")));
}

TEST_F(LUMArrayMutableTest, InsertObjectsAtTheCountAppends)
{
    LUMArray::insertObjects(abc, xy, 3);
    EXPECT_THAT(abc, Equals(NSArray::of("a", "b", "c", "x", "y")));
}

TEST_F(LUMArrayMutableTest, DeliberatelyInsertObjectsAtTheLargestIndexAppends)
{
    LUMArray::insertObjects(abc, xy, 0xFFFFFFFF);
    EXPECT_THAT(abc, Equals(NSArray::of("a", "b", "c", "x", "y")));
}

TEST_F(LUMArrayMutableTest, InsertObjectsIntoAnEmptyArrayAppends)
{
    LUMArray::insertObjects(empty, xy, 5);
    EXPECT_THAT(empty, Equals(xy));
}

TEST_F(LUMArrayMutableTest, InsertObjectsTakesTheArrayItself)
{
    LUMArray::insertObjects(abc, abc, 1);
    EXPECT_THAT(abc, Equals(NSArray::of("a", "a", "b", "c", "b", "c")));
}

TEST_F(LUMArrayMutableTest, InsertObjectsInsertsNothingForNull)
{
    LUMArray::insertObjects(abc, nullptr, 0);
    EXPECT_THAT(abc, Equals(NSArray::of("a", "b", "c")));
}

TEST_F(LUMArrayMutableTest, MoveObjectCountsTheTargetInWhatIsLeft)
{
    LUMArray::moveObjectAtIndex(abcd, 0, 2);
    EXPECT_THAT(abcd, Equals(NSArray::of("b", "c", "a", "d")));
}

TEST_F(LUMArrayMutableTest, MoveObjectForward)
{
    LUMArray::moveObjectAtIndex(abcd, 3, 0);
    EXPECT_THAT(abcd, Equals(NSArray::of("d", "a", "b", "c")));
}

TEST_F(LUMArrayMutableTest, MoveObjectPastTheEndMovesItToTheEnd)
{
    LUMArray::moveObjectAtIndex(abcd, 1, 100);
    EXPECT_THAT(abcd, Equals(NSArray::of("a", "c", "d", "b")));
}

TEST_F(LUMArrayMutableTest, MoveObjectRaisesForAnIndexPastTheEnd)
{
    EXPECT_EQ(nameRaisedBy([&] { LUMArray::moveObjectAtIndex(abcd, 4, 0); }), "NSRangeException");
    EXPECT_THAT(abcd, Equals(NSArray::of("a", "b", "c", "d")));
}

TEST_F(LUMArrayMutableTest, MoveObjectsKeepsTheirOrder)
{
    LUMArray::moveObjectsAtIndexes(abcd, NSIndexSet::of({ 2, 0 }), 1);
    EXPECT_THAT(abcd, Equals(NSArray::of("b", "a", "c", "d")));
}

TEST_F(LUMArrayMutableTest, MoveObjectsChangesNothingWhenOneIndexIsPastTheEnd)
{
    EXPECT_EQ(nameRaisedBy([&] {
        LUMArray::moveObjectsAtIndexes(abcd, NSIndexSet::of({ 0, 4 }), 1);
    }),
        "NSRangeException");
    EXPECT_THAT(abcd, Equals(NSArray::of("a", "b", "c", "d")));
}

TEST_F(LUMArrayMutableTest, MoveObjectsOfNoIndexesChangesNothing)
{
    LUMArray::moveObjectsAtIndexes(abcd, NSIndexSet::indexSet(), 1);
    LUMArray::moveObjectsAtIndexes(abcd, nullptr, 1);
    EXPECT_THAT(abcd, Equals(NSArray::of("a", "b", "c", "d")));
}

TEST_F(LUMArrayMutableTest, DeliberatelyMoveObjectTakesOutEqualElementsElsewhere)
{
    auto list = NSMutableArray::of("a", "b", "a", "c");
    LUMArray::moveObjectAtIndex(list, 0, 1);
    EXPECT_THAT(list, Equals(NSArray::of("b", "a", "c")));
}

TEST_F(LUMArrayMutableTest, MoveObjectsBringsBackEqualElementsThatAreBothMoved)
{
    auto list = NSMutableArray::of("a", "b", "a", "c");
    LUMArray::moveObjectsAtIndexes(list, NSIndexSet::of({ 0, 2 }), 2);
    EXPECT_THAT(list, Equals(NSArray::of("b", "c", "a", "a")));
}

TEST_F(LUMArrayMutableTest, ReplaceObjectReplacesAllThatAreEqual)
{
    auto list = NSMutableArray::of("a", "b", "a");
    LUMArray::replaceObject(list, "a", "z");
    EXPECT_THAT(list, Equals(NSArray::of("z", "b", "z")));
}

TEST_F(LUMArrayMutableTest, ReplaceObjectDoesNothingForEqualObjects)
{
    auto list = NSMutableArray::of(1, 2);
    NSId before = list->objectAtIndex(0);
    LUMArray::replaceObject(list, 1, 1.0);
    EXPECT_EQ(list->objectAtIndex(0), before);
}

TEST_F(LUMArrayMutableTest, ReplaceObjectFindsNoNull)
{
    LUMArray::replaceObject(abc, nullptr, "z");
    LUMArray::replaceObject(abc, nullptr, nullptr);
    EXPECT_THAT(abc, Equals(NSArray::of("a", "b", "c")));
}

TEST_F(LUMArrayMutableTest, ReplaceObjectByNullRaisesWhenThereIsOne)
{
    LUMArray::replaceObject(abc, "z", nullptr);
    EXPECT_EQ(
        nameRaisedBy([&] { LUMArray::replaceObject(abc, "a", nullptr); }), "NSInvalidArgumentException");
    EXPECT_THAT(abc, Equals(NSArray::of("a", "b", "c")));
}

/// Takes everything for its equal, which nothing else does.
class Greedy : public NSObject {
public:
    bool isEqual(const NSId& other) const override { return other && !NSCast<NSNumber>(other); }
    NSUInteger hash() const override { return 0; }
};

TEST_F(LUMArrayMutableTest, ReplaceObjectEndsWhenEqualityIsOneSided)
{
    auto greedy = NSMake<Greedy>();
    LUMArray::replaceObject(abc, greedy, 1);
    EXPECT_THAT(abc, Equals(NSArray::of(1, 1, 1)));
}

TEST_F(LUMArrayMutableTest, ReplaceObjectIdenticalToLooksForTheObjectItself)
{
    NSId first = NSMutableString::stringWithString("a");
    NSId equal = NSMutableString::stringWithString("a");
    auto list = NSMutableArray::of(first, equal, first);
    LUMArray::replaceObjectIdenticalTo(list, first, "z");
    EXPECT_THAT(list, Equals(NSArray::of("z", "a", "z")));
    EXPECT_EQ(list->objectAtIndex(1), equal);
}

TEST_F(LUMArrayMutableTest, ReplaceObjectIdenticalToTakesAnEqualObject)
{
    NSId old = NSMutableString::stringWithString("a");
    NSId equal = NSMutableString::stringWithString("a");
    auto list = NSMutableArray::of(old);
    LUMArray::replaceObjectIdenticalTo(list, old, equal);
    EXPECT_EQ(list->objectAtIndex(0), equal);
}

TEST_F(LUMArrayMutableTest, ReplaceObjectIdenticalToItselfDoesNothing)
{
    NSId element = abc->objectAtIndex(0);
    LUMArray::replaceObjectIdenticalTo(abc, element, element);
    LUMArray::replaceObjectIdenticalTo(abc, nullptr, nullptr);
    LUMArray::replaceObjectIdenticalTo(abc, nullptr, "z");
    EXPECT_THAT(abc, Equals(NSArray::of("a", "b", "c")));
}

TEST_F(LUMArrayMutableTest, ReplaceObjectIdenticalToByNullRaisesWhenThereIsOne)
{
    NSId element = abc->objectAtIndex(0);
    EXPECT_EQ(nameRaisedBy([&] { LUMArray::replaceObjectIdenticalTo(abc, element, nullptr); }),
        "NSInvalidArgumentException");
}

// The laws: what one call does, told step by step on plain numbers.

using Numbers = std::vector<int>;

NSRef<NSMutableArray> arrayOf(const Numbers& numbers)
{
    auto array = NSMutableArray::array();
    for (int number : numbers)
        array->addObject(number);
    return array;
}

void insertOneByOne(Numbers& receiver, const Numbers& objects, std::uint64_t index)
{
    for (std::size_t k = 0; k < objects.size(); ++k) {
        const std::uint64_t at = index + k;
        if (!receiver.empty() && at <= receiver.size() - 1)
            receiver.insert(receiver.begin() + static_cast<std::ptrdiff_t>(at), objects[k]);
        else
            receiver.push_back(objects[k]);
    }
}

RC_GTEST_PROP(
    LUMArrayMutableLaw, InsertObjectsIsOneInsertionAfterTheOther, (Numbers receiver, Numbers objects))
{
    const auto index = *rc::gen::inRange<std::uint32_t>(0, static_cast<std::uint32_t>(receiver.size()) + 3);
    auto array = arrayOf(receiver);
    LUMArray::insertObjects(array, arrayOf(objects), index);
    insertOneByOne(receiver, objects, index);
    RC_ASSERT(array->isEqual(arrayOf(receiver)));
}

RC_GTEST_PROP(LUMArrayMutableLaw, ReverseTwiceIsNoChange, (const Numbers& numbers))
{
    auto array = arrayOf(numbers);
    LUMArray::reverse(array);
    RC_ASSERT(array->isEqual(arrayOf({ numbers.rbegin(), numbers.rend() })));
    LUMArray::reverse(array);
    RC_ASSERT(array->isEqual(arrayOf(numbers)));
}

RC_GTEST_PROP(LUMArrayMutableLaw, MovingIsTakingOutEqualsAndInserting, ())
{
    auto numbers = *rc::gen::nonEmpty(rc::gen::container<Numbers>(rc::gen::inRange(0, 8)));
    const auto size = static_cast<std::uint32_t>(numbers.size());
    const auto from = *rc::gen::inRange<std::uint32_t>(0, size);
    const auto to = *rc::gen::inRange<std::uint32_t>(0, size + 3);
    auto array = arrayOf(numbers);
    LUMArray::moveObjectAtIndex(array, from, to);
    const int moved = numbers[from];
    std::erase(numbers, moved);
    insertOneByOne(numbers, { moved }, to);
    RC_ASSERT(array->isEqual(arrayOf(numbers)));
}

}
