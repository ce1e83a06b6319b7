#pragma once

#include "data/byte_buffer.h"

#include <optional>
#include <string_view>

namespace lum {

/// The number of characters that `size` bytes take. Padding is never written.
constexpr std::size_t base32Length(std::size_t size)
{
    return size / 5 * 8 + (size % 5 * 8 + 4) / 5;
}

/// Writes the base32Length(bytes.size()) characters of the alphabet of RFC 4648 that stand for `bytes`, in
/// upper case. The bits of a last, partial group are filled up with zeros.
void encodeBase32(std::span<const std::byte> bytes, char16_t* text);

/// Which characters a decoder takes for digits.
enum class Base32Digits {
    Strict, ///< The 32 of the alphabet, letters in either case.
    WithBraces, ///< Those, and '{', '|' and '}' for the value 0.
};

/// All the bytes that `text` stands for; of no text, no bytes.
///
/// Null when a character is no digit, padding included, when the length cannot come from the encoder (1, 3 or
/// 6 modulo 8), when the unused bits of the last digit are not zero, and when there is no memory.
std::optional<ByteBuffer> decodeBase32(
    std::u16string_view text, Base32Digits digits, Reallocate reallocate = std::realloc);

}
