#pragma once

#include "LUMPlatform/FSRef.h"

class NSData;

namespace lum {

/// The alias record of an object; null when it is gone.
NSRef<NSData> aliasDataOf(const FSRef& ref);

}
