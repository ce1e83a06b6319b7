// Formats: no format and no arguments are undefined, and one number in a plain format reads as C writes it.
//
// The first byte chooses the arguments, the rest is the format.
#include "fuzz/require.h"
#include "platform/strings/text_format.h"

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <regex>
#include <vector>

namespace {

std::u16string noObjects(const NSObject&)
{
    return u"object";
}

std::vector<NSFormatArgument> argumentsOf(unsigned choice)
{
    static const char kFour[] = { 'T', 'E', 'X', 'T', '\0' };
    const NSFormatArgument kinds[] = { -1, 2.5, kFour, std::u16string_view(u"caf\u00e9"), nullptr, ~0ULL,
        static_cast<const void*>(kFour), 1e300 };
    std::vector<NSFormatArgument> arguments;
    for (; choice != 0; choice /= 9)
        if (choice % 9 != 0)
            arguments.push_back(kinds[choice % 9 - 1]);
    return arguments;
}

template<typename Number> void compareWithC(const std::string& format, Number number)
{
    char expected[4096];
    int length = std::snprintf(expected, sizeof expected, format.c_str(), number);
    const NSFormatArgument argument(number);
    std::u16string text;
    platform::appendFormat(text, std::u16string(format.begin(), format.end()), { &argument, 1 }, noObjects);
    require(std::equal(text.begin(), text.end(), expected, expected + length));
}

}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    if (size == 0)
        return 0;
    std::u16string format(data + 1, data + size);
    std::u16string text;
    platform::appendFormat(text, format, argumentsOf(data[0]), noObjects);

    // What C knows the format to take one number by, and nothing else.
    static const std::regex kInteger("%[-+ 0]*[0-9]{0,3}([.][0-9]{0,3})?[diuxXo]");
    static const std::regex kFloating("%[-+ 0]*[0-9]{0,3}([.][0-9]{0,3})?[feEgG]");
    std::string bytes(data + 1, data + size);
    if (size < 20 && std::regex_match(bytes, kInteger))
        compareWithC(bytes, static_cast<int>(data[0] * 16843009U));
    if (size < 20 && std::regex_match(bytes, kFloating))
        compareWithC(bytes, (data[0] - 100.0) / 7);
    return 0;
}
