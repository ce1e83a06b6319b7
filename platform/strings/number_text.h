#pragma once

#include "platform/strings/format_directive.h"

#include <cstdint>
#include <string>

namespace platform {

/// Appends an integer as `directive` (d, i, u, x, X or o) asks. `value` is extended to 64 bits from `bits`
/// by the rules of its type. The conversion counts in the wider of the two types; only h and hh narrow.
void appendInteger(std::u16string& out, const FormatDirective& directive, std::uint64_t value, unsigned bits);

/// Appends a number as `directive` (f, e, g or a capital of these) asks: exact, and rounded to even.
void appendFloating(std::u16string& out, const FormatDirective& directive, double value);

}
