// How the operations are reached: by null, by selector, and past a class with methods of its own.
#include "LUMFoundation/LUMArray.h"

#include "LUMPlatform/NSArray.h"
#include "LUMPlatform/NSClass.h"
#include "LUMPlatform/NSIndexSet.h"
#include "LUMPlatform/NSNumber.h"
#include "LUMPlatform/NSSend.h"
#include "LUMPlatform/NSString.h"
#include "tests/fixture.h"
#include "tests/object_matchers.h"

namespace {

NSComparisonResult ascending(const NSId& first, const NSId& second, void*)
{
    return NSCast<NSNumber>(first)->compare(NSCast<NSNumber>(second));
}

struct LUMArrayNullTest : ObjectTest { };

TEST_F(LUMArrayNullTest, ANullArrayAnswersNullFalseOrZero)
{
    const NSSelector selector("description");
    const NSRef<NSArray> some = NSArray::of(1);
    EXPECT_EQ(LUMArray::car(nullptr), nullptr);
    EXPECT_EQ(LUMArray::cdr(nullptr), nullptr);
    EXPECT_EQ(LUMArray::deepCopy(nullptr), nullptr);
    EXPECT_EQ(LUMArray::mutableDeepCopy(nullptr), nullptr);
    EXPECT_EQ(LUMArray::reverseArray(nullptr), nullptr);
    EXPECT_EQ(LUMArray::subarrayMatchingSelector(nullptr, selector, some), nullptr);
    EXPECT_EQ(LUMArray::subsetOfArrayAtIndexes(nullptr, NSIndexSet::indexSetWithIndex(0)), nullptr);
    EXPECT_EQ(LUMArray::makeObjectsPerformSelectorWithResults(nullptr, selector), nullptr);
    EXPECT_EQ(LUMArray::makeObjectsPerformSelectorWithResultsWithObject(nullptr, selector, some), nullptr);
    EXPECT_EQ(LUMArray::makeObjectsPerformSelectorWithResultsWithObjects(nullptr, selector, some), nullptr);
    EXPECT_FALSE(LUMArray::hasPrefix(nullptr, NSArray::array()));
    EXPECT_EQ(LUMArray::bsearchComparatorFunction(nullptr, some, &ascending, nullptr), 0u);
    EXPECT_EQ(LUMArray::bsearchSelector(nullptr, some, selector), 0u);
    EXPECT_EQ(LUMArray::dequeueObjectFromFront(nullptr), nullptr);
}

TEST_F(LUMArrayNullTest, ANullArrayIsNotChanged)
{
    LUMArray::reverse(nullptr);
    LUMArray::insertObjects(nullptr, NSArray::of(1), 0);
    LUMArray::moveObjectsAtIndexes(nullptr, NSIndexSet::indexSetWithIndex(0), 0);
    LUMArray::moveObjectAtIndex(nullptr, 0, 1);
    LUMArray::replaceObjectIdenticalTo(nullptr, NSNumber::numberWithInt(1), nullptr);
    LUMArray::replaceObject(nullptr, NSNumber::numberWithInt(1), nullptr);
}

struct LUMArraySelectorTest : ObjectTest {
    template<typename R = NSId, typename... Arguments>
    R send(const char* selector, const Arguments&... arguments)
    {
        return NSSend<R>(list, NSSelector(selector), arguments...);
    }

    NSRef<NSMutableArray> list = NSMutableArray::of(1, 3, 5);
};

TEST_F(LUMArraySelectorTest, ReachesHeadAndTail)
{
    EXPECT_THAT(send("car"), Equals(1));
    EXPECT_THAT(send("cdr"), Equals(NSArray::of(3, 5)));
}

TEST_F(LUMArraySelectorTest, ReachesCopies)
{
    EXPECT_THAT(send("deepCopy"), Equals(list));
    EXPECT_THAT(send("mutableDeepCopy"), Equals(list));
    EXPECT_THAT(send("reverseArray"), Equals(NSArray::of(5, 3, 1)));
}

TEST_F(LUMArraySelectorTest, ReachesChoices)
{
    const NSId three = NSNumber::numberWithInt(3);
    EXPECT_THAT(
        send("subarrayMatchingSelector:withObject:", NSSelector("compare:"), three), Equals(NSArray::of(3)));
    EXPECT_THAT(send("subsetOfArrayAtIndexes:", NSIndexSet::indexSetWithIndex(2)), Equals(NSArray::of(5)));
    EXPECT_TRUE(send<bool>("hasPrefix:", NSArray::of(1, 3)));
}

TEST_F(LUMArraySelectorTest, ReachesResults)
{
    const NSSelector text("stringValue");
    EXPECT_THAT(send("makeObjectsPerformSelectorWithResults:", text), Equals(NSArray::of("1", "3", "5")));
    EXPECT_THAT(send("makeObjectsPerformSelectorWithResults:withObject:", NSSelector("nobody:"), list),
        Equals(NSArray::array()));
    EXPECT_THAT(send("makeObjectsPerformSelectorWithResults:withObjects:", NSSelector("nobody:"), list),
        Equals(NSArray::array()));
}

TEST_F(LUMArraySelectorTest, ReachesSearches)
{
    const NSId four = NSNumber::numberWithInt(4);
    EXPECT_EQ(send<NSUInteger>("bsearch:selector:", four, NSSelector("compare:")), 2u);
    EXPECT_EQ(send<NSUInteger>(
                  "bsearch:comparatorFunction:context:", four, &ascending, static_cast<void*>(nullptr)),
        2u);
}

TEST_F(LUMArraySelectorTest, ReachesChanges)
{
    send<void>("reverse");
    EXPECT_THAT(list, Equals(NSArray::of(5, 3, 1)));
    send<void>("insertObjects:atIndex:", NSArray::of(7), 1);
    EXPECT_THAT(list, Equals(NSArray::of(5, 7, 3, 1)));
    send<void>("moveObjectAtIndex:toIndex:", 0, 2);
    EXPECT_THAT(list, Equals(NSArray::of(7, 3, 5, 1)));
    send<void>("moveObjectsAtIndexes:toIndex:", NSIndexSet::of({ 0, 1 }), 2);
    EXPECT_THAT(list, Equals(NSArray::of(5, 1, 7, 3)));
    send<void>("replaceObject:withObject:", NSNumber::numberWithInt(7), NSNumber::numberWithInt(8));
    send<void>("replaceObjectIdenticalTo:withObject:", list->objectAtIndex(3), NSNumber::numberWithInt(4));
    EXPECT_THAT(list, Equals(NSArray::of(5, 1, 8, 4)));
    EXPECT_THAT(send("dequeueObjectFromFront"), Equals(5));
}

TEST_F(LUMArraySelectorTest, ReachesDeprecatedOperations)
{
    EXPECT_THAT(send("closestNumberToNumber:", NSNumber::numberWithInt(4)), Equals(3));
    send<void>("removeObjects:", NSArray::of(1, 3));
    EXPECT_THAT(list, Equals(NSArray::of(5)));
}

/// A list with its own idea of a first element, of finding, and of turning round.
class Stack : public NSMutableArray {
public:
    static const NSClass& classObject()
    {
        static constexpr NSMethod kMethods[] = {
            NSMethodOf<"car", &Stack::top>(),
            NSMethodOf<"hasPrefix:", &Stack::hasSuffix>(),
            NSMethodOf<"bsearch:comparatorFunction:context:", &Stack::search>(),
            NSMethodOf<"reverse", &Stack::turn>(),
            NSMethodOf<"insertObjects:atIndex:", &Stack::insertOnTop>(),
        };
        static const NSClass& type = NSClass::define("Stack", &NSMutableArray::classObject(), kMethods);
        return type;
    }

