#include "platform/objects/method_tables.h"

#include "LUMPlatform/NSArray.h"
#include "LUMPlatform/NSClass.h"
#include "LUMPlatform/NSDictionary.h"
#include "LUMPlatform/NSString.h"

namespace {

/// Runs once, when the library is loaded.
[[gnu::constructor]] void giveMethodTables()
{
    const NSClass& object = NSObject::classObject();
    object.extend(platform::delayedPerformingMethods());
    object.extend(platform::threadPerformingMethods());
    object.extend(platform::objectKeyValueMethods());

    NSArray::classObject().extend(platform::arrayKeyValueMethods());
    NSDictionary::classObject().extend(platform::dictionaryKeyValueMethods());

    const NSClass& string = NSString::classObject();
    string.extend(platform::pathUtilityMethods());
    string.extend(platform::urlUtilityMethods());
}

}
