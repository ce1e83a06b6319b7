#include "data/deflate_stream.h"

#include <algorithm>
#include <limits>

namespace lum {

namespace {

constexpr const char* kVersion =
    "1.2.5"; // the interface this is written against; zlib checks that it offers it
constexpr std::size_t kDeflateStep = 16384;
constexpr int kWindowBits = 15;
constexpr int kGzipOnly = 16; // added to the window bits
constexpr int kGzipOrZlib = 32;
constexpr int kMemoryLevel = 8;
constexpr std::size_t kLargestCount = std::numeric_limits<uInt>::max();

/// zlib declares the input without const and never writes to it.
z_stream makeStream(std::span<const std::byte> bytes, const StreamMemory& memory)
{
    z_stream stream {};
    stream.zalloc = memory.allocate;
    stream.zfree = memory.free;
    stream.next_in = const_cast<Bytef*>(reinterpret_cast<const Bytef*>(bytes.data()));
    stream.avail_in = static_cast<uInt>(bytes.size());
    return stream;
}

/// Points the stream at the unused rest of the output, which grows by `step` when there is none.
[[nodiscard]] bool giveRoom(z_stream& stream, ByteBuffer& output, std::size_t step)
{
    if (stream.total_out == output.size() && !output.grow(output.size() + step))
        return false;
    stream.next_out = reinterpret_cast<Bytef*>(output.data()) + stream.total_out;
    stream.avail_out = static_cast<uInt>(std::min(output.size() - stream.total_out, kLargestCount));
    return true;
}

bool deflateAll(z_stream& stream, ByteBuffer& output)
{
    do {
        if (!giveRoom(stream, output, kDeflateStep))
            return false;
        ::deflate(&stream, Z_FINISH); // cannot fail here: stream and flush mode are sound, and there is room
    } while (stream.avail_out == 0);
    return true;
}

bool inflateAll(z_stream& stream, ByteBuffer& output, std::size_t step)
{
    int status = Z_OK;
    while (status == Z_OK) {
        if (!giveRoom(stream, output, step))
            return false;
        status = ::inflate(&stream, Z_SYNC_FLUSH); // without room or input it tells so, and the loop ends
    }
    return status == Z_STREAM_END;
}

}

std::optional<ByteBuffer> deflateBytes(
    std::span<const std::byte> bytes, Framing framing, const StreamMemory& memory)
{
    if (bytes.size() > kLargestCount)
        return std::nullopt;
    ByteBuffer output(memory.reallocate);
    z_stream stream = makeStream(bytes, memory);
    int status = framing == Framing::Zlib
        ? deflateInit_(&stream, Z_DEFAULT_COMPRESSION, kVersion, sizeof stream)
        : deflateInit2_(&stream, Z_DEFAULT_COMPRESSION, Z_DEFLATED, kWindowBits + kGzipOnly, kMemoryLevel,
            Z_DEFAULT_STRATEGY, kVersion, sizeof stream);
    if (status != Z_OK)
        return std::nullopt;
    bool done = deflateAll(stream, output);
    deflateEnd(&stream);
    if (!done)
        return std::nullopt;
    output.cut(stream.total_out);
    return output;
}

std::optional<ByteBuffer> inflateBytes(
    std::span<const std::byte> bytes, Framing framing, const StreamMemory& memory)
{
    if (bytes.size() > kLargestCount)
        return std::nullopt;
    std::size_t step = bytes.size() / 2;
    ByteBuffer output(memory.reallocate);
    if (!output.grow(bytes.size() + step))
        return std::nullopt;
    z_stream stream = makeStream(bytes, memory);
    int status = framing == Framing::Zlib
        ? inflateInit_(&stream, kVersion, sizeof stream)
        : inflateInit2_(&stream, kWindowBits + kGzipOrZlib, kVersion, sizeof stream);
    if (status != Z_OK)
        return std::nullopt;
    bool done = inflateAll(stream, output, step);
    bool ended = inflateEnd(&stream) == Z_OK;
    if (!done || !ended)
        return std::nullopt;
    output.cut(stream.total_out);
    return output;
}

}
