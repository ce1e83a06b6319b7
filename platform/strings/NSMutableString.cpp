#include "LUMPlatform/NSMutableString.h"

#include "LUMPlatform/NSClass.h"
#include "platform/strings/string_arguments.h"
#include "platform/strings/utf16_search.h"

namespace {

using platform::charactersOf;

constexpr NSMethod kMethods[] = {
    NSMethodOf<"appendString:", &NSMutableString::appendString>(),
    NSMethodOf<"insertString:atIndex:", &NSMutableString::insertString>(),
    NSMethodOf<"deleteCharactersInRange:", &NSMutableString::deleteCharactersInRange>(),
    NSMethodOf<"replaceCharactersInRange:withString:", &NSMutableString::replaceCharactersInRange>(),
    NSMethodOf<"replaceOccurrencesOfString:withString:options:range:",
        &NSMutableString::replaceOccurrencesOfString>(),
    NSMethodOf<"setString:", &NSMutableString::setString>(),
};

}

const NSClass& NSMutableString::classObject()
{
    static const NSClass& type = NSClass::define("NSMutableString", &NSString::classObject(), kMethods);
    return type;
}

NSMutableString::NSMutableString(std::u16string_view text) : NSString({}), mText(text)
{
    setCharacters(mText);
}

NSMutableString::~NSMutableString() = default;

/// Changes the text; the base class is told where it then is, even when the change throws.
template<typename Edit> auto NSMutableString::edit(Edit edit)
{
    struct Retold {
        NSMutableString& string;
        ~Retold() { string.setCharacters(string.mText); }
    } retold { *this };
    return edit();
}

NSRef<NSMutableString> NSMutableString::string()
{
    return NSMake<NSMutableString>(std::u16string_view());
}

NSRef<NSMutableString> NSMutableString::stringWithString(const NSRef<NSString>& text)
{
    return NSMake<NSMutableString>(charactersOf(text));
}

void NSMutableString::appendString(const NSRef<NSString>& text)
{
    edit([&] { mText.append(charactersOf(text)); });
}

void NSMutableString::insertString(const NSRef<NSString>& text, NSUInteger index)
{
    replaceCharactersInRange({ index, 0 }, text);
}

void NSMutableString::deleteCharactersInRange(NSRange range)
{
    replaceCharactersInRange(range, nullptr);
}

void NSMutableString::replaceCharactersInRange(NSRange range, const NSRef<NSString>& text)
{
    platform::requireRange(range, mText.size());
    edit([&] { mText.replace(range.location, range.length, charactersOf(text)); });
}

NSUInteger NSMutableString::replaceOccurrencesOfString(const NSRef<NSString>& target,
    const NSRef<NSString>& replacement, NSStringCompareOptions options, NSRange range)
{
    platform::requireRange(range, mText.size());
    platform::SearchRules rules { platform::equivalenceOf(options), false,
        (options & NSAnchoredSearch) != 0 };
    std::u16string_view rest = std::u16string_view(mText).substr(range.location, range.length);
    std::u16string replaced;
    NSUInteger count = 0;
    while (auto found = platform::findText(rest, charactersOf(target), rules)) {
        replaced.append(rest.substr(0, found->location));
        replaced.append(charactersOf(replacement));
        rest.remove_prefix(found->location + found->length);
        ++count;
    }
    replaced.append(rest);
    if (count != 0)
        edit([&] { mText.replace(range.location, range.length, replaced); });
    return count;
}

void NSMutableString::setString(const NSRef<NSString>& text)
{
    edit([&] { mText = std::u16string(charactersOf(text)); });
}

NSId NSMutableString::copy() const
{
    return stringWithCharacters(characters());
}
