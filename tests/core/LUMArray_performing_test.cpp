#include "LUMFoundation/LUMArray.h"

#include "LUMPlatform/NSArray.h"
#include "LUMPlatform/NSClass.h"
#include "LUMPlatform/NSDictionary.h"
#include "LUMPlatform/NSException.h"
#include "LUMPlatform/NSInvocation.h"
#include "LUMPlatform/NSMethodSignature.h"
#include "LUMPlatform/NSNull.h"
#include "LUMPlatform/NSString.h"
#include "tests/fixture.h"
#include "tests/object_matchers.h"
#include "tests/raised_by.h"

namespace {

/// Has a method of each kind of result, and tells which were called.
class Singer : public NSObject {
public:
    static const NSClass& classObject()
    {
        static constexpr NSMethod kMethods[] = {
            NSMethodOf<"name", &Singer::name>(),
            NSMethodOf<"teacher", &Singer::teacher>(),
            NSMethodOf<"age", &Singer::age>(),
            NSMethodOf<"isLoud", &Singer::isLoud>(),
            NSMethodOf<"kind", &Singer::kind>(),
            NSMethodOf<"sing", &Singer::sing>(),
            NSMethodOf<"sing:", &Singer::singTo>(),
            NSMethodOf<"leave:", &Singer::leave>(),
        };
        static const NSClass& type = NSClass::define("Singer", &NSObject::classObject(), kMethods);
        return type;
    }

    NSRef<NSString> name()
    {
        told += "name ";
        return mName;
    }
    NSId teacher() { return nullptr; }
    int age() { return 30; }
    bool isLoud() { return true; }
    const NSClass* kind() { return &classObject(); }
    void sing() { told += "sing "; }
    NSRef<NSString> singTo(const NSId& listener)
    {
        return NSString::stringWithFormat("%@ to %@", mName, listener);
    }
    NSRef<NSString> leave(NSMutableArray& choir)
    {
        choir.removeObject(NSShare(this));
        return mName;
    }

    static std::string told;

protected:
    explicit Singer(const NSRef<NSString>& name) : mName(name) { }
    ~Singer() override = default;

private:
    NSRef<NSString> mName;
};

std::string Singer::told;

/// Answers "name" by forwarding alone.
class Understudy : public NSObject {
public:
    NSRef<NSMethodSignature> methodSignatureForSelector(NSSelector selector) const override
    {
        return selector == NSSelector("name") ? NSMethodSignature::signatureWithObjCTypes("@@:") : nullptr;
    }
    void forwardInvocation(NSInvocation& invocation) override
    {
        invocation.setReturnValue(NSRef<NSString>("understudy"));
    }

protected:
    Understudy() = default;
    ~Understudy() override = default;
};

class LUMArrayPerformingTest : public ObjectTest {
protected:
    LUMArrayPerformingTest() { Singer::told.clear(); }

