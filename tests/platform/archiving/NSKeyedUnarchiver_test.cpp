#include "LUMPlatform/NSKeyedUnarchiver.h"

#include "LUMPlatform/NSKeyedArchiver.h"
#include "LUMPlatform/NSMutableString.h"
#include "LUMPlatform/NSSend.h"
#include "tests/fixture.h"
#include "tests/platform/archiving/archive_list.h"
#include "tests/platform/archiving/node.h"
#include "tests/raised_by.h"

namespace {

constexpr const char* kUnarchive = "NSInvalidUnarchiveOperationException";
constexpr const char* kArgument = "NSInvalidArgumentException";

class NSKeyedUnarchiverTest : public ObjectTest {
protected:
    /// An unarchiver of one value under the key "v".
    template<typename Encode> static NSRef<NSKeyedUnarchiver> afterEncoding(const Encode& encode)
    {
        auto data = NSMutableData::data();
        auto archiver = NSKeyedArchiver::initForWritingWithMutableData(data);
        encode(*archiver);
        archiver->finishEncoding();
        return NSKeyedUnarchiver::initForReadingWithData(data);
    }
    static std::string raisedReading(const NSRef<NSData>& data)
    {
        return nameRaisedBy([&] { return NSKeyedUnarchiver::unarchiveObjectWithData(data); });
    }
};

TEST_F(NSKeyedUnarchiverTest, RaisesForWhatIsNoKeyedArchive)
{
    EXPECT_EQ(raisedReading(nullptr), kArgument);
    EXPECT_EQ(raisedReading(NSData::data()), kArgument);
    EXPECT_EQ(raisedReading(NSData::dataWithBytes("bplist00", 8)), kArgument);
    EXPECT_EQ(raisedReading(NSData::dataWithBytes("\x04\x0bstreamtyped", 13)), kArgument);
    EXPECT_EQ(raisedReading(dataOfList(NSArray::of(1))), kArgument);
    EXPECT_EQ(raisedReading(dataOfList(NSDictionary::of({ { "$archiver", "NSKeyedArchiver" } }))), kArgument);
}

TEST_F(NSKeyedUnarchiverTest, RaisesForAnotherArchiverOrVersion)
{
    auto frame = [](const NSId& archiver, const NSId& version, const NSId& top, const NSId& objects) {
        return dataOfList(NSDictionary::of({ { "$archiver", archiver }, { "$version", version },
            { "$top", top }, { "$objects", objects } }));
    };
    const NSId top = NSDictionary::dictionary();
    const NSId objects = NSArray::array();
    EXPECT_EQ(raisedReading(frame("NSKeyedArchiver", 100000, top, objects)), "");
    EXPECT_EQ(raisedReading(frame("OtherArchiver", 100000, top, objects)), kArgument);
    EXPECT_EQ(raisedReading(frame("NSKeyedArchiver", 100001, top, objects)), kArgument);
    EXPECT_EQ(raisedReading(frame("NSKeyedArchiver", "100000", top, objects)), kArgument);
    EXPECT_EQ(raisedReading(frame("NSKeyedArchiver", 100000, objects, objects)), kArgument);
    EXPECT_EQ(raisedReading(frame("NSKeyedArchiver", 100000, top, top)), kArgument);
}

TEST_F(NSKeyedUnarchiverTest, ReadsAnAbsentKeyAsNothing)
{
    auto unarchiver = afterEncoding([](NSCoder& coder) { coder.encodeInt(1, "v"); });
    EXPECT_FALSE(unarchiver->containsValueForKey("other"));
    EXPECT_FALSE(unarchiver->decodeObjectForKey("other"));
    EXPECT_FALSE(unarchiver->decodeBoolForKey("other"));
    EXPECT_EQ(unarchiver->decodeInt64ForKey("other"), 0);
    EXPECT_EQ(unarchiver->decodeDoubleForKey("other"), 0);
    NSUInteger length = 7;
    EXPECT_EQ(unarchiver->decodeBytesForKey("other", &length), nullptr);
    EXPECT_EQ(length, 0u);
    EXPECT_FALSE(unarchiver->decodeObject());
    EXPECT_TRUE(unarchiver->containsValueForKey("v"));
}

TEST_F(NSKeyedUnarchiverTest, RaisesForAValueOfAnotherType)
{
    auto read = [](auto encode, auto decode) {
        auto unarchiver = afterEncoding(encode);
        return nameRaisedBy([&] { return decode(*unarchiver); });
    };
    auto integer = [](NSCoder& coder) { coder.encodeInt(1, "v"); };
    auto real = [](NSCoder& coder) { coder.encodeDouble(1, "v"); };
    auto object = [](NSCoder& coder) { coder.encodeObjectForKey("1", "v"); };
    EXPECT_EQ(read(real, [](NSCoder& coder) { return coder.decodeIntForKey("v"); }), kUnarchive);
    EXPECT_EQ(read(integer, [](NSCoder& coder) { return coder.decodeFloatForKey("v"); }), kUnarchive);
    EXPECT_EQ(read(integer, [](NSCoder& coder) { return coder.decodeBoolForKey("v"); }), kUnarchive);
    EXPECT_EQ(read(integer, [](NSCoder& coder) { return coder.decodeObjectForKey("v"); }), kUnarchive);
    EXPECT_EQ(read(object, [](NSCoder& coder) { return coder.decodeBytesForKey("v", nullptr); }), kUnarchive);
    EXPECT_EQ(read(object, [](NSCoder& coder) { return coder.decodeInt64ForKey("v"); }), kUnarchive);
    EXPECT_EQ(
        read(object, [](NSCoder& coder) { return coder.decodeObjectForKey<NSArray>("v"); }), kUnarchive);
}

TEST_F(NSKeyedUnarchiverTest, RaisesForAnIntegerThatDoesNotFit)
{
    auto unarchiver = afterEncoding([](NSCoder& coder) { coder.encodeInt64(std::int64_t { 1 } << 31, "v"); });
    EXPECT_EQ(nameRaisedBy([&] { return unarchiver->decodeInt32ForKey("v"); }), "NSRangeException");
    EXPECT_EQ(unarchiver->decodeInt64ForKey("v"), std::int64_t { 1 } << 31);
    unarchiver = afterEncoding([](NSCoder& coder) { coder.encodeValuesOfObjCTypes(~std::uint64_t { 0 }); });
    NSInteger value = 0;
    EXPECT_EQ(nameRaisedBy([&] {
        unarchiver->decodeValuesOfObjCTypes(value);
        return 0;
    }),
        "NSRangeException");
}

TEST_F(NSKeyedUnarchiverTest, ReadsFloatsAndDoublesAsEitherType)
{
    EXPECT_EQ(
        afterEncoding([](NSCoder& coder) { coder.encodeFloat(0.5F, "v"); })->decodeDoubleForKey("v"), 0.5);
    EXPECT_EQ(
        afterEncoding([](NSCoder& coder) { coder.encodeDouble(0.1, "v"); })->decodeFloatForKey("v"), 0.1F);
}

TEST_F(NSKeyedUnarchiverTest, RaisesOnceItHasRaisedOrFinished)
{
    auto unarchiver = afterEncoding([](NSCoder& coder) {
        coder.encodeInt(1, "v");
        coder.encodeInt(2, "w");
    });
    EXPECT_EQ(nameRaisedBy([&] { return unarchiver->decodeBoolForKey("v"); }), kUnarchive);
    EXPECT_EQ(nameRaisedBy([&] { return unarchiver->decodeIntForKey("w"); }), kUnarchive);
    unarchiver = afterEncoding([](NSCoder& coder) { coder.encodeInt(1, "v"); });
    unarchiver->finishDecoding();
    unarchiver->finishDecoding();
    EXPECT_EQ(nameRaisedBy([&] { return unarchiver->decodeIntForKey("v"); }), kUnarchive);
}

TEST_F(NSKeyedUnarchiverTest, RaisesForNullKeysAndNames)
{
    auto unarchiver = afterEncoding([](NSCoder&) {});
    EXPECT_EQ(nameRaisedBy([&] { return unarchiver->decodeIntForKey(nullptr); }), kArgument);
    EXPECT_EQ(nameRaisedBy([&] { return unarchiver->containsValueForKey(nullptr); }), kArgument);
    EXPECT_EQ(nameRaisedBy([&] {
        unarchiver->setClass(NSArray::classObject(), nullptr);
        return 0;
    }),
        kArgument);
}

TEST_F(NSKeyedUnarchiverTest, ReadsContentsThatStandInASlotOfTheirOwn)
{
    auto read = NSKeyedUnarchiver::unarchiveObjectWithData(archiveOfSlots(
        NSArray::of(slotObject(2, "NS.string", uid(3)), classRecord("NSMutableString"), "text")));
    EXPECT_TRUE(NSCast<NSMutableString>(read));
    EXPECT_TRUE(NSEqual(read, "text"));
    read = NSKeyedUnarchiver::unarchiveObjectWithData(archiveOfSlots(
        NSArray::of(slotObject(2, "NS.data", NSData::dataWithBytes("a", 1)), classRecord("NSData"))));
    EXPECT_TRUE(NSEqual(read, NSData::dataWithBytes("a", 1)));
}

TEST_F(NSKeyedUnarchiverTest, RaisesForSlotsThatAreWrong)
{
    EXPECT_EQ(raisedReading(archiveOfSlots(NSArray::array())), kUnarchive) << "no such slot";
    EXPECT_EQ(raisedReading(archiveOfSlots(NSArray::array(), uid(0xFFFF'FFFF))), kUnarchive);
    EXPECT_EQ(raisedReading(archiveOfSlots(NSArray::array(), "text")), kUnarchive) << "no UID";
    EXPECT_EQ(raisedReading(archiveOfSlots(NSArray::of(NSArray::array()))), kUnarchive) << "an array";
    EXPECT_EQ(raisedReading(archiveOfSlots(NSArray::of(uid(1)))), kUnarchive) << "a UID";
    EXPECT_EQ(raisedReading(archiveOfSlots(NSArray::of(NSDictionary::dictionary()))), kUnarchive)
        << "no class";
    EXPECT_EQ(raisedReading(archiveOfSlots(NSArray::of(slotObject(1, "a", 1)))), kUnarchive)
        << "its own class";
    EXPECT_EQ(raisedReading(archiveOfSlots(NSArray::of(slotObject(2, "a", 1), "NSArray"))), kUnarchive)
        << "a class without a record";
    EXPECT_EQ(
        raisedReading(archiveOfSlots(NSArray::of(NSDictionary::of({ { "$class", "NSNull" } })))), kUnarchive);
}

TEST_F(NSKeyedUnarchiverTest, RaisesForCollectionsThatAreWrong)
{
    auto raised = [](const char* name, std::initializer_list<NSDictionary::Entry> entries) {
        auto slot = NSMutableDictionary::dictionaryWithDictionary(NSDictionary::of(entries));
        slot->setObject(uid(2), "$class");
        return raisedReading(archiveOfSlots(NSArray::of(slot->copy(), classRecord(name), "text")));
    };
    EXPECT_EQ(raised("NSArray", {}), kUnarchive);
    EXPECT_EQ(raised("NSArray", { { "NS.objects", "text" } }), kUnarchive);
    EXPECT_EQ(raised("NSArray", { { "NS.objects", NSArray::of("text") } }), kUnarchive) << "no UID";
    EXPECT_EQ(raised("NSArray", { { "NS.objects", NSArray::of(uid(0)) } }), kUnarchive) << "null";
    EXPECT_EQ(raised("NSSet", { { "NS.objects", NSArray::of(uid(9)) } }), kUnarchive);
    EXPECT_EQ(raised("NSDictionary", { { "NS.objects", NSArray::of(uid(3)) } }), kUnarchive);
    EXPECT_EQ(
        raised("NSDictionary", { { "NS.keys", NSArray::array() }, { "NS.objects", NSArray::of(uid(3)) } }),
        kUnarchive);
    EXPECT_EQ(raised("NSMutableString", {}), kUnarchive);
    EXPECT_EQ(raised("NSMutableString", { { "NS.string", uid(1) } }), kUnarchive) << "itself";
    EXPECT_EQ(raised("NSNumber", { { "NS.number", 1 } }), kUnarchive);
    EXPECT_EQ(raised("NSURL", { { "NS.relative", uid(3) }, { "NS.base", uid(3) } }), kUnarchive);
    EXPECT_EQ(raised("NSUUID", { { "NS.uuidbytes", NSData::dataWithBytes("a", 1) } }), kUnarchive);
    EXPECT_EQ(raised("NSDate", { { "NS.time", "now" } }), kUnarchive);
}

TEST_F(NSKeyedUnarchiverTest, RaisesForAKeyThatCannotBeCopied)
{
    NSCoding::registerClass<Node>();
    EXPECT_EQ(
        raisedReading(archiveOfSlots(NSArray::of(
            NSDictionary::of({ { "NS.keys", NSArray::of(uid(3)) }, { "NS.objects", NSArray::of(uid(3)) },
                { "$class", uid(2) } }),
            classRecord("NSDictionary"), NSDictionary::of({ { "$class", uid(4) } }), classRecord("Node")))),
        kUnarchive);
}

TEST_F(NSKeyedUnarchiverTest, RaisesForAnArchiveCutOffAnywhere)
{
    auto whole = NSKeyedArchiver::archivedDataWithRootObject(NSArray::of("a", Node::named("b")));
    for (NSUInteger length = 0; length < whole->length(); ++length)
        EXPECT_NE(raisedReading(whole->subdataWithRange({ 0, length })), "") << length;
}

TEST_F(NSKeyedUnarchiverTest, KeepsToItsLimits)
{
    auto data = NSKeyedArchiver::archivedDataWithRootObject(Node::named("a", Node::named("b")));
    auto raised = [&](const NSDecodingLimits& limits) {
        return nameRaisedBy([&] {
            return NSKeyedUnarchiver::initForReadingWithData(data, limits)->decodeObjectForKey("root");
        });
    };
    EXPECT_EQ(raised({ .bytes = data->length(), .depth = 2 }), "");
    EXPECT_EQ(raised({ .bytes = data->length() - 1 }), kUnarchive);
    EXPECT_EQ(raised({ .objects = 5 }), kUnarchive);
    EXPECT_EQ(raised({ .depth = 1 }), kUnarchive);
}

TEST_F(NSKeyedUnarchiverTest, KeepsToTheSameLimitsInXml)
{
    const NSId list = NSPropertyListSerialization::propertyListWithData(
        NSKeyedArchiver::archivedDataWithRootObject(Node::named("a", Node::named("b"))));
    auto data = NSPropertyListSerialization::dataWithPropertyList(list, NSPropertyListXMLFormat_v1_0);
    auto raised = [&](const NSDecodingLimits& limits) {
        return nameRaisedBy([&] {
            return NSKeyedUnarchiver::initForReadingWithData(data, limits)->decodeObjectForKey("root");
        });
    };
    EXPECT_EQ(raised({ .depth = 2 }), "") << "the list itself is deeper";
    EXPECT_EQ(raised({ .depth = 1 }), kUnarchive);
    EXPECT_EQ(raised({ .objects = 5 }), kUnarchive);
}

TEST_F(NSKeyedUnarchiverTest, AnswersDynamicCalls)
{
    auto unarchiver = afterEncoding([](NSCoder& coder) { coder.encodeObjectForKey("text", "v"); });
    EXPECT_TRUE(
        NSEqual(NSSend<NSId>(unarchiver, NSSelector("decodeObjectForKey:"), NSRef<NSString>("v")), "text"));
    NSSend(unarchiver, NSSelector("finishDecoding"));
}

}
