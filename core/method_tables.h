#pragma once

#include "LUMPlatform/NSMethod.h"

namespace lum {

/// The tables of the extension sets, each defined beside its set. core/method_tables.cpp gives them to the
/// classes they extend.
std::span<const NSMethod> dataCompressionMethods();
std::span<const NSMethod> dataHandleMethods();
std::span<const NSMethod> objectPlistableMethods();
std::span<const NSMethod> dictionaryPlistableMethods();
std::span<const NSMethod> arrayPlistableMethods();
std::span<const NSMethod> serializedPlistMethods();
std::span<const NSMethod> fileManagerFolderMethods();
std::span<const NSMethod> fileManagerMethods();
std::span<const NSMethod> mainThreadProxyMethods();
std::span<const NSMethod> notificationCenterMethods();
std::span<const NSMethod> pathAdditionMethods();
std::span<const NSMethod> stringPathMethods();

std::span<const NSMethod> arrayMethods();
std::span<const NSMethod> arrayPerformingMethods();
std::span<const NSMethod> arraySearchMethods();
std::span<const NSMethod> deprecatedArrayMethods();

std::span<const NSMethod> mutableArrayMethods();
std::span<const NSMethod> deprecatedMutableArrayMethods();

}
