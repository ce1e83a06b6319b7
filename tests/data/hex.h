#pragma once

#include <cstddef>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

/// The bytes that hexadecimal digits, with blanks where one likes, stand for.
inline std::vector<std::byte> unhex(std::string_view text)
{
    std::vector<std::byte> bytes;
    bool high = true;
    for (char character : text) {
        if (character == ' ')
            continue;
        auto digit = static_cast<std::byte>(character <= '9' ? character - '0' : character - 'a' + 10);
        if (high)
            bytes.push_back(digit << 4);
        else
            bytes.back() |= digit;
        high = !high;
    }
    return bytes;
}

/// Bytes as hexadecimal digits with a blank between two bytes, so that a failure reads well.
inline std::string hex(std::span<const std::byte> bytes)
{
    constexpr std::string_view kDigits = "0123456789abcdef";
    std::string text;
    for (std::byte byte : bytes) {
        if (!text.empty())
            text += ' ';
        text += kDigits[std::to_integer<std::size_t>(byte >> 4)];
        text += kDigits[std::to_integer<std::size_t>(byte & std::byte(15))];
    }
    return text;
}

/// "null" for a result that is none.
template<typename Buffer> std::string hex(const std::optional<Buffer>& result)
{
    return result ? hex(result->bytes()) : "null";
}

inline std::span<const std::byte> bytesOf(std::string_view text)
{
    return std::as_bytes(std::span(text));
}
