#pragma once

#include "LUMPlatform/NSTypes.h"

/// How much a reader of foreign bytes takes on before it refuses them with an error.
///
/// The defaults are beyond what honest files hold, and low enough that a hostile one is turned down in
/// bounded time and memory. Where the origin of the bytes is known to be small, say so:
///
///     NSDecodingLimits limits;
///     limits.bytes = 64 << 10;
///     auto settings = NSPropertyListSerialization::propertyListWithData(
///         data, NSPropertyListImmutable, nullptr, &error, limits);
struct NSDecodingLimits {
    /// Length of the input.
    NSUInteger bytes = NSUInteger { 1 } << 32;
    /// Objects in the result. One that is reached in several ways counts each time, so that this bounds every
    /// later walk through the result, too.
    NSUInteger objects = NSUInteger { 1 } << 28;
    /// Containers inside each other.
    NSUInteger depth = 1000;
};
