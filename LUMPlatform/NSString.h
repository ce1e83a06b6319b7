#pragma once

#include "LUMPlatform/NSFormatArgument.h"
#include "LUMPlatform/NSObject.h"

#include <array>
#include <functional>
#include <span>
#include <string>
#include <string_view>

class NSArray;
class NSCharacterSet;
class NSData;

/// How strings are compared and searched; combined by "|". Nothing here depends on a locale.
///
/// Without NSLiteralSearch canonically equivalent texts are the same: e + U+0301 is U+00E9.
enum NSStringCompareOptions : NSUInteger {
    NSNoSearchOptions = 0,
    NSCaseInsensitiveSearch = 1, ///< Full case folding: U+00DF is "ss".
    NSLiteralSearch = 2, ///< Unit by unit.
    NSBackwardsSearch = 4, ///< Searches find the last occurrence.
    NSAnchoredSearch = 8, ///< Searches look at the beginning only, or at the end when backwards.
    NSNumericSearch = 64, ///< Comparisons take runs of ASCII digits by value, modulo 2 to the power 64.
};
constexpr NSStringCompareOptions operator|(NSStringCompareOptions a, NSStringCompareOptions b)
{
    return static_cast<NSStringCompareOptions>(static_cast<NSUInteger>(a) | static_cast<NSUInteger>(b));
}

/// How text is laid out in bytes.
enum NSStringEncoding : NSUInteger {
    NSASCIIStringEncoding = 1,
    NSUTF8StringEncoding = 4,
    NSMacOSRomanStringEncoding = 30,
};

/// An immutable text of UTF-16 code units.
///
/// Every index, length and range counts code units. A string is made implicitly from UTF-8 and from UTF-16:
///
///     NSRef<NSString> name = "Take 1.aif";
///     if (name->pathExtension()->isEqualToString("aif"))
///         std::cout << name->stringByDeletingPathExtension();
///
/// UTF-8 that is ill-formed makes a null string. Surrogates without a partner are kept, and become U+FFFD in
/// utf8(). Indices and ranges beyond the text raise NSRangeException. Null arguments are empty texts to the
/// operations that take a text, unless they say otherwise. Threads: any, since a string never changes;
/// NSMutableString is the exception.
class NS_EXPORT NSString : public NSObject {
public:
    static const NSClass& classObject();

    /// The empty string.
    /// Selector: string
    static NSRef<NSString> string();
    /// Selector: stringWithString:
    static NSRef<NSString> stringWithString(const NSRef<NSString>& text);
    /// Null when `utf8` is ill-formed.
    /// Selector: stringWithUTF8String:
    static NSRef<NSString> stringWithUTF8String(std::string_view utf8);
    /// Selector: stringWithCharacters:length:
    static NSRef<NSString> stringWithCharacters(std::u16string_view characters);
    /// A text of `length` units that `write` writes to where they stay; it must write them all.
    static NSRef<NSString> stringWithLength(
        NSUInteger length, const std::function<void(char16_t* characters)>& write);
    /// `format` with its conversions replaced by the arguments in turn; null when `format` is null.
    ///
    /// A conversion is "%", then any of the flags "-+ 0#", a width, "." and a precision, a length modifier,
    /// and a letter, as in C: d i u x X o; f F e E g G; c (one byte), C (one UTF-16 unit); s (a text in
    /// UTF-8); p; and %% for itself. %@ is description() of an object, "(null)" for null, and takes a text or
    /// a number as well. "*" takes a width or precision from the arguments. The separator is always ".", and
    /// there is no grouping.
    ///
    /// Arguments carry their types, so nothing is undefined: an integer is never cut to a narrower type
    /// except by h and hh, numbers convert into each other (towards zero, within the limits), and a
    /// conversion without a suitable argument, or of a letter that is none of these, stands in the result as
    /// it is. Bytes that are not UTF-8 are read as Mac OS Roman. A width or precision counts up to 65535. %#f
    /// is %f.
    ///
    ///     auto line = NSString::stringWithFormat("%@: %.1f of %lld", name, 0.5, count);
    ///
    /// Selector: stringWithFormat:
    template<typename... Arguments>
    static NSRef<NSString> stringWithFormat(const NSRef<NSString>& format, const Arguments&... arguments)
    {
        const std::array<NSFormatArgument, sizeof...(Arguments)> list { NSFormatArgument(arguments)... };
        return stringWithFormatArguments(format, list);
    }
    /// The text of `data`; null when that is null or no text in `encoding`.
    /// Selector: initWithData:encoding:
    static NSRef<NSString> initWithData(const NSRef<NSData>& data, NSStringEncoding encoding);
    /// The same with a list of arguments.
    /// Selector: initWithFormat:arguments:
    static NSRef<NSString> stringWithFormatArguments(
        const NSRef<NSString>& format, std::span<const NSFormatArgument> arguments);

