#include "platform/proplists/property_list_uid.h"

#include "LUMPlatform/NSClass.h"
#include "LUMPlatform/NSString.h"

namespace platform {

const NSClass& PropertyListUid::classObject()
{
    static const NSClass& type = NSClass::define("NSPropertyListUid", &NSObject::classObject(), {});
    return type;
}

PropertyListUid::~PropertyListUid() = default;

NSRef<PropertyListUid> PropertyListUid::withValue(std::uint32_t value)
{
    return NSMake<PropertyListUid>(value);
}

bool PropertyListUid::isEqual(const NSId& other) const
{
    const auto* uid = NSDowncast<PropertyListUid>(other.get());
    return uid && uid->mValue == mValue;
}

NSUInteger PropertyListUid::hash() const
{
    return mValue;
}

NSRef<NSString> PropertyListUid::description() const
{
    return "UID " + std::to_string(mValue);
}

NSId PropertyListUid::copy() const
{
    return NSShare(const_cast<PropertyListUid*>(this));
}

}
