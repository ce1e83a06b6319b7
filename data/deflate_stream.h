#pragma once

#include "data/byte_buffer.h"

#include <optional>
#include <zlib.h>

namespace lum {

/// What is written around a deflate stream.
enum class Framing {
    Zlib, ///< RFC 1950.
    Gzip, ///< RFC 1952, with zlib's default header.
};

/// Where a stream takes its memory from; zlib's own allocator unless a test gives one that refuses.
struct StreamMemory {
    Reallocate reallocate = std::realloc;
    alloc_func allocate = nullptr;
    free_func free = nullptr;
};

/// Compresses at zlib's default level. The output grows in steps of 16,384 bytes.
///
/// Null when zlib cannot begin, when there is no memory, and for 4 GiB and more, which zlib's count of the
/// input does not hold.
std::optional<ByteBuffer> deflateBytes(
    std::span<const std::byte> bytes, Framing framing, const StreamMemory& memory = {});

/// Decompresses one stream, and leaves what follows it alone. Gzip finds out by the header which of the two
/// framings it is; Zlib takes its own only.
///
/// The output starts at one and a half times the input and grows in steps of half the input, so that a short
/// stream which stands for a lot takes many steps. Null for a stream that is damaged or breaks off, when zlib
/// cannot begin, when there is no memory, and for an input of 4 GiB and more.
std::optional<ByteBuffer> inflateBytes(
    std::span<const std::byte> bytes, Framing framing, const StreamMemory& memory = {});

}
