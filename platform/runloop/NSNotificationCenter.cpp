#include "LUMPlatform/NSNotificationCenter.h"

#include "LUMPlatform/NSException.h"
#include "LUMPlatform/NSSend.h"
#include "platform/objects/live_objects.h"
#include "platform/runloop/observer_table.h"

namespace {

constexpr NSMethod kMethods[] = {
    NSMethodOf<"addObserver:selector:name:object:", &NSNotificationCenter::addObserver>(),
    NSMethodOf<"removeObserver:name:object:", &NSNotificationCenter::removeObserver>(),
    NSMethodOf<"removeObserver:",
        +[](NSNotificationCenter& center, const NSId& observer) { center.removeObserver(observer); }>(),
    NSMethodOf<"postNotification:", &NSNotificationCenter::postNotification>(),
    NSMethodOf<"postNotificationName:object:userInfo:", &NSNotificationCenter::postNotificationName>(),
    NSMethodOf<"postNotificationName:object:",
        +[](NSNotificationCenter& center, const NSRef<NSString>& name, const NSId& object) {
            center.postNotificationName(name, object);
        }>(),
};

/// The matching registrations, one after another in the order they were made.
class Turns {
public:
    explicit Turns(const platform::ObserverTable::Matches& matches)
    {
        for (std::size_t i = 0; i < matches.count; ++i)
            mRests[mCount++] = { matches.lists[i].begin(), matches.lists[i].end() };
    }

    /// Null at the end.
    const platform::Observation* next()
    {
        Rest* first = nullptr;
        for (std::size_t i = 0; i < mCount; ++i) {
            Rest& rest = mRests[i];
            if (rest.at != rest.end && (!first || (*rest.at)->order < (*first->at)->order))
                first = &rest;
        }
        return first ? (first->at++)->get() : nullptr;
    }

private:
    struct Rest {
        const std::shared_ptr<platform::Observation>* at = nullptr;
        const std::shared_ptr<platform::Observation>* end = nullptr;
    };
    std::array<Rest, 4> mRests;
    std::size_t mCount = 0;
};

/// Sends the notification to one observer after another. Neighbours are often of one class and told by one
/// message, so the method found for the last is tried first.
class Telling {
public:
    explicit Telling(const NSNotification& notification) : mArguments { NSArgument::of(notification) } { }

    void tell(NSObject& observer, NSSelector selector)
    {
        const NSClass& type = observer.isa();
        if (&type != mClass || selector != mSelector) {
            mClass = &type;
            mSelector = selector;
            mMethod = type.instanceMethod(selector);
        }
        NSResult result;
        if (mMethod && mMethod->argumentTypes.size() == mArguments.size())
            mMethod->invoke(observer, mArguments, result);
        else
            NSDispatch(observer, selector, mArguments, result); // forwards or raises
    }

private:
    const std::array<NSArgument, 1> mArguments;
    const NSClass* mClass = nullptr;
    NSSelector mSelector;
    const NSMethod* mMethod = nullptr;
};

[[noreturn]] void invalid(const char* reason)
{
    throw NSException(NSInvalidArgumentException, reason);
}

}

const NSClass& NSNotificationCenter::classObject()
{
    static const NSClass& type = NSClass::define("NSNotificationCenter", &NSObject::classObject(), kMethods);
    return type;
}

NSNotificationCenter::NSNotificationCenter() : mObservers(std::make_unique<platform::ObserverTable>()) { }

NSNotificationCenter::~NSNotificationCenter() = default;

NSRef<NSNotificationCenter> NSNotificationCenter::defaultCenter()
{
    static NSNotificationCenter* const center = platform::makeImmortal(NSMake<NSNotificationCenter>());
    return NSShare(center);
}

void NSNotificationCenter::addObserver(
    const NSId& observer, NSSelector selector, const NSRef<NSString>& name, const NSId& object)
{
    if (!observer || !selector)
        invalid("an observer needs an object and a selector");
    mObservers->add(observer, selector, name ? NSCast<NSString>(name->copy()) : nullptr, object);
}

void NSNotificationCenter::replaceObserver(
    const NSId& observer, NSSelector selector, const NSRef<NSString>& name, const NSId& object)
{
    if (!observer || !selector)
        invalid("an observer needs an object and a selector");
    mObservers->replace(observer, selector, name ? NSCast<NSString>(name->copy()) : nullptr, object);
}

void NSNotificationCenter::removeObserver(
    const NSId& observer, const NSRef<NSString>& name, const NSId& object)
{
    if (observer)
        mObservers->remove(observer, name, object);
}

void NSNotificationCenter::postNotification(const NSRef<NSNotification>& notification)
{
    if (!notification)
        invalid("null was posted in place of a notification");
    NSRef<NSNotification> kept = notification; // `notification` may be a part of what observers change
    tellObservers(*kept);
}

void NSNotificationCenter::postNotificationName(
    const NSRef<NSString>& name, const NSId& object, const NSRef<NSDictionary>& userInfo)
{
    tellObservers(*NSNotification::notificationWithName(name, object, userInfo));
}

void NSNotificationCenter::tellObservers(NSNotification& notification)
{
    const auto matches = mObservers->matches(notification.mName, notification.mObject);
    // From here on nothing is read of the centre, which an observer may drop.
    const NSObject* object = notification.mObject.get();
    Telling telling(notification);
    Turns turns(matches);
    while (const platform::Observation* observation = turns.next()) {
        if (observation->isRemoved.load(std::memory_order_acquire) || !observation->wantsObject(object))
            continue;
        if (NSId observer = observation->observer.get())
            telling.tell(*observer, observation->selector);
    }
}
