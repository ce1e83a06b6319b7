#include "platform/keyvalue/key_methods.h"

#include "LUMPlatform/NSClass.h"
#include "LUMPlatform/NSNumber.h"

namespace platform {
namespace {

const NSMethod* methodIn(std::span<const NSMethod> methods, std::string_view selector)
{
    for (const NSMethod& method : methods)
        if (method.selector == selector)
            return &method;
    return nullptr;
}

/// What the class chain defines goes before what extension sets add.
const NSMethod* methodNamed(const NSClass& type, std::string_view selector)
{
    for (const NSClass* at = &type; at; at = at->superclass())
        if (const NSMethod* method = methodIn(at->ownMethods(), selector))
            return method;
    for (const NSClass* at = &type; at; at = at->superclass())
        for (const auto& extension : at->extensions())
            if (const NSMethod* method = methodIn(extension, selector))
                return method;
    return nullptr;
}

/// Structures have no object that holds them.
bool isObjectOrNumber(const char* type)
{
    return std::string_view("v@cCsSiIqQfd").find(type[0]) != std::string_view::npos;
}

NSId objectOf(const NSArgument& value)
{
    switch (value.kind()) {
    case '@':
        return NSShare(value.object());
    case 'f':
        return NSNumber::numberWithFloat(value.as<float>());
    case 'd':
        return NSNumber::numberWithDouble(value.as<double>());
    case 'Q':
        return NSNumber::numberWithUnsignedLongLong(value.as<unsigned long long>());
    case 'c':
        return NSNumber::numberWithChar(value.as<signed char>());
    case 's':
        return NSNumber::numberWithShort(value.as<short>());
    case 'i':
        return NSNumber::numberWithInt(value.as<int>());
    default:
        return NSNumber::numberWithLongLong(value.as<long long>());
    }
}

}

bool valueByMethod(NSObject& object, const std::string& key, NSId& value)
{
    if (key.empty())
        return false;
    std::string capitalised = key;
    if (key[0] >= 'a' && key[0] <= 'z')
        capitalised[0] = static_cast<char>(key[0] - 'a' + 'A');
    for (const std::string& selector :
        { "get" + capitalised, key, "is" + capitalised, "_get" + capitalised, "_" + key }) {
        const NSMethod* method = methodNamed(object.isa(), selector);
        if (!method || !method->argumentTypes.empty() || !isObjectOrNumber(method->returnType))
            continue;
        if (*method->returnType == 'v') { // it can only be there for what it does
            value = nullptr;
            return true;
        }
        NSResult result;
        method->invoke(object, {}, result);
        value = method->returnsTruth ? NSNumber::numberWithBool(result.value().as<signed char>() != 0)
                                     : objectOf(result.value());
        return true;
    }
    return false;
}

}
