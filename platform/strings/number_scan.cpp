#include "platform/strings/number_scan.h"

#include "platform/strings/code_points.h"

#include <algorithm>
#include <charconv>
#include <climits>
#include <limits>
#include <string>

namespace platform {
namespace {

bool isDigit(char16_t unit)
{
    return unit >= u'0' && unit <= u'9';
}

bool isSign(char16_t unit)
{
    return unit == u'+' || unit == u'-';
}

std::size_t skipDigits(std::u16string_view text, std::size_t at)
{
    while (at < text.size() && isDigit(text[at]))
        ++at;
    return at;
}

/// The end of the exponent at `at`, or `at` when none begins there.
std::size_t skipExponent(std::u16string_view text, std::size_t at)
{
    if (at == text.size() || (text[at] != u'e' && text[at] != u'E'))
        return at;
    std::size_t digits = at + 1;
    if (digits < text.size() && isSign(text[digits]))
        ++digits;
    std::size_t end = skipDigits(text, digits);
    return end == digits ? at : end;
}

/// The exponent of `number`, 0 when it has none, kept within what cannot overflow when added to.
long long exponentOf(std::string_view number, std::size_t mark)
{
    if (mark == std::string_view::npos)
        return 0;
    std::string_view digits = number.substr(mark + 1);
    if (digits.starts_with('+'))
        digits.remove_prefix(1);
    constexpr long long kLimit = LLONG_MAX / 2;
    long long exponent = 0;
    auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), exponent);
    if (error == std::errc::result_out_of_range)
        return digits.starts_with('-') ? -kLimit : kLimit;
    return std::clamp(exponent, -kLimit, kLimit);
}

/// Whether a number that no double can hold is too large rather than too small: whether its first digit
/// other than 0 stands before the decimal point once the exponent has moved that.
bool isHuge(std::string_view number)
{
    std::size_t mark = number.find_first_of("eE");
    std::string_view mantissa = number.substr(0, mark);
    auto point = static_cast<long long>(std::min(mantissa.find('.'), mantissa.size()));
    auto first = static_cast<long long>(mantissa.find_first_of("123456789"));
    return point - first + exponentOf(number, mark) > 0;
}

/// `number` has the grammar that from_chars expects, without a sign.
double nearestDouble(std::string_view number)
{
    double value = 0;
    auto [end, error] = std::from_chars(number.data(), number.data() + number.size(), value);
    if (error == std::errc::result_out_of_range)
        return isHuge(number) ? std::numeric_limits<double>::infinity() : 0.0;
    return value;
}

std::size_t skipWhitespace(std::u16string_view text, std::size_t start = 0)
{
    return skipCharacters(text, start, CharacterSet::whitespaceAndNewline());
}

}

std::optional<ScannedDouble> scanDouble(std::u16string_view text, std::size_t start)
{
    if (start >= text.size())
        return std::nullopt;
    bool negative = text[start] == u'-';
    std::size_t whole = start + isSign(text[start]);
    std::size_t end = skipDigits(text, whole);
    std::size_t digits = end - whole;
    if (end < text.size() && text[end] == u'.') {
        std::size_t fraction = end + 1;
        std::size_t fractionEnd = skipDigits(text, fraction);
        digits += fractionEnd - fraction;
        end = fractionEnd;
    }
    if (digits == 0)
        return std::nullopt;
    end = skipExponent(text, end);

    // All of it is ASCII by now.
    std::string number(
        text.begin() + static_cast<std::ptrdiff_t>(whole), text.begin() + static_cast<std::ptrdiff_t>(end));
    double value = nearestDouble(number);
    return ScannedDouble { negative ? -value : value, end };
}

std::size_t skipCharacters(std::u16string_view text, std::size_t start, const CharacterSet& skipped)
{
    std::size_t at = start;
    while (at < text.size()) {
        std::size_t next = at;
        if (!skipped.contains(takeCodePoint(text, next)))
            break;
        at = next;
    }
    return at;
}

double doubleValue(std::u16string_view text)
{
    std::optional<ScannedDouble> scanned = scanDouble(text, skipWhitespace(text));
    return scanned ? scanned->value : 0.0;
}

long long longLongValue(std::u16string_view text)
{
    std::size_t at = skipWhitespace(text);
    bool negative = false;
    if (at < text.size() && isSign(text[at]))
        negative = text[at++] == u'-';
    // Counted downwards, because the negative limit is the one farther from zero.
    long long value = 0;
    for (; at < text.size() && isDigit(text[at]); ++at) {
        int digit = text[at] - u'0';
        if (value < (LLONG_MIN + digit) / 10)
            return negative ? LLONG_MIN : LLONG_MAX;
        value = value * 10 - digit;
    }
    if (negative)
        return value;
    return value == LLONG_MIN ? LLONG_MAX : -value;
}

int intValue(std::u16string_view text)
{
    return static_cast<int>(std::clamp<long long>(longLongValue(text), INT_MIN, INT_MAX));
}

bool boolValue(std::u16string_view text)
{
    std::size_t at = skipWhitespace(text);
    if (at == text.size())
        return false;
    if (std::u16string_view(u"TtYy").find(text[at]) != std::u16string_view::npos)
        return true;
    if (isSign(text[at]))
        at = skipWhitespace(text, at + 1);
    while (at < text.size() && text[at] == u'0')
        ++at;
    at = skipWhitespace(text, at);
    return at < text.size() && text[at] != u'0' && isDigit(text[at]);
}

}
