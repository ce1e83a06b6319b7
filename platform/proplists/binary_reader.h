#pragma once

#include "LUMPlatform/NSDecodingLimits.h"
#include "LUMPlatform/NSObject.h"

#include <span>

namespace platform {

/// Whether the bytes begin as a binary property list does.
bool isBinaryPropertyList(std::span<const std::byte> bytes);

/// The object that a binary property list holds. Throws PropertyListFault.
NSId readBinaryPropertyList(std::span<const std::byte> bytes, const NSDecodingLimits& limits);

}
