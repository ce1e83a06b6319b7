#include "platform/files/trash.h"

#include <ctime>
#include <gio/gio.h>
#include <memory>
#include <sys/stat.h>
#include <unistd.h>

namespace platform {

namespace {

struct Unref {
    void operator()(gpointer object) const { g_object_unref(object); }
};

class RealTrashSystem : public TrashSystem {
public:
    bool trashByDesktop(const std::string& path) override
    {
        // By the local file system itself: the desktop's file service may not be asked from every thread.
        const std::unique_ptr<GFile, Unref> file(g_vfs_get_file_for_path(g_vfs_get_local(), path.c_str()));
        return g_file_trash(file.get(), nullptr, nullptr) != FALSE;
    }
    std::string homeTrash() override
    {
        const std::string trash = std::string(g_get_user_data_dir()) + "/Trash";
        return g_mkdir_with_parents(trash.c_str(), 0700) == 0 ? trash : std::string();
    }
    std::string topFolderOf(const std::string& folder) override
    {
        struct stat here = {};
        struct stat above = {};
        std::string top = folder;
        if (stat(top.c_str(), &here) != 0)
            return top;
        while (top.size() > 1) {
            const std::size_t slash = top.rfind('/');
            const std::string next = slash == 0 ? "/" : top.substr(0, slash);
            if (stat(next.c_str(), &above) != 0 || above.st_dev != here.st_dev)
                break;
            top = next;
        }
        return top;
    }
    uid_t user() override { return getuid(); }
    std::string localTime() override
    {
        const time_t now = time(nullptr);
        struct tm parts = {};
        localtime_r(&now, &parts);
        char text[64];
        const std::size_t length = strftime(text, sizeof text, "%Y-%m-%dT%H:%M:%S", &parts);
        return std::string(text, length);
    }
};

}

TrashSystem& TrashSystem::real()
{
    static TrashSystem& only = *new RealTrashSystem; // never destroyed: files are trashed until the very end
    return only;
}

}
