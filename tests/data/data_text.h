#pragma once

#include "LUMPlatform/NSData.h"
#include "LUMPlatform/NSString.h"
#include "tests/data/hex.h"

/// Data of hexadecimal digits.
inline NSRef<NSData> dataOf(std::string_view digits)
{
    std::vector<std::byte> bytes = unhex(digits);
    return NSData::dataWithBytes(bytes.data(), bytes.size());
}

inline NSRef<NSData> dataOfText(std::string_view text)
{
    return NSData::dataWithBytes(text.data(), text.size());
}

inline std::string hex(const NSRef<NSData>& data)
{
    return data ? hex(data->bytes()) : "null";
}

inline std::string utf8(const NSRef<NSString>& text)
{
    return text ? text->utf8() : "null";
}
