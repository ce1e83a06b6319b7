#include "LUMFoundation/LUMArray.h"

#include "LUMPlatform/NSArray.h"
#include "LUMPlatform/NSIndexSet.h"
#include "LUMPlatform/NSMutableString.h"
#include "LUMPlatform/NSNumber.h"
#include "LUMPlatform/NSSend.h"
#include "tests/fixture.h"
#include "tests/object_matchers.h"
#include "tests/raised_by.h"

namespace {

struct LUMArrayTest : ObjectTest {
    NSRef<NSArray> empty = NSArray::array();
    NSRef<NSArray> one = NSArray::of("a");
    NSRef<NSArray> three = NSArray::of("a", "b", "c");
};

TEST_F(LUMArrayTest, CarIsTheFirstElement)
{
    EXPECT_EQ(LUMArray::car(three), three->objectAtIndex(0));
}

TEST_F(LUMArrayTest, CarOfAnEmptyArrayIsNull)
{
    EXPECT_EQ(LUMArray::car(empty), nullptr);
}

TEST_F(LUMArrayTest, CdrIsAllButTheFirstElement)
{
    EXPECT_THAT(LUMArray::cdr(three), Equals(NSArray::of("b", "c")));
}

TEST_F(LUMArrayTest, CdrOfASingleElementIsAnEmptyArray)
{
    EXPECT_THAT(LUMArray::cdr(one), Equals(empty));
}

TEST_F(LUMArrayTest, CdrOfAnEmptyArrayIsNull)
{
    EXPECT_EQ(LUMArray::cdr(empty), nullptr);
}

TEST_F(LUMArrayTest, CdrOfAMutableArrayDoesNotFollowItsChanges)
{
    auto list = NSMutableArray::of("a", "b");
    auto rest = LUMArray::cdr(list);
    list->removeAllObjects();
    EXPECT_THAT(rest, Equals(NSArray::of("b")));
    EXPECT_EQ(NSCast<NSMutableArray>(rest), nullptr);
}

TEST_F(LUMArrayTest, DeepCopyHoldsCopiesOfTheElements)
{
    auto text = NSMutableString::stringWithString("a");
    auto copy = LUMArray::deepCopy(NSArray::of(text));
    text->appendString("b");
    EXPECT_THAT(copy, Equals(NSArray::of("a")));
    EXPECT_EQ(NSCast<NSMutableArray>(copy), nullptr);
}

TEST_F(LUMArrayTest, DeepCopyIsOneLevelDeep)
{
    auto text = NSMutableString::stringWithString("a");
    auto inner = NSMutableArray::of(text);
    auto copy = LUMArray::deepCopy(NSArray::of(inner));
    EXPECT_NE(copy->objectAtIndex(0), inner);
    EXPECT_EQ(copy->objectAtIndex<NSArray>(0)->objectAtIndex(0), text);
}

TEST_F(LUMArrayTest, DeepCopyRaisesForAnElementThatCannotBeCopied)
{
    class Unique : public NSObject { };
    EXPECT_EQ(nameRaisedBy([] { return LUMArray::deepCopy(NSArray::of(NSMake<Unique>())); }),
        "NSInvalidArgumentException");
}

TEST_F(LUMArrayTest, MutableDeepCopyCanBeChanged)
{
    auto text = NSMutableString::stringWithString("a");
    auto copy = LUMArray::mutableDeepCopy(NSArray::of(text));
    text->appendString("b");
    copy->addObject("c");
    EXPECT_THAT(copy, Equals(NSArray::of("a", "c")));
}

TEST_F(LUMArrayTest, ReverseArrayIsANewArrayInReverseOrder)
{
    EXPECT_THAT(LUMArray::reverseArray(three), Equals(NSArray::of("c", "b", "a")));
    EXPECT_THAT(three, Equals(NSArray::of("a", "b", "c")));
    EXPECT_THAT(LUMArray::reverseArray(empty), Equals(empty));
}

TEST_F(LUMArrayTest, ReverseArrayOfAMutableOneCannotBeChanged)
{
    EXPECT_EQ(NSCast<NSMutableArray>(LUMArray::reverseArray(NSMutableArray::of(1, 2))), nullptr);
}

TEST_F(LUMArrayTest, SubarrayMatchingSelectorKeepsWhatComparesAsTheSame)
{
    auto words = NSArray::of("Intro", "verse", "INTRO", "outro");
    EXPECT_THAT(LUMArray::subarrayMatchingSelector(words, NSSelector("caseInsensitiveCompare:"), "intro"),
        Equals(NSArray::of("Intro", "INTRO")));
}

TEST_F(LUMArrayTest, SubarrayMatchingSelectorSendsToTheElementWithTheObject)
{
    class Telling : public NSObject {
    public:
        static const NSClass& classObject()
        {
            static constexpr NSMethod kMethods[] = { NSMethodOf<"order:", &Telling::order>() };
            static const NSClass& type = NSClass::define("Telling", &NSObject::classObject(), kMethods);
            return type;
        }
        NSInteger order(const NSId& other)
        {
            asked = other;
            return 0;
        }
        NSId asked;
    };
    auto telling = NSMake<Telling>();
    NSId object = NSNumber::numberWithInt(7);
    auto matches = LUMArray::subarrayMatchingSelector(NSArray::of(telling), NSSelector("order:"), object);
    EXPECT_EQ(telling->asked, object);
    EXPECT_THAT(matches, Equals(NSArray::of(telling)));
}

TEST_F(LUMArrayTest, SubarrayMatchingSelectorRaisesForAnElementThatDoesNotAnswer)
{
    EXPECT_EQ(nameRaisedBy([&] {
        return LUMArray::subarrayMatchingSelector(NSArray::of(1), NSSelector("caseInsensitiveCompare:"), "a");
    }),
        "NSInvalidArgumentException");
}

TEST_F(LUMArrayTest, SubarrayMatchingSelectorFindsNothingForNull)
{
    EXPECT_THAT(LUMArray::subarrayMatchingSelector(three, NSSelector("compare:"), nullptr), Equals(empty));
}

TEST_F(LUMArrayTest, SubsetOfArrayAtIndexesFollowsTheIndexesUpwards)
{
    EXPECT_THAT(
        LUMArray::subsetOfArrayAtIndexes(three, NSIndexSet::of({ 2, 0 })), Equals(NSArray::of("a", "c")));
}

TEST_F(LUMArrayTest, SubsetOfArrayAtIndexesRaisesForAnIndexPastTheEnd)
{
    EXPECT_EQ(nameRaisedBy(
                  [&] { return LUMArray::subsetOfArrayAtIndexes(three, NSIndexSet::indexSetWithIndex(3)); }),
        "NSRangeException");
}

TEST_F(LUMArrayTest, SubsetOfArrayAtIndexesIsEmptyForNoIndexes)
{
    EXPECT_THAT(LUMArray::subsetOfArrayAtIndexes(three, NSIndexSet::indexSet()), Equals(empty));
    EXPECT_THAT(LUMArray::subsetOfArrayAtIndexes(three, nullptr), Equals(empty));
}

TEST_F(LUMArrayTest, HasPrefixComparesTheFirstElements)
{
    EXPECT_TRUE(LUMArray::hasPrefix(three, NSArray::of("a", "b")));
    EXPECT_TRUE(LUMArray::hasPrefix(three, NSMutableArray::of("a", "b", "c")));
    EXPECT_FALSE(LUMArray::hasPrefix(three, NSArray::of("b")));
    EXPECT_FALSE(LUMArray::hasPrefix(three, NSArray::of("a", "c")));
}

TEST_F(LUMArrayTest, HasPrefixIsFalseForALongerArray)
{
    EXPECT_FALSE(LUMArray::hasPrefix(NSArray::of("a", "b"), three));
}

TEST_F(LUMArrayTest, TheEmptyArrayIsAPrefixOfEveryArray)
{
    EXPECT_TRUE(LUMArray::hasPrefix(three, empty));
    EXPECT_TRUE(LUMArray::hasPrefix(empty, empty));
}

TEST_F(LUMArrayTest, NullIsAPrefixOfNoArray)
{
    EXPECT_FALSE(LUMArray::hasPrefix(three, nullptr));
    EXPECT_FALSE(LUMArray::hasPrefix(empty, nullptr));
}

}
