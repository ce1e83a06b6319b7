// URLs: the parts of any text that is one make up that text again, and a reference seen from a base is a URL
// without dot segments. The first line of the input is the base, the rest the reference; bytes are UTF-16
// units.
#include "LUMPlatform/NSString.h"
#include "LUMPlatform/NSURL.h"
#include "fuzz/require.h"
#include "platform/values/url_text.h"

#include <algorithm>
#include <cstdint>

namespace {

std::u16string joined(const platform::UrlParts& parts)
{
    std::u16string text;
    if (parts.scheme)
        text.append(*parts.scheme).append(u":");
    if (parts.authority)
        text.append(u"//").append(*parts.authority);
    text.append(parts.path);
    if (parts.query)
        text.append(u"?").append(*parts.query);
    if (parts.fragment)
        text.append(u"#").append(*parts.fragment);
    return text;
}

void checkParts(std::u16string_view text)
{
    if (const auto parts = platform::parseUrl(text))
        require(joined(*parts) == text);
}

void checkObject(const NSRef<NSURL>& url)
{
    if (!url)
        return;
    require(url->absoluteURL()->isEqual(NSURL::URLWithString(url->absoluteString())));
    if (url->isFileReferenceURL())
        return; // looks at the disk
    const auto path = url->path();
    require(!path || path->length() < 2 || !path->characters().ends_with(u'/'));
    require(!path == !url->lastPathComponent());
}

}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const std::u16string text(data, data + size);
    const std::size_t line = std::min(text.find(u'\n'), text.size());
    const std::u16string_view first = std::u16string_view(text).substr(0, line);
    const std::u16string_view second = std::u16string_view(text).substr(std::min(line + 1, text.size()));
    checkParts(text);
    checkParts(first);
    checkParts(second);

    const auto base = platform::parseUrl(first);
    const auto reference = platform::parseUrl(second);
    if (base && base->scheme && reference) {
        const std::u16string resolved = platform::resolvedUrl(*base, *reference);
        const auto parts = platform::parseUrl(resolved);
        require(parts && parts->scheme);
        require(resolved.size() <= text.size() + 3);
    }
    const auto baseObject = NSURL::URLWithString(first);
    checkObject(baseObject);
    checkObject(NSURL::URLWithString(second, baseObject));
    return 0;
}
