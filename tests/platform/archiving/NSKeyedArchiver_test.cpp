#include "LUMPlatform/NSKeyedArchiver.h"

#include "LUMPlatform/NSError.h"
#include "LUMPlatform/NSKeyedArchiverDelegate.h"
#include "LUMPlatform/NSKeyedUnarchiver.h"
#include "LUMPlatform/NSPropertyListSerialization.h"
#include "LUMPlatform/NSSend.h"
#include "tests/fixture.h"
#include "tests/platform/archiving/graph.h"
#include "tests/raised_by.h"

#include <filesystem>

namespace {

class NSKeyedArchiverTest : public ObjectTest {
protected:
    static NSRef<NSDictionary> listOf(const NSRef<NSData>& archive)
    {
        return NSCast<NSDictionary>(NSPropertyListSerialization::propertyListWithData(archive));
    }
    static NSRef<NSArray> slotsOf(const NSId& root)
    {
        return listOf(NSKeyedArchiver::archivedDataWithRootObject(root))->objectForKey<NSArray>("$objects");
    }
    static NSId again(const NSId& root)
    {
        return NSKeyedUnarchiver::unarchiveObjectWithData(NSKeyedArchiver::archivedDataWithRootObject(root));
    }

    NSRef<NSMutableData> data = NSMutableData::data();
    NSRef<NSKeyedArchiver> archiver = NSKeyedArchiver::initForWritingWithMutableData(data);
};

TEST_F(NSKeyedArchiverTest, FramesTheSlots)
{
    EXPECT_EQ(listOf(NSKeyedArchiver::archivedDataWithRootObject("text"))->description()->utf8(),
        "{\n    \"$archiver\" = NSKeyedArchiver;\n    \"$objects\" =     (\n        \"$null\",\n        "
        "text\n    );"
        "\n    \"$top\" =     {\n        root = \"UID 1\";\n    };\n    \"$version\" = 100000;\n}");
}

TEST_F(NSKeyedArchiverTest, WritesNullAsSlotZero)
{
    EXPECT_EQ(slotsOf(nullptr)->count(), 1u);
    EXPECT_FALSE(again(nullptr));
}

TEST_F(NSKeyedArchiverTest, WritesAMutableStringAsAnObject)
{
    auto string = NSMutableString::stringWithString("text");
    auto slot = slotsOf(string)->objectAtIndex<NSDictionary>(1);
    EXPECT_TRUE(NSEqual(slot->objectForKey("NS.string"), "text"));
    EXPECT_TRUE(NSCast<NSMutableString>(again(string)));
    EXPECT_TRUE(NSEqual(again(string), string));
}

TEST_F(NSKeyedArchiverTest, WritesEqualValuesOnce)
{
    EXPECT_EQ(slotsOf(NSArray::of("a", "a", 1, 1, NSData::data(), NSData::data()))->count(), 6u);
    EXPECT_EQ(slotsOf(NSArray::of(1, 1.0, true, 1.0F))->count(), 7u) << "but numbers by their types";
}

TEST_F(NSKeyedArchiverTest, KeepsEqualObjectsApart)
{
    auto list = NSArray::of(NSMutableString::stringWithString("a"), NSMutableString::stringWithString("a"));
    auto read = NSCast<NSArray>(again(list));
    EXPECT_FALSE(read->objectAtIndex(0) == read->objectAtIndex(1));
    auto one = NSMutableString::stringWithString("a");
    read = NSCast<NSArray>(again(NSArray::of(one, one)));
    EXPECT_TRUE(read->objectAtIndex(0) == read->objectAtIndex(1));
}

TEST_F(NSKeyedArchiverTest, BringsBackNumbersWithTheirTypes)
{
    for (const NSRef<NSNumber>& number : std::initializer_list<NSRef<NSNumber>> {
             true, false, 'c', 300, -1, std::int64_t { 1 } << 40, ~std::uint64_t { 0 }, 0.1F, 0.1, -0.0 }) {
        auto read = NSCast<NSNumber>(again(number));
        EXPECT_TRUE(NSEqual(read, number)) << number;
        EXPECT_EQ(read->isBool(), number->isBool());
        EXPECT_EQ(read->isFloatingPoint(), number->isFloatingPoint());
        if (number->isFloatingPoint()) {
            EXPECT_STREQ(read->objCType(), number->objCType());
        }
    }
}

TEST_F(NSKeyedArchiverTest, TakesSeveralValuesAtTheTop)
{
    archiver->encodeObjectForKey("text", "a");
    archiver->encodeInt(5, "b");
    archiver->encodeObjectForKey("text", "c");
    archiver->finishEncoding();
    archiver->finishEncoding();
    auto unarchiver = NSKeyedUnarchiver::initForReadingWithData(data);
    EXPECT_EQ(unarchiver->decodeIntForKey("b"), 5);
    EXPECT_EQ(unarchiver->decodeObjectForKey("a"), unarchiver->decodeObjectForKey("c"));
}

TEST_F(NSKeyedArchiverTest, EscapesKeysThatBeginWithADollar)
{
    archiver->encodeInt(1, "$class");
    archiver->encodeInt(2, "$$");
    archiver->encodeInt(3, "");
    archiver->finishEncoding();
    EXPECT_EQ(listOf(data)->objectForKey<NSDictionary>("$top")->description()->utf8(),
        "{\n    \"\" = 3;\n    \"$$$\" = 2;\n    \"$$class\" = 1;\n}");
    auto unarchiver = NSKeyedUnarchiver::initForReadingWithData(data);
    EXPECT_EQ(unarchiver->decodeIntForKey("$class"), 1);
    EXPECT_EQ(unarchiver->decodeIntForKey("$$"), 2);
    EXPECT_EQ(unarchiver->decodeIntForKey(""), 3);
}

TEST_F(NSKeyedArchiverTest, NumbersValuesWithoutKeys)
{
    archiver->encodeObject("text");
    archiver->encodeValuesOfObjCTypes(1, 0.5F, ~std::uint64_t { 0 }, 0.25, NSId());
    archiver->encodeBytes("abc", 3);
    archiver->finishEncoding();
    EXPECT_EQ(listOf(data)->objectForKey<NSDictionary>("$top")->description()->utf8(),
        "{\n    \"$0\" = \"UID 1\";\n    \"$1\" = 1;\n    \"$2\" = \"0.5\";\n    \"$3\" = "
        "18446744073709551615;\n    "
        "\"$4\" = \"0.25\";\n    \"$5\" = \"UID 0\";\n    \"$6\" = <616263>;\n}");
    auto unarchiver = NSKeyedUnarchiver::initForReadingWithData(data);
    EXPECT_TRUE(NSEqual(unarchiver->decodeObject(), "text"));
    short one = 0;
    double half = 0;
    std::uint64_t large = 0;
    float quarter = 0;
    NSId null = "not yet";
    unarchiver->decodeValuesOfObjCTypes(one, half, large, quarter, null);
    EXPECT_EQ(one, 1);
    EXPECT_EQ(half, 0.5);
    EXPECT_EQ(large, ~std::uint64_t { 0 });
    EXPECT_EQ(quarter, 0.25F);
    EXPECT_FALSE(null);
    NSUInteger length = 0;
    unarchiver->decodeBytesWithReturnedLength(&length);
    EXPECT_EQ(length, 3u);
}

TEST_F(NSKeyedArchiverTest, RaisesForAKeyUsedTwiceByOneObject)
{
    archiver->encodeInt(1, "a");
    EXPECT_EQ(raisedBy([&] {
        archiver->encodeObjectForKey("b", "a");
        return 0;
    }),
        "NSInvalidArchiveOperationException: a key is used twice by one object");
}

TEST_F(NSKeyedArchiverTest, RaisesAfterItsEnd)
{
    archiver->finishEncoding();
    EXPECT_EQ(nameRaisedBy([&] {
        archiver->encodeInt(1, "a");
        return 0;
    }),
        "NSInvalidArchiveOperationException");
}

TEST_F(NSKeyedArchiverTest, FinishesNoArchiveThatAnExceptionWentThrough)
{
    EXPECT_EQ(raisedBy([&] {
        archiver->encodeObjectForKey(NSArray::of(NSMake<NSObject>()), "a");
        return 0;
    }),
        "NSInvalidArgumentException: objects of class NSObject cannot be archived: the class is not "
        "registered "
        "(NSCoding::registerClass)");
    EXPECT_EQ(nameRaisedBy([&] {
        archiver->finishEncoding();
        return 0;
    }),
        "NSInvalidArchiveOperationException");
    EXPECT_EQ(data->length(), 0u);
}

TEST_F(NSKeyedArchiverTest, RaisesForNull)
{
    EXPECT_EQ(nameRaisedBy([&] {
        archiver->encodeInt(1, nullptr);
        return 0;
    }),
        "NSInvalidArgumentException");
    EXPECT_EQ(nameRaisedBy([&] {
        archiver->encodeBytesForKey(nullptr, 1, "a");
        return 0;
    }),
        "NSInvalidArgumentException");
    EXPECT_EQ(nameRaisedBy([] { return NSKeyedArchiver::initForWritingWithMutableData(nullptr); }),
        "NSInvalidArgumentException");
}

TEST_F(NSKeyedArchiverTest, WritesToAFile)
{
    const std::string path = std::filesystem::temp_directory_path() / ("keyed-" + std::to_string(getpid()));
    EXPECT_TRUE(NSKeyedArchiver::archiveRootObject("text", path));
    EXPECT_TRUE(NSEqual(NSKeyedUnarchiver::unarchiveObjectWithFile(path), "text"));
    std::filesystem::remove(path);
    EXPECT_FALSE(NSKeyedUnarchiver::unarchiveObjectWithFile(path));
    EXPECT_FALSE(NSKeyedUnarchiver::unarchiveObjectWithFile(nullptr));
    NSRef<NSError> error;
    EXPECT_FALSE(NSKeyedArchiver::archiveRootObject("text", "/no/such/folder/file", &error));
    EXPECT_EQ(error->code(), -43);
}

TEST_F(NSKeyedArchiverTest, AnswersDynamicCalls)
{
    NSSend(archiver, NSSelector("encodeObject:forKey:"), NSId("text"), NSRef<NSString>("key"));
    NSSend(archiver, NSSelector("finishEncoding"));
    EXPECT_GT(data->length(), 0u);
}

/// Replaces texts, and tells what it heard.
class Censor : public NSObject, public NSKeyedArchiverDelegate {
public:
    NSId archiverWillEncodeObject(NSKeyedArchiver&, const NSId& object) override
    {
        heard += "will(" + object->description()->utf8() + ") ";
        if (NSEqual(object, "secret"))
            return nullptr;
        return NSEqual(object, "name") ? NSId("N. N.") : object;
    }
    void archiverDidEncodeObject(NSKeyedArchiver&, const NSId& object) override
    {
        heard += "did(" + object->description()->utf8() + ") ";
    }
    void archiverWillFinish(NSKeyedArchiver&) override { heard += "finish "; }
    void archiverDidFinish(NSKeyedArchiver&) override { heard += "finished"; }

    std::string heard;
};

TEST_F(NSKeyedArchiverTest, LetsItsDelegateReplaceObjects)
{
    auto censor = NSMake<Censor>();
    archiver->setDelegate(censor);
    EXPECT_EQ(archiver->delegate(), censor);
    NSRef<NSString> name = "name";
    archiver->encodeObjectForKey("secret", "a");
    archiver->encodeObjectForKey(name, "b");
    archiver->encodeObjectForKey(name, "c");
    archiver->finishEncoding();
    EXPECT_EQ(censor->heard, "will(secret) will(name) did(N. N.) finish finished");
    auto unarchiver = NSKeyedUnarchiver::initForReadingWithData(data);
    EXPECT_TRUE(unarchiver->containsValueForKey("a"));
    EXPECT_FALSE(unarchiver->decodeObjectForKey("a"));
    EXPECT_TRUE(NSEqual(unarchiver->decodeObjectForKey("c"), "N. N."));
}

TEST_F(NSKeyedArchiverTest, ForgetsADelegateThatHasEnded)
{
    archiver->setDelegate(NSMake<Censor>());
    archiver->encodeObjectForKey("name", "b");
    EXPECT_FALSE(archiver->delegate());
}

}
