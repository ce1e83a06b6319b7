#include "LUMPlatform/NSUnarchiver.h"

#include "LUMPlatform/NSArchiver.h"
#include "LUMPlatform/NSArray.h"
#include "LUMPlatform/NSSend.h"
#include "tests/fixture.h"
#include "tests/platform/archiving/archive_bytes.h"
#include "tests/platform/archiving/node.h"
#include "tests/raised_by.h"

namespace {

constexpr const char* kHeader = "040b73747265616d747970656481e803";
constexpr const char* kObjectClass = "8484 08 4e534f626a656374 00 85";

class NSUnarchiverTest : public ObjectTest {
protected:
    static NSRef<NSUnarchiver> unarchiverOf(const std::string& body)
    {
        return NSUnarchiver::initForReadingWithData(archiveOf(kHeader + body));
    }
    static std::string raisedByBody(const std::string& body)
    {
        return nameRaisedBy([&] { return unarchiverOf(body)->decodeObject(); });
    }
    template<typename T> static std::string raisedReading(const std::string& body)
    {
        return nameRaisedBy([&] {
            T value {};
            unarchiverOf(body)->decodeValuesOfObjCTypes(value);
            return 0;
        });
    }
    template<typename T> static T read(const std::string& body)
    {
        T value {};
        unarchiverOf(body)->decodeValuesOfObjCTypes(value);
        return value;
    }
};

TEST_F(NSUnarchiverTest, RaisesForWhatIsNoSequentialArchive)
{
    for (const char* digits : { "", "04", "62706c6973743030", "040b", "040b73747265616d7479706564",
             "030b73747265616d747970656481e803", "040b73747265616d747970655881e803", "0481ffff" })
        EXPECT_EQ(nameRaisedBy([&] { return NSUnarchiver::unarchiveObjectWithData(archiveOf(digits)); }),
            "NSInconsistentArchiveException")
            << digits;
    EXPECT_EQ(nameRaisedBy([] { return NSUnarchiver::unarchiveObjectWithData(nullptr); }),
        "NSInconsistentArchiveException");
}

TEST_F(NSUnarchiverTest, RaisesForAnArchiveCutOffAnywhere)
{
    auto whole = NSArchiver::archivedDataWithRootObject(NSArray::of("a", 0.5, NSData::data(), 1));
    for (NSUInteger length = 0; length < whole->length(); ++length)
        EXPECT_EQ(nameRaisedBy([&] {
            return NSUnarchiver::unarchiveObjectWithData(whole->subdataWithRange({ 0, length }));
        }),
            "NSInconsistentArchiveException")
            << length;
}

TEST_F(NSUnarchiverTest, RaisesForReferencesThatLeadToNothing)
{
    EXPECT_EQ(raisedByBody("840140 92"), "NSInconsistentArchiveException"); // object 0
    EXPECT_EQ(raisedByBody("92"), "NSInconsistentArchiveException"); // text 0
    EXPECT_EQ(raisedByBody("840140 91"), "NSInconsistentArchiveException"); // a tag without a meaning
    EXPECT_EQ(raisedByBody("840140 84 92"), "NSInconsistentArchiveException"); // the object as its own class
    EXPECT_EQ(raisedByBody("840140 87 ffffffffffffff7f"), "NSInconsistentArchiveException");
    EXPECT_EQ(raisedByBody("840140 87 0000000000000080"), "NSInconsistentArchiveException");
}

TEST_F(NSUnarchiverTest, RaisesForAClassThatIsNotRegistered)
{
    EXPECT_EQ(raisedBy([] {
        return unarchiverOf(std::string("840140 84 ") + kObjectClass + "86")->decodeObject();
    }),
        "NSInvalidUnarchiveOperationException: the archive holds an object of class \"NSObject\", which is "
        "not "
        "registered");
}

TEST_F(NSUnarchiverTest, RaisesForAnObjectThatHoldsMoreThanItsClassReads)
{
    EXPECT_EQ(raisedByBody(std::string("840140 84 8484 06 4e534e756c6c 00 ") + kObjectClass + "840169 01 86"),
        "NSInconsistentArchiveException");
}

TEST_F(NSUnarchiverTest, RaisesForCountsBeyondTheBytes)
{
    const std::string array = std::string("840140 84 8484 07 4e534172726179 00 ") + kObjectClass + "840169";
    EXPECT_EQ(raisedByBody(array + "82ffffff7f"), "NSInconsistentArchiveException");
    EXPECT_EQ(raisedByBody(array + "ff"), "NSInconsistentArchiveException");
    const std::string data = std::string("840140 84 8484 06 4e5344617461 00 ") + kObjectClass + "840169";
    EXPECT_EQ(raisedByBody(data + "05 84045b35635d 0102"), "NSInconsistentArchiveException");
    EXPECT_EQ(raisedByBody(data + "02 84045b33635d 010203"), "NSInconsistentArchiveException");
    const std::string text = std::string("840140 84 8484 08 4e53537472696e67 00 ") + kObjectClass;
    EXPECT_EQ(raisedByBody(text + "84012b 82ffffff7f 61"), "NSInconsistentArchiveException");
    EXPECT_EQ(raisedByBody(text + "84075b393939 39535d 01"), "NSInconsistentArchiveException");
    EXPECT_EQ(raisedByBody(text + "84012b 01 ff 86"), "NSInconsistentArchiveException"); // no UTF-8
}

TEST_F(NSUnarchiverTest, RaisesForNullInACollection)
{
    EXPECT_EQ(raisedByBody(
                  std::string("840140 84 8484 07 4e534172726179 00 ") + kObjectClass + "840169 01 92 85 86"),
        "NSInconsistentArchiveException");
}

TEST_F(NSUnarchiverTest, RaisesForArchivesNestedTooDeep)
{
    std::string body = std::string("840140 84 8484 07 4e534172726179 00 ") + kObjectClass + "840169 01";
    for (int level = 0; level < 100'000; ++level)
        body += "92 84 93 95 01";
    EXPECT_EQ(raisedByBody(body), "NSInvalidUnarchiveOperationException");
}

TEST_F(NSUnarchiverTest, KeepsToItsLimits)
{
    auto data = NSArchiver::archivedDataWithRootObject(NSArray::of("a", "b", "c"));
    auto raised = [&](const NSDecodingLimits& limits) {
        return nameRaisedBy(
            [&] { return NSUnarchiver::initForReadingWithData(data, limits)->decodeObject(); });
    };
    EXPECT_EQ(raised({}), "");
    EXPECT_EQ(raised({ .bytes = data->length() }), "");
    EXPECT_EQ(raised({ .bytes = data->length() - 1 }), "NSInvalidUnarchiveOperationException");
    EXPECT_EQ(raised({ .objects = 3 }), "NSInvalidUnarchiveOperationException");
    EXPECT_EQ(raised({ .depth = 1 }), "NSInvalidUnarchiveOperationException");
    EXPECT_EQ(raised({ .depth = 2 }), "");
}

TEST_F(NSUnarchiverTest, ConvertsBetweenIntegersThatFit)
{
    EXPECT_EQ(read<NSInteger>("840163 ff"), -1);
    EXPECT_EQ(read<int>("840143 ff"), 255);
    EXPECT_EQ(read<NSInteger>("840153 ff"), 65535);
    EXPECT_EQ(read<unsigned>("840149 ff"), 0xffff'ffffU);
    EXPECT_EQ(read<std::uint64_t>("840151 ff"), ~std::uint64_t { 0 });
    EXPECT_EQ(read<double>("840166 8300000040"), 2.0);
    EXPECT_EQ(read<float>("840164 83000000000000e03f"), 0.5F);
    EXPECT_EQ(read<double>("840164 07"), 7.0);
    EXPECT_TRUE(read<bool>("840163 01"));
}

TEST_F(NSUnarchiverTest, RaisesForNumbersThatDoNotFit)
{
    EXPECT_EQ(raisedReading<signed char>("840169 818000"), "NSRangeException");
    EXPECT_EQ(raisedReading<unsigned>("840169 ff"), "NSRangeException");
    EXPECT_EQ(raisedReading<NSInteger>("840151 ff"), "NSRangeException");
    EXPECT_EQ(raisedReading<unsigned>("840149 87ffffffffff000000"), "NSInconsistentArchiveException");
}

TEST_F(NSUnarchiverTest, RaisesForValuesOfAnotherKind)
{
    EXPECT_EQ(raisedReading<float>("840169 01"), "NSInvalidUnarchiveOperationException");
    EXPECT_EQ(raisedReading<int>("840166 01"), "NSInvalidUnarchiveOperationException");
    EXPECT_EQ(raisedReading<NSId>("840169 01"), "NSInvalidUnarchiveOperationException");
    EXPECT_EQ(raisedReading<int>("840140 85"), "NSInvalidUnarchiveOperationException");
    EXPECT_EQ(raisedReading<int>("84026969 0101"), "NSInvalidUnarchiveOperationException");
    EXPECT_EQ(raisedReading<int>("840169 83"), "NSInconsistentArchiveException");
}

TEST_F(NSUnarchiverTest, RaisesForAnObjectNeededBeforeItIsMade)
{
    /// A class that reads what leads to it before it says which object it will be.
    class Late : public NSObject, public NSCoding {
    public:
        static const NSClass& classObject()
        {
            static const NSClass& type = NSClass::define("Late", &NSObject::classObject(), {});
            return type;
        }
        static NSRef<Late> initWithCoder(NSCoder& coder)
        {
            (void)coder.decodeObject();
            return NSMake<Late>();
        }
        void encodeWithCoder(NSCoder& coder) const override
        {
            coder.encodeObject(NSShare(const_cast<Late*>(this)));
        }
    };
    NSCoding::registerClass<Late>();
    auto data = NSArchiver::archivedDataWithRootObject(NSMake<Late>());
    EXPECT_EQ(nameRaisedBy([&] { return NSUnarchiver::unarchiveObjectWithData(data); }),
        "NSInvalidUnarchiveOperationException");
}

TEST_F(NSUnarchiverTest, ReadsNumbersWithAnotherClassAboveThem)
{
    auto number = unarchiverOf("840140 84 8484 08 4e534e756d626572 00 8484 07 4e5356616c7565 00 "
        + std::string(kObjectClass) + "84012a 84 840169 97 05 86")
                      ->decodeObject();
    EXPECT_TRUE(NSEqual(number, 5)) << number;
}

TEST_F(NSUnarchiverTest, MakesTheClassThatIsNamedForAnother)
{
    auto list = NSArray::of("a");
    auto unarchiver = NSUnarchiver::initForReadingWithData(NSArchiver::archivedDataWithRootObject(list));
    unarchiver->decodeClassName("NSArray", "NSMutableArray");
    EXPECT_TRUE(NSEqual(unarchiver->decodeObject<NSMutableArray>(), list));

    const std::string gone = std::string("840140 84 8484 04 476f6e65 00 ") + kObjectClass + "84012b 01 61 86";
    unarchiver = unarchiverOf(gone);
    unarchiver->decodeClassName("Gone", "NSString");
    EXPECT_TRUE(NSEqual(unarchiver->decodeObject(), "a"));
}

TEST_F(NSUnarchiverTest, RaisesForASubstituteThatIsWrong)
{
    const std::string text =
        std::string("840140 84 8484 08 4e53537472696e67 00 ") + kObjectClass + "84012b 01 61 86";
    auto unarchiver = unarchiverOf(text);
    unarchiver->decodeClassName("NSString", "NSArray");
    EXPECT_EQ(
        nameRaisedBy([&] { return unarchiver->decodeObject(); }), "NSInvalidUnarchiveOperationException");
    unarchiver = unarchiverOf(text);
    unarchiver->decodeClassName("NSString", "Gone");
    EXPECT_EQ(
        nameRaisedBy([&] { return unarchiver->decodeObject(); }), "NSInvalidUnarchiveOperationException");
    EXPECT_EQ(nameRaisedBy([&] {
        unarchiver->decodeClassName(nullptr, "NSString");
        return 0;
    }),
        "NSInvalidArgumentException");
}

TEST_F(NSUnarchiverTest, AnswersDynamicCalls)
{
    auto unarchiver = unarchiverOf("840140 85");
    EXPECT_FALSE(NSSend<bool>(unarchiver, NSSelector("isAtEnd")));
    EXPECT_FALSE(NSSend<NSId>(unarchiver, NSSelector("decodeObject")));
    EXPECT_TRUE(NSSend<bool>(unarchiver, NSSelector("isAtEnd")));
}

}
