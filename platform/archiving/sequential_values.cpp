#include "platform/archiving/sequential_values.h"

#include "LUMPlatform/NSException.h"
#include "LUMPlatform/NSNumber.h"
#include "LUMPlatform/NSString.h"
#include "platform/archiving/sequential_scalars.h"

#include <charconv>
#include <utility>

namespace platform {
namespace {

constexpr std::string_view kUtf8Text = "+";
constexpr std::string_view kCString = "*";
constexpr std::string_view kBool = "B";
constexpr std::string_view kLength = "i";

/// The count in "[12c]"; none when the type is no array of `element`.
std::optional<std::uint64_t> arrayCount(std::string_view type, char element)
{
    if (type.size() < 4 || type.front() != '[' || type.back() != ']' || type[type.size() - 2] != element)
        return std::nullopt;
    std::uint64_t count = 0;
    const char* end = type.data() + type.size() - 2;
    const auto parsed = std::from_chars(type.data() + 1, end, count);
    if (parsed.ec != std::errc() || parsed.ptr != end)
        return std::nullopt;
    return count;
}

std::string arrayType(std::size_t count, char element)
{
    return "[" + std::to_string(count) + element + "]";
}

}

/// UTF-8 where the text has any; texts with surrogates that have no partner go unit by unit.
void writeString(SequentialWriter& writer, const NSString& string)
{
    const std::string utf8 = string.utf8();
    if (NSString::stringWithUTF8String(utf8)->characters() == string.characters()) {
        writer.writeSharedText(kUtf8Text);
        writer.writeText(utf8);
        return;
    }
    writer.writeSharedText(arrayType(string.length(), 'S'));
    for (char16_t unit : string.characters())
        writer.writeInteger(static_cast<std::int16_t>(unit));
}

NSRef<NSString> readString(SequentialReader& reader)
{
    const std::string_view type = reader.readSharedText();
    if (type == kUtf8Text) {
        auto string = NSString::stringWithUTF8String(reader.readText());
        if (!string)
            reader.fault("a text is no UTF-8");
        return string;
    }
    const auto count = arrayCount(type, 'S');
    if (!count || *count > reader.bytesLeft())
        reader.fault("a text is of an unknown type");
    std::u16string characters(*count, u'\0');
    for (char16_t& unit : characters)
        unit = static_cast<char16_t>(readWhole(reader, 'S').bits);
    return NSString::stringWithCharacters(characters);
}

void writeNumber(SequentialWriter& writer, const NSNumber& number)
{
    const std::string type = number.isBool() ? std::string(kBool) : number.objCType();
    writer.writeSharedText(kCString);
    writer.writeCString(type);
    writer.writeSharedText(type);
    if (type == "f")
        writer.writeReal(number.floatValue());
    else if (type == "d")
        writer.writeReal(number.doubleValue());
    else if (type == "c")
        writer.writeByte(static_cast<std::uint8_t>(number.charValue()));
    else
        writer.writeInteger(number.longLongValue());
}

NSRef<NSNumber> readNumber(SequentialReader& reader)
{
    if (reader.readSharedText() != kCString)
        reader.fault("a number has no type");
    const std::string type(reader.readCString().value_or(std::string_view()));
    if (type.size() != 1 || reader.readSharedText() != type)
        reader.fault("a number is of an unknown type");
    if (type == "f")
        return NSNumber::numberWithFloat(static_cast<float>(reader.readReal(sizeof(float))));
    if (type == "d")
        return NSNumber::numberWithDouble(reader.readReal(sizeof(double)));
    if (!isWholeType(type[0]))
        reader.fault("a number is of an unknown type");
    const Whole whole = readWhole(reader, type[0]);
    switch (type[0]) {
    case 'B':
        return NSNumber::numberWithBool(whole.bits != 0);
    case 'c':
        return NSNumber::numberWithChar(static_cast<signed char>(whole.bits));
    case 's':
    case 'C':
        return NSNumber::numberWithShort(static_cast<short>(whole.bits));
    case 'i':
    case 'S':
        if (std::in_range<int>(whole.bits))
            return NSNumber::numberWithInt(static_cast<int>(whole.bits));
        [[fallthrough]];
    default:
        return whole.isUnsigned64
            ? NSNumber::numberWithUnsignedLongLong(static_cast<std::uint64_t>(whole.bits))
            : NSNumber::numberWithLongLong(whole.bits);
    }
}

void writeBlock(SequentialWriter& writer, const void* bytes, NSUInteger length)
{
    if (!std::in_range<std::int32_t>(length) || (!bytes && length > 0))
        throw NSException(NSInvalidArgumentException,
            NSString::stringWithFormat("%llu bytes at %p cannot be archived", length, bytes));
    writer.writeSharedText(kLength);
    writer.writeInteger(static_cast<std::int64_t>(length));
    writer.writeSharedText(arrayType(length, 'c'));
    writer.writeBytes(bytes, length);
}

std::span<const std::byte> readBlock(SequentialReader& reader)
{
    if (reader.readSharedText() != kLength)
        reader.fault("a block of bytes has no length");
    const std::int64_t length = reader.readInteger();
    const auto count = arrayCount(reader.readSharedText(), 'c');
    if (!count || length < 0 || *count != static_cast<std::uint64_t>(length))
        reader.fault("a block of bytes is of an unknown type");
    return reader.readBytes(*count);
}

}
