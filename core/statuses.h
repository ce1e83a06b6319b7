#pragma once

#include "LUMPlatform/NSError.h"

namespace lum {

// What handles tell by themselves; all else comes from the call that failed.
inline constexpr OSStatus kStatusNotFound = -43;
inline constexpr OSStatus kStatusBadParameter = -50;
inline constexpr OSStatus kStatusNoFolder = -120;
inline constexpr OSStatus kStatusNoFileURL = 4;

}
