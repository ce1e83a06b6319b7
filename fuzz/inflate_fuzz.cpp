// Inflation: any bytes in either framing end with what zlib makes of them in one piece, or with null.
#include "data/deflate_stream.h"
#include "fuzz/require.h"

#include <algorithm>
#include <cstdint>
#include <vector>

namespace {

constexpr std::size_t kLargest = 4 << 20; // more than the largest ratio makes of the inputs that are tried

void inflateBoth(const std::uint8_t* data, std::size_t size, lum::Framing framing, int windowBits)
{
    static std::vector<Bytef> expected(kLargest);
    z_stream stream {};
    stream.next_in = const_cast<Bytef*>(data);
    stream.avail_in = static_cast<uInt>(size);
    stream.next_out = expected.data();
    stream.avail_out = static_cast<uInt>(expected.size());
    require(inflateInit2(&stream, windowBits) == Z_OK);
    int status = inflate(&stream, Z_FINISH);
    inflateEnd(&stream);

    auto result = lum::inflateBytes(std::as_bytes(std::span(data, size)), framing);
    require(result.has_value() == (status == Z_STREAM_END));
    if (result) {
        auto bytes = std::as_bytes(std::span(expected)).first(stream.total_out);
        require(std::equal(result->bytes().begin(), result->bytes().end(), bytes.begin(), bytes.end()));
    }
}

}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    if (size > 4000)
        return 0;
    inflateBoth(data, size, lum::Framing::Zlib, 15);
    inflateBoth(data, size, lum::Framing::Gzip, 15 + 32);
    return 0;
}
