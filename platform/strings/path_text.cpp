#include "platform/strings/path_text.h"

#include <algorithm>

namespace platform {
namespace {

constexpr char16_t kSlash = u'/';
constexpr auto kNone = std::u16string_view::npos;

std::u16string withSingleSlashes(std::u16string_view path)
{
    std::u16string result;
    result.reserve(path.size());
    for (char16_t unit : withoutTrailingSlashes(path))
        if (unit != kSlash || !result.ends_with(kSlash))
            result.push_back(unit);
    return result;
}

/// The index of the full stop that begins the extension in `name`, or kNone. "a." has one.
std::size_t extensionMark(std::u16string_view name)
{
    std::size_t mark = name.rfind(u'.');
    return mark == 0 || name == u".." ? kNone : mark;
}

}

bool isAbsolutePath(std::u16string_view path)
{
    return path.starts_with(kSlash) || path.starts_with(u'~');
}

std::u16string_view withoutTrailingSlashes(std::u16string_view path)
{
    std::size_t last = path.find_last_not_of(kSlash);
    return path.substr(0, last == kNone ? 1 : last + 1);
}

std::vector<std::u16string_view> pathComponents(std::u16string_view path)
{
    std::vector<std::u16string_view> components;
    if (path.starts_with(kSlash))
        components.push_back(path.substr(0, 1));
    for (std::size_t at = 0; at < path.size();) {
        std::size_t end = std::min(path.find(kSlash, at), path.size());
        if (end > at)
            components.push_back(path.substr(at, end - at));
        at = end + 1;
    }
    if (path.size() > 1 && path.ends_with(kSlash))
        components.push_back(path.substr(path.size() - 1));
    return components;
}

std::u16string pathWithComponents(std::span<const std::u16string_view> components)
{
    std::u16string joined;
    for (std::u16string_view component : components) {
        if (!joined.empty())
            joined += kSlash;
        joined += component;
    }
    return withSingleSlashes(joined);
}

std::u16string_view lastPathComponent(std::u16string_view path)
{
    std::u16string_view trimmed = withoutTrailingSlashes(path);
    std::size_t slash = trimmed.rfind(kSlash);
    if (slash == kNone || trimmed.size() == 1)
        return trimmed;
    return trimmed.substr(slash + 1);
}

std::u16string deletingLastPathComponent(std::u16string_view path)
{
    std::size_t slash = withoutTrailingSlashes(path).rfind(kSlash);
    if (slash == kNone)
        return {};
    return withSingleSlashes(path.substr(0, slash + 1));
}

std::u16string appendingPathComponent(std::u16string_view path, std::u16string_view component)
{
    if (path.empty())
        return std::u16string(withoutTrailingSlashes(component));
    std::u16string joined(path);
    joined += kSlash;
    joined += component;
    return withSingleSlashes(joined);
}

std::u16string_view pathExtension(std::u16string_view path)
{
    std::u16string_view name = lastPathComponent(path);
    std::size_t mark = extensionMark(name);
    return mark == kNone ? std::u16string_view() : name.substr(mark + 1);
}

std::u16string deletingPathExtension(std::u16string_view path)
{
    std::u16string_view trimmed = withoutTrailingSlashes(path);
    std::u16string_view name = lastPathComponent(trimmed);
    if (std::size_t mark = extensionMark(name); mark != kNone)
        trimmed.remove_suffix(name.size() - mark);
    return withSingleSlashes(trimmed);
}

std::optional<std::u16string> appendingPathExtension(std::u16string_view path, std::u16string_view extension)
{
    if (extension.empty())
        return std::u16string(path);
    if (path.find_first_not_of(kSlash) == kNone || extension.starts_with(kSlash))
        return std::nullopt;
    std::u16string result = withSingleSlashes(path);
    result += u'.';
    result += extension;
    return result;
}

std::u16string squeezedPath(std::u16string_view path)
{
    std::vector<std::u16string_view> components = pathComponents(path);
    if (!components.empty())
        components.erase(std::remove(components.begin() + 1, components.end(), u"."), components.end());
    return pathWithComponents(components);
}

}
