#include "platform/desktop/theme_index.h"

#include "platform/desktop/key_file.h"

#include <algorithm>

namespace platform {

namespace {

constexpr char kTheme[] = "Icon Theme";

std::vector<std::string> listIn(GKeyFile& file, const char* group, const char* key)
{
    const std::unique_ptr<char*, decltype(&g_strfreev)> list(
        g_key_file_get_string_list(&file, group, key, nullptr, nullptr), g_strfreev);
    std::vector<std::string> result;
    for (char** name = list.get(); name && *name; ++name) {
        if (**name)
            result.emplace_back(*name);
    }
    return result;
}

int numberIn(GKeyFile& file, const std::string& group, const char* key, int otherwise)
{
    if (!g_key_file_has_key(&file, group.c_str(), key, nullptr))
        return otherwise;
    constexpr int kLargest = 4096;
    return std::clamp(g_key_file_get_integer(&file, group.c_str(), key, nullptr), 0, kLargest);
}

std::optional<ThemeFolder> folderIn(GKeyFile& file, const std::string& path)
{
    const int size = numberIn(file, path, "Size", 0);
    const int scale = std::max(numberIn(file, path, "Scale", 1), 1);
    if (size == 0)
        return std::nullopt;
    ThemeFolder folder { path, size, size };
    const std::string type = stringIn(file, path.c_str(), "Type");
    if (type == "Scalable") {
        folder.smallest = numberIn(file, path, "MinSize", size);
        folder.largest = numberIn(file, path, "MaxSize", size);
    } else if (type != "Fixed") { // "Threshold", which is also what no type means
        const int threshold = numberIn(file, path, "Threshold", 2);
        folder.smallest = std::max(size - threshold, 1);
        folder.largest = size + threshold;
    }
    folder.smallest *= scale;
    folder.largest *= scale;
    return folder;
}

}

int ThemeFolder::distance(int size) const
{
    return std::max({ smallest - size, size - largest, 0 });
}

std::optional<ThemeIndex> readThemeIndex(const std::string& path)
{
    const KeyFile file = readKeyFile(path);
    if (!file || !g_key_file_has_group(file.get(), kTheme))
        return std::nullopt;
    ThemeIndex index;
    index.inherits = listIn(*file, kTheme, "Inherits");
    for (const char* key : { "Directories", "ScaledDirectories" }) {
        for (const std::string& folderPath : listIn(*file, kTheme, key)) {
            if (auto folder = folderIn(*file, folderPath))
                index.folders.push_back(std::move(*folder));
        }
    }
    return index;
}

}