    NSId top() { return lastObject(); }
    bool hasSuffix(const NSRef<NSArray>& other) { return NSEqual(lastObject(), other->lastObject()); }
    NSUInteger search(const NSId&, NSComparisonFunction function, void*)
    {
        mSearchedWith = function;
        return 77;
    }
    /// Turns round as every array does, and tells.
    void turn()
    {
        ++turns;
        NSResult result;
        NSMutableArray::classObject().instanceMethod(NSSelector("reverse"))->invoke(*this, {}, result);
    }
    void insertOnTop(const NSRef<NSArray>& objects, std::uint32_t) { addObjectsFromArray(objects); }

    int turns = 0;
    NSComparisonFunction searchedWith() const { return mSearchedWith; }

protected:
    Stack() = default;
    ~Stack() override = default;

private:
    NSComparisonFunction mSearchedWith = nullptr;
};

struct LUMArrayOverridingTest : ObjectTest {
    LUMArrayOverridingTest() { stack->addObjectsFromArray(NSArray::of(1, 2, 3)); }
    NSRef<Stack> stack = NSMake<Stack>();
};

TEST_F(LUMArrayOverridingTest, TheReceiversOwnMethodAnswersTheFunction)
{
    EXPECT_THAT(LUMArray::car(stack), Equals(3));
    EXPECT_TRUE(LUMArray::hasPrefix(stack, NSArray::of(9, 3)));
}

TEST_F(LUMArrayOverridingTest, TheReceiversOwnMethodAnswersTheSelector)
{
    EXPECT_THAT(NSSend<NSId>(stack, NSSelector("car")), Equals(3));
}

TEST_F(LUMArrayOverridingTest, OtherOperationsAreTheLibrarys)
{
    EXPECT_THAT(LUMArray::cdr(stack), Equals(NSArray::of(2, 3)));
    EXPECT_THAT(LUMArray::dequeueObjectFromFront(stack), Equals(1));
}

TEST_F(LUMArrayOverridingTest, OneOperationAsksTheReceiverForAnother)
{
    EXPECT_EQ(LUMArray::bsearchSelector(stack, 2, NSSelector("compare:")), 77u);
    EXPECT_NE(stack->searchedWith(), nullptr);
    LUMArray::moveObjectAtIndex(stack, 1, 0);
    EXPECT_THAT(stack, Equals(NSArray::of(1, 3, 2)));
}

TEST_F(LUMArrayOverridingTest, AMethodMayCallTheOneItOverrides)
{
    LUMArray::reverse(stack);
    EXPECT_EQ(stack->turns, 1);
    EXPECT_THAT(stack, Equals(NSArray::of(3, 2, 1)));
}

/// Drops the last reference to itself while one of its operations runs.
class Fleeting : public NSMutableArray {
public:
    static const NSClass& classObject()
    {
        static constexpr NSMethod kMethods[] = { NSMethodOf<"reverse", &Fleeting::drop>() };
        static const NSClass& type = NSClass::define("Fleeting", &NSMutableArray::classObject(), kMethods);
        return type;
    }
    void drop()
    {
        *holder = nullptr;
        addObject("still here");
    }

    NSRef<NSMutableArray>* holder = nullptr;

protected:
    Fleeting() = default;
    ~Fleeting() override = default;
};

TEST_F(LUMArrayOverridingTest, TheReceiverOutlivesTheCall)
{
    auto fleeting = NSMake<Fleeting>();
    NSRef<NSMutableArray> list = fleeting;
    fleeting->holder = &list;
    fleeting = nullptr;
    LUMArray::reverse(list);
    EXPECT_EQ(list, nullptr);
}

}
