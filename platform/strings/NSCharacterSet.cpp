#include "LUMPlatform/NSCharacterSet.h"

#include "LUMPlatform/NSClass.h"
#include "platform/objects/live_objects.h"
#include "platform/strings/character_set.h"
#include "platform/strings/string_arguments.h"

#include <algorithm>

namespace {

using platform::CharacterSet;

constexpr NSMethod kMethods[] = {
    NSMethodOf<"invertedSet", &NSCharacterSet::invertedSet>(),
    NSMethodOf<"characterIsMember:", &NSCharacterSet::characterIsMember>(),
    NSMethodOf<"longCharacterIsMember:", &NSCharacterSet::longCharacterIsMember>(),
};

/// The one object for a set that lives as long as the process.
template<const CharacterSet& (*Named)()> NSRef<NSCharacterSet> sharedSet()
{
    static NSCharacterSet* const shared = platform::makeImmortal(NSMake<NSCharacterSet>(Named()));
    return NSShare(shared);
}

}

const NSClass& NSCharacterSet::classObject()
{
    static const NSClass& type = NSClass::define("NSCharacterSet", &NSObject::classObject(), kMethods);
    return type;
}

NSCharacterSet::NSCharacterSet(CharacterSet characters)
    : mCharacters(std::make_unique<const CharacterSet>(std::move(characters)))
{
}

NSCharacterSet::~NSCharacterSet() = default;

NSRef<NSCharacterSet> NSCharacterSet::whitespaceCharacterSet()
{
    return sharedSet<CharacterSet::whitespace>();
}

NSRef<NSCharacterSet> NSCharacterSet::whitespaceAndNewlineCharacterSet()
{
    return sharedSet<CharacterSet::whitespaceAndNewline>();
}

NSRef<NSCharacterSet> NSCharacterSet::controlCharacterSet()
{
    return sharedSet<CharacterSet::control>();
}

NSRef<NSCharacterSet> NSCharacterSet::lowercaseLetterCharacterSet()
{
    return sharedSet<CharacterSet::lowercaseLetter>();
}

NSRef<NSCharacterSet> NSCharacterSet::decimalDigitCharacterSet()
{
    return sharedSet<CharacterSet::decimalDigit>();
}

NSRef<NSCharacterSet> NSCharacterSet::characterSetWithCharactersInString(const NSRef<NSString>& text)
{
    return NSMake<NSCharacterSet>(CharacterSet::withCharacters(platform::charactersOf(text)));
}

NSRef<NSCharacterSet> NSCharacterSet::characterSetWithRange(NSRange range)
{
    auto first = static_cast<char32_t>(std::min<NSUInteger>(range.location, UINT32_MAX));
    return NSMake<NSCharacterSet>(CharacterSet::withRange(first, range.length));
}

NSRef<NSCharacterSet> NSCharacterSet::invertedSet() const
{
    return NSMake<NSCharacterSet>(mCharacters->inverted());
}

bool NSCharacterSet::characterIsMember(char16_t character) const
{
    return mCharacters->contains(character);
}

bool NSCharacterSet::longCharacterIsMember(char32_t character) const
{
    return mCharacters->contains(character);
}

bool NSCharacterSet::isEqual(const NSId& other) const
{
    const NSCharacterSet* set = NSDowncast<NSCharacterSet>(other.get());
    return set && *set->mCharacters == *mCharacters;
}

NSUInteger NSCharacterSet::hash() const
{
    return mCharacters->hash();
}

NSId NSCharacterSet::copy() const
{
    return NSShare(const_cast<NSCharacterSet*>(this));
}
