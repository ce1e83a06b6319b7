#include "LUMPlatform/NSNumber.h"

#include "LUMPlatform/NSClass.h"
#include "LUMPlatform/NSException.h"
#include "LUMPlatform/NSString.h"
#include "platform/objects/live_objects.h"

#include <algorithm>
#include <bit>
#include <charconv>
#include <cmath>
#include <compare>

namespace {

constexpr NSMethod kMethods[] = {
    NSMethodOf<"boolValue", &NSNumber::boolValue>(),
    NSMethodOf<"charValue", &NSNumber::charValue>(),
    NSMethodOf<"unsignedCharValue", &NSNumber::unsignedCharValue>(),
    NSMethodOf<"shortValue", &NSNumber::shortValue>(),
    NSMethodOf<"unsignedShortValue", &NSNumber::unsignedShortValue>(),
    NSMethodOf<"intValue", &NSNumber::intValue>(),
    NSMethodOf<"unsignedIntValue", &NSNumber::unsignedIntValue>(),
    NSMethodOf<"longValue", &NSNumber::longValue>(),
    NSMethodOf<"unsignedLongValue", &NSNumber::unsignedLongValue>(),
    NSMethodOf<"longLongValue", &NSNumber::longLongValue>(),
    NSMethodOf<"unsignedLongLongValue", &NSNumber::unsignedLongLongValue>(),
    NSMethodOf<"integerValue", &NSNumber::integerValue>(),
    NSMethodOf<"unsignedIntegerValue", &NSNumber::unsignedIntegerValue>(),
    NSMethodOf<"floatValue", &NSNumber::floatValue>(),
    NSMethodOf<"doubleValue", &NSNumber::doubleValue>(),
    NSMethodOf<"objCType", &NSNumber::objCType>(),
    NSMethodOf<"compare:", &NSNumber::compare>(),
    NSMethodOf<"isEqualToNumber:", &NSNumber::isEqualToNumber>(),
    NSMethodOf<"stringValue", &NSNumber::stringValue>(),
};

__extension__ using Int128 = __int128; // holds every signed and unsigned 64-bit integer

/// A value as a point on one line that integers and doubles share without rounding: its integral part, below
/// or at the value, and the fraction above that.
struct Exact {
    enum Place { NotANumber, Below, Inside, Above } place; // outside: beyond all 64-bit integers
    Int128 whole;
    double rest; // the fraction inside, the value itself outside
    auto operator<=>(const Exact&) const = default;
};

Exact exactly(double value)
{
    constexpr double k2To64 = 18446744073709551616.0;
    if (value != value)
        return { Exact::NotANumber, 0, 0 };
    if (value < -k2To64)
        return { Exact::Below, 0, value };
    if (value >= k2To64)
        return { Exact::Above, 0, value };
    const double whole = std::floor(value);
    return { Exact::Inside, static_cast<Int128>(whole), value - whole };
}

std::string text(double value, int digits)
{
    if (value != value)
        return "nan";
    char buffer[40];
    auto end = std::to_chars(buffer, std::end(buffer), value, std::chars_format::general, digits).ptr;
    return { buffer, end };
}

}

const NSClass& NSNumber::classObject()
{
    static const NSClass& type = NSClass::define("NSNumber", &NSObject::classObject(), kMethods);
    return type;
}

NSNumber::NSNumber(bool value) : mInteger(value), mType('c'), mIsBool(true) { }
NSNumber::NSNumber(char type, std::uint64_t integer) : mInteger(integer), mType(type) { }
NSNumber::NSNumber(char type, double real) : mReal(real), mType(type) { }
NSNumber::~NSNumber() = default;

NSRef<NSNumber> NSNumber::withSigned(char type, std::int64_t value)
{
    return NSMake<NSNumber>(type, static_cast<std::uint64_t>(value));
}

NSRef<NSNumber> NSNumber::withUnsigned(std::uint64_t value)
{
    return NSMake<NSNumber>(std::in_range<std::int64_t>(value) ? 'q' : 'Q', value);
}

NSRef<NSNumber> NSNumber::numberWithBool(bool value)
{
    static NSNumber* const shared[] = { platform::makeImmortal(NSMake<NSNumber>(false)),
        platform::makeImmortal(NSMake<NSNumber>(true)) };
    return NSShare(shared[value]);
}

