#include "LUMPlatform/NSData.h"

#include "LUMPlatform/NSClass.h"
#include "LUMPlatform/NSException.h"
#include "LUMPlatform/NSString.h"
#include "platform/objects/keyed_hash.h"

#include <algorithm>
#include <cstring>

namespace {

bool write(NSData& data, const NSRef<NSString>& path, bool atomically)
{
    return data.writeToFile(path, atomically);
}

constexpr NSMethod kMethods[] = {
    NSMethodOf<"length", &NSData::length>(),
    NSMethodOf<"subdataWithRange:", &NSData::subdataWithRange>(),
    NSMethodOf<"isEqualToData:", &NSData::isEqualToData>(),
    NSMethodOf<"writeToFile:atomically:", &write>(),
};

}

const NSClass& NSData::classObject()
{
    static const NSClass& type = NSClass::define("NSData", &NSObject::classObject(), kMethods);
    return type;
}

NSData::NSData(std::byte* bytes, NSUInteger length, void (*free)(void*))
    : mBytes(bytes), mLength(length), mFree(free)
{
}

NSData::~NSData()
{
    if (mFree)
        mFree(mBytes);
}

std::byte* NSData::allocated(const void* bytes, NSUInteger length)
{
    if (!bytes && length > 0)
        throw NSException(NSInvalidArgumentException,
            "there are no bytes at null to make data of, but a length of " + std::to_string(length));
    // One more than needed: no allocation of 0 bytes, whose null would look like a failure.
    auto copy = length < PTRDIFF_MAX ? static_cast<std::byte*>(std::malloc(length + 1)) : nullptr;
    if (copy && length > 0)
        std::memcpy(copy, bytes, length);
    return copy;
}

NSRef<NSData> NSData::data()
{
    return NSMake<NSData>();
}

NSRef<NSData> NSData::dataWithBytes(const void* bytes, NSUInteger length)
{
    std::byte* copy = allocated(bytes, length);
    return copy ? NSMake<NSData>(copy, length, std::free) : nullptr;
}

NSRef<NSData> NSData::dataWithBytesNoCopy(void* bytes, NSUInteger length, void (*free)(void*))
{
    if (!bytes && length > 0)
        throw NSException(NSInvalidArgumentException,
            "there are no bytes at null to make data of, but a length of " + std::to_string(length));
    return NSMake<NSData>(static_cast<std::byte*>(bytes), length, free);
}

NSRef<NSData> NSData::dataWithData(const NSRef<NSData>& other)
{
    return other ? NSCast<NSData>(other->copy()) : data();
}

void NSData::checkRange(const char* operation, NSRange range) const
{
    if (range.location > mLength || range.length > mLength - range.location)
        throw NSException(NSRangeException,
            std::string(operation) + " range {" + std::to_string(range.location) + ", "
                + std::to_string(range.length) + "} reaches past the end of " + std::to_string(mLength)
                + " bytes");
}

NSRef<NSData> NSData::subdataWithRange(NSRange range) const
{
    checkRange("subdataWithRange:", range);
    return dataWithBytes(mBytes + range.location, range.length);
}

bool NSData::isEqualToData(const NSRef<NSData>& other) const
{
    return other && std::ranges::equal(bytes(), other->bytes());
}

bool NSData::isEqual(const NSId& other) const
{
    return isEqualToData(NSCast<NSData>(other));
}

NSUInteger NSData::hash() const
{
    return platform::keyedHash(bytes());
}

NSRef<NSString> NSData::description() const
{
    static constexpr char kHex[] = "0123456789abcdef";
    constexpr NSUInteger kGroup = 4;
    std::string text = "<";
    for (NSUInteger at = 0; at < mLength; ++at) {
        if (at > 0 && at % kGroup == 0)
            text += ' ';
        text += kHex[std::to_integer<unsigned>(mBytes[at]) >> 4];
        text += kHex[std::to_integer<unsigned>(mBytes[at]) & 0xf];
    }
    return text + ">";
}

NSId NSData::copy() const
{
    return NSShare(const_cast<NSData*>(this));
}

NSId NSData::mutableCopy() const
{
    return NSMutableData::dataWithBytes(mBytes, mLength);
}
