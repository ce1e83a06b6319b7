#include "platform/proplists/xml_text.h"

#include "LUMPlatform/NSDate.h"
#include "platform/proplists/property_list_fault.h"

#include <array>
#include <chrono>
#include <cmath>
#include <cstdio>

namespace platform {
namespace {

/// The ASCII characters that stand for themselves.
constexpr auto kPlain = [] {
    std::array<bool, 0x80> plain {};
    for (std::size_t unit = 0; unit < plain.size(); ++unit)
        plain[unit] = unit >= ' ' || unit == '\t' || unit == '\n';
    plain['<'] = plain['>'] = plain['&'] = false;
    return plain;
}();

[[noreturn]] void faultFor(char16_t unit)
{
    char text[64];
    std::snprintf(text, sizeof text, "the character U+%04X has no form in XML", unsigned { unit });
    throw PropertyListFault(text);
}

std::string_view escapeOf(char16_t unit)
{
    switch (unit) {
    case '<':
        return "&lt;";
    case '>':
        return "&gt;";
    case '&':
        return "&amp;";
    case '\r': // which a reader would take for the end of a line
        return "&#13;";
    default:
        faultFor(unit);
    }
}

bool isLead(char16_t unit)
{
    return unit >= 0xD800 && unit < 0xDC00;
}
bool isTrail(char16_t unit)
{
    return unit >= 0xDC00 && unit < 0xE000;
}

/// Writes the character at the front of `text`, which is not ASCII, and takes it off.
void appendCharacter(OutputBytes& out, std::u16string_view& text)
{
    std::uint32_t point = text[0];
    if (isTrail(text[0]) || point >= 0xFFFE || (isLead(text[0]) && (text.size() < 2 || !isTrail(text[1]))))
        faultFor(text[0]);
    text.remove_prefix(1);
    char bytes[4];
    std::size_t size = 0;
    const auto put = [&](std::uint32_t lead, unsigned bits) {
        bytes[size++] = static_cast<char>(lead | point >> bits);
        while (bits > 0) {
            bits -= 6;
            bytes[size++] = static_cast<char>(0x80 | (point >> bits & 0x3F));
        }
    };
    if (point < 0x800)
        put(0xC0, 6);
    else if (isLead(static_cast<char16_t>(point))) {
        point = 0x10000 + ((point - 0xD800) << 10) + (text[0] - 0xDC00U);
        text.remove_prefix(1);
        put(0xF0, 18);
    } else
        put(0xE0, 12);
    out.append({ bytes, size });
}

}

void appendXmlText(OutputBytes& out, std::u16string_view text)
{
    while (!text.empty()) {
        char* to = out.room(text.size());
        std::size_t plain = 0;
        while (plain < text.size() && text[plain] < kPlain.size() && kPlain[text[plain]]) {
            to[plain] = static_cast<char>(text[plain]);
            ++plain;
        }
        out.wrote(plain);
        text.remove_prefix(plain);
        if (text.empty())
            return;
        if (text[0] >= kPlain.size()) {
            appendCharacter(out, text);
            continue;
        }
        out.append(escapeOf(text[0]));
        text.remove_prefix(1);
    }
}

void appendBase64(OutputBytes& out, std::span<const std::byte> bytes)
{
    constexpr char kDigits[] = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
    char* to = out.room((bytes.size() + 2) / 3 * 4);
    char* const begin = to;
    const auto put = [&](std::uint32_t bits, unsigned digits) {
        for (unsigned at = 0; at < 4; ++at)
            *to++ = at < digits ? kDigits[bits >> (18 - 6 * at) & 0x3F] : '=';
    };
    const auto byte = [&](std::size_t at) { return std::to_integer<std::uint32_t>(bytes[at]); };
    for (; bytes.size() >= 3; bytes = bytes.subspan(3))
        put(byte(0) << 16 | byte(1) << 8 | byte(2), 4);
    if (bytes.size() == 2)
        put(byte(0) << 16 | byte(1) << 8, 3);
    else if (bytes.size() == 1)
        put(byte(0) << 16, 2);
    out.wrote(static_cast<std::size_t>(to - begin));
}

void appendXmlDate(OutputBytes& out, double seconds)
{
    using namespace std::chrono;
    constexpr double kFarthest = 9e11; // the years of <chrono> end a little later
    if (!(std::abs(seconds) < kFarthest))
        throw PropertyListFault("a date is too far away for XML");
    const sys_seconds time { std::chrono::seconds(
        static_cast<long>(std::floor(seconds + NSTimeIntervalSince1970))) };
    const auto midnight = floor<days>(time);
    const year_month_day day(midnight);
    const hh_mm_ss clock(time - midnight);
    if (day.year() < year(0) || day.year() > year(9999))
        throw PropertyListFault("a date is too far away for XML");
    constexpr std::string_view kForm = "0000-00-00T00:00:00Z";
    char text[20];
    kForm.copy(text, kForm.size());
    const auto put = [&](std::size_t at, std::size_t digits, auto number) {
        for (auto value = static_cast<unsigned>(number); digits > 0; value /= 10)
            text[at + --digits] = static_cast<char>('0' + value % 10);
    };
    put(0, 4, static_cast<int>(day.year()));
    put(5, 2, static_cast<unsigned>(day.month()));
    put(8, 2, static_cast<unsigned>(day.day()));
    put(11, 2, clock.hours().count());
    put(14, 2, clock.minutes().count());
    put(17, 2, clock.seconds().count());
    out.append({ text, kForm.size() });
}

}