NSRef<NSNumber> NSNumber::numberWithChar(signed char value)
{
    return withSigned('c', value);
}
NSRef<NSNumber> NSNumber::numberWithUnsignedChar(unsigned char value)
{
    return withSigned('s', value);
}
NSRef<NSNumber> NSNumber::numberWithShort(short value)
{
    return withSigned('s', value);
}
NSRef<NSNumber> NSNumber::numberWithUnsignedShort(unsigned short value)
{
    return withSigned('i', value);
}
NSRef<NSNumber> NSNumber::numberWithInt(int value)
{
    return withSigned('i', value);
}
NSRef<NSNumber> NSNumber::numberWithUnsignedInt(unsigned value)
{
    return withSigned('q', value);
}
NSRef<NSNumber> NSNumber::numberWithLong(long value)
{
    return withSigned('q', value);
}
NSRef<NSNumber> NSNumber::numberWithUnsignedLong(unsigned long value)
{
    return withUnsigned(value);
}
NSRef<NSNumber> NSNumber::numberWithLongLong(long long value)
{
    return withSigned('q', value);
}
NSRef<NSNumber> NSNumber::numberWithUnsignedLongLong(unsigned long long value)
{
    return withUnsigned(value);
}
NSRef<NSNumber> NSNumber::numberWithInteger(NSInteger value)
{
    return withSigned('q', value);
}
NSRef<NSNumber> NSNumber::numberWithUnsignedInteger(NSUInteger value)
{
    return withUnsigned(value);
}
NSRef<NSNumber> NSNumber::numberWithFloat(float value)
{
    return NSMake<NSNumber>('f', static_cast<double>(value));
}
NSRef<NSNumber> NSNumber::numberWithDouble(double value)
{
    return NSMake<NSNumber>('d', value);
}

const char* NSNumber::objCType() const
{
    static constexpr char kCodes[] = "c\0s\0i\0q\0Q\0f\0d";
    return std::find(kCodes, std::end(kCodes), mType);
}

template<typename T> T NSNumber::converted() const
{
    if (!isFloatingPoint())
        return static_cast<T>(mInteger);
    if (std::is_unsigned_v<T> && mReal < 0)
        return static_cast<T>(NSSaturated<std::int64_t>(mReal));
    return NSSaturated<T>(mReal);
}

bool NSNumber::boolValue() const
{
    return isFloatingPoint() ? mReal != 0 : mInteger != 0;
}
signed char NSNumber::charValue() const
{
    return converted<signed char>();
}
unsigned char NSNumber::unsignedCharValue() const
{
    return converted<unsigned char>();
}
short NSNumber::shortValue() const
{
    return converted<short>();
}
unsigned short NSNumber::unsignedShortValue() const
{
    return converted<unsigned short>();
}
int NSNumber::intValue() const
{
    return converted<int>();
}
unsigned NSNumber::unsignedIntValue() const
{
    return converted<unsigned>();
}
long NSNumber::longValue() const
{
    return converted<long>();
}
unsigned long NSNumber::unsignedLongValue() const
{
    return converted<unsigned long>();
}
long long NSNumber::longLongValue() const
{
    return converted<long long>();
}
unsigned long long NSNumber::unsignedLongLongValue() const
{
    return converted<unsigned long long>();
}
NSInteger NSNumber::integerValue() const
{
    return converted<NSInteger>();
}
NSUInteger NSNumber::unsignedIntegerValue() const
{
    return converted<NSUInteger>();
}
float NSNumber::floatValue() const
{
    if (isFloatingPoint())
        return static_cast<float>(mReal);
    // Straight from the integer: by way of a double it would be rounded twice.
    return mType == 'Q' ? static_cast<float>(mInteger) : static_cast<float>(converted<std::int64_t>());
}
double NSNumber::doubleValue() const
{
    if (isFloatingPoint())
        return mReal;
    return mType == 'Q' ? static_cast<double>(mInteger) : static_cast<double>(converted<std::int64_t>());
}

NSComparisonResult NSNumber::compare(const NSRef<NSNumber>& other) const
{
    if (!other)
        throw NSException(NSInvalidArgumentException, "compare: the other number is null");
    auto place = [](const NSNumber& number) -> Exact {
        if (number.isFloatingPoint())
            return exactly(number.mReal);
        if (number.mType == 'Q')
            return { Exact::Inside, number.mInteger, 0 };
        return { Exact::Inside, number.converted<std::int64_t>(), 0 };
    };
    auto order = place(*this) <=> place(*other);
    if (order == 0)
        return NSOrderedSame;
    return order < 0 ? NSOrderedAscending : NSOrderedDescending;
}

bool NSNumber::isEqualToNumber(const NSRef<NSNumber>& other) const
{
    return other && compare(other) == NSOrderedSame;
}

bool NSNumber::isEqual(const NSId& other) const
{
    return isEqualToNumber(NSCast<NSNumber>(other));
}

NSUInteger NSNumber::hash() const
{
    if (!isFloatingPoint())
        return mInteger;
    // Equal to the hash of the equal integer, where there is one.
    const Exact place = exactly(mReal);
    if (place.place == Exact::Inside && place.rest == 0)
        return static_cast<NSUInteger>(place.whole);
    return place.place == Exact::NotANumber ? 0 : std::bit_cast<NSUInteger>(mReal);
}

NSRef<NSString> NSNumber::stringValue() const
{
    switch (mType) {
    case 'f':
        return text(mReal, 7);
    case 'd':
        return text(mReal, 16);
    case 'Q':
        return std::to_string(mInteger);
    default:
        return std::to_string(converted<std::int64_t>());
    }
}

NSRef<NSString> NSNumber::description() const
{
    return stringValue();
}

NSId NSNumber::copy() const
{
    return NSShare(const_cast<NSNumber*>(this));
}
