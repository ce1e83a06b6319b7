#include "platform/proplists/binary_values.h"

#include "LUMPlatform/NSData.h"
#include "LUMPlatform/NSDate.h"
#include "LUMPlatform/NSNumber.h"
#include "LUMPlatform/NSString.h"
#include "platform/proplists/property_list_uid.h"

#include <bit>
#include <limits>

namespace platform {
namespace {

using namespace binary;

void appendMarker(std::string& bytes, Type type, unsigned low)
{
    bytes.push_back(static_cast<char>(type << 4 | low));
}

void appendBigEndian(std::string& bytes, std::uint64_t value, std::size_t size)
{
    std::byte digits[sizeof value];
    writeInteger(digits, value, size);
    bytes.append(reinterpret_cast<const char*>(digits), size);
}

/// The exponent of two that is the least number of bytes for an unsigned number.
unsigned sizeExponent(std::uint64_t value)
{
    if (value <= 0xFF)
        return 0;
    if (value <= 0xFFFF)
        return 1;
    return value <= 0xFFFF'FFFF ? 2 : 3;
}

void appendInteger(std::string& bytes, std::uint64_t value, unsigned exponent)
{
    appendMarker(bytes, kInteger, exponent);
    appendBigEndian(bytes, value, std::size_t { 1 } << exponent);
}

/// All quiet and signalling forms of not-a-number are one value and have one form.
double canonical(double value)
{
    return value != value ? std::numeric_limits<double>::quiet_NaN() : value;
}

void appendDouble(std::string& bytes, Type type, double value)
{
    appendMarker(bytes, type, 3);
    appendBigEndian(bytes, std::bit_cast<std::uint64_t>(canonical(value)), sizeof value);
}

void appendNumber(std::string& bytes, const NSNumber& number)
{
    if (number.isBool())
        return appendMarker(bytes, kSingle, number.boolValue() ? kTrue : kFalse);
    switch (*number.objCType()) {
    case 'd':
        return appendDouble(bytes, kReal, number.doubleValue());
    case 'f':
        appendMarker(bytes, kReal, 2);
        return appendBigEndian(bytes,
            std::bit_cast<std::uint32_t>(static_cast<float>(canonical(number.doubleValue()))), sizeof(float));
    case 'Q': // from 2 to the power 63 on: sixteen bytes, as eight would be a negative number
        appendMarker(bytes, kInteger, 4);
        appendBigEndian(bytes, 0, 8);
        return appendBigEndian(bytes, number.unsignedLongLongValue(), 8);
    default:
        return appendBinaryInteger(bytes, number.longLongValue());
    }
}

}

void appendBinaryCount(std::string& bytes, Type type, std::uint64_t count)
{
    if (count < kLongCount)
        return appendMarker(bytes, type, static_cast<unsigned>(count));
    appendMarker(bytes, type, kLongCount);
    appendInteger(bytes, count, sizeExponent(count));
}

void appendBinaryText(std::string& bytes, std::u16string_view text)
{
    char16_t all = 0;
    for (char16_t unit : text)
        all |= unit;
    const std::size_t unitSize = all < 0x80 ? 1 : 2;
    appendBinaryCount(bytes, unitSize == 1 ? kAscii : kUtf16, text.size());
    const std::size_t begin = bytes.size();
    bytes.resize(begin + text.size() * unitSize);
    char* out = bytes.data() + begin;
    if (unitSize == 1) {
        for (std::size_t at = 0; at < text.size(); ++at)
            out[at] = static_cast<char>(text[at]);
        return;
    }
    for (std::size_t at = 0; at < text.size(); ++at) {
        out[2 * at] = static_cast<char>(text[at] >> 8);
        out[2 * at + 1] = static_cast<char>(text[at]);
    }
}

void appendBinaryInteger(std::string& bytes, std::int64_t value)
{
    const auto bits = static_cast<std::uint64_t>(value);
    appendInteger(bytes, bits, value < 0 ? 3 : sizeExponent(bits));
}

void appendBinaryUid(std::string& bytes, std::uint32_t value)
{
    const std::size_t size = std::size_t { 1 } << sizeExponent(value);
    appendMarker(bytes, kUid, static_cast<unsigned>(size - 1));
    appendBigEndian(bytes, value, size);
}

void appendBinaryValue(std::string& bytes, const NSObject& value, PropertyListKind kind)
{
    switch (kind) {
    case PropertyListKind::String:
        return appendBinaryText(bytes, static_cast<const NSString&>(value).characters());
    case PropertyListKind::Number:
        return appendNumber(bytes, static_cast<const NSNumber&>(value));
    case PropertyListKind::Date:
        return appendDouble(bytes, kDate, static_cast<const NSDate&>(value).timeIntervalSinceReferenceDate());
    case PropertyListKind::Data: {
        const auto content = static_cast<const NSData&>(value).bytes();
        appendBinaryCount(bytes, kData, content.size());
        bytes.append(reinterpret_cast<const char*>(content.data()), content.size());
        return;
    }
    case PropertyListKind::Uid:
        return appendBinaryUid(bytes, static_cast<const PropertyListUid&>(value).value());
    default:
        return; // containers and what is no property list have no value
    }
}

}
