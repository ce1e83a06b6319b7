#include "LUMFoundation/LUMSerializedPlist.h"

#include "LUMPlatform/NSDate.h"
#include "LUMPlatform/NSDictionary.h"
#include "LUMPlatform/NSException.h"
#include "LUMPlatform/NSNull.h"
#include "LUMPlatform/NSNumber.h"
#include "LUMPlatform/NSString.h"
#include "data/plist_fault.h"
#include "tests/data/plist_objects.h"
#include "tests/fixture.h"
#include "tests/object_matchers.h"
#include "tests/raised_by.h"
#include "tests/source_folder.h"
#include "tests/temporary_folder.h"

namespace {

using LUMSerializedPlist::serializedPlist;

class LUMSerializedPlistTest : public ObjectTest {
protected:
    static std::string bytes(const NSId& object)
    {
        auto data = serializedPlist(object);
        return data ? std::string(reinterpret_cast<const char*>(data->bytes().data()), data->length())
                    : "null";
    }
    static std::string vector(const std::string& name)
    {
        return readFile(inSourceFolder("tests/vectors/bplist/" + name + ".plist"));
    }
    static std::string reasonFor(const NSId& object)
    {
        return NSString::stringWithFormat(
            "LUMSerializedPlistException: Unable serialize object:%X of class:%@ using dataWithPropertyList:",
            lum::identityOf(*object), lum::classNameOf(*object))
            ->utf8();
    }
};

TEST_F(LUMSerializedPlistTest, ALeafIsItsBinaryPropertyList)
{
    EXPECT_EQ(bytes(128), vector("int_128"));
    EXPECT_EQ(bytes(1.5), vector("real_1_5"));
    EXPECT_EQ(bytes(std::string(14, 'x')), vector("str_14"));
    EXPECT_EQ(bytes(NSData::data()), vector("data_empty"));
    EXPECT_EQ(bytes(NSDate::dateWithTimeIntervalSinceReferenceDate(-63114076800)), vector("date_0001"));
}

TEST_F(LUMSerializedPlistTest, ContainersAreTheirLeavesOneBehindTheOther)
{
    EXPECT_EQ(bytes(NSArray::of(2, NSArray::of("a"), 1)), bytes(2) + bytes("a") + bytes(1));
    EXPECT_EQ(bytes(NSDictionary::of({ { "b", 2 }, { "a", NSArray::of(3) } })), bytes(3) + bytes(2));
}

TEST_F(LUMSerializedPlistTest, KeysAreOrderedAsStringsCompare)
{
    // By code point, where the order of code units is another.
    EXPECT_EQ(bytes(NSDictionary::of({ { u"\xd83d\xde00", 2 }, { u"\xff21", 1 }, { "B", 3 }, { "a", 4 } })),
        bytes(3) + bytes(4) + bytes(1) + bytes(2));
}

TEST_F(LUMSerializedPlistTest, TheOrderOfBuildingDoesNotCount)
{
    EXPECT_EQ(bytes(NSDictionary::of({ { "a", 1 }, { "b", 2 } })),
        bytes(NSDictionary::of({ { "b", 2 }, { "a", 1 } })));
}

TEST_F(LUMSerializedPlistTest, TheOrderOfBuildingDoesNotCountForTwoFormsOfOneText)
{
    const NSRef<NSString> composed = u"\x00e9";
    const NSRef<NSString> decomposed = u"e\x0301";
    auto there = NSMutableDictionary::dictionary();
    there->setObject(1, composed);
    there->setObject(2, decomposed);
    auto back = NSMutableDictionary::dictionary();
    back->setObject(2, decomposed);
    back->setObject(1, composed);
    EXPECT_EQ(bytes(there), bytes(2) + bytes(1));
    EXPECT_EQ(bytes(back), bytes(there));
}

TEST_F(LUMSerializedPlistTest, AContainerInTwoPlacesIsWrittenTwice)
{
    const auto shared = NSArray::of("a", NSArray::of(1));
    EXPECT_EQ(
        bytes(NSArray::of(shared, 2, shared)), bytes("a") + bytes(1) + bytes(2) + bytes("a") + bytes(1));
}

TEST_F(LUMSerializedPlistTest, ContainersThatAreSharedBeyondAllMeasureRaise)
{
    NSRef<NSArray> empty = NSArray::array();
    NSRef<NSArray> full = NSArray::of("a");
    for (int level = 0; level < 100; ++level) {
        empty = NSArray::of(empty, empty);
        full = NSArray::of(full, full);
    }
    EXPECT_EQ(bytes(empty), "");
    EXPECT_THROW(bytes(full), NSException);
}

TEST_F(LUMSerializedPlistTest, DeliberatelyKeysAreNotWritten)
{
    EXPECT_EQ(bytes(NSDictionary::of({ { "a", 1 }, { "b", 2 } })),
        bytes(NSDictionary::of({ { "x", 1 }, { "y", 2 } })));
}

TEST_F(LUMSerializedPlistTest, EmptyContainersGiveEmptyData)
{
    EXPECT_EQ(bytes(NSArray::array()), "");
    EXPECT_EQ(bytes(NSDictionary::dictionary()), "");
    EXPECT_EQ(bytes(nullptr), "null");
}

TEST_F(LUMSerializedPlistTest, DeliberatelyAKeyThatBeginsWithAnAtSignNamesAProperty)
{
    EXPECT_EQ(bytes(NSDictionary::of({ { "@count", "x" } })), bytes(1));
    EXPECT_EQ(nameRaisedBy([] {
        return serializedPlist(NSDictionary::of({ { "@x", 1 } }));
    }),
        "NSUnknownKeyException");
}

TEST_F(LUMSerializedPlistTest, WhatIsNoPropertyListRaises)
{
    EXPECT_EQ(nameRaisedBy([] { return serializedPlist(NSNull::null()); }), "LUMNonPlistTypeException");
    EXPECT_EQ(nameRaisedBy([] { return serializedPlist(NSArray::of(NSNull::null())); }),
        "LUMNonPlistTypeException");
}

TEST_F(LUMSerializedPlistTest, DeliberatelyWhatOnlySaysItIsPlistableRaisesWithoutAWord)
{
    auto liar = NSMake<PlistAnswer>(true);
    EXPECT_EQ(raisedBy([&] { return serializedPlist(NSArray::of(1, liar)); }), reasonFor(liar));
}

TEST_F(LUMSerializedPlistTest, ALeafThatIsNotPlistableAddsNothing)
{
    auto no = NSMake<PlistAnswer>(false);
    EXPECT_EQ(bytes(no), "null");
    EXPECT_EQ(bytes(NSArray::of(1, no, 2)), bytes(1) + bytes(2));
}

TEST_F(LUMSerializedPlistTest, AClassMayAnswerItself)
{
    EXPECT_EQ(bytes(NSMake<PrintedArray>(false)), "P");
    EXPECT_EQ(bytes(NSArray::of(NSMake<PrintedArray>(false), NSMake<PrintedArray>(true))), "P");
}

TEST_F(LUMSerializedPlistTest, AContainerThatHoldsItselfRaises)
{
    auto array = NSMutableArray::array();
    array->addObject(NSDictionary::of({ { "a", array } }));
    EXPECT_EQ(raisedBy([&] { return serializedPlist(array); }), reasonFor(array));
    array->removeAllObjects();
}

TEST_F(LUMSerializedPlistTest, AKeyThatIsNoStringRaises)
{
    EXPECT_EQ(nameRaisedBy([] {
        return serializedPlist(NSArray::of(NSDictionary::of({ { 5, "a" } })));
    }),
        "LUMNonPlistTypeException");
    EXPECT_EQ(nameRaisedBy([] {
        return serializedPlist(NSDictionary::of({ { "a", 1 }, { NSNull::null(), 2 } }));
    }),
        "LUMNonPlistTypeException");
}

TEST_F(LUMSerializedPlistTest, AnArrayThatIsChangedMeanwhileRaises)
{
    auto array = NSMutableArray::array();
    array->addObject(NSMake<PlistSpoiler>([&] { array->removeAllObjects(); }));
    array->addObject("x");
    EXPECT_EQ(nameRaisedBy([&] { return serializedPlist(array); }), "NSGenericException");
}

TEST_F(LUMSerializedPlistTest, DepthTakesNoStack)
{
    NSId nested = "x";
    for (int level = 0; level < 300'000; ++level)
        nested = NSArray::of(nested);
    EXPECT_EQ(bytes(nested), bytes("x"));
}

TEST_F(LUMSerializedPlistTest, IsADynamicCall)
{
    EXPECT_THAT(
        NSSend<NSRef<NSData>>(NSArray::of("x"), NSSelector("serializedPlist")), Equals(serializedPlist("x")));
}

}
