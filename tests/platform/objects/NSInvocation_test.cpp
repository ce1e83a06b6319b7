#include "LUMPlatform/NSInvocation.h"

#include "LUMPlatform/NSMethodSignature.h"
#include "tests/fixture.h"
#include "tests/platform/objects/track.h"

namespace {

struct NSInvocationTest : ObjectTest {
    NSRef<NSInvocation> invocation(const char* types, const char* selector)
    {
        auto made =
            NSInvocation::invocationWithMethodSignature(NSMethodSignature::signatureWithObjCTypes(types));
        made->setSelector(NSSelector(selector));
        return made;
    }
    NSRef<Track> track = NSMake<Track>("a");
};

TEST_F(NSInvocationTest, CallsItsTarget)
{
    auto call = invocation("v@:@", "setTitle:");
    call->setArgument(NSRef<NSString>("b"), 2);
    call->setTarget(track);
    call->invoke();
    EXPECT_EQ(track->title()->utf8(), "b");
}

TEST_F(NSInvocationTest, KeepsObjectArgumentsAlive)
{
    auto call = invocation("v@:@", "setTitle:");
    {
        NSRef<NSString> title = std::string(100, 'x');
        call->setArgument(title, 2);
    }
    call->invokeWithTarget(track);
    EXPECT_EQ(track->title()->utf8().size(), 100u);
}

TEST_F(NSInvocationTest, ReadsTheResultAsItsSignatureSays)
{
    auto call = invocation("i@:", "big");
    call->invokeWithTarget(track);
    EXPECT_EQ(call->returnValue<NSInteger>(), 3);
    auto text = invocation("@@:", "title");
    text->invokeWithTarget(track);
    EXPECT_EQ(text->returnValue<NSRef<NSString>>()->utf8(), "a");
}

TEST_F(NSInvocationTest, AnswersZeroBeforeTheFirstCallAndForANullTarget)
{
    auto call = invocation("@@:", "title");
    EXPECT_FALSE(call->returnValue<NSId>());
    call->invoke();
    EXPECT_FALSE(call->returnValue<NSId>());
}

TEST_F(NSInvocationTest, ReadsAResultOfUnknownTypeAsZeroOfAnyType)
{
    auto call = invocation("?@:", "title");
    call->invoke();
    EXPECT_FALSE(call->returnValue<NSRef<NSString>>());
    EXPECT_EQ(call->returnValue<double>(), 0.0);
    EXPECT_EQ(call->returnValue<NSRange>().length, 0U);
    EXPECT_EQ(call->returnValue<NSSelector>(), NSSelector());
}

TEST_F(NSInvocationTest, ForgetsAnArgumentOfUnknownType)
{
    auto call = invocation("v@:?", "setTitle:");
    call->setArgument(2.5, 2);
    EXPECT_EQ(call->argument<double>(2), 0.0);
    call->invokeWithTarget(track);
    EXPECT_EQ(track->title(), nullptr);
}

TEST_F(NSInvocationTest, KeepsTheTargetOnlyWhenToldTo)
{
    auto call = invocation("@@:", "title");
    call->setTarget(track);
    EXPECT_FALSE(call->argumentsRetained());
    call->retainArguments();
    EXPECT_TRUE(call->argumentsRetained());
    track = nullptr;
    call->invoke();
    EXPECT_EQ(call->returnValue<NSRef<NSString>>()->utf8(), "a");
}

TEST_F(NSInvocationTest, HasANullTargetOnceAnUnkeptOneDied)
{
    auto call = invocation("@@:", "title");
    call->setTarget(track);
    track = nullptr;
    EXPECT_FALSE(call->target());
}

TEST_F(NSInvocationTest, RaisesForAnIndexThatIsNoArgument)
{
    auto call = invocation("v@:@", "setTitle:");
    for (NSUInteger index : { 0u, 1u, 3u })
        EXPECT_THROW(call->setArgument(NSId(), index), NSException);
}

TEST_F(NSInvocationTest, ConvertsAnArgumentToTheSignaturesType)
{
    auto call = invocation("v@:d", "setSeconds:");
    call->setArgument(3, 2);
    call->invokeWithTarget(track);
    EXPECT_EQ(track->seconds(), 3.0);
    EXPECT_THROW(call->setArgument(NSRef<NSString>("x"), 2), NSException);
}

/// Remembers a truth value that it was sent.
struct Switch : NSObject {
    static const NSClass& classObject()
    {
        static constexpr NSMethod kMethods[] = { NSMethodOf<"setOn:", &Switch::setOn>() };
        static const NSClass& type = NSClass::define("Switch", &NSObject::classObject(), kMethods);
        return type;
    }
    void setOn(bool on) { isOn = on; }
    bool isOn = false;
};

TEST_F(NSInvocationTest, ConvertsATruthValueAsADirectSendDoes)
{
    const NSSelector setOn("setOn:");
    for (double value : { 0.0, 0.5, 1.0, 255.0, 256.0, 257.0, -1.0 }) {
        auto direct = NSMake<Switch>();
        NSSend(direct, setOn, value);
        auto invoked = NSMake<Switch>();
        auto call = NSInvocation::invocationWithMethodSignature(invoked->methodSignatureForSelector(setOn));
        call->setSelector(setOn);
        call->setArgument(value, 2);
        call->invokeWithTarget(invoked);
        EXPECT_EQ(direct->isOn, invoked->isOn) << value;
    }
}

TEST_F(NSInvocationTest, IsNullWithoutASignature)
{
    EXPECT_FALSE(NSInvocation::invocationWithMethodSignature(nullptr));
}

}
