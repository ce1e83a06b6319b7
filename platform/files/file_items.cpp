#include "platform/files/file_items.h"

#include "platform/files/copy_tree.h"
#include "platform/files/hidden_name.h"
#include "platform/files/open_file.h"
#include "platform/files/remove_tree.h"
#include "platform/files/rename_by_hand.h"

#include <cerrno>

namespace platform {

namespace {

/// A path as an open folder and a name in it.
class Place {
public:
    Place(TreeSystem& system, const std::string& path)
        : mName(nameOf(path)), mFolder(system, opened(system, path))
    {
    }

    int problem() const { return mFolder.get() < 0 ? mFolder.get() : 0; }
    int folder() const { return mFolder.get(); }
    const std::string& name() const { return mName; }

private:
    static std::size_t endOf(const std::string& path) { return path.find_last_not_of('/') + 1; }
    static std::string nameOf(const std::string& path)
    {
        const std::string whole = path.substr(0, endOf(path));
        return whole.substr(whole.rfind('/') + 1);
    }
    int opened(TreeSystem& system, const std::string& path) const
    {
        if (path.empty())
            return -ENOENT;
        if (mName.empty() || mName == "." || mName == "..")
            return -EINVAL;
        const std::string folder = path.substr(0, endOf(path) - mName.size());
        return system.openAround(folder.empty() ? "." : folder);
    }

    const std::string mName;
    const OpenFile<TreeSystem> mFolder;
};

/// Renames; -EEXIST when something is there.
int placeNew(TreeSystem& system, int in, const std::string& name, int to, const std::string& newName)
{
    const int renamed = system.renameNew(in, name, to, newName);
    if (renamed != -EINVAL && renamed != -ENOSYS)
        return renamed;
    return renameByHand(system, in, name, to, newName);
}

int copyToPlace(TreeSystem& system, const Place& from, const Place& to)
{
    TreeSystem::Status there;
    const int found = system.status(to.folder(), to.name(), there);
    if (found != -ENOENT)
        return found == 0 ? -EEXIST : found;
    const std::string hidden = hiddenNameFor(to.name());
    int problem = copyTree(system, from.folder(), from.name(), to.folder(), hidden);
    if (problem != 0)
        return problem;
    problem = placeNew(system, to.folder(), hidden, to.folder(), to.name());
    if (problem != 0)
        (void)removeTree(system, to.folder(), hidden, Folders::MadeWritable);
    return problem;
}

int syncAround(TreeSystem& system, const Place& place)
{
    const OpenFile<TreeSystem> folder(system, system.openFolder(place.folder(), "."));
    if (folder.get() == -EACCES)
        return 0; // one may make files there but not look; the system writes them out in its own time
    return folder.get() < 0 ? folder.get() : system.sync(folder.get());
}

int moveByCopy(TreeSystem& system, const Place& from, const Place& to)
{
    // Before a copy is made of what then cannot be removed.
    if (const int problem = system.mayChange(from.folder()); problem != 0)
        return problem;
    if (const int problem = copyToPlace(system, from, to); problem != 0)
        return problem;
    if (const int problem = syncAround(system, to); problem != 0) {
        (void)removeTree(system, to.folder(), to.name(), Folders::MadeWritable);
        return problem;
    }
    return removeTree(system, from.folder(), from.name());
}

}

int copyItem(TreeSystem& system, const std::string& fromPath, const std::string& toPath)
{
    const Place from(system, fromPath);
    if (from.problem() != 0)
        return from.problem();
    const Place to(system, toPath);
    return to.problem() != 0 ? to.problem() : copyToPlace(system, from, to);
}

int moveItem(TreeSystem& system, const std::string& fromPath, const std::string& toPath)
{
    const Place from(system, fromPath);
    if (from.problem() != 0)
        return from.problem();
    const Place to(system, toPath);
    if (to.problem() != 0)
        return to.problem();
    const int moved = placeNew(system, from.folder(), from.name(), to.folder(), to.name());
    return moved == -EXDEV ? moveByCopy(system, from, to) : moved;
}

int removeItem(TreeSystem& system, const std::string& path)
{
    const Place place(system, path);
    return place.problem() != 0 ? place.problem() : removeTree(system, place.folder(), place.name());
}

}
