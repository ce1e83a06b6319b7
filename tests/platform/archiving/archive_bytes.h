#pragma once

#include "LUMPlatform/NSData.h"
#include "tests/data/hex.h"

/// Archives as hexadecimal digits.
inline NSRef<NSData> archiveOf(std::string_view digits)
{
    const std::vector<std::byte> bytes = unhex(digits);
    return NSData::dataWithBytes(bytes.data(), bytes.size());
}
