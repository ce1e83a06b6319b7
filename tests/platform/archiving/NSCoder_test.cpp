#include "LUMPlatform/NSCoder.h"

#include "LUMPlatform/NSData.h"
#include "LUMPlatform/NSDictionary.h"
#include "LUMPlatform/NSNumber.h"
#include "LUMPlatform/NSSend.h"
#include "tests/fixture.h"
#include "tests/raised_by.h"

namespace {

/// A coder that holds values in a dictionary, and reads groups from one list.
class TableCoder : public NSCoder {
public:
    bool allowsKeyedCoding() const override { return true; }
    void encodeObjectForKey(const NSId& object, const NSRef<NSString>& key) override { put(object, key); }
    void encodeInt64(std::int64_t value, const NSRef<NSString>& key) override { put(value, key); }
    std::int64_t decodeInt64ForKey(const NSRef<NSString>& key) override
    {
        return mTable->objectForKey<NSNumber>(key)->longLongValue();
    }
    double decodeDoubleForKey(const NSRef<NSString>& key) override
    {
        return mTable->objectForKey<NSNumber>(key)->doubleValue();
    }

protected:
    NSId objectForKey(const NSRef<NSString>& key) override { return mTable->objectForKey(key); }
    NSId nextObject() override { return mTable->objectForKey("next"); }
    void encodeGroup(std::span<const NSArgument> values) override
    {
        std::string types;
        for (const NSArgument& value : values)
            types += value.code();
        put(NSRef<NSString>(types), "next");
    }
    void decodeGroup(std::span<const char* const> types, std::span<NSResult> results) override
    {
        ASSERT_EQ(types.size(), 2u);
        results[0].set(NSArgument::of(7).convertedTo(types[0]));
        results[1].take(NSId("text"));
    }

private:
    void put(const NSId& object, const NSRef<NSString>& key) { mTable->setObject(object, key); }
    NSRef<NSMutableDictionary> mTable = NSMutableDictionary::dictionary();
};

/// One that can do nothing.
class MuteCoder : public NSCoder { };

class Announced : public NSObject {
public:
    void undoDecoding() noexcept { }
};

class NSCoderTest : public ObjectTest {
protected:
    NSRef<NSCoder> coder = NSMake<TableCoder>();
    NSRef<NSCoder> mute = NSMake<MuteCoder>();
};

TEST_F(NSCoderTest, ReadsIntegersOfEveryWidthFromOneType)
{
    coder->encodeInt(-7, "a");
    coder->encodeInt32(8, "b");
    coder->encodeInteger(9, "c");
    EXPECT_EQ(coder->decodeInt64ForKey("a"), -7);
    EXPECT_EQ(coder->decodeIntegerForKey("b"), 8);
    EXPECT_EQ(coder->decodeIntForKey("c"), 9);
    EXPECT_EQ(coder->decodeInt32ForKey("c"), 9);
}

TEST_F(NSCoderTest, RaisesForAnIntegerThatDoesNotFit)
{
    coder->encodeInt64(std::int64_t { 1 } << 31, "big");
    EXPECT_EQ(nameRaisedBy([&] { return coder->decodeIntForKey("big"); }), "NSRangeException");
    EXPECT_EQ(nameRaisedBy([&] { return coder->decodeInt32ForKey("big"); }), "NSRangeException");
    EXPECT_EQ(coder->decodeInt64ForKey("big"), std::int64_t { 1 } << 31);
}

TEST_F(NSCoderTest, GivesAnObjectAsTheClassAskedFor)
{
    coder->encodeObjectForKey("text", "key");
    EXPECT_EQ(coder->decodeObjectForKey<NSString>("key")->utf8(), "text");
    EXPECT_FALSE(coder->decodeObjectForKey<NSString>("none"));
}

TEST_F(NSCoderTest, RaisesForAnObjectOfAnotherClass)
{
    coder->encodeObjectForKey("text", "key");
    EXPECT_EQ(raisedBy([&] { return coder->decodeObjectForKey<NSData>("key"); }),
        "NSInvalidUnarchiveOperationException: the archive holds an object of class NSString where another "
        "is "
        "asked for");
}

TEST_F(NSCoderTest, PassesGroupsWithTheirTypes)
{
    coder->encodeValuesOfObjCTypes(1, 2.5F, NSId(), std::uint8_t { 3 });
    EXPECT_EQ(coder->decodeObject<NSString>()->utf8(), "if@C");
    NSInteger number = 0;
    NSRef<NSString> text;
    coder->decodeValuesOfObjCTypes(number, text);
    EXPECT_EQ(number, 7);
    EXPECT_EQ(text->utf8(), "text");
}

TEST_F(NSCoderTest, AnswersDynamicCalls)
{
    NSSend(coder, NSSelector("encodeInt:forKey:"), 5, NSRef<NSString>("five"));
    EXPECT_EQ(NSSend<int>(coder, NSSelector("decodeIntForKey:"), NSRef<NSString>("five")), 5);
    EXPECT_TRUE(NSSend<bool>(coder, NSSelector("allowsKeyedCoding")));
}

TEST_F(NSCoderTest, RaisesForWhatACoderCannotDo)
{
    const NSRef<NSString> key = "key";
    EXPECT_FALSE(mute->allowsKeyedCoding());
    EXPECT_EQ(raisedBy([&] {
        mute->encodeInt(1, key);
        return 0;
    }),
        "NSInvalidArgumentException: NSCoder does not answer encodeInt64:forKey:");
    EXPECT_EQ(nameRaisedBy([&] { return mute->decodeFloatForKey(key); }), "NSInvalidArgumentException");
    EXPECT_EQ(nameRaisedBy([&] { return mute->containsValueForKey(key); }), "NSInvalidArgumentException");
    EXPECT_EQ(nameRaisedBy([&] { return mute->decodeObject(); }), "NSInvalidArgumentException");
    EXPECT_EQ(nameRaisedBy([&] {
        mute->encodeValuesOfObjCTypes(1);
        return 0;
    }),
        "NSInvalidArgumentException");
    EXPECT_EQ(nameRaisedBy([&] { return mute->decodeBytesWithReturnedLength(nullptr); }),
        "NSInvalidArgumentException");
    EXPECT_EQ(nameRaisedBy([&] {
        mute->announceObject(NSMake<Announced>());
        return 0;
    }),
        "");
}

}
