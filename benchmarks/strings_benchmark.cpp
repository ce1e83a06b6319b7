#include "LUMPlatform/NSString.h"
#include "platform/strings/number_scan.h"
#include "platform/strings/utf16_compare.h"
#include "platform/strings/utf16_search.h"
#include "platform/strings/utf_conversion.h"

#include <benchmark/benchmark.h>
#include <cstdio>
#include <cstring>
#include <glib.h>
#include <string>
#include <unicode/unistr.h>
#include <unicode/unorm.h>
#include <unicode/ustring.h>

namespace {

constexpr std::size_t kLongText = 4096;

std::string asciiText(std::size_t size)
{
    std::string text;
    for (std::size_t i = 0; text.size() < size; ++i)
        text += "Take " + std::to_string(i) + ".aif ";
    text.resize(size);
    return text;
}

/// Text of a European language: an accented letter in every word.
std::string accentedText(std::size_t size)
{
    std::string text;
    while (text.size() < size)
        text += "d\u00e9j\u00e0 vu \u00fcber Gr\u00f6\u00dfe ";
    text.resize(size);
    while (!platform::utf16FromUtf8(text)) // cut within a letter
        text.pop_back();
    return text;
}

std::u16string wide(const std::string& text)
{
    return platform::utf16FromUtf8(text).value();
}

std::int32_t lengthOf(std::u16string_view text)
{
    return static_cast<std::int32_t>(text.size());
}

// From UTF-8

void Utf8Decode_Ours(benchmark::State& state, const std::string& text)
{
    for (auto _ : state)
        benchmark::DoNotOptimize(platform::utf16FromUtf8(text));
}

void Utf8Decode_ICU(benchmark::State& state, const std::string& text)
{
    for (auto _ : state) {
        std::u16string units(text.size(), u'\0');
        std::int32_t length = 0;
        UErrorCode error = U_ZERO_ERROR;
        u_strFromUTF8(units.data(), static_cast<std::int32_t>(units.size()), &length, text.data(),
            static_cast<std::int32_t>(text.size()), &error);
        units.resize(static_cast<std::size_t>(length));
        benchmark::DoNotOptimize(units);
    }
}

void Utf8Decode_GLib(benchmark::State& state, const std::string& text)
{
    for (auto _ : state) {
        gunichar2* units =
            g_utf8_to_utf16(text.data(), static_cast<glong>(text.size()), nullptr, nullptr, nullptr);
        benchmark::DoNotOptimize(units);
        g_free(units);
    }
}

// To UTF-8

void Utf8Encode_Ours(benchmark::State& state, const std::string& text)
{
    std::u16string units = wide(text);
    for (auto _ : state)
        benchmark::DoNotOptimize(platform::utf8FromUtf16(units));
}

void Utf8Encode_ICU(benchmark::State& state, const std::string& text)
{
    std::u16string units = wide(text);
    for (auto _ : state) {
        std::string bytes(units.size() * 3, '\0');
        std::int32_t length = 0;
        UErrorCode error = U_ZERO_ERROR;
        u_strToUTF8(bytes.data(), static_cast<std::int32_t>(bytes.size()), &length, units.data(),
            lengthOf(units), &error);
        bytes.resize(static_cast<std::size_t>(length));
        benchmark::DoNotOptimize(bytes);
    }
}

void Utf8Encode_GLib(benchmark::State& state, const std::string& text)
{
    std::u16string units = wide(text);
    for (auto _ : state) {
        char* bytes = g_utf16_to_utf8(
            reinterpret_cast<const gunichar2*>(units.data()), lengthOf(units), nullptr, nullptr, nullptr);
        benchmark::DoNotOptimize(bytes);
        g_free(bytes);
    }
}

// String objects

const char kName[] = "Take 12 (mixed).aif";

void StringMake_Ours(benchmark::State& state)
{
    for (auto _ : state)
        benchmark::DoNotOptimize(NSString::stringWithUTF8String(kName));
}

void StringMake_ICU(benchmark::State& state)
{
    for (auto _ : state)
        benchmark::DoNotOptimize(icu::UnicodeString::fromUTF8(kName));
}

void StringHash_Ours(benchmark::State& state)
{
    NSRef<NSString> name = kName;
    for (auto _ : state)
        benchmark::DoNotOptimize(name->hash());
}

void StringHash_ICU(benchmark::State& state)
{
    auto name = icu::UnicodeString::fromUTF8(kName);
    for (auto _ : state)
        benchmark::DoNotOptimize(name.hashCode());
}

void StringIsEqual_Ours(benchmark::State& state)
{
    NSId a = NSString::stringWithUTF8String(kName);
    NSId b = NSString::stringWithUTF8String(kName);
    for (auto _ : state)
        benchmark::DoNotOptimize(a->isEqual(b));
}

void StringIsEqual_ICU(benchmark::State& state)
{
    auto a = icu::UnicodeString::fromUTF8(kName);
    auto b = icu::UnicodeString::fromUTF8(kName);
    for (auto _ : state)
        benchmark::DoNotOptimize(a == b);
}

// Comparison. The texts differ in their last character.

struct Pair {
    std::u16string a;
    std::u16string b;
};

Pair differingAtTheEnd(const std::string& text)
{
    return { wide(text + "a"), wide(text + "b") };
}

void Compare_Ours(benchmark::State& state, const Pair& pair, platform::Equivalence equivalence)
{
    for (auto _ : state)
        benchmark::DoNotOptimize(platform::compareUtf16(pair.a, pair.b, { equivalence, false }));
}

void CompareUnits_ICU(benchmark::State& state, const Pair& pair)
{
    for (auto _ : state)
        benchmark::DoNotOptimize(
            u_strCompare(pair.a.data(), lengthOf(pair.a), pair.b.data(), lengthOf(pair.b), true));
}

void Compare_ICU(benchmark::State& state, const Pair& pair, std::uint32_t options)
{
    for (auto _ : state) {
        UErrorCode error = U_ZERO_ERROR;
        benchmark::DoNotOptimize(unorm_compare(pair.a.data(), lengthOf(pair.a), pair.b.data(),
            lengthOf(pair.b), options | U_COMPARE_CODE_POINT_ORDER, &error));
    }
}

void CompareNumeric_Ours(benchmark::State& state)
{
    std::u16string a = u"Take 12 (mixed).aif";
    std::u16string b = u"Take 9 (mixed).aif";
    for (auto _ : state)
        benchmark::DoNotOptimize(platform::compareUtf16(a, b, { {}, true }));
}

void CompareNumeric_C(benchmark::State& state)
{
    for (auto _ : state)
        benchmark::DoNotOptimize(strverscmp("Take 12 (mixed).aif", "Take 9 (mixed).aif"));
}

// Search for what is at the end only

void Find_Ours(benchmark::State& state)
{
    std::u16string text = wide(asciiText(kLongText)) + u"Outro";
    for (auto _ : state)
        benchmark::DoNotOptimize(platform::findText(text, u"Outro", {}));
}

void Find_ICU(benchmark::State& state)
{
    std::u16string text = wide(asciiText(kLongText)) + u"Outro";
    for (auto _ : state)
        benchmark::DoNotOptimize(u_strFindFirst(text.data(), lengthOf(text), u"Outro", 5));
}

// Formats

void Format_Ours(benchmark::State& state)
{
    NSRef<NSString> format = "%s: %.1f of %lld (%04x)";
    for (auto _ : state)
        benchmark::DoNotOptimize(NSString::stringWithFormat(format, kName, 0.25, 123456789LL, 255));
}

void Format_GLib(benchmark::State& state)
{
    for (auto _ : state) {
        char* text = g_strdup_printf("%s: %.1f of %lld (%04x)", kName, 0.25, 123456789LL, 255U);
        benchmark::DoNotOptimize(text);
        g_free(text);
    }
}

void Format_C(benchmark::State& state)
{
    for (auto _ : state) {
        char text[128];
        std::snprintf(text, sizeof text, "%s: %.1f of %lld (%04x)", kName, 0.25, 123456789LL, 255U);
        benchmark::DoNotOptimize(text);
    }
}

void FormatDouble_Ours(benchmark::State& state)
{
    NSRef<NSString> format = "%.17g";
    for (auto _ : state)
        benchmark::DoNotOptimize(NSString::stringWithFormat(format, 100.951));
}

void FormatDouble_C(benchmark::State& state)
{
    for (auto _ : state) {
        char text[64];
        std::snprintf(text, sizeof text, "%.17g", 100.951);
        benchmark::DoNotOptimize(text);
    }
}

// Numbers in text

void ScanDouble_Ours(benchmark::State& state)
{
    for (auto _ : state)
        benchmark::DoNotOptimize(platform::doubleValue(u"100.95099999999999"));
}

void ScanDouble_GLib(benchmark::State& state)
{
    for (auto _ : state)
        benchmark::DoNotOptimize(g_ascii_strtod("100.95099999999999", nullptr));
}

BENCHMARK_CAPTURE(Utf8Decode_Ours, ascii, asciiText(kLongText))->Name("Utf8DecodeAscii/ours/4096");
BENCHMARK_CAPTURE(Utf8Decode_ICU, ascii, asciiText(kLongText))->Name("Utf8DecodeAscii/icu/4096");
BENCHMARK_CAPTURE(Utf8Decode_GLib, ascii, asciiText(kLongText))->Name("Utf8DecodeAscii/glib/4096");
BENCHMARK_CAPTURE(Utf8Decode_Ours, accented, accentedText(kLongText))->Name("Utf8DecodeAccented/ours/4096");
BENCHMARK_CAPTURE(Utf8Decode_ICU, accented, accentedText(kLongText))->Name("Utf8DecodeAccented/icu/4096");
BENCHMARK_CAPTURE(Utf8Decode_GLib, accented, accentedText(kLongText))->Name("Utf8DecodeAccented/glib/4096");

BENCHMARK_CAPTURE(Utf8Encode_Ours, ascii, asciiText(kLongText))->Name("Utf8EncodeAscii/ours/4096");
BENCHMARK_CAPTURE(Utf8Encode_ICU, ascii, asciiText(kLongText))->Name("Utf8EncodeAscii/icu/4096");
BENCHMARK_CAPTURE(Utf8Encode_GLib, ascii, asciiText(kLongText))->Name("Utf8EncodeAscii/glib/4096");
BENCHMARK_CAPTURE(Utf8Encode_Ours, accented, accentedText(kLongText))->Name("Utf8EncodeAccented/ours/4096");
BENCHMARK_CAPTURE(Utf8Encode_ICU, accented, accentedText(kLongText))->Name("Utf8EncodeAccented/icu/4096");
BENCHMARK_CAPTURE(Utf8Encode_GLib, accented, accentedText(kLongText))->Name("Utf8EncodeAccented/glib/4096");

BENCHMARK(StringMake_Ours)->Name("StringMake/ours/19");
BENCHMARK(StringMake_ICU)->Name("StringMake/icu/19");
BENCHMARK(StringHash_Ours)->Name("StringHash/ours/19");
BENCHMARK(StringHash_ICU)->Name("StringHash/icu/19");
BENCHMARK(StringIsEqual_Ours)->Name("StringIsEqual/ours/19");
BENCHMARK(StringIsEqual_ICU)->Name("StringIsEqual/icu/19");

constexpr platform::Equivalence kLiteral { false, false };
constexpr platform::Equivalence kCanonical { true, false };
constexpr platform::Equivalence kIgnoringCase { true, true };
const Pair kAscii = differingAtTheEnd(asciiText(63));
const Pair kDecomposed { u"u\u0308ber d\u00e9ja\u0300", u"\u00fcber d\u00e9j\u00e0" };
const Pair kCases { u"\u00dcBER GR\u00d6SSE", u"\u00fcber Gr\u00f6\u00dfe" };

BENCHMARK_CAPTURE(Compare_Ours, literal, kAscii, kLiteral)->Name("StringCompareLiteral/ours/64");
BENCHMARK_CAPTURE(CompareUnits_ICU, literal, kAscii)->Name("StringCompareLiteral/icu/64");
BENCHMARK_CAPTURE(Compare_Ours, ascii, kAscii, kCanonical)->Name("StringCompareAscii/ours/64");
BENCHMARK_CAPTURE(Compare_ICU, ascii, kAscii, 0)->Name("StringCompareAscii/icu/64");
BENCHMARK_CAPTURE(Compare_Ours, marks, kDecomposed, kCanonical)->Name("StringCompareDecomposed/ours/9");
BENCHMARK_CAPTURE(Compare_ICU, marks, kDecomposed, 0)->Name("StringCompareDecomposed/icu/9");
BENCHMARK_CAPTURE(Compare_Ours, cases, kCases, kIgnoringCase)->Name("StringCompareIgnoringCase/ours/11");
BENCHMARK_CAPTURE(Compare_ICU, cases, kCases, U_COMPARE_IGNORE_CASE)
    ->Name("StringCompareIgnoringCase/icu/11");
BENCHMARK(CompareNumeric_Ours)->Name("StringCompareNumeric/ours/19");
BENCHMARK(CompareNumeric_C)->Name("StringCompareNumeric/glibc/19");

BENCHMARK(Find_Ours)->Name("StringFind/ours/4096");
BENCHMARK(Find_ICU)->Name("StringFind/icu/4096");

BENCHMARK(Format_Ours)->Name("StringFormat/ours/4");
BENCHMARK(Format_GLib)->Name("StringFormat/glib/4");
BENCHMARK(Format_C)->Name("StringFormat/c_buffer/4");
BENCHMARK(FormatDouble_Ours)->Name("StringFormatDouble/ours/17");
BENCHMARK(FormatDouble_C)->Name("StringFormatDouble/c_buffer/17");
BENCHMARK(ScanDouble_Ours)->Name("ScanDouble/ours/17");
BENCHMARK(ScanDouble_GLib)->Name("ScanDouble/glib/17");

}
