#include "LUMPlatform/NSNull.h"

#include "LUMPlatform/NSClass.h"
#include "LUMPlatform/NSString.h"
#include "platform/objects/live_objects.h"

const NSClass& NSNull::classObject()
{
    static const NSClass& type = NSClass::define("NSNull", &NSObject::classObject(), {});
    return type;
}

NSNull::~NSNull() = default;

NSRef<NSNull> NSNull::null()
{
    static NSNull* const only = platform::makeImmortal(NSMake<NSNull>());
    return NSShare(only);
}

NSRef<NSString> NSNull::description() const
{
    return "<null>";
}

NSId NSNull::copy() const
{
    return null();
}
