#include "LUMPlatform/NSNotification.h"

#include "LUMPlatform/NSClass.h"
#include "LUMPlatform/NSException.h"

namespace {

constexpr NSMethod kMethods[] = {
    NSMethodOf<"name", &NSNotification::name>(),
    NSMethodOf<"object", &NSNotification::object>(),
    NSMethodOf<"userInfo", &NSNotification::userInfo>(),
};

}

const NSClass& NSNotification::classObject()
{
    static const NSClass& type = NSClass::define("NSNotification", &NSObject::classObject(), kMethods);
    return type;
}

NSNotification::NSNotification(
    const NSRef<NSString>& name, const NSId& object, const NSRef<NSDictionary>& userInfo)
    : mName(NSCast<NSString>(name->copy())), mObject(object), mUserInfo(userInfo)
{
}

NSNotification::~NSNotification() = default;

NSRef<NSNotification> NSNotification::notificationWithName(
    const NSRef<NSString>& name, const NSId& object, const NSRef<NSDictionary>& userInfo)
{
    if (!name)
        throw NSException(NSInvalidArgumentException, "a notification needs a name");
    return NSMake<NSNotification>(name, object, userInfo);
}

bool NSNotification::isEqual(const NSId& other) const
{
    auto notification = NSCast<NSNotification>(other);
    return notification && mName->isEqualToString(notification->mName) && mObject == notification->mObject
        && NSEqual(mUserInfo, notification->mUserInfo);
}

NSUInteger NSNotification::hash() const
{
    return mName->hash();
}

NSRef<NSString> NSNotification::description() const
{
    return NSString::stringWithFormat(
        "%@ { name = %@, object = %@, userInfo = %@ }", isa().name(), mName, mObject, mUserInfo);
}

NSId NSNotification::copy() const
{
    return NSShare(const_cast<NSNotification*>(this));
}