    NSRef<Singer> ann = NSMake<Singer>("Ann");
    NSRef<Singer> bob = NSMake<Singer>("Bob");
    NSRef<NSArray> choir = NSArray::of(ann, bob);
    NSRef<NSArray> withStranger = NSArray::of(ann, NSNull::null(), bob);
    const NSSelector kName { "name" };
    const NSSelector kSingTo { "sing:" };
};

TEST_F(LUMArrayPerformingTest, CollectsTheResultsInOrder)
{
    EXPECT_THAT(
        LUMArray::makeObjectsPerformSelectorWithResults(choir, kName), Equals(NSArray::of("Ann", "Bob")));
}

TEST_F(LUMArrayPerformingTest, LeavesOutElementsThatDoNotAnswer)
{
    EXPECT_THAT(LUMArray::makeObjectsPerformSelectorWithResults(withStranger, kName),
        Equals(NSArray::of("Ann", "Bob")));
}

TEST_F(LUMArrayPerformingTest, StoresTheNullMarkerForANullResult)
{
    EXPECT_THAT(LUMArray::makeObjectsPerformSelectorWithResults(choir, NSSelector("teacher")),
        Equals(NSArray::of(NSNull::null(), NSNull::null())));
}

TEST_F(LUMArrayPerformingTest, DeliberatelyRaisesForAMethodThatReturnsNothing)
{
    EXPECT_EQ(
        raisedBy([&] { return LUMArray::makeObjectsPerformSelectorWithResults(choir, NSSelector("sing")); }),
        "LUMArrayNonIdReturnType: At least one object does not return a type of id.");
    EXPECT_EQ(Singer::told, "");
}

TEST_F(LUMArrayPerformingTest, RaisesOnlyAtTheElementWhoseMethodReturnsNothing)
{
    class Quiet : public NSObject {
    public:
        static const NSClass& classObject()
        {
            static constexpr NSMethod kMethods[] = { NSMethodOf<"name", &Quiet::name>() };
            static const NSClass& type = NSClass::define("Quiet", &NSObject::classObject(), kMethods);
            return type;
        }
        void name() { }
    };
    auto list = NSArray::of(ann, NSMake<Quiet>(), bob);
    EXPECT_EQ(nameRaisedBy([&] { return LUMArray::makeObjectsPerformSelectorWithResults(list, kName); }),
        "LUMArrayNonIdReturnType");
    EXPECT_EQ(Singer::told, "name ");
}

TEST_F(LUMArrayPerformingTest, DeliberatelyPassesOverMethodsThatReturnNoObject)
{
    for (const char* selector : { "age", "isLoud", "kind" })
        EXPECT_THAT(LUMArray::makeObjectsPerformSelectorWithResults(choir, NSSelector(selector)),
            Equals(NSArray::array()))
            << selector;
}

TEST_F(LUMArrayPerformingTest, TheExceptionsCarryNoInformation)
{
    try {
        static_cast<void>(LUMArray::makeObjectsPerformSelectorWithResults(choir, NSSelector("sing")));
        FAIL() << "nothing raised";
    } catch (const NSException& exception) {
        EXPECT_EQ(exception.userInfo(), nullptr);
    }
    try {
        static_cast<void>(
            LUMArray::makeObjectsPerformSelectorWithResultsWithObjects(choir, kSingTo, nullptr));
        FAIL() << "nothing raised";
    } catch (const NSException& exception) {
        EXPECT_EQ(exception.userInfo(), nullptr);
    }
}

TEST_F(LUMArrayPerformingTest, GivesTheSameArgumentToAll)
{
    EXPECT_THAT(LUMArray::makeObjectsPerformSelectorWithResultsWithObject(withStranger, kSingTo, "Zoe"),
        Equals(NSArray::of("Ann to Zoe", "Bob to Zoe")));
}

TEST_F(LUMArrayPerformingTest, TheOneArgumentMayBeNull)
{
    EXPECT_THAT(LUMArray::makeObjectsPerformSelectorWithResultsWithObject(choir, kSingTo, nullptr),
        Equals(NSArray::of("Ann to (null)", "Bob to (null)")));
}

TEST_F(LUMArrayPerformingTest, GivesEachElementTheArgumentOfItsIndex)
{
    EXPECT_THAT(LUMArray::makeObjectsPerformSelectorWithResultsWithObjects(
                    withStranger, kSingTo, NSArray::of("x", "y", "z")),
        Equals(NSArray::of("Ann to x", "Bob to z")));
}

TEST_F(LUMArrayPerformingTest, RaisesWhenTheCountsDifferBeforeAnythingIsSent)
{
    auto three = NSArray::of(ann, bob, ann);
    EXPECT_EQ(raisedBy([&] {
        return LUMArray::makeObjectsPerformSelectorWithResultsWithObjects(
            three, kName, NSArray::of("x", "y"));
    }),
        "LUMArrayCountsDontMatch: Number of argument objects doesn't match count of this array.");
    EXPECT_EQ(Singer::told, "");
}

TEST_F(LUMArrayPerformingTest, NullArgumentsAreNone)
{
    EXPECT_EQ(nameRaisedBy([&] {
        return LUMArray::makeObjectsPerformSelectorWithResultsWithObjects(choir, kSingTo, nullptr);
    }),
        "LUMArrayCountsDontMatch");
    EXPECT_THAT(
        LUMArray::makeObjectsPerformSelectorWithResultsWithObjects(NSArray::array(), kSingTo, nullptr),
        Equals(NSArray::array()));
}

TEST_F(LUMArrayPerformingTest, RaisesForAMethodWithAnotherNumberOfArguments)
{
    EXPECT_EQ(nameRaisedBy([&] { return LUMArray::makeObjectsPerformSelectorWithResults(choir, kSingTo); }),
        "NSInvalidArgumentException");
    EXPECT_EQ(nameRaisedBy([&] {
        return LUMArray::makeObjectsPerformSelectorWithResultsWithObject(choir, kName, "x");
    }),
        "NSInvalidArgumentException");
}

TEST_F(LUMArrayPerformingTest, AsksElementsThatForward)
{
    EXPECT_THAT(
        LUMArray::makeObjectsPerformSelectorWithResults(NSArray::of(ann, NSMake<Understudy>()), kName),
        Equals(NSArray::of("Ann", "understudy")));
}

TEST_F(LUMArrayPerformingTest, TheNullSelectorIsAnsweredByNobody)
{
    EXPECT_THAT(
        LUMArray::makeObjectsPerformSelectorWithResults(choir, NSSelector()), Equals(NSArray::array()));
}

TEST_F(LUMArrayPerformingTest, AMethodMayTakeItsElementOutOfTheArray)
{
    auto leaving = NSMutableArray::of(NSMake<Singer>("Cid"), ann, bob);
    auto results =
        LUMArray::makeObjectsPerformSelectorWithResultsWithObject(leaving, NSSelector("leave:"), leaving);
    EXPECT_THAT(results, Equals(NSArray::of("Cid", "Bob")));
    EXPECT_THAT(leaving, Equals(NSArray::of(ann)));
}

}
