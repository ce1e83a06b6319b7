#include "LUMPlatform/NSCoder.h"

#include "LUMPlatform/NSClass.h"
#include "LUMPlatform/NSException.h"
#include "LUMPlatform/NSString.h"

const NSStringConstant NSInvalidArchiveOperationException("NSInvalidArchiveOperationException");
const NSStringConstant NSInvalidUnarchiveOperationException("NSInvalidUnarchiveOperationException");

namespace {

constexpr NSMethod kMethods[] = {
    NSMethodOf<"allowsKeyedCoding", &NSCoder::allowsKeyedCoding>(),
    NSMethodOf<"encodeObject:forKey:", &NSCoder::encodeObjectForKey>(),
    NSMethodOf<"encodeBool:forKey:", &NSCoder::encodeBool>(),
    NSMethodOf<"encodeInt:forKey:", &NSCoder::encodeInt>(),
    NSMethodOf<"encodeInt32:forKey:", &NSCoder::encodeInt32>(),
    NSMethodOf<"encodeInt64:forKey:", &NSCoder::encodeInt64>(),
    NSMethodOf<"encodeInteger:forKey:", &NSCoder::encodeInteger>(),
    NSMethodOf<"encodeFloat:forKey:", &NSCoder::encodeFloat>(),
    NSMethodOf<"encodeDouble:forKey:", &NSCoder::encodeDouble>(),
    NSMethodOf<"encodeBytes:length:forKey:", &NSCoder::encodeBytesForKey>(),
    NSMethodOf<"containsValueForKey:", &NSCoder::containsValueForKey>(),
    NSMethodOf<"decodeObjectForKey:", &NSCoder::decodeObjectForKey<NSObject>>(),
    NSMethodOf<"decodeBoolForKey:", &NSCoder::decodeBoolForKey>(),
    NSMethodOf<"decodeIntForKey:", &NSCoder::decodeIntForKey>(),
    NSMethodOf<"decodeInt32ForKey:", &NSCoder::decodeInt32ForKey>(),
    NSMethodOf<"decodeInt64ForKey:", &NSCoder::decodeInt64ForKey>(),
    NSMethodOf<"decodeIntegerForKey:", &NSCoder::decodeIntegerForKey>(),
    NSMethodOf<"decodeFloatForKey:", &NSCoder::decodeFloatForKey>(),
    NSMethodOf<"decodeDoubleForKey:", &NSCoder::decodeDoubleForKey>(),
    NSMethodOf<"decodeBytesForKey:returnedLength:", &NSCoder::decodeBytesForKey>(),
    NSMethodOf<"encodeObject:", &NSCoder::encodeObject>(),
    NSMethodOf<"encodeBytes:length:", &NSCoder::encodeBytes>(),
    NSMethodOf<"decodeObject", &NSCoder::decodeObject<NSObject>>(),
    NSMethodOf<"decodeBytesWithReturnedLength:", &NSCoder::decodeBytesWithReturnedLength>(),
};

template<typename T> T narrowed(std::int64_t value, const NSRef<NSString>& key)
{
    if (!std::in_range<T>(value))
        throw NSException(NSRangeException,
            NSString::stringWithFormat(
                "the integer %lld for key %@ does not fit %zu bytes", value, key, sizeof(T)));
    return static_cast<T>(value);
}

}

const NSClass& NSCoder::classObject()
{
    static const NSClass& type = NSClass::define("NSCoder", &NSObject::classObject(), kMethods);
    return type;
}

NSCoder::~NSCoder() = default;

void NSCoder::cannot(const char* operation) const
{
    throw NSException(
        NSInvalidArgumentException, std::string(isa().name()) + " does not answer " + operation);
}

void NSCoder::refuse(const NSObject& object)
{
    giveUp();
    throw NSException(NSInvalidUnarchiveOperationException,
        "the archive holds an object of class " + std::string(object.isa().name())
            + " where another is asked for");
}

bool NSCoder::allowsKeyedCoding() const
{
    return false;
}

void NSCoder::encodeObjectForKey(const NSId&, const NSRef<NSString>&)
{
    cannot("encodeObject:forKey:");
}

void NSCoder::encodeBool(bool, const NSRef<NSString>&)
{
    cannot("encodeBool:forKey:");
}

void NSCoder::encodeInt(int value, const NSRef<NSString>& key)
{
    encodeInt64(value, key);
}

void NSCoder::encodeInt32(std::int32_t value, const NSRef<NSString>& key)
{
    encodeInt64(value, key);
}

void NSCoder::encodeInt64(std::int64_t, const NSRef<NSString>&)
{
    cannot("encodeInt64:forKey:");
}

void NSCoder::encodeInteger(NSInteger value, const NSRef<NSString>& key)
{
    encodeInt64(value, key);
}

void NSCoder::encodeFloat(float, const NSRef<NSString>&)
{
    cannot("encodeFloat:forKey:");
}

void NSCoder::encodeDouble(double, const NSRef<NSString>&)
{
    cannot("encodeDouble:forKey:");
}

void NSCoder::encodeBytesForKey(const void*, NSUInteger, const NSRef<NSString>&)
{
    cannot("encodeBytes:length:forKey:");
}

bool NSCoder::containsValueForKey(const NSRef<NSString>&) const
{
    cannot("containsValueForKey:");
}

NSId NSCoder::objectForKey(const NSRef<NSString>&)
{
    cannot("decodeObjectForKey:");
}

bool NSCoder::decodeBoolForKey(const NSRef<NSString>&)
{
    cannot("decodeBoolForKey:");
}

int NSCoder::decodeIntForKey(const NSRef<NSString>& key)
{
    return narrowed<int>(decodeInt64ForKey(key), key);
}

std::int32_t NSCoder::decodeInt32ForKey(const NSRef<NSString>& key)
{
    return narrowed<std::int32_t>(decodeInt64ForKey(key), key);
}

std::int64_t NSCoder::decodeInt64ForKey(const NSRef<NSString>&)
{
    cannot("decodeInt64ForKey:");
}

NSInteger NSCoder::decodeIntegerForKey(const NSRef<NSString>& key)
{
    return decodeInt64ForKey(key);
}

float NSCoder::decodeFloatForKey(const NSRef<NSString>& key)
{
    return static_cast<float>(decodeDoubleForKey(key));
}

double NSCoder::decodeDoubleForKey(const NSRef<NSString>&)
{
    cannot("decodeDoubleForKey:");
}

const void* NSCoder::decodeBytesForKey(const NSRef<NSString>&, NSUInteger*)
{
    cannot("decodeBytesForKey:returnedLength:");
}

void NSCoder::encodeObject(const NSId&)
{
    cannot("encodeObject:");
}

void NSCoder::encodeGroup(std::span<const NSArgument>)
{
    cannot("encodeValuesOfObjCTypes:");
}

void NSCoder::encodeBytes(const void*, NSUInteger)
{
    cannot("encodeBytes:length:");
}

NSId NSCoder::nextObject()
{
    cannot("decodeObject");
}

void NSCoder::decodeGroup(std::span<const char* const>, std::span<NSResult>)
{
    cannot("decodeValuesOfObjCTypes:");
}

const void* NSCoder::decodeBytesWithReturnedLength(NSUInteger*)
{
    cannot("decodeBytesWithReturnedLength:");
}

void NSCoder::announce(const NSId&, Undo) { }

void NSCoder::giveUp() { }
