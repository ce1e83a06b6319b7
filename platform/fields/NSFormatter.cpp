#include "LUMPlatform/NSFormatter.h"

#include "LUMPlatform/NSClass.h"
#include "LUMPlatform/NSString.h"

const NSClass& NSFormatter::classObject()
{
    static constexpr NSMethod kMethods[] = {
        NSMethodOf<"stringForObjectValue:", &NSFormatter::stringForObjectValue>(),
        NSMethodOf<"getObjectValue:forString:errorDescription:", &NSFormatter::getObjectValue>(),
    };
    static const NSClass& type = NSClass::define("NSFormatter", &NSObject::classObject(), kMethods);
    return type;
}

bool NSFormatter::getObjectValue(NSId*, const NSRef<NSString>&, NSRef<NSString>*) const
{
    return false;
}
