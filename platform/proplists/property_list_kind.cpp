#include "platform/proplists/property_list_kind.h"

#include "LUMPlatform/NSArray.h"
#include "LUMPlatform/NSData.h"
#include "LUMPlatform/NSDate.h"
#include "LUMPlatform/NSDictionary.h"
#include "LUMPlatform/NSMutableString.h"
#include "LUMPlatform/NSNumber.h"
#include "platform/proplists/property_list_uid.h"

namespace platform {
namespace {

/// Searches the bases, for foreign subclasses.
PropertyListKind kindByBases(const NSObject& object)
{
    if (dynamic_cast<const NSString*>(&object))
        return PropertyListKind::String;
    if (dynamic_cast<const NSNumber*>(&object))
        return PropertyListKind::Number;
    if (dynamic_cast<const NSArray*>(&object))
        return PropertyListKind::Array;
    if (dynamic_cast<const NSDictionary*>(&object))
        return PropertyListKind::Dictionary;
    if (dynamic_cast<const NSData*>(&object))
        return PropertyListKind::Data;
    if (dynamic_cast<const NSDate*>(&object))
        return PropertyListKind::Date;
    return PropertyListKind::None;
}

}

PropertyListKind propertyListKindOf(const NSObject& object)
{
    const std::type_info* type = &typeid(object);
    if (type == &typeid(NSInstance<NSString>) || type == &typeid(NSInstance<NSMutableString>))
        return PropertyListKind::String;
    if (type == &typeid(NSInstance<NSNumber>))
        return PropertyListKind::Number;
    if (type == &typeid(NSInstance<NSDictionary>) || type == &typeid(NSInstance<NSMutableDictionary>))
        return PropertyListKind::Dictionary;
    if (type == &typeid(NSInstance<NSArray>) || type == &typeid(NSInstance<NSMutableArray>))
        return PropertyListKind::Array;
    if (type == &typeid(NSInstance<PropertyListUid>))
        return PropertyListKind::Uid;
    if (type == &typeid(NSInstance<NSData>) || type == &typeid(NSInstance<NSMutableData>))
        return PropertyListKind::Data;
    if (type == &typeid(NSInstance<NSDate>))
        return PropertyListKind::Date;
    return kindByBases(object);
}

}
