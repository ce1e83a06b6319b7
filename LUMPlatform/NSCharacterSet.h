#pragma once

#include "LUMPlatform/NSObject.h"

#include <memory>

namespace platform {
class CharacterSet;
}

/// An immutable set of characters (code points), to search, split and trim strings by.
///
///     auto name = text->stringByTrimmingCharactersInSet(NSCharacterSet::whitespaceCharacterSet());
///
/// The named sets are always the same objects and cost nothing to ask for. A look-up takes one bit test for
/// an ASCII character and a binary search for others. Threads: any.
class NS_EXPORT NSCharacterSet : public NSObject {
public:
    static const NSClass& classObject();

    /// Horizontal space: tab, space, U+00A0 and the other space separators, and U+200B. No line breaks.
    /// Selector: whitespaceCharacterSet
    static NSRef<NSCharacterSet> whitespaceCharacterSet();
    /// The same and U+000A to U+000D, U+0085, U+2028, U+2029.
    /// Selector: whitespaceAndNewlineCharacterSet
    static NSRef<NSCharacterSet> whitespaceAndNewlineCharacterSet();
    /// Control and format characters, line feed and tab among them.
    /// Selector: controlCharacterSet
    static NSRef<NSCharacterSet> controlCharacterSet();
    /// The lower-case letters of every script.
    /// Selector: lowercaseLetterCharacterSet
    static NSRef<NSCharacterSet> lowercaseLetterCharacterSet();
    /// The decimal digits of every script, not only 0 to 9.
    /// Selector: decimalDigitCharacterSet
    static NSRef<NSCharacterSet> decimalDigitCharacterSet();
    /// The characters of a text; the empty set for null.
    /// Selector: characterSetWithCharactersInString:
    static NSRef<NSCharacterSet> characterSetWithCharactersInString(const NSRef<NSString>& text);
    /// `range.length` code points from `range.location` on, as far as there are any.
    /// Selector: characterSetWithRange:
    static NSRef<NSCharacterSet> characterSetWithRange(NSRange range);

    /// All characters that are not in this set.
    /// Selector: invertedSet
    NSRef<NSCharacterSet> invertedSet() const;

    /// Whether one code unit is a member: surrogates are only of sets that hold them alone.
    /// Selector: characterIsMember:
    bool characterIsMember(char16_t character) const;
    /// Whether a code point is a member.
    /// Selector: longCharacterIsMember:
    bool longCharacterIsMember(char32_t character) const;

    /// The same members, however the sets were made.
    bool isEqual(const NSId& other) const override;
    NSUInteger hash() const override;
    NSId copy() const override;

    /// The members, for the operations of NSString.
    const platform::CharacterSet& characters() const { return *mCharacters; }

protected:
    explicit NSCharacterSet(platform::CharacterSet characters);
    ~NSCharacterSet() override;

private:
    const std::unique_ptr<const platform::CharacterSet> mCharacters;
};
