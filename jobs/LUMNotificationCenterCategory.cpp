#include "LUMFoundation/LUMNotificationCenterCategory.h"

#include "LUMPlatform/NSSend.h"
#include "LUMPlatform/NSThreadPerformAdditions.h"
#include "core/method_tables.h"

namespace {

void postWithObject(
    const NSRef<NSNotificationCenter>& center, const NSRef<NSString>& name, const NSId& object)
{
    LUMNotificationCenterCategory::postNotificationNameOnMainThread(center, name, object);
}

void postWithName(const NSRef<NSNotificationCenter>& center, const NSRef<NSString>& name)
{
    LUMNotificationCenterCategory::postNotificationNameOnMainThread(center, name);
}

constexpr NSMethod kMethods[] = {
    NSMethodOf<"postNotificationNameOnMainThread:", &postWithName>(),
    NSMethodOf<"postNotificationNameOnMainThread:object:", &postWithObject>(),
    NSMethodOf<"postNotificationNameOnMainThread:object:userInfo:",
        &LUMNotificationCenterCategory::postNotificationNameOnMainThread>(),
    NSMethodOf<"postNotificationOnMainThread:",
        &LUMNotificationCenterCategory::postNotificationOnMainThread>(),
    NSMethodOf<"handleMainThreadPosting:", &LUMNotificationCenterCategory::handleMainThreadPosting>(),
};

}

std::span<const NSMethod> lum::notificationCenterMethods()
{
    return kMethods;
}

namespace LUMNotificationCenterCategory {

void postNotificationNameOnMainThread(const NSRef<NSNotificationCenter>& center, const NSRef<NSString>& name,
    const NSId& object, const NSRef<NSDictionary>& userInfo)
{
    static const NSSelector selector("postNotificationOnMainThread:");
    if (center)
        NSSend(center, selector, NSNotification::notificationWithName(name, object, userInfo));
}

void postNotificationOnMainThread(
    const NSRef<NSNotificationCenter>& center, const NSRef<NSNotification>& notification)
{
    // A message, so that a class of centres may have its own way of posting on the main thread.
    static const NSSelector selector("handleMainThreadPosting:");
    NSThreadPerformAdditions::performSelectorOnMainThread(center, selector, notification, true);
}

void handleMainThreadPosting(
    const NSRef<NSNotificationCenter>& center, const NSRef<NSNotification>& notification)
{
    if (center)
        center->postNotification(notification);
}

}
