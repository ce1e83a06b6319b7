#include "LUMPlatform/NSMethodSignature.h"

#include "LUMPlatform/NSClass.h"
#include "LUMPlatform/NSException.h"
#include "LUMPlatform/NSString.h"
#include "platform/objects/type_codes.h"

namespace {

constexpr NSMethod kMethods[] = {
    NSMethodOf<"numberOfArguments", &NSMethodSignature::numberOfArguments>(),
    NSMethodOf<"getArgumentTypeAtIndex:", &NSMethodSignature::getArgumentTypeAtIndex>(),
    NSMethodOf<"methodReturnType", &NSMethodSignature::methodReturnType>(),
    NSMethodOf<"methodReturnLength", &NSMethodSignature::methodReturnLength>(),
};

}

const NSClass& NSMethodSignature::classObject()
{
    static const NSClass& type = NSClass::define("NSMethodSignature", &NSObject::classObject(), kMethods);
    return type;
}

NSMethodSignature::NSMethodSignature(std::vector<const char*> types) : mTypes(std::move(types)) { }

NSMethodSignature::~NSMethodSignature() = default;

NSRef<NSMethodSignature> NSMethodSignature::signatureWithObjCTypes(std::string_view types)
{
    auto codes = platform::splitTypeCodes(types);
    if (!codes || codes->size() < 3 || std::string_view((*codes)[1]) != "@"
        || std::string_view((*codes)[2]) != ":")
        return nullptr;
    return NSMake<NSMethodSignature>(std::move(*codes));
}

NSRef<NSMethodSignature> NSMethodSignature::signatureOfMethod(const NSMethod& method)
{
    std::vector<const char*> types { method.returnType, "@", ":" };
    types.insert(types.end(), method.argumentTypes.begin(), method.argumentTypes.end());
    return NSMake<NSMethodSignature>(std::move(types));
}

const char* NSMethodSignature::getArgumentTypeAtIndex(NSUInteger index) const
{
    if (index >= numberOfArguments())
        throw NSException(NSInvalidArgumentException,
            NSString::stringWithUTF8String("argument index " + std::to_string(index) + " is past the last of "
                + std::to_string(numberOfArguments()) + " arguments"));
    return mTypes[index + 1];
}

NSUInteger NSMethodSignature::methodReturnLength() const
{
    return platform::sizeOfTypeCode(mTypes[0]);
}

bool NSMethodSignature::isEqual(const NSId& other) const
{
    auto signature = NSCast<NSMethodSignature>(other);
    return signature
        && std::equal(mTypes.begin(), mTypes.end(), signature->mTypes.begin(), signature->mTypes.end(),
            [](std::string_view a, std::string_view b) { return a == b; });
}

NSUInteger NSMethodSignature::hash() const
{
    NSUInteger result = 0;
    for (std::string_view type : mTypes)
        result = result * 31 + std::hash<std::string_view> {}(type);
    return result;
}
