#pragma once

#include "LUMPlatform/NSObject.h"

#include <string_view>

namespace platform {

// The values in the elements of a property list in XML. Each throws PropertyListFault for text that is none.

/// Decimal, or hexadecimal behind 0x, with an optional sign; from -2^63 to 2^64 - 1. No white space.
NSId integerFromXml(std::string_view text);

/// Decimal; or nan, inf or infinity in any case, the latter with an optional sign. White space may go before.
NSId realFromXml(std::string_view text);

/// "2001-01-01T00:00:00Z" and no other form.
NSId dateFromXml(std::string_view text);

/// Base64; white space does not count, and padding may be missing.
NSId dataFromXml(std::string_view text);

}
