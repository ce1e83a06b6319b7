#pragma once

#include "LUMPlatform/NSDecodingLimits.h"
#include "LUMPlatform/NSObject.h"

#include <span>

namespace platform {

/// Whether the bytes begin as XML does, in UTF-8, or in UTF-16 with a byte order mark. Data in the old text
/// form begins with "<" as well, but goes on with hexadecimal digits.
bool isXmlPropertyList(std::span<const std::byte> bytes);

/// The object that a property list in XML holds. The declaration, the document type and the element `plist`
/// may be missing. Throws PropertyListFault.
NSId readXmlPropertyList(std::span<const std::byte> bytes, const NSDecodingLimits& limits);

}
