#include "LUMPlatform/NSSortDescriptor.h"

#include "LUMPlatform/NSClass.h"
#include "LUMPlatform/NSMutableString.h"
#include "LUMPlatform/NSSend.h"
#include "LUMPlatform/NSString.h"
#include "tests/fixture.h"
#include "tests/object_matchers.h"
#include "tests/raised_by.h"

namespace {

struct NSSortDescriptorTest : ObjectTest {
    NSRef<NSSortDescriptor> up = NSSortDescriptor::initWithKey(nullptr, true, NSSelector("compare:"));
    NSRef<NSSortDescriptor> down = NSSortDescriptor::initWithKey(nullptr, false, NSSelector("compare:"));
};

/// Answers a key path, and a comparison that gives large numbers.
class Card : public NSObject {
public:
    static const NSClass& classObject()
    {
        static constexpr NSMethod kMethods[] = {
            NSMethodOf<"valueForKeyPath:", &Card::valueForKeyPath>(),
            NSMethodOf<"distance:", &Card::distance>(),
        };
        static const NSClass& type = NSClass::define("Card", &NSObject::classObject(), kMethods);
        return type;
    }
    NSId valueForKeyPath(const NSRef<NSString>& path) const
    {
        return path->isEqualToString("value") ? mValue : nullptr;
    }
    NSInteger distance(const NSId&) const { return -1000; }

protected:
    explicit Card(const NSId& value) : mValue(value) { }
    ~Card() override = default;

private:
    NSId mValue;
};

TEST_F(NSSortDescriptorTest, ComparesTheObjectsThemselvesWithoutAKey)
{
    EXPECT_EQ(up->compareObject(1, 2), NSOrderedAscending);
    EXPECT_EQ(up->compareObject("b", "a"), NSOrderedDescending);
    EXPECT_EQ(up->compareObject(1, 1.0), NSOrderedSame);
}

TEST_F(NSSortDescriptorTest, TurnsTheOrderRoundWhenDescending)
{
    EXPECT_EQ(down->compareObject(1, 2), NSOrderedDescending);
    EXPECT_EQ(down->compareObject(2, 1), NSOrderedAscending);
    EXPECT_EQ(down->compareObject(1, 1), NSOrderedSame);
}

TEST_F(NSSortDescriptorTest, ComparesValuesUnderAKeyPath)
{
    auto byValue = NSSortDescriptor::initWithKey("value", true);
    EXPECT_EQ(byValue->compareObject(NSMake<Card>(1), NSMake<Card>(2)), NSOrderedAscending);
    EXPECT_EQ(byValue->selector(), NSSelector("compare:"));
}

TEST_F(NSSortDescriptorTest, PutsNullValuesFirst)
{
    auto byValue = NSSortDescriptor::initWithKey("value", true);
    EXPECT_EQ(byValue->compareObject(NSMake<Card>(nullptr), NSMake<Card>(2)), NSOrderedAscending);
    EXPECT_EQ(byValue->compareObject(NSMake<Card>(2), NSMake<Card>(nullptr)), NSOrderedDescending);
    EXPECT_EQ(byValue->compareObject(NSMake<Card>(nullptr), NSMake<Card>(nullptr)), NSOrderedSame);
    EXPECT_EQ(down->compareObject(nullptr, 1), NSOrderedDescending);
}

TEST_F(NSSortDescriptorTest, TakesAnyNumberForItsSign)
{
    auto byDistance = NSSortDescriptor::initWithKey(nullptr, true, NSSelector("distance:"));
    EXPECT_EQ(byDistance->compareObject(NSMake<Card>(1), NSMake<Card>(2)), NSOrderedAscending);
}

TEST_F(NSSortDescriptorTest, RaisesForAnObjectThatDoesNotAnswer)
{
    EXPECT_EQ(
        nameRaisedBy([&] { (void)up->compareObject(NSMake<NSObject>(), 1); }), "NSInvalidArgumentException");
}

TEST_F(NSSortDescriptorTest, RaisesForAnObjectWithoutTheKey)
{
    EXPECT_EQ(nameRaisedBy([] {
        (void)NSSortDescriptor::initWithKey("value", true)->compareObject(NSMake<NSObject>(), 1);
    }),
        "NSUnknownKeyException");
}

TEST_F(NSSortDescriptorTest, IsEqualByKeySelectorAndDirection)
{
    EXPECT_THAT(NSSortDescriptor::initWithKey("a", true), Equals(NSSortDescriptor::initWithKey("a", true)));
    EXPECT_EQ(up->hash(), NSSortDescriptor::initWithKey(nullptr, true)->hash());
    EXPECT_FALSE(up->isEqual(down));
    EXPECT_FALSE(up->isEqual(NSSortDescriptor::initWithKey("a", true)));
    EXPECT_TRUE(up->copy() == up);
}

TEST_F(NSSortDescriptorTest, AnswersDynamicCalls)
{
    EXPECT_EQ(NSSend<NSInteger>(up, NSSelector("compareObject:toObject:"), NSId(1), NSId(2)), -1);
    EXPECT_TRUE(NSSend<bool>(up, NSSelector("ascending")));
}

TEST_F(NSSortDescriptorTest, KeepsItsKeyWhenTheStringChanges)
{
    auto key = NSMutableString::stringWithString("title");
    auto descriptor = NSSortDescriptor::initWithKey(key, true);
    key->appendString("s");
    EXPECT_EQ(descriptor->key()->utf8(), "title");
}

}
