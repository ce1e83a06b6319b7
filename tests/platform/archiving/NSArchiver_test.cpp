#include "LUMPlatform/NSArchiver.h"

#include "LUMPlatform/NSArray.h"
#include "LUMPlatform/NSDate.h"
#include "LUMPlatform/NSDictionary.h"
#include "LUMPlatform/NSError.h"
#include "LUMPlatform/NSMutableString.h"
#include "LUMPlatform/NSNull.h"
#include "LUMPlatform/NSNumber.h"
#include "LUMPlatform/NSSet.h"
#include "LUMPlatform/NSURL.h"
#include "LUMPlatform/NSUUID.h"
#include "LUMPlatform/NSUnarchiver.h"
#include "tests/fixture.h"
#include "tests/platform/archiving/archive_bytes.h"
#include "tests/platform/archiving/node.h"
#include "tests/raised_by.h"

#include <filesystem>

namespace {

class NSArchiverTest : public ObjectTest {
protected:
    /// What is behind the header.
    static std::string bodyOf(const NSId& root)
    {
        auto data = NSArchiver::archivedDataWithRootObject(root);
        constexpr NSUInteger kHeader = 16;
        return hex(data->bytes().subspan(kHeader));
    }
    static NSId again(const NSId& root)
    {
        return NSUnarchiver::unarchiveObjectWithData(NSArchiver::archivedDataWithRootObject(root));
    }
    /// Whether the archived object comes back equal, as another object of the same class.
    static bool comesBack(const NSId& root)
    {
        const NSId read = again(root);
        return NSEqual(read, root) && &read->isa() == &root->isa();
    }
};

TEST_F(NSArchiverTest, WritesTheHeaderOfALittleEndianArchive)
{
    EXPECT_EQ(hex(NSArchiver::archivedDataWithRootObject(nullptr)->bytes()),
        "04 0b 73 74 72 65 61 6d 74 79 70 65 64 81 e8 03 84 01 40 85");
}

TEST_F(NSArchiverTest, WritesAString)
{
    EXPECT_EQ(bodyOf("hé"),
        "84 01 40 84 84 84 08 4e 53 53 74 72 69 6e 67 01 84 84 08 4e 53 4f 62 6a 65 63 74 00 85 84 01 2b 03 "
        "68 c3 a9 86");
}

TEST_F(NSArchiverTest, RefersToWhatIsThereAlready)
{
    NSRef<NSString> a = "a";
    EXPECT_EQ(bodyOf(NSArray::of(a, a, "b")),
        "84 01 40 84 84 84 07 4e 53 41 72 72 61 79 00 84 84 08 4e 53 4f 62 6a 65 63 74 00 85 " // the array
        "84 01 69 03 " // "i", 3
        "92 84 84 84 08 4e 53 53 74 72 69 6e 67 01 94 84 01 2b 01 61 86 " // a new string
        "92 95 " // object 3 again
        "92 84 96 97 01 62 86 86"); // one of class 4, with a group of type 5
}

TEST_F(NSArchiverTest, WritesIntegersByTheirSize)
{
    auto data = NSMutableData::data();
    auto archiver = NSArchiver::initForWritingWithMutableData(data);
    data->setLength(0); // the header is not looked at
    for (int value : { 0, 127, 128, -1, -110, -111, 32767, 32768, -32769 })
        archiver->encodeValuesOfObjCTypes(value);
    archiver->encodeValuesOfObjCTypes(std::int64_t { 1 } << 40);
    EXPECT_EQ(hex(data->bytes()),
        "84 01 69 00 92 7f 92 81 80 00 92 ff 92 92 92 81 91 ff 92 81 ff 7f 92 82 00 80 00 00 92 82 ff 7f ff "
        "ff "
        "84 01 71 87 00 00 00 00 00 01 00 00");
}

TEST_F(NSArchiverTest, WritesWholeRealsAsIntegers)
{
    auto data = NSMutableData::data();
    auto archiver = NSArchiver::initForWritingWithMutableData(data);
    data->setLength(0);
    archiver->encodeValuesOfObjCTypes(1.0F, 0.5F, -0.0F, 0.5);
    EXPECT_EQ(
        hex(data->bytes()), "84 04 66 66 66 64 01 83 00 00 00 3f 83 00 00 00 80 83 00 00 00 00 00 00 e0 3f");
    EXPECT_EQ(archiver->archiverData(), data);
}

TEST_F(NSArchiverTest, BringsBackEveryClassOfThePlatform)
{
    EXPECT_TRUE(comesBack("text \xf0\x9f\x8e\xb5"));
    EXPECT_TRUE(comesBack(NSMutableString::stringWithString("text")));
    EXPECT_TRUE(comesBack(NSData::dataWithBytes("\0\1\2", 3)));
    EXPECT_TRUE(comesBack(NSMutableData::dataWithBytes("", 0)));
    EXPECT_TRUE(comesBack(NSDate::dateWithTimeIntervalSinceReferenceDate(700000000.5)));
    EXPECT_TRUE(comesBack(NSNull::null()));
    EXPECT_TRUE(comesBack(NSUUID::UUID()));
    EXPECT_TRUE(comesBack(NSURL::URLWithString("b%20c?d", NSURL::URLWithString("http://a.example/"))));
    EXPECT_TRUE(comesBack(NSArray::of(1, "two", NSArray::array())));
    EXPECT_TRUE(comesBack(NSMutableArray::of(1)));
    EXPECT_TRUE(comesBack(NSDictionary::of({ { "a", 1 }, { 2, "b" } })));
    EXPECT_TRUE(comesBack(NSMutableDictionary::of({ { "a", NSDictionary::dictionary() } })));
    EXPECT_TRUE(comesBack(NSSet::of("a", 1)));
    EXPECT_TRUE(comesBack(NSMutableSet::set()));
}

TEST_F(NSArchiverTest, BringsBackATextThatIsNoUnicode)
{
    EXPECT_TRUE(comesBack(NSString::stringWithCharacters(u"a\xd800z")));
}

TEST_F(NSArchiverTest, BringsBackNumbersWithTheirTypes)
{
    for (const NSRef<NSNumber>& number :
        std::initializer_list<NSRef<NSNumber>> { true, false, 'c', 300, -1, std::int64_t { 1 } << 40,
            ~std::uint64_t { 0 }, 0.1F, 0.1, -0.0, std::numeric_limits<double>::infinity() }) {
        auto read = NSCast<NSNumber>(again(number));
        EXPECT_TRUE(NSEqual(read, number)) << number;
        EXPECT_STREQ(read->objCType(), number->objCType());
        EXPECT_EQ(read->isBool(), number->isBool());
    }
}

TEST_F(NSArchiverTest, BringsBackAGraphThatLeadsIntoItself)
{
    auto node = Node::named("a");
    auto list = NSMutableArray::of(node, node);
    node->next = list;
    auto read = NSCast<NSArray>(again(list));
    node->next = nullptr;
    ASSERT_EQ(read->count(), 2u);
    EXPECT_EQ(read->objectAtIndex(0), read->objectAtIndex(1));
    EXPECT_EQ(read->objectAtIndex<Node>(0)->next, read);
    read->objectAtIndex<Node>(0)->next = nullptr;
}

TEST_F(NSArchiverTest, RaisesForAClassThatIsNotRegistered)
{
    EXPECT_EQ(nameRaisedBy([] { return NSArchiver::archivedDataWithRootObject(NSMake<NSObject>()); }),
        "NSInvalidArgumentException");
}

TEST_F(NSArchiverTest, RaisesForObjectsNestedTooDeep)
{
    NSId deep = NSArray::array();
    for (int level = 0; level < 100'000; ++level)
        deep = NSArray::of(deep);
    EXPECT_EQ(raisedBy([&] { return NSArchiver::archivedDataWithRootObject(deep); }),
        "NSInvalidArgumentException: objects are nested too deep to be archived");
}

TEST_F(NSArchiverTest, RaisesForNullData)
{
    EXPECT_EQ(nameRaisedBy([] { return NSArchiver::initForWritingWithMutableData(nullptr); }),
        "NSInvalidArgumentException");
}

TEST_F(NSArchiverTest, WritesBytesAndReadsThem)
{
    auto data = NSMutableData::data();
    auto archiver = NSArchiver::initForWritingWithMutableData(data);
    archiver->encodeBytes("abc", 3);
    archiver->encodeBytes(nullptr, 0);
    auto unarchiver = NSUnarchiver::initForReadingWithData(data);
    NSUInteger length = 0;
    const void* bytes = unarchiver->decodeBytesWithReturnedLength(&length);
    EXPECT_EQ(std::string(static_cast<const char*>(bytes), length), "abc");
    unarchiver->decodeBytesWithReturnedLength(&length);
    EXPECT_EQ(length, 0u);
    EXPECT_TRUE(unarchiver->isAtEnd());
    EXPECT_EQ(nameRaisedBy([&] {
        archiver->encodeBytes(nullptr, 1);
        return 0;
    }),
        "NSInvalidArgumentException");
}

TEST_F(NSArchiverTest, WritesToAFile)
{
    const std::string path = std::filesystem::temp_directory_path() / ("archive-" + std::to_string(getpid()));
    EXPECT_TRUE(NSArchiver::archiveRootObject("text", path));
    EXPECT_TRUE(NSEqual(NSUnarchiver::unarchiveObjectWithFile(path), "text"));
    std::filesystem::remove(path);
    EXPECT_FALSE(NSUnarchiver::unarchiveObjectWithFile(path));
    EXPECT_FALSE(NSUnarchiver::unarchiveObjectWithFile(nullptr));
    NSRef<NSError> error;
    EXPECT_FALSE(NSArchiver::archiveRootObject("text", "/no/such/folder/file", &error));
    EXPECT_EQ(error->code(), -43);
}

}
