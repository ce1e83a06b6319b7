#include "LUMFoundation/LUMPlistable.h"

#include "LUMPlatform/NSDate.h"
#include "LUMPlatform/NSDictionary.h"
#include "LUMPlatform/NSException.h"
#include "LUMPlatform/NSNull.h"
#include "LUMPlatform/NSNumber.h"
#include "LUMPlatform/NSSet.h"
#include "LUMPlatform/NSString.h"
#include "data/plist_fault.h"
#include "tests/data/plist_objects.h"
#include "tests/fixture.h"
#include "tests/object_matchers.h"
#include "tests/raised_by.h"

namespace {

using LUMPlistable::isPlistable;

class LUMPlistableTest : public ObjectTest {
protected:
    static std::string identity(const NSId& object)
    {
        return NSString::stringWithFormat("%X", lum::identityOf(*object))->utf8();
    }
    static std::string reasonFor(const NSId& object)
    {
        return "LUMNonPlistTypeException: object: " + identity(object)
            + " of class: " + std::string(object->isa().name()) + " can not be written to plist";
    }
};

TEST_F(LUMPlistableTest, LeavesAndContainersOfThemAre)
{
    EXPECT_TRUE(isPlistable(NSData::data()));
    EXPECT_TRUE(isPlistable(NSMutableData::data()));
    EXPECT_TRUE(isPlistable(NSDate::date()));
    EXPECT_TRUE(isPlistable(5));
    EXPECT_TRUE(isPlistable(NSRef<NSString>("a")->mutableCopy()));
    EXPECT_TRUE(isPlistable(NSArray::array()));
    EXPECT_TRUE(isPlistable(NSMutableDictionary::dictionary()));
    EXPECT_TRUE(isPlistable(NSArray::of(1, NSDictionary::of({ { "a", NSArray::of("b", true) } }))));
    EXPECT_FALSE(isPlistable(nullptr));
}

TEST_F(LUMPlistableTest, DeliberatelyAnythingElseRaises)
{
    for (const NSId& object : { NSId(NSSet::set()), NSId(NSNull::null()) }) {
        EXPECT_EQ(raisedBy([&] { return isPlistable(object); }), reasonFor(object));
        EXPECT_EQ(raisedBy([&] {
            return isPlistable(NSArray::of(NSDictionary::of({ { "a", object } })));
        }),
            reasonFor(object));
    }
}

TEST_F(LUMPlistableTest, TheExceptionHoldsTheObject)
{
    auto object = NSSet::set();
    try {
        isPlistable(NSArray::of(object));
        FAIL();
    } catch (const NSException& exception) {
        EXPECT_EQ(exception.userInfo()->objectForKey("object"), object);
        EXPECT_EQ(exception.userInfo()->count(), 1u);
    }
}

TEST_F(LUMPlistableTest, AKeyThatIsNoStringRaises)
{
    NSId key = 5;
    auto dictionary = NSDictionary::of({ { key, "a" } });
    EXPECT_EQ(raisedBy([&] { return isPlistable(dictionary); }),
        "LUMNonPlistTypeException: key: " + identity(key)
            + " of class: NSNumber in dictionary: " + identity(dictionary) + " can not be written to plist");
    try {
        isPlistable(dictionary);
    } catch (const NSException& exception) {
        EXPECT_FALSE(exception.userInfo());
    }
}

TEST_F(LUMPlistableTest, AFalseAnswerEndsTheQuestionsButNotTheLookAtKeys)
{
    auto no = NSMake<PlistAnswer>(false);
    auto yes = NSMake<PlistAnswer>(true);
    EXPECT_TRUE(isPlistable(NSArray::of(yes)));
    EXPECT_FALSE(isPlistable(no));
    EXPECT_FALSE(isPlistable(NSArray::of(no, NSNull::null())));
    yes->asked = 0;
    EXPECT_FALSE(isPlistable(NSDictionary::of({ { "a", NSArray::of(no) }, { "b", yes } })));
    EXPECT_EQ(yes->asked, 0);
    EXPECT_EQ(nameRaisedBy([&] {
        return isPlistable(NSDictionary::of({ { "a", no }, { 5, yes } }));
    }),
        "LUMNonPlistTypeException");
    EXPECT_EQ(yes->asked, 0);
}

TEST_F(LUMPlistableTest, AContainerThatHoldsItselfRaises)
{
    auto array = NSMutableArray::array();
    auto dictionary = NSMutableDictionary::of({ { "a", array } });
    array->addObject(dictionary);
    EXPECT_EQ(raisedBy([&] { return isPlistable(array); }), reasonFor(array));
    array->removeAllObjects();
    array->addObject("x");
    EXPECT_TRUE(isPlistable(NSArray::of(array, array)));
}

TEST_F(LUMPlistableTest, AContainerThatIsChangedMeanwhileRaises)
{
    auto array = NSMutableArray::array();
    array->addObject(NSMake<PlistSpoiler>([&] { array->removeAllObjects(); }));
    array->addObject("x");
    EXPECT_EQ(nameRaisedBy([&] { return isPlistable(array); }), "NSGenericException");
    auto dictionary = NSMutableDictionary::dictionary();
    dictionary->setObject(NSMake<PlistSpoiler>([&] { dictionary->removeAllObjects(); }), "a");
    dictionary->setObject("x", "b");
    EXPECT_EQ(nameRaisedBy([&] { return isPlistable(dictionary); }), "NSGenericException");
}

TEST_F(LUMPlistableTest, AContainerInManyPlacesIsAskedOnce)
{
    NSRef<NSArray> shared = NSArray::of("a");
    for (int level = 0; level < 100; ++level)
        shared = NSArray::of(shared, NSDictionary::of({ { "key", shared } }));
    EXPECT_TRUE(isPlistable(shared));
}

TEST_F(LUMPlistableTest, DepthTakesNoStack)
{
    NSId nested = "x";
    for (int level = 0; level < 300'000; ++level)
        nested = NSArray::of(nested);
    EXPECT_TRUE(isPlistable(nested));
}

TEST_F(LUMPlistableTest, IsADynamicCall)
{
    const NSSelector selector("isPlistable");
    EXPECT_TRUE(NSSend<bool>(NSId("a"), selector));
    EXPECT_TRUE(NSSend<bool>(NSArray::array(), selector));
    EXPECT_TRUE(NSSend<bool>(NSDictionary::dictionary(), selector));
    EXPECT_EQ(
        nameRaisedBy([&] { return NSSend<bool>(NSNull::null(), selector); }), "LUMNonPlistTypeException");
}

}
