#include "LUMPlatform/NSSet.h"

#include "LUMPlatform/NSArray.h"
#include "LUMPlatform/NSEnumerator.h"
#include "LUMPlatform/NSSend.h"
#include "tests/fixture.h"
#include "tests/object_matchers.h"
#include "tests/raised_by.h"

namespace {

struct NSSetTest : ObjectTest {
    NSRef<NSSet> set = NSSet::of("a", 1, "a", 1.0);
    NSRef<NSMutableSet> changing = NSCast<NSMutableSet>(set->mutableCopy());
};

TEST_F(NSSetTest, HoldsEqualObjectsOnce)
{
    EXPECT_EQ(set->count(), 2u);
    EXPECT_TRUE(set->containsObject("a"));
    EXPECT_TRUE(set->containsObject(true)); // a truth value is a number
    EXPECT_FALSE(set->containsObject("b"));
    EXPECT_FALSE(set->containsObject(nullptr));
}

TEST_F(NSSetTest, GivesObjectsInTheOrderOfTheirArrival)
{
    EXPECT_THAT(set->allObjects(), Equals(NSArray::of("a", 1)));
    EXPECT_THAT(set->objectEnumerator()->allObjects(), Equals(NSArray::of("a", 1)));
    changing->removeObject("a");
    changing->addObject("a");
    changing->addObject(1);
    EXPECT_THAT(changing->allObjects(), Equals(NSArray::of(1, "a")));
}

TEST_F(NSSetTest, IsMadeOfAnArray)
{
    EXPECT_THAT(NSSet::setWithArray(NSArray::of("a", "a", 1)), Equals(set));
    EXPECT_THAT(NSSet::setWithArray(nullptr), Equals(NSSet::set()));
}

TEST_F(NSSetTest, IsEqualByElementsWhateverTheirOrder)
{
    EXPECT_THAT(NSSet::of(1, "a"), Equals(set));
    EXPECT_EQ(NSSet::of(1, "a")->hash(), set->hash());
    EXPECT_FALSE(set->isEqual(NSSet::of("a")));
    EXPECT_FALSE(set->isEqual(NSSet::of("a", 2)));
    EXPECT_FALSE(set->isEqual(NSArray::of("a", 1)));
}

TEST_F(NSSetTest, RaisesForNull)
{
    EXPECT_EQ(nameRaisedBy([&] { changing->addObject(nullptr); }), "NSInvalidArgumentException");
    changing->removeObject(nullptr);
    EXPECT_THAT(changing, Equals(set));
}

TEST_F(NSSetTest, IsItsOwnCopyOnlyWhenImmutable)
{
    EXPECT_TRUE(set->copy() == set);
    NSId copy = changing->copy();
    changing->removeAllObjects();
    EXPECT_THAT(copy, Equals(set));
    EXPECT_THAT(changing, Equals(NSMutableSet::set()));
}

TEST_F(NSSetTest, RaisesAtTheNextStepOfALoopThatChangedIt)
{
    EXPECT_EQ(nameRaisedBy([&] {
        for (const NSId& object : changing)
            changing->removeObject(object);
    }),
        "NSGenericException");
}

TEST_F(NSSetTest, DescribesItself)
{
    EXPECT_EQ(set->description()->utf8(), "{(\n    a,\n    1\n)}");
}

TEST_F(NSSetTest, AnswersDynamicCalls)
{
    NSSend(changing, NSSelector("addObject:"), NSId("z"));
    EXPECT_TRUE(NSSend<bool>(changing, NSSelector("containsObject:"), NSId("z")));
}

}
