#include "LUMPlatform/NSData.h"
#include "LUMPlatform/NSSend.h"
#include "LUMPlatform/NSString.h"
#include "tests/fixture.h"
#include "tests/object_matchers.h"
#include "tests/raised_by.h"

#include <rapidcheck/gtest.h>

namespace {

NSRef<NSMutableData> dataOf(std::string_view bytes)
{
    return NSMutableData::dataWithBytes(bytes.data(), bytes.size());
}

struct NSMutableDataTest : ObjectTest {
    NSRef<NSMutableData> data = dataOf("abc");
};

TEST_F(NSMutableDataTest, Appends)
{
    data->appendBytes("de", 2);
    data->appendData(dataOf("f"));
    data->appendData(nullptr);
    data->appendBytes(nullptr, 0);
    EXPECT_THAT(data, Equals(dataOf("abcdef")));
}

TEST_F(NSMutableDataTest, AppendsItself)
{
    data->appendData(data);
    EXPECT_THAT(data, Equals(dataOf("abcabc")));
}

TEST_F(NSMutableDataTest, CutsOffAndAppendsZeros)
{
    data->setLength(1);
    data->setLength(3);
    EXPECT_THAT(data, Equals(dataOf({ "a\0\0", 3 })));
    EXPECT_THAT(NSMutableData::dataWithLength(2), Equals(dataOf({ "\0\0", 2 })));
    EXPECT_THAT(NSMutableData::dataWithCapacity(100), Equals(NSData::data()));
}

TEST_F(NSMutableDataTest, ReplacesARange)
{
    data->replaceBytesInRange({ 1, 1 }, "xyz", 3);
    EXPECT_THAT(data, Equals(dataOf("axyzc")));
    data->replaceBytesInRange({ 0, 4 }, nullptr, 0);
    EXPECT_THAT(data, Equals(dataOf("c")));
    data->replaceBytesInRange({ 1, 0 }, "d", 1);
    EXPECT_THAT(data, Equals(dataOf("cd")));
}

TEST_F(NSMutableDataTest, ReplacesARangeByBytesOfItsOwn)
{
    data->replaceBytesInRange({ 0, 0 }, data->bytes().data() + 1, 2);
    EXPECT_THAT(data, Equals(dataOf("bcabc")));
}

TEST_F(NSMutableDataTest, LetsItsBytesBeChangedInPlace)
{
    data->mutableBytes()[0] = std::byte { 'z' };
    EXPECT_THAT(data, Equals(dataOf("zbc")));
}

TEST_F(NSMutableDataTest, RaisesAndChangesNothingForABadRange)
{
    EXPECT_EQ(nameRaisedBy([&] { data->replaceBytesInRange({ 2, 2 }, "x", 1); }), "NSRangeException");
    EXPECT_EQ(nameRaisedBy([&] { data->appendBytes(nullptr, 1); }), "NSInvalidArgumentException");
    EXPECT_THAT(data, Equals(dataOf("abc")));
}

TEST_F(NSMutableDataTest, RaisesAndChangesNothingWithoutMemory)
{
    EXPECT_EQ(nameRaisedBy([&] { data->setLength(PTRDIFF_MAX); }), "NSMallocException");
    EXPECT_EQ(nameRaisedBy([&] { data->setLength(~NSUInteger { 0 }); }), "NSMallocException");
    EXPECT_EQ(nameRaisedBy([&] { data->appendBytes("a", ~NSUInteger { 0 } - 1); }), "NSMallocException");
    EXPECT_THAT(data, Equals(dataOf("abc")));
    EXPECT_FALSE(NSMutableData::dataWithLength(PTRDIFF_MAX));
    EXPECT_FALSE(NSMutableData::dataWithCapacity(~NSUInteger { 0 }));
}

TEST_F(NSMutableDataTest, AppendsByteByByteInLinearTime)
{
    for (int i = 0; i < 1'000'000; ++i)
        data->appendBytes("x", 1);
    EXPECT_EQ(data->length(), 1'000'003u);
}

TEST_F(NSMutableDataTest, AnswersDynamicCalls)
{
    NSSend(data, NSSelector("appendData:"), NSRef<NSData>(dataOf("d")));
    NSSend(data, NSSelector("setLength:"), 4);
    EXPECT_THAT(data, Equals(dataOf("abcd")));
}

RC_GTEST_PROP(NSMutableDataProperty, ReplacesLikeAString, (std::string content, std::string other))
{
    auto data = dataOf(content);
    const auto start = *rc::gen::inRange<std::size_t>(0, content.size() + 1);
    const auto length = *rc::gen::inRange<std::size_t>(0, content.size() - start + 1);
    data->replaceBytesInRange({ start, length }, other.data(), other.size());
    RC_ASSERT(data->isEqual(dataOf(content.replace(start, length, other))));
}

TEST_F(NSMutableDataTest, GivesBackWhatWasAppendedToPlainlyMadeData)
{
    auto made = NSMake<NSMutableData>(); // leak checkers see the end of it
    made->appendBytes("abc", 3);
    made->setLength(1000);
    EXPECT_EQ(made->length(), 1000u);
}

}
