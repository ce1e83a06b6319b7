#include "LUMPlatform/NSArgument.h"

#include "LUMPlatform/NSClass.h"
#include "LUMPlatform/NSException.h"
#include "LUMPlatform/NSString.h"

namespace {

/// Type codes live as long as the program, so an argument may point at one of these.
const char* scalarCode(char kind)
{
    static constexpr std::string_view kCodes("v\0?\0@\0:\0#\0c\0C\0s\0S\0i\0I\0q\0Q\0f\0d\0", 30);
    std::size_t found = kCodes.find(kind);
    return found == std::string_view::npos ? nullptr : kCodes.data() + found;
}

std::int64_t narrowed(std::int64_t value, char kind)
{
    switch (kind) {
    case 'c':
        return static_cast<std::int8_t>(value);
    case 'C':
        return static_cast<std::uint8_t>(value);
    case 's':
        return static_cast<std::int16_t>(value);
    case 'S':
        return static_cast<std::uint16_t>(value);
    case 'i':
        return static_cast<std::int32_t>(value);
    case 'I':
        return static_cast<std::uint32_t>(value);
    default:
        return value;
    }
}

std::int64_t saturated(double value, char kind)
{
    switch (kind) {
    case 'c':
        return NSSaturated<std::int8_t>(value);
    case 'C':
        return NSSaturated<std::uint8_t>(value);
    case 's':
        return NSSaturated<std::int16_t>(value);
    case 'S':
        return NSSaturated<std::uint16_t>(value);
    case 'i':
        return NSSaturated<std::int32_t>(value);
    case 'I':
        return NSSaturated<std::uint32_t>(value);
    case 'Q':
        return static_cast<std::int64_t>(NSSaturated<std::uint64_t>(value));
    default:
        return NSSaturated<std::int64_t>(value);
    }
}

bool isIntegerKind(char kind)
{
    return kind != '\0' && std::strchr("cCsSiIqQ", kind) != nullptr;
}

}

NSArgument NSArgument::zero(const char* code)
{
    NSArgument result;
    const char* scalar = scalarCode(code[0]);
    result.mCode = scalar ? scalar : code;
    if (!scalar)
        result.mValue.bytes.fill(std::byte { 0 });
    return result;
}

bool NSArgument::isInteger() const
{
    return isIntegerKind(kind());
}

double NSArgument::toReal() const
{
    if (kind() == 'f' || kind() == 'd')
        return mValue.real;
    if (kind() == 'Q')
        return static_cast<double>(static_cast<std::uint64_t>(mValue.integer));
    if (isInteger())
        return static_cast<double>(mValue.integer);
    return zeroOfUnknown<double>("d");
}

NSArgument NSArgument::convertedTo(const char* code) const
{
    NSArgument result = zero(code);
    const char wanted = code[0];
    if (wanted == 'v' || wanted == '?' || isUnknown())
        return result;
    if (isIntegerKind(wanted))
        result.mValue.integer = isInteger() ? narrowed(mValue.integer, wanted) : saturated(toReal(), wanted);
    else if (wanted == 'd')
        result.mValue.real = toReal();
    else if (wanted == 'f')
        result.mValue.real = static_cast<double>(static_cast<float>(toReal()));
    else if (wanted == kind() && (scalarCode(wanted) || wanted == '^' || std::strcmp(code, mCode) == 0))
        result.mValue = mValue;
    else
        doesNotFit(code);
    return result;
}

void NSArgument::doesNotFit(const char* wanted) const
{
    throw NSException(NSInvalidArgumentException,
        NSString::stringWithUTF8String("a dynamic call has a value of type '" + std::string(mCode)
            + "' where '" + wanted + "' is wanted"));
}

void NSArgument::wrongClass(const NSObject& object)
{
    throw NSException(NSInvalidArgumentException,
        NSString::stringWithUTF8String("a dynamic call has an object of class "
            + std::string(object.isa().name()) + " where one of another class is wanted"));
}
