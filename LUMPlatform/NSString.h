#pragma once

#include "LUMPlatform/NSObject.h"

#include <string>
#include <string_view>

/// An immutable text of UTF-16 code units.
class NS_EXPORT NSString : public NSObject {
public:
    static const NSClass& classObject();

    static NSRef<NSString> stringWithUTF8String(std::string_view text);
    std::string utf8() const { return mText; }
    bool isEqual(const NSId& other) const override;
    NSUInteger hash() const override;
    NSRef<NSString> description() const override;

protected:
    explicit NSString(std::string_view text) : mText(text) { }
    ~NSString() override = default;

private:
    std::string mText;
};

template<> struct NSBoxing<NSString> {
    static NSRef<NSString> box(const char* text)
    {
        return text ? NSString::stringWithUTF8String(text) : nullptr;
    }
    static NSRef<NSString> box(std::string_view text) { return NSString::stringWithUTF8String(text); }
    static NSRef<NSString> box(const std::string& text) { return NSString::stringWithUTF8String(text); }
};
