// Byte stuffing: both directions agree with an implementation that goes byte by byte, and decoding undoes
// encoding.
#include "data/cobs.h"
#include "fuzz/require.h"
#include "tests/data/plain_cobs.h"

#include <algorithm>
#include <cstdint>

namespace {

bool same(std::span<const std::byte> a, std::span<const std::byte> b)
{
    return std::equal(a.begin(), a.end(), b.begin(), b.end());
}

}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    auto bytes = std::as_bytes(std::span(data, size));
    auto decoded = lum::decodeCOBS(bytes);
    require(decoded && same(decoded->bytes(), plainDecodeCOBS(bytes)));

    auto encoded = lum::encodeCOBS(bytes);
    require(encoded && same(encoded->bytes(), plainEncodeCOBS(bytes)));

    auto back = lum::decodeCOBS(encoded->bytes());
    require(back && back->size() == size + 2 && same(back->bytes().first(size), bytes));
    return 0;
}
