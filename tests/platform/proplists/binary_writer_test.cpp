#include "LUMPlatform/NSArray.h"
#include "LUMPlatform/NSData.h"
#include "LUMPlatform/NSDate.h"
#include "LUMPlatform/NSDictionary.h"
#include "LUMPlatform/NSError.h"
#include "LUMPlatform/NSNull.h"
#include "LUMPlatform/NSNumber.h"
#include "LUMPlatform/NSPropertyListSerialization.h"
#include "LUMPlatform/NSString.h"
#include "platform/proplists/property_list_uid.h"
#include "tests/fixture.h"
#include "tests/object_matchers.h"

#include <limits>

namespace {

class BinaryWriterTest : public ObjectTest {
protected:
    static NSRef<NSData> write(const NSId& object)
    {
        return NSPropertyListSerialization::dataWithPropertyList(object, NSPropertyListBinaryFormat_v1_0);
    }
    static std::string faultOf(const NSId& object)
    {
        NSRef<NSError> error;
        auto data = NSPropertyListSerialization::dataWithPropertyList(
            object, NSPropertyListBinaryFormat_v1_0, 0, &error);
        EXPECT_FALSE(data);
        EXPECT_EQ(error ? error->code() : 0, NSPropertyListWriteInvalidError);
        NSRef<NSString> text;
        EXPECT_FALSE(NSPropertyListSerialization::dataFromPropertyList(
            object, NSPropertyListBinaryFormat_v1_0, &text));
        EXPECT_TRUE(NSEqual(text, error->localizedDescription()));
        return text->utf8();
    }
    /// The bytes between the header and the table of a lone value.
    static std::string valueBytes(const NSId& object)
    {
        const auto data = write(object);
        auto bytes = data->bytes();
        bytes = bytes.subspan(8, bytes.size() - 8 - 1 - 32);
        return { reinterpret_cast<const char*>(bytes.data()), bytes.size() };
    }
    static NSId again(const NSId& object)
    {
        return NSPropertyListSerialization::propertyListWithData(write(object));
    }
};

using namespace std::string_literals;

TEST_F(BinaryWriterTest, EqualContentGivesEqualBytes)
{
    auto one = NSMutableDictionary::of({ { "a", NSArray::of("x", "x") }, { "b", 2 } });
    NSRef<NSString> shared = "x";
    auto other = NSDictionary::of({ { "b", 2LL }, { "a", NSArray::of(shared, shared) } });
    EXPECT_THAT(write(one), Equals(write(other)));
}

TEST_F(BinaryWriterTest, WritesKeysInTheOrderOfTheirCodeUnits)
{
    auto keys =
        NSCast<NSDictionary>(again(NSDictionary::of({ { "b", 1 }, { "\u00e9", 1 }, { "a1", 1 }, { "a", 1 },
                                 { "B", 1 }, { "", 1 }, { "aaaaab", 1 }, { "aaaaaa", 1 } })))
            ->allKeys();
    EXPECT_THAT(keys, Equals(NSArray::of("", "B", "a", "a1", "aaaaaa", "aaaaab", "b", "\u00e9")));
}

TEST_F(BinaryWriterTest, EqualValuesAreOneObject)
{
    const NSUInteger one = write(NSArray::of("a long text", 1'000'000))->length();
    const NSUInteger two = write(NSArray::of("a long text", 1'000'000, "a long text", 1'000'000))->length();
    EXPECT_EQ(two, one + 2); // two references
}

TEST_F(BinaryWriterTest, NumbersOfDifferentTypesAreDifferentObjects)
{
    auto numbers = NSCast<NSArray>(again(NSArray::of(1, 1.0, 1.0F, true)));
    EXPECT_STREQ(numbers->objectAtIndex<NSNumber>(0)->objCType(), "q");
    EXPECT_STREQ(numbers->objectAtIndex<NSNumber>(1)->objCType(), "d");
    EXPECT_STREQ(numbers->objectAtIndex<NSNumber>(2)->objCType(), "f");
    EXPECT_TRUE(numbers->objectAtIndex<NSNumber>(3)->isBool());
}

TEST_F(BinaryWriterTest, AllNotANumbersAreOne)
{
    const double other = -std::numeric_limits<double>::quiet_NaN();
    EXPECT_THAT(write(other), Equals(write(std::numeric_limits<double>::quiet_NaN())));
    EXPECT_EQ(valueBytes(std::numeric_limits<float>::quiet_NaN()), "\x22\x7f\xc0\0\0"s);
}

TEST_F(BinaryWriterTest, MutableValuesAreWrittenAsTheyStand)
{
    NSId text = NSRef<NSString>("ab")->mutableCopy();
    EXPECT_EQ(valueBytes(text),
        "\x52"
        "ab"s);
}

TEST_F(BinaryWriterTest, SurrogatesWithoutAPartnerAreKept)
{
    EXPECT_EQ(valueBytes(std::u16string_view(u"\xd800")), "\x61\xd8\0"s);
    EXPECT_THAT(again(std::u16string_view(u"\xdc00!")), Equals(std::u16string_view(u"\xdc00!")));
}

TEST_F(BinaryWriterTest, ReferencesOfArchivesTakeOneTwoOrFourBytes)
{
    using platform::PropertyListUid;
    EXPECT_EQ(valueBytes(PropertyListUid::withValue(255)), "\x80\xff"s);
    EXPECT_EQ(valueBytes(PropertyListUid::withValue(256)), "\x81\1\0"s);
    EXPECT_EQ(valueBytes(PropertyListUid::withValue(65536)), "\x83\0\1\0\0"s);
}

TEST_F(BinaryWriterTest, RefusesWhatIsNoPropertyList)
{
    EXPECT_EQ(faultOf(nullptr), "null is no property list.");
    EXPECT_EQ(faultOf(NSArray::of(NSNull::null())), "an object of class NSNull is no property list.");
    EXPECT_EQ(
        faultOf(NSDictionary::of({ { 1, "a" } })), "a key of class NSNumber in a dictionary is no string.");
}

TEST_F(BinaryWriterTest, RefusesContainersThatHoldThemselves)
{
    auto array = NSMutableArray::array();
    auto dictionary = NSMutableDictionary::of({ { "a", array } });
    array->addObject(dictionary);
    EXPECT_EQ(faultOf(array), "a container holds itself.");
    array->removeAllObjects();
    EXPECT_THAT(again(array), Equals(NSArray::array()));
}

TEST_F(BinaryWriterTest, RefusesMoreDepthThanReadersTake)
{
    NSId nested = "x";
    for (int level = 0; level < 1000; ++level)
        nested = NSArray::of(nested);
    EXPECT_TRUE(again(nested));
    EXPECT_EQ(faultOf(NSArray::of(nested)), "containers are nested more than 1000 deep.");
}

TEST_F(BinaryWriterTest, RefusesTheFormatsThatAreOnlyRead)
{
    NSRef<NSError> error;
    EXPECT_FALSE(
        NSPropertyListSerialization::dataWithPropertyList("a", NSPropertyListOpenStepFormat, 0, &error));
    EXPECT_EQ(error->code(), NSPropertyListWriteInvalidError);
    EXPECT_EQ(error->localizedDescription()->utf8(), "property lists are not written in format 1.");
    EXPECT_FALSE(NSPropertyListSerialization::dataFromPropertyList("a", NSPropertyListOpenStepFormat));
}

TEST_F(BinaryWriterTest, TheExampleOfTheFormatPageHolds)
{
    auto data = write(NSDictionary::of({ { "a", NSArray::of(1, true) }, { "b", "\u00e9" } }));
    const unsigned char expected[] = { 0x62, 0x70, 0x6C, 0x69, 0x73, 0x74, 0x30, 0x30, 0xD2, 0x01, 0x02, 0x03,
        0x06, 0x51, 0x61, 0x51, 0x62, 0xA2, 0x04, 0x05, 0x10, 0x01, 0x09, 0x61, 0x00, 0xE9, 0x08, 0x0D, 0x0F,
        0x11, 0x14, 0x16, 0x17, 0, 0, 0, 0, 0, 0, 1, 1, 0, 0, 0, 0, 0, 0, 0, 7, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0,
        0, 0, 0, 0, 0, 0x1A };
    EXPECT_THAT(data, Equals(NSData::dataWithBytes(expected, sizeof expected)));
}

/// Sizes where references and offsets grow by a byte.
class BinaryWriterSizes : public BinaryWriterTest, public testing::WithParamInterface<int> { };

TEST_P(BinaryWriterSizes, ComeBack)
{
    std::vector<NSId> objects;
    for (int i = 0; i < GetParam(); ++i)
        objects.emplace_back(NSString::stringWithFormat("%d", i));
    auto array = NSArray::arrayWithObjects(std::move(objects));
    EXPECT_THAT(again(array), Equals(array));
}

INSTANTIATE_TEST_SUITE_P(Counts, BinaryWriterSizes,
    testing::Values(0, 1, 14, 15, 253, 254, 255, 256, 65533, 65534, 65535, 65536, 70000));

}
