#include "LUMPlatform/NSKeyValueCoding.h"

#include "LUMPlatform/NSArray.h"
#include "LUMPlatform/NSDecodingLimits.h"
#include "LUMPlatform/NSDictionary.h"
#include "LUMPlatform/NSException.h"
#include "LUMPlatform/NSNull.h"
#include "LUMPlatform/NSSend.h"
#include "LUMPlatform/NSString.h"
#include "platform/keyvalue/key_methods.h"
#include "platform/objects/method_tables.h"

constexpr NSStringConstant NSUndefinedKeyException("NSUnknownKeyException");

namespace {

NSId valueForUndefinedKey(const NSId& object, const NSRef<NSString>& key)
{
    throw NSException(NSUndefinedKeyException,
        NSString::stringWithFormat(
            "an object of class %@ has no value for the key \"%@\"", std::string(object->isa().name()), key));
}

NSId valueOfObject(const NSId& object, const NSRef<NSString>& key)
{
    NSId value;
    if (key && platform::valueByMethod(*object, key->utf8(), value))
        return value;
    static const NSSelector undefined("valueForUndefinedKey:");
    return NSSend<NSId>(object, undefined, key);
}

bool isOfCollectionItself(const NSRef<NSString>& key)
{
    return key && key->length() > 0 && key->characterAtIndex(0) == '@';
}

NSId valueInDictionary(const NSRef<NSDictionary>& dictionary, const NSRef<NSString>& key)
{
    if (isOfCollectionItself(key))
        return valueOfObject(dictionary, key->substringFromIndex(1));
    return dictionary->objectForKey(key);
}

NSId valuesInArray(const NSRef<NSArray>& array, const NSRef<NSString>& key)
{
    if (isOfCollectionItself(key))
        return valueOfObject(array, key->substringFromIndex(1));
    static thread_local NSUInteger tDepth = 0;
    if (tDepth >= NSDecodingLimits().depth) // one that holds itself, for instance
        return valueForUndefinedKey(array, key);
    struct Level {
        Level() { ++tDepth; }
        ~Level() { --tDepth; }
    } const level;
    std::vector<NSId> values;
    for (const NSId& element : array) {
        NSId value = NSKeyValueCoding::valueForKey(element, key);
        values.push_back(value ? std::move(value) : NSNull::null());
    }
    return NSArray::arrayWithObjects(std::move(values));
}

NSId itself(const NSId& object)
{
    return object;
}

constexpr NSMethod kRootMethods[] = {
    NSMethodOf<"self", &itself>(),
    NSMethodOf<"valueForKey:", &valueOfObject>(),
    NSMethodOf<"valueForKeyPath:", &NSKeyValueCoding::valueForKeyPath>(),
    NSMethodOf<"valueForUndefinedKey:", &valueForUndefinedKey>(),
};
constexpr NSMethod kDictionaryMethods[] = { NSMethodOf<"valueForKey:", &valueInDictionary>() };
constexpr NSMethod kArrayMethods[] = { NSMethodOf<"valueForKey:", &valuesInArray>() };

}

std::span<const NSMethod> platform::objectKeyValueMethods()
{
    return kRootMethods;
}

std::span<const NSMethod> platform::dictionaryKeyValueMethods()
{
    return kDictionaryMethods;
}

std::span<const NSMethod> platform::arrayKeyValueMethods()
{
    return kArrayMethods;
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
    if (auto array = NSCast<NSArray>(kept))
        return valuesInArray(array, key);
    return valueOfObject(kept, key);
}

NSId NSKeyValueCoding::valueForKeyPath(const NSId& object, const NSRef<NSString>& path)
{
    static const NSSelector selector("valueForKeyPath:");
    const auto text = path ? path->characters() : std::u16string_view();
    NSId value = object;
    for (std::size_t begin = 0; value;) {
        if (value->isa().overridingMethod(selector))
            return NSSend<NSId>(value, selector, begin == 0 ? path : path->substringFromIndex(begin));
        const std::size_t end = text.find(u'.', begin);
        if (end == std::u16string_view::npos)
            return valueForKey(value, begin == 0 ? path : path->substringFromIndex(begin));
        value = valueForKey(value, NSString::stringWithCharacters(text.substr(begin, end - begin)));
        begin = end + 1;
    }
    return nullptr;
}
