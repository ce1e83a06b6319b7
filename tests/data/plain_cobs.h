#pragma once

#include <cstddef>
#include <span>
#include <vector>

/// Byte stuffing as it is described: one byte at a time, with the place where the code of the block goes.
inline std::vector<std::byte> plainEncodeCOBS(std::span<const std::byte> bytes)
{
    std::vector<std::byte> out(1);
    std::size_t codePlace = 0;
    int count = 1;
    auto endBlock = [&] {
        out[codePlace] = static_cast<std::byte>(count);
        codePlace = out.size();
        out.push_back(std::byte(0));
        count = 1;
    };
    for (std::byte byte : bytes) {
        if (byte == std::byte(0)) {
            endBlock();
            continue;
        }
        out.push_back(byte);
        if (++count == 255)
            endBlock();
    }
    out[codePlace] = static_cast<std::byte>(count);
    out.push_back(std::byte(0));
    return out;
}

inline std::vector<std::byte> plainDecodeCOBS(std::span<const std::byte> bytes)
{
    std::vector<std::byte> out;
    std::size_t place = 0;
    while (place < bytes.size()) {
        auto code = std::to_integer<std::size_t>(bytes[place]);
        if (code < 2) {
            out.push_back(std::byte(0));
            ++place;
            continue;
        }
        for (std::size_t i = 1; i < code; ++i) {
            if (place + i >= bytes.size())
                return out;
            out.push_back(bytes[place + i]);
        }
        place += code;
        if (code != 255)
            out.push_back(std::byte(0));
    }
    return out;
}
