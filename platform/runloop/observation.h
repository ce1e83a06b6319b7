#pragma once

#include "LUMPlatform/NSString.h"
#include "LUMPlatform/NSWeak.h"

namespace platform {

class ObserverList;

/// One registration with a notification centre: who is told, by which message, of which notifications.
///
/// Neither observer nor object is kept alive. An address alone would not tell a new object from one that has
/// ended there, so what is found by address is asked of the weak reference too.
struct Observation {
    Observation(const NSId& observer_, NSSelector selector_, const NSRef<NSString>& name_,
        const NSId& object_, std::uint64_t order_)
        : observer(observer_)
        , selector(selector_)
        , name(name_)
        , object(object_)
        , observerAddress(observer_.get())
        , objectAddress(object_.get())
        , order(order_)
    {
    }

    bool wantsObject(const NSObject* posted) const { return !objectAddress || object.refersTo(posted); }
    /// Whether its observer or its object has ended, so that it can match no more.
    bool isDead() const { return observer.refersTo(nullptr) || (objectAddress && object.refersTo(nullptr)); }

    const NSWeak<NSObject> observer;
    const NSSelector selector;
    const NSRef<NSString> name; ///< Null for any.
    const NSWeak<NSObject> object;
    const NSObject* const observerAddress;
    const NSObject* const objectAddress; ///< Null for any.
    const std::uint64_t order; ///< Grows from registration to registration.
    std::atomic<bool> isRemoved { false };

    // The table's, under its lock.
    ObserverList* list = nullptr;
    Observation* previousOfObserver = nullptr;
    Observation* nextOfObserver = nullptr;
};

}
