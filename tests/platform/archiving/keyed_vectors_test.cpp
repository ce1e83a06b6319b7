// Keyed archives of each class, read, and written with the very same slots.
#include "LUMPlatform/NSKeyedArchiver.h"
#include "LUMPlatform/NSKeyedUnarchiver.h"
#include "LUMPlatform/NSPropertyListSerialization.h"
#include "LUMPlatform/NSURL.h"
#include "LUMPlatform/NSUUID.h"
#include "tests/fixture.h"
#include "tests/platform/archiving/graph.h"
#include "tests/source_folder.h"

#include <filesystem>
#include <functional>
#include <set>

namespace {

NSRef<NSData> vectorNamed(const std::string& name)
{
    return NSData::dataWithContentsOfFile(inSourceFolder("tests/vectors/keyed/" + name + ".plist"));
}

NSId slotsOf(const NSRef<NSData>& archive)
{
    auto list = NSCast<NSDictionary>(NSPropertyListSerialization::propertyListWithData(archive));
    return list ? list->objectForKey("$objects") : nullptr;
}

struct Case {
    std::string name;
    std::function<NSId()> make;
};

void PrintTo(const Case& row, std::ostream* stream)
{
    *stream << row.name;
}

NSRef<NSURL> base()
{
    return NSURL::URLWithString("https://www.example.com");
}

NSId uuid()
{
    const unsigned char bytes[] = { 0x71, 0xdc, 0x06, 0x8e, 0x34, 0x20, 0x45, 0xff, 0x91, 0x9e, 0x3a, 0x26,
        0x7d, 0x55, 0xec, 0x22 };
    return NSUUID::initWithUUIDBytes(bytes);
}

NSId bytes123()
{
    return NSData::dataWithBytes("\1\2\3", 3);
}

const Case kCases[] = {
    { "array", [] { return NSArray::of("shared", "shared", 1, NSNull::null()); } },
    { "array_empty", [] { return NSArray::array(); } },
    { "data", [] { return bytes123(); } },
    { "date", [] { return NSDate::dateWithTimeIntervalSinceReferenceDate(700000000.5); } },
    { "dictionary",
        [] {
            return NSDictionary::of({ { "a", 1 } });
        } },
    { "mutable_array", [] { return NSMutableArray::of("shared"); } },
    { "mutable_data", [] { return bytes123()->mutableCopy(); } },
    { "mutable_dictionary",
        [] {
            return NSMutableDictionary::of({ { "a", 1 } });
        } },
    { "mutable_set", [] { return NSSet::of(1)->mutableCopy(); } },
    { "nested",
        [] {
            return NSDictionary::of({ { "list",
                NSArray::of("x", NSDate::dateWithTimeIntervalSinceReferenceDate(0),
                    NSData::dataWithBytes("\xff", 1)) } });
        } },
    { "null", [] { return NSNull::null(); } },
    { "number_bool", [] { return NSId(true); } },
    { "number_double", [] { return NSId(1.5); } },
    { "number_int", [] { return NSId(42); } },
    { "number_m1", [] { return NSId(-1); } },
    { "set", [] { return NSSet::of(1); } },
    { "string", [] { return NSId("hello"); } },
    { "string_null_literal", [] { return NSId("$null"); } },
    { "url_file", [] { return NSURL::fileURLWithPath("/tmp/a b.txt"); } },
    { "url_relative", [] { return NSURL::URLWithString("foo.xml", base()); } },
    { "uuid", [] { return uuid(); } },
};

class KeyedVectors : public ObjectTest, public testing::WithParamInterface<Case> { };

TEST_P(KeyedVectors, AreRead)
{
    const NSId expected = GetParam().make();
    const NSId read = NSKeyedUnarchiver::unarchiveObjectWithData(vectorNamed(GetParam().name));
    EXPECT_TRUE(NSEqual(read, expected)) << read;
    EXPECT_EQ(&read->isa(), &expected->isa());
}

TEST_P(KeyedVectors, AreWrittenWithTheSameSlots)
{
    const NSId written = slotsOf(NSKeyedArchiver::archivedDataWithRootObject(GetParam().make()));
    EXPECT_TRUE(NSEqual(written, slotsOf(vectorNamed(GetParam().name)))) << written;
}

INSTANTIATE_TEST_SUITE_P(
    Classes, KeyedVectors, testing::ValuesIn(kCases), [](const auto& row) { return row.param.name; });

TEST(KeyedVectorFiles, AreAllRead)
{
    std::set<std::string> read { "custom_cycle" };
    for (const Case& row : kCases)
        read.insert(row.name);
    std::set<std::string> there;
    for (const auto& file : std::filesystem::directory_iterator(inSourceFolder("tests/vectors/keyed")))
        there.insert(file.path().stem());
    EXPECT_EQ(there, read);
}

/// A class that writes one value of each kind, and itself.
class TestPoint : public NSObject, public NSCoding {
public:
    static const NSClass& classObject()
    {
        static const NSClass& type = NSClass::define("kax.TestPoint", &NSObject::classObject(), {});
        return type;
    }
    static NSRef<TestPoint> initWithCoder(NSCoder& coder)
    {
        auto point = NSMake<TestPoint>();
        coder.announceObject(point);
        NSUInteger length = 0;
        const void* bytes = coder.decodeBytesForKey("bytes", &length);
        point->story = NSString::stringWithFormat("x %d name %@ i32 %d ratio %g f32 %g flag %d bytes %@ "
                                                  "nothing %@ dollar %d other is itself %d",
            coder.decodeIntForKey("x"), coder.decodeObjectForKey("name"), coder.decodeInt32ForKey("i32"),
            coder.decodeDoubleForKey("ratio"), coder.decodeFloatForKey("f32"), coder.decodeBoolForKey("flag"),
            NSData::dataWithBytes(bytes, length), coder.decodeObjectForKey("nothing"),
            coder.containsValueForKey("$dollar"), coder.decodeObjectForKey("other") == point);
        return point;
    }
    void encodeWithCoder(NSCoder& coder) const override
    {
        coder.encodeInt(1, "x");
        coder.encodeObjectForKey("p", "name");
        coder.encodeInt32(-7, "i32");
        coder.encodeDouble(0.5, "ratio");
        coder.encodeFloat(1.5F, "f32");
        coder.encodeBool(true, "flag");
        coder.encodeBytesForKey("\1\2\3", 3, "bytes");
        coder.encodeObjectForKey(nullptr, "nothing");
        coder.encodeObjectForKey(nullptr, "$dollar");
        coder.encodeObjectForKey(NSShare(const_cast<TestPoint*>(this)), "other");
    }

