#pragma once

#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace platform {

// Paths as text: nothing here looks at the disk. Only "/" separates; ":" and "\" are ordinary characters.
// Results have single slashes and no trailing one, except the root.

/// Begins with "/" or "~".
bool isAbsolutePath(std::u16string_view path);

/// A path of slashes alone becomes one slash.
std::u16string_view withoutTrailingSlashes(std::u16string_view path);

/// "/" stands for a leading and for a trailing slash: "/a/" is "/", "a", "/".
std::vector<std::u16string_view> pathComponents(std::u16string_view path);
std::u16string pathWithComponents(std::span<const std::u16string_view> components);

/// "/" for the root, empty for the empty path.
std::u16string_view lastPathComponent(std::u16string_view path);
std::u16string deletingLastPathComponent(std::u16string_view path);
/// An empty `path` gives `component` as it is, but for trailing slashes. "." and ".." stay.
std::u16string appendingPathComponent(std::u16string_view path, std::u16string_view component);

/// What follows the last full stop of the last component, unless that is its first character.
std::u16string_view pathExtension(std::u16string_view path);
/// The name "a." loses its full stop, though its extension is empty.
std::u16string deletingPathExtension(std::u16string_view path);
/// `path` itself for an empty extension. Null when no name is there to extend (the empty path, the root),
/// or when `extension` begins with a slash.
std::optional<std::u16string> appendingPathExtension(std::u16string_view path, std::u16string_view extension);

/// Single slashes, no "." beyond the first component, no trailing slash.
std::u16string squeezedPath(std::u16string_view path);

}
