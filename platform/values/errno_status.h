#pragma once

#include "LUMPlatform/NSError.h"

namespace platform {

/// Statuses this library makes itself, without an errno behind them.
inline constexpr OSStatus kStatusNotFound = -43;
inline constexpr OSStatus kStatusExists = -48;
inline constexpr OSStatus kStatusBadParameter = -50;
inline constexpr OSStatus kStatusIO = -36;

/// The one table that turns errno into a status; 0 stays 0.
OSStatus statusFromErrno(int errnoValue);

/// An error in NSOSStatusErrorDomain without user information.
NS_EXPORT NSRef<NSError> errorWithStatus(OSStatus status);

/// Stores that error when one is asked for. Always false, so that a call site reads `return fail(error,
/// status)`.
NS_EXPORT bool fail(NSRef<NSError>* error, OSStatus status);

}
