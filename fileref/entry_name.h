#pragma once

#include "LUMPlatform/NSString.h"

namespace lum {

/// Whether something in a folder can be called that: neither the folder itself, nor the one above, nor
/// something below another.
inline bool isEntryName(const NSRef<NSString>& name)
{
    const auto units = name ? name->characters() : std::u16string_view();
    return !units.empty() && units != u"." && units != u".." && units.find(u'/') == std::u16string_view::npos
        && units.find(u'\0') == std::u16string_view::npos;
}

}
