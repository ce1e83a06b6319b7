#include "LUMPlatform/NSArray.h"
#include "LUMPlatform/NSCharacterSet.h"
#include "platform/strings/character_set.h"
#include "platform/strings/number_scan.h"
#include "platform/strings/string_arguments.h"
#include "platform/strings/utf16_search.h"

#include <unicode/ustring.h>

namespace {

using platform::charactersOf;

platform::SearchRules rulesOf(NSStringCompareOptions options)
{
    return { platform::equivalenceOf(options), (options & NSBackwardsSearch) != 0,
        (options & NSAnchoredSearch) != 0 };
}

NSRange rangeOf(const std::optional<platform::TextRange>& found, NSUInteger offset)
{
    return found ? NSRange { found->location + offset, found->length } : NSRange { NSNotFound, 0 };
}

const platform::CharacterSet& membersOf(const NSRef<NSCharacterSet>& set)
{
    static const platform::CharacterSet kNone;
    return set ? set->characters() : kNone;
}

using CaseMapping = std::int32_t (*)(
    char16_t*, std::int32_t, const char16_t*, std::int32_t, const char*, UErrorCode*);

NSRef<NSString> mapped(std::u16string_view text, CaseMapping mapping)
{
    constexpr const char* kNoLocale = "";
    auto length = static_cast<std::int32_t>(text.size());
    std::u16string result(text.size() + 8, u'\0');
    for (;;) {
        UErrorCode error = U_ZERO_ERROR;
        auto room = static_cast<std::int32_t>(result.size());
        std::int32_t needed = mapping(result.data(), room, text.data(), length, kNoLocale, &error);
        result.resize(static_cast<std::size_t>(needed));
        if (error != U_BUFFER_OVERFLOW_ERROR)
            return NSString::stringWithCharacters(result);
    }
}

}

NSRange NSString::rangeOfString(const NSRef<NSString>& sought) const
{
    return rangeOfStringOptions(sought, NSNoSearchOptions);
}

NSRange NSString::rangeOfStringOptions(const NSRef<NSString>& sought, NSStringCompareOptions options) const
{
    return rangeOf(platform::findText(characters(), charactersOf(sought), rulesOf(options)), 0);
}

NSRange NSString::rangeOfStringOptionsRange(
    const NSRef<NSString>& sought, NSStringCompareOptions options, NSRange range) const
{
    platform::requireRange(range, length());
    std::u16string_view text = characters().substr(range.location, range.length);
    return rangeOf(platform::findText(text, charactersOf(sought), rulesOf(options)), range.location);
}

NSRange NSString::rangeOfCharacterFromSet(const NSRef<NSCharacterSet>& set) const
{
    return rangeOfCharacterFromSetOptions(set, NSNoSearchOptions);
}

NSRange NSString::rangeOfCharacterFromSetOptions(
    const NSRef<NSCharacterSet>& set, NSStringCompareOptions options) const
{
    // Deliberate: ignoring case has no effect on a set.
    return rangeOf(platform::findCharacter(characters(), membersOf(set), rulesOf(options)), 0);
}

bool NSString::hasPrefix(const NSRef<NSString>& prefix) const
{
    return rangeOfStringOptions(prefix, NSAnchoredSearch).location != NSNotFound;
}

bool NSString::hasSuffix(const NSRef<NSString>& suffix) const
{
    return rangeOfStringOptions(suffix, NSAnchoredSearch | NSBackwardsSearch).location != NSNotFound;
}

NSRef<NSArray> NSString::componentsSeparatedByString(const NSRef<NSString>& separator) const
{
    return platform::arrayOf(platform::splitText(characters(), charactersOf(separator)));
}

NSRef<NSString> NSString::stringByAppendingString(const NSRef<NSString>& text) const
{
    std::u16string joined(characters());
    joined += charactersOf(text);
    return stringWithCharacters(joined);
}

NSRef<NSString> NSString::stringByTrimmingCharactersInSet(const NSRef<NSCharacterSet>& set) const
{
    return stringWithCharacters(platform::trimmedText(characters(), membersOf(set)));
}

NSRef<NSString> NSString::lowercaseString() const
{
    return mapped(characters(), u_strToLower);
}

NSRef<NSString> NSString::uppercaseString() const
{
    return mapped(characters(), u_strToUpper);
}

int NSString::intValue() const
{
    return platform::intValue(characters());
}

NSInteger NSString::integerValue() const
{
    return platform::longLongValue(characters());
}

long long NSString::longLongValue() const
{
    return platform::longLongValue(characters());
}

double NSString::doubleValue() const
{
    return platform::doubleValue(characters());
}

float NSString::floatValue() const
{
    return static_cast<float>(platform::doubleValue(characters()));
}

bool NSString::boolValue() const
{
    return platform::boolValue(characters());
}
