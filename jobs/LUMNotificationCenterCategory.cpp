#include "LUMFoundation/LUMNotificationCenterCategory.h"

#include "LUMPlatform/NSThreadPerformAdditions.h"
#include "core/extension_operation.h"
#include "core/method_tables.h"

namespace {

// Each step is a message, so that a class of centres may have its own way of posting.

void here(const NSRef<NSNotificationCenter>& center, const NSRef<NSNotification>& notification)
{
    static const NSSelector selector("postNotification:");
    static const NSMethod* const usual = NSNotificationCenter::classObject().instanceMethod(selector);
    if (center->isa().instanceMethod(selector) == usual)
        center->postNotification(notification);
    else
        NSSend(center, selector, notification);
}

void onMainThread(const NSRef<NSNotificationCenter>& center, const NSRef<NSNotification>& notification)
{
    static const NSSelector selector("handleMainThreadPosting:");
    NSThreadPerformAdditions::performSelectorOnMainThread(center, selector, notification, true);
}

void withUserInfo(const NSRef<NSNotificationCenter>& center, const NSRef<NSString>& name, const NSId& object,
    const NSRef<NSDictionary>& userInfo)
{
    LUMNotificationCenterCategory::postNotificationOnMainThread(
        center, NSNotification::notificationWithName(name, object, userInfo));
}

void withObject(const NSRef<NSNotificationCenter>& center, const NSRef<NSString>& name, const NSId& object)
{
    LUMNotificationCenterCategory::postNotificationNameOnMainThread(center, name, object);
}

void withName(const NSRef<NSNotificationCenter>& center, const NSRef<NSString>& name)
{
    LUMNotificationCenterCategory::postNotificationNameOnMainThread(center, name);
}

using Handle = lum::ExtensionOperation<"handleMainThreadPosting:", &here>;
using Post = lum::ExtensionOperation<"postNotificationOnMainThread:", &onMainThread>;
using PostName = lum::ExtensionOperation<"postNotificationNameOnMainThread:object:userInfo:", &withUserInfo>;

constexpr NSMethod kMethods[] = {
    NSMethodOf<"postNotificationNameOnMainThread:", &withName>(),
    NSMethodOf<"postNotificationNameOnMainThread:object:", &withObject>(),
    PostName::method(),
    Post::method(),
    Handle::method(),
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
    PostName::call(center, name, object, userInfo);
}

void postNotificationOnMainThread(
    const NSRef<NSNotificationCenter>& center, const NSRef<NSNotification>& notification)
{
    Post::call(center, notification);
}

void handleMainThreadPosting(
    const NSRef<NSNotificationCenter>& center, const NSRef<NSNotification>& notification)
{
    Handle::call(center, notification);
}

}
