#pragma once

#include "LUMPlatform/NSArray.h"
#include "LUMPlatform/NSData.h"
#include "LUMPlatform/NSDictionary.h"
#include "LUMPlatform/NSNumber.h"
#include "LUMPlatform/NSPropertyListSerialization.h"
#include "LUMPlatform/NSString.h"
#include "platform/proplists/property_list_uid.h"

/// Keyed archives put together slot by slot, so that they can be wrong.
inline NSId uid(std::uint32_t number)
{
    return platform::PropertyListUid::withValue(number);
}

inline NSId classRecord(const char* name)
{
    return NSDictionary::of({ { "$classname", name }, { "$classes", NSArray::of(name, "NSObject") } });
}

/// An object of the class in slot `type`, with one entry.
inline NSId slotObject(std::uint32_t type, const char* key, const NSId& value)
{
    return NSDictionary::of({ { key, value }, { "$class", uid(type) } });
}

inline NSRef<NSData> dataOfList(const NSId& list)
{
    return NSPropertyListSerialization::dataWithPropertyList(list, NSPropertyListBinaryFormat_v1_0);
}

/// An archive whose root is in slot 1; slot 0 is added.
inline NSRef<NSData> archiveOfSlots(const NSRef<NSArray>& slots, const NSId& root = uid(1))
{
    return dataOfList(NSDictionary::of({ { "$archiver", "NSKeyedArchiver" }, { "$version", 100000 },
        { "$top", NSDictionary::of({ { "root", root } }) },
        { "$objects", NSArray::of("$null")->arrayByAddingObjectsFromArray(slots) } }));
}
