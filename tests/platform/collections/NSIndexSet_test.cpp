#include "LUMPlatform/NSIndexSet.h"

#include "LUMPlatform/NSSend.h"
#include "tests/fixture.h"
#include "tests/object_matchers.h"
#include "tests/raised_by.h"

#include <rapidcheck/gtest.h>

#include <set>

namespace {

using testing::ElementsAre;

struct NSIndexSetTest : ObjectTest {
    NSRef<NSIndexSet> set = NSIndexSet::of({ 7, 0, 2, 1 });

    static std::vector<NSUInteger> listOf(const NSRef<NSIndexSet>& set)
    {
        return { set->begin(), set->end() };
    }
};

TEST_F(NSIndexSetTest, CountsUp)
{
    EXPECT_THAT(listOf(set), ElementsAre(0, 1, 2, 7));
    EXPECT_EQ(set->count(), 4u);
    EXPECT_THAT(listOf(NSIndexSet::indexSetWithIndexesInRange({ 3, 2 })), ElementsAre(3, 4));
    EXPECT_THAT(listOf(NSIndexSet::indexSetWithIndex(5)), ElementsAre(5));
}

TEST_F(NSIndexSetTest, TellsFirstLastAndNext)
{
    EXPECT_EQ(set->firstIndex(), 0u);
    EXPECT_EQ(set->lastIndex(), 7u);
    EXPECT_EQ(set->indexGreaterThanIndex(0), 1u);
    EXPECT_EQ(set->indexGreaterThanIndex(2), 7u);
    EXPECT_EQ(set->indexGreaterThanIndex(5), 7u);
    EXPECT_EQ(set->indexGreaterThanIndex(7), NSNotFound);
    EXPECT_EQ(set->indexGreaterThanIndex(NSNotFound), NSNotFound);
    EXPECT_EQ(set->indexGreaterThanIndex(~NSUInteger { 0 }), NSNotFound);
}

TEST_F(NSIndexSetTest, ContainsItsIndexesOnly)
{
    EXPECT_TRUE(set->containsIndex(2));
    EXPECT_FALSE(set->containsIndex(3));
    EXPECT_FALSE(set->containsIndex(8));
    EXPECT_FALSE(set->containsIndex(NSNotFound));
}

TEST_F(NSIndexSetTest, IsEmptyAtFirst)
{
    auto empty = NSIndexSet::indexSet();
    EXPECT_EQ(empty->count(), 0u);
    EXPECT_EQ(empty->firstIndex(), NSNotFound);
    EXPECT_EQ(empty->lastIndex(), NSNotFound);
    EXPECT_FALSE(empty->containsIndex(NSNotFound));
    EXPECT_THAT(listOf(empty), ElementsAre());
    EXPECT_THAT(NSIndexSet::indexSetWithIndexesInRange({ 5, 0 }), Equals(empty));
}

TEST_F(NSIndexSetTest, HoldsIndexesBelowNotFoundAlone)
{
    EXPECT_EQ(NSIndexSet::indexSetWithIndex(NSNotFound - 1)->lastIndex(), NSNotFound - 1);
    EXPECT_EQ(NSIndexSet::indexSetWithIndexesInRange({ 0, NSNotFound })->count(), NSNotFound);
    EXPECT_EQ(raisedBy([] { (void)NSIndexSet::indexSetWithIndex(NSNotFound); }),
        "NSRangeException: an index set cannot hold {9223372036854775807, 1}: it reaches past the last "
        "index");
    EXPECT_EQ(nameRaisedBy([] {
        (void)NSIndexSet::indexSetWithIndexesInRange({ 2, ~NSUInteger { 0 } });
    }),
        "NSRangeException");
}

TEST_F(NSIndexSetTest, IsEqualByIndexes)
{
    auto other = NSMutableIndexSet::indexSet();
    other->addIndexesInRange({ 0, 3 });
    other->addIndex(7);
    EXPECT_THAT(other, Equals(set));
    EXPECT_EQ(other->hash(), set->hash());
    other->addIndex(9);
    EXPECT_FALSE(other->isEqual(set));
    EXPECT_FALSE(set->isEqual(nullptr));
}

TEST_F(NSIndexSetTest, IsItsOwnCopyOnlyWhenImmutable)
{
    EXPECT_TRUE(set->copy() == set);
    auto grown = NSCast<NSMutableIndexSet>(set->mutableCopy());
    NSId copy = grown->copy();
    grown->addIndex(100);
    EXPECT_THAT(copy, Equals(set));
    EXPECT_FALSE(NSCast<NSMutableIndexSet>(copy));
}

TEST_F(NSIndexSetTest, DescribesItsRanges)
{
    EXPECT_EQ(set->description()->utf8(), "(0-2 7)");
    EXPECT_EQ(NSIndexSet::indexSet()->description()->utf8(), "()");
}

TEST_F(NSIndexSetTest, RaisesAtTheNextStepOfALoopThatChangedIt)
{
    auto grown = NSCast<NSMutableIndexSet>(set->mutableCopy());
    EXPECT_EQ(nameRaisedBy([&] {
        for (NSUInteger index : grown)
            grown->addIndex(index + 10);
    }),
        "NSGenericException");
}

TEST_F(NSIndexSetTest, AnswersDynamicCalls)
{
    NSId grown = set->mutableCopy();
    NSSend(grown, NSSelector("addIndex:"), 4);
    EXPECT_EQ(NSSend<NSUInteger>(grown, NSSelector("indexGreaterThanIndex:"), 2), 4u);
}

RC_GTEST_PROP(NSIndexSetProperty, HoldsWhatWasAdded, ())
{
    auto set = NSMutableIndexSet::indexSet();
    std::set<NSUInteger> model;
    for (auto [location, length] : *rc::gen::container<std::vector<std::pair<unsigned, unsigned>>>(
             rc::gen::pair(rc::gen::inRange(0u, 60u), rc::gen::inRange(0u, 8u)))) {
        set->addIndexesInRange({ location, length });
        for (NSUInteger index = location; index < location + length; ++index)
            model.insert(index);
    }
    RC_ASSERT(std::vector<NSUInteger>(set->begin(), set->end())
        == std::vector<NSUInteger>(model.begin(), model.end()));
    RC_ASSERT(set->count() == model.size());
    for (NSUInteger index = 0; index < 70; ++index) {
        auto next = model.upper_bound(index);
        RC_ASSERT(set->indexGreaterThanIndex(index) == (next == model.end() ? NSNotFound : *next));
        RC_ASSERT(set->containsIndex(index) == model.contains(index));
    }
}

}
