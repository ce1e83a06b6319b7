#pragma once

#include "LUMPlatform/NSError.h"

namespace lum {

// What this library tells by itself; all else comes from the call that failed.
inline constexpr OSStatus kStatusFailed = 1; ///< Of a document bundle, where nothing says more.
inline constexpr OSStatus kStatusNoFileURL = 4;
inline constexpr OSStatus kStatusIO = -36;
inline constexpr OSStatus kStatusBadName = -37;
inline constexpr OSStatus kStatusNotFound = -43;
inline constexpr OSStatus kStatusExists = -48;
inline constexpr OSStatus kStatusBadParameter = -50;
inline constexpr OSStatus kStatusNoFolder = -120;
inline constexpr OSStatus kStatusNoAccess = -5000;
inline constexpr OSStatus kStatusNotAFolder = 0x21446972; ///< '!Dir'

}
