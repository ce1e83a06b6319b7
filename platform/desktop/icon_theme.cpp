#include "platform/desktop/icon_theme.h"

#include <algorithm>
#include <unistd.h>

namespace platform {

namespace {

constexpr char kLastTheme[] = "hicolor";
constexpr std::size_t kMostThemes = 64; // that one theme may lead to

/// `stem` with the ending of the first kind of picture that is there; empty when there is none.
std::string pictureAt(const std::string& stem)
{
    for (const char* kind : { ".png", ".svg", ".xpm" }) {
        std::string file = stem + kind;
        if (access(file.c_str(), R_OK) == 0)
            return file;
    }
    return {};
}

std::string joined(std::string folder, const std::string& name)
{
    return folder.append("/").append(name);
}

/// Whether it stays in the folder it is looked for in.
bool isPlainName(const std::string& name)
{
    return !name.empty() && name != "." && name != ".." && name.find('/') == std::string::npos;
}

}

IconTheme::IconTheme(std::vector<std::string> bases, std::span<const std::string> names, int size)
    : mBases(std::move(bases))
{
    for (const std::string& name : names) {
        if (name != kLastTheme && add(name, size))
            break;
    }
    add(kLastTheme, size);
}

bool IconTheme::add(const std::string& name, int size)
{
    const auto isNamed = [&name](const Theme& theme) { return theme.name == name; };
    if (!isPlainName(name) || mThemes.size() >= kMostThemes || std::ranges::any_of(mThemes, isNamed))
        return false;
    Theme theme { name, {}, {} };
    std::optional<ThemeIndex> index;
    for (const std::string& base : mBases) {
        theme.roots.push_back(joined(base, name));
        if (!index)
            index = readThemeIndex(joined(theme.roots.back(), "index.theme"));
    }
    if (!index)
        return false;
    theme.folders = std::move(index->folders);
    std::ranges::stable_sort(
        theme.folders, {}, [size](const ThemeFolder& folder) { return folder.distance(size); });
    mThemes.push_back(std::move(theme));
    for (const std::string& parent : index->inherits) {
        if (parent != kLastTheme)
            add(parent, size);
    }
    return true;
}

std::string IconTheme::fileIn(const Theme& theme, const std::string& name)
{
    for (const ThemeFolder& folder : theme.folders) {
        for (const std::string& root : theme.roots) {
            std::string file = pictureAt(joined(joined(root, folder.path), name));
            if (!file.empty())
                return file;
        }
    }
    return {};
}

std::string IconTheme::fileOf(std::span<const std::string> names) const
{
    for (const Theme& theme : mThemes) {
        for (const std::string& name : names) {
            std::string file = isPlainName(name) ? fileIn(theme, name) : std::string();
            if (!file.empty())
                return file;
        }
    }
    for (const std::string& base : mBases) {
        for (const std::string& name : names) {
            std::string file = isPlainName(name) ? pictureAt(joined(base, name)) : std::string();
            if (!file.empty())
                return file;
        }
    }
    return {};
}

}
