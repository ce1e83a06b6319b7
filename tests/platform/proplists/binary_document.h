#pragma once

#include "LUMPlatform/NSData.h"
#include "platform/proplists/binary_format.h"

#include <string>
#include <vector>

/// A binary property list put together by hand, with every part of the trailer free to lie.
struct BinaryDocument {
    using Objects = std::vector<std::string>;

    explicit BinaryDocument(Objects list) : objects(std::move(list)), count(objects.size()) { }

    NSRef<NSData> data() const
    {
        std::string bytes("bplist00");
        std::vector<std::uint64_t> starts;
        for (const std::string& object : objects) {
            starts.push_back(bytes.size());
            bytes += object;
        }
        starts.insert(starts.end(), extraOffsets.begin(), extraOffsets.end());
        const std::uint64_t tableAt = bytes.size();
        for (std::uint64_t start : starts)
            bytes += number(start, offsetSize);
        bytes += std::string(5, '\0') + number(0, 1) + number(offsetSize, 1) + number(referenceSize, 1);
        bytes += number(count + extraOffsets.size(), 8) + number(top, 8) + number(tableAt + tableShift, 8);
        return NSData::dataWithBytes(bytes.data(), bytes.size());
    }

    static std::string number(std::uint64_t value, std::size_t size)
    {
        std::string digits(size, '\0');
        for (std::size_t at = size; at-- > 0; value >>= 8)
            digits[at] = static_cast<char>(value);
        return digits;
    }

    Objects objects;
    std::uint64_t count;
    std::uint64_t top = 0;
    std::size_t offsetSize = 1;
    std::size_t referenceSize = 1;
    std::uint64_t tableShift = 0;
    std::vector<std::uint64_t> extraOffsets;
};
