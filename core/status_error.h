#pragma once

#include "LUMPlatform/NSError.h"

namespace lum {

/// What a function that failed returns: false, or null.
struct Failure {
    constexpr operator bool() const { return false; }
    template<typename T> operator NSRef<T>() const { return nullptr; }
};

/// Stores an error in NSOSStatusErrorDomain, without user information, where one is asked for.
///
///     if (OSStatus status = reference.rename(name))
///         return fail(error, status);
///
/// Every error of this library that has no text of its own is made here.
Failure fail(NSRef<NSError>* error, OSStatus status);

}
