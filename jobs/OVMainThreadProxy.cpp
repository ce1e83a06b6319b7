#include "LUMFoundation/OVMainThreadProxy.h"

#include "LUMPlatform/NSInvocation.h"
#include "LUMPlatform/NSMethodSignature.h"
#include "LUMPlatform/NSThread.h"
#include "core/method_tables.h"

#include <string>

namespace {

/// A proxy is not wrapped again.
NSId itself(const NSRef<OVMainThreadProxy>& proxy)
{
    return proxy;
}

constexpr NSMethod kMethods[] = {
    NSMethodOf<"mainThreadProxy", &itself>(),
    NSMethodOf<"copyMainThreadProxy", &itself>(),
};

constexpr NSMethod kRootMethods[] = {
    NSMethodOf<"mainThreadProxy", &OVMainThreadProxy::mainThreadProxy>(),
    NSMethodOf<"copyMainThreadProxy", &OVMainThreadProxy::copyMainThreadProxy>(),
};

NSId proxyFor(const NSId& object, NSSelector selector)
{
    if (!object)
        return nullptr;
    if (object->isa().overridingMethod(selector))
        return NSSend<NSId>(object, selector);
    return OVMainThreadProxy::initWithTarget(object);
}

/// A target that a sender looks at. Should this be its last reference, it ends on the main thread, where its
/// messages run, not at the sender.
class Held {
public:
    explicit Held(NSId target) : mTarget(std::move(target)) { }
    ~Held()
    {
        if (!mTarget || NSThread::isMainThread())
            return;
        NSObject* target = mTarget.leak();
        if (!target->releaseUnlessLast())
            NSThread::performOnMainThread([last = NSAdopt(target)] {});
    }
    Held(const Held&) = delete;
    Held& operator=(const Held&) = delete;

    explicit operator bool() const { return mTarget != nullptr; }
    NSObject* operator->() const { return mTarget.get(); }
    NSId take() { return std::move(mTarget); }

private:
    NSId mTarget;
};

/// For a method of which nothing is known, since its object has ended and its class does not know it either.
/// It takes what it is given and answers the zero that its sender reads.
NSRef<NSMethodSignature> signatureOfUnknown(NSSelector selector)
{
    return NSMethodSignature::signatureWithObjCTypes("?@:" + std::string(selector.arity(), '?'));
}

}

std::span<const NSMethod> lum::mainThreadProxyMethods()
{
    return kRootMethods;
}

const NSClass& OVMainThreadProxy::classObject()
{
    static const NSClass& type = NSClass::define("OVMainThreadProxy", &NSObject::classObject(), kMethods);
    return type;
}

OVMainThreadProxy::OVMainThreadProxy(const NSId& object) : target(object) { }

OVMainThreadProxy::~OVMainThreadProxy() = default;

NSRef<OVMainThreadProxy> OVMainThreadProxy::initWithTarget(const NSId& object)
{
    auto proxy = NSMake<OVMainThreadProxy>(object);
    proxy->targetClass = object ? &object->isa() : nullptr;
    return proxy;
}

NSId OVMainThreadProxy::mainThreadProxy(const NSId& object)
{
    static const NSSelector selector("mainThreadProxy");
    return proxyFor(object, selector);
}

NSId OVMainThreadProxy::copyMainThreadProxy(const NSId& object)
{
    static const NSSelector selector("copyMainThreadProxy");
    return proxyFor(object, selector);
}

NSId OVMainThreadProxy::liveTarget() const
{
    NSId live = target.get();
    if (live)
        targetClass.store(&live->isa(), std::memory_order_relaxed);
    return live;
}

bool OVMainThreadProxy::isOwnSelector(NSSelector selector) const
{
    return isa().instanceMethod(selector) != nullptr;
}

bool OVMainThreadProxy::respondsToSelector(NSSelector selector) const
{
    if (isOwnSelector(selector))
        return true;
    const Held live(liveTarget());
    return live && live->respondsToSelector(selector);
}

NSRef<NSMethodSignature> OVMainThreadProxy::methodSignatureForSelector(NSSelector selector) const
{
    if (isOwnSelector(selector))
        return NSObject::methodSignatureForSelector(selector);
    if (const Held live(liveTarget()); live)
        return live->methodSignatureForSelector(selector);
    const NSClass* type = targetClass.load(std::memory_order_relaxed);
    auto known = type ? type->instanceMethodSignature(selector) : nullptr;
    return known ? known : signatureOfUnknown(selector);
}

/// Runs `call` with the target on the main thread and waits; false when the target has ended.
template<typename Call> bool OVMainThreadProxy::performOnTarget(NSSelector selector, Call call)
{
    Held live(liveTarget());
    if (!live)
        return false;
    if (!live->respondsToSelector(selector))
        doesNotRecognizeSelector(selector);
    NSThread::performOnMainThreadAndWait([&] {
        const NSId kept = live.take();
        call(kept);
    });
    return true;
}

NSId OVMainThreadProxy::performSelector(NSSelector selector)
{
    if (isOwnSelector(selector))
        return NSObject::performSelector(selector);
    // Deliberate: what the target answers is not passed back, here and below.
    performOnTarget(
        selector, [selector](const NSId& live) { static_cast<void>(live->performSelector(selector)); });
    return nullptr;
}

NSId OVMainThreadProxy::performSelectorWithObject(NSSelector selector, const NSId& object)
{
    const NSId kept = object;
    if (selector.arity() == 0)
        return OVMainThreadProxy::performSelector(selector);
    if (isOwnSelector(selector))
        return NSObject::performSelectorWithObject(selector, kept);
    performOnTarget(selector, [selector, &kept](const NSId& live) {
        static_cast<void>(live->performSelectorWithObject(selector, kept));
    });
    return nullptr;
}

void OVMainThreadProxy::forwardInvocation(NSInvocation& invocation)
{
    invocation.setTarget(nullptr);
    invocation.retainArguments();
    bool ran = performOnTarget(invocation.selector(), [&invocation](const NSId& live) {
        struct LetGo {
            NSInvocation& invocation;
            ~LetGo() { invocation.setTarget(nullptr); }
        } letGo { invocation };
        invocation.invokeWithTarget(live);
    });
    if (!ran)
        invocation.invoke(); // without a target, which makes the result zero
}
