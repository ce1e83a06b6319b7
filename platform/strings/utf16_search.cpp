#include "platform/strings/utf16_search.h"

#include "platform/strings/code_points.h"
#include "platform/strings/number_scan.h"
#include "platform/strings/utf16_compare.h"

namespace platform {
namespace {

/// No text that is equivalent to another is this many times as long: decomposing and folding make at most
/// three units of one each, and at worst two of one on the other side are halved.
constexpr std::size_t kMostUnits = 36;

/// Where the occurrence of `sought` that begins at `start` ends, null when none does.
std::optional<std::size_t> matchEnd(
    std::u16string_view text, std::size_t start, std::u16string_view sought, Equivalence equivalence)
{
    Parting parting = walkInStep(text, start, sought, { equivalence, false });
    if (parting.kind != Parting::Kind::SecondEnds && parting.kind != Parting::Kind::BothEnd)
        return std::nullopt;
    if (equivalence.canonical && !isCombiningBoundary(text, parting.firstEnd))
        return std::nullopt;
    return parting.firstEnd;
}

std::optional<TextRange> found(std::size_t location, std::size_t end)
{
    return TextRange { location, end - location };
}

std::optional<TextRange> findUnits(std::u16string_view text, std::u16string_view sought, SearchRules rules)
{
    std::size_t location = std::u16string_view::npos;
    if (!rules.anchored)
        location = rules.backwards ? text.rfind(sought) : text.find(sought);
    else if (!rules.backwards && text.starts_with(sought))
        location = 0;
    else if (rules.backwards && text.ends_with(sought))
        location = text.size() - sought.size();
    if (location == std::u16string_view::npos)
        return std::nullopt;
    return TextRange { location, sought.size() };
}

/// Two different ASCII characters cannot begin the same text, whatever is ignored beyond case.
bool cannotBegin(char16_t here, char16_t wanted)
{
    return here != wanted && here < 0x80 && wanted < 0x80 && ((here ^ wanted) & ~0x20) != 0;
}

/// The next place where `wanted` or something beyond ASCII stands.
std::size_t skipOtherAscii(std::u16string_view text, std::size_t at, char16_t wanted)
{
    auto isCandidate = [=](char16_t unit) { return (unit >= 0x80) | (unit == wanted); };
    constexpr std::size_t kBlock = 16; // which the compiler looks at in one go
    for (; text.size() - at >= kBlock; at += kBlock) {
        bool found = false;
        for (std::size_t i = at; i < at + kBlock; ++i)
            found |= isCandidate(text[i]);
        if (found)
            break;
    }
    while (at < text.size() && !isCandidate(text[at]))
        ++at;
    return at;
}

}

std::optional<TextRange> findText(std::u16string_view text, std::u16string_view sought, SearchRules rules)
{
    if (sought.empty())
        return std::nullopt;
    if (!isCombiningBoundary(sought, 0))
        rules.equivalence.canonical = false;
    if (!rules.equivalence.canonical && !rules.equivalence.ignoresCase)
        return findUnits(text, sought, rules);

    auto matchAt = [&](std::size_t start) -> std::optional<std::size_t> {
        if (cannotBegin(text[start], sought[0]) || isInsidePair(text, start))
            return std::nullopt;
        return matchEnd(text, start, sought, rules.equivalence);
    };
    if (rules.anchored && !rules.backwards) {
        std::optional<std::size_t> end = text.empty() ? std::nullopt : matchAt(0);
        return end ? found(0, *end) : std::nullopt;
    }
    if (!rules.backwards) {
        for (std::size_t start = 0; start < text.size(); ++start) {
            if (sought[0] < 0x80 && !rules.equivalence.ignoresCase)
                start = skipOtherAscii(text, start, sought[0]);
            if (std::optional<std::size_t> end = start < text.size() ? matchAt(start) : std::nullopt)
                return found(start, *end);
        }
        return std::nullopt;
    }
    std::size_t first = 0;
    if (rules.anchored && sought.size() < text.size() / kMostUnits)
        first = text.size() - sought.size() * kMostUnits;
    for (std::size_t start = text.size(); start-- > first;) {
        std::optional<std::size_t> end = matchAt(start);
        if (end && (!rules.anchored || *end == text.size()))
            return found(start, *end);
    }
    return std::nullopt;
}

std::optional<TextRange> findCharacter(std::u16string_view text, const CharacterSet& set, SearchRules rules)
{
    auto memberAt = [&](std::size_t start) -> std::optional<TextRange> {
        std::size_t end = start;
        return set.contains(takeCodePoint(text, end)) ? found(start, end) : std::nullopt;
    };
    if (text.empty())
        return std::nullopt;
    if (rules.anchored)
        return memberAt(rules.backwards ? previousCodePoint(text, text.size()) : 0);
    if (rules.backwards) {
        for (std::size_t end = text.size(); end > 0; end = previousCodePoint(text, end))
            if (auto range = memberAt(previousCodePoint(text, end)))
                return range;
        return std::nullopt;
    }
    for (std::size_t start = 0; start < text.size(); start = nextCodePoint(text, start)) {
        if (auto range = memberAt(start))
            return range;
    }
    return std::nullopt;
}

std::vector<std::u16string_view> splitText(std::u16string_view text, std::u16string_view separator)
{
    std::vector<std::u16string_view> pieces;
    while (std::optional<TextRange> range = findText(text, separator, {})) {
        pieces.push_back(text.substr(0, range->location));
        text.remove_prefix(range->location + range->length);
    }
    pieces.push_back(text);
    return pieces;
}

std::u16string_view trimmedText(std::u16string_view text, const CharacterSet& set)
{
    text.remove_prefix(skipCharacters(text, 0, set));
    while (!text.empty()) {
        std::optional<TextRange> last = findCharacter(text, set, { {}, true, true });
        if (!last)
            break;
        text.remove_suffix(last->length);
    }
    return text;
}

}