    void undoDecoding() noexcept { }

    NSRef<NSString> story;
};

class KeyedVectorOfACustomClass : public ObjectTest {
protected:
    KeyedVectorOfACustomClass() { NSCoding::registerClass<TestPoint>(); }
};

TEST_F(KeyedVectorOfACustomClass, IsRead)
{
    auto point = NSCast<TestPoint>(NSKeyedUnarchiver::unarchiveObjectWithData(vectorNamed("custom_cycle")));
    ASSERT_TRUE(point);
    EXPECT_EQ(point->story->utf8(),
        "x 1 name p i32 -7 ratio 0.5 f32 1.5 flag 1 bytes <010203> nothing (null) dollar 1 other is itself "
        "1");
}

TEST_F(KeyedVectorOfACustomClass, IsWrittenWithTheSameSlots)
{
    const NSId written = slotsOf(NSKeyedArchiver::archivedDataWithRootObject(NSMake<TestPoint>()));
    EXPECT_TRUE(NSEqual(written, slotsOf(vectorNamed("custom_cycle")))) << written;
}

TEST_F(KeyedVectorOfACustomClass, IsReadInXmlAsWell)
{
    const NSId list = NSPropertyListSerialization::propertyListWithData(vectorNamed("custom_cycle"));
    auto xml = NSPropertyListSerialization::dataWithPropertyList(list, NSPropertyListXMLFormat_v1_0);
    EXPECT_TRUE(NSCast<TestPoint>(NSKeyedUnarchiver::unarchiveObjectWithData(xml)));
}

}
