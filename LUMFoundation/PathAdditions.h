#pragma once

#include "LUMFoundation/LUMExport.h"
#include "LUMPlatform/NSBundle.h"
#include "LUMPlatform/NSString.h"

/// Helper programs inside a package. Every bundle answers these as dynamic calls too; a class derived from
/// NSBundle that has a method of the same selector is asked instead. A null bundle answers null. Threads:
/// any.
///
///     auto encoder = PathAdditions::pathForHelper(NSBundle::mainBundle(), "encoder");
namespace PathAdditions {

/// The folder Contents/Helpers of the bundle, whether or not it is there.
/// Selector: helperPath
LUM_EXPORT NSRef<NSString> helperPath(const NSRef<NSBundle>& bundle);
/// Where the helper of that name is: as it stands, else with the extension "app"; null when neither is there.
/// Selector: pathForHelper:
LUM_EXPORT NSRef<NSString> pathForHelper(const NSRef<NSBundle>& bundle, const NSRef<NSString>& name);

}
