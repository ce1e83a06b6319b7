#include "LUMFoundation/OVMainThreadProxy.h"

#include "LUMPlatform/NSInvocation.h"
#include "LUMPlatform/NSMethodSignature.h"
#include "LUMPlatform/NSSend.h"
#include "tests/jobs/main_thread_proxy_fixture.h"

namespace {

/// Answers one selector by forwarding alone.
class Forwarder : public NSObject {
public:
    bool respondsToSelector(NSSelector selector) const override
    {
        return selector == NSSelector("twice:") || NSObject::respondsToSelector(selector);
    }
    NSRef<NSMethodSignature> methodSignatureForSelector(NSSelector selector) const override
    {
        if (selector == NSSelector("twice:"))
            return NSMethodSignature::signatureWithObjCTypes("i@:i");
        return NSObject::methodSignatureForSelector(selector);
    }
    void forwardInvocation(NSInvocation& invocation) override
    {
        invocation.setReturnValue(2 * invocation.argument<int>(2));
    }

protected:
    Forwarder() = default;
    ~Forwarder() override = default;
};

/// Has its own idea of a proxy.
class Unwrapped : public NSObject {
public:
    static const NSClass& classObject()
    {
        static constexpr NSMethod kMethods[] = { NSMethodOf<"mainThreadProxy", &Unwrapped::noProxy>() };
        static const NSClass& type = NSClass::define("Unwrapped", &NSObject::classObject(), kMethods);
        return type;
    }
    NSId noProxy() { return NSShare(this); }

protected:
    Unwrapped() = default;
    ~Unwrapped() override = default;
};

const NSSelector kUnknown("noSuchMethod:");

std::string reasonOf(const std::function<void()>& call)
{
    try {
        call();
    } catch (const NSException& exception) {
        return exception.what();
    }
    return "nothing raised";
}

TEST_F(OVMainThreadProxyTest, RunsAMessageOnTheMainThread)
{
    serveMainLoopWhile([&] { NSSend(proxy, kPlay); });
    EXPECT_EQ(player->take(), "play@main ");
}

TEST_F(OVMainThreadProxyTest, WaitsUntilTheMessageHasRun)
{
    std::string story;
    player->whilePlaying = [&] { story += "play "; };
    serveMainLoopWhile([&] {
        NSSend(proxy, kPlay);
        story += "sent ";
    });
    EXPECT_EQ(story, "play sent ");
}

TEST_F(OVMainThreadProxyTest, GivesBackAnObjectResult)
{
    NSRef<NSString> title;
    serveMainLoopWhile([&] { title = NSSend<NSRef<NSString>>(proxy, kTitle); });
    EXPECT_EQ(title->utf8(), "first");
}

TEST_F(OVMainThreadProxyTest, GivesBackNumbersAndTakesThem)
{
    int sum = 0;
    double half = 0;
    serveMainLoopWhile([&] {
        sum = NSSend<int>(proxy, NSSelector("add:to:"), 2, NSInteger { 40 });
        half = NSSend<double>(proxy, NSSelector("half:"), 5.0);
    });
    EXPECT_EQ(sum, 42);
    EXPECT_EQ(half, 2.5);
}

TEST_F(OVMainThreadProxyTest, KeepsAnArgumentAlive)
{
    serveMainLoopWhile([&] { NSSend(proxy, kSetTitle, NSRef<NSString>("second")); });
    EXPECT_EQ(player->title()->utf8(), "second");
}

TEST_F(OVMainThreadProxyTest, RunsInlineOnTheMainThread)
{
    NSSend(proxy, kPlay);
    EXPECT_EQ(player->take(), "play@main ");
}

TEST_F(OVMainThreadProxyTest, ThrowsTheTargetsExceptionAtTheSender)
{
    std::string reason;
    serveMainLoopWhile([&] { reason = reasonOf([&] { NSSend(proxy, NSSelector("fail")); }); });
    EXPECT_EQ(reason, "NSRangeException: no such title");
}

TEST_F(OVMainThreadProxyTest, AnswersForTheTargetsMethodsAndItsOwn)
{
    EXPECT_TRUE(proxy->respondsToSelector(kPlay));
    EXPECT_TRUE(proxy->respondsToSelector(NSSelector("description")));
    EXPECT_TRUE(proxy->respondsToSelector(NSSelector("mainThreadProxy")));
    EXPECT_FALSE(proxy->respondsToSelector(kUnknown));
    EXPECT_FALSE(proxy->respondsToSelector(NSSelector()));
}

TEST_F(OVMainThreadProxyTest, KnowsTheSignaturesOfTheTargetAndItsOwn)
{
    EXPECT_STREQ(proxy->methodSignatureForSelector(NSSelector("half:"))->methodReturnType(), "d");
    EXPECT_STREQ(proxy->methodSignatureForSelector(NSSelector("hash"))->methodReturnType(), "Q");
    EXPECT_EQ(proxy->methodSignatureForSelector(kUnknown), nullptr);
}

TEST_F(OVMainThreadProxyTest, AnswersRootMessagesItselfOnTheCallingThread)
{
    // No main loop runs here, so a message that was forwarded would wait for ever.
    std::thread([&] {
        EXPECT_EQ(NSSend<NSUInteger>(proxy, NSSelector("hash")), proxy->hash());
        EXPECT_TRUE(NSSend<bool>(proxy, NSSelector("isEqual:"), proxy));
        EXPECT_FALSE(NSSend<bool>(proxy, NSSelector("isEqual:"), player));
        EXPECT_EQ(NSSend<NSRef<NSString>>(proxy, NSSelector("description"))
                      ->utf8()
                      .rfind("<OVMainThreadProxy: 0x", 0),
            0u);
    }).join();
}

TEST_F(OVMainThreadProxyTest, RaisesAtTheSenderForAMessageNobodyAnswersAndQueuesNothing)
{
    std::string reason;
    std::thread([&] { reason = reasonOf([&] { NSSend(proxy, kUnknown, 1); }); }).join();
    EXPECT_EQ(reason.rfind(
                  "NSInvalidArgumentException: -[OVMainThreadProxy noSuchMethod:]: unrecognized selector", 0),
        0u)
        << reason;
    EXPECT_NO_THROW(platform::MainQueue::shared().drain()); // the target would raise as well
    EXPECT_EQ(player->take(), "");
}

TEST_F(OVMainThreadProxyTest, DeliberatelyGivesBackNullForAPerformedSelector)
{
    NSId performed = player;
    NSId sent;
    serveMainLoopWhile([&] {
        performed = proxy->performSelector(kTitle);
        sent = NSSend<NSId>(proxy, kTitle);
    });
    EXPECT_EQ(player->take(), "title@main title@main ");
    EXPECT_EQ(performed, nullptr);
    EXPECT_EQ(sent->description()->utf8(), "first");
}

TEST_F(OVMainThreadProxyTest, PerformsASelectorWithAnObject)
{
    NSId performed = player;
    serveMainLoopWhile(
        [&] { performed = proxy->performSelectorWithObject(kSetTitle, NSRef<NSString>("third")); });
    EXPECT_EQ(player->take(), "setTitle@main ");
    EXPECT_EQ(performed, nullptr);
    EXPECT_EQ(player->title()->utf8(), "third");
}

TEST_F(OVMainThreadProxyTest, LeavesTheObjectOutForASelectorThatTakesNone)
{
    NSId performed = player;
    serveMainLoopWhile([&] { performed = proxy->performSelectorWithObject(kPlay, player); });
    EXPECT_EQ(player->take(), "play@main ");
    EXPECT_EQ(performed, nullptr);
    EXPECT_EQ(proxy->performSelectorWithObject(NSSelector("mainThreadProxy"), player), proxy);
}

TEST_F(OVMainThreadProxyTest, RaisesForASelectorThatTakesMoreThanOneObject)
{
    EXPECT_THROW((void)proxy->performSelectorWithObject(NSSelector("add:to:"), player), NSException);
}

TEST_F(OVMainThreadProxyTest, PerformsItsOwnSelectorsItselfWithTheirResult)
{
    std::thread([&] {
        EXPECT_EQ(proxy->performSelector(NSSelector("mainThreadProxy")), proxy);
        EXPECT_EQ(NSSend<NSId>(proxy, NSSelector("performSelector:"), NSSelector("mainThreadProxy")), proxy);
    }).join();
}

TEST_F(OVMainThreadProxyTest, RaisesAtTheSenderWhenPerformingWhatNobodyAnswers)
{
    std::string plain;
    std::string withObject;
    std::thread([&] {
        plain = reasonOf([&] { static_cast<void>(proxy->performSelector(NSSelector("nothing"))); });
        withObject =
            reasonOf([&] { static_cast<void>(proxy->performSelectorWithObject(kUnknown, nullptr)); });
    }).join();
    EXPECT_NE(plain.find("[OVMainThreadProxy nothing]: unrecognized selector"), std::string::npos) << plain;
    EXPECT_NE(withObject.find("[OVMainThreadProxy noSuchMethod:]"), std::string::npos) << withObject;
    EXPECT_NO_THROW(platform::MainQueue::shared().drain());
}

TEST_F(OVMainThreadProxyTest, InvokesAForwardedInvocationAndLeavesItTheResult)
{
    auto invocation =
        NSInvocation::invocationWithMethodSignature(proxy->methodSignatureForSelector(NSSelector("half:")));
    invocation->setSelector(NSSelector("half:"));
    invocation->setArgument(3.0, 2);
    serveMainLoopWhile([&] { proxy->forwardInvocation(*invocation); });
    EXPECT_TRUE(invocation->argumentsRetained());
    EXPECT_EQ(invocation->returnValue<double>(), 1.5);
    EXPECT_EQ(invocation->target(), nullptr);
}

TEST_F(OVMainThreadProxyTest, RaisesForAForwardedInvocationNobodyAnswers)
{
    auto invocation =
        NSInvocation::invocationWithMethodSignature(NSMethodSignature::signatureWithObjCTypes("v@:"));
    invocation->setSelector(NSSelector("nothing"));
    EXPECT_THROW(proxy->forwardInvocation(*invocation), NSException);
}

TEST_F(OVMainThreadProxyTest, ReachesATargetThatForwards)
{
    auto forwarder = NSMake<Forwarder>();
    NSId forwarding = OVMainThreadProxy::mainThreadProxy(forwarder);
    int result = 0;
    serveMainLoopWhile([&] { result = NSSend<int>(forwarding, NSSelector("twice:"), 21); });
    EXPECT_EQ(result, 42);
}

TEST_F(OVMainThreadProxyTest, IsItsOwnProxy)
{
    EXPECT_EQ(OVMainThreadProxy::mainThreadProxy(proxy), proxy);
    EXPECT_EQ(OVMainThreadProxy::copyMainThreadProxy(proxy), proxy);
    EXPECT_EQ(NSSend<NSId>(proxy, NSSelector("mainThreadProxy")), proxy);
    EXPECT_EQ(NSSend<NSId>(proxy, NSSelector("copyMainThreadProxy")), proxy);
}

TEST_F(OVMainThreadProxyTest, IsMadeByAMessageToAnyObject)
{
    for (const char* selector : { "mainThreadProxy", "copyMainThreadProxy" }) {
        NSId made = NSSend<NSId>(player, NSSelector(selector));
        EXPECT_NE(made, proxy);
        NSSend(made, kPlay);
        EXPECT_EQ(player->take(), "play@main ") << selector;
    }
}

TEST_F(OVMainThreadProxyTest, LeavesAClassItsOwnProxy)
{
    NSId own = NSMake<Unwrapped>();
    EXPECT_EQ(OVMainThreadProxy::mainThreadProxy(own), own);
    EXPECT_NE(OVMainThreadProxy::copyMainThreadProxy(own), own);
}

TEST_F(OVMainThreadProxyTest, IsNullForNull)
{
    EXPECT_EQ(OVMainThreadProxy::mainThreadProxy(nullptr), nullptr);
    EXPECT_EQ(OVMainThreadProxy::copyMainThreadProxy(nullptr), nullptr);
}

TEST_F(OVMainThreadProxyTest, AnswersZeroForANullTarget)
{
    NSId none = OVMainThreadProxy::initWithTarget(nullptr);
    NSSend(none, kPlay);
    EXPECT_EQ(NSSend<NSId>(none, kTitle), nullptr);
    EXPECT_FALSE(none->respondsToSelector(kPlay));
    EXPECT_TRUE(none->respondsToSelector(NSSelector("hash")));
}

TEST_F(OVMainThreadProxyTest, ServesManySendersAtOnce)
{
    constexpr int kSenders = 8;
    constexpr int kMessages = 200;
    int played = 0; // the main thread's alone
    player->whilePlaying = [&] { ++played; };
    serveMainLoopWhile([&] {
        std::vector<std::thread> senders;
        for (int i = 0; i < kSenders; ++i)
            senders.emplace_back([&] {
                for (int message = 0; message < kMessages; ++message)
                    NSSend(proxy, kPlay);
            });
        for (auto& sender : senders)
            sender.join();
    });
    EXPECT_EQ(played, kSenders * kMessages);
}

}
