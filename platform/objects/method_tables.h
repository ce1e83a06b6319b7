#pragma once

#include "LUMPlatform/NSMethod.h"

namespace platform {

/// The tables of the extension sets, each defined beside its set. platform/objects/method_tables.cpp gives
/// them to the classes they extend.
std::span<const NSMethod> delayedPerformingMethods();
std::span<const NSMethod> threadPerformingMethods();

std::span<const NSMethod> arrayKeyValueMethods();
std::span<const NSMethod> dictionaryKeyValueMethods();
std::span<const NSMethod> objectKeyValueMethods();

std::span<const NSMethod> pathUtilityMethods();
std::span<const NSMethod> urlUtilityMethods();

}
