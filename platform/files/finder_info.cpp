#include "platform/files/finder_info.h"

#include <algorithm>

namespace platform {

namespace {

constexpr std::size_t kHalf = 16;

template<typename Integer> Integer read(std::span<const std::byte> bytes, std::size_t at)
{
    std::uint32_t value = 0;
    for (std::size_t i = 0; i < sizeof(Integer); ++i)
        value = value << 8 | std::to_integer<std::uint32_t>(bytes[at + i]);
    return static_cast<Integer>(value);
}

template<typename Integer> void write(Integer integer, std::span<std::byte> bytes, std::size_t at)
{
    const auto value = static_cast<std::uint32_t>(integer);
    for (std::size_t i = 0; i < sizeof(Integer); ++i)
        bytes[at + i] = static_cast<std::byte>(value >> 8 * (sizeof(Integer) - 1 - i));
}

std::optional<FinderBytes> finderBytesAt(std::span<const std::byte> value, std::size_t at)
{
    FinderBytes bytes;
    if (value.size() < bytes.size() || at > value.size() - bytes.size())
        return std::nullopt;
    std::ranges::copy(value.subspan(at, bytes.size()), bytes.begin());
    return bytes;
}

}

FileInfo fileInfoFrom(const FinderBytes& bytes)
{
    FileInfo info;
    info.fileType = read<std::uint32_t>(bytes, 0);
    info.fileCreator = read<std::uint32_t>(bytes, 4);
    info.finderFlags = read<std::uint16_t>(bytes, 8);
    info.location.v = read<std::int16_t>(bytes, 10);
    info.location.h = read<std::int16_t>(bytes, 12);
    info.reservedField = read<std::uint16_t>(bytes, 14);
    return info;
}

void store(const FileInfo& info, FinderBytes& bytes)
{
    const std::span<std::byte> first = std::span(bytes).first<kHalf>();
    write(info.fileType, first, 0);
    write(info.fileCreator, first, 4);
    write(info.finderFlags, first, 8);
    write(info.location.v, first, 10);
    write(info.location.h, first, 12);
    write(info.reservedField, first, 14);
}

std::optional<FinderBytes> finderBytesOfAppleDouble(std::span<const std::byte> value)
{
    constexpr std::uint32_t kMagic = 0x00051607;
    constexpr std::size_t kCountAt = 24;
    constexpr std::size_t kEntriesAt = 26;
    constexpr std::size_t kEntrySize = 12;
    constexpr std::uint32_t kFinderInfoEntry = 9;
    if (value.size() < kEntriesAt || read<std::uint32_t>(value, 0) != kMagic)
        return std::nullopt;
    const std::size_t fitting = (value.size() - kEntriesAt) / kEntrySize;
    const std::size_t count = std::min<std::size_t>(read<std::uint16_t>(value, kCountAt), fitting);
    for (std::size_t i = 0; i < count; ++i) {
        const std::size_t at = kEntriesAt + i * kEntrySize;
        if (read<std::uint32_t>(value, at) == kFinderInfoEntry)
            return read<std::uint32_t>(value, at + 8) < sizeof(FinderBytes)
                ? std::nullopt
                : finderBytesAt(value, read<std::uint32_t>(value, at + 4));
    }
    return std::nullopt;
}

std::optional<FinderBytes> finderBytesOfAfpInfo(std::span<const std::byte> value)
{
    constexpr std::uint32_t kMagic = 0x41465000; // "AFP" and zero
    constexpr std::size_t kSize = 60;
    constexpr std::size_t kFinderInfoAt = 16;
    if (value.size() < kSize || read<std::uint32_t>(value, 0) != kMagic)
        return std::nullopt;
    return finderBytesAt(value, kFinderInfoAt);
}

}
