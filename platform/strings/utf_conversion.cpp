#include "platform/strings/utf_conversion.h"

#include "platform/strings/code_points.h"

#include <algorithm>
#include <cstdint>
#include <cstring>

namespace platform {
namespace {

constexpr char32_t kIllFormed = 0xFFFFFFFF;
constexpr char32_t kReplacement = 0xFFFD;
constexpr size_t kBlock = 16;

bool isAsciiBlock(const char* bytes)
{
    uint64_t words[2];
    std::memcpy(words, bytes, sizeof words);
    return ((words[0] | words[1]) & 0x8080808080808080U) == 0;
}

bool isAsciiBlock(const char16_t* units)
{
    uint64_t words[4];
    std::memcpy(words, units, sizeof words);
    return ((words[0] | words[1] | words[2] | words[3]) & 0xFF80FF80FF80FF80U) == 0;
}

/// Reads one code point and moves `at` behind it, or behind the ill-formed piece.
char32_t decodeUtf8(const char*& at, const char* end)
{
    auto byteAt = [](const char* p) { return static_cast<unsigned char>(*p); };
    char32_t first = byteAt(at++);
    if (first < 0x80)
        return first;
    if (first < 0xC2 || first > 0xF4)
        return kIllFormed;

    // The first continuation byte has a narrower range after four lead bytes; that is what excludes
    // overlong forms, surrogates and code points that are too large.
    int more = first < 0xE0 ? 1 : first < 0xF0 ? 2 : 3;
    char32_t low = first == 0xE0 ? 0xA0 : first == 0xF0 ? 0x90 : 0x80;
    char32_t high = first == 0xED ? 0x9F : first == 0xF4 ? 0x8F : 0xBF;
    char32_t point = first & (0x3FU >> more);
    for (; more > 0; --more) {
        if (at == end)
            return kIllFormed;
        char32_t next = byteAt(at);
        if (next < low || next > high)
            return kIllFormed;
        point = (point << 6) | (next & 0x3F);
        low = 0x80;
        high = 0xBF;
        ++at;
    }
    return point;
}

/// Reads one code point and moves `at` behind it; a lone surrogate is ill-formed.
char32_t decodeUtf16(const char16_t*& at, const char16_t* end)
{
    char32_t unit = *at++;
    if ((unit & 0xFFFFF800) != 0xD800)
        return unit;
    if (isLeadSurrogate(unit) && at != end && isTrailSurrogate(*at))
        return 0x10000 + ((unit - 0xD800) << 10) + (char32_t(*at++) - 0xDC00);
    return kIllFormed;
}

char16_t* putUtf16(char32_t point, char16_t* out)
{
    if (point < 0x10000) {
        *out++ = static_cast<char16_t>(point);
        return out;
    }
    *out++ = static_cast<char16_t>(0xD7C0 + (point >> 10));
    *out++ = static_cast<char16_t>(0xDC00 + (point & 0x3FF));
    return out;
}

char* putUtf8(char32_t point, char* out)
{
    auto put = [&](char32_t byte) { *out++ = static_cast<char>(static_cast<unsigned char>(byte)); };
    if (point < 0x80) {
        put(point);
    } else if (point < 0x800) {
        put(0xC0 | (point >> 6));
        put(0x80 | (point & 0x3F));
    } else if (point < 0x10000) {
        put(0xE0 | (point >> 12));
        put(0x80 | ((point >> 6) & 0x3F));
        put(0x80 | (point & 0x3F));
    } else {
        put(0xF0 | (point >> 18));
        put(0x80 | ((point >> 12) & 0x3F));
        put(0x80 | ((point >> 6) & 0x3F));
        put(0x80 | (point & 0x3F));
    }
    return out;
}

struct Measure {
    size_t length = 0;
    bool wellFormed = true;
};

/// The length in UTF-16, each ill-formed piece counted as its replacement.
Measure measureUtf8(std::string_view utf8)
{
    Measure measure;
    const char* at = utf8.data();
    const char* end = at + utf8.size();
    while (at != end) {
        if (static_cast<size_t>(end - at) >= kBlock && isAsciiBlock(at)) {
            at += kBlock;
            measure.length += kBlock;
            continue;
        }
        // One block may take up to a block's worth of characters before the next look for ASCII.
        for (const char* stop = at + std::min<ptrdiff_t>(kBlock, end - at); at < stop;) {
            char32_t point = decodeUtf8(at, end);
            if (point == kIllFormed) {
                measure.wellFormed = false;
                point = kReplacement;
            }
            measure.length += point < 0x10000 ? 1 : 2;
        }
    }
    return measure;
}

void convertUtf8(std::string_view utf8, char16_t* out)
{
    const char* at = utf8.data();
    const char* end = at + utf8.size();
    while (at != end) {
        if (static_cast<size_t>(end - at) >= kBlock && isAsciiBlock(at)) {
            for (size_t i = 0; i < kBlock; ++i)
                out[i] = static_cast<unsigned char>(at[i]);
            at += kBlock;
            out += kBlock;
            continue;
        }
        for (const char* stop = at + std::min<ptrdiff_t>(kBlock, end - at); at < stop;) {
            char32_t point = decodeUtf8(at, end);
            out = putUtf16(point == kIllFormed ? kReplacement : point, out);
        }
    }
}

Measure measureUtf16(std::u16string_view utf16)
{
    Measure measure;
    const char16_t* at = utf16.data();
    const char16_t* end = at + utf16.size();
    while (at != end) {
        if (static_cast<size_t>(end - at) >= kBlock && isAsciiBlock(at)) {
            at += kBlock;
            measure.length += kBlock;
            continue;
        }
        for (const char16_t* stop = at + std::min<ptrdiff_t>(kBlock, end - at); at < stop;) {
            char32_t point = decodeUtf16(at, end);
            if (point == kIllFormed) {
                measure.wellFormed = false;
                point = kReplacement;
            }
            measure.length += point < 0x80 ? 1 : point < 0x800 ? 2 : point < 0x10000 ? 3 : 4;
        }
    }
    return measure;
}

void convertUtf16(std::u16string_view utf16, char* out)
{
    const char16_t* at = utf16.data();
    const char16_t* end = at + utf16.size();
    while (at != end) {
        if (static_cast<size_t>(end - at) >= kBlock && isAsciiBlock(at)) {
            for (size_t i = 0; i < kBlock; ++i)
                out[i] = static_cast<char>(at[i]);
            at += kBlock;
            out += kBlock;
            continue;
        }
        for (const char16_t* stop = at + std::min<ptrdiff_t>(kBlock, end - at); at < stop;) {
            char32_t point = decodeUtf16(at, end);
            out = putUtf8(point == kIllFormed ? kReplacement : point, out);
        }
    }
}

}

std::optional<size_t> utf16LengthOfUtf8(std::string_view utf8)
{
    Measure measure = measureUtf8(utf8);
    return measure.wellFormed ? std::optional(measure.length) : std::nullopt;
}

void convertWellFormedUtf8(std::string_view utf8, char16_t* out)
{
    convertUtf8(utf8, out);
}

std::optional<std::u16string> utf16FromUtf8(std::string_view utf8)
{
    Measure measure = measureUtf8(utf8);
    if (!measure.wellFormed)
        return std::nullopt;
    std::u16string text(measure.length, u'\0');
    convertUtf8(utf8, text.data());
    return text;
}

std::u16string utf16FromUtf8Replacing(std::string_view utf8)
{
    std::u16string text(measureUtf8(utf8).length, u'\0');
    convertUtf8(utf8, text.data());
    return text;
}

std::optional<std::string> utf8FromUtf16(std::u16string_view utf16)
{
    Measure measure = measureUtf16(utf16);
    if (!measure.wellFormed)
        return std::nullopt;
    std::string bytes(measure.length, '\0');
    convertUtf16(utf16, bytes.data());
    return bytes;
}

std::string utf8FromUtf16Replacing(std::u16string_view utf16)
{
    std::string bytes(measureUtf16(utf16).length, '\0');
    convertUtf16(utf16, bytes.data());
    return bytes;
}

bool isWellFormedUtf16(std::u16string_view utf16)
{
    return measureUtf16(utf16).wellFormed;
}

}
