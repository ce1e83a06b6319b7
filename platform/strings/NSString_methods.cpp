#include "LUMPlatform/NSClass.h"
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
};

}

const NSClass& NSString::classObject()
{
    static const NSClass& type = NSClass::define("NSString", &NSObject::classObject(), kMethods);
    return type;
}
