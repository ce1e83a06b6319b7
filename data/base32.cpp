#include "data/base32.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstring>

namespace lum {

namespace {

constexpr std::string_view kAlphabet = "ABCDEFGHIJKLMNOPQRSTUVWXYZ234567";
constexpr std::uint8_t kNoDigit = 0xFF;

using Pair = std::array<char16_t, 2>;
using DigitTable = std::array<std::uint8_t, 256>;

/// Two characters at a time: half the look-ups and stores of one at a time.
constexpr std::array<Pair, 1024> makePairs()
{
    std::array<Pair, 1024> pairs {};
    for (std::size_t value = 0; value < pairs.size(); ++value)
        pairs[value] = { static_cast<char16_t>(kAlphabet[value >> 5]),
            static_cast<char16_t>(kAlphabet[value & 31]) };
    return pairs;
}

constexpr DigitTable makeDigits(std::string_view extraZeros)
{
    DigitTable digits {};
    digits.fill(kNoDigit);
    for (std::uint8_t value = 0; value < 32; ++value) {
        auto character = static_cast<unsigned char>(kAlphabet[value]);
        digits[character] = value;
        if (value < 26)
            digits[character | 0x20u] = value;
    }
    for (char character : extraZeros)
        digits[static_cast<unsigned char>(character)] = 0;
    return digits;
}

constexpr auto kPairs = makePairs();
constexpr DigitTable kStrictDigits = makeDigits("");
constexpr DigitTable kDigitsWithBraces = makeDigits("{|}");

std::uint64_t fiveBytes(const std::byte* bytes)
{
    std::uint64_t group = 0;
    for (int i = 0; i < 5; ++i)
        group = group << 8 | std::to_integer<std::uint64_t>(bytes[i]);
    return group;
}

void putEightCharacters(std::uint64_t group, char16_t* text)
{
    for (int i = 0; i < 4; ++i)
        std::memcpy(text + 2 * i, &kPairs[group >> (30 - 10 * i) & 1023], sizeof(Pair));
}

/// What the digits and the characters looked at had in common; one test at the end finds what does not
/// belong.
struct Seen {
    unsigned digits = 0;
    unsigned characters = 0;

    bool onlyDigits() const { return digits < 32 && characters < 128; }
};

/// The 40 bits of eight digits.
std::uint64_t eightDigits(const char16_t* text, const DigitTable& digits, Seen& seen)
{
    std::uint64_t group = 0;
    for (int i = 0; i < 8; ++i) {
        unsigned digit = digits[text[i] & 0xFF];
        seen.digits |= digit;
        seen.characters |= text[i];
        group = group << 5 | digit;
    }
    return group;
}

void putBytes(std::uint64_t group, std::byte* bytes, std::size_t count)
{
    for (std::size_t i = 0; i < count; ++i)
        bytes[i] = static_cast<std::byte>(group >> (32 - 8 * i));
}

}

void encodeBase32(std::span<const std::byte> bytes, char16_t* text)
{
    while (bytes.size() >= 5) {
        putEightCharacters(fiveBytes(bytes.data()), text);
        bytes = bytes.subspan(5);
        text += 8;
    }
    if (!bytes.empty()) {
        std::array<std::byte, 5> group {};
        std::array<char16_t, 8> characters;
        std::memcpy(group.data(), bytes.data(), bytes.size());
        putEightCharacters(fiveBytes(group.data()), characters.data());
        std::copy_n(characters.data(), base32Length(bytes.size()), text);
    }
}

std::optional<ByteBuffer> decodeBase32(std::u16string_view text, Base32Digits kind, Reallocate reallocate)
{
    std::size_t rest = text.size() % 8;
    if (rest == 1 || rest == 3 || rest == 6)
        return std::nullopt;
    ByteBuffer result(reallocate);
    if (!result.grow(text.size() / 8 * 5 + rest * 5 / 8))
        return std::nullopt;

    const DigitTable& digits = kind == Base32Digits::Strict ? kStrictDigits : kDigitsWithBraces;
    Seen seen;
    std::byte* bytes = result.data();
    for (; text.size() >= 8; text.remove_prefix(8), bytes += 5)
        putBytes(eightDigits(text.data(), digits, seen), bytes, 5);
    if (rest > 0) {
        std::array<char16_t, 8> characters;
        characters.fill(u'A'); // the digit 0
        std::copy_n(text.data(), rest, characters.data());
        std::uint64_t group = eightDigits(characters.data(), digits, seen);
        std::size_t count = rest * 5 / 8;
        if (group << (24 + 8 * count) != 0)
            return std::nullopt;
        putBytes(group, bytes, count);
    }
    if (!seen.onlyDigits())
        return std::nullopt;
    return result;
}

}
