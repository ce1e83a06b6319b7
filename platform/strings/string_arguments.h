#pragma once

#include "LUMPlatform/NSString.h"
#include "platform/strings/comparison_stream.h"

#include <string_view>

namespace platform {

/// The text of an argument; a null one is empty.
inline std::u16string_view charactersOf(const NSRef<NSString>& text)
{
    return text ? text->characters() : std::u16string_view();
}

inline Equivalence equivalenceOf(NSStringCompareOptions options)
{
    return { (options & NSLiteralSearch) == 0, (options & NSCaseInsensitiveSearch) != 0 };
}

/// The pieces as an array of strings.
NSRef<NSArray> arrayOf(std::span<const std::u16string_view> pieces);

/// Raises NSRangeException unless `range` lies within `length` characters.
void requireRange(NSRange range, std::size_t length);

}
