#include "LUMPlatform/NSClass.h"
#include "LUMPlatform/NSData.h"
#include "LUMPlatform/NSException.h"
#include "LUMPlatform/NSString.h"

#include <algorithm>
#include <cstring>
#include <memory>

namespace {

constexpr NSMethod kMethods[] = {
    NSMethodOf<"appendData:", &NSMutableData::appendData>(),
    NSMethodOf<"appendBytes:length:", &NSMutableData::appendBytes>(),
    NSMethodOf<"setLength:", &NSMutableData::setLength>(),
    NSMethodOf<"replaceBytesInRange:withBytes:length:", &NSMutableData::replaceBytesInRange>(),
};

}

const NSClass& NSMutableData::classObject()
{
    static const NSClass& type = NSClass::define("NSMutableData", &NSData::classObject(), kMethods);
    return type;
}

NSMutableData::NSMutableData() : NSMutableData(nullptr, 0, 0) { }

NSMutableData::NSMutableData(std::byte* bytes, NSUInteger length, NSUInteger capacity)
    : NSData(bytes, length, std::free), mCapacity(capacity)
{
}

NSMutableData::~NSMutableData() = default;

NSRef<NSMutableData> NSMutableData::data()
{
    return dataWithCapacity(0);
}

NSRef<NSMutableData> NSMutableData::dataWithCapacity(NSUInteger capacity)
{
    auto bytes = capacity < PTRDIFF_MAX ? static_cast<std::byte*>(std::malloc(capacity + 1)) : nullptr;
    return bytes ? NSMake<NSMutableData>(bytes, NSUInteger { 0 }, capacity) : nullptr;
}

NSRef<NSMutableData> NSMutableData::dataWithLength(NSUInteger length)
{
    auto bytes = length < PTRDIFF_MAX ? static_cast<std::byte*>(std::calloc(length + 1, 1)) : nullptr;
    return bytes ? NSMake<NSMutableData>(bytes, length, length) : nullptr;
}

NSRef<NSMutableData> NSMutableData::dataWithBytes(const void* bytes, NSUInteger length)
{
    std::byte* copy = allocated(bytes, length);
    return copy ? NSMake<NSMutableData>(copy, length, length) : nullptr;
}

NSRef<NSMutableData> NSMutableData::dataWithData(const NSRef<NSData>& other)
{
    return other ? dataWithBytes(other->bytes().data(), other->length()) : data();
}

void NSMutableData::reserve(NSUInteger capacity)
{
    if (capacity <= mCapacity)
        return;
    // By half as much again, so that appending byte by byte stays linear.
    const NSUInteger roomy = std::max(capacity, mCapacity + mCapacity / 2);
    void* grown = roomy < PTRDIFF_MAX ? std::realloc(mBytes, roomy + 1) : nullptr;
    if (!grown)
        throw NSException(
            NSMallocException, "there is no memory for " + std::to_string(capacity) + " bytes of data");
    mBytes = static_cast<std::byte*>(grown);
    mCapacity = roomy;
}

void NSMutableData::appendBytes(const void* bytes, NSUInteger length)
{
    replaceBytesInRange({ mLength, 0 }, bytes, length);
}

void NSMutableData::appendData(const NSRef<NSData>& other)
{
    if (other)
        appendBytes(other->bytes().data(), other->length());
}

void NSMutableData::setLength(NSUInteger length)
{
    reserve(length);
    if (length > mLength)
        std::memset(mBytes + mLength, 0, length - mLength);
    mLength = length;
}

void NSMutableData::replaceBytesInRange(NSRange range, const void* bytes, NSUInteger length)
{
    checkRange("replaceBytesInRange:withBytes:length:", range);
    if (!bytes && length > 0)
        throw NSException(
            NSInvalidArgumentException, "replaceBytesInRange:withBytes:length: there are no bytes at null");
    if (length > PTRDIFF_MAX)
        throw NSException(
            NSMallocException, "there is no memory for " + std::to_string(length) + " bytes of data");
    // The bytes may be some of our own, which are about to move: put them aside.
    const auto source = static_cast<const std::byte*>(bytes);
    std::byte* aside = nullptr;
    if (source && std::less_equal<>()(mBytes, source) && std::less<>()(source, mBytes + mLength)) {
        aside = allocated(source, length);
        if (!aside)
            throw NSException(
                NSMallocException, "there is no memory for " + std::to_string(length) + " bytes of data");
    }
    const std::unique_ptr<std::byte, void (*)(void*)> owner(aside, std::free);
    reserve(mLength - range.length + length);
    std::byte* place = mBytes + range.location;
    std::memmove(place + length, place + range.length, mLength - range.end());
    if (length > 0)
        std::memcpy(place, aside ? aside : source, length);
    mLength = mLength - range.length + length;
}

NSId NSMutableData::copy() const
{
    return NSData::dataWithBytes(mBytes, mLength);
}
