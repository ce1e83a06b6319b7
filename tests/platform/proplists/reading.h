#pragma once

#include "LUMPlatform/NSData.h"
#include "LUMPlatform/NSError.h"
#include "LUMPlatform/NSPropertyListSerialization.h"
#include "LUMPlatform/NSString.h"

#include <string>
#include <string_view>

inline NSId readPropertyList(std::string_view bytes)
{
    return NSPropertyListSerialization::propertyListWithData(
        NSData::dataWithBytes(bytes.data(), bytes.size()));
}

/// The description of the error; "no error" when the bytes are read.
inline std::string faultOfPropertyList(std::string_view bytes, const NSDecodingLimits& limits = {})
{
    NSRef<NSError> error;
    NSId object = NSPropertyListSerialization::propertyListWithData(
        NSData::dataWithBytes(bytes.data(), bytes.size()), NSPropertyListImmutable, nullptr, &error, limits);
    return object || !error ? "no error" : error->localizedDescription()->utf8();
}