    /// Selector: length
    NSUInteger length() const { return mLength; }
    /// Selector: characterAtIndex:
    char16_t characterAtIndex(NSUInteger index) const;
    /// All of the text, without a copy; valid while this object lives and does not change.
    std::u16string_view characters() const { return { mCharacters, mLength }; }
    /// C++ form of UTF8String
    std::string utf8() const;

    /// Selector: substringFromIndex:
    NSRef<NSString> substringFromIndex(NSUInteger index) const;
    /// Selector: substringToIndex:
    NSRef<NSString> substringToIndex(NSUInteger index) const;
    /// Selector: substringWithRange:
    NSRef<NSString> substringWithRange(NSRange range) const;

    /// The same code units: canonical equivalents are not equal here. False for null.
    /// Selector: isEqualToString:
    bool isEqualToString(const NSRef<NSString>& other) const;
    bool isEqual(const NSId& other) const override;
    NSUInteger hash() const override;
    NSRef<NSString> description() const override;
    NSId copy() const override;
    NSId mutableCopy() const override;

    /// By code point after decomposition; a prefix is smaller. Equal are canonical equivalents too. Linear.
    /// Selector: compare:
    NSComparisonResult compare(const NSRef<NSString>& other) const;
    /// The order under `options`, of which backwards and anchored do not count. It is a total order of
    /// classes of texts that compare equal, so it may sort.
    /// Selector: compare:options:
    NSComparisonResult compareOptions(const NSRef<NSString>& other, NSStringCompareOptions options) const;
    /// Selector: caseInsensitiveCompare:
    NSComparisonResult caseInsensitiveCompare(const NSRef<NSString>& other) const;

    /// Where `sought` occurs; {NSNotFound, 0} when it does not, and always for an empty or null `sought`.
    ///
    /// Unless literal, the range may be of another length than `sought`, and it never ends in front of a
    /// combining mark: "e" is not in "e" + U+0301.
    /// Selector: rangeOfString:
    NSRange rangeOfString(const NSRef<NSString>& sought) const;
    /// Selector: rangeOfString:options:
    NSRange rangeOfStringOptions(const NSRef<NSString>& sought, NSStringCompareOptions options) const;
    /// Looks at `range` only.
    /// Selector: rangeOfString:options:range:
    NSRange rangeOfStringOptionsRange(
        const NSRef<NSString>& sought, NSStringCompareOptions options, NSRange range) const;
    /// The first character that is in `set`, of length 2 for a surrogate pair; {NSNotFound, 0} when there is
    /// none.
    /// Selector: rangeOfCharacterFromSet:
    NSRange rangeOfCharacterFromSet(const NSRef<NSCharacterSet>& set) const;
    /// Deliberate: ignoring case has no effect on a set, as callers count on.
    /// Selector: rangeOfCharacterFromSet:options:
    NSRange rangeOfCharacterFromSetOptions(
        const NSRef<NSCharacterSet>& set, NSStringCompareOptions options) const;
    /// False for an empty or null text, which is found nowhere.
    /// Selector: hasPrefix:
    bool hasPrefix(const NSRef<NSString>& prefix) const;
    /// False for an empty or null text.
    /// Selector: hasSuffix:
    bool hasSuffix(const NSRef<NSString>& suffix) const;

    /// The pieces between the occurrences of `separator`, empty ones included: "a..b" by "." is "a", "", "b".
    /// One piece, all of it, when the separator is empty, null or not there.
    /// Selector: componentsSeparatedByString:
    NSRef<NSArray> componentsSeparatedByString(const NSRef<NSString>& separator) const;

    /// Selector: stringByAppendingString:
    NSRef<NSString> stringByAppendingString(const NSRef<NSString>& text) const;
    /// Appends what stringWithFormat makes; nothing for a null format.
    /// C++ form of stringByAppendingFormat:
    template<typename... Arguments>
    NSRef<NSString> stringByAppendingFormat(
        const NSRef<NSString>& format, const Arguments&... arguments) const
    {
        return stringByAppendingString(stringWithFormat(format, arguments...));
    }
    /// Without the members of `set` at both ends.
    /// Selector: stringByTrimmingCharactersInSet:
    NSRef<NSString> stringByTrimmingCharactersInSet(const NSRef<NSCharacterSet>& set) const;
    /// By the mapping of Unicode without a locale, which may change the length.
    /// Selector: lowercaseString
    NSRef<NSString> lowercaseString() const;
    /// U+00DF becomes "SS".
    /// Selector: uppercaseString
    NSRef<NSString> uppercaseString() const;

