#pragma once

#include "LUMPlatform/NSFormatArgument.h"

#include <span>
#include <string>
#include <string_view>

namespace platform {

/// The text that stands for an object in a format.
using DescribeObject = std::u16string (*)(const NSObject& object);

/// No width and no precision counts for more than this.
inline constexpr std::size_t kLongestField = 65535;

/// Appends `format` to `out`, its conversions replaced by `arguments` in turn.
///
/// The rules are those of NSString::stringWithFormat. Nothing depends on the process locale, and no format
/// and no arguments are undefined: see there.
void appendFormat(std::u16string& out, std::u16string_view format,
    std::span<const NSFormatArgument> arguments, DescribeObject describe);

}
