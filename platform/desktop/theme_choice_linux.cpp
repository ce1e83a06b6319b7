#include "platform/desktop/theme_choice.h"

#include "platform/desktop/key_file.h"

#include <gio/gio.h>

namespace platform {

namespace {

void addFrom(const std::string& path, const char* group, const char* key, std::vector<std::string>& themes)
{
    const KeyFile file = readKeyFile(path);
    const std::string theme = file ? stringIn(*file, group, key) : std::string();
    if (!theme.empty())
        themes.push_back(theme);
}

void addFromDesktopSettings(std::vector<std::string>& themes)
{
    constexpr char kSchema[] = "org.gnome.desktop.interface";
    constexpr char kKey[] = "icon-theme";
    GSettingsSchemaSource* const source = g_settings_schema_source_get_default();
    GSettingsSchema* const schema = source ? g_settings_schema_source_lookup(source, kSchema, TRUE) : nullptr;
    if (!schema)
        return;
    if (g_settings_schema_has_key(schema, kKey)) {
        GSettings* const settings = g_settings_new_full(schema, nullptr, nullptr);
        char* const theme = g_settings_get_string(settings, kKey);
        themes.emplace_back(theme);
        g_free(theme);
        g_object_unref(settings);
    }
    g_settings_schema_unref(schema);
}

}

std::vector<std::string> iconFolders()
{
    std::vector<std::string> folders;
    folders.push_back(std::string(g_get_user_data_dir()) + "/icons");
    folders.push_back(std::string(g_get_home_dir()) + "/.icons");
    for (const char* const* folder = g_get_system_data_dirs(); *folder; ++folder)
        folders.push_back(std::string(*folder) + "/icons");
    folders.emplace_back("/usr/share/pixmaps");
    return folders;
}

std::vector<std::string> chosenThemes()
{
    const std::string configuration = g_get_user_config_dir();
    const char* const desktop = g_getenv("XDG_CURRENT_DESKTOP");
    std::vector<std::string> themes;
    if (desktop && std::string(desktop).find("KDE") != std::string::npos)
        addFrom(configuration + "/kdeglobals", "Icons", "Theme", themes);
    addFromDesktopSettings(themes);
    addFrom(configuration + "/gtk-3.0/settings.ini", "Settings", "gtk-icon-theme-name", themes);
    themes.emplace_back("Adwaita");
    return themes;
}

}
