#include "LUMPlatform/NSArray.h"
#include "LUMPlatform/NSCharacterSet.h"
#include "LUMPlatform/NSClass.h"
#include "LUMPlatform/NSData.h"
#include "LUMPlatform/NSString.h"

namespace {

constexpr NSMethod kMethods[] = {
    NSMethodOf<"length", &NSString::length>(),
    NSMethodOf<"characterAtIndex:", &NSString::characterAtIndex>(),
    NSMethodOf<"substringFromIndex:", &NSString::substringFromIndex>(),
    NSMethodOf<"substringToIndex:", &NSString::substringToIndex>(),
    NSMethodOf<"substringWithRange:", &NSString::substringWithRange>(),
    NSMethodOf<"isEqualToString:", &NSString::isEqualToString>(),
    NSMethodOf<"compare:", &NSString::compare>(),
    NSMethodOf<"compare:options:", &NSString::compareOptions>(),
    NSMethodOf<"caseInsensitiveCompare:", &NSString::caseInsensitiveCompare>(),
    NSMethodOf<"rangeOfString:", &NSString::rangeOfString>(),
    NSMethodOf<"rangeOfString:options:", &NSString::rangeOfStringOptions>(),
    NSMethodOf<"rangeOfString:options:range:", &NSString::rangeOfStringOptionsRange>(),
    NSMethodOf<"rangeOfCharacterFromSet:", &NSString::rangeOfCharacterFromSet>(),
    NSMethodOf<"rangeOfCharacterFromSet:options:", &NSString::rangeOfCharacterFromSetOptions>(),
    NSMethodOf<"hasPrefix:", &NSString::hasPrefix>(),
    NSMethodOf<"hasSuffix:", &NSString::hasSuffix>(),
    NSMethodOf<"componentsSeparatedByString:", &NSString::componentsSeparatedByString>(),
    NSMethodOf<"stringByAppendingString:", &NSString::stringByAppendingString>(),
    NSMethodOf<"stringByTrimmingCharactersInSet:", &NSString::stringByTrimmingCharactersInSet>(),
    NSMethodOf<"lowercaseString", &NSString::lowercaseString>(),
    NSMethodOf<"uppercaseString", &NSString::uppercaseString>(),
    NSMethodOf<"intValue", &NSString::intValue>(),
    NSMethodOf<"integerValue", &NSString::integerValue>(),
    NSMethodOf<"longLongValue", &NSString::longLongValue>(),
    NSMethodOf<"doubleValue", &NSString::doubleValue>(),
    NSMethodOf<"floatValue", &NSString::floatValue>(),
    NSMethodOf<"boolValue", &NSString::boolValue>(),
    NSMethodOf<"isAbsolutePath", &NSString::isAbsolutePath>(),
    NSMethodOf<"pathComponents", &NSString::pathComponents>(),
    NSMethodOf<"lastPathComponent", &NSString::lastPathComponent>(),
    NSMethodOf<"pathExtension", &NSString::pathExtension>(),
    NSMethodOf<"stringByDeletingLastPathComponent", &NSString::stringByDeletingLastPathComponent>(),
    NSMethodOf<"stringByDeletingPathExtension", &NSString::stringByDeletingPathExtension>(),
    NSMethodOf<"stringByAppendingPathComponent:", &NSString::stringByAppendingPathComponent>(),
    NSMethodOf<"stringByAppendingPathExtension:", &NSString::stringByAppendingPathExtension>(),
    NSMethodOf<"stringByExpandingTildeInPath", &NSString::stringByExpandingTildeInPath>(),
    NSMethodOf<"stringByStandardizingPath", &NSString::stringByStandardizingPath>(),
    NSMethodOf<"dataUsingEncoding:", &NSString::dataUsingEncoding>(),
    NSMethodOf<"canBeConvertedToEncoding:", &NSString::canBeConvertedToEncoding>(),
};

}

const NSClass& NSString::classObject()
{
    static const NSClass& type = NSClass::define("NSString", &NSObject::classObject(), kMethods);
    return type;
}
