// UTF-8 and UTF-16: any bytes are taken or refused as ICU takes or refuses them, replaced where ICU replaces,
// and what is taken comes back.
#include "fuzz/require.h"
#include "platform/strings/text_encoding.h"
#include "platform/strings/utf_conversion.h"

#include <cstdint>
#include <cstring>
#include <unicode/ustring.h>

namespace {

void readAsUtf8(std::string_view bytes)
{
    std::u16string expected(bytes.size(), u'\0');
    int32_t length = 0;
    int32_t replaced = 0;
    UErrorCode error = U_ZERO_ERROR;
    u_strFromUTF8WithSub(expected.data(), static_cast<int32_t>(expected.size()), &length, bytes.data(),
        static_cast<int32_t>(bytes.size()), 0xFFFD, &replaced, &error);
    require(U_SUCCESS(error));
    expected.resize(static_cast<size_t>(length));

    std::optional<std::u16string> text = platform::utf16FromUtf8(bytes);
    require(text.has_value() == (replaced == 0));
    require(platform::utf16FromUtf8Replacing(bytes) == expected);
    if (text) {
        require(*text == expected);
        require(platform::utf8FromUtf16(*text) == bytes);
    }
}

void readAsUtf16(std::u16string_view text)
{
    std::optional<std::string> bytes = platform::utf8FromUtf16(text);
    require(bytes.has_value() == platform::isWellFormedUtf16(text));
    std::string replaced = platform::utf8FromUtf16Replacing(text);
    if (bytes) {
        require(*bytes == replaced);
        require(platform::utf16FromUtf8(*bytes) == text);
    }
    require(platform::utf16FromUtf8(replaced).has_value());
}

}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    std::string_view bytes(reinterpret_cast<const char*>(data), size);
    readAsUtf8(bytes);

    std::u16string text(size / 2, u'\0');
    if (size > 1)
        std::memcpy(text.data(), data, text.size() * 2);
    readAsUtf16(text);

    auto roman = platform::utf16FromBytes(bytes, platform::ByteEncoding::MacRoman);
    require(roman && platform::bytesFromUtf16(*roman, platform::ByteEncoding::MacRoman) == bytes);
    return 0;
}
