#pragma once

#include "LUMPlatform/NSString.h"
#include "platform/strings/utf_conversion.h"

namespace platform {

/// The bytes of a path; empty, which names nothing, for null, for a text that the system would cut off at a
/// NUL, and for one with half a surrogate pair, which must not name a file with a replacement character.
inline std::string systemPath(const NSRef<NSString>& path)
{
    const auto bytes = path ? utf8FromUtf16(path->characters()) : std::nullopt;
    return bytes && bytes->find('\0') == std::string::npos ? *bytes : std::string();
}

}
