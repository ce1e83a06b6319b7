#include "LUMPlatform/NSArray.h"

#include "LUMPlatform/NSEnumerator.h"
#include "LUMPlatform/NSNull.h"
#include "LUMPlatform/NSNumber.h"
#include "LUMPlatform/NSSend.h"
#include "LUMPlatform/NSString.h"
#include "tests/fixture.h"
#include "tests/object_matchers.h"
#include "tests/platform/objects/track.h"
#include "tests/raised_by.h"

namespace {

struct NSArrayTest : ObjectTest {
    NSRef<NSArray> array = NSArray::of("a", 2, "c");
};

TEST_F(NSArrayTest, BoxesWhatItIsMadeOf)
{
    auto list = NSArray::of(true, 5, 2.5, "text", std::string("more"), NSNull::null(), NSArray::of(1));
    EXPECT_EQ(list->count(), 7u);
    EXPECT_TRUE(list->objectAtIndex<NSNumber>(0)->isBool());
    EXPECT_EQ(list->objectAtIndex<NSNumber>(2)->doubleValue(), 2.5);
    EXPECT_THAT(list->objectAtIndex(4), Equals("more"));
    EXPECT_TRUE(list->objectAtIndex(5) == NSNull::null());
    EXPECT_THAT(list->objectAtIndex(6), Equals(NSArray::of(1)));
}

TEST_F(NSArrayTest, HoldsNoNull)
{
    EXPECT_EQ(nameRaisedBy([] { (void)NSArray::of(1, nullptr); }), "NSInvalidArgumentException");
    EXPECT_EQ(nameRaisedBy([] { (void)NSArray::arrayWithObject(nullptr); }), "NSInvalidArgumentException");
    EXPECT_EQ(nameRaisedBy([&] { (void)array->arrayByAddingObject(nullptr); }), "NSInvalidArgumentException");
}

TEST_F(NSArrayTest, RaisesPastItsEnd)
{
    EXPECT_EQ(raisedBy([&] { (void)array->objectAtIndex(3); }),
        "NSRangeException: objectAtIndex: index 3 is past the end of 3 elements");
    EXPECT_EQ(nameRaisedBy([&] { (void)array->objectAtIndex(NSNotFound); }), "NSRangeException");
    EXPECT_EQ(nameRaisedBy([] { (void)NSArray::array()->objectAtIndex(0); }), "NSRangeException");
}

TEST_F(NSArrayTest, ReadsAnElementAsAClassAndNullWhenItIsAnother)
{
    EXPECT_EQ(array->objectAtIndex<NSNumber>(1)->intValue(), 2);
    EXPECT_FALSE(array->objectAtIndex<NSNumber>(0));
}

TEST_F(NSArrayTest, FindsTheFirstEqualElement)
{
    auto list = NSArray::of("a", 2, "c", "a", 2.0);
    EXPECT_EQ(list->indexOfObject("a"), 0u);
    EXPECT_EQ(list->indexOfObject(2.0), 1u);
    EXPECT_EQ(list->indexOfObject("z"), NSNotFound);
    EXPECT_EQ(list->indexOfObject(nullptr), NSNotFound);
    EXPECT_TRUE(list->containsObject("c"));
    EXPECT_FALSE(list->containsObject("z"));
}

TEST_F(NSArrayTest, FindsTheFirstIdenticalElement)
{
    NSRef<NSString> a = NSString::stringWithFormat("%d", 1);
    NSRef<NSString> b = NSString::stringWithFormat("%d", 1);
    EXPECT_EQ(NSArray::of(a, b, b)->indexOfObjectIdenticalTo(b), 1u);
    EXPECT_EQ(NSArray::of(a)->indexOfObjectIdenticalTo(b), NSNotFound);
    EXPECT_EQ(NSArray::of(a)->indexOfObjectIdenticalTo(nullptr), NSNotFound);
}

TEST_F(NSArrayTest, TellsItsLastElement)
{
    EXPECT_THAT(array->lastObject(), Equals("c"));
    EXPECT_FALSE(NSArray::array()->lastObject());
}

TEST_F(NSArrayTest, GivesAPartOfItself)
{
    EXPECT_THAT(array->subarrayWithRange({ 1, 2 }), Equals(NSArray::of(2, "c")));
    EXPECT_THAT(array->subarrayWithRange({ 3, 0 }), Equals(NSArray::array()));
    EXPECT_EQ(raisedBy([&] {
        (void)array->subarrayWithRange({ 1, 3 });
    }),
        "NSRangeException: subarrayWithRange: range {1, 3} reaches past the end of 3 elements");
    EXPECT_EQ(nameRaisedBy([&] {
        (void)array->subarrayWithRange({ 1, ~NSUInteger { 0 } });
    }),
        "NSRangeException");
    EXPECT_EQ(nameRaisedBy([&] { (void)array->subarrayWithRange({ 4, 0 }); }), "NSRangeException");
}

TEST_F(NSArrayTest, GrowsIntoANewArray)
{
    EXPECT_THAT(array->arrayByAddingObject(4), Equals(NSArray::of("a", 2, "c", 4)));
    EXPECT_THAT(array->arrayByAddingObjectsFromArray(array), Equals(NSArray::of("a", 2, "c", "a", 2, "c")));
    EXPECT_THAT(array->arrayByAddingObjectsFromArray(nullptr), Equals(array));
    EXPECT_EQ(array->count(), 3u);
}

TEST_F(NSArrayTest, IsMadeOfOtherLists)
{
    EXPECT_THAT(NSArray::arrayWithArray(array), Equals(array));
    EXPECT_THAT(NSArray::arrayWithArray(nullptr), Equals(NSArray::array()));
    EXPECT_THAT(NSArray::arrayWithObjects({ "a", 2, "c" }), Equals(array));
}

TEST_F(NSArrayTest, LoopsOverItsElements)
{
    std::string seen;
    for (const NSId& element : array)
        seen += element->description()->utf8() + " ";
    for (const NSId& element : NSArray::of("x")) // the loop keeps it alive
        seen += element->description()->utf8();
    EXPECT_EQ(seen, "a 2 c x");
}

TEST_F(NSArrayTest, EnumeratesItsElements)
{
    auto elements = array->objectEnumerator();
    EXPECT_THAT(elements->nextObject(), Equals("a"));
    EXPECT_THAT(elements->allObjects(), Equals(NSArray::of(2, "c")));
    EXPECT_FALSE(elements->nextObject());
}

TEST_F(NSArrayTest, LoopsOverAnEnumeratorOnce)
{
    std::string seen;
    auto elements = array->objectEnumerator();
    for (int pass = 0; pass < 2; ++pass)
        for (const NSId& element : elements)
            seen += element->description()->utf8() + " ";
    EXPECT_EQ(seen, "a 2 c ");
}

TEST_F(NSArrayTest, SendsASelectorToEachElement)
{
    auto tracks = NSArray::of(NSMake<Track>("a"), NSMake<Track>("b"));
    tracks->makeObjectsPerformSelector(NSSelector("play"));
    tracks->makeObjectsPerformSelectorWithObject(NSSelector("setTitle:"), "new");
    for (const NSId& track : tracks) {
        EXPECT_EQ(NSCast<Track>(track)->count(), 1);
        EXPECT_THAT(NSCast<Track>(track)->title(), Equals("new"));
    }
    EXPECT_EQ(nameRaisedBy([&] { array->makeObjectsPerformSelector(NSSelector("play")); }),
        "NSInvalidArgumentException");
}

TEST_F(NSArrayTest, JoinsDescriptions)
{
    EXPECT_THAT(array->componentsJoinedByString(", "), Equals("a, 2, c"));
    EXPECT_THAT(array->componentsJoinedByString(nullptr), Equals("a2c"));
    EXPECT_THAT(NSArray::array()->componentsJoinedByString(", "), Equals(""));
}

TEST_F(NSArrayTest, JoinsHalvesOfASurrogatePair)
{
    EXPECT_THAT(NSArray::of(u"\xd83d", u"\xde00")->componentsJoinedByString(""), Equals("😀"));
}

TEST_F(NSArrayTest, IsEqualByElements)
{
    EXPECT_TRUE(array->isEqual(NSMutableArray::of("a", 2.0, "c")));
    EXPECT_EQ(array->hash(), NSMutableArray::of("a", 2.0, "c")->hash());
    EXPECT_FALSE(array->isEqual(NSArray::of("a", 2)));
    EXPECT_FALSE(array->isEqual(NSArray::of("a", "c", 2)));
    EXPECT_FALSE(array->isEqual("a"));
    EXPECT_FALSE(array->isEqual(nullptr));
    EXPECT_FALSE(array->isEqualToArray(nullptr));
}

TEST_F(NSArrayTest, RaisesWhenComparedWithoutEnd)
{
    auto selfish = [] {
        auto list = NSMutableArray::array();
        list->addObject(list);
        return list;
    };
    auto a = selfish();
    auto b = selfish();
    EXPECT_TRUE(a->isEqual(a));
    EXPECT_EQ(nameRaisedBy([&] { (void)a->isEqual(b); }), "NSInvalidArgumentException");
    a->removeAllObjects();
    b->removeAllObjects();
    EXPECT_TRUE(a->isEqual(b)); // the depth is back at its start
}

TEST_F(NSArrayTest, ComparesAThousandLevels)
{
    auto nested = [] {
        auto list = NSArray::of(1);
        for (int i = 0; i < 1000; ++i)
            list = NSArray::of(list);
        return list;
    };
    EXPECT_TRUE(nested()->isEqual(nested()));
}

TEST_F(NSArrayTest, IsItsOwnCopyOnlyWhenImmutable)
{
    EXPECT_TRUE(array->copy() == array);
    auto changing = NSCast<NSMutableArray>(array->mutableCopy());
    NSId copy = changing->copy();
    changing->removeAllObjects();
    EXPECT_THAT(copy, Equals(array));
    EXPECT_FALSE(NSCast<NSMutableArray>(copy));
}

TEST_F(NSArrayTest, EndsAMillionLevelsDeepWithoutOverflow)
{
    auto nested = NSArray::array();
    for (int i = 0; i < 1'000'000; ++i)
        nested = NSArray::of(nested);
    nested = nullptr;
    SUCCEED(); // the fixture counts them
}

TEST_F(NSArrayTest, AnswersDynamicCalls)
{
    EXPECT_EQ(NSSend<NSUInteger>(array, NSSelector("count")), 3u);
    EXPECT_THAT(NSSend<NSId>(array, NSSelector("objectAtIndex:"), 1), Equals(2));
    EXPECT_THAT(
        NSSend<NSId>(array, NSSelector("subarrayWithRange:"), NSRange { 0, 1 }), Equals(NSArray::of("a")));
    EXPECT_TRUE(NSSend<bool>(array, NSSelector("isEqual:"), array));
}

TEST_F(NSArrayTest, EnumeratorRaisesWhenTheArrayShrinksToWhereItStands)
{
    auto numbers = NSMutableArray::arrayWithArray(NSArray::of(1, 2, 3));
    auto enumerator = numbers->objectEnumerator();
    (void)enumerator->nextObject();
    (void)enumerator->nextObject();
    numbers->removeLastObject();
    EXPECT_EQ(nameRaisedBy([&] { (void)enumerator->nextObject(); }), "NSGenericException");
}

}
