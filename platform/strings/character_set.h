#pragma once

#include <array>
#include <cstdint>
#include <string_view>
#include <vector>

namespace platform {

/// A set of code points, surrogates included. A value; combining two sets is linear in their ranges,
/// a look-up is one bit test for ASCII and a binary search beyond.
class CharacterSet {
public:
    CharacterSet() = default;

    /// The characters of `text`; a lone surrogate is a member of its own.
    static CharacterSet withCharacters(std::u16string_view text);
    /// `count` code points from `first` on, as far as there are code points.
    static CharacterSet withRange(char32_t first, std::size_t count);

    /// Horizontal space, the zero-width space U+200B included.
    static const CharacterSet& whitespace();
    /// whitespace() and the line breaks U+000A to U+000D, U+0085, U+2028 and U+2029.
    static const CharacterSet& whitespaceAndNewline();
    /// The control and the format characters: general categories Cc and Cf.
    static const CharacterSet& control();
    /// General category Ll.
    static const CharacterSet& lowercaseLetter();
    /// General category Nd: the decimal digits of every script.
    static const CharacterSet& decimalDigit();

    bool contains(char32_t point) const
    {
        if (point < kAsciiCount)
            return (mAscii[point / 64] >> (point % 64)) & 1;
        return containsBeyondAscii(point);
    }

    CharacterSet inverted() const;
    CharacterSet unitedWith(const CharacterSet& other) const;

    friend bool operator==(const CharacterSet&, const CharacterSet&) = default;
    std::size_t hash() const;

private:
    static constexpr char32_t kAsciiCount = 128;
    using Boundaries = std::vector<char32_t>;

    explicit CharacterSet(Boundaries boundaries);
    static CharacterSet withCategories(std::uint32_t mask);
    bool containsBeyondAscii(char32_t point) const;
    template<typename Keep> CharacterSet combinedWith(const CharacterSet& other, Keep keep) const;

    // Ascending; membership changes at each boundary, beginning with "not a member".
    Boundaries mBoundaries;
    std::array<std::uint64_t, 2> mAscii {};
};

}
