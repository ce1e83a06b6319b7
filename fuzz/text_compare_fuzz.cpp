// Comparison and search: the order is lawful, short cuts change nothing, and what is found compares equal.
//
// The first byte is the options; the rest is two texts of equal length in UTF-16.
#include "fuzz/require.h"
#include "platform/strings/path_text.h"
#include "platform/strings/percent_escape.h"
#include "platform/strings/utf16_compare.h"
#include "platform/strings/utf16_search.h"
#include "tests/platform/strings/plain_compare.h"

#include <cstdint>
#include <cstring>
#include <string>

using namespace platform;

namespace {

void order(std::u16string_view a, std::u16string_view b, ComparisonRules rules)
{
    int forwards = compareUtf16(a, b, rules);
    require(forwards == -compareUtf16(b, a, rules));
    require(compareUtf16(a, a, rules) == 0);
    if (!rules.numeric)
        require(forwards == plainCompare(a, b, rules.equivalence));
    if (a == b)
        require(forwards == 0);
}

void search(std::u16string_view text, std::u16string_view sought, SearchRules rules)
{
    std::optional<TextRange> found = findText(text, sought, rules);
    if (!found)
        return;
    require(found->location + found->length <= text.size());
    require(
        compareUtf16(text.substr(found->location, found->length), sought, { rules.equivalence, false }) == 0);
}

void takeApart(std::u16string_view text)
{
    require(squeezedPath(squeezedPath(text)) == squeezedPath(text));
    (void)deletingPathExtension(text);
    (void)deletingLastPathComponent(text);
    if (auto escaped = addingPercentEscapes(text))
        require(replacingPercentEscapes(*escaped) == text);
    (void)replacingPercentEscapes(text);
}

}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    if (size < 5)
        return 0;
    unsigned options = data[0];
    std::u16string text((size - 1) / 2, u'\0');
    std::memcpy(text.data(), data + 1, text.size() * 2);
    std::u16string_view a = std::u16string_view(text).substr(0, text.size() / 2);
    std::u16string_view b = std::u16string_view(text).substr(text.size() / 2);

    Equivalence equivalence { (options & 1) != 0, (options & 2) != 0 };
    order(a, b, { equivalence, (options & 4) != 0 });
    search(text, b.substr(0, 3), { equivalence, (options & 8) != 0, (options & 16) != 0 });
    search(a, b, { equivalence, (options & 8) != 0, (options & 16) != 0 });
    (void)splitText(text, a.substr(0, 2));
    takeApart(text);
    return 0;
}
