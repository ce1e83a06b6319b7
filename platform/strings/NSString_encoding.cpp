#include "LUMPlatform/NSData.h"
#include "platform/strings/code_points.h"
#include "platform/strings/string_arguments.h"
#include "platform/strings/text_encoding.h"
#include "platform/strings/utf_conversion.h"

namespace {

/// Null when a character has no bytes, and for an encoding that is none.
std::optional<std::string> bytesOf(std::u16string_view text, NSStringEncoding encoding)
{
    switch (encoding) {
    case NSUTF8StringEncoding:
        return platform::utf8FromUtf16(text);
    case NSASCIIStringEncoding:
        return platform::bytesFromUtf16(text, platform::ByteEncoding::Ascii);
    case NSMacOSRomanStringEncoding:
        return platform::bytesFromUtf16(text, platform::ByteEncoding::MacRoman);
    }
    return std::nullopt;
}

}

std::string NSString::utf8() const
{
    return platform::utf8FromUtf16Replacing(characters());
}

NSRef<NSString> NSString::initWithData(const NSRef<NSData>& data, NSStringEncoding encoding)
{
    if (!data)
        return nullptr;
    std::string_view bytes(reinterpret_cast<const char*>(data->bytes().data()), data->length());
    std::optional<std::u16string> text;
    switch (encoding) {
    case NSUTF8StringEncoding:
        return stringWithUTF8String(bytes);
    case NSASCIIStringEncoding:
        text = platform::utf16FromBytes(bytes, platform::ByteEncoding::Ascii);
        break;
    case NSMacOSRomanStringEncoding:
        text = platform::utf16FromBytes(bytes, platform::ByteEncoding::MacRoman);
        break;
    }
    return text ? stringWithCharacters(*text) : nullptr;
}

NSRef<NSData> NSString::dataUsingEncoding(NSStringEncoding encoding) const
{
    std::optional<std::string> bytes = bytesOf(characters(), encoding);
    return bytes ? NSData::dataWithBytes(bytes->data(), bytes->size()) : nullptr;
}

bool NSString::canBeConvertedToEncoding(NSStringEncoding encoding) const
{
    return bytesOf(characters(), encoding).has_value();
}

bool NSString::getCString(char* buffer, NSUInteger maxLength, NSStringEncoding encoding) const
{
    if (!buffer || maxLength == 0)
        return false;
    NSUInteger room = maxLength - 1;
    char* out = buffer;
    std::size_t at = 0;
    while (at < length()) {
        std::size_t end = platform::nextCodePoint(characters(), at);
        std::optional<std::string> bytes = bytesOf(characters().substr(at, end - at), encoding);
        if (!bytes || bytes->size() > room)
            break;
        out = std::copy(bytes->begin(), bytes->end(), out);
        room -= bytes->size();
        at = end;
    }
    *out = '\0';
    return at == length();
}
