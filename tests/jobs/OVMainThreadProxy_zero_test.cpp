// Messages to proxies whose target is gone and whose types nobody knows.

#include "LUMPlatform/NSInvocation.h"
#include "LUMPlatform/NSMethodSignature.h"
#include "LUMPlatform/NSSend.h"
#include "tests/jobs/main_thread_proxy_fixture.h"

namespace {

/// Has no method but answers every selector, by forwarding.
class Anything : public NSObject {
public:
    bool respondsToSelector(NSSelector) const override { return true; }
    NSRef<NSMethodSignature> methodSignatureForSelector(NSSelector selector) const override
    {
        return NSMethodSignature::signatureWithObjCTypes("q@:" + std::string(selector.arity(), 'q'));
    }
    void forwardInvocation(NSInvocation& invocation) override { invocation.setReturnValue(7); }

protected:
    Anything() = default;
    ~Anything() override = default;
};

NSId proxyForNull()
{
    return OVMainThreadProxy::initWithTarget(nullptr);
}

NSId proxyForEnded()
{
    return OVMainThreadProxy::initWithTarget(NSMake<Anything>());
}

struct Gone {
    const char* name;
    NSId (*proxy)();
};

enum class Colour : std::uint8_t { kRed, kBlue };

class OVMainThreadProxyZeroTest : public ObjectTest, public testing::WithParamInterface<Gone> {
protected:
    NSId proxy = GetParam().proxy();
};

INSTANTIATE_TEST_SUITE_P(ATargetThat, OVMainThreadProxyZeroTest,
    testing::Values(Gone { "IsNull", &proxyForNull }, Gone { "HasEndedAndOnlyForwarded", &proxyForEnded }),
    [](const auto& gone) { return std::string(gone.param.name); });

TEST_P(OVMainThreadProxyZeroTest, TakesArgumentsOfEveryKind)
{
    const NSSelector take("take:");
    NSSend(proxy, take, NSRef<NSString>("text"));
    NSSend(proxy, take, NSId());
    NSSend(proxy, take, true);
    NSSend(proxy, take, 'c');
    NSSend(proxy, take, static_cast<unsigned char>(1));
    NSSend(proxy, take, static_cast<short>(1));
    NSSend(proxy, take, static_cast<unsigned short>(1));
    NSSend(proxy, take, 1);
    NSSend(proxy, take, 1u);
    NSSend(proxy, take, NSInteger { 1 });
    NSSend(proxy, take, NSUInteger { 1 });
    NSSend(proxy, take, 1.0f);
    NSSend(proxy, take, 1.0);
    NSSend(proxy, take, Colour::kBlue);
    NSSend(proxy, take, kPlay);
    NSSend(proxy, take, Player::classObject());
    NSSend(proxy, take, static_cast<const void*>(this));
    NSSend(proxy, take, NSRange { 1, 2 });
    NSSend(proxy, NSSelector("take:and:"), 1, kPlay);
}

TEST_P(OVMainThreadProxyZeroTest, AnswersZeroOfEveryKind)
{
    const NSSelector give("give");
    NSSend(proxy, give);
    EXPECT_EQ(NSSend<NSId>(proxy, give), nullptr);
    EXPECT_EQ(NSSend<NSRef<NSString>>(proxy, give), nullptr);
    EXPECT_FALSE(NSSend<bool>(proxy, give));
    EXPECT_EQ(NSSend<char>(proxy, give), 0);
    EXPECT_EQ(NSSend<unsigned char>(proxy, give), 0);
    EXPECT_EQ(NSSend<short>(proxy, give), 0);
    EXPECT_EQ(NSSend<unsigned short>(proxy, give), 0);
    EXPECT_EQ(NSSend<int>(proxy, give), 0);
    EXPECT_EQ(NSSend<unsigned>(proxy, give), 0u);
    EXPECT_EQ(NSSend<NSInteger>(proxy, give), 0);
    EXPECT_EQ(NSSend<NSUInteger>(proxy, give), 0u);
    EXPECT_EQ(NSSend<float>(proxy, give), 0.0f);
    EXPECT_EQ(NSSend<double>(proxy, give), 0.0);
    EXPECT_EQ(NSSend<Colour>(proxy, give), Colour::kRed);
    EXPECT_EQ(NSSend<NSSelector>(proxy, give), NSSelector());
    EXPECT_EQ(NSSend<const void*>(proxy, give), nullptr);
    EXPECT_EQ(NSSend<NSRange>(proxy, give).length, 0u);
    EXPECT_EQ(proxy->performSelector(give), nullptr);
    EXPECT_EQ(proxy->performSelectorWithObject(give, proxy), nullptr);
}

}
