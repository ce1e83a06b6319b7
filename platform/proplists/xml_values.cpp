#include "platform/proplists/xml_values.h"

#include "LUMPlatform/NSData.h"
#include "LUMPlatform/NSDate.h"
#include "LUMPlatform/NSNumber.h"
#include "platform/proplists/property_list_fault.h"
#include "platform/strings/number_scan.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <chrono>
#include <limits>
#include <memory>

namespace platform {
namespace {

/// The beginning of a text for a fault, in printable characters.
std::string quoted(std::string_view text)
{
    constexpr std::size_t kShown = 40;
    std::string shown(text.substr(0, kShown));
    for (char& character : shown)
        if (character < ' ' || character > '~')
            character = '?';
    return "'" + shown + (text.size() > kShown ? "...'" : "'");
}

bool isSpace(char character)
{
    return character == ' ' || character == '\n' || character == '\t' || character == '\r';
}

bool take(std::string_view& text, std::string_view start)
{
    if (!text.starts_with(start))
        return false;
    text.remove_prefix(start.size());
    return true;
}

bool isWord(std::string_view text, std::string_view lowerCaseWord)
{
    return std::ranges::equal(text, lowerCaseWord, [](char a, char b) { return (a | 0x20) == b; });
}

constexpr double kInfinity = std::numeric_limits<double>::infinity();

}

NSId integerFromXml(std::string_view text)
{
    std::string_view rest = text;
    const bool isNegative = take(rest, "-");
    if (!isNegative)
        take(rest, "+");
    const int base = take(rest, "0x") || take(rest, "0X") ? 16 : 10;
    std::uint64_t value = 0;
    const char* end = rest.data() + rest.size();
    const auto [stop, problem] = std::from_chars(rest.data(), end, value, base);
    constexpr std::uint64_t kLowest = std::uint64_t { 1 } << 63; // without its sign
    if (problem != std::errc() || stop != end || (isNegative && value > kLowest))
        throw PropertyListFault(quoted(text) + " is no integer of 64 bits");
    if (isNegative)
        return NSNumber::numberWithLongLong(static_cast<long long>(0 - value));
    return NSNumber::numberWithUnsignedLongLong(value);
}

NSId realFromXml(std::string_view text)
{
    std::string_view rest = text;
    while (!rest.empty() && isSpace(rest.front()))
        rest.remove_prefix(1);
    double value = 0;
    const char* end = rest.data() + rest.size();
    const bool hasPlus = rest.starts_with('+');
    const std::string_view digits = hasPlus ? rest.substr(1) : rest;
    const std::string_view unsignedDigits = digits.substr(!hasPlus && digits.starts_with('-'));
    const char first = unsignedDigits.empty() ? ' ' : unsignedDigits[0];
    const bool beginsANumber = (first >= '0' && first <= '9') || first == '.';
    if (beginsANumber) {
        const auto [stop, problem] = std::from_chars(digits.data(), end, value);
        if (stop == end && problem == std::errc())
            return NSNumber::numberWithDouble(value);
    }
    if (isWord(rest, "nan"))
        return NSNumber::numberWithDouble(std::numeric_limits<double>::quiet_NaN());
    if (isWord(digits, "inf") || isWord(digits, "infinity"))
        return NSNumber::numberWithDouble(kInfinity);
    if (isWord(rest, "-inf") || isWord(rest, "-infinity"))
        return NSNumber::numberWithDouble(-kInfinity);
    const std::u16string wide(rest.begin(), rest.end());
    const auto scanned = scanDouble(wide, 0); // which tells too large from too small
    if (!scanned || scanned->end != wide.size())
        throw PropertyListFault(quoted(text) + " is no number");
    return NSNumber::numberWithDouble(scanned->value);
}

NSId dateFromXml(std::string_view text)
{
    constexpr std::string_view kForm = "0000-00-00T00:00:00Z";
    std::array<int, 6> fields {};
    std::size_t field = 0;
    bool fits = text.size() == kForm.size();
    for (std::size_t at = 0; fits && at < text.size(); ++at) {
        const bool isDigit = text[at] >= '0' && text[at] <= '9';
        if (kForm[at] != '0') {
            fits = text[at] == kForm[at];
            ++field;
        } else if ((fits = isDigit))
            fields[field] = fields[field] * 10 + (text[at] - '0');
    }
    using namespace std::chrono;
    const auto [years, months, monthDays, hour, minute, second] = fields;
    const year_month_day day { year(years), month(static_cast<unsigned>(months)),
        std::chrono::day(static_cast<unsigned>(monthDays)) };
    if (!fits || !day.ok() || hour > 23 || minute > 59 || second > 59)
        throw PropertyListFault(quoted(text) + " is no date");
    const auto since1970 = sys_days(day).time_since_epoch() + hours(hour) + minutes(minute) + seconds(second);
    return NSDate::dateWithTimeIntervalSinceReferenceDate(
        static_cast<double>(duration_cast<seconds>(since1970).count()) - NSTimeIntervalSince1970);
}

namespace {

constexpr std::uint8_t kNoDigit = 0x40;
constexpr std::uint8_t kSpace = 0x41;
constexpr std::uint8_t kPadding = 0x42;

constexpr auto kBase64 = [] {
    std::array<std::uint8_t, 256> digits {};
    digits.fill(kNoDigit);
    constexpr std::string_view kAlphabet = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
    for (std::size_t at = 0; at < kAlphabet.size(); ++at)
        digits[static_cast<unsigned char>(kAlphabet[at])] = static_cast<std::uint8_t>(at);
    for (char space : { ' ', '\n', '\t', '\r' })
        digits[static_cast<unsigned char>(space)] = kSpace;
    digits['='] = kPadding;
    return digits;
}();

}

NSId dataFromXml(std::string_view text)
{
    std::unique_ptr<std::byte, decltype(&std::free)> bytes(
        static_cast<std::byte*>(std::malloc(text.size() / 4 * 3 + 3)), &std::free);
    if (!bytes)
        throw std::bad_alloc();
    std::byte* out = bytes.get();
    std::uint32_t bits = 0;
    unsigned digits = 0;
    bool isPadded = false;
    for (char character : text) {
        const std::uint8_t digit = kBase64[static_cast<unsigned char>(character)];
        if (digit == kSpace)
            continue;
        if (digit == kPadding) {
            isPadded = true;
            continue;
        }
        if (digit == kNoDigit || isPadded)
            throw PropertyListFault("data is not in Base64");
        bits = bits << 6 | digit;
        if (++digits == 4) {
            for (unsigned shift : { 16U, 8U, 0U })
                *out++ = static_cast<std::byte>(bits >> shift);
            digits = 0;
        }
    }
    if (digits == 1)
        throw PropertyListFault("data in Base64 is cut short");
    if (digits >= 2)
        *out++ = static_cast<std::byte>(digits == 2 ? bits >> 4 : bits >> 10);
    if (digits == 3)
        *out++ = static_cast<std::byte>(bits >> 2);
    const auto length = static_cast<std::size_t>(out - bytes.get());
    return NSData::dataWithBytesNoCopy(bytes.release(), length);
}

}
