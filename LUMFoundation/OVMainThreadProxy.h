#pragma once

#include "LUMFoundation/LUMExport.h"
#include "LUMPlatform/NSObject.h"
#include "LUMPlatform/NSWeak.h"

#include <atomic>

/// Stands in for an object: a message sent to the proxy, on any thread, runs on the object on the main
/// thread, and the sender waits for its result.
///
/// A message is a dynamic call (NSSend). What the proxy's own class answers, which is all that NSObject does
/// (identity, equality, hash, description, the questions about selectors), stays on the calling thread and is
/// about the proxy. Everything else goes to the target, arguments, result and exceptions included; on the
/// main thread it runs at once.
///
/// The proxy does not own its target. While a message is under way its target is kept alive, and then let go
/// on the main thread. Once the target has ended, a message does nothing and answers zero, as one to null
/// does.
///
/// Threads: any. A sender for whom the main thread waits deadlocks, and without a main loop (see NSThread) a
/// sender waits for ever.
///
///     NSId proxy = OVMainThreadProxy::mainThreadProxy(list);
///     NSSend(proxy, NSSelector("addRow:"), row);                      // from a worker thread
///     auto rows = NSSend<NSInteger>(proxy, NSSelector("rowCount"));
class LUM_EXPORT OVMainThreadProxy : public NSObject {
public:
    static const NSClass& classObject();

    /// A proxy for `object`, which it does not own; null is a target that has ended.
    /// Selector: initWithTarget:
    static NSRef<OVMainThreadProxy> initWithTarget(const NSId& object);

    /// A new proxy for `object`; a proxy itself when `object` is one; null for null. Any object answers the
    /// selector.
    /// Selector: mainThreadProxy
    static NSId mainThreadProxy(const NSId& object);
    /// The same.
    /// Selector: copyMainThreadProxy
    static NSId copyMainThreadProxy(const NSId& object);

    /// Whether the proxy's own class answers, or else the target.
    /// Selector: respondsToSelector:
    bool respondsToSelector(NSSelector selector) const override;
    /// The proxy's own signature, or else the target's.
    /// Selector: methodSignatureForSelector:
    NSRef<NSMethodSignature> methodSignatureForSelector(NSSelector selector) const override;

    /// What the proxy's own class answers is performed on the proxy, here, and its result returned. Anything
    /// else is performed by the target on the main thread, waiting. Deliberate: that result is not passed
    /// back, it returns null. Send the selector itself to have the result. Raises NSInvalidArgumentException,
    /// here and with nothing queued, when the target does not answer.
    /// Selector: performSelector:
    NSId performSelector(NSSelector selector) override;
    /// The same with one argument, kept alive during the call and left out for a selector that takes none.
    /// Selector: performSelector:withObject:
    NSId performSelectorWithObject(NSSelector selector, const NSId& object) override;

    /// Invokes `invocation` on the target on the main thread, waiting; the result stays in it, the target
    /// does not. Raises NSInvalidArgumentException, here and with nothing queued, when the target does not
    /// answer.
    /// Selector: forwardInvocation:
    void forwardInvocation(NSInvocation& invocation) override;

protected:
    explicit OVMainThreadProxy(const NSId& object);
    ~OVMainThreadProxy() override;

private:
    NSId liveTarget() const;
    bool isOwnSelector(NSSelector selector) const;
    template<typename Call> bool performOnTarget(NSSelector selector, Call call);

    const NSWeak<NSObject> target;
    /// Types the messages to a target that has ended. A target may be given while it is being made, when it
    /// has not its final class yet, so every message looks anew.
    mutable std::atomic<const NSClass*> targetClass { nullptr };
};
