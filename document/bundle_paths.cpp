#include "document/bundle_paths.h"

#include "LUMPlatform/NSURLUtilities.h"
#include "core/statuses.h"

#include <algorithm>

namespace fs = std::filesystem;

bool lum::isWithin(const fs::path& folder, const fs::path& path)
{
    return std::mismatch(folder.begin(), folder.end(), path.begin(), path.end()).first == folder.end();
}

bool lum::staysInside(const NSRef<NSString>& name)
{
    // Two texts with half a surrogate pair could share one file.
    if (!name || !name->canBeConvertedToEncoding(NSUTF8StringEncoding))
        return false;
    const std::string bytes = name->utf8();
    if (bytes.empty() || bytes.starts_with('/') || bytes.find('\0') != std::string::npos)
        return false;
    const fs::path path(bytes);
    return std::none_of(
        path.begin(), path.end(), [](const fs::path& part) { return part == "." || part == ".."; });
}

bool lum::staysInsideOrNull(const NSRef<NSString>& name)
{
    return !name || staysInside(name);
}

bool lum::staysInsideAlone(const NSRef<NSString>& name)
{
    if (!staysInside(name))
        return false;
    const std::string bytes = name->utf8();
    return !bytes.ends_with('/') && bytes.find("//") == std::string::npos;
}

bool lum::staysInsideAloneOrNull(const NSRef<NSString>& name)
{
    return !name || staysInsideAlone(name);
}

bool lum::staysInName(const NSRef<NSString>& extension)
{
    if (!extension)
        return true;
    const auto plain =
        NSURLUtilities::stringByReplacingPercentEscapesUsingEncoding(extension, NSUTF8StringEncoding);
    return plain && plain->characters().find_first_of(std::u16string_view(u"/\0", 2)) == std::u16string::npos;
}

NSRef<NSString> lum::insideOf(const NSRef<NSString>& folder, const NSRef<NSString>& path)
{
    return fs::path(path->utf8()).lexically_relative(folder->utf8()).string();
}

bool lum::isReachedInside(const NSRef<NSString>& folder, const NSRef<NSString>& path, bool mayEndInLink)
{
    if (!folder || !path)
        return false;
    std::error_code problem;
    const fs::path base = folder->utf8();
    const fs::path whole = path->utf8();
    const fs::path inside = whole.lexically_relative(base);
    const fs::path realBase = fs::canonical(base, problem);
    // A ".." further down would be followed by the system, past whatever stands before it.
    if (problem || inside.empty() || std::find(inside.begin(), inside.end(), "..") != inside.end())
        return false;
    fs::path at = base;
    for (auto name = inside.begin(); name != inside.end(); ++name) {
        at /= *name;
        const auto type = fs::symlink_status(at, problem).type();
        if (type == fs::file_type::not_found || problem == std::errc::filename_too_long)
            return true;
        if (type == fs::file_type::none)
            return false; // it may be a link
        if (type != fs::file_type::symlink || (mayEndInLink && std::next(name) == inside.end()))
            continue;
        const fs::path target = fs::canonical(at, problem);
        if (problem || !isWithin(realBase, target))
            return false;
    }
    return true;
}

lum::Failure lum::refuseName(NSRef<NSError>* error)
{
    return fail(error, kStatusBadName);
}

lum::Failure lum::refuseLink(NSRef<NSError>* error)
{
    return fail(error, kStatusNoAccess);
}

bool lum::isEntryAt(const NSRef<NSString>& path)
{
    std::error_code problem;
    return path && fs::exists(fs::symlink_status(path->utf8(), problem));
}

NSRef<NSString> lum::escapedForUrl(const NSRef<NSString>& text)
{
    if (!text)
        return nullptr;
    constexpr std::string_view kPlain = "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789-._~/";
    constexpr char kDigits[] = "0123456789ABCDEF";
    std::string escaped;
    for (char character : text->utf8()) {
        if (kPlain.find(character) != std::string_view::npos) {
            escaped += character;
            continue;
        }
        const auto byte = static_cast<unsigned char>(character);
        escaped += { '%', kDigits[byte >> 4], kDigits[byte & 0xF] };
    }
    return escaped;
}
