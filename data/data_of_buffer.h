#pragma once

#include "LUMPlatform/NSData.h"
#include "data/byte_buffer.h"

#include <optional>

namespace lum {

/// The bytes as an object, which takes the block over, so that nothing is copied; null for none.
inline NSRef<NSData> dataOfBuffer(std::optional<ByteBuffer> bytes)
{
    if (!bytes)
        return nullptr;
    const std::size_t size = bytes->size();
    return NSData::dataWithBytesNoCopy(bytes->leak(), size);
}

}
