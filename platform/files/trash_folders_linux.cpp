#include "platform/files/trash_folders.h"

#include "platform/files/reference_opening.h"

#include <glib.h>
#include <sys/stat.h>
#include <unistd.h>

namespace platform {

namespace {

bool isSharedTrash(const std::string& path)
{
    struct stat info;
    return lstat(path.c_str(), &info) == 0 && S_ISDIR(info.st_mode) && (info.st_mode & S_ISVTX) != 0;
}

}

std::vector<NodeRef> trashFolders(std::uint64_t volume, const std::string& topFolder)
{
    const std::string user = std::to_string(getuid());
    std::vector<NodeRef> folders;
    const auto add = [&](const std::string& path) {
        NodeRef folder;
        if (openReference(path, folder) == 0 && folder->kind() == FileKind::Folder
            && folder->volume() == volume)
            folders.push_back(std::move(folder));
    };
    add(joined(g_get_user_data_dir(), "Trash/files"));
    if (const std::string shared = joined(topFolder, ".Trash"); isSharedTrash(shared))
        add(shared + '/' + user + "/files");
    add(joined(topFolder, ".Trash-" + user) + "/files");
    return folders;
}

std::string topFolderOf(const std::string& path, std::uint64_t volume)
{
    std::string top = path;
    while (top != "/") {
        const std::string above = folderOf(top);
        NodeSystem::Volume there;
        if (NodeSystem::current().volumeAt(above.c_str(), there) != 0 || there.id != volume)
            break;
        top = above;
    }
    return top;
}

}
