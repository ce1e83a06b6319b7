#include "platform/desktop/key_file.h"

#include <sys/stat.h>

namespace platform {

KeyFile readKeyFile(const std::string& path)
{
    constexpr off_t kLargest = 1 << 20;
    struct stat found = {};
    if (stat(path.c_str(), &found) != 0 || !S_ISREG(found.st_mode) || found.st_size > kLargest)
        return nullptr;
    KeyFile file(g_key_file_new());
    g_key_file_set_list_separator(file.get(), ',');
    if (!g_key_file_load_from_file(file.get(), path.c_str(), G_KEY_FILE_NONE, nullptr))
        return nullptr;
    return file;
}

std::string stringIn(GKeyFile& file, const char* group, const char* key)
{
    const std::unique_ptr<char, decltype(&g_free)> value(
        g_key_file_get_string(&file, group, key, nullptr), g_free);
    return value ? value.get() : "";
}

}
