#include "platform/proplists/binary_objects.h"

#include "LUMPlatform/NSData.h"
#include "LUMPlatform/NSDate.h"
#include "LUMPlatform/NSNumber.h"
#include "LUMPlatform/NSString.h"
#include "platform/proplists/property_list_fault.h"
#include "platform/proplists/property_list_uid.h"

#include <algorithm>
#include <bit>

namespace platform {

using namespace binary;

void BinaryObjects::fault(const std::string& text, std::size_t at)
{
    throw PropertyListFault(text + " at byte " + std::to_string(at));
}

BinaryObjects::BinaryObjects(std::span<const std::byte> bytes, const NSDecodingLimits& limits) : mBytes(bytes)
{
    if (mBytes.size() < kHeaderSize + kTrailerSize + 1)
        throw PropertyListFault("the binary property list is cut short");
    const std::size_t trailer = mBytes.size() - kTrailerSize;
    constexpr std::size_t kSizes = 6;
    mOffsetSize = integerAt(trailer + kSizes, 1);
    mReferenceSize = integerAt(trailer + kSizes + 1, 1);
    mCount = integerAt(trailer + 8, 8);
    mTop = integerAt(trailer + 16, 8);
    mTable = integerAt(trailer + 24, 8);
    if (mOffsetSize < 1 || mOffsetSize > 8 || mReferenceSize < 1 || mReferenceSize > 8)
        fault("the offsets or references have an impossible size", trailer + kSizes);
    if (mTable <= kHeaderSize || mTable > trailer)
        fault("the table of offsets is said to be outside the file", trailer + 24);
    if (mCount > (trailer - mTable) / mOffsetSize)
        fault("the table of offsets has no room for all objects", trailer + 8);
    if (mCount > limits.objects)
        fault("there are more than " + std::to_string(limits.objects) + " objects", trailer + 8);
    if (mTop >= mCount)
        fault("the top object is none of the objects", trailer + 16);
    mUnclaimed = mTable - kHeaderSize;
}

BinaryObjects::Object BinaryObjects::object(std::uint64_t number) const
{
    if (number >= mCount)
        throw PropertyListFault(
            "a reference names object " + std::to_string(number) + " of " + std::to_string(mCount));
    const std::size_t entry = mTable + number * mOffsetSize;
    const std::uint64_t offset = integerAt(entry, mOffsetSize);
    if (offset < kHeaderSize || offset >= mTable)
        fault("an object is said to be outside the file", entry);
    const unsigned marker = std::to_integer<unsigned>(mBytes[offset]);
    const unsigned low = marker & 0xF;
    Object object { static_cast<Type>(marker >> 4), offset, offset + 1, 1, 0 };
    std::size_t unit = 0; // bytes of each of the count
    bool isKnown = true;
    switch (object.type) {
    case kSingle:
        isKnown = marker == kFalse || marker == kTrue;
        break;
    case kInteger:
        isKnown = low <= 4;
        unit = std::size_t { 1 } << low;
        break;
    case kReal:
        isKnown = low == 2 || low == 3;
        unit = std::size_t { 1 } << low;
        break;
    case kDate:
        isKnown = low == 3;
        unit = sizeof(double);
        break;
    case kUid:
        unit = low + 1;
        break;
    case kData:
    case kAscii:
        readCount(object, low);
        unit = 1;
        break;
    case kUtf16:
        readCount(object, low);
        unit = sizeof(char16_t);
        break;
    case kArray:
        readCount(object, low);
        unit = mReferenceSize;
        break;
    case kDictionary:
        readCount(object, low);
        unit = 2 * mReferenceSize;
        break;
    default:
        isKnown = false;
    }
    if (!isKnown)
        fault("an object is of no known type", offset);
    if (unit > 0 && object.count > (mTable - object.content) / unit)
        fault("an object is larger than the file", offset);
    object.size = object.count * unit;
    return object;
}

/// The count in the first byte, or in the integer behind it.
void BinaryObjects::readCount(Object& object, unsigned low) const
{
    object.count = low;
    if (low != kLongCount)
        return;
    const std::uint64_t marker = object.content < mTable ? integerAt(object.content, 1) : 0;
    const std::size_t size = std::size_t { 1 } << (marker & 0xF);
    constexpr std::size_t kLargest = 16;
    if (marker >> 4 != kInteger || size > kLargest || size >= mTable - object.content)
        fault("an object has no count", object.begin);
    const std::size_t digits = std::min(size, sizeof(std::uint64_t));
    if (integerAt(object.content + 1, size - digits) != 0)
        fault("an object is larger than the file", object.begin);
    object.content += 1 + size;
    object.count = integerAt(object.content - digits, digits);
}

void BinaryObjects::claim(const Object& object)
{
    const std::size_t size = object.content - object.begin + object.size;
    if (size > mUnclaimed)
        fault("objects overlap", object.begin);
    mUnclaimed -= size;
}

NSId BinaryObjects::value(const Object& value) const
{
    switch (value.type) {
    case kSingle:
        return NSNumber::numberWithBool(truth(value));
    case kInteger: {
        const Integer whole = integer(value);
        return whole.isUnsigned ? NSNumber::numberWithUnsignedLongLong(whole.bits)
                                : NSNumber::numberWithLongLong(static_cast<std::int64_t>(whole.bits));
    }
    case kReal:
        return value.size == sizeof(float) ? NSNumber::numberWithFloat(static_cast<float>(real(value)))
                                           : NSNumber::numberWithDouble(real(value));
    case kDate:
        return NSDate::dateWithTimeIntervalSinceReferenceDate(real(value));
    case kData: {
        const auto content = bytes(value);
        if (auto data = NSData::dataWithBytes(content.data(), content.size()))
            return data;
        throw std::bad_alloc();
    }
    case kAscii:
        return asciiText(value);
    case kUtf16:
        return utf16Text(value);
    case kUid:
        return PropertyListUid::withValue(uid(value));
    default:
        fault("a container stands where a value does", value.begin);
    }
}

bool BinaryObjects::truth(const Object& single) const
{
    return mBytes[single.begin] == std::byte { kTrue };
}

/// One, two and four bytes hold unsigned numbers, eight a signed one; sixteen extend either.
BinaryObjects::Integer BinaryObjects::integer(const Object& integer) const
{
    if (integer.size <= sizeof(std::int64_t))
        return { integerAt(integer.content, integer.size), false };
    const std::uint64_t high = integerAt(integer.content, 8);
    const std::uint64_t bits = integerAt(integer.content + 8, 8);
    const bool isNegative = bits >> 63 != 0;
    if (high == 0)
        return { bits, isNegative };
    if (~high != 0 || !isNegative)
        fault("an integer has more than 64 bits", integer.begin);
    return { bits, false };
}

double BinaryObjects::real(const Object& real) const
{
    const std::uint64_t bits = integerAt(real.content, real.size);
    if (real.size == sizeof(float))
        return static_cast<double>(std::bit_cast<float>(static_cast<std::uint32_t>(bits)));
    return std::bit_cast<double>(bits);
}

std::uint32_t BinaryObjects::uid(const Object& uid) const
{
    const std::size_t digits = std::min(uid.size, sizeof(std::uint64_t));
    const std::uint64_t value = integerAt(uid.content + uid.size - digits, digits);
    if (integerAt(uid.content, uid.size - digits) != 0 || !std::in_range<std::uint32_t>(value))
        fault("a reference of an archive has more than 32 bits", uid.begin);
    return static_cast<std::uint32_t>(value);
}

NSId BinaryObjects::asciiText(const Object& string) const
{
    const auto text = bytes(string);
    auto all = std::byte {};
    auto made = NSString::stringWithLength(string.count, [&](char16_t* characters) {
        for (std::size_t at = 0; at < text.size(); ++at) {
            characters[at] = std::to_integer<char16_t>(text[at]);
            all |= text[at];
        }
    });
    if (std::to_integer<unsigned>(all) >= 0x80)
        fault("a text in ASCII holds other characters", string.begin);
    return made;
}

NSId BinaryObjects::utf16Text(const Object& string) const
{
    return NSString::stringWithLength(string.count, [&](char16_t* characters) {
        for (std::size_t at = 0; at < string.count; ++at)
            characters[at] = static_cast<char16_t>(integerAt(string.content + 2 * at, 2));
    });
}

bool BinaryObjects::isText(const Object& string, std::u16string_view characters) const
{
    if (string.count != characters.size())
        return false;
    if (string.type == kAscii) {
        const std::byte* text = mBytes.data() + string.content;
        for (std::size_t at = 0; at < characters.size(); ++at)
            if (std::to_integer<char16_t>(text[at]) != characters[at])
                return false;
        return true;
    }
    if (string.type != kUtf16)
        return false;
    for (std::size_t at = 0; at < characters.size(); ++at)
        if (integerAt(string.content + 2 * at, 2) != characters[at])
            return false;
    return true;
}

}
