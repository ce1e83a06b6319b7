#include "LUMPlatform/NSArray.h"
#include "LUMPlatform/NSDate.h"
#include "LUMPlatform/NSDictionary.h"
#include "LUMPlatform/NSError.h"
#include "LUMPlatform/NSNumber.h"
#include "LUMPlatform/NSPropertyListSerialization.h"
#include "LUMPlatform/NSString.h"
#include "platform/proplists/property_list_uid.h"
#include "tests/fixture.h"
#include "tests/object_matchers.h"
#include "tests/platform/proplists/binary_document.h"

namespace {

using namespace std::string_literals;

class BinaryReaderTest : public ObjectTest {
protected:
    static NSId read(const BinaryDocument& document, const NSDecodingLimits& limits = {})
    {
        return NSPropertyListSerialization::propertyListWithData(
            document.data(), NSPropertyListImmutable, nullptr, nullptr, limits);
    }
    static NSId value(const std::string& object) { return read(BinaryDocument({ object })); }
    static std::string faultOf(const BinaryDocument& document, const NSDecodingLimits& limits = {})
    {
        NSRef<NSError> error;
        NSPropertyListFormat format = NSPropertyListOpenStepFormat;
        NSId object = NSPropertyListSerialization::propertyListWithData(
            document.data(), NSPropertyListImmutable, &format, &error, limits);
        EXPECT_FALSE(object);
        EXPECT_EQ(format, NSPropertyListOpenStepFormat);
        if (!error)
            return "no error";
        EXPECT_EQ(error->code(), NSPropertyListReadCorruptError);
        EXPECT_EQ(error->domain()->utf8(), "NSCocoaErrorDomain");
        return error->localizedDescription()->utf8();
    }
    static std::string faultOf(const std::string& object) { return faultOf(BinaryDocument({ object })); }
};

TEST_F(BinaryReaderTest, ReadsIntegersOfAnyWidth)
{
    EXPECT_THAT(value("\x10\xff"s), Equals(255));
    EXPECT_THAT(value("\x13\0\0\0\0\0\0\0\5"s), Equals(5));
    EXPECT_THAT(value("\x13"s + std::string(8, '\xff')), Equals(-1));
    EXPECT_THAT(value("\x14"s + std::string(8, '\0') + std::string(8, '\xff')), Equals(~0ULL));
    EXPECT_THAT(value("\x14"s + std::string(16, '\xff')), Equals(-1));
    EXPECT_THAT(value("\x14"s + std::string(15, '\0') + "\7"), Equals(7));
    EXPECT_EQ(faultOf("\x14"s + std::string(7, '\0') + "\1" + std::string(8, '\0')),
        "an integer has more than 64 bits at byte 8.");
    EXPECT_EQ(faultOf("\x14"s + std::string(8, '\xff') + std::string(8, '\0')),
        "an integer has more than 64 bits at byte 8.");
}

TEST_F(BinaryReaderTest, ReadsFloatsOfFourBytes)
{
    auto number = NSCast<NSNumber>(value("\x22\x3f\xc0\0\0"s));
    EXPECT_EQ(number->doubleValue(), 1.5);
    EXPECT_STREQ(number->objCType(), "f");
}

TEST_F(BinaryReaderTest, ReadsReferencesOfArchives)
{
    using platform::PropertyListUid;
    EXPECT_THAT(value("\x80\5"s), Equals(PropertyListUid::withValue(5)));
    EXPECT_THAT(value("\x83\xff\xff\xff\xff"s), Equals(PropertyListUid::withValue(0xFFFF'FFFF)));
    EXPECT_THAT(value("\x8f"s + std::string(15, '\0') + "\1"), Equals(PropertyListUid::withValue(1)));
    EXPECT_EQ(faultOf("\x84\1\0\0\0\0"s), "a reference of an archive has more than 32 bits at byte 8.");
}

TEST_F(BinaryReaderTest, ReadsCountsOfAnyWidth)
{
    EXPECT_THAT(value("\x5f\x10\3abc"s), Equals("abc"));
    EXPECT_THAT(value("\x5f\x13\0\0\0\0\0\0\0\3abc"s), Equals("abc"));
    EXPECT_THAT(value("\x5f\x14"s + std::string(15, '\0') + "\3abc"), Equals("abc"));
}

TEST_F(BinaryReaderTest, AcceptsValuesSharedByContainers)
{
    NSId top = read(BinaryDocument({ "\xa2\1\1"s, "\xa2\2\2"s, "\x51x"s }));
    auto inner = NSArray::of("x", "x");
    EXPECT_THAT(top, Equals(NSArray::of(inner, inner)));
}

TEST_F(BinaryReaderTest, TheLastValueOfARepeatedKeyCounts)
{
    NSId top = read(BinaryDocument({ "\xd2\1\2\3\4"s, "\x51k"s, "\x51k"s, "\x10\1"s, "\x10\2"s }));
    EXPECT_THAT(top, Equals(NSDictionary::of({ { "k", 2 } })));
}

TEST_F(BinaryReaderTest, WhatARepeatedKeyReplacesCanStillBeReferredTo)
{
    // The top holds a dictionary that drops one of two equal keys and one of two values, then these again.
    NSId top =
        read(BinaryDocument({ "\xa5\1\2\3\4\5"s, "\xd2\2\3\4\5"s, "\x51k"s, "\x51k"s, "\x51v"s, "\x51w"s }));
    EXPECT_THAT(top, Equals(NSArray::of(NSDictionary::of({ { "k", "w" } }), "k", "k", "v", "w")));
}

TEST_F(BinaryReaderTest, TheTopMayBeAnyObject)
{
    BinaryDocument document({ "\x51x"s, "\xa1\0"s });
    document.top = 1;
    EXPECT_THAT(read(document), Equals(NSArray::of("x")));
    document.top = 2;
    EXPECT_EQ(faultOf(document), "the top object is none of the objects at byte 30.");
}

TEST_F(BinaryReaderTest, RefusesCycles)
{
    EXPECT_EQ(faultOf("\xa1\0"s), "object 0 contains itself.");
    EXPECT_EQ(faultOf(BinaryDocument({ "\xa1\1"s, "\xd1\2\0"s, "\x51k"s })), "object 0 contains itself.");
}

TEST_F(BinaryReaderTest, RefusesReferencesToNothing)
{
    EXPECT_EQ(faultOf("\xa1\1"s), "a reference names object 1 of 1.");
}

TEST_F(BinaryReaderTest, RefusesKeysThatAreNoStrings)
{
    EXPECT_EQ(faultOf(BinaryDocument({ "\xd1\1\1"s, "\x10\1"s })), "a key of a dictionary is no string.");
}

TEST_F(BinaryReaderTest, RefusesUnknownTypes)
{
    for (int marker : { 0x00, 0x0F, 0x15, 0x21, 0x24, 0x30, 0x34, 0x70, 0x90, 0xB0, 0xC0, 0xE0, 0xF0 })
        EXPECT_EQ(faultOf(std::string(1, static_cast<char>(marker)) + std::string(40, '\0')),
            "an object is of no known type at byte 8.")
            << marker;
}

TEST_F(BinaryReaderTest, RefusesObjectsThatReachIntoTheTable)
{
    EXPECT_EQ(faultOf("\x13\0"s), "an object is larger than the file at byte 8.");
    EXPECT_EQ(faultOf("\x33\0"s), "an object is larger than the file at byte 8.");
    EXPECT_EQ(faultOf("\x43xx"s), "an object is larger than the file at byte 8.");
    EXPECT_EQ(faultOf("\x62xx"s), "an object is larger than the file at byte 8.");
    EXPECT_EQ(faultOf("\xa3\0\0"s), "an object is larger than the file at byte 8.");
    EXPECT_EQ(faultOf("\xd2\0\0\0"s), "an object is larger than the file at byte 8.");
    EXPECT_EQ(faultOf("\x5f"s), "an object has no count at byte 8.");
    EXPECT_EQ(faultOf("\x5f\x51x"s), "an object has no count at byte 8.");
    EXPECT_EQ(faultOf("\x5f\x13\0\0"s), "an object has no count at byte 8.");
}

TEST_F(BinaryReaderTest, RefusesHugeCountsBeforeItTakesMemory)
{
    for (const char* marker : { "\x4f", "\x5f", "\x6f", "\xaf", "\xdf" }) {
        EXPECT_EQ(faultOf(marker + "\x13"s + std::string(8, '\x7f')),
            "an object is larger than the file at byte 8.");
        EXPECT_EQ(faultOf(marker + "\x13"s + std::string(8, '\xff')),
            "an object is larger than the file at byte 8.");
        EXPECT_EQ(faultOf(marker + "\x14\1"s + std::string(15, '\0')),
            "an object is larger than the file at byte 8.");
    }
    BinaryDocument document({ "\x51x"s });
    document.count = ~0ULL;
    EXPECT_EQ(faultOf(document), "the table of offsets has no room for all objects at byte 19.");
}

TEST_F(BinaryReaderTest, RefusesTablesThatLie)
{
    BinaryDocument document({ "\x51x"s });
    document.tableShift = 1000;
    EXPECT_EQ(faultOf(document), "the table of offsets is said to be outside the file at byte 35.");
    document.tableShift = static_cast<std::uint64_t>(-5);
    EXPECT_EQ(faultOf(document), "the table of offsets is said to be outside the file at byte 35.");
    document.tableShift = 0;
    document.offsetSize = 0;
    EXPECT_EQ(faultOf(document), "the offsets or references have an impossible size at byte 16.");
    document.offsetSize = 9;
    EXPECT_EQ(faultOf(document), "the offsets or references have an impossible size at byte 25.");
    document.offsetSize = 1;
    document.extraOffsets = { 7 };
    document.top = 1;
    EXPECT_EQ(faultOf(document), "an object is said to be outside the file at byte 11.");
    document.extraOffsets = { 10 };
    EXPECT_EQ(faultOf(document), "an object is said to be outside the file at byte 11.");
}

TEST_F(BinaryReaderTest, RefusesAFileCutShortAnywhere)
{
    auto whole = BinaryDocument({ "\xa2\1\2"s, "\x53xyz"s, "\x23" + std::string(8, '\1') }).data();
    for (NSUInteger length = platform::binary::kHeaderSize; length < whole->length(); ++length)
        EXPECT_FALSE(
            NSPropertyListSerialization::propertyListWithData(whole->subdataWithRange({ 0, length })));
}

TEST_F(BinaryReaderTest, RefusesTextThatIsNotAscii)
{
    EXPECT_EQ(faultOf("\x51\xe9"s), "a text in ASCII holds other characters at byte 8.");
}

TEST_F(BinaryReaderTest, RefusesObjectsThatShareBytes)
{
    BinaryDocument document({ "\xa2\1\2"s, "\x53xyz"s });
    document.extraOffsets = { 11 };
    EXPECT_EQ(faultOf(document), "objects overlap at byte 11.");
}

TEST_F(BinaryReaderTest, CountsASharedObjectEachTimeItIsReached)
{
    BinaryDocument::Objects doubling; // 2 to the power 60 objects in two hundred bytes
    for (char level = 1; level <= 60; ++level)
        doubling.push_back("\xa2"s + level + level);
    doubling.push_back("\x51x");
    EXPECT_EQ(faultOf(BinaryDocument(doubling)), "there are more than 268435456 objects.");
}

TEST_F(BinaryReaderTest, CountsWithoutGoingRoundAndStartingAnew)
{
    BinaryDocument::Objects doubling; // more objects than 64 bits can count
    for (char level = 1; level <= 70; ++level)
        doubling.push_back("\xa2"s + level + level);
    doubling.push_back("\x51x");
    NSDecodingLimits limits;
    limits.objects = ~NSUInteger { 0 };
    EXPECT_EQ(faultOf(BinaryDocument(doubling), limits), "there are more than 18446744073709551614 objects.");
}

TEST_F(BinaryReaderTest, KeepsToItsLimits)
{
    const BinaryDocument nested({ "\xa1\1"s, "\xa1\2"s, "\xa1\3"s, "\x51x"s });
    NSDecodingLimits limits;
    limits.depth = 3;
    limits.objects = 4;
    limits.bytes = nested.data()->length();
    EXPECT_TRUE(read(nested, limits));
    limits.depth = 2;
    EXPECT_EQ(faultOf(nested, limits), "containers are nested more than 2 deep at byte 12.");
    limits.objects = 3;
    EXPECT_EQ(faultOf(nested, limits), "there are more than 3 objects at byte 28.");
    --limits.bytes;
    EXPECT_EQ(faultOf(nested, limits), "there are more than 51 bytes.");
}

TEST_F(BinaryReaderTest, ReadsAndEndsAMillionContainersInsideEachOther)
{
    constexpr std::uint64_t kDepth = 1'000'000;
    BinaryDocument::Objects objects;
    for (std::uint64_t level = 1; level <= kDepth; ++level)
        objects.push_back("\xa1" + BinaryDocument::number(level, 3));
    objects.push_back("\x09");
    BinaryDocument document(std::move(objects));
    document.offsetSize = 4;
    document.referenceSize = 3;
    NSDecodingLimits limits;
    limits.depth = kDepth;
    EXPECT_TRUE(read(document, limits));
}

}
