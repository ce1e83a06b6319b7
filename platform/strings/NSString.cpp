#include "LUMPlatform/NSString.h"

#include "LUMPlatform/NSArray.h"
#include "LUMPlatform/NSException.h"
#include "LUMPlatform/NSMutableString.h"
#include "platform/objects/keyed_hash.h"
#include "platform/strings/string_arguments.h"
#include "platform/strings/text_format.h"
#include "platform/strings/utf16_compare.h"
#include "platform/strings/utf_conversion.h"

#include <cstring>
#include <new>
#include <span>

namespace platform {

void requireRange(NSRange range, std::size_t length)
{
    if (range.location <= length && range.length <= length - range.location)
        return;
    throw NSException(NSRangeException,
        NSString::stringWithFormat(
            "range {%llu, %llu} is beyond the end of %zu characters", range.location, range.length, length));
}

NSRef<NSArray> arrayOf(std::span<const std::u16string_view> pieces)
{
    std::vector<NSId> strings;
    strings.reserve(pieces.size());
    for (std::u16string_view piece : pieces)
        strings.emplace_back(NSString::stringWithCharacters(piece));
    return NSArray::arrayWithObjects(std::move(strings));
}

}

namespace {

/// One memcmp; the comparison of the standard library goes unit by unit.
bool areSameUnits(std::u16string_view a, std::u16string_view b)
{
    return a.size() == b.size() && std::memcmp(a.data(), b.data(), a.size() * sizeof(char16_t)) == 0;
}

std::u16string descriptionOf(const NSObject& object)
{
    return std::u16string(platform::charactersOf(object.description()));
}

}

NSString::~NSString() = default;

/// Makes a string of `length` code units, which `fill` writes; null when it answers that it could not.
template<typename Fill> NSRef<NSString> NSString::make(std::size_t length, Fill fill)
{
    using Instance = NSInstance<NSString>;
    void* memory = ::operator new(sizeof(Instance) + length * sizeof(char16_t));
    auto* characters = reinterpret_cast<char16_t*>(static_cast<std::byte*>(memory) + sizeof(Instance));
    if (!fill(characters)) {
        ::operator delete(memory);
        return nullptr;
    }
    return NSAdopt<NSString>(::new (memory) Instance(std::u16string_view(characters, length)));
}

NSRef<NSString> NSString::string()
{
    return stringWithCharacters({});
}

NSRef<NSString> NSString::stringWithString(const NSRef<NSString>& text)
{
    return text ? NSCast<NSString>(text->copy()) : string();
}

NSRef<NSString> NSString::stringWithUTF8String(std::string_view utf8)
{
    return make(platform::utf16LengthOfWellFormed(utf8),
        [&](char16_t* out) { return platform::convertUtf8(utf8, out); });
}

NSRef<NSString> NSString::stringWithCharacters(std::u16string_view characters)
{
    return make(characters.size(), [&](char16_t* out) {
        characters.copy(out, characters.size());
        return true;
    });
}

NSRef<NSString> NSString::stringWithLength(
    NSUInteger length, const std::function<void(char16_t* characters)>& write)
{
    return make(length, [&](char16_t* out) {
        write(out);
        return true;
    });
}

NSRef<NSString> NSString::stringWithFormatArguments(
    const NSRef<NSString>& format, std::span<const NSFormatArgument> arguments)
{
    if (!format)
        return nullptr;
    constexpr std::size_t kUsualLength = 16;
    std::u16string text;
    text.reserve(format->length() + kUsualLength * arguments.size());
    platform::appendFormat(text, format->characters(), arguments, descriptionOf);
    return stringWithCharacters(text);
}

char16_t NSString::characterAtIndex(NSUInteger index) const
{
    if (index >= mLength)
        platform::requireRange({ index, 1 }, mLength);
    return mCharacters[index];
}

NSRef<NSString> NSString::substringFromIndex(NSUInteger index) const
{
    platform::requireRange({ index, 0 }, mLength);
    return substringWithRange({ index, mLength - index });
}

NSRef<NSString> NSString::substringToIndex(NSUInteger index) const
{
    return substringWithRange({ 0, index });
}

NSRef<NSString> NSString::substringWithRange(NSRange range) const
{
    platform::requireRange(range, mLength);
    return stringWithCharacters(characters().substr(range.location, range.length));
}

bool NSString::isEqualToString(const NSRef<NSString>& other) const
{
    return other && areSameUnits(other->characters(), characters());
}

bool NSString::isEqual(const NSId& other) const
{
    if (other.get() == this)
        return true;
    const NSString* string = NSDowncast<NSString>(other.get());
    return string && areSameUnits(string->characters(), characters());
}

NSUInteger NSString::hash() const
{
    return platform::keyedHash(std::as_bytes(std::span(characters())));
}

NSRef<NSString> NSString::description() const
{
    return NSCast<NSString>(copy());
}

NSId NSString::copy() const
{
    return NSShare(const_cast<NSString*>(this));
}

NSComparisonResult NSString::compare(const NSRef<NSString>& other) const
{
    return compareOptions(other, NSNoSearchOptions);
}

NSComparisonResult NSString::compareOptions(
    const NSRef<NSString>& other, NSStringCompareOptions options) const
{
    platform::ComparisonRules rules { platform::equivalenceOf(options), (options & NSNumericSearch) != 0 };
    int order = platform::compareUtf16(characters(), platform::charactersOf(other), rules);
    return static_cast<NSComparisonResult>(order);
}

NSComparisonResult NSString::caseInsensitiveCompare(const NSRef<NSString>& other) const
{
    return compareOptions(other, NSCaseInsensitiveSearch);
}

NSId NSString::mutableCopy() const
{
    return NSMake<NSMutableString>(characters());
}
