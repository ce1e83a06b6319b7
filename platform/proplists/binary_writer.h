#pragma once

#include "LUMPlatform/NSData.h"

namespace platform {

/// A property list in binary. Throws PropertyListFault. Null when there is not enough memory for the bytes.
NSRef<NSData> writeBinaryPropertyList(const NSId& propertyList);

}
