#pragma once

#include "data/byte_buffer.h"

#include <optional>

namespace lum {

/// The consistent-overhead byte stuffing of `bytes`, then one zero byte that ends the frame. No bytes give 01
/// 00. Null when there is no memory.
///
/// Each block is a code c and c - 1 bytes without a zero; it stands for these and a zero, or for these alone
/// when c is 255. The end of the input counts as the zero of the last block, so after a full block of 254
/// bytes at the very end comes a block of its own, 01.
std::optional<ByteBuffer> encodeCOBS(std::span<const std::byte> bytes, Reallocate reallocate = std::realloc);

/// What the blocks of `bytes` stand for, never more than was put in. Null when there is no memory.
///
/// A code of 0 counts as 1. A block that breaks off gives the bytes that are there. The zero behind the last
/// block stays: what encodeCOBS made comes back with two zeros at its end, that of the last block and that of
/// the delimiter.
std::optional<ByteBuffer> decodeCOBS(std::span<const std::byte> bytes, Reallocate reallocate = std::realloc);

}
