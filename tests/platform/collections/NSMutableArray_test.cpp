#include "LUMPlatform/NSArray.h"
#include "LUMPlatform/NSEnumerator.h"
#include "LUMPlatform/NSSend.h"
#include "LUMPlatform/NSString.h"
#include "tests/fixture.h"
#include "tests/object_matchers.h"
#include "tests/raised_by.h"

#include <functional>

namespace {

struct NSMutableArrayTest : ObjectTest {
    NSRef<NSMutableArray> array = NSMutableArray::of("a", "b", "c");
};

/// Runs what it is told when it ends, and when it is compared.
class Meddler : public NSObject {
public:
    std::function<void()> atEnd;
    std::function<void()> atComparison;
    bool isEqual(const NSId& other) const override
    {
        if (atComparison)
            atComparison();
        return other.get() == this;
    }

protected:
    ~Meddler() override
    {
        if (atEnd)
            atEnd();
    }
};

TEST_F(NSMutableArrayTest, Adds)
{
    array->addObject("d");
    array->addObjectsFromArray(NSArray::of("e", "f"));
    array->addObjectsFromArray(nullptr);
    EXPECT_THAT(array, Equals(NSArray::of("a", "b", "c", "d", "e", "f")));
}

TEST_F(NSMutableArrayTest, AddsItself)
{
    array->addObjectsFromArray(array);
    EXPECT_THAT(array, Equals(NSArray::of("a", "b", "c", "a", "b", "c")));
}

TEST_F(NSMutableArrayTest, InsertsUpToItsEnd)
{
    array->insertObject("x", 0);
    array->insertObject("y", 4);
    EXPECT_THAT(array, Equals(NSArray::of("x", "a", "b", "c", "y")));
    EXPECT_EQ(raisedBy([&] { array->insertObject("z", 6); }),
        "NSRangeException: insertObject:atIndex: index 6 is past the end of 5 elements");
}

TEST_F(NSMutableArrayTest, AddsAnElementOfItself)
{
    for (int i = 0; i < 100; ++i) // through several growths of its room
        array->insertObject(array->objectAtIndex(0), 0);
    EXPECT_THAT(array->objectAtIndex(50), Equals("a"));
}

TEST_F(NSMutableArrayTest, HoldsNoNull)
{
    EXPECT_EQ(raisedBy([&] { array->addObject(nullptr); }),
        "NSInvalidArgumentException: addObject: an array cannot hold null; store NSNull");
    EXPECT_EQ(nameRaisedBy([&] { array->insertObject(nullptr, 0); }), "NSInvalidArgumentException");
    EXPECT_EQ(nameRaisedBy([&] { array->replaceObjectAtIndex(0, nullptr); }), "NSInvalidArgumentException");
    EXPECT_THAT(array, Equals(NSArray::of("a", "b", "c")));
}

TEST_F(NSMutableArrayTest, RemovesByIndex)
{
    array->removeObjectAtIndex(1);
    EXPECT_THAT(array, Equals(NSArray::of("a", "c")));
    array->removeLastObject();
    EXPECT_THAT(array, Equals(NSArray::of("a")));
    array->removeObjectsInRange({ 0, 1 });
    EXPECT_EQ(nameRaisedBy([&] { array->removeObjectAtIndex(0); }), "NSRangeException");
    EXPECT_EQ(nameRaisedBy([&] { array->removeLastObject(); }), "NSRangeException");
    EXPECT_EQ(nameRaisedBy([&] { array->removeObjectsInRange({ 0, 1 }); }), "NSRangeException");
}

TEST_F(NSMutableArrayTest, RemovesAllThatAreEqual)
{
    auto list = NSMutableArray::of("a", 1, "a", 1.0, "b");
    list->removeObject("a");
    EXPECT_THAT(list, Equals(NSArray::of(1, 1, "b")));
    list->removeObject(1);
    list->removeObject("z");
    list->removeObject(nullptr);
    EXPECT_THAT(list, Equals(NSArray::of("b")));
}

TEST_F(NSMutableArrayTest, RemovesAnObjectThatItAloneHolds)
{
    array->removeObject(array->elementAtPosition(0));
    EXPECT_THAT(array, Equals(NSArray::of("b", "c")));
}

TEST_F(NSMutableArrayTest, RemovesAllThatAreTheSame)
{
    NSRef<NSString> one = NSString::stringWithFormat("%@", "b");
    array->addObject(one);
    array->insertObject(one, 0);
    array->removeObjectIdenticalTo(one);
    array->removeObjectIdenticalTo(nullptr);
    EXPECT_THAT(array, Equals(NSArray::of("a", "b", "c")));
}

TEST_F(NSMutableArrayTest, RemovesAllEqualToAnyOfAList)
{
    auto list = NSMutableArray::of("a", 1, "a", 1.0, "b");
    list->removeObjectsInArray(NSArray::of("b", 1, "z"));
    EXPECT_THAT(list, Equals(NSArray::of("a", "a")));
    list->removeObjectsInArray(nullptr);
    list->removeObjectsInArray(list);
    EXPECT_EQ(list->count(), 0u);
}

TEST_F(NSMutableArrayTest, Replaces)
{
    array->replaceObjectAtIndex(1, 5);
    EXPECT_THAT(array, Equals(NSArray::of("a", 5, "c")));
    EXPECT_EQ(nameRaisedBy([&] { array->replaceObjectAtIndex(3, 5); }), "NSRangeException");
}

TEST_F(NSMutableArrayTest, Exchanges)
{
    array->exchangeObjectAtIndex(0, 2);
    array->exchangeObjectAtIndex(1, 1);
    EXPECT_THAT(array, Equals(NSArray::of("c", "b", "a")));
    EXPECT_EQ(nameRaisedBy([&] { array->exchangeObjectAtIndex(0, 3); }), "NSRangeException");
    EXPECT_EQ(nameRaisedBy([&] { array->exchangeObjectAtIndex(3, 0); }), "NSRangeException");
}

TEST_F(NSMutableArrayTest, TakesTheElementsOfAnother)
{
    array->setArray(NSArray::of(1, 2));
    EXPECT_THAT(array, Equals(NSArray::of(1, 2)));
    array->setArray(array);
    EXPECT_THAT(array, Equals(NSArray::of(1, 2)));
    array->setArray(nullptr);
    EXPECT_EQ(array->count(), 0u);
}

TEST_F(NSMutableArrayTest, TakesAnyCapacityAsAHint)
{
    EXPECT_EQ(NSMutableArray::arrayWithCapacity(~NSUInteger { 0 })->count(), 0u);
}

TEST_F(NSMutableArrayTest, RaisesAtTheNextStepOfALoopThatChangedIt)
{
    EXPECT_EQ(nameRaisedBy([&] {
        for (const NSId& element : array)
            array->removeObject(element);
    }),
        "NSGenericException");
    EXPECT_EQ(nameRaisedBy([&] {
        for (const NSId& element : array)
            array->addObject(element);
    }),
        "NSGenericException");
    EXPECT_THAT(raisedBy([&] {
        for (const NSId& element : array)
            array->replaceObjectAtIndex(0, element);
    }),
        testing::MatchesRegex(
            "NSGenericException: Collection <NSMutableArray: 0x[0-9a-f]+> was mutated while being "
            "enumerated\\."));
}

TEST_F(NSMutableArrayTest, RaisesAtTheNextStepOfAnEnumeratorAfterAChange)
{
    auto elements = array->objectEnumerator();
    EXPECT_THAT(elements->nextObject(), Equals("a"));
    array->removeAllObjects();
    EXPECT_EQ(nameRaisedBy([&] { (void)elements->nextObject(); }), "NSGenericException");
}

TEST_F(NSMutableArrayTest, KeepsTheElementOfALoopAlive)
{
    for (const NSId& element : array) {
        array->removeAllObjects();
        EXPECT_THAT(element, Equals("a")); // the loop is not taken further
        break;
    }
}

TEST_F(NSMutableArrayTest, IsWholeWhenARemovedElementEnds)
{
    std::string seen;
    auto add = [&] {
        auto meddler = NSMake<Meddler>();
        meddler->atEnd = [&] { seen += std::to_string(array->count()) + " "; };
        array->addObject(meddler);
    };
    add();
    array->removeLastObject();
    add();
    array->removeObjectIdenticalTo(array->lastObject());
    add();
    array->replaceObjectAtIndex(3, "d");
    add();
    array->setArray(NSArray::of("a"));
    add();
    array->removeAllObjects();
    EXPECT_EQ(seen, "3 3 4 1 0 ");
}

TEST_F(NSMutableArrayTest, SurvivesAnElementThatEmptiesItWhenCompared)
{
    auto meddler = NSMake<Meddler>();
    meddler->atComparison = [&] { array->removeAllObjects(); };
    EXPECT_EQ(array->indexOfObject(meddler), NSNotFound);
    array->setArray(NSArray::of(1, 2, 3));
    EXPECT_EQ(nameRaisedBy([&] { array->removeObject(meddler); }), "NSGenericException");
    array->setArray(NSArray::of(meddler, 2, 3));
    EXPECT_FALSE(array->isEqual(NSArray::of(1, 2, 3)));
}

TEST_F(NSMutableArrayTest, AnswersDynamicCalls)
{
    NSSend(array, NSSelector("insertObject:atIndex:"), NSId("x"), 1);
    NSSend(array, NSSelector("exchangeObjectAtIndex:withObjectAtIndex:"), 0, 3);
    NSSend(array, NSSelector("removeObject:"), NSId("b"));
    EXPECT_THAT(array, Equals(NSArray::of("c", "x", "a")));
}

}
