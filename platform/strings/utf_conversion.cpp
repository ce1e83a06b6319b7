#include "platform/strings/utf_conversion.h"

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <limits>
#include <unicode/ustring.h>

namespace platform {
namespace {

constexpr char32_t kReplacement = 0xFFFD;
constexpr std::size_t kLongest = std::numeric_limits<std::int32_t>::max();

bool isAscii(char byte)
{
    return static_cast<unsigned char>(byte) < 0x80;
}
bool isAscii(char16_t unit)
{
    return unit < 0x80;
}

template<typename Unit> bool isAsciiBlock(const Unit* block)
{
    std::uint64_t words[2];
    std::memcpy(words, block, sizeof words);
    return ((words[0] | words[1]) & (sizeof(Unit) == 1 ? 0x8080808080808080U : 0xFF80FF80FF80FF80U)) == 0;
}

/// Copies the ASCII that `text` begins with, and answers its length: most text is nothing else.
template<typename From, typename To> std::size_t convertAscii(std::basic_string_view<From> text, To* out)
{
    constexpr std::size_t kBlock = 16 / sizeof(From);
    std::size_t at = 0;
    for (; text.size() - at >= kBlock && isAsciiBlock(text.data() + at); at += kBlock)
        for (std::size_t i = at; i < at + kBlock; ++i)
            out[i] = static_cast<To>(text[i]);
    for (; at < text.size() && isAscii(text[at]); ++at)
        out[at] = static_cast<To>(text[at]);
    return at;
}

/// Adds up what `count` makes of each unit, 2 at most, in counters so narrow that the compiler can add many
/// at once.
template<typename Counter, typename Unit, typename Count>
std::size_t sum(std::basic_string_view<Unit> text, Count count)
{
    constexpr std::size_t kBatch = std::numeric_limits<Counter>::max() / 2;
    std::size_t total = 0;
    while (!text.empty()) {
        std::basic_string_view<Unit> batch = text.substr(0, kBatch);
        Counter counter = 0;
        for (Unit unit : batch)
            counter = static_cast<Counter>(counter + count(unit));
        total += counter;
        text.remove_prefix(batch.size());
    }
    return total;
}

/// The bytes that `utf16` takes if it is well-formed.
std::size_t utf8LengthOfWellFormed(std::u16string_view utf16)
{
    return utf16.size() + sum<std::uint16_t>(utf16, [](char16_t unit) {
        bool isHalfOfPair = (unit & 0xF800) == 0xD800; // and takes two of its four bytes
        return (unit >= 0x80) + ((unit >= 0x800) & !isHalfOfPair);
    });
}

std::int32_t lengthForIcu(std::size_t length)
{
    return static_cast<std::int32_t>(std::min(length, kLongest));
}

}

std::size_t utf16LengthOfWellFormed(std::string_view utf8)
{
    return sum<std::uint8_t>(utf8, [](char byte) {
        bool isContinuation = static_cast<signed char>(byte) < -64;
        return !isContinuation + (static_cast<unsigned char>(byte) >= 0xF0);
    });
}

bool convertUtf8(std::string_view utf8, char16_t* out)
{
    std::size_t done = convertAscii(utf8, out);
    utf8.remove_prefix(done);
    if (utf8.empty())
        return true;
    UErrorCode error = U_ZERO_ERROR;
    u_strFromUTF8(out + done, lengthForIcu(utf16LengthOfWellFormed(utf8)), nullptr, utf8.data(),
        lengthForIcu(utf8.size()), &error);
    return U_SUCCESS(error) && utf8.size() <= kLongest;
}

std::optional<std::u16string> utf16FromUtf8(std::string_view utf8)
{
    std::u16string text(utf16LengthOfWellFormed(utf8), u'\0');
    return convertUtf8(utf8, text.data()) ? std::optional(std::move(text)) : std::nullopt;
}

std::optional<std::string> utf8FromUtf16(std::u16string_view utf16)
{
    std::string bytes(utf8LengthOfWellFormed(utf16), '\0');
    std::size_t done = convertAscii(utf16, bytes.data());
    if (done == utf16.size())
        return bytes;
    if (bytes.size() > kLongest)
        return std::nullopt;
    UErrorCode error = U_ZERO_ERROR;
    u_strToUTF8(bytes.data() + done, lengthForIcu(bytes.size() - done), nullptr, utf16.data() + done,
        lengthForIcu(utf16.size() - done), &error);
    return U_SUCCESS(error) ? std::optional(std::move(bytes)) : std::nullopt;
}

std::string utf8FromUtf16Replacing(std::u16string_view utf16)
{
    if (std::optional<std::string> bytes = utf8FromUtf16(utf16))
        return std::move(*bytes);
    constexpr std::size_t kMostBytes = 3; // for each unit, replaced or not
    std::string bytes(utf16.size() * kMostBytes, '\0');
    if (bytes.size() > kLongest)
        return {};
    std::int32_t length = 0;
    UErrorCode error = U_ZERO_ERROR;
    u_strToUTF8WithSub(bytes.data(), lengthForIcu(bytes.size()), &length, utf16.data(),
        lengthForIcu(utf16.size()), kReplacement, nullptr, &error);
    bytes.resize(U_SUCCESS(error) ? static_cast<std::size_t>(length) : 0);
    return bytes;
}

}
