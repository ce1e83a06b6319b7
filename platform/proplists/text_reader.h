#pragma once

#include "LUMPlatform/NSDecodingLimits.h"
#include "LUMPlatform/NSObject.h"

#include <span>

namespace platform {

/// The object that a property list in the old text form holds: `{ key = value; }`, `( a, b )`, `<0fbd>`, and
/// strings, bare or quoted. A list of pairs without braces, as in files of strings, is a dictionary; so is
/// white space alone. In UTF-8, or in UTF-16 with a byte order mark. Throws PropertyListFault.
NSId readTextPropertyList(std::span<const std::byte> bytes, const NSDecodingLimits& limits);

}
