#pragma once

#include "LUMFoundation/LUMConstants.h"
#include "LUMPlatform/NSObject.h"

#include <cstdint>

namespace lum {

/// How an object is named in the reasons of exceptions: the low half of its address.
std::uint32_t identityOf(const NSObject& object);
NSRef<NSString> classNameOf(const NSObject& object);

[[noreturn]] void raiseNotPlistable(const NSId& object);
/// Raises unless the key of the dictionary is a string.
void requireStringAsKey(const NSId& key, const NSObject& dictionary);
[[noreturn]] void raiseNotSerializable(const NSObject& object);

}
