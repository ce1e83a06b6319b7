#pragma once

#include "platform/desktop/theme_index.h"

#include <span>

namespace platform {

/// An icon theme and those it inherits from, in folders of the freedesktop layout. They are read once: what
/// is installed later is not seen. Threads: any.
class IconTheme {
public:
    /// `bases` are the folders that themes lie in, those that count more first; a theme may lie in several.
    /// `names` are the themes to try: the first that is there counts. The theme "hicolor" always comes last.
    /// Pictures are looked for that fit `size` best, in pixels.
    IconTheme(std::vector<std::string> bases, std::span<const std::string> names, int size);

    /// The file of the first of `names` that the theme has; only when it has none of them are the themes
    /// asked that it inherits from, and at last the bases themselves. Empty when there is none. Takes one
    /// look at the disk for each folder, name and kind of picture until one is found.
    std::string fileOf(std::span<const std::string> names) const;

private:
    struct Theme {
        std::string name;
        std::vector<std::string> roots;
        std::vector<ThemeFolder> folders; ///< those that fit best first
    };

    bool add(const std::string& name, int size);
    static std::string fileIn(const Theme& theme, const std::string& name);

    std::vector<std::string> mBases;
    std::vector<Theme> mThemes; ///< in the order they are asked
};

}
