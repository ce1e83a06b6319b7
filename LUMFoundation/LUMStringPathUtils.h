#pragma once

#include "LUMFoundation/LUMExport.h"
#include "LUMPlatform/NSString.h"

/// Paths and the links along them. Every string answers this as a dynamic call too; a class derived from
/// NSString that has a method of the same selector is asked instead. Threads: any.
///
///     auto real = LUMStringPathUtils::resolveAliases("/home/me/Link to takes/Take 1.aif");
namespace LUMStringPathUtils {

/// The absolute path with every link along it replaced by its target, chains to their end. What does not
/// exist, and links that lead nowhere, stay as they are; so do "." and "..". A relative path is taken from
/// the root, and the empty one is the root; null for null. Two system calls a component.
/// Selector: resolveAliases
LUM_EXPORT NSRef<NSString> resolveAliases(const NSRef<NSString>& path);

}
