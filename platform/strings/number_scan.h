#pragma once

#include "platform/strings/character_set.h"

#include <cstddef>
#include <optional>
#include <string_view>

namespace platform {

/// A number found in text, and where the text after it begins.
struct ScannedDouble {
    double value;
    std::size_t end;
};

/// Reads [+-] digits [. digits] or [+-] . digits, then an optional exponent, at exactly `start`.
///
/// The separator is "." whatever the locale; there is no grouping, no hexadecimal form, no "nan" or "inf".
/// An exponent without digits is not part of the number. Correctly rounded; too large is infinite and
/// too small is zero, both with their sign. Null when no number begins at `start`.
std::optional<ScannedDouble> scanDouble(std::u16string_view text, std::size_t start);

/// The first index from `start` on whose character is not in `skipped`.
std::size_t skipCharacters(std::u16string_view text, std::size_t start, const CharacterSet& skipped);

// The number at the head of a text, white space before it skipped and anything after it ignored;
// 0 when there is none.

double doubleValue(std::u16string_view text);
/// Values beyond the limits of the type become those limits.
long long longLongValue(std::u16string_view text);
int intValue(std::u16string_view text);
/// True for T, t, Y, y, or for an optional sign, zeros, and then a digit from 1 to 9, with white space
/// allowed between these.
bool boolValue(std::u16string_view text);

}