    /// The integer at the head, white space before it skipped and anything after it ignored; 0 without one.
    /// Beyond the limits of the type it is the limit. Only ASCII digits count, in base ten.
    /// Selector: intValue
    int intValue() const;
    /// Selector: integerValue
    NSInteger integerValue() const;
    /// Selector: longLongValue
    long long longLongValue() const;
    /// The number at the head, likewise: [+-] digits [. digits], then an exponent if there are digits in it.
    /// Correctly rounded; infinite when too large.
    /// Selector: doubleValue
    double doubleValue() const;
    /// doubleValue() as the nearest float.
    /// Selector: floatValue
    float floatValue() const;
    /// True when white space is followed by T, t, Y or y, or by an optional sign, zeros, and a digit other
    /// than 0, with white space allowed between these. "0.5", "no" and "on" are false.
    /// Selector: boolValue
    bool boolValue() const;

    // Paths. Only "/" separates. Results have single slashes and no trailing one, except the root.

    /// Begins with "/" or "~".
    /// Selector: isAbsolutePath
    bool isAbsolutePath() const;
    /// The names from the root on; "/" stands for a leading and for a trailing slash: "/a/" is "/", "a", "/".
    /// Selector: pathComponents
    NSRef<NSArray> pathComponents() const;
    /// Joins strings to a path. Raises NSInvalidArgumentException for an element that is none.
    /// Selector: pathWithComponents:
    static NSRef<NSString> pathWithComponents(const NSRef<NSArray>& components);
    /// The name; "/" of the root, empty of the empty path.
    /// Selector: lastPathComponent
    NSRef<NSString> lastPathComponent() const;
    /// What follows the last full stop of the name, unless that begins the name.
    /// Selector: pathExtension
    NSRef<NSString> pathExtension() const;
    /// "/" stays; a lone name gives the empty path.
    /// Selector: stringByDeletingLastPathComponent
    NSRef<NSString> stringByDeletingLastPathComponent() const;
    /// "a." loses its full stop.
    /// Selector: stringByDeletingPathExtension
    NSRef<NSString> stringByDeletingPathExtension() const;
    /// "." and ".." are kept.
    /// Selector: stringByAppendingPathComponent:
    NSRef<NSString> stringByAppendingPathComponent(const NSRef<NSString>& component) const;
    /// This path for an empty or null extension. Null for one that begins with "/", and when there is no name
    /// to extend: the empty path and the root.
    /// Selector: stringByAppendingPathExtension:
    NSRef<NSString> stringByAppendingPathExtension(const NSRef<NSString>& extension) const;
    /// Replaces a leading "~" or "~user" by that home directory; unchanged when there is none.
    /// Selector: stringByExpandingTildeInPath
    NSRef<NSString> stringByExpandingTildeInPath() const;
    /// Expands a tilde and drops "."; an absolute path also loses ".." and its symbolic links, as far as it
    /// exists. Looks at the disk.
    /// Selector: stringByStandardizingPath
    NSRef<NSString> stringByStandardizingPath() const;
    /// The bytes that the file system knows this path by: utf8().
    /// C++ form of fileSystemRepresentation
    std::string fileSystemRepresentation() const;

    /// Whether every character has bytes in `encoding`. Canonical equivalents are not tried.
    /// Selector: canBeConvertedToEncoding:
    bool canBeConvertedToEncoding(NSStringEncoding encoding) const;
    /// The bytes of the text, without a byte order mark; null when a character has none.
    /// Selector: dataUsingEncoding:
    NSRef<NSData> dataUsingEncoding(NSStringEncoding encoding) const;
    /// Writes the text and a terminating zero to `buffer`, of `maxLength` bytes. False when there is no room
    /// for all of it or a character has no bytes; then the characters before that are there, terminated.
    /// C++ form of getCString:maxLength:encoding:
    bool getCString(char* buffer, NSUInteger maxLength, NSStringEncoding encoding) const;

    // A string and its characters are one allocation, of a size the compiler does not know.
    static void operator delete(void* memory) { ::operator delete(memory); }

protected:
    /// `characters` outlives the object or is changed by setCharacters.
    explicit NSString(std::u16string_view characters)
        : mCharacters(characters.data()), mLength(characters.size())
    {
    }
    ~NSString() override;

    void setCharacters(std::u16string_view characters)
    {
        mCharacters = characters.data();
        mLength = characters.size();
    }

private:
    template<typename Fill> static NSRef<NSString> make(std::size_t length, Fill fill);

    const char16_t* mCharacters;
    std::size_t mLength;
};

template<> struct NSBoxing<NSString> {
    static NSRef<NSString> box(const char* utf8)
    {
        return utf8 ? NSString::stringWithUTF8String(utf8) : nullptr;
    }
    static NSRef<NSString> box(std::string_view utf8) { return NSString::stringWithUTF8String(utf8); }
    static NSRef<NSString> box(std::u16string_view characters)
    {
        return NSString::stringWithCharacters(characters);
    }
};
