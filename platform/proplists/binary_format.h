#pragma once

#include <cstddef>
#include <cstdint>

/// The layout of binary property lists; docs/formats/property-list.md tells it byte by byte.
namespace platform::binary {

inline constexpr char kHeader[] = { 'b', 'p', 'l', 'i', 's', 't', '0', '0' };
inline constexpr std::size_t kHeaderSize = sizeof kHeader;
inline constexpr std::size_t kTrailerSize = 32;

/// The high half of an object's first byte; what the low half means follows.
enum Type : unsigned {
    kSingle = 0x0, ///< False is 8, true is 9.
    kInteger = 0x1, ///< Two to that power is the number of bytes.
    kReal = 0x2, ///< The same.
    kDate = 0x3, ///< 3, as eight bytes follow.
    kData = 0x4, ///< The count, or kLongCount with an integer behind it.
    kAscii = 0x5,
    kUtf16 = 0x6,
    kUid = 0x8, ///< One less than the number of bytes.
    kArray = 0xA,
    kDictionary = 0xD,
};
inline constexpr unsigned kFalse = 0x08;
inline constexpr unsigned kTrue = 0x09;
inline constexpr unsigned kLongCount = 0xF;

/// An unsigned number of `size` bytes, at most 8, the most significant one first.
inline std::uint64_t readInteger(const std::byte* from, std::size_t size)
{
    const auto byte = [&](std::size_t at) { return std::to_integer<std::uint64_t>(from[at]); };
    switch (size) { // the usual ones without a loop
    case 1:
        return byte(0);
    case 2:
        return byte(0) << 8 | byte(1);
    case 3:
        return byte(0) << 16 | byte(1) << 8 | byte(2);
    case 4:
        return byte(0) << 24 | byte(1) << 16 | byte(2) << 8 | byte(3);
    default:
        break;
    }
    std::uint64_t value = 0;
    for (std::size_t at = 0; at < size; ++at)
        value = value << 8 | byte(at);
    return value;
}

inline void writeInteger(std::byte* to, std::uint64_t value, std::size_t size)
{
    for (std::size_t at = size; at-- > 0; value >>= 8)
        to[at] = static_cast<std::byte>(value);
}

}
