#pragma once

#include "LUMPlatform/NSData.h"

namespace platform {

/// A property list in XML, in UTF-8, indented by tabs. Throws PropertyListFault, also for what XML cannot
/// tell: control characters, surrogates without a partner, years beyond 9999.
NSRef<NSData> writeXmlPropertyList(const NSId& propertyList);

}
