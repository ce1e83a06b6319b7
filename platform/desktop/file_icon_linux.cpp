#include "platform/desktop/file_icon.h"

#include <algorithm>
#include <gio/gio.h>
#include <iterator>
#include <memory>

namespace platform {

namespace {

struct Unref {
    void operator()(gpointer object) const { g_object_unref(object); }
};
using Free = decltype(&g_free);
using Text = std::unique_ptr<char, Free>;

std::vector<std::string> namesOf(GIcon* icon)
{
    std::vector<std::string> names;
    if (!icon || !G_IS_THEMED_ICON(icon))
        return names;
    for (const char* const* name = g_themed_icon_get_names(G_THEMED_ICON(icon)); *name; ++name) {
        if (!g_str_has_suffix(*name, "-symbolic")) // a drawing in one colour, to be tinted
            names.emplace_back(*name);
    }
    return names;
}

BuiltInIcon builtInFor(const char* contentType)
{
    if (g_content_type_is_a(contentType, "inode/directory"))
        return BuiltInIcon::Folder;
    if (g_content_type_is_a(contentType, "application/x-executable")
        || g_content_type_equals(contentType, "application/x-desktop"))
        return BuiltInIcon::Application;
    return g_content_type_is_unknown(contentType) ? BuiltInIcon::Unknown : BuiltInIcon::File;
}

FileIcon iconOfContentType(const char* contentType)
{
    const std::unique_ptr<GIcon, Unref> icon(g_content_type_get_icon(contentType));
    return { namesOf(icon.get()), builtInFor(contentType) };
}

FileIcon iconOfName(const std::string& name)
{
    const Text contentType(g_content_type_guess(name.c_str(), nullptr, 0, nullptr), g_free);
    return iconOfContentType(contentType.get());
}

std::unique_ptr<GFileInfo, Unref> informationOn(const std::string& path, const char* keys)
{
    // By the local file system itself: the desktop's file service may not be asked from every thread.
    const std::unique_ptr<GFile, Unref> file(g_vfs_get_file_for_path(g_vfs_get_local(), path.c_str()));
    return std::unique_ptr<GFileInfo, Unref>(
        g_file_query_info(file.get(), keys, G_FILE_QUERY_INFO_NONE, nullptr, nullptr));
}

}

FileIcon iconOfFile(const std::string& path)
{
    FileIcon byName = iconOfName(path);
    const auto kind = informationOn(path, G_FILE_ATTRIBUTE_STANDARD_TYPE);
    if (!kind)
        return byName;
    const bool isFile = g_file_info_get_file_type(kind.get()) == G_FILE_TYPE_REGULAR;
    if (isFile && byName.builtIn != BuiltInIcon::Unknown)
        return byName; // and no file is opened
    const auto found =
        informationOn(path, G_FILE_ATTRIBUTE_STANDARD_CONTENT_TYPE "," G_FILE_ATTRIBUTE_STANDARD_ICON);
    const char* const contentType = found ? g_file_info_get_content_type(found.get()) : nullptr;
    if (!contentType)
        return byName;
    // Not the icon of the type: the user's own folders have icons of their own.
    FileIcon icon { namesOf(g_file_info_get_icon(found.get())), builtInFor(contentType) };
    if (icon.builtIn == BuiltInIcon::Folder) // what a database of types adds, where there is one
        std::ranges::copy(iconOfFolders().names, std::back_inserter(icon.names));
    return icon;
}

FileIcon iconOfExtension(const std::string& extension)
{
    return iconOfName("file." + extension);
}

FileIcon iconOfFolders()
{
    return { { "folder", "inode-directory" }, BuiltInIcon::Folder };
}

FileIcon iconOfApplications()
{
    return { { "application-x-executable" }, BuiltInIcon::Application };
}

}
