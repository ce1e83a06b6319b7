#pragma once

#include "LUMPlatform/NSObject.h"

namespace platform {

/// The text of an array, dictionary or set in the old property-list style, one element a line:
///
///     {
///         name = "two words";
///         list =     (
///             1,
///             2
///         );
///     }
///
/// A container met again inside itself, or nested too deep, is cut short to "...".
NSRef<NSString> containerDescription(const NSObject& container);

}
