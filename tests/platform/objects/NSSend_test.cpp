#include "LUMPlatform/NSSend.h"

#include "LUMPlatform/NSInvocation.h"
#include "LUMPlatform/NSMethodSignature.h"
#include "tests/fixture.h"
#include "tests/platform/objects/track.h"

#include <cmath>
#include <limits>

namespace {

struct NSSendTest : ObjectTest {
    NSRef<Track> track = NSMake<Track>("a");
};

/// Sends everything it does not answer to another object, and remembers what passed.
class Forwarder : public NSObject {
public:
    NSRef<NSMethodSignature> methodSignatureForSelector(NSSelector selector) const override
    {
        return target->methodSignatureForSelector(selector);
    }
    void forwardInvocation(NSInvocation& invocation) override
    {
        passed += std::string(invocation.selector().name()) + " ";
        invocation.invokeWithTarget(target);
    }
    NSId target;
    std::string passed;

protected:
    explicit Forwarder(const NSId& target_) : target(target_) { }
    ~Forwarder() override = default;
};

TEST_F(NSSendTest, CallsTheMethodWithItsArgument)
{
    NSSend(track, NSSelector("setTitle:"), NSRef<NSString>("b"));
    EXPECT_EQ(NSSend<NSRef<NSString>>(track, NSSelector("title"))->utf8(), "b");
}

TEST_F(NSSendTest, AnswersZeroForANullReceiver)
{
    EXPECT_EQ(NSSend<int>(NSId(), NSSelector("count")), 0);
    EXPECT_FALSE(NSSend<NSId>(NSId(), NSSelector("title")));
}

TEST_F(NSSendTest, CallsTheOverrideOfASubclass)
{
    NSRef<Track> loud = NSMake<LoudTrack>();
    EXPECT_EQ(NSSend<int>(loud, NSSelector("play")), 100);
}

TEST_F(NSSendTest, ConvertsNumbersBetweenTypes)
{
    NSSend(track, NSSelector("setSeconds:"), 3);
    EXPECT_EQ(track->seconds(), 3.0);
    EXPECT_EQ(NSSend<int>(track, NSSelector("seconds")), 3);
    EXPECT_EQ(NSSend<bool>(track, NSSelector("isLoud")), true);
    EXPECT_EQ(NSSend<double>(track, NSSelector("isLoud")), 1.0);
}

TEST_F(NSSendTest, ReadsAWiderIntegerInItsLowBits)
{
    EXPECT_EQ(NSSend<std::int32_t>(track, NSSelector("big")), 3);
}

TEST_F(NSSendTest, GivesTheNearestIntegerForAFloatOutOfRange)
{
    track->setSeconds(1e300);
    EXPECT_EQ(NSSend<std::int32_t>(track, NSSelector("seconds")), std::numeric_limits<std::int32_t>::max());
    EXPECT_EQ(NSSend<std::uint64_t>(track, NSSelector("seconds")), std::numeric_limits<std::uint64_t>::max());
    track->setSeconds(-INFINITY);
    EXPECT_EQ(NSSend<std::int64_t>(track, NSSelector("seconds")), std::numeric_limits<std::int64_t>::min());
    EXPECT_EQ(NSSend<std::uint64_t>(track, NSSelector("seconds")), 0u);
    track->setSeconds(NAN);
    EXPECT_EQ(NSSend<int>(track, NSSelector("seconds")), 0);
}

TEST_F(NSSendTest, PassesStructures)
{
    EXPECT_EQ(
        (NSSend<NSRange>(track, NSSelector("range:plus:"), NSRange { 1, 2 }, 10)), (NSRange { 11, 12 }));
}

TEST_F(NSSendTest, PassesObjectsToReferences)
{
    EXPECT_EQ(NSSend<NSRef<NSString>>(track, NSSelector("joinedWith:"), *track)->utf8(), "aa");
}

TEST_F(NSSendTest, RaisesForNullWhereAnObjectIsRequired)
{
    EXPECT_THROW((void)NSSend<NSId>(track, NSSelector("joinedWith:"), NSId()), NSException);
}

TEST_F(NSSendTest, RaisesForAnObjectOfTheWrongClass)
{
    EXPECT_THROW(NSSend(track, NSSelector("setTitle:"), track), NSException);
    EXPECT_THROW(NSSend(track, NSSelector("setTitle:"), 5), NSException);
    EXPECT_THROW(NSSend<int>(track, NSSelector("title")), NSException);
}

TEST_F(NSSendTest, RaisesForAWrongNumberOfArguments)
{
    EXPECT_THROW(NSSend(track, NSSelector("setTitle:")), NSException);
    EXPECT_THROW(NSSend(track, NSSelector("title"), 1), NSException);
}

TEST_F(NSSendTest, RaisesWhenNobodyAnswers)
{
    try {
        NSSend(track, NSSelector("fly"));
        FAIL();
    } catch (const NSException& exception) {
        EXPECT_NE(
            std::string(exception.what()).find("-[Track fly]: unrecognized selector"), std::string::npos);
    }
}

TEST_F(NSSendTest, LetsTheMethodsExceptionThrough)
{
    EXPECT_THROW(NSSend(track, NSSelector("fail")), NSException);
}

TEST_F(NSSendTest, PerformAnswersTheObjectAndNullForEverythingElse)
{
    EXPECT_EQ(NSCast<NSString>(track->performSelector(NSSelector("title")))->utf8(), "a");
    EXPECT_FALSE(track->performSelector(NSSelector("count")));
    EXPECT_FALSE(track->performSelectorWithObject(NSSelector("setTitle:"), NSRef<NSString>("z")));
    EXPECT_EQ(track->title()->utf8(), "z");
}

TEST_F(NSSendTest, ForwardsWhatTheReceiverDoesNotAnswerAndBringsTheResultBack)
{
    auto forwarder = NSMake<Forwarder>(track);
    NSSend(forwarder, NSSelector("setTitle:"), NSRef<NSString>("far"));
    EXPECT_EQ(NSSend<NSRef<NSString>>(forwarder, NSSelector("title"))->utf8(), "far");
    EXPECT_EQ(
        (NSSend<NSRange>(forwarder, NSSelector("range:plus:"), NSRange { 1, 2 }, 1)), (NSRange { 2, 3 }));
    EXPECT_EQ(forwarder->passed, "setTitle: title range:plus: ");
}

}
