#include "LUMPlatform/NSURLUtilities.h"

#include "platform/objects/method_tables.h"
#include "platform/strings/percent_escape.h"

namespace {

NSRef<NSString> stringOf(const std::optional<std::u16string>& text)
{
    return text ? NSString::stringWithCharacters(*text) : nullptr;
}

constexpr NSMethod kMethods[] = {
    NSMethodOf<"stringByAddingPercentEscapesUsingEncoding:",
        &NSURLUtilities::stringByAddingPercentEscapesUsingEncoding>(),
    NSMethodOf<"stringByReplacingPercentEscapesUsingEncoding:",
        &NSURLUtilities::stringByReplacingPercentEscapesUsingEncoding>(),
};

}

std::span<const NSMethod> platform::urlUtilityMethods()
{
    return kMethods;
}

NSRef<NSString> NSURLUtilities::stringByAddingPercentEscapesUsingEncoding(
    const NSRef<NSString>& text, NSStringEncoding encoding)
{
    if (!text || encoding != NSUTF8StringEncoding)
        return nullptr;
    return stringOf(platform::addingPercentEscapes(text->characters()));
}

NSRef<NSString> NSURLUtilities::stringByReplacingPercentEscapesUsingEncoding(
    const NSRef<NSString>& text, NSStringEncoding encoding)
{
    if (!text || encoding != NSUTF8StringEncoding)
        return nullptr;
    return stringOf(platform::replacingPercentEscapes(text->characters()));
}
