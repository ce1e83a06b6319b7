#include "platform/strings/number_text.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <string_view>

namespace platform {
namespace {

void appendAscii(std::u16string& out, std::string_view text)
{
    out.append(text.begin(), text.end());
}

/// Sign or base, zeros, and digits, filled up to the width of the field.
void appendField(std::u16string& out, const FormatDirective& directive, std::string_view prefix,
    std::size_t zeros, std::string_view digits, bool fillsWithZeros)
{
    std::size_t length = prefix.size() + zeros + digits.size();
    std::size_t fill = directive.width > length ? directive.width - length : 0;
    bool zeroFill = fillsWithZeros && directive.zeroPadded && !directive.leftAligned;
    if (!directive.leftAligned && !zeroFill)
        out.append(fill, u' ');
    appendAscii(out, prefix);
    out.append(zeros + (zeroFill ? fill : 0), u'0');
    appendAscii(out, digits);
    if (directive.leftAligned)
        out.append(fill, u' ');
}

std::string_view signOf(const FormatDirective& directive, bool negative)
{
    return negative ? "-" : directive.plus ? "+" : directive.space ? " " : "";
}

void makeUppercase(char* begin, char* end)
{
    std::transform(begin, end, begin, [](char c) { return c >= 'a' && c <= 'z' ? char(c - 0x20) : c; });
}

std::uint64_t extended(std::uint64_t value, unsigned bits, bool isSigned)
{
    unsigned unused = 64 - bits;
    value <<= unused;
    return isSigned ? static_cast<std::uint64_t>(static_cast<std::int64_t>(value) >> unused)
                    : value >> unused;
}

std::chars_format charsFormat(char16_t conversion)
{
    switch (conversion) {
    case u'f':
    case u'F':
        return std::chars_format::fixed;
    case u'e':
    case u'E':
        return std::chars_format::scientific;
    default:
        return std::chars_format::general;
    }
}

}

void appendInteger(std::u16string& out, const FormatDirective& directive, std::uint64_t value, unsigned bits)
{
    bool isSigned = directive.conversion == u'd' || directive.conversion == u'i';
    value = extended(value, directive.bits < 32 ? directive.bits : std::max(directive.bits, bits), isSigned);
    bool negative = isSigned && static_cast<std::int64_t>(value) < 0;
    std::uint64_t magnitude = negative ? 0 - value : value;

    char16_t conversion = directive.conversion;
    int base = conversion == u'o' ? 8 : conversion == u'x' || conversion == u'X' ? 16 : 10;
    char buffer[24];
    char* end = std::to_chars(buffer, buffer + sizeof buffer, magnitude, base).ptr;
    if (magnitude == 0 && directive.precision == 0U)
        end = buffer;
    if (conversion == u'X')
        makeUppercase(buffer, end);

    auto digits = static_cast<std::size_t>(end - buffer);
    std::size_t fewest = directive.precision.value_or(1);
    std::size_t zeros = fewest > digits ? fewest - digits : 0;
    std::string_view prefix = isSigned ? signOf(directive, negative) : "";
    if (directive.alternate && base == 16 && magnitude != 0)
        prefix = conversion == u'X' ? "0X" : "0x";
    if (directive.alternate && base == 8 && zeros == 0 && (digits == 0 || buffer[0] != '0'))
        zeros = 1;
    appendField(out, directive, prefix, zeros, { buffer, digits }, !directive.precision);
}

void appendFloating(std::u16string& out, const FormatDirective& directive, double value)
{
    char16_t conversion = directive.conversion;
    bool isUppercase = conversion < u'a';
    std::string_view sign = signOf(directive, std::signbit(value));
    if (!std::isfinite(value)) {
        std::string_view name =
            std::isnan(value) ? (isUppercase ? "NAN" : "nan") : (isUppercase ? "INF" : "inf");
        appendField(out, directive, sign, 0, name, false);
        return;
    }

    constexpr std::size_t kMostWholeDigits = 309;
    constexpr std::size_t kSignsAndExponent = 16;
    std::size_t precision = directive.precision.value_or(6);
    char onStack[512];
    std::string onHeap;
    char* begin = onStack;
    std::size_t room = precision + kMostWholeDigits + kSignsAndExponent;
    if (room > sizeof onStack) {
        onHeap.resize(room);
        begin = onHeap.data();
    }
    auto format = charsFormat(conversion);
    char* end = std::to_chars(begin, begin + room, std::abs(value), format, static_cast<int>(precision)).ptr;
    if (isUppercase)
        makeUppercase(begin, end);
    appendField(out, directive, sign, 0, { begin, static_cast<std::size_t>(end - begin) }, true);
}

}
