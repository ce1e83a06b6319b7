// Deflation is undone by inflation in both framings, and the two checksums of a gzip stream are ours and
// zlib's.
#include "data/crc32.h"
#include "data/deflate_stream.h"
#include "fuzz/require.h"

#include <algorithm>
#include <cstdint>

namespace {

/// The checksum that a gzip stream carries: four of its last eight bytes, the low one first.
std::uint32_t checksumOf(std::span<const std::byte> gzip)
{
    std::uint32_t checksum = 0;
    for (std::size_t i = 0; i < 4; ++i)
        checksum |= std::to_integer<std::uint32_t>(gzip[gzip.size() - 8 + i]) << (8 * i);
    return checksum;
}

}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    auto bytes = std::as_bytes(std::span(data, size));
    for (auto framing : { lum::Framing::Zlib, lum::Framing::Gzip }) {
        auto deflated = lum::deflateBytes(bytes, framing);
        require(deflated.has_value());
        if (framing == lum::Framing::Gzip)
            require(checksumOf(deflated->bytes()) == lum::crc32(bytes));
        auto inflated = lum::inflateBytes(deflated->bytes(), framing);
        require(inflated.has_value());
        require(
            std::equal(bytes.begin(), bytes.end(), inflated->data(), inflated->data() + inflated->size()));
    }
    return 0;
}
