// Numbers in text: what is scanned is what C reads from the same characters, every scan moves on, and the
// readers of whole texts agree with it.
#include "fuzz/require.h"
#include "platform/strings/number_scan.h"

#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <string>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    std::u16string text(data, data + size);
    for (std::size_t at = 0; at < size;) {
        auto scanned = platform::scanDouble(text, at);
        if (!scanned) {
            ++at;
            continue;
        }
        require(scanned->end > at && scanned->end <= size);
        std::string token(text.begin() + static_cast<std::ptrdiff_t>(at),
            text.begin() + static_cast<std::ptrdiff_t>(scanned->end));
        char* end = nullptr;
        double expected = std::strtod(token.c_str(), &end);
        require(end == token.c_str() + token.size());
        require(scanned->value == expected && std::signbit(scanned->value) == std::signbit(expected));
        at = scanned->end;
    }

    std::size_t start = platform::skipCharacters(text, 0, platform::CharacterSet::whitespaceAndNewline());
    auto first = platform::scanDouble(text, start);
    require(platform::doubleValue(text) == (first ? first->value : 0.0));
    long long integer = platform::longLongValue(text);
    int narrow = platform::intValue(text);
    require(integer == narrow || std::abs(narrow) >= 2147483647 || narrow == -2147483647 - 1);
    (void)platform::boolValue(text);
    return 0;
}
