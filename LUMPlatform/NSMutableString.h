#pragma once

#include "LUMPlatform/NSString.h"

#include <array>
#include <string>
#include <string_view>

/// A text that can be changed in place.
///
/// Positions beyond the text raise NSRangeException and change nothing. Null texts are empty ones. Threads:
/// one at a time; a copy() is immutable and may be shared. A changed string changes its hash, so it must not
/// be a key while it changes.
///
///     NSRef<NSMutableString> line = NSMutableString::stringWithString("ls");
///     line->appendFormat(" \"%@\"", path);
class NS_EXPORT NSMutableString : public NSString {
public:
    static const NSClass& classObject();

    /// An empty string to fill.
    /// Selector: string
    static NSRef<NSMutableString> string();
    /// Selector: stringWithString:
    static NSRef<NSMutableString> stringWithString(const NSRef<NSString>& text);

    /// Selector: appendString:
    void appendString(const NSRef<NSString>& text);
    /// Appends what NSString::stringWithFormat makes; nothing for a null format.
    /// C++ form of appendFormat:
    template<typename... Arguments>
    void appendFormat(const NSRef<NSString>& format, const Arguments&... arguments)
    {
        const std::array<NSFormatArgument, sizeof...(Arguments)> list { NSFormatArgument(arguments)... };
        appendString(stringWithFormatArguments(format, list));
    }
    /// Selector: insertString:atIndex:
    void insertString(const NSRef<NSString>& text, NSUInteger index);
    /// Selector: deleteCharactersInRange:
    void deleteCharactersInRange(NSRange range);
    /// Selector: replaceCharactersInRange:withString:
    void replaceCharactersInRange(NSRange range, const NSRef<NSString>& text);
    /// Replaces every occurrence of `target` in `range`, from the beginning on and without overlaps, and
    /// answers how many there were. Options as in rangeOfString, of which backwards does not count.
    /// Selector: replaceOccurrencesOfString:withString:options:range:
    NSUInteger replaceOccurrencesOfString(const NSRef<NSString>& target, const NSRef<NSString>& replacement,
        NSStringCompareOptions options, NSRange range);
    /// Selector: setString:
    void setString(const NSRef<NSString>& text);

    NSId copy() const override;

protected:
    explicit NSMutableString(std::u16string_view text);
    ~NSMutableString() override;

private:
    template<typename Edit> auto edit(Edit edit);

    std::u16string mText; // What the base class points to.
};
