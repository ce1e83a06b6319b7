#pragma once

#include "LUMPlatform/NSObject.h"

#include <string>

namespace platform {

/// Asks the object for the value of `key` by the method that is named after it; whether there is one.
///
/// The classes are searched by text: keys come from files, and an interned selector would stay for ever.
bool valueByMethod(NSObject& object, const std::string& key, NSId& value);

}
