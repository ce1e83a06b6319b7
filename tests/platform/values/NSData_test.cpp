#include "LUMPlatform/NSData.h"

#include "LUMPlatform/NSSend.h"
#include "LUMPlatform/NSString.h"
#include "tests/fixture.h"
#include "tests/object_matchers.h"
#include "tests/raised_by.h"

#include <cstring>
#include <string_view>

namespace {

NSRef<NSData> dataOf(std::string_view bytes)
{
    return NSData::dataWithBytes(bytes.data(), bytes.size());
}

struct NSDataTest : ObjectTest {
    NSRef<NSData> data = dataOf("abcdef");
};

TEST_F(NSDataTest, CopiesTheBytesItIsMadeOf)
{
    char bytes[] = "abc";
    auto copy = NSData::dataWithBytes(bytes, 3);
    bytes[0] = 'z';
    EXPECT_THAT(copy, Equals(dataOf("abc")));
    EXPECT_EQ(copy->length(), 3u);
}

TEST_F(NSDataTest, HoldsNothing)
{
    EXPECT_EQ(NSData::data()->length(), 0u);
    EXPECT_TRUE(NSData::data()->bytes().empty());
    EXPECT_THAT(NSData::dataWithBytes(nullptr, 0), Equals(NSData::data()));
    EXPECT_THAT(NSData::dataWithBytesNoCopy(nullptr, 0), Equals(NSData::data()));
    EXPECT_THAT(NSData::dataWithData(nullptr), Equals(NSData::data()));
}

TEST_F(NSDataTest, RaisesForALengthWithoutBytes)
{
    EXPECT_EQ(nameRaisedBy([] { (void)NSData::dataWithBytes(nullptr, 1); }), "NSInvalidArgumentException");
    EXPECT_EQ(
        nameRaisedBy([] { (void)NSData::dataWithBytesNoCopy(nullptr, 1); }), "NSInvalidArgumentException");
}

TEST_F(NSDataTest, IsNullWhenThereIsNoMemory)
{
    EXPECT_FALSE(NSData::dataWithBytes("a", PTRDIFF_MAX));
    EXPECT_FALSE(NSData::dataWithBytes("a", ~NSUInteger { 0 }));
}

TEST_F(NSDataTest, TakesABlockOverWithoutCopying)
{
    void* block = std::malloc(3);
    std::memcpy(block, "abc", 3);
    auto taken = NSData::dataWithBytesNoCopy(block, 3); // the address sanitizer sees that it is freed
    EXPECT_EQ(static_cast<const void*>(taken->bytes().data()), block);
}

TEST_F(NSDataTest, GivesItsBlockToTheFunctionItCameWith)
{
    static int freed = 0;
    char bytes[] = "abc";
    auto taken =
        NSData::dataWithBytesNoCopy(bytes, 3, [](void* block) { freed += *static_cast<char*>(block); });
    taken = nullptr;
    EXPECT_EQ(freed, 'a');
    taken = NSData::dataWithBytesNoCopy(bytes, 3, nullptr);
    taken = nullptr;
    EXPECT_STREQ(bytes, "abc");
}

TEST_F(NSDataTest, GivesAPartOfItself)
{
    EXPECT_THAT(data->subdataWithRange({ 1, 3 }), Equals(dataOf("bcd")));
    EXPECT_THAT(data->subdataWithRange({ 6, 0 }), Equals(NSData::data()));
    EXPECT_THAT(NSData::data()->subdataWithRange({ 0, 0 }), Equals(NSData::data()));
}

TEST_F(NSDataTest, RaisesForARangeOutside)
{
    EXPECT_EQ(raisedBy([&] {
        (void)data->subdataWithRange({ 2, 5 });
    }),
        "NSRangeException: subdataWithRange: range {2, 5} reaches past the end of 6 bytes");
    EXPECT_EQ(nameRaisedBy([&] { (void)data->subdataWithRange({ 7, 0 }); }), "NSRangeException");
    EXPECT_EQ(nameRaisedBy([&] {
        (void)data->subdataWithRange({ 2, ~NSUInteger { 0 } });
    }),
        "NSRangeException");
}

TEST_F(NSDataTest, IsEqualByBytes)
{
    EXPECT_TRUE(data->isEqual(dataOf("abcdef")));
    EXPECT_EQ(data->hash(), dataOf("abcdef")->hash());
    EXPECT_FALSE(data->isEqual(dataOf("abcdeg")));
    EXPECT_FALSE(data->isEqual(dataOf("abc")));
    EXPECT_FALSE(data->isEqual("abcdef"));
    EXPECT_FALSE(data->isEqual(nullptr));
}

TEST_F(NSDataTest, DescribesItselfInHexadecimal)
{
    EXPECT_EQ(dataOf({ "\x00\x11\xaa\xbb\xcc\xdd", 6 })->description()->utf8(), "<0011aabb ccdd>");
    EXPECT_EQ(NSData::data()->description()->utf8(), "<>");
}

TEST_F(NSDataTest, IsItsOwnCopyOnlyWhenImmutable)
{
    EXPECT_TRUE(data->copy() == data);
    auto changing = NSCast<NSMutableData>(data->mutableCopy());
    NSId copy = changing->copy();
    changing->setLength(1);
    EXPECT_THAT(copy, Equals(data));
    EXPECT_FALSE(NSCast<NSMutableData>(copy));
    EXPECT_THAT(NSData::dataWithData(changing), Equals(dataOf("a")));
}

TEST_F(NSDataTest, AnswersDynamicCalls)
{
    EXPECT_EQ(NSSend<NSUInteger>(data, NSSelector("length")), 6u);
    EXPECT_THAT(NSSend<NSId>(data, NSSelector("subdataWithRange:"), NSRange { 0, 2 }), Equals(dataOf("ab")));
}

}
