#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>

namespace lum {

/// Entry i is the CRC of the single byte i under the reflected polynomial 0xEDB88320: the table of zlib and
/// of IEEE 802.3. Entries are machine words of which only the low 32 bits are ever set.
extern const std::array<std::uintptr_t, 256> kCRC32Table;

/// The CRC-32 of zlib, gzip and IEEE 802.3; 0 for no bytes.
///
/// It goes byte by byte through the one table of 2 KiB. Tables for several bytes at once would be faster by a
/// small factor but take the cache from the compression that usually runs beside, which is slower by a large
/// one.
std::uint32_t crc32(std::span<const std::byte> bytes);

}
