#include "LUMPlatform/NSClass.h"

#include "tests/fixture.h"
#include "tests/platform/objects/track.h"

#include <thread>

namespace {

struct NSClassTest : ObjectTest { };

int fromExtension(const NSRef<NSObject>&)
{
    return 42;
}
int countFromExtension(const NSRef<NSObject>&)
{
    return -1;
}

TEST_F(NSClassTest, IsFoundByName)
{
    Track::classObject();
    EXPECT_EQ(NSClass::named("Track"), &Track::classObject());
    EXPECT_EQ(NSClass::named("NoSuchClass"), nullptr);
}

TEST_F(NSClassTest, TakesArityAndTypesFromTheFunction)
{
    const NSMethod* method = Track::classObject().instanceMethod(NSSelector("range:plus:"));
    ASSERT_NE(method, nullptr);
    EXPECT_STREQ(method->returnType, "{_NSRange=QQ}");
    ASSERT_EQ(method->argumentTypes.size(), 2u);
    EXPECT_STREQ(method->argumentTypes[0], "{_NSRange=QQ}");
    EXPECT_STREQ(method->argumentTypes[1], "Q");
}

TEST_F(NSClassTest, InheritsMethods)
{
    EXPECT_NE(LoudTrack::classObject().instanceMethod(NSSelector("title")), nullptr);
    EXPECT_NE(LoudTrack::classObject().instanceMethod(NSSelector("hash")), nullptr);
    EXPECT_EQ(Track::classObject().instanceMethod(NSSelector("volume")), nullptr);
}

TEST_F(NSClassTest, AnswersNothingForTheNullSelector)
{
    EXPECT_EQ(Track::classObject().instanceMethod(NSSelector()), nullptr);
}

TEST_F(NSClassTest, TakesExtensionsAfterWhatClassesDefineThemselves)
{
    static constexpr NSMethod kExtension[] = {
        NSMethodOf<"answerOfTheExtension", &fromExtension>(),
        NSMethodOf<"count", &countFromExtension>(),
    };
    auto track = NSMake<Track>();
    EXPECT_FALSE(track->respondsToSelector(NSSelector("answerOfTheExtension")));
    NSObject::classObject().extend(kExtension);
    EXPECT_EQ(NSSend<int>(track, NSSelector("answerOfTheExtension")), 42);
    EXPECT_EQ(NSSend<int>(track, NSSelector("count")), 0);
    EXPECT_EQ(NSSend<int>(NSMake<NSObject>(), NSSelector("count")), -1);
    EXPECT_NE(Track::classObject().overridingMethod(NSSelector("count")), nullptr);
    EXPECT_EQ(NSObject::classObject().overridingMethod(NSSelector("count")), nullptr);
}

TEST_F(NSClassTest, IsAskedWhileExtensionsArrive)
{
    static constexpr NSMethod kExtension[] = { NSMethodOf<"another", &fromExtension>() };
    std::thread reader([] {
        for (int i = 0; i < 10'000; ++i)
            EXPECT_NE(Track::classObject().instanceMethod(NSSelector("title")), nullptr);
    });
    for (int i = 0; i < 20; ++i)
        LoudTrack::classObject().extend(kExtension);
    reader.join();
}

TEST_F(NSClassTest, HasNoSelectorTwiceInOneTable)
{
    for (const NSClass* type : { &NSObject::classObject(), &Track::classObject() })
        for (const NSMethod& method : type->ownMethods())
            EXPECT_EQ(std::count_if(type->ownMethods().begin(), type->ownMethods().end(),
                          [&](const NSMethod& other) { return other.selector == method.selector; }),
                1)
                << method.selector;
}

TEST_F(NSClassTest, InternsSelectorsByText)
{
    EXPECT_EQ(NSSelector("a:b:"), NSSelector(std::string("a:") + "b:"));
    EXPECT_EQ(NSSelector("a:b:").arity(), 2u);
    EXPECT_EQ(NSSelector("a:b:").name(), "a:b:");
    EXPECT_FALSE(NSSelector(""));
}

}
