#include "LUMPlatform/NSKeyValueCoding.h"

#include "LUMPlatform/NSDictionary.h"
#include "LUMPlatform/NSException.h"
#include "LUMPlatform/NSSend.h"
#include "LUMPlatform/NSString.h"
#include "platform/keyvalue/key_methods.h"

constexpr NSStringConstant NSUndefinedKeyException("NSUnknownKeyException");

namespace {

[[noreturn]] void raiseUndefined(const NSObject& object, const NSRef<NSString>& key)
{
    throw NSException(NSUndefinedKeyException,
        NSString::stringWithFormat(
            "an object of class %@ has no value for the key \"%@\"", std::string(object.isa().name()), key));
}

NSId valueOfObject(const NSId& object, const NSRef<NSString>& key)
{
    NSId value;
    if (!key || !platform::valueByMethod(*object, key->utf8(), value))
        raiseUndefined(*object, key);
    return value;
}

NSId valueInDictionary(const NSRef<NSDictionary>& dictionary, const NSRef<NSString>& key)
{
    if (key && key->length() > 0 && key->characterAtIndex(0) == '@')
        return valueOfObject(dictionary, key->substringFromIndex(1));
    return dictionary->objectForKey(key);
}

constexpr NSMethod kRootMethods[] = { NSMethodOf<"valueForKey:", &valueOfObject>() };
constexpr NSMethod kDictionaryMethods[] = { NSMethodOf<"valueForKey:", &valueInDictionary>() };

[[gnu::constructor]] void giveMethodTables()
{
    NSObject::classObject().extend(kRootMethods);
    NSDictionary::classObject().extend(kDictionaryMethods);
}

}

NSId NSKeyValueCoding::valueForKey(const NSId& object, const NSRef<NSString>& key)
{
    if (!object)
        return nullptr;
    const NSId kept = object;
    static const NSSelector selector("valueForKey:");
    if (kept->isa().overridingMethod(selector))
        return NSSend<NSId>(kept, selector, key);
    if (auto dictionary = NSCast<NSDictionary>(kept))
        return valueInDictionary(dictionary, key);
    return valueOfObject(kept, key);
}
