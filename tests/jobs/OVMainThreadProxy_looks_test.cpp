// What a sender's look at the target of a proxy does to the target's end.

#include "LUMFoundation/OVMainThreadProxy.h"

#include "LUMPlatform/NSException.h"
#include "LUMPlatform/NSMethodSignature.h"
#include "LUMPlatform/NSThread.h"
#include "tests/fixture.h"
#include "tests/main_loop.h"

#include <functional>

namespace {

/// Lets go of itself everywhere else while somebody asks what it answers.
struct Fleeting : NSObject {
    bool respondsToSelector(NSSelector selector) const override
    {
        whenAsked();
        return NSObject::respondsToSelector(selector);
    }
    NSRef<NSMethodSignature> methodSignatureForSelector(NSSelector selector) const override
    {
        whenAsked();
        return NSObject::methodSignatureForSelector(selector);
    }
    ~Fleeting() override { atEnd(); }

    std::function<void()> whenAsked;
    std::function<void()> atEnd;
};

struct OVMainThreadProxyLooksTest : ObjectTest {
    OVMainThreadProxyLooksTest()
    {
        target->whenAsked = [this] { target = nullptr; };
        target->atEnd = [this] { endedOnMainThread = NSThread::isMainThread(); };
    }

    NSRef<Fleeting> target = NSMake<Fleeting>();
    NSRef<OVMainThreadProxy> proxy = OVMainThreadProxy::initWithTarget(target);
    bool endedOnMainThread = false;
};

TEST_F(OVMainThreadProxyLooksTest, EndTheTargetOnTheMainThreadWhenAskedForAMethod)
{
    serveMainLoopWhile([&] { (void)proxy->respondsToSelector(NSSelector("play")); });
    EXPECT_TRUE(endedOnMainThread);
}

TEST_F(OVMainThreadProxyLooksTest, EndTheTargetOnTheMainThreadWhenAskedForASignature)
{
    serveMainLoopWhile([&] { (void)proxy->methodSignatureForSelector(NSSelector("play")); });
    EXPECT_TRUE(endedOnMainThread);
}

TEST_F(OVMainThreadProxyLooksTest, EndTheTargetOnTheMainThreadWhenItDoesNotAnswer)
{
    serveMainLoopWhile([&] { EXPECT_THROW((void)proxy->performSelector(NSSelector("play")), NSException); });
    EXPECT_TRUE(endedOnMainThread);
}

}
