// Base32: any text is decoded as a plain loop over the alphabet decodes it, and encoding is undone by
// decoding.
#include "data/base32.h"
#include "fuzz/require.h"

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <string>
#include <vector>

namespace {

/// The bytes of `text` bit by bit, by the rules alone; false when it is not one.
bool plainDecode(std::u16string_view text, bool braces, std::vector<std::byte>& bytes)
{
    constexpr std::u16string_view kAlphabet = u"ABCDEFGHIJKLMNOPQRSTUVWXYZ234567";
    std::vector<bool> bits;
    for (char16_t character : text) {
        bool brace = character == u'{' || character == u'|' || character == u'}';
        bool lower = character >= u'a' && character <= u'z';
        char16_t upper = lower ? static_cast<char16_t>(character - u'a' + u'A') : character;
        std::size_t digit = brace && braces ? 0 : kAlphabet.find(upper);
        if (digit == std::u16string_view::npos)
            return false;
        for (int bit = 4; bit >= 0; --bit)
            bits.push_back((digit >> bit & 1) != 0);
    }
    bytes.resize(bits.size() / 8);
    for (std::size_t i = 0; i < bytes.size() * 8; ++i)
        bytes[i / 8] = bytes[i / 8] << 1 | static_cast<std::byte>(bits[i] ? 1 : 0);
    std::size_t unused = bits.size() % 8;
    for (std::size_t i = bytes.size() * 8; i < bits.size(); ++i)
        if (bits[i])
            return false;
    return unused < 5; // else the last digit holds no bit of a byte
}

void decode(std::u16string_view text, lum::Base32Digits digits)
{
    std::vector<std::byte> expected;
    bool good = plainDecode(text, digits == lum::Base32Digits::WithBraces, expected);
    auto bytes = lum::decodeBase32(text, digits);
    require(bytes.has_value() == good);
    if (good)
        require(std::equal(bytes->bytes().begin(), bytes->bytes().end(), expected.begin(), expected.end()));
}

}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    std::u16string text(data, data + size);
    decode(text, lum::Base32Digits::Strict);
    decode(text, lum::Base32Digits::WithBraces);
    std::u16string wide(size / 2, u'?'); // any units, not bytes alone
    if (!wide.empty())
        std::memcpy(wide.data(), data, wide.size() * 2);
    decode(wide, lum::Base32Digits::Strict);

    auto bytes = std::as_bytes(std::span(data, size));
    std::u16string encoded(lum::base32Length(size), u'?');
    lum::encodeBase32(bytes, encoded.data());
    auto decoded = lum::decodeBase32(encoded, lum::Base32Digits::Strict);
    require(decoded
        && std::equal(bytes.begin(), bytes.end(), decoded->data(), decoded->data() + decoded->size()));
    return 0;
}
