#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <string_view>

namespace platform {

enum class ConversionKind { Integer, Floating, Character, Pointer, Text, Unknown };

/// One conversion of a format, from its "%" to its letter.
struct FormatDirective {
    bool leftAligned = false;
    bool plus = false;
    bool space = false;
    bool zeroPadded = false;
    bool alternate = false;
    std::size_t width = 0;
    std::optional<std::size_t> precision;
    unsigned bits = 32; ///< of the integer type that the length modifier names
    char16_t conversion = 0; ///< 0 when the format ends before it
    ConversionKind kind = ConversionKind::Unknown;
    std::size_t length = 0; ///< of the directive in the format, in units
};

/// Reads the directive that `format` begins with, its "%" included. `fieldArgument` gives the number for
/// each "*"; a negative width means left-aligned, a negative precision none.
FormatDirective parseDirective(
    std::u16string_view format, const std::function<std::int64_t()>& fieldArgument);

}
