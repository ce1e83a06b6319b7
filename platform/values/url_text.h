#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace platform {

// URLs as text, by RFC 3986: nothing here looks at the disk. All times are linear.

/// Longer texts are no URLs.
inline constexpr std::size_t kMaxUrlLength = std::size_t { 1 } << 20;

/// The parts of a URL or of a relative reference, as they stand in its text. A part that is there may be
/// empty.
struct UrlParts {
    std::optional<std::u16string_view> scheme;
    std::optional<std::u16string_view> authority; ///< [user@]host[:port]
    std::u16string_view path;
    std::optional<std::u16string_view> query;
    std::optional<std::u16string_view> fragment;
};

/// Null for text that is no URL: a character that may not stand where it stands (none beyond ASCII may), a
/// "%" without two hexadecimal digits, a host or port that is none, or too long. What stands before the first
/// ":" of a reference and is no scheme belongs to the path.
std::optional<UrlParts> parseUrl(std::u16string_view text);

/// Null when there is no authority. The brackets of an address belong to it.
std::optional<std::u16string_view> hostOf(const UrlParts& parts);

/// The text of `reference` as seen from `base`, which has a scheme; "." and ".." are worked out, except that
/// a path without a scheme and authority in front of it never comes to begin with "//".
std::u16string resolvedUrl(const UrlParts& base, const UrlParts& reference);

/// "a/b/../c" becomes "a/c"; a ".." that has nothing to take away is dropped.
std::u16string withoutDotSegments(std::u16string_view path);

/// Whether both name the same scheme or host: ASCII letters count in either case.
bool equalIgnoringCase(std::u16string_view a, std::u16string_view b);

}
