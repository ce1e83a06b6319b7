// UTF-8 and UTF-16: any bytes are taken or refused as GLib takes or refuses them, and what is taken comes
// back.
#include "fuzz/require.h"
#include "platform/strings/text_encoding.h"
#include "platform/strings/utf_conversion.h"

#include <cstdint>
#include <cstring>
#include <glib.h>

namespace {

void readAsUtf8(std::string_view bytes)
{
    std::optional<std::u16string> text = platform::utf16FromUtf8(bytes);
    if (bytes.find('\0') == std::string_view::npos) // which GLib takes for the end
        require(
            text.has_value() == g_utf8_validate(bytes.data(), static_cast<gssize>(bytes.size()), nullptr));
    if (text)
        require(platform::utf8FromUtf16(*text) == bytes);
}

void readAsUtf16(std::u16string_view text)
{
    std::optional<std::string> bytes = platform::utf8FromUtf16(text);
    std::string replaced = platform::utf8FromUtf16Replacing(text);
    require(platform::utf16FromUtf8(replaced).has_value());
    if (bytes) {
        require(*bytes == replaced);
        require(platform::utf16FromUtf8(*bytes) == text);
    }
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
