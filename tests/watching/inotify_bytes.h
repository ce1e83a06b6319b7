#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>
#include <vector>

namespace lum {

/// What a read from an inotify descriptor would give.
inline std::vector<std::byte> inotifyBytes(
    std::int32_t watch, std::uint32_t flags, std::string_view name = {}, std::uint32_t cookie = 0)
{
    const std::uint32_t length = name.empty() ? 0 : static_cast<std::uint32_t>((name.size() + 16) / 16 * 16);
    std::vector<std::byte> bytes(16 + length);
    std::memcpy(bytes.data(), &watch, 4);
    std::memcpy(bytes.data() + 4, &flags, 4);
    std::memcpy(bytes.data() + 8, &cookie, 4);
    std::memcpy(bytes.data() + 12, &length, 4);
    if (!name.empty())
        std::memcpy(bytes.data() + 16, name.data(), name.size());
    return bytes;
}

inline std::vector<std::byte> operator+(std::vector<std::byte> first, const std::vector<std::byte>& second)
{
    first.insert(first.end(), second.begin(), second.end());
    return first;
}

}
