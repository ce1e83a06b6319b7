#pragma once

#include "LUMPlatform/NSString.h"

namespace platform {

/// The bytes of a path; empty, which names nothing, for null and for a text that the system would cut off.
inline std::string systemPath(const NSRef<NSString>& path)
{
    std::string bytes = path ? path->utf8() : std::string();
    return bytes.find('\0') == std::string::npos ? bytes : std::string();
}

}
