#pragma once

#include <optional>
#include <string>
#include <vector>

namespace platform {

/// One folder of an icon theme and the sizes its pictures are meant for, in pixels.
struct ThemeFolder {
    std::string path; ///< inside the theme
    int smallest = 0;
    int largest = 0;

    /// How far `size` is from what this folder is meant for; 0 inside its range.
    int distance(int size) const;
};

/// What the index.theme of an icon theme tells.
struct ThemeIndex {
    std::vector<std::string> inherits; ///< names of the themes to look in next
    std::vector<ThemeFolder> folders; ///< in the order of the file
};

/// Nothing when the file is not there, is larger than a megabyte, or describes no icon theme. Folders it
/// describes wrongly are left out.
std::optional<ThemeIndex> readThemeIndex(const std::string& file);

}
