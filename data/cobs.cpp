#include "data/cobs.h"

#include <algorithm>
#include <bit>
#include <cstdint>
#include <cstring>

namespace lum {

namespace {

constexpr std::ptrdiff_t kFullCode = 255;
constexpr std::size_t kFullBlock = 254; // bytes behind a code of 255
constexpr std::ptrdiff_t kWord = sizeof(std::uint64_t);
constexpr std::size_t kShortBlock = 16; // copied whole, whatever its length

/// Marks the bytes of a word that are 0, each by its highest bit; the first byte in memory is the lowest.
std::uint64_t zerosOf(std::uint64_t word)
{
    constexpr std::uint64_t kLow = 0x7F7F7F7F7F7F7F7F;
    if constexpr (std::endian::native == std::endian::big)
        word = __builtin_bswap64(word);
    return ~(((word & kLow) + kLow) | word | kLow);
}

/// Where the next byte goes, and where the code of the block that it belongs to.
///
/// A byte and its place in the output are always as far apart as there are full blocks before, plus one: a
/// code stands where the zero was that ended the block before it. So words are copied as they are, zeros
/// included, and codes are put over the zeros.
struct Encoder {
    std::byte* code;
    std::byte* out;

    void endBlockAt(std::byte* place)
    {
        *code = static_cast<std::byte>(place - code);
        code = place;
    }

    void putByte(std::byte byte)
    {
        if (byte == std::byte(0)) {
            endBlockAt(out++);
            return;
        }
        *out++ = byte;
        if (out - code == kFullCode)
            endBlockAt(out++);
    }

    /// Zeros often come in long runs, of which each is a block with nothing but its code.
    void endEightBlocks()
    {
        endBlockAt(out);
        std::memset(out, 1, kWord - 1);
        code = out + kWord - 1;
    }

    bool wordFits() const { return out - code + kWord < kFullCode; }

    /// To be called only if the block cannot become full within the word.
    void putWord(const std::byte* bytes)
    {
        std::uint64_t word;
        std::memcpy(&word, bytes, kWord);
        std::memcpy(out, &word, kWord);
        if (word == 0)
            endEightBlocks();
        else
            for (std::uint64_t zeros = zerosOf(word); zeros != 0; zeros &= zeros - 1)
                endBlockAt(out + std::countr_zero(zeros) / 8);
        out += kWord;
    }
};

}

std::optional<ByteBuffer> encodeCOBS(std::span<const std::byte> bytes, Reallocate reallocate)
{
    ByteBuffer result(reallocate);
    // A code for each full block, one for what follows the last of them, and the delimiter.
    if (!result.grow(bytes.size() + bytes.size() / kFullBlock + 2))
        return std::nullopt;

    const std::byte* in = bytes.data();
    const std::byte* end = in + bytes.size();
    Encoder encoder { result.data(), result.data() + 1 };
    while (in < end) {
        if (end - in >= kWord && encoder.wordFits()) {
            encoder.putWord(in);
            in += kWord;
        } else
            encoder.putByte(*in++);
    }
    encoder.endBlockAt(encoder.out);
    *encoder.out++ = std::byte(0);
    result.cut(static_cast<std::size_t>(encoder.out - result.data()));
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
        auto code = std::to_integer<std::size_t>(*in++);
        // Deliberate: a delimiter counts as an empty block, as a code of 1 does, and becomes a zero.
        if (code <= 1) {
            *out++ = std::byte(0);
            continue;
        }
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
        // Deliberate: behind the last block, too.
        if (code <= kFullBlock)
            *out++ = std::byte(0);
    }
    result.cut(static_cast<std::size_t>(out - result.data()));
    return result;
}

}
