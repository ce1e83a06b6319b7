#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace platform {

// Ill-formed text is refused (null results). In UTF-8, surrogates, overlong forms and code points beyond
// U+10FFFF are ill-formed; in UTF-16, a surrogate without its partner is. Text of 2 GiB and more is refused
// as well.

/// How many UTF-16 code units `utf8` makes if it is well-formed.
std::size_t utf16LengthOfWellFormed(std::string_view utf8);

/// Writes the code units of `utf8` to `out`, which has room for utf16LengthOfWellFormed(utf8). False when
/// `utf8` is ill-formed; then what stands in `out` is of no use.
bool convertUtf8(std::string_view utf8, char16_t* out);

/// Null when `utf8` is ill-formed. A byte order mark is kept as U+FEFF.
std::optional<std::u16string> utf16FromUtf8(std::string_view utf8);

/// Null when `utf16` is ill-formed.
std::optional<std::string> utf8FromUtf16(std::u16string_view utf16);
/// The same with U+FFFD in place of each surrogate without a partner; empty for text that is too long.
std::string utf8FromUtf16Replacing(std::u16string_view utf16);

}
