#include "platform/strings/percent_escape.h"

#include "platform/strings/utf_conversion.h"

namespace platform {
namespace {

bool standsUnescaped(unsigned char byte)
{
    bool isAlphanumeric =
        (byte >= '0' && byte <= '9') || (byte >= 'A' && byte <= 'Z') || (byte >= 'a' && byte <= 'z');
    return isAlphanumeric
        || (byte && std::string_view("!$&'()*+,-./:;=?@_~").find(char(byte)) != std::string_view::npos);
}

int hexValue(char digit)
{
    if (digit >= '0' && digit <= '9')
        return digit - '0';
    if (digit >= 'A' && digit <= 'F')
        return digit - 'A' + 10;
    if (digit >= 'a' && digit <= 'f')
        return digit - 'a' + 10;
    return -1;
}

}

std::optional<std::u16string> addingPercentEscapes(std::u16string_view text)
{
    std::optional<std::string> bytes = utf8FromUtf16(text);
    if (!bytes)
        return std::nullopt;
    constexpr char16_t kHex[] = u"0123456789ABCDEF";
    std::u16string escaped;
    escaped.reserve(bytes->size());
    for (char c : *bytes) {
        auto byte = static_cast<unsigned char>(c);
        if (standsUnescaped(byte))
            escaped.push_back(byte);
        else
            escaped.append({ u'%', kHex[byte >> 4], kHex[byte & 15] });
    }
    return escaped;
}

std::optional<std::u16string> replacingPercentEscapes(std::u16string_view text)
{
    std::optional<std::string> bytes = utf8FromUtf16(text);
    if (!bytes)
        return std::nullopt;
    std::string plain;
    plain.reserve(bytes->size());
    for (std::size_t i = 0; i < bytes->size(); ++i) {
        if ((*bytes)[i] != '%') {
            plain.push_back((*bytes)[i]);
            continue;
        }
        if (bytes->size() - i < 3)
            return std::nullopt;
        int high = hexValue((*bytes)[i + 1]);
        int low = hexValue((*bytes)[i + 2]);
        if (high < 0 || low < 0)
            return std::nullopt;
        plain.push_back(static_cast<char>(high * 16 + low));
        i += 2;
    }
    return utf16FromUtf8(plain);
}

}
