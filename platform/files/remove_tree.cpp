#include "platform/files/remove_tree.h"

#include "platform/files/folder_stack.h"

#include <cerrno>
#include <utility>

namespace platform {

namespace {

class TreeRemoval {
public:
    TreeRemoval(TreeSystem& system, int in, Folders folders)
        : mSystem(system), mWay(system, in), mFolders(folders)
    {
    }

    int remove(const std::string& name)
    {
        int problem = removeOrEnter(name);
        while (problem == 0 && !mLevels.empty())
            problem = removeNext();
        return problem;
    }

private:
    struct Level {
        std::string name;
        std::vector<TreeSystem::Entry> pending;
    };

    int removeOrEnter(const std::string& name)
    {
        const int removed = mSystem.removeFile(mWay.folder(), name);
        if (removed != -EISDIR)
            return removed;
        const int entered = mWay.enter(name);
        if (entered == -EACCES && mSystem.removeFolder(mWay.folder(), name) == 0)
            return 0; // nobody may look into it, but there was nothing to see
        if (entered != 0)
            return entered;
        if (mFolders == Folders::MadeWritable)
            (void)mSystem.setPermissions(mWay.folder(), 0700);
        mLevels.push_back({ name, {} });
        return mSystem.entries(mWay.folder(), mLevels.back().pending);
    }

    int removeNext()
    {
        Level& level = mLevels.back();
        if (!level.pending.empty()) {
            const std::string name = std::move(level.pending.back().name);
            level.pending.pop_back();
            const int problem = removeOrEnter(name);
            return problem == -ENOENT ? 0 : problem; // somebody else has removed it
        }
        const std::string name = std::move(level.name);
        mLevels.pop_back();
        if (const int problem = mWay.leave(); problem != 0)
            return problem;
        const int problem = mSystem.removeFolder(mWay.folder(), name);
        return problem == -ENOENT ? 0 : problem;
    }

    TreeSystem& mSystem;
    FolderStack mWay;
    const Folders mFolders;
    std::vector<Level> mLevels;
};

}

int removeTree(TreeSystem& system, int in, const std::string& name, Folders folders)
{
    return TreeRemoval(system, in, folders).remove(name);
}

}
