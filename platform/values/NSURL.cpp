#include "platform/values/NSURL_internal.h"

#include "LUMPlatform/NSClass.h"

namespace {

constexpr NSMethod kMethods[] = {
    NSMethodOf<"relativeString", &NSURL::relativeString>(),
    NSMethodOf<"baseURL", &NSURL::baseURL>(),
    NSMethodOf<"absoluteString", &NSURL::absoluteString>(),
    NSMethodOf<"absoluteURL", &NSURL::absoluteURL>(),
    NSMethodOf<"scheme", &NSURL::scheme>(),
    NSMethodOf<"host", &NSURL::host>(),
    NSMethodOf<"query", &NSURL::query>(),
    NSMethodOf<"fragment", &NSURL::fragment>(),
    NSMethodOf<"isFileURL", &NSURL::isFileURL>(),
    NSMethodOf<"isFileReferenceURL", &NSURL::isFileReferenceURL>(),
    NSMethodOf<"path", &NSURL::path>(),
    NSMethodOf<"lastPathComponent", &NSURL::lastPathComponent>(),
    NSMethodOf<"pathExtension", &NSURL::pathExtension>(),
    NSMethodOf<"filePathURL", &NSURL::filePathURL>(),
    NSMethodOf<"fileReferenceURL", &NSURL::fileReferenceURL>(),
};

NSRef<NSString> stringOf(const std::optional<std::u16string_view>& part)
{
    return part ? NSString::stringWithCharacters(*part) : nullptr;
}

}

const NSClass& NSURL::classObject()
{
    static const NSClass& type = NSClass::define("NSURL", &NSObject::classObject(), kMethods);
    return type;
}

NSURL::NSURL(std::unique_ptr<const Content> content) : mContent(std::move(content)) { }

NSURL::~NSURL() = default;

NSRef<NSURL> NSURL::whole(const NSRef<NSString>& text)
{
    const auto parts = platform::parseUrl(text->characters());
    if (!parts)
        return nullptr;
    return NSMake<NSURL>(std::make_unique<Content>(Content { text, nullptr, text, *parts }));
}

NSRef<NSURL> NSURL::URLWithString(const NSRef<NSString>& text, const NSRef<NSURL>& base)
{
    if (!text || (text->length() == 0 && !base))
        return nullptr;
    const auto relative = NSCast<NSString>(text->copy()); // a mutable text may change later
    const auto reference = platform::parseUrl(relative->characters());
    if (!reference)
        return nullptr;
    if (!base || reference->scheme)
        return whole(relative);
    const auto from = base->absoluteURL();
    if (!from->mContent->parts.scheme)
        return nullptr;
    const auto absolute =
        NSString::stringWithCharacters(platform::resolvedUrl(from->mContent->parts, *reference));
    const auto parts = platform::parseUrl(absolute->characters()); // together they may be too long
    if (!parts)
        return nullptr;
    return NSMake<NSURL>(std::make_unique<Content>(Content { relative, from, absolute, *parts }));
}

NSRef<NSString> NSURL::relativeString() const
{
    return mContent->relative;
}

NSRef<NSURL> NSURL::baseURL() const
{
    return mContent->base;
}

NSRef<NSString> NSURL::absoluteString() const
{
    return mContent->absolute;
}

NSRef<NSURL> NSURL::absoluteURL() const
{
    return mContent->base ? whole(mContent->absolute) : NSShare(const_cast<NSURL*>(this));
}

NSRef<NSString> NSURL::scheme() const
{
    return stringOf(mContent->parts.scheme);
}

NSRef<NSString> NSURL::host() const
{
    return stringOf(platform::hostOf(mContent->parts));
}

NSRef<NSString> NSURL::query() const
{
    return stringOf(mContent->parts.query);
}

NSRef<NSString> NSURL::fragment() const
{
    return stringOf(mContent->parts.fragment);
}

NSRef<NSString> NSURL::lastPathComponent() const
{
    const auto whole = path();
    return whole ? whole->lastPathComponent() : nullptr;
}

NSRef<NSString> NSURL::pathExtension() const
{
    const auto whole = path();
    return whole ? whole->pathExtension() : nullptr;
}

bool NSURL::isEqual(const NSId& other) const
{
    const auto url = NSCast<NSURL>(other);
    return url && mContent->relative->isEqualToString(url->mContent->relative)
        && NSEqual(mContent->base, url->mContent->base);
}

NSUInteger NSURL::hash() const
{
    return mContent->absolute->hash();
}

NSRef<NSString> NSURL::description() const
{
    if (!mContent->base)
        return mContent->relative;
    return NSString::stringWithFormat("%@ -- %@", mContent->relative, mContent->base);
}

NSId NSURL::copy() const
{
    return NSShare(const_cast<NSURL*>(this));
}
