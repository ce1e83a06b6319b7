#include "platform/values/url_text.h"

#include <algorithm>

namespace platform {

namespace {

using View = std::u16string_view;

constexpr View kUnreservedMarks = u"-._~";
constexpr View kSubDelimiters = u"!$&'()*+,;=";

bool isLetter(char16_t unit)
{
    return (unit >= 'a' && unit <= 'z') || (unit >= 'A' && unit <= 'Z');
}

bool isDigit(char16_t unit)
{
    return unit >= '0' && unit <= '9';
}

bool isHexDigit(char16_t unit)
{
    return isDigit(unit) || (unit >= 'a' && unit <= 'f') || (unit >= 'A' && unit <= 'F');
}

/// Whether a text consists of unreserved characters, sub-delimiters, escapes, and those in `more`.
bool isMadeOf(View text, View more)
{
    for (std::size_t i = 0; i < text.size(); ++i) {
        const char16_t unit = text[i];
        if (unit == u'%') {
            if (text.size() - i < 3 || !isHexDigit(text[i + 1]) || !isHexDigit(text[i + 2]))
                return false;
            i += 2;
        } else if (!isLetter(unit) && !isDigit(unit) && kUnreservedMarks.find(unit) == View::npos
            && kSubDelimiters.find(unit) == View::npos && more.find(unit) == View::npos)
            return false;
    }
    return true;
}

bool isScheme(View text)
{
    const auto follows = [](char16_t unit) {
        return isLetter(unit) || isDigit(unit) || unit == '+' || unit == '-' || unit == '.';
    };
    return !text.empty() && isLetter(text.front()) && std::all_of(text.begin(), text.end(), follows);
}

/// An address in brackets: of version 6, or "v", a number, "." and whatever that version is.
bool isAddress(View text)
{
    if (text.starts_with(u'v') || text.starts_with(u'V')) {
        const std::size_t stop = std::min(text.find(u'.'), text.size());
        const View number = text.substr(1, stop - 1);
        const View rest = text.substr(stop);
        return !number.empty() && std::all_of(number.begin(), number.end(), isHexDigit) && rest.size() > 1
            && rest.find(u'%') == View::npos && isMadeOf(rest, u":");
    }
    const auto belongs = [](char16_t unit) { return isHexDigit(unit) || unit == ':' || unit == '.'; };
    return std::count(text.begin(), text.end(), u':') >= 2 && std::all_of(text.begin(), text.end(), belongs);
}

View withoutUser(View authority)
{
    const std::size_t at = authority.rfind(u'@');
    return at == View::npos ? authority : authority.substr(at + 1);
}

/// Where the host ends and ":" and the port begin, or the end.
std::size_t endOfHost(View hostAndPort)
{
    const std::size_t from = hostAndPort.starts_with(u'[') ? hostAndPort.find(u']') : 0;
    return from == View::npos ? hostAndPort.size()
                              : std::min(hostAndPort.find(u':', from), hostAndPort.size());
}

bool isAuthority(View authority)
{
    const View hostAndPort = withoutUser(authority);
    if (hostAndPort.size() < authority.size()) {
        const View user = authority.substr(0, authority.size() - hostAndPort.size() - 1);
        if (!isMadeOf(user, u":"))
            return false;
    }
    const std::size_t end = endOfHost(hostAndPort);
    const View host = hostAndPort.substr(0, end);
    const View port = hostAndPort.substr(std::min(end + 1, hostAndPort.size()));
    if (!std::all_of(port.begin(), port.end(), isDigit))
        return false;
    if (!host.starts_with(u'['))
        return isMadeOf(host, u"");
    return host.size() > 1 && host.ends_with(u']') && isAddress(host.substr(1, host.size() - 2));
}

/// The path of a reference that has neither scheme nor authority, after the base's. RFC 3986, 5.2.3.
std::u16string mergedPath(const UrlParts& base, View path)
{
    if (base.authority && base.path.empty())
        return u"/" + std::u16string(path);
    const std::size_t slash = base.path.rfind(u'/');
    return std::u16string(base.path.substr(0, slash == View::npos ? 0 : slash + 1)) + std::u16string(path);
}

std::u16string composed(const UrlParts& parts)
{
    std::u16string text;
    if (parts.scheme)
        text.append(*parts.scheme).push_back(u':');
    if (parts.authority)
        text.append(u"//").append(*parts.authority);
    else if (parts.path.starts_with(u"//"))
        text.append(u"/."); // else what follows would be an authority
    text.append(parts.path);
    if (parts.query)
        text.append(u"?").append(*parts.query);
    if (parts.fragment)
        text.append(u"#").append(*parts.fragment);
    return text;
}

}

std::optional<UrlParts> parseUrl(std::u16string_view text)
{
    if (text.size() > kMaxUrlLength)
        return std::nullopt;
    UrlParts parts;
    View rest = text;
    if (const std::size_t mark = rest.find(u'#'); mark != View::npos) {
        parts.fragment = rest.substr(mark + 1);
        rest = rest.substr(0, mark);
    }
    if (const std::size_t mark = rest.find(u'?'); mark != View::npos) {
        parts.query = rest.substr(mark + 1);
        rest = rest.substr(0, mark);
    }
    if (const std::size_t mark = rest.find(u':'); mark != View::npos && isScheme(rest.substr(0, mark))) {
        parts.scheme = rest.substr(0, mark);
        rest = rest.substr(mark + 1);
    }
    if (rest.starts_with(u"//")) {
        const std::size_t end = std::min(rest.find(u'/', 2), rest.size());
        parts.authority = rest.substr(2, end - 2);
        rest = rest.substr(end);
    }
    parts.path = rest;
    const bool isGood = (!parts.authority || isAuthority(*parts.authority)) && isMadeOf(parts.path, u":@/")
        && isMadeOf(parts.query.value_or(View()), u":@/?")
        && isMadeOf(parts.fragment.value_or(View()), u":@/?");
    return isGood ? std::optional(parts) : std::nullopt;
}

std::optional<std::u16string_view> hostOf(const UrlParts& parts)
{
    if (!parts.authority)
        return std::nullopt;
    const View hostAndPort = withoutUser(*parts.authority);
    return hostAndPort.substr(0, endOfHost(hostAndPort));
}

std::u16string withoutDotSegments(std::u16string_view path)
{
    while (path.starts_with(u"./") || path.starts_with(u"../"))
        path.remove_prefix(path.find(u'/') + 1);
    if (path == u"." || path == u"..")
        return {};
    std::u16string result;
    result.reserve(path.size());
    // Each turn takes one segment with the slash in front of it.
    for (std::size_t at = 0; at < path.size();) {
        const std::size_t begin = path[at] == u'/' ? at + 1 : at;
        const std::size_t end = std::min(path.find(u'/', begin), path.size());
        const View segment = path.substr(begin, end - begin);
        const bool isLast = end == path.size();
        if (segment == u"..") {
            const std::size_t slash = result.rfind(u'/');
            result.resize(slash == std::u16string::npos ? 0 : slash);
        }
        if (segment == u"." || segment == u"..") {
            if (isLast && begin > at)
                result.push_back(u'/'); // what it names is a folder
        } else
            result.append(path.substr(at, end - at));
        at = end;
    }
    return result;
}

std::u16string resolvedUrl(const UrlParts& base, const UrlParts& reference)
{
    UrlParts target = reference;
    std::u16string path;
    if (!reference.scheme) {
        target.scheme = base.scheme;
        if (!reference.authority) {
            target.authority = base.authority;
            if (reference.path.empty()) {
                target.path = base.path;
                if (!reference.query)
                    target.query = base.query;
                return composed(target);
            }
            if (!reference.path.starts_with(u'/')) {
                path = mergedPath(base, reference.path);
                target.path = path;
            }
        }
    }
    const std::u16string plain = withoutDotSegments(target.path);
    target.path = plain;
    return composed(target);
}

bool equalIgnoringCase(std::u16string_view a, std::u16string_view b)
{
    const auto folded = [](char16_t unit) -> char16_t {
        return unit >= 'A' && unit <= 'Z' ? static_cast<char16_t>(unit - 'A' + 'a') : unit;
    };
    return std::equal(a.begin(), a.end(), b.begin(), b.end(),
        [&](char16_t x, char16_t y) { return folded(x) == folded(y); });
}

}
