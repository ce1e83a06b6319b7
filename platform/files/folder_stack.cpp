#include "platform/files/folder_stack.h"

#include <algorithm>
#include <cerrno>

namespace platform {

namespace {

constexpr std::size_t kMaxOpen = 32;

}

FolderStack::FolderStack(TreeSystem& system, int base) : mSystem(system)
{
    mLevels.push_back({ base, {} });
}

FolderStack::~FolderStack()
{
    for (std::size_t i = mOldestOpen; i < mLevels.size(); ++i)
        if (mLevels[i].folder >= 0)
            (void)mSystem.close(mLevels[i].folder);
}

/// The uppermost folder's, except the one we are in.
bool FolderStack::giveBack()
{
    if (mOldestOpen + 1 >= mLevels.size())
        return false;
    Level& level = mLevels[mOldestOpen];
    TreeSystem::Status status;
    if (mSystem.status(level.folder, status) != 0)
        return false;
    level.identity = status.identity;
    (void)mSystem.close(level.folder);
    level.folder = -1;
    ++mOldestOpen;
    return true;
}

int FolderStack::enter(const std::string& name)
{
    if (mLevels.size() - mOldestOpen >= kMaxOpen)
        (void)giveBack();
    int opened = mSystem.openFolder(folder(), name);
    while ((opened == -EMFILE || opened == -ENFILE) && giveBack())
        opened = mSystem.openFolder(folder(), name);
    if (opened < 0)
        return opened;
    mLevels.push_back({ opened, {} });
    return 0;
}

int FolderStack::reopen(Level& above)
{
    const int opened = mSystem.openFolder(folder(), "..");
    if (opened < 0)
        return opened;
    TreeSystem::Status status;
    int problem = mSystem.status(opened, status);
    if (problem == 0 && status.identity != above.identity)
        problem = -ESTALE;
    if (problem != 0) {
        (void)mSystem.close(opened);
        return problem;
    }
    above.folder = opened;
    return 0;
}

int FolderStack::leave()
{
    Level& above = mLevels[mLevels.size() - 2];
    const int problem = above.folder < 0 && mLevels.size() > 2 ? reopen(above) : 0;
    (void)mSystem.close(folder());
    mLevels.pop_back();
    mOldestOpen = std::clamp<std::size_t>(mLevels.size() - 1, 1, mOldestOpen);
    return problem;
}

}
