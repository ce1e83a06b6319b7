#include "platform/strings/path_lookup.h"

#include "platform/strings/home_directory.h"
#include "platform/strings/path_text.h"
#include "platform/strings/utf_conversion.h"

#include <algorithm>
#include <filesystem>

namespace platform {
namespace {

/// The directory that the tilde of a path means, `user` standing behind it; empty when nobody knows.
std::u16string homeOf(std::u16string_view user)
{
    std::optional<std::string> name = utf8FromUtf16(user);
    if (!name || name->find('\0') != std::string::npos)
        return {};
    return utf16FromUtf8(homeDirectory(*name).value_or("")).value_or(std::u16string());
}

}

std::u16string expandingTilde(std::u16string_view path)
{
    if (!path.starts_with(u'~'))
        return std::u16string(path);
    std::size_t slash = std::min(path.find(u'/'), path.size());
    std::u16string home = homeOf(path.substr(1, slash - 1));
    if (home.empty())
        return std::u16string(path);
    std::u16string_view rest = path.substr(slash);
    if (!rest.empty() && home.ends_with(u'/'))
        home.pop_back();
    home += rest;
    return std::u16string(withoutTrailingSlashes(home));
}

std::u16string standardizedPath(std::u16string_view path)
{
    std::u16string squeezed = squeezedPath(expandingTilde(path));
    std::optional<std::string> bytes = utf8FromUtf16(squeezed);
    // What no file can be called is left as text.
    if (!squeezed.starts_with(u'/') || !bytes || bytes->find('\0') != std::string::npos)
        return squeezed;

    std::filesystem::path plain(*bytes);
    std::error_code error;
    std::filesystem::path resolved = std::filesystem::weakly_canonical(plain, error);
    if (error)
        resolved = plain.lexically_normal();
    std::optional<std::u16string> text = utf16FromUtf8(resolved.native());
    return text ? std::u16string(withoutTrailingSlashes(*text)) : squeezed;
}

}
