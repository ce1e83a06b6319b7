#include "core/method_tables.h"

#include "LUMPlatform/NSArray.h"
#include "LUMPlatform/NSBundle.h"
#include "LUMPlatform/NSClass.h"
#include "LUMPlatform/NSData.h"
#include "LUMPlatform/NSDictionary.h"
#include "LUMPlatform/NSFileManager.h"
#include "LUMPlatform/NSNotificationCenter.h"
#include "LUMPlatform/NSString.h"

namespace {

/// Runs once, when the library is loaded.
[[gnu::constructor]] void giveMethodTables()
{
    NSData::classObject().extend(lum::dataCompressionMethods());
    NSData::classObject().extend(lum::dataHandleMethods());
    NSObject::classObject().extend(lum::objectPlistableMethods());
    NSObject::classObject().extend(lum::serializedPlistMethods());
    NSDictionary::classObject().extend(lum::dictionaryPlistableMethods());
    NSObject::classObject().extend(lum::mainThreadProxyMethods());
    NSNotificationCenter::classObject().extend(lum::notificationCenterMethods());
    NSFileManager::classObject().extend(lum::fileManagerMethods());
    NSFileManager::classObject().extend(lum::fileManagerFolderMethods());
    NSString::classObject().extend(lum::stringPathMethods());
    NSBundle::classObject().extend(lum::pathAdditionMethods());

    const NSClass& array = NSArray::classObject();
    array.extend(lum::arrayMethods());
    array.extend(lum::arrayPlistableMethods());
    array.extend(lum::arrayPerformingMethods());
    array.extend(lum::arraySearchMethods());
    array.extend(lum::deprecatedArrayMethods());

    const NSClass& mutableArray = NSMutableArray::classObject();
    mutableArray.extend(lum::mutableArrayMethods());
    mutableArray.extend(lum::deprecatedMutableArrayMethods());
}

}
