#pragma once

#include <cstddef>
#include <string_view>

namespace platform {

// UTF-16 as code points. A surrogate without its partner is a code point of its own.

constexpr bool isLeadSurrogate(char32_t unit)
{
    return (unit & 0xFFFFFC00) == 0xD800;
}
constexpr bool isTrailSurrogate(char32_t unit)
{
    return (unit & 0xFFFFFC00) == 0xDC00;
}

constexpr char16_t asciiLowercase(char16_t unit)
{
    return unit >= u'A' && unit <= u'Z' ? static_cast<char16_t>(unit + 0x20) : unit;
}

/// Whether `at` lies between the two halves of a pair.
constexpr bool isInsidePair(std::u16string_view text, std::size_t at)
{
    return at > 0 && at < text.size() && isTrailSurrogate(text[at]) && isLeadSurrogate(text[at - 1]);
}

/// Reads the code point at `at`, which moves behind it.
constexpr char32_t takeCodePoint(std::u16string_view text, std::size_t& at)
{
    char32_t unit = text[at++];
    if (!isLeadSurrogate(unit) || at == text.size() || !isTrailSurrogate(text[at]))
        return unit;
    return 0x10000 + ((unit - 0xD800) << 10) + (char32_t(text[at++]) - 0xDC00);
}

/// The index behind the code point at `at`.
constexpr std::size_t nextCodePoint(std::u16string_view text, std::size_t at)
{
    return isInsidePair(text, at + 1) ? at + 2 : at + 1;
}

/// The index of the code point that ends at `at`, which is not 0.
constexpr std::size_t previousCodePoint(std::u16string_view text, std::size_t at)
{
    return isInsidePair(text, at - 1) ? at - 2 : at - 1;
}

}
