#include "data/crc32.h"

namespace lum {

namespace {

constexpr std::array<std::uintptr_t, 256> makeTable()
{
    constexpr std::uint32_t kPolynomial = 0xEDB88320;
    std::array<std::uintptr_t, 256> table {};
    for (std::uint32_t byte = 0; byte < 256; ++byte) {
        std::uint32_t crc = byte;
        for (int bit = 0; bit < 8; ++bit)
            crc = (crc & 1) ? (crc >> 1) ^ kPolynomial : crc >> 1;
        table[byte] = crc;
    }
    return table;
}

}

constexpr std::array<std::uintptr_t, 256> kCRC32Table = makeTable();

std::uint32_t crc32(std::span<const std::byte> bytes)
{
    std::uintptr_t crc = 0xFFFFFFFF;
    for (std::byte byte : bytes)
        crc = (crc >> 8) ^ kCRC32Table[(crc ^ std::to_integer<std::uintptr_t>(byte)) & 0xFF];
    return ~static_cast<std::uint32_t>(crc);
}

}
