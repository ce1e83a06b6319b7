#include "data/cobs.h"

#include <algorithm>
#include <bit>
#include <cstdint>
#include <cstring>

namespace lum {

namespace {

constexpr std::size_t kFullBlock = 254; // bytes behind a code of 255
constexpr std::size_t kWord = sizeof(std::uint64_t);
constexpr std::size_t kShortBlock = 16; // copied whole, whatever its length

/// The place of the first zero byte of a word in memory order; kWord when it has none.
std::size_t firstZero(std::uint64_t word)
{
    constexpr std::uint64_t kLow = 0x7F7F7F7F7F7F7F7F;
    std::uint64_t zeros = ~(((word & kLow) + kLow) | word | kLow); // 0x80 where a byte is 0
    int bits = std::endian::native == std::endian::little ? std::countr_zero(zeros) : std::countl_zero(zeros);
    return static_cast<std::size_t>(bits) / 8;
}

/// Copies up to the first zero byte, at most `limit` bytes, and returns how many. May write up to `limit`
/// bytes.
///
/// Zeros are often near to each other or far from each other: a short run is walked byte by byte, which a
/// processor predicts well, and only a longer one word by word.
std::size_t copyRun(const std::byte* from, std::byte* to, std::size_t limit)
{
    std::size_t count = 0;
    for (std::size_t walked = std::min(limit, kWord); count < walked; ++count) {
        if (from[count] == std::byte(0))
            return count;
        to[count] = from[count];
    }
    while (limit - count >= kWord) {
        std::uint64_t word;
        std::memcpy(&word, from + count, kWord);
        std::memcpy(to + count, &word, kWord);
        std::size_t place = firstZero(word);
        count += place;
        if (place < kWord)
            return count;
    }
    for (; count < limit && from[count] != std::byte(0); ++count)
        to[count] = from[count];
    return count;
}

}

std::optional<ByteBuffer> encodeCOBS(std::span<const std::byte> bytes, Reallocate reallocate)
{
    ByteBuffer result(reallocate);
    // A code for each full block, one for what follows the last of them, and the delimiter.
    if (!result.grow(bytes.size() + bytes.size() / kFullBlock + 2))
        return std::nullopt;

    const std::byte* in = bytes.data();
    const std::byte* end = in + bytes.size();
    std::byte* out = result.data();
    for (;;) {
        std::size_t limit = std::min(static_cast<std::size_t>(end - in), kFullBlock);
        std::size_t count = copyRun(in, out + 1, limit);
        *out = static_cast<std::byte>(count + 1);
        in += count;
        out += count + 1;
        if (count == kFullBlock)
            continue; // stands for no zero, so another block follows even at the end
        if (in == end)
            break;
        ++in; // the zero
    }
    *out++ = std::byte(0);
    result.cut(static_cast<std::size_t>(out - result.data()));
    return result;
}

std::optional<ByteBuffer> decodeCOBS(std::span<const std::byte> bytes, Reallocate reallocate)
{
    ByteBuffer result(reallocate);
    if (!result.grow(bytes.size())) // a block stands for as many bytes as it has, or one less
        return std::nullopt;

    const std::byte* in = bytes.data();
    const std::byte* end = in + bytes.size();
    std::byte* out = result.data();
    while (in < end) {
        std::size_t code = std::max<std::size_t>(std::to_integer<std::size_t>(*in++), 1);
        auto left = static_cast<std::size_t>(end - in);
        std::size_t count = std::min(code - 1, left);
        // The output is never ahead of the input, so what can be read can also be written.
        if (count <= kShortBlock && left >= kShortBlock)
            std::memcpy(out, in, kShortBlock);
        else
            std::memcpy(out, in, count);
        in += count;
        out += count;
        if (count < code - 1)
            break;
        if (code <= kFullBlock)
            *out++ = std::byte(0);
    }
    result.cut(static_cast<std::size_t>(out - result.data()));
    return result;
}

}
