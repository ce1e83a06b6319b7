#include "platform/files/copy_tree.h"

#include "platform/files/copy_content.h"
#include "platform/files/folder_stack.h"
#include "platform/files/open_file.h"
#include "platform/files/remove_tree.h"

#include <cerrno>
#include <utility>

namespace platform {

namespace {

class TreeCopy {
public:
    /// `around` is the folder that the copy is made in.
    TreeCopy(TreeSystem& system, int in, int to, const TreeSystem::Identity& around)
        : mSystem(system), mFrom(system, in), mTo(system, to), mAround(around)
    {
    }

    int copy(const std::string& name, const std::string& newName)
    {
        int problem = copyOne(name, newName);
        while (problem == 0 && !mLevels.empty())
            problem = copyNext();
        return problem;
    }
    bool hasMade() const { return mHasMade; }

private:
    struct Level {
        TreeSystem::Status status;
        std::vector<TreeSystem::Entry> pending;
    };

    int copyOne(const std::string& name, const std::string& newName)
    {
        TreeSystem::Status status;
        if (const int problem = mSystem.status(mFrom.folder(), name, status); problem != 0)
            return unlessGone(problem);
        if (status.isFolder())
            return enterFolder(name, newName);
        return made(status.isFile() ? copyFile(name, newName)
                : status.isLink()   ? copyLink(name, newName, status)
                                    : copySpecial(newName, status));
    }

    /// Whether the copy has come into being, even if only in part: everything else that fails, does so
    /// before.
    int made(int problem)
    {
        mHasMade = mHasMade || problem == 0;
        return problem;
    }

    /// What somebody removes meanwhile was never there, but for what the copy is asked of.
    int unlessGone(int problem) const { return problem == -ENOENT && !mLevels.empty() ? 0 : problem; }

    int copyNext()
    {
        Level& level = mLevels.back();
        if (level.pending.empty())
            return leaveFolder();
        const std::string name = std::move(level.pending.back().name);
        level.pending.pop_back();
        return copyOne(name, name);
    }

    int enterFolder(const std::string& name, const std::string& newName)
    {
        if (const int problem = mFrom.enter(name); problem != 0)
            return unlessGone(problem);
        Level level;
        if (const int problem = mSystem.status(mFrom.folder(), level.status); problem != 0)
            return problem;
        if (level.status.identity == mAround)
            return -EINVAL; // the copy would hold itself
        if (const int problem = mSystem.entries(mFrom.folder(), level.pending); problem != 0)
            return problem;
        if (const int problem = made(mSystem.makeFolder(mTo.folder(), newName)); problem != 0)
            return problem;
        if (const int problem = mTo.enter(newName); problem != 0)
            return problem;
        mLevels.push_back(std::move(level));
        return 0;
    }

    int leaveFolder()
    {
        const TreeSystem::Status status = mLevels.back().status;
        mLevels.pop_back();
        if (const int problem = copyAttributes(mSystem, mFrom.folder(), status, mTo.folder()); problem != 0)
            return problem;
        if (const int problem = mFrom.leave(); problem != 0)
            return problem;
        return mTo.leave();
    }

    /// Opens a file, if need be by what the ways keep open.
    template<typename Open> int opened(Open open)
    {
        int file = open();
        while ((file == -EMFILE || file == -ENFILE) && (mFrom.giveBack() || mTo.giveBack()))
            file = open();
        return file;
    }

    int copyFile(const std::string& name, const std::string& newName)
    {
        const OpenFile<TreeSystem> from(
            mSystem, opened([&] { return mSystem.openFile(mFrom.folder(), name); }));
        if (from.get() < 0)
            return unlessGone(from.get());
        TreeSystem::Status status;
        if (const int problem = mSystem.status(from.get(), status); problem != 0)
            return problem;
        OpenFile<TreeSystem> to(mSystem, opened([&] { return mSystem.createFile(mTo.folder(), newName); }));
        if (to.get() < 0)
            return to.get();
        int problem = copyContent(mSystem, from.get(), status, to.get());
        if (problem == 0)
            problem = copyAttributes(mSystem, from.get(), status, to.get());
        if (problem == 0)
            problem = to.close();
        if (problem != 0)
            (void)mSystem.removeFile(mTo.folder(), newName);
        return problem;
    }

    int copyLink(const std::string& name, const std::string& newName, const TreeSystem::Status& status)
    {
        std::string target;
        if (const int problem = mSystem.readLink(mFrom.folder(), name, target); problem != 0)
            return unlessGone(problem);
        if (const int problem = mSystem.makeLink(target, mTo.folder(), newName); problem != 0)
            return problem;
        return finish(newName, status);
    }

    int copySpecial(const std::string& newName, const TreeSystem::Status& status)
    {
        const int problem = mSystem.makeSpecial(mTo.folder(), newName, status.mode, status.special);
        return problem != 0 ? problem : finish(newName, status);
    }

    /// Owner and times of what has no content to open; without the right to give it away it is the copier's.
    int finish(const std::string& newName, const TreeSystem::Status& status)
    {
        (void)mSystem.setOwner(mTo.folder(), newName, status.owner, status.group);
        const int problem = mSystem.setTimes(mTo.folder(), newName, status.accessed, status.modified);
        if (problem != 0)
            (void)mSystem.removeFile(mTo.folder(), newName);
        return problem;
    }

    TreeSystem& mSystem;
    FolderStack mFrom;
    FolderStack mTo;
    std::vector<Level> mLevels;
    const TreeSystem::Identity mAround;
    bool mHasMade = false;
};

}

int copyTree(TreeSystem& system, int in, const std::string& name, int to, const std::string& newName)
{
    TreeSystem::Status around;
    int problem = system.status(to, around);
    bool hasMade = false;
    if (problem == 0) {
        TreeCopy copy(system, in, to, around.identity);
        problem = copy.copy(name, newName);
        hasMade = copy.hasMade();
    }
    if (problem != 0 && hasMade)
        (void)removeTree(system, to, newName, Folders::MadeWritable);
    return problem;
}

}
